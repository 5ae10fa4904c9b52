#include <a11y/native.h>

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

namespace a11y {

namespace {

// The object a client sees for `window`: a multi-line field's text view, not its frame.
AtkObject* object_of(wxWindow* window) {
  GtkWidget* widget = window->GetConnectWidget();
  return widget ? gtk_widget_get_accessible(widget) : nullptr;
}

bool unnamed(AtkObject* object) {
  const gchar* name = object ? atk_object_get_name(object) : nullptr;
  return object && (!name || !*name);
}

bool read_by_name(wxWindow* window) {
  return dynamic_cast<wxTextCtrl*>(window) || dynamic_cast<wxSpinCtrl*>(window) ||
         dynamic_cast<wxSpinCtrlDouble*>(window) || dynamic_cast<wxChoice*>(window) ||
         dynamic_cast<wxComboBox*>(window) || dynamic_cast<wxListCtrl*>(window) ||
         dynamic_cast<wxListBox*>(window) || dynamic_cast<wxDataViewCtrl*>(window) ||
         dynamic_cast<wxTreeCtrl*>(window) || dynamic_cast<wxSlider*>(window) ||
         dynamic_cast<wxStaticBitmap*>(window);
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

}  // namespace a11y
