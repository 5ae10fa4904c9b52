#include <korvat2/system.h>

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace korvat2 {
namespace {

std::string home_dir() {
  std::string home = get_environ_value("HOME");
  if (home.empty()) {
    if (const passwd* entry = ::getpwuid(::getuid())) {
      home = entry->pw_dir ? entry->pw_dir : "";
    }
  }
  return home.empty() ? "/" : home;
}

// An XDG base directory: the variable when it holds an absolute path, else the fallback
// under the home directory.
path_t xdg_dir(const char* variable, const char* fallback) {
  const std::string value = get_environ_value(variable);
  if (!value.empty() && value[0] == '/') {
    return path_t(value);
  }
  path_t dir(home_dir());
  dir.append(path_t(fallback));
  return dir;
}

}  // namespace

std::string get_environ_value(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value ? value : "";
}

error_code_t remove_file(const path_t& file) {
  if (file.is_empty()) {
    return error::IsNotValidParameter;
  }
  if (std::remove(file.as_string(false).c_str()) == 0) {
    return error::Success;
  }
  return errno == ENOENT ? error::FileNotFound : error::FileWrite;
}

namespace stdpaths {

path_t get_temp_dir() {
  const std::string dir = get_environ_value("TMPDIR");
  return !dir.empty() && path_t::is_directory(dir) ? path_t(dir) : path_t("/tmp");
}

path_t get_working_dir() {
  std::vector<char> buffer(4096);
  while (::getcwd(buffer.data(), buffer.size()) == nullptr) {
    if (errno != ERANGE) {
      return path_t();
    }
    buffer.resize(buffer.size() * 2);
  }
  return path_t(buffer.data());
}

path_t get_user_config_dir() { return xdg_dir("XDG_CONFIG_HOME", ".config"); }
path_t get_user_data_dir() { return xdg_dir("XDG_DATA_HOME", ".local/share"); }

}  // namespace stdpaths
}  // namespace korvat2
