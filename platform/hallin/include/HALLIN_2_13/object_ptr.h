#pragma once
#include <zandor/debug.h>

#include <atomic>
#include <cstddef>
#include <utility>

namespace HALLIN_2_13 {

/// Shares an object that counts its own references: a copy takes one through the object's
/// `add_ref()`, and the end of a pointer gives it back through `release()`, which frees the
/// object at the last one. May hold null. Each pointer is a value of its own, to be used by
/// one thread at a time; the count itself is safe from any thread.
template <class T>
class ObjectPtr {
 public:
  ObjectPtr() = default;
  ObjectPtr(std::nullptr_t) {}  // NOLINT: implicit by design
  /// Takes a reference to `object`; a fresh object starts with none.
  explicit ObjectPtr(T* object) : m_object(object) { take(); }
  ObjectPtr(const ObjectPtr& other) : m_object(other.m_object) { take(); }
  ObjectPtr(ObjectPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template <class U>
  ObjectPtr(const ObjectPtr<U>& other) : m_object(other.get()) {  // NOLINT: implicit by design
    take();
  }
  virtual ~ObjectPtr() { reset(); }

  ObjectPtr& operator=(ObjectPtr other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  /// Gives the reference back and holds null.
  void reset() {
    if (T* old = std::exchange(m_object, nullptr)) {
      old->release();
    }
  }
  T* get() const { return m_object; }
  T* operator->() const {
    ZANDOR_ASSERT(m_object != 0);
    return m_object;
  }
  T& operator*() const {
    ZANDOR_ASSERT(m_object != 0);
    return *m_object;
  }
  explicit operator bool() const { return m_object != nullptr; }

  friend bool operator==(const ObjectPtr& a, const ObjectPtr& b) { return a.m_object == b.m_object; }
  friend bool operator!=(const ObjectPtr& a, const ObjectPtr& b) { return a.m_object != b.m_object; }

 private:
  void take() {
    if (m_object) {
      m_object->add_ref();
    }
  }

  T* m_object = nullptr;
};

/// The reference operations of an interface `I` on a count of the object's own: a fresh
/// object has no reference, and the release of the last one deletes it, so such objects
/// live on the heap and are handed around in `ObjectPtr`s.
template <class I>
class ref_counted_t : public I {
 public:
  void add_ref() const override { m_count.fetch_add(1, std::memory_order_relaxed); }
  void release() const override {
    if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      delete this;
    }
  }

 protected:
  ref_counted_t() = default;
  ref_counted_t(const ref_counted_t&) : I() {}  // a copy is a new object with no reference
  ~ref_counted_t() override = default;

 private:
  mutable std::atomic<int> m_count{0};
};

}  // namespace HALLIN_2_13
