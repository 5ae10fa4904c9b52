#include <zandor/debug.h>
#include <zandor/varg_list.h>

namespace ZANDOR_2_16 {

std::string types::variant::as_string() const {
  struct visitor {
    std::string operator()(nil_t) const { return {}; }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(int value) const { return std::to_string(value); }
    std::string operator()(long value) const { return std::to_string(value); }
  };
  return std::visit(visitor{}, m_value);
}

generic::varg_list& generic::varg_list::add(argument arg) {
  ZANDOR_ASSERT(!arg.is_nil());
  ZANDOR_ASSERT(m_count < capacity);
  if (!arg.is_nil() && m_count < capacity) {
    m_args[m_count++] = std::move(arg);
  }
  return *this;
}

const types::variant* generic::varg_list::find(const std::string& name) const {
  for (std::size_t i = 0; i < m_count; ++i) {
    if (m_args[i].name() == name) {
      return &m_args[i].value();
    }
  }
  return nullptr;
}

}  // namespace ZANDOR_2_16
