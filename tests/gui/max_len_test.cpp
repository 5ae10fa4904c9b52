#include "gui_test.h"

#include <plaxi1/modal.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/pref_base.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace {

// A page whose fields are made in code: two at the top level, one a level further down.
class fields_page_t : public tamsel3::pref_base_t {
 public:
  wxTextCtrl* m_single = nullptr;
  wxTextCtrl* m_multi = nullptr;
  wxTextCtrl* m_nested = nullptr;

  using tamsel3::pref_base_t::on_max_len;
  using tamsel3::pref_base_t::set_max_len_options;

  bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                              const std::string&) override {
    Create(parent, wxID_ANY);
    m_single = new wxTextCtrl(this, wxID_ANY);
    m_multi = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxSize(200, 80), wxTE_MULTILINE);
    auto* inner = new wxPanel(this);
    m_nested = new wxTextCtrl(inner, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_MULTILINE);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_single, 0, wxEXPAND);
    sizer->Add(m_multi, 1, wxEXPAND);
    sizer->Add(inner, 1, wxEXPAND);
    SetSizer(sizer);
    return true;
  }
};

// Answers every message window instead of showing it, and keeps its texts.
class warnings_t {
 public:
  warnings_t()
      : m_previous(plaxi1::set_modal_callback([this](wxDialog* dialog) {
          if (auto* message = dynamic_cast<tamsel3::error_warning_dialog_t*>(dialog)) {
            const tamsel3::message_window_t data = message->get_panel()->get_window_data();
            m_main.push_back(data.m_main_message);
            m_supplemental.push_back(data.m_supplemental_message);
            m_icons.push_back(data.m_icon_type);
          }
          return wxID_CANCEL;
        })) {}
  ~warnings_t() { plaxi1::set_modal_callback(m_previous); }

  std::vector<std::string> m_main;
  std::vector<std::string> m_supplemental;
  std::vector<int> m_icons;

 private:
  plaxi1::modal_callback_t m_previous;
};

class max_len_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "fields", wxDefaultPosition, wxSize(400, 400));
    m_page = new fields_page_t;
    m_page->create(m_frame);
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
  }
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }

  // What typing or pasting `text` at the end of `field` does.
  static void paste(wxTextCtrl* field, const std::string& text) {
    field->SetInsertionPointEnd();
    field->WriteText(wxString::FromUTF8(text));
    gui_test::pump();
  }

  wxFrame* m_frame = nullptr;
  fields_page_t* m_page = nullptr;
};

TEST_F(max_len_test, paste_of_20_into_a_multi_line_field_of_10_keeps_10_and_warns_once) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 10, ""));
  paste(m_page->m_multi, "abcdefghijKLMNOPQRST");
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcdefghij");
  ASSERT_EQ(warnings.m_main.size(), 1u);
  EXPECT_EQ(warnings.m_main[0], "Summary is too long");
  EXPECT_NE(warnings.m_supplemental[0].find("summary can hold at most 10 characters"), std::string::npos);
  EXPECT_EQ(warnings.m_icons[0], tamsel3::message_window_t::icon_warning);
}

TEST_F(max_len_test, text_exactly_at_the_limit_brings_no_warning) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 10, ""));
  paste(m_page->m_multi, "abcdefghij");
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcdefghij");
  EXPECT_TRUE(warnings.m_main.empty());
}

TEST_F(max_len_test, field_without_entry_is_held_at_10000_and_called_text) {
  warnings_t warnings;
  paste(m_page->m_multi, std::string(10005, 'x'));
  EXPECT_EQ(m_page->m_multi->GetValue().length(), 10000u);
  ASSERT_EQ(warnings.m_main.size(), 1u);
  EXPECT_EQ(warnings.m_main[0], "Text is too long");
  EXPECT_NE(warnings.m_supplemental[0].find("The text can hold at most 10000 characters"), std::string::npos);
}

TEST_F(max_len_test, limit_of_minus_one_means_10000_in_the_warning) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("notes", -1, ""));
  paste(m_page->m_multi, std::string(10001, 'y'));
  EXPECT_EQ(m_page->m_multi->GetValue().length(), 10000u);
  ASSERT_EQ(warnings.m_supplemental.size(), 1u);
  EXPECT_NE(warnings.m_supplemental[0].find("10000"), std::string::npos);
}

TEST_F(max_len_test, single_line_field_reports_the_toolkit_limit) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_single, tamsel3::max_len_options_t("project name", 5, ""));
  wxCommandEvent over(wxEVT_TEXT_MAXLEN, m_page->m_single->GetId());
  over.SetEventObject(m_page->m_single);
  m_page->m_single->ProcessWindowEvent(over);
  ASSERT_EQ(warnings.m_main.size(), 1u);  // repeated connections don't repeat it
  EXPECT_EQ(warnings.m_main[0], "Project name is too long");
  EXPECT_NE(warnings.m_supplemental[0].find("The project name can hold at most 5"), std::string::npos);
}

TEST_F(max_len_test, unknown_details_key_falls_back) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 3, "no.such.key"));
  paste(m_page->m_multi, "abcd");
  ASSERT_EQ(warnings.m_supplemental.size(), 1u);
  EXPECT_NE(warnings.m_supplemental[0].find("at most 3 characters"), std::string::npos);
}

TEST_F(max_len_test, field_two_levels_down_is_not_limited) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_nested, tamsel3::max_len_options_t("nested", 5, ""));
  paste(m_page->m_nested, "abcdefghij");
  EXPECT_EQ(m_page->m_nested->GetValue(), "abcdefghij");
  EXPECT_TRUE(warnings.m_main.empty());
}

TEST_F(max_len_test, event_without_a_text_field_is_ignored) {
  warnings_t warnings;
  wxCommandEvent stray(wxEVT_TEXT_MAXLEN);
  m_page->on_max_len(stray);
  EXPECT_TRUE(warnings.m_main.empty());
}

}  // namespace
