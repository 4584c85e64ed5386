#include "larkstone/analysis/pack_integral.hpp"

#include <algorithm>
#include <limits>

#include "larkstone/core/number.hpp"

namespace larkstone {

namespace {

// Below it looking at every runner is cheaper than knowing who is close where.
constexpr std::size_t largePack = 10;

double gapAt(const GapLine& line, double at) {
  return roundedHalfEven(line.begin + line.change * at);
}

}  // namespace

LegShares PackIntegral::shares(std::span<const GapLine> lines) {
  mirrored_.clear();
  for (const GapLine& line : lines) mirrored_.push_back({-line.begin, -line.change});
  const bool pulling = isFullAllAlong(lines);
  const bool following = isFullAllAlong(mirrored_);
  if (!pulling || !following) cut(lines);
  return {pulling ? 1 : share(lines), following ? 1 : share(mirrored_)};
}

// With one runner close by all along, nobody else matters.
bool PackIntegral::isFullAllAlong(std::span<const GapLine> lines) const {
  return std::any_of(lines.begin(), lines.end(), [this](const GapLine& line) {
    const double end = line.begin + line.change;
    return std::min(line.begin, end) >= 1 && std::max(line.begin, end) <= weight_.close();
  });
}

void PackIntegral::cut(std::span<const GapLine> lines) {
  cuts_ = {0, 1};
  for (const GapLine& line : lines) {
    if (line.change == 0) continue;
    for (const double level : weight_.levels()) {
      const double at = (level - line.begin) / line.change;
      if (at > 0 && at < 1) cuts_.push_back(at);
    }
  }
  std::sort(cuts_.begin(), cuts_.end());
  cuts_.erase(std::unique(cuts_.begin(), cuts_.end()), cuts_.end());
}

// Marks the stretches on which the line alone has the full weight: gaps of 1 up to the close gap at
// both ends, or 0 at the end where the two runners meet.
void PackIntegral::cover(const GapLine& line) {
  const auto firstCut = [&](auto isBehind) {
    const auto found = std::partition_point(cuts_.begin(), cuts_.end(),
                                            [&](double at) { return !isBehind(gapAt(line, at)); });
    return static_cast<std::size_t>(found - cuts_.begin());
  };
  const auto meetAt = [&](std::size_t cut) {
    return cut < cuts_.size() && gapAt(line, cuts_[cut]) == 0;
  };
  const double close = weight_.close();
  std::size_t first = 0;
  std::size_t end = 0;  // the last cut of the covered part
  if (line.change > 0) {
    first = firstCut([](double gap) { return gap >= 1; });
    end = firstCut([close](double gap) { return gap > close; });
    if (end > first && first > 0 && meetAt(first - 1)) --first;
    if (end > 0) --end;
  } else if (line.change < 0) {
    first = firstCut([close](double gap) { return gap <= close; });
    end = firstCut([](double gap) { return gap < 1; });
    if (end > first && meetAt(end)) ++end;
    if (end > 0) --end;
  }
  if (first < end) fullUntil_[first] = std::max(fullUntil_[first], end);
}

double PackIntegral::share(std::span<const GapLine> lines) {
  const bool anyBehind = std::any_of(lines.begin(), lines.end(), [](const GapLine& line) {
    return std::max(line.begin, line.begin + line.change) >= 0;
  });
  if (!anyBehind) return 0;
  fullUntil_.assign(cuts_.size(), 0);
  if (lines.size() >= largePack) {
    for (const GapLine& line : lines) cover(line);
  }
  double share = 0;
  std::size_t full = 0;
  largest_ = 0;
  for (std::size_t i = 0; i + 1 < cuts_.size(); ++i) {
    full = std::max(full, fullUntil_[i]);
    share += (cuts_[i + 1] - cuts_[i]) * (i < full ? 1 : largestWeight(lines, i));
  }
  return share;
}

double PackIntegral::largestWeight(std::span<const GapLine> lines, std::size_t stretch) {
  const double from = cuts_[stretch];
  const double to = cuts_[stretch + 1];
  const double middle = (from + to) / 2;
  const auto weightOf = [&](const GapLine& line) {
    return weight_.atEnd(gapAt(line, from), line.change) +
           weight_.atEnd(gapAt(line, to), -line.change);
  };
  // Between the close and the far gap the weight falls evenly, so a line whose gap in the middle is
  // larger (by more than rounding can hide) than that of the best one cannot weigh more.
  const double fall = static_cast<double>(weight_.far()) - weight_.close();
  const auto limitFor = [&](double weight) {
    return fall > 0 ? weight_.far() + 1.0 - weight * fall : std::numeric_limits<double>::infinity();
  };
  double largest = weightOf(lines[largest_]);
  double limit = limitFor(largest);
  for (std::size_t k = 0; k < lines.size() && largest < 1; ++k) {
    const double gap = lines[k].begin + lines[k].change * middle;
    if (gap < -1 || gap > limit) continue;
    const double weight = weightOf(lines[k]);
    if (weight <= largest) continue;
    largest = weight;
    largest_ = k;
    limit = limitFor(weight);
  }
  return largest;
}

}  // namespace larkstone
