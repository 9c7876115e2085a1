#include "install/JSONCEditor.h"

#include <algorithm>
#include <utility>

#include "install/JSONCScanner.h"
#include "json/JSONText.h"
#include "platform/Files.h"
#include "text/Unicode.h"

namespace zelto::JSONCEditor {
namespace {

constexpr std::string_view blanks = " \t";

/// The length of the byte order mark that may precede the text proper.
std::size_t signatureLength(std::string_view bytes) {
  constexpr std::string_view mark = "\uFEFF";
  return bytes.starts_with(mark) ? mark.size() : 0;
}

/// The spaces and tabs at the start of the line in which `position` lies.
std::string_view lineIndent(std::string_view source, std::size_t position) {
  std::size_t start = 0;
  for (std::size_t i = position; i > 0 && start == 0; --i) {
    if (const std::size_t length = lineBreakLength(source, i - 1); length > 0) start = i - 1 + length;
  }
  return source.substr(start, std::min(source.find_first_not_of(blanks, start), source.size()) - start);
}

/// The position after the last non-white character before `position`; 0 if there is none.
std::size_t trimmedEnd(std::string_view blanked, std::size_t position) {
  const std::string_view before = text::trimmed(blanked.substr(0, position));
  return before.empty() ? 0 : static_cast<std::size_t>(before.data() + before.size() - blanked.data());
}

/// Where the spaces and tabs before `position` begin, or the line break before those.
std::size_t lineStart(std::string_view blanked, std::size_t position) {
  const std::size_t start = blanked.substr(0, position).find_last_not_of(blanks) + 1;
  if (start == 0 || blanked[start - 1] != '\n') return start;
  return start > 1 && blanked[start - 2] == '\r' ? start - 2 : start - 1;
}

std::string reindent(std::string_view value, std::size_t width) {
  std::string result;
  for (const char byte : value) {
    result += byte;
    if (byte == '\n') result.append(width, ' ');
  }
  return result;
}

/// `source` without what stands between the two positions.
std::string without(std::string_view source, std::size_t start, std::size_t end) {
  return Splice(source, start, end - start, {}).applied();
}

std::string memberText(std::string_view key, std::string_view value, std::size_t width) {
  return std::string("\"").append(key).append("\": ").append(reindent(value, width));
}

/// A source text, and the splices that edit it.
class Document {
 public:
  explicit Document(std::string_view bytes)
      : text(bytes), source(bytes.substr(signatureLength(bytes))), scanner(source) {}

  Splice setting(std::string_view topKey, std::string_view key, std::string_view entry) {
    const std::string servers = "{\n  " + memberText(key, entry, 2) + "\n}";
    const auto open = scanner.firstBrace(0);
    if (!open) return appending("{\n  " + memberText(topKey, servers, 2) + "\n}\n");
    const auto top = scanner.findMember(*open, topKey);
    if (!top) return inserting(*open, topKey, servers);
    if (!scanner.holds(top->value, '{')) throw EditError::notAnObject(std::string(topKey));
    const auto old = scanner.findMember(top->value, key);
    if (!old) return inserting(top->value, key, entry);
    const std::size_t width = lineIndent(source, old->start).size();
    return splice(old->start, old->end, memberText(key, entry, width));
  }

  std::optional<Splice> removal(std::string_view topKey, std::string_view key) {
    const auto open = scanner.firstBrace(0);
    const auto top = open ? scanner.findMember(*open, topKey) : std::nullopt;
    if (!top || !scanner.holds(top->value, '{')) return std::nullopt;
    const auto member = scanner.findMember(top->value, key);
    if (!member) return std::nullopt;
    return removeSpan(scanner.memberCount(top->value) == 1 ? *top : *member);
  }

 private:
  /// Puts `replacement` in place of what stands between two positions of the source.
  Splice splice(std::size_t start, std::size_t end, std::string replacement = {}) const {
    return {text, text.size() - source.size() + start, end - start, std::move(replacement)};
  }

  /// Puts `block` after the comments of a text that holds nothing else.
  Splice appending(const std::string& block) const {
    const std::string comments(text::trimmed(source));
    std::string whole = comments.empty() ? block : comments + "\n" + block;
    // A comment without an end would swallow the block.
    if (scanner.skipWhitespace(0) < source.size() || !Scanner(whole).firstBrace(0)) {
      throw EditError::notAnObject("this file");
    }
    return splice(0, source.size(), std::move(whole));
  }

  /// Makes the member the first of the object that opens at `open`.
  Splice inserting(std::size_t open, std::string_view key, std::string_view value) const {
    const std::size_t first = scanner.skipWhitespace(open + 1);
    const bool empty = first == source.size() || scanner.holds(first, '}');
    const std::string base(lineIndent(source, open));
    const std::string indent = empty ? base + "  " : std::string(lineIndent(source, first));
    const std::string end = empty ? "\n" + base : ",";
    return splice(open + 1, open + 1, "\n" + indent + memberText(key, value, indent.size()) + end);
  }

  /// Cuts out a member, one comma beside it, and the line break and indentation before it.
  Splice removeSpan(const Member& member) const {
    const std::string blanked = blankComments(std::string(source));
    std::size_t from = member.start, to = member.end;
    const std::size_t next = scanner.skipWhitespace(to), before = trimmedEnd(blanked, from);
    if (scanner.holds(next, ',')) {
      to = next + 1;
    } else if (before > 0 && blanked[before - 1] == ',') {
      from = before - 1;
    } else if (const auto comma = blankComments(std::string(source.substr(to, next - to))).find(',');
               comma != std::string::npos) {
      // The trailing comma of an only member goes too, since few parsers accept "{,}". It is visible here
      // because the bracket that makes it a trailing comma is not part of this stretch.
      to += comma + 1;
    }
    const std::size_t start = lineStart(blanked, from);
    if (isOutsideBlockComment(start) &&
        blankComments(without(source, start, to)) == without(blanked, start, to)) {
      return splice(start, to);
    }
    // The line break lies in a block comment, which would lose its end, or ends a line comment, which would
    // run on over what follows. So it stays.
    return splice(source.substr(0, from).find_last_not_of(blanks) + 1, to);
  }

  bool isOutsideBlockComment(std::size_t position) const {
    return blankComments(std::string(source.substr(0, position)) + "\n:").ends_with(':');
  }

  std::string_view text;    ///< as given
  std::string_view source;  ///< without the byte order mark; all positions count from here
  Scanner scanner;
};

}  // namespace

Splice set(std::string_view text, std::string_view topKey, std::string_view key, std::string_view entry) {
  return Document(text).setting(topKey, key, entry);
}

std::optional<Splice> remove(std::string_view text, std::string_view topKey, std::string_view key) {
  return Document(text).removal(topKey, key);
}

std::optional<json::JSONObject> readObject(const std::string& path) {
  const auto file = platform::readTextFile(path);
  if (!file) return std::nullopt;
  const std::string_view content = std::string_view(file->text).substr(signatureLength(file->text));
  if (text::trimmed(content).empty()) return json::JSONObject();
  auto value = json::parse(blankComments(std::string(content)));
  if (!value || !value->object()) throw EditError::notAnObject(path);
  return std::move(*value->object());
}

}  // namespace zelto::JSONCEditor
