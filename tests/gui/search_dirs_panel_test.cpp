#include "modal_answer.h"
#include "refusing_search_dir_container.h"
#include "search_dirs_test_support.h"

#include <tamsel3/char_rules.h>

#include <wx/bmpbuttn.h>
#include <wx/dirdlg.h>

#include <string>
#include <vector>

namespace {

using namespace search_dirs_test;
using HALLIN_2_13::search_category_t;
using ombrelpropgrid2::csClear;
using ombrelpropgrid2::csTicked;
using ombrelpropgrid2::csUnset;
using tamsel3::search_dirs_panel_t;
using entry_t = search_dir_container_t::entry_t;

constexpr auto binaries = HALLIN_2_13::search_category_binaries;
constexpr auto symbols = HALLIN_2_13::search_category_symbols;
constexpr auto sources = HALLIN_2_13::search_category_sources;
constexpr auto other = HALLIN_2_13::search_category_other;

class search_dirs_panel_test : public frame_fixture_t {
 protected:
  void open(bool add_flag = false) { open_over(m_container, add_flag); }
  void open_over(HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer> container,
                 bool add_flag = false) {
    auto* panel = new panel_t(container, add_flag);
    panel->create(m_frame);
    use(panel);
    show(panel);
    panel->m_file_type_signal.connect(&m_types, &type_record_t::on_type);
  }
  void add(search_category_t category, const std::string& text, bool recursive = false) {
    ASSERT_TRUE(m_container->add_search_dir(category, text.c_str(), recursive, false));
  }
  entries_t entries(search_category_t category) const { return m_container->get_entries(category); }
  bool save() {
    bool result = false;
    m_boxes = boxes_of([&] { result = m_panel->save_dirs(); });
    return result;
  }

  struct type_record_t : korvat2::subscriber_base_t {
    void on_type(int type) { m_types.push_back(type); }
    std::vector<int> m_types;
  } m_types;
  std::vector<box_t> m_boxes;
};

TEST_F(search_dirs_panel_test, source_files_are_shown_first_whatever_the_container_holds) {
  add(binaries, "/opt/bin");
  add(sources, "/opt/src", true);
  open();
  EXPECT_EQ(m_panel->get_file_type(), 2);
  EXPECT_EQ(m_panel->m_comboBox4->GetSelection(), 2);
  EXPECT_EQ(m_panel->m_comboBox4->GetCount(), 4u);
  EXPECT_EQ(m_panel->m_comboBox4->GetString(2).utf8_string(), text_of("panel.search_dirs.type_sources"));
  EXPECT_EQ(rows(), std::vector<std::string>{"/opt/src"});
  EXPECT_EQ(ticks(), std::vector<int>{csTicked});
}

TEST_F(search_dirs_panel_test, the_four_categories_are_read_into_four_lists) {
  add(binaries, "/b1");
  add(binaries, "/b2", true);
  add(symbols, "/y1");
  add(other, "/o1", true);
  open();
  ASSERT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_0).size(), 2u);
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_0)[1].m_path.as_string(), "/b2");
  EXPECT_TRUE(m_panel->get_dirs(search_dirs_panel_t::file_type_0)[1].m_recursive);
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_0)[1].m_type, search_dirs_panel_t::file_type_0);
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_0)[1].m_status, 1);  // doesn't exist
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_1).size(), 1u);
  EXPECT_TRUE(m_panel->get_dirs(search_dirs_panel_t::file_type_2).empty());
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_3)[0].m_type, search_dirs_panel_t::file_type_3);
  choose_type(0);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/b1", "/b2"}));
  EXPECT_EQ(ticks(), (std::vector<int>{csClear, csTicked}));
}

TEST_F(search_dirs_panel_test, a_typed_row_with_its_tick_is_saved_with_the_flag_handed_on) {
  open(true);
  const std::string path = dir("src");
  add_row(path);
  ASSERT_EQ(rows(), std::vector<std::string>{path});
  click_tick(0);
  ASSERT_EQ(ticks(), std::vector<int>{csTicked});
  EXPECT_TRUE(save());
  EXPECT_TRUE(m_boxes.empty());
  EXPECT_EQ(entries(sources), (entries_t{{path, true, true}}));
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_status, 0);
}

TEST_F(search_dirs_panel_test, a_row_whose_tick_was_never_set_is_saved_as_not_recursive) {
  open();
  const std::string path = dir("plain");
  add_row(path);
  ASSERT_EQ(ticks(), std::vector<int>{csUnset});
  EXPECT_TRUE(save());
  EXPECT_EQ(entries(sources), (entries_t{{path, false, false}}));
}

TEST_F(search_dirs_panel_test, a_type_change_kept_twice_reaches_the_container_only_at_the_save) {
  add(binaries, "/keep/bin");
  open();
  const std::string source = dir("source");
  add_row(source);
  choose_type(0);
  EXPECT_EQ(rows(), std::vector<std::string>{"/keep/bin"});
  const std::string binary = dir("binary");
  add_row(binary);
  choose_type(3);
  EXPECT_TRUE(rows().empty());
  EXPECT_EQ(m_types.m_types, (std::vector<int>{0, 3}));
  // Nothing reached the container yet.
  EXPECT_TRUE(entries(sources).empty());
  EXPECT_EQ(entries(binaries), (entries_t{{"/keep/bin", false, false}}));
  choose_type(2);
  EXPECT_EQ(rows(), std::vector<std::string>{source});
  choose_type(0);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/keep/bin", binary}));
  EXPECT_TRUE(save());
  EXPECT_EQ(entries(binaries), (entries_t{{"/keep/bin", false, false}, {binary, false, false}}));
  EXPECT_EQ(entries(sources), (entries_t{{source, false, false}}));
}

TEST_F(search_dirs_panel_test, a_tick_is_kept_through_a_type_change) {
  open();
  const std::string path = dir("ticked");
  add_row(path);
  click_tick(0);
  choose_type(1);
  choose_type(2);
  EXPECT_EQ(rows(), std::vector<std::string>{path});
  EXPECT_EQ(ticks(), std::vector<int>{csTicked});
  EXPECT_TRUE(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_recursive);
}

TEST_F(search_dirs_panel_test, choosing_the_shown_type_again_changes_nothing) {
  open();
  choose_type(2);
  EXPECT_TRUE(m_types.m_types.empty());
}

TEST_F(search_dirs_panel_test, a_selection_outside_the_four_types_refills_the_old_list) {
  add(sources, "/s1");
  open();
  const std::string typed = dir("typed");
  add_row(typed);
  choose_type(wxNOT_FOUND);
  EXPECT_EQ(m_panel->get_file_type(), 2);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/s1", typed}));
  EXPECT_EQ(m_types.m_types, std::vector<int>{2});
}

TEST_F(search_dirs_panel_test, rows_without_an_absolute_path_are_dropped_with_one_box_a_pass) {
  open();
  const std::string good = dir("good");
  add_row("relative/one");
  add_row(good);
  add_row("relative/two");
  EXPECT_TRUE(save());
  ASSERT_EQ(m_boxes.size(), 1u);
  EXPECT_EQ(m_boxes[0].main, flat_text("panel.search_dirs.main_not_a_dir"));
  EXPECT_EQ(m_boxes[0].details, flat(text_of("panel.search_dirs.details_not_a_dir") + "\n\nrelative/one"));
  EXPECT_EQ(entries(sources), (entries_t{{good, false, false}}));
  EXPECT_EQ(rows(), std::vector<std::string>{good});
  // The next pass warns again.
  add_row("relative/three");
  EXPECT_TRUE(save());
  EXPECT_EQ(m_boxes.size(), 1u);
}

TEST_F(search_dirs_panel_test, an_emptied_row_stays_until_the_save_drops_it_with_the_box) {
  const std::string kept = dir("kept");
  add(sources, "/will/be/emptied");
  add(sources, kept);
  open();
  edit_row(0, "");
  EXPECT_EQ(rows(), (std::vector<std::string>{"", kept}));
  EXPECT_TRUE(save());
  ASSERT_EQ(m_boxes.size(), 1u);
  EXPECT_EQ(m_boxes[0].details, flat(text_of("panel.search_dirs.details_not_a_dir") + "\n\n"));
  EXPECT_EQ(rows(), std::vector<std::string>{kept});
  EXPECT_EQ(entries(sources), (entries_t{{kept, false, false}}));
}

TEST_F(search_dirs_panel_test, a_trailing_blank_is_cut_and_a_missing_folder_is_kept_in_silence) {
  open();
  add_row("/no/such/folder/anywhere ");
  EXPECT_TRUE(save());
  EXPECT_TRUE(m_boxes.empty());
  EXPECT_EQ(entries(sources), (entries_t{{"/no/such/folder/anywhere", false, false}}));
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_status, 1);
}

TEST_F(search_dirs_panel_test, a_container_refusing_category_2_leaves_3_and_4_as_they_were) {
  auto refusing = test_support::refusing_search_dir_container_t::create("/refused");
  refusing->add_search_dir(sources, "/old/src", false, false);
  refusing->add_search_dir(other, "/old/other", true, false);
  refusing->add_search_dir(symbols, "/old/sym", false, false);
  open_over(refusing);
  add_row("/new/src");  // category 3, never written
  choose_type(1);
  add_row("/refused");
  choose_type(0);
  add_row("/new/bin");
  bool result = true;
  const std::vector<box_t> boxes = boxes_of([&] { result = m_panel->save_dirs(); });
  EXPECT_FALSE(result);
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].main, flat_text("panel.search_dirs.cannot_save"));
  EXPECT_EQ(boxes[0].details, flat_text("panel.search_dirs.cannot_save_details"));
  EXPECT_EQ(refusing->get_entries(binaries), (entries_t{{"/new/bin", false, false}}));
  // Category 2 cleared up to what it accepted.
  EXPECT_EQ(refusing->get_entries(symbols), (entries_t{{"/old/sym", false, false}}));
  EXPECT_EQ(refusing->get_entries(sources), (entries_t{{"/old/src", false, false}}));
  EXPECT_EQ(refusing->get_entries(other), (entries_t{{"/old/other", true, false}}));
  // The grid still shows the list as it was meant to be saved.
  EXPECT_EQ(rows(), std::vector<std::string>{"/new/bin"});
}

TEST_F(search_dirs_panel_test, only_the_answer_for_the_last_directory_of_a_category_counts) {
  auto refusing = test_support::refusing_search_dir_container_t::create("/refused");
  open_over(refusing);
  add_row("/refused");
  add_row("/accepted");
  bool result = false;
  const std::vector<box_t> boxes = boxes_of([&] { result = m_panel->save_dirs(); });
  EXPECT_TRUE(result);
  EXPECT_TRUE(boxes.empty());
  EXPECT_EQ(refusing->refusals(), 1);
  EXPECT_EQ(refusing->get_entries(sources), (entries_t{{"/accepted", false, false}}));
}

TEST_F(search_dirs_panel_test, without_a_container_nothing_is_read_and_saving_succeeds) {
  open_over(HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer>());
  EXPECT_TRUE(rows().empty());
  add_row("/some/dir");
  EXPECT_TRUE(save());
  EXPECT_EQ(rows(), std::vector<std::string>{"/some/dir"});
}

TEST_F(search_dirs_panel_test, up_down_and_remove_buttons_move_and_drop_the_current_row) {
  add(sources, "/a");
  add(sources, "/b");
  add(sources, "/c");
  open();
  grid()->SetCurrentRow(1);
  gui_test::click(m_panel->m_bpButton1);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/b", "/a", "/c"}));
  EXPECT_EQ(grid()->GetCurrentRow(), 0);
  gui_test::click(m_panel->m_bpButton2);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/a", "/b", "/c"}));
  EXPECT_EQ(grid()->GetCurrentRow(), 1);
  gui_test::click(m_panel->m_bpButton3);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/a", "/c"}));
  EXPECT_EQ(grid()->GetCurrentRow(), 0);
  // On the last line the buttons do nothing.
  grid()->SetCurrentRow(2);
  gui_test::click(m_panel->m_bpButton3);
  gui_test::click(m_panel->m_bpButton1);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/a", "/c"}));
  EXPECT_TRUE(save());
  EXPECT_EQ(entries(sources), (entries_t{{"/a", false, false}, {"/c", false, false}}));
}

TEST_F(search_dirs_panel_test, the_grid_has_both_headers_and_the_hint_of_the_catalog) {
  open();
  EXPECT_EQ(model()->getLastLineText(), text_of("panel.search_dirs.last_line"));
  EXPECT_EQ(grid()->GetMorePropertyEditor().m_restricted_symbols, tamsel3::directory_disabled_chars);
}

TEST_F(search_dirs_panel_test, an_updated_text_sets_only_the_status_of_its_entry) {
  const std::string existing = dir("exists");
  add(sources, "/missing/dir");
  open();
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_status, 1);
  m_panel->on_dir_updated(0, existing);
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_status, 0);
  EXPECT_EQ(m_panel->get_dirs(search_dirs_panel_t::file_type_2)[0].m_path.as_string(), "/missing/dir");
}

TEST_F(search_dirs_panel_test, the_grid_window_is_set_up_to_keep_its_editors_and_keys) {
  open();
  const long style = m_panel->m_panel8->GetWindowStyleFlag();
  EXPECT_TRUE(style & wxCLIP_CHILDREN);
  EXPECT_TRUE(style & wxWANTS_CHARS);
  EXPECT_TRUE(style & wxBORDER_SUNKEN);
}

TEST_F(search_dirs_panel_test, a_folder_chosen_with_the_more_button_on_the_last_line_adds_a_row) {
  add(sources, "/a");
  open();
  const std::string chosen = dir("chosen");
  gui_test::answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
    dialog.wxDirDialogBase::SetPath(wxString::FromUTF8(chosen));
    return wxID_OK;
  });
  ASSERT_TRUE(open_editor(1));
  click_more_button();
  EXPECT_EQ(answer.m_calls, 1);
  EXPECT_EQ(rows(), (std::vector<std::string>{"/a", chosen}));
  EXPECT_TRUE(save());
  EXPECT_EQ(entries(sources), (entries_t{{"/a", false, false}, {chosen, false, false}}));
}

TEST_F(search_dirs_panel_test, a_cancelled_folder_dialog_leaves_the_row_as_it_was) {
  add(sources, "/a");
  open();
  gui_test::answer_t<wxDirDialog> answer([&](wxDirDialog&) { return wxID_CANCEL; });
  ASSERT_TRUE(open_editor(0));
  click_more_button();
  EXPECT_EQ(answer.m_calls, 1);
  EXPECT_EQ(rows(), std::vector<std::string>{"/a"});
}

}  // namespace
