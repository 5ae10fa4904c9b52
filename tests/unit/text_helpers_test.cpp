#include <tamsel3/text_helpers.h>

#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

using tamsel3::translate_message;
using ZANDOR_2_16::generic::varg_list;

// Product texts of a host, so that the default arguments are known.
class host_locations_t : public quern2::IProductLocations {
 public:
  explicit host_locations_t(std::string resource_dir) : m_resource_dir(std::move(resource_dir)) {}
  const char* getResourceDirectory() const override { return m_resource_dir.c_str(); }
  const char* getProductText(int kind) const override {
    return kind == 0 ? "Orbit Profiler Suite" : kind == 5 ? "Orbit" : "";
  }
  const char* getFeaturesDirectory() const override { return "/nonexistent"; }
  const char* getProductTag() const override { return "orb"; }
  int getProductGeneration() const override { return 11; }

 private:
  std::string m_resource_dir;
};

class translate_message_test : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    // No catalog lies in this folder: the registry finds the test's own or nothing.
    s_locations = std::make_unique<host_locations_t>("/nonexistent/resources");
    quern2::IProductLocations::set(s_locations.get());
  }
  static void TearDownTestSuite() {
    quern2::IProductLocations::set(nullptr);
    quern2::reloadMessageCatalogs();
    s_locations.reset();
  }
  void SetUp() override { quern2::reloadMessageCatalogs(); }

  static void register_catalog() {
    quern2::registerMessageCatalog(std::make_shared<const ZANDOR_2_16::i18n::catalog_t>(
        "tamsel", "en",
        ZANDOR_2_16::i18n::catalog_t::messages_t{{"greeting", "Welcome to {prod_name} ({prod_short_name})"},
                                                 {"count", "{count} files in {prod_name}"},
                                                 {"plain", "Nothing to fill"}}));
  }

  static std::unique_ptr<host_locations_t> s_locations;
};
std::unique_ptr<host_locations_t> translate_message_test::s_locations;

TEST_F(translate_message_test, missing_catalog_gives_a_diagnostic) {
  EXPECT_EQ(translate_message("greeting", varg_list()),
            "Message catalog 'tamsel' is not loaded. Message: greeting");
}

TEST_F(translate_message_test, missing_key_gives_a_diagnostic) {
  register_catalog();
  EXPECT_EQ(translate_message("no.such.key", varg_list()), "Message is not found: 'no.such.key'");
}

TEST_F(translate_message_test, without_arguments_the_product_names_are_filled_in) {
  register_catalog();
  EXPECT_EQ(translate_message("greeting", varg_list()), "Welcome to Orbit Profiler Suite (Orbit)");
  EXPECT_EQ(translate_message("plain", varg_list()), "Nothing to fill");
}

TEST_F(translate_message_test, given_arguments_are_used_alone) {
  register_catalog();
  EXPECT_EQ(translate_message("count", varg_list(ZANDOR_2_16::generic::argument("count", 3))),
            "3 files in {prod_name}");
}

TEST(translate_message_catalog_test, library_catalog_has_the_standard_buttons) {
  quern2::reloadMessageCatalogs();
  EXPECT_EQ(translate_message("btn.ok", varg_list()), "OK");
  EXPECT_EQ(translate_message("btn.cancel", varg_list()), "Cancel");
}

TEST(restore_line_endings_test, lone_line_feeds_get_a_carriage_return) {
  EXPECT_EQ(tamsel3::restore_line_endings("a\nb\r\nc\n"), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(tamsel3::restore_line_endings("\nx"), "\r\nx");
  EXPECT_EQ(tamsel3::restore_line_endings("a\rb"), "a\rb");
  EXPECT_EQ(tamsel3::restore_line_endings("\r\n\r\n"), "\r\n\r\n");
  EXPECT_EQ(tamsel3::restore_line_endings(""), "");
}

TEST(disabled_tooltip_text_test, lists_the_characters_after_the_prefix) {
  EXPECT_EQ(tamsel3::get_disabled_tooltip_text("Not allowed:", "*\"<>|", true), "Not allowed:\n*\"<>|");
  EXPECT_EQ(tamsel3::get_disabled_tooltip_text("Not allowed:", "*?", false), "Not allowed: *?");
}

TEST(disabled_tooltip_text_test, empty_characters_give_the_prefix_and_separator) {
  EXPECT_EQ(tamsel3::get_disabled_tooltip_text("Prefix", "", true), "Prefix\n");
  EXPECT_EQ(tamsel3::get_disabled_tooltip_text("Prefix", "", false), "Prefix ");
}

TEST(first_letter_uppercase_test, only_the_first_character_changes) {
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase(""), "");
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase("field name"), "Field name");
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase("fIELD"), "FIELD");
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase("Already"), "Already");
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase("1st place"), "1st place");
  EXPECT_EQ(tamsel3::set_1st_letter_uppercase("\xC3\xA4rger"), "\xC3\x84rger");  // ärger
}

TEST(string_value_test, reads_narrow_text_only) {
  korvat2::variant_bag_t bag;
  korvat2::variant_bag_t entry;
  entry.put("name", std::string("vim"));
  entry.put("count", 3);
  entry.put("wide", korvat2::variant_t(std::u16string(u"wide")));
  bag.add_variant_bag("editor", entry);
  auto it = bag.begin_by_name<korvat2::variant_bag_t>("editor");
  ASSERT_FALSE(it.at_end());
  EXPECT_EQ(tamsel3::get_string_value(it, "name"), "vim");
  EXPECT_EQ(tamsel3::get_string_value(it, "count"), "");
  EXPECT_EQ(tamsel3::get_string_value(it, "wide"), "");
  EXPECT_EQ(tamsel3::get_string_value(it, "missing"), "");
}

}  // namespace
