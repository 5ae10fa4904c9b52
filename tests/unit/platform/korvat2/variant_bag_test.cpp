#include <korvat2/variant_bag.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using korvat2::variant_bag_t;
using korvat2::variant_t;
using test_support::assert_recorder_t;
using ids_t = std::vector<int>;

// A nested bag told apart by its "id" value.
variant_bag_t bag_with_id(int id) {
  variant_bag_t bag;
  bag.put("id", id);
  return bag;
}

int id_of(const variant_bag_t& bag) {
  const variant_t* id = bag.get<variant_t>("id");
  return id ? id->get<int>() : -1;
}

// The ids of the nested bags of `name`, walked with the bag's iterator of type `Bag`.
template <class Bag>
ids_t ids_by_name(Bag& bag, const char* name) {
  ids_t ids;
  for (auto it = bag.template begin_by_name<variant_bag_t>(name); !it.at_end(); it.next()) {
    ids.push_back(id_of(it.get_value()));
  }
  return ids;
}

// The names of all entries in order.
std::vector<std::string> entry_names(const variant_bag_t& bag) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < bag.size(); ++i) {
    names.push_back(bag.entry_name(i));
  }
  return names;
}

TEST(variant_bag_test, new_bag_is_empty) {
  const variant_bag_t bag;
  EXPECT_TRUE(bag.empty());
  EXPECT_EQ(bag.size(), 0u);
  EXPECT_FALSE(bag.has<variant_t>("a"));
  EXPECT_FALSE(bag.has<variant_bag_t>("a"));
}

TEST(variant_bag_test, put_adds_a_value_and_returns_the_stored_one) {
  variant_bag_t bag;
  const variant_t& stored = bag.put("count", 3);
  EXPECT_EQ(stored, variant_t(3));
  EXPECT_EQ(&stored, bag.get<variant_t>("count"));
  EXPECT_TRUE(bag.has<variant_t>("count"));
  EXPECT_EQ(bag.size(), 1u);
}

TEST(variant_bag_test, put_of_each_kind_stores_that_kind) {
  variant_bag_t bag;
  bag.put("narrow", "text");
  bag.put("string", std::string("str"));
  bag.put("wide", std::u16string(u"wide"));
  bag.put("int", -4);
  bag.put("bool", true);
  bag.put<variant_t>("empty", variant_t());
  EXPECT_EQ(bag.get<variant_t>("narrow")->kind(), variant_t::kind_text);
  EXPECT_EQ(bag.get<variant_t>("string")->get<std::string>(), "str");
  EXPECT_EQ(bag.get<variant_t>("wide")->kind(), variant_t::kind_wide_text);
  EXPECT_EQ(bag.get<variant_t>("int")->get<int>(), -4);
  EXPECT_TRUE(bag.get<variant_t>("bool")->get<bool>());
  EXPECT_TRUE(bag.get<variant_t>("empty")->is_empty());
  EXPECT_EQ(bag.size(), 6u);
}

TEST(variant_bag_test, put_replaces_a_value_in_its_place) {
  variant_bag_t bag;
  bag.put("a", 1);
  bag.put("b", 2);
  bag.put("a", "one");
  EXPECT_EQ(bag.size(), 2u);
  EXPECT_EQ(entry_names(bag), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(bag.get<variant_t>("a")->get<std::string>(), "one");
}

TEST(variant_bag_test, names_are_case_sensitive_and_may_be_empty) {
  variant_bag_t bag;
  bag.put("Name", 1);
  bag.put("name", 2);
  bag.put("", 3);
  EXPECT_EQ(bag.get<variant_t>("Name")->get<int>(), 1);
  EXPECT_EQ(bag.get<variant_t>("name")->get<int>(), 2);
  EXPECT_EQ(bag.get<variant_t>("")->get<int>(), 3);
}

TEST(variant_bag_test, get_of_a_missing_value_is_null_and_not_reported) {
  assert_recorder_t asserts;
  variant_bag_t bag;
  bag.put("present", 1);
  const variant_bag_t& const_bag = bag;
  EXPECT_EQ(const_bag.get<variant_t>("absent"), nullptr);
  EXPECT_EQ(bag.get<variant_t>("absent"), nullptr);
  EXPECT_EQ(const_bag.get<variant_bag_t>("absent"), nullptr);
  EXPECT_EQ(bag.get<variant_bag_t>("absent"), nullptr);
  EXPECT_EQ(asserts.count(), 0u);
}

TEST(variant_bag_test, value_and_nested_bag_of_one_name_are_different_sorts) {
  variant_bag_t bag;
  bag.add_variant_bag("only_bag", bag_with_id(1));
  bag.put("only_value", 1);
  EXPECT_TRUE(bag.has<variant_bag_t>("only_bag"));
  EXPECT_FALSE(bag.has<variant_t>("only_bag"));
  EXPECT_EQ(bag.get<variant_t>("only_bag"), nullptr);
  EXPECT_TRUE(bag.has<variant_t>("only_value"));
  EXPECT_FALSE(bag.has<variant_bag_t>("only_value"));
  EXPECT_EQ(bag.get<variant_bag_t>("only_value"), nullptr);

  bag.put("only_bag", 5);  // a value beside the bag of that name
  EXPECT_TRUE(bag.has<variant_t>("only_bag"));
  EXPECT_TRUE(bag.has<variant_bag_t>("only_bag"));
  EXPECT_EQ(id_of(*bag.get<variant_bag_t>("only_bag")), 1);
}

TEST(variant_bag_test, two_sub_bags_of_one_name_come_back_in_order_of_addition) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(1));
  bag.add_variant_bag("item", bag_with_id(2));
  EXPECT_EQ(bag.size(), 2u);
  EXPECT_EQ(ids_by_name(bag, "item"), (ids_t{1, 2}));
}

TEST(variant_bag_test, repeated_sub_bags_keep_their_order_among_other_entries) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(3));
  bag.put("item", 99);
  bag.add_variant_bag("other", bag_with_id(7));
  bag.add_variant_bag("item", bag_with_id(1));
  bag.add_variant_bag("item", bag_with_id(2));
  EXPECT_EQ(ids_by_name(bag, "item"), (ids_t{3, 1, 2}));
  EXPECT_EQ(ids_by_name(bag, "other"), ids_t{7});
}

TEST(variant_bag_test, get_of_a_sub_bag_gives_the_first_of_its_name) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(1));
  bag.add_variant_bag("item", bag_with_id(2));
  ASSERT_NE(bag.get<variant_bag_t>("item"), nullptr);
  EXPECT_EQ(id_of(*bag.get<variant_bag_t>("item")), 1);
  const variant_bag_t& const_bag = bag;
  EXPECT_EQ(id_of(*const_bag.get<variant_bag_t>("item")), 1);
}

TEST(variant_bag_test, add_variant_bag_stores_a_copy) {
  variant_bag_t bag;
  variant_bag_t nested = bag_with_id(1);
  bag.add_variant_bag("n", nested);
  nested.put("id", 2);
  EXPECT_EQ(id_of(*bag.get<variant_bag_t>("n")), 1);
}

TEST(variant_bag_test, sub_bag_changes_through_get_stay_in_the_bag) {
  variant_bag_t bag;
  bag.add_variant_bag("n", bag_with_id(1));
  bag.get<variant_bag_t>("n")->put("id", 5);
  EXPECT_EQ(id_of(*bag.get<variant_bag_t>("n")), 5);
}

TEST(variant_bag_test, get_variant_gives_the_value_or_the_fallback) {
  variant_bag_t bag;
  bag.put("a", "x");
  bag.add_variant_bag("b", bag_with_id(1));
  EXPECT_EQ(bag.get_variant("a", variant_t(0)), variant_t("x"));
  EXPECT_EQ(bag.get_variant("missing", variant_t(7)), variant_t(7));
  EXPECT_EQ(bag.get_variant("b", variant_t(true)), variant_t(true));  // a bag is no value
  EXPECT_TRUE(bag.get_variant("missing", variant_t()).is_empty());
}

TEST(variant_bag_test, iterator_over_an_unknown_name_is_at_end_at_once) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(1));
  bag.put("value", 1);
  const variant_bag_t& const_bag = bag;
  EXPECT_TRUE(bag.begin_by_name<variant_bag_t>("unknown").at_end());
  EXPECT_TRUE(const_bag.begin_by_name<variant_bag_t>("unknown").at_end());
  EXPECT_TRUE(bag.begin_by_name<variant_bag_t>("value").at_end());
  EXPECT_TRUE(variant_bag_t().begin_by_name<variant_bag_t>("item").at_end());
  EXPECT_TRUE(variant_bag_t::iterator_t<variant_bag_t>().at_end());
}

TEST(variant_bag_test, const_iterator_walks_the_sub_bags_in_order) {
  variant_bag_t bag;
  for (int id = 1; id <= 5; ++id) {
    bag.add_variant_bag("item", bag_with_id(id));
    bag.put("noise", id);
  }
  const variant_bag_t& const_bag = bag;
  EXPECT_EQ(ids_by_name(const_bag, "item"), (ids_t{1, 2, 3, 4, 5}));
  EXPECT_EQ(const_bag.begin_by_name<variant_bag_t>("item").get_name(), "item");
}

TEST(variant_bag_test, non_const_iterator_changes_the_sub_bags) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(1));
  bag.add_variant_bag("item", bag_with_id(2));
  for (auto it = bag.begin_by_name<variant_bag_t>("item"); !it.at_end(); it.next()) {
    it.get_value().put("id", id_of(it.get_value()) * 10);
  }
  EXPECT_EQ(ids_by_name(bag, "item"), (ids_t{10, 20}));
}

TEST(variant_bag_test, iterator_over_values_walks_the_value_of_a_name) {
  variant_bag_t bag;
  bag.add_variant_bag("x", bag_with_id(1));
  bag.put("x", "value");
  auto it = bag.begin_by_name<variant_t>("x");
  ASSERT_FALSE(it.at_end());
  EXPECT_EQ(it.get_value(), variant_t("value"));
  it.get_value() = variant_t(8);
  EXPECT_EQ(*bag.get<variant_t>("x"), variant_t(8));
  it.next();
  EXPECT_TRUE(it.at_end());
}

TEST(variant_bag_test, next_at_the_end_stays_at_the_end) {
  variant_bag_t bag;
  bag.add_variant_bag("item", bag_with_id(1));
  auto it = bag.begin_by_name<variant_bag_t>("item");
  it.next();
  it.next();
  EXPECT_TRUE(it.at_end());
}

TEST(variant_bag_test, value_of_an_iterator_at_its_end_is_reported_and_empty) {
  assert_recorder_t asserts;
  variant_bag_t bag;
  const variant_bag_t& const_bag = bag;
  EXPECT_TRUE(const_bag.begin_by_name<variant_bag_t>("none").get_value().empty());
  EXPECT_TRUE(bag.begin_by_name<variant_bag_t>("none").get_value().empty());
  EXPECT_TRUE(bag.begin_by_name<variant_t>("none").get_value().is_empty());
  ASSERT_EQ(asserts.count(), 3u);
  for (const std::string& text : asserts.texts()) {
    EXPECT_NE(text.find("iterator is at end state"), std::string::npos) << text;
  }
}

TEST(variant_bag_test, value_of_a_default_iterator_is_reported_and_empty) {
  assert_recorder_t asserts;
  const variant_bag_t::iterator_t<variant_bag_t> bags;
  const variant_bag_t::const_iterator_t<variant_t> values;
  EXPECT_TRUE(bags.get_value().empty());
  EXPECT_TRUE(values.get_value().is_empty());
  EXPECT_EQ(asserts.count(), 2u);
}

TEST(variant_bag_test, copy_is_deep) {
  variant_bag_t original;
  original.put("v", 1);
  original.add_variant_bag("n", bag_with_id(1));
  original.get<variant_bag_t>("n")->add_variant_bag("deeper", bag_with_id(2));

  variant_bag_t copy(original);
  EXPECT_EQ(copy, original);
  copy.put("v", 2);
  copy.get<variant_bag_t>("n")->put("id", 10);
  copy.get<variant_bag_t>("n")->get<variant_bag_t>("deeper")->put("id", 20);

  EXPECT_EQ(original.get<variant_t>("v")->get<int>(), 1);
  EXPECT_EQ(id_of(*original.get<variant_bag_t>("n")), 1);
  EXPECT_EQ(id_of(*original.get<variant_bag_t>("n")->get<variant_bag_t>("deeper")), 2);
  EXPECT_NE(copy, original);
}

TEST(variant_bag_test, copy_assignment_is_deep_and_replaces_everything) {
  variant_bag_t source;
  source.add_variant_bag("n", bag_with_id(1));
  variant_bag_t target;
  target.put("old", 1);
  target = source;
  EXPECT_FALSE(target.has<variant_t>("old"));
  EXPECT_EQ(target, source);
  target.get<variant_bag_t>("n")->put("id", 3);
  EXPECT_EQ(id_of(*source.get<variant_bag_t>("n")), 1);
}

TEST(variant_bag_test, move_takes_the_entries) {
  variant_bag_t source;
  source.add_variant_bag("n", bag_with_id(4));
  const variant_bag_t* nested = source.get<variant_bag_t>("n");
  variant_bag_t target(std::move(source));
  EXPECT_EQ(target.get<variant_bag_t>("n"), nested);  // the nested bag itself moved over
  variant_bag_t assigned;
  assigned = std::move(target);
  EXPECT_EQ(id_of(*assigned.get<variant_bag_t>("n")), 4);
}

TEST(variant_bag_test, remove_takes_away_values_and_bags_of_a_name) {
  variant_bag_t bag;
  bag.put("a", 1);
  bag.add_variant_bag("b", bag_with_id(1));
  bag.add_variant_bag("a", bag_with_id(2));
  bag.add_variant_bag("a", bag_with_id(3));
  EXPECT_EQ(bag.remove("a"), 3u);
  EXPECT_EQ(entry_names(bag), std::vector<std::string>{"b"});
  EXPECT_EQ(bag.remove("a"), 0u);
  EXPECT_EQ(bag.remove("missing"), 0u);
}

TEST(variant_bag_test, clear_empties_the_bag) {
  variant_bag_t bag;
  bag.put("a", 1);
  bag.add_variant_bag("b", variant_bag_t());
  bag.clear();
  EXPECT_TRUE(bag.empty());
  EXPECT_EQ(bag, variant_bag_t());
}

TEST(variant_bag_test, entries_are_listed_in_order_with_their_sort) {
  variant_bag_t bag;
  bag.put("v", 1);
  bag.add_variant_bag("b", bag_with_id(9));
  ASSERT_EQ(bag.size(), 2u);
  EXPECT_EQ(bag.entry_name(0), "v");
  ASSERT_NE(bag.entry_value(0), nullptr);
  EXPECT_EQ(*bag.entry_value(0), variant_t(1));
  EXPECT_EQ(bag.entry_bag(0), nullptr);
  EXPECT_EQ(bag.entry_name(1), "b");
  EXPECT_EQ(bag.entry_value(1), nullptr);
  ASSERT_NE(bag.entry_bag(1), nullptr);
  EXPECT_EQ(id_of(*bag.entry_bag(1)), 9);
}

TEST(variant_bag_test, equality_compares_names_sorts_values_and_order) {
  variant_bag_t a;
  a.put("x", 1);
  a.add_variant_bag("n", bag_with_id(1));
  variant_bag_t b = a;
  EXPECT_EQ(a, b);

  b.put("x", 2);
  EXPECT_NE(a, b);
  b.put("x", 1);
  EXPECT_EQ(a, b);

  b.get<variant_bag_t>("n")->put("id", 2);
  EXPECT_NE(a, b);

  variant_bag_t longer = a;
  longer.put("y", 1);
  EXPECT_NE(a, longer);
  EXPECT_NE(longer, a);

  variant_bag_t value_not_bag;
  value_not_bag.put("n", 1);
  variant_bag_t bag_not_value;
  bag_not_value.add_variant_bag("n", variant_bag_t());
  EXPECT_NE(value_not_bag, bag_not_value);
}

TEST(variant_bag_test, nested_bags_reach_any_depth) {
  variant_bag_t level3 = bag_with_id(3);
  variant_bag_t level2 = bag_with_id(2);
  level2.add_variant_bag("child", level3);
  variant_bag_t level1 = bag_with_id(1);
  level1.add_variant_bag("child", level2);
  variant_bag_t root;
  root.add_variant_bag("child", level1);

  const variant_bag_t* node = &root;
  ids_t ids;
  while ((node = node->get<variant_bag_t>("child"))) {
    ids.push_back(id_of(*node));
  }
  EXPECT_EQ(ids, (ids_t{1, 2, 3}));
}

TEST(variant_bag_test, null_name_is_the_empty_name) {
  variant_bag_t bag;
  bag.put(nullptr, 1);
  EXPECT_TRUE(bag.has<variant_t>(""));
  EXPECT_EQ(bag.get<variant_t>(nullptr)->get<int>(), 1);
  EXPECT_EQ(bag.remove(nullptr), 1u);
}

TEST(variant_bag_test, many_names_keep_their_order_and_are_found) {
  variant_bag_t bag;
  const int count = 20000;
  for (int i = 0; i < count; ++i) {
    bag.put(("n" + std::to_string(i)).c_str(), i);
    if (i % 1000 == 0) {
      bag.add_variant_bag(("n" + std::to_string(i)).c_str(), bag_with_id(i));
    }
  }
  for (int i = count - 1; i >= 0; i -= 7) {
    bag.put(("n" + std::to_string(i)).c_str(), -i);
  }
  ASSERT_EQ(bag.size(), std::size_t(count + count / 1000));
  std::size_t index = 0;
  for (int i = 0; i < count; ++i) {
    const std::string name = "n" + std::to_string(i);
    EXPECT_EQ(bag.entry_name(index++), name);
    if (i % 1000 == 0) {
      EXPECT_EQ(bag.entry_name(index++), name);
      EXPECT_EQ(id_of(*bag.get<variant_bag_t>(name.c_str())), i);
    }
    ASSERT_TRUE(bag.has<variant_t>(name.c_str()));
    EXPECT_EQ(bag.get<variant_t>(name.c_str())->get<int>(), (count - 1 - i) % 7 == 0 ? -i : i);
  }
  EXPECT_FALSE(bag.has<variant_t>("n20000"));
  EXPECT_FALSE(bag.has<variant_bag_t>("n1"));
}

TEST(variant_bag_test, names_are_found_after_remove_copy_and_move) {
  variant_bag_t bag;
  for (int i = 0; i < 50; ++i) {
    bag.put(("n" + std::to_string(i)).c_str(), i);
    bag.add_variant_bag("list", bag_with_id(i));
  }
  EXPECT_EQ(bag.remove("n10"), 1u);
  EXPECT_EQ(bag.remove("list"), 50u);
  bag.add_variant_bag("list", bag_with_id(99));
  bag.put("n10", 110);
  variant_bag_t copy;
  {
    const variant_bag_t original = bag;  // the copy must not lean on the original's names
    copy = original;
  }
  variant_bag_t moved = std::move(copy);
  EXPECT_EQ(moved, bag);
  EXPECT_EQ(moved.get<variant_t>("n10")->get<int>(), 110);
  EXPECT_EQ(moved.get<variant_t>("n49")->get<int>(), 49);
  EXPECT_EQ(ids_by_name(moved, "list"), ids_t{99});
  EXPECT_EQ(moved.entry_name(moved.size() - 1), "n10");
  EXPECT_EQ(moved.entry_name(48), "n49");
  EXPECT_EQ(moved.entry_name(49), "list");
  moved.put("n11", 111);
  EXPECT_EQ(moved.get<variant_t>("n11")->get<int>(), 111);
  EXPECT_EQ(bag.get<variant_t>("n11")->get<int>(), 11);
  moved.clear();
  EXPECT_FALSE(moved.has<variant_t>("n11"));
  moved.put("n11", 1);
  EXPECT_EQ(moved.size(), 1u);
}

TEST(variant_bag_test, bags_holding_texts_that_differ_are_unequal) {
  variant_bag_t lone;
  lone.put("text", std::u16string(1, char16_t(0xDC00)));
  variant_bag_t replaced;
  replaced.put("text", std::u16string(u"\uFFFD"));
  EXPECT_NE(lone, replaced);
}

}  // namespace
