#include "fixtures.h"
#include "gui_test.h"
#include "modal_answer.h"

#include <fathel2/result_directory_manager.h>
#include <korvat2/system.h>
#include <plaxi1/modal.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <quern2/product_locations.h>
#include <tamsel3/char_rules.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/result_saving_pp.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/dirdlg.h>
#include <wx/frame.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using tamsel3::result_saving_data_t;
using tamsel3::result_saving_pp_t;
using varg_list = ZANDOR_2_16::generic::varg_list;

std::string text_of(const std::string& key) { return tamsel3::translate_message(key, varg_list()); }

std::string advice() {
  return tamsel3::translate_message(
      "pref.result_saving.wrong_input_advice",
      varg_list(ZANDOR_2_16::generic::argument("product_name", std::string("Tamsel"))));
}

std::string fathel2_text_no_number() { return fathel2::toString(fathel2::error_no_number); }
std::string fathel2_text_empty() { return fathel2::toString(fathel2::error_empty); }

result_saving_data_t sample_data() {
  result_saving_data_t data(static_cast<result_saving_data_t::temp_storing_t>(2),
                            result_saving_data_t::proj_storing_on_disk, false, "r@@@{at}", "/tmp/results");
  data.set_proj_default_folder("/home/ann/projects/render");
  return data;
}

// The page with its controls in reach, and its warnings kept instead of shown.
class page_t : public result_saving_pp_t {
 public:
  using result_saving_pp_t::m_button28;
  using result_saving_pp_t::m_checkBox7;
  using result_saving_pp_t::m_example_text;
  using result_saving_pp_t::m_radioBtn13;
  using result_saving_pp_t::m_radioBtn14;
  using result_saving_pp_t::m_staticText14;
  using result_saving_pp_t::m_staticText74;
  using result_saving_pp_t::m_staticText8;
  using result_saving_pp_t::m_text_proj_default_folder;
  using result_saving_pp_t::m_textCtrl14;
  using result_saving_pp_t::m_textCtrl16;
  using result_saving_pp_t::result_saving_pp_t;

  mutable std::vector<std::pair<std::string, std::string>> m_warnings;
  bool m_keep_warnings = true;

  void show_warning_message(const std::string& title, const std::string& text) const override {
    if (m_keep_warnings) {
      m_warnings.emplace_back(title, text);
    } else {
      result_saving_pp_t::show_warning_message(title, text);
    }
  }
};

// Product locations of a host whose generation is 11.
class product_2011_t : public quern2::IProductLocations {
 public:
  const char* getResourceDirectory() const override { return m_default.getResourceDirectory(); }
  const char* getProductText(int kind) const override { return m_default.getProductText(kind); }
  const char* getFeaturesDirectory() const override { return m_default.getFeaturesDirectory(); }
  const char* getProductTag() const override { return "tam"; }
  int getProductGeneration() const override { return 11; }

 private:
  quern2::DefaultProductLocations m_default;
};

class result_saving_pp_test : public ::testing::Test {
 protected:
  void TearDown() override {
    if (m_frame) {
      m_frame->Destroy();
    }
    gui_test::pump();
  }

  void open(int flags, const result_saving_data_t& data = sample_data()) {
    m_frame = new wxFrame(nullptr, wxID_ANY, "result saving", wxDefaultPosition, wxSize(640, 480));
    m_page = new page_t(data, flags);
    m_page->create(m_frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_page, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
    gui_test::pump();
    m_field = m_page->m_textCtrl14;
    ASSERT_NE(m_field, nullptr);
  }
  void open_all() { open(31); }

  // Types `text` at `pos` in one edit, as a key press or a paste does, and lets the page
  // judge it.
  void type_at(wxTextCtrl* field, long pos, const std::string& text) {
    field->SetInsertionPoint(pos);
    field->WriteText(wxString::FromUTF8(text));
    gui_test::pump();
  }
  void type_keys(wxTextCtrl* field, const std::string& keys) {
    for (char key : keys) {
      type_at(field, field->GetLastPosition(), std::string(1, key));
    }
  }
  void replace_text(wxTextCtrl* field, const std::string& text) {
    field->SetValue(wxString::FromUTF8(text));
    gui_test::pump();
  }
  std::string value(wxTextCtrl* field) const { return field->GetValue().utf8_string(); }
  static std::string tooltip(wxWindow* window) {
    const plaxi1::wxCustomTooltip* tip = plaxi1::GetTooltip(window);
    return tip ? tip->GetText() : std::string();
  }
  static bool red(wxWindow* window) { return window->GetForegroundColour() == *wxRED; }
  static bool normal(wxWindow* window) {
    return window->GetForegroundColour() == plaxi1::ui_settings_t::get()->get_color(plaxi1::color_text);
  }
  static std::string forbidden_list() {
    return tamsel3::get_disabled_tooltip_text(text_of("restricted_symbols_message"),
                                              tamsel3::file_disabled_chars, true);
  }
  void press_ok() {
    gui_test::click(m_page, "m_btn_ok");
    gui_test::pump();
  }

  wxFrame* m_frame = nullptr;
  page_t* m_page = nullptr;
  wxTextCtrl* m_field = nullptr;
};

TEST_F(result_saving_pp_test, typing_a_good_template_keeps_it_plain) {
  open_all();
  m_field->Clear();
  gui_test::pump();
  type_keys(m_field, "r@@@");
  EXPECT_EQ(value(m_field), "r@@@");
  EXPECT_EQ(m_field->GetInsertionPoint(), 4);
  EXPECT_TRUE(normal(m_field));
  EXPECT_EQ(tooltip(m_field), "");
}

TEST_F(result_saving_pp_test, ninth_at_in_a_run_is_cut_with_the_ats_tooltip_and_caret_back) {
  open_all();
  replace_text(m_field, "r@@@@@@@@x");
  type_at(m_field, 5, "@");
  EXPECT_EQ(value(m_field), "r@@@@@@@@x");
  EXPECT_EQ(m_field->GetInsertionPoint(), 5);  // one left of where the typed "@" put it
  EXPECT_TRUE(red(m_field));
  EXPECT_EQ(tooltip(m_field), text_of("pref.result_saving.restricted_ats_message"));
  // The warning stays until the next pass, which a good edit clears.
  type_at(m_field, 10, "y");
  EXPECT_EQ(value(m_field), "r@@@@@@@@xy");
  EXPECT_TRUE(normal(m_field));
  EXPECT_EQ(tooltip(m_field), "");
}

TEST_F(result_saving_pp_test, ninth_at_at_the_end_steps_back_to_the_end) {
  open_all();
  replace_text(m_field, "r@@@@@@@@");
  type_at(m_field, 9, "@");
  EXPECT_EQ(value(m_field), "r@@@@@@@@");
  EXPECT_EQ(m_field->GetInsertionPoint(), 9);
}

TEST_F(result_saving_pp_test, stray_ats_are_removed_while_typing) {
  open_all();
  replace_text(m_field, "ab@@cd@@ef");
  EXPECT_EQ(value(m_field), "ab@@cdef");
  EXPECT_EQ(tooltip(m_field), text_of("pref.result_saving.restricted_ats_message"));
  replace_text(m_field, "@a@b@");
  EXPECT_EQ(value(m_field), "@ab");
}

TEST_F(result_saving_pp_test, pasted_forbidden_characters_go_with_one_step_back) {
  open_all();
  replace_text(m_field, "xy");
  type_at(m_field, 1, "a/b@");
  EXPECT_EQ(value(m_field), "xab@y");
  // The paste left the caret at 5; one step back, though two characters went.
  EXPECT_EQ(m_field->GetInsertionPoint(), 4);
  EXPECT_TRUE(red(m_field));
  EXPECT_EQ(tooltip(m_field), forbidden_list());
}

TEST_F(result_saving_pp_test, paste_into_an_empty_field_keeps_what_is_allowed) {
  open_all();
  m_field->Clear();
  gui_test::pump();
  type_at(m_field, 0, "a/b@");
  EXPECT_EQ(value(m_field), "ab@");
  EXPECT_EQ(m_field->GetInsertionPoint(), 3);
  EXPECT_EQ(tooltip(m_field), forbidden_list());
}

TEST_F(result_saving_pp_test, template_refused_by_the_validator_is_red_with_its_reason) {
  open_all();
  replace_text(m_field, "results");
  EXPECT_EQ(value(m_field), "results");
  EXPECT_TRUE(red(m_field));
  EXPECT_EQ(tooltip(m_field), fathel2_text_no_number());
  type_at(m_field, 7, "@");
  EXPECT_TRUE(normal(m_field));
  EXPECT_EQ(tooltip(m_field), "");
  EXPECT_EQ(m_field->GetInsertionPoint(), 8);
}

TEST_F(result_saving_pp_test, empty_template_on_ok_becomes_the_default_with_a_warning) {
  open_all();
  m_field->Clear();
  gui_test::pump();
  press_ok();
  EXPECT_EQ(m_page->get_data().get_name_template(), "r@@@{at}");
  ASSERT_EQ(m_page->m_warnings.size(), 1u);
  EXPECT_EQ(m_page->m_warnings[0].first, text_of("pref.result_saving.wrong_result_templ"));
  EXPECT_EQ(m_page->m_warnings[0].second, fathel2_text_empty() + "\n\n" + advice());
}

TEST_F(result_saving_pp_test, ok_in_the_same_turn_as_typing_stores_the_folder_that_the_field_shows) {
  open_all();
  replace_text(m_page->m_textCtrl16, "/tmp/results");
  m_page->m_textCtrl16->SetInsertionPoint(4);
  m_page->m_textCtrl16->WriteText("|");
  press_ok();  // before the loop turned once more
  EXPECT_EQ(value(m_page->m_textCtrl16), "/tmp/results");
  EXPECT_EQ(m_page->get_data().get_folder(), "/tmp/results");
  EXPECT_TRUE(m_page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, ok_in_the_same_turn_as_typing_stores_the_template_that_the_field_shows) {
  open_all();
  replace_text(m_field, "run@@");
  m_field->SetInsertionPoint(3);
  m_field->WriteText("|");
  press_ok();
  EXPECT_EQ(value(m_field), "run@@");
  EXPECT_EQ(m_page->get_data().get_name_template(), "run@@");
  // The field said it at once, as after a turn of the loop; OK has nothing left to mend.
  EXPECT_TRUE(m_page->m_warnings.empty());
  EXPECT_EQ(tooltip(m_field), forbidden_list());
}

TEST_F(result_saving_pp_test, trailing_blank_is_cut_without_a_warning) {
  open_all();
  replace_text(m_field, "run@@ ");
  EXPECT_TRUE(normal(m_field));
  press_ok();
  EXPECT_EQ(m_page->get_data().get_name_template(), "run@@");
  EXPECT_TRUE(m_page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, bad_directory_becomes_the_temporary_folder_with_its_warning) {
  open_all();
  replace_text(m_page->m_textCtrl16, "relative/results");
  EXPECT_TRUE(red(m_page->m_textCtrl16));
  press_ok();
  EXPECT_EQ(m_page->get_data().get_folder(), korvat2::stdpaths::get_temp_dir().as_string(false));
  EXPECT_EQ(value(m_page->m_textCtrl16), "relative/results");  // the field stays as typed
  ASSERT_EQ(m_page->m_warnings.size(), 1u);
  EXPECT_EQ(m_page->m_warnings[0].first, text_of("pref.result_saving.wrong_result_dir"));
  EXPECT_EQ(m_page->m_warnings[0].second,
            text_of("pref.result_saving.wrong_result_dir_details") + "\n\n" + advice());
}

TEST_F(result_saving_pp_test, bad_template_and_bad_directory_give_one_warning_and_both_are_mended) {
  open_all();
  replace_text(m_field, "results");
  replace_text(m_page->m_textCtrl16, "relative/results");
  press_ok();
  EXPECT_EQ(m_page->get_data().get_name_template(), "r@@@{at}");
  EXPECT_EQ(m_page->get_data().get_folder(), korvat2::stdpaths::get_temp_dir().as_string(false));
  ASSERT_EQ(m_page->m_warnings.size(), 1u);
  EXPECT_EQ(m_page->m_warnings[0].first, text_of("pref.result_saving.wrong_result_templ"));
  EXPECT_EQ(m_page->m_warnings[0].second, fathel2_text_no_number() + "\n\n" + advice());
}

TEST_F(result_saving_pp_test, without_the_storage_group_a_bad_directory_is_stored_as_typed) {
  open(result_saving_pp_t::show_name | result_saving_pp_t::show_vs_accessibility);
  replace_text(m_page->m_textCtrl16, "relative/results  ");
  press_ok();
  EXPECT_EQ(m_page->get_data().get_folder(), "relative/results");
  EXPECT_TRUE(m_page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, disabled_directory_is_stored_as_it_stands) {
  open_all();
  replace_text(m_page->m_textCtrl16, "relative/results");
  m_page->m_radioBtn13->SetValue(true);
  wxCommandEvent chosen(wxEVT_RADIOBUTTON, m_page->m_radioBtn13->GetId());
  chosen.SetEventObject(m_page->m_radioBtn13);
  m_page->m_radioBtn13->GetEventHandler()->ProcessEvent(chosen);
  EXPECT_FALSE(m_page->m_textCtrl16->IsEnabled());
  EXPECT_FALSE(m_page->m_button28->IsEnabled());
  press_ok();
  EXPECT_EQ(m_page->get_data().get_folder(), "relative/results");
  EXPECT_EQ(m_page->get_data().get_proj_storing(), result_saving_data_t::proj_storing_in_project);
  EXPECT_TRUE(m_page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, ok_stores_check_box_and_choice_after_the_warning) {
  open_all();
  m_field->Clear();
  m_page->m_checkBox7->SetValue(true);
  gui_test::pump();
  press_ok();
  EXPECT_EQ(m_page->m_warnings.size(), 1u);
  EXPECT_TRUE(m_page->get_data().get_vs_accessibility());
  EXPECT_EQ(m_page->get_data().get_proj_storing(), result_saving_data_t::proj_storing_on_disk);
  EXPECT_EQ(m_page->get_data().get_temp_storing(), 2);
}

TEST_F(result_saving_pp_test, warning_is_a_message_box_with_the_warning_icon) {
  open_all();
  m_page->m_keep_warnings = false;
  std::vector<tamsel3::message_window_t> shown;
  const plaxi1::modal_callback_t previous = plaxi1::set_modal_callback([&shown](wxDialog* dialog) {
    if (auto* message = dynamic_cast<tamsel3::error_warning_dialog_t*>(dialog)) {
      shown.push_back(message->get_panel()->get_window_data());
    }
    return wxID_OK;
  });
  m_field->Clear();
  gui_test::pump();
  press_ok();
  plaxi1::set_modal_callback(previous);
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].m_main_message, text_of("pref.result_saving.wrong_result_templ"));
  EXPECT_EQ(shown[0].m_icon_type, tamsel3::message_window_t::icon_warning);
}

TEST_F(result_saving_pp_test, cancel_leaves_the_data_as_given) {
  open_all();
  replace_text(m_field, "other@@");
  replace_text(m_page->m_textCtrl16, "/tmp/elsewhere");
  m_page->m_checkBox7->SetValue(true);
  gui_test::click(m_page, "m_btn_cancel");
  gui_test::pump();
  const result_saving_data_t data = m_page->get_data();
  EXPECT_EQ(data.get_name_template(), "r@@@{at}");
  EXPECT_EQ(data.get_folder(), "/tmp/results");
  EXPECT_FALSE(data.get_vs_accessibility());
  EXPECT_EQ(data.get_proj_default_folder(), "/home/ann/projects/render");
  EXPECT_TRUE(m_page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, generation_11_takes_the_2011_explanation_but_not_the_example) {
  product_2011_t product;
  quern2::IProductLocations::set(&product);
  open_all();
  quern2::IProductLocations::set(nullptr);
  const std::string explanation = text_of("pref.result_saving.at_explanation_tam_2011");
  const std::string& example = m_page->m_example_text;
  ASSERT_GE(example.size(), explanation.size());
  EXPECT_EQ(example.substr(example.size() - explanation.size()), explanation);
  EXPECT_NE(example.find(text_of("pref.result_saving.at_example_tam")), std::string::npos);
}

TEST_F(result_saving_pp_test, other_generations_take_the_plain_explanation) {
  open_all();
  const std::string explanation = text_of("pref.result_saving.at_explanation_tam");
  const std::string& example = m_page->m_example_text;
  EXPECT_EQ(example.substr(example.size() - explanation.size()), explanation);
  EXPECT_NE(example.find("r@@@{at}"), std::string::npos);
  EXPECT_NE(example.find(".tam"), std::string::npos);
}

TEST_F(result_saving_pp_test, flags_show_only_the_name_group) {
  open(result_saving_pp_t::show_name);
  EXPECT_TRUE(m_page->m_textCtrl14->IsShown());
  EXPECT_TRUE(m_page->m_staticText74->IsShown());
  EXPECT_TRUE(m_page->m_staticText14->IsShown());
  const std::vector<wxWindow*> hidden_ones = {m_page->m_staticText8,
                                              m_page->m_radioBtn13,
                                              m_page->m_radioBtn14,
                                              m_page->m_textCtrl16,
                                              m_page->m_button28,
                                              m_page->m_checkBox7,
                                              m_page->m_text_proj_default_folder};
  for (wxWindow* hidden : hidden_ones) {
    EXPECT_FALSE(hidden->IsShown()) << hidden->GetName();
  }
}

TEST_F(result_saving_pp_test, all_flags_show_everything_with_the_project_folder_label) {
  open_all();
  EXPECT_TRUE(m_page->m_checkBox7->IsShown());
  EXPECT_TRUE(m_page->m_text_proj_default_folder->IsShown());
  EXPECT_EQ(m_page->m_text_proj_default_folder->GetLabel(), "/home/ann/projects/render");
  EXPECT_EQ(m_page->m_radioBtn13->GetLabel().utf8_string(), text_of("pref.result_saving.curr_project_dir"));
  EXPECT_TRUE(m_page->m_radioBtn14->GetValue());
  EXPECT_TRUE(m_page->m_textCtrl16->IsEnabled());
}

TEST_F(result_saving_pp_test, check_box_needs_the_storage_group) {
  open(result_saving_pp_t::show_name | result_saving_pp_t::show_storage);
  EXPECT_FALSE(m_page->m_checkBox7->IsShown());
  EXPECT_TRUE(m_page->m_textCtrl16->IsShown());
  EXPECT_FALSE(m_page->m_text_proj_default_folder->IsShown());
  EXPECT_EQ(m_page->m_radioBtn13->GetLabel().utf8_string(), text_of("pref.result_saving.in_project"));
}

// The page in a modal dialog, as a host shows it: browse opens the folder dialog over it,
// the user picks a folder inside that dialog's own loop, and the field takes it.
TEST_F(result_saving_pp_test, browse_inside_a_modal_dialog_puts_the_chosen_folder_in_the_field) {
  test_support::temp_dir_t folder;
  const std::string chosen = folder.path();
  wxDialog host(nullptr, wxID_ANY, "settings", wxDefaultPosition, wxSize(640, 480));
  auto* page = new page_t(sample_data(), 31);
  page->create(&host);
  gui_test::on_next_modal([&](wxDialog&) {
    gui_test::answer_in_loop_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
      EXPECT_TRUE(dialog.IsModal());
      // What wxGTK keeps when the user accepts a folder.
      dialog.wxDirDialogBase::SetPath(wxString::FromUTF8(chosen));
      dialog.EndModal(wxID_OK);
    });
    gui_test::click(page->m_button28);
    EXPECT_EQ(answer.m_calls, 1);
    EXPECT_EQ(page->m_textCtrl16->GetValue().utf8_string(), chosen);
    gui_test::pump();
    EXPECT_TRUE(normal(page->m_textCtrl16));
    EXPECT_EQ(tooltip(page->m_textCtrl16), "");
    gui_test::click(page, "m_btn_ok");
    host.EndModal(wxID_OK);
  });
  EXPECT_EQ(host.ShowModal(), wxID_OK);
  EXPECT_EQ(page->m_textCtrl16->GetValue().utf8_string(), chosen);
  EXPECT_EQ(page->get_data().get_folder(), chosen);
  EXPECT_TRUE(page->m_warnings.empty());
}

TEST_F(result_saving_pp_test, bool_constructor_always_adds_the_check_box_bit) {
  m_frame = new wxFrame(nullptr, wxID_ANY, "result saving");
  auto* page = new page_t(sample_data(), false, true);
  page->create(m_frame);
  gui_test::pump();
  EXPECT_FALSE(page->m_textCtrl14->IsShown());
  EXPECT_TRUE(page->m_checkBox7->IsShown());
}

}  // namespace
