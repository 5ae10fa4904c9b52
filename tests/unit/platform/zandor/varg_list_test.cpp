#include <zandor/types.h>
#include <zandor/varg_list.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>
#include <vector>

namespace {

using test_support::assert_recorder_t;
using ZANDOR_2_16::generic::argument;
using ZANDOR_2_16::generic::varg_list;
using ZANDOR_2_16::types::nil_t;
using ZANDOR_2_16::types::variant;

const char* const full_text = "m_count < capacity";
const char* const nil_text = "!arg.is_nil()";

std::string name_of(std::size_t index) { return "arg" + std::to_string(index); }

template <std::size_t... I>
varg_list make_list(std::index_sequence<I...>) {
  return varg_list(argument(name_of(I), static_cast<int>(I))...);
}

// ---- types::variant -------------------------------------------------------------------

TEST(varg_list_test, variant_as_string_of_each_kind) {
  EXPECT_EQ(variant("text").as_string(), "text");
  EXPECT_EQ(variant(std::string("äöü")).as_string(), "äöü");
  EXPECT_EQ(variant(42).as_string(), "42");
  EXPECT_EQ(variant(-7).as_string(), "-7");
  EXPECT_EQ(variant(INT_MIN).as_string(), std::to_string(INT_MIN));
  EXPECT_EQ(variant(1234567890123L).as_string(), "1234567890123");
  EXPECT_EQ(variant(-9L).as_string(), "-9");
  EXPECT_EQ(variant(LONG_MAX).as_string(), std::to_string(LONG_MAX));
  EXPECT_EQ(variant().as_string(), "");
  EXPECT_EQ(variant(nil_t()).as_string(), "");
  EXPECT_EQ(variant("").as_string(), "");
}

TEST(varg_list_test, variant_nil_and_equality) {
  EXPECT_TRUE(variant().is_nil());
  EXPECT_TRUE(variant(nil_t()).is_nil());
  EXPECT_FALSE(variant("").is_nil());
  EXPECT_FALSE(variant(0).is_nil());
  EXPECT_FALSE(variant(0L).is_nil());
  EXPECT_TRUE(variant(static_cast<const char*>(nullptr)) == variant(""));
  EXPECT_TRUE(variant(5) == variant(5));
  EXPECT_FALSE(variant(5) == variant(5L));  // int and long are different kinds
  EXPECT_FALSE(variant("5") == variant(5));
  EXPECT_TRUE(variant() == variant(nil_t()));
}

// ---- varg_list ------------------------------------------------------------------------

TEST(varg_list_test, default_list_is_empty_and_every_place_is_nil) {
  const varg_list list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0u);
  for (std::size_t i = 0; i < varg_list::capacity; ++i) {
    EXPECT_TRUE(list[i].is_nil()) << i;
    EXPECT_EQ(list[i].name(), "") << i;
  }
  EXPECT_EQ(list.find(""), nullptr);
  EXPECT_EQ(list.find("any"), nullptr);
}

TEST(varg_list_test, capacity_is_25) { EXPECT_EQ(varg_list::capacity, 25u); }

TEST(varg_list_test, arguments_keep_their_order_and_places_after_them_stay_nil) {
  const varg_list list(argument("name", "file.c"), argument("count", 3), argument("size", 10L));
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].name(), "name");
  EXPECT_EQ(list[0].value(), variant("file.c"));
  EXPECT_EQ(list[1].name(), "count");
  EXPECT_EQ(list[1].value(), variant(3));
  EXPECT_EQ(list[2].name(), "size");
  EXPECT_EQ(list[2].value(), variant(10L));
  EXPECT_TRUE(list[3].is_nil());
  EXPECT_TRUE(list[24].is_nil());
}

TEST(varg_list_test, add_appends_and_chains) {
  varg_list list;
  list.add("a", 1).add(argument("b", "two")).add("c", 3L);
  EXPECT_EQ(list.size(), 3u);
  EXPECT_EQ(list[1].value().as_string(), "two");
  EXPECT_EQ(list.find("c")->as_string(), "3");
}

TEST(varg_list_test, list_of_25_arguments_is_full) {
  const varg_list list = make_list(std::make_index_sequence<25>());
  EXPECT_EQ(list.size(), 25u);
  for (std::size_t i = 0; i < 25; ++i) {
    EXPECT_EQ(list[i].name(), name_of(i));
    EXPECT_EQ(list[i].value(), variant(static_cast<int>(i)));
    ASSERT_NE(list.find(name_of(i)), nullptr);
    EXPECT_EQ(list.find(name_of(i))->as_string(), std::to_string(i));
  }
}

TEST(varg_list_test, twenty_sixth_argument_is_reported_and_ignored) {
  assert_recorder_t asserts;
  varg_list list = make_list(std::make_index_sequence<25>());
  EXPECT_EQ(asserts.count(), 0u);
  list.add("extra", 26);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{full_text});
  EXPECT_EQ(list.size(), 25u);
  EXPECT_EQ(list.find("extra"), nullptr);
  EXPECT_EQ(list[24].name(), "arg24");
}

TEST(varg_list_test, nil_argument_is_reported_and_ignored) {
  assert_recorder_t asserts;
  varg_list list;
  list.add("a", 1);
  list.add(argument("nothing", nil_t()));
  list.add(argument());
  list.add("b", 2);
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{nil_text, nil_text}));
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(list[1].name(), "b");
  EXPECT_EQ(list.find("nothing"), nullptr);
}

TEST(varg_list_test, find_gives_the_first_argument_of_a_name) {
  varg_list list;
  list.add("x", "first").add("y", 2).add("x", "second");
  ASSERT_NE(list.find("x"), nullptr);
  EXPECT_EQ(list.find("x")->as_string(), "first");
  EXPECT_EQ(list.find("y")->as_string(), "2");
  EXPECT_EQ(list.find("X"), nullptr);  // names are case-sensitive
  EXPECT_EQ(list.find("z"), nullptr);
  EXPECT_EQ(list.find(""), nullptr);
}

TEST(varg_list_test, find_points_into_the_list) {
  const varg_list list(argument("k", 7));
  EXPECT_EQ(list.find("k"), &list[0].value());
}

TEST(varg_list_test, copies_are_independent) {
  varg_list original(argument("a", 1));
  varg_list copy(original);
  copy.add("b", 2);
  EXPECT_EQ(original.size(), 1u);
  EXPECT_EQ(copy.size(), 2u);
  EXPECT_EQ(original.find("b"), nullptr);
  varg_list assigned;
  assigned = copy;
  EXPECT_EQ(assigned.size(), 2u);
  EXPECT_EQ(assigned.find("b")->as_string(), "2");
}

TEST(varg_list_test, argument_of_each_value_kind) {
  const argument text("t", "x");
  const argument number("n", 1);
  const argument big("l", 2L);
  const argument none;
  EXPECT_FALSE(text.is_nil());
  EXPECT_FALSE(number.is_nil());
  EXPECT_FALSE(big.is_nil());
  EXPECT_TRUE(none.is_nil());
  EXPECT_EQ(none.name(), "");
}

}  // namespace
