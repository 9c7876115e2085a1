#include "ArgumentParser/declarations/Command.h"

namespace ArgumentParser {

CommandRecord::CommandRecord(CommandIdentity type, const detail::RecordOperations& typeOperations)
    : commandIdentity(type), operations(typeOperations), record(typeOperations.make()) {}
CommandRecord::~CommandRecord() {
  operations.destroy(record);
}

std::shared_ptr<CommandRecord> Declaration::makeRecord() const {
  return std::make_shared<CommandRecord>(identity, *operations);
}

}  // namespace ArgumentParser
