#pragma once
// Shared by the in-place control's tests: a frame holding the control, a way to wait
// until everything posted so far was delivered, a receiver of button callbacks, and what
// the control paints and how the mouse reaches it.
#include <tamsel3/event_log.h>
#include "inplace_ctrl_test_access_p.h"

#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>

#include "gui_test.h"
#include "log_capture.h"

#include <korvat2/signal.h>
#include <ombrelc/ombrelc.h>
#include <plaxi1/tasks.h>

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/sizer.h>

#include <cstring>
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

/// Runs the control's pending layout now, as its next idle time would.
inline void flush_layout(wxWindow* ctrl) {
  gui_test::pump();
  ombrelc7::CreateWrapperForWx(ctrl)->FlushLayout();
}

/// The toolkit control that draws the in-place control's window.
inline ombrelcfrw7::CBaseControl* base_control(wxWindow* ctrl) {
  return dynamic_cast<ombrelcfrw7::CBaseControl*>(ombrelc7::CreateWrapperForWx(ctrl)->GetControl());
}

/// The whole client area of the control as its paint handler draws it now.
inline wxImage paint(wxWindow* ctrl) {
  flush_layout(ctrl);
  const wxSize client = ctrl->GetClientSize();
  wxBitmap bitmap(client.x, client.y, 24);
  {
    wxMemoryDC dc(bitmap);
    base_control(ctrl)->HandlePaint(dc, ombrelc7::rect<int>(0, 0, client.x, client.y));
  }
  return bitmap.ConvertToImage();
}

inline bool same_pixels(const wxImage& a, const wxImage& b) {
  return a.GetSize() == b.GetSize() &&
         std::memcmp(a.GetData(), b.GetData(), static_cast<std::size_t>(a.GetWidth()) * a.GetHeight() * 3) ==
             0;
}

/// Presses and releases the left button over the middle of `area` (window coordinates), as
/// the control's window receives a click.
inline void click_at(wxWindow* ctrl, const ombrelc7::rect<int>& area) {
  for (const wxEventType type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
    wxMouseEvent event(type);
    event.SetPosition(wxPoint(area.left + area.width() / 2, area.top + area.height() / 2));
    event.SetEventObject(ctrl);
    ctrl->GetEventHandler()->ProcessEvent(event);
  }
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

  tamsel3::event_log_t* log() const { return tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_log(); }

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
