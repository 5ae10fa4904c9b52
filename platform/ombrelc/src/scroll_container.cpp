#include <ombrelcfrw7/scroll_container.h>

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>

#include "text_metrics_p.h"
#include "theme_p.h"

#include <plaxi1/style.h>

#include <wx/dc.h>
#include <wx/event.h>

#include <algorithm>

namespace ombrelcfrw7 {

using namespace _internal;
using ombrelc7::point;
using ombrelc7::rect;

namespace {
constexpr int bar_width = 10;  // room kept at the right; the bar drawn in it is thinner
constexpr int min_thumb = 24;
}  // namespace

CScrollContainer::CScrollContainer(CVisualElement* parent, const ombrelc7::size<int>& size,
                                   ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment) {}

void CScrollContainer::SetScrolled(CVisualElement* scrolled) {
  if (scrolled == m_scrolled) {
    return;
  }
  CVisualElement* old = m_scrolled;
  m_scrolled = nullptr;
  delete old;
  if (scrolled) {
    scrolled->ReParent(this);
  }
  m_scrolled = scrolled;
  m_pos = 0;
  m_follow_end = true;
  OnChange();
}

void CScrollContainer::OnChildrenChanged() {
  // The scrolled element left (deleted or moved away).
  const auto& children = GetChildren();
  if (m_scrolled && std::find(children.begin(), children.end(), m_scrolled) == children.end()) {
    m_scrolled = nullptr;
  }
}

int CScrollContainer::BarWidth() const { return bar_width; }

rect<int> CScrollContainer::GetViewRect() const {
  const rect<int>& r = GetRect();
  return rect<int>(r.left, r.top, std::max(r.left, r.right - BarWidth()), r.bottom);
}

int CScrollContainer::GetLineStep() const { return line_height(plaxi1::font_normal, style_plain) + 4; }

int CScrollContainer::GetMaxScrollPos() const {
  return std::max(0, m_content_height - GetViewRect().height());
}

bool CScrollContainer::IsAtEnd() const { return m_pos >= GetMaxScrollPos(); }

void CScrollContainer::SetScrollPos(int pos) {
  if (ombrelc7::ISysWindow* window = GetWindow()) {
    window->FlushLayout();  // against the current content height
  }
  pos = std::clamp(pos, 0, GetMaxScrollPos());
  m_follow_end = pos >= GetMaxScrollPos();
  if (pos != m_pos) {
    m_pos = pos;
    Invalidate();
  }
}

void CScrollContainer::ScrollToEnd() {
  if (ombrelc7::ISysWindow* window = GetWindow()) {
    window->FlushLayout();
  }
  m_follow_end = true;
  SetScrollPos(GetMaxScrollPos());
}

void CScrollContainer::EnsureVisible(const rect<int>& area) {
  const rect<int> view = GetViewRect();
  const int top = area.top - view.top;
  const int bottom = area.bottom - view.top;
  if (top < m_pos) {
    SetScrollPos(top);
  } else if (bottom > m_pos + view.height()) {
    SetScrollPos(bottom - view.height());
  }
}

int CScrollContainer::MeasureWidth() const {
  const int content =
      m_scrolled && m_scrolled->IsVisible() ? m_scrolled->GetPreferredWidth() + BarWidth() : 0;
  return std::max(GetMinSize().cx, content);
}

int CScrollContainer::MeasureHeight(int) const { return GetMinSize().cy; }

void CScrollContainer::ArrangeChildren() {
  const rect<int> view = GetViewRect();
  for (CVisualElement* child : GetChildren()) {
    if (child != m_scrolled) {
      child->Arrange(PlaceInArea(child, view));
    }
  }
  if (!m_scrolled) {
    m_content_height = 0;
    m_pos = 0;
    return;
  }
  const int height = m_scrolled->IsVisible() ? m_scrolled->GetHeightFor(view.width()) : 0;
  m_content_height = std::max(height, view.height());
  m_scrolled->Arrange(rect<int>::from_size(view.left, view.top, view.width(), m_content_height));
  // A view at the end follows the content as it grows.
  m_pos = m_follow_end ? GetMaxScrollPos() : std::clamp(m_pos, 0, GetMaxScrollPos());
}

rect<int> CScrollContainer::TrackRect() const {
  const rect<int>& r = GetRect();
  return rect<int>(r.right - BarWidth(), r.top, r.right, r.bottom);
}

rect<int> CScrollContainer::ThumbRect() const {
  const rect<int> track = TrackRect();
  const int view = GetViewRect().height();
  if (m_content_height <= 0 || track.height() <= 0) {
    return {};
  }
  const int length =
      std::clamp(static_cast<int>(static_cast<long long>(track.height()) * view / m_content_height),
                 std::min(min_thumb, track.height()), track.height());
  const int range = track.height() - length;
  const int max = GetMaxScrollPos();
  const int top = track.top + (max > 0 ? static_cast<int>(static_cast<long long>(range) * m_pos / max) : 0);
  return rect<int>(track.left, top, track.right, top + length);
}

void CScrollContainer::PaintContent(wxDC& dc, const rect<int>& clip) {
  if (!HasBar()) {
    return;
  }
  const wxColour window = theme_colour(plaxi1::color_window);
  const wxColour text = theme_colour(plaxi1::color_text);
  const rect<int> track = TrackRect();
  const rect<int> thumb = ThumbRect();
  const bool active = m_bar_hover || m_drag_offset >= 0;
  // A thin track with a rounded thumb, as GTK's overlay bars look; wider while in use.
  const int thickness = active ? 8 : 6;
  const int x = track.right - thickness - 2;
  // Amounts of light, not of sRGB values: 0.13 is a faint tint.
  const auto mix = plaxi1::color_helpers_t::make_gradient;
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(mix(window, text, 0.13)));
  dc.DrawRoundedRectangle(x, track.top + 2, thickness, track.height() - 4, thickness / 2.0);
  dc.SetBrush(wxBrush(mix(window, text, active ? 0.83 : 0.62)));
  dc.DrawRoundedRectangle(x, thumb.top + 2, thickness, std::max(4, thumb.height() - 4), thickness / 2.0);
}

void CScrollContainer::PaintChildren(wxDC& dc, const rect<int>& clip) {
  for (CVisualElement* child : GetChildren()) {
    if (child != m_scrolled) {
      child->Paint(dc, clip);
    }
  }
  if (!m_scrolled) {
    return;
  }
  const rect<int> visible = clip.intersection(GetViewRect());
  if (visible.empty()) {
    return;
  }
  wxDCClipper clipper(dc, wxRect(visible.left, visible.top, visible.width(), visible.height()));
  const wxPoint origin = dc.GetDeviceOrigin();
  dc.SetDeviceOrigin(origin.x, origin.y - m_pos);
  m_scrolled->Paint(dc, visible.offset(0, m_pos));
  dc.SetDeviceOrigin(origin.x, origin.y);
}

CVisualElement* CScrollContainer::ChildAt(const point<int>& pos) const {
  if (m_scrolled && m_scrolled->IsVisible() && m_scrolled->GetRect().contains(pos)) {
    return m_scrolled;
  }
  return CVisualElement::ChildAt(pos);
}

bool CScrollContainer::OnMouse(const element_mouse_t& event) {
  CBaseControl* control = GetBaseControl();
  const rect<int> track = TrackRect();
  switch (event.kind) {
    case element_mouse_t::wheel: {
      const int notches = event.wheel_rotation / std::max(1, event.wheel_delta);
      const int step = notches != 0 ? notches * event.wheel_lines * GetLineStep()
                                    : (event.wheel_rotation > 0 ? 1 : -1) * GetLineStep();
      SetScrollPos(m_pos - step);
      return true;
    }
    case element_mouse_t::down:
      if (!HasBar() || !track.contains(event.pos)) {
        return false;
      }
      if (ThumbRect().contains(event.pos)) {
        m_drag_offset = event.pos.y - ThumbRect().top;
        if (control) {
          control->CaptureMouse(this);
        }
        Invalidate();
      } else {
        const int page = std::max(GetLineStep(), GetViewRect().height() - GetLineStep());
        SetScrollPos(event.pos.y < ThumbRect().top ? m_pos - page : m_pos + page);
      }
      return true;
    case element_mouse_t::move:
      if (m_drag_offset >= 0) {
        const rect<int> thumb = ThumbRect();
        const int range = track.height() - thumb.height();
        if (range > 0) {
          const int top = std::clamp(event.pos.y - m_drag_offset - track.top, 0, range);
          SetScrollPos(static_cast<int>(static_cast<long long>(top) * GetMaxScrollPos() / range));
        }
        return true;
      }
      if (track.contains(event.pos) != m_bar_hover) {
        m_bar_hover = !m_bar_hover;
        Invalidate();
      }
      return false;
    case element_mouse_t::up:
      if (m_drag_offset >= 0) {
        m_drag_offset = -1;
        Invalidate();
        return true;
      }
      return false;
    case element_mouse_t::leave:
      if (event.target == this || m_drag_offset >= 0) {
        m_drag_offset = -1;
        m_bar_hover = false;
        Invalidate();
      }
      return false;
    default: return false;
  }
}

bool CScrollContainer::OnKey(const element_key_t& key) {
  const int page = std::max(GetLineStep(), GetViewRect().height() - GetLineStep());
  switch (key.keycode) {
    case WXK_UP: SetScrollPos(m_pos - GetLineStep()); return true;
    case WXK_DOWN: SetScrollPos(m_pos + GetLineStep()); return true;
    case WXK_PAGEUP: SetScrollPos(m_pos - page); return true;
    case WXK_PAGEDOWN: SetScrollPos(m_pos + page); return true;
    case WXK_HOME: SetScrollPos(0); return true;
    case WXK_END: ScrollToEnd(); return true;
    default: return false;
  }
}

}  // namespace ombrelcfrw7
