#pragma once

// Ctrl-C as a question that long work asks, so that nothing half-done is left behind.

namespace larkstone::cli {

/// While one exists, Ctrl-C and a polite kill are remembered instead of ending the program.
class InterruptGuard {
 public:
  InterruptGuard();
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;
};

/// Whether the user asked to stop.
bool interrupted();

}  // namespace larkstone::cli
