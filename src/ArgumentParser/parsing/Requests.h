// The requests that every command line understands undeclared: help, dump and version. A further
// request is a row in Requests.cpp and the function that answers it.
#pragma once

#include <optional>
#include <vector>

#include "ArgumentParser/parsing/Outcome.h"
#include "ArgumentParser/parsing/SplitArguments.h"

namespace ArgumentParser {

/// The first request that the elements hold, in the order of precedence; nothing if they hold none.
std::optional<Request> builtInRequest(const std::vector<SplitArguments::Element>& elements,
                                      const CommandStack& stack);

/// The request for the help of the stack's last command.
Request helpRequest(CommandStack stack, Visibility visibility = Visibility::default_);

/// The request for the dump of the stack's last command and all below it.
Request dumpRequest(CommandStack stack);

}  // namespace ArgumentParser
