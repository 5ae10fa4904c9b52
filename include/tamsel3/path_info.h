#pragma once
#include <korvat2/path.h>
#include <tamsel3/export.h>

#include <string>
#include <vector>

namespace tamsel3 {

/// One line of a directory list as a user typed it or a search-directory container
/// stored it, together with the real directory read out of it. The text may hold the
/// wild-card '*'; it is kept as written for the screen and for saving, while the tests
/// answer for the first absolute piece of it (see `extract_path`). A plain value; GUI thread.
class TAMSEL3_API path_info_t {
 public:
  /// The wild-card. Bound to the first byte of a two-byte array, so that `&Asterisk` is
  /// also a zero-terminated string of that one character.
  static const char& Asterisk;

  /// Empty in both members.
  path_info_t();
  /// Takes `path` as it is, without inspecting it: a relative path stays, and an empty one
  /// gives an object that answers like the empty text.
  explicit path_info_t(const korvat2::path_t& path);
  /// An empty object followed by `set_path(text)`.
  explicit path_info_t(const std::string& text);
  virtual ~path_info_t();

  /// Copies the text, the path and what was found out about it.
  path_info_t(const path_info_t&) = default;
  /// Copies the text, the path and what was found out about it.
  path_info_t& operator=(const path_info_t&) = default;

  /// Keeps `text` as a path when it parses to an absolute path; otherwise as raw text.
  /// So a relative text ("src", or " /opt" with its leading blank) and a text with a '*'
  /// stay raw and never pass `is_ok`, unless an absolute piece follows a '*'. The member
  /// that isn't chosen is left as it was: nothing is cleared, and a path already held
  /// goes on answering for the object (make a new object for a clean start).
  void set_path(const std::string& text);
  /// Replaces the path; a raw text held before stays, unseen while the path isn't empty.
  void set_path(const korvat2::path_t& path);

  /// The path as held, without extraction; empty for a raw text.
  korvat2::path_t get_path() const;
  /// The line as written: the path's text, or the raw text when there is no path.
  std::string as_string() const;
  /// True when no path is held and the line is raw text.
  bool is_str_path() const;

  /// True when the line holds a usable absolute path.
  bool is_ok() const;
  /// Whether the extracted path exists; false when there is none.
  bool is_exists() const;
  /// Only the negation of `is_directory` for an extracted path: an absolute path that names
  /// nothing is a "file". False when there is no extracted path.
  bool is_file() const;
  /// Whether the extracted path is a directory; false when there is none.
  bool is_directory() const;
  /// The extracted path's extension without its dot; empty when there is no path.
  std::string get_extension() const;
  /// True when one of `extensions` equals `get_extension()` exactly, case included.
  bool check_extension(const std::vector<std::string>& extensions);

  /// The path that the tests answer for: the held path when there is one, else the first
  /// piece of the raw text between '*'s that is an absolute path, else the empty path.
  virtual korvat2::path_t extract_path() const;

 private:
  korvat2::path_t m_path;
  std::string m_str_path;
};

}  // namespace tamsel3
