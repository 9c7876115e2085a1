// The one-line synopsis of a command and of its arguments.
#pragma once

#include <optional>
#include <string>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/CommandTree.h"

namespace ArgumentParser {

/// A definition as it appears in a usage line: "[--count <count>]", "<ids> ...". Nothing for one that is not
/// shown.
std::optional<std::string> synopsis(const ArgumentDefinition& definition);

/// The same for an error about a missing argument, which is shown without the brackets of an optional one.
std::optional<std::string> synopsisForError(const ArgumentDefinition& definition);

/// A definition as it appears at the start of a help entry: "-c, --count <count>", "<ids>".
std::string longSynopsis(const ArgumentDefinition& definition);

/// The usage of the stack's last command, its tool name first; the declared usage if there is one.
std::string usage(const CommandStack& stack);

/// "Usage: " and the usage; empty if the usage is.
std::string usageMessage(const CommandStack& stack);

}  // namespace ArgumentParser
