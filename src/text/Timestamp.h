// Time stamps as they stand in JSON.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace text {

/// The instant of an internet date and time (RFC 3339: "2025-01-21T07:55:09.123+01:00"), with or without
/// fractional seconds, which are cut off, in seconds since 1970-01-01T00:00:00Z; nothing for any other text.
std::optional<std::int64_t> secondsSince1970(std::string_view stamp);

}  // namespace text
