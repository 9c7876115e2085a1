// How the values of an argument are completed in a shell.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ArgumentParser {

/// One way to complete a value, by the function that makes it.
struct CompletionKind {
  /// The function gets the words of the command line, the index of the word at the cursor, and the cursor's
  /// place within it.
  using Custom = std::function<std::vector<std::string>(const std::vector<std::string>& words,
                                                        std::size_t wordIndex, std::size_t cursorIndex)>;
  using CustomDeprecated = std::function<std::vector<std::string>(const std::vector<std::string>& words)>;

  enum class Kind { default_, list, file, directory, shellCommand, custom, customAsync, customDeprecated };

  static CompletionKind list(std::vector<std::string> values) { return {Kind::list, std::move(values)}; }
  static CompletionKind file(std::vector<std::string> extensions = {}) {
    return {Kind::file, std::move(extensions)};
  }
  static CompletionKind directory() { return {Kind::directory}; }
  static CompletionKind shellCommand(std::string text) { return {Kind::shellCommand, {std::move(text)}}; }
  static CompletionKind custom(Custom function) { return {Kind::custom, {}, std::move(function)}; }
  static CompletionKind customAsync(Custom function) { return {Kind::customAsync, {}, std::move(function)}; }
  static CompletionKind customDeprecated(CustomDeprecated function) {
    return {Kind::customDeprecated,
            {},
            [function = std::move(function)](const auto& words, std::size_t, std::size_t) {
              return function(words);
            }};
  }

  Kind kind = Kind::default_;
  std::vector<std::string> texts = {};  ///< a list's values, a file's extensions, a shell command's text
  Custom function = {};
};

}  // namespace ArgumentParser
