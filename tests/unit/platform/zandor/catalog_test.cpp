#include <zandor/catalog.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using test_support::temp_dir_t;
using ZANDOR_2_16::generic::argument;
using ZANDOR_2_16::generic::varg_list;
using ZANDOR_2_16::i18n::catalog_t;
using ZANDOR_2_16::i18n::message_t;

std::string format(const std::string& text, const varg_list& args) {
  return message_t(text).as_ustring(args).str();
}

// ---- message_t ------------------------------------------------------------------------

TEST(catalog_test, message_keeps_its_text) {
  EXPECT_EQ(message_t().text(), "");
  EXPECT_EQ(message_t("Open {file}").text(), "Open {file}");
}

TEST(catalog_test, as_ustring_fills_named_arguments) {
  const varg_list args(argument("file", "a.c"), argument("line", 12));
  EXPECT_EQ(format("Error in {file} at line {line}.", args), "Error in a.c at line 12.");
}

TEST(catalog_test, as_ustring_fills_arguments_in_any_order_and_repeatedly) {
  const varg_list args(argument("a", "1"), argument("b", "2"));
  EXPECT_EQ(format("{b}{a}{b}", args), "212");
}

TEST(catalog_test, as_ustring_renders_numbers_in_decimal) {
  const varg_list args(argument("count", -3), argument("size", 9876543210L));
  EXPECT_EQ(format("{count} of {size}", args), "-3 of 9876543210");
}

TEST(catalog_test, as_ustring_without_arguments_keeps_the_text) {
  EXPECT_EQ(format("plain text", varg_list()), "plain text");
  EXPECT_EQ(format("", varg_list()), "");
}

TEST(catalog_test, doubled_braces_are_literal_braces) {
  const varg_list args(argument("name", "X"));
  EXPECT_EQ(format("{{name}}", args), "{name}");
  EXPECT_EQ(format("{{{name}}}", args), "{X}");
  EXPECT_EQ(format("a {{ b }} c", args), "a { b } c");
  EXPECT_EQ(format("}}{{", args), "}{");
}

TEST(catalog_test, missing_argument_stays_as_written) {
  const varg_list args(argument("known", "K"));
  EXPECT_EQ(format("{known} {unknown}", args), "K {unknown}");
  EXPECT_EQ(format("{unknown}", varg_list()), "{unknown}");
  EXPECT_EQ(format("{Known}", args), "{Known}");  // names are case-sensitive
  EXPECT_EQ(format("{}", args), "{}");
}

TEST(catalog_test, unmatched_braces_are_literal) {
  const varg_list args(argument("a", "A"));
  EXPECT_EQ(format("{a", args), "{a");
  EXPECT_EQ(format("a}", args), "a}");
  EXPECT_EQ(format("}{a}{", args), "}A{");
  EXPECT_EQ(format("{x{a}", args), "{xA");
  EXPECT_EQ(format("{", args), "{");
  EXPECT_EQ(format("}", args), "}");
}

TEST(catalog_test, argument_values_are_not_scanned_again) {
  const varg_list args(argument("a", "{b}"), argument("b", "B"), argument("c", "}}"));
  EXPECT_EQ(format("{a} {c}", args), "{b} }}");
}

TEST(catalog_test, percent_style_names_are_names_like_any_other) {
  const varg_list args(argument("%1", "first"), argument("%2", 2));
  EXPECT_EQ(format("{%1} and {%2}", args), "first and 2");
  EXPECT_EQ(format("%1 stays", args), "%1 stays");  // only braces mark an argument
}

TEST(catalog_test, as_ustring_keeps_utf8_text_and_values) {
  const varg_list args(argument("name", "Jürgen"));
  const auto formatted = message_t("Grüße, {name}! Привет").as_ustring(args);
  EXPECT_EQ(formatted.str(), "Grüße, Jürgen! Привет");
  EXPECT_EQ(formatted.length(), 21u);
}

// ---- catalog_t ------------------------------------------------------------------------

TEST(catalog_test, catalog_answers_its_keys) {
  const catalog_t catalog("tamsel", "de_DE", {{"dlg.title", "Titel"}, {"dlg.count", "{n} Stück"}});
  EXPECT_EQ(catalog.name(), "tamsel");
  EXPECT_EQ(catalog.language(), "de_DE");
  EXPECT_EQ(catalog.size(), 2u);
  EXPECT_TRUE(catalog.has_message("dlg.title"));
  EXPECT_FALSE(catalog.has_message("dlg.missing"));
  EXPECT_FALSE(catalog.has_message(""));
  EXPECT_EQ(catalog.message("dlg.title").text(), "Titel");
  EXPECT_EQ(catalog.message("dlg.count").as_ustring(varg_list(argument("n", 3))).str(), "3 Stück");
}

TEST(catalog_test, message_of_a_missing_key_is_empty) {
  const catalog_t catalog("c", "en", {{"a", "A"}});
  EXPECT_EQ(catalog.message("b").text(), "");
  EXPECT_EQ(catalog.message("b").as_ustring(varg_list()).str(), "");
}

TEST(catalog_test, keys_are_exact) {
  const catalog_t catalog("c", "en", {{"Key", "v"}});
  EXPECT_FALSE(catalog.has_message("key"));
  EXPECT_FALSE(catalog.has_message("Key "));
  EXPECT_TRUE(catalog.has_message(std::string("Key")));
}

TEST(catalog_test, empty_catalog) {
  const catalog_t catalog("c", "en", {});
  EXPECT_EQ(catalog.size(), 0u);
  EXPECT_FALSE(catalog.has_message("a"));
}

// ---- load_po_file ---------------------------------------------------------------------

TEST(catalog_test, load_po_file_reads_a_catalog) {
  const temp_dir_t folder;
  ASSERT_FALSE(folder.path().empty());
  const std::string file = folder.write("de.po",
                                        "msgid \"\"\n"
                                        "msgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
                                        "\n"
                                        "msgid \"greeting\"\n"
                                        "msgstr \"Hallo, {name}!\"\n");
  std::string error;
  const auto catalog = catalog_t::load_po_file("tamsel", "de", file, error);
  ASSERT_NE(catalog, nullptr) << error;
  EXPECT_EQ(catalog->name(), "tamsel");
  EXPECT_EQ(catalog->language(), "de");
  EXPECT_EQ(catalog->size(), 1u);
  EXPECT_EQ(catalog->message("greeting").as_ustring(varg_list(argument("name", "Welt"))).str(),
            "Hallo, Welt!");
}

TEST(catalog_test, load_po_file_of_an_empty_file_gives_an_empty_catalog) {
  const temp_dir_t folder;
  const std::string file = folder.write("en.po", "");
  std::string error;
  const auto catalog = catalog_t::load_po_file("c", "en", file, error);
  ASSERT_NE(catalog, nullptr) << error;
  EXPECT_EQ(catalog->size(), 0u);
}

TEST(catalog_test, load_po_file_of_a_missing_file_gives_null_and_an_error) {
  const temp_dir_t folder;
  const std::string file = folder.path() + "/missing.po";
  std::string error;
  EXPECT_EQ(catalog_t::load_po_file("c", "en", file, error), nullptr);
  EXPECT_NE(error.find(file), std::string::npos) << error;
}

TEST(catalog_test, load_po_file_of_a_malformed_file_gives_null_and_names_file_and_line) {
  const temp_dir_t folder;
  const std::string file = folder.write("bad.po",
                                        "msgid \"a\"\n"
                                        "msgstr \"A\"\n"
                                        "msgid \"b\n");
  std::string error;
  EXPECT_EQ(catalog_t::load_po_file("c", "en", file, error), nullptr);
  EXPECT_NE(error.find(file), std::string::npos) << error;
  EXPECT_NE(error.find("line 3"), std::string::npos) << error;
}

TEST(catalog_test, load_po_file_of_a_folder_gives_null_and_an_error) {
  const temp_dir_t folder;
  std::string error;
  EXPECT_EQ(catalog_t::load_po_file("c", "en", folder.path(), error), nullptr);
  EXPECT_FALSE(error.empty());
}

}  // namespace
