#pragma once
// The base of a control that draws into a wrapped window.
#include <ombrelc7/geometry.h>
#include <ombrelc7/object.h>
#include <ombrelc7/picture.h>

#include <korvat2/signal.h>

class wxDC;
class wxMouseEvent;
class wxKeyEvent;

namespace ombrelc7 {

class ISysWindow;

/// A control attached to a wrapper (see CreateWrapperForWx), which owns it and forwards it
/// the window's events through the `Handle...` functions. GUI thread.
class COMBRELControl : public korvat2::subscriber_base_t {
 public:
  explicit COMBRELControl(ISysWindow* window);
  ~COMBRELControl() override;
  COMBRELControl(const COMBRELControl&) = delete;
  COMBRELControl& operator=(const COMBRELControl&) = delete;

  /// Keeps a reference to `images` (null: none) and repaints.
  void SetImageList(IImageList* images);
  IImageList* GetImageList() const { return m_images.get(); }
  ISysWindow* GetWindow() const { return m_window; }

  // What the wrapper forwards; overridden by the concrete control.
  virtual void HandlePaint(wxDC& dc, const rect<int>& area) {}
  virtual void HandleSize(const size<int>& client) {}
  virtual void HandleLayout() {}
  /// Mouse events: clicks, wheel, moves, leaving, right clicks.
  virtual void HandleMouse(wxMouseEvent& event) {}
  /// Key presses; true when used (otherwise the window's own handling goes on).
  virtual bool HandleKey(wxKeyEvent& event) { return false; }
  /// A context-menu request from the keyboard.
  virtual void HandleContextMenuKey() {}
  virtual void HandleFocus(bool focused) {}
  /// The theme, the system colours or the display's resolution changed.
  virtual void HandleThemeChanged() {}
  /// The mouse capture was taken away.
  virtual void HandleCaptureLost() {}

 private:
  ISysWindow* m_window;
  ombrelc_ptr<IImageList> m_images;
};

}  // namespace ombrelc7
