#include "larkstone/core/iof_texts.hpp"

#include <array>

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::array<std::string_view, 5> eventForms = {"IndSingleDay", "IndMultiDay",
                                                        "teamSingleDay", "teamMultiDay", "relay"};
constexpr std::array<std::string_view, 5> idTypes = {"int", "nat", "reg", "loc", "other"};
constexpr std::array<std::string_view, 3> listStatuses = {"complete", "snapshot", "delta"};
constexpr std::array<std::string_view, 15> statuses = {
    "OK",          "Finished", "Active",       "Inactive",     "SportWithdr",
    "OverTime",    "MisPunch", "DidNotFinish", "Disqualified", "NotCompeting",
    "DidNotStart", "Moved",    "MovedUp",      "Cancelled",    "Unknown"};

// Further words that lists use for a status.
struct StatusWord {
  std::string_view text;
  enmStatus status;
};
constexpr std::array<StatusWord, 3> statusWords = {{{"DidNotEnter", estaDidNotStart},
                                                    {"MissingPunch", estaMisPunch},
                                                    {"SportingWithdrawal", estaSportWithdr}}};

template <std::size_t n>
std::string_view textOf(const std::array<std::string_view, n>& texts, int value) {
  return value >= 0 && value < static_cast<int>(n) ? texts[static_cast<std::size_t>(value)] : "";
}

template <class Value, std::size_t n>
Value valueOf(const std::array<std::string_view, n>& texts, std::string_view text) {
  for (std::size_t i = 0; i < n; ++i) {
    if (equalNoCase(texts[i], text)) return static_cast<Value>(i);
  }
  return Value{};
}

}  // namespace

std::string_view iofEventFormText(enmEventForm form) { return textOf(eventForms, form); }
std::string_view iofIDTypeText(enmIDType type) { return textOf(idTypes, type); }
std::string_view iofStatusText(enmStatus status) { return textOf(statuses, status); }

enmEventForm eventFormFromIof(std::string_view text) {
  return valueOf<enmEventForm>(eventForms, text);
}
enmIDType idTypeFromIof(std::string_view text) { return valueOf<enmIDType>(idTypes, text); }
enmResultListStatus resultListStatusFromIof(std::string_view text) {
  return valueOf<enmResultListStatus>(listStatuses, text);
}

enmStatus statusFromIof(std::string_view text) {
  for (const StatusWord& word : statusWords) {
    if (equalNoCase(word.text, text)) return word.status;
  }
  return valueOf<enmStatus>(statuses, text);
}

enmGender genderFromIof(std::string_view text, enmGender otherwise) {
  if (equalNoCase(text, "m")) return egndMale;
  return equalNoCase(text, "f") ? egndFemale : otherwise;
}

std::string_view punchingUnitFromIof(std::string_view text) {
  if (text.empty()) return "other";
  for (const std::string_view known : {"SI", "Emit", "manual"}) {
    if (equalNoCase(known, text)) return known;
  }
  return text;
}

}  // namespace larkstone
