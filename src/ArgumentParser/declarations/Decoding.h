// From what was typed to a field's value: the conversions that a definition carries, made from the field's
// type.
#pragma once

#include <algorithm>
#include <concepts>
#include <exception>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ArgumentParser/declarations/FieldShape.h"

namespace ArgumentParser::detail {

[[noreturn]] void raiseUnableToParse(const InputKey& key, const ParsedValue& given,
                                     std::optional<std::string> reason = {});
[[noreturn]] void raiseNoValue(const InputKey& key);

template <class Value>
Value converted(const InputKey& key, const ParsedValue& given, const Transform<Value>& transform) {
  std::optional<Value> value;
  try {
    if (transform) {
      value = transform(given.text());
    } else if constexpr (ConvertibleArgument<Value>) {
      value = ArgumentValue<Value>::parse(given.text());
    }
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    raiseUnableToParse(key, given, error.what());
  }
  if (!value) raiseUnableToParse(key, given);
  return *std::move(value);
}

template <class Value>
std::string defaultText(const Value& value) {
  if constexpr (requires { ArgumentValue<Value>::text(value); }) {
    return ArgumentValue<Value>::text(value);
  } else {
    return {};
  }
}
/// Whether a default holds the value, as the field itself or as one of several.
template <class Field, class Value>
bool holds(const Field& field, const Value& value) {
  if constexpr (std::same_as<Field, Value>) {
    return field == value;
  } else if constexpr (requires { field.has_value(); }) {
    return field && holds(*field, value);
  } else {
    return std::find(field.begin(), field.end(), value) != field.end();
  }
}

template <class Value>
std::string defaultText(const std::optional<Value>& value) {
  return value ? defaultText(*value) : std::string();
}
template <class Value>
std::string defaultText(const std::vector<Value>& values) {
  std::string result;
  for (const Value& value : values) result.append(result.empty() ? "" : ", ").append(defaultText(value));
  return result;
}

/// Adds the fixed choices of an enumeration to a definition that takes one.
template <class Value>
void describeValues(ArgumentDefinition& definition) {
  if constexpr (EnumeratedArgument<Value>) {
    std::vector<std::pair<std::string, std::string>> described;
    bool anyDescribed = false;
    for (const auto& each : EnumeratedValues<Value>::values()) {
      definition.help.allValueStrings.push_back(each.name);
      described.emplace_back(each.name, each.description);
      anyDescribed = anyDescribed || !each.description.empty();
    }
    if (anyDescribed) definition.help.discussion.values = std::move(described);
    if (definition.completion.kind == CompletionKind::Kind::default_) {
      definition.completion = CompletionKind::list(definition.help.allValueStrings);
    }
  }
}

template <class Value>
using Conversion = std::function<Value(const ParsedValue&)>;

/// Makes a value of what was typed; the option without its value stands for `defaultAsFlag`.
template <class Value>
Conversion<Value> conversion(const InputKey& key, const std::optional<Value>& defaultAsFlag,
                             const Transform<Value>& transform) {
  return [key, defaultAsFlag, transform](const ParsedValue& given) {
    // A flag's number in place of a text means the option without a value.
    return defaultAsFlag && std::holds_alternative<int>(given.value)
               ? *defaultAsFlag
               : converted<Value>(key, given, transform);
  };
}

/// Stores the values of a field, wherever its record has it. If none is given, the field gets the default, or
/// stays as it is.
template <class Field>
ArgumentDefinition::Decode decoder(std::function<Field*(void*)> locate, const ArgumentDefinition& definition,
                                   std::optional<Field> otherwise,
                                   Conversion<typename FieldShape<Field>::Value> convert) {
  return [locate = std::move(locate), key = definition.key, isOptional = definition.help.isOptional,
          otherwise = std::move(otherwise),
          convert = std::move(convert)](void* root, const ParsedElement* given) {
    Field& target = *locate(root);
    if (given == nullptr || given->values.empty()) {
      if (!isOptional) raiseNoValue(key);
      if (otherwise) target = *otherwise;
    } else if constexpr (FieldShape<Field>::isRepeating) {
      std::vector<typename FieldShape<Field>::Value> values;
      for (const ParsedValue& value : given->values) values.push_back(convert(value));
      target = std::move(values);
    } else {
      target = convert(given->values.back());
    }
  };
}

}  // namespace ArgumentParser::detail
