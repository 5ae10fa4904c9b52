#pragma once
// A frame with a wrapped panel and a control of visual elements on it, for the tests of
// the element library.
#include "gui_test.h"

#include <ombrelc/ombrelc.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <memory>
#include <string>
#include <vector>

namespace ombrelc_test {

using ombrelc7::rect;
using ombrelc7::size;

/// A frame showing one panel that a CBaseControl draws on.
class control_fixture_t : public ::testing::Test {
 protected:
  void SetUp() override { make(wxSize(400, 300)); }

  void make(const wxSize& client) {
    m_frame = new wxFrame(nullptr, wxID_ANY, "ombrelc");
    m_panel = new wxPanel(m_frame, wxID_ANY);
    m_frame->SetClientSize(client);
    m_wrapper = ombrelc7::CreateWrapperForWx(m_panel);
    m_control = new ombrelcfrw7::CBaseControl(m_wrapper);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
    layout();
  }

  /// Runs the pending layout and the paint it asks for.
  void layout() {
    gui_test::pump();
    m_wrapper->FlushLayout();
  }

  ombrelcfrw7::CVisualElement* root() const { return m_control->GetContent(); }

  wxFrame* m_frame = nullptr;
  wxPanel* m_panel = nullptr;
  ombrelc7::ISysWindow* m_wrapper = nullptr;
  ombrelcfrw7::CBaseControl* m_control = nullptr;
};

/// A column of lines that the test holds, scrolled in a container that fills the control.
class line_column_fixture_t : public control_fixture_t {
 protected:
  void SetUp() override {
    control_fixture_t::SetUp();
    m_scroller = new ombrelcfrw7::CScrollContainer(root(), size<int>(0, 0), ombrelc7::alClient);
    m_column = new ombrelcfrw7::CLineColumn(nullptr, size<int>(0, 0), ombrelc7::alFill, make_source());
    m_scroller->SetScrolled(m_column);
  }
  // The column reads the lines of the fixture: it goes first.
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }

  /// The column's source, reading m_lines.
  virtual std::unique_ptr<ombrelcfrw7::ILineSource> make_source() = 0;

  /// Appends `count` lines "line N" and lays the column out again.
  void add_lines(int count) {
    for (int i = 0; i < count; ++i) {
      m_lines.push_back("line " + std::to_string(m_lines.size()));
    }
    m_column->LinesAdded();
    layout();
  }

  std::vector<std::string> m_lines;
  ombrelcfrw7::CScrollContainer* m_scroller = nullptr;
  ombrelcfrw7::CLineColumn* m_column = nullptr;
};

/// An element of a fixed size that counts how often it is painted.
class counting_element_t : public ombrelcfrw7::CVisualElement {
 public:
  counting_element_t(CVisualElement* parent, const size<int>& min, ombrelc7::Alignment alignment)
      : CVisualElement(parent, min, alignment) {}
  int m_paints = 0;

 protected:
  void PaintContent(wxDC&, const rect<int>&) override { ++m_paints; }
};

/// A vertical box that counts its layouts.
class counting_box_t : public ombrelcfrw7::CVertBox {
 public:
  counting_box_t(CVisualElement* parent, const size<int>& min, ombrelc7::Alignment alignment)
      : CVertBox(parent, min, alignment) {}
  int m_arranges = 0;

 protected:
  void ArrangeChildren() override {
    ++m_arranges;
    CVertBox::ArrangeChildren();
  }
};

/// Counts a signal's emissions and keeps the last argument.
template <class A>
class receiver_t : public korvat2::subscriber_base_t {
 public:
  void on(A value) {
    ++m_count;
    m_last = value;
  }
  int m_count = 0;
  A m_last{};
};

}  // namespace ombrelc_test
