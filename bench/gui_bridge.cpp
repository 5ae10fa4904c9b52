// Deliveries per second from worker threads to the GUI thread, end to end: from the first
// post until the GUI thread, pumping its loop, has delivered them all. PostSignal to a
// subscriber against wxTheApp->CallAfter with a lambda, both counting on the GUI thread.
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

class counting_subscriber_t : public korvat2::subscriber_base_t {
 public:
  void on_emit(int) { ++m_count; }
  long m_count = 0;
};

// Starts `threads` workers that each make their share of the posts with `post`, and runs
// the GUI thread's loop until `delivered` reaches the total.
template <class Post>
void post_and_deliver(int threads, const long& delivered, long start, Post post) {
  std::vector<std::thread> workers;
  const int share = items_per_iteration / threads;
  for (int self = 0; self < threads; ++self) {
    workers.emplace_back([share, &post] {
      for (int i = 0; i < share; ++i) {
        post(i);
      }
    });
  }
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  while (delivered < start + items_per_iteration) {
    wxTheApp->ProcessPendingEvents();
    while (loop->Pending()) {
      loop->Dispatch();
    }
  }
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
    post_and_deliver(threads, subscriber.m_count, subscriber.m_count,
                     [&signal](int value) { plaxi1::tasks::PostSignal(signal, value); });
  }
  state.SetItemsProcessed(state.iterations() * items_per_iteration);
}

void call_after(benchmark::State& state) {
  const int threads = static_cast<int>(state.range(0));
  long count = 0;
  for (auto _ : state) {
    post_and_deliver(threads, count, count, [&count](int) { wxTheApp->CallAfter([&count] { ++count; }); });
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
  // Pending events and CallAfter calls are delivered by an active loop.
  wxGUIEventLoop loop;
  wxEventLoopActivator activate(&loop);
  register_all();
  return bench_support::run_with_ratios(argc, argv, "post_signal", {"call_after"});
}
