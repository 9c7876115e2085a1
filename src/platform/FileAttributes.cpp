#include "platform/FileAttributes.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/Files.h"

#ifdef __APPLE__
#include <copyfile.h>
#include <sys/acl.h>
#else
#include <sys/xattr.h>
#endif

namespace platform {
namespace {

[[noreturn]] void refuse(const std::string& path, const char* attribute) {
  throw SystemError::file(path, std::string("cannot keep its ") + attribute + ": " + std::strerror(errno));
}

#ifdef __APPLE__

// acl_get_fd_np(3), acl_set_fd_np(3), fcopyfile(3), fchflags(2) of macOS.

struct AccessList {
  acl_t list;
  explicit AccessList(acl_t of) : list(of) {}
  AccessList(const AccessList&) = delete;
  ~AccessList() {
    if (list != nullptr) ::acl_free(list);
  }
};

/// Whether that error says that the file system keeps no such thing. macOS has two numbers for it.
bool meansNotKept(int error) {
  return error == ENOTSUP || error == EOPNOTSUPP;
}

/// True if the file has an access list, which `to` then has as well. An empty one takes away what `to` may
/// have inherited from its directory.
bool copyAccessList(int from, int to, const std::string& path) {
  AccessList source(::acl_get_fd_np(from, ACL_TYPE_EXTENDED));
  const bool exists = source.list != nullptr;
  if (!exists && errno != ENOENT && !meansNotKept(errno)) refuse(path, "access list");
  if (!exists) source.list = ::acl_init(0);
  const bool done = source.list != nullptr && ::acl_set_fd_np(to, source.list, ACL_TYPE_EXTENDED) == 0;
  if (!done && (exists || !meansNotKept(errno))) refuse(path, "access list");
  return exists;
}

void copyOtherAttributes(int from, int to, const struct stat& old, const std::string& path) {
  // It goes on after an attribute that this user may not set, and then fails with that error.
  if (::fcopyfile(from, to, nullptr, COPYFILE_XATTR) < 0 && errno != EPERM && errno != EACCES &&
      !meansNotKept(errno)) {
    refuse(path, "extended attributes");
  }
  // The flags that keep a file from being replaced have done so by now; those of the system are not ours.
  static_cast<void>(::fchflags(to, old.st_flags & (UF_NODUMP | UF_HIDDEN)));
}

#else

// xattr(7), acl(5) of Linux: an access list is an attribute with a name of its own, and setting a file's mode
// while it has one sets the list's mask.
constexpr const char* accessList = "system.posix_acl_access";

/// What a call that fills a buffer gives, with the buffer's size asked for first; nothing, with `errno` set,
/// on error.
template <class Call>
std::optional<std::string> filled(Call call) {
  for (;;) {
    const auto size = call(nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string buffer(static_cast<std::size_t>(size), '\0');
    const auto count = size == 0 ? size : call(buffer.data(), buffer.size());
    if (count < 0 && errno == ERANGE) continue;  // it has grown in between
    if (count < 0) return std::nullopt;
    buffer.resize(static_cast<std::size_t>(count));
    return buffer;
  }
}

std::optional<std::string> attribute(int file, const char* name) {
  return filled([&](char* buffer, std::size_t size) { return ::fgetxattr(file, name, buffer, size); });
}

bool setAttribute(int file, const char* name, std::string_view value) {
  return ::fsetxattr(file, name, value.data(), value.size(), 0) == 0;
}

/// Whether that error says that there is no such attribute, or that the file system knows none.
bool meansNoAttribute(int error) {
  return error == ENODATA || error == ENOTSUP;
}

/// True if the file has an access list, which `to` then has as well. Without one, what `to` may have
/// inherited from its directory goes.
bool copyAccessList(int from, int to, const std::string& path) {
  const auto list = attribute(from, accessList);
  if (!list && !meansNoAttribute(errno)) refuse(path, "access list");
  const bool done = list ? setAttribute(to, accessList, *list)
                         : ::fremovexattr(to, accessList) == 0 || meansNoAttribute(errno);
  if (!done) refuse(path, "access list");
  return list.has_value();
}

/// Whether an attribute speaks of the bytes that a file holds, so that it would be wrong beside other bytes.
bool isOfContent(std::string_view name) {
  return name == "security.ima" || name == "security.evm" || name == "security.capability";
}

/// Whether that error says that this user may not set the attribute, or that it cannot be set here.
bool meansNotAllowed(int error) {
  return error == EPERM || error == EACCES || error == ENOTSUP;
}

void copyOtherAttributes(int from, int to, const struct stat&, const std::string& path) {
  const auto names = filled([&](char* buffer, std::size_t size) { return ::flistxattr(from, buffer, size); });
  if (!names && !meansNoAttribute(errno)) refuse(path, "extended attributes");
  if (!names) return;
  for (const char* name = names->c_str(); name < names->c_str() + names->size();
       name += std::strlen(name) + 1) {
    if (std::string_view(name) == accessList || isOfContent(name)) continue;
    const auto value = attribute(from, name);
    if (value ? setAttribute(to, name, *value) : meansNoAttribute(errno)) continue;
    // Other access lists, as of a network file system, are among those of "system.".
    if (!meansNotAllowed(errno) || std::string_view(name).starts_with("system.")) {
      refuse(path, "extended attributes");
    }
  }
}

#endif

}  // namespace

void copyAttributes(int from, int to, const std::string& path) {
  struct stat old {
  }, created{};
  if (::fstat(from, &old) != 0 || ::fstat(to, &created) != 0) throw SystemError::file(path);
  constexpr auto unchanged = static_cast<gid_t>(-1);
  if (old.st_uid != created.st_uid && ::fchown(to, old.st_uid, unchanged) != 0) refuse(path, "owner");
  const bool keepsGroup =
      old.st_gid == created.st_gid || ::fchown(to, static_cast<uid_t>(-1), old.st_gid) == 0;
  if (!keepsGroup && errno != EPERM) refuse(path, "group");
  const int groupError = errno;
  const bool hasAccessList = copyAccessList(from, to, path);
  copyOtherAttributes(from, to, old, path);
  mode_t mode = old.st_mode & 07777;
  if (!keepsGroup) {
    // The list would now give another group what it gives to the old one.
    errno = groupError;
    if (hasAccessList) refuse(path, "group");
    // Members of the old group may now count as everybody, and members of the new one as the group.
    const mode_t common = mode & (mode >> 3) & 07;
    mode = (mode & (S_ISUID | S_ISVTX | 0700)) | common << 3 | common;
  }
  // The mode is set last, since a change of owner clears the set-id bits; until then only the creator may
  // read.
  if (::fchmod(to, mode) != 0) throw SystemError::file(path);
}

}  // namespace platform
