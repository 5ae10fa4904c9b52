#pragma once
/// The receivers of a signal at one moment, to be called later, maybe on another thread,
/// without the signal: what a posted emission carries.
#include <korvat2/signal.h>
#include <korvat2/threading.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace korvat2::_internal {

/// Whether a receiver still lives, counted and shared between the receiver and the
/// snapshots that hold it. The receiver clears it when it leaves its signals (as it dies);
/// a call through a snapshot holds the token's mutex, so that a receiver dying on another
/// thread waits for that call to end, as it waits for an emission.
class liveness_t {
 public:
  /// A live token, counted once: for the receiver that makes it.
  liveness_t() = default;
  liveness_t(const liveness_t&) = delete;
  liveness_t& operator=(const liveness_t&) = delete;

  // Made on a worker, often let go of on the GUI thread.
  static void* operator new(std::size_t size) { return pool_allocate(size); }
  static void operator delete(void* block, std::size_t size) noexcept { pool_free(block, size); }

  void add_ref() { m_refs.fetch_add(1, std::memory_order_relaxed); }
  /// Deletes the token with the last count.
  void release() {
    if (m_refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      delete this;
    }
  }
  /// Clears the flag; any thread. Waits for a call through the token on another thread.
  void kill() {
    threading::scoped_lock_t lock(m_mutex);
    m_alive = false;
  }
  /// Whether the receiver lives; only while holding `mutex()`.
  bool alive_locked() const { return m_alive; }
  /// Held around each call through the token; the owning thread may take it again.
  threading::mutex_t& mutex() { return m_mutex; }
  /// The count at this moment; for tests.
  std::uint32_t ref_count() const { return m_refs.load(std::memory_order_acquire); }

 private:
  ~liveness_t() = default;

  threading::mutex_t m_mutex;
  std::atomic<std::uint32_t> m_refs{1};
  bool m_alive = true;  // under m_mutex
};

/// One receiver of a snapshot: the signal's slot as it was, and the receiver's token.
struct snapshot_entry_t {
  connection_slot_t slot;
  liveness_t* liveness = nullptr;
};

/// A snapshot apart from its argument types: its entries, the first one inside, and the counts
/// of their tokens. Moves, never copies: the entries are the snapshot's own.
class snapshot_base_t {
 public:
  snapshot_base_t() = default;
  snapshot_base_t(snapshot_base_t&& other) noexcept;
  snapshot_base_t(const snapshot_base_t&) = delete;
  snapshot_base_t& operator=(const snapshot_base_t&) = delete;
  snapshot_base_t& operator=(snapshot_base_t&&) = delete;
  ~snapshot_base_t() { clear(); }

  /// Receivers held, alive or not.
  std::size_t size() const { return m_size; }
  bool empty() const { return m_size == 0; }
  const snapshot_entry_t& operator[](std::size_t index) const { return m_entries[index]; }
  /// Lets go of every receiver.
  void clear();

 private:
  friend class signal_base_t;

  /// Takes a counted token; valid until the snapshot changes.
  void push_back(const connection_slot_t& slot, liveness_t* liveness);
  void grow();

  snapshot_entry_t* m_entries = &m_inline;
  std::uint32_t m_size = 0;
  std::uint32_t m_capacity = 1;
  snapshot_entry_t m_inline;
};

/// The receivers of a `signal_t<A...>` at the moment it was made, in order of connection,
/// with their liveness and without the signal: it may die or change meanwhile. Any thread
/// makes one; calling it calls each receiver that still lives, on the calling thread.
template <class... A>
class signal_snapshot_t : public snapshot_base_t {
 public:
  /// Holds the receivers connected now. Takes the signal's mutex briefly.
  explicit signal_snapshot_t(const signal_t<A...>& signal) { signal._snapshot_into(*this); }
  signal_snapshot_t(signal_snapshot_t&&) noexcept = default;

  /// Calls each receiver that still lives, once: the snapshot is empty afterwards, also
  /// when a receiver throws (which ends the call, as it ends an emission). A receiver that
  /// dies during the call, also by the hand of one called before it, is skipped.
  void operator()(A... args) {
    // Taken out first: a loop nested in a receiver may run the owner of this one again.
    const signal_snapshot_t taken(std::move(*this));
    for (std::size_t index = 0; index < taken.size(); ++index) {
      const snapshot_entry_t& entry = taken[index];
      const threading::scoped_lock_t lock(entry.liveness->mutex());
      if (entry.liveness->alive_locked()) {
        signal_t<A...>::_call(entry.slot, args...);
      }
    }
  }
};

}  // namespace korvat2::_internal

namespace korvat2 {
using _internal::signal_snapshot_t;
}  // namespace korvat2
