#pragma once

// The words of the IOF data standard for the enumerations of the model, both ways.

#include <string_view>

#include "larkstone/core/enums.hpp"

namespace larkstone {

/// The text of a value; empty for a number that is no value.
std::string_view iofEventFormText(enmEventForm form);
std::string_view iofIDTypeText(enmIDType type);
std::string_view iofStatusText(enmStatus status);

/// The value of a text in any letter case; the value 0 for a text that is not known.
enmEventForm eventFormFromIof(std::string_view text);
enmIDType idTypeFromIof(std::string_view text);
enmStatus statusFromIof(std::string_view text);
enmResultListStatus resultListStatusFromIof(std::string_view text);
/// "M" and "F"; the caller's default for anything else.
enmGender genderFromIof(std::string_view text, enmGender otherwise = egndUnknown);
/// "SI", "Emit", "manual" and, for an empty text, "other"; any other text stays as it is.
std::string_view punchingUnitFromIof(std::string_view text);

}  // namespace larkstone
