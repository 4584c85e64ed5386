#include "larkstone/analysis/gap_weight.hpp"

#include <algorithm>

namespace larkstone {

GapWeight::GapWeight(Time close, Time far)
    : close_(close),
      far_(far),
      levels_{-static_cast<double>(far), -static_cast<double>(close), 0, static_cast<double>(close),
              static_cast<double>(far)} {
  std::sort(levels_.begin(), levels_.end());
}

double GapWeight::share(double gapAtBegin, double gapAtEnd) const {
  const double smaller = std::min(gapAtBegin, gapAtEnd);
  const double larger = std::max(gapAtBegin, gapAtEnd);
  if (larger <= 0 && smaller < 0) return 0;
  if (smaller > 0 && larger <= close_) return 1;

  const double change = gapAtEnd - gapAtBegin;
  double share = 0;
  double at = 0;  // how far on the leg, 0 to 1
  double gap = gapAtBegin;
  const auto walkTo = [&](double next, double gapThere) {
    share += (next - at) * ofStretch(gap, gapThere);
    at = next;
    gap = gapThere;
  };
  for (std::size_t k = 0; k < levels_.size(); ++k) {
    const double level = levels_[change < 0 ? levels_.size() - 1 - k : k];
    if (smaller < level && level < larger) walkTo((level - gapAtBegin) / change, level);
  }
  walkTo(1, gapAtEnd);
  return share;
}

}  // namespace larkstone
