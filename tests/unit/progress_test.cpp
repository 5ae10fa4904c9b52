// The progress object's parts that need no event loop: the proxies, the cancel flag, and
// the cost of a call that doesn't move the gauge. This program counts every allocation
// made through the global operator new.
#include <tamsel3/progress.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <future>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

// Per thread, so that allocations elsewhere in the process don't disturb a count.
thread_local std::size_t allocation_count = 0;

void* counted_allocate(std::size_t size) {
  ++allocation_count;
  if (void* p = std::malloc(size ? size : 1)) {
    return p;
  }
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return counted_allocate(size); }
void* operator new[](std::size_t size) { return counted_allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace {

using pelit2::ESeverity;
using tamsel3::messenger_proxy_t;
using tamsel3::progress_impl_t;
using tamsel3::progress_proxy_t;

// Writes down each call it receives, by name.
class recording_progress_t : public pelit2::IProgress {
 public:
  void start(const char* title, double total) override {
    calls.push_back("start " + std::string(title) + " " + std::to_string(total));
  }
  void progressed(int steps) override { calls.push_back("progressed " + std::to_string(steps)); }
  void internalProgressed(double steps) override { calls.push_back("internal " + std::to_string(steps)); }
  void message(const char* text) override { calls.push_back("message " + std::string(text)); }
  void finish() override { calls.push_back("finish"); }
  void cancel() override { calls.push_back("cancel"); }
  double getTotalSteps() override {
    calls.push_back("total");
    return 42.5;
  }
  bool isCanceled() override {
    calls.push_back("canceled");
    return true;
  }

  std::vector<std::string> calls;
};

class recording_messenger_t : public pelit2::IMessenger {
 public:
  void say(ESeverity severity, const char* text) override { lines.emplace_back(severity, text); }
  std::vector<std::pair<ESeverity, std::string>> lines;
};

// Keeps the interface's own progressed, which must reach internalProgressed.
class base_progressed_t : public pelit2::IProgress {
 public:
  void start(const char*, double) override {}
  void internalProgressed(double steps) override { calls.push_back("internal " + std::to_string(steps)); }
  void message(const char*) override {}
  void finish() override {}
  void cancel() override {}
  double getTotalSteps() override { return 0.0; }
  bool isCanceled() override { return false; }

  std::vector<std::string> calls;
};

void drive_all(pelit2::IProgress& progress) {
  progress.start("title", 10.0);
  progress.progressed(3);
  progress.internalProgressed(0.5);
  progress.message("text");
  progress.finish();
  progress.cancel();
}

TEST(progress_unit_test, a_new_object_is_neither_started_nor_canceled) {
  progress_impl_t progress;
  EXPECT_EQ(progress.getTotalSteps(), 0.0);
  EXPECT_FALSE(progress.isCanceled());
  EXPECT_EQ(progress_impl_t::scale, 800);
}

TEST(progress_unit_test, cancel_sets_the_flag_and_nothing_else) {
  progress_impl_t progress;
  progress.cancel();
  EXPECT_TRUE(progress.isCanceled());
  progress.cancel();
  EXPECT_TRUE(progress.isCanceled());
  EXPECT_EQ(progress.getTotalSteps(), 0.0);
}

TEST(progress_unit_test, cancel_from_another_thread_is_seen_by_a_poller) {
  progress_impl_t progress;
  std::thread canceler([&progress] { progress.cancel(); });
  canceler.join();
  EXPECT_TRUE(progress.isCanceled());
}

TEST(progress_unit_test, interface_progressed_goes_through_internal_progressed) {
  base_progressed_t progress;
  pelit2::IProgress& base = progress;
  base.progressed(7);
  ASSERT_EQ(progress.calls.size(), 1u);
  EXPECT_EQ(progress.calls[0], "internal 7.000000");
}

TEST(progress_unit_test, proxy_without_target_does_nothing) {
  progress_proxy_t proxy;
  EXPECT_EQ(proxy.m_target, nullptr);
  drive_all(proxy);
  EXPECT_EQ(proxy.getTotalSteps(), 1.0);
  EXPECT_FALSE(proxy.isCanceled());
}

TEST(progress_unit_test, proxy_forwards_every_call_including_progressed) {
  recording_progress_t target;
  progress_proxy_t proxy(&target);
  drive_all(proxy);
  EXPECT_EQ(proxy.getTotalSteps(), 42.5);
  EXPECT_TRUE(proxy.isCanceled());
  const std::vector<std::string> expected = {"start title 10.000000",
                                             "progressed 3",
                                             "internal 0.500000",
                                             "message text",
                                             "finish",
                                             "cancel",
                                             "total",
                                             "canceled"};
  EXPECT_EQ(target.calls, expected);
}

TEST(progress_unit_test, proxy_follows_a_changed_target) {
  recording_progress_t first;
  recording_progress_t second;
  progress_proxy_t proxy(&first);
  proxy.finish();
  proxy.m_target = &second;
  proxy.cancel();
  proxy.m_target = nullptr;
  proxy.finish();
  EXPECT_EQ(first.calls, std::vector<std::string>{"finish"});
  EXPECT_EQ(second.calls, std::vector<std::string>{"cancel"});
  EXPECT_FALSE(proxy.isCanceled());
}

TEST(progress_unit_test, proxy_on_a_progress_object_sees_its_cancel) {
  progress_impl_t progress;
  progress_proxy_t proxy(&progress);
  EXPECT_FALSE(proxy.isCanceled());
  progress.cancel();
  EXPECT_TRUE(proxy.isCanceled());
  EXPECT_EQ(proxy.getTotalSteps(), 0.0);
}

TEST(progress_unit_test, messenger_proxy_forwards_or_does_nothing) {
  messenger_proxy_t proxy;
  proxy.say(pelit2::severity_error, "lost");
  recording_messenger_t target;
  proxy.m_target = &target;
  proxy.say(pelit2::severity_warning | pelit2::severity_transient, "kept");
  proxy.m_target = nullptr;
  proxy.say(pelit2::severity_info, "lost too");
  ASSERT_EQ(target.lines.size(), 1u);
  EXPECT_EQ(target.lines[0].first, pelit2::severity_warning | pelit2::severity_transient);
  EXPECT_EQ(target.lines[0].second, "kept");
}

TEST(progress_unit_test, a_call_that_does_not_step_allocates_nothing) {
  progress_impl_t progress;
  // Posting the title queues a task, which allocates; the count starts after it.
  progress.start("run", 1e9);
  const std::size_t before = allocation_count;
  for (int i = 0; i < 10000; ++i) {
    progress.internalProgressed(1.0);  // 0.008 positions in all: never a step
  }
  for (int i = 0; i < 10000; ++i) {
    progress.progressed(-1);  // falling back is never a step either
  }
  EXPECT_EQ(allocation_count - before, 0u);
}

// Without a start there is no length to scale by: the steps post nothing, and the
// undefined quotient is never converted (the sanitizer build checks that).
TEST(progress_unit_test, steps_before_start_post_nothing) {
  progress_impl_t progress;
  const std::size_t before = allocation_count;
  progress.internalProgressed(0.5);
  progress.finish();
  EXPECT_EQ(allocation_count - before, 0u);
  EXPECT_EQ(progress.getTotalSteps(), 0.0);
}

TEST(progress_unit_test, the_counter_sees_allocations) {
  const std::size_t before = allocation_count;
  void* p = ::operator new(16);  // a call, not an expression: it can't be elided
  ::operator delete(p);
  std::string text(100, 'x');
  EXPECT_EQ(allocation_count - before, 2u);
}

// A subscriber that stays inside its call until released, holding the signal's mutex.
class blocking_receiver_t : public korvat2::subscriber_base_t {
 public:
  void on_step(int) {
    entered.set_value();
    release.get_future().wait();
  }
  std::promise<void> entered;
  std::promise<void> release;
};

TEST(progress_unit_test, a_call_that_does_not_step_ignores_the_signals_locks) {
  progress_impl_t progress;
  progress.start("run", 1e9);
  blocking_receiver_t receiver;
  progress.m_progress_signal.connect(&receiver, &blocking_receiver_t::on_step);
  std::thread emitter([&progress] { progress.m_progress_signal(1); });
  receiver.entered.get_future().wait();

  // A step would copy the signal, which waits for its mutex; a non-step must not.
  auto calls = std::async(std::launch::async, [&progress] {
    for (int i = 0; i < 10000; ++i) {
      progress.internalProgressed(1.0);
    }
  });
  const bool done = calls.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
  receiver.release.set_value();
  emitter.join();
  calls.wait();
  EXPECT_TRUE(done);
  progress.m_progress_signal.disconnect(&receiver, &blocking_receiver_t::on_step);
}

}  // namespace
