#pragma once
#include <string>
#include <variant>

namespace ZANDOR_2_16::types {

/// Marks an unused place of an argument list.
struct nil_t {
  friend bool operator==(nil_t, nil_t) { return true; }
};

/// The value of a message argument: nothing, text, int or long.
class variant {
 public:
  variant() = default;
  variant(nil_t) {}                                                      // NOLINT: implicit by design
  variant(const char* text) : m_value(std::string(text ? text : "")) {}  // NOLINT
  variant(std::string text) : m_value(std::move(text)) {}                // NOLINT
  variant(int value) : m_value(value) {}                                 // NOLINT
  variant(long value) : m_value(value) {}                                // NOLINT

  bool is_nil() const { return std::holds_alternative<nil_t>(m_value); }
  /// The value as it reads in a message: text as it is, numbers in decimal, nil as nothing.
  std::string as_string() const;

  friend bool operator==(const variant& a, const variant& b) { return a.m_value == b.m_value; }

 private:
  std::variant<nil_t, std::string, int, long> m_value;
};

}  // namespace ZANDOR_2_16::types
