#include "e2e/Zelto.h"

#include <filesystem>
#include <regex>

namespace zelto {
namespace {

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

}  // namespace

void Zelto::expect(const support::Case& expected, bool onTerminal) const {
  const auto outcome = shell(expected.input, "", onTerminal);
  EXPECT_EQ(replaced(marked(outcome.output), home.path, "$HOME"),
            onTerminal ? expected.all("=+") : unmarked(expected.all("=-")));
  EXPECT_EQ(replaced(outcome.error, home.path, "$HOME"), expected.all("!"));
  EXPECT_EQ(outcome.status, expected.status());
}

std::vector<support::Case> casesIn(const std::string& name) {
  static const std::map<std::string, std::string_view> marks{{"agent.txt", "&<>=!"},
                                                             {"bundle.txt", "=+-!"},
                                                             {"responses.txt", "<>=+-!"},
                                                             {"story.txt", "~{!"},
                                                             {"tools.txt", ">"}};
  std::vector<support::Case> cases = support::casesIn(SOURCES "/" + name, marks.at(name));
  // macOS has no device that is always full.
  if (!std::filesystem::exists("/dev/full")) {
    std::erase_if(cases, [](const auto& each) { return each.input.find("/dev/full") != std::string::npos; });
  }
  return cases;
}

std::vector<std::string> answers(const support::Case& of) {
  std::vector<std::string> result;
  for (const auto& [mark, status, body] : of.lines) {
    // The status 0 is that of a connection that ends without an answer.
    if (mark == '<') result.push_back(status == 0 ? "" : support::response(body, status.value_or(200)));
  }
  return result.empty() ? std::vector{support::response("{}")} : result;
}

std::string toolCall(const std::string& call) {
  const std::size_t blank = call.find(' ');
  return R"({"id":9,"method":"tools/call","params":{"name":")" + call.substr(0, blank) + R"(","arguments":)" +
         call.substr(blank) + "}}\n";
}

std::string marked(std::string text) {
  static const std::regex style("\x1b\\[([0-9]+)m");
  return replaced(std::regex_replace(text, style, "<$1>"), "<0>", "</>");
}

std::string unmarked(std::string text) {
  static const std::regex mark("<(/|[0-9]+)>");
  return std::regex_replace(text, mark, "");
}

std::string summary(const std::vector<std::string>& requests) {
  std::string text;
  for (const std::string& request : requests) {
    const std::string body = request.substr(request.find("\r\n\r\n") + 4);
    text += request.substr(0, request.find(" HTTP/1.1")) + (body.empty() ? "\n" : " " + body + "\n");
  }
  return text;
}

}  // namespace zelto
