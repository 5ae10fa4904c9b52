#include <korvat2/variant_bag.h>
#include <zandor/debug.h>

#include <algorithm>
#include <cstring>

namespace korvat2 {

struct variant_bag_t::entry_t {
  std::string name;
  variant_t value;
  std::unique_ptr<variant_bag_t> bag;  // set for a nested bag

  entry_t(std::string n, variant_t v) : name(std::move(n)), value(std::move(v)) {}
  entry_t(std::string n, const variant_bag_t& b)
      : name(std::move(n)), bag(std::make_unique<variant_bag_t>(b)) {}
  entry_t(const entry_t& other)
      : name(other.name),
        value(other.value),
        bag(other.bag ? std::make_unique<variant_bag_t>(*other.bag) : nullptr) {}
  entry_t(entry_t&&) noexcept = default;
  entry_t& operator=(const entry_t& other) {
    entry_t copy(other);
    return *this = std::move(copy);
  }
  entry_t& operator=(entry_t&&) noexcept = default;
};

namespace {
const char* safe(const char* name) { return name ? name : ""; }
}  // namespace

variant_bag_t::variant_bag_t() = default;
variant_bag_t::variant_bag_t(const variant_bag_t& other) = default;
variant_bag_t::variant_bag_t(variant_bag_t&& other) noexcept = default;
variant_bag_t& variant_bag_t::operator=(const variant_bag_t& other) = default;
variant_bag_t& variant_bag_t::operator=(variant_bag_t&& other) noexcept = default;
variant_bag_t::~variant_bag_t() = default;

template <>
std::size_t variant_bag_t::find_from<variant_t>(const std::string& name, std::size_t from) const {
  while (from < m_entries.size() && (m_entries[from].bag || m_entries[from].name != name)) {
    ++from;
  }
  return from;
}

template <>
std::size_t variant_bag_t::find_from<variant_bag_t>(const std::string& name, std::size_t from) const {
  while (from < m_entries.size() && (!m_entries[from].bag || m_entries[from].name != name)) {
    ++from;
  }
  return from;
}

template <>
const variant_t& variant_bag_t::value_at<variant_t>(std::size_t index) const {
  static const variant_t none;
  const bool valid = index < m_entries.size() && !m_entries[index].bag;
  ZANDOR_ASSERT(valid && "iterator is at end state");
  return valid ? m_entries[index].value : none;
}

template <>
const variant_bag_t& variant_bag_t::value_at<variant_bag_t>(std::size_t index) const {
  static const variant_bag_t none;
  const bool valid = index < m_entries.size() && m_entries[index].bag;
  ZANDOR_ASSERT(valid && "iterator is at end state");
  return valid ? *m_entries[index].bag : none;
}

template <>
variant_t& variant_bag_t::value_at<variant_t>(std::size_t index) {
  // A caller that writes through an end iterator writes into a scratch value.
  thread_local variant_t scratch;
  const bool valid = index < m_entries.size() && !m_entries[index].bag;
  return valid ? m_entries[index].value
               : (scratch = static_cast<const variant_bag_t*>(this)->value_at<variant_t>(index));
}

template <>
variant_bag_t& variant_bag_t::value_at<variant_bag_t>(std::size_t index) {
  thread_local variant_bag_t scratch;
  const bool valid = index < m_entries.size() && m_entries[index].bag;
  return valid ? *m_entries[index].bag
               : (scratch = static_cast<const variant_bag_t*>(this)->value_at<variant_bag_t>(index));
}

template <>
const variant_t& variant_bag_t::put<variant_t>(const char* name, const variant_t& value) {
  const std::size_t index = find_from<variant_t>(safe(name), 0);
  if (index < m_entries.size()) {
    m_entries[index].value = value;
    return m_entries[index].value;
  }
  m_entries.emplace_back(safe(name), value);
  return m_entries.back().value;
}

void variant_bag_t::add_variant_bag(const char* name, const variant_bag_t& bag) {
  m_entries.emplace_back(safe(name), bag);
}

template <>
bool variant_bag_t::has<variant_t>(const char* name) const {
  return find_from<variant_t>(safe(name), 0) < m_entries.size();
}

template <>
bool variant_bag_t::has<variant_bag_t>(const char* name) const {
  return find_from<variant_bag_t>(safe(name), 0) < m_entries.size();
}

template <>
const variant_t* variant_bag_t::get<variant_t>(const char* name) const {
  const std::size_t index = find_from<variant_t>(safe(name), 0);
  return index < m_entries.size() ? &m_entries[index].value : nullptr;
}

template <>
const variant_bag_t* variant_bag_t::get<variant_bag_t>(const char* name) const {
  const std::size_t index = find_from<variant_bag_t>(safe(name), 0);
  return index < m_entries.size() ? m_entries[index].bag.get() : nullptr;
}

template <>
variant_t* variant_bag_t::get<variant_t>(const char* name) {
  return const_cast<variant_t*>(static_cast<const variant_bag_t*>(this)->get<variant_t>(name));
}

template <>
variant_bag_t* variant_bag_t::get<variant_bag_t>(const char* name) {
  return const_cast<variant_bag_t*>(static_cast<const variant_bag_t*>(this)->get<variant_bag_t>(name));
}

variant_t variant_bag_t::get_variant(const char* name, const variant_t& fallback) const {
  const variant_t* value = get<variant_t>(name);
  return value ? *value : fallback;
}

std::size_t variant_bag_t::remove(const char* name) {
  const std::size_t before = m_entries.size();
  m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                 [&](const entry_t& e) { return e.name == safe(name); }),
                  m_entries.end());
  return before - m_entries.size();
}

void variant_bag_t::clear() { m_entries.clear(); }
bool variant_bag_t::empty() const { return m_entries.empty(); }
std::size_t variant_bag_t::size() const { return m_entries.size(); }

const std::string& variant_bag_t::entry_name(std::size_t index) const { return m_entries.at(index).name; }

const variant_t* variant_bag_t::entry_value(std::size_t index) const {
  const entry_t& entry = m_entries.at(index);
  return entry.bag ? nullptr : &entry.value;
}

const variant_bag_t* variant_bag_t::entry_bag(std::size_t index) const {
  return m_entries.at(index).bag.get();
}

bool operator==(const variant_bag_t& a, const variant_bag_t& b) {
  return std::equal(a.m_entries.begin(), a.m_entries.end(), b.m_entries.begin(), b.m_entries.end(),
                    [](const variant_bag_t::entry_t& x, const variant_bag_t::entry_t& y) {
                      if (x.name != y.name || bool(x.bag) != bool(y.bag)) {
                        return false;
                      }
                      return x.bag ? *x.bag == *y.bag : x.value == y.value;
                    });
}

}  // namespace korvat2
