// One authenticated call of the application's local API.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "json/JSONDocument.h"
#include "json/JSONValue.h"

namespace zelto {

using json::JSONArray;
using json::JSONDocument;
using json::JSONObject;
using json::JSONValue;
using json::JSONView;

/// Query parameters; one without a value, or with JSON null, is left out of the URL.
using Query = std::map<std::string, std::optional<JSONValue>>;

/// What a call asks for.
struct APIRequest {
  std::string_view method;  ///< "GET", "POST", "PATCH" or "DELETE"
  std::string path;         ///< percent-encoded, without a query
  Query query = {};
  std::optional<JSONValue> body = {};
  std::optional<double> timeout =
      {};  ///< seconds, cut to whole ones; without it, what is usual for the caller
};

/// `text` with every byte but ASCII letters, digits, "-", ".", "_" and "~" as "%" and two upper-case
/// hexadecimal digits.
std::string percentEncode(std::string_view text);

/// A value as it reads in a path, a query or an error: strings and numbers plain, anything else as compact
/// JSON.
std::string argumentText(JSONView value);
std::string argumentText(const JSONValue& value);

/// Reads the control file, makes one exchange and returns the response's JSON; an absent or unreadable body
/// reads as an empty object. Raises `MCPError`.
JSONDocument apiCall(const APIRequest& request);

}  // namespace zelto
