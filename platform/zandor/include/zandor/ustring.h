#pragma once
#include <cstddef>
#include <string>

namespace ZANDOR_2_16 {

/// One UTF-16 code unit: the character type of wide text values.
using uchar_t = char16_t;

namespace strings {

/// A UTF-8 string: message keys and formatted messages travel in it. Built from narrow
/// text, which it takes to be UTF-8 already; it never re-encodes.
class ustring8 {
 public:
  ustring8() = default;
  ustring8(const char* text) : m_text(text ? text : "") {}  // NOLINT: implicit by design
  ustring8(std::string text) : m_text(std::move(text)) {}   // NOLINT: implicit by design

  const std::string& str() const { return m_text; }
  const char* c_str() const { return m_text.c_str(); }
  operator const std::string&() const { return m_text; }  // NOLINT: implicit by design

  bool empty() const { return m_text.empty(); }
  /// Size in bytes.
  std::size_t size() const { return m_text.size(); }
  /// Number of code points; a malformed byte counts as one.
  std::size_t length() const;

  friend bool operator==(const ustring8& a, const ustring8& b) { return a.m_text == b.m_text; }
  friend bool operator!=(const ustring8& a, const ustring8& b) { return a.m_text != b.m_text; }
  friend bool operator<(const ustring8& a, const ustring8& b) { return a.m_text < b.m_text; }

 private:
  std::string m_text;
};

/// Decodes the code point that starts at byte `pos` of `utf8` and moves `pos` past it, so
/// that `pos` only ever stops on a character's first byte. A malformed or truncated
/// sequence gives U+FFFD and moves one byte: decoding always makes progress.
/// `pos` must be below the text's size.
char32_t decode_utf8(const std::string& utf8, std::size_t& pos);

/// UTF-8 to UTF-16 and back; malformed input bytes become U+FFFD.
std::u16string to_utf16(const std::string& utf8);
std::string to_utf8(const std::u16string& utf16);

}  // namespace strings
}  // namespace ZANDOR_2_16

/// The short name under which the rest of the family refers to this library.
namespace zandor2 = ZANDOR_2_16;
