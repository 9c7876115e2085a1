// The first stage of parsing: the arguments as typed, cut into options, values and the terminator.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ArgumentParser/declarations/ParsedValue.h"

namespace ArgumentParser {

/// An option as typed, with the value after its "=" if it has one.
struct ParsedArgument {
  Name name;
  std::optional<std::string> value = std::nullopt;
};

/// The elements of a command line that no command has claimed yet, in input order; a cluster "-abc" is one
/// complete element, the long name "-abc", followed by its short members.
class SplitArguments {
 public:
  struct Value {
    std::string text;
  };
  struct Terminator {};

  struct Element {
    std::variant<ParsedArgument, Value, Terminator> value = Terminator{};
    Index index = {};

    const ParsedArgument* option() const { return std::get_if<ParsedArgument>(&value); }
    const std::string* text() const {
      const auto* held = std::get_if<Value>(&value);
      return held != nullptr ? &held->text : nullptr;
    }
    bool isTerminator() const { return std::holds_alternative<Terminator>(value); }
  };

  /// Cuts the arguments up. Raises `ParserError` (`InvalidOption`).
  explicit SplitArguments(std::vector<std::string> arguments);

  /// What is left, in input order, as of the last `compact`.
  const std::vector<Element>& elements() const { return remaining; }

  /// Marks the element at `index` as claimed. A complete element takes its members with it; a member takes
  /// the complete element along, because once "-a" of "-abc" is claimed, there is no long name "-abc" any
  /// more.
  void remove(const Index& index);

  /// Whether the element at that position of `elements` has been claimed since the last `compact`.
  bool isRemoved(std::size_t position) const { return next[position] != position; }

  /// The first unclaimed position from the given one on; the number of elements if there is none.
  std::size_t unclaimedFrom(std::size_t position);

  /// The position of the first unclaimed element after the argument of the one at `position`; the number of
  /// elements if there is none.
  std::size_t nextAfter(std::size_t position);

  /// Drops all claimed elements.
  void compact();

  /// The argument as typed.
  const std::string& typed(std::size_t inputIndex) const { return originalInput[inputIndex]; }

  std::vector<std::string> originalInput;

 private:
  void split(const std::string& argument, std::size_t position);
  std::size_t firstFrom(const Index& index) const;
  void claim(std::size_t position);
  void unclaimAll();

  std::vector<Element> remaining;
  /// For an unclaimed element its own position; for a claimed one a later position on the way to the next
  /// unclaimed one, so that long runs of claimed elements are skipped quickly.
  std::vector<std::size_t> next;
};

}  // namespace ArgumentParser
