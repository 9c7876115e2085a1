// The first program of ArgumentParser's README; its peers beside it do the same.
#include <cstdio>
#include <optional>
#include <string>

#include "ArgumentParser/ArgumentParser.h"

namespace AP = ArgumentParser;

struct Repeat {
  std::string phrase;
  std::optional<int> count;
  bool loud = false;

  static AP::Declaration declaration() {
    return AP::command<Repeat>({.abstract = "Say it again", .version = "1.0"}, [](AP::Arguments<Repeat>& it) {
      it.argument(&Repeat::phrase, "phrase", {.help = "What to say"});
      it.option(&Repeat::count, "count", {.help = "How often", .name = AP::shortAndLong});
      it.flag(&Repeat::loud, "loud", {.help = "Say it loudly"});
    });
  }
  void validate() const {
    if (count && *count < 1) throw AP::ValidationError("--count must be 1 or more.");
  }
  void run() const {
    for (int i = 0; i < count.value_or(2); ++i) std::printf("%s%s\n", phrase.c_str(), loud ? "!" : "");
  }
};

int main(int argc, char** argv) {
  return AP::main(AP::type<Repeat>(), argc, argv);
}
