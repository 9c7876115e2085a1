// The names of options and flags, and how a declaration asks for them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace ArgumentParser {

/// One name of an option or flag, as it stands on a command line.
struct Name {
  enum class Kind { long_, short_, longWithSingleDash };

  Kind kind = Kind::long_;
  std::string text;             ///< without its dashes; of a short name the one character
  bool allowingJoined = false;  ///< short names: "-Dvalue" is the name "-D" with the value "value"

  static Name makeLong(std::string_view text) { return {Kind::long_, std::string(text)}; }
  static Name makeShort(std::string_view character, bool allowingJoined = false) {
    return {Kind::short_, std::string(character), allowingJoined};
  }
  static Name makeLongWithSingleDash(std::string_view text) {
    return {Kind::longWithSingleDash, std::string(text)};
  }

  bool isShort() const { return kind == Kind::short_; }
  /// The name as typed: "--text", "-c" or "-text".
  std::string synopsisString() const { return (kind == Kind::long_ ? "--" : "-") + text; }
  /// The name without its dashes.
  const std::string& valueString() const { return text; }

  friend bool operator==(const Name& a, const Name& b) { return a.kind == b.kind && a.text == b.text; }
};

/// The name that stands for a definition where one is shown: the first that is not short, else the first.
/// `names` must not be empty.
const Name& preferredName(const std::vector<Name>& names);

/// Which names an option or flag has, in order.
struct NameSpecification {
  struct Long {};   ///< "--" and the field's name by the kebab rule
  struct Short {};  ///< "-" and the first character of the field's name
  struct CustomLong {
    std::string text;
    bool withSingleDash = false;
  };
  struct CustomShort {
    std::string character;
    bool allowingJoined = false;
  };
  struct InvalidLiteral {
    std::string literal;
    std::string message;
  };
  using Element = std::variant<Long, Short, CustomLong, CustomShort, InvalidLiteral>;

  NameSpecification() : isLong(true) {}
  NameSpecification(std::initializer_list<Element> list);
  NameSpecification(Element element);
  /// Names written as they are typed: "--name", "-n", "-name".
  NameSpecification(const char* literal);
  NameSpecification(std::initializer_list<const char*> literals);
  static NameSpecification literals(std::initializer_list<const char*> list) { return {list}; }
  static NameSpecification customLong(std::string text, bool withSingleDash = false);
  static NameSpecification customShort(std::string character, bool allowingJoined = false);
  static NameSpecification none();
  // Compiled once, in the library, and not in every file with declarations.
  NameSpecification(const NameSpecification&);
  NameSpecification(NameSpecification&&) noexcept;
  NameSpecification& operator=(const NameSpecification&);
  NameSpecification& operator=(NameSpecification&&) noexcept;
  ~NameSpecification();

  /// The element that a literal name stands for; an `InvalidLiteral` says what is wrong with it.
  static Element elementFromLiteral(std::string_view literal);

  bool isEmpty() const { return elements.empty() && !isLong; }

  /// Raises `DeclarationError` if a field called `key` cannot have these names.
  void check(std::string_view key) const;

  /// The names for a field called `key`. Raises `DeclarationError`.
  std::vector<Name> makeNames(std::string_view key) const;

  std::vector<Element> elements;
  bool isLong =
      false;  ///< only `Long`, stored without an element: it is the default, and a start makes many of them
};

/// `Short` and `Long`. It becomes a `NameSpecification` only where it is used: one built before `main` would
/// allocate where nobody could report that memory has run out.
struct ShortAndLong {
  operator NameSpecification() const;
};
inline constexpr ShortAndLong shortAndLong;

/// "noColor" as "no-color": lower case, with `separator` before each word.
std::string convertedToSnakeCase(std::string_view name, char separator = '-');

}  // namespace ArgumentParser
