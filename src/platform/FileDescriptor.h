// An owned file descriptor; reads that wait, complete reads and writes, and the three that every program has.
#pragma once

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <sys/types.h>

namespace platform {

/// The descriptors that every program has.
inline constexpr int standardInput = 0, standardOutput = 1, standardError = 2;

/// Owns one open descriptor and closes it.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : number(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  ~FileDescriptor() { close(); }

  int get() const { return number; }
  explicit operator bool() const { return number >= 0; }
  void close();

 private:
  int number = -1;
};

/// What `call` returns once no signal interrupts it: a system call that gives a negative number for failure.
template <class Call>
auto uninterrupted(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

/// Reads up to `size` bytes, waiting for the first one also where the descriptor is non-blocking. Returns how
/// many, 0 at the end of the input, or -1 with `errno` set.
ssize_t readSome(int descriptor, char* buffer, std::size_t size);

/// All bytes up to the end of input of an open descriptor; nothing, with `errno` set, on a read error.
std::optional<std::string> readToEnd(int descriptor);

/// Writes all of `bytes`, continuing after partial writes and interruptions. False, with `errno` set, when
/// the system refuses.
bool writeAll(int descriptor, std::string_view bytes);

/// Makes a write to a pipe that nobody reads fail instead of ending the process, from now on.
void ignoreBrokenPipes();

/// Opens each of the descriptors 0, 1 and 2 that is closed, so that no file or pipe can take its place.
/// Reading from one gives nothing, and writing to it fails as on a closed descriptor.
void openStandardDescriptors();

}  // namespace platform
