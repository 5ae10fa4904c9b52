#pragma once
// A shown frame whose panel shows an element tree through an adapter, and helpers that
// read what the panel shows.
#include "fixtures.h"
#include "gui_test.h"

#include <plaxi1/elements.h>
#include <plaxi1/screenshot.h>

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/image.h>
#include <wx/panel.h>

#include <memory>
#include <string>
#include <vector>

namespace element_test {

using namespace plaxi1::elements;
using element_ptr = korvat2::intrusive_pointer_t<UIElement>;
using rectangle_ptr = korvat2::intrusive_pointer_t<RectangleElement>;

/// A frame at a known place, with a panel of `client` size under an adapter. Shown and
/// laid out once constructed; the adapter dies before the frame.
class element_window_t {
 public:
  explicit element_window_t(const wxSize& client = wxSize(400, 300))
      : frame(new wxFrame(nullptr, wxID_ANY, "elements", wxPoint(40, 40))), panel(new wxPanel(frame)) {
    frame->SetClientSize(client);
    adapter = std::make_unique<ElementAdapter>(panel);
    frame->Show();
    EXPECT_TRUE(gui_test::wait_until_shown(panel));
    EXPECT_EQ(panel->GetClientSize(), client);
  }
  ~element_window_t() {
    adapter.reset();
    frame->Destroy();
  }
  element_window_t(const element_window_t&) = delete;
  element_window_t& operator=(const element_window_t&) = delete;

  /// Makes `root` the adapter's root and lays it out.
  void show(const element_ptr& root) {
    adapter->SetRootElement(root);
    adapter->Relayout();
  }
  /// What the panel shows now, at its own pixels.
  wxImage picture() {
    test_support::temp_dir_t dir;
    const std::string path = dir.file("panel.png");
    wxImage image;
    if (plaxi1::save_screenshot(panel, path)) {
      image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
    }
    return image;
  }

  wxFrame* frame;
  wxPanel* panel;
  std::unique_ptr<ElementAdapter> adapter;
};

inline wxColour colour_at(const wxImage& image, int x, int y) {
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

/// Keeps the ids of the presses of the buttons it is connected to, in order.
struct pressed_ids_t : korvat2::subscriber_base_t {
  void on(int id) { ids.push_back(id); }
  std::vector<int> ids;
};

}  // namespace element_test
