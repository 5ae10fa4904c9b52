// Emission, connection and self-disconnection of korvat2's signals beside boost::signals2
// and libsigc++ 3, in one run.
#include "ratio_reporter.h"

#include <korvat2/signal.h>

#include <benchmark/benchmark.h>
#include <sigc++/sigc++.h>
#include <boost/signals2.hpp>

#include <memory>
#include <vector>

namespace {

// Every receiver does the same small work.
struct korvat2_receiver_t : korvat2::subscriber_base_t {
  long sum = 0;
  void on_value(int value) { benchmark::DoNotOptimize(sum += value); }
};
struct sigc_receiver_t : sigc::trackable {
  long sum = 0;
  void on_value(int value) { benchmark::DoNotOptimize(sum += value); }
};
struct boost_receiver_t {
  long sum = 0;
  void on_value(int value) { benchmark::DoNotOptimize(sum += value); }
};

void emit_korvat2(benchmark::State& state) {
  std::vector<korvat2_receiver_t> receivers(static_cast<std::size_t>(state.range(0)));
  korvat2::signal_t<int> signal;
  for (auto& receiver : receivers) {
    signal.connect(&receiver, &korvat2_receiver_t::on_value);
  }
  for (auto _ : state) {
    signal(1);
  }
}

void emit_sigc(benchmark::State& state) {
  std::vector<sigc_receiver_t> receivers(static_cast<std::size_t>(state.range(0)));
  sigc::signal<void(int)> signal;
  for (auto& receiver : receivers) {
    signal.connect(sigc::mem_fun(receiver, &sigc_receiver_t::on_value));
  }
  for (auto _ : state) {
    signal(1);
  }
}

void emit_boost(benchmark::State& state) {
  std::vector<boost_receiver_t> receivers(static_cast<std::size_t>(state.range(0)));
  boost::signals2::signal<void(int)> signal;
  for (auto& receiver : receivers) {
    signal.connect([&receiver](int value) { receiver.on_value(value); });
  }
  for (auto _ : state) {
    signal(1);
  }
}

void connect_disconnect_korvat2(benchmark::State& state) {
  korvat2_receiver_t receiver;
  korvat2::signal_t<int> signal;
  for (auto _ : state) {
    signal.connect(&receiver, &korvat2_receiver_t::on_value);
    signal.disconnect(&receiver, &korvat2_receiver_t::on_value);
  }
}

void connect_disconnect_sigc(benchmark::State& state) {
  sigc_receiver_t receiver;
  sigc::signal<void(int)> signal;
  for (auto _ : state) {
    sigc::connection connection = signal.connect(sigc::mem_fun(receiver, &sigc_receiver_t::on_value));
    connection.disconnect();
  }
}

void connect_disconnect_boost(benchmark::State& state) {
  boost_receiver_t receiver;
  boost::signals2::signal<void(int)> signal;
  for (auto _ : state) {
    boost::signals2::connection connection =
        signal.connect([&receiver](int value) { receiver.on_value(value); });
    connection.disconnect();
  }
}

// One subscriber that disconnects itself while the signal calls it, behind seven that stay.
struct korvat2_leaver_t : korvat2::subscriber_base_t {
  korvat2::signal_t<int>* signal = nullptr;
  void on_value(int) { signal->disconnect(this, &korvat2_leaver_t::on_value); }
};

void self_disconnect_korvat2(benchmark::State& state) {
  std::vector<korvat2_receiver_t> stay(7);
  korvat2::signal_t<int> signal;
  for (auto& receiver : stay) {
    signal.connect(&receiver, &korvat2_receiver_t::on_value);
  }
  korvat2_leaver_t leaver;
  leaver.signal = &signal;
  for (auto _ : state) {
    signal.connect(&leaver, &korvat2_leaver_t::on_value);
    signal(1);
  }
}

struct sigc_leaver_t : sigc::trackable {
  sigc::connection connection;
  void on_value(int) { connection.disconnect(); }
};

void self_disconnect_sigc(benchmark::State& state) {
  std::vector<sigc_receiver_t> stay(7);
  sigc::signal<void(int)> signal;
  for (auto& receiver : stay) {
    signal.connect(sigc::mem_fun(receiver, &sigc_receiver_t::on_value));
  }
  sigc_leaver_t leaver;
  for (auto _ : state) {
    leaver.connection = signal.connect(sigc::mem_fun(leaver, &sigc_leaver_t::on_value));
    signal(1);
  }
}

void self_disconnect_boost(benchmark::State& state) {
  std::vector<boost_receiver_t> stay(7);
  boost::signals2::signal<void(int)> signal;
  for (auto& receiver : stay) {
    signal.connect([&receiver](int value) { receiver.on_value(value); });
  }
  using slot_t = boost::signals2::signal<void(int)>::extended_slot_type;
  for (auto _ : state) {
    signal.connect_extended(slot_t([](const boost::signals2::connection& self, int) { self.disconnect(); }));
    signal(1);
  }
}

}  // namespace

BENCHMARK(emit_korvat2)->Name("emit/korvat2")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(emit_sigc)->Name("emit/libsigc++")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(emit_boost)->Name("emit/boost.signals2")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(connect_disconnect_korvat2)->Name("connect_disconnect/korvat2");
BENCHMARK(connect_disconnect_sigc)->Name("connect_disconnect/libsigc++");
BENCHMARK(connect_disconnect_boost)->Name("connect_disconnect/boost.signals2");
BENCHMARK(self_disconnect_korvat2)->Name("emit_self_disconnect_of_8/korvat2");
BENCHMARK(self_disconnect_sigc)->Name("emit_self_disconnect_of_8/libsigc++");
BENCHMARK(self_disconnect_boost)->Name("emit_self_disconnect_of_8/boost.signals2");

int main(int argc, char** argv) {
  return bench_support::run_with_ratios(argc, argv, "korvat2", {"libsigc++", "boost.signals2"});
}
