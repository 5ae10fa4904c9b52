#include <korvat2/threading.h>

#include <gtest/gtest.h>
#include <linux/membarrier.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

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

// Whether this system offers the process-wide barriers that a sleeper registers for.
bool barriers_offered() {
  const long offered = syscall(SYS_membarrier, MEMBARRIER_CMD_QUERY, 0, 0);
  return offered > 0 && (offered & MEMBARRIER_CMD_PRIVATE_EXPEDITED) != 0;
}

// Holds a mutex until another thread sleeps on it, then lets it go.
void sleep_on_a_held_mutex() {
  mutex_t mutex;
  mutex.acquire();
  std::thread waiter([&] {
    mutex.acquire();
    mutex.release();
  });
  while (korvat2::threading::_internal::sleepers_of(&mutex).load() == 0) {
    std::this_thread::yield();
  }
  mutex.release();
  waiter.join();
}

// Checked in a fresh process: loading the library registers nothing (registering a process
// with threads waits for the kernel); the first thread to sleep registers.
void check_registration_waits_for_the_first_sleeper() {
  using korvat2::threading::_internal::fence_free_release;
  if (fence_free_release.load()) {
    std::exit(1);
  }
  sleep_on_a_held_mutex();
  std::exit(fence_free_release.load() == barriers_offered() ? 0 : 2);
}

TEST(mutex, barriers_are_registered_by_the_first_sleeper_not_at_load) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // a new process, which runs only this test
  EXPECT_EXIT(check_registration_waits_for_the_first_sleeper(), ::testing::ExitedWithCode(0), "");
}

TEST(mutex, a_waiter_that_sleeps_while_another_registers_still_gets_the_mutex) {
  // Several sleepers at once: one registers, the others sleep for bounded moments meanwhile.
  mutex_t mutex;
  int count = 0;
  std::vector<std::thread> threads;
  mutex.acquire();
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 1000; ++n) {
        std::lock_guard<mutex_t> lock(mutex);
        ++count;
      }
    });
  }
  while (korvat2::threading::_internal::sleepers_of(&mutex).load() == 0) {
    std::this_thread::yield();
  }
  mutex.release();
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(count, 4000);
}

}  // namespace
