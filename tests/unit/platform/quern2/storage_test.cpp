#include <quern2/storage.h>

#include "assert_recorder.h"
#include "fixtures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using korvat2::sptr_t;
using korvat2::variant_bag_t;
using korvat2::variant_t;
using quern2::IGlobalStorage;
using quern2::IPropertyStorage;
using test_support::scoped_env_t;
using test_support::temp_dir_t;

// A storage in memory that counts its owners and tells of its death.
class counted_storage_t final : public IGlobalStorage {
 public:
  // The count lives with the test, so that it can be read after the storage died.
  counted_storage_t(bool* dead, int* count) : m_dead(dead), m_count(*count) {}

  void add_ref() override { ++m_count; }
  void release() override {
    if (--m_count == 0) {
      delete this;
    }
  }

  sptr_t<IPropertyStorage> getChild(const std::string&) override { return nullptr; }
  variant_bag_t readBag(const std::string& key, const variant_bag_t& default_bag) const override {
    return key == m_key ? m_bag : default_bag;
  }
  korvat2::error_code_t writeBag(const std::string& key, const variant_bag_t& bag) override {
    m_key = key;
    m_bag = bag;
    return korvat2::error::Success;
  }
  bool hasBag(const std::string& key) const override { return key == m_key; }

 private:
  ~counted_storage_t() override { *m_dead = true; }

  bool* m_dead;
  int& m_count;
  std::string m_key;
  variant_bag_t m_bag;
};

// A private folder; the process's global storage is cleared after each test.
class storage_test : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(m_root.empty()); }
  void TearDown() override { IGlobalStorage::set(nullptr); }

  temp_dir_t m_dir;
  const std::string m_root = m_dir.path();
};

variant_bag_t bag_of(const char* name, const variant_t& value) {
  variant_bag_t bag;
  bag.put(name, value);
  return bag;
}

TEST_F(storage_test, storage_root_makes_a_file_storage_there) {
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  sptr_t<IGlobalStorage> global = IGlobalStorage::get();
  ASSERT_TRUE(global);
  ASSERT_TRUE(global->writeBag("settings", bag_of("value", 5)).succeeded());
  EXPECT_TRUE(fs::is_regular_file(fs::path(m_root) / "settings.bag"));
  EXPECT_EQ(IGlobalStorage::get()->readBag("settings", variant_bag_t()), bag_of("value", 5));
}

TEST_F(storage_test, get_gives_the_same_storage_until_it_is_changed) {
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  EXPECT_EQ(IGlobalStorage::get().get(), IGlobalStorage::get().get());
}

TEST_F(storage_test, empty_root_brings_back_the_default_folder_in_the_user_configuration) {
  scoped_env_t config_home("XDG_CONFIG_HOME", m_root);
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t());
  sptr_t<IGlobalStorage> global = IGlobalStorage::get();
  ASSERT_TRUE(global);
  ASSERT_TRUE(global->writeBag("defaults", bag_of("on", true)).succeeded());
  EXPECT_TRUE(fs::is_regular_file(fs::path(m_root) / "tamsel3" / "defaults.bag"));
}

TEST_F(storage_test, null_leaves_the_process_without_a_global_storage) {
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  IGlobalStorage::set(nullptr);
  EXPECT_FALSE(IGlobalStorage::get());
  EXPECT_FALSE(IGlobalStorage::get());  // and no default comes back by itself
}

TEST_F(storage_test, root_after_null_brings_a_storage_back) {
  IGlobalStorage::set(nullptr);
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  EXPECT_TRUE(IGlobalStorage::get());
}

TEST_F(storage_test, host_storage_is_the_global_one) {
  bool dead = false;
  int count = 0;
  sptr_t<IGlobalStorage> host(new counted_storage_t(&dead, &count));
  IGlobalStorage::set(host);
  EXPECT_EQ(IGlobalStorage::get().get(), host.get());
  ASSERT_TRUE(IGlobalStorage::get()->writeBag("k", bag_of("v", 1)).succeeded());
  EXPECT_TRUE(host->hasBag("k"));
  // A root brings back a file storage in place of the host's.
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  EXPECT_NE(IGlobalStorage::get().get(), host.get());
  EXPECT_FALSE(dead);
}

TEST_F(storage_test, global_storage_is_held_while_installed) {
  bool dead = false;
  int count = 0;
  auto* raw = new counted_storage_t(&dead, &count);
  IGlobalStorage::set(sptr_t<IGlobalStorage>(raw));
  EXPECT_FALSE(dead);
  EXPECT_EQ(count, 1);  // the process holds the only count
  {
    sptr_t<IGlobalStorage> user = IGlobalStorage::get();
    EXPECT_EQ(count, 2);
  }
  EXPECT_EQ(count, 1);
  IGlobalStorage::set(nullptr);
  EXPECT_TRUE(dead);
}

TEST_F(storage_test, storage_handed_out_outlives_its_replacement) {
  bool dead = false;
  int count = 0;
  IGlobalStorage::set(sptr_t<IGlobalStorage>(new counted_storage_t(&dead, &count)));
  sptr_t<IGlobalStorage> kept = IGlobalStorage::get();
  IGlobalStorage::set(nullptr);
  EXPECT_FALSE(dead);
  ASSERT_TRUE(kept->writeBag("still", bag_of("alive", 1)).succeeded());
  EXPECT_TRUE(kept->hasBag("still"));
  kept.reset();
  EXPECT_TRUE(dead);
}

TEST_F(storage_test, file_storage_handed_out_outlives_its_replacement) {
  IGlobalStorage::setGlobalStorageRoot(korvat2::path_t(m_root));
  sptr_t<IGlobalStorage> kept = IGlobalStorage::get();
  IGlobalStorage::set(nullptr);
  ASSERT_TRUE(kept->writeBag("late", bag_of("x", 2)).succeeded());
  EXPECT_EQ(kept->readBag("late", variant_bag_t()), bag_of("x", 2));
}

TEST_F(storage_test, sptr_counts_copies_and_moves) {
  bool dead = false;
  int count = 0;
  auto* raw = new counted_storage_t(&dead, &count);
  {
    sptr_t<IGlobalStorage> first(raw);
    EXPECT_EQ(count, 1);
    sptr_t<IGlobalStorage> copy = first;
    EXPECT_EQ(count, 2);
    sptr_t<IPropertyStorage> as_base = copy;
    EXPECT_EQ(count, 3);
    sptr_t<IGlobalStorage> moved = std::move(copy);
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(copy);
    as_base.reset();
    EXPECT_EQ(count, 2);
    first = nullptr;
    EXPECT_EQ(count, 1);
    EXPECT_FALSE(dead);
  }
  EXPECT_TRUE(dead);
}

TEST_F(storage_test, arrow_on_a_null_storage_pointer_is_reported) {
  test_support::assert_recorder_t asserts;
  sptr_t<IGlobalStorage> none;
  EXPECT_EQ(none.operator->(), nullptr);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ptr != 0"});
}

}  // namespace
