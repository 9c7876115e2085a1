// The whole life of a process whose command line is declared with this library.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ArgumentParser/CommandTree.h"

namespace ArgumentParser {

/// The command that `arguments` (without the program's own name) ask for, ready to run. Raises
/// `CommandError`.
std::unique_ptr<CommandRecord> parseAsRoot(const CommandTree& tree,
                                           const std::vector<std::string>& arguments);

/// Parses the process's arguments, runs the command they name, prints what there is to say of its end, and
/// returns the exit status. A malformed declaration ends it at once with status 70.
int main(CommandType root, int argc, const char* const* argv);

}  // namespace ArgumentParser
