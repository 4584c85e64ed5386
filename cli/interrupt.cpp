#include "cli/interrupt.hpp"

#include <csignal>

namespace larkstone::cli {

namespace {

volatile std::sig_atomic_t stopRequested = 0;

void requestStop(int /*signal*/) { stopRequested = 1; }

}  // namespace

InterruptGuard::InterruptGuard() {
  stopRequested = 0;
  std::signal(SIGINT, requestStop);
  std::signal(SIGTERM, requestStop);
}

InterruptGuard::~InterruptGuard() {
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
}

bool interrupted() { return stopRequested != 0; }

}  // namespace larkstone::cli
