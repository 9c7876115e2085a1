#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/FileDescriptor.h"
#include "platform/Streams.h"

namespace platform {
namespace {

TEST(Streams, WaitForWhatIsTypedIntoANonBlockingInput) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  for (const int each : ends) ::fcntl(each, F_SETFL, O_NONBLOCK);
  const FileDescriptor input(::dup(STDIN_FILENO)), reading(ends[0]);
  ::dup2(reading.get(), STDIN_FILENO);
  std::thread typist([writing = FileDescriptor(ends[1])] {
    for (const char* piece : {"ye", "s\nuptime\n", "date"}) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      writeAll(writing.get(), piece);
    }
  });
  EXPECT_EQ(readInputLine(), "yes");
  EXPECT_EQ(readToEnd(STDIN_FILENO), "uptime\ndate");
  typist.join();
  ::dup2(input.get(), STDIN_FILENO);
}

}  // namespace
}  // namespace platform
