// The command layer's call of the API: it starts the application where that is needed, and its errors are
// written for people.
#pragma once

#include "client/APICall.h"

namespace zelto {

/// `apiCall`. On finding the API off, says so on standard error, starts it and repeats the call once. A
/// request without a time-out gets the one of the settings. Raises `CLIError` with the message of the
/// `MCPError` that ended it.
JSONValue cliCall(APIRequest request);

/// The object that `value` is. Raises `CLIError` "expected an object from the API, got " and its kind.
JSONObject expectObject(JSONValue value);

/// The list of objects that `value` is. Raises `CLIError` "expected a list from the API, got " and its kind.
JSONArray expectList(JSONValue value);

}  // namespace zelto
