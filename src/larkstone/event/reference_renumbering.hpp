#pragma once

// What a change of categories does to the derived courses that refer to their runners.

#include <cstdint>
#include <string_view>
#include <vector>

#include "larkstone/core/ranking.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone {

/// Categories get other file indices, or -1: references to them are removed, as are those to
/// categories that the event has not got. Writes every derived course whose references change; an
/// error constant, and nothing changed, when that fails.
///
/// Which derived courses refer to which categories is remembered in their table, so that a change
/// decodes only those it concerns.
std::int32_t renumberCategories(EventStore& store, const TranslationTable& newIndices);

/// A category is about to be stored as that record. Each of its runners of before is looked up
/// among the new ones; references to those who are gone are removed. Whoever has the same name and
/// club is the same, of several the one with the same runnerIndex(), else the next. Of those who
/// are left, names and clubs were corrected: they are told by their runnerIndex(), where the
/// category is an object that the event handed out. Names are compared as records hold them: what a
/// runner is called in memory may have letters that the code page lacks.
///
/// Appends the derived courses whose references change, to be written along with the category.
/// False when a record cannot be read.
bool renumberRunners(EventStore& store, int fileIndex, int displayIndex,
                     const LRKCategory& category, std::string_view newRecord,
                     std::vector<RecordBytes>& changes);

}  // namespace larkstone
