// The command layer's call of the API: it starts the application where that is needed, and its errors are
// written for people.
#pragma once

#include "client/APICall.h"

namespace zelto {

/// `apiCall`. On finding the API off, says so on standard error, starts it and repeats the call once. A
/// request without a time-out gets the one of the settings. Raises `CLIError` with the message of the
/// `MCPError` that ended it.
JSONDocument cliCall(APIRequest request);

/// `answer`, which is an object. Raises `CLIError` "expected an object from the API, got " and its kind.
JSONDocument expectObject(JSONDocument answer);

/// `answer`, which is a list of objects. Raises `CLIError` "expected a list from the API, got " and its kind.
JSONDocument expectList(JSONDocument answer);

}  // namespace zelto
