#include <korvat2/iterator.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace {

using korvat2::generic_iterator_t;
using korvat2::iterator_impl_t;
using korvat2::iterutil::make_owned_iterator;
using korvat2::iterutil::owned_stl_iterator_impl_t;
using test_support::assert_recorder_t;

const char* const at_end_text = "!at_end() && \"iterator is at end state\"";

// Everything that `it` still has to give.
template <class T>
std::vector<T> drain(generic_iterator_t<T>& it) {
  std::vector<T> items;
  for (; !it.at_end(); it.next()) {
    items.push_back(it.current());
  }
  return items;
}

// Counts from 0 up to a limit and notes its own death.
class counting_impl_t : public iterator_impl_t<int> {
 public:
  counting_impl_t(int limit, int* deaths) : m_limit(limit), m_deaths(deaths) {}
  ~counting_impl_t() override { ++*m_deaths; }
  bool at_end() const override { return m_value >= m_limit; }
  int current() const override { return m_value; }
  void next() override { ++m_value; }

 private:
  int m_value = 0;
  int m_limit;
  int* m_deaths;
};

TEST(iterator_test, null_handle_is_at_its_end_at_once) {
  generic_iterator_t<int> it;
  EXPECT_TRUE(it.at_end());
  it.next();  // harmless
  EXPECT_TRUE(it.at_end());
  EXPECT_TRUE(generic_iterator_t<std::string>(nullptr).at_end());
}

TEST(iterator_test, current_of_a_null_handle_is_reported_and_default) {
  assert_recorder_t asserts;
  const generic_iterator_t<std::string> text;
  const generic_iterator_t<int> number;
  EXPECT_EQ(text.current(), "");
  EXPECT_EQ(number.current(), 0);
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{at_end_text, at_end_text}));
}

TEST(iterator_test, current_after_the_last_element_is_reported_and_default) {
  assert_recorder_t asserts;
  generic_iterator_t<int> it = make_owned_iterator(std::vector<int>{5});
  EXPECT_EQ(it.current(), 5);
  it.next();
  ASSERT_TRUE(it.at_end());
  EXPECT_EQ(asserts.count(), 0u);
  EXPECT_EQ(it.current(), 0);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{at_end_text});
}

TEST(iterator_test, owned_iterator_walks_the_vector_in_order) {
  auto it = make_owned_iterator(std::vector<std::string>{"a", "b", "c"});
  EXPECT_EQ(drain(it), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_TRUE(it.at_end());
}

TEST(iterator_test, owned_iterator_of_an_empty_vector_is_at_end) {
  auto it = make_owned_iterator(std::vector<int>());
  EXPECT_TRUE(it.at_end());
  it.next();
  EXPECT_TRUE(it.at_end());
}

TEST(iterator_test, owned_iterator_stays_valid_after_the_source_changes) {
  std::vector<int> source{1, 2, 3};
  auto it = make_owned_iterator(source);
  EXPECT_EQ(it.current(), 1);
  source.clear();
  source.shrink_to_fit();
  source.assign(100, 9);
  EXPECT_EQ(drain(it), (std::vector<int>{1, 2, 3}));
}

TEST(iterator_test, owned_iterator_stays_valid_after_the_source_dies) {
  generic_iterator_t<std::string> it;
  {
    auto source = std::make_unique<std::vector<std::string>>(
        std::vector<std::string>{"long enough to live on the heap, one", "two"});
    it = make_owned_iterator(*source);
    it.next();
  }
  EXPECT_EQ(drain(it), std::vector<std::string>{"two"});
}

TEST(iterator_test, owned_iterator_over_another_container) {
  generic_iterator_t<int> it(new owned_stl_iterator_impl_t<std::list<int>>(std::list<int>{4, 5, 6}));
  EXPECT_EQ(drain(it), (std::vector<int>{4, 5, 6}));
}

TEST(iterator_test, copies_share_one_position) {
  auto first = make_owned_iterator(std::vector<int>{1, 2, 3, 4});
  generic_iterator_t<int> second = first;
  first.next();
  EXPECT_EQ(second.current(), 2);
  second.next();
  EXPECT_EQ(first.current(), 3);
  generic_iterator_t<int> third;
  third = second;
  third.next();
  EXPECT_EQ(first.current(), 4);
  third.next();
  EXPECT_TRUE(first.at_end());
  EXPECT_TRUE(second.at_end());
}

TEST(iterator_test, body_lives_until_the_last_handle_dies) {
  int deaths = 0;
  {
    generic_iterator_t<int> first(new counting_impl_t(3, &deaths));
    {
      generic_iterator_t<int> copy = first;
      copy.next();
    }
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(first.current(), 1);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(iterator_test, next_at_the_end_does_not_reach_the_body) {
  int deaths = 0;
  generic_iterator_t<int> it(new counting_impl_t(2, &deaths));
  EXPECT_EQ(drain(it), (std::vector<int>{0, 1}));
  it.next();
  it.next();
  EXPECT_TRUE(it.at_end());
  assert_recorder_t asserts;
  EXPECT_EQ(it.current(), 0);  // not 2 or 4: the body is not asked at the end
  EXPECT_EQ(asserts.count(), 1u);
}

}  // namespace
