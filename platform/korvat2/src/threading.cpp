#include <korvat2/threading.h>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace korvat2::threading {

namespace {

int* futex_word(std::atomic<int>& state) {
  static_assert(sizeof(std::atomic<int>) == sizeof(int), "a futex is one int");
  return reinterpret_cast<int*>(&state);
}

}  // namespace

void mutex_t::lock_contended() {
  // Holders keep it for a few hundred instructions at most: a short spin often saves the
  // two context switches that sleeping costs.
  for (int spin = 0; spin < 100; ++spin) {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
    int expected = unlocked;
    if (m_state.load(std::memory_order_relaxed) == unlocked &&
        m_state.compare_exchange_weak(expected, locked, std::memory_order_acquire)) {
      return;
    }
  }
  // From here on the state says that someone may sleep, so that the holder wakes one.
  while (m_state.exchange(contended, std::memory_order_acquire) != unlocked) {
    syscall(SYS_futex, futex_word(m_state), FUTEX_WAIT_PRIVATE, contended, nullptr, nullptr, 0);
  }
}

void mutex_t::wake_one() {
  syscall(SYS_futex, futex_word(m_state), FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}

}  // namespace korvat2::threading
