#include "ArgumentParser/parsing/ArgumentMatcher.h"

#include <algorithm>
#include <limits>

#include "ArgumentParser/parsing/ParserError.h"

namespace ArgumentParser {
namespace {

using Element = SplitArguments::Element;

constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

/// Whether the element is the long name "-abc" that a cluster may also be read as.
bool isClusterHead(const Element& element) {
  return element.index.isComplete() && element.option() != nullptr && !element.option()->value &&
         element.option()->name.kind == Name::Kind::longWithSingleDash;
}

}  // namespace

const ParsedElement* ParsedValues::find(const InputKey& key) const {
  const auto found = std::find_if(elements.begin(), elements.end(),
                                  [&](const ParsedElement& element) { return element.key == key; });
  return found != elements.end() ? &*found : nullptr;
}

ParsedElement& ParsedValues::at(const InputKey& key) {
  if (const ParsedElement* found = find(key)) return const_cast<ParsedElement&>(*found);
  return elements.emplace_back(ParsedElement{key});
}

bool ArgumentMatcher::endsPass(const Element& element) const {
  if (const std::string* text = element.text()) {
    if (set.capturesAllRemainingInput()) return true;
    const CommandNode* child = command != nullptr ? command->child(*text) : nullptr;
    return child != nullptr && child->arguments().capturesAllRemainingInput();
  }
  return element.option() != nullptr && !isClusterHead(element) && set.capturesAllRemainingInput() &&
         set.find(element.option()->name) == nullptr;
}

void ArgumentMatcher::matchOptions() {
  for (std::size_t position = 0; position < split.elements().size(); ++position) {
    if (split.isRemoved(position)) continue;
    const Element& element = split.elements()[position];
    if (endsPass(element)) break;
    const ParsedArgument* option = element.option();
    const ArgumentDefinition* definition = option != nullptr ? set.find(option->name) : nullptr;
    if (definition == nullptr) continue;
    if (definition->update == ArgumentDefinition::Update::nullary) {
      if (option->value) {
        throw ParserError(
            parser_error::UnexpectedValueForOption{element.index, option->name, *option->value});
      }
      record(*definition, element);
    } else {
      takeValue(*definition, position);
    }
  }
  split.compact();
}

void ArgumentMatcher::record(const ArgumentDefinition& flag, const Element& element) {
  ParsedElement& given = values.at(flag.key);
  const bool isFurther = flag.help.isComposite && !flag.help.isRepeating && !given.values.empty();
  const bool differs = isFurther && given.values.back().flagCase() != flag.flagCase;
  if (differs && flag.exclusivity == FlagExclusivity::exclusive) {
    throw ParserError(parser_error::DuplicateExclusiveValues{*given.values.back().origin, element.index,
                                                             split.originalInput});
  }
  if (!isFurther || flag.exclusivity != FlagExclusivity::chooseFirst) {
    given.values.push_back({flag.flagCase, element.index, element.option()->name});
  }
  split.remove(element.index);
}

void ArgumentMatcher::store(const ArgumentDefinition& definition, ParsedValue value) {
  values.at(definition.key).values.push_back(std::move(value));
}

bool ArgumentMatcher::takeAttachedValue(const ArgumentDefinition& option, const Element& element) {
  const ParsedArgument& given = *element.option();
  if (given.value) {
    store(option, {*given.value, element.index, given.name});
    split.remove(element.index);
    return true;
  }
  if (element.index.subIndex != std::optional<std::size_t>(0)) return false;
  const auto joins = [&](const Name& name) { return name == given.name && name.allowingJoined; };
  if (std::none_of(option.names.begin(), option.names.end(), joins)) return false;
  const std::string& typed = split.typed(element.index.inputIndex);
  store(option, {typed.substr(1 + given.name.text.size()), element.index, given.name});
  split.remove({element.index.inputIndex});
  return true;
}

void ArgumentMatcher::takeValue(const ArgumentDefinition& option, std::size_t position) {
  const Element& element = split.elements()[position];
  const ParsingStrategy strategy = option.parsingStrategy;
  const bool takesAny =
      strategy == ParsingStrategy::unconditional || strategy == ParsingStrategy::allRemainingInput;
  const bool takesMany =
      strategy == ParsingStrategy::upToNextOption || strategy == ParsingStrategy::allRemainingInput;
  const bool isAttached = takeAttachedValue(option, element);
  if (isAttached && !takesMany) return;

  std::size_t next = split.nextAfter(position);
  if (strategy == ParsingStrategy::scanningForValue) next = nextValue(next);
  const bool isFound =
      next < split.elements().size() && (takesAny || split.elements()[next].text() != nullptr);
  if (!isFound && !isAttached && strategy != ParsingStrategy::allRemainingInput) {
    if (option.update != ArgumentDefinition::Update::optionalUnary) raiseMissing(element);
    store(option, {1, element.index, element.option()->name});
    return split.remove(element.index);
  }
  takeLater(option, element, next, !takesAny, takesMany ? all : 1);
}

/// The position, from the given one on, of the first value that no option has taken yet.
std::size_t ArgumentMatcher::nextValue(std::size_t position) {
  scannedTo = split.unclaimedFrom(std::max(position, scannedTo));
  while (scannedTo < split.elements().size() && split.elements()[scannedTo].text() == nullptr) {
    scannedTo = split.unclaimedFrom(scannedTo + 1);
  }
  return scannedTo;
}

/// Takes up to `most` whole arguments, by their typed text, from position `from` on; with `onlyValues` up to
/// the first element that is no value.
void ArgumentMatcher::takeLater(const ArgumentDefinition& option, const Element& element, std::size_t from,
                                bool onlyValues, std::size_t most) {
  for (std::size_t at = from; at < split.elements().size() && most > 0; at = split.unclaimedFrom(at + 1)) {
    const Element& next = split.elements()[at];
    if (onlyValues && next.text() == nullptr) break;
    store(option, {split.typed(next.index.inputIndex), next.index, element.option()->name});
    split.remove({next.index.inputIndex});
    --most;
  }
  split.remove(element.index);
}

void ArgumentMatcher::raiseMissing(const Element& element) const {
  const Name& name = element.option()->name;
  if (element.index.isComplete()) throw ParserError(parser_error::MissingValueForOption{element.index, name});
  const std::string& typed = split.typed(element.index.inputIndex);
  throw ParserError(parser_error::MissingValueOrUnknownCompositeOption{
      element.index, name, Name::makeLongWithSingleDash(typed.substr(1))});
}

void ArgumentMatcher::matchPositionals() {
  const auto& elements = split.elements();
  const ArgumentDefinition* afterTerminator = set.positional(ParsingStrategy::postTerminator);
  const auto take = [&](const ArgumentDefinition& definition, std::size_t at) {
    const Index index = elements[at].index;
    store(definition, {split.typed(index.inputIndex), index});
    split.remove({index.inputIndex});
  };

  std::size_t end = elements.size();
  if (afterTerminator != nullptr) {
    end = 0;
    while (end < elements.size() && !elements[end].isTerminator()) ++end;
    for (std::size_t at = end; at < elements.size(); ++at) {
      if (elements[at].text() != nullptr) take(*afterTerminator, at);
    }
  }

  std::size_t at = 0;
  // What takes all the input takes options too, but only after the first value.
  bool hasValue = false;
  for (const ArgumentDefinition& definition : set.content) {
    const bool takesAny = definition.parsingStrategy == ParsingStrategy::allRemainingInput;
    if (!definition.isPositional() || !(takesAny || definition.parsingStrategy == ParsingStrategy::default_))
      continue;
    for (; at < end; ++at) {
      const bool isWanted = elements[at].text() != nullptr || (takesAny && hasValue);
      if (split.isRemoved(at) || !isWanted) continue;
      take(definition, at);
      hasValue = true;
      if (!definition.help.isRepeating) break;
    }
  }

  if (const ArgumentDefinition* rest = set.positional(ParsingStrategy::allUnrecognized)) {
    split.compact();
    capturedUnrecognized = elements;
    for (at = 0; at < elements.size(); at = split.unclaimedFrom(at)) {
      const Index index = elements[at].index;
      if (index.isComplete()) {
        take(*rest, at);
      } else {
        // Another flag of the same argument has been claimed, so only this one is unexpected.
        store(*rest, {elements[at].option()->name.synopsisString(), index});
        split.remove(index);
      }
    }
  }
  split.compact();
}

}  // namespace ArgumentParser
