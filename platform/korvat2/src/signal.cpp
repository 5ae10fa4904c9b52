#include <korvat2/signal.h>

#include <thread>

namespace korvat2::_internal {

subscriber_base_t::~subscriber_base_t() { disconnect_all_signals(); }

void subscriber_base_t::disconnect_all_signals() {
  m_subscriber_mutex.acquire();
  while (!m_signals.empty()) {
    signal_base_t* signal = m_signals.front();
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
    std::size_t entries = signal->drop_subscriber_locked(this);
    signal->m_mutex->release();
    // All of this signal's entries go at once: it no longer knows us, so a stale entry
    // would outlive it. There are at most as many as it had connections to us, nearly
    // always one, so the list is walked only as far as needed.
    m_signals.pop_front();
    for (auto entry = m_signals.begin(); entries > 1 && entry != m_signals.end();) {
      if (*entry == signal) {
        entry = m_signals.erase(entry);
        --entries;
      } else {
        ++entry;
      }
    }
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
  if (m_in_emission) {
    *m_in_emission = 0;
  }
  threading::mutex_t* mutex = m_mutex;
  mutex->acquire();
  const bool emitting = m_in_emission != nullptr;
  unlink_all_locked();
  mutex->release();
  if (!emitting) {
    delete mutex;
  }
  // Otherwise the outermost emitting frame frees the mutex when it sees the cleared flag.
}

void signal_base_t::_insert(const connection_t& connection) {
  threading::scoped_lock_t lock(*m_mutex);
  if (contains_locked(connection)) {
    ZANDOR_ASSERT_MSG("signal_t::_insert: this connection is already exists.", false);
    return;
  }
  insert_locked(connection);
}

void signal_base_t::_erase(const connection_t& connection) {
  threading::scoped_lock_t lock(*m_mutex);
  auto found = m_connections.begin();
  while (found != m_connections.end() && !found->same_as(connection)) {
    ++found;
  }
  const bool subscriber_found = found != m_connections.end();
  ZANDOR_ASSERT_MSG("signal_t::disconnect: attempt to disconnect unknown connection", subscriber_found);
  if (!subscriber_found) {
    return;
  }
  if (m_in_emission) {
    *found = connection_t();  // a tombstone until the outermost emission compacts
  } else {
    m_connections.erase(found);
  }
  if (connection.subscriber) {
    // Every entry of this signal goes, also one that a second method of the same
    // subscriber made: one method per signal is what callers use.
    remove_from_subscriber(connection.subscriber, true);
  }
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

void signal_base_t::post_call(onstack_signal_state_t& state) const {
  if (!*state.alive_in_force || state.nested) {
    state.mutex->release();
    return;
  }
  m_in_emission = nullptr;
  m_connections.remove_if([](const connection_t& c) { return c.empty(); });
  state.mutex->release();
}

void signal_base_t::copy_connections_from(const signal_base_t& source) {
  threading::scoped_lock_t source_lock(*source.m_mutex);
  for (const connection_t& connection : source.m_connections) {
    if (connection.empty()) {
      continue;
    }
    threading::scoped_lock_t lock(*m_mutex);
    if (!contains_locked(connection)) {
      insert_locked(connection);
    }
  }
}

std::size_t signal_base_t::connection_count() const {
  threading::scoped_lock_t lock(*m_mutex);
  std::size_t count = 0;
  for (const connection_t& connection : m_connections) {
    count += connection.empty() ? 0 : 1;
  }
  return count;
}

void signal_base_t::begin_emission(onstack_signal_state_t& state) const {
  state.mutex = m_mutex;
  state.mutex->acquire();
  state.alive = 1;
  state.nested = m_in_emission != nullptr;
  if (!state.nested) {
    m_in_emission = &state.alive;
  }
  state.alive_in_force = m_in_emission;
}

bool signal_base_t::contains_locked(const connection_t& connection) const {
  for (const connection_t& held : m_connections) {
    if (held.same_as(connection)) {
      return true;
    }
  }
  return false;
}

void signal_base_t::insert_locked(const connection_t& connection) {
  if (connection.subscriber) {
    // The entry's node is made outside the subscriber's lock, which posters on every
    // thread share: inside it only a splice remains.
    decltype(connection.subscriber->m_signals) entry{this};
    threading::scoped_lock_t lock(connection.subscriber->m_subscriber_mutex);
    connection.subscriber->m_signals.splice(connection.subscriber->m_signals.end(), entry);
  }
  m_connections.push_back(connection);
}

std::size_t signal_base_t::drop_subscriber_locked(subscriber_base_t* subscriber) {
  std::size_t dropped = 0;
  if (m_in_emission) {
    for (connection_t& connection : m_connections) {
      if (connection.subscriber == subscriber) {
        connection = connection_t();
        ++dropped;
      }
    }
    return dropped;
  }
  for (auto connection = m_connections.begin(); connection != m_connections.end();) {
    if (connection->subscriber == subscriber) {
      connection = m_connections.erase(connection);
      ++dropped;
    } else {
      ++connection;
    }
  }
  return dropped;
}

void signal_base_t::unlink_all_locked() {
  for (connection_t& connection : m_connections) {
    if (connection.subscriber) {
      remove_from_subscriber(connection.subscriber, false);
      if (m_in_emission) {
        connection = connection_t();
      }
    }
  }
  if (!m_in_emission) {
    m_connections.clear();
  }
}

void signal_base_t::remove_from_subscriber(subscriber_base_t* subscriber, bool every_entry) {
  // Nodes taken out are freed here, after the subscriber's lock is let go.
  decltype(subscriber->m_signals) gone;
  threading::scoped_lock_t lock(subscriber->m_subscriber_mutex);
  auto& signals = subscriber->m_signals;
  if (every_entry) {
    signals.remove(this);
    return;
  }
  // One entry per connection: only one goes with the connection. Posted snapshots leave
  // either just after they came (the sender's copy) or in the order they came (delivered),
  // so the entry lies near one of the ends: look from both at once.
  auto front = signals.begin();
  auto back = signals.end();
  while (front != back) {
    if (*front == this) {
      gone.splice(gone.end(), signals, front);
      return;
    }
    if (*--back == this) {
      gone.splice(gone.end(), signals, back);
      return;
    }
    if (front == back) {
      return;
    }
    ++front;
  }
}

}  // namespace korvat2::_internal
