#pragma once
// Answers the toolkit's modal dialogs through wx's modal dialog hook: wx asks the hook
// before it runs a dialog, and an answer other than wxID_NONE becomes ShowModal's result
// without the dialog being shown.
#include "gui_test.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/modalhook.h>

#include <functional>
#include <string>
#include <typeinfo>
#include <utility>

namespace gui_test {

/// Answers every modal dialog run while it lives with what `answer` returns, after letting
/// it look at and change the dialog. A dialog of another class fails the test.
template <class dialog_t>
class answer_t : public wxModalDialogHook {
 public:
  explicit answer_t(std::function<int(dialog_t&)> answer) : m_answer(std::move(answer)) { Register(); }
  int m_calls = 0;

 protected:
  int Enter(wxDialog* dialog) override {
    ++m_calls;
    auto* typed = dynamic_cast<dialog_t*>(dialog);
    if (!typed) {
      ADD_FAILURE() << "unexpected dialog of class " << typeid(*dialog).name();
      return wxID_CANCEL;
    }
    return m_answer(*typed);
  }
  void Exit(wxDialog*) override {}

 private:
  std::function<int(dialog_t&)> m_answer;
};

/// Lets the next modal dialog of class `dialog_t` run, and runs `action` inside that
/// dialog's own loop: the toolkit's native dialogs (wxGTK's folder dialog among them) are no
/// top-level windows that on_next_modal could find. `action` must end the dialog. Other
/// dialogs run as they would without it.
template <class dialog_t>
class answer_in_loop_t : public wxModalDialogHook {
 public:
  explicit answer_in_loop_t(std::function<void(dialog_t&)> action) : m_action(std::move(action)) {
    Register();
  }
  int m_calls = 0;

 protected:
  int Enter(wxDialog* dialog) override {
    auto* typed = dynamic_cast<dialog_t*>(dialog);
    if (typed && m_calls++ == 0) {
      // The first loop to run the call is the dialog's own, which ShowModal starts next.
      wxTheApp->CallAfter([this, typed] { m_action(*typed); });
    }
    return wxID_NONE;
  }
  void Exit(wxDialog*) override {}

 private:
  std::function<void(dialog_t&)> m_action;
};

/// Makes `path` the file dialog's answer, as the user's choice would: wxGTK's chooser takes
/// SetPath in only once the event loop ran, and GetPath gives it back from then on.
inline void choose_file(wxFileDialog& dialog, const std::string& path) {
  dialog.SetPath(wxString::FromUTF8(path));
  EXPECT_TRUE(wait_until([&] { return dialog.GetPath().utf8_string() == path; }))
      << "the native chooser didn't take " << path;
}

}  // namespace gui_test
