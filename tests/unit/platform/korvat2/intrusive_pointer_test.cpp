#include <korvat2/intrusive_pointer.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

namespace {

using korvat2::intrusive_pointer_impl_t;
using korvat2::intrusive_pointer_t;
using test_support::assert_recorder_t;

struct counted_t : intrusive_pointer_impl_t {
  explicit counted_t(int* deaths) : m_deaths(deaths) {}
  ~counted_t() override { ++*m_deaths; }
  int value = 5;
  int* m_deaths;
};

// The counted base is not the first one.
struct padding_t {
  virtual ~padding_t() = default;
  long pad[3] = {1, 2, 3};
};
struct late_counted_t : padding_t, counted_t {
  using counted_t::counted_t;
};

TEST(intrusive_pointer_test, last_owner_deletes) {
  int deaths = 0;
  {
    intrusive_pointer_t<counted_t> first(new counted_t(&deaths));
    EXPECT_EQ(first->ref_count(), 1u);
    {
      intrusive_pointer_t<counted_t> second = first;
      EXPECT_EQ(first->ref_count(), 2u);
    }
    EXPECT_EQ(deaths, 0);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(intrusive_pointer_test, counts_through_a_base_that_is_not_first) {
  int deaths = 0;
  {
    intrusive_pointer_t<late_counted_t> pointer(new late_counted_t(&deaths));
    intrusive_pointer_t<counted_t> as_base = pointer;
    EXPECT_EQ(pointer->ref_count(), 2u);
    EXPECT_EQ(as_base->value, 5);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(intrusive_pointer_test, release_of_a_count_already_zero_deletes_nothing) {
  int deaths = 0;
  counted_t* object = new counted_t(&deaths);
  object->release_ref();
  EXPECT_EQ(deaths, 0);
  EXPECT_EQ(object->ref_count(), 0u);
  delete object;
  EXPECT_EQ(deaths, 1);
}

TEST(intrusive_pointer_test, assignment_takes_the_new_object_and_releases_the_old) {
  int deaths_a = 0, deaths_b = 0;
  intrusive_pointer_t<counted_t> pointer(new counted_t(&deaths_a));
  pointer = new counted_t(&deaths_b);
  EXPECT_EQ(deaths_a, 1);
  EXPECT_EQ(deaths_b, 0);
  intrusive_pointer_t<counted_t>& same = pointer;
  pointer = same;  // assignment of the held object keeps it
  EXPECT_EQ(deaths_b, 0);
  pointer.reset();
  EXPECT_EQ(deaths_b, 1);
  EXPECT_EQ(pointer.get(), nullptr);
}

TEST(intrusive_pointer_test, assignment_from_an_object_owned_by_the_old_one) {
  struct node_t : intrusive_pointer_impl_t {
    intrusive_pointer_t<node_t> next;
  };
  intrusive_pointer_t<node_t> head(new node_t);
  head->next = new node_t;
  head = head->next;  // the old head owned the new one
  EXPECT_EQ(head->ref_count(), 1u);
}

TEST(intrusive_pointer_test, arrow_on_null_is_reported) {
  assert_recorder_t asserts;
  intrusive_pointer_t<counted_t> pointer;
  EXPECT_EQ(pointer.operator->(), nullptr);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ptr != 0"});
}

TEST(intrusive_pointer_test, destroying_an_owned_object_is_reported) {
  assert_recorder_t asserts;
  int deaths = 0;
  counted_t* object = new counted_t(&deaths);
  object->add_ref();
  delete object;
  EXPECT_EQ(deaths, 1);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ref_count == 0"});
}

TEST(intrusive_pointer_test, try_add_ref_takes_a_share_only_of_an_owned_object) {
  int deaths = 0;
  counted_t* object = new counted_t(&deaths);
  EXPECT_FALSE(object->try_add_ref());  // nobody owns it: no share is taken
  EXPECT_EQ(object->ref_count(), 0u);
  {
    intrusive_pointer_t<counted_t> owner(object);
    ASSERT_TRUE(object->try_add_ref());
    EXPECT_EQ(object->ref_count(), 2u);
    object->release_ref();
  }
  EXPECT_EQ(deaths, 1);
}

TEST(intrusive_pointer_test, adopt_takes_over_a_share_without_raising_the_count) {
  int deaths = 0;
  intrusive_pointer_t<counted_t> owner(new counted_t(&deaths));
  counted_t* object = owner.detach();
  EXPECT_EQ(object->ref_count(), 1u);
  {
    intrusive_pointer_t<counted_t> adopted = intrusive_pointer_t<counted_t>::adopt(object);
    EXPECT_EQ(adopted.get(), object);
    EXPECT_EQ(object->ref_count(), 1u);
  }
  EXPECT_EQ(deaths, 1);
}

}  // namespace
