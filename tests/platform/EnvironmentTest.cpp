#include <gmock/gmock.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/PropertyList.h"
#include "support/Surroundings.h"

namespace platform {
namespace {

using support::ScopedVariable;

TEST(Environment, FindsTheHomeDirectoryAndExpandsTilde) {
  const std::string user = ::getpwuid(::getuid())->pw_dir;
  const std::pair<std::optional<std::string>, std::string> homes[] = {
      {"/h", "/h"}, {"/h//", "/h"}, {"/", "/"}, {"/\xff", "/\uFFFD"}, {"", user}, {std::nullopt, user}};
  for (const auto& [variable, home] : homes) {
    const ScopedVariable set("HOME", variable);
    EXPECT_EQ(homeDirectory(), home);
  }
  const std::tuple<const char*, const char*, const char*> paths[] = {
      {"/h", "~", "/h"}, {"/h", "~/a", "/h/a"}, {"/h", "~a/b", "~a/b"}, {"/h", "/~/a", "/~/a"},
      {"/h", "", ""},    {"/", "~", "/"},       {"/", "~/a", "/a"}};
  for (const auto& [home, path, expanded] : paths) {
    const ScopedVariable set("HOME", home);
    EXPECT_EQ(expandTilde(path), expanded);
  }
}

TEST(Environment, FindsTheBundleAroundAnExecutable) {
  const std::pair<const char*, std::optional<std::string>> cases[] = {
      {"/A/Zelto.app/ZeltoCLI", "/A/Zelto.app"},
      {"/A/Zelto.app/1/2/3/ZeltoCLI", "/A/Zelto.app"},
      {"/A/Zelto.app/1/2/3/4/ZeltoCLI", {}},
      {"/Outer.app/Inner.app/bin/ZeltoCLI", "/Outer.app/Inner.app"},
      {"/A/Zelto.apps/ZeltoCLI", {}},
      {"/A/.app/ZeltoCLI", {}},
      {"/A/ZeltoCLI.app", {}},
      {"/ZeltoCLI", {}},
      {"", {}}};
  for (const auto& [executable, bundle] : cases) EXPECT_EQ(enclosingBundle(executable), bundle) << executable;
}

TEST(PropertyList, ReadsTextsOfTheTopDictionary) {
  const support::TemporaryDirectory directory;
  const std::string file = directory / "Info.plist";
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {"<dict><key>a</key><string>x</string><key>v</key><string>1.4 &lt;2&gt;<![CDATA[&]]></string></dict>",
       "1.4 <2>&"},
      {"<dict><key>v</key><string></string></dict>", ""},
      {"<dict><key>a</key><dict><key>v</key><string>inner</string></dict></dict>", {}},
      {"<dict><key>v</key><array><string>x</string></array></dict>", {}},
      {"<dict><key>v</key><integer>1</integer><string>x</string></dict>", {}},
      {"<dict><key>a</key><string>v</string></dict>", {}},
      {"<array><key>v</key><string>x</string></array>", {}},
      {"<dict><key>v</key><string>x</string>", {}}};
  for (const auto& [content, text] : cases) {
    support::writeFile(file, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist>" + content + "</plist>");
    EXPECT_EQ(propertyListText(file, "v"), text) << content;
  }
  EXPECT_EQ(propertyListText(directory / "none", "v"), std::nullopt);
  EXPECT_EQ(propertyListText(directory.path, "v"), std::nullopt);
  // What is no file, or far too large for one of settings, is not waited for.
  const std::string pipe = directory / "pipe";
  ::mkfifo(pipe.c_str(), 0600);
  EXPECT_EQ(readSmallFile(pipe), std::nullopt);
  support::writeFile(file, std::string(1 << 20, ' '));
  EXPECT_EQ(readSmallFile(file), std::string(1 << 20, ' '));
  support::writeFile(file, std::string((1 << 20) + 1, ' '));
  EXPECT_EQ(readSmallFile(file), std::nullopt);
}

}  // namespace
}  // namespace platform
