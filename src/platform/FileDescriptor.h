// An owned file descriptor, and complete writes to one.
#pragma once

#include <cerrno>
#include <string_view>
#include <utility>

namespace platform {

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

/// Writes all of `bytes`, continuing after partial writes and interruptions. False, with `errno` set, when
/// the system refuses.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace platform
