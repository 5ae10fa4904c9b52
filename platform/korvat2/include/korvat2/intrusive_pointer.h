#pragma once
#include <korvat2/threading.h>
#include <zandor/debug.h>

#include <cstdint>
#include <utility>

namespace korvat2 {

template <class T>
class intrusive_pointer_t;

/// Root of every counted object: the count of its owners lives in the object, guarded by
/// the object's own mutex, so that owners on several threads may come and go.
class intrusive_pointer_impl_t {
 public:
  intrusive_pointer_impl_t() = default;
  // A copy is a new object with no owners yet.
  intrusive_pointer_impl_t(const intrusive_pointer_impl_t&) {}
  intrusive_pointer_impl_t& operator=(const intrusive_pointer_impl_t&) { return *this; }
  virtual ~intrusive_pointer_impl_t() { ZANDOR_ASSERT(m_ref_count == 0); }

  /// Raises the count by one.
  void add_ref() const {
    threading::scoped_lock_t lock(m_mutex);
    ++m_ref_count;
  }

  /// Raises the count by one unless it is zero, and tells whether it did. An object whose
  /// count reached zero is being deleted by its last owner: whoever reaches it through a
  /// raw pointer (a registry that its destructor empties) takes a share this way.
  bool try_add_ref() const {
    threading::scoped_lock_t lock(m_mutex);
    if (m_ref_count == 0) {
      return false;
    }
    ++m_ref_count;
    return true;
  }

  /// Lowers the count by one and deletes the object when it reaches zero. A count that
  /// is already zero stays zero and nothing is deleted.
  void release_ref() const {
    m_mutex.acquire();
    if (m_ref_count == 0) {
      m_mutex.release();
      return;
    }
    if (--m_ref_count == 0) {
      m_mutex.release();
      delete this;
      return;
    }
    m_mutex.release();
  }

  /// The count at this moment; for tests and diagnostics.
  std::uint64_t ref_count() const {
    threading::scoped_lock_t lock(m_mutex);
    return m_ref_count;
  }

 private:
  mutable std::uint64_t m_ref_count = 0;
  mutable threading::mutex_t m_mutex;
};

/// Shared ownership of a counted object; `T` derives from intrusive_pointer_impl_t,
/// possibly not as its first base.
template <class T>
class intrusive_pointer_t {
 public:
  intrusive_pointer_t() = default;
  intrusive_pointer_t(std::nullptr_t) {}                // NOLINT: implicit by design
  intrusive_pointer_t(T* ptr) : m_ptr(ptr) { take(); }  // NOLINT: implicit by design
  intrusive_pointer_t(const intrusive_pointer_t& other) : m_ptr(other.m_ptr) { take(); }
  template <class U>
  intrusive_pointer_t(const intrusive_pointer_t<U>& other) : m_ptr(other.get()) {
    take();
  }  // NOLINT
  /// Takes over a share that the caller already holds, as `detach` gives one or
  /// `try_add_ref` takes one: the count is not raised.
  static intrusive_pointer_t adopt(T* ptr) {
    intrusive_pointer_t pointer;
    pointer.m_ptr = ptr;
    return pointer;
  }
  intrusive_pointer_t(intrusive_pointer_t&& other) noexcept : m_ptr(std::exchange(other.m_ptr, nullptr)) {}
  ~intrusive_pointer_t() { reset(); }

  // assign takes the new reference before it gives up the old one: safe on itself.
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
  intrusive_pointer_t& operator=(const intrusive_pointer_t& other) { return assign(other.m_ptr); }
  intrusive_pointer_t& operator=(T* ptr) { return assign(ptr); }
  intrusive_pointer_t& operator=(intrusive_pointer_t&& other) noexcept {
    if (this != &other) {
      reset();
      m_ptr = std::exchange(other.m_ptr, nullptr);
    }
    return *this;
  }

  /// Gives up this owner's share; the pointer becomes null.
  void reset() {
    T* old = std::exchange(m_ptr, nullptr);
    if (old) {
      static_cast<const intrusive_pointer_impl_t*>(old)->release_ref();
    }
  }

  /// Hands this owner's share to the caller, who must release it later; the pointer
  /// becomes null.
  T* detach() { return std::exchange(m_ptr, nullptr); }

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

  friend bool operator==(const intrusive_pointer_t& a, const intrusive_pointer_t& b) {
    return a.m_ptr == b.m_ptr;
  }
  friend bool operator!=(const intrusive_pointer_t& a, const intrusive_pointer_t& b) {
    return a.m_ptr != b.m_ptr;
  }

 private:
  void take() {
    if (m_ptr) {
      static_cast<const intrusive_pointer_impl_t*>(m_ptr)->add_ref();
    }
  }

  // The new object is taken before the old one is released: the old one may be the last
  // owner of the new one (p = p->next).
  intrusive_pointer_t& assign(T* ptr) {
    T* old = std::exchange(m_ptr, ptr);
    take();
    if (old) {
      static_cast<const intrusive_pointer_impl_t*>(old)->release_ref();
    }
    return *this;
  }

  T* m_ptr = nullptr;
};

}  // namespace korvat2
