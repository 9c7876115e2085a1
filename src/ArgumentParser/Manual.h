// Manual pages (roff with mdoc macros) and a Markdown reference, from the dump of any tool.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ArgumentParser/ToolInfo.h"

namespace ArgumentParser {

/// The parts of a manual that no declaration holds, such as exit statuses, environment, files and examples.
struct ManualTexts {
  struct Section {
    std::string title;
    std::string body;
  };
  std::vector<Section> sections;

  /// From a text in which "# Title" begins a section. In its body an empty line parts paragraphs, "- term:
  /// text" is an item of a list, and lines indented by four blanks are examples, kept as they are.
  static ManualTexts from(std::string_view text);
};

struct ManualOptions {
  std::string section = "1";  ///< of the manual
  std::string date = {};      ///< "November 23, 2026"
  ManualTexts texts = {};
  bool isPageForEach = false;  ///< a page for each command, not one for all
};

/// A page and the name it goes by: "tool", or "tool-sub" for a command below.
struct ManualPage {
  std::string name;
  std::string text;
};

/// The pages of the dumped command and of all below it. Hidden commands and arguments are left out.
std::vector<ManualPage> manualPages(const ToolInfoV0& info, const ManualOptions& options);

/// One Markdown document for the dumped command and all below it.
std::string markdownReference(const ToolInfoV0& info, const ManualTexts& texts);

}  // namespace ArgumentParser
