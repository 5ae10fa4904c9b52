// Deliveries per second from worker threads to the GUI thread, end to end: from the first
// post until the GUI thread's running event loop has delivered them all. Both sides do the
// same work on the GUI thread, an emission of the signal to its subscriber: PostSignal
// posts a snapshot of the signal, CallAfter a lambda that emits it. Two wirings: all
// workers on one signal and subscriber, the worst case for their shared locks, and one
// pair per worker, as the library's progress entries are wired.
// Needs a display: run under `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "ratio_reporter.h"
#include "wx_session.h"

#include <plaxi1/tasks.h>

#include <korvat2/signal.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int items_per_iteration = 20000;

// Counts the deliveries of a round over all its subscribers and ends the GUI thread's loop
// at the last one.
struct round_t {
  long count = 0;
  long target = 0;
};

class counting_subscriber_t : public korvat2::subscriber_base_t {
 public:
  explicit counting_subscriber_t(round_t& round) : m_round(round) {}
  void on_emit(int) {
    if (++m_round.count == m_round.target) {
      wxEventLoopBase::GetActive()->Exit();
    }
  }

 private:
  round_t& m_round;
};

// The signals that the workers post and their subscribers on the GUI thread: one pair that
// every worker shares, or one pair per worker, as each progress entry of the library has.
class wiring_t {
 public:
  wiring_t(int pairs, round_t& round) {
    for (int pair = 0; pair < pairs; ++pair) {
      m_signals.push_back(std::make_unique<korvat2::signal_t<int>>());
      m_subscribers.push_back(std::make_unique<counting_subscriber_t>(round));
      m_signals.back()->connect(m_subscribers.back().get(), &counting_subscriber_t::on_emit);
    }
  }
  korvat2::signal_t<int>& signal_of(int worker) { return *m_signals[worker % m_signals.size()]; }

 private:
  std::vector<std::unique_ptr<korvat2::signal_t<int>>> m_signals;
  std::vector<std::unique_ptr<counting_subscriber_t>> m_subscribers;
};

// Starts `threads` workers that each make their share of the posts with `post`, and runs
// the GUI thread's loop until the subscribers have seen them all.
template <class Post>
void post_and_deliver(int threads, round_t& round, wiring_t& wiring, Post post) {
  round.target = round.count + items_per_iteration;
  std::vector<std::thread> workers;
  const int share = items_per_iteration / threads;
  for (int self = 0; self < threads; ++self) {
    workers.emplace_back([share, &post, signal = &wiring.signal_of(self)] {
      for (int i = 0; i < share; ++i) {
        post(*signal, i);
      }
    });
  }
  wxGUIEventLoop loop;
  loop.Run();
  for (std::thread& worker : workers) {
    worker.join();
  }
}

template <class Post>
void run_rounds(benchmark::State& state, bool own_pairs, Post post) {
  const int threads = static_cast<int>(state.range(0));
  round_t round;
  wiring_t wiring(own_pairs ? threads : 1, round);
  for (auto _ : state) {
    post_and_deliver(threads, round, wiring, post);
  }
  state.SetItemsProcessed(state.iterations() * items_per_iteration);
}

void post_signal(benchmark::State& state, bool own_pairs) {
  run_rounds(state, own_pairs,
             [](korvat2::signal_t<int>& signal, int value) { plaxi1::tasks::PostSignal(signal, value); });
}

void call_after(benchmark::State& state, bool own_pairs) {
  run_rounds(state, own_pairs, [](korvat2::signal_t<int>& signal, int value) {
    wxTheApp->CallAfter([&signal, value] { signal(value); });
  });
}

void register_all() {
  // "bridge": every worker posts the same signal to the same subscriber, the worst case;
  // "bridge_own": each worker has its signal and subscriber, as progress entries do.
  for (const bool own_pairs : {false, true}) {
    const std::string scenario = own_pairs ? "bridge_own/" : "bridge/";
    for (const int threads : {1, 4}) {
      if (own_pairs && threads == 1) {
        continue;  // the same as the shared case
      }
      // Wall time: the workers post while the GUI thread delivers; the ratios compare
      // deliveries per second. The CPU time column counts the whole process.
      benchmark::RegisterBenchmark((scenario + "post_signal").c_str(), post_signal, own_pairs)
          ->Arg(threads)
          ->UseRealTime()
          ->MeasureProcessCPUTime()
          ->Unit(benchmark::kMillisecond);
      benchmark::RegisterBenchmark((scenario + "call_after").c_str(), call_after, own_pairs)
          ->Arg(threads)
          ->UseRealTime()
          ->MeasureProcessCPUTime()
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  // wx gets no arguments: the base application would reject the benchmark's options.
  int wx_argc = 1;
  char* wx_argv[] = {argv[0], nullptr};
  const bench_support::wx_session_t session(wx_argc, wx_argv);
  if (!session.ok()) {
    return 1;
  }
  register_all();
  return bench_support::run_with_ratios(argc, argv, "post_signal", {"call_after"},
                                        bench_support::time_basis_t::wall);
}
