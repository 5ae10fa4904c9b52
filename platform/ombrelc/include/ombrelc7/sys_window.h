#pragma once
// The wrapper of one wx window that hosts a control of visual elements.
#include <ombrelc7/geometry.h>

class wxWindow;

namespace ombrelc7 {

class COMBRELControl;

/// The wrapper of one wx window. It belongs to the window and dies with it, deleting the
/// control attached to it first. It forwards the window's paint, size, mouse, key, focus,
/// DPI and theme events to the attached control. GUI thread.
///
/// LockUpdate and SuspendLayout nest: while update is locked, invalidations are collected
/// and the window is refreshed once at the last unlock; while layout is suspended, layout
/// requests wait and one layout runs at the last resume.
class ISysWindow {
 public:
  /// Set by an owner whose window hosts native child windows over the control (in-place
  /// editors): Setup then gives the window wxCLIP_CHILDREN, so that the control's painting
  /// never covers those children. False by default; it takes effect at Setup.
  bool m_clip_children = false;

  /// How keys reach the control, taking effect at Setup. 1 (the default): the control takes
  /// every key, Tab, Enter and the arrows included (wxWANTS_CHARS). 0: the dialog keeps its
  /// navigation keys, and the control gets the others. Other values count as 1.
  virtual void SetKeyboardMode(int mode) = 0;
  virtual int GetKeyboardMode() const = 0;
  /// Applies m_clip_children and the keyboard mode to the wx window's style. An owner runs
  /// it after setting them and before building its control.
  virtual void Setup() = 0;

  virtual wxWindow* GetWxWindow() const = 0;
  virtual size<int> GetClientSize() const = 0;
  /// Marks a rectangle of the client area (window coordinates) for repainting.
  virtual void Invalidate(const rect<int>& area) = 0;
  virtual void InvalidateAll() = 0;
  virtual void LockUpdate(bool lock) = 0;
  virtual void SuspendLayout(bool suspend) = 0;
  virtual bool IsUpdateLocked() const = 0;
  virtual bool IsLayoutSuspended() const = 0;

  /// Asks for one layout of the attached control, run on the next idle time or paint, or
  /// at the last SuspendLayout(false); repeated requests before it runs make one layout.
  virtual void RequestLayout() = 0;
  /// Runs a pending layout now, unless layout is suspended.
  virtual void FlushLayout() = 0;
  virtual bool IsLayoutPending() const = 0;

  /// Attaches `control`, which the wrapper then owns; a control attached before is deleted.
  virtual void AttachControl(COMBRELControl* control) = 0;
  /// Forgets `control` without deleting it (a control being deleted by its owner).
  virtual void DetachControl(COMBRELControl* control) = 0;
  virtual COMBRELControl* GetControl() const = 0;

 protected:
  ~ISysWindow() = default;
};

/// The wrapper of `window`, made at the first call and the same one afterwards; null for
/// a null window.
ISysWindow* CreateWrapperForWx(wxWindow* window);
/// The wrapper of `window` when one was made, else null (for tools that look at a window).
ISysWindow* FindWrapperForWx(const wxWindow* window);

}  // namespace ombrelc7
