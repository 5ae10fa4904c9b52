#include <korvat2/signal.h>
#include <korvat2/signal_snapshot.h>

#include <cstring>
#include <new>
#include <thread>

namespace korvat2::_internal {

// The small steps of connecting and disconnecting are inline: called across the shared
// library's interface they would each cost an indirect jump.

inline void subscriber_base_t::link(subscriber_entry_t& entry, signal_base_t* signal) {
  entry.signal = signal;
  entry.prev = m_signals.prev;
  entry.next = &m_signals;
  m_signals.prev->next = &entry;
  m_signals.prev = &entry;
  m_entry_count.store(m_entry_count.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

inline void subscriber_base_t::unlink(subscriber_entry_t& entry) {
  entry.prev->next = entry.next;
  entry.next->prev = entry.prev;
  entry.prev = entry.next = nullptr;
  entry.signal = nullptr;
  m_entry_count.store(m_entry_count.load(std::memory_order_relaxed) - 1, std::memory_order_release);
}

inline connection_slot_t& connection_list_t::push_back(const connection_t& connection, direct_call_t direct) {
  const std::uint32_t size = m_size.load(std::memory_order_relaxed);
  if (size == m_capacity) {
    grow();
  }
  connection_slot_t& slot = m_slots[size];
  slot.connection = connection;
  // A blank calls nothing, also directly.
  slot.direct = connection.empty() ? nullptr : direct;
  slot.entry = nullptr;
  m_has_blanks = m_has_blanks || connection.empty();
  m_size.store(size + 1, std::memory_order_release);
  return slot;
}

inline void connection_list_t::erase(std::size_t index) {
  const std::uint32_t size = m_size.load(std::memory_order_relaxed);
  if (index + 1 < size) {
    std::memmove(static_cast<void*>(m_slots + index), m_slots + index + 1,
                 (size - index - 1) * sizeof(connection_slot_t));
  }
  m_size.store(size - 1, std::memory_order_release);
}

inline void connection_list_t::blank(std::size_t index) {
  m_slots[index].connection = connection_t();
  m_slots[index].direct = nullptr;
  m_has_blanks = true;
}

void connection_list_t::compact() {
  m_has_blanks = false;
  const std::uint32_t size = m_size.load(std::memory_order_relaxed);
  std::uint32_t kept = 0;
  for (std::uint32_t index = 0; index < size; ++index) {
    if (!m_slots[index].connection.empty()) {
      if (kept != index) {
        m_slots[kept] = m_slots[index];
      }
      ++kept;
    }
  }
  m_size.store(kept, std::memory_order_release);
}

void connection_list_t::clear() {
  m_size.store(0, std::memory_order_release);
  m_has_blanks = false;
  release_storage();
}

inline subscriber_entry_t* connection_list_t::new_entry() {
  if (!m_inline_entry_in_use) {
    m_inline_entry_in_use = true;
    return &m_inline_entry;
  }
  return new (pool_allocate(sizeof(subscriber_entry_t))) subscriber_entry_t;
}

inline void connection_list_t::delete_entry(subscriber_entry_t* entry) {
  if (entry == &m_inline_entry) {
    m_inline_entry_in_use = false;
  } else {
    pool_free(entry, sizeof(subscriber_entry_t));
  }
}

void connection_list_t::grow() {
  // Doubling, from four: the slots move seldom, and a few connections fit a pooled block.
  const std::uint32_t capacity = m_capacity < 4 ? 4 : m_capacity * 2;
  auto* slots = static_cast<connection_slot_t*>(pool_allocate(capacity * sizeof(connection_slot_t)));
  std::memcpy(static_cast<void*>(slots), m_slots,
              m_size.load(std::memory_order_relaxed) * sizeof(connection_slot_t));
  release_storage();
  m_slots = slots;
  m_capacity = capacity;
}

void connection_list_t::release_storage() {
  if (m_slots != &m_inline) {
    pool_free(m_slots, m_capacity * sizeof(connection_slot_t));
    m_slots = &m_inline;
    m_capacity = 1;
  }
}

subscriber_base_t::~subscriber_base_t() { disconnect_all_signals(); }

void subscriber_base_t::disconnect_all_signals() {
  // Left first: until then a signal may still take the token into a new snapshot.
  leave_all_signals();
  end_liveness();
}

void subscriber_base_t::leave_all_signals() {
  // No entry left and nobody inside the mutex: no signal knows this receiver, and none can
  // come to know it while it dies, so there is nothing to wait for. The count is read
  // first: a signal that took the last entry out did so holding the mutex.
  if (m_entry_count.load(std::memory_order_acquire) == 0 && m_subscriber_mutex.unheld()) {
    return;
  }
  m_subscriber_mutex.acquire();
  while (m_signals.next != &m_signals) {
    subscriber_entry_t* entry = m_signals.next;
    // A parked entry is ours to take out: its signal no longer calls us, and it waits for
    // the release before it frees the entry.
    std::uint8_t expected = subscriber_entry_t::parked;
    if (entry->state.load(std::memory_order_relaxed) == expected &&
        entry->state.compare_exchange_strong(expected, subscriber_entry_t::claimed,
                                             std::memory_order_acquire)) {
      unlink(*entry);
      entry->state.store(subscriber_entry_t::released, std::memory_order_release);
      continue;
    }
    signal_base_t* signal = entry->signal;
    // The signal side locks its mutex before ours. Waiting here while holding ours could
    // deadlock against a signal that is connecting, copying or dying on another thread,
    // so when its mutex is busy we let go of ours and try again. While the signal is in
    // our list it can't finish dying: it needs our mutex to leave the list.
    if (!signal->m_mutex->try_acquire()) {
      m_subscriber_mutex.release();
      std::this_thread::yield();
      m_subscriber_mutex.acquire();
      continue;
    }
    // All of this signal's entries go at once: it no longer knows us.
    signal->drop_subscriber_locked(this);
    signal->m_mutex->release();
  }
  m_subscriber_mutex.release();
}

signal_base_t::signal_base_t() : m_mutex(new threading::mutex_t) {}

signal_base_t::signal_base_t(const signal_base_t& other)
    : subscriber_base_t(other), m_mutex(new threading::mutex_t) {
  copy_connections_from(other);
}

signal_base_t& signal_base_t::operator=(const signal_base_t& other) {
  if (this != &other) {
    _erase_all();
    copy_connections_from(other);
  }
  return *this;
}

signal_base_t::~signal_base_t() {
  // Without connections and with nobody inside the mutex, no subscriber knows this signal
  // and none can come to, so there is nothing to undo (a delivered snapshot dies so). The
  // count is read first: whoever took the last connection out held the mutex. Whoever
  // emitted last let go of the mutex too, so the emission pointer is read after it.
  if (m_connections.empty() && m_mutex->unheld() && !m_in_emission && !m_parked) {
    delete m_mutex;
    return;
  }
  // The mutex is taken before the emission is looked at. An emission on another thread
  // holds it to its end, so we wait for that, and the mutex stays ours to free: clearing
  // that emission's flag first would let its frame free the mutex we are waiting on.
  threading::mutex_t* mutex = m_mutex;
  mutex->acquire();
  // Held here, a running emission is this thread's own, below us on the stack.
  const bool emitting = m_in_emission != nullptr;
  if (emitting) {
    *m_in_emission = 0;
  }
  unlink_all_locked();
  mutex->release();
  if (!emitting) {
    delete mutex;
  }
  // Otherwise the outermost emitting frame frees the mutex when it sees the cleared flag.
}

void signal_base_t::_insert(const connection_t& connection, direct_call_t direct) {
  threading::scoped_lock_t lock(*m_mutex);
  if (contains_locked(connection)) {
    ZANDOR_ASSERT_MSG("signal_t::_insert: this connection is already exists.", false);
    return;
  }
  insert_locked(connection, direct);
}

void signal_base_t::_erase(const connection_t& connection) {
  threading::scoped_lock_t lock(*m_mutex);
  const std::size_t size = m_connections.size();
  std::size_t found = 0;
  while (found != size && !m_connections[found].connection.same_as(connection)) {
    ++found;
  }
  const bool subscriber_found = found != size;
  ZANDOR_ASSERT_MSG("signal_t::disconnect: attempt to disconnect unknown connection", subscriber_found);
  if (!subscriber_found) {
    return;
  }
  if (connection.subscriber && !park(found)) {
    // Every entry of this signal goes, also one that a second method of the same
    // subscriber made: one method per signal is what callers use.
    remove_from_subscriber(connection.subscriber);
  }
  discard(found);
}

void signal_base_t::_erase_all() {
  threading::scoped_lock_t lock(*m_mutex);
  unlink_all_locked();
}

void signal_base_t::on_subscriber_destroy(subscriber_base_t* subscriber) {
  threading::scoped_lock_t lock(*m_mutex);
  drop_subscriber_locked(subscriber);
}

void signal_base_t::leave_dead_signal(onstack_signal_state_t& state) {
  state.mutex->release();
  if (!state.nested) {
    delete state.mutex;
  }
}

void signal_base_t::copy_connections_from(const signal_base_t& source) {
  threading::scoped_lock_t source_lock(*source.m_mutex);
  for (std::size_t index = 0; index < source.m_connections.size(); ++index) {
    const connection_slot_t& slot = source.m_connections[index];
    if (slot.connection.empty()) {
      continue;
    }
    threading::scoped_lock_t lock(*m_mutex);
    if (!contains_locked(slot.connection)) {
      insert_locked(slot.connection, slot.direct);
    }
  }
}

std::size_t signal_base_t::connection_count() const {
  threading::scoped_lock_t lock(*m_mutex);
  std::size_t count = 0;
  for (std::size_t index = 0, size = m_connections.size(); index < size; ++index) {
    count += m_connections[index].connection.empty() ? 0 : 1;
  }
  return count;
}

inline bool signal_base_t::contains_locked(const connection_t& connection) const {
  for (std::size_t index = 0, size = m_connections.size(); index < size; ++index) {
    if (m_connections[index].connection.same_as(connection)) {
      return true;
    }
  }
  return false;
}

inline void signal_base_t::insert_locked(const connection_t& connection, direct_call_t direct) {
  connection_slot_t& slot = m_connections.push_back(connection, direct);
  if (subscriber_base_t* subscriber = connection.subscriber) {
    if ((slot.entry = unpark_for(subscriber)) != nullptr) {
      return;  // still linked in the subscriber's list
    }
    slot.entry = m_connections.new_entry();
    // Under the subscriber's lock, which posters on every thread share, only the links
    // of the entry change.
    threading::scoped_lock_t lock(subscriber->m_subscriber_mutex);
    subscriber->link(*slot.entry, this);
  }
}

inline subscriber_entry_t* signal_base_t::unpark_for(subscriber_base_t* subscriber) {
  subscriber_entry_t* entry = m_parked;
  if (!entry || m_parked_owner != subscriber) {
    return nullptr;
  }
  // Fails when the subscriber claimed the entry, leaving its signals: it is then settled
  // as any claimed one, and the new connection gets an entry of its own.
  std::uint8_t expected = subscriber_entry_t::parked;
  if (!entry->state.compare_exchange_strong(expected, subscriber_entry_t::in_use,
                                            std::memory_order_acquire)) {
    return nullptr;
  }
  m_parked = nullptr;
  return entry;
}

inline bool signal_base_t::park(std::size_t index) {
  subscriber_entry_t* entry = m_connections[index].entry;
  if (!entry) {
    return false;
  }
  if (m_parked) {
    if (m_parked->state.load(std::memory_order_acquire) != subscriber_entry_t::released) {
      return false;
    }
    drop_parked_locked();  // its subscriber took it out: only the memory is left
  }
  const subscriber_base_t* subscriber = m_connections[index].connection.subscriber;
  for (std::size_t other = 0, size = m_connections.size(); other < size; ++other) {
    if (other != index && m_connections[other].entry &&
        m_connections[other].connection.subscriber == subscriber) {
      return false;  // every entry goes, under the subscriber's mutex
    }
  }
  m_connections[index].entry = nullptr;
  m_parked = entry;
  m_parked_owner = m_connections[index].connection.subscriber;
  entry->state.store(subscriber_entry_t::parked, std::memory_order_release);
  return true;
}

void signal_base_t::drop_parked_locked() {
  subscriber_entry_t* entry = m_parked;
  if (!entry) {
    return;
  }
  m_parked = nullptr;
  std::uint8_t expected = subscriber_entry_t::parked;
  if (entry->state.compare_exchange_strong(expected, subscriber_entry_t::in_use, std::memory_order_acquire)) {
    // Still linked: its subscriber can't finish dying before we take it out.
    threading::scoped_lock_t lock(m_parked_owner->m_subscriber_mutex);
    m_parked_owner->unlink(*entry);
  } else {
    // Claimed: the subscriber is taking it out under its own mutex, and touches nothing
    // else of ours. It may be gone as soon as the entry is released.
    while (entry->state.load(std::memory_order_acquire) != subscriber_entry_t::released) {
      std::this_thread::yield();
    }
  }
  entry->state.store(subscriber_entry_t::in_use, std::memory_order_relaxed);
  m_connections.delete_entry(entry);
}

void signal_base_t::drop_subscriber_locked(subscriber_base_t* subscriber) {
  threading::scoped_lock_t lock(subscriber->m_subscriber_mutex);
  if (m_parked && m_parked_owner == subscriber) {
    drop_parked_locked();
  }
  for (std::size_t index = 0; index < m_connections.size();) {
    connection_slot_t& slot = m_connections[index];
    if (slot.connection.subscriber != subscriber) {
      ++index;
      continue;
    }
    unlink_entry(slot);
    index = discard(index);
  }
}

void signal_base_t::unlink_all_locked() {
  drop_parked_locked();
  for (std::size_t index = 0, size = m_connections.size(); index < size; ++index) {
    connection_slot_t& slot = m_connections[index];
    if (slot.entry) {
      threading::scoped_lock_t lock(slot.connection.subscriber->m_subscriber_mutex);
      unlink_entry(slot);
    }
    if (m_in_emission) {
      m_connections.blank(index);
    }
  }
  if (!m_in_emission) {
    m_connections.clear();
  }
}

inline void signal_base_t::remove_from_subscriber(subscriber_base_t* subscriber) {
  threading::scoped_lock_t lock(subscriber->m_subscriber_mutex);
  for (std::size_t index = 0, size = m_connections.size(); index < size; ++index) {
    connection_slot_t& slot = m_connections[index];
    if (slot.connection.subscriber == subscriber) {
      unlink_entry(slot);
    }
  }
}

inline void signal_base_t::unlink_entry(connection_slot_t& slot) {
  if (slot.entry) {
    slot.connection.subscriber->unlink(*slot.entry);
    m_connections.delete_entry(slot.entry);
    slot.entry = nullptr;
  }
}

inline std::size_t signal_base_t::discard(std::size_t index) {
  if (m_in_emission) {
    m_connections.blank(index);  // a tombstone until the outermost emission compacts
    return index + 1;
  }
  m_connections.erase(index);
  return index;
}

}  // namespace korvat2::_internal
