#include <cstdio>
#include <exception>
#include <sstream>
#include <stdexcept>
#include <string>

#include <boost/program_options.hpp>

namespace po = boost::program_options;

int main(int argc, char** argv) {
  std::string phrase;
  int count = 2;
  po::options_description options("Say it again");
  options.add_options()("phrase", po::value(&phrase)->required(), "What to say")(
      "count,c", po::value(&count), "How often")("loud", "Say it loudly")("version", "Show the version")(
      "help,h", "Show help");
  po::positional_options_description positionals;
  positionals.add("phrase", 1);
  try {
    po::variables_map map;
    po::store(po::command_line_parser(argc, argv).options(options).positional(positionals).run(), map);
    if (map.count("help") > 0) {
      std::ostringstream text;
      text << options;
      return std::puts(text.str().c_str()) < 0;
    }
    if (map.count("version") > 0) return std::puts("1.0") < 0;
    po::notify(map);
    if (count < 1) throw std::runtime_error("--count must be 1 or more.");
    for (int i = 0; i < count; ++i) std::printf("%s%s\n", phrase.c_str(), map.count("loud") > 0 ? "!" : "");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "Error: %s\n", error.what());
    return 64;
  }
}
