#include <plaxi1/icon_button.h>

#include <wx/dcbuffer.h>
#include <wx/image.h>

#include <cstddef>
#include <iterator>

namespace plaxi1 {

namespace {

// The looks' bits, by their position in the bitmaps.
constexpr int look_bits[] = {1, 2, 4, 8};
constexpr int look_normal = 1;
constexpr int look_hover = 2;
constexpr int look_pressed = 4;
constexpr int look_disabled = 8;

std::size_t slot_of(int bit) {
  std::size_t slot = 0;
  while (slot + 1 < std::size(look_bits) && look_bits[slot] != bit) {
    ++slot;
  }
  return slot;
}

}  // namespace

wxBEGIN_EVENT_TABLE(wxIconButton, wxControl)
  EVT_PAINT(wxIconButton::handle_paint)
  EVT_MOUSE_EVENTS(wxIconButton::handle_mouse)
  EVT_MOUSE_CAPTURE_LOST(wxIconButton::handle_capture_lost)
wxEND_EVENT_TABLE()

wxIconButton::wxIconButton(wxWindow* parent, int id, const wxPoint& pos, const wxSize& size, long style,
                           wxSize image_size)
    : m_image_size(image_size) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, id, pos, size, style | wxBORDER_NONE);
  SetInitialSize(size);
}

void wxIconButton::SetImage(int state, const wxImage& image) {
  wxBitmap bitmap;
  if (image.IsOk()) {
    // The display-scale form of a picture is larger than the size it shows at.
    const double scale = m_image_size.x > 0 && image.GetWidth() > m_image_size.x
                             ? static_cast<double>(image.GetWidth()) / m_image_size.x
                             : 1.0;
    bitmap = wxBitmap(image, -1, scale);
  }
  for (std::size_t slot = 0; slot < m_bitmaps.size(); ++slot) {
    if (state & look_bits[slot]) {
      m_bitmaps[slot] = bitmap;
    }
  }
  Refresh();
}

int wxIconButton::GetShownState() const {
  if (!IsEnabled()) {
    return look_disabled;
  }
  if (m_press.is_pressed()) {
    return look_pressed;
  }
  return m_press.is_hot() ? look_hover : look_normal;
}

const wxBitmap& wxIconButton::shown_bitmap() const {
  const wxBitmap& bitmap = m_bitmaps[slot_of(GetShownState())];
  return bitmap.IsOk() ? bitmap : m_bitmaps[slot_of(look_normal)];
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
  const wxBitmap& bitmap = shown_bitmap();
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
