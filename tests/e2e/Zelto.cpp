#include "e2e/Zelto.h"

#include <algorithm>
#include <regex>

#include "text/Unicode.h"

namespace zelto {
namespace {

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

}  // namespace

std::string Expectation::all(std::string_view marks) const {
  std::string texts;
  for (const auto& [mark, text] : lines) {
    if (marks.find(mark.front()) != marks.npos) texts += text + "\n";
  }
  return texts;
}

std::vector<std::string> Expectation::responses() const {
  std::vector<std::string> result;
  for (const auto& [mark, body] : lines) {
    if (mark.front() != '<') continue;
    const int status = mark == "<" ? 200 : std::atoi(mark.c_str() + 1);
    result.push_back(status == 0 ? "" : support::response(body, status));
  }
  return result.empty() ? std::vector{support::response("{}")} : result;
}

void Zelto::expect(const Expectation& expected, bool onTerminal) const {
  SCOPED_TRACE(expected.command);
  const auto outcome = shell(expected.command, "", onTerminal);
  const std::string error = expected.all("!");
  EXPECT_EQ(replaced(marked(outcome.output), home.path, "$HOME"),
            onTerminal ? expected.all("=+") : unmarked(expected.all("=-")));
  EXPECT_EQ(replaced(outcome.error, home.path, "$HOME"), error.empty() ? "" : "Error: " + error);
  EXPECT_EQ(outcome.status, error.empty() ? 0 : 1);
}

std::vector<Expectation> expectationsIn(const std::string& file) {
  std::vector<Expectation> result;
  std::map<std::string, std::string> named;
  const std::string content = support::contentsOf(file);
  for (const std::string_view line : text::split(content, '\n')) {
    if (line.empty() || line.starts_with('#')) continue;
    const std::string mark(line.substr(0, line.find(' ')));
    std::string text(line.substr(std::min(mark.size() + 1, line.size())));
    if (text.ends_with("·")) text.resize(text.size() - std::string_view("·").size());
    if (mark == "$") {
      result.push_back({text, {}});
    } else if (mark.starts_with('@')) {
      named[mark] = text;
    } else {
      result.back().lines.emplace_back(mark, mark == "<" && named.contains(text) ? named[text] : text);
    }
  }
  return result;
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
