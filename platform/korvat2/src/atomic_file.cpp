// Files are replaced through a temporary beside them, so that a reader sees the old file or
// the new one, never half of either.
#include "atomic_file_p.h"

#include <korvat2/bag_file.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>

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

}  // namespace

namespace _internal {

bool read_file(const char* path, std::string& content, error_code_t& result) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    result = errno == ENOENT ? error::FileNotFound : error::FileRead;
    return false;
  }
  std::ostringstream buffer;
  buffer << in.rdbuf();
  if (in.bad()) {
    result = error::FileRead;
    return false;
  }
  content = buffer.str();
  return true;
}

int replace_file(const std::string& target, const std::string& data) {
  // Split as plain text: path_t turns names with a '*' into the empty path, and the
  // temporary file must still lie beside the target for the rename to be atomic.
  const std::size_t slash = target.rfind('/');
  const std::string dir = slash == std::string::npos ? "." : slash == 0 ? "/" : target.substr(0, slash);
  const std::string leaf = slash == std::string::npos ? target : target.substr(slash + 1);
  std::string temp = dir + "/." + leaf + ".XXXXXX";
  const int fd = ::mkostemp(temp.data(), O_CLOEXEC);
  if (fd < 0) {
    return errno;
  }
  struct stat old_info;
  ::fchmod(fd, ::stat(target.c_str(), &old_info) == 0 ? (old_info.st_mode & 07777) : new_file_mode());
  bool ok = write_all(fd, data) && step_ok(_internal::save_temp_written) && ::fsync(fd) == 0 &&
            step_ok(_internal::save_temp_synced);
  int error = ok ? 0 : errno;
  if (::close(fd) != 0 && ok) {
    ok = false;
    error = errno;
  }
  if (ok && ::rename(temp.c_str(), target.c_str()) != 0) {
    ok = false;
    error = errno;
  }
  if (!ok) {
    ::unlink(temp.c_str());
    return error;
  }
  sync_directory(dir);
  return step_ok(_internal::save_renamed) ? 0 : errno;
}

save_step_hook_t set_save_step_hook(save_step_hook_t hook) {
  save_step_hook_t previous = g_save_step_hook;
  g_save_step_hook = hook;
  return previous;
}

}  // namespace _internal

}  // namespace korvat2
