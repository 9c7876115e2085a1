#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
  CLI::App app("Say it again", "repeat");
  std::string phrase;
  int count = 2;
  bool loud = false;
  app.add_option("phrase", phrase, "What to say")->required();
  app.add_option("-c,--count", count, "How often")->check(CLI::PositiveNumber);
  app.add_flag("--loud", loud, "Say it loudly");
  app.set_version_flag("--version", "1.0");
  CLI11_PARSE(app, argc, argv);
  for (int i = 0; i < count; ++i) std::printf("%s%s\n", phrase.c_str(), loud ? "!" : "");
}
