#include "larkstone/platform/clock.hpp"

#include <chrono>
#include <ctime>

namespace larkstone {

Date currentDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  const Time timeOfDay = ((local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec) * 100;
  return dateOf({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}, timeOfDay);
}

double performanceCounter() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

}  // namespace larkstone
