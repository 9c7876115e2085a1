#include "cli/CLICall.h"

#include "cli/CLIError.h"
#include "cli/Settings.h"
#include "client/Errors.h"
#include "client/StartAPI.h"
#include "client/Timeouts.h"
#include "client/Wire.h"
#include "platform/Streams.h"

namespace zelto {
namespace {

/// Starts the API and makes the call again.
JSONDocument callAfterStart(const APIRequest& request) {
  platform::printError("Starting Zelto's local API…\n");
  try {
    ensureAPIRunning(timeouts::start);
    return apiCall(request);
  } catch (const MCPError& error) {
    if (error.cause == Cause::off) throw CLIError("Zelto's local API could not be started.");
    throw CLIError(error.message);
  }
}

}  // namespace

JSONDocument cliCall(APIRequest request) {
  if (!request.timeout) request.timeout = settings.requestTimeout;
  try {
    return apiCall(request);
  } catch (const MCPError& error) {
    // This is the place to decide what else is tried again, by the cause.
    if (error.cause != Cause::off) throw CLIError(error.message);
  }
  return callAfterStart(request);
}

JSONDocument expectObject(JSONDocument answer) {
  if (answer.root().isObject()) return answer;
  throw CLIError("expected an object from the API, got " + std::string(nameOf(answer.root().kind())));
}

JSONDocument expectList(JSONDocument answer) {
  if (isListOfObjects(answer)) return answer;
  throw CLIError("expected a list from the API, got " + std::string(nameOf(answer.root().kind())));
}

}  // namespace zelto
