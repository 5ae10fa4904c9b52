#include "assert_recorder.h"
#include "fixtures.h"
#include "gui_test.h"
#include "modal_answer.h"

#include <korvat2/system_editor.h>
#include <korvat2/variant_bag.h>
#include <tamsel3/editor_pp.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace {

using korvat2::system_editor_t;
using tamsel3::editor_data_t;
using tamsel3::editor_pp_t;
using tamsel3::language_info;

constexpr auto cpp = language_info::language_cpp;
const int all_flags = editor_pp_t::show_language_list | editor_pp_t::show_default | editor_pp_t::show_info;

system_editor_t editor(const std::string& name, const std::string& display_name) {
  return {name, display_name, "/usr/bin/" + name, "/usr/bin/" + name + " -f"};
}

// The page on a layout that has the list and nothing else of its own.
class list_only_page_t : public editor_pp_t {
 public:
  explicit list_only_page_t(const editor_data_t& data) : editor_pp_t(data, all_flags) {
    m_object_name = "pref.editor_test";
  }
};

class editor_pp_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_host = new wxFrame(nullptr, wxID_ANY, "host", wxDefaultPosition, wxSize(560, 460));
    m_host->Show();
  }
  void TearDown() override {
    m_host->Destroy();
    gui_test::pump();
  }

  editor_pp_t* make_page(const editor_data_t& data, int flags = all_flags) {
    return make_page(new editor_pp_t(data, flags));
  }
  editor_pp_t* make_page(editor_pp_t* page) {
    m_page = page;
    m_page->create(m_host);
    m_list = control<wxListBox>("m_editor_list");
    return m_page;
  }
  template <class T>
  T* control(const char* name) {
    auto* found = dynamic_cast<T*>(gui_test::find_named(m_page, name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  std::vector<std::string> entries() const {
    std::vector<std::string> texts;
    for (const wxString& text : m_list->GetStrings()) {
      texts.push_back(text.utf8_string());
    }
    return texts;
  }
  // What a click on the entry does.
  void click_entry(int index) {
    m_list->SetSelection(index);
    wxCommandEvent event(wxEVT_LISTBOX, m_list->GetId());
    event.SetEventObject(m_list);
    event.SetInt(index);
    m_list->ProcessWindowEvent(event);
  }
  void click_browse() { click_entry(static_cast<int>(m_list->GetCount()) - 1); }
  // The page's edited registry, as OK would hand it over.
  editor_data_t work_data() {
    m_page->save_settings();
    return m_page->get_data();
  }

  wxFrame* m_host = nullptr;
  editor_pp_t* m_page = nullptr;
  wxListBox* m_list = nullptr;
};

TEST_F(editor_pp_test, a_language_without_editors_shows_only_the_browse_entry) {
  make_page(editor_data_t());
  EXPECT_EQ(entries(), std::vector<std::string>{editor_pp_t::browse_editor_display_name});
  EXPECT_EQ(m_list->GetSelection(), wxNOT_FOUND);
  EXPECT_FALSE(control<wxTextCtrl>("m_command_line")->IsEnabled());
  EXPECT_EQ(control<wxStaticText>("m_info_text")->GetLabel(), "\n");
  EXPECT_EQ(m_page->get_selected_editor_name(), "");
}

TEST_F(editor_pp_test, the_first_editor_is_selected_and_written_back) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  data.add_editor(cpp, editor("emacs", "Emacs"));
  make_page(data);
  EXPECT_EQ(m_list->GetSelection(), 0);
  EXPECT_EQ(control<wxTextCtrl>("m_command_line")->GetValue(), "-f");
  EXPECT_TRUE(control<wxTextCtrl>("m_command_line")->IsEnabled());
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "vim");
  EXPECT_EQ(data.get_selected_editor_name(cpp), "");
}

TEST_F(editor_pp_test, the_stored_selection_and_default_are_shown) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  data.add_editor(cpp, editor("emacs", "Emacs"));
  data.set_selected_editor_name(cpp, "emacs");
  data.set_default_editor_name(cpp, "emacs");
  make_page(data);
  EXPECT_EQ(m_list->GetSelection(), 1);
  EXPECT_TRUE(control<wxCheckBox>("m_default")->GetValue());
  click_entry(0);
  EXPECT_FALSE(control<wxCheckBox>("m_default")->GetValue());
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "vim");
}

TEST_F(editor_pp_test, the_same_program_three_times_is_numbered) {
  make_page(editor_data_t());
  const test_support::temp_dir_t dir;
  const std::string vim = dir.write("vim", "");
  for (int i = 0; i < 3; ++i) {
    gui_test::answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) {
      EXPECT_EQ(dialog.GetMessage().utf8_string(),
                tamsel3::translate_message("pref.editor.open_editor_dlg", {}));
      EXPECT_EQ(dialog.GetWildcard(), "*");
      gui_test::choose_file(dialog, vim);
      return wxID_OK;
    });
    click_browse();
    EXPECT_EQ(answer.m_calls, 1);
  }
  EXPECT_EQ(entries(),
            (std::vector<std::string>{"vim", "vim (2)", "vim (3)", editor_pp_t::browse_editor_display_name}));
  EXPECT_EQ(m_list->GetSelection(), 2);
  const editor_data_t data = work_data();
  EXPECT_EQ(data.get_selected_editor_name(cpp), "vim (3)");
  EXPECT_EQ(data.get_editor(cpp, "vim (2)").command_line, vim);
  EXPECT_EQ(data.get_editor_type(cpp, "vim (2)"), editor_data_t::editor_type_custom);
}

TEST_F(editor_pp_test, the_101st_copy_of_a_program_is_refused_with_a_message) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  for (int number = 1; number <= 100; ++number) {
    const std::string name = number == 1 ? "ed" : "ed (" + std::to_string(number) + ")";
    data.add_editor(cpp, system_editor_t{name, name, "/bin/ed", "/bin/ed"});
  }
  make_page(data);
  int messages = 0;
  gui_test::answer_t<wxDialog> answer([&](wxDialog& dialog) {
    if (auto* file = dynamic_cast<wxFileDialog*>(&dialog)) {
      gui_test::choose_file(*file, "/bin/ed");
    } else if (auto* message = dynamic_cast<wxMessageDialog*>(&dialog)) {
      ++messages;
      EXPECT_EQ(message->GetMessage().utf8_string(),
                tamsel3::translate_message("pref.editor.custom_editors_limit_exceeded", {}));
      EXPECT_EQ(message->GetTitle().utf8_string(), tamsel3::translate_message("pref.editor.warning", {}));
    }
    return wxID_OK;
  });
  click_browse();
  EXPECT_EQ(messages, 1);
  EXPECT_EQ(m_list->GetCount(), 102u);
  EXPECT_EQ(m_list->GetSelection(), 100);
}

TEST_F(editor_pp_test, cancelling_without_editors_reports_and_erases_the_selection) {
  editor_data_t data;
  data.set_selected_editor_name(cpp, "ghost");
  make_page(data);
  gui_test::answer_t<wxFileDialog> answer([](wxFileDialog&) { return wxID_CANCEL; });
  test_support::assert_recorder_t asserts;
  click_browse();
  // No editor, so the info line finds no kind to tell of either.
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{"!sel_edt_name.empty()", "false"}));
  EXPECT_EQ(m_list->GetSelection(), 0);
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "");
}

TEST_F(editor_pp_test, cancelling_with_editors_selects_the_last_editor) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  data.add_editor(cpp, editor("emacs", "Emacs"));
  make_page(data);
  gui_test::answer_t<wxFileDialog> answer([](wxFileDialog&) { return wxID_CANCEL; });
  click_browse();
  EXPECT_EQ(m_list->GetSelection(), 1);
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "emacs");
}

TEST_F(editor_pp_test, a_display_name_ending_in_the_suffix_is_not_found) {
  editor_data_t data;
  data.add_editor(
      cpp, editor("odd", "Odd " + tamsel3::translate_message("pref.editor.system_default_suffix", {})));
  test_support::assert_recorder_t asserts;
  make_page(data);
  EXPECT_EQ(m_page->get_selected_editor_name(), "");
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "");
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"false"});
}

TEST_F(editor_pp_test, two_editors_of_one_display_name_both_show_and_act_as_the_first) {
  editor_data_t data;
  data.add_editor(cpp, editor("one", "Same"));
  data.add_editor(cpp, editor("two", "Same"));
  make_page(data);
  EXPECT_EQ(entries(), (std::vector<std::string>{"Same", "Same", editor_pp_t::browse_editor_display_name}));
  click_entry(1);
  EXPECT_EQ(m_page->get_selected_editor_name(), "one");
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "one");
}

TEST_F(editor_pp_test, the_system_default_shows_the_suffix_and_is_found) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  data.add_editor(cpp, editor("emacs", "Emacs"));
  // Only the desktop or a saved registry names a system default.
  korvat2::variant_bag_t bag;
  data.save(bag);
  bag.get<korvat2::variant_bag_t>("language")->put("system_default_editor", "emacs");
  editor_data_t loaded;
  loaded.load(bag);
  make_page(loaded);
  EXPECT_EQ(entries()[1], "Emacs" + editor_pp_t::system_default_suffix);
  click_entry(1);
  EXPECT_EQ(m_page->get_selected_editor_name(), "emacs");
}

TEST_F(editor_pp_test, an_environment_editor_without_program_says_so) {
  test_support::scoped_env_t visual("VISUAL", std::nullopt);
  test_support::scoped_env_t editor_var("EDITOR", std::nullopt);
  editor_data_t data;
  editor_data_t::editor_t env;
  editor_data_t::fill_env_var_editor(env);
  data.add_editor_ex(cpp, env);
  make_page(data);
  wxString info = control<wxStaticText>("m_info_text")->GetLabel();
  info.Replace("\n", " ");
  EXPECT_EQ(info.utf8_string(), tamsel3::translate_message("pref.editor.editor_not_found_env_var", {}));
  EXPECT_FALSE(control<wxTextCtrl>("m_command_line")->IsEnabled());
  EXPECT_EQ(m_page->get_selected_editor_name(), editor_data_t::env_var_editor_name);
}

TEST_F(editor_pp_test, editors_without_command_line_say_so_by_kind) {
  editor_data_t data;
  data.add_editor(cpp, system_editor_t{"lost", "Lost", "", ""});
  editor_data_t::editor_t system(system_editor_t{"gone.desktop", "Gone", "", ""});
  system.is_system = true;
  data.add_editor_ex(cpp, system);
  make_page(data);
  const auto info = [this] {
    wxString text = control<wxStaticText>("m_info_text")->GetLabel();
    text.Replace("\n", " ");
    return text.utf8_string();
  };
  EXPECT_EQ(info(), tamsel3::translate_message("pref.editor.editor_not_found_system", {}));
  click_entry(1);
  EXPECT_EQ(info(), tamsel3::translate_message("pref.editor.editor_not_found_custom", {}));
  EXPECT_FALSE(control<wxTextCtrl>("m_command_line")->IsEnabled());
}

TEST_F(editor_pp_test, ticking_the_box_sets_the_default) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  make_page(data);
  auto* box = control<wxCheckBox>("m_default");
  box->SetValue(true);
  wxCommandEvent event(wxEVT_CHECKBOX, box->GetId());
  event.SetEventObject(box);
  box->ProcessWindowEvent(event);
  EXPECT_EQ(work_data().get_default_editor_name(cpp), "vim");
}

TEST_F(editor_pp_test, choosing_a_language_shows_its_editors) {
  editor_data_t data;
  data.add_editor(language_info::language_fortran, editor("ftn", "Fortran Editor"));
  make_page(data);
  auto* choice = control<wxChoice>("m_language");
  choice->SetSelection(1);
  wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
  event.SetEventObject(choice);
  choice->ProcessWindowEvent(event);
  EXPECT_EQ(entries().front(), "Fortran Editor");
  EXPECT_EQ(work_data().get_selected_language(), language_info::language_fortran);
}

TEST_F(editor_pp_test, flags_0_show_the_language_name_only) {
  make_page(editor_data_t(), 0);
  EXPECT_TRUE(control<wxStaticText>("m_language_text")->IsShown());
  EXPECT_FALSE(control<wxChoice>("m_language")->IsShown());
  EXPECT_FALSE(control<wxWindow>("m_language_gap")->IsShown());
  EXPECT_FALSE(control<wxCheckBox>("m_default")->IsShown());
  EXPECT_FALSE(control<wxStaticText>("m_info_text")->IsShown());
  EXPECT_FALSE(control<wxTextCtrl>("m_command_line")->IsShown());
  EXPECT_EQ(control<wxStaticText>("m_language_text")->GetLabel().utf8_string(),
            language_info::get_localized_name(cpp));
}

TEST_F(editor_pp_test, all_flags_show_the_list_the_box_and_the_info_line) {
  make_page(editor_data_t(), all_flags);
  EXPECT_FALSE(control<wxStaticText>("m_language_text")->IsShown());
  EXPECT_TRUE(control<wxChoice>("m_language")->IsShown());
  EXPECT_TRUE(control<wxCheckBox>("m_default")->IsShown());
  EXPECT_TRUE(control<wxStaticText>("m_info_text")->IsShown());
  EXPECT_FALSE(control<wxStaticText>("m_static_text_cmd_line")->IsShown());
}

TEST_F(editor_pp_test, the_language_value_is_the_list_index) {
  editor_data_t data;
  data.set_selected_language(language_info::language_fortran);
  make_page(data);
  EXPECT_EQ(control<wxChoice>("m_language")->GetSelection(), 2);
}

// A missing control is skipped: the list still fills, selects and writes back.
TEST_F(editor_pp_test, a_layout_with_the_list_alone_serves_every_click) {
  editor_data_t data;
  data.add_editor(cpp, editor("vim", "Vim"));
  data.add_editor(cpp, editor("emacs", "Emacs"));
  data.set_default_editor_name(cpp, "emacs");
  test_support::assert_recorder_t asserts;
  make_page(new list_only_page_t(data));
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{"m_language_gap", "m_language", "m_language_text",
                                                       "m_static_text_cmd_line", "m_command_line",
                                                       "m_default", "m_info_text"}));
  EXPECT_EQ(entries(), (std::vector<std::string>{"Vim", "Emacs", editor_pp_t::browse_editor_display_name}));
  EXPECT_EQ(m_list->GetSelection(), 0);
  click_entry(1);
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "emacs");
  const test_support::temp_dir_t dir;
  const std::string ed = dir.write("ed", "");
  gui_test::answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) {
    gui_test::choose_file(dialog, ed);
    return wxID_OK;
  });
  click_browse();
  EXPECT_EQ(entries(),
            (std::vector<std::string>{"Vim", "Emacs", "ed", editor_pp_t::browse_editor_display_name}));
  EXPECT_EQ(work_data().get_selected_editor_name(cpp), "ed");
  EXPECT_EQ(asserts.texts().size(), 7u);
}

// A saved file may name C#, which has no list on this page: the page shows C/C++.
TEST_F(editor_pp_test, a_saved_selection_of_csharp_shows_cpp) {
  editor_data_t saved;
  saved.add_editor(cpp, editor("vim", "Vim"));
  korvat2::variant_bag_t bag;
  saved.save(bag);
  bag.put("selected_language", language_info::get_localized_name(language_info::language_csharp));
  editor_data_t data;
  data.load(bag);
  make_page(data);
  EXPECT_EQ(control<wxChoice>("m_language")->GetSelection(), 0);
  EXPECT_EQ(control<wxStaticText>("m_language_text")->GetLabel().utf8_string(),
            language_info::get_localized_name(cpp));
  EXPECT_EQ(entries(), (std::vector<std::string>{"Vim", editor_pp_t::browse_editor_display_name}));
  EXPECT_EQ(work_data().get_selected_language(), cpp);
}

}  // namespace
