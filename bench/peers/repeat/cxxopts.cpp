#include <cstdio>
#include <exception>
#include <string>

#include <cxxopts.hpp>

int main(int argc, char** argv) {
  cxxopts::Options options("repeat", "Say it again");
  options.add_options()("phrase", "What to say", cxxopts::value<std::string>())(
      "c,count", "How often", cxxopts::value<int>()->default_value("2"))("loud", "Say it loudly")(
      "version", "Show the version")("h,help", "Show help");
  options.parse_positional({"phrase"});
  try {
    const auto result = options.parse(argc, argv);
    if (result.count("help") > 0) return std::puts(options.help().c_str()) < 0;
    if (result.count("version") > 0) return std::puts("1.0") < 0;
    const auto phrase = result["phrase"].as<std::string>();
    const int count = result["count"].as<int>();
    if (count < 1) throw std::runtime_error("--count must be 1 or more.");
    for (int i = 0; i < count; ++i)
      std::printf("%s%s\n", phrase.c_str(), result.count("loud") > 0 ? "!" : "");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "Error: %s\n", error.what());
    return 64;
  }
}
