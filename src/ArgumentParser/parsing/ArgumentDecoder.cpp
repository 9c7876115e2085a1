#include "ArgumentParser/parsing/ArgumentDecoder.h"

#include <utility>

#include "ArgumentParser/parsing/ParserError.h"

namespace ArgumentParser {

namespace {

std::shared_ptr<const void> recordOf(const ArgumentSet::Parent& parent, const Records& above) {
  for (const auto& record : above) {
    if (record->identity() == parent.identity) return {record, record->fields()};
  }
  throw ParserError(parser_error::NotParentCommand{parent.typeName});
}

}  // namespace

std::shared_ptr<CommandRecord> decode(const CommandNode& node, const ParsedValues& values,
                                      const Records& above) {
  auto record = node.declaration.makeRecord();
  for (const ArgumentDefinition& definition : node.arguments().content) {
    if (definition.decode) definition.decode(record->fields(), values.find(definition.key));
  }
  for (const ArgumentSet::Parent& parent : node.arguments().parents) {
    parent.store(record->fields(), recordOf(parent, above));
  }
  return record;
}

// What the conversions, which are templates of the declarations, have to say.
namespace detail {

void raiseUnableToParse(const InputKey& key, const ParsedValue& given, std::optional<std::string> reason) {
  throw ParserError(
      parser_error::UnableToParseValue{given.origin, given.name, given.text(), key, std::move(reason)});
}

void raiseNoValue(const InputKey& key) {
  throw ParserError(parser_error::NoValue{key});
}

}  // namespace detail
}  // namespace ArgumentParser
