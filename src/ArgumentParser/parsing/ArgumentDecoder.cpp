#include "ArgumentParser/parsing/ArgumentDecoder.h"

#include <utility>

#include "ArgumentParser/parsing/ParserError.h"

namespace ArgumentParser {

std::shared_ptr<CommandRecord> decode(const CommandNode& node, const ParsedValues& values) {
  auto record = node.declaration.makeRecord();
  for (const ArgumentDefinition& definition : node.arguments().content) {
    if (definition.decode) definition.decode(record->fields(), values.find(definition.key));
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
