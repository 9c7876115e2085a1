#include "platform/PropertyList.h"

#include <memory>

#include "platform/Files.h"

#ifdef __APPLE__
#include <CoreFoundation/CoreFoundation.h>
#else
#include <expat.h>
#endif

namespace platform {

#ifdef __APPLE__

// CFPropertyList of Apple's Core Foundation reference; reads every form of a property list.

namespace {

template <class Ref>
struct Releaser {
  using pointer = Ref;
  void operator()(Ref ref) const { CFRelease(ref); }
};
template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Releaser<Ref>>;

}  // namespace

std::optional<std::string> propertyListText(const std::string& path, const std::string& key) {
  const auto bytes = readSmallFile(path);
  if (!bytes) return std::nullopt;
  const Owned<CFDataRef> data(CFDataCreate(nullptr, reinterpret_cast<const UInt8*>(bytes->data()),
                                           static_cast<CFIndex>(bytes->size())));
  const Owned<CFPropertyListRef> list(
      CFPropertyListCreateWithData(nullptr, data.get(), kCFPropertyListImmutable, nullptr, nullptr));
  if (!list || CFGetTypeID(list.get()) != CFDictionaryGetTypeID()) return std::nullopt;
  const Owned<CFStringRef> name(CFStringCreateWithCString(nullptr, key.c_str(), kCFStringEncodingUTF8));
  const auto value = CFDictionaryGetValue(static_cast<CFDictionaryRef>(list.get()), name.get());
  if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
  const auto string = static_cast<CFStringRef>(value);
  std::string result(static_cast<std::size_t>(CFStringGetMaximumSizeForEncoding(CFStringGetLength(string),
                                                                                kCFStringEncodingUTF8)) +
                         1,
                     '\0');
  if (!CFStringGetCString(string, result.data(), static_cast<CFIndex>(result.size()),
                          kCFStringEncodingUTF8)) {
    return std::nullopt;
  }
  result.resize(result.find('\0'));
  return result;
}

#else

namespace {

/// Follows the elements of <plist><dict><key>K</key><string>V</string>...; only the top dictionary counts.
struct Reader {
  const std::string& wanted;
  int depth = 0;
  bool inTopDictionary = false;
  bool valueFollows = false;
  std::string text = {};
  std::optional<std::string> found = {};

  void start(std::string_view element) {
    ++depth;
    text.clear();
    if (depth == 2) inTopDictionary = element == "dict";
  }

  void end(std::string_view element) {
    if (depth == 3 && inTopDictionary) {
      if (element == "key") {
        valueFollows = text == wanted;
      } else {
        if (valueFollows && element == "string") found = text;
        valueFollows = false;
      }
    }
    --depth;
    text.clear();
  }
};

}  // namespace

std::optional<std::string> propertyListText(const std::string& path, const std::string& key) {
  const auto bytes = readSmallFile(path);
  if (!bytes) return std::nullopt;
  Reader reader{.wanted = key};
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                            &XML_ParserFree);
  XML_SetUserData(parser.get(), &reader);
  XML_SetElementHandler(
      parser.get(),
      [](void* user, const XML_Char* name, const XML_Char**) { static_cast<Reader*>(user)->start(name); },
      [](void* user, const XML_Char* name) { static_cast<Reader*>(user)->end(name); });
  XML_SetCharacterDataHandler(parser.get(), [](void* user, const XML_Char* characters, int count) {
    static_cast<Reader*>(user)->text.append(characters, static_cast<std::size_t>(count));
  });
  const auto status = XML_Parse(parser.get(), bytes->data(), static_cast<int>(bytes->size()), 1);
  return status == XML_STATUS_OK ? reader.found : std::nullopt;
}

#endif

}  // namespace platform
