// The flags that every command has without declaring them.
#pragma once

#include <optional>
#include <vector>

#include "ArgumentParser/ArgumentDefinition.h"
#include "ArgumentParser/CommandTree.h"

namespace ArgumentParser {

/// The names of the help flag for the stack: those of its last command that sets them, else -h and --help.
/// With hidden visibility, those of the flag that also shows hidden definitions (--help-hidden).
std::vector<Name> helpNames(const CommandStack& stack, Visibility visibility = Visibility::default_);

/// The last non-empty version of the stack.
std::optional<Version> version(const CommandStack& stack);

/// The definitions of --version, if the stack has a version, and of the help flag, if it has names, in the
/// order in which help lists them.
std::vector<ArgumentDefinition> builtInDefinitions(const CommandStack& stack);

/// The request that the elements hold, if any: help, hidden help, dump or version, in this order of
/// precedence.
std::optional<ParserError> builtInRequest(const std::vector<SplitArguments::Element>& elements,
                                          const CommandStack& stack);

}  // namespace ArgumentParser
