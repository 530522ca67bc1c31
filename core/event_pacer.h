// A long loop in the event thread lets pending events run between items so
// that its progress window stays live. Running them after every item costs
// more than the items once the windows hold many rows (each run lays out
// and repaints what changed), so the loop asks the pacer whether a run is
// due: at the first item, and then when `every` has passed since the last.
#pragma once

#include <chrono>
#include <functional>

namespace kp {

class EventPacer {
 public:
  using Clock = std::chrono::steady_clock;

  explicit EventPacer(std::chrono::milliseconds every = std::chrono::milliseconds(30),
                      std::function<Clock::time_point()> now = &Clock::now)
      : every_(every), now_(std::move(now)) {}

  bool Due() {
    const Clock::time_point t = now_();
    if (started_ && t - last_ < every_) return false;
    started_ = true;
    last_ = t;
    return true;
  }

 private:
  std::chrono::milliseconds every_;
  std::function<Clock::time_point()> now_;
  Clock::time_point last_{};
  bool started_ = false;
};

}  // namespace kp
