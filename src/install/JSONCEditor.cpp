#include "install/JSONCEditor.h"

#include <algorithm>

#include "install/JSONCScanner.h"
#include "json/JSONText.h"
#include "platform/Files.h"
#include "text/Unicode.h"

namespace zelto::JSONCEditor {
namespace {

constexpr std::string_view blanks = " \t";

/// The one change that an edit makes.
struct Splice {
  std::size_t position;
  std::size_t length;
  std::string replacement = {};
};

std::string applied(std::string_view text, const Splice& splice) {
  std::string result;
  result.reserve(text.size() - splice.length + splice.replacement.size());
  result.append(text.substr(0, splice.position)).append(splice.replacement);
  return result.append(text.substr(splice.position + splice.length));
}

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

std::string reindent(std::string_view value, std::size_t width) {
  std::string result;
  for (const char byte : value) {
    result += byte;
    if (byte == '\n') result.append(width, ' ');
  }
  return result;
}

std::string memberText(std::string_view key, std::string_view value, std::size_t width) {
  return std::string("\"").append(key).append("\": ").append(reindent(value, width));
}

/// A source text and what its blanked copy tells about it.
class Document {
 public:
  explicit Document(std::string_view text)
      : source(text), blanked(blankComments(std::string(text))), scanner(blanked) {}
  Document(const Document&) = delete;

  Splice setting(std::string_view topKey, std::string_view key, std::string_view entry) const {
    const std::string servers = "{\n  " + memberText(key, entry, 2) + "\n}";
    const auto open = scanner.firstBrace(0);
    if (!open) return appending("{\n  " + memberText(topKey, servers, 2) + "\n}\n");
    const auto top = scanner.findMember(*open, topKey);
    if (!top) return inserting(*open, topKey, servers);
    if (!scanner.holds(top->value, '{')) throw EditError::notAnObject(std::string(topKey));
    const auto old = scanner.findMember(top->value, key);
    if (!old) return inserting(top->value, key, entry);
    const std::size_t width = lineIndent(source, old->start).size();
    return {old->start, old->end - old->start, memberText(key, entry, width)};
  }

  std::optional<Splice> removal(std::string_view topKey, std::string_view key) const {
    const auto open = scanner.firstBrace(0);
    const auto top = open ? scanner.findMember(*open, topKey) : std::nullopt;
    if (!top || !scanner.holds(top->value, '{')) return std::nullopt;
    const auto member = scanner.findMember(top->value, key);
    if (!member) return std::nullopt;
    return removeSpan(scanner.memberCount(top->value) == 1 ? *top : *member);
  }

 private:
  /// Puts `block` after the comments of a text that holds nothing else.
  Splice appending(const std::string& block) const {
    const std::string comments(text::trimmed(source));
    Splice whole{0, source.size(), comments.empty() ? block : comments + "\n" + block};
    // A comment without an end would swallow the block.
    const std::string result = blankComments(whole.replacement);
    if (!text::trimmed(blanked).empty() || !Scanner(result).firstBrace(0)) {
      throw EditError::notAnObject("this file");
    }
    return whole;
  }

  /// Makes the member the first of the object that opens at `open`.
  Splice inserting(std::size_t open, std::string_view key, std::string_view value) const {
    const std::size_t first = scanner.skipWhitespace(open + 1);
    const bool empty = first == source.size() || scanner.holds(first, '}');
    const std::string base(lineIndent(source, open));
    const std::string indent = empty ? base + "  " : std::string(lineIndent(source, first));
    return {open + 1, 0,
            "\n" + indent + memberText(key, value, indent.size()) + (empty ? "\n" + base : std::string(","))};
  }

  /// Cuts out a member, one comma beside it, and the line break and indentation before it.
  Splice removeSpan(const Member& member) const {
    std::size_t from = member.start, to = member.end;
    const std::size_t next = scanner.skipWhitespace(to), before = scanner.trimmedEnd(from);
    if (scanner.holds(next, ',')) {
      to = next + 1;
    } else if (before > 0 && scanner.holds(before - 1, ',')) {
      from = before - 1;
    } else if (const auto comma = blankComments(std::string(source.substr(to, next - to))).find(',');
               comma != std::string::npos) {
      // The trailing comma of an only member goes too, since few parsers accept "{,}". It is visible here
      // because the bracket that makes it a trailing comma is not part of this stretch.
      to += comma + 1;
    }
    const std::size_t start = lineStart(from);
    Splice cut{start, to - start};
    if (isOutsideBlockComment(start) && blankComments(applied(source, cut)) == applied(blanked, cut)) {
      return cut;
    }
    // The line break lies in a block comment, which would lose its end, or ends a line comment, which would
    // run on over what follows. So it stays.
    const std::size_t kept = source.substr(0, from).find_last_not_of(blanks) + 1;
    return {kept, to - kept};
  }

  bool isOutsideBlockComment(std::size_t position) const {
    return blankComments(std::string(source.substr(0, position)) + "\n:").ends_with(':');
  }

  /// Where the spaces and tabs before `position` begin, or the line break before those.
  std::size_t lineStart(std::size_t position) const {
    const std::string_view line = std::string_view(blanked).substr(0, position);
    const std::size_t start = line.find_last_not_of(blanks) + 1;
    if (start == 0 || blanked[start - 1] != '\n') return start;
    return start > 1 && blanked[start - 2] == '\r' ? start - 2 : start - 1;
  }

  std::string_view source;
  std::string blanked;
  Scanner scanner;
};

}  // namespace

std::string set(std::string_view text, std::string_view topKey, std::string_view key,
                std::string_view entry) {
  const std::size_t start = signatureLength(text);
  Splice splice = Document(text.substr(start)).setting(topKey, key, entry);
  splice.position += start;
  return applied(text, splice);
}

std::optional<std::string> remove(std::string_view text, std::string_view topKey, std::string_view key) {
  const std::size_t start = signatureLength(text);
  auto splice = Document(text.substr(start)).removal(topKey, key);
  if (!splice) return std::nullopt;
  splice->position += start;
  return applied(text, *splice);
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
