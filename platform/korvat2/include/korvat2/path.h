#pragma once
#include <string>

namespace korvat2 {

/// A POSIX file system path held as written. Any non-empty text without a NUL byte and
/// without the wild-card '*' is accepted; any other text gives the empty path, which is
/// how directory lines with wild-cards stay raw text for the classes that read them.
class path_t {
 public:
  /// Errors of `validate`.
  enum validation_error_t {
    error_empty = 0,          ///< nothing but blanks
    error_nul = 1,            ///< a NUL byte
    error_wildcard = 2,       ///< a '*'
    error_relative = 3,       ///< relative where an absolute path was wanted
    error_name_too_long = 4,  ///< one component longer than 255 bytes
    error_path_too_long = 5,  ///< longer than 4095 bytes
  };

  path_t() = default;
  path_t(const char* text);         // NOLINT: implicit by design
  path_t(const std::string& text);  // NOLINT: implicit by design

  void assign(const path_t& other) { m_text = other.m_text; }
  /// Adds `other` as further components: "a" and "b/c" give "a/b/c". An empty side
  /// leaves the other as it is.
  void append(const path_t& other);

  /// The path as text; `trailing_separator` makes sure that it ends in '/'.
  std::string as_string(bool trailing_separator) const;
  bool is_empty() const { return m_text.empty(); }
  bool is_absolute() const { return !m_text.empty() && m_text[0] == '/'; }
  /// The parent: "/a/b" gives "/a", "/a" gives "/", "/" and "a" give "".
  std::string get_branch() const;
  /// The last component: "/a/b/" gives "b", "/" gives "".
  std::string get_leaf() const;
  /// The extension of the last component without its dot: "a.c++" gives "c++";
  /// "Makefile" and ".profile" give "".
  std::string get_ext() const;
  /// Lexical clean-up: repeated separators and "." components go, ".." takes away the
  /// component before it. False for an empty path and for ".." above the root of an
  /// absolute path; the path is then left as it was.
  bool normalize();

  static bool exists(const std::string& path);
  static bool is_directory(const std::string& path);
  /// Whether `path` has the form of a usable path; `must_be_absolute` rejects relative
  /// ones. On failure `error` gets a `validation_error_t`; on success it is left alone.
  static bool validate(const std::string& path, bool must_be_absolute, int& error);

  friend bool operator==(const path_t& a, const path_t& b) { return a.m_text == b.m_text; }
  friend bool operator!=(const path_t& a, const path_t& b) { return a.m_text != b.m_text; }

 private:
  std::string m_text;
};

}  // namespace korvat2
