#pragma once
#include <cstdint>
#include <string>

namespace korvat2 {
namespace error {

/// The numeric part of a result code.
using value_t = std::uint32_t;

/// A code fails exactly when this bit is set.
inline constexpr value_t failure_bit = 0x40000000;

/// A named result code.
struct code_t {
  value_t value;
  const char* name;
};

inline constexpr code_t Success{0, "kv2::error::Success"};
/// Success with nothing done, such as an unknown key that needed no work.
inline constexpr code_t False{1, "kv2::error::False"};
inline constexpr code_t Failed{failure_bit | 1, "kv2::error::Failed"};
inline constexpr code_t IsNotValidValue{failure_bit | 2, "kv2::error::IsNot.Valid.Value"};
inline constexpr code_t IsNotValidParameter{failure_bit | 3, "kv2::error::IsNot.Valid.Parameter"};
inline constexpr code_t FileNotFound{failure_bit | 4, "kv2::error::File.NotFound"};
inline constexpr code_t FileRead{failure_bit | 5, "kv2::error::File.Read"};
inline constexpr code_t FileWrite{failure_bit | 6, "kv2::error::File.Write"};
inline constexpr code_t FileFormat{failure_bit | 7, "kv2::error::File.Format"};
inline constexpr code_t NotSupported{failure_bit | 8, "kv2::error::NotSupported"};
/// A bag nested deeper than a bag file may hold (`max_bag_depth`); nothing was written.
inline constexpr code_t BagTooDeep{failure_bit | 9, "kv2::error::Bag.TooDeep"};

/// The name of a known value, or null.
const char* name_of(value_t value);

/// The checked failure: logs the failed condition, an error text (may be null) and the
/// source position through the library's logger at error level (40000), and also reports
/// it as an assertion when the variable "<logger name>_ERROR_HANDLING" holds "assert".
/// It doesn't stop anything by itself.
void checked_failure(const char* condition, const char* error_text, const char* file, unsigned line,
                     const char* function);

/// Reads "<logger name>_ERROR_HANDLING" again; the checked failure reads it once per
/// process otherwise. For tests and for hosts that change the variable at run time.
void reload_error_handling();

}  // namespace error

/// A 32-bit result code: 0 is success, and a code fails exactly when `failure_bit` is set,
/// so nonzero codes without it (such as `error::False`) succeed too.
class error_code_t {
 public:
  error_code_t() = default;
  error_code_t(const error::code_t& code) : m_value(code.value) {}  // NOLINT: implicit by design
  explicit error_code_t(error::value_t value) : m_value(value) {}

  error::value_t value() const { return m_value; }
  bool succeeded() const { return (m_value & error::failure_bit) == 0; }
  bool failed() const { return !succeeded(); }

  /// Flags of `as_string`.
  enum format_t : unsigned { name_only = 0, with_value = 1 };
  /// The code's text: its name ("kv2::error::IsNot.Valid.Value"), or its value in hex for
  /// a code without a name; `with_value` adds the value to a name.
  std::string as_string(unsigned format) const;

  /// Records a failure: takes `code`, and reports the failed condition `text` with the
  /// code's name and the source position as a checked failure.
  void raise(const error::code_t& code, const char* text, const char* file, unsigned line,
             const char* function = "");

  friend bool operator==(error_code_t a, error_code_t b) { return a.m_value == b.m_value; }
  friend bool operator!=(error_code_t a, error_code_t b) { return a.m_value != b.m_value; }

 private:
  error::value_t m_value = 0;
};

}  // namespace korvat2

/// Raises `code` on the error_code_t `result` when `condition` is false.
#define KV2_CHECK_RAISE(result, code, condition) \
  ((condition) ? static_cast<void>(0)            \
               : (result).raise((code), #condition, __FILE__, __LINE__, __PRETTY_FUNCTION__))

/// A checked failure of `condition` with an optional error text, when it is false.
#define KV2_CHECK(condition, error_text)                                                         \
  ((condition) ? static_cast<void>(0)                                                            \
               : ::korvat2::error::checked_failure(#condition, (error_text), __FILE__, __LINE__, \
                                                   __PRETTY_FUNCTION__))

/// Checks `condition`; when it is false, reports `text` as a checked failure of the
/// calling function and returns `value` from it (nothing, for a void function).
#define KV2_CHECK_MSG(condition, text, ...)                                                        \
  do {                                                                                             \
    if (!(condition)) {                                                                            \
      ::korvat2::error::checked_failure((text), nullptr, __FILE__, __LINE__, __PRETTY_FUNCTION__); \
      return __VA_ARGS__;                                                                          \
    }                                                                                              \
  } while (false)
