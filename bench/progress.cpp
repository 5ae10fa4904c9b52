// Cost of reporting progress from a worker: a call that doesn't move the gauge (the
// common case, which must stay a few arithmetic operations) and one that does, which posts
// a task to the GUI thread. Posting needs the wx application, whose loop is run between
// batches so that the scheduler's queue doesn't grow. Needs a display: run under
// `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "wx_session.h"

#include <tamsel3/progress.h>

#include <plaxi1/tasks.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <memory>

namespace {

korvat2::intrusive_pointer_t<plaxi1::tasks::Scheduler> scheduler() {
  return plaxi1::tasks::Scheduler::Get(
      korvat2::intrusive_pointer_t<plaxi1::tasks::ISchedulerStatusCallback>());
}

// Delivers what was posted, so that each batch starts with an empty queue. False when the
// queue didn't empty within a bound of rounds.
bool deliver_posts() {
  wxEventLoop loop;
  wxEventLoopActivator activate(&loop);
  for (int round = 0; scheduler()->GetPendingCount() > 0; ++round) {
    if (round == 100000) {
      return false;
    }
    while (loop.Pending()) {
      loop.Dispatch();
    }
    loop.ProcessIdle();
    wxTheApp->ProcessPendingEvents();
  }
  return true;
}

void non_stepping(benchmark::State& state) {
  tamsel3::progress_impl_t progress;
  progress.start("bench", 1e15);  // a step would take 1.25e12 calls
  for (auto _ : state) {
    progress.internalProgressed(1.0);
    benchmark::ClobberMemory();
  }
  // The loop has ended, and the timer with it.
  if (!deliver_posts()) {
    state.SkipWithError("posts not delivered");
  }
}

void stepping(benchmark::State& state) {
  constexpr int batch = 800;  // one run: each call moves the gauge by one
  for (auto _ : state) {
    state.PauseTiming();
    auto progress = std::make_unique<tamsel3::progress_impl_t>();
    progress->start("bench", batch);
    state.ResumeTiming();
    for (int i = 0; i < batch; ++i) {
      progress->internalProgressed(1.0);
    }
    state.PauseTiming();
    progress.reset();
    if (!deliver_posts()) {
      state.SkipWithError("posts not delivered");
      state.ResumeTiming();
      break;
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * batch);
}

BENCHMARK(non_stepping);
BENCHMARK(stepping)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const bench_support::wx_session_t session(argc, argv);
  if (!session.ok()) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  deliver_posts();
  return 0;
}
