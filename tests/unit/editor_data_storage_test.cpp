#include <tamsel3/editor_data.h>

#include <korvat2/system_editor.h>
#include <korvat2/variant_bag.h>
#include <quern2/storage.h>

#include "assert_recorder.h"
#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <set>
#include <vector>

namespace {

using korvat2::variant_bag_t;
using tamsel3::editor_data_t;
using tamsel3::language_info;

constexpr auto cpp = language_info::language_cpp;
constexpr auto fortran = language_info::language_fortran;
constexpr auto other = language_info::language_other;

const std::string not_first_text = "m_langs_to_edt_names.find(language) == m_langs_to_edt_names.end()";

std::vector<std::string> names_of(const editor_data_t& data, language_info::language_t language) {
  std::vector<std::string> names;
  for (auto it = data.get_editors(language); !it.at_end(); it.next()) {
    names.push_back(it.current().name);
  }
  return names;
}

korvat2::system_editor_t editor(const std::string& name) {
  return {name, name + " Editor", "/usr/bin/" + name, "/usr/bin/" + name + " -w"};
}

variant_bag_t editor_bag(const std::string& name, bool with_executable = true) {
  variant_bag_t bag;
  bag.put("name", name);
  bag.put("display_name", name + " Editor");
  if (with_executable) {
    bag.put("executable", "/usr/bin/" + name);
  }
  bag.put("command_line", "/usr/bin/" + name);
  bag.put("is_system", false);
  return bag;
}

variant_bag_t language_bag(const std::string& language_name, const std::vector<variant_bag_t>& editors) {
  variant_bag_t bag;
  bag.put("language_name", language_name);
  for (const variant_bag_t& item : editors) {
    bag.add_variant_bag("editor", item);
  }
  return bag;
}

editor_data_t sample() {
  editor_data_t data;
  editor_data_t::editor_t system(editor("sys.desktop"));
  system.is_system = true;
  data.add_editor_ex(cpp, system);
  editor_data_t::editor_t env;
  {
    test_support::scoped_env_t visual("VISUAL", std::string("vi"));
    editor_data_t::fill_env_var_editor(env);
  }
  data.add_editor_ex(cpp, env);
  data.add_editor(cpp, editor("mine"));
  data.add_editor(fortran, editor("ftn"));
  data.set_selected_editor_name(cpp, "mine");
  data.set_default_editor_name(cpp, "sys.desktop");
  data.set_selected_language(fortran);
  return data;
}

TEST(editor_data_storage, a_save_loads_back_with_the_environment_editor_rebuilt) {
  test_support::scoped_env_t visual("VISUAL", std::string("emacs"));
  const editor_data_t saved = sample();
  variant_bag_t bag;
  ASSERT_TRUE(saved.save(bag));
  editor_data_t loaded;
  ASSERT_TRUE(loaded.load(bag));
  for (const auto language : {cpp, fortran}) {
    EXPECT_EQ(names_of(loaded, language), names_of(saved, language));
    for (const std::string& name : names_of(saved, language)) {
      if (name != editor_data_t::env_var_editor_name) {
        EXPECT_EQ(editor_data_t::dump(loaded.get_editor_ex(language, name)),
                  editor_data_t::dump(saved.get_editor_ex(language, name)));
      }
    }
  }
  EXPECT_EQ(loaded.get_editor(cpp, editor_data_t::env_var_editor_name).command_line, "emacs");
  EXPECT_EQ(loaded.get_selected_editor_name(cpp), "mine");
  EXPECT_EQ(loaded.get_default_editor_name(cpp), "sys.desktop");
  EXPECT_EQ(loaded.get_selected_language(), fortran);
}

TEST(editor_data_storage, the_environment_editor_is_saved_without_its_program) {
  variant_bag_t bag;
  sample().save(bag);
  const variant_bag_t* cpp_bag = bag.get<variant_bag_t>("language");
  ASSERT_NE(cpp_bag, nullptr);
  auto it = cpp_bag->begin_by_name<variant_bag_t>("editor");
  it.next();
  const variant_bag_t& env = it.get_value();
  EXPECT_EQ(env.get_variant("name", "").get<std::string>(), editor_data_t::env_var_editor_name);
  EXPECT_FALSE(env.has<korvat2::variant_t>("executable"));
  EXPECT_FALSE(env.has<korvat2::variant_t>("command_line"));
  EXPECT_TRUE(env.has<korvat2::variant_t>("is_system"));
}

TEST(editor_data_storage, an_editor_without_its_program_is_skipped_and_the_rest_load) {
  variant_bag_t bag;
  bag.add_variant_bag("language",
                      language_bag(language_info::get_localized_name(cpp),
                                   {editor_bag("a"), editor_bag("broken", false), editor_bag("c")}));
  editor_data_t data;
  EXPECT_TRUE(data.load(bag));
  EXPECT_EQ(names_of(data, cpp), (std::vector<std::string>{"a", "c"}));
}

TEST(editor_data_storage, an_editor_record_that_fails_to_load_stays_as_it_was) {
  editor_data_t::editor_t record(editor("kept"));
  variant_bag_t bag = editor_bag("x");
  bag.remove("is_system");
  EXPECT_FALSE(record.load(bag));
  EXPECT_EQ(record.name, "kept");
  bag.put("is_system", 1);
  EXPECT_TRUE(record.load(bag));
  EXPECT_TRUE(record.is_system);
}

TEST(editor_data_storage, the_first_of_two_editors_of_one_name_wins) {
  variant_bag_t second = editor_bag("a");
  second.put("display_name", "Second");
  variant_bag_t bag;
  bag.add_variant_bag("language",
                      language_bag(language_info::get_localized_name(cpp), {editor_bag("a"), second}));
  editor_data_t data;
  data.load(bag);
  EXPECT_EQ(names_of(data, cpp), std::vector<std::string>{"a"});
  EXPECT_EQ(data.get_editor(cpp, "a").display_name, "a Editor");
}

TEST(editor_data_storage, a_language_without_name_and_a_csharp_one_are_skipped) {
  variant_bag_t nameless;
  nameless.add_variant_bag("editor", editor_bag("lost"));
  variant_bag_t bag;
  bag.add_variant_bag("language", nameless);
  bag.add_variant_bag(
      "language",
      language_bag(language_info::get_localized_name(language_info::language_csharp), {editor_bag("cs")}));
  bag.add_variant_bag("language",
                      language_bag(language_info::get_localized_name(fortran), {editor_bag("ftn")}));
  test_support::assert_recorder_t asserts;
  editor_data_t data;
  EXPECT_TRUE(data.load(bag));
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"false"});
  EXPECT_TRUE(data.get_editors(cpp).at_end());
  EXPECT_TRUE(data.get_editors(other).at_end());
  EXPECT_EQ(names_of(data, fortran), std::vector<std::string>{"ftn"});
}

// C# has no editors here: a file that selected it leaves the selection as it was, and the
// rest of the file loads.
TEST(editor_data_storage, a_selected_language_naming_csharp_leaves_the_selection) {
  variant_bag_t bag;
  bag.add_variant_bag("language",
                      language_bag(language_info::get_localized_name(fortran), {editor_bag("ftn")}));
  bag.put("selected_language", language_info::get_localized_name(language_info::language_csharp));
  test_support::assert_recorder_t asserts;
  editor_data_t data;
  EXPECT_TRUE(data.load(bag));
  EXPECT_EQ(data.get_selected_language(), cpp);
  EXPECT_EQ(names_of(data, fortran), std::vector<std::string>{"ftn"});
  editor_data_t was_fortran;
  was_fortran.set_selected_language(fortran);
  EXPECT_TRUE(was_fortran.load(bag));
  EXPECT_EQ(was_fortran.get_selected_language(), fortran);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{});
  variant_bag_t saved;
  data.save(saved);
  EXPECT_EQ(saved.get_variant("selected_language", "").get<std::string>(),
            language_info::get_localized_name(cpp));
}

TEST(editor_data_storage, a_load_onto_an_existing_list_asserts_and_adds_what_is_new) {
  editor_data_t data;
  data.add_editor(cpp, editor("a"));
  variant_bag_t bag;
  bag.add_variant_bag(
      "language", language_bag(language_info::get_localized_name(cpp), {editor_bag("a"), editor_bag("b")}));
  test_support::assert_recorder_t asserts;
  EXPECT_TRUE(data.load(bag));
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{not_first_text});
  EXPECT_EQ(names_of(data, cpp), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(data.get_editor(cpp, "a").command_line, "/usr/bin/a -w");
}

TEST(editor_data_storage, an_empty_bag_loads_and_changes_nothing) {
  editor_data_t data = sample();
  variant_bag_t before;
  data.save(before);
  EXPECT_TRUE(data.load(variant_bag_t()));
  variant_bag_t after;
  data.save(after);
  EXPECT_EQ(before, after);
}

TEST(editor_data_storage, a_file_of_another_catalog_language_loads_into_other) {
  variant_bag_t first = language_bag("C/C++ (Deutsch)", {editor_bag("a"), editor_bag("shared")});
  first.put("selected_editor", "a");
  first.put("default_editor", "shared");
  variant_bag_t second = language_bag("Fortran (Deutsch)", {editor_bag("shared"), editor_bag("b")});
  second.put("selected_editor", "b");
  variant_bag_t bag;
  bag.add_variant_bag("language", first);
  bag.add_variant_bag("language", second);
  bag.put("selected_language", "Fortran (Deutsch)");
  test_support::assert_recorder_t asserts;
  editor_data_t data;
  EXPECT_TRUE(data.load(bag));
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{not_first_text});
  EXPECT_EQ(names_of(data, other), (std::vector<std::string>{"a", "shared", "b"}));
  EXPECT_EQ(data.get_selected_editor_name(other), "a");
  EXPECT_EQ(data.get_default_editor_name(other), "shared");
  EXPECT_EQ(data.get_selected_language(), other);
}

TEST(editor_data_storage, a_language_without_list_is_not_saved) {
  editor_data_t data;
  data.set_selected_editor_name(cpp, "vim");
  variant_bag_t bag;
  data.save(bag);
  EXPECT_FALSE(bag.has<variant_bag_t>("language"));
  EXPECT_EQ(bag.get_variant("selected_language", "").get<std::string>(),
            language_info::get_localized_name(cpp));
}

class editor_data_storage_files : public ::testing::Test {
 protected:
  void TearDown() override { quern2::IGlobalStorage::setGlobalStorageRoot(korvat2::path_t()); }
  test_support::temp_dir_t m_dir;
};

TEST_F(editor_data_storage_files, a_null_storage_is_the_global_child_external_editor) {
  quern2::IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_dir.path()));
  ASSERT_TRUE(sample().save_storage_info(nullptr));
  EXPECT_TRUE(korvat2::path_t::exists(m_dir.file("external_editor")));
  editor_data_t loaded;
  EXPECT_TRUE(loaded.load_storage_info(nullptr));
  EXPECT_EQ(names_of(loaded, fortran), std::vector<std::string>{"ftn"});
  quern2::IGlobalStorage::set(nullptr);
  EXPECT_FALSE(editor_data_t::get_storage(nullptr));
  EXPECT_FALSE(loaded.load_storage_info(nullptr));
  EXPECT_FALSE(sample().save_storage_info(nullptr));
}

TEST_F(editor_data_storage_files, a_given_storage_is_read_itself_not_a_child) {
  const korvat2::sptr_t<quern2::IPropertyStorage> storage =
      quern2::makeFileStorage(korvat2::path_t(m_dir.path()));
  EXPECT_EQ(editor_data_t::get_storage(storage).get(), storage.get());
  ASSERT_TRUE(sample().save_storage_info(storage));
  EXPECT_TRUE(storage->hasBag("."));
  EXPECT_FALSE(storage->getChild("external_editor")->hasBag("."));
  editor_data_t loaded;
  EXPECT_TRUE(loaded.load_storage_info(storage));
  EXPECT_EQ(names_of(loaded, cpp).size(), 3u);
}

const int error_level = 40000;

// The answer is the saved form's, but the failed write is never silent.
TEST_F(editor_data_storage_files, a_save_where_a_file_stands_for_the_folder_is_logged) {
  quern2::IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_dir.path()));
  const std::string folder = m_dir.write("external_editor", "not a folder");
  const test_support::log_capture_t capture;
  EXPECT_TRUE(sample().save_storage_info(nullptr));
  EXPECT_EQ(capture.count(error_level, "cannot write " + folder + "/"), 1u);
  EXPECT_EQ(capture.count(error_level, std::strerror(ENOTDIR)), 1u);
  EXPECT_EQ(test_support::read_bytes(folder), "not a folder");
}

TEST_F(editor_data_storage_files, a_save_cut_short_keeps_the_old_file_and_is_logged) {
  const korvat2::sptr_t<quern2::IPropertyStorage> storage =
      quern2::makeFileStorage(korvat2::path_t(m_dir.path()));
  ASSERT_TRUE(editor_data_t().save_storage_info(storage));
  ASSERT_EQ(m_dir.names().size(), 1u);
  const std::string file = m_dir.file(*m_dir.names().begin());
  const std::string old_bytes = test_support::read_bytes(file);
  const test_support::log_capture_t capture;
  {
    const test_support::scoped_file_size_limit_t limit(old_bytes.size());
    EXPECT_TRUE(sample().save_storage_info(storage));
  }
  EXPECT_EQ(test_support::read_bytes(file), old_bytes);
  EXPECT_EQ(m_dir.names().size(), 1u);
  EXPECT_EQ(capture.count(error_level, "cannot write " + file + ": " + std::strerror(EFBIG)), 1u);
}

TEST_F(editor_data_storage_files, a_corrupt_file_loads_nothing_and_reports_true) {
  const korvat2::sptr_t<quern2::IPropertyStorage> storage =
      quern2::makeFileStorage(korvat2::path_t(m_dir.path()));
  ASSERT_TRUE(sample().save_storage_info(storage));
  const std::set<std::string> names = m_dir.names();
  ASSERT_EQ(names.size(), 1u);
  const std::string file = m_dir.file(*names.begin());
  const std::string whole = test_support::read_bytes(file);
  test_support::write_bytes(file, whole.substr(0, whole.size() / 2));
  editor_data_t loaded;
  EXPECT_TRUE(loaded.load_storage_info(storage));
  EXPECT_TRUE(loaded.get_editors(cpp).at_end());
  // A save replaces the broken file whole, leaving no temporary beside it.
  ASSERT_TRUE(sample().save_storage_info(storage));
  EXPECT_EQ(m_dir.names().size(), 1u);
  EXPECT_TRUE(loaded.load_storage_info(storage));
  EXPECT_EQ(names_of(loaded, cpp).size(), 3u);
}

}  // namespace
