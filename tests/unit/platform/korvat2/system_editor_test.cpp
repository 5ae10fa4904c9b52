#include <korvat2/system.h>
#include <korvat2/system_editor.h>

#include "desktop_tree.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using korvat2::system_editor_t;

std::vector<system_editor_t> drain(korvat2::generic_iterator_t<system_editor_t> it) {
  std::vector<system_editor_t> items;
  for (; !it.at_end(); it.next()) {
    items.push_back(it.current());
  }
  return items;
}

std::string temp_file(const std::string& name) {
  const std::string path = korvat2::stdpaths::get_temp_dir().as_string(true) + name;
  test_support::write_bytes(path, "");
  return path;
}

TEST(command_line_from_exec, drops_field_codes_and_keeps_fixed_arguments) {
  EXPECT_EQ(korvat2::command_line_from_exec("gedit", "gedit %U"), "gedit");
  EXPECT_EQ(korvat2::command_line_from_exec("emacs", "emacs -nw --file=%f %i"), "emacs -nw --file=");
  EXPECT_EQ(korvat2::command_line_from_exec("x", "x 100%% %c"), "x 100%");
  EXPECT_EQ(korvat2::command_line_from_exec("/opt/my app/x", "\"/opt/my app/x\" --title 'a b' %F"),
            "/opt/my app/x --title 'a b'");
  EXPECT_EQ(korvat2::command_line_from_exec("x", "x \"unterminated"), "");
}

TEST(get_system_editors, no_file_name_is_not_found) {
  korvat2::generic_iterator_t<system_editor_t> out;
  EXPECT_EQ(korvat2::get_system_editors(korvat2::path_t(), out, korvat2::system_editor_all),
            korvat2::error_code_t(korvat2::error::FileNotFound));
  EXPECT_TRUE(out.at_end());
}

// Children: each reads the private desktop that its parent set up.
TEST(get_system_editors_child, DISABLED_lists_the_editors_of_c_source) {
  korvat2::generic_iterator_t<system_editor_t> out;
  ASSERT_EQ(korvat2::get_system_editors(temp_file("a.c"), out, korvat2::system_editor_all).value(), 0u);
  const std::vector<system_editor_t> editors = drain(out);
  ASSERT_EQ(editors.size(), 2u);
  EXPECT_EQ(editors[0].name, "alpha-edit.desktop");
  EXPECT_EQ(editors[0].display_name, "Alpha Edit");
  EXPECT_EQ(editors[0].executable, "alpha-edit");
  EXPECT_EQ(editors[0].command_line, "alpha-edit --wait");
  EXPECT_EQ(editors[1].name, "beta-edit.desktop");
  EXPECT_EQ(editors[1].command_line, "beta-edit -n");
}

TEST(get_system_editors_child, DISABLED_gives_the_default_of_c_source) {
  korvat2::generic_iterator_t<system_editor_t> out;
  ASSERT_EQ(korvat2::get_system_editors(temp_file("a.c"), out, korvat2::system_editor_default).value(), 0u);
  const std::vector<system_editor_t> editors = drain(out);
  ASSERT_EQ(editors.size(), 1u);
  EXPECT_EQ(editors[0].name, "beta-edit.desktop");
  EXPECT_EQ(editors[0].executable, "beta-edit");
}

TEST(get_system_editors_child, DISABLED_a_missing_file_is_typed_by_its_name_alone) {
  korvat2::generic_iterator_t<system_editor_t> out;
  ASSERT_EQ(korvat2::get_system_editors("/no/such/folder/a.c", out, korvat2::system_editor_all).value(), 0u);
  EXPECT_EQ(drain(out).size(), 2u);
  ASSERT_EQ(korvat2::get_system_editors("/no/such/folder/a.c", out, korvat2::system_editor_default).value(),
            0u);
  EXPECT_EQ(drain(out).at(0).name, "beta-edit.desktop");
}

// Without a chosen default the desktop falls back to the type's first editor.
TEST(get_system_editors_child, DISABLED_a_type_without_chosen_default_falls_back_to_its_editor) {
  korvat2::generic_iterator_t<system_editor_t> out;
  ASSERT_EQ(korvat2::get_system_editors(temp_file("a.f"), out, korvat2::system_editor_default).value(), 0u);
  EXPECT_EQ(drain(out).at(0).name, "fortune-edit.desktop");
  EXPECT_EQ(korvat2::get_system_editors(temp_file("a.f"), out, korvat2::system_editor_all).value(), 0u);
  EXPECT_EQ(drain(out).size(), 1u);
}

TEST(get_system_editors_child, DISABLED_an_unknown_type_has_no_editors_and_no_default) {
  korvat2::generic_iterator_t<system_editor_t> out;
  EXPECT_EQ(korvat2::get_system_editors(temp_file("plain"), out, korvat2::system_editor_all),
            korvat2::error_code_t(korvat2::error::False));
  EXPECT_TRUE(out.at_end());
  EXPECT_TRUE(korvat2::get_system_editors(temp_file("plain"), out, korvat2::system_editor_default).failed());
  EXPECT_TRUE(out.at_end());
}

class get_system_editors_on_a_private_desktop : public ::testing::TestWithParam<const char*> {};

TEST_P(get_system_editors_on_a_private_desktop, answers_the_same_everywhere) {
  const test_support::desktop_tree_t desktop;
  EXPECT_EQ(test_support::run_test_in_own_process(
                std::string("get_system_editors_child.DISABLED_") + GetParam(), desktop.environment()),
            0);
}

INSTANTIATE_TEST_SUITE_P(scenarios, get_system_editors_on_a_private_desktop,
                         ::testing::Values("lists_the_editors_of_c_source", "gives_the_default_of_c_source",
                                           "a_missing_file_is_typed_by_its_name_alone",
                                           "a_type_without_chosen_default_falls_back_to_its_editor",
                                           "an_unknown_type_has_no_editors_and_no_default"));

}  // namespace
