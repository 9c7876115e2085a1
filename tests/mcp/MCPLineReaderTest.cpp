#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "mcp/MCPLineReader.h"
#include "platform/FileDescriptor.h"

namespace zelto {
namespace {

using Lines = std::vector<std::string>;

/// The lines of what is written piece by piece, each once the one before has been read.
Lines linesOf(const std::vector<std::string>& pieces) {
  int ends[2];
  EXPECT_EQ(::pipe(ends), 0);
  // Neither end may mistake a pipe that is empty or full for its end.
  for (const int each : ends) ::fcntl(each, F_SETFL, O_NONBLOCK);
  std::thread writer([&] {
    for (const std::string& piece : pieces) {
      EXPECT_TRUE(platform::writeAll(ends[1], piece));
      for (int waiting = 1; waiting > 0; std::this_thread::yield()) ::ioctl(ends[0], FIONREAD, &waiting);
    }
    ::close(ends[1]);
  });
  Lines lines;
  MCPLineReader reader(ends[0]);
  try {
    for (;;) lines.emplace_back(reader.nextLine());
  } catch (const MCPLineReader::EndOfInput&) {
    writer.join();
    ::close(ends[0]);
  }
  EXPECT_THROW(reader.nextLine(), MCPLineReader::EndOfInput) << "a read error is an end too";
  return lines;
}

TEST(MCPLineReader, CutsWhatArrives) {
  const std::string aChunk(65535, 'x'), twoChunks(131072, 'y'), large(5'000'000, 'z');
  const std::pair<std::vector<std::string>, Lines> cases[] = {
      {{}, {}},
      {{"a\nb"}, {"a", "b"}},
      {{"\n\n"}, {"", ""}},
      {{" a \t\r \n", " \r\t\n"}, {" a", ""}},
      {{"ab", "c\nde", "f", "\ng", "\n"}, {"abc", "def", "g"}},
      {{std::string("a\0\v\n", 4)}, {std::string("a\0\v", 3)}},
      {{aChunk + "\n" + twoChunks + "\nb\n" + large + "\nc\n" + aChunk},
       {aChunk, twoChunks, "b", large, "c", aChunk}},
  };
  for (const auto& [pieces, lines] : cases) EXPECT_EQ(linesOf(pieces), lines);
}

TEST(MCPLineReader, GivesBackWhatALongLineTook) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  MCPLineReader reader(ends[0]);
  std::thread writer([&] { platform::writeAll(ends[1], std::string(5'000'000, 'x') + "\n"); });
  EXPECT_EQ(reader.nextLine().size(), 5'000'000u);
  writer.join();
  // This line too is too long to stand within the buffer's own object.
  platform::writeAll(ends[1], std::string(1000, 'y') + "\n");
  EXPECT_LT(::malloc_usable_size(const_cast<char*>(reader.nextLine().data())), 100'000u);
  for (const int end : ends) ::close(end);
}

}  // namespace
}  // namespace zelto
