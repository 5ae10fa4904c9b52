#pragma once
// What the fuzz targets share: a loud stop that names the input, one scratch folder for
// the whole run, and whole-file reads and writes.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>

#include <stdlib.h>

namespace fuzz_support {

/// Stops the run: a fuzzer keeps the input that got here.
[[noreturn]] inline void fail(const char* what, const std::string& input) {
  std::cerr << what << " for input of " << input.size() << " bytes" << std::endl;
  std::abort();
}

/// A temporary folder, removed at exit; `path` is empty when none could be made.
struct work_dir_t {
  work_dir_t() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tamsel3_fuzz.XXXXXX").string();
    if (::mkdtemp(pattern.data())) {
      path = pattern;
    }
  }
  ~work_dir_t() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  work_dir_t(const work_dir_t&) = delete;
  work_dir_t& operator=(const work_dir_t&) = delete;
  std::string file(const char* name) const { return path + "/" + name; }
  std::string path;
};

/// The folder of the run.
inline const work_dir_t& work_dir() {
  static const work_dir_t dir;
  return dir;
}

/// Replaces the file's content with `bytes`.
inline void write_file(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

/// The file's content, empty when it can't be read.
inline std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace fuzz_support
