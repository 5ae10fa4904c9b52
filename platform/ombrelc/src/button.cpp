#include <ombrelcfrw7/button.h>

#include <a11y/atk_bridge.h>

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>

#include "text_metrics_p.h"
#include "theme_p.h"

#include <wx/dc.h>
#include <wx/renderer.h>
#include <wx/window.h>

#include <algorithm>

namespace ombrelcfrw7 {

using namespace _internal;
using ombrelc7::rect;

namespace {
constexpr int pad_x = 14;
constexpr int pad_y = 8;
constexpr int min_width = 84;  // as GTK's dialog buttons
constexpr int button_gap = 6;
}  // namespace

CButton::CButton(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CCaption(parent, size, alignment) {
  SetTextAlign(taCenter | taVCenter);
}

void CButton::Enable(bool enable) {
  if (!m_press.set_enabled(enable)) {
    return;
  }
  if (!enable && HasFocus()) {
    if (CBaseControl* control = GetBaseControl()) {
      control->SetFocusElement(nullptr);
    }
  }
  Invalidate();
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
    bridge->state_changed(this, a11y::state_enabled, enable);
  }
}

void CButton::Click() {
  if (IsEnabled()) {
    m_click(this);
  }
}

void CButton::SetCompact(bool compact) {
  if (compact != m_compact) {
    m_compact = compact;
    OnChange();
  }
}

int CButton::MeasureWidth() const {
  if (m_compact) {
    // The caption's inset on either side and a pixel of frame beyond it.
    return std::max(GetMinSize().cx, NaturalTextWidth() + pad_x + 2);
  }
  return std::max({GetMinSize().cx, min_width, NaturalTextWidth() + 2 * pad_x});
}

int CButton::MeasureHeight(int) const {
  return std::max(GetMinSize().cy, line_height(GetFontKind(), style_plain) + 2 * pad_y);
}

rect<int> CButton::TextArea() const {
  const rect<int>& r = GetRect();
  return rect<int>(r.left + pad_x / 2, r.top, r.right - pad_x / 2, r.bottom);
}

void CButton::PaintContent(wxDC& dc, const rect<int>& clip) {
  const rect<int>& r = GetRect();
  int flags = 0;
  if (!IsEnabled()) {
    flags |= wxCONTROL_DISABLED;
  } else {
    if (m_press.is_pressed()) {
      flags |= wxCONTROL_PRESSED;
    }
    if (m_press.is_hot()) {
      flags |= wxCONTROL_CURRENT;
    }
    if (HasFocus()) {
      flags |= wxCONTROL_FOCUSED;
    }
  }
  ombrelc7::ISysWindow* window = GetWindow();
  wxWindow* wx_window = window ? window->GetWxWindow() : nullptr;
  if (wx_window) {
    wxRendererNative::Get().DrawPushButton(wx_window, dc, wxRect(r.left, r.top, r.width(), r.height()),
                                           flags);
  }
  const wxColour text =
      IsEnabled() ? (GetTextColor().IsOk() ? GetTextColor() : theme_colour(plaxi1::color_dialog_text))
                  : theme_colour(plaxi1::color_grey_text);
  DrawText(dc, TextArea(), text);
  // As GTK does, the focus ring shows only while the window has the keyboard.
  if (HasFocus() && wx_window && wx_window->HasFocus()) {
    wxRendererNative::Get().DrawFocusRect(wx_window, dc,
                                          wxRect(r.left + 4, r.top + 4, r.width() - 8, r.height() - 8));
  }
}

bool CButton::OnMouse(const element_mouse_t& event) {
  const bool inside = GetRect().contains(event.pos);
  bool changed = false;
  bool click = false;
  switch (event.kind) {
    case element_mouse_t::down:
    case element_mouse_t::double_click:
      changed = m_press.on_down(inside);
      if (m_press.is_press_running()) {
        if (CBaseControl* control = GetBaseControl()) {
          control->CaptureMouse(this);
        }
      }
      break;
    case element_mouse_t::up: click = m_press.on_up(inside, &changed); break;
    case element_mouse_t::move: changed = m_press.on_move(inside); break;
    // The control sends a leave only without a capture, or when it lost the capture.
    case element_mouse_t::leave: changed = m_press.on_leave(); break;
    default: return false;
  }
  if (changed) {
    Invalidate();
  }
  if (click) {
    Click();
  }
  return true;
}

bool CButton::OnKey(const element_key_t& key) {
  if (!IsEnabled() || !HasFocus()) {
    return false;
  }
  if (key.keycode == WXK_SPACE || key.keycode == WXK_RETURN || key.keycode == WXK_NUMPAD_ENTER) {
    Click();
    return true;
  }
  return false;
}

CButtonSet::CButtonSet(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment) {}

void CButtonSet::ClearButtons() {
  const std::vector<CVisualElement*> buttons = GetChildren();
  for (CVisualElement* button : buttons) {
    delete button;
  }
  OnChange();
}

CButton* CButtonSet::AddButton(const std::string& caption, int id) {
  auto* button = new CButton(this, ombrelc7::size<int>(0, 0), ombrelc7::alNone);
  button->SetCaption(caption);
  button->SetId(id);
  button->ClickSignal().connect(this, &CButtonSet::OnButtonClick);
  OnChange();
  return button;
}

CButton* CButtonSet::GetButton(std::size_t index) const {
  return index < GetChildren().size() ? static_cast<CButton*>(GetChildren()[index]) : nullptr;
}

void CButtonSet::OnButtonClick(CButton* button) { m_button(button->GetId()); }

int CButtonSet::MeasureWidth() const {
  int width = 0;
  for (const CVisualElement* button : GetChildren()) {
    if (button->IsVisible()) {
      width += (width > 0 ? button_gap : 0) + button->GetPreferredWidth();
    }
  }
  return std::max(GetMinSize().cx, width);
}

int CButtonSet::MeasureHeight(int) const {
  int height = 0;
  for (const CVisualElement* button : GetChildren()) {
    if (button->IsVisible()) {
      height = std::max(height, button->GetHeightFor(button->GetPreferredWidth()));
    }
  }
  return std::max(GetMinSize().cy, height);
}

void CButtonSet::ArrangeChildren() {
  // Right to left from the trailing edge, in the order added.
  const rect<int>& r = GetRect();
  int x = r.right;
  const auto& buttons = GetChildren();
  for (auto it = buttons.rbegin(); it != buttons.rend(); ++it) {
    CVisualElement* button = *it;
    if (!button->IsVisible()) {
      button->Arrange(rect<int>(x, r.top, x, r.top));
      continue;
    }
    const int w = button->GetPreferredWidth();
    const int h = std::min(button->GetHeightFor(w), std::max(0, r.height()));
    x -= w;
    button->Arrange(rect<int>::from_size(x, r.top + (r.height() - h) / 2, w, h));
    x -= button_gap;
  }
}

}  // namespace ombrelcfrw7
