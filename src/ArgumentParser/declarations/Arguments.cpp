#include "ArgumentParser/declarations/Arguments.h"

#include <algorithm>
#include <tuple>

namespace ArgumentParser {

ArgumentHelp::ArgumentHelp() = default;
ArgumentHelp::ArgumentHelp(const char* text) : abstract(text) {}
ArgumentHelp::ArgumentHelp(std::string text, std::string longer, std::string name, Visibility shown)
    : abstract(std::move(text)),
      discussion(std::move(longer)),
      valueName(std::move(name)),
      visibility(shown) {}
ArgumentHelp::ArgumentHelp(const ArgumentHelp&) = default;
ArgumentHelp::ArgumentHelp(ArgumentHelp&&) noexcept = default;
ArgumentHelp& ArgumentHelp::operator=(const ArgumentHelp&) = default;
ArgumentHelp& ArgumentHelp::operator=(ArgumentHelp&&) noexcept = default;
ArgumentHelp::~ArgumentHelp() = default;

namespace detail {
namespace {

/// The two name lists of an inverted flag: those that set and those that clear it.
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

}  // namespace

InitialRecord::~InitialRecord() {
  if (record != nullptr) destroy(record);
}

void* InitialRecord::fields() {
  if (record == nullptr) record = make();
  return record;
}

ArgumentsBase::ArgumentsBase(ArgumentSet& target, InitialRecord& initial, std::vector<std::string> path,
                             GroupSpec spec)
    : set(target), fresh(initial), keyPath(std::move(path)), groupSpec(std::move(spec)) {}
ArgumentsBase::~ArgumentsBase() = default;

void ArgumentsBase::add(ArgumentDefinition&& definition) {
  set.content.push_back(std::move(definition));
}

ArgumentDefinition ArgumentsBase::make(std::string_view key, const ArgumentHelp& help) const {
  ArgumentDefinition definition;
  definition.key = {std::string(key), keyPath};
  definition.help.abstract = help.abstract;
  definition.help.discussion.text = help.discussion;
  definition.help.valueName = help.valueName;
  definition.help.visibility = std::max(help.visibility, groupSpec.visibility);
  definition.help.parentTitle = groupSpec.title;
  return definition;
}

ArgumentDefinition ArgumentsBase::make(std::string_view key, const ArgumentHelp& help,
                                       const NameSpecification& names) const {
  ArgumentDefinition definition = make(key, help);
  definition.names = names.makeNames(key);
  return definition;
}

void ArgumentsBase::addInverted(ArgumentDefinition setting, std::string_view key, const FlagSpec& spec,
                                std::optional<bool> shown) {
  setting.help.isComposite = true;
  setting.exclusivity = spec.exclusivity;
  ArgumentDefinition clearing = setting;
  clearing.decode = {};
  clearing.flagCase = 0;
  std::tie(setting.names, clearing.names) = invertedNames(key, spec.name, *spec.inversion);
  if (shown) {
    ArgumentDefinition& holder = *shown ? setting : clearing;
    holder.help.defaultValue = preferredName(holder.names).synopsisString();
  }
  add(std::move(setting));
  add(std::move(clearing));
}

void ArgumentsBase::checkNames(std::string_view key, const NameSpecification& names) {
  if (names.isEmpty()) {
    throw DeclarationError("The option or flag '" + std::string(key) + "' has no name.");
  }
  names.check(key);
}

void ArgumentsBase::checkFlag(std::string_view key, const FlagSpec& spec) {
  checkNames(key, spec.name);
  checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
  if (spec.inversion) {
    invertedNames(key, spec.name, *spec.inversion);
  } else if (spec.defaultValue == true || spec.defaulted) {
    throw DeclarationError("The flag '" + std::string(key) +
                           "' has a default, but without an inversion it can only become true.");
  }
}

void ArgumentsBase::checkDefaults(std::string_view key, bool hasValue, bool isDefaulted) {
  if (hasValue && isDefaulted) {
    throw DeclarationError("The argument '" + std::string(key) +
                           "' has two defaults, its own and the field's.");
  }
}

}  // namespace detail
}  // namespace ArgumentParser
