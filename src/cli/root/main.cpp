#include "ArgumentParser/ArgumentParser.h"
#include "cli/root/ZeltoCommand.h"
#include "platform/FileDescriptor.h"

int main(int argc, char** argv) {
  platform::openStandardDescriptors();
  return ArgumentParser::main(ArgumentParser::type<zelto::ZeltoCommand>(), argc, argv);
}
