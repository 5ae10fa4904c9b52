// The progress object's posts as the GUI thread receives them, through the real event
// loop: titles, increments and status lines, from the GUI thread and from workers.
#include <tamsel3/progress.h>

#include "gui_test.h"

#include <korvat2/signal.h>
#include <plaxi1/tasks.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace {

using korvat2::intrusive_pointer_t;
using plaxi1::tasks::ISchedulerStatusCallback;
using plaxi1::tasks::Scheduler;
using tamsel3::progress_impl_t;
using tamsel3::progress_proxy_t;

intrusive_pointer_t<Scheduler> scheduler() {
  return Scheduler::Get(intrusive_pointer_t<ISchedulerStatusCallback>());
}

std::size_t pending() { return scheduler()->GetPendingCount(); }

// A task that marks when it ran, so that everything posted before it was delivered.
class marker_task_t : public plaxi1::tasks::GUITask {
 public:
  explicit marker_task_t(bool& ran) : m_ran(ran) {}
  void DoGUITask() override { m_ran = true; }

 private:
  bool& m_ran;
};

bool drain() {
  bool ran = false;
  scheduler()->AddTask(new marker_task_t(ran), std::string());
  return gui_test::wait_until([&ran] { return ran; });
}

// Everything the GUI thread received from one progress object, in arrival order.
class receiver_t : public korvat2::subscriber_base_t {
 public:
  explicit receiver_t(progress_impl_t& progress) {
    progress.m_start_signal.connect(this, &receiver_t::on_start);
    progress.m_progress_signal.connect(this, &receiver_t::on_progress);
    progress.m_message_signal.connect(this, &receiver_t::on_message);
    progress.m_cancel_signal.connect(this, &receiver_t::on_cancel);
  }

  void on_start(std::string title) { record("start " + title); }
  void on_progress(int step) {
    steps.push_back(step);
    record("step " + std::to_string(step));
  }
  void on_message(std::string text) { record("message " + text); }
  void on_cancel() { record("cancel"); }

  int sum() const { return std::accumulate(steps.begin(), steps.end(), 0); }

  std::vector<std::string> events;
  std::vector<int> steps;
  std::vector<std::thread::id> threads;

 private:
  void record(std::string event) {
    events.push_back(std::move(event));
    threads.push_back(std::this_thread::get_id());
  }
};

class progress_test : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(drain()); }
  void TearDown() override { EXPECT_TRUE(drain()); }
};

TEST_F(progress_test, thousand_unit_steps_on_a_thousand_post_eight_hundred_increments_of_one) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("run", 1000.0);
  // Nothing is delivered while the loop doesn't run, so each post shows in the queue.
  std::vector<bool> posted;
  for (int i = 0; i < 1000; ++i) {
    const std::size_t before = pending();
    progress.progressed(1);
    posted.push_back(pending() == before + 1);
  }
  for (int group = 0; group < 200; ++group) {
    int silent = 0;
    for (int i = 0; i < 5; ++i) {
      silent += posted[group * 5 + i] ? 0 : 1;
    }
    EXPECT_EQ(silent, 1) << "calls " << group * 5 + 1 << " to " << group * 5 + 5;
  }
  ASSERT_TRUE(drain());
  ASSERT_EQ(receiver.steps.size(), 800u);
  EXPECT_EQ(receiver.steps, std::vector<int>(800, 1));
  EXPECT_EQ(receiver.sum(), 800);
  EXPECT_EQ(receiver.events.front(), "start run");
}

TEST_F(progress_test, one_step_of_the_whole_total_posts_eight_hundred) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 10.0);
  progress.internalProgressed(10.0);
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.events, (std::vector<std::string>{"start t", "step 800"}));
}

TEST_F(progress_test, finish_after_partial_progress_posts_the_remainder) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 4.0);
  progress.internalProgressed(1.0);
  progress.finish();
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.steps, (std::vector<int>{200, 600}));
  EXPECT_EQ(progress.getTotalSteps(), 4.0);
}

TEST_F(progress_test, finish_twice_posts_once) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 3.0);
  progress.finish();
  const std::size_t before = pending();
  progress.finish();
  EXPECT_EQ(pending(), before);
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.steps, std::vector<int>{800});
}

// The interface's finish is reached through the virtual call, so a derived override of
// internalProgressed sees it.
class spying_progress_t : public progress_impl_t {
 public:
  void internalProgressed(double steps) override {
    seen.push_back(steps);
    progress_impl_t::internalProgressed(steps);
  }
  std::vector<double> seen;
};

TEST_F(progress_test, finish_goes_through_the_virtual_call_with_the_total) {
  spying_progress_t progress;
  receiver_t receiver(progress);
  progress.start("t", 2.5);
  progress.finish();
  ASSERT_TRUE(drain());
  EXPECT_EQ(progress.seen, std::vector<double>{2.5});
  EXPECT_EQ(receiver.steps, std::vector<int>{800});
}

TEST_F(progress_test, progress_beyond_the_total_stops_at_the_total) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 1000.0);
  progress.internalProgressed(1500.0);
  progress.internalProgressed(100.0);
  progress.finish();
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.steps, std::vector<int>{800});
}

TEST_F(progress_test, a_negative_delta_lowers_current_but_never_the_gauge) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 100.0);
  progress.internalProgressed(50.0);   // 400
  progress.internalProgressed(-30.0);  // current 20: no post
  progress.internalProgressed(30.0);   // back to 50, position 400: no post
  progress.internalProgressed(10.0);   // 60: 480
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.steps, (std::vector<int>{400, 80}));
}

TEST_F(progress_test, fractional_steps_accumulate_into_integer_increments) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("t", 1.0);
  for (int i = 0; i < 10000; ++i) {
    progress.internalProgressed(1e-4);
  }
  progress.finish();
  ASSERT_TRUE(drain());
  EXPECT_LE(receiver.steps.size(), 800u);
  EXPECT_GE(receiver.steps.size(), 790u);
  EXPECT_EQ(receiver.sum(), 800);
}

TEST_F(progress_test, a_second_start_keeps_current_and_position) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("first", 100.0);
  progress.internalProgressed(50.0);  // 400
  progress.start("second", 200.0);
  progress.internalProgressed(0.0);    // 50 of 200 is 200 on the gauge: below 400, no post
  progress.internalProgressed(150.0);  // 200 of 200: 800
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.events,
            (std::vector<std::string>{"start first", "step 400", "start second", "step 400"}));
  EXPECT_EQ(progress.getTotalSteps(), 200.0);
}

TEST_F(progress_test, messages_and_steps_arrive_in_posting_order_on_the_gui_thread) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress.start("title", 2.0);
  progress.message("one");
  progress.progressed(1);
  progress.message("");
  progress.message("two");
  progress.finish();
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.events, (std::vector<std::string>{"start title", "message one", "step 400", "message ",
                                                       "message two", "step 400"}));
  for (const auto& id : receiver.threads) {
    EXPECT_EQ(id, std::this_thread::get_id());
  }
}

TEST_F(progress_test, cancel_posts_nothing_and_emits_nothing) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  const std::size_t before = pending();
  progress.cancel();
  EXPECT_EQ(pending(), before);
  ASSERT_TRUE(drain());
  EXPECT_TRUE(receiver.events.empty());
  EXPECT_TRUE(progress.isCanceled());
}

TEST_F(progress_test, posts_from_a_worker_arrive_on_the_gui_thread_in_order) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress_proxy_t proxy(&progress);
  std::vector<std::string> expected{"start work"};
  std::thread worker([&proxy] {
    proxy.start("work", 8.0);
    for (int i = 0; i < 8; ++i) {
      proxy.message(("line " + std::to_string(i)).c_str());
      proxy.progressed(1);
    }
  });
  for (int i = 0; i < 8; ++i) {
    expected.push_back("message line " + std::to_string(i));
    expected.push_back("step 100");
  }
  worker.join();
  ASSERT_TRUE(gui_test::wait_until([&] { return receiver.events.size() == expected.size(); }));
  EXPECT_EQ(receiver.events, expected);
  for (const auto& id : receiver.threads) {
    EXPECT_EQ(id, std::this_thread::get_id());
  }
}

TEST_F(progress_test, cancel_on_the_gui_thread_is_seen_by_a_polling_worker) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress_proxy_t proxy(&progress);
  std::atomic<bool> running{false};
  std::atomic<bool> saw_cancel{false};
  std::thread worker([&] {
    proxy.start("work", 1e12);
    running = true;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!proxy.isCanceled() && std::chrono::steady_clock::now() < deadline) {
      proxy.progressed(1);
      std::this_thread::yield();
    }
    saw_cancel = proxy.isCanceled();
    // A canceled run still reports: the gauge goes on to the end.
    proxy.message("stopping");
    proxy.finish();
  });
  ASSERT_TRUE(gui_test::wait_until([&] { return running.load(); }));
  proxy.cancel();
  worker.join();
  EXPECT_TRUE(saw_cancel);
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.sum(), 800);
  EXPECT_EQ(receiver.events.front(), "start work");
  EXPECT_EQ(receiver.events.end()[-2], "message stopping");
  for (const auto& event : receiver.events) {
    EXPECT_NE(event, "cancel");  // the cancel signal stays silent
  }
}

TEST_F(progress_test, proxy_without_target_posts_nothing) {
  progress_proxy_t proxy;
  const std::size_t before = pending();
  proxy.start("t", 5.0);
  proxy.progressed(5);
  proxy.internalProgressed(1.0);
  proxy.message("m");
  proxy.finish();
  proxy.cancel();
  EXPECT_EQ(pending(), before);
  EXPECT_EQ(proxy.getTotalSteps(), 1.0);
  EXPECT_FALSE(proxy.isCanceled());
}

TEST_F(progress_test, proxy_with_target_reaches_the_gui_thread) {
  progress_impl_t progress;
  receiver_t receiver(progress);
  progress_proxy_t proxy(&progress);
  proxy.start("t", 5.0);
  proxy.progressed(5);
  proxy.message("m");
  EXPECT_EQ(proxy.getTotalSteps(), 5.0);
  EXPECT_FALSE(proxy.isCanceled());
  proxy.cancel();
  EXPECT_TRUE(progress.isCanceled());
  EXPECT_TRUE(proxy.isCanceled());
  proxy.m_target = nullptr;
  proxy.message("lost");
  ASSERT_TRUE(drain());
  EXPECT_EQ(receiver.events, (std::vector<std::string>{"start t", "step 800", "message m"}));
}

TEST_F(progress_test, a_subscriber_gone_before_delivery_is_not_called) {
  progress_impl_t progress;
  {
    receiver_t receiver(progress);
    progress.start("t", 1.0);
    progress.finish();
  }
  EXPECT_TRUE(drain());
}

}  // namespace
