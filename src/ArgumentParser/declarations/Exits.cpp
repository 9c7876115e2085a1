#include "ArgumentParser/declarations/Exits.h"

#include <utility>

namespace ArgumentParser {

const ExitCode ExitCode::success{0};
const ExitCode ExitCode::failure{1};
const ExitCode ExitCode::validationFailure{64};

CleanExit::CleanExit(std::variant<HelpRequest, Message, DumpRequest> what) : request(std::move(what)) {}
CleanExit::CleanExit(const CleanExit&) = default;
CleanExit& CleanExit::operator=(const CleanExit&) = default;
CleanExit::~CleanExit() = default;

CleanExit CleanExit::helpRequest(CommandIdentity command) {
  return CleanExit(HelpRequest{command});
}
CleanExit CleanExit::message(std::string text) {
  return CleanExit(Message{std::move(text)});
}
CleanExit CleanExit::dumpRequest(CommandIdentity command) {
  return CleanExit(DumpRequest{command});
}

const char* CleanExit::what() const noexcept {
  const auto* message = std::get_if<Message>(&request);
  if (message != nullptr) return message->text.c_str();
  return std::holds_alternative<DumpRequest>(request) ? "--experimental-dump-help" : "--help";
}

}  // namespace ArgumentParser
