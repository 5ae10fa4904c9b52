#include <a11y/native.h>

#include "subclass_p.h"

#include <gtk/gtk.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/dataview.h>
#include <wx/listbox.h>
#include <wx/listctrl.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/spinctrl.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>
#include <wx/treectrl.h>
#include <wx/window.h>

#include <typeindex>
#include <typeinfo>
#include <unordered_map>
#include <utility>

namespace a11y {

namespace {

GQuark click_quark() {
  static const GQuark quark = g_quark_from_static_string("tamsel3-accessible-click");
  return quark;
}

gboolean run_click(gpointer data) {
  auto* object = static_cast<AtkObject*>(data);
  const auto* click =
      static_cast<std::function<void()>*>(g_object_get_qdata(G_OBJECT(object), click_quark()));
  // The widget may have gone since the client asked.
  if (click && gtk_accessible_get_widget(GTK_ACCESSIBLE(object))) {
    (*click)();
  }
  g_object_unref(object);
  return G_SOURCE_REMOVE;
}

gboolean button_do_action(AtkAction* action, gint index) {
  if (index != 0) {
    return FALSE;
  }
  g_idle_add(run_click, g_object_ref(action));
  return TRUE;
}

gint button_get_n_actions(AtkAction*) { return 1; }

const gchar* button_get_name(AtkAction*, gint index) { return index == 0 ? "click" : nullptr; }

void action_init(gpointer iface, gpointer) {
  auto* action = static_cast<AtkActionIface*>(iface);
  action->do_action = button_do_action;
  action->get_n_actions = button_get_n_actions;
  action->get_name = button_get_name;
  action->get_localized_name = button_get_name;
}

void add_action(GType type) {
  const GInterfaceInfo action = {action_init, nullptr, nullptr};
  g_type_add_interface_static(type, ATK_TYPE_ACTION, &action);
}

void delete_click(gpointer click) { delete static_cast<std::function<void()>*>(click); }

// The object a client sees for `window`: a multi-line field's text view, not its frame.
AtkObject* object_of(wxWindow* window) {
  GtkWidget* widget = window->GetConnectWidget();
  return widget ? gtk_widget_get_accessible(widget) : nullptr;
}

bool unnamed(AtkObject* object) {
  const gchar* name = object ? atk_object_get_name(object) : nullptr;
  return object && (!name || !*name);
}

bool read_by_name_class(wxWindow* window) {
  return dynamic_cast<wxTextCtrl*>(window) || dynamic_cast<wxSpinCtrl*>(window) ||
         dynamic_cast<wxSpinCtrlDouble*>(window) || dynamic_cast<wxChoice*>(window) ||
         dynamic_cast<wxComboBox*>(window) || dynamic_cast<wxListCtrl*>(window) ||
         dynamic_cast<wxListBox*>(window) || dynamic_cast<wxDataViewCtrl*>(window) ||
         dynamic_cast<wxTreeCtrl*>(window) || dynamic_cast<wxSlider*>(window) ||
         dynamic_cast<wxStaticBitmap*>(window);
}

// Asked of every child of every window that is named, and the answer is the class's: each
// class is tested once. GUI thread.
bool read_by_name(wxWindow* window) {
  static std::unordered_map<std::type_index, bool> by_class;
  const std::type_index type(typeid(*window));
  auto found = by_class.find(type);
  if (found == by_class.end()) {
    found = by_class.emplace(type, read_by_name_class(window)).first;
  }
  return found->second;
}

// A label's text as a name: no mnemonic, no colon at the end.
wxString label_text(const wxString& label) {
  wxString text = wxStripMenuCodes(label, wxStrip_Mnemonics).Strip(wxString::both);
  if (text.EndsWith(":")) {
    text.RemoveLast();
  }
  return text;
}

// A sibling that labels a control: a static text, or the radio button or check box that
// switches it on.
wxString sibling_label(wxWindow* sibling, bool before) {
  if (dynamic_cast<wxStaticText*>(sibling) ||
      (before && (dynamic_cast<wxRadioButton*>(sibling) || dynamic_cast<wxCheckBox*>(sibling)))) {
    return label_text(sibling->GetLabel());
  }
  return wxString();
}

// The label just before `window` among its siblings, else a static text just after it,
// else the static box around it.
wxString label_of(wxWindow* window) {
  wxWindow* parent = window->GetParent();
  const wxWindowList& siblings = parent->GetChildren();
  wxWindowList::compatibility_iterator node = siblings.Find(window);
  const wxString before =
      node && node->GetPrevious() ? sibling_label(node->GetPrevious()->GetData(), true) : "";
  if (!before.empty()) {
    return before;
  }
  const wxString after = node && node->GetNext() ? sibling_label(node->GetNext()->GetData(), false) : "";
  if (!after.empty()) {
    return after;
  }
  for (wxWindow* above = parent; above && !above->IsTopLevel(); above = above->GetParent()) {
    if (auto* box = dynamic_cast<wxStaticBox*>(above)) {
      return label_text(box->GetLabel());
    }
  }
  return wxString();
}

}  // namespace

void name_from_tooltip(wxWindow* window) {
  if (window && !window->GetToolTipText().empty()) {
    if (AtkObject* object = object_of(window); unnamed(object)) {
      atk_object_set_name(object, window->GetToolTipText().utf8_str());
    }
  }
}

void set_name(wxWindow* window, const wxString& name) {
  if (AtkObject* object = window ? object_of(window) : nullptr) {
    atk_object_set_name(object, name.utf8_str());
  }
}

void name_from_labels(wxWindow* top) {
  for (wxWindow* child : top->GetChildren()) {
    if (child->IsTopLevel()) {
      continue;  // another window, named on its own
    }
    if (read_by_name(child) && unnamed(object_of(child))) {
      const wxString name = child->GetToolTipText().empty() ? label_of(child) : child->GetToolTipText();
      if (!name.empty()) {
        set_name(child, name);
      }
    }
    name_from_labels(child);
  }
}

void native_button(wxWindow* window, std::function<void()> click) {
  AtkObject* object =
      window ? gtk_widget_get_accessible(static_cast<GtkWidget*>(window->GetHandle())) : nullptr;
  if (!object) {
    return;
  }
  // A subclass of the object's native type with the same layout, adding AtkAction.
  become_subclass(G_OBJECT(object), "Tamsel3AccessibleButton_", nullptr, add_action);
  g_object_set_qdata_full(G_OBJECT(object), click_quark(), new std::function<void()>(std::move(click)),
                          delete_click);
  atk_object_set_role(object, ATK_ROLE_PUSH_BUTTON);
  atk_object_set_name(object, window->GetLabel().utf8_str());
}

}  // namespace a11y
