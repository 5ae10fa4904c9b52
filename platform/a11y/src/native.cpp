#include <a11y/native.h>

#include <gtk/gtk.h>
#include <wx/window.h>

namespace a11y {

void name_from_tooltip(wxWindow* window) {
  if (!window || window->GetToolTipText().empty()) {
    return;
  }
  AtkObject* object = gtk_widget_get_accessible(static_cast<GtkWidget*>(window->GetHandle()));
  const gchar* name = object ? atk_object_get_name(object) : nullptr;
  if (object && (!name || !*name)) {
    atk_object_set_name(object, window->GetToolTipText().utf8_str());
  }
}

}  // namespace a11y
