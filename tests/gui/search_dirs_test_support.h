#pragma once
// A frame that shows a search-directory panel over a container, with the user's hands:
// rows typed into the grid's real editor, ticks clicked, the file type chosen in the combo
// box, and the message boxes read and closed.
#include "fixtures.h"
#include "gui_test.h"
#include "input.h"

#include <HALLIN_2_13/search_dir_container.h>
#include <tamsel3/search_dirs_panel.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/combobox.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/modalhook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace search_dirs_test {

using HALLIN_2_13::search_dir_container_t;
using entries_t = std::vector<search_dir_container_t::entry_t>;

inline std::string text_of(const std::string& key) { return tamsel3::translate_message(key, {}); }

/// The panel with its controls in reach.
class panel_t : public tamsel3::search_dirs_panel_t {
 public:
  using search_dirs_panel_t::m_bpButton1;
  using search_dirs_panel_t::m_bpButton2;
  using search_dirs_panel_t::m_bpButton3;
  using search_dirs_panel_t::m_comboBox4;
  using search_dirs_panel_t::m_current_dirs;
  using search_dirs_panel_t::m_panel8;
  using search_dirs_panel_t::search_dirs_panel_t;

  // A panel that the file finder page made is no panel_t: its members are reached through
  // member pointers, which casting it to panel_t would not be allowed to do.
  static wxWindow* panel8_of(search_dirs_panel_t* panel) { return panel->*(&panel_t::m_panel8); }
  static wxBitmapButton* remove_button_of(search_dirs_panel_t* panel) {
    return panel->*(&panel_t::m_bpButton3);
  }
  static wxComboBox* combo_of(search_dirs_panel_t* panel) { return panel->*(&panel_t::m_comboBox4); }
};

/// A message box as it was shown: its two texts, flattened (see flat).
struct box_t {
  std::string main;
  std::string details;
};

/// `text` with each run of blanks and line ends made one blank, and none at the ends: the
/// box wraps its texts to its width.
inline std::string flat(const std::string& text) {
  std::string result;
  bool blank = false;
  for (char c : text) {
    if (c == ' ' || c == '\n') {
      blank = !result.empty();
      continue;
    }
    if (blank) {
      result += ' ';
      blank = false;
    }
    result += c;
  }
  return result;
}

inline std::string flat_text(const std::string& key) { return flat(text_of(key)); }

inline std::string static_text(wxWindow& root, const char* name) {
  auto* text = dynamic_cast<wxStaticText*>(gui_test::find_named(&root, name));
  return text ? flat(text->GetLabelText().utf8_string()) : std::string();
}

class frame_fixture_t : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "search directories", wxDefaultPosition, wxSize(700, 480));
    // The panel's warning box goes to the main window.
    wxTheApp->SetTopWindow(m_frame);
    m_frame->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
      ++m_keys_seen;
      event.Skip();
    });
    m_container = search_dir_container_t::create();
  }
  void TearDown() override {
    wxTheApp->SetTopWindow(nullptr);
    m_frame->Destroy();
    gui_test::pump();
  }

  /// Real folders under the scratch folder, so that the rows name directories that exist.
  std::string dir(const std::string& name) const {
    const std::string path = m_scratch.path() + "/" + name;
    std::filesystem::create_directories(path);
    return path;
  }

  /// Shows `page` (already created on the frame) filling the frame.
  void show(wxWindow* page) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(page, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
    m_frame->Layout();
    layout();
  }

  void use(panel_t* panel) {
    m_panel = panel;
    m_base = panel;
  }
  void use(tamsel3::search_dirs_panel_t* panel) { m_base = panel; }
  ombrelpropgrid2::CHALLINGrid* grid() const { return m_base->grid(); }
  wxWindow* panel8() const { return panel_t::panel8_of(m_base); }
  ombrelpropgrid2::HALLINGridModel* model() const { return grid()->GetGridModel(); }
  int row_count() const { return model()->GetRowCount() - 1; }

  /// The texts of the grid's rows, the last line left out.
  std::vector<std::string> rows() const {
    std::vector<std::string> texts;
    for (int row = 0; row < row_count(); ++row) {
      texts.push_back(model()->getPropertyByRow(row)->GetStringValue());
    }
    return texts;
  }
  std::vector<int> ticks() const {
    std::vector<int> states;
    for (int row = 0; row < row_count(); ++row) {
      states.push_back(model()->getPropertyByRow(row)->GetChecked());
    }
    return states;
  }

  void layout() {
    gui_test::pump();
    if (m_base && panel8()) {
      panel8()->Layout();
    }
    gui_test::pump();
  }

  wxTextCtrl* more_text() const {
    return static_cast<wxTextCtrl*>(grid()->GetMoreEditor()->GetNativeControl());
  }

  /// Gives the grid the keyboard, as a click into it does.
  void focus_grid() {
    wxWindow* host = panel8();
    host->SetCanFocus(true);
    host->SetFocus();
    grid()->SetFocus();
    ASSERT_TRUE(gui_test::wait_until([host] { return wxWindow::FindFocus() == host; }));
    layout();
  }

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

  /// Opens the editor on `row` with F2 and waits until it has the keyboard.
  bool open_editor(int row) {
    // The editor stays on a row just added: end that edit first, as a click elsewhere does.
    if (more_text()->IsShown()) {
      grid()->SaveEditorsData();
      layout();
    }
    focus_grid();
    grid()->SetCurrentRow(row);
    press(WXK_F2);
    return gui_test::wait_until([this] { return more_text()->IsShown() && more_text()->HasFocus(); });
  }

  /// Types `text` into the last line and accepts it: a new row.
  void add_row(const std::string& text) {
    ASSERT_TRUE(open_editor(row_count()));
    type(text);
    press(WXK_RETURN);
  }
  /// Replaces the text of `row` in its editor: all of it selected, then typed over.
  void edit_row(int row, const std::string& text) {
    ASSERT_TRUE(open_editor(row));
    more_text()->SelectAll();
    if (text.empty()) {
      press(WXK_DELETE);
    } else {
      type(text);
    }
    press(WXK_RETURN);
  }

  /// Clicks the check box of `row`, as the mouse does.
  void click_tick(int row) {
    const ombrelc7::rect<int> cell = grid()->GetViewer()->GetCellRect(row, 1);
    click_at(wxPoint(cell.left + cell.width() / 2, cell.top + cell.height() / 2));
  }

  void click_at(const wxPoint& at) {
    for (wxEventType type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
      wxMouseEvent event(type);
      event.SetPosition(at);
      event.SetEventObject(panel8());
      panel8()->GetEventHandler()->ProcessEvent(event);
    }
    layout();
  }

  /// Clicks the "..." button of the open editor.
  void click_more_button() {
    const ombrelc7::rect<int> button = grid()->GetMoreEditor()->GetDecoration()->GetRect();
    ASSERT_GT(button.width(), 0);
    click_at(wxPoint(button.left + button.width() / 2, button.top + button.height() / 2));
  }

  /// Chooses `index` in the file type box, as the user does.
  void choose_type(int index) {
    wxComboBox* box = panel_t::combo_of(m_base);
    box->SetSelection(index);
    wxCommandEvent event(wxEVT_COMBOBOX, box->GetId());
    event.SetEventObject(box);
    event.SetInt(index);
    box->ProcessWindowEvent(event);
    layout();
  }

  /// Runs `action`, closing every message box that it shows and keeping the boxes' texts.
  std::vector<box_t> boxes_of(const std::function<void()>& action) {
    std::vector<box_t> boxes;
    std::function<void(wxDialog&)> answer = [&](wxDialog& shown) {
      boxes.push_back(
          {static_text(shown, "m_main_instructions"), static_text(shown, "m_supplemental_instructions")});
      gui_test::click(&shown, "m_btn_cancel");
    };
    struct hook_t : wxModalDialogHook {
      std::function<void(wxDialog&)>* answer;
      int Enter(wxDialog*) override {
        gui_test::on_next_modal(*answer);
        return wxID_NONE;
      }
      void Exit(wxDialog*) override {}
    } hook;
    hook.answer = &answer;
    hook.Register();
    action();
    hook.Unregister();
    return boxes;
  }

  wxFrame* m_frame = nullptr;
  panel_t* m_panel = nullptr;  // set only for a panel that the test made itself
  tamsel3::search_dirs_panel_t* m_base = nullptr;
  HALLIN_2_13::ObjectPtr<search_dir_container_t> m_container;
  test_support::temp_dir_t m_scratch;
  int m_keys_seen = 0;
};

}  // namespace search_dirs_test
