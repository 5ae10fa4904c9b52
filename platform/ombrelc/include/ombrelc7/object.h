#pragma once
// Reference-counted interfaces and the smart pointer that holds them.
#include <utility>

namespace ombrelc7 {

/// A reference-counted object: it dies at its last Release. Not thread-safe: GUI thread.
class IObject {
 public:
  virtual void AddRef() const = 0;
  virtual void Release() const = 0;

 protected:
  virtual ~IObject() = default;
};

/// Holds one reference to an IObject. Constructing from a raw pointer takes a new
/// reference (the pointer may already be held elsewhere).
template <class T>
class ombrelc_ptr {
 public:
  ombrelc_ptr() = default;
  ombrelc_ptr(T* object)
      : m_object(object) {  // NOLINT: implicit by design, as raw pointers are passed around
    if (m_object) {
      m_object->AddRef();
    }
  }
  ombrelc_ptr(const ombrelc_ptr& other) : ombrelc_ptr(other.m_object) {}
  ombrelc_ptr(ombrelc_ptr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template <class U>
  ombrelc_ptr(const ombrelc_ptr<U>& other) : ombrelc_ptr(other.get()) {}  // NOLINT: like raw upcasts
  ~ombrelc_ptr() {
    if (m_object) {
      m_object->Release();
    }
  }

  // Copy and swap: safe on itself.
  ombrelc_ptr& operator=(const ombrelc_ptr& other) {  // NOLINT(bugprone-unhandled-self-assignment)
    ombrelc_ptr(other).swap(*this);
    return *this;
  }
  ombrelc_ptr& operator=(ombrelc_ptr&& other) noexcept {
    ombrelc_ptr(std::move(other)).swap(*this);
    return *this;
  }

  // The old object is released only after the new one is in place, so that a Release
  // that reaches back into this pointer sees a consistent state.
  void reset(T* object = nullptr) {
    if (object) {
      object->AddRef();
    }
    T* old = std::exchange(m_object, object);
    if (old) {
      old->Release();
    }
  }
  void swap(ombrelc_ptr& other) noexcept { std::swap(m_object, other.m_object); }

  T* get() const { return m_object; }
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  bool operator==(const ombrelc_ptr& other) const { return m_object == other.m_object; }
  bool operator!=(const ombrelc_ptr& other) const { return m_object != other.m_object; }

 private:
  T* m_object = nullptr;
};

/// A base that implements the counting; the object starts with no reference.
template <class Interface>
class ref_counted : public Interface {
 public:
  void AddRef() const override { ++m_refs; }
  void Release() const override {
    if (--m_refs == 0) {
      delete this;
    }
  }
  int ref_count() const { return m_refs; }

 protected:
  ~ref_counted() override = default;

 private:
  mutable int m_refs = 0;
};

}  // namespace ombrelc7
