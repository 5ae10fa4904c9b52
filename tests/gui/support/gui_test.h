#pragma once
// Helpers for tests that drive real windows: waiting on conditions while the event loop
// runs, acting from inside a modal dialog's loop, simulated clicks and keys, and screen
// captures. Everything here runs on the GUI thread, under the program's wxApp set up by
// gui_test_main.cpp, on an X display (Xvfb) or as a Wayland client (tools/wayland-run.sh).
#include <functional>
#include <string>
#include <vector>

#include <wx/log.h>

class wxDialog;
class wxTopLevelWindow;
class wxWindow;

namespace gui_test {

/// Runs the event loop (native events, pending wx events and CallAfter calls, idle
/// events) until `condition` holds or `bound_ms` have passed. True when it held.
/// Between checks it blocks only until the next event arrives, a few milliseconds at most.
bool wait_until(std::function<bool()> condition, int bound_ms = 5000);

/// Processes what is pending now: native events, wx events and idle handlers, until the
/// loop is idle once.
void pump();

/// Waits until `window` is shown on screen, its top-level window was painted and its size
/// stopped changing, as it is once the loop went idle after showing. True when that
/// happened within `bound_ms`.
bool wait_until_shown(wxWindow* window, int bound_ms = 5000);

/// Runs `action` inside the loop of the next modal dialog, once that dialog is shown, so
/// that a test can call ShowModal synchronously and act from within. Fails the running
/// test when no modal dialog appears within `bound_ms`. An action left over when its test
/// ends is dropped.
void on_next_modal(std::function<void(wxDialog&)> action, int bound_ms = 5000);

/// Sends `button` a wxEVT_BUTTON command event with its id, as a click would. Fails the
/// test when the window is disabled, where a real click would do nothing.
void click(wxWindow* button);
/// Clicks the window under `root` with the layout name `xrc_name` (see find_named); fails
/// the test when there is none.
void click(wxWindow* root, const char* xrc_name);

/// Sends `window` a key press of `keycode` (a WXK_ code or a character) as if it had the
/// focus: the char hook, which propagates up to the top-level window and is where dialogs
/// handle Escape, then key down and char unless a handler consumed it, then key up. Only wx
/// handlers see these events: a native control doesn't type the character.
void press_key(wxWindow* window, int keycode);

/// What the title bar's close button does: a close event that handlers may veto.
/// True when the window accepted to close.
bool close_by_frame(wxTopLevelWindow* window);

/// Writes to `path` a PNG of what the screen shows in the rectangle of `window`, after
/// waiting until it is shown and painted. False (and a failure reported) when it can't.
bool capture_png(wxWindow* window, const std::string& path);

/// The window under `root` (root included) whose XRC id or window name is `name`, or null.
wxWindow* find_named(wxWindow* root, const std::string& name);

// Records what reaches wx's own log, where a GUI application would show error boxes.
/// Installed for its life as wx's log target.
class wx_log_recorder_t : public wxLog {
 public:
  wx_log_recorder_t() : m_previous(wxLog::SetActiveTarget(this)) {}
  ~wx_log_recorder_t() override { wxLog::SetActiveTarget(m_previous); }
  std::vector<wxString> m_messages;

 protected:
  void DoLogRecord(wxLogLevel level, const wxString& message, const wxLogRecordInfo&) override {
    if (level <= wxLOG_Warning) {
      m_messages.push_back(message);
    }
  }

 private:
  wxLog* m_previous;
};

/// The build's resource directory: the one the test command names, else share/tamsel3
/// beside the program's bin folder, as the build tree is laid out.
std::string resource_dir();

}  // namespace gui_test
