#pragma once
// What the heap holds, for tests of what a structure costs.
#include <malloc.h>

#include <cstddef>

namespace test_support {

/// Bytes in use on the heap, large blocks that the allocator maps on their own included.
/// Stays put under a sanitizer's allocator, which doesn't report: callers skip then.
inline std::size_t heap_in_use() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace test_support
