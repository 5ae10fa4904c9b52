#include <plaxi1/modal.h>

#include <wx/app.h>
#include <wx/utils.h>

namespace plaxi1 {
namespace {

modal_callback_t& modal_callback() {
  static modal_callback_t callback;
  return callback;
}

// wxGTK never turns the help key into a help event, so we do: from the focused window, so
// that a control may answer with help of its own before the dialog does.
bool send_help_event(wxDialog* dialog) {
  wxWindow* focus = wxWindow::FindFocus();
  wxWindow* target = focus && wxGetTopLevelParent(focus) == dialog ? focus : dialog;
  wxHelpEvent help(wxEVT_HELP, target->GetId(), wxGetMousePosition(), wxHelpEvent::Origin_Keyboard);
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
