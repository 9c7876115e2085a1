#include "api/APICall.h"

#include "api/ControlFile.h"
#include "api/Errors.h"
#include "api/HTTPExchange.h"
#include "json/JSONText.h"

namespace zelto {
namespace {

bool isUnreserved(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
         byte == '-' || byte == '.' || byte == '_' || byte == '~';
}

/// A value as it reads in a query or an error text: strings and numbers plain, the rest as JSON.
std::string plainText(const JSONValue& value) {
  if (const auto* string = value.string()) return *string;
  if (value.isNumber()) return json::numberText(value);
  return json::text(value, json::compact).value_or(std::string());
}

std::string errorDetail(const std::optional<JSONValue>& response, std::int64_t status) {
  if (!response) return std::to_string(status);
  if (const auto* object = response->object()) {
    if (const JSONValue* error = object->find("error")) return plainText(*error);
  }
  return plainText(*response);
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

std::string requestTarget(std::string_view path, const Query& query) {
  std::string target(path);
  char separator = '?';
  for (const auto& [key, value] : query) {
    if (!value || value->isNull()) continue;
    target.append(1, separator)
        .append(percentEncode(key))
        .append(1, '=')
        .append(percentEncode(plainText(*value)));
    separator = '&';
  }
  return target;
}

JSONValue apiCall(std::string_view method, std::string_view path, const std::optional<JSONValue>& body,
                  const Query& query, double timeout) {
  const APICredentials credentials = readCredentials();
  const std::string bodyText =
      body ? json::text(*body, json::compact).value_or(std::string()) : std::string();
  const HTTPResponse response = exchange(credentials, method, requestTarget(path, query), bodyText, timeout);
  auto value = json::parseContainer(response.body());
  if (response.status < 200 || response.status > 299) {
    throw MCPError("HTTP " + std::to_string(response.status) + ": " + errorDetail(value, response.status));
  }
  if (!value) return JSONObject();
  return *std::move(value);
}

}  // namespace zelto
