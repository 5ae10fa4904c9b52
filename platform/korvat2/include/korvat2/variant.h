#pragma once
#include <zandor/ustring.h>

#include <string>

namespace korvat2 {
namespace internal {
/// Atomic counters of the shared text payload; they return the new count.
int sync_inc(int* counter);
int sync_dec(int* counter);
}  // namespace internal

/// A tagged value: nothing, narrow (UTF-8) text, wide (`zandor2::uchar_t`) text, int or bool.
///
/// Copies of a text share one counted payload that holds both encodings, so a text
/// reads as either form and a copy may be made on another thread while the first lives.
/// An int reads as bool (non-zero is true) and a bool as int. A text keeps every byte
/// (narrow) or unit (wide) it was made from, NUL and ill-formed sequences included; the
/// other form is a conversion in which ill-formed sequences become U+FFFD.
class variant_t {
 public:
  enum kind_t { kind_empty, kind_text, kind_wide_text, kind_int, kind_bool };

  variant_t() = default;
  variant_t(const char* text);              // NOLINT: implicit by design
  variant_t(const std::string& text);       // NOLINT
  variant_t(const zandor2::uchar_t* text);  // NOLINT
  variant_t(const std::u16string& text);    // NOLINT
  variant_t(int value);                     // NOLINT
  variant_t(bool value);                    // NOLINT
  variant_t(const variant_t& other);
  variant_t(variant_t&& other) noexcept;
  variant_t& operator=(const variant_t& other);
  variant_t& operator=(variant_t&& other) noexcept;
  ~variant_t();

  kind_t kind() const { return m_kind; }
  bool is_empty() const { return m_kind == kind_empty; }

  /// Whether the held kind can be read as `T`: `const char*`, `std::string`,
  /// `const zandor2::uchar_t*`, `std::u16string`, `int` or `bool`.
  template <class T>
  bool can_get() const;
  /// Reads the value as `T`; a kind that can't be read so is reported and gives a
  /// default value (empty text, 0, false).
  template <class T>
  T get() const;

  friend bool operator==(const variant_t& a, const variant_t& b);
  friend bool operator!=(const variant_t& a, const variant_t& b) { return !(a == b); }

 private:
  struct payload_t;
  void make_text(std::string narrow, std::u16string wide, kind_t kind);
  void release();
  bool is_text() const { return m_kind == kind_text || m_kind == kind_wide_text; }
  bool is_number() const { return m_kind == kind_int || m_kind == kind_bool; }

  kind_t m_kind = kind_empty;
  union value_t {
    int m_int;
    bool m_bool;
    payload_t* m_data;
  } m_value{};
};

template <>
bool variant_t::can_get<const char*>() const;
template <>
bool variant_t::can_get<std::string>() const;
template <>
bool variant_t::can_get<const zandor2::uchar_t*>() const;
template <>
bool variant_t::can_get<std::u16string>() const;
template <>
bool variant_t::can_get<int>() const;
template <>
bool variant_t::can_get<bool>() const;
template <>
const char* variant_t::get<const char*>() const;
template <>
std::string variant_t::get<std::string>() const;
template <>
const zandor2::uchar_t* variant_t::get<const zandor2::uchar_t*>() const;
template <>
std::u16string variant_t::get<std::u16string>() const;
template <>
int variant_t::get<int>() const;
template <>
bool variant_t::get<bool>() const;

}  // namespace korvat2
