#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "mcp/MCPServer.h"
#include "platform/FileDescriptor.h"

namespace zelto {
namespace {

TEST(MCPServer, WritesEachReplyAtOnce) {
  // Packets keep the borders between writes.
  int in[2], out[2];
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, in) + ::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, out), 0);
  platform::writeAll(in[1], "{\"method\":\"ping\"}\n{\"method\":\"ping\"}");
  ::close(in[1]);
  EXPECT_EXIT((::dup2(in[0], STDIN_FILENO), ::dup2(out[1], STDOUT_FILENO), serve()),
              testing::ExitedWithCode(0), "^.zelto-mcp. starting; control file: ");
  ::close(in[0]);
  ::close(out[1]);
  const std::string_view pong = "{\"jsonrpc\":\"2.0\",\"id\":null,\"result\":{}}\n";
  std::string packet(1000, ' ');
  for (const std::string_view expected : {pong, pong, std::string_view()}) {
    const auto count = ::read(out[0], packet.data(), packet.size());
    EXPECT_EQ(packet.substr(0, static_cast<std::size_t>(count)), expected);
  }
  ::close(out[0]);
}

}  // namespace
}  // namespace zelto
