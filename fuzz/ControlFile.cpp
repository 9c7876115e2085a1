// Any bytes as the control file. Reading it gives host, port and token as they stand there, or says that it
// could not be read, naming the file; the token of a file that is not taken is in no message.
#include "client/ControlFile.h"

#include <cmath>

#include <boost/json.hpp>

#include "client/Errors.h"
#include "json/JSONText.h"
#include "support/Fuzz.h"

namespace {

std::optional<zelto::APICredentials> read() {
  try {
    return zelto::readCredentials();
  } catch (const zelto::MCPError& error) {
    fuzz::expect(error.message == "could not read " + zelto::controlFilePath(), "the message names the file",
                 error.message);
    fuzz::expect(error.cause == zelto::Cause::controlFile, "a file that is there starts nothing",
                 error.message);
    return std::nullopt;
  }
}

/// Whether `port` is what `given` says, as an integer, a number without a fraction, or digits.
bool isPort(const boost::json::value& given, std::int64_t port) {
  if (given.is_string()) {
    const std::string digits(given.get_string());
    char* end = nullptr;
    return std::strtoll(digits.c_str(), &end, 10) == port && end == digits.c_str() + digits.size();
  }
  // The library reads "0e999" as not a number.
  const double number = given.is_number() ? given.to_number<double>() : 0.5;
  return number == static_cast<double>(port) || (std::isnan(number) && port == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static const std::string path = fuzz::privateDirectory() + "/control.json";
  ::setenv("ZELTO_CONTROL_FILE", path.c_str(), 1);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  fuzz::writeFile(path, text);
  const auto credentials = read();

  boost::json::error_code error;
  boost::json::parse_options options;
  options.max_depth = 512;
  const auto value = boost::json::parse(text, error, {}, options);
  const auto* object = error ? nullptr : value.if_object();
  const auto member = [&](const char* key) { return object != nullptr ? object->if_contains(key) : nullptr; };
  const auto *host = member("host"), *port = member("port"), *token = member("token");
  const bool isWhole = host && port && token && host->is_string() && token->is_string();
  fuzz::expect(!credentials || isWhole, "nothing is taken from half a file", text);
  const bool isPlain = isWhole && port->is_int64() && json::parse(text);
  fuzz::expect(credentials || !isPlain, "a whole file is taken", text);
  if (!credentials) return 0;
  fuzz::expect(std::string_view(host->get_string()) == credentials->host &&
                   std::string_view(token->get_string()) == credentials->token &&
                   isPort(*port, credentials->port),
               "host, port and token are the file's", text);
  return 0;
}
