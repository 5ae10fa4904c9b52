// Files are replaced through a temporary beside them, so that a reader sees the old file or
// the new one, never half of either. Each save holds an advisory lock on its temporary for as
// long as it runs, so that a later save can tell the temporaries of dead saves, and remove
// them, from those of saves still running.
#include "atomic_file_p.h"

#include <korvat2/bag_file.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace korvat2 {
namespace {

_internal::save_step_hook_t g_save_step_hook = nullptr;

// A refused step stands for a failing disk.
bool step_ok(_internal::save_step_t step) {
  if (g_save_step_hook && !g_save_step_hook(step)) {
    errno = EIO;
    return false;
  }
  return true;
}

mode_t new_file_mode() {
  // The umask can't be read without changing it, except through /proc.
  mode_t mask = 022;
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("Umask:", 0) == 0) {
      mask = static_cast<mode_t>(std::strtoul(line.c_str() + 6, nullptr, 8));
    }
  }
  return 0666 & ~mask;
}

bool write_all(int fd, const std::string& data) {
  for (std::size_t done = 0; done < data.size();) {
    const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0 && errno == EINTR) {
      continue;
    }
    if (n <= 0) {
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  return true;
}

void sync_directory(const std::string& dir) {
  const int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    ::fsync(fd);
    ::close(fd);
  }
}

// Paths are split as plain text: path_t turns names with a '*' into the empty path, and the
// temporary file must still lie beside the target for the rename to be atomic.
std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

std::string leaf_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string joined(const std::string& folder, const std::string& name) {
  std::string path = folder;
  path += '/';
  path += name;
  return path;
}

// Follows a chain of links to the file that a save must replace; a dangling link names a
// file to create. False with errno set when the chain doesn't end.
bool follow_links(const std::string& path, std::string& target) {
  std::string current = path;
  for (int hops = 0; hops < 40; ++hops) {
    struct stat info;
    const bool found = ::lstat(current.c_str(), &info) == 0;
    if (!found && errno != ENOENT) {
      return false;
    }
    if (!found || !S_ISLNK(info.st_mode)) {
      target = current;
      return true;
    }
    char text[PATH_MAX];
    const ssize_t length = ::readlink(current.c_str(), text, sizeof text);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof text) {
      errno = length < 0 ? errno : ENAMETOOLONG;
      return false;
    }
    const std::string next(text, static_cast<std::size_t>(length));
    current = !next.empty() && next.front() == '/' ? next : joined(folder_of(current), next);
  }
  errno = ELOOP;
  return false;
}

// FNV-1a: stable across processes and builds, which a sweep by another process needs.
std::uint64_t name_hash(const std::string& text) {
  std::uint64_t hash = 14695981039346656037ull;
  for (unsigned char c : text) {
    hash = (hash ^ c) * 1099511628211ull;
  }
  return hash;
}

// A temporary is named prefix + six random letters or digits + '~'.
constexpr std::size_t temp_random_length = 6;
constexpr const char* temp_pattern_end = "XXXXXX~";

// The start of the names of `leaf`'s temporaries. A name too long for the whole temporary
// name to fit NAME_MAX is cut, and a hash of the whole name keeps targets apart.
std::string temp_prefix(const std::string& leaf) {
  const std::size_t fixed = 2 + temp_random_length + 1;  // the dots, the random part, '~'
  if (leaf.size() + fixed <= NAME_MAX) {
    return "." + leaf + ".";
  }
  char hash[24];
  const int hash_length =
      std::snprintf(hash, sizeof hash, "-%016llx", static_cast<unsigned long long>(name_hash(leaf)));
  std::string start = leaf.substr(0, NAME_MAX - fixed - static_cast<std::size_t>(hash_length));
  // Don't leave half of a UTF-8 sequence at the cut.
  while (!start.empty() && (static_cast<unsigned char>(start.back()) & 0xC0) == 0x80) {
    start.pop_back();
  }
  if (!start.empty() && static_cast<unsigned char>(start.back()) >= 0xC0) {
    start.pop_back();
  }
  return "." + start + hash + ".";
}

bool is_temp_of(const std::string& name, const std::string& prefix) {
  if (name.size() != prefix.size() + temp_random_length + 1 || name.compare(0, prefix.size(), prefix) != 0 ||
      name.back() != '~') {
    return false;
  }
  for (std::size_t i = prefix.size(); i + 1 < name.size(); ++i) {
    if (!std::isalnum(static_cast<unsigned char>(name[i]))) {
      return false;
    }
  }
  return true;
}

bool same_file(int fd, const std::string& path) {
  struct stat opened;
  struct stat named;
  return ::fstat(fd, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
         opened.st_ino == named.st_ino;
}

// Makes the temporary and locks it; -1 with errno set when it can't be made.
int make_locked_temp(const std::string& folder, const std::string& prefix, std::string& temp) {
  for (int attempt = 0; attempt < 8; ++attempt) {
    temp = joined(folder, prefix);
    temp += temp_pattern_end;
    const int fd = ::mkostemps(temp.data(), 1, O_CLOEXEC);
    if (fd < 0) {
      return -1;
    }
    // Where locks aren't supported there is no sweep either. Another save's sweep may have
    // taken the file between its creation and the lock: then make another.
    if (::flock(fd, LOCK_EX) != 0 || same_file(fd, temp)) {
      return fd;
    }
    ::close(fd);
  }
  errno = EAGAIN;
  return -1;
}

// Removes the temporaries of saves of the same target that died: no one holds their lock.
void sweep_dead_temps(const std::string& folder, const std::string& prefix) {
  DIR* dir = ::opendir(folder.c_str());
  if (!dir) {
    return;
  }
  while (const dirent* entry = ::readdir(dir)) {
    const std::string name = entry->d_name;
    if (!is_temp_of(name, prefix)) {
      continue;
    }
    const std::string path = joined(folder, name);
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (fd < 0) {
      continue;
    }
    struct stat info;
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) &&
        same_file(fd, path)) {
      ::unlink(path.c_str());
    }
    ::close(fd);
  }
  ::closedir(dir);
}

// Writes the locked temporary `fd` and renames it over `target`; the lock is held until the
// rename is done. 0 or the errno of the failed step; the temporary is gone on failure.
int write_and_rename(int fd, const std::string& temp, const std::string& target, const std::string& data) {
  bool ok = write_all(fd, data) && step_ok(_internal::save_temp_written) && ::fsync(fd) == 0 &&
            step_ok(_internal::save_temp_synced) && ::rename(temp.c_str(), target.c_str()) == 0;
  int error = ok ? 0 : errno;
  if (!ok) {
    ::unlink(temp.c_str());
  }
  if (::close(fd) != 0 && ok) {
    ok = false;
    error = errno;
  }
  return error;
}

}  // namespace

namespace _internal {

bool read_file(const char* path, std::string& content, error_code_t& result) {
  // Only a regular file has an end: a device or a FIFO is never opened for reading.
  struct stat info;
  const int fd = ::stat(path, &info) == 0 && !S_ISREG(info.st_mode)
                     ? -2
                     : ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) {
    result = fd == -2 ? error::NotSupported : errno == ENOENT ? error::FileNotFound : error::FileRead;
    return false;
  }
  // Checked again on what was opened, which may have been swapped since.
  if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
    result = S_ISREG(info.st_mode) ? error::FileRead : error::NotSupported;
    ::close(fd);
    return false;
  }
  // The read is bounded by the size: a file that grows meanwhile can't grow the process.
  std::string buffer(static_cast<std::size_t>(info.st_size), '\0');
  std::size_t done = 0;
  ssize_t n = 0;
  while (done < buffer.size() &&
         ((n = ::read(fd, &buffer[done], buffer.size() - done)) > 0 || (n < 0 && errno == EINTR))) {
    done += n > 0 ? static_cast<std::size_t>(n) : 0;
  }
  ::close(fd);
  if (n < 0) {
    result = error::FileRead;
    return false;
  }
  buffer.resize(done);  // it shrank meanwhile
  content.swap(buffer);
  return true;
}

int replace_file(const std::string& path, const std::string& data) {
  std::string target;
  if (!follow_links(path, target)) {
    return errno;
  }
  // A file without any write bit is protected by its owner: not replaced, even by root.
  struct stat old_info;
  const bool exists = ::stat(target.c_str(), &old_info) == 0;
  if (exists && S_ISREG(old_info.st_mode) && (old_info.st_mode & 0222) == 0) {
    return EACCES;
  }
  const std::string folder = folder_of(target);
  const std::string prefix = temp_prefix(leaf_of(target));
  // Swept first, so that a save killed at any moment leaves at most its own temporary.
  sweep_dead_temps(folder, prefix);
  std::string temp;
  const int fd = make_locked_temp(folder, prefix, temp);
  if (fd < 0) {
    return errno;
  }
  ::fchmod(fd, exists ? (old_info.st_mode & 07777) : new_file_mode());
  const int error = write_and_rename(fd, temp, target, data);
  if (error != 0) {
    return error;
  }
  sync_directory(folder);
  return step_ok(_internal::save_renamed) ? 0 : errno;
}

save_step_hook_t set_save_step_hook(save_step_hook_t hook) {
  save_step_hook_t previous = g_save_step_hook;
  g_save_step_hook = hook;
  return previous;
}

}  // namespace _internal

}  // namespace korvat2
