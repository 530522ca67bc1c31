#include "core/event_pacer.h"

#include <gtest/gtest.h>

namespace kp {
namespace {

using namespace std::chrono_literals;

struct FakeClock {
  EventPacer::Clock::time_point t{};
  std::function<EventPacer::Clock::time_point()> fn() {
    return [this] { return t; };
  }
};

TEST(EventPacer, FirstCallIsDue) {
  FakeClock c;
  EventPacer pacer(30ms, c.fn());
  EXPECT_TRUE(pacer.Due());
}

TEST(EventPacer, NotDueAgainBeforeTheIntervalPassed) {
  FakeClock c;
  EventPacer pacer(30ms, c.fn());
  ASSERT_TRUE(pacer.Due());
  c.t += 29ms;
  EXPECT_FALSE(pacer.Due());
  EXPECT_FALSE(pacer.Due());
  c.t += 1ms;
  EXPECT_TRUE(pacer.Due());
  // The interval counts from the last run, not from the first.
  c.t += 20ms;
  EXPECT_FALSE(pacer.Due());
  c.t += 10ms;
  EXPECT_TRUE(pacer.Due());
}

TEST(EventPacer, ThousandQuickItemsRunEventsOnlyAFewTimes) {
  FakeClock c;
  EventPacer pacer(30ms, c.fn());
  int runs = 0;
  for (int i = 0; i < 1000; ++i) {
    if (pacer.Due()) ++runs;
    c.t += 100us;  // 100 ms in all
  }
  EXPECT_EQ(runs, 4);  // at 0, 30, 60 and 90 ms
}

}  // namespace
}  // namespace kp
