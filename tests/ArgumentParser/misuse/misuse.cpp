// Mistakes in declarations, one for each MISTAKE, and what the compiler says of it; 0 is none and compiles.
// Run by misuse.sh beside this file.
#include "ArgumentParser/ArgumentParser.h"

using namespace ArgumentParser;

struct Point {
  int x, y;
};
struct Other {
  bool flag = false;
};

struct Tool {
  std::string text;
  std::vector<std::string> list;
  int count = 0;
  bool flag = false;
  Point point{};

  static Declaration declaration() {
    return command<Tool>({}, [](Arguments<Tool>& it) {
      it.flag(&Tool::flag, "flag");
      it.option(&Tool::point, "point",
                {.transform = [](const std::string&) { return std::optional<Point>(); }});
#if MISTAKE == 1  // A flag's field is a bool
      it.flag(&Tool::text, "text");
#elif MISTAKE == 2  // There is no conversion from text to the type of this argument
      it.option(&Tool::point, "other", {.help = "Where"});
#elif MISTAKE == 3  // This is no parsing strategy for such a field
      it.option(&Tool::text, "text", {.parsing = ArrayParsingStrategy::upToNextOption});
#elif MISTAKE == 4  // A default has the type of the field, or of its values
      it.option(&Tool::count, "count", {.defaultValue = "three"});
#elif MISTAKE == 5  // A default has the type of the field, or of its values
      it.flag(&Tool::flag, "also", {.inversion = FlagInversion::prefixedNo, .defaultValue = "yes"});
#elif MISTAKE == 6  // The field is no member of the record
      it.flag(&Other::flag, "other");
#elif MISTAKE == 7  // The field of a flag that counts is an int
      it.countedFlag(&Tool::text, "text");
#endif
    });
  }
#if MISTAKE == 8  // A command's run gives back nothing, or an int
  bool run() {
    return true;
  }
#elif MISTAKE == 9  // A command's run is called without arguments
  void run(int) {}
#else
  int run() {
    return 0;
  }
#endif
#if MISTAKE == 10  // A command's validate gives back nothing
  bool validate() {
    return true;
  }
#endif
};

int main(int argc, char** argv) {
  return ArgumentParser::main(type<Tool>(), argc, argv);
}
