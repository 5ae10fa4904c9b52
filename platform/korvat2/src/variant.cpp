#include <korvat2/variant.h>
#include <zandor/debug.h>

#include <utility>

namespace korvat2 {

int internal::sync_inc(int* counter) { return __atomic_add_fetch(counter, 1, __ATOMIC_RELAXED); }
int internal::sync_dec(int* counter) { return __atomic_sub_fetch(counter, 1, __ATOMIC_ACQ_REL); }

struct variant_t::payload_t {
  int m_count = 1;
  std::string m_narrow;
  std::u16string m_wide;
};

namespace {
const zandor2::uchar_t empty_wide[] = {0};
}

variant_t::variant_t(const char* text) : variant_t(std::string(text ? text : "")) {}
variant_t::variant_t(const std::string& text) {
  make_text(text, zandor2::strings::to_utf16(text), kind_text);
}
variant_t::variant_t(const zandor2::uchar_t* text) : variant_t(std::u16string(text ? text : empty_wide)) {}
variant_t::variant_t(const std::u16string& text) {
  make_text(zandor2::strings::to_utf8(text), text, kind_wide_text);
}
variant_t::variant_t(int value) : m_kind(kind_int) { m_value.m_int = value; }
variant_t::variant_t(bool value) : m_kind(kind_bool) { m_value.m_bool = value; }

variant_t::variant_t(const variant_t& other) : m_kind(other.m_kind), m_value(other.m_value) {
  if (is_text() && m_value.m_data) {
    internal::sync_inc(&m_value.m_data->m_count);
  }
}

variant_t::variant_t(variant_t&& other) noexcept : m_kind(other.m_kind), m_value(other.m_value) {
  other.m_kind = kind_empty;
  other.m_value.m_data = nullptr;
}

variant_t& variant_t::operator=(const variant_t& other) {
  if (this != &other) {
    variant_t copy(other);
    *this = std::move(copy);
  }
  return *this;
}

variant_t& variant_t::operator=(variant_t&& other) noexcept {
  if (this != &other) {
    release();
    m_kind = std::exchange(other.m_kind, kind_empty);
    m_value = other.m_value;
    other.m_value.m_data = nullptr;
  }
  return *this;
}

variant_t::~variant_t() { release(); }

void variant_t::make_text(std::string narrow, std::u16string wide, kind_t kind) {
  m_kind = kind;
  m_value.m_data = new payload_t{1, std::move(narrow), std::move(wide)};
}

void variant_t::release() {
  if (is_text() && m_value.m_data && internal::sync_dec(&m_value.m_data->m_count) == 0) {
    delete m_value.m_data;
  }
  m_kind = kind_empty;
  m_value.m_data = nullptr;
}

template <>
bool variant_t::can_get<const char*>() const {
  return is_text();
}
template <>
bool variant_t::can_get<std::string>() const {
  return is_text();
}
template <>
bool variant_t::can_get<const zandor2::uchar_t*>() const {
  return is_text();
}
template <>
bool variant_t::can_get<std::u16string>() const {
  return is_text();
}
template <>
bool variant_t::can_get<int>() const {
  return is_number();
}
template <>
bool variant_t::can_get<bool>() const {
  return is_number();
}

template <>
const char* variant_t::get<const char*>() const {
  ZANDOR_ASSERT(can_get<const char*>());
  if (!is_text()) {
    return "";
  }
  ZANDOR_ASSERT(m_value.m_data != NULL);
  return m_value.m_data ? m_value.m_data->m_narrow.c_str() : "";
}

template <>
std::string variant_t::get<std::string>() const {
  ZANDOR_ASSERT(can_get<std::string>());
  return is_text() && m_value.m_data ? m_value.m_data->m_narrow : std::string();
}

template <>
const zandor2::uchar_t* variant_t::get<const zandor2::uchar_t*>() const {
  ZANDOR_ASSERT(can_get<const zandor2::uchar_t*>());
  if (!is_text()) {
    return empty_wide;
  }
  ZANDOR_ASSERT(m_value.m_data != NULL);
  return m_value.m_data ? m_value.m_data->m_wide.c_str() : empty_wide;
}

template <>
std::u16string variant_t::get<std::u16string>() const {
  ZANDOR_ASSERT(can_get<std::u16string>());
  return is_text() && m_value.m_data ? m_value.m_data->m_wide : std::u16string();
}

template <>
int variant_t::get<int>() const {
  ZANDOR_ASSERT(can_get<int>());
  if (m_kind == kind_int) {
    return m_value.m_int;
  }
  return m_kind == kind_bool && m_value.m_bool ? 1 : 0;
}

template <>
bool variant_t::get<bool>() const {
  ZANDOR_ASSERT(can_get<bool>());
  if (m_kind == kind_bool) {
    return m_value.m_bool;
  }
  return m_kind == kind_int && m_value.m_int != 0;
}

bool operator==(const variant_t& a, const variant_t& b) {
  if (a.m_kind != b.m_kind) {
    return false;
  }
  switch (a.m_kind) {
    case variant_t::kind_empty: return true;
    case variant_t::kind_int: return a.m_value.m_int == b.m_value.m_int;
    case variant_t::kind_bool: return a.m_value.m_bool == b.m_value.m_bool;
    // Each text compares in the form it was made in: a wide text may hold units that have
    // no UTF-8 form, and a narrow one bytes that aren't UTF-8.
    case variant_t::kind_wide_text: return a.get<std::u16string>() == b.get<std::u16string>();
    default: return a.get<std::string>() == b.get<std::string>();
  }
}

}  // namespace korvat2
