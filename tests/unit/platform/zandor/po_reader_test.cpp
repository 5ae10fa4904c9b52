#include <zandor/catalog.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using ZANDOR_2_16::i18n::catalog_t;
using messages_t = catalog_t::messages_t;

const char context_separator = '\x04';

messages_t parse(const std::string& text) {
  messages_t messages;
  std::string error;
  EXPECT_TRUE(catalog_t::parse_po(text, messages, error)) << error;
  EXPECT_EQ(error, "");
  return messages;
}

// Parses malformed text: the answer must be false, the map untouched; gives the error.
std::string parse_error(const std::string& text) {
  messages_t messages{{"kept", "as it was"}};
  std::string error;
  EXPECT_FALSE(catalog_t::parse_po(text, messages, error));
  EXPECT_EQ(messages, (messages_t{{"kept", "as it was"}}));
  EXPECT_FALSE(error.empty());
  return error;
}

const char* const header =
    "# Translation of tamsel.\n"
    "# Copyright (C) The Tamsel Project\n"
    "#, fuzzy\n"
    "msgid \"\"\n"
    "msgstr \"\"\n"
    "\"Project-Id-Version: tamsel 3.0\\n\"\n"
    "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
    "\"Plural-Forms: nplurals=2; plural=(n != 1);\\n\"\n"
    "\n";

TEST(po_reader_test, simple_entries) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"A\"\n\nmsgid \"b\"\nmsgstr \"B\"\n"),
            (messages_t{{"a", "A"}, {"b", "B"}}));
}

TEST(po_reader_test, empty_text_gives_no_message) {
  EXPECT_EQ(parse(""), messages_t{});
  EXPECT_EQ(parse("\n\n# only a comment\n"), messages_t{});
}

TEST(po_reader_test, header_entry_is_left_out_and_its_fuzzy_flag_stays_with_it) {
  EXPECT_EQ(parse(std::string(header) + "msgid \"key\"\nmsgstr \"text\"\n"), (messages_t{{"key", "text"}}));
}

TEST(po_reader_test, header_without_fuzzy_flag_is_left_out_too) {
  EXPECT_EQ(parse("msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n"
                  "msgid \"k\"\nmsgstr \"v\"\n"),
            (messages_t{{"k", "v"}}));
}

TEST(po_reader_test, multi_line_strings_are_joined) {
  EXPECT_EQ(parse("msgid \"\"\n"
                  "\"long \"\n"
                  "\"key\"\n"
                  "msgstr \"\"\n"
                  "\"first line\\n\"\n"
                  "\"second line\"\n"),
            (messages_t{{"long key", "first line\nsecond line"}}));
}

TEST(po_reader_test, escapes) {
  const messages_t messages = parse(
      "msgid \"k\"\n"
      "msgstr \"n\\n t\\t q\\\" b\\\\ o\\101\\60\\0067 r\\r a\\a\"\n");
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages.at("k"), std::string("n\n t\t q\" b\\ oA0\x06"
                                          "7 r\r a\a"));
}

TEST(po_reader_test, octal_escape_takes_at_most_three_digits) {
  EXPECT_EQ(parse("msgid \"k\"\nmsgstr \"\\1012\"\n").at("k"), "A2");
  EXPECT_EQ(parse("msgid \"k\"\nmsgstr \"\\7\"\n").at("k"), "\a");
  EXPECT_EQ(parse("msgid \"k\"\nmsgstr \"x\\303\\244\"\n").at("k"), "xä");
}

TEST(po_reader_test, escapes_in_keys) {
  EXPECT_EQ(parse("msgid \"a\\tb\\\"c\"\nmsgstr \"v\"\n"), (messages_t{{"a\tb\"c", "v"}}));
}

TEST(po_reader_test, comments_of_every_kind_are_ignored) {
  EXPECT_EQ(parse("# translator comment\n"
                  "#. extracted comment\n"
                  "#: src/file.cpp:12\n"
                  "#, c-format\n"
                  "#| msgid \"old\"\n"
                  "msgid \"k\"\n"
                  "msgstr \"v\"\n"
                  "#~ msgid \"obsolete\"\n"
                  "#~ msgstr \"gone\"\n"),
            (messages_t{{"k", "v"}}));
}

TEST(po_reader_test, fuzzy_entries_are_left_out) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"A\"\n\n"
                  "#, fuzzy\nmsgid \"b\"\nmsgstr \"B\"\n\n"
                  "msgid \"c\"\nmsgstr \"C\"\n\n"
                  "#: place.cpp:1\n#, c-format, fuzzy\nmsgid \"d\"\nmsgstr \"D\"\n"),
            (messages_t{{"a", "A"}, {"c", "C"}}));
}

TEST(po_reader_test, fuzzy_flag_right_after_an_entry_belongs_to_the_next_one) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"A\"\n#, fuzzy\nmsgid \"b\"\nmsgstr \"B\"\n"),
            (messages_t{{"a", "A"}}));
}

TEST(po_reader_test, untranslated_entries_are_left_out) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"\"\n\nmsgid \"b\"\nmsgstr \"B\"\n"), (messages_t{{"b", "B"}}));
}

TEST(po_reader_test, context_makes_a_key_of_its_own) {
  const messages_t messages = parse(
      "msgctxt \"menu\"\n"
      "msgid \"Open\"\n"
      "msgstr \"Öffnen (Menü)\"\n"
      "\n"
      "msgid \"Open\"\n"
      "msgstr \"Öffnen\"\n");
  EXPECT_EQ(messages, (messages_t{{"Open", "Öffnen"},
                                  {std::string("menu") + context_separator + "Open", "Öffnen (Menü)"}}));
}

TEST(po_reader_test, context_after_a_plain_entry_starts_a_new_entry) {
  const messages_t messages = parse(
      "msgid \"Open\"\n"
      "msgstr \"Öffnen\"\n"
      "msgctxt \"button\"\n"
      "msgid \"Open\"\n"
      "msgstr \"Auf\"\n");
  EXPECT_EQ(messages,
            (messages_t{{"Open", "Öffnen"}, {std::string("button") + context_separator + "Open", "Auf"}}));
}

// As in GNU gettext, an empty context is a context all the same: the key has the separator.
TEST(po_reader_test, empty_context_is_distinct_from_no_context) {
  const messages_t messages = parse(
      "msgctxt \"\"\n"
      "msgid \"Open\"\n"
      "msgstr \"Öffnen (leerer Kontext)\"\n"
      "\n"
      "msgid \"Open\"\n"
      "msgstr \"Öffnen\"\n");
  EXPECT_EQ(messages, (messages_t{{"Open", "Öffnen"},
                                  {std::string(1, context_separator) + "Open", "Öffnen (leerer Kontext)"}}));
}

TEST(po_reader_test, fuzzy_entry_with_context_is_left_out) {
  EXPECT_EQ(parse("#, fuzzy\nmsgctxt \"c\"\nmsgid \"a\"\nmsgstr \"A\"\n"), messages_t{});
}

TEST(po_reader_test, plural_entry_keeps_the_first_form) {
  EXPECT_EQ(parse(std::string(header) + "msgid \"{n} file\"\n"
                                        "msgid_plural \"{n} files\"\n"
                                        "msgstr[0] \"{n} Datei\"\n"
                                        "msgstr[1] \"{n} Dateien\"\n"
                                        "\n"
                                        "msgid \"next\"\n"
                                        "msgstr \"nächste\"\n"),
            (messages_t{{"{n} file", "{n} Datei"}, {"next", "nächste"}}));
}

TEST(po_reader_test, plural_entry_with_empty_first_form_is_untranslated) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgid_plural \"as\"\nmsgstr[0] \"\"\nmsgstr[1] \"\"\n"), messages_t{});
}

TEST(po_reader_test, windows_line_ends_and_indentation_are_accepted) {
  EXPECT_EQ(parse("msgid \"a\"\r\nmsgstr \"A\"\r\n\r\n  msgid\t\"b\"  \r\n\tmsgstr \"B\"\t\r\n"),
            (messages_t{{"a", "A"}, {"b", "B"}}));
}

TEST(po_reader_test, last_entry_without_final_line_end) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"A\""), (messages_t{{"a", "A"}}));
}

TEST(po_reader_test, later_entry_of_the_same_key_wins) {
  EXPECT_EQ(parse("msgid \"a\"\nmsgstr \"1\"\nmsgid \"a\"\nmsgstr \"2\"\n"), (messages_t{{"a", "2"}}));
}

TEST(po_reader_test, utf8_text_is_kept_byte_for_byte) {
  EXPECT_EQ(parse("msgid \"greeting\"\nmsgstr \"Привет, 世界 😀\"\n"),
            (messages_t{{"greeting", "Привет, 世界 😀"}}));
}

// ---- malformed text -------------------------------------------------------------------

TEST(po_reader_test, unterminated_string_is_an_error_with_its_line) {
  const std::string error = parse_error("msgid \"a\"\nmsgstr \"A\"\n\nmsgid \"b\nmsgstr \"B\"\n");
  EXPECT_EQ(error.rfind("line 4:", 0), 0u) << error;
}

TEST(po_reader_test, escaped_closing_quote_leaves_the_string_unterminated) {
  const std::string error = parse_error("msgid \"a\\\"\nmsgstr \"A\"\n");
  EXPECT_EQ(error.rfind("line 1:", 0), 0u) << error;
}

TEST(po_reader_test, unknown_keyword_is_an_error_with_its_line) {
  const std::string error = parse_error("msgid \"a\"\nmsgstr \"A\"\nmsgfoo \"x\"\n");
  EXPECT_EQ(error.rfind("line 3:", 0), 0u) << error;
  EXPECT_NE(error.find("msgfoo"), std::string::npos) << error;
}

TEST(po_reader_test, string_without_keyword_is_an_error) {
  EXPECT_EQ(parse_error("\"lonely\"\nmsgid \"a\"\nmsgstr \"A\"\n").rfind("line 1:", 0), 0u);
  // After a complete entry a comment doesn't open a new field either.
  EXPECT_EQ(parse_error("msgid \"a\"\nmsgstr \"A\"\n#, fuzzy\n\"more\"\n").rfind("line 4:", 0), 0u);
}

TEST(po_reader_test, text_after_a_keyword_must_be_a_quoted_string) {
  EXPECT_EQ(parse_error("msgid a\nmsgstr \"A\"\n").rfind("line 1:", 0), 0u);
  EXPECT_EQ(parse_error("msgid \"a\"\nmsgstr\n").rfind("line 2:", 0), 0u);
  EXPECT_EQ(parse_error("msgid \"a\"\nmsgstr \"\n").rfind("line 2:", 0), 0u);
}

TEST(po_reader_test, unescaped_quote_inside_a_string_is_an_error) {
  EXPECT_EQ(parse_error("msgid \"a\"b\"\nmsgstr \"A\"\n").rfind("line 1:", 0), 0u);
}

TEST(po_reader_test, unknown_escape_is_an_error) {
  EXPECT_EQ(parse_error("msgid \"a\"\nmsgstr \"\\q\"\n").rfind("line 2:", 0), 0u);
}

TEST(po_reader_test, msgstr_before_msgid_is_an_error) {
  EXPECT_EQ(parse_error("msgstr \"A\"\nmsgid \"a\"\n").rfind("line 1:", 0), 0u);
  EXPECT_EQ(parse_error("msgctxt \"c\"\nmsgstr \"A\"\n").rfind("line 2:", 0), 0u);
}

TEST(po_reader_test, error_line_counts_windows_line_ends_once) {
  EXPECT_EQ(parse_error("msgid \"a\"\r\nmsgstr \"A\"\r\nbad\r\n").rfind("line 3:", 0), 0u);
}

TEST(po_reader_test, success_leaves_the_error_text_alone_and_fills_the_map) {
  messages_t messages;
  std::string error;
  ASSERT_TRUE(catalog_t::parse_po("msgid \"a\"\nmsgstr \"A\"\n", messages, error));
  EXPECT_EQ(messages, (messages_t{{"a", "A"}}));
}

}  // namespace
