#pragma once
// A frame with a wrapped panel that shows a directory grid, for the tests of the grid
// library: rows filled as an owner fills them, real keys, and the signals recorded.
#include "gui_test.h"
#include "input.h"

#include <ombrelc/ombrelc.h>
#include <ombrelgrid/ombrelgrid.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include <string>
#include <utility>
#include <vector>

namespace ombrelgrid_test {

using ombrelc7::rect;
using ombrelc7::size;
using ombrelpropgrid2::CHALLINGrid;
using ombrelpropgrid2::IPropItem;

/// Records the grid's signals and the model's `changed`.
class recorder_t : public korvat2::subscriber_base_t {
 public:
  void on_row_added(const std::string& value, int row) { m_added.emplace_back(value, row); }
  void on_finished(const std::string& value, int row) { m_finished.emplace_back(value, row); }
  void on_more(ombrelpropgrid2::click_data_t click) { m_clicks.push_back(click); }
  void on_changed() { ++m_changed; }

  std::vector<std::pair<std::string, int>> m_added;
  std::vector<std::pair<std::string, int>> m_finished;
  std::vector<ombrelpropgrid2::click_data_t> m_clicks;
  int m_changed = 0;
};

class grid_fixture_t : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "grid");
    m_panel = new wxPanel(m_frame, wxID_ANY);
    m_frame->SetClientSize(wxSize(500, 300));
    m_wrapper = ombrelc7::CreateWrapperForWx(m_panel);
    m_control =
        new ombrelcfrw7::CBaseControlTmpl<CHALLINGrid>(m_wrapper, size<int>(40, 40), ombrelc7::alClient);
    m_grid = m_control->GetTypedContent();
    m_grid->row_added.connect(&m_record, &recorder_t::on_row_added);
    m_grid->editing_finished.connect(&m_record, &recorder_t::on_finished);
    m_grid->more_clicked.connect(&m_record, &recorder_t::on_more);
    model()->changed.connect(&m_record, &recorder_t::on_changed);
    // Every key press passes the frame's hook first: the tests wait for it to arrive.
    m_frame->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
      ++m_keys_seen;
      event.Skip();
    });
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
    layout();
  }

  ombrelpropgrid2::HALLINGridModel* model() const { return m_grid->GetGridModel(); }

  /// Fills the grid as an owner does, with `count` rows "/d0", "/d1", ...
  void fill(int count, const std::string& hint = "Add a directory") {
    m_grid->ClearRows();
    for (int i = 0; i < count; ++i) {
      m_grid->AppendRow("/d" + std::to_string(i), ombrelpropgrid2::etMore);
    }
    m_grid->FinishFill(hint);
    layout();
    m_record.m_changed = 0;
  }

  void layout() {
    gui_test::pump();
    m_wrapper->FlushLayout();
  }

  /// The native text box of the "..." editor.
  wxTextCtrl* more_text() const {
    return static_cast<wxTextCtrl*>(m_grid->GetMoreEditor()->GetNativeControl());
  }

  /// Gives the grid the keyboard, as a click into it does, and waits until GTK has it there.
  void focus_grid() {
    m_panel->SetCanFocus(true);
    m_panel->wxWindow::SetFocus();
    m_grid->SetFocus();
    ASSERT_TRUE(gui_test::wait_until([this] { return wxWindow::FindFocus() == m_panel; }));
    layout();
  }

  /// A real key press on the grid, which has the keyboard (focus_grid).
  void press_on_grid(int keycode) { press(keycode); }
  /// Real key presses, to whatever native control has the keyboard focus.
  void press(int keycode) {
    const int seen = m_keys_seen;
    gui_test::input_t().press(keycode);
    EXPECT_TRUE(gui_test::wait_until([&] { return m_keys_seen > seen; })) << "key " << keycode;
    layout();
  }
  void type(const std::string& text) {
    for (char c : text) {
      press(c);
    }
  }

  /// Opens the editor on `row` with the real F2 key and waits until it has the keyboard.
  bool open_editor(int row) {
    focus_grid();
    m_grid->SetCurrentRow(row);
    press_on_grid(WXK_F2);
    return gui_test::wait_until([this] { return more_text()->IsShown() && more_text()->HasFocus(); });
  }

  /// Sends a mouse event to the panel at `pos` (window coordinates).
  void mouse(wxEventType type, const ombrelc7::point<int>& pos) {
    wxMouseEvent event(type);
    event.SetPosition(wxPoint(pos.x, pos.y));
    event.SetEventObject(m_panel);
    m_panel->GetEventHandler()->ProcessEvent(event);
  }
  void click_at(const ombrelc7::point<int>& pos) {
    mouse(wxEVT_LEFT_DOWN, pos);
    mouse(wxEVT_LEFT_UP, pos);
    layout();
  }
  static ombrelc7::point<int> centre(const rect<int>& r) {
    return {r.left + r.width() / 2, r.top + r.height() / 2};
  }

  wxFrame* m_frame = nullptr;
  wxPanel* m_panel = nullptr;
  ombrelc7::ISysWindow* m_wrapper = nullptr;
  ombrelcfrw7::CBaseControlTmpl<CHALLINGrid>* m_control = nullptr;
  CHALLINGrid* m_grid = nullptr;
  recorder_t m_record;
  int m_keys_seen = 0;
};

}  // namespace ombrelgrid_test
