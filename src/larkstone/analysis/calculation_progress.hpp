#pragma once

// How far a calculation is.

#include <array>
#include <functional>
#include <string_view>
#include <utility>

#include "larkstone/core/enums.hpp"

namespace larkstone {

/// Tells a handler (which may be empty) about the stages 0 to 8 of a calculation. The share of each
/// stage in the work is estimated from the number of runners and legs.
class CalculationProgress {
 public:
  using Handler = std::function<void(std::string_view message, float value)>;

  CalculationProgress(Handler handler, int runners, int legs, bool timesWithoutTimeLoss,
                      enmCourseCalculationFlags flags);

  void started() const { raise("start calculate", 0); }
  /// A part of a stage is done.
  void report(int stage, int done, int of) const;
  void finished() const { raise("end calculate", 1); }

 private:
  static constexpr int stages = 9;

  void raise(std::string_view message, float value) const {
    if (handler_) handler_(message, value);
  }

  Handler handler_;
  std::array<float, stages> weight_{};
  std::array<float, stages> before_{};  // the work of the stages in front
  float total_ = 1;
};

}  // namespace larkstone
