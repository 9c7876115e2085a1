#include "client/APICall.h"

#include "client/ControlFile.h"
#include "client/Errors.h"
#include "client/HTTPExchange.h"
#include "client/Timeouts.h"
#include "json/JSONText.h"

namespace zelto {
namespace {

bool isUnreserved(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
         byte == '-' || byte == '.' || byte == '_' || byte == '~';
}

/// The path and the query string, its keys sorted.
std::string targetOf(const APIRequest& request) {
  std::string target = request.path;
  char separator = '?';
  for (const auto& [key, value] : request.query) {
    if (!value || value->isNull()) continue;
    target.append(1, separator)
        .append(percentEncode(key))
        .append(1, '=')
        .append(percentEncode(argumentText(*value)));
    separator = '&';
  }
  return target;
}

std::string errorDetail(const std::optional<JSONValue>& response, std::int64_t status) {
  if (!response) return std::to_string(status);
  if (const auto* object = response->object()) {
    if (const JSONValue* error = object->find("error")) return argumentText(*error);
  }
  return argumentText(*response);
}

}  // namespace

std::string percentEncode(std::string_view text) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (const char byte : text) {
    if (isUnreserved(byte)) {
      result += byte;
    } else {
      const auto code = static_cast<unsigned char>(byte);
      result.append({'%', digits[code >> 4], digits[code & 15]});
    }
  }
  return result;
}

std::string argumentText(const JSONValue& value) {
  if (const auto* string = value.string()) return *string;
  if (value.isNumber()) return json::numberText(value);
  return json::text(value, json::compact).value_or(std::string());
}

JSONValue apiCall(const APIRequest& request) {
  const APICredentials credentials = readCredentials();
  const std::string body =
      request.body ? json::text(*request.body, json::compact).value_or(std::string()) : std::string();
  const HTTPResponse response = exchange(credentials, request.method, targetOf(request), body,
                                         request.timeout.value_or(timeouts::usual));
  auto value = json::parseContainer(response.body());
  if (response.status < 200 || response.status > 299) {
    throw MCPError(Cause::http,
                   "HTTP " + std::to_string(response.status) + ": " + errorDetail(value, response.status));
  }
  if (!value) return JSONObject();
  return *std::move(value);
}

}  // namespace zelto
