// The full help text of a command.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/CommandTree.h"

namespace ArgumentParser {

/// The parts of a command's help, laid out for a width only when it is rendered.
class HelpGenerator {
 public:
  struct Section {
    struct Element {
      std::string label;
      std::string abstract = {};
      ArgumentDiscussion discussion = {};
    };

    std::string header;  ///< printed in upper case
    std::vector<Element> elements = {};
    bool isSubcommands = false;
  };

  /// The help of the stack's last command, hidden definitions included as `visibility` says.
  HelpGenerator(CommandStack commandStack, Visibility visibility);

  /// The whole text for a screen of that many columns; without a width, of the screen at hand.
  std::string rendered(std::optional<std::int64_t> screenWidth = std::nullopt) const;

  CommandStack commandStack;
  std::string abstract;
  std::string usage;
  std::vector<Section> sections;

 private:
  void addArgumentSections(Visibility visibility);
  void addSubcommandSections();
};

}  // namespace ArgumentParser
