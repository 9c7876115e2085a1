#include "commands/Reference.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {

using ArgumentParser::command;

ArgumentParser::Declaration Docs::declaration() {
  return command<Docs>({.abstract = "The reference Zelto hands to a code generator"}, [](auto& it) {
    it.argument(&Docs::topic, "topic", {.help = "context, trigger-context or applescript-context"});
    it.group(&Docs::options, "options");
  });
}

void Docs::run() const {
  options.apply();
  if (!topic) return Out::table({{"TOPIC", {}, {"context", "trigger-context", "applescript-context"}}});
  const JSONDocument docs = expectObject(cliCall({"GET", "/docs/" + percentEncode(*topic)}));
  if (settings.jsonMode) return Out::json(docs);
  Out::line(Out::text(docs, "markdown"));
}

ArgumentParser::Declaration Prompt::declaration() {
  return command<Prompt>(
      {.abstract = "The system prompt Zelto uses when it writes a script",
       .discussion = "Pipe it into a model to have it write against the same contract."},
      [](auto& it) {
        it.option(&Prompt::kind, "kind", {.help = "shell, trigger or applescript", .defaultValue = "shell"});
        it.option(&Prompt::sub, "sub", {.help = "Sub-event the script runs for"});
        it.option(&Prompt::runner, "runner",
                  {.help = "Which interpreter the script is for", .defaultValue = "/bin/zsh"});
        it.group(&Prompt::options, "options");
      });
}

void Prompt::run() const {
  options.apply();
  Query query{{"kind", kind}, {"runner", runner}};
  if (sub) query["subEvent"] = *sub;
  const JSONDocument prompt = expectObject(cliCall({"GET", "/generator/prompt", query}));
  if (settings.jsonMode) return Out::json(prompt);
  Out::line(Out::text(prompt, "systemPrompt"));
}

ArgumentParser::Declaration Runners::declaration() {
  return command<Runners>({.abstract = "Script runners Zelto knows"},
                          [](auto& it) { it.group(&Runners::options, "options"); });
}

void Runners::run() const {
  options.apply();
  const JSONDocument runners = expectObject(cliCall({"GET", "/runners"}));
  if (settings.jsonMode) return Out::json(runners);
  const std::vector<std::string> presets = stringsIn(runners, "presets");
  Out::table({{"PRESET", {}, {presets.begin(), presets.end()}}});
  const std::string note = Out::text(runners, "note"), custom = Out::text(runners, "custom");
  if (!note.empty()) {
    Out::line("");
    Out::hint(note);
  }
  if (!custom.empty()) Out::hint(custom);
}

}  // namespace zelto
