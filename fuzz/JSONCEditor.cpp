// Any bytes as a configuration file: of each edit holds what the tests ask of it.
#include "install/JSONCProperties.h"
#include "support/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::string property = properties::broken(text);
  fuzz::expect(property.empty(), property, text);
  return 0;
}
