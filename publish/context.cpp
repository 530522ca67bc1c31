#include "publish/context.h"

#include <algorithm>
#include <thread>

#include "core/conv.h"
#include "core/folders.h"

namespace kp {

std::chrono::milliseconds SteadyClock::Now() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

void SteadyClock::Sleep(std::chrono::milliseconds ms) { std::this_thread::sleep_for(ms); }

void WaitWithEvents(PublishContext& c, std::chrono::milliseconds ms) {
  SteadyClock real;
  Clock& clock = c.clock ? *c.clock : real;
  // Short slices keep the windows responsive while the wait lasts.
  constexpr std::chrono::milliseconds kSlice{20};
  const auto deadline = clock.Now() + ms;
  for (auto now = clock.Now(); now < deadline; now = clock.Now()) {
    c.env.prompter.ProcessEvents();
    clock.Sleep(std::min(kSlice, deadline - now));
  }
  c.env.prompter.ProcessEvents();
}

std::string AppletTempFolder(const Env& env) {
  return EndBackslash(WriteFolder(env)) + "AppletTemp";
}

}  // namespace kp
