#pragma once
#include <korvat2/intrusive_pointer.h>

#include <utility>
#include <vector>

namespace korvat2 {

/// The counted body of a generic_iterator_t.
template <class T>
class iterator_impl_t : public intrusive_pointer_impl_t {
 public:
  virtual bool at_end() const = 0;
  virtual T current() const = 0;
  virtual void next() = 0;
};

/// A copyable, counted handle on an iterator: copies share one position. A null handle
/// is at its end.
template <class T>
class generic_iterator_t {
 public:
  generic_iterator_t() = default;
  explicit generic_iterator_t(iterator_impl_t<T>* impl) : m_impl(impl) {}

  bool at_end() const { return !m_impl || m_impl->at_end(); }
  /// The current element; at the end a reported assertion and a default value.
  T current() const {
    ZANDOR_ASSERT(!at_end() && "iterator is at end state");
    return at_end() ? T() : m_impl->current();
  }
  void next() {
    if (!at_end()) {
      m_impl->next();
    }
  }

 private:
  intrusive_pointer_t<iterator_impl_t<T>> m_impl;
};

namespace iterutil {

/// Iterates over a container that it owns, so that a caller may keep the iterator after
/// the source has changed.
template <class Container>
class owned_stl_iterator_impl_t : public iterator_impl_t<typename Container::value_type> {
 public:
  explicit owned_stl_iterator_impl_t(Container items)
      : m_items(std::move(items)), m_position(m_items.begin()) {}
  owned_stl_iterator_impl_t(const owned_stl_iterator_impl_t&) = delete;
  owned_stl_iterator_impl_t& operator=(const owned_stl_iterator_impl_t&) = delete;

  bool at_end() const override { return m_position == m_items.end(); }
  typename Container::value_type current() const override { return *m_position; }
  void next() override { ++m_position; }

 private:
  Container m_items;
  typename Container::const_iterator m_position;
};

/// An iterator that owns a copy of `items`.
template <class T>
generic_iterator_t<T> make_owned_iterator(std::vector<T> items) {
  return generic_iterator_t<T>(new owned_stl_iterator_impl_t<std::vector<T>>(std::move(items)));
}

}  // namespace iterutil
}  // namespace korvat2
