#pragma once
#include <zandor/types.h>

#include <array>
#include <cstddef>
#include <string>

namespace ZANDOR_2_16::generic {

/// One named argument of a catalog message; a default argument is a nil place.
class argument {
 public:
  argument() = default;
  argument(std::string name, types::variant value) : m_name(std::move(name)), m_value(std::move(value)) {}

  const std::string& name() const { return m_name; }
  const types::variant& value() const { return m_value; }
  bool is_nil() const { return m_value.is_nil(); }

 private:
  std::string m_name;
  types::variant m_value;
};

/// An ordered list of up to `capacity` named arguments; the places left over hold nil.
class varg_list {
 public:
  static constexpr std::size_t capacity = 25;

  varg_list() = default;
  template <class... Args>
  explicit varg_list(Args... args) {
    static_assert(sizeof...(Args) <= capacity, "a varg_list holds at most 25 arguments");
    (add(std::move(args)), ...);
  }

  /// Appends an argument; a nil argument or a full list is asserted and ignored.
  varg_list& add(argument arg);
  varg_list& add(std::string name, types::variant value) {
    return add(argument(std::move(name), std::move(value)));
  }

  /// True when no argument was given.
  bool empty() const { return m_count == 0; }
  std::size_t size() const { return m_count; }
  /// The place at `index`, nil beyond the given arguments.
  const argument& operator[](std::size_t index) const { return m_args.at(index); }
  /// The first argument of that name, or null.
  const types::variant* find(const std::string& name) const;

 private:
  std::array<argument, capacity> m_args{};
  std::size_t m_count = 0;
};

}  // namespace ZANDOR_2_16::generic
