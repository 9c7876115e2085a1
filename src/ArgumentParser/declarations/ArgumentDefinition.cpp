#include "ArgumentParser/declarations/ArgumentDefinition.h"

#include <algorithm>

namespace ArgumentParser {

ArgumentDefinition::ArgumentDefinition() = default;
ArgumentDefinition::ArgumentDefinition(const ArgumentDefinition&) = default;
ArgumentDefinition::ArgumentDefinition(ArgumentDefinition&&) noexcept = default;
ArgumentDefinition& ArgumentDefinition::operator=(const ArgumentDefinition&) = default;
ArgumentDefinition& ArgumentDefinition::operator=(ArgumentDefinition&&) noexcept = default;
ArgumentDefinition::~ArgumentDefinition() = default;

std::string ArgumentDefinition::valueName() const {
  if (!help.valueName.empty()) return help.valueName;
  if (!names.empty()) return preferredName(names).valueString();
  const std::string name = convertedToSnakeCase(key.name);
  return name.empty() ? "value" : name;
}

const ArgumentDefinition* ArgumentSet::find(const Name& name) const {
  const auto found =
      std::find_if(content.rbegin(), content.rend(), [&](const ArgumentDefinition& definition) {
        return std::find(definition.names.begin(), definition.names.end(), name) != definition.names.end();
      });
  return found != content.rend() ? &*found : nullptr;
}

const ArgumentDefinition* ArgumentSet::find(const InputKey& key) const {
  const auto found = std::find_if(content.begin(), content.end(), [&](const ArgumentDefinition& definition) {
    return definition.key == key;
  });
  return found != content.end() ? &*found : nullptr;
}

bool ArgumentSet::isChecked(const void* group) {
  const bool found = std::find(checkedGroups.begin(), checkedGroups.end(), group) != checkedGroups.end();
  if (!found) checkedGroups.push_back(group);
  return found;
}

bool ArgumentSet::capturesAllRemainingInput() const {
  return positional(ParsingStrategy::allRemainingInput) != nullptr;
}

const ArgumentDefinition* ArgumentSet::positional(ParsingStrategy strategy) const {
  const auto found = std::find_if(content.begin(), content.end(), [&](const ArgumentDefinition& definition) {
    return definition.isPositional() && definition.parsingStrategy == strategy;
  });
  return found != content.end() ? &*found : nullptr;
}

}  // namespace ArgumentParser
