#include <korvat2/threading.h>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using korvat2::threading::mutex_t;
using korvat2::threading::scoped_lock_t;

TEST(mutex, owner_may_lock_again_and_others_wait_for_the_last_release) {
  mutex_t mutex;
  mutex.acquire();
  mutex.acquire();
  bool taken_elsewhere = true;
  std::thread([&] { taken_elsewhere = mutex.try_acquire(); }).join();
  EXPECT_FALSE(taken_elsewhere);
  mutex.release();
  std::thread([&] { taken_elsewhere = mutex.try_acquire(); }).join();
  EXPECT_FALSE(taken_elsewhere) << "one release of two must keep the mutex";
  mutex.release();
  std::thread([&] {
    taken_elsewhere = mutex.try_acquire();
    if (taken_elsewhere) {
      mutex.release();
    }
  }).join();
  EXPECT_TRUE(taken_elsewhere);
}

TEST(mutex, works_with_standard_lock_guards) {
  mutex_t mutex;
  {
    std::lock_guard<mutex_t> guard(mutex);
    EXPECT_TRUE(mutex.try_lock());  // the owner again
    mutex.unlock();
  }
  bool taken = false;
  std::thread([&] {
    taken = mutex.try_lock();
    if (taken) {
      mutex.unlock();
    }
  }).join();
  EXPECT_TRUE(taken);
}

TEST(mutex, contended_increments_are_all_kept) {
  // More threads than cores, so that holders are preempted and waiters go to sleep.
  constexpr int threads = 6;
  constexpr int rounds = 50000;
  mutex_t mutex;
  long counter = 0;
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) {
    workers.emplace_back([&] {
      for (int i = 0; i < rounds; ++i) {
        scoped_lock_t lock(mutex);
        scoped_lock_t again(mutex);
        ++counter;
      }
    });
  }
  for (std::thread& worker : workers) {
    worker.join();
  }
  EXPECT_EQ(counter, static_cast<long>(threads) * rounds);
}

TEST(mutex, tells_whether_anyone_holds_it) {
  mutex_t mutex;
  EXPECT_TRUE(mutex.unheld());
  mutex.acquire();
  EXPECT_FALSE(mutex.unheld());
  bool seen_elsewhere = true;
  std::thread([&] { seen_elsewhere = mutex.unheld(); }).join();
  EXPECT_FALSE(seen_elsewhere);
  mutex.release();
  std::thread([&] { seen_elsewhere = mutex.unheld(); }).join();
  EXPECT_TRUE(seen_elsewhere);
}

TEST(mutex, a_sleeping_waiter_is_woken_by_the_release) {
  // The holder keeps the mutex long enough for the waiter to give up spinning and sleep.
  mutex_t mutex;
  std::atomic<bool> waiting{false};
  std::atomic<bool> got_it{false};
  mutex.acquire();
  std::thread waiter([&] {
    waiting = true;
    mutex.acquire();
    got_it = true;
    mutex.release();
  });
  while (!waiting) {
    std::this_thread::yield();
  }
  for (int turn = 0; turn < 2000 && !got_it; ++turn) {
    std::this_thread::yield();  // plenty of time to spin, yield and fall asleep
  }
  EXPECT_FALSE(got_it);
  mutex.release();
  waiter.join();
  EXPECT_TRUE(got_it);
}

}  // namespace
