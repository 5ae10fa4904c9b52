// Centring windows where the application places them, and leaving top-level windows to a
// Wayland compositor.
#include <plaxi1/modal.h>
#include <plaxi1/placement.h>

#include "gui_test.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/utils.h>

namespace {

class centred_dialog_t : public plaxi1::modal_flavor<wxDialog> {
 public:
  explicit centred_dialog_t(wxWindow* parent) {
    Create(parent, wxID_ANY, "centred", wxPoint(0, 0), wxSize(200, 100));
  }
  void help_activated() override {}
};

struct parent_frame_t {
  parent_frame_t() : frame(new wxFrame(nullptr, wxID_ANY, "parent", wxPoint(100, 80), wxSize(600, 400))) {
    frame->Show();
    EXPECT_TRUE(gui_test::wait_until_shown(frame));
  }
  ~parent_frame_t() { frame->Destroy(); }
  parent_frame_t(const parent_frame_t&) = delete;
  parent_frame_t& operator=(const parent_frame_t&) = delete;

  wxFrame* frame;
};

TEST(placement_test, the_application_places_its_windows_only_under_x11) {
  EXPECT_EQ(plaxi1::can_place_windows(), wxGetDisplayInfo().type == wxDisplayX11);
}

TEST(placement_test, a_dialog_is_centred_on_its_parent_where_the_application_places_it) {
  parent_frame_t parent;
  auto* dialog = new centred_dialog_t(parent.frame);
  const wxPoint before = dialog->GetPosition();
  dialog->place_centred();
  if (!plaxi1::can_place_windows()) {
    EXPECT_EQ(dialog->GetPosition(), before) << "the compositor centres it";
    return;
  }
  const wxRect outer = parent.frame->GetRect();
  const wxRect rect = dialog->GetRect();
  EXPECT_EQ(rect.x, outer.x + (outer.width - rect.width) / 2);
  EXPECT_EQ(rect.y, outer.y + (outer.height - rect.height) / 2);
}

TEST(placement_test, a_child_window_is_centred_in_its_parent_on_every_display) {
  parent_frame_t parent;
  auto* panel = new wxPanel(parent.frame);
  auto* child = new wxPanel(panel, wxID_ANY, wxPoint(0, 0), wxSize(100, 50));
  plaxi1::place_centred(child);
  const wxSize room = panel->GetClientSize();
  EXPECT_EQ(child->GetPosition(), wxPoint((room.x - 100) / 2, (room.y - 50) / 2));
  plaxi1::place_centred(nullptr);  // ignored
}

}  // namespace
