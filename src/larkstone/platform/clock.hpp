#pragma once

// The clocks of the system.

#include "larkstone/core/date.hpp"

namespace larkstone {

/// The local date and time of day, to the second.
Date currentDate();

/// Seconds of a clock that only goes forward, for measuring how long something took.
double performanceCounter();

}  // namespace larkstone
