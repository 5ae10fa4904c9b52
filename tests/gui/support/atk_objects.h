#pragma once
// Helpers for tests that read accessible objects in-process through ATK, as the AT-SPI
// bridge reads them.
#include <atk/atk.h>

namespace gui_test {

/// A reference to an AtkObject, dropped at the end of the scope.
struct object_ref_t {
  explicit object_ref_t(AtkObject* object) : m_object(object) {}
  ~object_ref_t() {
    if (m_object) {
      g_object_unref(m_object);
    }
  }
  object_ref_t(const object_ref_t&) = delete;
  object_ref_t& operator=(const object_ref_t&) = delete;
  AtkObject* get() const { return m_object; }
  AtkObject* m_object;
};

/// Child `index` of `parent`, or null, without a reference for the caller: the objects of
/// drawn elements are kept by their bridge while the elements live.
inline AtkObject* listed_child(AtkObject* parent, int index) {
  object_ref_t child(atk_object_ref_accessible_child(parent, index));
  return child.get();
}

/// A signal handler connected for the scope and disconnected at its end: signals sent
/// later, as the windows are taken down after the test, must not reach the scope's dead
/// counters. Holds a reference to the object meanwhile.
class handler_t {
 public:
  handler_t(gpointer instance, const char* signal, GCallback callback, gpointer data)
      : m_instance(g_object_ref(instance)), m_id(g_signal_connect(instance, signal, callback, data)) {}
  ~handler_t() {
    g_signal_handler_disconnect(m_instance, m_id);
    g_object_unref(m_instance);
  }
  handler_t(const handler_t&) = delete;
  handler_t& operator=(const handler_t&) = delete;

 private:
  gpointer m_instance;
  gulong m_id;
};

inline bool has_state(AtkObject* object, AtkStateType state) {
  AtkStateSet* set = atk_object_ref_state_set(object);
  const bool has = atk_state_set_contains_state(set, state);
  g_object_unref(set);
  return has;
}

}  // namespace gui_test
