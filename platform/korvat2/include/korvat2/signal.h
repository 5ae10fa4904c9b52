#pragma once
#include <korvat2/threading.h>
#include <zandor/debug.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

namespace korvat2::_internal {

class signal_base_t;
class subscriber_base_t;

/// Fills the argument places of a signal that are not in use.
struct dummy_t {};

/// A bound member function: receiver, its subscriber part, the method's raw words and the
/// function that restores the types and calls. Two connections are the same when their
/// objects and method bytes are equal; a connection without subscriber is blank.
struct connection_t {
  using generic_caster_t = void (*)();

  void* object = nullptr;
  subscriber_base_t* subscriber = nullptr;
  std::uintptr_t method[2] = {0, 0};
  generic_caster_t caster = nullptr;

  bool empty() const { return subscriber == nullptr; }
  bool same_as(const connection_t& other) const {
    return object == other.object && std::memcmp(method, other.method, sizeof method) == 0;
  }
};

class connection_node_t;

/// One entry of a subscriber's list: the signal that it is connected to. The entry lives
/// in the connection's node, so that entering and leaving the list allocate nothing and
/// leaving it needs no search.
struct subscriber_entry_t {
  subscriber_entry_t* prev = nullptr;
  subscriber_entry_t* next = nullptr;
  signal_base_t* signal = nullptr;
};

/// Base of everything that can receive an emission. Its connections are removed when it
/// dies, also in the middle of an emission; this part dies last, so while a derived
/// receiver is being destroyed its connections still stand.
class subscriber_base_t {
 public:
  subscriber_base_t() { m_signals.prev = m_signals.next = &m_signals; }
  // A copy is a new receiver: it inherits none of the original's connections.
  subscriber_base_t(const subscriber_base_t&) : subscriber_base_t() {}
  subscriber_base_t& operator=(const subscriber_base_t&) { return *this; }
  virtual ~subscriber_base_t();

 protected:
  /// Leaves every signal now, waiting for emissions that are calling it on other threads
  /// to end. A receiver whose signals are emitted on other threads calls this first in its
  /// destructor, so that no call reaches its half-destroyed derived part.
  void disconnect_all_signals();

 private:
  friend class signal_base_t;

  // Both under m_subscriber_mutex and the entry's signal's mutex; an entry is linked
  // exactly while its signal is set.
  void link(subscriber_entry_t& entry, signal_base_t* signal);
  void unlink(subscriber_entry_t& entry);

  // One entry per connection made, in order; a ring around this head.
  subscriber_entry_t m_signals;
  // The entries in the ring. Changed under the mutex, read without it by a dying receiver
  // to see that no signal knows it.
  std::atomic<std::uint32_t> m_entry_count{0};
  threading::mutex_t m_subscriber_mutex;
};

/// The signal's links of a connection node.
struct connection_link_t {
  connection_link_t* prev = nullptr;
  connection_link_t* next = nullptr;
};

/// A connection as the signal keeps it, with its entry in the subscriber's list.
class connection_node_t : public connection_link_t {
 public:
  static void* operator new(std::size_t size) { return pool_allocate(size); }
  static void operator delete(void* block, std::size_t size) noexcept { pool_free(block, size); }

  connection_t connection;
  // In the list of connection.subscriber while linked; a connection is blanked only after
  // its entry has left the list.
  subscriber_entry_t entry;

  // Told by the entry's signal, which changes only with both mutexes held; its links also
  // change when a neighbour comes or goes.
  bool entry_linked() const { return entry.signal != nullptr; }
};

/// The signal's connections in order, as a ring of nodes that stay where they are while a
/// walk goes on. The first node lives inside the list, so that a signal with one
/// connection, the usual case and every posted snapshot of one, allocates none.
class connection_list_t {
 public:
  class iterator {
   public:
    explicit iterator(connection_link_t* link) : m_link(link) {}
    connection_t& operator*() const { return node()->connection; }
    connection_t* operator->() const { return &node()->connection; }
    connection_node_t* node() const { return static_cast<connection_node_t*>(m_link); }
    // The next link is read only now, after the caller is done with this node.
    iterator& operator++() {
      m_link = m_link->next;
      return *this;
    }
    bool operator==(const iterator& other) const { return m_link == other.m_link; }
    bool operator!=(const iterator& other) const { return m_link != other.m_link; }

   private:
    connection_link_t* m_link;
  };

  connection_list_t() { m_head.prev = m_head.next = &m_head; }
  connection_list_t(const connection_list_t&) = delete;
  connection_list_t& operator=(const connection_list_t&) = delete;
  ~connection_list_t() { clear(); }

  iterator begin() const { return iterator(m_head.next); }
  iterator end() const { return iterator(const_cast<connection_link_t*>(&m_head)); }
  bool empty() const { return size() == 0; }
  // Atomic, so that a dying signal may look without its mutex (changes happen under it).
  std::size_t size() const { return m_size.load(std::memory_order_acquire); }

  /// Appends a node holding `connection` and returns it.
  connection_node_t* push_back(const connection_t& connection);
  /// Unhooks and frees the node; returns the one behind it.
  iterator erase(iterator position);
  /// Frees every node whose connection is blank.
  void remove_blanks();
  void clear();

 private:
  connection_link_t m_head;
  connection_node_t m_inline;
  std::atomic<std::uint32_t> m_size{0};
  bool m_inline_in_use = false;
};

/// The non-template part of a signal: the connection list, its mutex and the emission
/// state. A signal is a subscriber too, so that it can be connected behind another one.
class signal_base_t : public subscriber_base_t {
 public:
  /// The state of one running emission, on the emitter's stack.
  struct onstack_signal_state_t {
    threading::mutex_t* mutex = nullptr;
    unsigned char alive = 1;
    unsigned char* alive_in_force = nullptr;
    bool nested = false;
  };

  signal_base_t();
  /// A copy holds the same connections, entered anew in each subscriber's list.
  signal_base_t(const signal_base_t& other);
  /// Drops this signal's connections and takes the other's.
  signal_base_t& operator=(const signal_base_t& other);
  ~signal_base_t() override;

  void _insert(const connection_t& connection);
  void _erase(const connection_t& connection);
  /// Drops every connection; the signal stays usable.
  void _erase_all();
  void on_subscriber_destroy(subscriber_base_t* subscriber);
  /// After a subscriber's call: false when the signal died inside it, after releasing (and
  /// for the outermost frame freeing) the mutex. Static, since the signal may be gone.
  static bool check_valid_state_after_call(onstack_signal_state_t& state) {
    if (*state.alive_in_force) {
      return true;  // inline: it runs after every subscriber's call
    }
    leave_dead_signal(state);
    return false;
  }
  void post_call(onstack_signal_state_t& state) const;

  /// Adds each connection of `source` that this signal doesn't hold yet.
  void copy_connections_from(const signal_base_t& source);
  /// Number of live (not blanked) connections.
  std::size_t connection_count() const;
  bool empty() const { return connection_count() == 0; }

 protected:
  void begin_emission(onstack_signal_state_t& state) const;
  static void leave_dead_signal(onstack_signal_state_t& state);

  using list_t = connection_list_t;
  mutable list_t m_connections;

 private:
  friend class subscriber_base_t;

  bool contains_locked(const connection_t& connection) const;
  void insert_locked(const connection_t& connection);
  /// Drops the subscriber's connections and entries; the signal's mutex is held.
  void drop_subscriber_locked(subscriber_base_t* subscriber);
  void unlink_all_locked();
  /// Takes out of `subscriber`'s list every entry of this signal.
  void remove_from_subscriber(subscriber_base_t* subscriber);
  /// Blanks the connection while an emission walks the list, else frees its node.
  list_t::iterator discard(list_t::iterator position);

  mutable unsigned char* m_in_emission = nullptr;
  // On the heap, so that a signal destroyed inside its own emission can leave it to the
  // emitting frame.
  threading::mutex_t* m_mutex;
};

template <class M>
struct member_class;
template <class R, class B, class... P>
struct member_class<R (B::*)(P...)> {
  using type = B;
};
template <class R, class B, class... P>
struct member_class<R (B::*)(P...) const> {
  using type = B;
};
template <class R, class B, class... P>
struct member_class<R (B::*)(P...) noexcept> {
  using type = B;
};
template <class R, class B, class... P>
struct member_class<R (B::*)(P...) const noexcept> {
  using type = B;
};

/// Carrier of the static `caster` for one pair of receiver class `T` and member-function
/// type `M`; `signal_t` derives from the instantiation with dummies.
template <class T, class M, class... A>
class signal_templ : public signal_base_t {
 public:
  using caster_t = void (*)(void* object, const std::uintptr_t* method, A... args);

  static void caster(void* object, const std::uintptr_t* method, A... args) {
    M bound;
    std::memcpy(static_cast<void*>(&bound), method, sizeof bound);
    (static_cast<T*>(object)->*bound)(std::forward<A>(args)...);
  }
};

/// A signal with the arguments `A...`. Subscribers are called in order of connection,
/// on the emitting thread, with the signal's mutex held. Any thread may connect,
/// disconnect, emit or destroy; a receiver that dies disconnects itself. Destroyed inside
/// its own emission (by a subscriber), the signal stops that emission at once. Destroyed
/// on another thread while an emission runs there, it waits for that emission to end,
/// and every subscriber is called. An emission runs once it holds the mutex: one still
/// waiting behind another must not meet the destruction, like any call on a dying object.
/// A signal chained behind another leaves it first, waiting for a running emission of it.
template <class... A>
class signal_t : public signal_templ<dummy_t, dummy_t, A...> {
  using base_t = signal_templ<dummy_t, dummy_t, A...>;
  using typename base_t::caster_t;
  using state_t = signal_base_t::onstack_signal_state_t;

 public:
  signal_t() = default;
  signal_t(const signal_t&) = default;
  signal_t& operator=(const signal_t&) = default;
  // Leaves the signals that this one is chained behind while it is still whole, as a
  // receiver emitted on other threads does: one of them may be about to call it.
  ~signal_t() override { this->disconnect_all_signals(); }

  /// Connects `object`'s member function `method`; `T` derives from subscriber_base_t.
  /// Connecting the same pair twice is reported and ignored.
  template <class T, class M>
  void connect(T* object, M method) {
    this->_insert(make_connection(object, method));
  }
  /// Removes the connection of `object` and `method`; an unknown one is reported.
  template <class T, class M>
  void disconnect(T* object, M method) {
    this->_erase(make_connection(object, method));
  }

  /// Chains `target`, a signal with the same arguments, behind this one.
  template <class T>
  void connect(T* target) {
    subscriber_base_t* subscriberObj = static_cast<subscriber_base_t*>(target);
    ZANDOR_ASSERT(static_cast<subscriber_base_t*>(this) != subscriberObj);
    if (static_cast<subscriber_base_t*>(this) != subscriberObj) {
      this->_insert(make_connection(target, &T::operator()));
    }
  }
  template <class T>
  void disconnect(T* target) {
    this->_erase(make_connection(target, &T::operator()));
  }

  /// The emission.
  void operator()(A... args) const {
    state_t state;
    this->begin_emission(state);
    try {
      for (auto it = this->m_connections.begin(); it != this->m_connections.end(); ++it) {
        if (!*state.alive_in_force) {
          state.mutex->release();
          return;
        }
        if (it->empty()) {
          continue;
        }
        reinterpret_cast<caster_t>(it->caster)(it->object, it->method, args...);
        if (!signal_base_t::check_valid_state_after_call(state)) {
          return;  // the signal died inside the call
        }
      }
    } catch (...) {
      if (signal_base_t::check_valid_state_after_call(state)) {
        this->post_call(state);
      }
      throw;
    }
    this->post_call(state);
  }

 private:
  template <class T, class M>
  static connection_t make_connection(T* object, M method) {
    using receiver_t = typename member_class<M>::type;
    static_assert(std::is_base_of_v<subscriber_base_t, T>, "a receiver derives from subscriber_base_t");
    static_assert(sizeof(M) <= sizeof(connection_t::method), "member-function pointer too large");
    connection_t connection;
    if (object) {
      connection.object = static_cast<void*>(static_cast<receiver_t*>(object));
      connection.subscriber = static_cast<subscriber_base_t*>(object);
    }
    std::memcpy(connection.method, &method, sizeof method);
    connection.caster =
        reinterpret_cast<connection_t::generic_caster_t>(&signal_templ<receiver_t, M, A...>::caster);
    return connection;
  }
};

}  // namespace korvat2::_internal

namespace korvat2 {
using _internal::signal_t;
using _internal::subscriber_base_t;
}  // namespace korvat2
