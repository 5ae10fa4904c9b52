// Threads install help providers, reach them through the process-wide slot and let them
// die, all at once: the slot never hands out a provider whose last owner let it go.
#include <tamsel3/global_show_help.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using tamsel3::global_show_help_flavor;

constexpr int thread_count = 4;
constexpr int rounds_per_thread = 100000 / thread_count;

std::atomic<int> g_calls_after_death{0};
std::atomic<long> g_calls{0};

class provider_t : public global_show_help_flavor {
 public:
  ~provider_t() override { m_alive.store(false); }
  void show_topic(const std::string& topic) override {
    if (!m_alive.load() || topic != m_topic) {
      ++g_calls_after_death;
    }
    ++g_calls;
  }
  void show_contents() override {}

 private:
  std::atomic<bool> m_alive{true};
  // On the heap, so that the provider's own part takes a moment to die.
  std::string m_topic = "a topic with a name too long to be kept inside the string";
};

void install_reach_and_drop() {
  const std::string topic = "a topic with a name too long to be kept inside the string";
  for (int round = 0; round < rounds_per_thread; ++round) {
    korvat2::intrusive_pointer_t<provider_t> owner(new provider_t);
    global_show_help_flavor::initialize(owner.get());
    if (korvat2::intrusive_pointer_t<global_show_help_flavor> got = global_show_help_flavor::get()) {
      got->show_topic(topic);
    }
    owner.reset();  // it dies here, unless another thread holds it now
    if (korvat2::intrusive_pointer_t<global_show_help_flavor> got = global_show_help_flavor::get()) {
      got->show_topic(topic);
    }
  }
}

TEST(global_show_help_stress_test, never_hands_out_a_dying_provider) {
  test_support::assert_recorder_t asserts;
  std::vector<std::thread> threads;
  for (int self = 0; self < thread_count; ++self) {
    threads.emplace_back(install_reach_and_drop);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(g_calls_after_death.load(), 0);
  EXPECT_GT(g_calls.load(), 0);
  // A provider destroyed while someone held a share of it is reported.
  EXPECT_EQ(asserts.count(), 0u);
  EXPECT_EQ(global_show_help_flavor::get().get(), nullptr);
}

}  // namespace
