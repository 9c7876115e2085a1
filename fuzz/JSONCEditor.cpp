// Feeds the JSONC editor arbitrary bytes and asks of each edit what the tests ask.
#include <cstdio>
#include <cstdlib>

#include "install/JSONCProperties.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (const std::string property = properties::broken(text); !property.empty()) {
    std::fprintf(stderr, "broken: %s\n", property.c_str());
    std::abort();
  }
  return 0;
}
