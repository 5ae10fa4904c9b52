#include <ombrelc7/control.h>

#include <ombrelc7/sys_window.h>

namespace ombrelc7 {

COMBRELControl::COMBRELControl(ISysWindow* window) : m_window(window) {}

COMBRELControl::~COMBRELControl() {
  if (m_window) {
    m_window->DetachControl(this);
  }
}

void COMBRELControl::SetImageList(IImageList* images) {
  m_images = images;
  // Captions with icons change size: measure everything again, as after a theme change.
  HandleThemeChanged();
}

}  // namespace ombrelc7
