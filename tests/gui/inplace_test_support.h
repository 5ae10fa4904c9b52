#pragma once
// Shared by the in-place control's tests: a frame holding the control, a way to wait
// until everything posted so far was delivered, and a receiver of button callbacks.
#include <tamsel3/event_log.h>
#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>

#include "gui_test.h"
#include "log_capture.h"

#include <korvat2/signal.h>
#include <plaxi1/tasks.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <string>
#include <vector>

namespace inplace_test {

/// Runs the loop until every task posted before the call has run.
inline bool drain() {
  struct marker_task_t : plaxi1::tasks::GUITask {
    explicit marker_task_t(bool& ran) : m_ran(ran) {}
    void DoGUITask() override { m_ran = true; }
    bool& m_ran;
  };
  bool ran = false;
  plaxi1::tasks::Scheduler::Get(nullptr)->AddTask(new marker_task_t(ran), std::string());
  return gui_test::wait_until([&ran] { return ran; });
}

/// Records the ids that a button callback carries.
class button_receiver_t : public korvat2::subscriber_base_t {
 public:
  void on_button(int id) { ids.push_back(id); }
  std::vector<int> ids;
};

/// The texts of the error lines that the logger wrote (checked failures among them).
inline std::vector<std::string> error_texts(const test_support::log_capture_t& log) {
  std::vector<std::string> texts;
  for (const test_support::log_line_t& line : log.lines()) {
    if (line.level >= 40000) {
      texts.push_back(line.text);
    }
  }
  return texts;
}

inline bool any_contains(const std::vector<std::string>& texts, const std::string& part) {
  for (const std::string& text : texts) {
    if (text.find(part) != std::string::npos) {
      return true;
    }
  }
  return false;
}

/// A shown frame with an in-place control filling it.
class control_fixture_t : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "in-place", wxDefaultPosition, wxSize(640, 480));
    m_ctrl = new tamsel3::inplace_ctrl_t(m_frame, false);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_ctrl, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_ctrl));
  }
  void TearDown() override {
    drain();
    m_frame->Destroy();
    gui_test::pump();
  }

  tamsel3::event_log_t* log() const { return m_ctrl->get_impl()->get_log(); }

  static korvat2::intrusive_pointer_t<tamsel3::message_t> message(const std::string& caption,
                                                                  const std::string& text) {
    return new tamsel3::standard_message_t(caption, text, plaxi1::picture_t(),
                                           tamsel3::standard_message_t::buttons_ok_cancel);
  }
  static korvat2::intrusive_pointer_t<tamsel3::progress_message_t> progress(const std::string& caption,
                                                                            bool can_cancel = true) {
    return new tamsel3::progress_message_t(caption, plaxi1::picture_t(), can_cancel);
  }

  wxFrame* m_frame = nullptr;
  tamsel3::inplace_ctrl_t* m_ctrl = nullptr;
  korvat2::signal_t<int> m_no_callback;
};

}  // namespace inplace_test
