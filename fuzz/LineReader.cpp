// Any bytes as the stream that an agent writes, arriving in pieces of any size. The lines are those of a
// plain split, without blanks at their ends, each valid until the next; then comes the end of the input, and
// stays. Two bytes stand for a run: which byte, and how often, so that lines outgrow every buffer.
#include <fcntl.h>
#include <sys/socket.h>

#include "mcp/MCPLineReader.h"
#include "platform/FileDescriptor.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

std::string stream(fuzz::Input& input) {
  std::string bytes;
  while (!input.rest.empty()) {
    const char which = static_cast<char>(input.byte());
    const std::size_t count = input.byte();
    bytes.append(count < 128 ? count + 1 : (count - 127) * 512, which);
  }
  return bytes;
}

/// A descriptor from which the bytes come in packets, a hundred of the two sizes in turn before what is left.
/// More bytes than a socket holds come from a file, and so as many at once as the reader takes.
platform::FileDescriptor arriving(std::string_view bytes, std::size_t small, std::size_t large) {
  constexpr std::size_t mostInSocket = 65536;
  if (bytes.size() > mostInSocket) {
    const std::string path = fuzz::privateDirectory() + "/stream";
    fuzz::writeFile(path, bytes);
    return platform::FileDescriptor(::open(path.c_str(), O_RDONLY));
  }
  int ends[2];
  // Packets keep the borders between writes.
  fuzz::expect(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) == 0, "the machine has sockets");
  const platform::FileDescriptor writing(ends[1]);
  for (int count = 0; !bytes.empty(); ++count) {
    const auto packet = bytes.substr(0, count == 100 ? mostInSocket : count % 2 == 0 ? small : large);
    fuzz::expect(platform::writeAll(writing.get(), packet), "a socket holds so much");
    bytes.remove_prefix(packet.size());
  }
  return platform::FileDescriptor(ends[0]);
}

std::vector<std::string_view> plainLines(std::string_view bytes) {
  auto lines = text::split(bytes, '\n');
  if (lines.back().empty()) lines.pop_back();
  for (auto& line : lines) {
    while (line.ends_with('\t') || line.ends_with('\r') || line.ends_with(' ')) line.remove_suffix(1);
  }
  return lines;
}

/// Whether one more call finds the end.
bool isAtEnd(zelto::MCPLineReader& reader) {
  try {
    reader.nextLine();
    return false;
  } catch (const zelto::MCPLineReader::EndOfInput&) {
    return true;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::size_t small = input.byte() + 1u, large = (input.byte() + 1u) * 256u;
  const std::string bytes = stream(input);
  const platform::FileDescriptor reading = arriving(bytes, small, large);
  zelto::MCPLineReader reader(reading.get());
  for (const std::string_view expected : plainLines(bytes))
    fuzz::expect(reader.nextLine() == expected, "the next line is the next line", expected);
  fuzz::expect(isAtEnd(reader) && isAtEnd(reader), "the end is the end");
  return 0;
}
