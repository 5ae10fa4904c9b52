// Time from show_modal to the dialog's first paint: the first show of a new dialog
// (loading its layout) and a second show of the same dialog. Needs a display: run under
// `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "wx_session.h"

#include <tamsel3/dialog_base.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/init.h>

#include <chrono>
#include <memory>

namespace {

using clock_type = std::chrono::steady_clock;

class timed_dialog_t : public tamsel3::dialog_base_t {
 public:
  timed_dialog_t() {
    m_object_name = "dlg.frame_test";
    Bind(wxEVT_PAINT, &timed_dialog_t::on_paint, this);
  }

  // Shows the dialog modally and returns the seconds until its first paint.
  double time_to_first_paint() {
    m_painted = false;
    m_start = clock_type::now();
    show_modal(nullptr);
    return std::chrono::duration<double>(m_paint_time - m_start).count();
  }

 private:
  void on_paint(wxPaintEvent& event) {
    event.Skip();
    if (!m_painted) {
      m_painted = true;
      m_paint_time = clock_type::now();
      CallAfter([this] { EndModal(wxID_OK); });
    }
  }

  bool m_painted = false;
  clock_type::time_point m_start;
  clock_type::time_point m_paint_time;
};

void first_show(benchmark::State& state) {
  for (auto _ : state) {
    auto dialog = std::make_unique<timed_dialog_t>();
    state.SetIterationTime(dialog->time_to_first_paint());
  }
}

void second_show(benchmark::State& state) {
  timed_dialog_t dialog;
  dialog.time_to_first_paint();
  for (auto _ : state) {
    state.SetIterationTime(dialog.time_to_first_paint());
  }
}

BENCHMARK(first_show)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(second_show)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const bench_support::wx_session_t session(argc, argv);
  if (!session.ok()) {
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
