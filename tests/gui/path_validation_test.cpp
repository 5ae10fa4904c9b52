#include "fixtures.h"
#include "folder_locations.h"
#include "gui_test.h"

#include <korvat2/signal.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>
#include <tamsel3/char_rules.h>
#include <tamsel3/path_validation.h>
#include <tamsel3/pref_base.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

std::string text_of(const char* key) {
  return tamsel3::translate_message(key, ZANDOR_2_16::generic::varg_list());
}

// A page with one path field, checked on each change in the way that a test chooses.
class path_page_t : public tamsel3::pref_base_t {
 public:
  wxTextCtrl* m_field = nullptr;
  using tamsel3::pref_base_t::m_path_candidates;

  bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                              const std::string&) override {
    Create(parent, wxID_ANY);
    m_field = new wxTextCtrl(this, wxID_ANY);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_field, 0, wxEXPAND);
    SetSizer(sizer);
    return true;
  }
};

// Hears the outcomes of the page's path checks.
struct outcomes_t : korvat2::subscriber_base_t {
  std::vector<bool> m_seen;
  void on_checked(bool ok) { m_seen.push_back(ok); }
};

class path_validation_test : public ::testing::Test {
 protected:
  void SetUp() override { open(); }
  void open() {
    m_frame = new wxFrame(nullptr, wxID_ANY, "path", wxDefaultPosition, wxSize(400, 120));
    m_page = new path_page_t;
    m_page->create(m_frame);
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
    m_field = m_page->m_field;
    m_page->m_path_checked_signal.connect(&m_outcomes, &outcomes_t::on_checked);
  }
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }

  // Each change of the field is checked as the result saving page checks its folder:
  // once the toolkit has finished the edit and placed its caret.
  void check_on_change(bool only_form) {
    m_field->Bind(wxEVT_TEXT, [this, only_form](wxCommandEvent&) {
      m_page->CallAfter([this, only_form] {
        if (only_form) {
          m_form_ok = tamsel3::validate_path(m_field, true, tamsel3::folder_disabled_chars);
        } else {
          m_page->check_file_or_folder(m_field, false, true, false);
        }
      });
    });
  }
  // Types `text` at `pos` in one edit, as a key press or a paste does.
  void type_at(long pos, const std::string& text) {
    m_field->SetInsertionPoint(pos);
    m_field->WriteText(wxString::FromUTF8(text));
    gui_test::pump();
  }
  std::string value() const { return m_field->GetValue().utf8_string(); }
  std::string tooltip() const {
    const plaxi1::wxCustomTooltip* tip = plaxi1::GetTooltip(m_field);
    return tip ? tip->GetText() : std::string();
  }
  bool red() const { return m_field->GetForegroundColour() == *wxRED; }
  bool normal() const {
    return m_field->GetForegroundColour() == plaxi1::ui_settings_t::get()->get_color(plaxi1::color_text);
  }
  static std::string forbidden_list() {
    return tamsel3::get_disabled_tooltip_text(text_of("restricted_symbols_message"),
                                              tamsel3::folder_disabled_chars, true);
  }
  static std::string message(const char* key) {
    return text_of(key) + " " + text_of("path.enter_valid_path");
  }

  wxFrame* m_frame = nullptr;
  path_page_t* m_page = nullptr;
  wxTextCtrl* m_field = nullptr;
  outcomes_t m_outcomes;
  bool m_form_ok = false;
};

TEST_F(path_validation_test, asterisk_typed_into_a_path_goes_and_the_caret_steps_back) {
  m_field->ChangeValue("/tmp/a");
  check_on_change(true);
  type_at(4, "*");
  EXPECT_EQ(value(), "/tmp/a");
  EXPECT_EQ(m_field->GetInsertionPoint(), 4);
  EXPECT_TRUE(m_form_ok);
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), forbidden_list());
  // The full check judges the path that is left, which is good.
  EXPECT_TRUE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_EQ(tooltip(), "");
  EXPECT_TRUE(normal());
}

TEST_F(path_validation_test, pasted_forbidden_characters_go_with_one_step_back) {
  m_field->ChangeValue("/tmp/abcdef");
  check_on_change(true);
  type_at(6, "<x>|");
  EXPECT_EQ(value(), "/tmp/axbcdef");
  EXPECT_EQ(m_field->GetInsertionPoint(), 9);  // one back from the end of the paste
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), forbidden_list());
}

TEST_F(path_validation_test, good_path_typed_is_normal_without_tooltip) {
  check_on_change(true);
  type_at(0, "/tmp/results");
  EXPECT_TRUE(m_form_ok);
  EXPECT_TRUE(normal());
  EXPECT_EQ(tooltip(), "");
}

TEST_F(path_validation_test, relative_form_without_removal_shows_the_undefined_text) {
  check_on_change(true);
  type_at(0, "results");
  EXPECT_FALSE(m_form_ok);
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), text_of("pref.result_saving.undefined_tooltip_text"));
}

TEST_F(path_validation_test, removal_and_bad_form_give_both_texts) {
  check_on_change(true);
  type_at(0, "res|ults");
  EXPECT_EQ(value(), "results");
  EXPECT_FALSE(m_form_ok);
  EXPECT_EQ(tooltip(), forbidden_list() + "\n\n" + text_of("pref.result_saving.undefined_tooltip_text"));
}

TEST_F(path_validation_test, empty_field_is_a_good_form_in_red_but_no_acceptable_path) {
  EXPECT_TRUE(tamsel3::validate_path(m_field, true, tamsel3::folder_disabled_chars));
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), text_of("pref.result_saving.undefined_tooltip_text"));
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_EQ(tooltip(), message("path.empty_relative"));
  EXPECT_TRUE(normal());
}

TEST_F(path_validation_test, null_control_is_accepted) {
  EXPECT_TRUE(tamsel3::validate_path<wxTextCtrl>(nullptr, true, tamsel3::folder_disabled_chars));
}

TEST_F(path_validation_test, relative_path_without_search_fails_as_empty_or_relative) {
  check_on_change(false);
  type_at(0, "tmp/new");
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_EQ(tooltip(), message("path.empty_relative"));
  EXPECT_TRUE(red());
}

TEST_F(path_validation_test, relative_path_fails_even_where_the_search_finds_it) {
  // The search resolves it, but the form check wants an absolute path as typed.
  test_support::temp_dir_t dir;
  std::filesystem::create_directory(dir.file("tools"));
  m_page->m_path_candidates = {"not/absolute", dir.path()};
  m_field->ChangeValue("tools");
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, true, true, true));
  EXPECT_EQ(tooltip(), message("path.empty_relative"));
  m_field->ChangeValue(dir.file("tools"));
  EXPECT_TRUE(m_page->check_file_or_folder(m_field, true, true, true));
}

TEST_F(path_validation_test, new_folders_under_an_existing_one_pass_when_they_need_not_exist) {
  check_on_change(false);
  type_at(0, "/tmp/new/dir");
  EXPECT_TRUE(normal());
  EXPECT_EQ(tooltip(), "");
  EXPECT_TRUE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, true, true, false));
  EXPECT_EQ(tooltip(), message("path.nonexisting"));
  EXPECT_TRUE(red());
}

TEST_F(path_validation_test, reserved_component_fails_in_lower_case_too) {
  test_support::temp_dir_t dir;
  m_field->ChangeValue(dir.file("log/new"));
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_EQ(tooltip(), message("path.nonexisting_parent_dir"));
  EXPECT_TRUE(red());
  m_field->ChangeValue(dir.file("logs/new"));
  EXPECT_TRUE(m_page->check_file_or_folder(m_field, false, true, false));
}

TEST_F(path_validation_test, existing_ancestor_ends_the_walk_before_a_reserved_name_above) {
  test_support::temp_dir_t dir;
  std::filesystem::create_directories(dir.file("config/here"));
  m_field->ChangeValue(dir.file("config/here/new"));
  EXPECT_TRUE(m_page->check_file_or_folder(m_field, false, true, false));
}

TEST_F(path_validation_test, signal_fires_only_when_asked) {
  m_field->ChangeValue("/tmp");
  m_page->check_file_or_folder(m_field, true, false, false);
  EXPECT_TRUE(m_outcomes.m_seen.empty());
  m_page->check_file_or_folder(m_field, true, true, false);
  m_field->ChangeValue("rel");
  m_page->check_file_or_folder(m_field, true, true, false);
  EXPECT_EQ(m_outcomes.m_seen, (std::vector<bool>{true, false}));
}

// Resources without any catalog, for the life of the object.
class no_catalog_t {
 public:
  no_catalog_t() : m_locations(m_folder.path()) {
    quern2::IProductLocations::set(&m_locations);
    quern2::reloadMessageCatalogs();
  }
  ~no_catalog_t() {
    quern2::IProductLocations::set(nullptr);
    quern2::reloadMessageCatalogs();
  }

 private:
  test_support::temp_dir_t m_folder;
  gui_test::folder_locations_t m_locations;
};

// Without a catalog the texts are empty, but the field is cleaned and judged all the same.
class path_validation_without_catalog_test : public path_validation_test {
 protected:
  void SetUp() override {}
  void open_without_catalog() {
    ASSERT_EQ(quern2::getMessageCatalog("tamsel"), nullptr);
    open();
  }
  no_catalog_t m_no_catalog;
};

TEST_F(path_validation_without_catalog_test, forbidden_characters_still_go_and_the_list_names_them) {
  open_without_catalog();
  m_field->ChangeValue("/tmp/abc");
  check_on_change(true);
  type_at(6, "|");
  EXPECT_EQ(value(), "/tmp/abc");
  EXPECT_EQ(m_field->GetInsertionPoint(), 6);
  EXPECT_TRUE(m_form_ok);
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), tamsel3::folder_disabled_chars);
}

TEST_F(path_validation_without_catalog_test, relative_form_is_refused_with_an_empty_text) {
  open_without_catalog();
  check_on_change(true);
  type_at(0, "res|ults");
  EXPECT_EQ(value(), "results");
  EXPECT_FALSE(m_form_ok);
  EXPECT_EQ(tooltip(), tamsel3::folder_disabled_chars);
}

TEST_F(path_validation_without_catalog_test, full_check_marks_the_field_without_stray_blanks) {
  open_without_catalog();
  check_on_change(false);
  type_at(0, "/tmp/new|/dir");
  EXPECT_EQ(value(), "/tmp/new/dir");
  EXPECT_TRUE(normal());
  EXPECT_EQ(tooltip(), "");
  EXPECT_EQ(m_outcomes.m_seen, std::vector<bool>{true});
  m_field->ChangeValue("relative");
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_TRUE(red());
  EXPECT_EQ(tooltip(), "");
}

TEST_F(path_validation_without_catalog_test, empty_field_is_no_acceptable_path) {
  open_without_catalog();
  EXPECT_TRUE(tamsel3::validate_path(m_field, true, tamsel3::folder_disabled_chars));
  EXPECT_EQ(tooltip(), "");
  EXPECT_FALSE(m_page->check_file_or_folder(m_field, false, true, false));
  EXPECT_TRUE(normal());
  EXPECT_EQ(tooltip(), "");
}

}  // namespace
