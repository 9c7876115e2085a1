#include "ArgumentParser/ToolInfo.h"

#include <algorithm>

#include "ArgumentParser/BuiltIns.h"
#include "json/JSONText.h"

namespace ArgumentParser {
namespace {

using json::JSONArray;
using json::JSONObject;
using json::JSONValue;

constexpr json::Style dumpStyle{.pretty = true, .colon = " : ", .escapesSlash = true};

// ---- Building the model ----

std::string kindText(Name::Kind kind) {
  switch (kind) {
    case Name::Kind::long_:
      return "long";
    case Name::Kind::short_:
      return "short";
    default:
      return "longWithSingleDash";
  }
}

std::string strategyText(ParsingStrategy strategy) {
  constexpr const char* texts[] = {"default",        "scanningForValue",  "unconditional",
                                   "upToNextOption", "allRemainingInput", "postTerminator",
                                   "allUnrecognized"};
  return texts[static_cast<std::size_t>(strategy)];
}

/// The names of the completion kinds but the default, in their order.
constexpr const char* completionKinds[] = {"list",   "file",        "directory",       "shellCommand",
                                           "custom", "customAsync", "customDeprecated"};

std::optional<CompletionKindV0> completionInfo(const CompletionKind& completion) {
  if (completion.kind == CompletionKind::Kind::default_) return std::nullopt;
  return CompletionKindV0{completionKinds[static_cast<std::size_t>(completion.kind) - 1], completion.texts};
}

NameInfoV0 nameInfo(const Name& name) {
  return {kindText(name.kind), name.text};
}

ArgumentInfoV0 argumentInfo(const ArgumentDefinition& definition) {
  ArgumentInfoV0 info;
  info.kind = definition.isPositional() ? "positional" : definition.isFlag() ? "flag" : "option";
  info.shouldDisplay = definition.isVisible(Visibility::default_);
  info.sectionTitle = definition.help.parentTitle;
  info.isOptional = definition.help.isOptional;
  info.isRepeating = definition.help.isRepeating;
  info.parsingStrategy = strategyText(definition.parsingStrategy);
  std::transform(definition.names.begin(), definition.names.end(), std::back_inserter(info.names), nameInfo);
  if (!definition.names.empty()) info.preferredName = nameInfo(preferredName(definition.names));
  info.valueName = definition.valueName();
  info.defaultValue = definition.help.defaultValue;
  info.allValues = definition.help.allValueStrings;
  for (const auto& [value, text] : definition.help.discussion.values) {
    if (!text.empty()) info.allValueDescriptions.emplace(value, text);
  }
  info.completionKind = completionInfo(definition.completion);
  info.abstract = definition.help.abstract;
  info.discussion = definition.help.discussion.text;
  return info;
}

/// Adds to the record of a composite flag what a further flag of the same value has.
void merge(ArgumentInfoV0& info, const ArgumentInfoV0& further) {
  info.names.insert(info.names.end(), further.names.begin(), further.names.end());
  if (info.preferredName->kind == "short" && further.preferredName->kind != "short") {
    info.preferredName = further.preferredName;
  }
  if (!info.defaultValue) info.defaultValue = further.defaultValue;
  if (info.abstract.empty()) info.abstract = further.abstract;
  if (info.discussion.empty()) info.discussion = further.discussion;
}

std::vector<ArgumentInfoV0> argumentInfos(const CommandStack& stack) {
  std::vector<ArgumentDefinition> definitions = stack.back()->arguments().content;
  for (ArgumentDefinition& builtIn : builtInDefinitions(stack)) definitions.push_back(std::move(builtIn));
  std::vector<ArgumentInfoV0> infos;
  const ArgumentDefinition* previous = nullptr;
  for (const ArgumentDefinition& definition : definitions) {
    const bool continues =
        definition.help.isComposite && previous != nullptr && previous->key == definition.key;
    if (continues) {
      merge(infos.back(), argumentInfo(definition));
    } else {
      infos.push_back(argumentInfo(definition));
    }
    previous = &definition;
  }
  return infos;
}

CommandInfoV0 commandInfo(const CommandStack& stack) {
  const CommandNode& node = *stack.back();
  CommandInfoV0 info;
  if (const auto& above = stack.front()->configuration().superCommandName)
    info.superCommands.push_back(*above);
  for (const CommandNode* each : stack) {
    if (each != &node) info.superCommands.push_back(each->name());
  }
  info.shouldDisplay = node.configuration().shouldDisplay;
  info.commandName = node.name();
  info.aliases = node.configuration().aliases;
  info.abstract = node.configuration().abstract;
  info.discussion = node.configuration().discussion;
  if (const CommandNode* child = node.defaultSubcommand()) info.defaultSubcommand = child->name();
  for (const auto& child : node.children()) {
    if (isHelpCommand(*child)) continue;
    CommandStack below = stack;
    below.push_back(child.get());
    info.subcommands.push_back(commandInfo(below));
  }
  info.arguments = argumentInfos(stack);
  return info;
}

// ---- The fields of each record, for writing and reading alike ----

template <class Visitor, class Record>
void visitFields(Visitor& visitor, Record& record) requires requires {
  record.kind;
  record.isRepeating;
}
{
  visitor.required("kind", record.kind);
  visitor.field("shouldDisplay", record.shouldDisplay);
  visitor.field("sectionTitle", record.sectionTitle);
  visitor.required("isOptional", record.isOptional);
  visitor.required("isRepeating", record.isRepeating);
  visitor.required("parsingStrategy", record.parsingStrategy);
  visitor.field("names", record.names);
  visitor.field("preferredName", record.preferredName);
  visitor.field("valueName", record.valueName);
  visitor.field("defaultValue", record.defaultValue);
  visitor.field("allValues", record.allValues);
  visitor.field("allValueDescriptions", record.allValueDescriptions);
  visitor.field("completionKind", record.completionKind);
  visitor.field("abstract", record.abstract);
  visitor.field("discussion", record.discussion);
}

template <class Visitor, class Record>
void visitFields(Visitor& visitor, Record& record) requires requires {
  record.commandName;
}
{
  visitor.field("superCommands", record.superCommands);
  visitor.field("shouldDisplay", record.shouldDisplay);
  visitor.required("commandName", record.commandName);
  visitor.field("aliases", record.aliases);
  visitor.field("abstract", record.abstract);
  visitor.field("discussion", record.discussion);
  visitor.field("defaultSubcommand", record.defaultSubcommand);
  visitor.field("subcommands", record.subcommands);
  visitor.field("arguments", record.arguments);
}

template <class Visitor, class Record>
void visitFields(Visitor& visitor, Record& record) requires requires {
  record.kind;
  record.name;
}
{
  visitor.required("kind", record.kind);
  visitor.required("name", record.name);
}

// ---- Writing ----

/// The key of the texts that a completion kind carries; null for one that carries none.
const char* textsKey(const std::string& kind) {
  if (kind == "list") return "values";
  if (kind == "file") return "extensions";
  return kind == "shellCommand" ? "command" : nullptr;
}

struct Writer {
  JSONObject object;

  static JSONValue value(bool flag) { return flag; }
  static JSONValue value(const std::string& text) { return text; }
  static JSONValue value(const CompletionKindV0& completion) {
    JSONObject payload;
    if (const char* key = textsKey(completion.kind)) {
      payload.set(key, completion.kind == "shellCommand" ? JSONValue(completion.texts.front())
                                                         : value(completion.texts));
    }
    return JSONObject{{completion.kind, std::move(payload)}};
  }
  static JSONValue value(const std::map<std::string, std::string>& texts) {
    JSONObject result;
    for (const auto& [key, text] : texts) result.set(key, text);
    return result;
  }
  template <class Element>
  static JSONValue value(const std::vector<Element>& list) {
    JSONArray result;
    for (const Element& element : list) result.push_back(value(element));
    return result;
  }
  template <class Record>
  static JSONValue value(const Record& record) requires requires(Writer& w) {
    visitFields(w, record);
  }
  {
    Writer writer;
    visitFields(writer, record);
    return std::move(writer.object);
  }

  template <class Field>
  void required(const char* key, const Field& field) {
    object.set(key, value(field));
  }
  void field(const char* key, bool flag) { required(key, flag); }
  template <class Field>
  void field(const char* key, const std::optional<Field>& field) {
    if (field) required(key, *field);
  }
  template <class Container>
  void field(const char* key, const Container& container) {
    if (!container.empty()) required(key, container);
  }
};

// ---- Reading ----

[[noreturn]] void raiseUnreadable(const std::string& key) {
  throw ToolInfoError("The value for \"" + key + "\" is missing or of the wrong kind.");
}

struct Reader {
  const JSONObject& object;

  static const JSONObject& objectIn(const JSONValue& value, const char* key) {
    if (const auto* found = value.object()) return *found;
    raiseUnreadable(key);
  }
  static void read(const JSONValue& value, const char* key, bool& flag) {
    if (value.boolean() == nullptr) raiseUnreadable(key);
    flag = *value.boolean();
  }
  static void read(const JSONValue& value, const char* key, std::string& text) {
    if (value.string() == nullptr) raiseUnreadable(key);
    text = *value.string();
  }
  static void read(const JSONValue& value, const char* key, CompletionKindV0& completion) {
    const JSONObject& kinds = objectIn(value, key);
    if (kinds.size() != 1) throw ToolInfoError("Invalid number of keys found, expected one.");
    completion.kind = kinds.begin()->key;
    if (std::find(std::begin(completionKinds), std::end(completionKinds), completion.kind) ==
        std::end(completionKinds)) {
      raiseUnreadable(key);
    }
    const JSONObject& carried = objectIn(kinds.begin()->value, completion.kind.c_str());
    const char* payloadKey = textsKey(completion.kind);
    if (payloadKey == nullptr) return;
    const JSONValue* payload = carried.find(payloadKey);
    if (payload == nullptr) raiseUnreadable(payloadKey);
    if (completion.kind == "shellCommand") {
      read(*payload, payloadKey, completion.texts.emplace_back());
    } else {
      read(*payload, payloadKey, completion.texts);
    }
  }
  static void read(const JSONValue& value, const char* key, std::map<std::string, std::string>& texts) {
    for (const auto& [name, text] : objectIn(value, key)) read(text, key, texts[name]);
  }
  template <class Element>
  static void read(const JSONValue& value, const char* key, std::vector<Element>& list) {
    if (value.array() == nullptr) raiseUnreadable(key);
    for (const JSONValue& element : *value.array()) read(element, key, list.emplace_back());
  }
  template <class Field>
  static void read(const JSONValue& value, const char* key, std::optional<Field>& field) {
    read(value, key, field.emplace());
  }
  template <class Record>
  static void read(const JSONValue& value, const char* key, Record& record) requires requires(Reader& r) {
    visitFields(r, record);
  }
  {
    Reader reader{objectIn(value, key)};
    visitFields(reader, record);
  }

  template <class Field>
  void field(const char* key, Field& field) {
    if (const JSONValue* value = object.find(key)) read(*value, key, field);
  }
  template <class Field>
  void required(const char* key, Field& value) {
    if (!object.contains(key)) raiseUnreadable(key);
    field(key, value);
  }
};

JSONObject parsedDump(std::string_view text) {
  auto value = json::parse(text);
  if (!value || !value->object()) throw ToolInfoError("The dump is not a JSON object.");
  return std::move(*value->object());
}

ToolInfoHeader headerIn(const JSONObject& dump) {
  const JSONValue* version = dump.find("serializationVersion");
  const auto* number = version != nullptr ? std::get_if<std::int64_t>(&version->data) : nullptr;
  if (number == nullptr) raiseUnreadable("serializationVersion");
  return {*number};
}

}  // namespace

ToolInfoV0 makeToolInfo(const CommandStack& stack) {
  ToolInfoV0 info{0, commandInfo(stack)};
  const CommandNode help(type<HelpCommand>(), stack.back());
  CommandStack below = stack;
  below.push_back(&help);
  info.command.subcommands.push_back(commandInfo(below));
  return info;
}

std::string dumpText(const ToolInfoV0& info) {
  const JSONObject dump{{"serializationVersion", info.serializationVersion},
                        {"command", Writer::value(info.command)}};
  return json::text(dump, dumpStyle).value_or(std::string());
}

ToolInfoHeader readToolInfoHeader(std::string_view text) {
  return headerIn(parsedDump(text));
}

ToolInfoV0 readToolInfo(std::string_view text) {
  const JSONObject dump = parsedDump(text);
  ToolInfoV0 info{headerIn(dump).serializationVersion, {}};
  if (info.serializationVersion != 0) {
    throw ToolInfoError("Dumps of version " + std::to_string(info.serializationVersion) + " are not known.");
  }
  Reader{dump}.required("command", info.command);
  return info;
}

}  // namespace ArgumentParser
