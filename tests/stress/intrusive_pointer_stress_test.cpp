// Threads share counted objects through pointers that they copy and drop; each object
// dies exactly once, when its last pointer goes.
#include <korvat2/intrusive_pointer.h>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace {

using korvat2::intrusive_pointer_impl_t;
using korvat2::intrusive_pointer_t;

std::atomic<int> g_made{0};
std::atomic<int> g_deaths{0};

struct tracked_t : intrusive_pointer_impl_t {
  tracked_t() { ++g_made; }
  ~tracked_t() override { ++g_deaths; }
  std::atomic<int> touches{0};
};

TEST(intrusive_pointer_stress_test, every_object_dies_once_with_its_last_owner) {
  constexpr int slot_count = 8;
  std::mutex mutex;
  std::array<intrusive_pointer_t<tracked_t>, slot_count> slots;
  for (auto& slot : slots) {
    slot = new tracked_t;
  }
  auto work = [&](unsigned seed) {
    std::mt19937 random(seed);
    std::vector<intrusive_pointer_t<tracked_t>> held;
    for (int round = 0; round < 20000; ++round) {
      const int slot = static_cast<int>(random() % slot_count);
      switch (random() % 4) {
        case 0: {
          std::lock_guard<std::mutex> lock(mutex);
          held.push_back(slots[slot]);
          break;
        }
        case 1: {
          intrusive_pointer_t<tracked_t> fresh(new tracked_t);
          std::lock_guard<std::mutex> lock(mutex);
          slots[slot] = fresh;
          break;
        }
        case 2:
          if (!held.empty()) {
            held.pop_back();
          }
          break;
        default:
          for (const auto& pointer : held) {
            ++pointer->touches;
          }
          break;
      }
    }
  };
  std::vector<std::thread> threads;
  for (unsigned seed = 0; seed < 4; ++seed) {
    threads.emplace_back(work, seed);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (auto& slot : slots) {
    slot.reset();
  }
  EXPECT_EQ(g_deaths.load(), g_made.load());
}

}  // namespace
