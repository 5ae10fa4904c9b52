#include <korvat2/variant_bag.h>
#include <zandor/debug.h>

#include <algorithm>
#include <cstring>

namespace korvat2 {

struct variant_bag_t::entry_t {
  const std::string* name;  // the key of the bag's index
  variant_t value;
  std::unique_ptr<variant_bag_t> bag;  // set for a nested bag
};

namespace {
const char* safe(const char* name) { return name ? name : ""; }
constexpr std::size_t npos = static_cast<std::size_t>(-1);
}  // namespace

variant_bag_t::variant_bag_t() = default;

// Deep copies and comparisons go level by level through a list of their own, so that a deep
// chain of bags costs heap, not stack.
variant_bag_t::variant_bag_t(const variant_bag_t& other) {
  copy_list_t pending{{&other, this}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    to->copy_level(*from, pending);
  }
}

variant_bag_t::variant_bag_t(variant_bag_t&& other) noexcept
    : m_index(std::move(other.m_index)), m_entries(std::move(other.m_entries)) {
  other.clear();
}

variant_bag_t& variant_bag_t::operator=(const variant_bag_t& other) {
  if (this != &other) {
    variant_bag_t copy(other);
    *this = std::move(copy);
  }
  return *this;
}

variant_bag_t& variant_bag_t::operator=(variant_bag_t&& other) noexcept {
  if (this != &other) {
    clear();
    m_index = std::move(other.m_index);
    m_entries = std::move(other.m_entries);
    other.clear();
  }
  return *this;
}

// Nested bags are taken out before they die, so that no destructor reaches past one level.
variant_bag_t::~variant_bag_t() {
  std::vector<std::unique_ptr<variant_bag_t>> pending;
  take_nested(pending);
  while (!pending.empty()) {
    const std::unique_ptr<variant_bag_t> bag = std::move(pending.back());
    pending.pop_back();
    bag->take_nested(pending);
  }
}

void variant_bag_t::take_nested(std::vector<std::unique_ptr<variant_bag_t>>& into) {
  for (entry_t& entry : m_entries) {
    if (entry.bag) {
      into.push_back(std::move(entry.bag));
    }
  }
}

void variant_bag_t::copy_level(const variant_bag_t& from, copy_list_t& pending) {
  m_index = from.m_index;
  m_entries.reserve(from.m_entries.size());
  for (const entry_t& entry : from.m_entries) {
    const std::string* name = &m_index.find(*entry.name)->first;
    m_entries.push_back(entry_t{name, entry.value, entry.bag ? std::make_unique<variant_bag_t>() : nullptr});
    if (entry.bag) {
      pending.emplace_back(entry.bag.get(), m_entries.back().bag.get());
    }
  }
}

const variant_bag_t::slot_t* variant_bag_t::slot_of(const char* name) const {
  const auto found = m_index.find(safe(name));
  return found == m_index.end() ? nullptr : &found->second;
}

variant_bag_t::index_t::iterator variant_bag_t::add_name(const char* name) {
  std::string key(safe(name));
  const auto found = m_index.find(key);
  return found != m_index.end() ? found : m_index.emplace(std::move(key), slot_t{npos, npos}).first;
}

void variant_bag_t::rebuild_slots() {
  for (auto& [name, slot] : m_index) {
    slot = slot_t{npos, npos};
  }
  for (std::size_t i = m_entries.size(); i-- > 0;) {
    slot_t& slot = m_index.find(*m_entries[i].name)->second;
    (m_entries[i].bag ? slot.first_bag : slot.first_value) = i;
  }
}

// The first entry of `name` and sort at or after `from`; the first one is known from the
// index, later ones are found by their name's key.
std::size_t variant_bag_t::find_entry(const std::string& name, std::size_t from, bool nested) const {
  const auto found = m_index.find(name);
  if (found == m_index.end()) {
    return m_entries.size();
  }
  const std::size_t first = nested ? found->second.first_bag : found->second.first_value;
  if (first == npos) {
    return m_entries.size();
  }
  from = std::max(from, first);
  while (from < m_entries.size() &&
         (bool(m_entries[from].bag) != nested || m_entries[from].name != &found->first)) {
    ++from;
  }
  return from;
}

template <>
std::size_t variant_bag_t::find_from<variant_t>(const std::string& name, std::size_t from) const {
  return find_entry(name, from, false);
}

template <>
std::size_t variant_bag_t::find_from<variant_bag_t>(const std::string& name, std::size_t from) const {
  return find_entry(name, from, true);
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
  const auto key = add_name(name);
  if (key->second.first_value != npos) {
    return m_entries[key->second.first_value].value = value;
  }
  key->second.first_value = m_entries.size();
  m_entries.push_back(entry_t{&key->first, value, nullptr});
  return m_entries.back().value;
}

void variant_bag_t::add_variant_bag(const char* name, const variant_bag_t& bag) {
  add_variant_bag(name, variant_bag_t(bag));
}

variant_bag_t& variant_bag_t::add_variant_bag(const char* name, variant_bag_t&& bag) {
  const auto key = add_name(name);
  if (key->second.first_bag == npos) {
    key->second.first_bag = m_entries.size();
  }
  m_entries.push_back(entry_t{&key->first, variant_t(), std::make_unique<variant_bag_t>(std::move(bag))});
  return *m_entries.back().bag;
}

template <>
bool variant_bag_t::has<variant_t>(const char* name) const {
  return get<variant_t>(name) != nullptr;
}

template <>
bool variant_bag_t::has<variant_bag_t>(const char* name) const {
  return get<variant_bag_t>(name) != nullptr;
}

template <>
const variant_t* variant_bag_t::get<variant_t>(const char* name) const {
  const slot_t* slot = slot_of(name);
  return slot && slot->first_value != npos ? &m_entries[slot->first_value].value : nullptr;
}

template <>
const variant_bag_t* variant_bag_t::get<variant_bag_t>(const char* name) const {
  const slot_t* slot = slot_of(name);
  return slot && slot->first_bag != npos ? m_entries[slot->first_bag].bag.get() : nullptr;
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
  const auto key = m_index.find(safe(name));
  if (key == m_index.end()) {
    return 0;
  }
  const std::size_t before = m_entries.size();
  m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                 [&](const entry_t& e) { return e.name == &key->first; }),
                  m_entries.end());
  m_index.erase(key);
  rebuild_slots();
  return before - m_entries.size();
}

void variant_bag_t::clear() {
  m_entries.clear();
  m_index.clear();
}
bool variant_bag_t::empty() const { return m_entries.empty(); }
std::size_t variant_bag_t::size() const { return m_entries.size(); }

const std::string& variant_bag_t::entry_name(std::size_t index) const { return *m_entries.at(index).name; }

const variant_t* variant_bag_t::entry_value(std::size_t index) const {
  const entry_t& entry = m_entries.at(index);
  return entry.bag ? nullptr : &entry.value;
}

const variant_bag_t* variant_bag_t::entry_bag(std::size_t index) const {
  return m_entries.at(index).bag.get();
}

bool variant_bag_t::level_equal(const variant_bag_t& a, const variant_bag_t& b, compare_list_t& pending) {
  if (a.m_entries.size() != b.m_entries.size()) {
    return false;
  }
  for (std::size_t i = 0; i < a.m_entries.size(); ++i) {
    const entry_t& x = a.m_entries[i];
    const entry_t& y = b.m_entries[i];
    if (*x.name != *y.name || bool(x.bag) != bool(y.bag) || (!x.bag && x.value != y.value)) {
      return false;
    }
    if (x.bag) {
      pending.emplace_back(x.bag.get(), y.bag.get());
    }
  }
  return true;
}

bool operator==(const variant_bag_t& a, const variant_bag_t& b) {
  variant_bag_t::compare_list_t pending{{&a, &b}};
  while (!pending.empty()) {
    const auto [x, y] = pending.back();
    pending.pop_back();
    if (!variant_bag_t::level_equal(*x, *y, pending)) {
      return false;
    }
  }
  return true;
}

}  // namespace korvat2
