// What the completion scripts of all shells share: which commands and arguments appear in them, what these
// are called there, and quoting.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "ArgumentParser/ToolInfo.h"

namespace ArgumentParser::completions {

/// A positional and its index among all positionals of its command, the hidden ones included, since they
/// take words of the command line as well.
struct Positional {
  const ArgumentInfoV0& info;
  std::size_t index;
};

/// The children that scripts mention.
std::vector<const CommandInfoV0*> children(const CommandInfoV0& command);
/// The options and flags that scripts mention.
std::vector<const ArgumentInfoV0*> named(const CommandInfoV0& command);
/// The positionals that scripts mention.
std::vector<Positional> positionals(const CommandInfoV0& command);

/// How many positionals a command has, hidden ones included, and whether one of them repeats.
struct PositionalCount {
  std::size_t count = 0;
  bool isRepeating = false;
};
PositionalCount positionalCount(const CommandInfoV0& command);

/// The names of all commands from the root down to this one.
std::vector<std::string> path(const CommandInfoV0& command);
/// The shell function that completes the command's part of the line: "_root_sub".
std::string functionName(const CommandInfoV0& command);
/// In bash's and zsh's language, the functions of all commands below one, parents first; `functionBody` says
/// what one of them does.
std::string functionsBelow(const CommandInfoV0& command,
                           std::string (*functionBody)(const CommandInfoV0& command));
/// All names of an option or flag as typed.
std::vector<std::string> names(const ArgumentInfoV0& argument);

/// The arguments with which a script calls the program for the custom completions of an argument; `index` is
/// that of a positional.
std::string customCall(const CommandInfoV0& command, const ArgumentInfoV0& argument, std::size_t index);

/// The kind of an argument's completion, "default" if it has none.
std::string_view kind(const ArgumentInfoV0& argument);

/// `text` with every `what` in it replaced by `with`.
std::string replaced(std::string text, std::string_view what, std::string_view with);
/// `pattern` with the root's name for each "TOOL" in it.
std::string forRoot(std::string_view pattern, const CommandInfoV0& command);
/// A shell's fixed text (completion/scripts) for the root of `command`, its lines "# <...>" replaced by
/// `parts`, in order. Each part ends in a newline or is empty; the whole has none at its end.
std::string filled(std::string_view script, const CommandInfoV0& command,
                   std::initializer_list<std::string> parts);
/// The fixed texts, as CMake embeds them.
extern const std::string_view bashText, zshText, fishText;

/// `text` with a backslash before each of `characters` in it.
std::string backslashed(std::string_view text, std::string_view characters);
/// `text` for use between single quotes in bash and zsh.
std::string escaped(std::string_view text);
/// `text` as a single-quoted word of bash and zsh.
std::string shellQuoted(std::string_view text);
/// `text` as bash's `compgen -W` gives it back unchanged: it expands each word of its list.
std::string escapedForWordList(std::string_view text);

}  // namespace ArgumentParser::completions
