#include "common_dialogs_p.h"

#include "fixtures.h"

#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using tamsel3::default_title_t;
using tamsel3::file_dlg_setup_t;

file_dlg_setup_t setup_for(const std::string& path, const std::string& extension = "",
                           const std::string& filter = "", const std::string& folder = "") {
  return tamsel3::make_file_dlg_setup(path, extension, filter, "", folder, "Default");
}

TEST(common_dialogs_file_setup_test, path_gives_start_folder_and_name) {
  const file_dlg_setup_t setup = setup_for("/a/b.txt");
  EXPECT_EQ(setup.start_folder, "/a/");
  EXPECT_EQ(setup.start_name, "b.txt");
}

TEST(common_dialogs_file_setup_test, a_given_folder_wins_and_only_the_name_is_taken) {
  const file_dlg_setup_t setup = setup_for("/a/b.txt", "", "", "/elsewhere");
  EXPECT_EQ(setup.start_folder, "/elsewhere");
  EXPECT_EQ(setup.start_name, "b.txt");
}

TEST(common_dialogs_file_setup_test, backslashes_separate_too) {
  const file_dlg_setup_t setup = setup_for("C:\\data\\report.csv");
  EXPECT_EQ(setup.start_folder, "C:\\data\\");
  EXPECT_EQ(setup.start_name, "report.csv");
}

TEST(common_dialogs_file_setup_test, the_last_separator_of_either_kind_counts) {
  EXPECT_EQ(setup_for("/a\\b/c.txt").start_folder, "/a\\b/");
  EXPECT_EQ(setup_for("/a/b\\c.txt").start_name, "c.txt");
}

TEST(common_dialogs_file_setup_test, path_without_separator_gives_no_start_name) {
  const file_dlg_setup_t setup = setup_for("b.txt", "", "", "/given");
  EXPECT_EQ(setup.start_folder, "/given");
  EXPECT_EQ(setup.start_name, "");
  EXPECT_EQ(setup_for("b.txt").start_folder, "");
}

TEST(common_dialogs_file_setup_test, path_ending_in_a_separator_gives_an_empty_name) {
  const file_dlg_setup_t setup = setup_for("/a/b/");
  EXPECT_EQ(setup.start_folder, "/a/b/");
  EXPECT_EQ(setup.start_name, "");
}

TEST(common_dialogs_file_setup_test, lines_become_bars_and_the_trailing_bar_goes) {
  const file_dlg_setup_t setup = setup_for("", "txt", "Text\n*.txt\nAll\n*\n");
  EXPECT_EQ(setup.filter, "Text|*.txt|All|*");
  EXPECT_EQ(setup.filter_index, 0);
}

TEST(common_dialogs_file_setup_test, only_one_trailing_bar_goes) {
  EXPECT_EQ(setup_for("", "", "Text\n*.txt\n\n").filter, "Text|*.txt|");
  EXPECT_EQ(setup_for("", "", "Text|*.txt").filter, "Text|*.txt");
}

TEST(common_dialogs_file_setup_test, star_extension_searches_dot_star_and_gives_0) {
  EXPECT_EQ(setup_for("", "*", "Text\n*.txt\nAll\n*\n").filter_index, 0);
}

TEST(common_dialogs_file_setup_test, extension_in_the_second_filter_gives_1) {
  const std::string filter = "Text\n*.txt\nLog\n*.log\nAll\n*\n";
  EXPECT_EQ(setup_for("", "log", filter).filter_index, 1);
  EXPECT_EQ(setup_for("", ".log", filter).filter_index, 1);
}

TEST(common_dialogs_file_setup_test, the_last_occurrence_decides) {
  EXPECT_EQ(setup_for("", "c", "C\n*.c\nC and headers\n*.c;*.h\n").filter_index, 1);
}

TEST(common_dialogs_file_setup_test, unknown_or_empty_extension_gives_0) {
  const std::string filter = "Text\n*.txt\nLog\n*.log\n";
  EXPECT_EQ(setup_for("", "csv", filter).filter_index, 0);
  EXPECT_EQ(setup_for("", "", filter).filter_index, 0);
  EXPECT_EQ(setup_for("", "log", "").filter_index, 0);
}

TEST(common_dialogs_file_setup_test, empty_title_takes_the_default) {
  EXPECT_EQ(tamsel3::make_file_dlg_setup("", "", "", "", "", "Default").title, "Default");
  EXPECT_EQ(tamsel3::make_file_dlg_setup("", "", "", "Mine", "", "Default").title, "Mine");
  // A default that stayed empty, as without a catalog, leaves the title empty.
  EXPECT_EQ(tamsel3::make_file_dlg_setup("", "", "", "", "", "").title, "");
}

// Locations whose resource folder holds no catalog.
class empty_locations_t : public quern2::IProductLocations {
 public:
  explicit empty_locations_t(std::string dir) : m_dir(std::move(dir)) {}
  const char* getResourceDirectory() const override { return m_dir.c_str(); }
  const char* getProductText(int) const override { return ""; }
  const char* getFeaturesDirectory() const override { return ""; }
  const char* getProductTag() const override { return "tam"; }
  int getProductGeneration() const override { return 12; }

 private:
  std::string m_dir;
};

class common_dialogs_default_title_test : public ::testing::Test {
 protected:
  void SetUp() override {
    quern2::IProductLocations::set(&m_locations);
    quern2::reloadMessageCatalogs();
  }
  void TearDown() override {
    quern2::IProductLocations::set(nullptr);
    quern2::reloadMessageCatalogs();
  }
  static void register_catalog(const std::string& text) {
    quern2::registerMessageCatalog(std::make_shared<const ZANDOR_2_16::i18n::catalog_t>(
        "tamsel", "en", ZANDOR_2_16::i18n::catalog_t::messages_t{{"dlg.title", text}}));
  }

  test_support::temp_dir_t m_folder;
  empty_locations_t m_locations{m_folder.path()};
};

TEST_F(common_dialogs_default_title_test, missing_catalog_leaves_the_title_empty) {
  default_title_t title("dlg.title");
  EXPECT_EQ(title.get(), "");
}

TEST_F(common_dialogs_default_title_test, is_filled_once_the_catalog_is_there) {
  default_title_t title("dlg.title");
  EXPECT_EQ(title.get(), "");
  register_catalog("Pick one");
  EXPECT_EQ(title.get(), "Pick one");
}

TEST_F(common_dialogs_default_title_test, is_kept_once_filled) {
  default_title_t title("dlg.title");
  register_catalog("Pick one");
  EXPECT_EQ(title.get(), "Pick one");
  register_catalog("Another text");
  EXPECT_EQ(title.get(), "Pick one");
  quern2::reloadMessageCatalogs();
  EXPECT_EQ(title.get(), "Pick one");
}

TEST_F(common_dialogs_default_title_test, catalog_without_the_key_gives_an_empty_title_for_good) {
  default_title_t title("dlg.other");
  register_catalog("Pick one");
  EXPECT_EQ(title.get(), "");
  quern2::registerMessageCatalog(std::make_shared<const ZANDOR_2_16::i18n::catalog_t>(
      "tamsel", "en", ZANDOR_2_16::i18n::catalog_t::messages_t{{"dlg.other", "Too late"}}));
  EXPECT_EQ(title.get(), "");
}

TEST(common_dialogs_catalog_test, library_catalog_has_the_dialog_titles) {
  quern2::reloadMessageCatalogs();
  EXPECT_EQ(default_title_t("dlg.browse_file.name").get(), "Choose a File");
  EXPECT_EQ(default_title_t("dlg.browse_folder.name").get(), "Choose a Folder");
}

}  // namespace
