#include <plaxi1/icon_button.h>

#include "state_images_p.h"

#include <wx/dcbuffer.h>
#include <wx/image.h>

namespace plaxi1 {

wxBEGIN_EVENT_TABLE(wxIconButton, wxControl)
  EVT_PAINT(wxIconButton::handle_paint)
  EVT_MOUSE_EVENTS(wxIconButton::handle_mouse)
  EVT_MOUSE_CAPTURE_LOST(wxIconButton::handle_capture_lost)
wxEND_EVENT_TABLE()

wxIconButton::wxIconButton(wxWindow* parent, int id, const wxPoint& pos, const wxSize& size, long style,
                           wxSize image_size)
    : m_image_size(image_size), m_images(std::make_unique<_internal::state_images_t>()) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, id, pos, size, style | wxBORDER_NONE);
  SetInitialSize(size);
}

wxIconButton::~wxIconButton() = default;

void wxIconButton::SetImage(int state, const wxImage& image) {
  // The display-scale form of a picture is larger than the size it shows at.
  const double scale = image.IsOk() && m_image_size.x > 0 && image.GetWidth() > m_image_size.x
                           ? static_cast<double>(image.GetWidth()) / m_image_size.x
                           : 1.0;
  m_images->set(state, image, scale);
  Refresh();
}

int wxIconButton::GetShownState() const {
  return _internal::state_images_t::shown_state(m_press, IsEnabled());
}

bool wxIconButton::Enable(bool enable) {
  if (!enable) {
    release_capture();
  }
  m_press.set_enabled(enable);
  const bool changed = wxControl::Enable(enable);
  Refresh();
  return changed;
}

wxSize wxIconButton::DoGetBestSize() const { return FromDIP(m_image_size); }

void wxIconButton::handle_paint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(wxBrush(GetBackgroundColour()));
  dc.Clear();
  const wxBitmap& bitmap = m_images->get(GetShownState());
  if (bitmap.IsOk()) {
    const wxSize client = GetClientSize();
    const wxSize shown = bitmap.GetLogicalSize();
    dc.DrawBitmap(bitmap, (client.x - shown.x) / 2, (client.y - shown.y) / 2, true);
  }
}

void wxIconButton::handle_mouse(wxMouseEvent& event) {
  const bool inside = wxRect(GetClientSize()).Contains(event.GetPosition());
  bool changed = false;
  bool click = false;
  if (event.LeftDown() || event.LeftDClick()) {
    changed = m_press.on_down(inside);
    if (m_press.is_press_running() && !HasCapture()) {
      CaptureMouse();  // the release must come here, wherever it happens
    }
  } else if (event.LeftUp()) {
    release_capture();
    click = m_press.on_up(inside, &changed);
  } else if (event.Leaving() && !HasCapture()) {
    changed = m_press.on_leave();
  } else if (event.Moving() || event.Dragging() || event.Entering() || event.Leaving()) {
    changed = m_press.on_move(inside && !event.Leaving());
  } else {
    event.Skip();
  }
  if (changed) {
    Refresh();
  }
  if (click) {
    clicked();
  }
}

void wxIconButton::handle_capture_lost(wxMouseCaptureLostEvent&) {
  if (m_press.on_capture_lost()) {
    Refresh();
  }
}

void wxIconButton::release_capture() {
  if (HasCapture()) {
    ReleaseMouse();
  }
}

}  // namespace plaxi1
