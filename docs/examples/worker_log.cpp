// An in-place log fed by a worker thread: a gauge with Cancel while the work runs, lines
// of text from the worker, and a closing message when it ends.
#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <chrono>
#include <string>
#include <thread>

using tamsel3::standard_message_t;

//! [worker]
// The work itself knows only the two interfaces of the worker's side.
bool index_sources(pelit2::IProgress& progress, pelit2::IMessenger& messenger) {
  const int files = 200;
  progress.start("Indexing source files", files);
  for (int file = 0; file < files; ++file) {
    if (progress.isCanceled()) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // stands for real work
    if (file % 50 == 0) {
      messenger.say(pelit2::severity_info, ("Indexed " + std::to_string(file) + " files").c_str());
    }
    progress.internalProgressed(1);
  }
  progress.finish();
  return true;
}
//! [worker]

//! [frame]
class log_frame_t : public wxFrame {
 public:
  log_frame_t() : wxFrame(nullptr, wxID_ANY, "Indexing", wxDefaultPosition, wxSize(640, 400)) {
    m_log = new tamsel3::inplace_ctrl_t(this, false);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_log, 1, wxEXPAND);
    SetSizer(sizer);

    // A progress item with a Cancel button; the control hands out the worker's interfaces.
    const unsigned int tag = m_log->add_progress(
        new tamsel3::progress_message_t(
            "Indexing", standard_message_t::get_icon_by_type(standard_message_t::icon_progress), true),
        m_answers);
    pelit2::IProgress* progress = m_log->get_progress(tag);
    pelit2::IMessenger* messenger = m_log->get_messenger(tag);
    m_progress = progress;
    m_worker = std::thread([this, tag, progress, messenger] {
      const bool done = index_sources(*progress, *messenger);
      // Back on the GUI thread, the gauge becomes the outcome. A frame that is gone by
      // then drops the call.
      CallAfter([this, tag, done] { show_outcome(tag, done); });
    });
  }

  ~log_frame_t() override {
    // The worker must be stopped before the control that it reports to goes. Until the
    // outcome is shown the item is still the gauge, so Cancel reaches the worker.
    if (!m_outcome_shown) {
      m_progress->cancel();
    }
    m_worker.join();
  }

 private:
  void show_outcome(unsigned int tag, bool done) {
    m_outcome_shown = true;
    m_log->update_message(
        tag,
        done ? new standard_message_t("Indexing finished", "The sources are ready to browse.",
                                      standard_message_t::get_icon_by_type(standard_message_t::icon_ok))
             : new standard_message_t("Indexing was canceled", "Start it again from the Project menu.",
                                      standard_message_t::get_icon_by_type(standard_message_t::icon_warning)),
        m_answers);
  }

  tamsel3::inplace_ctrl_t* m_log;
  korvat2::signal_t<int> m_answers;  // ids of the buttons that the user presses
  pelit2::IProgress* m_progress = nullptr;
  bool m_outcome_shown = false;
  std::thread m_worker;
};
//! [frame]

class example_app_t : public wxApp {
 public:
  bool OnInit() override {
    (new log_frame_t)->Show();
    return true;
  }
};

wxIMPLEMENT_APP(example_app_t);
