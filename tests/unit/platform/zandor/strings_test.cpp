#include <zandor/strings.h>
#include <zandor/ustring.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ZANDOR_2_16::strings::decode_utf8;
using ZANDOR_2_16::strings::replace_all;
using ZANDOR_2_16::strings::split_keep_empty;
using ZANDOR_2_16::strings::split_skip_empty;
using ZANDOR_2_16::strings::split_string;
using ZANDOR_2_16::strings::to_upper;
using ZANDOR_2_16::strings::to_utf16;
using ZANDOR_2_16::strings::to_utf8;
using ZANDOR_2_16::strings::ustring8;
using pieces_t = std::vector<std::string>;

std::string upper(const std::string& text) { return to_upper(ustring8(text)).str(); }

// ---- to_upper -------------------------------------------------------------------------

TEST(strings_test, to_upper_of_ascii) {
  EXPECT_EQ(upper("hello, World 42!"), "HELLO, WORLD 42!");
  EXPECT_EQ(upper("az AZ @[`{"), "AZ AZ @[`{");
  EXPECT_EQ(upper(""), "");
}

TEST(strings_test, to_upper_of_latin_letters_with_diacritics) {
  EXPECT_EQ(upper("äöü"), "ÄÖÜ");
  EXPECT_EQ(upper("éèêç àñ"), "ÉÈÊÇ ÀÑ");
  EXPECT_EQ(upper("łżść"), "ŁŻŚĆ");
}

TEST(strings_test, to_upper_keeps_sharp_s_which_has_no_single_upper_case_letter) {
  EXPECT_EQ(upper("straße"), "STRAßE");
  EXPECT_EQ(upper("ß"), "ß");
}

TEST(strings_test, to_upper_of_cyrillic_and_greek) {
  EXPECT_EQ(upper("привет, мир"), "ПРИВЕТ, МИР");
  EXPECT_EQ(upper("йёж"), "ЙЁЖ");
  EXPECT_EQ(upper("αβγ δ ω"), "ΑΒΓ Δ Ω");
  EXPECT_EQ(upper("λόγος"), "ΛΌΓΟΣ");  // final sigma too
}

TEST(strings_test, to_upper_leaves_upper_case_digits_and_symbols_alone) {
  EXPECT_EQ(upper("ÄÖÜ ПРИВЕТ 123 €"), "ÄÖÜ ПРИВЕТ 123 €");
  EXPECT_EQ(upper("日本語 😀"), "日本語 😀");
}

TEST(strings_test, to_upper_keeps_malformed_bytes_as_they_were) {
  EXPECT_EQ(upper("a\xFF"
                  "b"),
            "A\xFF"
            "B");
  EXPECT_EQ(upper("\x80x"), "\x80X");
  EXPECT_EQ(upper("ä\xC3"), "Ä\xC3");                  // truncated sequence at the end
  EXPECT_EQ(upper("\xC3(z"), "\xC3(Z");                // lead byte without continuation
  EXPECT_EQ(upper("\xC0\x80q"), "\xC0\x80Q");          // overlong encoding
  EXPECT_EQ(upper("\xED\xA0\x80s"), "\xED\xA0\x80S");  // encoded surrogate
}

TEST(strings_test, to_upper_does_not_depend_on_the_byte_length_of_letters) {
  // ı (2 bytes) upper-cases to I (1 byte); the rest must stay in step.
  EXPECT_EQ(upper("ıa"), "IA");
}

// ---- replace_all ----------------------------------------------------------------------

TEST(strings_test, replace_all_replaces_every_occurrence_and_counts) {
  std::string text = "one two one three one";
  EXPECT_EQ(replace_all(text, "one", "1"), 3u);
  EXPECT_EQ(text, "1 two 1 three 1");
}

TEST(strings_test, replace_all_without_occurrence_changes_nothing) {
  std::string text = "abc";
  EXPECT_EQ(replace_all(text, "x", "y"), 0u);
  EXPECT_EQ(text, "abc");
  std::string empty;
  EXPECT_EQ(replace_all(empty, "x", "y"), 0u);
  EXPECT_EQ(empty, "");
}

TEST(strings_test, replace_all_with_empty_what_gives_zero) {
  std::string text = "abc";
  EXPECT_EQ(replace_all(text, "", "x"), 0u);
  EXPECT_EQ(text, "abc");
}

TEST(strings_test, replace_all_does_not_rescan_replaced_text) {
  std::string text = "aaa";
  EXPECT_EQ(replace_all(text, "a", "aa"), 3u);
  EXPECT_EQ(text, "aaaaaa");

  std::string wrapped = "x";
  EXPECT_EQ(replace_all(wrapped, "x", "<x>"), 1u);
  EXPECT_EQ(wrapped, "<x>");
}

TEST(strings_test, replace_all_goes_left_to_right_over_overlapping_occurrences) {
  std::string text = "aaaa";
  EXPECT_EQ(replace_all(text, "aa", "b"), 2u);
  EXPECT_EQ(text, "bb");
  std::string odd = "aaa";
  EXPECT_EQ(replace_all(odd, "aa", "b"), 1u);
  EXPECT_EQ(odd, "ba");
}

TEST(strings_test, replace_all_with_empty_replacement_removes) {
  std::string text = "a-b--c-";
  EXPECT_EQ(replace_all(text, "-", ""), 4u);
  EXPECT_EQ(text, "abc");
}

TEST(strings_test, replace_all_does_not_find_occurrences_inside_its_replacement) {
  std::string text = "ab";
  EXPECT_EQ(replace_all(text, "b", "ab"), 1u);
  EXPECT_EQ(text, "aab");
}

TEST(strings_test, replace_all_of_multi_byte_text) {
  std::string text = "größe, größer";
  EXPECT_EQ(replace_all(text, "ö", "oe"), 2u);
  EXPECT_EQ(text, "groeße, groeßer");
}

// ---- split_string ---------------------------------------------------------------------

TEST(strings_test, split_string_on_each_of_several_separators) {
  EXPECT_EQ(split_string("a,b;c d", ",; ", split_keep_empty), (pieces_t{"a", "b", "c", "d"}));
}

TEST(strings_test, split_string_keeps_empty_pieces_when_asked) {
  EXPECT_EQ(split_string("a,,b", ",", split_keep_empty), (pieces_t{"a", "", "b"}));
  EXPECT_EQ(split_string(",a,", ",", split_keep_empty), (pieces_t{"", "a", ""}));
  EXPECT_EQ(split_string(",", ",", split_keep_empty), (pieces_t{"", ""}));
  EXPECT_EQ(split_string("a,;b", ",;", split_keep_empty), (pieces_t{"a", "", "b"}));
}

TEST(strings_test, split_string_skips_empty_pieces_when_asked) {
  EXPECT_EQ(split_string("a,,b", ",", split_skip_empty), (pieces_t{"a", "b"}));
  EXPECT_EQ(split_string(",a,;b;", ",;", split_skip_empty), (pieces_t{"a", "b"}));
  EXPECT_EQ(split_string(",;,", ",;", split_skip_empty), pieces_t{});
}

TEST(strings_test, split_string_of_empty_text_gives_no_piece) {
  EXPECT_EQ(split_string("", ",", split_keep_empty), pieces_t{});
  EXPECT_EQ(split_string("", ",", split_skip_empty), pieces_t{});
}

TEST(strings_test, split_string_without_separator_in_text_gives_the_whole_text) {
  EXPECT_EQ(split_string("abc", ",", split_keep_empty), pieces_t{"abc"});
  EXPECT_EQ(split_string("abc", "", split_keep_empty), pieces_t{"abc"});
}

TEST(strings_test, split_string_keeps_multi_byte_text_whole) {
  EXPECT_EQ(split_string("äö:ü", ":", split_keep_empty), (pieces_t{"äö", "ü"}));
}

// ---- ustring8 -------------------------------------------------------------------------

TEST(strings_test, ustring8_length_counts_code_points) {
  EXPECT_EQ(ustring8("").length(), 0u);
  EXPECT_EQ(ustring8("abc").length(), 3u);
  EXPECT_EQ(ustring8("äöü").length(), 3u);
  EXPECT_EQ(ustring8("äöü").size(), 6u);
  EXPECT_EQ(ustring8("€").length(), 1u);
  EXPECT_EQ(ustring8("a😀b").length(), 3u);
  EXPECT_EQ(ustring8("привет").length(), 6u);
}

TEST(strings_test, ustring8_length_counts_a_malformed_byte_as_one) {
  EXPECT_EQ(ustring8("a\xFF"
                     "b")
                .length(),
            3u);
  EXPECT_EQ(ustring8("\xE2\x82").length(), 2u);  // truncated three-byte sequence
  EXPECT_EQ(ustring8("\x80\x80\x80").length(), 3u);
}

TEST(strings_test, ustring8_construction_and_comparison) {
  const ustring8 from_null(static_cast<const char*>(nullptr));
  EXPECT_TRUE(from_null.empty());
  const ustring8 a("abc");
  const ustring8 b(std::string("abc"));
  EXPECT_EQ(a, b);
  EXPECT_NE(a, ustring8("abd"));
  EXPECT_TRUE(a < ustring8("abd"));
  EXPECT_STREQ(a.c_str(), "abc");
  const std::string& as_string = a;
  EXPECT_EQ(as_string, "abc");
}

// ---- to_utf16 / to_utf8 ---------------------------------------------------------------

TEST(strings_test, utf16_round_trip_of_the_basic_plane) {
  const std::string text = "aä€日本";
  const std::u16string wide = to_utf16(text);
  EXPECT_EQ(wide, (std::u16string{u'a', u'\u00E4', u'\u20AC', u'\u65E5', u'\u672C'}));
  EXPECT_EQ(to_utf8(wide), text);
}

TEST(strings_test, utf16_round_trip_with_surrogate_pairs) {
  const std::string text = "x\xF0\x9F\x98\x80y\xF4\x8F\xBF\xBF";  // U+1F600 and U+10FFFF
  const std::u16string wide = to_utf16(text);
  EXPECT_EQ(wide, (std::u16string{u'x', char16_t(0xD83D), char16_t(0xDE00), u'y', char16_t(0xDBFF),
                                  char16_t(0xDFFF)}));
  EXPECT_EQ(to_utf8(wide), text);
  EXPECT_EQ(to_utf16(std::string("\xF0\x90\x80\x80")), (std::u16string{char16_t(0xD800), char16_t(0xDC00)}));
}

TEST(strings_test, utf16_of_empty_text) {
  EXPECT_EQ(to_utf16(""), u"");
  EXPECT_EQ(to_utf8(u""), "");
}

TEST(strings_test, to_utf16_turns_malformed_bytes_into_replacement_characters) {
  EXPECT_EQ(to_utf16("a\xFF"
                     "b"),
            (std::u16string{u'a', char16_t(0xFFFD), u'b'}));
  EXPECT_EQ(to_utf16("\xC3"), (std::u16string{char16_t(0xFFFD)}));
  EXPECT_EQ(to_utf16("\xE2\x82z"), (std::u16string{char16_t(0xFFFD), char16_t(0xFFFD), u'z'}));
  EXPECT_EQ(to_utf16("\xC0\xAF"), (std::u16string{char16_t(0xFFFD), char16_t(0xFFFD)}));
  EXPECT_EQ(to_utf16("\xED\xA0\x80"), (std::u16string{char16_t(0xFFFD), char16_t(0xFFFD), char16_t(0xFFFD)}));
  EXPECT_EQ(to_utf16("\xF4\x90\x80\x80").front(), char16_t(0xFFFD));  // beyond U+10FFFF
}

TEST(strings_test, to_utf8_turns_unpaired_surrogates_into_replacement_characters) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(to_utf8(std::u16string{u'a', char16_t(0xD800), u'b'}), "a" + replacement + "b");
  EXPECT_EQ(to_utf8(std::u16string{char16_t(0xDC00), u'c'}), replacement + "c");
  EXPECT_EQ(to_utf8(std::u16string{u'd', char16_t(0xD83D)}), "d" + replacement);
  EXPECT_EQ(to_utf8(std::u16string{char16_t(0xDE00), char16_t(0xD83D)}), replacement + replacement);
  // A high surrogate before a good pair spoils only itself.
  EXPECT_EQ(to_utf8(std::u16string{char16_t(0xD800), char16_t(0xD83D), char16_t(0xDE00)}),
            replacement + "\xF0\x9F\x98\x80");
}

// ---- decode_utf8 ----------------------------------------------------------------------

TEST(strings_test, decode_utf8_steps_from_character_to_character) {
  const std::string text = "a\xC3\xBC\xE6\x97\xA5\xF0\x9F\x8E\x89";  // a ü 日 🎉
  std::size_t pos = 0;
  std::vector<char32_t> code_points;
  std::vector<std::size_t> stops;
  while (pos < text.size()) {
    code_points.push_back(decode_utf8(text, pos));
    stops.push_back(pos);
  }
  EXPECT_EQ(code_points, (std::vector<char32_t>{U'a', 0xFC, 0x65E5, 0x1F389}));
  EXPECT_EQ(stops, (std::vector<std::size_t>{1, 3, 6, 10}));
}

TEST(strings_test, decode_utf8_of_a_malformed_or_truncated_sequence_moves_one_byte) {
  const std::string text = "\xE6\x97";  // the first two bytes of 日
  std::size_t pos = 0;
  EXPECT_EQ(decode_utf8(text, pos), char32_t(0xFFFD));
  EXPECT_EQ(pos, 1u);
  EXPECT_EQ(decode_utf8(text, pos), char32_t(0xFFFD));
  EXPECT_EQ(pos, 2u);
}

}  // namespace
