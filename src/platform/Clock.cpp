#include "platform/Clock.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

namespace platform {

double steadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void sleepSeconds(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

std::string localTimeOfDay(std::int64_t secondsSince1970) {
  const auto instant = static_cast<std::time_t>(secondsSince1970);
  std::tm local{};
  if (::localtime_r(&instant, &local) == nullptr) return {};
  char text[16];
  return {text, std::strftime(text, sizeof text, "%H:%M:%S", &local)};
}

}  // namespace platform
