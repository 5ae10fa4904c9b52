#pragma once
// For tests only: a look into the shared text measures.
#include <cstddef>

namespace plaxi1::test_access {

/// How many texts have cached measures now.
std::size_t cached_text_count();

}  // namespace plaxi1::test_access
