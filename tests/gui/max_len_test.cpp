#include "gui_test.h"
#include "input.h"

#include <plaxi1/modal.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/pref_base.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

// A page whose fields are made in code: two at the top level, one a level further down.
class fields_page_t : public tamsel3::pref_base_t {
 public:
  wxTextCtrl* m_single = nullptr;
  wxTextCtrl* m_multi = nullptr;
  wxTextCtrl* m_nested = nullptr;

  // The longest text that the page's own text handler saw in each field.
  std::map<wxTextCtrl*, std::size_t> m_longest_seen;
  int m_text_events = 0;

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
    Bind(wxEVT_TEXT, &fields_page_t::on_page_text, this);
    return true;
  }

 private:
  // What a handler of the page itself sees, after the frame's own.
  void on_page_text(wxCommandEvent& event) {
    auto* field = dynamic_cast<wxTextCtrl*>(event.GetEventObject());
    if (field) {
      ++m_text_events;
      std::size_t& longest = m_longest_seen[field];
      longest = std::max(longest, static_cast<std::size_t>(field->GetValue().length()));
    }
    event.Skip();
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
            m_closing_parents += closing(dialog->GetParent()) ? 1 : 0;
          }
          return wxID_CANCEL;
        })) {}
  ~warnings_t() { plaxi1::set_modal_callback(m_previous); }

  std::vector<std::string> m_main;
  std::vector<std::string> m_supplemental;
  std::vector<int> m_icons;
  int m_closing_parents = 0;  // warnings parented to a window on its way out

 private:
  static bool closing(wxWindow* window) {
    return window &&
           (window->IsBeingDeleted() || wxTheApp->IsScheduledForDestruction(wxGetTopLevelParent(window)));
  }

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
    if (m_frame) {
      m_frame->Destroy();
    }
    gui_test::pump();
  }

  // What typing or pasting `text` at the end of `field` does.
  static void paste(wxTextCtrl* field, const std::string& text) {
    field->SetInsertionPointEnd();
    field->WriteText(wxString::FromUTF8(text));
    gui_test::pump();
  }

  // Types `keys` into `field` as the keyboard does, one key after the other, and waits
  // until the field has had them all (`expected` is what it then shows).
  static void type(wxTextCtrl* field, const std::string& keys, const wxString& expected) {
    field->SetFocus();
    field->SetInsertionPointEnd();
    gui_test::pump();
    gui_test::input_t keyboard;
    for (char key : keys) {
      keyboard.press(key);
    }
    EXPECT_TRUE(gui_test::wait_until([&] { return field->GetValue() == expected; }))
        << "the field shows " << field->GetValue().length() << " characters";
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

TEST_F(max_len_test, page_handler_never_sees_a_multi_line_paste_beyond_the_limit) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 10, ""));
  paste(m_page->m_multi, "abcdefghijKLMNOPQRST");
  EXPECT_GT(m_page->m_text_events, 0);
  EXPECT_EQ(m_page->m_longest_seen[m_page->m_multi], 10u);
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcdefghij");
  EXPECT_EQ(warnings.m_main.size(), 1u);
}

TEST_F(max_len_test, typing_past_a_multi_line_limit_is_refused_key_by_key) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 10, ""));
  type(m_page->m_multi, "abcdefghijkl", "abcdefghij");
  EXPECT_TRUE(gui_test::wait_until([&] { return warnings.m_main.size() >= 2; }));
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcdefghij");
  EXPECT_EQ(m_page->m_longest_seen[m_page->m_multi], 10u);
  EXPECT_EQ(warnings.m_main.size(), 2u);  // one for each key that went over
}

TEST_F(max_len_test, single_line_field_refuses_the_typed_character_after_its_limit) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_single, tamsel3::max_len_options_t("project name", 5, ""));
  type(m_page->m_single, "abcdef", "abcde");
  EXPECT_TRUE(gui_test::wait_until([&] { return !warnings.m_main.empty(); }));
  EXPECT_EQ(m_page->m_single->GetValue(), "abcde");
  EXPECT_EQ(m_page->m_longest_seen[m_page->m_single], 5u);
  ASSERT_EQ(warnings.m_main.size(), 1u);
  EXPECT_EQ(warnings.m_main[0], "Project name is too long");
}

TEST_F(max_len_test, single_line_paste_beyond_the_limit_keeps_what_fits) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_single, tamsel3::max_len_options_t("project name", 5, ""));
  paste(m_page->m_single, "ab");
  paste(m_page->m_single, "cdefgh");
  EXPECT_EQ(m_page->m_single->GetValue(), "abcde");
  EXPECT_EQ(m_page->m_longest_seen[m_page->m_single], 5u);
  EXPECT_EQ(warnings.m_main.size(), 1u);
}

TEST_F(max_len_test, typed_fields_without_entry_or_with_minus_one_hold_10000) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("notes", -1, ""));
  const wxString full(wxString::FromUTF8(std::string(10000, 'x')));
  for (wxTextCtrl* field : {m_page->m_single, m_page->m_multi}) {
    field->ChangeValue(wxString::FromUTF8(std::string(9999, 'x')));
    type(field, "xy", full);
  }
  EXPECT_TRUE(gui_test::wait_until([&] { return warnings.m_main.size() >= 2; }));
  ASSERT_EQ(warnings.m_supplemental.size(), 2u);
  EXPECT_NE(warnings.m_supplemental[0].find("The text can hold at most 10000 characters"), std::string::npos);
  EXPECT_NE(warnings.m_supplemental[1].find("notes can hold at most 10000 characters"), std::string::npos);
}

TEST_F(max_len_test, warning_is_never_parented_to_a_closing_window) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 3, ""));
  m_page->m_multi->SetInsertionPointEnd();
  m_page->m_multi->WriteText("abcdef");
  m_frame->Destroy();  // the window goes before the loop runs again
  m_frame = nullptr;
  gui_test::pump();
  EXPECT_EQ(warnings.m_closing_parents, 0);
}

TEST_F(max_len_test, over_long_edit_is_cut_and_warned_when_the_edit_returns) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 10, ""));
  m_page->m_multi->SetInsertionPointEnd();
  m_page->m_multi->WriteText("abcdefghijKLMNOPQRST");
  // No turn of the loop: the edit itself brought the cut and the warning.
  EXPECT_EQ(m_page->m_multi->GetValue().length(), 10u);
  EXPECT_EQ(m_page->m_longest_seen[m_page->m_multi], 10u);
  EXPECT_EQ(warnings.m_main.size(), 1u);
  gui_test::pump();
  EXPECT_EQ(warnings.m_main.size(), 1u) << "nothing more comes later";
}

TEST_F(max_len_test, field_over_a_lowered_limit_is_cut_inside_its_text_event) {
  warnings_t warnings;
  m_page->m_multi->ChangeValue("abcdefgh");
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 5, ""));
  wxCommandEvent changed(wxEVT_TEXT, m_page->m_multi->GetId());
  changed.SetEventObject(m_page->m_multi);
  m_page->m_multi->GetEventHandler()->ProcessEvent(changed);
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcde");
  EXPECT_EQ(warnings.m_main.size(), 1u);
  gui_test::pump();
  EXPECT_EQ(m_page->m_multi->GetValue(), "abcde");
  EXPECT_EQ(warnings.m_main.size(), 1u);
}

TEST_F(max_len_test, window_destroyed_right_after_an_over_long_edit_goes_cleanly) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 3, ""));
  m_page->m_multi->SetInsertionPointEnd();
  m_page->m_multi->WriteText("abcdef");
  wxWeakRef<wxFrame> frame(m_frame);
  m_frame->Destroy();
  m_frame = nullptr;
  EXPECT_TRUE(gui_test::wait_until([&] { return frame.get() == nullptr; }));
  EXPECT_EQ(warnings.m_main.size(), 1u);
  EXPECT_EQ(warnings.m_closing_parents, 0);
}

TEST_F(max_len_test, over_long_edit_in_a_closing_window_is_cut_without_a_warning) {
  warnings_t warnings;
  m_page->set_max_len_options(m_page->m_multi, tamsel3::max_len_options_t("summary", 3, ""));
  m_frame->Destroy();  // scheduled: the window still stands until the loop runs
  m_page->m_multi->SetInsertionPointEnd();
  m_page->m_multi->WriteText("abcdef");
  EXPECT_EQ(m_page->m_multi->GetValue(), "abc");
  m_frame = nullptr;
  gui_test::pump();
  EXPECT_EQ(warnings.m_main.size(), 0u);
  EXPECT_EQ(warnings.m_closing_parents, 0);
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
