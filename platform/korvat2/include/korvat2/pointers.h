#pragma once
#include <zandor/debug.h>

#include <memory>
#include <utility>

namespace korvat2 {

/// Shares an object through the object's own `add_ref()` and `release()`, for objects
/// that count themselves but are not intrusive_pointer_impl_t.
template <class T>
class sptr_t {
 public:
  sptr_t() = default;
  sptr_t(std::nullptr_t) {}                // NOLINT: implicit by design
  sptr_t(T* ptr) : m_ptr(ptr) { take(); }  // NOLINT: implicit by design
  sptr_t(const sptr_t& other) : m_ptr(other.m_ptr) { take(); }
  template <class U>
  sptr_t(const sptr_t<U>& other) : m_ptr(other.get()) {
    take();
  }  // NOLINT
  sptr_t(sptr_t&& other) noexcept : m_ptr(std::exchange(other.m_ptr, nullptr)) {}
  ~sptr_t() { reset(); }

  sptr_t& operator=(sptr_t other) noexcept {
    std::swap(m_ptr, other.m_ptr);
    return *this;
  }

  void reset() {
    if (T* old = std::exchange(m_ptr, nullptr)) {
      old->release();
    }
  }
  T* get() const { return m_ptr; }
  T* operator->() const {
    ZANDOR_ASSERT(m_ptr != 0);
    return m_ptr;
  }
  T& operator*() const {
    ZANDOR_ASSERT(m_ptr != 0);
    return *m_ptr;
  }
  explicit operator bool() const { return m_ptr != nullptr; }

 private:
  void take() {
    if (m_ptr) {
      m_ptr->add_ref();
    }
  }

  T* m_ptr = nullptr;
};

/// Holds an object for as long as any copy of the pointer lives, and deletes it after.
template <class T>
class smart_pointer_t {
 public:
  smart_pointer_t() = default;
  smart_pointer_t(std::nullptr_t) {}  // NOLINT: implicit by design
  explicit smart_pointer_t(T* ptr) : m_ptr(ptr) {}
  template <class U>
  smart_pointer_t(const smart_pointer_t<U>& other) : m_ptr(other.shared()) {}  // NOLINT

  void reset(T* ptr = nullptr) { m_ptr.reset(ptr); }
  T* get() const { return m_ptr.get(); }
  T* operator->() const {
    ZANDOR_ASSERT(m_ptr.get() != 0);
    return m_ptr.get();
  }
  T& operator*() const {
    ZANDOR_ASSERT(m_ptr.get() != 0);
    return *m_ptr;
  }
  explicit operator bool() const { return m_ptr != nullptr; }
  const std::shared_ptr<T>& shared() const { return m_ptr; }

 private:
  std::shared_ptr<T> m_ptr;
};

}  // namespace korvat2
