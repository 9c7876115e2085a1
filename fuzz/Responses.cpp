// Any bytes as the API's answers, through to what each command prints. Letters choose the command, whether it
// prints JSON, whether answers are whole responses or bodies of successes, and whether the output is a
// terminal; then come a word for the command line and the answers, cut at record separators. The command ends
// with status 0 and nothing on standard error, or with 1 and an error there. All is UTF-8, the token is in
// none of it, a terminal obeys nothing in it but our own styles, JSON output is the API's last answer, every
// request is whole and sound, and an API that can be found is never started.
#include <algorithm>

#include "ArgumentParser/ArgumentParser.h"
#include "cli/root/ZeltoCommand.h"
#include "json/JSONText.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

using fuzz::expect;

struct Form {
  std::string_view words;    ///< "@" stands for the word
  bool printsAnswer = true;  ///< as JSON, the last one as it is
};

constexpr Form forms[] = {
    {"health"},
    {"rules"},
    {"rules list --group=@", false},
    {"rules show -- @"},
    {"rules add --trigger cron --name=@ --set a=1"},
    {"rules set -- @ name=x"},
    {"rules rm --force -- @ b", false},
    {"rules enable -- @", false},
    {"rules disable -- @ @", false},
    {"rules fire -- @", false},
    {"groups"},
    {"groups enable -- @"},
    {"groups rename -- @ other"},
    {"profiles"},
    {"profiles add --icon=@ -- @"},
    {"profiles activate -- @"},
    {"events --count 5"},
    {"events --follow", false},
    {"history --verbose"},
    {"history --verbose --follow", false},
    {"watch --verbose", false},
    {"watch --only actions", false},
    {"schema"},
    {"schema -- @"},
    {"docs -- @"},
    {"prompt --sub=@"},
    {"runners"},
    {"shortcuts"},
    {"shortcuts install -- @"},
    {"script test --value=k=@ -- ~/script"},
    {"api status", false},
};

std::vector<std::string> commandLine(const Form& form, const std::string& word, bool json) {
  std::vector<std::string> line{"zelto"};
  bool isTold = !json;
  for (const std::string_view each : text::split(form.words, ' ')) {
    if (each == "--" && !isTold) line.emplace_back("--json"), isTold = true;
    std::string argument(each);
    if (argument.ends_with('@')) argument.replace(argument.size() - 1, 1, word);
    line.push_back(std::move(argument));
  }
  if (!isTold) line.emplace_back("--json");
  return line;
}

/// Head and body of a request as every server takes them: no line that an argument has made.
void checkRequest(const std::string& request) {
  const std::size_t head = request.find("\r\n\r\n");
  expect(head != request.npos, "a request has a head", request);
  const std::string body = request.substr(head + 4);
  const auto lines = text::split(std::string_view(request).substr(0, head), '\n');
  expect(lines.size() == 6 && lines[0].ends_with(" HTTP/1.1\r"), "a head has six lines", request);
  const auto words = text::split(lines[0], ' ');
  const auto isPlain = [](char each) { return each > ' ' && each < '\x7F'; };
  expect(words.size() == 3 && std::all_of(words[1].begin(), words[1].end(), isPlain),
         "a target is plain ASCII", request);
  expect(lines[2] == "Authorization: Bearer " + std::string(fuzz::api::token) + "\r", "the token goes along",
         request);
  expect(lines[4] == "Content-Length: " + std::to_string(body.size()) + "\r", "the body is as long as told",
         request);
  expect(body.empty() || json::parse(body), "a body is JSON", request);
}

/// `output` without the escape sequences of the program's styles.
std::string withoutStyles(std::string_view output) {
  std::string result;
  for (std::size_t at = 0; at < output.size(); ++at) {
    const std::size_t end = output.find_first_not_of("0123456789", at + 2);
    if (output.substr(at).starts_with("\x1b[") && end != output.npos && output[end] == 'm')
      at = end;
    else
      result += output[at];
  }
  return result;
}

/// The JSON that the last of `used` answers comes to.
json::JSONValue answered(const std::vector<std::string>& answers, std::size_t used) {
  const std::string& last = answers[used - 1];
  const auto value = json::parse(last.substr(last.find("\r\n\r\n") + 4));
  return value && (value->array() || value->object()) ? *value : json::JSONObject();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  fuzz::writeFile(fuzz::privateDirectory() + "/script", "uptime");
  fuzz::Input input(data, size);
  // The fuzzer sees what the token is compared with; what comes from outside may hold it.
  if (input.rest.find(fuzz::api::token) != input.rest.npos) return -1;
  const Form& form = forms[input.choice(std::size(forms))];
  const bool json = input.choice(2) == 1, isRaw = input.choice(2) == 1;
  fuzz::isOnTerminal = input.choice(2) == 1;
  const std::string word = input.piece().c_str();
  const std::vector<std::string> line = commandLine(form, word.empty() ? "word" : word, json);
  std::vector<std::string> answers = input.pieces();
  if (!isRaw) std::transform(answers.begin(), answers.end(), answers.begin(), fuzz::api::success);
  fuzz::api::answer(answers);
  std::vector<const char*> arguments;
  for (const std::string& each : line) arguments.push_back(each.c_str());

  int status = 0;
  const auto [output, error] = fuzz::printedBy([&] {
    status = ArgumentParser::main(ArgumentParser::type<zelto::ZeltoCommand>(),
                                  static_cast<int>(arguments.size()), arguments.data());
  });
  const std::string all = output + error;
  fuzz::expectUTF8(all, "what is printed");
  expect(status == 0 || status == 1, "the status is 0 or 1", all);
  expect(
      status == 0 ? error.empty() : error.starts_with("Error: ") && error.size() > 8 && error.ends_with('\n'),
      "a failure says why, a success does not", error);
  expect(!fuzz::isOnTerminal || (fuzz::isShown(withoutStyles(output)) && fuzz::isShown(error)),
         "a terminal obeys nothing from elsewhere", all);
  expect(all.find(fuzz::api::token) == all.npos, "the token is never shown", all);
  expect(fuzz::launches == 0, "an API that is on is not started", all);
  const auto requests = fuzz::api::requests();
  for (const std::string& request : requests) checkRequest(request);
  if (json && form.printsAnswer && status == 0)
    expect(json::parse(output) == answered(answers, requests.size()), "JSON output is the API's answer",
           output);
  return 0;
}
