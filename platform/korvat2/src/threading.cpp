#include <korvat2/threading.h>

#include <linux/futex.h>
#include <linux/membarrier.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>

namespace korvat2::threading {

namespace {

int* futex_word(std::atomic<int>& state) {
  static_assert(sizeof(std::atomic<int>) == sizeof(int), "a futex is one int");
  return reinterpret_cast<int*>(&state);
}

bool register_barriers() {
  const long offered = syscall(SYS_membarrier, MEMBARRIER_CMD_QUERY, 0, 0);
  return offered > 0 && (offered & MEMBARRIER_CMD_PRIVATE_EXPEDITED) != 0 &&
         syscall(SYS_membarrier, MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED, 0, 0) == 0;
}

// Where registering for barriers stands: tried once, by the first thread to sleep.
enum barrier_state_t { untried, registering, offered, refused };
std::atomic<int> barrier_state{untried};

// Where barriers stand for a thread about to sleep, registering on the first call. A sleeper
// may trust a releaser's plain store to reach it when barriers were refused (releasers then
// give mutexes back with exchanges) or when it makes a process-wide barrier itself; while
// another thread registers, neither holds, and it sleeps for a bounded moment.
int barrier_state_now() {
  int state = barrier_state.load(std::memory_order_acquire);
  if (state == untried &&
      barrier_state.compare_exchange_strong(state, registering, std::memory_order_acq_rel)) {
    state = register_barriers() ? offered : refused;
    barrier_state.store(state, std::memory_order_release);
    _internal::fence_free_release.store(state == offered, std::memory_order_release);
  }
  return state;
}

// Runs a full memory barrier on every thread of the process: a plain-store release that is
// still in its processor's store buffer becomes visible. False when it didn't happen.
bool process_barrier() { return syscall(SYS_membarrier, MEMBARRIER_CMD_PRIVATE_EXPEDITED, 0, 0) == 0; }

void sleep_while_locked(std::atomic<int>& state, int locked, bool bounded) {
  // Bounded when no barrier could be made: a release missed then is found a moment later.
  const timespec moment{0, 1000000};
  syscall(SYS_futex, futex_word(state), FUTEX_WAIT_PRIVATE, locked, bounded ? &moment : nullptr, nullptr, 0);
}

}  // namespace

namespace _internal {
std::atomic<bool> fence_free_release{false};
std::atomic<std::uint32_t> sleepers[sleeper_buckets] = {};
}  // namespace _internal

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
  // A holder that was preempted needs the processor: give it up a few times before
  // sleeping, which costs the releaser a wake-up call.
  for (int turn = 0; turn < 16; ++turn) {
    sched_yield();
    int expected = unlocked;
    if (m_state.load(std::memory_order_relaxed) == unlocked &&
        m_state.compare_exchange_weak(expected, locked, std::memory_order_acquire)) {
      return;
    }
  }
  // From here on releasers wake us. Each look before sleeping follows a process-wide
  // barrier, so that a release done with a plain store can't be missed.
  std::atomic<std::uint32_t>& sleepers = _internal::sleepers_of(this);
  sleepers.fetch_add(1, std::memory_order_seq_cst);
  for (;;) {
    int expected = unlocked;
    if (m_state.compare_exchange_strong(expected, locked, std::memory_order_acquire)) {
      break;
    }
    const int barriers = barrier_state_now();
    const bool barrier = barriers == refused || (barriers == offered && process_barrier());
    expected = unlocked;
    if (m_state.compare_exchange_strong(expected, locked, std::memory_order_acquire)) {
      break;
    }
    sleep_while_locked(m_state, locked, !barrier);
  }
  sleepers.fetch_sub(1, std::memory_order_relaxed);
}

void mutex_t::wake_one(const void* mutex) {
  static_assert(offsetof(mutex_t, m_state) == 0, "a mutex's address is its futex word's");
  // The state is the first member, so the mutex's address is the futex word's. A waiter on
  // memory that was reused meanwhile only wakes for nothing and looks again.
  syscall(SYS_futex, mutex, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}

}  // namespace korvat2::threading
