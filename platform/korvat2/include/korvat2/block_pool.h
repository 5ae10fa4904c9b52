#pragma once
/// Small heap blocks that are made on one thread and freed on another, recycled without
/// the allocator's locks: the posted snapshots of signals and their tasks live this way,
/// born on a worker and dying on the GUI thread.
#include <cstddef>

namespace korvat2::_internal {

/// Largest block that the pool keeps; bigger ones go to the global allocator.
constexpr std::size_t pooled_block_limit = 512;

/// A block of at least `size` bytes, aligned for any object up to that size. Any thread.
void* pool_allocate(std::size_t size);
/// Gives back a block of `pool_allocate(size)`, with the same `size`. Any thread.
void pool_free(void* block, std::size_t size) noexcept;

/// Gives the blocks of the shared store back to the global allocator, after a burst of posts
/// that a host doesn't expect again. Any thread.
void pool_trim();

/// Blocks that the threads have handed back to the shared store, ready for any thread;
/// for tests and diagnostics.
std::size_t pool_shared_blocks();

}  // namespace korvat2::_internal
