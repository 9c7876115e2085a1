// The command layer's call of the API, which starts the application where that is needed.
#pragma once

#include <string_view>

#include "api/APICall.h"

namespace zelto {

/// Seconds that a call of a command waits, unless it says otherwise; `--timeout` sets it.
extern double requestTimeout;

/// Makes `apiCall`s of a command: on finding the API off, says so on standard error, starts it and repeats
/// the call once. Without `timeout`, `requestTimeout` counts. Raises `CLIError`.
JSONValue cliCall(std::string_view method, std::string_view path, const std::optional<JSONValue>& body = {},
                  const Query& query = {}, std::optional<double> timeout = {});

/// The object that `value` is. Raises `CLIError` "expected an object from the API, got " and its kind.
JSONObject expectObject(JSONValue value);

/// The list of objects that `value` is. Raises `CLIError` "expected a list from the API, got " and its kind.
JSONArray expectList(JSONValue value);

}  // namespace zelto
