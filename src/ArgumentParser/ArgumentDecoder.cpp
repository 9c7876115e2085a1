#include "ArgumentParser/ArgumentDecoder.h"

namespace ArgumentParser {

std::unique_ptr<CommandRecord> decode(const CommandNode& node, const ParsedValues& values) {
  auto record = node.declaration.makeRecord();
  for (const ArgumentDefinition& definition : node.arguments().content) {
    if (definition.decode) definition.decode(record->fields(), values.find(definition.key));
  }
  return record;
}

}  // namespace ArgumentParser
