#include <korvat2/signal_snapshot.h>

#include "logging_receiver.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using korvat2::signal_snapshot_t;
using korvat2::signal_t;
using korvat2::subscriber_base_t;

using test_support::call_log_t;
using receiver_t = test_support::logging_receiver_t;

// Shows what a snapshot holds of each receiver.
std::uint32_t token_count(const korvat2::_internal::snapshot_base_t& snapshot, std::size_t index) {
  return snapshot[index].liveness->ref_count();
}

TEST(signal_snapshot_test, calls_the_receivers_connected_when_it_was_made_in_order) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), late(log, "late");
  signal_t<int> signal;
  signal.connect(&b, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_virtual);
  signal_snapshot_t<int> snapshot(signal);
  signal.connect(&late, &receiver_t::on_value);
  signal.disconnect(&b, &receiver_t::on_value);
  EXPECT_EQ(snapshot.size(), 2u);
  EXPECT_TRUE(log.empty());
  snapshot(4);
  EXPECT_EQ(log, (call_log_t{"b:4", "a/virtual:4"}));
}

TEST(signal_snapshot_test, calls_once_and_is_empty_afterwards) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  snapshot(1);
  EXPECT_TRUE(snapshot.empty());
  snapshot(2);
  EXPECT_EQ(log, call_log_t{"a:1"});
}

TEST(signal_snapshot_test, of_a_signal_without_receivers_is_empty) {
  signal_t<int> signal;
  signal_snapshot_t<int> snapshot(signal);
  EXPECT_TRUE(snapshot.empty());
  snapshot(1);
}

TEST(signal_snapshot_test, outlives_its_signal) {
  call_log_t log;
  receiver_t a(log, "a");
  auto signal = std::make_unique<signal_t<std::string>>();
  signal->connect(&a, &receiver_t::on_text);
  signal_snapshot_t<std::string> snapshot(*signal);
  signal.reset();
  snapshot("still here");
  EXPECT_EQ(log, call_log_t{"a:still here"});
}

TEST(signal_snapshot_test, skips_a_receiver_destroyed_before_the_call) {
  call_log_t log;
  auto gone = std::make_unique<receiver_t>(log, "gone");
  receiver_t kept(log, "kept");
  signal_t<int> signal;
  signal.connect(gone.get(), &receiver_t::on_value);
  signal.connect(&kept, &receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  gone.reset();
  snapshot(5);
  EXPECT_EQ(log, call_log_t{"kept:5"});
}

TEST(signal_snapshot_test, skips_a_receiver_that_an_earlier_one_destroys) {
  call_log_t log;
  receiver_t first(log, "first");
  auto second = std::make_unique<receiver_t>(log, "second");
  first.m_action = [&](int) { second.reset(); };
  signal_t<int> signal;
  signal.connect(&first, &receiver_t::on_value);
  signal.connect(second.get(), &receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  snapshot(6);
  EXPECT_EQ(log, call_log_t{"first:6"});
}

TEST(signal_snapshot_test, receiver_may_destroy_itself_in_its_call) {
  call_log_t log;
  auto self = std::make_unique<receiver_t>(log, "self");
  receiver_t after(log, "after");
  self->m_action = [&](int) { self.reset(); };
  signal_t<int> signal;
  signal.connect(self.get(), &receiver_t::on_value);
  signal.connect(&after, &receiver_t::on_value);
  signal_snapshot_t<int> first(signal);
  signal_snapshot_t<int> second(signal);
  first(1);
  second(2);
  EXPECT_EQ(self, nullptr);
  EXPECT_EQ(log, (call_log_t{"self:1", "after:1", "after:2"}));
}

TEST(signal_snapshot_test, receiver_that_left_its_signals_is_skipped_and_may_come_back) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal_snapshot_t<int> before(signal);
  a.leave();
  signal.connect(&a, &receiver_t::on_value);
  signal_snapshot_t<int> after(signal);
  before(1);
  after(2);
  EXPECT_EQ(log, call_log_t{"a:2"});
}

TEST(signal_snapshot_test, receivers_share_one_token_over_signals_and_snapshots) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> one, two;
  one.connect(&a, &receiver_t::on_value);
  two.connect(&a, &receiver_t::on_value);
  signal_snapshot_t<int> first(one);
  signal_snapshot_t<int> second(two);
  EXPECT_EQ(first[0].liveness, second[0].liveness);
  EXPECT_EQ(token_count(first, 0), 3u);  // the receiver's and each snapshot's
  first.clear();
  EXPECT_EQ(token_count(second, 0), 2u);
}

TEST(signal_snapshot_test, copy_of_a_receiver_is_not_the_original) {
  call_log_t log;
  auto original = std::make_unique<receiver_t>(log, "original");
  signal_t<int> signal;
  signal.connect(original.get(), &receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  const receiver_t copy(*original);
  original.reset();
  snapshot(1);
  EXPECT_TRUE(log.empty());
}

TEST(signal_snapshot_test, throwing_receiver_ends_the_call_and_empties_the_snapshot) {
  call_log_t log;
  receiver_t thrower(log, "thrower"), after(log, "after");
  thrower.m_action = [](int) { throw std::runtime_error("fails on purpose"); };
  signal_t<int> signal;
  signal.connect(&thrower, &receiver_t::on_value);
  signal.connect(&after, &receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  EXPECT_THROW(snapshot(1), std::runtime_error);
  EXPECT_TRUE(snapshot.empty());
  EXPECT_EQ(log, call_log_t{"thrower:1"});
  // The token's mutex was given back: the receiver can still die.
}

TEST(signal_snapshot_test, skips_a_blank_left_by_a_running_emission) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  std::unique_ptr<signal_snapshot_t<int>> snapshot;
  a.m_action = [&](int) {
    signal.disconnect(&a, &receiver_t::on_value);
    snapshot = std::make_unique<signal_snapshot_t<int>>(signal);
  };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal(1);
  ASSERT_NE(snapshot, nullptr);
  EXPECT_EQ(snapshot->size(), 1u);
  (*snapshot)(2);
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1", "b:2"}));
}

TEST(signal_snapshot_test, calls_a_chained_signal_while_it_lives) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  auto chained = std::make_unique<signal_t<int>>();
  chained->connect(&a, &receiver_t::on_value);
  signal.connect(chained.get());
  signal_snapshot_t<int> first(signal);
  signal_snapshot_t<int> second(signal);
  first(1);
  chained.reset();
  second(2);
  EXPECT_EQ(log, call_log_t{"a:1"});
}

TEST(signal_snapshot_test, moved_snapshot_takes_the_receivers) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> single, pair;
  single.connect(&a, &receiver_t::on_value);
  pair.connect(&a, &receiver_t::on_value);
  pair.connect(&b, &receiver_t::on_value);
  signal_snapshot_t<int> inline_source(single), heap_source(pair);
  signal_snapshot_t<int> inline_target(std::move(inline_source));
  signal_snapshot_t<int> heap_target(std::move(heap_source));
  EXPECT_TRUE(inline_source.empty());  // NOLINT(bugprone-use-after-move): moved out on purpose
  EXPECT_TRUE(heap_source.empty());    // NOLINT(bugprone-use-after-move)
  inline_target(1);
  heap_target(2);
  EXPECT_EQ(log, (call_log_t{"a:1", "a:2", "b:2"}));
}

// Destroyed on another thread while a snapshot calls it, it notes whether the call had
// ended by the time it left its signals, which it does before its members go.
class slow_receiver_t : public subscriber_base_t {
 public:
  explicit slow_receiver_t(bool& left_after_call) : m_left_after_call(left_after_call) {}
  ~slow_receiver_t() override {
    disconnect_all_signals();
    std::lock_guard<std::mutex> lock(m_mutex);
    m_left_after_call = m_call_done;
    m_left = true;
    m_changed.notify_all();
  }

  void on_value(int) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_in_call = true;
    m_changed.notify_all();
    m_changed.wait_for(lock, std::chrono::seconds(20), [this] { return m_destroying; });
    // Had the destroyer not waited for this call, it would have left within this bound.
    m_changed.wait_for(lock, std::chrono::milliseconds(200), [this] { return m_left; });
    m_call_done = true;
  }

  // Lets the destroyer go once the call is running.
  void destroy_when_called(std::unique_ptr<slow_receiver_t>& self) {
    {
      std::unique_lock<std::mutex> lock(m_mutex);
      m_changed.wait_for(lock, std::chrono::seconds(20), [this] { return m_in_call; });
      m_destroying = true;
      m_changed.notify_all();
    }
    self.reset();
  }

 private:
  bool& m_left_after_call;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_in_call = false;
  bool m_destroying = false;
  bool m_call_done = false;
  bool m_left = false;
};

TEST(signal_snapshot_test, receiver_dying_on_another_thread_waits_for_the_running_call) {
  bool left_after_call = false;
  auto receiver = std::make_unique<slow_receiver_t>(left_after_call);
  signal_t<int> signal;
  signal.connect(receiver.get(), &slow_receiver_t::on_value);
  signal_snapshot_t<int> snapshot(signal);
  slow_receiver_t* raw = receiver.get();
  std::thread destroyer([raw, &receiver] { raw->destroy_when_called(receiver); });
  snapshot(1);
  destroyer.join();
  EXPECT_EQ(receiver, nullptr);
  EXPECT_TRUE(left_after_call);
}

}  // namespace
