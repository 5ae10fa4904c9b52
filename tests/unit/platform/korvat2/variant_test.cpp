#include <korvat2/variant.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using korvat2::variant_t;
using test_support::assert_recorder_t;
using texts_t = std::vector<std::string>;

// "Grüße, €" and a character outside the basic plane (U+1F600), in both encodings.
const char* const utf8_text =
    "Gr\xC3\xBC\xC3\x9F"
    "e, \xE2\x82\xAC \xF0\x9F\x98\x80";
const std::u16string utf16_text = u"Gr\u00FC\u00DFe, \u20AC \U0001F600";

// Whether each readable kind is reported as such, in the order narrow text, string,
// wide text, u16string, int, bool.
std::vector<bool> readable_as(const variant_t& value) {
  return {
      value.can_get<const char*>(),    value.can_get<std::string>(), value.can_get<const zandor2::uchar_t*>(),
      value.can_get<std::u16string>(), value.can_get<int>(),         value.can_get<bool>()};
}

const std::vector<bool> text_only{true, true, true, true, false, false};
const std::vector<bool> number_only{false, false, false, false, true, true};
const std::vector<bool> nothing{false, false, false, false, false, false};

TEST(variant_test, default_variant_holds_nothing) {
  const variant_t value;
  EXPECT_EQ(value.kind(), variant_t::kind_empty);
  EXPECT_TRUE(value.is_empty());
  EXPECT_EQ(readable_as(value), nothing);
}

TEST(variant_test, each_constructor_gives_its_kind) {
  EXPECT_EQ(variant_t("a").kind(), variant_t::kind_text);
  EXPECT_EQ(variant_t(std::string("a")).kind(), variant_t::kind_text);
  EXPECT_EQ(variant_t(u"a").kind(), variant_t::kind_wide_text);
  EXPECT_EQ(variant_t(std::u16string(u"a")).kind(), variant_t::kind_wide_text);
  EXPECT_EQ(variant_t(7).kind(), variant_t::kind_int);
  EXPECT_EQ(variant_t(false).kind(), variant_t::kind_bool);
  EXPECT_FALSE(variant_t(0).is_empty());
  EXPECT_FALSE(variant_t("").is_empty());
}

TEST(variant_test, text_kinds_read_only_as_text) {
  EXPECT_EQ(readable_as(variant_t("abc")), text_only);
  EXPECT_EQ(readable_as(variant_t(u"abc")), text_only);
  EXPECT_EQ(readable_as(variant_t("")), text_only);
}

TEST(variant_test, number_kinds_read_only_as_numbers) {
  EXPECT_EQ(readable_as(variant_t(42)), number_only);
  EXPECT_EQ(readable_as(variant_t(true)), number_only);
}

TEST(variant_test, narrow_text_reads_in_every_text_form) {
  const variant_t value("hello");
  EXPECT_STREQ(value.get<const char*>(), "hello");
  EXPECT_EQ(value.get<std::string>(), "hello");
  EXPECT_EQ(std::u16string(value.get<const zandor2::uchar_t*>()), u"hello");
  EXPECT_EQ(value.get<std::u16string>(), u"hello");
}

TEST(variant_test, wide_text_reads_in_every_text_form) {
  const variant_t value(u"wide");
  EXPECT_STREQ(value.get<const char*>(), "wide");
  EXPECT_EQ(value.get<std::string>(), "wide");
  EXPECT_EQ(std::u16string(value.get<const zandor2::uchar_t*>()), u"wide");
  EXPECT_EQ(value.get<std::u16string>(), u"wide");
}

TEST(variant_test, non_ascii_narrow_text_reads_as_wide_and_back) {
  const variant_t narrow(utf8_text);
  EXPECT_EQ(narrow.get<std::u16string>(), utf16_text);
  const variant_t wide(narrow.get<std::u16string>());
  EXPECT_EQ(wide.get<std::string>(), utf8_text);
}

TEST(variant_test, non_ascii_wide_text_reads_as_utf8_and_back) {
  const variant_t wide(utf16_text);
  EXPECT_EQ(wide.get<std::string>(), utf8_text);
  const variant_t narrow(wide.get<const char*>());
  EXPECT_EQ(narrow.get<std::u16string>(), utf16_text);
}

TEST(variant_test, malformed_utf8_reads_as_replacement_character) {
  const variant_t value(
      "a\xFF"
      "b");
  EXPECT_EQ(value.get<std::u16string>(), u"a\uFFFDb");
  EXPECT_EQ(value.get<std::string>(),
            "a\xFF"
            "b");  // the narrow form stays as given
}

TEST(variant_test, null_texts_give_empty_text) {
  const char* no_narrow = nullptr;
  const zandor2::uchar_t* no_wide = nullptr;
  const variant_t narrow(no_narrow);
  const variant_t wide(no_wide);
  EXPECT_EQ(narrow.kind(), variant_t::kind_text);
  EXPECT_EQ(wide.kind(), variant_t::kind_wide_text);
  EXPECT_STREQ(narrow.get<const char*>(), "");
  EXPECT_EQ(wide.get<std::u16string>(), u"");
}

TEST(variant_test, int_reads_as_bool) {
  EXPECT_EQ(variant_t(42).get<int>(), 42);
  EXPECT_EQ(variant_t(INT_MIN).get<int>(), INT_MIN);
  EXPECT_EQ(variant_t(INT_MAX).get<int>(), INT_MAX);
  EXPECT_TRUE(variant_t(42).get<bool>());
  EXPECT_TRUE(variant_t(-1).get<bool>());
  EXPECT_FALSE(variant_t(0).get<bool>());
}

TEST(variant_test, bool_reads_as_int) {
  EXPECT_TRUE(variant_t(true).get<bool>());
  EXPECT_FALSE(variant_t(false).get<bool>());
  EXPECT_EQ(variant_t(true).get<int>(), 1);
  EXPECT_EQ(variant_t(false).get<int>(), 0);
}

TEST(variant_test, number_read_as_text_is_reported_and_gives_empty_text) {
  assert_recorder_t asserts;
  const variant_t value(5);
  EXPECT_STREQ(value.get<const char*>(), "");
  EXPECT_EQ(value.get<std::string>(), "");
  EXPECT_EQ(std::u16string(value.get<const zandor2::uchar_t*>()), u"");
  EXPECT_EQ(value.get<std::u16string>(), u"");
  EXPECT_EQ(asserts.texts(), (texts_t{"can_get<const char*>()", "can_get<std::string>()",
                                      "can_get<const zandor2::uchar_t*>()", "can_get<std::u16string>()"}));
}

TEST(variant_test, text_read_as_number_is_reported_and_gives_zero) {
  assert_recorder_t asserts;
  const variant_t value("12");
  EXPECT_EQ(value.get<int>(), 0);
  EXPECT_FALSE(value.get<bool>());
  EXPECT_EQ(asserts.texts(), (texts_t{"can_get<int>()", "can_get<bool>()"}));
}

TEST(variant_test, empty_variant_read_as_anything_is_reported_and_gives_default) {
  assert_recorder_t asserts;
  const variant_t value;
  EXPECT_STREQ(value.get<const char*>(), "");
  EXPECT_EQ(value.get<int>(), 0);
  EXPECT_FALSE(value.get<bool>());
  EXPECT_EQ(asserts.texts(), (texts_t{"can_get<const char*>()", "can_get<int>()", "can_get<bool>()"}));
}

TEST(variant_test, sync_counters_return_the_new_count) {
  int counter = 1;
  EXPECT_EQ(korvat2::internal::sync_inc(&counter), 2);
  EXPECT_EQ(korvat2::internal::sync_inc(&counter), 3);
  EXPECT_EQ(korvat2::internal::sync_dec(&counter), 2);
  EXPECT_EQ(korvat2::internal::sync_dec(&counter), 1);
  EXPECT_EQ(korvat2::internal::sync_dec(&counter), 0);
  EXPECT_EQ(counter, 0);
}

TEST(variant_test, copies_share_the_text_payload) {
  const variant_t original("shared");
  const variant_t copy(original);  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy.get<const char*>(), original.get<const char*>());
  EXPECT_EQ(copy.get<const zandor2::uchar_t*>(), original.get<const zandor2::uchar_t*>());
}

TEST(variant_test, copy_outlives_the_original) {
  auto original = std::make_unique<variant_t>(utf8_text);
  const variant_t copy(*original);
  original.reset();
  EXPECT_EQ(copy.get<std::string>(), utf8_text);
  EXPECT_EQ(copy.get<std::u16string>(), utf16_text);
}

TEST(variant_test, copies_on_other_threads_share_the_payload_while_the_first_lives) {
  const variant_t original("threaded text");
  const char* const payload = original.get<const char*>();
  std::atomic<int> mismatches{0};
  constexpr int thread_count = 4;
  std::vector<std::thread> threads;
  threads.reserve(thread_count);
  for (int t = 0; t < thread_count; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 2000; ++i) {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is the test
        variant_t copy(original);
        variant_t second;
        second = copy;
        if (second.get<const char*>() != payload || copy.get<std::string>() != "threaded text") {
          ++mismatches;
        }
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(mismatches.load(), 0);
  EXPECT_STREQ(original.get<const char*>(), "threaded text");
}

TEST(variant_test, copy_made_on_another_thread_keeps_the_text_after_the_original_dies) {
  auto original = std::make_unique<variant_t>("handed over");
  variant_t copy;
  std::thread([&] { copy = *original; }).join();
  original.reset();
  EXPECT_EQ(copy.get<std::string>(), "handed over");
}

TEST(variant_test, assignment_replaces_value_and_kind) {
  variant_t value("text");
  value = variant_t(3);
  EXPECT_EQ(value.kind(), variant_t::kind_int);
  EXPECT_EQ(value.get<int>(), 3);
  const variant_t other(u"wide");
  value = other;
  EXPECT_EQ(value.kind(), variant_t::kind_wide_text);
  EXPECT_EQ(value.get<const char*>(), other.get<const char*>());
  value = variant_t();
  EXPECT_TRUE(value.is_empty());
}

TEST(variant_test, self_assignment_keeps_the_value) {
  variant_t value("self");
  variant_t& alias = value;
  value = alias;
  EXPECT_EQ(value.get<std::string>(), "self");
  value = std::move(alias);
  EXPECT_EQ(value.get<std::string>(), "self");
}

TEST(variant_test, move_takes_the_payload_and_empties_the_source) {
  variant_t source("moved");
  const char* const payload = source.get<const char*>();
  variant_t target(std::move(source));
  EXPECT_EQ(target.get<const char*>(), payload);
  EXPECT_TRUE(source.is_empty());  // NOLINT(bugprone-use-after-move): moved-from state is defined

  variant_t assigned(1);
  assigned = std::move(target);
  EXPECT_EQ(assigned.get<const char*>(), payload);
  EXPECT_TRUE(target.is_empty());  // NOLINT(bugprone-use-after-move)
}

TEST(variant_test, equality_compares_kind_and_value) {
  EXPECT_EQ(variant_t(), variant_t());
  EXPECT_EQ(variant_t("a"), variant_t(std::string("a")));
  EXPECT_EQ(variant_t(u"a"), variant_t(std::u16string(u"a")));
  EXPECT_EQ(variant_t(4), variant_t(4));
  EXPECT_EQ(variant_t(true), variant_t(true));
  EXPECT_NE(variant_t("a"), variant_t("b"));
  EXPECT_NE(variant_t(4), variant_t(5));
  EXPECT_NE(variant_t(true), variant_t(false));
  EXPECT_NE(variant_t(1), variant_t(true));
  EXPECT_NE(variant_t("1"), variant_t(1));
  EXPECT_NE(variant_t(""), variant_t());
  EXPECT_NE(variant_t(0), variant_t());
}

TEST(variant_test, copies_compare_equal) {
  const variant_t text(utf8_text);
  const variant_t copy = text;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy, text);
  EXPECT_FALSE(copy != text);
}

TEST(variant_test, narrow_text_keeps_every_byte_after_a_nul) {
  const std::string bytes("one\0two\0", 8);
  const variant_t value(bytes);
  EXPECT_EQ(value.get<std::string>(), bytes);
  EXPECT_EQ(value.get<std::u16string>(), std::u16string(u"one\0two\0", 8));
  EXPECT_NE(value, variant_t("one"));
}

TEST(variant_test, wide_texts_that_differ_in_any_unit_are_unequal) {
  // A lone surrogate has no UTF-8 form: it must not compare equal to the replacement character.
  const variant_t lone(std::u16string(1, char16_t(0xD800)));
  EXPECT_NE(lone, variant_t(std::u16string(u"\uFFFD")));
  EXPECT_NE(variant_t(std::u16string(1, char16_t(0xD800))), variant_t(std::u16string(1, char16_t(0xDC00))));
  EXPECT_EQ(lone, variant_t(std::u16string(1, char16_t(0xD800))));
  EXPECT_NE(variant_t(std::u16string(u"a\0b", 3)), variant_t(std::u16string(u"a\0c", 3)));
}

}  // namespace
