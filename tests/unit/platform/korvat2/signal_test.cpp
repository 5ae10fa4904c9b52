#include <korvat2/signal.h>

#include "logging_receiver.h"

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using korvat2::signal_t;
using korvat2::subscriber_base_t;
using test_support::assert_recorder_t;

const char* const duplicate_text = "(\"signal_t::_insert: this connection is already exists.\", false)";
const char* const unknown_text =
    "(\"signal_t::disconnect: attempt to disconnect unknown connection\", subscriber_found)";

using test_support::call_log_t;
using receiver_t = test_support::logging_receiver_t;

// Shows the nodes of the connection list, blanks included.
template <class... A>
class inspected_signal_t : public signal_t<A...> {
 public:
  std::size_t nodes() const { return this->m_connections.size(); }
  bool called_directly(std::size_t index) const { return this->m_connections[index].direct != nullptr; }
};

TEST(signal_test, emission_calls_subscribers_in_order_of_connection) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), c(log, "c");
  signal_t<int> signal;
  signal.connect(&b, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&c, &receiver_t::on_value);
  signal(7);
  EXPECT_EQ(log, (call_log_t{"b:7", "a:7", "c:7"}));
}

TEST(signal_test, duplicate_connection_is_reported_and_called_once) {
  assert_recorder_t asserts;
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_value);
  EXPECT_EQ(asserts.texts(), std::vector<std::string>{duplicate_text});
  signal(1);
  EXPECT_EQ(log, call_log_t{"a:1"});
  EXPECT_EQ(signal.connection_count(), 1u);
}

TEST(signal_test, one_object_may_connect_two_member_functions) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_other);
  signal(2);
  EXPECT_EQ(log, (call_log_t{"a:2", "a/other:2"}));
}

TEST(signal_test, first_disconnect_of_two_methods_keeps_the_other_connection) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_other);
  signal.disconnect(&a, &receiver_t::on_value);
  signal(3);
  EXPECT_EQ(log, call_log_t{"a/other:3"});
  signal.disconnect(&a, &receiver_t::on_other);  // leaves no connection for a's death to find
}

TEST(signal_test, disconnect_of_unknown_connection_is_reported_and_changes_nothing) {
  assert_recorder_t asserts;
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.disconnect(&b, &receiver_t::on_value);
  signal.disconnect(&a, &receiver_t::on_other);
  EXPECT_EQ(asserts.texts(), (std::vector<std::string>{unknown_text, unknown_text}));
  signal(4);
  EXPECT_EQ(log, call_log_t{"a:4"});
}

TEST(signal_test, subscriber_that_disconnects_itself_is_called_once_and_blanked_until_the_end) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  inspected_signal_t<int> signal;
  std::size_t nodes_during_emission = 0;
  a.m_action = [&](int) { signal.disconnect(&a, &receiver_t::on_value); };
  b.m_action = [&](int value) {
    if (value == 1) {
      nodes_during_emission = signal.nodes();
    }
  };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal(1);
  signal(2);
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1", "b:2"}));
  EXPECT_EQ(nodes_during_emission, 2u);  // the blank stays while the emission runs
  EXPECT_EQ(signal.nodes(), 1u);         // and the outermost emission compacts it
}

TEST(signal_test, disconnecting_a_later_subscriber_skips_it_in_this_emission) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), c(log, "c");
  signal_t<int> signal;
  a.m_action = [&](int) { signal.disconnect(&b, &receiver_t::on_value); };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal.connect(&c, &receiver_t::on_value);
  signal(5);
  EXPECT_EQ(log, (call_log_t{"a:5", "c:5"}));
}

TEST(signal_test, subscriber_connected_during_emission_is_called_in_the_same_emission) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  bool connected = false;
  a.m_action = [&](int) {
    if (!connected) {
      connected = true;
      signal.connect(&b, &receiver_t::on_value);
    }
  };
  signal.connect(&a, &receiver_t::on_value);
  signal(6);
  EXPECT_EQ(log, (call_log_t{"a:6", "b:6"}));
}

TEST(signal_test, nested_emission_walks_the_whole_list_without_compacting) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), c(log, "c");
  inspected_signal_t<int> signal;
  std::size_t nodes_after_inner = 0;
  b.m_action = [&](int value) {
    if (value == 1) {
      signal.disconnect(&b, &receiver_t::on_value);
      signal(2);
      nodes_after_inner = signal.nodes();
    }
  };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal.connect(&c, &receiver_t::on_value);
  signal(1);
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1", "a:2", "c:2", "c:1"}));
  EXPECT_EQ(nodes_after_inner, 3u);  // the inner frame left the blank alone
  EXPECT_EQ(signal.nodes(), 2u);
}

TEST(signal_test, signal_destroyed_by_a_subscriber_calls_nobody_after_it) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  auto signal = std::make_unique<signal_t<int>>();
  a.m_action = [&](int) { signal.reset(); };
  signal->connect(&a, &receiver_t::on_value);
  signal->connect(&b, &receiver_t::on_value);
  (*signal)(1);  // the emitting frame frees the mutex; ASan watches for any touch
  EXPECT_EQ(log, call_log_t{"a:1"});
  EXPECT_EQ(signal, nullptr);
}

TEST(signal_test, signal_destroyed_in_a_nested_emission_stops_every_frame) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), c(log, "c");
  auto signal = std::make_unique<signal_t<int>>();
  signal_t<int>* raw = signal.get();
  a.m_action = [&](int value) {
    if (value == 1) {
      (*raw)(2);
    }
  };
  b.m_action = [&](int value) {
    if (value == 2) {
      signal.reset();
    }
  };
  signal->connect(&a, &receiver_t::on_value);
  signal->connect(&b, &receiver_t::on_value);
  signal->connect(&c, &receiver_t::on_value);
  (*raw)(1);
  EXPECT_EQ(log, (call_log_t{"a:1", "a:2", "b:2"}));
}

TEST(signal_test, subscriber_destroyed_by_another_during_emission_is_not_called) {
  call_log_t log;
  receiver_t a(log, "a"), c(log, "c");
  auto b = std::make_unique<receiver_t>(log, "b");
  inspected_signal_t<int> signal;
  a.m_action = [&](int) { b.reset(); };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(b.get(), &receiver_t::on_value);
  signal.connect(&c, &receiver_t::on_value);
  signal(8);
  EXPECT_EQ(log, (call_log_t{"a:8", "c:8"}));
  EXPECT_EQ(signal.nodes(), 2u);
  EXPECT_EQ(signal.connection_count(), 2u);
}

TEST(signal_test, dead_subscriber_leaves_the_signal) {
  call_log_t log;
  signal_t<int> signal;
  {
    receiver_t a(log, "a");
    signal.connect(&a, &receiver_t::on_value);
    EXPECT_EQ(signal.connection_count(), 1u);
  }
  EXPECT_EQ(signal.connection_count(), 0u);
  signal(1);
  EXPECT_TRUE(log.empty());
}

TEST(signal_test, receiver_can_leave_all_its_signals_before_it_dies) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> first, second;
  first.connect(&a, &receiver_t::on_value);
  second.connect(&a, &receiver_t::on_other);
  a.leave();
  EXPECT_EQ(first.connection_count(), 0u);
  EXPECT_EQ(second.connection_count(), 0u);
  first(1);
  second(2);
  EXPECT_TRUE(log.empty());
  first.connect(&a, &receiver_t::on_value);  // and may join again
  first(3);
  EXPECT_EQ(log, call_log_t{"a:3"});
}

TEST(signal_test, dead_signal_leaves_its_subscribers) {
  call_log_t log;
  receiver_t a(log, "a");
  {
    signal_t<int> first;
    first.connect(&a, &receiver_t::on_value);
  }
  signal_t<int> second;
  second.connect(&a, &receiver_t::on_value);
  second(2);
  EXPECT_EQ(log, call_log_t{"a:2"});
}  // a dies with one entry in its list: ASan would see a stale one

TEST(signal_test, throwing_subscriber_stops_the_walk_and_leaves_a_clean_signal) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b"), c(log, "c");
  inspected_signal_t<int> signal;
  a.m_action = [&](int) { signal.disconnect(&a, &receiver_t::on_value); };
  b.m_action = [&](int value) {
    if (value == 1) {
      throw std::runtime_error("subscriber failed");
    }
  };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal.connect(&c, &receiver_t::on_value);
  EXPECT_THROW(signal(1), std::runtime_error);
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1"}));
  EXPECT_EQ(signal.nodes(), 2u);  // the blank of a was compacted
  // The mutex was released: another thread can emit.
  std::thread other([&] { signal(2); });
  other.join();
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1", "b:2", "c:2"}));
}

TEST(signal_test, signal_chained_to_a_signal_forwards_and_unlinks_when_destroyed) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> first;
  {
    signal_t<int> second;
    second.connect(&a, &receiver_t::on_value);
    first.connect(&second);
    first(9);
    EXPECT_EQ(log, call_log_t{"a:9"});
    EXPECT_EQ(first.connection_count(), 1u);
  }
  EXPECT_EQ(first.connection_count(), 0u);
  first(10);
  EXPECT_EQ(log, call_log_t{"a:9"});
}

TEST(signal_test, chained_signal_can_be_disconnected) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> first, second;
  second.connect(&a, &receiver_t::on_value);
  first.connect(&second);
  first.disconnect(&second);
  first(1);
  EXPECT_TRUE(log.empty());
}

TEST(signal_test, connecting_a_signal_to_itself_is_reported) {
  assert_recorder_t asserts;
  signal_t<int> signal;
  signal.connect(&signal);
  EXPECT_EQ(asserts.texts(),
            std::vector<std::string>{"static_cast<subscriber_base_t*>(this) != subscriberObj"});
  EXPECT_EQ(signal.connection_count(), 0u);
}

TEST(signal_test, by_value_argument_is_copied_for_each_call) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<std::string> signal;
  signal.connect(&a, &receiver_t::on_text);
  signal.connect(&b, &receiver_t::on_text);
  signal("original");
  EXPECT_EQ(log, (call_log_t{"a:original", "b:original"}));
}

TEST(signal_test, signal_without_arguments_and_with_several) {
  struct pair_receiver_t : subscriber_base_t {
    int calls = 0;
    std::string seen;
    void none() { ++calls; }
    void two(const std::string& text, int value) { seen = text + std::to_string(value); }
  } receiver;
  signal_t<> plain;
  signal_t<const std::string&, int> pair;
  plain.connect(&receiver, &pair_receiver_t::none);
  pair.connect(&receiver, &pair_receiver_t::two);
  plain();
  plain();
  pair("x", 3);
  EXPECT_EQ(receiver.calls, 2);
  EXPECT_EQ(receiver.seen, "x3");
}

TEST(signal_test, copy_holds_the_same_connections_and_both_unlink_on_death) {
  call_log_t log;
  auto a = std::make_unique<receiver_t>(log, "a");
  signal_t<int> original;
  original.connect(a.get(), &receiver_t::on_value);
  signal_t<int> copy(original);
  copy(1);
  original.disconnect(a.get(), &receiver_t::on_value);
  copy(2);  // the copy is a separate signal
  EXPECT_EQ(log, (call_log_t{"a:1", "a:2"}));
  a.reset();
  EXPECT_EQ(copy.connection_count(), 0u);
  copy(3);
  EXPECT_EQ(log.size(), 2u);
}

TEST(signal_test, copying_connections_skips_those_already_held) {
  assert_recorder_t asserts;
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> source, target;
  source.connect(&a, &receiver_t::on_value);
  source.connect(&b, &receiver_t::on_value);
  target.connect(&a, &receiver_t::on_value);
  target.copy_connections_from(source);
  target(1);
  EXPECT_EQ(log, (call_log_t{"a:1", "b:1"}));
  EXPECT_EQ(asserts.count(), 0u);
}

TEST(signal_test, assignment_replaces_the_connections) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> source, target;
  source.connect(&a, &receiver_t::on_value);
  target.connect(&b, &receiver_t::on_value);
  target = source;
  target(1);
  EXPECT_EQ(log, call_log_t{"a:1"});
}

TEST(signal_test, erase_all_drops_every_connection_and_the_signal_goes_on) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal._erase_all();
  signal(1);
  EXPECT_TRUE(log.empty());
  signal.connect(&a, &receiver_t::on_value);
  signal(2);
  EXPECT_EQ(log, call_log_t{"a:2"});
}

TEST(signal_test, erase_all_during_emission_blanks_the_rest) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  inspected_signal_t<int> signal;
  a.m_action = [&](int) { signal._erase_all(); };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal(1);
  EXPECT_EQ(log, call_log_t{"a:1"});
  EXPECT_EQ(signal.nodes(), 0u);
}

TEST(signal_test, receiver_with_the_subscriber_base_not_first) {
  struct other_base_t {
    virtual ~other_base_t() = default;
    int padding = 42;
  };
  struct late_receiver_t : other_base_t, subscriber_base_t {
    int sum = 0;
    void add(int value) { sum += value + padding - 42; }
  } receiver;
  signal_t<int> signal;
  signal.connect(&receiver, &late_receiver_t::add);
  signal(5);
  signal(6);
  EXPECT_EQ(receiver.sum, 11);
}

TEST(signal_test, null_object_gives_a_blank_connection_that_calls_nothing) {
  signal_t<int> signal;
  signal.connect(static_cast<receiver_t*>(nullptr), &receiver_t::on_value);
  EXPECT_EQ(signal.connection_count(), 0u);
  signal(1);  // nothing to call, nothing to crash
}

TEST(signal_test, many_subscribers_connected_during_emission_are_all_called_in_order) {
  call_log_t log;
  std::vector<std::unique_ptr<receiver_t>> late;
  for (int i = 0; i < 40; ++i) {
    late.push_back(std::make_unique<receiver_t>(log, "l" + std::to_string(i)));
  }
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  bool connected = false;
  // Enough connections to outgrow the signal's storage while the walk stands on a.
  a.m_action = [&](int) {
    if (!connected) {
      connected = true;
      for (auto& receiver : late) {
        signal.connect(receiver.get(), &receiver_t::on_value);
      }
    }
  };
  signal.connect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal(1);
  call_log_t expected{"a:1", "b:1"};
  for (int i = 0; i < 40; ++i) {
    expected.push_back("l" + std::to_string(i) + ":1");
  }
  EXPECT_EQ(log, expected);
  EXPECT_EQ(signal.connection_count(), 42u);
}

TEST(signal_test, disconnects_in_the_middle_keep_the_order_of_the_rest) {
  call_log_t log;
  std::vector<std::unique_ptr<receiver_t>> receivers;
  inspected_signal_t<int> signal;
  for (int i = 0; i < 12; ++i) {
    receivers.push_back(std::make_unique<receiver_t>(log, std::to_string(i)));
    signal.connect(receivers.back().get(), &receiver_t::on_value);
  }
  signal.disconnect(receivers[3].get(), &receiver_t::on_value);  // idle: the slot goes at once
  receivers[7].reset();                                          // a dying receiver leaves too
  // During an emission the first one blanks two others; the blanks go at its end.
  receivers[0]->m_action = [&](int value) {
    if (value == 1) {
      signal.disconnect(receivers[5].get(), &receiver_t::on_value);
      signal.disconnect(receivers[11].get(), &receiver_t::on_value);
    }
  };
  signal(1);
  signal(2);
  EXPECT_EQ(log, (call_log_t{"0:1", "1:1", "2:1", "4:1", "6:1", "8:1", "9:1", "10:1", "0:2", "1:2", "2:2",
                             "4:2", "6:2", "8:2", "9:2", "10:2"}));
  EXPECT_EQ(signal.nodes(), 8u);
}

TEST(signal_test, member_functions_of_every_kind_are_called_on_the_right_object) {
  struct first_base_t {
    virtual ~first_base_t() = default;
    virtual void on_virtual(int value) { log.push_back("base:" + std::to_string(value)); }
    mutable call_log_t log;
  };
  struct kinds_receiver_t : first_base_t, subscriber_base_t {
    void on_virtual(int value) override { log.push_back("derived:" + std::to_string(value)); }
    void on_long(long value) { log.push_back("long:" + std::to_string(value)); }
    int on_returning(int value) {
      log.push_back("returning:" + std::to_string(value));
      return value;
    }
    void on_const(int value) const { log.push_back("const:" + std::to_string(value)); }
    void on_noexcept(int value) noexcept { log.push_back("noexcept:" + std::to_string(value)); }
  } receiver;
  signal_t<int> signal;
  // Named through the base, the virtual call still reaches the override.
  signal.connect(&receiver, &first_base_t::on_virtual);
  signal.connect(&receiver, &kinds_receiver_t::on_long);
  signal.connect(&receiver, &kinds_receiver_t::on_returning);
  signal.connect(&receiver, &kinds_receiver_t::on_const);
  signal.connect(&receiver, &kinds_receiver_t::on_noexcept);
  signal(4);
  EXPECT_EQ(receiver.log, (call_log_t{"derived:4", "long:4", "returning:4", "const:4", "noexcept:4"}));
}

TEST(signal_test, virtual_subscriber_reached_while_its_derived_part_is_gone_calls_the_base_function) {
  struct base_receiver_t : subscriber_base_t {
    explicit base_receiver_t(call_log_t& log) : m_log(log) {}
    ~base_receiver_t() override {
      if (m_on_death) {
        m_on_death();  // the derived part is gone, the connection still stands
      }
    }
    virtual void on_value(int value) { m_log.push_back("base:" + std::to_string(value)); }
    call_log_t& m_log;
    std::function<void()> m_on_death;
  };
  struct derived_receiver_t : base_receiver_t {
    using base_receiver_t::base_receiver_t;
    void on_value(int value) override { m_log.push_back("derived:" + std::to_string(value)); }
  };
  call_log_t log;
  signal_t<int> signal;
  {
    derived_receiver_t receiver(log);
    receiver.m_on_death = [&] { signal(2); };
    signal.connect(&receiver, &base_receiver_t::on_value);
    signal(1);
  }
  EXPECT_EQ(log, (call_log_t{"derived:1", "base:2"}));
  EXPECT_EQ(signal.connection_count(), 0u);
}

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
TEST(signal_test, plain_member_functions_are_called_directly_and_the_others_through_the_caster) {
  struct mixed_receiver_t : subscriber_base_t {
    void plain(int) {}
    void plain_const(int) const {}
    virtual void overridable(int) {}
    void converting(long) {}
    int returning(int) { return 0; }
  } receiver;
  inspected_signal_t<int> signal;
  signal_t<int> chained;
  signal.connect(&receiver, &mixed_receiver_t::plain);
  signal.connect(&receiver, &mixed_receiver_t::plain_const);
  signal.connect(&chained);
  signal.connect(&receiver, &mixed_receiver_t::overridable);
  signal.connect(&receiver, &mixed_receiver_t::converting);
  signal.connect(&receiver, &mixed_receiver_t::returning);
  EXPECT_TRUE(signal.called_directly(0));
  EXPECT_TRUE(signal.called_directly(1));
  EXPECT_TRUE(signal.called_directly(2));
  EXPECT_FALSE(signal.called_directly(3));
  EXPECT_FALSE(signal.called_directly(4));
  EXPECT_FALSE(signal.called_directly(5));
  const inspected_signal_t<int> copy(signal);  // a snapshot keeps them
  for (std::size_t index = 0; index < 6; ++index) {
    EXPECT_EQ(copy.called_directly(index), signal.called_directly(index)) << index;
  }
}
#endif

TEST(signal_test, method_of_a_base_reached_through_a_derived_member_pointer) {
  struct left_t {
    virtual ~left_t() = default;
    int left_value = 1;
  };
  struct right_t {
    int right_value = 10;
    void add(int value) { right_value += value; }
  };
  struct joined_t : left_t, right_t, subscriber_base_t {
  } receiver;
  signal_t<int> signal;
  // The member pointer's class is the derived one: the call adjusts to the right_t part.
  void (joined_t::*method)(int) = &right_t::add;
  signal.connect(&receiver, method);
  signal(5);
  EXPECT_EQ(receiver.right_value, 15);
  EXPECT_EQ(receiver.left_value, 1);
}

TEST(signal_test, emissions_from_two_threads_run_one_after_the_other) {
  struct overlap_receiver_t : subscriber_base_t {
    std::atomic<int> inside{0};
    std::atomic<int> overlaps{0};
    std::atomic<int> calls{0};
    void on_value(int) {
      if (inside.fetch_add(1) != 0) {
        ++overlaps;
      }
      std::this_thread::yield();
      inside.fetch_sub(1);
      ++calls;
    }
  } receiver;
  signal_t<int> signal;
  signal.connect(&receiver, &overlap_receiver_t::on_value);
  auto emit_many = [&] {
    for (int i = 0; i < 2000; ++i) {
      signal(i);
    }
  };
  std::thread first(emit_many), second(emit_many);
  first.join();
  second.join();
  EXPECT_EQ(receiver.calls.load(), 4000);
  EXPECT_EQ(receiver.overlaps.load(), 0);
}

TEST(signal_test, subscriber_connected_again_after_a_disconnection_is_called_once) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> signal;
  for (int round = 0; round < 3; ++round) {
    signal.connect(&a, &receiver_t::on_value);
    signal.disconnect(&a, &receiver_t::on_value);
  }
  signal(1);
  EXPECT_TRUE(log.empty());
  signal.connect(&a, &receiver_t::on_other);  // another method of the same receiver
  signal(2);
  EXPECT_EQ(log, call_log_t{"a/other:2"});
  signal.disconnect(&a, &receiver_t::on_other);
  EXPECT_EQ(signal.connection_count(), 0u);
}

TEST(signal_test, subscribers_taking_turns_on_a_signal_are_each_called_while_connected) {
  call_log_t log;
  receiver_t a(log, "a"), b(log, "b");
  signal_t<int> signal;
  signal.connect(&a, &receiver_t::on_value);
  signal.disconnect(&a, &receiver_t::on_value);
  signal.connect(&b, &receiver_t::on_value);
  signal.disconnect(&b, &receiver_t::on_value);
  signal.connect(&a, &receiver_t::on_value);
  signal(1);
  signal.connect(&b, &receiver_t::on_value);
  signal(2);
  EXPECT_EQ(log, (call_log_t{"a:1", "a:2", "b:2"}));
}

TEST(signal_test, disconnected_subscriber_that_dies_is_forgotten_by_the_signal) {
  call_log_t log;
  signal_t<int> signal;
  {
    receiver_t a(log, "a");
    signal.connect(&a, &receiver_t::on_value);
    signal.disconnect(&a, &receiver_t::on_value);
  }
  receiver_t b(log, "b");  // may take the dead one's place in memory
  signal.connect(&b, &receiver_t::on_value);
  signal(1);
  EXPECT_EQ(log, call_log_t{"b:1"});
  EXPECT_EQ(signal.connection_count(), 1u);
}  // ASan sees an entry used after its subscriber or its signal died

TEST(signal_test, signal_that_dies_after_a_disconnection_leaves_the_subscriber_clean) {
  call_log_t log;
  receiver_t a(log, "a");
  {
    signal_t<int> first;
    first.connect(&a, &receiver_t::on_value);
    first.disconnect(&a, &receiver_t::on_value);
    const signal_t<int> copy(first);  // a disconnected subscriber isn't copied
    EXPECT_EQ(copy.connection_count(), 0u);
  }
  signal_t<int> second;
  second.connect(&a, &receiver_t::on_value);
  second(2);
  EXPECT_EQ(log, call_log_t{"a:2"});
}

TEST(signal_test, subscriber_that_left_its_signals_after_a_disconnection_joins_again) {
  call_log_t log;
  receiver_t a(log, "a");
  signal_t<int> first, second;
  first.connect(&a, &receiver_t::on_value);
  second.connect(&a, &receiver_t::on_value);
  first.disconnect(&a, &receiver_t::on_value);
  a.leave();
  first(1);
  second(2);
  EXPECT_TRUE(log.empty());
  first.connect(&a, &receiver_t::on_value);
  first(3);
  EXPECT_EQ(log, call_log_t{"a:3"});
}

TEST(signal_test, disconnected_subscriber_dies_while_its_old_signal_emits_on_another_thread) {
  struct blocking_receiver_t : subscriber_base_t {
    std::mutex mutex;
    std::condition_variable changed;
    bool inside = false;
    bool go_on = false;
    void on_value(int) {
      std::unique_lock<std::mutex> lock(mutex);
      inside = true;
      changed.notify_all();
      changed.wait(lock, [&] { return go_on; });
    }
  } blocker;
  call_log_t log;
  signal_t<int> signal;
  signal.connect(&blocker, &blocking_receiver_t::on_value);
  auto a = std::make_unique<receiver_t>(log, "a");
  signal.connect(a.get(), &receiver_t::on_value);
  signal.disconnect(a.get(), &receiver_t::on_value);
  std::thread emitter([&] { signal(1); });
  {
    std::unique_lock<std::mutex> lock(blocker.mutex);
    blocker.changed.wait(lock, [&] { return blocker.inside; });
  }
  // The emission holds the signal's mutex; a subscriber that already left doesn't wait.
  bool died = false;
  std::thread killer([&] {
    a.reset();
    std::lock_guard<std::mutex> lock(blocker.mutex);
    died = true;
    blocker.changed.notify_all();
  });
  bool died_during_emission = false;
  {
    std::unique_lock<std::mutex> lock(blocker.mutex);
    died_during_emission = blocker.changed.wait_for(lock, std::chrono::seconds(10), [&] { return died; });
    blocker.go_on = true;
  }
  blocker.changed.notify_all();
  emitter.join();
  killer.join();
  EXPECT_TRUE(died_during_emission);
  EXPECT_TRUE(log.empty());
}

}  // namespace
