#include "api/CLICall.h"

#include <algorithm>

#include "api/Errors.h"
#include "api/StartOnDemand.h"

namespace zelto {
double requestTimeout = 15;

JSONValue cliCall(std::string_view method, std::string_view path, const std::optional<JSONValue>& body,
                  const Query& query, std::optional<double> timeout) {
  return startingOnDemand(
      [&] { return apiCall(method, path, body, query, timeout.value_or(requestTimeout)); });
}

JSONObject expectObject(JSONValue value) {
  if (auto* object = value.object()) return std::move(*object);
  throw CLIError("expected an object from the API, got " + std::string(value.kindName()));
}

JSONArray expectList(JSONValue value) {
  auto* list = value.array();
  const auto isObject = [](const JSONValue& element) { return element.object() != nullptr; };
  if (list != nullptr && std::all_of(list->begin(), list->end(), isObject)) return std::move(*list);
  throw CLIError("expected a list from the API, got " + std::string(value.kindName()));
}

}  // namespace zelto
