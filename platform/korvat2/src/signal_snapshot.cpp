#include <korvat2/signal_snapshot.h>

#include <cstring>
#include <new>
#include <utility>

namespace korvat2::_internal {

snapshot_base_t::snapshot_base_t(snapshot_base_t&& other) noexcept
    : m_size(other.m_size), m_capacity(other.m_capacity) {
  if (other.m_entries == &other.m_inline) {
    m_inline = other.m_inline;
  } else {
    m_entries = other.m_entries;
  }
  other.m_entries = &other.m_inline;
  other.m_size = 0;
  other.m_capacity = 1;
}

void snapshot_base_t::clear() {
  for (std::uint32_t index = 0; index < m_size; ++index) {
    m_entries[index].liveness->release();
  }
  m_size = 0;
  if (m_entries != &m_inline) {
    pool_free(m_entries, m_capacity * sizeof(snapshot_entry_t));
    m_entries = &m_inline;
    m_capacity = 1;
  }
}

void snapshot_base_t::push_back(const connection_slot_t& slot, liveness_t* liveness) {
  if (m_size == m_capacity) {
    grow();
  }
  snapshot_entry_t& entry = m_entries[m_size++];
  entry.slot = slot;
  entry.slot.entry = nullptr;  // the signal's, not ours
  entry.liveness = liveness;
}

void snapshot_base_t::grow() {
  const std::uint32_t capacity = m_capacity < 4 ? 4 : m_capacity * 2;
  auto* entries = static_cast<snapshot_entry_t*>(pool_allocate(capacity * sizeof(snapshot_entry_t)));
  std::memcpy(static_cast<void*>(entries), m_entries, m_size * sizeof(snapshot_entry_t));
  if (m_entries != &m_inline) {
    pool_free(m_entries, m_capacity * sizeof(snapshot_entry_t));
  }
  m_entries = entries;
  m_capacity = capacity;
}

void signal_base_t::_snapshot_into(snapshot_base_t& snapshot) const {
  threading::scoped_lock_t lock(*m_mutex);
  for (std::size_t index = 0, size = m_connections.size(); index < size; ++index) {
    const connection_slot_t& slot = m_connections[index];
    if (!slot.connection.empty()) {
      snapshot.push_back(slot, slot.connection.subscriber->share_liveness());
    }
  }
}

liveness_t* subscriber_base_t::share_liveness() {
  liveness_t* liveness = m_liveness.load(std::memory_order_acquire);
  if (!liveness) {
    // Two signals may take their snapshots at once: one token wins.
    auto* made = new liveness_t;
    if (m_liveness.compare_exchange_strong(liveness, made, std::memory_order_acq_rel)) {
      liveness = made;
    } else {
      made->release();
    }
  }
  liveness->add_ref();
  return liveness;
}

void subscriber_base_t::end_liveness() {
  // Read after the receiver left its signals: no snapshot can take the token any more.
  if (!m_liveness.load(std::memory_order_acquire)) {
    return;
  }
  if (liveness_t* liveness = m_liveness.exchange(nullptr, std::memory_order_acq_rel)) {
    liveness->kill();
    liveness->release();
  }
}

}  // namespace korvat2::_internal
