#include <korvat2/pointers.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using korvat2::smart_pointer_t;
using korvat2::sptr_t;
using test_support::assert_recorder_t;

// Counts its own owners and the calls that reach it; deletes itself at zero.
struct tally_t {
  int add_refs = 0;
  int releases = 0;
  int deaths = 0;
};

class self_counted_t {
 public:
  explicit self_counted_t(tally_t& tally) : m_tally(tally) {}
  virtual ~self_counted_t() { ++m_tally.deaths; }

  void add_ref() {
    ++m_tally.add_refs;
    ++m_count;
  }
  void release() {
    ++m_tally.releases;
    if (--m_count == 0) {
      delete this;
    }
  }
  int count() const { return m_count; }
  int value = 11;

 private:
  tally_t& m_tally;
  int m_count = 0;
};

class derived_counted_t : public self_counted_t {
 public:
  using self_counted_t::self_counted_t;
};

// Notes its destruction.
struct tracked_t {
  explicit tracked_t(int& deaths) : m_deaths(deaths) {}
  virtual ~tracked_t() { ++m_deaths; }
  int value = 3;
  int& m_deaths;
};

struct derived_tracked_t : tracked_t {
  using tracked_t::tracked_t;
};

// ---------------------------------------------------------------- sptr_t

TEST(pointers_test, sptr_takes_a_reference_and_gives_it_back) {
  tally_t tally;
  {
    sptr_t<self_counted_t> pointer(new self_counted_t(tally));
    EXPECT_EQ(tally.add_refs, 1);
    EXPECT_EQ(pointer->count(), 1);
    EXPECT_EQ(pointer->value, 11);
    EXPECT_TRUE(pointer);
  }
  EXPECT_EQ(tally.releases, 1);
  EXPECT_EQ(tally.deaths, 1);
}

TEST(pointers_test, sptr_copies_count_and_the_last_one_releases) {
  tally_t tally;
  sptr_t<self_counted_t> first(new self_counted_t(tally));
  {
    sptr_t<self_counted_t> second(first);  // NOLINT(performance-unnecessary-copy-initialization)
    sptr_t<self_counted_t> third;
    third = second;
    EXPECT_EQ(first->count(), 3);
    EXPECT_EQ(third.get(), first.get());
  }
  EXPECT_EQ(first->count(), 1);
  EXPECT_EQ(tally.deaths, 0);
  first.reset();
  EXPECT_FALSE(first);
  EXPECT_EQ(tally.add_refs, 3);
  EXPECT_EQ(tally.releases, 3);
  EXPECT_EQ(tally.deaths, 1);
}

TEST(pointers_test, sptr_move_passes_the_reference_without_counting) {
  tally_t tally;
  sptr_t<self_counted_t> first(new self_counted_t(tally));
  self_counted_t* object = first.get();
  sptr_t<self_counted_t> second(std::move(first));
  EXPECT_EQ(first.get(), nullptr);  // NOLINT(bugprone-use-after-move): moved-from is null
  EXPECT_EQ(second.get(), object);
  sptr_t<self_counted_t> third;
  third = std::move(second);
  EXPECT_EQ(third.get(), object);
  EXPECT_EQ(tally.add_refs, 1);
  EXPECT_EQ(tally.releases, 0);
  EXPECT_EQ(object->count(), 1);
}

TEST(pointers_test, sptr_assignment_releases_the_old_object) {
  tally_t old_tally, new_tally;
  sptr_t<self_counted_t> pointer(new self_counted_t(old_tally));
  pointer = sptr_t<self_counted_t>(new self_counted_t(new_tally));
  EXPECT_EQ(old_tally.deaths, 1);
  EXPECT_EQ(new_tally.deaths, 0);
  EXPECT_EQ(pointer->count(), 1);
  pointer = nullptr;
  EXPECT_EQ(new_tally.deaths, 1);
}

TEST(pointers_test, sptr_self_assignment_keeps_the_object) {
  tally_t tally;
  sptr_t<self_counted_t> pointer(new self_counted_t(tally));
  sptr_t<self_counted_t>& alias = pointer;
  pointer = alias;
  EXPECT_EQ(tally.deaths, 0);
  EXPECT_EQ(pointer->count(), 1);
}

TEST(pointers_test, sptr_of_a_derived_class_converts_to_its_base) {
  tally_t tally;
  sptr_t<derived_counted_t> derived(new derived_counted_t(tally));
  {
    sptr_t<self_counted_t> base(derived);
    EXPECT_EQ(base.get(), derived.get());
    EXPECT_EQ(derived->count(), 2);
  }
  EXPECT_EQ(derived->count(), 1);
}

TEST(pointers_test, sptr_dereference_reaches_the_object) {
  tally_t tally;
  const sptr_t<self_counted_t> pointer(new self_counted_t(tally));
  (*pointer).value = 12;
  EXPECT_EQ(pointer->value, 12);
}

TEST(pointers_test, null_sptr_is_empty_and_releases_nothing) {
  sptr_t<self_counted_t> pointer;
  EXPECT_FALSE(pointer);
  EXPECT_EQ(pointer.get(), nullptr);
  pointer.reset();
  sptr_t<self_counted_t> from_null(nullptr);
  EXPECT_FALSE(from_null);
}

TEST(pointers_test, arrow_of_a_null_sptr_is_reported) {
  assert_recorder_t asserts;
  const sptr_t<self_counted_t> pointer;
  EXPECT_EQ(pointer.operator->(), nullptr);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ptr != 0"});
}

// ---------------------------------------------------------------- smart_pointer_t

TEST(pointers_test, smart_pointer_deletes_when_the_last_copy_dies) {
  int deaths = 0;
  {
    smart_pointer_t<tracked_t> first(new tracked_t(deaths));
    {
      smart_pointer_t<tracked_t> second = first;  // NOLINT(performance-unnecessary-copy-initialization)
      smart_pointer_t<tracked_t> third;
      third = second;
      EXPECT_EQ(third.get(), first.get());
    }
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(first->value, 3);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(pointers_test, smart_pointer_reset_lets_go_of_the_object) {
  int first_deaths = 0, second_deaths = 0;
  smart_pointer_t<tracked_t> pointer(new tracked_t(first_deaths));
  pointer.reset(new tracked_t(second_deaths));
  EXPECT_EQ(first_deaths, 1);
  EXPECT_EQ(second_deaths, 0);
  pointer.reset();
  EXPECT_EQ(second_deaths, 1);
  EXPECT_FALSE(pointer);
}

TEST(pointers_test, smart_pointer_reset_keeps_the_object_for_other_copies) {
  int deaths = 0;
  smart_pointer_t<tracked_t> first(new tracked_t(deaths));
  smart_pointer_t<tracked_t> second = first;
  first.reset();
  EXPECT_EQ(deaths, 0);
  EXPECT_EQ(second->value, 3);
  EXPECT_EQ(second.shared().use_count(), 1);
}

TEST(pointers_test, smart_pointer_of_a_derived_class_converts_to_its_base) {
  int deaths = 0;
  {
    smart_pointer_t<derived_tracked_t> derived(new derived_tracked_t(deaths));
    smart_pointer_t<tracked_t> base(derived);
    EXPECT_EQ(base.get(), derived.get());
    derived.reset();
    EXPECT_EQ(deaths, 0);
    (*base).value = 4;
    EXPECT_EQ(base->value, 4);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(pointers_test, null_smart_pointer_is_empty) {
  const smart_pointer_t<tracked_t> pointer;
  EXPECT_FALSE(pointer);
  EXPECT_EQ(pointer.get(), nullptr);
  EXPECT_FALSE(smart_pointer_t<tracked_t>(nullptr));
}

TEST(pointers_test, arrow_of_a_null_smart_pointer_is_reported) {
  assert_recorder_t asserts;
  const smart_pointer_t<tracked_t> pointer;
  EXPECT_EQ(pointer.operator->(), nullptr);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ptr.get() != 0"});
}

}  // namespace
