#include <korvat2/block_pool.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

namespace {

using korvat2::_internal::pool_allocate;
using korvat2::_internal::pool_free;
using korvat2::_internal::pool_shared_blocks;

// Each test uses a size of its own, so that the blocks of one don't show in another.
constexpr std::size_t batch = 32;
constexpr std::size_t kept_batches = 64;

std::vector<void*> allocate(std::size_t count, std::size_t size) {
  std::vector<void*> blocks;
  for (std::size_t i = 0; i < count; ++i) {
    blocks.push_back(pool_allocate(size));
  }
  return blocks;
}

void free_all(const std::vector<void*>& blocks, std::size_t size) {
  for (void* block : blocks) {
    pool_free(block, size);
  }
}

TEST(block_pool, a_block_given_back_is_handed_out_again_on_the_same_thread) {
  std::thread([] {
    void* first = pool_allocate(40);
    pool_free(first, 40);
    void* second = pool_allocate(40);
    EXPECT_EQ(second, first);
    pool_free(second, 40);
  }).join();
}

TEST(block_pool, blocks_freed_on_one_thread_serve_another_in_batches) {
  constexpr std::size_t size = 472;
  const std::size_t shared_before = pool_shared_blocks();
  void* last_freed = nullptr;
  std::thread([&] {
    // The first batch stays with this thread for its own use; the second goes to the
    // shared store.
    const std::vector<void*> blocks = allocate(2 * batch, size);
    free_all(blocks, size);
    last_freed = blocks.back();
  }).join();
  EXPECT_EQ(pool_shared_blocks(), shared_before + batch);
  void* handed_out = nullptr;
  std::thread([&] {
    handed_out = pool_allocate(size);
    pool_free(handed_out, size);
  }).join();
  EXPECT_EQ(handed_out, last_freed);
  EXPECT_EQ(pool_shared_blocks(), shared_before);
}

TEST(block_pool, the_shared_store_keeps_a_bounded_number_of_blocks) {
  constexpr std::size_t size = 456;
  const std::size_t shared_before = pool_shared_blocks();
  std::thread([] {
    const std::vector<void*> blocks = allocate(batch + (kept_batches + 20) * batch, size);
    free_all(blocks, size);
  }).join();
  EXPECT_EQ(pool_shared_blocks(), shared_before + kept_batches * batch);
  korvat2::_internal::pool_trim();
  EXPECT_EQ(pool_shared_blocks(), 0u);
}

TEST(block_pool, large_blocks_bypass_the_pool) {
  const std::size_t shared_before = pool_shared_blocks();
  std::thread([] {
    const std::size_t size = korvat2::_internal::pooled_block_limit + 1;
    const std::vector<void*> blocks = allocate(3 * batch, size);
    for (void* block : blocks) {
      std::memset(block, 0x5a, size);
    }
    free_all(blocks, size);
  }).join();
  EXPECT_EQ(pool_shared_blocks(), shared_before);
}

TEST(block_pool, live_blocks_are_aligned_and_never_overlap) {
  std::thread([] {
    std::vector<std::pair<unsigned char*, std::size_t>> blocks;
    for (std::size_t i = 0; i < 600; ++i) {
      const std::size_t size = 1 + (i * 37) % 500;
      blocks.emplace_back(static_cast<unsigned char*>(pool_allocate(size)), size);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back().first) % 16, 0u);
      std::memset(blocks.back().first, static_cast<int>(i & 0xff), size);
      if (i % 3 == 0) {  // some go back at once and are reused by the next ones
        pool_free(blocks.back().first, size);
        blocks.pop_back();
      }
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      const auto [block, size] = blocks[i];
      const unsigned char expected = block[0];
      for (std::size_t byte = 0; byte < size; ++byte) {
        ASSERT_EQ(block[byte], expected) << "block " << i << " was overwritten";
      }
    }
    std::set<unsigned char*> distinct;
    for (const auto& [block, size] : blocks) {
      EXPECT_TRUE(distinct.insert(block).second);
      pool_free(block, size);
    }
  }).join();
}

TEST(block_pool, zero_bytes_and_null_are_fine) {
  void* block = pool_allocate(0);
  EXPECT_NE(block, nullptr);
  pool_free(block, 0);
  pool_free(nullptr, 64);
}

#if defined(__SANITIZE_ADDRESS__)
#define BLOCK_POOL_TEST_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BLOCK_POOL_TEST_ASAN 1
#endif
#endif

#ifdef BLOCK_POOL_TEST_ASAN
TEST(block_pool_death, a_kept_block_is_poisoned_until_handed_out_again) {
  EXPECT_DEATH(
      {
        auto* block = static_cast<volatile char*>(pool_allocate(24));
        pool_free(const_cast<char*>(block), 24);
        (void)block[8];
      },
      "use-after-poison");
}
#endif

}  // namespace
