// A host's whole road with the external editors, each step in a process of its own as a
// host's runs would be: load the saved registry, ask the desktop, let the user change the
// page, OK, save; then a new process reads the same state back.
#include "desktop_tree.h"
#include "fixtures.h"
#include "gui_test.h"
#include "modal_answer.h"

#include <korvat2/system.h>
#include <korvat2/system_editor.h>
#include <quern2/storage.h>
#include <tamsel3/editor_data.h>
#include <tamsel3/editor_pp.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/listbox.h>

#include <string>
#include <vector>

namespace {

using tamsel3::editor_data_t;
using tamsel3::language_info;

constexpr auto cpp = language_info::language_cpp;
const char* const storage_variable = "EDITOR_HOST_TEST_STORAGE";
const char* const program_variable = "EDITOR_HOST_TEST_PROGRAM";

korvat2::sptr_t<quern2::IPropertyStorage> host_storage() {
  return quern2::makeFileStorage(korvat2::path_t(korvat2::get_environ_value(storage_variable)));
}

std::vector<std::string> names_of(const editor_data_t& data) {
  std::vector<std::string> names;
  for (auto it = data.get_editors(cpp); !it.at_end(); it.next()) {
    names.push_back(it.current().name);
  }
  return names;
}

void send(wxWindow* control, wxEventType type, int value) {
  wxCommandEvent event(type, control->GetId());
  event.SetEventObject(control);
  event.SetInt(value);
  control->ProcessWindowEvent(event);
}

TEST(editor_host_child, DISABLED_edits_on_the_page_and_saves) {
  editor_data_t data;
  ASSERT_TRUE(data.load_storage_info(host_storage()));
  EXPECT_TRUE(data.load_system_info(cpp));
  auto* host = new wxFrame(nullptr, wxID_ANY, "host", wxDefaultPosition, wxSize(560, 460));
  host->Show();
  auto* page = new tamsel3::editor_pp_t(data, 25);
  page->create(host);
  auto* list = dynamic_cast<wxListBox*>(gui_test::find_named(page, "m_editor_list"));
  auto* box = dynamic_cast<wxCheckBox*>(gui_test::find_named(page, "m_default"));
  ASSERT_TRUE(list && box);
  EXPECT_EQ(list->GetStringSelection(), "mine");  // the saved selection
  list->SetSelection(0);
  send(list, wxEVT_LISTBOX, 0);
  box->SetValue(true);
  send(box, wxEVT_CHECKBOX, 1);
  gui_test::answer_t<wxFileDialog> answer([](wxFileDialog& dialog) {
    gui_test::choose_file(dialog, korvat2::get_environ_value(program_variable));
    return wxID_OK;
  });
  list->SetSelection(static_cast<int>(list->GetCount()) - 1);
  send(list, wxEVT_LISTBOX, list->GetSelection());
  gui_test::click(page, "m_btn_ok");
  EXPECT_TRUE(page->get_data().save_storage_info(host_storage()));
  host->Destroy();
}

TEST(editor_host_child, DISABLED_reads_the_saved_state_back) {
  editor_data_t data;
  ASSERT_TRUE(data.load_storage_info(host_storage()));
  EXPECT_TRUE(data.load_system_info(cpp));
  EXPECT_EQ(names_of(data), (std::vector<std::string>{"alpha-edit.desktop", "beta-edit.desktop",
                                                      editor_data_t::env_var_editor_name, "mine", "myedit"}));
  EXPECT_EQ(data.get_selected_editor_name(cpp), "myedit");
  EXPECT_EQ(data.get_default_editor_name(cpp), "alpha-edit.desktop");
  EXPECT_EQ(data.get_system_default_editor_name(cpp), "beta-edit.desktop");
  EXPECT_EQ(data.get_editor(cpp, "myedit").command_line, korvat2::get_environ_value(program_variable));
  EXPECT_EQ(data.get_editor(cpp, editor_data_t::env_var_editor_name).command_line, "vi");
}

TEST(editor_host_test, a_host_edits_saves_and_a_new_process_reads_it_back) {
  const test_support::desktop_tree_t desktop(true);
  const test_support::temp_dir_t storage_dir;
  const std::string program = storage_dir.write("myedit", "");
  {
    editor_data_t saved;
    saved.add_editor(cpp, korvat2::system_editor_t{"mine", "mine", "/usr/bin/mine", "/usr/bin/mine -l"});
    saved.set_selected_editor_name(cpp, "mine");
    ASSERT_TRUE(saved.save_storage_info(quern2::makeFileStorage(korvat2::path_t(storage_dir.path()))));
  }
  test_support::environment_t environment = desktop.environment(std::string("vi"));
  environment.emplace_back(storage_variable, storage_dir.path());
  environment.emplace_back(program_variable, program);
  EXPECT_EQ(test_support::run_test_in_own_process("editor_host_child.DISABLED_edits_on_the_page_and_saves",
                                                  environment),
            0);
  EXPECT_EQ(test_support::run_test_in_own_process("editor_host_child.DISABLED_reads_the_saved_state_back",
                                                  environment),
            0);
}

}  // namespace
