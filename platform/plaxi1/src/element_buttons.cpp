#include <a11y/atk_bridge.h>
#include <plaxi1/animation_frames.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/element_buttons.h>
#include <plaxi1/picture.h>

#include "state_images_p.h"

#include <wx/dc.h>
#include <wx/image.h>
#include <wx/renderer.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <algorithm>

namespace plaxi1::elements {

namespace {

// Room between a picture and the label beside or under it.
constexpr int picture_gap = 4;

bool valid_state(int state) { return state >= 0 && state <= 15; }

}  // namespace

// The element's own layout, inside the border size: the border enters the minimum size
// and stays free around the children.
class FlatButton::padded_layout_t : public Layout {
 public:
  explicit padded_layout_t(FlatButton* button) : Layout(button), m_button(button) {}

  wxSize GetMinSize() const override {
    if (!m_button) {
      return wxSize(0, 0);
    }
    return Layout::GetMinSize() + 2 * m_button->GetBorderSize();
  }
  void Arrange(const wxRect& rect) override {
    if (m_button) {
      wxRect inner = rect;
      Layout::Arrange(inner.Deflate(m_button->GetBorderSize()));
    }
  }

  FlatButton* m_button;  // null once the button is gone
};

FlatButton::FlatButton(const ptr_t& parent, int position_flags)
    : UIElement(parent, position_flags), m_layout(new padded_layout_t(this)) {}

FlatButton::~FlatButton() { m_layout->m_button = nullptr; }

korvat2::intrusive_pointer_t<Layout> FlatButton::GetLayout() { return m_layout; }

void FlatButton::SetPressingMode(int mode) {
  m_mode =
      mode == press_on_down || mode == press_toggle ? static_cast<PressingModes>(mode) : press_on_release;
}

void FlatButton::SetBorderSize(const wxSize& size) {
  if (size != m_border) {
    m_border = size;
    RequestLayout();
  }
}

void FlatButton::SetColor(int state, const wxColour& color) {
  if (valid_state(state)) {
    m_colors[static_cast<std::size_t>(state)] = color;
    Invalidate();
  }
}

wxColour FlatButton::GetColor(int state) const {
  if (!valid_state(state)) {
    state = state_normal;
  }
  const int candidates[] = {state, state & ~state_hover, state & ~(state_hover | state_pressed),
                            state & ~(state_hover | state_pressed | state_selected), state_normal};
  for (const int candidate : candidates) {
    if (const auto& color = m_colors[static_cast<std::size_t>(candidate)]) {
      return *color;
    }
  }
  return wxColour();
}

void FlatButton::Enable(bool enable) {
  if (m_press.set_enabled(enable)) {
    Invalidate();
    ElementAdapter* adapter = GetAdapter();
    if (!enable && adapter && adapter->GetFocusElement() == this) {
      adapter->SetFocusElement(nullptr);
    }
    if (a11y::atk_bridge_t* bridge = adapter ? adapter->GetAccessibleBridge() : nullptr) {
      bridge->state_changed(this, a11y::state_enabled, enable);
    }
  }
}

void FlatButton::SetAccessibleExpanded(bool expanded) {
  if (m_expanded == (expanded ? 1 : 0)) {
    return;
  }
  m_expanded = expanded ? 1 : 0;
  ElementAdapter* adapter = GetAdapter();
  if (a11y::atk_bridge_t* bridge = adapter ? adapter->GetAccessibleBridge() : nullptr) {
    bridge->state_changed(this, a11y::state_expanded, expanded);
  }
}

void FlatButton::SetSelected(bool selected) {
  if (selected != m_selected) {
    m_selected = selected;
    Invalidate();
  }
}

int FlatButton::GetStateIndex() const {
  int state = m_selected ? state_selected : state_normal;
  // A disabled button keeps its hover bit: a host may colour a disabled button under the
  // pointer apart.
  if (m_press.is_inside()) {
    state |= state_hover;
  }
  if (m_press.is_pressed()) {
    state |= state_pressed;
  }
  if (!m_press.is_enabled()) {
    state |= state_disabled;
  }
  return state;
}

wxRect FlatButton::GetContentRect() const { return GetPaintRect().Deflate(m_border); }

wxSize FlatButton::GetContentSize() const { return GetButtonContentSize() + 2 * m_border; }

void FlatButton::PaintBackground(wxDC& dc, const wxColour& color) {
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(color));
  dc.DrawRectangle(GetPaintRect());
}

void FlatButton::OnPaint(wxDC& dc) {
  const wxColour color = GetColor(GetStateIndex());
  if (color.IsOk()) {
    PaintBackground(dc, color);
  }
  // As GTK does, the focus mark shows only while the window has the keyboard.
  ElementAdapter* adapter = GetAdapter();
  wxWindow* window = adapter ? adapter->GetWindow() : nullptr;
  if (window && adapter->GetFocusElement() == this && window->HasFocus()) {
    wxRendererNative::Get().DrawFocusRect(window, dc, GetPaintRect().Deflate(1));
  }
}

bool FlatButton::OnKey(const wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  ElementAdapter* adapter = GetAdapter();
  if (!IsEnabled() || !adapter || adapter->GetFocusElement() != this) {
    return false;
  }
  if (key != WXK_SPACE && key != WXK_RETURN && key != WXK_NUMPAD_ENTER) {
    return false;
  }
  Fire();
  return true;
}

bool FlatButton::OnMouse(const mouse_event_t& event) {
  const bool inside = GetRect().Contains(event.pos);
  bool changed = false;
  bool click = false;
  switch (event.kind) {
    case mouse_event_t::move: changed = m_press.on_move(inside); break;
    case mouse_event_t::down:
      changed = m_press.on_down(inside);
      click = m_mode == press_on_down && m_press.is_press_running();
      break;
    case mouse_event_t::up: click = m_press.on_up(inside, &changed) && m_mode != press_on_down; break;
    // While the button holds the press, the pointer may leave and come back.
    case mouse_event_t::leave: changed = IsPressed() ? m_press.on_move(false) : m_press.on_leave(); break;
    case mouse_event_t::capture_lost: changed = m_press.on_capture_lost(); break;
  }
  if (changed) {
    Invalidate();
  }
  if (click) {
    Fire();
  }
  return true;
}

void FlatButton::Fire() {
  if (m_mode == press_toggle) {
    SetSelected(!m_selected);
  }
  // A receiver may drop the last owner of the button; one that no pointer owns stays.
  ptr_t keep;
  if (try_add_ref()) {
    keep = ptr_t::adopt(this);
  }
  pressed(m_id);
}

// The picture of a tab button: a still one or an animation, with room for the label on
// the side that it stands. It steps its animation while it is painted: a hidden button
// isn't, and its animation stops at the next frame until it is painted again.
class _internal::picture_element_t : public UIElement {
 public:
  picture_element_t(const ptr_t& parent, int position_flags, bool above)
      : UIElement(parent, position_flags), m_timer(this), m_above(above) {}
  ~picture_element_t() override { m_timer.Stop(); }

  void SetImage(const wxImage& image) {
    m_timer.Stop();
    m_frames = animation_frames_t();
    m_bitmap = image.IsOk() ? wxBitmap(image, -1, display_scale()) : wxBitmap();
    Changed();
  }
  void SetAnimation(const wxAnimation& animation, const wxAnimation& animation_2x) {
    m_timer.Stop();
    m_bitmap = wxBitmap();
    m_frames = animation_frames_t(animation, animation_2x);
    m_frame = 0;
    Changed();
  }
  bool IsAnimating() const { return m_timer.IsRunning(); }
  std::size_t GetFrame() const { return m_frame; }

 protected:
  wxSize GetContentSize() const override {
    const wxSize size = PictureSize();
    if (size.x <= 0) {
      return size;
    }
    return m_above ? size + wxSize(0, picture_gap) : size + wxSize(picture_gap, 0);
  }
  void OnPaint(wxDC& dc) override {
    const wxBitmap bitmap = m_frames.empty() ? m_bitmap : m_frames.frame(m_frame);
    if (!bitmap.IsOk()) {
      return;
    }
    const wxRect r = GetRect();
    const wxSize size = bitmap.GetLogicalSize();
    // Centred across the button, at the side of the label.
    const wxPoint at =
        m_above ? wxPoint(r.x + (r.width - size.x) / 2, r.y) : wxPoint(r.x, r.y + (r.height - size.y) / 2);
    dc.DrawBitmap(bitmap, at, true);
    if (m_frames.size() > 1 && !m_timer.IsRunning()) {
      m_timer.StartOnce(m_frames.delay(m_frame));
    }
  }

 private:
  class timer_t : public wxTimer {
   public:
    explicit timer_t(picture_element_t* owner) : m_owner(owner) {}
    void Notify() override { m_owner->NextFrame(); }

   private:
    picture_element_t* m_owner;
  };

  wxSize PictureSize() const {
    if (!m_frames.empty()) {
      return m_frames.logical_size();
    }
    return m_bitmap.IsOk() ? m_bitmap.GetLogicalSize() : wxSize(0, 0);
  }
  void Changed() {
    SetVisible(m_bitmap.IsOk() || !m_frames.empty());
    RequestLayout();
    Invalidate();
  }
  void NextFrame() {
    const ElementAdapter* adapter = GetAdapter();
    const wxWindow* window = adapter ? adapter->GetWindow() : nullptr;
    if (m_frames.empty() || !IsShownInTree() || !window || !window->IsShownOnScreen()) {
      return;  // painted again, it starts again
    }
    m_frame = (m_frame + 1) % m_frames.size();
    Invalidate();
    m_timer.StartOnce(m_frames.delay(m_frame));
  }

  timer_t m_timer;
  animation_frames_t m_frames;
  wxBitmap m_bitmap;
  std::size_t m_frame = 0;
  bool m_above;
};

TabButton::TabButton(const ptr_t& parent, int position_flags) : TabButton(parent, position_flags, false) {}

TabButton::TabButton(const ptr_t& parent, int position_flags, bool image_above_text)
    : FlatButton(parent, position_flags), m_image_above_text(image_above_text) {
  MakeContent();
}

TabButton::~TabButton() = default;

bool TabButton::MakeContent() {
  if (m_label) {
    return true;
  }
  // Children hold a pointer to their parent, which mustn't be the last one.
  if (!try_add_ref()) {
    return false;
  }
  const ptr_t self = ptr_t::adopt(this);
  const int picture_flags = m_image_above_text ? pos_top | pos_center_h : pos_left | pos_center_v;
  m_picture = new _internal::picture_element_t(self, picture_flags, m_image_above_text);
  m_picture->SetVisible(false);
  m_label = new TextElement(self, pos_center_h | pos_center_v);
  return true;
}

korvat2::intrusive_pointer_t<TextElement> TabButton::GetText() {
  MakeContent();
  return m_label;
}

void TabButton::SetImage(const wxImage& image) {
  if (MakeContent()) {
    m_picture->SetImage(image);
  }
}

void TabButton::SetAnimation(const wxAnimation& animation) { SetAnimation(animation, wxAnimation()); }

void TabButton::SetAnimation(const wxAnimation& animation, const wxAnimation& animation_2x) {
  if (MakeContent()) {
    m_picture->SetAnimation(animation, animation_2x);
  }
}

bool TabButton::IsAnimating() const { return m_picture && m_picture->IsAnimating(); }

std::size_t TabButton::GetAnimationFrame() const { return m_picture ? m_picture->GetFrame() : 0; }

RoundBgButton::RoundBgButton(const ptr_t& parent, int position_flags, int corner_radius,
                             bool image_above_text)
    : TabButton(parent, position_flags, image_above_text), m_radius(std::max(0, corner_radius)) {}

void RoundBgButton::PaintBackground(wxDC& dc, const wxColour& color) {
  const wxRect box = GetPaintRect();
  const int radius = m_radius > 0 ? m_radius : box.height / 4;
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(color));
  dc.DrawRoundedRectangle(box, std::min(radius, std::min(box.width, box.height) / 2));
}

IconButton::IconButton(const ptr_t& parent, int position_flags, int padding)
    : FlatButton(parent, position_flags), m_images(std::make_unique<plaxi1::_internal::state_images_t>()) {
  SetBorderSize(wxSize(padding, padding));
}

IconButton::~IconButton() = default;

void IconButton::SetImage(int state, const wxImage& image) {
  m_images->set(state, image, display_scale());
  RequestLayout();
  Invalidate();
}

int IconButton::GetShownState() const {
  return plaxi1::_internal::state_images_t::shown_state(GetPressTracker(), IsEnabled());
}

wxSize IconButton::GetButtonContentSize() const { return m_images->normal_size(); }

void IconButton::OnPaint(wxDC& dc) {
  FlatButton::OnPaint(dc);
  const wxBitmap& bitmap = m_images->get(GetShownState());
  if (bitmap.IsOk()) {
    const wxRect content = GetContentRect();
    const wxSize size = bitmap.GetLogicalSize();
    dc.DrawBitmap(bitmap, content.x + (content.width - size.x) / 2, content.y + (content.height - size.y) / 2,
                  true);
  }
}

}  // namespace plaxi1::elements
