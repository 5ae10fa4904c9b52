// Several threads connect, disconnect, copy, emit and destroy subscribers and signals that
// they share, for a bounded number of rounds.
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>

#include "assert_recorder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace {

using korvat2::intrusive_pointer_impl_t;
using korvat2::intrusive_pointer_t;
using korvat2::signal_t;
using korvat2::subscriber_base_t;

constexpr int thread_count = 4;
constexpr int rounds = 20000;
constexpr int slot_count = 4;
// Chained signals hang only behind these, which are never copied: a snapshot would keep
// calling a chained signal that its owner destroys, and no caller may do that.
constexpr int chain_slot_count = 2;
constexpr int max_subscribers = thread_count * rounds + thread_count + 16;

// Life states of every subscriber ever made, by id; a call to a dying or dead one is a
// failure.
enum life_t : int { unborn = 0, alive = 1, dying = 2, dead = 3 };
std::array<std::atomic<int>, max_subscribers> g_life{};
std::atomic<int> g_next_id{0};
std::atomic<int> g_calls_after_death{0};
std::atomic<long> g_calls{0};

class counting_receiver_t : public subscriber_base_t {
 public:
  counting_receiver_t() : m_id(g_next_id++) { g_life[m_id] = alive; }
  // Its signals are emitted on other threads: it leaves them before it stops being whole.
  ~counting_receiver_t() override {
    disconnect_all_signals();
    g_life[m_id] = dying;
  }
  int id() const { return m_id; }

  void on_emit(int, int) {
    if (g_life[m_id].load() != alive) {
      ++g_calls_after_death;
    }
    ++g_calls;
  }

 private:
  const int m_id;
};

void destroy(std::unique_ptr<counting_receiver_t> receiver) {
  const int id = receiver->id();
  receiver.reset();
  g_life[id] = dead;
}

// A receiver that is never destroyed during the run: every emission of the anchor must
// reach it exactly once, in each emitter's order.
class stable_receiver_t : public subscriber_base_t {
 public:
  void on_emit(int emitter, int sequence) {
    // Emissions of one signal run one after the other, so no lock is needed here.
    if (sequence != m_last[emitter] + 1) {
      ++m_out_of_order;
    }
    m_last[emitter] = sequence;
    ++m_received[emitter];
  }
  std::array<int, thread_count> m_last{-1, -1, -1, -1};
  std::array<int, thread_count> m_received{};
  int m_out_of_order = 0;
};

struct shared_signal_t : intrusive_pointer_impl_t {
  signal_t<int, int> signal;
};

class slots_t {
 public:
  explicit slots_t(int count) : m_slots(static_cast<std::size_t>(count)) {
    for (auto& slot : m_slots) {
      slot = new shared_signal_t;
    }
  }
  intrusive_pointer_t<shared_signal_t> take(int index) {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_slots[index];
  }
  // The old signal dies with its last user, maybe on another thread.
  void replace(int index) {
    intrusive_pointer_t<shared_signal_t> fresh(new shared_signal_t);
    intrusive_pointer_t<shared_signal_t> old;
    {
      std::lock_guard<std::mutex> lock(m_mutex);
      old = m_slots[index];
      m_slots[index] = fresh;
    }
  }

 private:
  std::mutex m_mutex;
  std::vector<intrusive_pointer_t<shared_signal_t>> m_slots;
};

// A subscriber of this thread with the signal it is connected to, kept alive by the record.
struct connection_record_t {
  std::unique_ptr<counting_receiver_t> receiver;
  intrusive_pointer_t<shared_signal_t> signal;
};

// A private signal chained behind a shared one, with its own subscriber.
struct chain_record_t {
  intrusive_pointer_t<shared_signal_t> source;
  std::unique_ptr<signal_t<int, int>> link;
  std::unique_ptr<counting_receiver_t> receiver;
};

void worker(int self, slots_t& slots, slots_t& chain_slots, signal_t<int, int>& anchor,
            int& anchor_emissions) {
  std::mt19937 random(1234u + static_cast<unsigned>(self));
  std::vector<connection_record_t> connections;
  std::vector<chain_record_t> chains;
  int sequence = 0;
  for (int round = 0; round < rounds; ++round) {
    const int slot = static_cast<int>(random() % slot_count);
    switch (random() % 9) {
      case 0:
      case 1: {
        anchor(self, anchor_emissions++);
        break;
      }
      case 2: {
        intrusive_pointer_t<shared_signal_t> shared = slots.take(slot);
        shared->signal(self, sequence++);
        break;
      }
      case 3: {
        connection_record_t record{std::make_unique<counting_receiver_t>(), slots.take(slot)};
        record.signal->signal.connect(record.receiver.get(), &counting_receiver_t::on_emit);
        connections.push_back(std::move(record));
        break;
      }
      case 4: {
        if (!connections.empty()) {
          connection_record_t& record = connections[random() % connections.size()];
          if (record.receiver && record.signal) {
            record.signal->signal.disconnect(record.receiver.get(), &counting_receiver_t::on_emit);
            record.signal.reset();
          }
        }
        break;
      }
      case 5: {
        if (!connections.empty()) {
          const std::size_t index = random() % connections.size();
          destroy(std::move(connections[index].receiver));
          connections.erase(connections.begin() + static_cast<std::ptrdiff_t>(index));
        }
        break;
      }
      case 6: {
        slots.replace(slot);
        if (slot < chain_slot_count) {
          chain_slots.take(slot)->signal(self, sequence++);
        }
        break;
      }
      case 7: {
        // A snapshot, as a posted emission makes one: copy, emit, destroy.
        intrusive_pointer_t<shared_signal_t> shared = slots.take(slot);
        signal_t<int, int> snapshot(shared->signal);
        shared.reset();
        snapshot(self, sequence++);
        break;
      }
      default: {
        if (chains.size() < 4) {
          chain_record_t chain{chain_slots.take(slot % chain_slot_count),
                               std::make_unique<signal_t<int, int>>(),
                               std::make_unique<counting_receiver_t>()};
          chain.link->connect(chain.receiver.get(), &counting_receiver_t::on_emit);
          chain.source->signal.connect(chain.link.get());
          chains.push_back(std::move(chain));
        } else {
          chain_record_t& chain = chains.front();
          chain.source->signal.disconnect(chain.link.get());
          chain.link.reset();
          destroy(std::move(chain.receiver));
          chains.erase(chains.begin());
        }
        break;
      }
    }
  }
  for (chain_record_t& chain : chains) {
    chain.source->signal.disconnect(chain.link.get());
    chain.link.reset();
    destroy(std::move(chain.receiver));
  }
  for (connection_record_t& record : connections) {
    destroy(std::move(record.receiver));
  }
}

TEST(signal_stress_test, no_call_after_death_and_every_anchor_emission_once) {
  slots_t slots(slot_count);
  slots_t chain_slots(chain_slot_count);
  signal_t<int, int> anchor;
  std::array<stable_receiver_t, thread_count> stable;
  for (stable_receiver_t& receiver : stable) {
    anchor.connect(&receiver, &stable_receiver_t::on_emit);
  }
  std::array<int, thread_count> anchor_emissions{};
  std::vector<std::thread> threads;
  for (int self = 0; self < thread_count; ++self) {
    threads.emplace_back(worker, self, std::ref(slots), std::ref(chain_slots), std::ref(anchor),
                         std::ref(anchor_emissions[self]));
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(g_calls_after_death.load(), 0);
  EXPECT_GT(g_calls.load(), 0);
  for (const stable_receiver_t& receiver : stable) {
    EXPECT_EQ(receiver.m_out_of_order, 0);
    for (int emitter = 0; emitter < thread_count; ++emitter) {
      EXPECT_EQ(receiver.m_received[emitter], anchor_emissions[emitter]) << "emitter " << emitter;
    }
  }
  EXPECT_EQ(anchor.connection_count(), static_cast<std::size_t>(thread_count));
}

// Two threads emit signals that two others destroy in the middle of the emission: a
// subscriber hands the signal over and waits until it is taken, so the emission has
// surely begun when the signal dies, and goes on while it dies.
constexpr int pair_count = thread_count / 2;
constexpr int emissions_per_pair = 100000 / pair_count;

// Where an emitter hands its signal to its destroyer.
class handoff_t {
 public:
  void offer(signal_t<int, int>* signal) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_offered = signal;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_offered == nullptr; });
  }
  // The next signal offered, or null once the emitter is done.
  signal_t<int, int>* take() {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_offered != nullptr || m_done; });
    signal_t<int, int>* taken = std::exchange(m_offered, nullptr);
    m_changed.notify_all();
    return taken;
  }
  // Told by the destroyer once the signal it took is gone.
  void destroyed() {
    std::lock_guard<std::mutex> lock(m_mutex);
    ++m_destroyed;
    m_changed.notify_all();
  }
  void wait_destroyed(int count) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this, count] { return m_destroyed >= count; });
  }
  void finish() {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_done = true;
    m_changed.notify_all();
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  signal_t<int, int>* m_offered = nullptr;
  int m_destroyed = 0;
  bool m_done = false;
};

class offering_receiver_t : public subscriber_base_t {
 public:
  explicit offering_receiver_t(handoff_t& handoff) : m_handoff(handoff) {}
  ~offering_receiver_t() override { disconnect_all_signals(); }

  void on_emit(int, int) { m_handoff.offer(m_current); }
  // Connected behind on_emit: reached by every emission that has begun.
  void on_after(int, int) { ++m_after_calls; }

  signal_t<int, int>* m_current = nullptr;
  int m_after_calls = 0;

 private:
  handoff_t& m_handoff;
};

// Emits each new signal itself, or, when `upstream` is given, chains it behind `upstream`,
// which already calls the receiver's on_emit, and emits that.
void emit_and_hand_over(offering_receiver_t& receiver, handoff_t& handoff, signal_t<int, int>* upstream) {
  for (int round = 0; round < emissions_per_pair; ++round) {
    auto* signal = new signal_t<int, int>;
    if (!upstream) {
      signal->connect(&receiver, &offering_receiver_t::on_emit);
    }
    signal->connect(&receiver, &offering_receiver_t::on_after);
    receiver.m_current = signal;
    if (upstream) {
      upstream->connect(signal);
      (*upstream)(0, round);  // the chained signal dies on the other thread meanwhile
    } else {
      (*signal)(0, round);  // dies on the other thread meanwhile
    }
    if (receiver.m_after_calls != round + 1) {
      ADD_FAILURE() << "emission " << round << " stopped when its signal died on another thread";
      break;
    }
    // A dying chained signal waits for the emission of its source, so the next emission
    // of that source must not wait for the destroyer in turn.
    handoff.wait_destroyed(round + 1);
  }
  handoff.finish();
}

void take_and_destroy(handoff_t& handoff) {
  while (signal_t<int, int>* signal = handoff.take()) {
    delete signal;
    handoff.destroyed();
  }
}

void destroy_while_emitting(bool chained) {
  auto handoffs = std::make_unique<std::array<handoff_t, pair_count>>();
  auto upstreams = std::make_unique<std::array<signal_t<int, int>, pair_count>>();
  std::vector<std::unique_ptr<offering_receiver_t>> receivers;
  std::vector<std::thread> emitters;
  std::vector<std::thread> destroyers;
  for (int pair = 0; pair < pair_count; ++pair) {
    handoff_t& handoff = (*handoffs)[pair];
    receivers.push_back(std::make_unique<offering_receiver_t>(handoff));
    signal_t<int, int>* upstream = chained ? &(*upstreams)[pair] : nullptr;
    if (upstream) {
      upstream->connect(receivers.back().get(), &offering_receiver_t::on_emit);
    }
    emitters.emplace_back(emit_and_hand_over, std::ref(*receivers.back()), std::ref(handoff), upstream);
    destroyers.emplace_back(take_and_destroy, std::ref(handoff));
  }
  for (std::thread& emitter : emitters) {
    emitter.join();
  }
  bool complete = true;
  for (const auto& receiver : receivers) {
    // An emission that had begun ran to its end, though its signal died meanwhile.
    EXPECT_EQ(receiver->m_after_calls, emissions_per_pair);
    complete = complete && receiver->m_after_calls == emissions_per_pair;
  }
  for (std::thread& destroyer : destroyers) {
    // After a failure a destroyer may wait forever on a mutex that the emitter freed.
    complete ? destroyer.join() : destroyer.detach();
  }
  if (!complete) {
    // What a destroyer left waiting may still touch is left alone.
    handoffs.release();   // NOLINT(bugprone-unused-return-value)
    upstreams.release();  // NOLINT(bugprone-unused-return-value)
    for (auto& receiver : receivers) {
      receiver.release();  // NOLINT(bugprone-unused-return-value)
    }
  }
}

TEST(signal_stress_test, destroyed_on_one_thread_while_another_emits_it) { destroy_while_emitting(false); }

// The chained signal dies while the one it hangs behind is emitted, before its turn.
TEST(signal_stress_test, chained_signal_destroyed_while_another_thread_emits_its_source) {
  destroy_while_emitting(true);
}

// One receiver is connected to a signal and taken out again and again on one thread, its
// signals now and then replaced by new ones, while another thread makes it leave all its
// signals and a third copies and emits them.
class leaving_receiver_t : public subscriber_base_t {
 public:
  ~leaving_receiver_t() override { disconnect_all_signals(); }
  void leave() { disconnect_all_signals(); }
  void on_emit(int, int) { ++m_calls; }
  std::atomic<long> m_calls{0};
};

constexpr int leave_rounds = 50000;

TEST(signal_stress_test, receiver_connected_again_and_again_while_it_leaves_on_another_thread) {
  // A disconnection that comes after the receiver left reports an unknown connection.
  const test_support::assert_recorder_t asserts;
  leaving_receiver_t receiver;
  std::mutex shared_mutex;
  auto shared = std::make_shared<signal_t<int, int>>();
  std::atomic<bool> done{false};
  long emitted_while_connected = 0;
  std::thread connector([&] {
    for (int round = 0; round < leave_rounds; ++round) {
      std::shared_ptr<signal_t<int, int>> signal;
      {
        std::lock_guard<std::mutex> lock(shared_mutex);
        if (round % 64 == 0) {
          shared = std::make_shared<signal_t<int, int>>();  // the old one dies with its users
        }
        signal = shared;
      }
      signal->connect(&receiver, &leaving_receiver_t::on_emit);
      if (round % 4 == 0) {
        (*signal)(0, round);
        ++emitted_while_connected;
      }
      signal->disconnect(&receiver, &leaving_receiver_t::on_emit);
    }
    done = true;
  });
  std::thread leaver([&] {
    while (!done) {
      receiver.leave();
    }
  });
  std::thread copier([&] {
    while (!done) {
      std::shared_ptr<signal_t<int, int>> signal;
      {
        std::lock_guard<std::mutex> lock(shared_mutex);
        signal = shared;
      }
      signal_t<int, int> snapshot(*signal);
      snapshot(1, 0);
    }
  });
  connector.join();
  leaver.join();
  copier.join();
  EXPECT_LE(asserts.count(), static_cast<std::size_t>(leave_rounds));
  // Whatever happened, the receiver and the signals agree: it is called exactly while it
  // is connected.
  const long before = receiver.m_calls.load();
  signal_t<int, int>& last = *shared;
  last(2, 0);
  EXPECT_EQ(receiver.m_calls.load(), before);
  last.connect(&receiver, &leaving_receiver_t::on_emit);
  last(2, 1);
  EXPECT_EQ(receiver.m_calls.load(), before + 1);
  receiver.leave();
  last(2, 2);
  EXPECT_EQ(receiver.m_calls.load(), before + 1);
  EXPECT_EQ(last.connection_count(), 0u);
  EXPECT_GT(emitted_while_connected, 0);
}

}  // namespace
