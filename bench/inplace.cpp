// The in-place control under load: lines per second shown from four workers, the longest
// stretch that the GUI thread spends in one event handler meanwhile, the paint time of a
// screenful of a log of 1,000, 100,000 and 1,000,000 lines, and the heap bytes that each
// kept line of 60 characters costs as the log grows. Needs a display: run under `xvfb-run -a -s '-screen 0
// 1600x1200x24'`.
#include "inplace_ctrl_test_access_p.h"
#include "wx_session.h"

#include <tamsel3/event_log.h>
#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>

#include <ombrelc/ombrelc.h>
#include <plaxi1/screenshot.h>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace {

using steady = std::chrono::steady_clock;

// Times every event handler call of the process: the longest is the longest stretch in
// which the GUI thread answered nothing else.
class timing_app_t : public wxApp {
 public:
  void CallEventHandler(wxEvtHandler* handler, wxEventFunctor& functor, wxEvent& event) const override {
    const steady::time_point begin = steady::now();
    wxApp::CallEventHandler(handler, functor, event);
    m_longest = std::max(m_longest, steady::now() - begin);
  }
  mutable steady::duration m_longest{};
};

timing_app_t* g_app = nullptr;

// A shown frame with an in-place control filling it.
struct shown_control_t {
  shown_control_t() {
    frame = new wxFrame(nullptr, wxID_ANY, "bench", wxDefaultPosition, wxSize(800, 600));
    ctrl = new tamsel3::inplace_ctrl_t(frame, false);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(ctrl, 1, wxEXPAND);
    frame->SetSizer(sizer);
    frame->Show();
    plaxi1::wait_until_painted(ctrl, 5000);
  }
  ~shown_control_t() {
    frame->Destroy();
    plaxi1::pump_events();
  }
  tamsel3::message_entry_t* add_entry(const std::string& caption) {
    korvat2::signal_t<int> none;
    const unsigned int tag =
        ctrl->add_message(new tamsel3::message_t(caption, "lines", plaxi1::picture_t()), none);
    return dynamic_cast<tamsel3::message_entry_t*>(
        tamsel3::inplace_ctrl_test_access_t::impl(*ctrl)->get_entry(tag));
  }
  wxFrame* frame;
  tamsel3::inplace_ctrl_t* ctrl;
};

void say_from_four_workers(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  double longest_ms = 0;
  for (auto _ : state) {
    state.PauseTiming();
    shown_control_t shown;
    std::vector<tamsel3::message_entry_t*> entries;
    for (int worker = 0; worker < 4; ++worker) {
      entries.push_back(shown.add_entry("Worker " + std::to_string(worker)));
    }
    plaxi1::pump_events();
    g_app->m_longest = {};
    state.ResumeTiming();
    std::vector<std::thread> workers;
    for (tamsel3::message_entry_t* entry : entries) {
      workers.emplace_back([entry, lines] {
        for (int line = 0; line < lines; ++line) {
          entry->say(pelit2::severity_info, "Resolved 1,024 frames of thread 7 in libgeometry.so");
        }
      });
    }
    plaxi1::wait_until(
        [&] {
          return std::all_of(entries.begin(), entries.end(), [lines](tamsel3::message_entry_t* entry) {
            return entry->m_messages.size() == static_cast<std::size_t>(lines);
          });
        },
        600000);
    plaxi1::pump_events();  // the layout and paint of the last batch
    state.PauseTiming();
    for (std::thread& worker : workers) {
      worker.join();
    }
    longest_ms = std::max(longest_ms, std::chrono::duration<double, std::milli>(g_app->m_longest).count());
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * 4 * lines);
  state.counters["longest_gui_stretch_ms"] = longest_ms;
}

// A kept line of exactly 60 characters, numbered so that no two are alike.
std::string sixty_characters(int line) {
  std::string text = "Line " + std::to_string(line) + " of the analysis log, with some words to wrap";
  text.resize(60, '.');
  return text;
}

// Adds `count` kept lines to one entry the way the say handler does: in one batch, with
// the layout held until the end.
void add_lines(tamsel3::message_entry_t* entry, int count) {
  ombrelc7::ISysWindow* window = entry->m_log->GetWindow();
  window->LockUpdate(true);
  window->SuspendLayout(true);
  for (int line = 0; line < count; ++line) {
    entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_info,
                    sixty_characters(line).c_str());
  }
  window->SuspendLayout(false);
  window->LockUpdate(false);
}

void paint_screenful(benchmark::State& state) {
  shown_control_t shown;
  tamsel3::message_entry_t* entry = shown.add_entry("A long log");
  add_lines(entry, static_cast<int>(state.range(0)));
  plaxi1::pump_events();
  auto* control = dynamic_cast<ombrelcfrw7::CBaseControl*>(
      tamsel3::inplace_ctrl_test_access_t::impl(*shown.ctrl)->get_log()->GetControl());
  const wxSize client = shown.ctrl->GetClientSize();
  wxBitmap bitmap(client);
  wxMemoryDC dc(bitmap);
  const ombrelc7::rect<int> area{0, 0, client.GetWidth(), client.GetHeight()};
  for (auto _ : state) {
    control->HandlePaint(dc, area);
  }
  // The lines shown, and the elements that the tree holds for them.
  state.counters["lines"] = static_cast<double>(entry->m_lines_box->GetChildren().size());
  state.counters["elements"] =
      static_cast<double>(entry->m_lines_box->ombrelcfrw7::CVisualElement::GetChildren().size());
}

// Bytes in use on the heap, with the large blocks that the allocator maps on their own (a
// long log's vectors): those are missing from uordblks alone.
std::size_t heap_in_use() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void bytes_per_line(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  double per_line = 0;
  for (auto _ : state) {
    state.PauseTiming();
    shown_control_t shown;
    tamsel3::message_entry_t* entry = shown.add_entry("Memory");
    plaxi1::pump_events();
    const std::size_t before = heap_in_use();
    state.ResumeTiming();
    add_lines(entry, count);
    plaxi1::pump_events();  // the layout, with what it caches
    state.PauseTiming();
    per_line = static_cast<double>(heap_in_use() - before) / count;
    state.ResumeTiming();
  }
  state.counters["bytes_per_line"] = per_line;
}

}  // namespace

int main(int argc, char** argv) {
  int wx_argc = 1;
  char* wx_argv[] = {argv[0], nullptr};
  g_app = new timing_app_t;
  const bench_support::wx_session_t session(wx_argc, wx_argv, g_app);
  if (!session.ok()) {
    return 1;
  }
  // Lines per worker: logs of 1,000, 100,000 and 1,000,000 lines in all.
  benchmark::RegisterBenchmark("inplace/say_from_4_workers", say_from_four_workers)
      ->Arg(250)
      ->Arg(25000)
      ->Arg(250000)
      ->Iterations(2)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("inplace/paint_screenful", paint_screenful)
      ->Arg(1000)
      ->Arg(100000)
      ->Arg(1000000)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("inplace/bytes_per_line", bytes_per_line)
      ->Arg(1000)
      ->Arg(100000)
      ->Arg(1000000)
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
