// A window with the in-place log for the accessibility client: a message with a Close
// button and two kept lines, and a running progress entry whose worker waits for Cancel.
// It prints, one line each, the screen rectangle of every drawn element and kept line in
// view ("element KIND X Y W H NAME"; lines are labels), the gauge's percentage ("percent
// N"), then "ready"; "worker saw cancel" once the worker sees the cancel. Each is named as
// screen readers hear it. A line "say error TEXT" (or "say info TEXT") on its standard
// input adds a line of that severity to the message; "finish" replaces the progress entry
// by the message "Indexing finished". It exits when its standard input closes or after a
// minute.
#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>

#include <a11y/accessible.h>
#include <ombrelc/ombrelc.h>

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using ombrelcfrw7::CVisualElement;

const char* kind_of(const CVisualElement* element) {
  if (dynamic_cast<const ombrelcfrw7::CButton*>(element)) {
    return "button";
  }
  if (dynamic_cast<const ombrelcfrw7::CCaption*>(element)) {
    return "label";
  }
  if (dynamic_cast<const ombrelcfrw7::CGauge*>(element)) {
    return "gauge";
  }
  return nullptr;
}

void print_element(const char* kind, const ombrelc7::rect<int>& area, const std::string& name,
                   wxWindow* window) {
  const wxPoint origin = window->ClientToScreen(wxPoint(area.left, area.top));
  std::cout << "element " << kind << ' ' << origin.x << ' ' << origin.y << ' ' << area.width() << ' '
            << area.height() << ' ' << name << '\n';
}

// The lines of a column that show, as the labels that they are to a screen reader.
void print_lines(const ombrelcfrw7::CLineColumn* column, wxWindow* window) {
  const std::vector<CVisualElement*>& children = column->CVisualElement::GetChildren();
  const ombrelcfrw7::CLineColumn::lines_view_t all = column->GetChildren();
  const ombrelc7::rect<int> shown = column->GetVisibleWindowRect();
  const ombrelc7::rect<int> place = column->GetWindowRect();
  const ombrelc7::rect<int> own = column->GetRect();
  std::size_t line = 0;
  for (std::size_t index = 0; index < all.size(); ++index) {
    const CVisualElement* entry = all[index];
    if (std::find(children.begin(), children.end(), entry) != children.end()) {
      continue;  // an element of its own, printed as such
    }
    const ombrelc7::rect<int> area =
        column->GetLineRect(line++).offset(place.left - own.left, place.top - own.top);
    if (!area.intersection(shown).empty()) {
      print_element("label", area, entry->AsString(), window);
    }
  }
}

void print_elements(const CVisualElement* element, wxWindow* window) {
  if (!element->IsVisible()) {
    return;
  }
  if (const auto* column = dynamic_cast<const ombrelcfrw7::CLineColumn*>(element)) {
    print_lines(column, window);
  }
  if (const char* kind = kind_of(element)) {
    a11y::info_t info;
    element->DescribeAccessible(info);
    print_element(kind, element->GetWindowRect(), info.name, window);
  }
  for (const CVisualElement* child : element->GetChildren()) {
    print_elements(child, window);
  }
}

const ombrelcfrw7::CGauge* find_gauge(const CVisualElement* element) {
  if (const auto* gauge = dynamic_cast<const ombrelcfrw7::CGauge*>(element);
      gauge && element->IsShownInTree()) {
    return gauge;
  }
  for (const CVisualElement* child : element->GetChildren()) {
    if (const ombrelcfrw7::CGauge* found = find_gauge(child)) {
      return found;
    }
  }
  return nullptr;
}

const ombrelcfrw7::CLineColumn* find_column(const CVisualElement* element) {
  if (const auto* column = dynamic_cast<const ombrelcfrw7::CLineColumn*>(element)) {
    return column;
  }
  for (const CVisualElement* child : element->GetChildren()) {
    if (const ombrelcfrw7::CLineColumn* found = find_column(child)) {
      return found;
    }
  }
  return nullptr;
}

// Lines said to the message before the client comes.
const char* const kept_lines[] = {"Loaded 12 modules", "Reading symbols"};

}  // namespace

// Named, not anonymous: the app macro defines wxGetApp for this type, which must not have
// internal linkage.
namespace a11y_test {

class app_t : public wxApp {
 public:
  bool OnInit() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "In-place log", wxPoint(40, 40), wxSize(640, 360));
    m_ctrl = new tamsel3::inplace_ctrl_t(m_frame, false);
    const unsigned int message = m_ctrl->add_message(
        new tamsel3::standard_message_t("Symbols", "Symbols of render.exe loaded"), m_no_callback);
    m_messenger = m_ctrl->get_messenger(message);
    for (const char* line : kept_lines) {
      m_messenger->say(pelit2::severity_info, line);
    }
    const unsigned int tag = m_progress_tag = m_ctrl->add_progress(
        new tamsel3::progress_message_t("Indexing", plaxi1::picture_t(), true), m_no_callback);
    pelit2::IProgress* progress = m_ctrl->get_progress(tag);
    m_worker = std::thread([this, progress] { work(progress); });
    m_frame->Show();
    m_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { poll(); });
    m_timer.Start(20);
    m_input = std::thread([this] {
      std::string line;
      while (std::getline(std::cin, line)) {
        say(line);
      }
      m_stop = true;
    });
    return true;
  }

  int OnExit() override {
    m_stop = true;
    m_worker.join();
    m_input.detach();
    return wxApp::OnExit();
  }

 private:
  // Messengers take lines from any thread.
  void say(const std::string& line) {
    const std::string error = "say error ";
    const std::string info = "say info ";
    if (line == "finish") {
      CallAfter([this] {
        m_ctrl->update_message(
            m_progress_tag, new tamsel3::standard_message_t("Indexing", "Indexing finished"), m_no_callback);
      });
    } else if (line.rfind(error, 0) == 0) {
      m_messenger->say(pelit2::severity_error, line.substr(error.size()).c_str());
    } else if (line.rfind(info, 0) == 0) {
      m_messenger->say(pelit2::severity_info, line.substr(info.size()).c_str());
    }
  }

  void work(pelit2::IProgress* progress) {
    progress->start("Indexing", 100);
    progress->internalProgressed(37);
    while (!progress->isCanceled() && !m_stop) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    if (progress->isCanceled()) {
      std::cout << "worker saw cancel" << std::endl;
    }
  }

  void poll() {
    ++m_ticks;
    if (m_stop || m_ticks > 3000) {
      m_timer.Stop();
      m_frame->Destroy();
      return;
    }
    if (m_ready) {
      return;
    }
    ombrelc7::ISysWindow* window = ombrelc7::CreateWrapperForWx(m_ctrl);
    auto* control = dynamic_cast<ombrelcfrw7::CBaseControl*>(window->GetControl());
    const ombrelcfrw7::CGauge* gauge = control ? find_gauge(control->GetContent()) : nullptr;
    const ombrelcfrw7::CLineColumn* column = control ? find_column(control->GetContent()) : nullptr;
    if (!gauge || gauge->GetPos() <= 0 || !column || column->GetLineCount() < std::size(kept_lines) ||
        window->IsLayoutPending() || !m_ctrl->IsShownOnScreen()) {
      return;
    }
    m_ready = true;
    print_elements(control->GetContent(), m_ctrl);
    const wxPoint origin = m_ctrl->ClientToScreen(wxPoint(0, 0));
    const wxSize size = m_ctrl->GetClientSize();
    std::cout << "window " << origin.x << ' ' << origin.y << ' ' << size.x << ' ' << size.y << '\n';
    std::cout << "percent " << std::lround(gauge->GetPos() * 100 / gauge->GetMax()) << '\n';
    std::cout << "ready" << std::endl;
  }

  wxFrame* m_frame = nullptr;
  tamsel3::inplace_ctrl_t* m_ctrl = nullptr;
  korvat2::signal_t<int> m_no_callback;
  pelit2::IMessenger* m_messenger = nullptr;
  unsigned int m_progress_tag = 0;
  wxTimer m_timer;
  std::thread m_worker;
  std::thread m_input;
  std::atomic<bool> m_stop{false};
  bool m_ready = false;
  int m_ticks = 0;
};

}  // namespace a11y_test

wxIMPLEMENT_APP(a11y_test::app_t);
