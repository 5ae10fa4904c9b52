// A window with two drawn parts for the accessibility client's keyboard checks: on the
// left, visual elements with the buttons "Start" and "Stop"; on the right, an element tree
// with the buttons "Back" and "Next". It prints "ready" once shown. A line "focus left" (or
// "focus right") on its standard input gives that part the keyboard and prints "focused
// left" once it has it; a click prints "clicked NAME". It exits when its standard input
// closes or after a minute.
#include <ombrelc/ombrelc.h>
#include <plaxi1/elements.h>

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/timer.h>

#include <atomic>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

namespace a11y_test {

class clicks_t : public korvat2::subscriber_base_t {
 public:
  void on_drawn(ombrelcfrw7::CButton* button) { std::cout << "clicked " << button->AsString() << std::endl; }
  void on_element(int id) { std::cout << "clicked " << (id == 1 ? "Back" : "Next") << std::endl; }
};

class app_t : public wxApp {
 public:
  bool OnInit() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "Keyboard", wxPoint(40, 40), wxSize(480, 200));
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    m_left = new wxPanel(m_frame, wxID_ANY);
    m_right = new wxPanel(m_frame, wxID_ANY);
    sizer->Add(m_left, 1, wxEXPAND);
    sizer->Add(m_right, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    make_left();
    make_right();
    m_frame->Show();
    m_frame->Raise();
    m_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { poll(); });
    m_timer.Start(20);
    m_input = std::thread([this] {
      std::string line;
      while (std::getline(std::cin, line)) {
        CallAfter([this, line] { focus(line == "focus left" ? m_left : m_right, line.substr(6)); });
      }
      m_stop = true;
    });
    return true;
  }

  int OnExit() override {
    m_adapter.reset();
    m_input.detach();
    return wxApp::OnExit();
  }

 private:
  void make_left() {
    auto* control = new ombrelcfrw7::CBaseControl(ombrelc7::CreateWrapperForWx(m_left));
    auto* box =
        new ombrelcfrw7::CVertBox(control->GetContent(), ombrelc7::size<int>(0, 0), ombrelc7::alClient);
    for (const char* name : {"Start", "Stop"}) {
      auto* button = new ombrelcfrw7::CButton(box, ombrelc7::size<int>(0, 0), ombrelc7::alNone);
      button->SetCaption(name);
      button->ClickSignal().connect(&m_clicks, &clicks_t::on_drawn);
    }
  }

  void make_right() {
    using namespace plaxi1::elements;
    m_adapter = std::make_unique<ElementAdapter>(m_right);
    UIElement::ptr_t root = new RectangleElement();
    int id = 0;
    for (const char* name : {"Back", "Next"}) {
      korvat2::intrusive_pointer_t<TabButton> button = new TabButton(root, pos_top);
      button->GetText()->SetText(name);
      button->SetId(++id);
      button->pressed.connect(&m_clicks, &clicks_t::on_element);
    }
    m_adapter->SetRootElement(root);
  }

  void focus(wxWindow* window, const std::string& side) {
    window->SetCanFocus(true);
    window->SetFocus();
    m_waiting = window;
    m_waiting_side = side;
  }

  void poll() {
    ++m_ticks;
    if (m_ticks == 1) {
      std::cout << "ready" << std::endl;
    }
    if (m_waiting && wxWindow::FindFocus() == m_waiting) {
      std::cout << "focused " << m_waiting_side << std::endl;
      m_waiting = nullptr;
    }
    if (m_stop || m_ticks > 3000) {
      m_timer.Stop();
      m_frame->Destroy();
    }
  }

  wxFrame* m_frame = nullptr;
  wxPanel* m_left = nullptr;
  wxPanel* m_right = nullptr;
  std::unique_ptr<plaxi1::elements::ElementAdapter> m_adapter;
  clicks_t m_clicks;
  wxTimer m_timer;
  std::thread m_input;
  std::atomic<bool> m_stop{false};
  wxWindow* m_waiting = nullptr;
  std::string m_waiting_side;
  int m_ticks = 0;
};

}  // namespace a11y_test

wxIMPLEMENT_APP(a11y_test::app_t);
