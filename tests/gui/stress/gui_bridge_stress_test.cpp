// Worker threads post emissions of one signal to the GUI thread while the GUI thread (and
// in the second test a thread of its own too) keeps replacing the signal's subscribers,
// for a bounded number of posts.
#include <plaxi1/tasks.h>

#include "gui_test.h"

#include <korvat2/signal.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using korvat2::signal_t;
using korvat2::subscriber_base_t;
using plaxi1::tasks::PostSignal;

constexpr int thread_count = 4;
// Posts of each worker; TAMSEL3_GUI_BRIDGE_STRESS_POSTS overrides it. The ThreadSanitizer
// build runs the full count too, in about 15 seconds on two cores.
constexpr int default_posts_per_thread = 100000;
// A subscriber is replaced after this many deliveries to the stable one.
constexpr int rotate_every = 300;
constexpr int rotating_count = 4;
// Posts of one worker that may wait for delivery; bounds the memory of the run, since the
// four workers together post faster than the one GUI thread delivers.
constexpr int window = 1000;
constexpr int bound_ms = 60000;

int posts_per_thread() {
  if (const char* text = std::getenv("TAMSEL3_GUI_BRIDGE_STRESS_POSTS")) {
    const int value = std::atoi(text);
    if (value > 0) {
      return value;
    }
  }
  return default_posts_per_thread;
}

// Life states of every rotating subscriber, by id; a call to one not alive is a failure.
enum life_t : int { unborn = 0, alive = 1, dying = 2, dead = 3 };

struct shared_state_t {
  explicit shared_state_t(int posts)
      : posts(posts),
        life(static_cast<std::size_t>(posts) * thread_count / rotate_every + rotating_count + 16) {}

  const int posts;
  std::vector<std::atomic<int>> life;
  int next_id = 0;
  int calls_after_death = 0;
  int out_of_order = 0;
  int wrong_thread = 0;
  long rotating_calls = 0;
  const std::thread::id gui_thread = std::this_thread::get_id();
};

// Made, connected and destroyed by the GUI thread while the workers post.
class rotating_subscriber_t : public subscriber_base_t {
 public:
  explicit rotating_subscriber_t(shared_state_t& state) : m_state(state), m_id(state.next_id++) {
    m_state.life[static_cast<std::size_t>(m_id)] = alive;
  }
  ~rotating_subscriber_t() override { m_state.life[static_cast<std::size_t>(m_id)] = dying; }
  int id() const { return m_id; }

  void on_emit(int thread, int sequence) {
    if (m_state.life[static_cast<std::size_t>(m_id)].load() != alive) {
      ++m_state.calls_after_death;
    }
    if (std::this_thread::get_id() != m_state.gui_thread) {
      ++m_state.wrong_thread;
    }
    // Connected once, it is in every snapshot that a worker takes until it dies: each
    // worker's posts reach it as one run without gaps.
    int& last = m_last[static_cast<std::size_t>(thread)];
    if (last >= 0 && sequence != last + 1) {
      ++m_state.out_of_order;
    }
    last = sequence;
    ++m_state.rotating_calls;
  }

 private:
  shared_state_t& m_state;
  const int m_id;
  std::array<int, thread_count> m_last{-1, -1, -1, -1};
};

// Connected for the whole run: receives every post exactly once, in each worker's order.
class stable_subscriber_t : public subscriber_base_t {
 public:
  void on_emit(int thread, int sequence) {
    const auto index = static_cast<std::size_t>(thread);
    if (sequence != m_last[index] + 1) {
      ++m_out_of_order;
    }
    m_last[index] = sequence;
    ++m_total;
    m_delivered[index].store(m_delivered[index].load(std::memory_order_relaxed) + 1,
                             std::memory_order_release);
  }
  long total() const { return m_total; }
  int delivered(int thread) const {
    return m_delivered[static_cast<std::size_t>(thread)].load(std::memory_order_acquire);
  }
  int out_of_order() const { return m_out_of_order; }

 private:
  std::array<int, thread_count> m_last{-1, -1, -1, -1};
  // Read by the workers for their flow control.
  std::array<std::atomic<int>, thread_count> m_delivered{};
  long m_total = 0;
  int m_out_of_order = 0;
};

struct emitter_t {
  signal_t<int, int> signal;
};

// Lets the workers wait for delivery progress and the GUI thread for the workers' first
// posts, without either one polling.
struct handshake_t {
  std::mutex mutex;
  std::condition_variable changed;
  int gated = 0;  // workers that posted their first window
  bool stop = false;
  // The sequence that each worker is about to post, stored before the post begins.
  std::array<std::atomic<int>, thread_count> started{};

  void notify() {
    { std::lock_guard<std::mutex> lock(mutex); }
    changed.notify_all();
  }
  // Tells the workers to stop where they wait, and waits for them to end.
  void stop_and_join(std::vector<std::thread>& workers) {
    {
      std::lock_guard<std::mutex> lock(mutex);
      stop = true;
    }
    changed.notify_all();
    for (std::thread& thread : workers) {
      thread.join();
    }
  }
};

void worker(int self, int posts, emitter_t& emitter, const stable_subscriber_t& stable,
            handshake_t& handshake) {
  for (int sequence = 0; sequence < posts; ++sequence) {
    if (sequence - stable.delivered(self) >= window) {
      std::unique_lock<std::mutex> lock(handshake.mutex);
      handshake.changed.wait(lock,
                             [&] { return handshake.stop || sequence - stable.delivered(self) < window; });
      if (handshake.stop) {
        return;
      }
    }
    handshake.started[static_cast<std::size_t>(self)].store(sequence);
    PostSignal(emitter.signal, self, sequence);
    if (sequence + 1 == std::min(window, posts)) {
      {
        std::lock_guard<std::mutex> lock(handshake.mutex);
        ++handshake.gated;
      }
      handshake.changed.notify_all();
    }
  }
}

TEST(gui_bridge_stress, posts_from_four_workers_reach_changing_subscribers_in_order) {
  const int posts = posts_per_thread();
  const long total = static_cast<long>(posts) * thread_count;
  shared_state_t state(posts);
  emitter_t emitter;
  stable_subscriber_t stable;
  emitter.signal.connect(&stable, &stable_subscriber_t::on_emit);

  std::deque<std::unique_ptr<rotating_subscriber_t>> rotating;
  const auto add_rotating = [&] {
    auto subscriber = std::make_unique<rotating_subscriber_t>(state);
    emitter.signal.connect(subscriber.get(), &rotating_subscriber_t::on_emit);
    rotating.push_back(std::move(subscriber));
  };
  const auto destroy_oldest = [&] {
    const auto id = static_cast<std::size_t>(rotating.front()->id());
    rotating.pop_front();
    state.life[id] = dead;
  };
  for (int i = 0; i < rotating_count; ++i) {
    add_rotating();
  }

  const auto started = std::chrono::steady_clock::now();
  handshake_t handshake;
  std::vector<std::thread> workers;
  for (int self = 0; self < thread_count; ++self) {
    workers.emplace_back(worker, self, posts, std::ref(emitter), std::cref(stable), std::ref(handshake));
  }

  // The GUI thread doesn't run its loop until every worker posted a full window: posting
  // must never wait for the GUI thread.
  bool gated = false;
  {
    std::unique_lock<std::mutex> lock(handshake.mutex);
    gated = handshake.changed.wait_for(lock, std::chrono::milliseconds(bound_ms),
                                       [&] { return handshake.gated == thread_count; });
  }
  EXPECT_TRUE(gated) << "a worker waited for the GUI thread while posting";
  EXPECT_EQ(stable.total(), 0);

  bool delivered = gated;
  int rotations = 0;
  while (delivered && stable.total() < total) {
    const long target = std::min(total, stable.total() + rotate_every);
    delivered = gui_test::wait_until([&] { return stable.total() >= target; }, bound_ms);
    handshake.notify();
    // Replaced while the workers keep taking snapshots that hold the old one.
    if (state.next_id < static_cast<int>(state.life.size())) {
      destroy_oldest();
      add_rotating();
      ++rotations;
    }
  }
  handshake.stop_and_join(workers);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();

  while (!rotating.empty()) {
    destroy_oldest();
  }
  // Nothing may stay queued, or arrive beyond what was posted.
  EXPECT_TRUE(gui_test::wait_until(
      [] {
        return plaxi1::tasks::Scheduler::Get(
                   korvat2::intrusive_pointer_t<plaxi1::tasks::ISchedulerStatusCallback>())
                   ->GetPendingCount() == 0;
      },
      bound_ms));
  gui_test::pump();

  ASSERT_TRUE(delivered) << "deliveries stopped after " << stable.total() << " of " << total;
  EXPECT_EQ(stable.total(), total);
  for (int self = 0; self < thread_count; ++self) {
    EXPECT_EQ(stable.delivered(self), posts) << "worker " << self;
  }
  EXPECT_EQ(stable.out_of_order(), 0);
  EXPECT_EQ(state.out_of_order, 0);
  EXPECT_EQ(state.calls_after_death, 0);
  EXPECT_EQ(state.wrong_thread, 0);
  EXPECT_GT(rotations, 0);
  EXPECT_GT(state.rotating_calls, 0);
  std::printf("gui bridge stress: %d workers x %d posts, %d subscribers replaced, %.1f s\n", thread_count,
              posts, rotations, seconds);
}

// What the witnesses found wrong, from the GUI thread and the reaping thread.
struct verdict_t {
  explicit verdict_t(int posts)
      : left(static_cast<std::size_t>(posts) * thread_count / rotate_every * 2 + 64) {}

  // Whether each witness, by id, has left its signals: kept outside the witnesses, so
  // that a call reaching a destroyed one is seen.
  std::vector<std::atomic<bool>> left;
  std::atomic<int> next_id{0};
  std::atomic<int> lost{0};
  std::atomic<int> early{0};
  std::atomic<int> twice_or_out_of_order{0};
  std::atomic<int> after_leaving{0};
  std::atomic<int> wrong_thread{0};
  std::atomic<int> checked{0};
  std::atomic<long> calls{0};
};

// A subscriber that lives for a while during the run and checks, as it dies, that it got
// from each worker every post made while it was connected and delivered while it lived,
// each once and in order.
class witness_t : public subscriber_base_t {
 public:
  witness_t(verdict_t& verdict, std::thread::id gui_thread)
      : m_verdict(verdict), m_gui_thread(gui_thread), m_id(static_cast<std::size_t>(verdict.next_id++)) {}
  // Leaves first, as a receiver dying off the GUI thread must: a running call ends before.
  ~witness_t() override {
    disconnect_all_signals();
    m_verdict.left.at(m_id).store(true);
    check();
  }

  /// Connects to `signal`: the posts that each worker finished before may not arrive, and
  /// those that it begins after must.
  void connect_to(signal_t<int, int>& signal, const handshake_t& handshake) {
    for (std::size_t self = 0; self < thread_count; ++self) {
      m_before[self] = handshake.started[self].load();
    }
    signal.connect(this, &witness_t::on_emit);
    for (std::size_t self = 0; self < thread_count; ++self) {
      m_from[self] = handshake.started[self].load() + 1;
    }
  }
  /// Before dying: the stable subscriber's deliveries now, and how many of the last of
  /// them may still be on their way to this one (a delivery may be running elsewhere).
  void dying(const stable_subscriber_t& stable, int in_flight) {
    for (int self = 0; self < thread_count; ++self) {
      m_until[static_cast<std::size_t>(self)] = stable.delivered(self) - 1 - in_flight;
    }
  }

  void on_emit(int thread, int sequence) {
    m_verdict.after_leaving += m_verdict.left.at(m_id).load() ? 1 : 0;
    m_verdict.wrong_thread += std::this_thread::get_id() != m_gui_thread ? 1 : 0;
    const auto index = static_cast<std::size_t>(thread);
    if (m_last[index] >= 0 && sequence != m_last[index] + 1) {
      ++m_verdict.twice_or_out_of_order;
    }
    if (m_first[index] < 0) {
      m_first[index] = sequence;
    }
    m_last[index] = sequence;
    ++m_verdict.calls;
  }

 private:
  // The run of each worker's posts that it got has no gaps (on_emit sees to that), so it
  // must begin at or before the first post that had to come and end at or after the last.
  void check() {
    for (std::size_t self = 0; self < thread_count; ++self) {
      if (m_first[self] >= 0 && m_first[self] < m_before[self]) {
        ++m_verdict.early;
      }
      if (m_until[self] < m_from[self]) {
        continue;  // nothing had to come
      }
      if (m_first[self] < 0 || m_first[self] > m_from[self] || m_last[self] < m_until[self]) {
        ++m_verdict.lost;
      }
    }
    ++m_verdict.checked;
  }

  verdict_t& m_verdict;
  const std::thread::id m_gui_thread;
  const std::size_t m_id;
  std::array<int, thread_count> m_before{};
  std::array<int, thread_count> m_from{};
  std::array<int, thread_count> m_until{-1, -1, -1, -1};
  std::array<int, thread_count> m_first{-1, -1, -1, -1};
  std::array<int, thread_count> m_last{-1, -1, -1, -1};
};

int delivered_total(const stable_subscriber_t& stable) {
  int total = 0;
  for (int self = 0; self < thread_count; ++self) {
    total += stable.delivered(self);
  }
  return total;
}

// Makes, connects and destroys witnesses on its own thread, one at a time, each living for
// some deliveries, until told to stop.
int reap(emitter_t& emitter, const stable_subscriber_t& stable, handshake_t& handshake, verdict_t& verdict,
         std::thread::id gui_thread) {
  int reaped = 0;
  for (;;) {
    auto witness = std::make_unique<witness_t>(verdict, gui_thread);
    witness->connect_to(emitter.signal, handshake);
    const int target = delivered_total(stable) + rotate_every;
    bool stop = false;
    {
      std::unique_lock<std::mutex> lock(handshake.mutex);
      handshake.changed.wait(lock, [&] { return handshake.stop || delivered_total(stable) >= target; });
      stop = handshake.stop;
    }
    // The GUI thread may be between the stable subscriber and this one in a delivery.
    witness->dying(stable, 1);
    witness.reset();
    ++reaped;
    if (stop) {
      return reaped;
    }
  }
}

TEST(gui_bridge_stress, subscribers_dying_on_two_threads_miss_nothing_of_their_lifetime) {
  const int posts = posts_per_thread();
  const long total = static_cast<long>(posts) * thread_count;
  const std::thread::id gui_thread = std::this_thread::get_id();
  verdict_t verdict(posts);
  emitter_t emitter;
  stable_subscriber_t stable;
  emitter.signal.connect(&stable, &stable_subscriber_t::on_emit);
  handshake_t handshake;
  for (std::atomic<int>& started : handshake.started) {
    started.store(-1);
  }

  std::deque<std::unique_ptr<witness_t>> rotating;
  const auto add_witness = [&] {
    rotating.push_back(std::make_unique<witness_t>(verdict, gui_thread));
    rotating.back()->connect_to(emitter.signal, handshake);
  };
  const auto destroy_oldest = [&] {
    rotating.front()->dying(stable, 0);  // between deliveries: nothing is on its way
    rotating.pop_front();
  };
  for (int i = 0; i < rotating_count; ++i) {
    add_witness();
  }

  const auto started = std::chrono::steady_clock::now();
  std::vector<std::thread> workers;
  for (int self = 0; self < thread_count; ++self) {
    workers.emplace_back(worker, self, posts, std::ref(emitter), std::cref(stable), std::ref(handshake));
  }
  int reaped = 0;
  std::thread reaper([&] { reaped = reap(emitter, stable, handshake, verdict, gui_thread); });

  bool delivered = true;
  int rotations = 0;
  while (delivered && stable.total() < total) {
    const long target = std::min(total, stable.total() + rotate_every);
    delivered = gui_test::wait_until([&] { return stable.total() >= target; }, bound_ms);
    handshake.notify();
    destroy_oldest();
    add_witness();
    ++rotations;
  }
  handshake.stop_and_join(workers);
  reaper.join();
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  EXPECT_TRUE(gui_test::wait_until(
      [] {
        return plaxi1::tasks::Scheduler::Get(
                   korvat2::intrusive_pointer_t<plaxi1::tasks::ISchedulerStatusCallback>())
                   ->GetPendingCount() == 0;
      },
      bound_ms));
  gui_test::pump();
  while (!rotating.empty()) {
    destroy_oldest();
  }

  ASSERT_TRUE(delivered) << "deliveries stopped after " << stable.total() << " of " << total;
  EXPECT_EQ(stable.total(), total);
  EXPECT_EQ(stable.out_of_order(), 0);
  EXPECT_EQ(verdict.lost.load(), 0);
  EXPECT_EQ(verdict.early.load(), 0);
  EXPECT_EQ(verdict.twice_or_out_of_order.load(), 0);
  EXPECT_EQ(verdict.after_leaving.load(), 0);
  EXPECT_EQ(verdict.wrong_thread.load(), 0);
  EXPECT_EQ(verdict.checked.load(), rotations + rotating_count + reaped);
  EXPECT_GT(rotations, 0);
  EXPECT_GT(reaped, 1);
  EXPECT_GT(verdict.calls.load(), 0);
  std::printf(
      "gui bridge witnesses: %d workers x %d posts, %d replaced on the GUI thread, %d on another, "
      "%.1f s\n",
      thread_count, posts, rotations, reaped, seconds);
}

}  // namespace
