#include "fixtures.h"
#include "gui_test.h"
#include "input.h"
#include "modal_answer.h"
#include "refusing_search_dir_container.h"

#include <HALLIN_2_13/search_dir_container.h>
#include <ombrelc/ombrelc.h>
#include <ombrelgrid/ombrelgrid.h>
#include <tamsel3/caption_panel.h>
#include <tamsel3/char_rules.h>
#include <tamsel3/search_dirs_tab.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/bmpbuttn.h>
#include <wx/dialog.h>
#include <wx/dirdlg.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using HALLIN_2_13::search_category_t;
using HALLIN_2_13::search_dir_container_t;
using tamsel3::caption_panel_t;
using tamsel3::path_info_t;
using varg_list = ZANDOR_2_16::generic::varg_list;

constexpr search_category_t binaries = HALLIN_2_13::search_category_binaries;
constexpr search_category_t symbols = HALLIN_2_13::search_category_symbols;
constexpr search_category_t sources = HALLIN_2_13::search_category_sources;
constexpr search_category_t other = HALLIN_2_13::search_category_other;

std::string text_of(const std::string& key, const std::string& dir = std::string()) {
  if (dir.empty()) {
    return tamsel3::translate_message(key, varg_list());
  }
  return tamsel3::translate_message(key, varg_list(ZANDOR_2_16::generic::argument("dir", dir)));
}
std::string missing_text(const std::string& dir) {
  return text_of("panel.search_dirs.error_dir_nonexistent", dir);
}
std::string file_text(const std::string& dir) { return text_of("panel.search_dirs.error_not_a_dir", dir); }

// The folder that wxGTK's native chooser has selected.
std::string chooser_folder(wxDirDialog& dialog) {
  gchar* name = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog.m_widget));
  const std::string folder = name ? name : "";
  g_free(name);
  return folder;
}

// The page with its parts in reach.
class tab_t : public tamsel3::search_dirs_tab_t {
 public:
  using search_dirs_tab_t::grid;
  using search_dirs_tab_t::m_bpButton1;
  using search_dirs_tab_t::m_bpButton2;
  using search_dirs_tab_t::m_bpButton3;
  using search_dirs_tab_t::m_browsing;
  using search_dirs_tab_t::m_dirs;
  using search_dirs_tab_t::m_fixed_height;
  using search_dirs_tab_t::m_fixed_width;
  using search_dirs_tab_t::m_messages;
  using search_dirs_tab_t::m_panel4;
  using search_dirs_tab_t::m_panel8;
  using search_dirs_tab_t::m_sys_window;
  using search_dirs_tab_t::search_dirs_tab_t;
};

class search_dirs_tab_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_good = m_temp.path() + "/good";
    m_other_good = m_temp.path() + "/other";
    m_file = m_temp.path() + "/notes.txt";
    m_missing = m_temp.path() + "/missing";
    std::filesystem::create_directory(m_good);
    std::filesystem::create_directory(m_other_good);
    m_temp.write("notes.txt", "x");
  }
  void TearDown() override {
    if (m_frame) {
      m_frame->Destroy();
    }
    gui_test::pump();
  }

  void add(search_category_t category, const std::string& text) {
    ASSERT_TRUE(m_container->add_search_dir(category, text.c_str(), true, false));
  }
  std::vector<std::string> entries(search_category_t category) const {
    std::vector<std::string> texts;
    for (const auto& entry : m_container->get_entries(category)) {
      texts.push_back(entry.text);
    }
    return texts;
  }

  void open(search_category_t category, int mode = 1, bool with_container = true) {
    m_frame = new wxFrame(nullptr, wxID_ANY, "search dirs", wxDefaultPosition, wxSize(640, 480));
    m_frame->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
      ++m_keys_seen;
      event.Skip();
    });
    m_tab = new tab_t(with_container ? tamsel3::search_dirs_tab_t::container_ptr_t(m_container) : nullptr,
                      category);
    m_tab->set_dir_error_mode(mode);
    m_tab->create(m_frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_tab, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
    layout();
  }

  ombrelpropgrid2::CHALLINGrid* grid() const { return m_tab->grid(); }
  ombrelpropgrid2::HALLINGridModel* model() const { return grid()->GetGridModel(); }
  caption_panel_t* caption() const { return m_tab->get_caption_panel(); }
  int dir_rows() const { return model()->GetRowCount() - 1; }
  std::vector<std::string> rows() const {
    std::vector<std::string> texts;
    for (int row = 0; row < dir_rows(); ++row) {
      texts.push_back(model()->getPropertyByRow(row)->GetStringValue());
    }
    return texts;
  }
  /// The caption panel's messages, most severe first.
  std::vector<std::string> messages() const {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < caption()->get_message_count(); ++i) {
      texts.push_back(caption()->get_message(caption()->get_message_id(static_cast<int>(i))).m_text);
    }
    return texts;
  }

  void layout() {
    gui_test::pump();
    m_tab->m_sys_window->FlushLayout();
  }
  wxTextCtrl* more_text() const {
    return static_cast<wxTextCtrl*>(grid()->GetMoreEditor()->GetNativeControl());
  }
  void focus_grid() {
    m_tab->m_panel8->SetCanFocus(true);
    m_tab->m_panel8->wxWindow::SetFocus();
    grid()->SetFocus();
    ASSERT_TRUE(gui_test::wait_until([this] { return wxWindow::FindFocus() == m_tab->m_panel8; }));
    layout();
  }
  /// Opens the editor on `row` with the real F2 key.
  bool open_editor(int row) {
    focus_grid();
    grid()->SetCurrentRow(row);
    press(WXK_F2);
    return gui_test::wait_until([this] { return more_text()->IsShown() && more_text()->HasFocus(); });
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
  /// Types `text` into the last line and accepts it, as a user adds a directory.
  void type_row(const std::string& text) {
    ASSERT_TRUE(open_editor(dir_rows()));
    type(text);
    ASSERT_TRUE(gui_test::wait_until([&] { return more_text()->GetValue().utf8_string() == text; }));
    press(WXK_RETURN);
    press(WXK_RETURN);  // the editor stayed on the new row: accept it there too
  }
  /// Clicks the "..." button of `row` and answers the folder dialog with `chosen` (empty:
  /// Cancel); gives the folder the dialog opened on.
  std::string browse(int row, const std::string& chosen) {
    EXPECT_TRUE(open_editor(row));
    std::string start;
    gui_test::answer_in_loop_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
      // wxGTK hands the start folder to the native chooser, which takes it in its loop.
      gui_test::wait_until(
          [&] {
            start = chooser_folder(dialog);
            return !start.empty();
          },
          1000);
      if (chosen.empty()) {
        dialog.EndModal(wxID_CANCEL);
        return;
      }
      dialog.wxDirDialogBase::SetPath(wxString::FromUTF8(chosen));
      dialog.EndModal(wxID_OK);
    });
    const ombrelc7::rect<int> r = grid()->GetMoreEditor()->GetDecoration()->GetWindowRect();
    const wxPoint centre(r.left + r.width() / 2, r.top + r.height() / 2);
    for (wxEventType type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP}) {
      wxMouseEvent event(type);
      event.SetPosition(centre);
      event.SetEventObject(m_tab->m_panel8);
      m_tab->m_panel8->GetEventHandler()->ProcessEvent(event);
    }
    layout();
    EXPECT_EQ(answer.m_calls, 1);
    return start;
  }
  void click(const char* name) {
    gui_test::click(m_tab, name);
    layout();
  }

  test_support::temp_dir_t m_temp;
  std::string m_good;
  std::string m_other_good;
  std::string m_file;
  std::string m_missing;
  HALLIN_2_13::ObjectPtr<search_dir_container_t> m_container = search_dir_container_t::create();
  wxFrame* m_frame = nullptr;
  tab_t* m_tab = nullptr;
  int m_keys_seen = 0;
};

// ---- building and reading ---------------------------------------------------------------

TEST_F(search_dirs_tab_test, the_caption_panel_takes_the_placeholders_place_and_the_grid_has_no_tick_column) {
  open(binaries);
  ASSERT_NE(caption(), nullptr);
  EXPECT_TRUE(caption()->IsShown());
  EXPECT_EQ(m_tab->m_panel4->GetContainingSizer(), nullptr);
  EXPECT_EQ(m_tab->m_panel4->GetParent(), m_tab);
  EXPECT_NE(caption()->GetContainingSizer(), nullptr);
  EXPECT_TRUE(m_tab->m_panel8->IsShown());
  EXPECT_TRUE(m_tab->m_panel8->HasFlag(wxBORDER_SUNKEN));
  EXPECT_TRUE(m_tab->m_sys_window->m_clip_children);
  EXPECT_EQ(grid()->GetCheckColumn(), -1);
  EXPECT_EQ(model()->GetColumnCount(), 1);
  EXPECT_EQ(model()->GetColumnCaption(0), text_of("panel.search_dirs.dirs"));
  bool hint = false;
  EXPECT_EQ(model()->GetCellText(0, 0, hint), text_of("panel.search_dirs.last_line_tab"));
  EXPECT_TRUE(hint);
  EXPECT_EQ(grid()->GetMorePropertyEditor().m_restricted_symbols, tamsel3::directory_disabled_chars);
  EXPECT_EQ(grid()->GetMorePropertyEditor().m_tooltip_text,
            tamsel3::get_disabled_tooltip_text(text_of("directory_symbols_message"),
                                               tamsel3::directory_disabled_chars, false));
}

TEST_F(search_dirs_tab_test, the_source_category_has_its_own_title) {
  open(sources);
  bool found = false;
  for (wxWindow* child : caption()->GetChildren()) {
    if (auto* text = dynamic_cast<wxStaticText*>(child)) {
      found = found || text->GetLabelText().utf8_string() == text_of("caption_panel.search_dirs.src.title");
    }
  }
  EXPECT_TRUE(found);
}

TEST_F(search_dirs_tab_test, category_1_shows_category_2s_own_directories_after_its_own) {
  add(binaries, m_good);
  add(binaries, "/bin/a");
  add(symbols, "/bin/a");
  add(symbols, "/sym/b");
  add(sources, "/src/c");
  open(binaries, 0);
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good, "/bin/a", "/sym/b"}));
  ASSERT_EQ(m_tab->m_dirs.size(), 3u);
  EXPECT_EQ(m_tab->m_dirs[0].m_status, 0);
  EXPECT_EQ(m_tab->m_dirs[1].m_status, 1);
}

TEST_F(search_dirs_tab_test, category_2_reads_the_same_merged_list_and_category_3_only_its_own) {
  add(binaries, "/bin/a");
  add(symbols, "/sym/b");
  add(sources, "/src/c");
  open(symbols, 0);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/bin/a", "/sym/b"}));
  m_frame->Destroy();
  gui_test::pump();
  open(sources, 0);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/src/c"}));
}

// ---- validity and messages --------------------------------------------------------------

TEST_F(search_dirs_tab_test, with_the_mode_at_0_a_missing_directory_gives_no_message_yet_is_invalid) {
  add(binaries, m_missing);
  open(binaries, 0);
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_FALSE(m_tab->validate_dir(path_info_t(m_missing), 0));
  EXPECT_FALSE(m_tab->validate_dir(path_info_t(std::string("rel")), 0));
  EXPECT_TRUE(m_tab->validate_dir(path_info_t(m_good), 0));
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->m_messages.empty());
}

TEST_F(search_dirs_tab_test, an_opened_page_warns_once_for_each_missing_or_file_row) {
  add(sources, m_good);
  add(sources, m_missing);
  add(sources, m_file);
  add(sources, m_good + "/*");
  open(sources);
  EXPECT_EQ(messages(), (std::vector<std::string>{missing_text(m_missing), file_text(m_file)}));
  ASSERT_EQ(m_tab->m_messages.size(), 2u);
  EXPECT_EQ(m_tab->m_messages.count(model()->getPropertyByRow(1)), 1u);
  EXPECT_EQ(m_tab->m_messages.count(model()->getPropertyByRow(2)), 1u);
  EXPECT_TRUE(m_tab->validate_dir(path_info_t(m_good + "/*"), 3));
  // The page was filled before it had its size: all four rows show from the first.
  EXPECT_EQ(grid()->GetViewer()->GetTopRow(), 0);
}

TEST_F(search_dirs_tab_test,
       a_typed_relative_row_is_dropped_at_save_and_its_message_kept_until_all_are_valid) {
  add(other, m_good);
  open(other);
  type_row("src");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good, "src"}));
  EXPECT_EQ(messages(), (std::vector<std::string>{missing_text("src")}));
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_good}));
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
  EXPECT_EQ(messages(), (std::vector<std::string>{missing_text("src")}));
  // A save at which every row is valid takes it away.
  m_tab->save_settings();
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->m_messages.empty());
}

TEST_F(search_dirs_tab_test, a_row_rebuilt_by_a_save_gets_a_second_message) {
  add(other, m_missing);
  open(other);
  ASSERT_EQ(messages(), (std::vector<std::string>{missing_text(m_missing)}));
  ombrelpropgrid2::IPropItem* old_item = model()->getPropertyByRow(0);
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_missing}));  // warned, stored all the same
  ASSERT_EQ(dir_rows(), 1);
  EXPECT_NE(model()->getPropertyByRow(0), old_item);
  EXPECT_EQ(messages(), (std::vector<std::string>{missing_text(m_missing), missing_text(m_missing)}));
  EXPECT_EQ(m_tab->m_messages.size(), 2u);
  // Both go at the next save at which every row is valid.
  std::filesystem::create_directory(m_missing);
  m_tab->save_settings();
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->m_messages.empty());
}

TEST_F(search_dirs_tab_test, a_trailing_blank_is_cut_and_a_leading_blank_fails_as_relative) {
  open(other);
  type_row(m_good + " ");
  type_row(" " + m_other_good);
  // Typed rows are judged as they stand; the blanks are dealt with at the save.
  EXPECT_EQ(messages(),
            (std::vector<std::string>{missing_text(m_good + " "), missing_text(" " + m_other_good)}));
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_good}));
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
}

TEST_F(search_dirs_tab_test, a_directory_with_an_asterisk_is_valid_and_stored_with_it) {
  open(other);
  type_row(m_good + "/*");
  EXPECT_EQ(caption()->get_message_count(), 0u);
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_good + "/*"}));
  EXPECT_EQ(caption()->get_message_count(), 0u);
}

TEST_F(search_dirs_tab_test, a_typed_file_is_warned_about_and_stored_all_the_same) {
  open(other);
  type_row(m_file);
  EXPECT_EQ(messages(), (std::vector<std::string>{file_text(m_file)}));
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_file}));
}

TEST_F(search_dirs_tab_test, a_row_typed_valid_takes_its_message_away) {
  add(other, m_missing);
  open(other);
  ASSERT_EQ(caption()->get_message_count(), 1u);
  ombrelpropgrid2::IPropItem* item = model()->getPropertyByRow(0);
  // What a row that became valid reports through the grid.
  m_tab->on_dir_updated(m_good, 0);
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_EQ(m_tab->m_messages.count(item), 0u);
}

// ---- editing, browsing and the buttons --------------------------------------------------

TEST_F(search_dirs_tab_test, emptying_a_row_removes_it_and_its_message) {
  add(other, m_missing);
  add(other, m_good);
  open(other);
  ASSERT_TRUE(open_editor(0));
  more_text()->SetInsertionPointEnd();
  for (std::size_t i = 0; i < m_missing.size(); ++i) {
    press(WXK_BACK);
  }
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->GetValue().empty(); }));
  press(WXK_RETURN);
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->m_messages.empty());
}

TEST_F(search_dirs_tab_test, a_cancelled_browse_keeps_an_emptied_row_until_the_save) {
  add(other, m_good);
  add(other, m_other_good);
  open(other);
  browse(0, "");
  EXPECT_TRUE(m_tab->m_browsing);
  // The editor stays open on the row after the dialog.
  ASSERT_TRUE(more_text()->IsShown());
  more_text()->SetFocus();
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->HasFocus(); }));
  more_text()->SetInsertionPointEnd();
  for (std::size_t i = 0; i < m_good.size(); ++i) {
    press(WXK_BACK);
  }
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->GetValue().empty(); }));
  press(WXK_RETURN);
  EXPECT_EQ(rows(), (std::vector<std::string>{"", m_other_good}));
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_other_good}));
  EXPECT_EQ(rows(), (std::vector<std::string>{m_other_good}));
}

TEST_F(search_dirs_tab_test, browsing_starts_at_the_parent_and_puts_the_choice_in_the_row) {
  add(other, m_good);
  open(other);
  EXPECT_EQ(browse(0, m_other_good), m_temp.path());
  EXPECT_FALSE(m_tab->m_browsing);
  EXPECT_EQ(rows(), (std::vector<std::string>{m_other_good}));
  EXPECT_EQ(more_text()->GetValue().utf8_string(), m_other_good);
  click("m_btn_ok");
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_other_good}));
}

TEST_F(search_dirs_tab_test, a_folder_chosen_for_the_last_line_adds_a_row_with_a_single_message) {
  open(other);
  EXPECT_EQ(browse(0, m_missing), "");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_missing}));
  EXPECT_EQ(messages(), (std::vector<std::string>{missing_text(m_missing)}));
  EXPECT_EQ(m_tab->m_messages.size(), 1u);
}

TEST_F(search_dirs_tab_test, up_and_down_move_rows_with_their_messages) {
  add(other, m_missing);
  add(other, m_good);
  open(other);
  ombrelpropgrid2::IPropItem* missing_item = model()->getPropertyByRow(0);
  grid()->SetCurrentRow(0);
  click("m_bpButton2");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good, m_missing}));
  EXPECT_EQ(grid()->GetCurrentRow(), 1);
  EXPECT_EQ(model()->getPropertyByRow(1), missing_item);
  EXPECT_EQ(m_tab->m_messages.count(missing_item), 1u);
  click("m_bpButton2");  // the last row stays above the last line
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good, m_missing}));
  click("m_bpButton1");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_missing, m_good}));
  EXPECT_EQ(grid()->GetCurrentRow(), 0);
  click("m_bpButton1");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_missing, m_good}));
}

TEST_F(search_dirs_tab_test, remove_takes_the_row_and_its_message_and_never_the_last_line) {
  add(other, m_good);
  add(other, m_missing);
  open(other);
  ASSERT_EQ(caption()->get_message_count(), 1u);
  grid()->SetCurrentRow(2);
  click("m_bpButton3");
  EXPECT_EQ(dir_rows(), 2);
  grid()->SetCurrentRow(1);
  click("m_bpButton3");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
  EXPECT_EQ(grid()->GetCurrentRow(), 0);
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->m_messages.empty());
}

// ---- saving -----------------------------------------------------------------------------

TEST_F(search_dirs_tab_test, a_page_of_category_1_writes_its_list_into_both_categories) {
  add(binaries, "/bin/a");
  add(symbols, "/sym/b");
  add(sources, "/src/c");
  open(binaries, 0);
  type_row(m_good);
  click("m_btn_ok");
  const std::vector<std::string> expected{"/bin/a", "/sym/b", m_good};
  EXPECT_EQ(entries(binaries), expected);
  EXPECT_EQ(entries(symbols), expected);
  EXPECT_EQ(entries(sources), (std::vector<std::string>{"/src/c"}));
  for (const auto& entry : m_container->get_entries(symbols)) {
    EXPECT_FALSE(entry.recursive);
    EXPECT_TRUE(entry.flag);
  }
}

TEST_F(search_dirs_tab_test, a_refused_directory_doesnt_stop_the_others_or_the_save) {
  auto refusing = test_support::refusing_search_dir_container_t::create(m_good);
  refusing->add_search_dir(other, "/kept/before", false, true);
  m_container = refusing;
  open(other);
  type_row(m_good);
  type_row(m_other_good);
  click("m_btn_ok");
  EXPECT_EQ(refusing->refusals(), 1);
  EXPECT_EQ(entries(other), (std::vector<std::string>{"/kept/before", m_other_good}));
  EXPECT_TRUE(m_tab->set_data());
}

TEST_F(search_dirs_tab_test, cancel_writes_nothing) {
  add(other, m_good);
  open(other);
  type_row(m_other_good);
  grid()->SetCurrentRow(0);
  click("m_bpButton3");
  click("m_btn_cancel");
  EXPECT_FALSE(m_tab->IsShown());
  EXPECT_EQ(entries(other), (std::vector<std::string>{m_good}));
}

TEST_F(search_dirs_tab_test, an_empty_grid_saves_empty_categories_and_removes_all_messages) {
  add(binaries, m_missing);
  add(symbols, "/sym/b");
  open(binaries);
  ASSERT_EQ(caption()->get_message_count(), 2u);
  grid()->SetCurrentRow(1);
  click("m_bpButton3");
  grid()->SetCurrentRow(0);
  click("m_bpButton3");
  ASSERT_EQ(dir_rows(), 0);
  m_tab->fill_dirs();
  EXPECT_TRUE(m_tab->m_dirs.empty());
  EXPECT_EQ(caption()->get_message_count(), 0u);
  EXPECT_TRUE(m_tab->set_data());
  EXPECT_TRUE(entries(binaries).empty());
  EXPECT_TRUE(entries(symbols).empty());
}

TEST_F(search_dirs_tab_test, without_a_container_the_grid_works_and_nothing_is_saved) {
  open(other, 1, false);
  EXPECT_EQ(dir_rows(), 0);
  type_row(m_good);
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
  EXPECT_FALSE(m_tab->set_data());
  click("m_btn_ok");
  EXPECT_EQ(rows(), (std::vector<std::string>{m_good}));
}

// ---- size and the host's helpers --------------------------------------------------------

TEST_F(search_dirs_tab_test, the_minimum_height_leaves_room_for_caption_buttons_and_text) {
  open(other);
  m_frame->SetSize(wxSize(500, 420));
  layout();
  const int needed = caption()->GetMinSize().GetHeight() + m_tab->m_bpButton1->GetSize().GetHeight() +
                     3 * tamsel3::get_text_extent(m_tab, "Any text").GetHeight() + 35;
  EXPECT_GE(m_tab->GetMinSize().GetHeight(), needed);
  EXPECT_EQ(m_tab->GetMinSize().GetWidth(), m_tab->m_fixed_width);
  EXPECT_GE(m_tab->GetMinSize().GetHeight(), m_tab->GetSizer()->GetMinSize().GetHeight());
}

TEST_F(search_dirs_tab_test, the_host_gets_the_missing_directory_text_and_the_warning_box) {
  open(other);
  EXPECT_EQ(m_tab->get_directory_error_msg(17, "/x"), missing_text("/x"));
  wxTheApp->SetTopWindow(m_frame);
  std::string main_text;
  std::string details;
  gui_test::on_next_modal([&](wxDialog& shown) {
    if (auto* text = dynamic_cast<wxStaticText*>(gui_test::find_named(&shown, "m_main_instructions"))) {
      main_text = text->GetLabelText().utf8_string();
      std::replace(main_text.begin(), main_text.end(), '\n', ' ');  // wrapped to the window
    }
    if (auto* text =
            dynamic_cast<wxStaticText*>(gui_test::find_named(&shown, "m_supplemental_instructions"))) {
      details = text->GetLabelText().utf8_string();
    }
    gui_test::click(&shown, "m_btn_cancel");
  });
  m_tab->show_warn_msg_box("/opt/lib is a file");
  wxTheApp->SetTopWindow(nullptr);
  EXPECT_EQ(main_text, text_of("panel.search_dirs.main_not_a_dir"));
  EXPECT_EQ(details, "/opt/lib is a file");
}

}  // namespace
