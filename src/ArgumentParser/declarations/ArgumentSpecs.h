// What a declaration says of an argument besides its field: names, help, default, strategy and completion.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/FieldShape.h"

namespace ArgumentParser {

/// What help says about an argument.
struct ArgumentHelp {
  ArgumentHelp();
  ArgumentHelp(const char* text);
  ArgumentHelp(std::string text, std::string longer = {}, std::string name = {},
               Visibility shown = Visibility::default_);
  // What every declaration copies and destroys is compiled once, in the library.
  ArgumentHelp(const ArgumentHelp&);
  ArgumentHelp(ArgumentHelp&&) noexcept;
  ArgumentHelp& operator=(const ArgumentHelp&);
  ArgumentHelp& operator=(ArgumentHelp&&) noexcept;
  ~ArgumentHelp();
  static ArgumentHelp hidden() { return {{}, {}, {}, Visibility::hidden}; }
  static ArgumentHelp private_() { return {{}, {}, {}, Visibility::private_}; }

  std::string abstract = {};
  std::string discussion = {};
  std::string valueName = {};
  Visibility visibility = Visibility::default_;
};

/// How a positional is declared, besides its field.
template <class Field>
struct ArgumentSpec {
  using Value = typename FieldShape<Field>::Value;

  ArgumentHelp help = {};
  detail::DefaultValue<Field> defaultValue = {};
  bool atLeastOne = false;  ///< a repeating one that must be given
  detail::StrategyChoice<typename FieldShape<Field>::ArgumentStrategy> parsing = {};
  CompletionKind completion = {};
  /// Converts a text in place of the type's own conversion: nothing for a text that is no such value; what it
  /// throws is shown after the error.
  detail::Transform<Value> transform = detail::ownConversion<Value>();
  bool defaulted = false;  ///< the field's value in a new record is the default
};

/// How an option is declared, besides its field.
template <class Field>
struct OptionSpec {
  using Value = typename FieldShape<Field>::Value;

  ArgumentHelp help = {};
  NameSpecification name = {};
  detail::DefaultValue<Field> defaultValue = {};
  /// Lets the value be left out: the option alone then means this.
  detail::DefaultValue<Value> defaultAsFlag = {};
  detail::StrategyChoice<typename FieldShape<Field>::OptionStrategy> parsing = {};
  CompletionKind completion = {};
  detail::Transform<Value> transform = detail::ownConversion<Value>();
  bool atLeastOne = false;  ///< a repeating one that must be given
  bool defaulted = false;   ///< the field's value in a new record is the default
};

enum class FlagInversion { prefixedNo, prefixedEnableDisable };

/// How a Boolean flag is declared. `inversion` and the two fields after it belong together.
struct FlagSpec {
  ArgumentHelp help = {};
  NameSpecification name = {};
  std::optional<FlagInversion> inversion = {};
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  detail::DefaultValue<bool> defaultValue = {};
  bool defaulted = false;  ///< the field's value in a new record is the default
};

/// One flag of an enumerated set: the value it stands for, its case's name, and how it is called and
/// explained.
template <class Value>
struct FlagCase {
  Value value;
  std::string caseName;
  NameSpecification name = {};
  ArgumentHelp help = {};
};

template <class Field>
struct EnumeratedFlagSpec {
  std::vector<FlagCase<typename FieldShape<Field>::Value>> cases;
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  typename detail::EnumeratedDefault<Field>::Type defaultValue = {};
  ArgumentHelp help = {};
  bool defaulted = false;  ///< the field's value in a new record is the default
};

/// An option group: its title makes it a section of its own in help.
struct GroupSpec {
  std::string title = {};
  Visibility visibility = Visibility::default_;
};

}  // namespace ArgumentParser
