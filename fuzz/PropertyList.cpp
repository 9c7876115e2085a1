// Any bytes as a property list: what is found in it is UTF-8. After an "=", the rest is a version and stands
// in a list among other elements, with the characters that XML takes for itself written in one of three ways:
// it is found as it was.
#include "platform/PropertyList.h"

#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

constexpr const char* key = "CFBundleShortVersionString";

/// The characters that an XML text may hold, line ends as a parser hands them on.
std::string allowed(std::string_view bytes) {
  std::string result;
  const std::string repaired = text::repairedUTF8(bytes);
  for (std::string_view rest = repaired; !rest.empty();) {
    const auto [value, length, valid] = text::firstCodePoint(rest);
    const bool isControl = value < 0x20 && value != '\t' && value != '\n';
    if (!isControl && value != 0xFFFE && value != 0xFFFF) result += rest.substr(0, length);
    rest.remove_prefix(length);
  }
  return result;
}

/// `text` as XML: escaped by name, by number, or within a CDATA section.
std::string asXML(std::string_view text, std::size_t way) {
  if (way == 2 && text.find("]]>") == text.npos) return "<![CDATA[" + std::string(text) + "]]>";
  std::string result;
  for (const char each : text) {
    const bool isSpecial = each == '<' || each == '&' || each == '>';
    if (!isSpecial)
      result += each;
    else if (way == 1)
      result += "&#" + std::to_string(each) + ";";
    else
      result += each == '<' ? "&lt;" : each == '&' ? "&amp;" : "&gt;";
  }
  return result;
}

std::string listWith(fuzz::Input& input, const std::string& version) {
  const std::string pair = "<key>" + std::string(key) + "</key>";
  // What must not be taken for it, before it or after it.
  const std::string others[] = {"", "<key>a</key><dict>" + pair + "<string>inner</string></dict>",
                                "<key>b</key><string>" + std::string(key) + "</string>",
                                "<key>c</key><array><string>x</string>" + pair + "<string>y</string></array>",
                                "<!-- " + pair + "<string>no</string> -->"};
  const std::string& other = others[input.choice(std::size(others))];
  const std::string own = pair + "\n <string>" + asXML(version, input.choice(3)) + "</string>";
  return "<?xml version=\"1.0\"?>\n<!DOCTYPE plist><plist version=\"1.0\">\n<dict>" +
         (input.choice(2) == 0 ? other + own : own + other) + "<key>d</key><true/></dict></plist>";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static const std::string path = fuzz::privateDirectory() + "/Info.plist";
  fuzz::Input input(data, size);
  const bool isMade = input.rest.starts_with('=');
  std::string version;
  if (isMade) {
    input.byte();
    fuzz::Input shape = input;
    input.rest.remove_prefix(std::min<std::size_t>(3, input.rest.size()));
    version = allowed(input.rest);
    fuzz::writeFile(path, listWith(shape, version));
  } else {
    fuzz::writeFile(path, input.rest);
  }
  const auto found = platform::propertyListText(path, key);
  if (found) fuzz::expectUTF8(*found, "a property list's text");
  if (isMade) fuzz::expect(found == version, "the text is the one under the key", found.value_or("nothing"));
  return 0;
}
