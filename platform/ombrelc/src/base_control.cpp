#include <ombrelcfrw7/base_control.h>

#include <a11y/atk_bridge.h>

#include "accessible_tree_p.h"

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/scroll_container.h>

#include <plaxi1/ui_settings.h>

#include "text_metrics_p.h"

#include <wx/dc.h>
#include <wx/event.h>
#include <wx/window.h>

#include <functional>

namespace ombrelcfrw7 {

using ombrelc7::point;
using ombrelc7::rect;

/// The root: covers the window and paints the theme's window colour under everything.
class CBaseControl::root_t : public CVisualElement {
 public:
  explicit root_t(CBaseControl* owner)
      : CVisualElement(nullptr, ombrelc7::size<int>(0, 0), ombrelc7::alClient), m_owner(owner) {}
  CBaseControl* m_owner;

 protected:
  void PaintContent(wxDC& dc, const rect<int>& clip) override {
    if (GetPackedBkColor() != 0) {
      return;  // painted by the element already
    }
    const rect<int> r = GetRect().intersection(clip);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(plaxi1::ui_settings_t::get()->get_color(plaxi1::color_window)));
    dc.DrawRectangle(r.left, r.top, r.width(), r.height());
  }
};

CBaseControl* CBaseControl::OwnerOfRoot(const CVisualElement* root) {
  return static_cast<const root_t*>(root)->m_owner;
}

namespace {

bool within(const CVisualElement* element, const CVisualElement* ancestor) {
  for (; element; element = element->GetParent()) {
    if (element == ancestor) {
      return true;
    }
  }
  return false;
}

void visit(CVisualElement* element, const std::function<void(CVisualElement*)>& fn) {
  fn(element);
  for (CVisualElement* child : element->GetChildren()) {
    visit(child, fn);
  }
}

CScrollContainer* enclosing_scroller(CVisualElement* element) {
  for (CVisualElement* p = element->GetParent(); p; p = p->GetParent()) {
    if (auto* scroller = dynamic_cast<CScrollContainer*>(p)) {
      return scroller;
    }
  }
  return nullptr;
}

}  // namespace

CBaseControl::CBaseControl(ombrelc7::ISysWindow* window)
    : COMBRELControl(window), m_root(std::make_unique<root_t>(this)) {
  m_root->m_flags |= CVisualElement::flag_root;
  plaxi1::ui_settings_t::get()->m_changed_signal.connect(this, &CBaseControl::OnSettingsChanged);
  if (window) {
    window->AttachControl(this);
  }
  StartAccessible();
}

CBaseControl::~CBaseControl() {
  if (GetWindow() && GetWindow()->GetWxWindow() && m_capture && GetWindow()->GetWxWindow()->HasCapture()) {
    GetWindow()->GetWxWindow()->ReleaseMouse();
  }
  StopAccessible();
  // Elements dying now need not report to a dying control; nor is the root one any more.
  m_root->m_owner = nullptr;
  m_root->m_flags &= ~CVisualElement::flag_root;
  m_root.reset();
}

CVisualElement* CBaseControl::GetContent() const { return m_root.get(); }

void CBaseControl::SetContent(CVisualElement* content) {
  const std::vector<CVisualElement*> old = m_root->GetChildren();
  for (CVisualElement* child : old) {
    if (child != content) {
      delete child;
    }
  }
  if (content && content->GetParent() != m_root.get()) {
    content->ReParent(m_root.get());
  }
  if (GetWindow()) {
    GetWindow()->RequestLayout();
  }
}

void CBaseControl::Rearrange() { HandleLayout(); }

void CBaseControl::HandleLayout() {
  ombrelc7::ISysWindow* window = GetWindow();
  if (!window) {
    return;
  }
  ++m_layout_count;
  const ombrelc7::size<int> client = window->GetClientSize();
  m_root->Arrange(rect<int>(0, 0, client.cx, client.cy));
  window->InvalidateAll();
}

void CBaseControl::HandlePaint(wxDC& dc, const rect<int>& area) {
  dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
  m_root->Paint(dc, area);
}

void CBaseControl::HandleSize(const ombrelc7::size<int>&) {
  if (GetWindow()) {
    GetWindow()->RequestLayout();
  }
}

bool CBaseControl::Dispatch(CVisualElement* element, element_mouse_t& event) {
  for (; element; element = element->GetParent()) {
    event.pos = element->FromWindow(event.window_pos);
    if (element->OnMouse(event)) {
      return true;
    }
  }
  return false;
}

void CBaseControl::SetHot(CVisualElement* element, const element_mouse_t& event) {
  if (element == m_hot) {
    return;
  }
  CVisualElement* old = m_hot;
  m_hot = element;
  if (old) {
    element_mouse_t leave = event;
    leave.kind = element_mouse_t::leave;
    leave.target = old;
    leave.pos = old->FromWindow(event.window_pos);
    old->OnMouse(leave);
  }
}

void CBaseControl::HandleMouse(wxMouseEvent& wx_event) {
  if (GetWindow()) {
    GetWindow()->FlushLayout();  // hit tests need the current positions
  }
  element_mouse_t event;
  const wxPoint pos = wx_event.GetPosition();
  event.window_pos = point<int>(pos.x, pos.y);
  event.shift = wx_event.ShiftDown();
  event.control = wx_event.ControlDown();
  const wxEventType type = wx_event.GetEventType();
  if (type == wxEVT_LEFT_DOWN) {
    event.kind = element_mouse_t::down;
  } else if (type == wxEVT_LEFT_UP) {
    event.kind = element_mouse_t::up;
  } else if (type == wxEVT_LEFT_DCLICK) {
    event.kind = element_mouse_t::double_click;
  } else if (type == wxEVT_MOUSEWHEEL) {
    event.kind = element_mouse_t::wheel;
    event.wheel_rotation = wx_event.GetWheelRotation();
    event.wheel_delta = wx_event.GetWheelDelta() > 0 ? wx_event.GetWheelDelta() : 120;
    event.wheel_lines = wx_event.GetLinesPerAction() > 0 ? wx_event.GetLinesPerAction() : 3;
    if (wx_event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL) {
      wx_event.Skip();
      return;
    }
  } else if (type == wxEVT_RIGHT_DOWN) {
    event.kind = element_mouse_t::right_click;
  } else if (type == wxEVT_LEAVE_WINDOW) {
    event.kind = element_mouse_t::leave;
  } else {
    event.kind = element_mouse_t::move;
  }

  if (event.kind == element_mouse_t::leave) {
    if (!m_capture) {
      SetHot(nullptr, event);
    }
    wx_event.Skip();
    return;
  }
  CVisualElement* hit = m_root->HitTest(event.window_pos);
  event.target = hit;
  if (m_capture && event.kind != element_mouse_t::wheel) {
    event.target = m_capture;
    event.pos = m_capture->FromWindow(event.window_pos);
    m_capture->OnMouse(event);
    if (event.kind == element_mouse_t::up) {
      ReleaseMouse();
      // Again: the click may have deleted what was under the mouse.
      SetHot(m_root->HitTest(event.window_pos), event);
    }
    return;
  }
  SetHot(hit, event);
  if (event.kind == element_mouse_t::right_click) {
    m_key_target = hit;
  }
  if (event.kind == element_mouse_t::down) {
    wxWindow* window = GetWindow() ? GetWindow()->GetWxWindow() : nullptr;
    if (window && !window->HasFocus()) {
      // The window itself takes the keys, not a native child (an editor): wx makes a
      // window with focusable children unfocusable, and GTK then drops the keys.
      window->SetCanFocus(true);
      window->wxWindow::SetFocus();
    }
    m_key_target = hit;
    if (m_focus && hit && !within(hit, m_focus) && !hit->IsFocusable()) {
      SetFocusElement(nullptr);
    }
  }
  if (!Dispatch(hit, event)) {
    wx_event.Skip();
  }
}

bool CBaseControl::DispatchKey(CVisualElement* element, const element_key_t& key) {
  for (; element; element = element->GetParent()) {
    if (element->OnKey(key)) {
      return true;
    }
  }
  return false;
}

bool CBaseControl::HandleKey(wxKeyEvent& wx_event) {
  if (GetWindow()) {
    GetWindow()->FlushLayout();
  }
  element_key_t key;
  key.keycode = wx_event.GetKeyCode();
  key.shift = wx_event.ShiftDown();
  key.control = wx_event.ControlDown();
  key.alt = wx_event.AltDown();
  if (key.keycode == WXK_MENU || (key.keycode == WXK_F10 && key.shift)) {
    HandleContextMenuKey();
    return true;
  }
  CVisualElement* target = m_focus ? m_focus : m_key_target;
  if (!target) {
    // Without a focus, keys scroll the first scrolled view.
    visit(m_root.get(), [&target](CVisualElement* e) {
      if (!target && dynamic_cast<CScrollContainer*>(e)) {
        target = e;
      }
    });
  }
  if (target && DispatchKey(target, key)) {
    return true;
  }
  if (key.keycode == WXK_TAB && !key.control && !key.alt) {
    return MoveFocus(!key.shift);
  }
  return false;
}

void CBaseControl::HandleContextMenuKey() {
  CVisualElement* target = m_focus ? m_focus : m_key_target ? m_key_target : m_root.get();
  const rect<int> r = target->GetVisibleWindowRect();
  element_mouse_t event;
  event.kind = element_mouse_t::right_click;
  event.window_pos = r.empty() ? point<int>(0, 0) : point<int>(r.left + 4, r.top + 4);
  event.target = target;
  Dispatch(target, event);
}

void CBaseControl::HandleFocus(bool) {
  if (m_focus) {
    m_focus->Invalidate();
  }
}

void CBaseControl::HandleThemeChanged() {
  plaxi1::reset_text_metrics();
  // Fonts may have changed: every element measures again.
  visit(m_root.get(), [](CVisualElement* e) {
    e->m_pref_width = -1;
    e->m_cache_width = -1;
    e->m_flags |= CVisualElement::flag_layout_dirty;
    e->OnThemeChanged();
  });
  if (GetWindow()) {
    GetWindow()->RequestLayout();
    GetWindow()->InvalidateAll();
  }
}

void CBaseControl::HandleCaptureLost() {
  if (m_capture) {
    element_mouse_t event;
    event.kind = element_mouse_t::leave;
    event.target = m_capture;
    m_capture->OnMouse(event);
  }
  m_capture = nullptr;
}

void CBaseControl::SetFocusElement(CVisualElement* element) {
  if (element == m_focus) {
    return;
  }
  CVisualElement* old = m_focus;
  m_focus = element;
  a11y::atk_bridge_t* bridge = GetAccessibleBridge();
  if (old) {
    old->OnFocusChanged(false);
    if (bridge) {
      bridge->state_changed(old, a11y::state_focused, false);
    }
  }
  if (element) {
    m_key_target = element;
    element->OnFocusChanged(true);
    if (bridge) {
      bridge->focus_changed(element);
    }
    if (CScrollContainer* scroller = enclosing_scroller(element)) {
      scroller->EnsureVisible(element->GetRect());
    }
  }
}

bool CBaseControl::MoveFocus(bool forward) {
  std::vector<CVisualElement*> stops;
  visit(m_root.get(), [&stops](CVisualElement* e) {
    if (e->IsFocusable()) {
      stops.push_back(e);
    }
  });
  if (stops.empty()) {
    return false;
  }
  auto current = std::find(stops.begin(), stops.end(), m_focus);
  std::size_t next = 0;
  if (current == stops.end()) {
    next = forward ? 0 : stops.size() - 1;
  } else {
    const std::size_t i = static_cast<std::size_t>(current - stops.begin());
    next = forward ? (i + 1) % stops.size() : (i + stops.size() - 1) % stops.size();
  }
  SetFocusElement(stops[next]);
  return true;
}

void CBaseControl::CaptureMouse(CVisualElement* element) {
  m_capture = element;
  wxWindow* window = GetWindow() ? GetWindow()->GetWxWindow() : nullptr;
  if (window && !window->HasCapture()) {
    window->CaptureMouse();
  }
}

void CBaseControl::ReleaseMouse() {
  m_capture = nullptr;
  wxWindow* window = GetWindow() ? GetWindow()->GetWxWindow() : nullptr;
  if (window && window->HasCapture()) {
    window->ReleaseMouse();
  }
}

void CBaseControl::ElementGone(CVisualElement* element) {
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
    bridge->node_gone(element);
  }
  if (within(m_focus, element)) {
    m_focus = nullptr;
  }
  if (within(m_hot, element)) {
    m_hot = nullptr;
  }
  if (within(m_key_target, element)) {
    m_key_target = nullptr;
  }
  if (within(m_capture, element)) {
    ReleaseMouse();
  }
}

}  // namespace ombrelcfrw7
