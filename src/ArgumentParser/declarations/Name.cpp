#include "ArgumentParser/declarations/Name.h"

#include <algorithm>

#include "ArgumentParser/declarations/Exits.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

bool isNameCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

/// The first thing wrong with a literal name; empty if nothing is.
std::string_view literalFault(std::string_view literal, std::size_t dashes) {
  if (literal.empty()) return "Can't use the empty string as a name.";
  if (literal.find(' ') != std::string_view::npos) return "Can't use spaces in a name.";
  if (!std::all_of(literal.begin(), literal.end(), isNameCharacter)) {
    return "Must use only letters, numbers, underscores, or dashes.";
  }
  if (dashes == 0) return "Need one or two prefix dashes.";
  if (dashes > 2) return "Can't have more than a two-dash prefix.";
  if (dashes == literal.size()) return "Need at least one character after the dash prefix.";
  return {};
}

/// Whether a shell, and so a completion script, would read one of the characters as something else than a
/// part of a word.
bool isSpecialInShells(std::string_view name) {
  return name.find_first_of(" \t\n\r\v\f\"'`$\\;|&<>()") != std::string_view::npos;
}

/// Raises `DeclarationError` for an element that gives the field called `key` no usable name.
struct CheckName {
  std::string_view key;

  [[noreturn]] void raise(const std::string& name, const char* message) const {
    throw DeclarationError("Invalid name '" + name + "' for property '" + std::string(key) + "': " + message);
  }
  void checkForShells(const std::string& name) const {
    if (isSpecialInShells(name)) raise(name, "Can't use a character that means something to a shell.");
  }
  void operator()(const NameSpecification::Long&) const {
    if (key.empty()) throw DeclarationError("Key '' has not characters to form long option name.");
  }
  void operator()(const NameSpecification::Short&) const {
    if (key.empty()) throw DeclarationError("Key '' has not characters to form short option name.");
  }
  void operator()(const NameSpecification::CustomLong& custom) const {
    if (custom.text.empty()) raise(custom.text, "Can't use the empty string as a name.");
    if (custom.text.front() == '-') raise(custom.text, "The dashes are added by themselves.");
    if (custom.text.find('=') != std::string::npos) raise(custom.text, "Can't use '=', which ends a name.");
    checkForShells(custom.text);
  }
  void operator()(const NameSpecification::CustomShort& custom) const {
    const bool isOne = custom.character.size() == 1 || text::clusterCount(custom.character) == 1;
    if (!isOne || custom.character == "-" || custom.character == "=") {
      raise(custom.character, "A short name is one character, without its dash.");
    }
    checkForShells(custom.character);
  }
  void operator()(const NameSpecification::InvalidLiteral& invalid) const {
    throw DeclarationError("Invalid literal name '" + invalid.literal + "' for property '" +
                           std::string(key) + "': " + invalid.message);
  }
};

}  // namespace

const Name& preferredName(const std::vector<Name>& names) {
  const auto found =
      std::find_if(names.begin(), names.end(), [](const Name& name) { return !name.isShort(); });
  return found != names.end() ? *found : names.front();
}

NameSpecification::NameSpecification(std::initializer_list<Element> list) : elements(list) {}
NameSpecification::NameSpecification(Element element) : elements{std::move(element)} {}
NameSpecification::NameSpecification(const char* literal) : elements{elementFromLiteral(literal)} {}

NameSpecification::NameSpecification(const NameSpecification&) = default;
NameSpecification::NameSpecification(NameSpecification&&) noexcept = default;
NameSpecification& NameSpecification::operator=(const NameSpecification&) = default;
NameSpecification& NameSpecification::operator=(NameSpecification&&) noexcept = default;
NameSpecification::~NameSpecification() = default;

NameSpecification NameSpecification::customLong(std::string text, bool withSingleDash) {
  return Element(CustomLong{std::move(text), withSingleDash});
}
NameSpecification NameSpecification::customShort(std::string character, bool allowingJoined) {
  return Element(CustomShort{std::move(character), allowingJoined});
}
NameSpecification NameSpecification::none() {
  return std::initializer_list<Element>{};
}

ShortAndLong::operator NameSpecification() const {
  return {NameSpecification::Short{}, NameSpecification::Long{}};
}

NameSpecification::NameSpecification(std::initializer_list<const char*> literals) {
  for (const char* literal : literals) elements.push_back(elementFromLiteral(literal));
}

NameSpecification::Element NameSpecification::elementFromLiteral(std::string_view literal) {
  const std::size_t dashes = std::min(literal.find_first_not_of('-'), literal.size());
  if (const auto fault = literalFault(literal, dashes); !fault.empty()) {
    return InvalidLiteral{std::string(literal), std::string(fault)};
  }
  const std::string text(literal.substr(dashes));
  if (dashes == 1 && text.size() == 1) return CustomShort{text};
  return CustomLong{text, dashes == 1};
}

void NameSpecification::check(std::string_view key) const {
  if (isLong) CheckName{key}(Long{});
  for (const Element& element : elements) std::visit(CheckName{key}, element);
}

std::vector<Name> NameSpecification::makeNames(std::string_view key) const {
  check(key);
  std::vector<Name> names;
  if (isLong) names.push_back(Name::makeLong(convertedToSnakeCase(key)));
  for (const Element& element : elements) {
    names.push_back(
        std::visit(Overloaded{[&](const Long&) { return Name::makeLong(convertedToSnakeCase(key)); },
                              [&](const Short&) { return Name::makeShort(text::clusterPrefix(key, 1)); },
                              [](const CustomLong& custom) {
                                return custom.withSingleDash ? Name::makeLongWithSingleDash(custom.text)
                                                             : Name::makeLong(custom.text);
                              },
                              [](const CustomShort& custom) {
                                return Name::makeShort(custom.character, custom.allowingJoined);
                              },
                              [](const InvalidLiteral&) { return Name(); }},
                   element));
  }
  return names;
}

std::string convertedToSnakeCase(std::string_view name, char separator) {
  const auto characters = text::clusters(name);
  const auto isUpper = [&](std::size_t at) { return text::lowercased(characters[at]) != characters[at]; };
  const auto isLower = [&](std::size_t at) { return text::uppercased(characters[at]) != characters[at]; };
  std::string result;
  bool separatesOnUpper = true;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const std::string lower = text::lowercased(characters[i]);
    if (lower != characters[i]) {
      if (separatesOnUpper && !result.empty()) result += separator;
      // An acronym is one word; its last capital begins the next one ("JSONFile" is "json-file").
      separatesOnUpper = i + 2 < characters.size() && isUpper(i + 1) && isLower(i + 2);
    } else {
      separatesOnUpper = characters[i] != std::string_view(&separator, 1);
    }
    result += lower;
  }
  return result;
}

}  // namespace ArgumentParser
