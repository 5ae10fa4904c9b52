#pragma once
#include <korvat2/signal.h>
#include <plaxi1/press_tracker.h>

#include <wx/bitmap.h>
#include <wx/control.h>

#include <memory>

class wxImage;

namespace plaxi1 {

namespace _internal {
class state_images_t;
}

/// A borderless window that shows one picture per look: normal, under the pointer,
/// pressed, disabled. Its best size is the image size given at construction. A click
/// (pressed and released over it with the left button) fires `clicked`, once, on the GUI
/// thread; a disabled button neither changes its look under the pointer nor fires.
/// The parent owns it, as any child window.
class wxIconButton : public wxControl {
 public:
  /// `image_size` in device-independent pixels; `style` adds to wxBORDER_NONE.
  wxIconButton(wxWindow* parent, int id, const wxPoint& pos, const wxSize& size, long style,
               wxSize image_size);
  ~wxIconButton() override;

  /// Sets the picture of each look whose bit is in `state` (elements::image_state_t:
  /// 1 normal, 2 hover, 4 pressed, 8 disabled). An image larger than the image size is the display-scale form
  /// and is drawn at the image size. A look without a picture shows the normal one.
  void SetImage(int state, const wxImage& image);
  /// The bit of the look shown now (see SetImage), whether it has a picture or not.
  int GetShownState() const;

  bool Enable(bool enable = true) override;
  bool AcceptsFocus() const override { return false; }
  bool ShouldInheritColours() const override { return true; }

  korvat2::signal_t<> clicked;

 protected:
  wxSize DoGetBestSize() const override;

 private:
  void handle_paint(wxPaintEvent& event);
  void handle_mouse(wxMouseEvent& event);
  void handle_capture_lost(wxMouseCaptureLostEvent& event);
  void release_capture();

  wxSize m_image_size;
  std::unique_ptr<_internal::state_images_t> m_images;
  press_tracker_t m_press;

  wxDECLARE_EVENT_TABLE();
};

}  // namespace plaxi1
