// Modal dialogs that the modal callback may answer, help requests, and the main window.
#include <plaxi1/modal.h>

#include "gui_test.h"
#include "input.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/display.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/utils.h>

#include <vector>

namespace {

using plaxi1::modal_callback_t;

class test_dialog_t : public plaxi1::modal_flavor<wxDialog> {
 public:
  test_dialog_t() {
    Create(nullptr, wxID_ANY, "modal test");
    m_child = new wxButton(this, wxID_ANY, "child");
  }
  void help_activated() override { ++m_help_calls; }

  wxButton* m_child = nullptr;
  int m_help_calls = 0;
};

class modal_test : public ::testing::Test {
 protected:
  void SetUp() override { m_saved = plaxi1::set_modal_callback(modal_callback_t()); }
  void TearDown() override {
    plaxi1::set_modal_callback(m_saved);
    if (m_dialog) {
      m_dialog->Destroy();
    }
    gui_test::wait_until([] { return wxTopLevelWindows.IsEmpty(); }, 2000);
  }

  test_dialog_t* dialog() {
    if (!m_dialog) {
      m_dialog = new test_dialog_t;
    }
    return m_dialog;
  }

  modal_callback_t m_saved;
  test_dialog_t* m_dialog = nullptr;
};

TEST_F(modal_test, callback_is_kept_until_replaced) {
  EXPECT_FALSE(plaxi1::get_modal_callback());
  int calls = 0;
  EXPECT_FALSE(plaxi1::set_modal_callback([&calls](wxDialog*) { return ++calls; }));
  ASSERT_TRUE(plaxi1::get_modal_callback());
  EXPECT_EQ(plaxi1::get_modal_callback()(nullptr), 1);
  const modal_callback_t previous = plaxi1::set_modal_callback(modal_callback_t());
  ASSERT_TRUE(previous);
  EXPECT_EQ(previous(nullptr), 2);
  EXPECT_FALSE(plaxi1::get_modal_callback());
}

TEST_F(modal_test, callback_answers_instead_of_the_dialog) {
  std::vector<wxDialog*> asked;
  plaxi1::set_modal_callback([&asked](wxDialog* dialog) {
    asked.push_back(dialog);
    EXPECT_FALSE(dialog->IsShown());
    return 4242;
  });
  EXPECT_EQ(dialog()->ShowModal(), 4242);
  EXPECT_EQ(dialog()->GetReturnCode(), 4242);
  EXPECT_EQ(asked, std::vector<wxDialog*>{dialog()});
  EXPECT_FALSE(dialog()->IsShown());
}

TEST_F(modal_test, callback_answering_zero_lets_the_dialog_run) {
  int calls = 0;
  plaxi1::set_modal_callback([&calls](wxDialog*) {
    ++calls;
    return 0;
  });
  bool ran = false;
  gui_test::on_next_modal([&ran](wxDialog& running) {
    ran = running.IsModal() && running.IsShown();
    running.EndModal(wxID_CANCEL);
  });
  EXPECT_EQ(dialog()->ShowModal(), wxID_CANCEL);
  EXPECT_TRUE(ran);
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(dialog()->IsModal());
}

TEST_F(modal_test, without_a_callback_the_dialog_runs) {
  bool ran = false;
  gui_test::on_next_modal([&ran](wxDialog& running) {
    ran = running.IsModal();
    running.EndModal(wxID_CANCEL);
  });
  EXPECT_EQ(dialog()->ShowModal(), wxID_CANCEL);
  EXPECT_TRUE(ran);
}

TEST_F(modal_test, callback_may_replace_itself_while_it_answers) {
  plaxi1::set_modal_callback([](wxDialog*) {
    plaxi1::set_modal_callback([](wxDialog*) { return 2; });
    return 1;
  });
  EXPECT_EQ(dialog()->ShowModal(), 1);
  EXPECT_EQ(dialog()->ShowModal(), 2);
}

TEST_F(modal_test, help_event_from_a_child_reaches_the_help_callback) {
  wxHelpEvent event(wxEVT_HELP, dialog()->m_child->GetId(), wxDefaultPosition, wxHelpEvent::Origin_Keyboard);
  event.SetEventObject(dialog()->m_child);
  EXPECT_TRUE(dialog()->m_child->GetEventHandler()->ProcessEvent(event));
  EXPECT_EQ(dialog()->m_help_calls, 1);
}

TEST_F(modal_test, help_event_of_the_dialog_reaches_the_help_callback) {
  // The origin given: guessing it would read the keyboard, which Wayland doesn't let a client.
  wxHelpEvent event(wxEVT_HELP, dialog()->GetId(), wxDefaultPosition, wxHelpEvent::Origin_HelpButton);
  event.SetEventObject(dialog());
  EXPECT_TRUE(dialog()->GetEventHandler()->ProcessEvent(event));
  EXPECT_EQ(dialog()->m_help_calls, 1);
}

TEST_F(modal_test, help_key_reaches_the_help_callback) {
  dialog()->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(dialog()));
  gui_test::press_key(dialog()->m_child, WXK_F1);
  EXPECT_EQ(dialog()->m_help_calls, 1);
  gui_test::press_key(dialog()->m_child, WXK_F2);
  gui_test::press_key(dialog(), 'h');
  EXPECT_EQ(dialog()->m_help_calls, 1);
}

// Where the help events that reach the dialog lie, and which window they come from.
struct help_events_t {
  explicit help_events_t(wxDialog* dialog) {
    dialog->Bind(wxEVT_HELP, [this](wxHelpEvent& event) {
      positions.push_back(event.GetPosition());
      sources.push_back(event.GetEventObject());
      event.Skip();
    });
  }
  std::vector<wxPoint> positions;
  std::vector<wxObject*> sources;
};

wxPoint middle_on_screen(wxWindow* window) {
  const wxSize size = window->GetClientSize();
  return window->ClientToScreen(wxPoint(size.x / 2, size.y / 2));
}

// Takes the pointer where no window is: the help event must not lie there.
void move_pointer_away() {
  if (wxGetDisplayInfo().type == wxDisplayX11) {
    gui_test::input_t().move_off_windows();
  }
}

TEST_F(modal_test, the_help_keys_event_lies_at_the_middle_of_the_focused_window) {
  dialog()->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(dialog()));
  move_pointer_away();
  dialog()->m_child->SetFocus();
  ASSERT_TRUE(gui_test::wait_until([this] { return wxWindow::FindFocus() == dialog()->m_child; }, 2000));
  const help_events_t help(dialog());

  gui_test::press_key(dialog()->m_child, WXK_F1);
  ASSERT_EQ(help.sources, std::vector<wxObject*>{dialog()->m_child});
  EXPECT_EQ(help.positions.front(), middle_on_screen(dialog()->m_child));
  EXPECT_EQ(dialog()->m_help_calls, 1);
}

TEST_F(modal_test, with_nothing_focused_the_help_keys_event_lies_at_the_dialogs_middle) {
  dialog()->m_child->Disable();  // nothing in the dialog takes the focus
  dialog()->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(dialog()));
  move_pointer_away();
  ASSERT_NE(wxGetTopLevelParent(wxWindow::FindFocus()), dialog());
  const help_events_t help(dialog());

  gui_test::press_key(dialog(), WXK_F1);
  ASSERT_EQ(help.sources, std::vector<wxObject*>{dialog()});
  EXPECT_EQ(help.positions.front(), middle_on_screen(dialog()));
  EXPECT_EQ(dialog()->m_help_calls, 1);
}

TEST_F(modal_test, main_window_follows_the_top_window) {
  // Windows of earlier tests may still wait for their deletion.
  if (!gui_test::wait_until([] { return wxTopLevelWindows.IsEmpty(); }, 2000)) {
    GTEST_SKIP() << "the test program keeps a top-level window";
  }
  EXPECT_FALSE(plaxi1::get_main_window());

  auto* frame = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(frame);
  const korvat2::smart_pointer_t<plaxi1::auto_dummy_wrapper_t> main = plaxi1::get_main_window();
  ASSERT_TRUE(main);
  EXPECT_EQ(main->get_window(), frame);

  frame->Destroy();
  EXPECT_TRUE(gui_test::wait_until([&main] { return main->get_window() == nullptr; }, 2000));
  EXPECT_FALSE(plaxi1::get_main_window());
}

TEST_F(modal_test, a_window_is_closing_from_its_destruction_request_on) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "closing");
  auto* child = new wxButton(new wxPanel(frame), wxID_ANY, "deep child");
  EXPECT_FALSE(plaxi1::is_closing(frame));
  EXPECT_FALSE(plaxi1::is_closing(child));
  EXPECT_FALSE(plaxi1::is_closing(nullptr));
  frame->Destroy();
  EXPECT_TRUE(plaxi1::is_closing(frame));
  EXPECT_TRUE(plaxi1::is_closing(child)) << "a child goes with its window";
}

TEST_F(modal_test, a_child_whose_parent_is_being_deleted_is_closing) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "parent");
  auto* panel = new wxPanel(frame);
  bool closing_seen = false;
  auto* child = new wxButton(panel, wxID_ANY, "child");
  child->Bind(wxEVT_DESTROY, [&closing_seen, child](wxWindowDestroyEvent& event) {
    closing_seen = plaxi1::is_closing(child);
    event.Skip();
  });
  delete panel;
  EXPECT_TRUE(closing_seen);
  frame->Destroy();
}

TEST_F(modal_test, live_parent_passes_over_closing_windows_to_the_main_window) {
  auto* main_window = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(main_window);
  auto* other = new wxFrame(nullptr, wxID_ANY, "other");
  EXPECT_EQ(plaxi1::live_parent(other), other);
  other->Destroy();
  EXPECT_EQ(plaxi1::live_parent(other), main_window);
  EXPECT_EQ(plaxi1::live_parent(nullptr), nullptr) << "no parent stays no parent";
  main_window->Destroy();
  EXPECT_EQ(plaxi1::live_parent(other), nullptr);
  wxTheApp->SetTopWindow(nullptr);
}

}  // namespace
