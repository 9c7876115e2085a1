// Time: a steady clock, blocking sleep, and the user's local time of day.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Seconds on a clock that never goes back.
double steadySeconds();

/// Blocks the thread for that many seconds, interruptions included.
void sleepSeconds(double seconds);

/// The local time of day, "HH:mm:ss", of an instant given in seconds since 1970-01-01T00:00:00Z.
std::string localTimeOfDay(std::int64_t secondsSince1970);

}  // namespace platform
