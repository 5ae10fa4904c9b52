#include "gui_test.h"

#include <plaxi1/screenshot.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/eventfilter.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace gui_test {
namespace {

using steady = std::chrono::steady_clock;

// The longest a single wait for the next event blocks, so that the condition is checked
// again soon even when no event comes.
constexpr int max_block_ms = 10;

wxEventLoopBase* active_loop() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (!loop) {
    ADD_FAILURE() << "no active event loop: GUI tests run under gui_test_main";
  }
  return loop;
}

std::string describe(const wxWindow* window) {
  return window ? std::string(window->GetName().utf8_str()) + " (id " + std::to_string(window->GetId()) + ")"
                : std::string("null window");
}

// The innermost modal dialog that is running, or null.
wxDialog* running_modal_dialog() {
  for (auto it = wxTopLevelWindows.rbegin(); it != wxTopLevelWindows.rend(); ++it) {
    auto* dialog = wxDynamicCast(*it, wxDialog);
    if (dialog && dialog->IsModal() && dialog->IsShown() && !dialog->IsBeingDeleted()) {
      return dialog;
    }
  }
  return nullptr;
}

// Looks for the next modal dialog until it runs the action on it, the bound passes or the
// test that asked ends. Retries come from a timer, so that the loop dispatches native events
// in between: a CallAfter queued from a CallAfter would run before any of them.
class modal_poll_t : public wxTimer {
 public:
  modal_poll_t(std::function<void(wxDialog&)> action, int bound_ms)
      : m_action(std::move(action)),
        m_deadline(steady::now() + std::chrono::milliseconds(bound_ms)),
        m_bound_ms(bound_ms),
        m_test(::testing::UnitTest::GetInstance()->current_test_info()) {}

  void Notify() override { poll(); }

  void poll() {
    if (::testing::UnitTest::GetInstance()->current_test_info() != m_test) {
      finish();
    } else if (wxDialog* dialog = running_modal_dialog()) {
      EXPECT_TRUE(wait_until_shown(dialog)) << "modal dialog " << describe(dialog) << " was not shown";
      // The action runs even so: it is what ends the dialog's loop.
      m_action(*dialog);
      finish();
    } else if (steady::now() >= m_deadline) {
      ADD_FAILURE() << "no modal dialog appeared within " << m_bound_ms << " ms";
      finish();
    } else {
      StartOnce(max_block_ms);
    }
  }

 private:
  // Not from inside Notify(), which may be on the stack.
  void finish() {
    wxTheApp->CallAfter([this] { delete this; });
  }

  std::function<void(wxDialog&)> m_action;
  steady::time_point m_deadline;
  int m_bound_ms;
  const ::testing::TestInfo* m_test;
};

wxKeyEvent key_event(wxEventType type, wxWindow* window, int keycode) {
  wxKeyEvent event(type);
  // Key down, up and the char hook carry the key's code, upper case for letters, and the
  // char event the character itself.
  const bool letter = keycode >= 0 && keycode < 128 && std::isalpha(keycode);
  event.m_keyCode = (letter && type != wxEVT_CHAR) ? std::toupper(keycode) : keycode;
  event.m_uniChar = static_cast<wxChar>(keycode < WXK_START ? event.m_keyCode : long{WXK_NONE});
  event.SetEventObject(window);
  event.SetId(window->GetId());
  return event;
}

}  // namespace

void pump() {
  if (active_loop()) {
    plaxi1::pump_events();
  }
}

bool wait_until(std::function<bool()> condition, int bound_ms) {
  return active_loop() && plaxi1::wait_until(condition, bound_ms);
}

bool wait_until_shown(wxWindow* window, int bound_ms) {
  if (!window || !wxGetTopLevelParent(window)) {
    ADD_FAILURE() << "wait_until_shown on " << describe(window) << ", which has no top-level window";
    return false;
  }
  return plaxi1::wait_until_painted(window, bound_ms);
}

void on_next_modal(std::function<void(wxDialog&)> action, int bound_ms) {
  // The first look comes as soon as a loop runs, which is the dialog's own when the test
  // calls ShowModal right away.
  auto* poll = new modal_poll_t(std::move(action), bound_ms);
  wxTheApp->CallAfter([poll] { poll->poll(); });
}

void click(wxWindow* button) {
  if (!button) {
    ADD_FAILURE() << "click on a null window";
    return;
  }
  // IsEnabled() is false also under a disabled parent, as under a running modal dialog.
  if (!button->IsEnabled()) {
    ADD_FAILURE() << "click on the disabled window " << describe(button);
    return;
  }
  wxCommandEvent event(wxEVT_BUTTON, button->GetId());
  event.SetEventObject(button);
  button->ProcessWindowEvent(event);
}

void click(wxWindow* root, const char* xrc_name) {
  wxWindow* button = find_named(root, xrc_name);
  if (!button) {
    ADD_FAILURE() << "no window named " << xrc_name << " under " << describe(root);
    return;
  }
  click(button);
}

void press_key(wxWindow* window, int keycode) {
  if (!window) {
    ADD_FAILURE() << "press_key on a null window";
    return;
  }
  wxKeyEvent hook = key_event(wxEVT_CHAR_HOOK, window, keycode);
  const bool hooked = window->ProcessWindowEvent(hook);
  if (!hooked || hook.IsNextEventAllowed()) {
    wxKeyEvent down = key_event(wxEVT_KEY_DOWN, window, keycode);
    if (!window->ProcessWindowEvent(down)) {
      wxKeyEvent character = key_event(wxEVT_CHAR, window, keycode);
      window->ProcessWindowEvent(character);
    }
  }
  // The window may be gone once the key was handled, as when it closed its dialog.
  if (!window->IsBeingDeleted()) {
    wxKeyEvent up = key_event(wxEVT_KEY_UP, window, keycode);
    window->ProcessWindowEvent(up);
  }
}

bool close_by_frame(wxTopLevelWindow* window) {
  if (!window) {
    ADD_FAILURE() << "close_by_frame on a null window";
    return false;
  }
  return window->Close(false);
}

bool capture_png(wxWindow* window, const std::string& path) {
  if (!wait_until_shown(window)) {
    ADD_FAILURE() << "can't capture " << describe(window) << ": it was not shown";
    return false;
  }
  if (!plaxi1::save_screenshot(window, path)) {
    const wxRect rect = window->GetScreenRect();
    ADD_FAILURE() << "can't capture " << describe(window) << " at " << rect.x << "," << rect.y << ", "
                  << rect.width << "x" << rect.height << " into " << path;
    return false;
  }
  return true;
}

wxWindow* find_named(wxWindow* root, const std::string& name) {
  if (!root) {
    return nullptr;
  }
  const wxString wx_name = wxString::FromUTF8(name);
  if (wxWindow* found = root->FindWindow(wxXmlResource::GetXRCID(wx_name))) {
    return found;
  }
  return root->FindWindow(wx_name);
}

// The build's resource directory: the one the test command names, else share/tamsel3
// beside the program's bin folder, as the build tree is laid out.
std::string resource_dir() {
  if (const char* dir = std::getenv("TAMSEL3_RESOURCE_DIR"); dir && *dir) {
    return dir;
  }
  std::error_code ignored;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ignored);
  return (program.parent_path().parent_path() / "share" / "tamsel3").string();
}

}  // namespace gui_test
