#include "ArgumentParser/declarations/Arguments.h"

namespace ArgumentParser::detail {

std::pair<std::vector<Name>, std::vector<Name>> invertedNames(std::string_view key,
                                                              const NameSpecification& names,
                                                              FlagInversion inversion) {
  // A leading underscore marks a private field; it is no part of the option's name.
  if (key.starts_with('_')) key.remove_prefix(1);
  std::vector<Name> setting, clearing;
  for (const Name& name : names.makeNames(key)) {
    const auto prefixed = [&](const char* prefix) {
      return Name{name.kind, std::string(prefix) + "-" + name.text};
    };
    if (name.isShort()) {
      // A single character has no room for a prefix, so it only sets.
      setting.push_back(name);
    } else if (inversion == FlagInversion::prefixedNo) {
      setting.push_back(name);
      clearing.push_back(prefixed("no"));
    } else {
      setting.push_back(prefixed("enable"));
      clearing.push_back(prefixed("disable"));
    }
  }
  if (clearing.empty()) {
    throw DeclarationError("The flag '" + std::string(key) +
                           "' has no long name to make its inversion from.");
  }
  return {setting, clearing};
}

ArgumentDefinition::Help makeHelp(const ArgumentHelp& help, const GroupSpec& group) {
  ArgumentDefinition::Help result;
  result.abstract = help.abstract;
  result.discussion.text = help.discussion;
  result.valueName = help.valueName;
  result.visibility = std::max(help.visibility, group.visibility);
  result.parentTitle = group.title;
  return result;
}

void checkNames(std::string_view key, const NameSpecification& names) {
  if (names.isEmpty()) {
    throw DeclarationError("The option or flag '" + std::string(key) + "' has no name.");
  }
  names.check(key);
}

void checkFlag(std::string_view key, const FlagSpec& spec) {
  checkNames(key, spec.name);
  checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
  if (spec.inversion) {
    invertedNames(key, spec.name, *spec.inversion);
  } else if (spec.defaultValue == true || spec.defaulted) {
    throw DeclarationError("The flag '" + std::string(key) +
                           "' has a default, but without an inversion it can only become true.");
  }
}

void checkDefaults(std::string_view key, bool hasValue, bool isDefaulted) {
  if (hasValue && isDefaulted) {
    throw DeclarationError("The argument '" + std::string(key) +
                           "' has two defaults, its own and the field's.");
  }
}

}  // namespace ArgumentParser::detail
