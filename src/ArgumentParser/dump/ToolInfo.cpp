#include "ArgumentParser/ToolInfo.h"

#include <algorithm>
#include <concepts>
#include <iterator>

#include "json/JSONText.h"

namespace ArgumentParser {
namespace {

using json::JSONArray;
using json::JSONObject;
using json::JSONValue;

constexpr json::Style dumpStyle{.pretty = true, .colon = " : ", .escapesSlash = true};

/// The names of the completion kinds but the default, in their order.
constexpr const char* completionKinds[] = {"list",   "file",        "directory",       "shellCommand",
                                           "custom", "customAsync", "customDeprecated"};

// ---- The fields of each record, for writing and reading alike ----

/// `Type`, or `const Type` for the writer.
template <class Record, class Type>
concept RecordOf = std::same_as<std::remove_const_t<Record>, Type>;

template <class Visitor, RecordOf<ArgumentInfoV0> Record>
void visitFields(Visitor& visitor, Record& record) {
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

template <class Visitor, RecordOf<CommandInfoV0> Record>
void visitFields(Visitor& visitor, Record& record) {
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

template <class Visitor, RecordOf<NameInfoV0> Record>
void visitFields(Visitor& visitor, Record& record) {
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
  const auto* number = version != nullptr ? version->number() : nullptr;
  const auto integer = number != nullptr ? number->exactInteger() : std::nullopt;
  if (!integer) raiseUnreadable("serializationVersion");
  return {*integer};
}

}  // namespace

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
