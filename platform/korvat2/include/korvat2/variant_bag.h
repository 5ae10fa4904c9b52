#pragma once
#include <korvat2/variant.h>

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace korvat2 {

/// A bag of named entries in order of insertion, each a variant_t or a nested bag.
/// A name may hold many nested bags, which is how lists are saved. Copies are deep.
/// Names are indexed: look-up, `put`, `has` and `get` by name take constant time on
/// average. Copy, comparison and destruction walk nested bags without recursion, so a
/// bag of any depth needs no more stack than a flat one.
/// Not locked: a bag belongs to one thread at a time.
class variant_bag_t {
  struct entry_t;

 public:
  /// Walks the entries of one name and sort (`variant_t` or `variant_bag_t`) in order.
  /// Invalidated by changes to the bag's list of entries.
  template <class T, class Bag>
  class basic_iterator_t {
   public:
    basic_iterator_t() = default;
    basic_iterator_t(Bag* bag, std::string name) : m_bag(bag), m_name(std::move(name)) { seek(0); }
    bool at_end() const { return !m_bag || m_index >= m_bag->size(); }
    void next() {
      if (!at_end()) {
        seek(m_index + 1);
      }
    }
    /// The current entry; at the end a reported assertion and an empty value.
    auto& get_value() const { return (m_bag ? m_bag : &no_bag())->template value_at<T>(m_index); }
    const std::string& get_name() const { return m_name; }

   private:
    // Stands in for the bag of a default iterator, so that it reports like any other at its end.
    static Bag& no_bag() {
      static Bag none{};
      return none;
    }
    void seek(std::size_t from) { m_index = m_bag ? m_bag->template find_from<T>(m_name, from) : 0; }

    Bag* m_bag = nullptr;
    std::string m_name;
    std::size_t m_index = 0;
  };
  template <class T>
  using iterator_t = basic_iterator_t<T, variant_bag_t>;
  template <class T>
  using const_iterator_t = basic_iterator_t<T, const variant_bag_t>;

  variant_bag_t();
  variant_bag_t(const variant_bag_t& other);
  variant_bag_t(variant_bag_t&& other) noexcept;
  variant_bag_t& operator=(const variant_bag_t& other);
  variant_bag_t& operator=(variant_bag_t&& other) noexcept;
  ~variant_bag_t();

  /// Adds or replaces the value of `name`; returns the stored value.
  template <class T>
  const variant_t& put(const char* name, const T& value);
  /// Appends a nested bag under `name`; earlier bags of that name stay.
  void add_variant_bag(const char* name, const variant_bag_t& bag);
  /// Appends `bag` itself, without a copy; returns the stored bag.
  variant_bag_t& add_variant_bag(const char* name, variant_bag_t&& bag);

  template <class T>
  bool has(const char* name) const;
  /// The value (or first nested bag) of `name`; null when there is none.
  template <class T>
  const T* get(const char* name) const;
  template <class T>
  T* get(const char* name);
  /// The value of `name`, or `fallback` when there is none.
  variant_t get_variant(const char* name, const variant_t& fallback) const;

  template <class T>
  iterator_t<T> begin_by_name(const char* name) {
    return iterator_t<T>(this, name ? name : "");
  }
  template <class T>
  const_iterator_t<T> begin_by_name(const char* name) const {
    return const_iterator_t<T>(this, name ? name : "");
  }

  /// Removes every entry of `name`, values and bags; returns how many went.
  std::size_t remove(const char* name);
  void clear();
  bool empty() const;
  /// Number of entries, values and bags together.
  std::size_t size() const;
  /// Entry `index` in order: its name, and either its value or its bag (the other null).
  const std::string& entry_name(std::size_t index) const;
  const variant_t* entry_value(std::size_t index) const;
  const variant_bag_t* entry_bag(std::size_t index) const;

  friend bool operator==(const variant_bag_t& a, const variant_bag_t& b);
  friend bool operator!=(const variant_bag_t& a, const variant_bag_t& b) { return !(a == b); }

 private:
  // Where the first value and the first nested bag of a name are; npos for none.
  struct slot_t {
    std::size_t first_value;
    std::size_t first_bag;
  };
  using index_t = std::unordered_map<std::string, slot_t>;
  using copy_list_t = std::vector<std::pair<const variant_bag_t*, variant_bag_t*>>;
  using compare_list_t = std::vector<std::pair<const variant_bag_t*, const variant_bag_t*>>;

  const slot_t* slot_of(const char* name) const;
  index_t::iterator add_name(const char* name);
  void rebuild_slots();
  std::size_t find_entry(const std::string& name, std::size_t from, bool nested) const;
  void copy_level(const variant_bag_t& from, copy_list_t& pending);
  void take_nested(std::vector<std::unique_ptr<variant_bag_t>>& into);
  static bool level_equal(const variant_bag_t& a, const variant_bag_t& b, compare_list_t& pending);

  template <class T>
  std::size_t find_from(const std::string& name, std::size_t from) const;
  template <class T>
  T& value_at(std::size_t index);
  template <class T>
  const T& value_at(std::size_t index) const;

  // Each entry points at its name's key here, so a name is stored once however often it
  // occurs, and entries of a name are found by comparing pointers.
  index_t m_index;
  std::vector<entry_t> m_entries;
};

template <>
const variant_t& variant_bag_t::put<variant_t>(const char* name, const variant_t& value);
template <class T>
const variant_t& variant_bag_t::put(const char* name, const T& value) {
  return put<variant_t>(name, variant_t(value));
}

template <>
bool variant_bag_t::has<variant_t>(const char* name) const;
template <>
bool variant_bag_t::has<variant_bag_t>(const char* name) const;
template <>
const variant_t* variant_bag_t::get<variant_t>(const char* name) const;
template <>
const variant_bag_t* variant_bag_t::get<variant_bag_t>(const char* name) const;
template <>
variant_t* variant_bag_t::get<variant_t>(const char* name);
template <>
variant_bag_t* variant_bag_t::get<variant_bag_t>(const char* name);
template <>
std::size_t variant_bag_t::find_from<variant_t>(const std::string&, std::size_t) const;
template <>
std::size_t variant_bag_t::find_from<variant_bag_t>(const std::string&, std::size_t) const;
template <>
variant_t& variant_bag_t::value_at<variant_t>(std::size_t);
template <>
variant_bag_t& variant_bag_t::value_at<variant_bag_t>(std::size_t);
template <>
const variant_t& variant_bag_t::value_at<variant_t>(std::size_t) const;
template <>
const variant_bag_t& variant_bag_t::value_at<variant_bag_t>(std::size_t) const;

}  // namespace korvat2
