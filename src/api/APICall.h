// One authenticated call of the application's local API.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "json/JSONValue.h"

namespace zelto {

using json::JSONArray;
using json::JSONObject;
using json::JSONValue;

/// Query parameters; one without a value, or with JSON null, is left out of the URL.
using Query = std::map<std::string, std::optional<JSONValue>>;

/// `text` with every byte but ASCII letters, digits, "-", ".", "_" and "~" as "%" and two upper-case
/// hexadecimal digits.
std::string percentEncode(std::string_view text);

/// `path` and the query string, its keys sorted.
std::string requestTarget(std::string_view path, const Query& query);

/// Reads the control file, makes one exchange and returns the response's JSON; an absent or unreadable body
/// reads as an empty object. `path` is percent-encoded, `timeout` in seconds. Raises `MCPError`.
JSONValue apiCall(std::string_view method, std::string_view path, const std::optional<JSONValue>& body,
                  const Query& query, double timeout);

}  // namespace zelto
