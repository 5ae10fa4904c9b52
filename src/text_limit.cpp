#include "text_limit_p.h"

#include <wx/textctrl.h>

#ifdef __WXGTK__
#include <glib-object.h>

#include <algorithm>
#include <string>
#include <utility>
#endif

namespace tamsel3 {

#ifdef __WXGTK__
namespace {

struct guard_t {
  wxTextCtrl* m_field;
  std::function<long()> m_limit;
  std::function<void()> m_reached;
};

void free_guard(gpointer guard, GClosure*) { delete static_cast<guard_t*>(guard); }

// The insertion is done: the report comes with the edit itself. A copy runs, as a
// modal warning lets the loop run and the field may be taken down meanwhile.
void report(const guard_t& guard) {
  const std::function<void()> reached = guard.m_reached;
  reached();
}

// How many bytes of an insertion fit under the limit, or -1 when all of it does.
gint bytes_that_fit(const guard_t& guard, const gchar* text, gint length) {
  const long limit = guard.m_limit();
  const long present = guard.m_field->GetLastPosition();
  if (present + g_utf8_strlen(text, length) <= limit) {
    return -1;
  }
  const long room = std::max(0L, limit - present);
  return static_cast<gint>(g_utf8_offset_to_pointer(text, room) - text);
}

// Stops an insertion that goes over and inserts what fits in its place; the repeated
// emission fits, and passes this handler. Only then is the field's text event sent, and
// then the limit is reported, before the edit returns.
void on_buffer_insert(GObject* buffer, gpointer location, gchar* text, gint length, gpointer data) {
  auto* guard = static_cast<guard_t*>(data);
  const gint keep = bytes_that_fit(*guard, text, length);
  if (keep < 0) {
    return;
  }
  g_signal_stop_emission_by_name(buffer, "insert-text");
  if (keep > 0) {
    const std::string kept(text, static_cast<std::size_t>(keep));
    g_signal_emit_by_name(buffer, "insert-text", location, kept.c_str(), keep);
  }
  report(*guard);
}

void on_entry_insert(GObject* entry, gchar* text, gint length, gint* position, gpointer data) {
  auto* guard = static_cast<guard_t*>(data);
  const gint keep = bytes_that_fit(*guard, text, length);
  if (keep < 0) {
    return;
  }
  g_signal_stop_emission_by_name(entry, "insert-text");
  if (keep > 0) {
    const std::string kept(text, static_cast<std::size_t>(keep));
    g_signal_emit_by_name(entry, "insert-text", kept.c_str(), keep, position);
  }
  report(*guard);
}

// The object that takes the field's insertions: the buffer behind a multi-line field's
// text view, a single-line field's entry itself. Null when there is none.
GObject* inserting_object(wxTextCtrl* field) {
  GObject* widget = field ? G_OBJECT(field->GetConnectWidget()) : nullptr;
  if (!widget) {
    return nullptr;
  }
  if (!field->IsMultiLine()) {
    return g_signal_lookup("insert-text", G_OBJECT_TYPE(widget)) ? widget : nullptr;
  }
  if (!g_object_class_find_property(G_OBJECT_GET_CLASS(widget), "buffer")) {
    return nullptr;
  }
  GObject* buffer = nullptr;
  g_object_get(widget, "buffer", &buffer, nullptr);
  if (buffer) {
    g_object_unref(buffer);  // the text view keeps it
  }
  return buffer;
}

GCallback handler_of(const wxTextCtrl* field) {
  return field->IsMultiLine() ? G_CALLBACK(&on_buffer_insert) : G_CALLBACK(&on_entry_insert);
}

}  // namespace

bool hold_text_at_limit(wxTextCtrl* field, std::function<long()> limit, std::function<void()> reached) {
  GObject* target = inserting_object(field);
  if (!target) {
    return false;
  }
  const GCallback handler = handler_of(field);
  if (g_signal_handler_find(target, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr, reinterpret_cast<gpointer>(handler),
                            nullptr) == 0) {
    auto* guard = new guard_t{field, std::move(limit), std::move(reached)};
    g_signal_connect_data(target, "insert-text", handler, guard, free_guard, GConnectFlags(0));
  }
  return true;
}

void release_text_limit(wxTextCtrl* field) {
  if (GObject* target = inserting_object(field)) {
    g_signal_handlers_disconnect_matched(target, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr,
                                         reinterpret_cast<gpointer>(handler_of(field)), nullptr);
  }
}

#else

bool hold_text_at_limit(wxTextCtrl*, std::function<long()>, std::function<void()>) { return false; }
void release_text_limit(wxTextCtrl*) {}

#endif

}  // namespace tamsel3
