// The in-place message control of an analysis tool: runs on worker threads with a gauge,
// Cancel and status lines, lines of every severity, a question with buttons, and the log
// saved to a file and loaded back.
#include "entries.h"

#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>

#include <korvat2/bag_file.h>
#include <plaxi1/screenshot.h>

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace gallery {
namespace {

using korvat2::intrusive_pointer_t;
using tamsel3::standard_message_t;

// What a run reads, in order: each module takes some steps and may leave a line.
struct module_t {
  const char* name;
  double steps;
  pelit2::ESeverity severity;
  const char* line;  // null: nothing to say
};

const std::vector<module_t>& modules() {
  static const std::vector<module_t> list = {
      {"render.exe", 120, pelit2::severity_info, "Symbols of render.exe loaded from the build folder"},
      {"libtbb.so.12", 60, pelit2::severity_info, nullptr},
      {"libcompositor.so", 140, pelit2::severity_warning,
       "libcompositor.so has no debug information: functions are shown by address"},
      {"libgeometry.so", 180, pelit2::severity_info, nullptr},
      {"libshading.so", 160, pelit2::severity_error,
       "Stack of thread 14 could not be unwound past ShadePixelBlock (0x7f3a12c4)"},
      {"libstdc++.so.6", 90, pelit2::severity_info, nullptr},
      {"libpthread.so.0", 50, pelit2::severity_warning, "1,204 samples fell outside any known module"},
      {"vmlinux", 200, pelit2::severity_info, "Kernel samples attributed to 38 kernel functions"},
  };
  return list;
}

// One run of the analysis on its own thread. A pause point lets a screenshot catch it
// mid-run; interactive runs never pause.
class run_t {
 public:
  run_t(pelit2::IProgress* progress, pelit2::IMessenger* messenger, double pause_at)
      : m_progress(progress), m_messenger(messenger), m_pause_at(pause_at) {}
  ~run_t() { stop(); }

  void start(std::function<void(bool canceled)> done) {
    m_thread = std::thread([this, done] { done(work()); });
  }
  /// Whether the run reached its pause point.
  bool paused() const { return m_paused.load(); }
  void stop() {
    {
      std::lock_guard<std::mutex> lock(m_mutex);
      m_stop = true;
    }
    m_wake.notify_all();
    m_progress->cancel();
    if (m_thread.joinable()) {
      m_thread.join();
    }
  }

 private:
  // True when canceled.
  bool work() {
    double total = 0;
    for (const module_t& module : modules()) {
      total += module.steps;
    }
    m_progress->start("Resolving call stacks of r003hs", total);
    double done = 0;
    for (const module_t& module : modules()) {
      m_progress->message((std::string("Reading ") + module.name).c_str());
      for (int step = 0; step < static_cast<int>(module.steps); step += 10) {
        if (m_progress->isCanceled() || !wait_a_little(done)) {
          return true;
        }
        m_progress->internalProgressed(10);
        done += 10;
      }
      if (module.line) {
        m_messenger->say(module.severity, module.line);
      }
    }
    m_progress->finish();
    return false;
  }

  // The pace of a real run; at the pause point it waits until stopped. False when stopped.
  bool wait_a_little(double done) {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_pause_at > 0 && done >= m_pause_at) {
      m_paused = true;
      m_wake.wait(lock, [this] { return m_stop; });
      return false;
    }
    m_wake.wait_for(lock, std::chrono::milliseconds(25), [this] { return m_stop; });
    return !m_stop;
  }

  pelit2::IProgress* m_progress;
  pelit2::IMessenger* m_messenger;
  double m_pause_at;
  std::thread m_thread;
  std::mutex m_mutex;
  std::condition_variable m_wake;
  bool m_stop = false;
  std::atomic<bool> m_paused{false};
};

// The tool's log window: a row of commands over the in-place control.
class log_frame_t : public wxFrame, public korvat2::subscriber_base_t {
 public:
  explicit log_frame_t(wxWindow* parent) : wxFrame(parent, wxID_ANY, "Analysis log") {
    // Sizes are of the client area, which both X11 and Wayland give as asked.
    SetClientSize(wxSize(760, 560));
    auto* panel = new wxPanel(this);
    auto* commands = new wxBoxSizer(wxHORIZONTAL);
    add_command(panel, commands, "Start run", [this] { start_run(0); });
    add_command(panel, commands, "Save log...", [this] { save_log(); });
    add_command(panel, commands, "Load log...", [this] { load_log(); });
    add_command(panel, commands, "Clear", [this] { clear(); });
    m_ctrl = new tamsel3::inplace_ctrl_t(panel, false);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(commands, 0, wxALL, 6);
    sizer->Add(m_ctrl, 1, wxEXPAND);
    panel->SetSizer(sizer);
    m_answers.connect(this, &log_frame_t::on_answer);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
      stop_runs();
      event.Skip();
    });
  }
  ~log_frame_t() override { stop_runs(); }

  /// The state that the screenshot shows: a finished run with its question, and a run
  /// caught at about 40 %.
  void fill_for_picture() {
    add_note();
    start_run(0.4);
  }
  bool runs_paused() const {
    for (const auto& run : m_runs) {
      if (!run->paused()) {
        return false;
      }
    }
    return true;
  }

  void add_note() {
    const unsigned int tag = m_ctrl->add_message(
        new standard_message_t("Analysis r002hs finished", "Found 14 hotspots in 2,318 functions.",
                               standard_message_t::get_icon_by_type(standard_message_t::icon_ok),
                               standard_message_t::buttons_ok_cancel),
        m_answers);
    pelit2::IMessenger* messenger = m_ctrl->get_messenger(tag);
    messenger->say(pelit2::severity_info, "Collected 48,210 samples from 16 threads in 12.4 s");
    messenger->say(pelit2::severity_warning,
                   "The sampling interval was raised to 2 ms to keep the overhead low");
  }

 private:
  void add_command(wxWindow* panel, wxSizer* sizer, const wxString& label, std::function<void()> action) {
    auto* button = new wxButton(panel, wxID_ANY, label);
    button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
    sizer->Add(button, 0, wxRIGHT, 6);
  }

  void start_run(double pause_fraction) {
    const unsigned int tag = m_ctrl->add_progress(
        new tamsel3::progress_message_t(
            "Finalizing r003hs", standard_message_t::get_icon_by_type(standard_message_t::icon_progress),
            true),
        m_answers);
    // The control hands out one proxy for all items and re-aims it at the latest; a run
    // keeps its item's own interfaces, so that several runs can report at once.
    pelit2::IProgress* progress =
        static_cast<tamsel3::progress_proxy_t*>(m_ctrl->get_progress(tag))->m_target;
    pelit2::IMessenger* messenger =
        static_cast<tamsel3::messenger_proxy_t*>(m_ctrl->get_messenger(tag))->m_target;
    double total = 0;
    for (const module_t& module : modules()) {
      total += module.steps;
    }
    auto run = std::make_unique<run_t>(progress, messenger, pause_fraction * total);
    run->start([this, tag](bool canceled) {
      // Queued on the frame, whose going deletes what is still queued.
      CallAfter([this, tag, canceled] { finish_run(tag, canceled); });
    });
    m_runs.push_back(std::move(run));
  }

  void finish_run(unsigned int tag, bool canceled) {
    if (canceled) {
      m_ctrl->update_message(
          tag,
          new standard_message_t("Finalizing r003hs was canceled",
                                 "The result keeps the samples but has no call stacks.",
                                 standard_message_t::get_icon_by_type(standard_message_t::icon_warning),
                                 standard_message_t::buttons_close_retry),
          m_answers);
      return;
    }
    m_ctrl->update_message(
        tag,
        new standard_message_t("Result r003hs is ready", "Open the summary to see the hottest functions.",
                               standard_message_t::get_icon_by_type(standard_message_t::icon_ok),
                               standard_message_t::buttons_ok_cancel),
        m_answers);
  }

  void on_answer(int id) {
    if (id == standard_message_t::button_retry) {
      start_run(0);
    }
  }

  void stop_runs() {
    for (const auto& run : m_runs) {
      run->stop();
    }
    // Their last words were posted; the control is about to go, so they must not run.
    m_runs.clear();
  }

  void clear() {
    stop_runs();
    m_ctrl->clear();
  }

  void save_log() {
    wxFileDialog dialog(this, "Save log", wxString(), "analysis-log.xml", "Logs (*.xml)|*.xml",
                        wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK) {
      return;
    }
    korvat2::variant_bag_t bag;
    m_ctrl->save(bag);
    korvat2::save_variant_bag(bag, dialog.GetPath().utf8_string().c_str());
  }

  void load_log() {
    wxFileDialog dialog(this, "Load log", wxString(), wxString(), "Logs (*.xml)|*.xml", wxFD_OPEN);
    if (dialog.ShowModal() != wxID_OK) {
      return;
    }
    korvat2::variant_bag_t bag;
    if (korvat2::load_variant_bag(bag, dialog.GetPath().utf8_string().c_str(), nullptr).succeeded()) {
      m_ctrl->load(bag);
    }
  }

  tamsel3::inplace_ctrl_t* m_ctrl;
  korvat2::signal_t<int> m_answers;
  std::vector<std::unique_ptr<run_t>> m_runs;
};

}  // namespace

std::vector<entry_t> inplace_entries() {
  return {
      {"inplace_log", "In-place message log",
       "The log of an analysis tool: runs on worker threads with a gauge and Cancel, status lines, warnings "
       "and errors, a question with buttons; save the log to a file and load it back.",
       [](wxWindow* parent) {
         auto* frame = new log_frame_t(parent);
         frame->add_note();
         frame->Show();
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* frame = new log_frame_t(parent);
         frame->Show();
         frame->fill_for_picture();
         plaxi1::wait_until([frame] { return frame->runs_paused(); }, 10000);
         plaxi1::pump_events();
         return frame;
       }},
  };
}

}  // namespace gallery
