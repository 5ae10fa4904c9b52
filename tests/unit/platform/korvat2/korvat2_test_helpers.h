#pragma once
// Small fixtures shared by the korvat2 tests: a private temporary folder, a scoped
// environment variable and working directory, and whole-file reads and writes.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>

namespace korvat2_test {

/// A fresh folder under the system's temporary folder, removed with all it holds.
class temp_dir_t {
 public:
  temp_dir_t() {
    std::string pattern = (std::filesystem::temp_directory_path() / "korvat2_test.XXXXXX").string();
    if (::mkdtemp(pattern.data())) {
      m_path = pattern;
    }
    EXPECT_FALSE(m_path.empty()) << "mkdtemp failed";
  }
  ~temp_dir_t() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  temp_dir_t(const temp_dir_t&) = delete;
  temp_dir_t& operator=(const temp_dir_t&) = delete;

  const std::string& path() const { return m_path; }
  /// The path of `name` inside the folder.
  std::string file(const std::string& name) const { return m_path + "/" + name; }
  /// The names in the folder, hidden ones included.
  std::set<std::string> names() const {
    std::set<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
      result.insert(entry.path().filename().string());
    }
    return result;
  }

 private:
  std::string m_path;
};

/// Sets (or, with no value, unsets) an environment variable and restores it afterwards.
class scoped_env_t {
 public:
  scoped_env_t(std::string name, const std::optional<std::string>& value) : m_name(std::move(name)) {
    if (const char* old = std::getenv(m_name.c_str())) {
      m_old = old;
    }
    apply(value);
  }
  ~scoped_env_t() { apply(m_old); }
  scoped_env_t(const scoped_env_t&) = delete;
  scoped_env_t& operator=(const scoped_env_t&) = delete;

 private:
  void apply(const std::optional<std::string>& value) {
    if (value) {
      ::setenv(m_name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(m_name.c_str());
    }
  }

  std::string m_name;
  std::optional<std::string> m_old;
};

// Restores the working directory on leaving.
class scoped_cwd_t {
 public:
  explicit scoped_cwd_t(const std::string& dir) {
    std::error_code ignored;
    m_old = std::filesystem::current_path(ignored).string();
    EXPECT_EQ(::chdir(dir.c_str()), 0);
  }
  ~scoped_cwd_t() {
    if (!m_old.empty()) {
      EXPECT_EQ(::chdir(m_old.c_str()), 0);
    }
  }
  scoped_cwd_t(const scoped_cwd_t&) = delete;
  scoped_cwd_t& operator=(const scoped_cwd_t&) = delete;

 private:
  std::string m_old;
};

inline std::string read_bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void write_bytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  ASSERT_TRUE(out.good()) << "can't write " << path;
}

/// The permission bits of a file, or -1 when it can't be read.
inline int mode_of(const std::string& path) {
  struct stat info;
  return ::stat(path.c_str(), &info) == 0 ? static_cast<int>(info.st_mode & 07777) : -1;
}

}  // namespace korvat2_test
