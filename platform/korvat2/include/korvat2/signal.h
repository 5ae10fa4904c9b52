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
class liveness_t;
class snapshot_base_t;
template <class... A>
class signal_snapshot_t;

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

/// One entry of a subscriber's list: the signal that it is connected to. Entries stay
/// where they are while linked, so that leaving the list needs no search.
struct subscriber_entry_t {
  /// A signal may keep the entry of a connection it took out linked, parked, to use it
  /// again when the same subscriber connects. The subscriber may claim a parked entry to
  /// leave its list without the signal's mutex; the signal frees it once released.
  enum state_t : std::uint8_t { in_use, parked, claimed, released };

  subscriber_entry_t* prev = nullptr;
  subscriber_entry_t* next = nullptr;
  signal_base_t* signal = nullptr;
  std::atomic<std::uint8_t> state{in_use};
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
  void leave_all_signals();
  /// The liveness token, made on first use, with a count for the caller. Only under the
  /// mutex of a signal that this receiver is connected to: it can't die meanwhile.
  liveness_t* share_liveness();
  /// Tells the holders of the token that this receiver is gone, waiting for a call through
  /// it on another thread to end, and lets go of it.
  void end_liveness();

  // One entry per connection made, in order; a ring around this head.
  subscriber_entry_t m_signals;
  // The entries in the ring. Changed under the mutex, read without it by a dying receiver
  // to see that no signal knows it.
  std::atomic<std::uint32_t> m_entry_count{0};
  threading::mutex_t m_subscriber_mutex;
  // Made by the first snapshot that holds this receiver; shared by every later one until
  // the receiver leaves its signals.
  std::atomic<liveness_t*> m_liveness{nullptr};
};

/// The address of a receiver's member function, called with the receiver's address and
/// the arguments like a plain function; null where the caster has to call.
using direct_call_t = void (*)();

/// A connection as the signal keeps it, with its direct call where it has one, and its
/// entry in the subscriber's list; the entry is null when the connection has none (blank,
/// or its entry was taken out).
struct connection_slot_t {
  connection_t connection;
  direct_call_t direct = nullptr;
  subscriber_entry_t* entry = nullptr;
};

/// The signal's connections in order, side by side, so that an emission walks them without
/// chasing pointers. Appending may move the slots: a walk holds an index, never an address,
/// across a call. The first slot and the first entry live inside the list, so that a signal
/// with one connection, the usual case, allocates nothing.
class connection_list_t {
 public:
  connection_list_t() = default;
  connection_list_t(const connection_list_t&) = delete;
  connection_list_t& operator=(const connection_list_t&) = delete;
  ~connection_list_t() { clear(); }

  // Atomic, so that a dying signal may look without its mutex (changes happen under it).
  std::size_t size() const { return m_size.load(std::memory_order_acquire); }
  bool empty() const { return size() == 0; }
  connection_slot_t& operator[](std::size_t index) const { return m_slots[index]; }

  /// Appends a slot holding `connection` and returns it; valid until the list changes.
  connection_slot_t& push_back(const connection_t& connection, direct_call_t direct);
  /// Takes the slot at `index` out; those behind it move up, keeping their order.
  void erase(std::size_t index);
  /// Blanks the slot at `index`; it stays, calling nothing, until remove_blanks.
  void blank(std::size_t index);
  /// Takes every blank slot out, keeping the others' order. Inline: it ends every
  /// emission, and mostly there is nothing to do.
  void remove_blanks() {
    if (m_has_blanks) {
      compact();
    }
  }
  void clear();

  /// An entry for a slot's subscriber list, and back: the list keeps one spare inside.
  subscriber_entry_t* new_entry();
  void delete_entry(subscriber_entry_t* entry);

 private:
  void grow();
  void compact();
  void release_storage();

  connection_slot_t* m_slots = &m_inline;
  std::atomic<std::uint32_t> m_size{0};
  std::uint32_t m_capacity = 1;
  bool m_inline_entry_in_use = false;
  bool m_has_blanks = false;
  connection_slot_t m_inline;
  subscriber_entry_t m_inline_entry;
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

  /// `direct`, when given, calls the same member function as the connection's caster.
  void _insert(const connection_t& connection, direct_call_t direct = nullptr);
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
  void post_call(onstack_signal_state_t& state) const {
    if (!*state.alive_in_force || state.nested) {
      state.mutex->release();
      return;
    }
    m_in_emission = nullptr;
    m_connections.remove_blanks();
    state.mutex->release();
  }

  /// Adds each connection of `source` that this signal doesn't hold yet.
  void copy_connections_from(const signal_base_t& source);
  /// Appends the live connections to `snapshot`, in order, each with its receiver's
  /// liveness token; touches no receiver's list or mutex.
  void _snapshot_into(snapshot_base_t& snapshot) const;
  /// Number of live (not blanked) connections.
  std::size_t connection_count() const;
  bool empty() const { return connection_count() == 0; }

 protected:
  // Inline, as post_call: with them an emission to one subscriber makes one call.
  void begin_emission(onstack_signal_state_t& state) const {
    state.mutex = m_mutex;
    state.mutex->acquire();
    state.alive = 1;
    state.nested = m_in_emission != nullptr;
    if (!state.nested) {
      m_in_emission = &state.alive;
    }
    state.alive_in_force = m_in_emission;
  }
  static void leave_dead_signal(onstack_signal_state_t& state);

  using list_t = connection_list_t;
  mutable list_t m_connections;

 private:
  friend class subscriber_base_t;

  bool contains_locked(const connection_t& connection) const;
  void insert_locked(const connection_t& connection, direct_call_t direct);
  /// Takes the parked entry back for `subscriber`'s new connection, if it is that one's.
  subscriber_entry_t* unpark_for(subscriber_base_t* subscriber);
  /// Parks the entry of the slot at `index` instead of taking it out of its subscriber's
  /// list, when that is the subscriber's only entry here and nothing is parked.
  bool park(std::size_t index);
  /// Takes the parked entry out of its subscriber's list, or waits until the subscriber
  /// who claimed it is done with it, and frees it.
  void drop_parked_locked();
  /// Drops the subscriber's connections and entries; the signal's mutex is held.
  void drop_subscriber_locked(subscriber_base_t* subscriber);
  void unlink_all_locked();
  /// Takes out of `subscriber`'s list every entry of this signal.
  void remove_from_subscriber(subscriber_base_t* subscriber);
  /// Takes the slot's entry out of its subscriber's list, whose mutex the caller holds.
  void unlink_entry(connection_slot_t& slot);
  /// Blanks the connection while an emission walks the list, else takes its slot out.
  /// Returns the index of the slot that comes next.
  std::size_t discard(std::size_t index);

  mutable unsigned char* m_in_emission = nullptr;
  // The entry of a connection taken out, still in its owner's list: connecting and
  // disconnecting the same subscriber again and again takes no lock of the subscriber.
  subscriber_entry_t* m_parked = nullptr;
  subscriber_base_t* m_parked_owner = nullptr;
  // On the heap, so that a signal destroyed inside its own emission can leave it to the
  // emitting frame.
  threading::mutex_t* m_mutex;
};

/// The receiver class of a member-function type, and whether the function can be called
/// like a plain function taking the receiver's address and the signal's arguments `A...`:
/// it returns nothing and takes exactly those types, so nothing is converted on the way.
template <class M>
struct member_traits;
template <class R, class B, class... P>
struct member_traits<R (B::*)(P...)> {
  using type = B;
  template <class... A>
  static constexpr bool plain_call = (std::is_void_v<R> && std::is_same_v<void (*)(P...), void (*)(A...)>);
};
template <class R, class B, class... P>
struct member_traits<R (B::*)(P...) const> : member_traits<R (B::*)(P...)> {};
template <class R, class B, class... P>
struct member_traits<R (B::*)(P...) noexcept> : member_traits<R (B::*)(P...)> {};
template <class R, class B, class... P>
struct member_traits<R (B::*)(P...) const noexcept> : member_traits<R (B::*)(P...)> {};

/// The function that a member-function pointer names, when it can be called directly: on
/// x86-64 with the Itanium C++ ABI (GCC, Clang) such a pointer is the function's address
/// and the adjustment of the receiver's address, and a member function takes the receiver
/// as a hidden first argument. A virtual function (odd first word) must be looked up at
/// each call, since the receiver's dynamic type changes while it is built and destroyed.
/// Elsewhere null: the caster calls.
template <class M, class... A>
direct_call_t direct_call_of(const std::uintptr_t (&method)[2]) {
#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
  if constexpr (member_traits<M>::template plain_call<A...> && sizeof(M) == sizeof method) {
    if ((method[0] & 1) == 0) {
      direct_call_t function;
      std::memcpy(&function, &method[0], sizeof function);
      return function;
    }
  }
#endif
  (void)method;
  return nullptr;
}

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
  using direct_t = void (*)(void* receiver, A... args);
  using state_t = signal_base_t::onstack_signal_state_t;

 public:
  /// What `signal_snapshot_t` keeps of this signal's receivers.
  using snapshot_t = signal_snapshot_t<A...>;

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
    const connection_t connection = make_connection(object, method);
    this->_insert(connection, direct_call_of<M, A...>(connection.method));
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
      const connection_t connection = make_connection(target, &T::operator());
      this->_insert(connection, direct_call_of<decltype(&T::operator()), A...>(connection.method));
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
    // Set once at the start: a nested frame shares the outermost frame's flag.
    const unsigned char* alive = state.alive_in_force;
    try {
      // By index, and the size is read anew after each call: a subscriber may append,
      // which may move the slots, and what it appends is reached by this walk.
      for (std::size_t index = 0; index < this->m_connections.size(); ++index) {
        const connection_slot_t& slot = this->m_connections[index];
        if (!slot.direct && slot.connection.empty()) {
          continue;
        }
        _call(slot, args...);
        if (!*alive) {
          signal_base_t::leave_dead_signal(state);
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

  /// Calls the receiver of a slot that isn't blank, as the emission does.
  static void _call(const connection_slot_t& slot, A&... args) {
    const connection_t& connection = slot.connection;
    if (slot.direct) {
      // One indirect call instead of two: the caster's work was done at connection.
      auto* receiver = static_cast<char*>(connection.object) + connection.method[1];
      reinterpret_cast<direct_t>(slot.direct)(receiver, args...);
    } else {
      reinterpret_cast<caster_t>(connection.caster)(connection.object, connection.method, args...);
    }
  }

 private:
  template <class T, class M>
  static connection_t make_connection(T* object, M method) {
    using receiver_t = typename member_traits<M>::type;
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
