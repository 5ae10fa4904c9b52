#include <tamsel3/global_show_help.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

namespace {

using tamsel3::global_show_help_flavor;

class provider_t : public global_show_help_flavor {
 public:
  void show_topic(const std::string& topic) override { m_topics.push_back(topic); }
  void show_contents() override { ++m_contents; }
  std::vector<std::string> m_topics;
  int m_contents = 0;
};

// The host owns its provider through a counted pointer; the slot takes no share.
TEST(global_show_help_test, initialize_stores_without_a_reference) {
  korvat2::intrusive_pointer_t<provider_t> host(new provider_t);
  global_show_help_flavor::initialize(host.get());
  EXPECT_EQ(host->ref_count(), 1u);
  {
    korvat2::intrusive_pointer_t<global_show_help_flavor> got = global_show_help_flavor::get();
    ASSERT_EQ(got.get(), host.get());
    EXPECT_EQ(host->ref_count(), 2u);
    got->show_topic("index");
  }
  EXPECT_EQ(host->ref_count(), 1u);
  EXPECT_EQ(host->m_topics, std::vector<std::string>{"index"});
  host.reset();  // its death empties the slot
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

TEST(global_show_help_test, initialize_with_null_empties_the_slot) {
  korvat2::intrusive_pointer_t<provider_t> host(new provider_t);
  global_show_help_flavor::initialize(host.get());
  global_show_help_flavor::initialize(nullptr);
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

TEST(global_show_help_test, destroying_any_instance_empties_the_slot) {
  korvat2::intrusive_pointer_t<provider_t> newer(new provider_t);
  korvat2::intrusive_pointer_t<provider_t> older(new provider_t);
  global_show_help_flavor::initialize(newer.get());
  older.reset();  // the older one dies
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

TEST(global_show_help_test, destroying_a_held_instance_is_reported) {
  test_support::assert_recorder_t asserts;
  auto* provider = new provider_t;
  provider->add_ref();
  delete provider;
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{"m_ref_count == 0"});
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

// While its last owner lets it go, a provider's count is zero and the slot still names it
// until its base part dies: whoever asks then gets nothing, not a share in a dying object.
class dying_probe_t : public provider_t {
 public:
  explicit dying_probe_t(bool* handed_out) : m_handed_out(handed_out) {}
  ~dying_probe_t() override {
    korvat2::intrusive_pointer_t<global_show_help_flavor> got = global_show_help_flavor::get();
    *m_handed_out = got.get() != nullptr;
    got.detach();  // a share in a dying object can't be given back
  }

 private:
  bool* m_handed_out;
};

TEST(global_show_help_test, a_dying_provider_is_not_handed_out) {
  test_support::assert_recorder_t asserts;
  bool handed_out = true;
  {
    korvat2::intrusive_pointer_t<dying_probe_t> owner(new dying_probe_t(&handed_out));
    global_show_help_flavor::initialize(owner.get());
  }
  EXPECT_FALSE(handed_out);
  EXPECT_EQ(asserts.count(), 0u);
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

}  // namespace
