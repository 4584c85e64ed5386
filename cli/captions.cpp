#include "cli/captions.hpp"

namespace larkstone::cli {

namespace {

constexpr Caption captions[] = {
    {"place", "Pl."},
    {"name", "Name"},
    {"club", "Club"},
    {"startTime", "Start"},
    {"finishTime", "Time"},
    {"finishTimeDifference", "Behind"},
    {"startName", "S"},
    {"finishName", "F"},
    {"finish", "finish"},
    {"control", "control"},
    {"legTimeSortCaption", "leg"},
    {"totalTimeSortCaption", "total"},
    {"passingEndTimeSortCaption", "clock"},
    {"sortByName", "Sort by name"},
    {"sortByClub", "Sort by club"},
    {"sortByStartTime", "Sort by start time"},
    {"sortByFinishTime", "Sort by time"},
    {"sortByLegTime", "Sort by leg time to"},
    {"sortByTotalTime", "Sort by total time at"},
    {"sortByPassingEndTime", "Sort by passing time at"},
    {"timeLoss", "Time lost"},
    {"estimatedTime", "Estimated time"},
    {"status_dnf", "dnf"},
    {"status_dns", "dns"},
    {"status_disq", "disq"},
    {"status_mp", "mp"},
    {"timeDelimiters", "::."},
};

}  // namespace

std::span<const Caption> englishCaptions() { return captions; }

}  // namespace larkstone::cli
