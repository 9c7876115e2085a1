// argument-parser-manual: manual pages and a Markdown reference from what a program prints for
// --experimental-dump-help.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/Manual.h"

namespace AP = ArgumentParser;

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File opened(const std::string& path, const char* mode) {
  File file(std::fopen(path.c_str(), mode), std::fclose);
  if (!file) throw std::runtime_error("cannot open " + path);
  return file;
}

std::string contents(const std::string& path) {
  const File file = opened(path, "rb");
  std::string result;
  char buffer[4096];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
    result.append(buffer, count);
  if (std::ferror(file.get()) != 0) throw std::runtime_error("cannot read " + path);
  return result;
}

void write(const std::string& path, const std::string& text) {
  File file = opened(path, "wb");
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
  if (std::fclose(file.release()) != 0 || !isWritten) throw std::runtime_error("cannot write " + path);
}

/// "November 23, 2026" for "2026-11-23", or for today; nothing for a text that is no date.
std::optional<std::string> writtenDate(const std::string& date) {
  constexpr const char* months[] = {"January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December"};
  int year = 0, month = 0, day = 0;
  char rest = 0;
  if (std::sscanf(date.c_str(), "%d-%d-%d%c", &year, &month, &day, &rest) != 3) return std::nullopt;
  if (month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  return std::string(months[month - 1]) + " " + std::to_string(day) + ", " + std::to_string(year);
}

std::string today() {
  const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
  const std::time_t now = epoch != nullptr ? static_cast<std::time_t>(std::atoll(epoch)) : std::time(nullptr);
  char buffer[32];
  std::strftime(buffer, sizeof buffer, "%Y-%m-%d", std::gmtime(&now));
  return buffer;
}

struct Manual {
  std::string dump;
  std::string section = "1";
  std::optional<std::string> date, texts;
  std::string output = ".";
  bool each = false, markdown = false;

  static AP::Declaration declaration() {
    return AP::command<Manual>(
        {.commandName = "argument-parser-manual",
         .abstract = "Write manual pages from the dump of a program's declarations"},
        [](AP::Arguments<Manual>& it) {
          it.argument(&Manual::dump, "dump",
                      {.help = "What the program prints for --experimental-dump-help",
                       .completion = AP::CompletionKind::file()});
          it.option(&Manual::section, "section", {.help = "The manual's section", .defaulted = true});
          it.option(&Manual::date, "date",
                    {.help = {"The pages' date", {}, "yyyy-mm-dd"}, .transform = writtenDate});
          it.option(&Manual::texts, "texts",
                    {.help = R"(A file of further sections: "# Title", paragraphs, "- term: text")",
                     .completion = AP::CompletionKind::file()});
          it.option(&Manual::output, "output",
                    {.help = "The directory to write to",
                     .completion = AP::CompletionKind::directory(),
                     .defaulted = true});
          it.flag(&Manual::each, "each", {.help = "Write a page for each command"});
          it.flag(&Manual::markdown, "markdown", {.help = "Write one Markdown document in place of pages"});
        });
  }

  void run() const {
    const AP::ToolInfoV0 info = AP::readToolInfo(contents(dump));
    AP::ManualOptions options{.section = section, .isPageForEach = each};
    options.date = date ? *date : *writtenDate(today());
    if (texts) options.texts = AP::ManualTexts::from(contents(*texts));
    if (markdown)
      return write(output + "/" + info.command.commandName + ".md",
                   AP::markdownReference(info, options.texts));
    for (const AP::ManualPage& page : AP::manualPages(info, options)) {
      write(output + "/" + page.name + "." + section, page.text);
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  return AP::main(AP::type<Manual>(), argc, argv);
}
