#pragma once
#include <korvat2/block_pool.h>

#include <pthread.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <thread>

namespace korvat2::threading {

namespace _internal {
/// Whether the process may give a mutex back with a plain store: set once the process has
/// registered for process-wide memory barriers, where the system offers them. The first
/// thread that goes to sleep on a contended mutex registers, not the library's loading:
/// registering a process that runs threads waits for the kernel's grace period (some
/// milliseconds), which a host's start shouldn't pay.
extern std::atomic<bool> fence_free_release;

/// Threads asleep or about to sleep on mutexes, by a hash of the mutex's address. Kept
/// outside the mutexes, since a releaser looks after giving the mutex back, when another
/// thread may already have freed it.
constexpr std::size_t sleeper_buckets = 256;
extern std::atomic<std::uint32_t> sleepers[sleeper_buckets];
inline std::atomic<std::uint32_t>& sleepers_of(const void* mutex) {
  const auto address = reinterpret_cast<std::uintptr_t>(mutex);
  return sleepers[((address >> 4) ^ (address >> 12)) % sleeper_buckets];
}
}  // namespace _internal

/// A mutex that its owning thread may lock again. Uncontended, `acquire` costs one
/// compare-exchange and `release` a plain store (one exchange where the system has no
/// process-wide barriers); a recursive lock costs a load and an increment. A contended
/// `acquire` spins briefly, yields a few times, then sleeps on a futex.
class mutex_t {
 public:
  mutex_t() = default;
  ~mutex_t() = default;
  mutex_t(const mutex_t&) = delete;
  mutex_t& operator=(const mutex_t&) = delete;

  // A signal's mutex lives on the heap and often dies on another thread than it was born.
  static void* operator new(std::size_t size) { return korvat2::_internal::pool_allocate(size); }
  static void operator delete(void* block, std::size_t size) noexcept {
    korvat2::_internal::pool_free(block, size);
  }

  void acquire() {
    const void* self = current_thread();
    // Only this thread can have stored its own id, so a relaxed read is enough.
    if (m_owner.load(std::memory_order_relaxed) == self) {
      ++m_depth;
      return;
    }
    int expected = unlocked;
    if (!m_state.compare_exchange_strong(expected, locked, std::memory_order_acquire)) {
      lock_contended();
    }
    m_owner.store(self, std::memory_order_relaxed);
    m_depth = 1;
  }

  /// Like `acquire`, but gives up at once when another thread holds the mutex.
  bool try_acquire() {
    const void* self = current_thread();
    if (m_owner.load(std::memory_order_relaxed) == self) {
      ++m_depth;
      return true;
    }
    int expected = unlocked;
    if (!m_state.compare_exchange_strong(expected, locked, std::memory_order_acquire)) {
      return false;
    }
    m_owner.store(self, std::memory_order_relaxed);
    m_depth = 1;
    return true;
  }

  void release() {
    if (--m_depth == 0) {
      m_owner.store(nullptr, std::memory_order_relaxed);
      // From here on the mutex may be gone: only its address is used.
      const void* self = this;
      if (_internal::fence_free_release.load(std::memory_order_relaxed)) {
        // A plain store: a thread about to sleep makes it visible with a process-wide
        // barrier before it looks at the state for the last time.
        m_state.store(unlocked, std::memory_order_release);
        std::atomic_signal_fence(std::memory_order_seq_cst);
      } else {
        m_state.exchange(unlocked, std::memory_order_seq_cst);
      }
      if (_internal::sleepers_of(self).load(std::memory_order_relaxed) != 0) {
        wake_one(self);
      }
    }
  }

  /// Whether no thread holds the mutex at this moment. A thread that held it before has
  /// let go of it by then, with all it did inside visible to the caller.
  bool unheld() const { return m_state.load(std::memory_order_acquire) == unlocked; }

  /// Standard names, so that std::lock_guard and std::unique_lock work with it.
  void lock() { acquire(); }
  bool try_lock() { return try_acquire(); }
  void unlock() { release(); }

 private:
  /// A value that tells the calling thread from every other living one: its thread control
  /// block. Read inline, since a post takes and gives back some thirty locks.
  static const void* current_thread() {
#if defined(__x86_64__) && defined(__linux__)
    const void* block;
    asm("mov %%fs:0, %0" : "=r"(block));
    return block;
#else
    return reinterpret_cast<const void*>(pthread_self());
#endif
  }

  static constexpr int unlocked = 0;
  static constexpr int locked = 1;

  void lock_contended();
  /// Wakes a thread asleep on the mutex at `mutex`, if any; the mutex may be gone.
  static void wake_one(const void* mutex);

  std::atomic<int> m_state{unlocked};  // the futex word, first: its address is the mutex's
  unsigned m_depth = 0;
  std::atomic<const void*> m_owner{nullptr};
};

/// Holds a mutex_t for a scope.
class scoped_lock_t {
 public:
  explicit scoped_lock_t(mutex_t& mutex) : m_mutex(mutex) { m_mutex.acquire(); }
  ~scoped_lock_t() { m_mutex.release(); }
  scoped_lock_t(const scoped_lock_t&) = delete;
  scoped_lock_t& operator=(const scoped_lock_t&) = delete;

 private:
  mutex_t& m_mutex;
};

}  // namespace korvat2::threading
