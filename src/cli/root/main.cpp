#include "ArgumentParser/ArgumentParser.h"
#include "cli/root/ZeltoCommand.h"

int main(int argc, char** argv) {
  return ArgumentParser::main(ArgumentParser::type<zelto::ZeltoCommand>(), argc, argv);
}
