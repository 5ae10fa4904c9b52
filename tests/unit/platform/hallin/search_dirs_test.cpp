#include <HALLIN_2_13/HALLIN_2_13.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using HALLIN_2_13::ISearchDirIterator;
using HALLIN_2_13::ObjectPtr;
using HALLIN_2_13::ref_counted_t;
using HALLIN_2_13::search_category_t;
using HALLIN_2_13::search_dir_container_t;

// Counts what the pointer asks of it.
struct probe_t {
  void add_ref() const { ++refs; }
  void release() const { --refs; }
  mutable int refs = 0;
};

// A counted object that tells when it is deleted.
class dying_t : public ref_counted_t<ISearchDirIterator> {
 public:
  explicit dying_t(bool& dead) : m_dead(dead) {}
  search_category_t get_category() const override { return HALLIN_2_13::search_category_other; }
  int get_count() const override { return 0; }
  void reset() override {}
  bool next() override { return false; }
  bool get(const char**, bool*, bool*) const override { return false; }

 protected:
  ~dying_t() override { m_dead = true; }

 private:
  bool& m_dead;
};

struct entry_seen_t {
  std::string text;
  bool recursive;
  bool flag;
  bool operator==(const entry_seen_t& other) const {
    return text == other.text && recursive == other.recursive && flag == other.flag;
  }
};

// Walks as the directory tab does: reset, then get and next until next gives false.
std::vector<entry_seen_t> walk(ISearchDirIterator& it) {
  std::vector<entry_seen_t> seen;
  it.reset();
  do {
    const char* text = nullptr;
    bool recursive = false;
    bool flag = false;
    if (it.get(&text, &recursive, &flag)) {
      seen.push_back({text, recursive, flag});
    }
  } while (it.next());
  return seen;
}

TEST(search_dirs_test, categories_are_32_bit_with_values_one_to_four) {
  static_assert(sizeof(search_category_t) == 4);
  static_assert(std::is_same_v<std::underlying_type_t<search_category_t>, std::int32_t>);
  EXPECT_EQ(HALLIN_2_13::search_category_binaries, 1);
  EXPECT_EQ(HALLIN_2_13::search_category_symbols, 2);
  EXPECT_EQ(HALLIN_2_13::search_category_sources, 3);
  EXPECT_EQ(HALLIN_2_13::search_category_other, 4);
  EXPECT_STREQ(HALLIN_2_13::get_search_category_name(HALLIN_2_13::search_category_sources), "sources");
  EXPECT_STREQ(HALLIN_2_13::get_search_category_name(static_cast<search_category_t>(0)), "");
  EXPECT_FALSE(HALLIN_2_13::is_search_category(static_cast<search_category_t>(5)));
  EXPECT_TRUE(HALLIN_2_13::is_search_category(HALLIN_2_13::search_category_binaries));
}

TEST(search_dirs_test, pointer_takes_a_reference_per_copy_and_gives_it_back) {
  probe_t probe;
  {
    ObjectPtr<probe_t> first(&probe);
    EXPECT_EQ(probe.refs, 1);
    ObjectPtr<probe_t> second = first;
    EXPECT_EQ(probe.refs, 2);
    ObjectPtr<probe_t> moved = std::move(second);
    EXPECT_EQ(probe.refs, 2);
    EXPECT_FALSE(second);  // NOLINT(bugprone-use-after-move): a moved-from pointer holds null
    EXPECT_EQ(moved.get(), &probe);
    moved.reset();
    EXPECT_EQ(probe.refs, 1);
    EXPECT_FALSE(moved);
    EXPECT_EQ(moved.get(), nullptr);
  }
  EXPECT_EQ(probe.refs, 0);
}

TEST(search_dirs_test, assignment_moves_the_reference) {
  probe_t a;
  probe_t b;
  ObjectPtr<probe_t> pa(&a);
  ObjectPtr<probe_t> pb(&b);
  pa = pb;
  EXPECT_EQ(a.refs, 0);
  EXPECT_EQ(b.refs, 2);
  pa = nullptr;
  EXPECT_EQ(b.refs, 1);
  EXPECT_TRUE(pa == ObjectPtr<probe_t>());
}

TEST(search_dirs_test, pointer_may_hold_null) {
  ObjectPtr<probe_t> none;
  ObjectPtr<probe_t> copy = none;
  EXPECT_FALSE(copy);
  copy.reset();
  EXPECT_EQ(copy.get(), nullptr);
}

TEST(search_dirs_test, last_release_deletes_the_object) {
  bool dead = false;
  {
    ObjectPtr<ISearchDirIterator> first(new dying_t(dead));
    {
      // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy's reference is the point
      const ObjectPtr<ISearchDirIterator> second = first;
    }
    EXPECT_FALSE(dead);
  }
  EXPECT_TRUE(dead);
}

TEST(search_dirs_test, iterator_walks_entries_in_order) {
  const auto container = search_dir_container_t::create();
  container->add_search_dir(HALLIN_2_13::search_category_sources, "/a", true, false);
  container->add_search_dir(HALLIN_2_13::search_category_sources, "/b/*", false, true);
  container->add_search_dir(HALLIN_2_13::search_category_sources, "/a", false, false);
  const ObjectPtr<ISearchDirIterator> it = container->get_iterator(HALLIN_2_13::search_category_sources);
  ASSERT_TRUE(it);
  EXPECT_EQ(it->get_category(), HALLIN_2_13::search_category_sources);
  EXPECT_EQ(it->get_count(), 3);
  const std::vector<entry_seen_t> expected{{"/a", true, false}, {"/b/*", false, true}, {"/a", false, false}};
  EXPECT_EQ(walk(*it), expected);
  // A second walk from reset sees the same.
  EXPECT_EQ(walk(*it), expected);
}

TEST(search_dirs_test, iterator_at_its_end_gives_nothing) {
  const auto container = search_dir_container_t::create();
  container->add_search_dir(HALLIN_2_13::search_category_other, "/only", false, false);
  const auto it = container->get_iterator(HALLIN_2_13::search_category_other);
  const char* text = "untouched";
  EXPECT_TRUE(it->get(&text, nullptr, nullptr));
  EXPECT_STREQ(text, "/only");
  EXPECT_FALSE(it->next());
  text = "untouched";
  EXPECT_FALSE(it->get(&text, nullptr, nullptr));
  EXPECT_STREQ(text, "untouched");
  EXPECT_FALSE(it->next());
  it->reset();
  EXPECT_TRUE(it->get(&text, nullptr, nullptr));
}

TEST(search_dirs_test, empty_category_fails_get_at_once) {
  const auto container = search_dir_container_t::create();
  const auto it = container->get_iterator(HALLIN_2_13::search_category_binaries);
  ASSERT_TRUE(it);
  EXPECT_EQ(it->get_count(), 0);
  it->reset();
  const char* text = nullptr;
  EXPECT_FALSE(it->get(&text, nullptr, nullptr));
  EXPECT_FALSE(it->next());
  EXPECT_TRUE(walk(*it).empty());
}

TEST(search_dirs_test, unknown_category_gives_a_null_iterator) {
  const auto container = search_dir_container_t::create();
  EXPECT_FALSE(container->get_iterator(static_cast<search_category_t>(0)));
  EXPECT_FALSE(container->get_iterator(static_cast<search_category_t>(5)));
}

TEST(search_dirs_test, iterator_keeps_its_entries_when_the_container_changes_or_goes) {
  auto container = search_dir_container_t::create();
  container->add_search_dir(HALLIN_2_13::search_category_symbols, "/x", false, true);
  const auto it = container->get_iterator(HALLIN_2_13::search_category_symbols);
  const char* text = nullptr;
  ASSERT_TRUE(it->get(&text, nullptr, nullptr));
  container->clear_category(HALLIN_2_13::search_category_symbols);
  container->add_search_dir(HALLIN_2_13::search_category_symbols, "/y", false, true);
  container.reset();
  EXPECT_STREQ(text, "/x");
  EXPECT_EQ(walk(*it), (std::vector<entry_seen_t>{{"/x", false, true}}));
}

}  // namespace
