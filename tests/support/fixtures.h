#pragma once
// Small fixtures shared by the tests: a private temporary folder, a scoped environment
// variable, working directory and file size limit, and whole-file reads and writes.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace test_support {

/// The whole content of a file, empty when it can't be read.
inline std::string read_bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

/// Replaces the content of a file with `bytes`, making the file when it is missing.
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

/// A fresh folder under the system's temporary folder, removed with all it holds.
/// Its path is empty (and a failure reported) when it can't be made.
class temp_dir_t {
 public:
  temp_dir_t() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tamsel3_test.XXXXXX").string();
    if (::mkdtemp(pattern.data())) {
      m_path = pattern;
    }
    EXPECT_FALSE(m_path.empty()) << "mkdtemp failed";
  }
  ~temp_dir_t() {
    if (!m_path.empty()) {
      std::error_code ignored;
      std::filesystem::remove_all(m_path, ignored);
    }
  }
  temp_dir_t(const temp_dir_t&) = delete;
  temp_dir_t& operator=(const temp_dir_t&) = delete;

  const std::string& path() const { return m_path; }
  /// The path of `name` inside the folder.
  std::string file(const std::string& name) const { return m_path + "/" + name; }
  /// Writes `bytes` to the file `name` inside the folder and gives its path.
  std::string write(const std::string& name, const std::string& bytes) const {
    const std::string path = file(name);
    write_bytes(path, bytes);
    return path;
  }
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

/// An environment variable whose value on construction comes back on destruction.
/// Made with a value it sets the variable (or, with no value, unsets it); made with a
/// name alone it leaves the variable as it is until set() or unset().
class scoped_env_t {
 public:
  explicit scoped_env_t(std::string name) : m_name(std::move(name)) {
    if (const char* old = std::getenv(m_name.c_str())) {
      m_old = old;
    }
  }
  scoped_env_t(std::string name, const std::optional<std::string>& value) : scoped_env_t(std::move(name)) {
    apply(value);
  }
  ~scoped_env_t() { restore(); }
  scoped_env_t(const scoped_env_t&) = delete;
  scoped_env_t& operator=(const scoped_env_t&) = delete;

  void set(const std::string& value) { apply(value); }
  void unset() { apply(std::nullopt); }
  /// Puts the value from construction back now.
  void restore() { apply(m_old); }

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

/// Changes the working directory and restores it on leaving.
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

/// Lowers the size up to which the process may write files, so that a longer write fails
/// with EFBIG, for root as for anyone else. SIGXFSZ is ignored meanwhile: the write
/// returns its error instead of ending the process. Keep the scope short.
class scoped_file_size_limit_t {
 public:
  explicit scoped_file_size_limit_t(rlim_t bytes) {
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_old), 0);
    m_old_handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit lowered = m_old;
    lowered.rlim_cur = bytes;
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &lowered), 0);
  }
  ~scoped_file_size_limit_t() {
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_old), 0);
    std::signal(SIGXFSZ, m_old_handler);
  }
  scoped_file_size_limit_t(const scoped_file_size_limit_t&) = delete;
  scoped_file_size_limit_t& operator=(const scoped_file_size_limit_t&) = delete;

 private:
  rlimit m_old{};
  void (*m_old_handler)(int) = SIG_DFL;
};

/// Makes the catalogs English whatever the user's locale, since the tests read English
/// texts: the C locale's character handling with UTF-8, and no LANGUAGE list. A test of
/// another language sets its own variables with scoped_env_t.
inline void use_english_texts() {
  ::setenv("LC_ALL", "C.UTF-8", 1);
  ::unsetenv("LANGUAGE");
}

}  // namespace test_support
