// What a command line gave for one argument, before it is converted to the field's type.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ArgumentParser/declarations/Name.h"

namespace ArgumentParser {

/// Tells two definitions apart: the field's name, and the option groups above it.
struct InputKey {
  std::string name;
  std::vector<std::string> path = {};
  friend bool operator==(const InputKey&, const InputKey&) = default;
};

/// The place of an input: the argument it came from, and which character of a cluster of short options it is.
struct Index {
  std::size_t inputIndex = 0;
  std::optional<std::size_t> subIndex = std::nullopt;  ///< nothing for a whole argument

  bool isComplete() const { return !subIndex; }
  friend bool operator==(const Index&, const Index&) = default;
  /// By argument, a whole one before its characters. Not `<=>`, which `std::optional` lacks in libc++ 16.
  friend bool operator<(const Index& left, const Index& right) {
    return left.inputIndex != right.inputIndex ? left.inputIndex < right.inputIndex
                                               : left.subIndex < right.subIndex;
  }
};

/// One value given for a definition, where it was given and under which name. A flag's value is the number of
/// its case.
struct ParsedValue {
  std::variant<std::string, int> value;
  std::optional<Index> origin = std::nullopt;
  std::optional<Name> name = std::nullopt;

  const std::string& text() const { return std::get<std::string>(value); }
  int flagCase() const { return std::get<int>(value); }
};

/// All values given for one key, in input order.
struct ParsedElement {
  InputKey key;
  std::vector<ParsedValue> values = {};
};

}  // namespace ArgumentParser
