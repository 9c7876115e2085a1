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

std::string errorDetail(const std::optional<JSONDocument>& response, std::int64_t status) {
  if (!response) return std::to_string(status);
  return argumentText(response->root().find("error").value_or(response->root()));
}

/// What a response says; its top level must be an array or an object.
std::optional<JSONDocument> answerIn(HTTPResponse response) {
  auto document = JSONDocument::parse(std::move(response.received), response.headSize);
  const bool isContainer = document && (document->root().isArray() || document->root().isObject());
  return isContainer ? std::move(document) : std::nullopt;
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

std::string argumentText(JSONView value) {
  if (const auto string = value.string()) return std::string(*string);
  if (const auto number = value.number()) return number->text();
  return json::text(value, json::compact);
}

std::string argumentText(const JSONValue& value) {
  if (const auto* string = value.string()) return *string;
  if (const auto* number = value.number()) return number->text();
  return json::text(value, json::compact).value_or(std::string());
}

JSONDocument apiCall(const APIRequest& request) {
  const APICredentials credentials = readCredentials();
  const std::string body =
      request.body ? json::text(*request.body, json::compact).value_or(std::string()) : std::string();
  HTTPResponse response = exchange(credentials, request.method, targetOf(request), body,
                                   request.timeout.value_or(timeouts::usual));
  const std::int64_t status = response.status;
  auto answer = answerIn(std::move(response));
  if (status < 200 || status > 299)
    throw MCPError(Cause::http, "HTTP " + std::to_string(status) + ": " + errorDetail(answer, status));
  return answer ? *std::move(answer) : JSONDocument::parse("{}").value();
}

}  // namespace zelto
