#include "json/JSONDocument.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>

#include "text/Number.h"

namespace json {
namespace {

using tape::Type;
using tape::Word;

/// Puts down on a tape what the parser comes by.
class TapeWriter {
 public:
  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

  using Error = boost::json::error_code;
  using Text = boost::json::string_view;

  /// For the text from `from` on, on which it writes where the parser has read. The tape takes the memory of
  /// `tape`, which is empty.
  TapeWriter(text::Bytes& received, std::size_t from, text::GrowingBlock<Word> tape)
      : words(std::move(tape)),
        bytes(received.data()),
        limit(bytes + received.size()),
        spare(bytes + from),
        written(spare) {
    // Room for a message of common density, so that the tape does not grow step by step for it.
    words.room(std::min<std::size_t>((received.size() - from) / 16 + 16, 4096));
  }

  text::GrowingBlock<Word> words;

  bool on_document_begin(Error&) { return true; }
  bool on_document_end(Error&) { return true; }
  bool on_array_begin(Error&) { return open(Type::array); }
  bool on_array_end(std::size_t count, Error&) { return close(count); }
  bool on_object_begin(Error&) { return open(Type::object); }
  bool on_object_end(std::size_t count, Error&) { return close(count); }
  bool on_key_part(Text text, std::size_t, Error&) { return addPart(text); }
  bool on_key(Text text, std::size_t, Error&) { return addString(text); }
  bool on_string_part(Text text, std::size_t, Error&) { return addPart(text); }
  bool on_string(Text text, std::size_t, Error&) { return addString(text); }
  /// A number comes in parts only where the text ends within it.
  bool on_number_part(Text, Error&) { return true; }
  bool on_int64(std::int64_t value, Text text, Error&) {
    // "-0" keeps its sign only as a floating-point number.
    if (value == 0 && text.front() == '-') return add(Type::floatingPoint, 0, std::bit_cast<Word>(-0.0));
    const auto bits = static_cast<Word>(value);
    const auto shortened = static_cast<std::int64_t>(bits << tape::typeBits) >> tape::typeBits;
    return shortened == value ? add(Type::integer, bits) : add(Type::wideInteger, 0, bits);
  }
  bool on_uint64(std::uint64_t value, Text, Error&) { return add(Type::largeInteger, 0, value); }
  bool on_double(double, Text digits, Error& error);
  bool on_bool(bool value, Error&) { return add(value ? Type::yes : Type::no); }
  bool on_null(Error&) { return add(Type::null); }
  bool on_comment_part(Text, Error&) { return true; }
  bool on_comment(Text, Error&) { return true; }

 private:
  bool add(Type type, Word rest = 0) {
    words.append(tape::head(type, rest));
    return true;
  }
  bool add(Type type, Word rest, Word second) {
    add(type, rest);
    words.append(second);
    return true;
  }

  /// While an array or object is open, its second word tells where the one around it begins.
  bool open(Type type) {
    const std::size_t around = std::exchange(innermost, words.size());
    return add(type, 0, around);
  }
  bool close(std::size_t count) {
    Word* const node = words.data() + innermost;
    const std::size_t place = std::exchange(innermost, node[1]);
    node[0] = tape::head(tape::typeOf(node[0]), count);
    node[1] = words.size() - place;
    return true;
  }

  /// Whether the parser has handed out a part of the text itself, and not a buffer of its own.
  bool isOfText(const char* at) const { return !std::less<>()(at, spare) && !std::less<>()(limit, at); }

  /// A string with escapes comes in pieces. They are put together where the last string has ended, and never
  /// get ahead of the parser: no escape is shorter than what it stands for.
  bool addPart(Text text) {
    std::memmove(written, text.data(), text.size());
    written += text.size();
    return true;
  }
  bool addString(Text last) {
    if (written == spare && isOfText(last.data())) {
      const auto place = static_cast<std::size_t>(last.data() - bytes);
      spare = written = bytes + place + last.size();
      return addString(Type::verbatim, Type::longVerbatim, place, last.size());
    }
    addPart(last);
    const char* const start = std::exchange(spare, written);
    return addString(Type::escaped, Type::longEscaped, static_cast<std::size_t>(start - bytes),
                     static_cast<std::size_t>(written - start));
  }
  bool addString(Type usual, Type large, std::size_t place, std::size_t length) {
    const bool fits = length <= tape::lengthMask && place >> tape::placeBits == 0;
    return fits ? add(usual, place << tape::lengthBits | length) : add(large, length, place);
  }

  char* bytes;
  const char* limit;
  char* spare;                ///< from here to where the parser reads, nothing is needed any more
  char* written;              ///< how far pieces of a string have been put there
  std::size_t innermost = 0;  ///< where the array or object begins that is open
};

/// The library's own conversion may be a unit in the last place off, so the digits are read again.
bool TapeWriter::on_double(double, Text digits, Error& error) {
  const auto value = text::floatingPoint<double>(digits);
  if (!value || !std::isfinite(*value)) {
    error = boost::json::error::not_number;
    return false;
  }
  return add(Type::floatingPoint, 0, std::bit_cast<Word>(*value));
}

/// The first eight bytes of a key, filled up with zeros, as a number that is the greater the later they sort.
std::uint64_t prefixOf(std::string_view key) {
  std::uint64_t prefix = 0;
  if (key.size() >= sizeof prefix) {
    for (std::size_t i = 0; i < sizeof prefix; ++i) prefix = prefix << 8 | static_cast<unsigned char>(key[i]);
    return prefix;
  }
  for (const char byte : key) prefix = prefix << 8 | static_cast<unsigned char>(byte);
  return key.empty() ? 0 : prefix << 8 * (sizeof prefix - key.size());
}

constexpr Kind kinds[] = {Kind::null,   Kind::boolean, Kind::boolean, Kind::number, Kind::string,
                          Kind::string, Kind::number,  Kind::number,  Kind::number, Kind::string,
                          Kind::string, Kind::array,   Kind::object};

}  // namespace

constinit const Word JSONView::nothing = tape::head(Type::null);

std::string_view nameOf(Kind kind) {
  constexpr std::string_view names[] = {"null", "boolean", "number", "string", "array", "object"};
  return names[static_cast<std::size_t>(kind)];
}

Kind JSONView::kind() const {
  return kinds[static_cast<std::size_t>(type())];
}

std::optional<bool> JSONView::boolean() const {
  return kind() == Kind::boolean ? std::optional(type() == Type::yes) : std::nullopt;
}

std::optional<JSONNumber> JSONView::number() const {
  switch (type()) {
    case Type::integer:
      // Shifted as a signed number, so that its sign fills it up.
      return static_cast<std::int64_t>(*node) >> tape::typeBits;
    case Type::wideInteger:
      return static_cast<std::int64_t>(node[1]);
    case Type::largeInteger:
      return node[1];
    case Type::floatingPoint:
      return std::bit_cast<double>(node[1]);
    default:
      return std::nullopt;
  }
}

JSONElements JSONView::elements() const {
  return isArray() ? JSONElements(*this) : JSONElements();
}

JSONElements::JSONElements(JSONView array)
    : first(array.node + 2, array.bytes), last(array.next()), count(tape::restOf(*array.node)) {}

std::vector<JSONMemberView> JSONView::members() const {
  MemberOrder order;
  std::vector<JSONMemberView> members;
  for (std::size_t left = order.push(*this); left > 0; --left) {
    const MemberOrder::Member& member = order.fromEnd(left);
    members.push_back({member.key.text(), member.value()});
  }
  return members;
}

std::optional<JSONView> JSONView::find(std::string_view key) const {
  std::optional<JSONView> found;
  if (!isObject()) return found;
  const Word* const end = next().node;
  for (JSONView each(node + 2, bytes); each.node != end; each = each.next().next()) {
    if (each.text() == key) found = each.next();
  }
  return found;
}

std::size_t MemberOrder::push(JSONView object) {
  if (!object.isObject()) return 0;
  const auto before = static_cast<std::ptrdiff_t>(members.size());
  const Word* const end = object.next().node;
  for (JSONView key(object.node + 2, object.bytes); key.node != end; key = key.next().next())
    members.push_back({prefixOf(key.text()), key});

  // Of equal keys, the order of the text.
  const auto precedes = [](const Member& a, const Member& b) {
    if (a.prefix != b.prefix) return a.prefix < b.prefix;
    const int comparison = a.key.text().compare(b.key.text());
    return comparison != 0 ? comparison < 0 : a.key.node < b.key.node;
  };
  const auto first = members.begin() + before;
  if (!std::is_sorted(first, members.end(), precedes)) std::sort(first, members.end(), precedes);
  // The last one of them stays.
  const auto isSameKey = [](const Member& a, const Member& b) {
    return a.prefix == b.prefix && a.key.text() == b.key.text();
  };
  const auto kept = std::unique(members.rbegin(), std::make_reverse_iterator(first), isSameKey).base();
  members.erase(first, kept);
  return static_cast<std::size_t>(members.end() - members.begin() - before);
}

std::optional<JSONDocument> JSONDocument::parse(text::Bytes received, std::size_t from) {
  std::optional<JSONDocument> document(std::in_place);
  document->bytes = std::move(received);
  if (!document->readBytes(from)) document.reset();
  return document;
}

bool JSONDocument::read(std::string_view text) {
  clear();
  bytes.append(text);
  return readBytes(0);
}

void JSONDocument::clear() {
  bytes.clear();
  words.clear();
}

/// Makes the tape of what stands in `bytes` from `from` on.
bool JSONDocument::readBytes(std::size_t from) {
  boost::json::parse_options options;
  options.max_depth = maxDepth;
  boost::json::basic_parser<TapeWriter> parser(options, bytes, from, std::move(words));
  boost::json::error_code error;
  const std::size_t size = bytes.size() - from;
  const bool isJSON = parser.write_some(false, bytes.data() + from, size, error) == size && !error;
  words = std::move(parser.handler().words);
  if (!isJSON) words.clear();
  return isJSON;
}

}  // namespace json
