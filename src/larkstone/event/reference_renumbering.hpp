#pragma once

// What a change of categories does to the derived courses that refer to their runners.

#include <cstdint>
#include <string_view>
#include <vector>

#include "larkstone/core/ranking.hpp"
#include "larkstone/event/event_store.hpp"

namespace larkstone {

/// Categories get other file indices, or -1: references to them are removed, as are those to
/// categories that the event has not got. Writes every derived course whose references change; an
/// error constant, and nothing changed, when that fails.
///
/// Which derived courses refer to which categories is remembered in their table, so that a change
/// decodes only those it concerns.
std::int32_t renumberCategories(EventStore& store, const TranslationTable& newIndices);

/// A category is about to be stored as that record. When it has not got the same runners (by name
/// and club) in the same places, each is looked up in the new one; references to those who are gone
/// are removed. Names are compared as records hold them: what a runner is called in memory may have
/// letters that the code page lacks.
/// Appends the derived courses whose references change, to be written along with the category.
/// False when a record cannot be read.
bool renumberRunners(EventStore& store, int fileIndex, std::string_view newRecord,
                     std::vector<RecordBytes>& changes);

}  // namespace larkstone
