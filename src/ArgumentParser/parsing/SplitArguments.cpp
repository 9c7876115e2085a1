#include "ArgumentParser/parsing/SplitArguments.h"

#include <algorithm>
#include <numeric>

#include "ArgumentParser/parsing/ParserError.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

/// The byte offset of the first character that is exactly `character`: one with a combining mark after it is
/// another character.
std::size_t findCharacter(const std::vector<std::string_view>& characters, std::string_view character) {
  std::size_t offset = 0;
  for (const std::string_view each : characters) {
    if (each == character) return offset;
    offset += each.size();
  }
  return std::string_view::npos;
}

}  // namespace

SplitArguments::SplitArguments(std::vector<std::string> arguments) : originalInput(std::move(arguments)) {
  remaining.reserve(originalInput.size());
  bool terminated = false;
  for (std::size_t position = 0; position < originalInput.size(); ++position) {
    const std::string& argument = originalInput[position];
    if (terminated) {
      remaining.push_back({Value{argument}, {position}});
    } else if (argument == "--") {
      remaining.push_back({Terminator{}, {position}});
      terminated = true;
    } else {
      split(argument, position);
    }
  }
  unclaimAll();
}

void SplitArguments::split(const std::string& argument, std::size_t position) {
  const auto characters = text::clusters(argument);
  const auto isDash = [](std::string_view character) { return character == "-"; };
  const auto dashes = static_cast<std::size_t>(
      std::find_if_not(characters.begin(), characters.end(), isDash) - characters.begin());

  if (dashes == 0 || argument == "-") {
    remaining.push_back({Value{argument}, {position}});
    return;
  }
  if (dashes > 2) throw ParserError(parser_error::InvalidOption{argument});

  const std::size_t equals = findCharacter(characters, "=");
  const bool hasValue = equals != std::string_view::npos;
  const std::string name = argument.substr(dashes, hasValue ? equals - dashes : std::string::npos);
  std::optional<std::string> value;
  if (hasValue) value = argument.substr(equals + 1);

  if (dashes == 2) {
    // "--name=" gives no value at all, so that the option looks for one as "--name" does.
    if (value && value->empty()) value.reset();
    remaining.push_back({ParsedArgument{Name::makeLong(name), value}, {position}});
    return;
  }
  if (name.empty()) throw ParserError(parser_error::InvalidOption{argument});
  const auto members = text::clusters(name);
  if (members.size() == 1) {
    remaining.push_back({ParsedArgument{Name::makeShort(name), value}, {position}});
    return;
  }
  remaining.push_back({ParsedArgument{Name::makeLongWithSingleDash(name), value}, {position}});
  if (hasValue) return;
  for (std::size_t i = 0; i < members.size(); ++i) {
    remaining.push_back({ParsedArgument{Name::makeShort(members[i])}, {position, i}});
  }
}

/// The position of the first element that does not stand before `index`.
std::size_t SplitArguments::firstFrom(const Index& index) const {
  const auto isBefore = [](const Element& element, const Index& other) { return element.index < other; };
  return static_cast<std::size_t>(std::lower_bound(remaining.begin(), remaining.end(), index, isBefore) -
                                  remaining.begin());
}

void SplitArguments::claim(std::size_t position) {
  if (!isRemoved(position)) next[position] = position + 1;
}

void SplitArguments::unclaimAll() {
  next.resize(remaining.size() + 1);
  std::iota(next.begin(), next.end(), std::size_t{0});
}

void SplitArguments::remove(const Index& index) {
  const std::size_t head = firstFrom({index.inputIndex});
  if (index.isComplete()) {
    const std::size_t end = firstFrom({index.inputIndex + 1});
    for (std::size_t at = head; at < end; ++at) claim(at);
  } else {
    claim(firstFrom(index));
    if (remaining[head].index.isComplete()) claim(head);
  }
}

std::size_t SplitArguments::unclaimedFrom(std::size_t position) {
  while (isRemoved(position)) position = next[position] = next[next[position]];
  return position;
}

std::size_t SplitArguments::nextAfter(std::size_t position) {
  return unclaimedFrom(firstFrom({remaining[position].index.inputIndex + 1}));
}

void SplitArguments::compact() {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < remaining.size(); ++i) {
    if (isRemoved(i)) continue;
    if (kept != i) remaining[kept] = std::move(remaining[i]);
    ++kept;
  }
  remaining.resize(kept);
  unclaimAll();
}

}  // namespace ArgumentParser
