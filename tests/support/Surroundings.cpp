#include "support/Surroundings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

#include "json/JSONText.h"

namespace support {

TemporaryDirectory::TemporaryDirectory() {
  std::string pattern = std::filesystem::temp_directory_path().string() + "/zelto-test-XXXXXX";
  path = std::filesystem::canonical(::mkdtemp(pattern.data())).string();
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

ScopedVariable::ScopedVariable(std::string variable, const std::optional<std::string>& value)
    : name(std::move(variable)) {
  if (const char* old = std::getenv(name.c_str())) before = old;
  value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str());
}

ScopedVariable::~ScopedVariable() {
  before ? ::setenv(name.c_str(), before->c_str(), 1) : ::unsetenv(name.c_str());
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::vector<std::string>> rowsIn(const std::string& file) {
  std::vector<std::vector<std::string>> rows;
  const json::JSONValue table = json::parse(contentsOf(file)).value();
  for (const json::JSONValue& row : *table.array()) {
    for (rows.emplace_back(); const json::JSONValue& text : *row.array())
      rows.back().push_back(*text.string());
  }
  return rows;
}

void writeFile(const std::string& path, const std::string& contents) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << contents;
}

}  // namespace support
