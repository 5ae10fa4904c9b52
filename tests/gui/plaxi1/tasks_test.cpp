// Tasks handed to the scheduler and signal emissions posted to the GUI thread, delivered
// by the real event loop.
#include <plaxi1/tasks.h>

#include "gui_test.h"

#include <korvat2/signal.h>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using korvat2::intrusive_pointer_t;
using plaxi1::tasks::ISchedulerStatusCallback;
using plaxi1::tasks::ITask;
using plaxi1::tasks::PostSignal;
using plaxi1::tasks::Scheduler;

intrusive_pointer_t<Scheduler> scheduler() {
  return Scheduler::Get(intrusive_pointer_t<ISchedulerStatusCallback>());
}

// What the subscribers saw; read and written on the GUI thread only.
struct record_t {
  std::vector<int> values;
  std::vector<std::pair<int, int>> pairs;
  std::vector<std::string> texts;
  std::vector<std::thread::id> threads;
  int throws = 0;
};

class receiver_t : public korvat2::subscriber_base_t {
 public:
  explicit receiver_t(record_t& record) : m_record(record) {}

  void on_int(int value) {
    m_record.values.push_back(value);
    m_record.threads.push_back(std::this_thread::get_id());
  }
  void on_pair(int thread, int sequence) { m_record.pairs.emplace_back(thread, sequence); }
  void on_text(std::string text) { m_record.texts.push_back(std::move(text)); }
  void on_nothing() { m_record.values.push_back(-1); }
  void on_int_throw(int) {
    ++m_record.throws;
    throw std::runtime_error("subscriber failed on purpose");
  }

 private:
  record_t& m_record;
};

struct emitter_t {
  korvat2::signal_t<int> m_int_signal;
  korvat2::signal_t<int, int> m_pair_signal;
  korvat2::signal_t<std::string> m_text_signal;
  korvat2::signal_t<> m_say_signal;
};

// A counted task that notes when it runs and when it is destroyed.
class note_task_t : public plaxi1::tasks::GUITask {
 public:
  note_task_t(std::vector<int>& order, int id, bool* destroyed = nullptr, bool throws = false)
      : m_order(order), m_id(id), m_destroyed(destroyed), m_throws(throws) {}
  ~note_task_t() override {
    if (m_destroyed) {
      *m_destroyed = true;
    }
  }
  void DoGUITask() override {
    m_order.push_back(m_id);
    if (m_throws) {
      throw std::runtime_error("task failed on purpose");
    }
  }

 private:
  std::vector<int>& m_order;
  int m_id;
  bool* m_destroyed;
  bool m_throws;
};

class tasks_test : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(drain()); }
  void TearDown() override { EXPECT_TRUE(drain()); }

  // Runs the loop until everything posted so far was delivered: a marker task goes last.
  static bool drain() {
    std::vector<int> order;
    scheduler()->AddTask(new note_task_t(order, 0), std::string());
    return gui_test::wait_until([&order] { return !order.empty(); });
  }
};

TEST_F(tasks_test, task_classes_have_their_defaults) {
  std::vector<int> order;
  intrusive_pointer_t<note_task_t> task(new note_task_t(order, 1));
  EXPECT_FALSE(task->IsLongTask());
  EXPECT_FALSE(task->IsServiceThreadNeeded());
  EXPECT_FALSE(task->IsCanceled());
  EXPECT_EQ(task->GetDisplayName(), "");
  task->Cancel();
  EXPECT_TRUE(task->IsCanceled());
  EXPECT_EQ(plaxi1::tasks::MAIN_QUEUE_NAME, "main");
  EXPECT_EQ(plaxi1::tasks::SERVICE_QUEUE_NAME, "service");
  EXPECT_EQ(plaxi1::tasks::LONG_TASKS_QUEUE_NAME, "long tasks");
  EXPECT_EQ(plaxi1::tasks::DELAY_TASKS_QUEUE_NAME, "delay tasks");
}

TEST_F(tasks_test, scheduler_is_one_per_process) {
  EXPECT_EQ(scheduler().get(), scheduler().get());
  EXPECT_NE(scheduler().get(), nullptr);
}

TEST_F(tasks_test, task_runs_later_on_the_gui_thread_and_is_released) {
  std::vector<int> order;
  bool destroyed = false;
  intrusive_pointer_t<ITask> task(new note_task_t(order, 1, &destroyed));
  scheduler()->AddTask(task, std::string());
  EXPECT_EQ(task->ref_count(), 2u);  // the poster's and the scheduler's
  task.reset();
  EXPECT_TRUE(order.empty());  // not before the loop ran
  EXPECT_FALSE(destroyed);
  ASSERT_TRUE(gui_test::wait_until([&] { return !order.empty(); }));
  EXPECT_TRUE(destroyed);
  EXPECT_EQ(scheduler()->GetPendingCount(), 0u);
}

TEST_F(tasks_test, canceled_task_does_not_run) {
  std::vector<int> order;
  bool destroyed = false;
  intrusive_pointer_t<ITask> task(new note_task_t(order, 1, &destroyed));
  task->Cancel();
  scheduler()->AddTask(task, std::string());
  task.reset();
  ASSERT_TRUE(drain());
  EXPECT_TRUE(order.empty());
  EXPECT_TRUE(destroyed);
}

TEST_F(tasks_test, default_queue_keeps_order_of_arrival) {
  std::vector<int> order;
  for (int i = 0; i < 50; ++i) {
    scheduler()->AddTask(new note_task_t(order, i), std::string());
  }
  ASSERT_TRUE(gui_test::wait_until([&] { return order.size() == 50; }));
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(order[i], i);
  }
}

TEST_F(tasks_test, named_queues_are_delivered_in_order_of_arrival_too) {
  std::vector<int> order;
  const std::string queues[] = {"", plaxi1::tasks::MAIN_QUEUE_NAME, plaxi1::tasks::DELAY_TASKS_QUEUE_NAME};
  for (int i = 0; i < 30; ++i) {
    scheduler()->AddTask(new note_task_t(order, i), queues[i % 3]);
  }
  ASSERT_TRUE(gui_test::wait_until([&] { return order.size() == 30; }));
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(order[i], i);
  }
}

TEST_F(tasks_test, throwing_task_is_released_and_later_tasks_still_run) {
  std::vector<int> order;
  bool destroyed = false;
  scheduler()->AddTask(new note_task_t(order, 1, &destroyed, true), std::string());
  scheduler()->AddTask(new note_task_t(order, 2), std::string());
  ASSERT_TRUE(gui_test::wait_until([&] { return order.size() == 2; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
  EXPECT_TRUE(destroyed);
}

TEST_F(tasks_test, post_without_subscribers_runs_and_does_nothing) {
  emitter_t emitter;
  PostSignal(emitter.m_int_signal, 5);
  PostSignal(emitter.m_say_signal);
  EXPECT_EQ(scheduler()->GetPendingCount(), 2u);
  ASSERT_TRUE(drain());
  EXPECT_EQ(scheduler()->GetPendingCount(), 0u);
  EXPECT_TRUE(emitter.m_int_signal.empty());
}

TEST_F(tasks_test, post_delivers_copies_of_every_argument_kind) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  emitter.m_text_signal.connect(&receiver, &receiver_t::on_text);
  emitter.m_say_signal.connect(&receiver, &receiver_t::on_nothing);
  {
    std::string text = "first";
    PostSignal(emitter.m_text_signal, text);
    text = "changed";  // the task holds its own copy
  }
  PostSignal(emitter.m_int_signal, 3);
  PostSignal(emitter.m_say_signal);
  ASSERT_TRUE(drain());
  EXPECT_EQ(record.texts, (std::vector<std::string>{"first"}));
  EXPECT_EQ(record.values, (std::vector<int>{3, -1}));
}

TEST_F(tasks_test, posts_from_a_worker_arrive_on_the_gui_thread_in_order) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  const std::thread::id gui_thread = std::this_thread::get_id();
  constexpr int count = 1000;
  std::thread worker([&emitter] {
    for (int i = 0; i < count; ++i) {
      PostSignal(emitter.m_int_signal, i);
    }
  });
  ASSERT_TRUE(gui_test::wait_until([&] { return record.values.size() == count; }, 20000));
  worker.join();
  ASSERT_TRUE(drain());
  ASSERT_EQ(record.values.size(), static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(record.values[i], i);
    EXPECT_EQ(record.threads[i], gui_thread);
  }
}

TEST_F(tasks_test, posts_from_several_workers_keep_each_workers_order) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_pair_signal.connect(&receiver, &receiver_t::on_pair);
  constexpr int workers = 4;
  constexpr int count = 1000;
  std::vector<std::thread> threads;
  for (int w = 0; w < workers; ++w) {
    threads.emplace_back([&emitter, w] {
      for (int i = 0; i < count; ++i) {
        PostSignal(emitter.m_pair_signal, w, i);
      }
    });
  }
  const bool all = gui_test::wait_until([&] { return record.pairs.size() == workers * count; }, 30000);
  for (std::thread& thread : threads) {
    thread.join();
  }
  ASSERT_TRUE(all);
  std::vector<int> next(workers, 0);
  for (const auto& [w, i] : record.pairs) {
    ASSERT_GE(w, 0);
    ASSERT_LT(w, workers);
    EXPECT_EQ(i, next[w]) << "worker " << w;
    next[w] = i + 1;
  }
  EXPECT_EQ(next, std::vector<int>(workers, count));
}

TEST_F(tasks_test, post_never_waits_for_a_busy_gui_thread) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  // The GUI thread doesn't run its loop until the worker is done.
  std::future<void> posted = std::async(std::launch::async, [&emitter] {
    for (int i = 0; i < 100; ++i) {
      PostSignal(emitter.m_int_signal, i);
    }
  });
  ASSERT_EQ(posted.wait_for(std::chrono::seconds(20)), std::future_status::ready);
  EXPECT_TRUE(record.values.empty());
  ASSERT_TRUE(gui_test::wait_until([&] { return record.values.size() == 100; }));
}

TEST_F(tasks_test, subscriber_destroyed_before_delivery_is_not_called) {
  record_t record;
  emitter_t emitter;
  auto receiver = std::make_unique<receiver_t>(record);
  emitter.m_int_signal.connect(receiver.get(), &receiver_t::on_int);
  PostSignal(emitter.m_int_signal, 1);
  receiver.reset();
  ASSERT_TRUE(drain());
  EXPECT_TRUE(record.values.empty());
}

TEST_F(tasks_test, subscribers_are_called_when_the_emitter_died_first) {
  record_t record;
  receiver_t receiver(record);
  auto emitter = std::make_unique<emitter_t>();
  emitter->m_int_signal.connect(&receiver, &receiver_t::on_int);
  PostSignal(emitter->m_int_signal, 8);
  emitter.reset();
  ASSERT_TRUE(drain());
  EXPECT_EQ(record.values, (std::vector<int>{8}));
}

TEST_F(tasks_test, two_posts_call_the_subscriber_twice_in_order) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  PostSignal(emitter.m_int_signal, 1);
  PostSignal(emitter.m_int_signal, 2);
  ASSERT_TRUE(drain());
  EXPECT_EQ(record.values, (std::vector<int>{1, 2}));
}

TEST_F(tasks_test, throwing_subscriber_leaves_no_entry_behind) {
  record_t record;
  auto emitter = std::make_unique<emitter_t>();
  auto thrower = std::make_unique<receiver_t>(record);
  auto other = std::make_unique<receiver_t>(record);
  emitter->m_int_signal.connect(thrower.get(), &receiver_t::on_int_throw);
  emitter->m_int_signal.connect(other.get(), &receiver_t::on_int);
  PostSignal(emitter->m_int_signal, 1);
  PostSignal(emitter->m_int_signal, 2);
  ASSERT_TRUE(drain());
  // The exception ends each emission before the second subscriber; the next task runs.
  EXPECT_EQ(record.throws, 2);
  EXPECT_TRUE(record.values.empty());
  EXPECT_EQ(scheduler()->GetPendingCount(), 0u);
  // The tasks are gone: each subscriber is in the member signal's list only, so these
  // destructions touch nothing freed (the address sanitizer would tell).
  EXPECT_EQ(emitter->m_int_signal.connection_count(), 2u);
  other.reset();
  EXPECT_EQ(emitter->m_int_signal.connection_count(), 1u);
  emitter.reset();
  thrower.reset();
}

TEST_F(tasks_test, subscriber_disconnected_after_the_post_is_still_called) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  PostSignal(emitter.m_int_signal, 4);
  emitter.m_int_signal.disconnect(&receiver, &receiver_t::on_int);
  ASSERT_TRUE(drain());
  EXPECT_EQ(record.values, (std::vector<int>{4}));
}

TEST_F(tasks_test, subscriber_connected_after_the_post_is_not_called) {
  record_t record;
  emitter_t emitter;
  receiver_t receiver(record);
  PostSignal(emitter.m_int_signal, 4);
  emitter.m_int_signal.connect(&receiver, &receiver_t::on_int);
  ASSERT_TRUE(drain());
  EXPECT_TRUE(record.values.empty());
}

}  // namespace
