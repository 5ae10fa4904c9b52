#include <plaxi1/modal.h>
#include <plaxi1/placement.h>

#include <wx/app.h>

namespace plaxi1 {
namespace {

modal_callback_t& modal_callback() {
  static modal_callback_t callback;
  return callback;
}

// wxGTK never turns the help key into a help event, so we do: from the focused window, so
// that a control may answer with help of its own before the dialog does. A key has no
// place of its own: the event is placed at the middle of the window it comes from, which
// every display can tell, where the pointer may be unknown or nowhere.
bool send_help_event(wxDialog* dialog) {
  wxWindow* focus = wxWindow::FindFocus();
  wxWindow* target = focus && wxGetTopLevelParent(focus) == dialog ? focus : dialog;
  const wxSize size = target->GetClientSize();
  const wxPoint middle = target->ClientToScreen(wxPoint(size.x / 2, size.y / 2));
  wxHelpEvent help(wxEVT_HELP, target->GetId(), middle, wxHelpEvent::Origin_Keyboard);
  help.SetEventObject(target);
  return target->GetEventHandler()->ProcessEvent(help);
}

}  // namespace

help_callback_t::~help_callback_t() = default;

const modal_callback_t& get_modal_callback() { return modal_callback(); }

modal_callback_t set_modal_callback(modal_callback_t callback) {
  modal_callback().swap(callback);
  return callback;
}

modal_flavor<wxDialog>::modal_flavor() {
  Bind(wxEVT_HELP, &modal_flavor::on_help, this);
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() != WXK_F1 || event.HasAnyModifiers() || !send_help_event(this)) {
      event.Skip();
    }
  });
}

int modal_flavor<wxDialog>::ShowModal() {
  // A copy, as the callback may install another one while it runs.
  if (const modal_callback_t callback = get_modal_callback()) {
    if (const int answer = callback(this)) {
      SetReturnCode(answer);
      return answer;
    }
  }
  return wxDialog::ShowModal();
}

void modal_flavor<wxDialog>::place_centred() { plaxi1::place_centred(this); }

void modal_flavor<wxDialog>::on_help(wxHelpEvent& event) {
  // Not skipped: the help is ours, wx's default would go on to look for a help provider.
  help_activated();
}

korvat2::smart_pointer_t<auto_dummy_wrapper_t> get_main_window() {
  wxWindow* window = wxTheApp ? wxTheApp->GetTopWindow() : nullptr;
  if (!window) {
    return nullptr;
  }
  return korvat2::smart_pointer_t<auto_dummy_wrapper_t>(new auto_dummy_wrapper_t(window));
}

bool is_closing(const wxWindow* window) {
  for (const wxWindow* w = window; w; w = w->GetParent()) {
    if (w->IsBeingDeleted()) {
      return true;
    }
    if (w->IsTopLevel()) {
      return wxTheApp && wxTheApp->IsScheduledForDestruction(const_cast<wxWindow*>(w));
    }
  }
  return false;
}

wxWindow* live_parent(wxWindow* window) {
  if (!window || !is_closing(window)) {
    return window;
  }
  wxWindow* main_window = wxTheApp ? wxTheApp->GetTopWindow() : nullptr;
  return main_window && !is_closing(main_window) ? main_window : nullptr;
}

}  // namespace plaxi1
