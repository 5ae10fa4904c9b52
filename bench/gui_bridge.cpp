// Deliveries per second from worker threads to the GUI thread, end to end: from the first
// post until the GUI thread's running event loop has delivered them all. Both sides do the
// same work on the GUI thread, an emission of the signal to its subscriber: PostSignal
// posts a snapshot of the signal, CallAfter a lambda that emits it.
// Needs a display: run under `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "ratio_reporter.h"
#include "wx_session.h"

#include <plaxi1/tasks.h>

#include <korvat2/signal.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <thread>
#include <vector>

namespace {

constexpr int items_per_iteration = 20000;

// Counts deliveries and ends the GUI thread's loop at the last one of a round.
class counting_subscriber_t : public korvat2::subscriber_base_t {
 public:
  void on_emit(int) {
    if (++m_count == m_target) {
      wxEventLoopBase::GetActive()->Exit();
    }
  }
  long m_count = 0;
  long m_target = 0;
};

// Starts `threads` workers that each make their share of the posts with `post`, and runs
// the GUI thread's loop until the subscriber has seen them all.
template <class Post>
void post_and_deliver(int threads, counting_subscriber_t& subscriber, Post post) {
  subscriber.m_target = subscriber.m_count + items_per_iteration;
  std::vector<std::thread> workers;
  const int share = items_per_iteration / threads;
  for (int self = 0; self < threads; ++self) {
    workers.emplace_back([share, &post] {
      for (int i = 0; i < share; ++i) {
        post(i);
      }
    });
  }
  wxGUIEventLoop loop;
  loop.Run();
  for (std::thread& worker : workers) {
    worker.join();
  }
}

void post_signal(benchmark::State& state) {
  const int threads = static_cast<int>(state.range(0));
  korvat2::signal_t<int> signal;
  counting_subscriber_t subscriber;
  signal.connect(&subscriber, &counting_subscriber_t::on_emit);
  for (auto _ : state) {
    post_and_deliver(threads, subscriber, [&signal](int value) { plaxi1::tasks::PostSignal(signal, value); });
  }
  state.SetItemsProcessed(state.iterations() * items_per_iteration);
}

void call_after(benchmark::State& state) {
  const int threads = static_cast<int>(state.range(0));
  korvat2::signal_t<int> signal;
  counting_subscriber_t subscriber;
  signal.connect(&subscriber, &counting_subscriber_t::on_emit);
  for (auto _ : state) {
    post_and_deliver(threads, subscriber,
                     [&signal](int value) { wxTheApp->CallAfter([&signal, value] { signal(value); }); });
  }
  state.SetItemsProcessed(state.iterations() * items_per_iteration);
}

void register_all() {
  for (const int threads : {1, 4}) {
    // Wall time: the workers post while the GUI thread delivers. The CPU time column
    // counts the whole process, so the ratios compare the work that both threads did.
    benchmark::RegisterBenchmark("bridge/post_signal", post_signal)
        ->Arg(threads)
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("bridge/call_after", call_after)
        ->Arg(threads)
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
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
  return bench_support::run_with_ratios(argc, argv, "post_signal", {"call_after"});
}
