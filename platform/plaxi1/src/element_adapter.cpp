#include <plaxi1/element_adapter.h>
#include <plaxi1/ui_settings.h>

#include "element_accessible_p.h"
#include "element_p.h"

#include <a11y/atk_bridge.h>

#include <wx/dcbuffer.h>
#include <wx/window.h>

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

namespace plaxi1::elements {

namespace {

using _internal::share;
using _internal::within;
using ptr_t = UIElement::ptr_t;

const wxEventTypeTag<wxMouseEvent> mouse_events[] = {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP,
                                                     wxEVT_MOTION, wxEVT_LEAVE_WINDOW};

// The adapter of each window that has one, for tools that look at a window's tree.
std::map<const wxWindow*, ElementAdapter*>& adapters() {
  static std::map<const wxWindow*, ElementAdapter*> known;
  return known;
}

void forget_adapter(const wxWindow* window, const ElementAdapter* adapter) {
  const auto found = adapters().find(window);
  if (found != adapters().end() && found->second == adapter) {
    adapters().erase(found);
  }
}

}  // namespace

ElementAdapter* ElementAdapter::Find(const wxWindow* window) {
  const auto found = adapters().find(window);
  return found == adapters().end() ? nullptr : found->second;
}

ElementAdapter::ElementAdapter(wxWindow* window) : m_window(window) {
  if (m_window) {
    adapters()[m_window] = this;
    // Every pixel is painted here: no erasing first, which would flicker.
    m_window->SetBackgroundStyle(wxBG_STYLE_PAINT);
    BindWindow(true);
    m_accessible = _internal::StartAccessible(this);
  }
  ui_settings_t::get()->m_changed_signal.connect(this, &ElementAdapter::OnSettingsChanged);
}

ElementAdapter::~ElementAdapter() {
  _internal::StopAccessible(m_accessible);
  ForgetStates();
  if (m_root) {
    m_root->m_adapter = nullptr;
  }
  if (m_window) {
    forget_adapter(m_window, this);
    BindWindow(false);
  }
}

void ElementAdapter::BindWindow(bool bind) {
  if (bind) {
    m_window->Bind(wxEVT_PAINT, &ElementAdapter::handle_paint, this);
    m_window->Bind(wxEVT_SIZE, &ElementAdapter::handle_size, this);
    for (const auto& type : mouse_events) {
      m_window->Bind(type, &ElementAdapter::handle_mouse, this);
    }
    m_window->Bind(wxEVT_MOUSE_CAPTURE_LOST, &ElementAdapter::handle_capture_lost, this);
    m_window->Bind(wxEVT_KEY_DOWN, &ElementAdapter::handle_key, this);
    m_window->Bind(wxEVT_SET_FOCUS, &ElementAdapter::handle_focus, this);
    m_window->Bind(wxEVT_KILL_FOCUS, &ElementAdapter::handle_focus, this);
    m_window->Bind(wxEVT_DESTROY, &ElementAdapter::handle_destroy, this);
    return;
  }
  m_window->Unbind(wxEVT_PAINT, &ElementAdapter::handle_paint, this);
  m_window->Unbind(wxEVT_SIZE, &ElementAdapter::handle_size, this);
  for (const auto& type : mouse_events) {
    m_window->Unbind(type, &ElementAdapter::handle_mouse, this);
  }
  m_window->Unbind(wxEVT_MOUSE_CAPTURE_LOST, &ElementAdapter::handle_capture_lost, this);
  m_window->Unbind(wxEVT_KEY_DOWN, &ElementAdapter::handle_key, this);
  m_window->Unbind(wxEVT_SET_FOCUS, &ElementAdapter::handle_focus, this);
  m_window->Unbind(wxEVT_KILL_FOCUS, &ElementAdapter::handle_focus, this);
  m_window->Unbind(wxEVT_DESTROY, &ElementAdapter::handle_destroy, this);
}

void ElementAdapter::SetRootElement(const UIElement::ptr_t& root) {
  if (root == m_root) {
    return;
  }
  ForgetStates();
  _internal::RootChanging(m_accessible, m_root.get());
  if (m_root) {
    m_root->m_adapter = nullptr;
  }
  m_root = root;
  if (m_root) {
    m_root->m_adapter = this;
  }
  _internal::RootChanged(m_accessible, m_root.get());
  Relayout();
  if (m_window) {
    m_window->Refresh(false);
  }
}

UIElement::ptr_t ElementAdapter::FindByTestID(const std::string& id) const {
  return m_root ? m_root->FindByTestID(id) : UIElement::ptr_t();
}

void ElementAdapter::Relayout() {
  m_layout_pending = false;
  if (!m_window || !m_root) {
    return;
  }
  // Elements that move or appear repaint their old and new places as they are arranged.
  m_root->Arrange(wxRect(wxPoint(0, 0), m_window->GetClientSize()));
}

void ElementAdapter::RequestLayout() {
  m_layout_pending = true;
  if (!m_layout_posted && m_window) {
    m_layout_posted = true;
    // Queued to this handler: if the adapter dies first, the call goes with it.
    CallAfter([this] {
      m_layout_posted = false;
      FlushLayout();
    });
  }
}

void ElementAdapter::FlushLayout() {
  if (m_layout_pending) {
    Relayout();
  }
}

void ElementAdapter::RefreshRect(const wxRect& rect) {
  if (m_window && !rect.IsEmpty()) {
    m_window->RefreshRect(rect, false);
  }
}

void ElementAdapter::ElementRemoved(UIElement* element) {
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
    bridge->node_gone(element);
  }
  if (within(m_hover, element)) {
    m_hover = nullptr;
  }
  if (within(m_key_target, element)) {
    m_key_target = nullptr;
  }
  if (within(m_focus, element)) {
    m_focus = nullptr;
  }
  if (within(m_pressed, element)) {
    UIElement* pressed = m_pressed;
    Release();
    mouse_event_t event;
    event.kind = mouse_event_t::capture_lost;
    event.target = pressed;
    pressed->OnMouse(event);
  }
}

void ElementAdapter::ForgetStates() {
  if (m_pressed) {
    Release();
  }
  m_hover = nullptr;
  m_key_target = nullptr;
  m_focus = nullptr;
}

void ElementAdapter::Release() {
  m_pressed = nullptr;
  if (m_window && m_window->HasCapture()) {
    m_window->ReleaseMouse();
  }
}

bool ElementAdapter::Dispatch(UIElement* element, mouse_event_t event) {
  event.target = element;
  while (element) {
    const ptr_t keep = share(element);
    event.inside = element->GetRect().Contains(event.pos);
    if (element->OnMouse(event)) {
      return true;
    }
    // The call may have taken the element out of the tree: its parent is then null.
    element = element->m_parent;
  }
  return false;
}

void ElementAdapter::SetHover(UIElement* element, const wxPoint& pos) {
  if (element == m_hover) {
    return;
  }
  const ptr_t old = share(m_hover);
  m_hover = element;
  if (old) {
    mouse_event_t leave;
    leave.kind = mouse_event_t::leave;
    leave.pos = pos;
    leave.target = old.get();
    old->OnMouse(leave);
  }
}

void ElementAdapter::OnPressedMouse(mouse_event_t::kind_t kind, const wxPoint& pos) {
  const ptr_t pressed = share(m_pressed);
  UIElement* element = m_pressed;
  // While pressed, only the pressed element can be hot.
  SetHover(element->GetRect().Contains(pos) ? element : nullptr, pos);
  if (kind == mouse_event_t::up) {
    Release();
  }
  mouse_event_t event;
  event.kind = kind;
  event.pos = pos;
  Dispatch(element, event);
  if (kind == mouse_event_t::up && m_root && m_window) {
    SetHover(m_root->HitTest(pos), pos);
  }
}

void ElementAdapter::handle_mouse(wxMouseEvent& wx_event) {
  wx_event.Skip();
  FlushLayout();  // hit tests need the current places
  const wxPoint pos = wx_event.GetPosition();
  const wxEventType type = wx_event.GetEventType();
  mouse_event_t::kind_t kind = mouse_event_t::move;
  if (type == wxEVT_LEFT_DOWN || type == wxEVT_LEFT_DCLICK) {
    kind = mouse_event_t::down;
  } else if (type == wxEVT_LEFT_UP) {
    kind = mouse_event_t::up;
  } else if (type == wxEVT_LEAVE_WINDOW) {
    kind = mouse_event_t::leave;
  }
  if (m_pressed) {
    if (kind != mouse_event_t::leave) {
      OnPressedMouse(kind, pos);
    }
    return;
  }
  UIElement* hit = kind == mouse_event_t::leave || !m_root ? nullptr : m_root->HitTest(pos);
  SetHover(hit, pos);
  if (!hit || kind == mouse_event_t::leave || kind == mouse_event_t::up) {
    return;
  }
  if (kind == mouse_event_t::down) {
    m_pressed = hit;
    m_key_target = hit;
    if (m_focus && !within(hit, m_focus) && !hit->IsFocusable()) {
      SetFocusElement(nullptr);
    }
    if (m_window && !m_window->HasCapture()) {
      m_window->CaptureMouse();
    }
  }
  mouse_event_t event;
  event.kind = kind;
  event.pos = pos;
  Dispatch(hit, event);
}

void ElementAdapter::handle_capture_lost(wxMouseCaptureLostEvent&) {
  if (UIElement* pressed = m_pressed) {
    const ptr_t keep = share(pressed);
    m_pressed = nullptr;  // the capture is gone already: nothing to release
    SetHover(nullptr, wxPoint());
    mouse_event_t event;
    event.kind = mouse_event_t::capture_lost;
    event.target = pressed;
    pressed->OnMouse(event);
  }
}

void ElementAdapter::handle_key(wxKeyEvent& event) {
  FlushLayout();
  for (UIElement* element = m_focus ? m_focus : m_key_target; element; element = element->m_parent) {
    const ptr_t keep = share(element);
    if (element->OnKey(event)) {
      return;
    }
  }
  const bool tab = event.GetKeyCode() == WXK_TAB && !event.ControlDown() && !event.AltDown();
  if (!tab || !MoveFocus(!event.ShiftDown())) {
    event.Skip();
  }
}

// The focused element shows its mark only while the window has the keyboard.
void ElementAdapter::handle_focus(wxFocusEvent& event) {
  event.Skip();
  if (m_focus) {
    m_focus->Invalidate();
  }
}

void ElementAdapter::SetFocusElement(UIElement* element) {
  if (element == m_focus) {
    return;
  }
  const ptr_t old = share(m_focus);
  m_focus = element;
  a11y::atk_bridge_t* bridge = GetAccessibleBridge();
  if (old) {
    old->OnFocusChanged(false);
    if (bridge) {
      bridge->state_changed(old.get(), a11y::state_focused, false);
    }
  }
  if (element) {
    m_key_target = element;
    element->OnFocusChanged(true);
    if (bridge) {
      bridge->focus_changed(element);
    }
  }
}

bool ElementAdapter::MoveFocus(bool forward) {
  std::vector<UIElement*> stops;
  std::function<void(UIElement*)> visit = [&visit, &stops](UIElement* element) {
    if (element->IsFocusable()) {
      stops.push_back(element);
    }
    for (const ptr_t& child : element->GetChildren()) {
      visit(child.get());
    }
  };
  if (m_root) {
    visit(m_root.get());
  }
  auto current = std::find(stops.begin(), stops.end(), m_focus);
  if (current == stops.end()) {
    current = forward ? stops.begin() : stops.end();
  } else if (forward) {
    ++current;
  }
  if (!forward) {
    current = current == stops.begin() ? stops.end() : current - 1;
  }
  if (current == stops.end()) {
    SetFocusElement(nullptr);  // the focus leaves the drawn part
    return false;
  }
  SetFocusElement(*current);
  return true;
}

void ElementAdapter::handle_paint(wxPaintEvent&) {
  wxAutoBufferedPaintDC dc(m_window);
  FlushLayout();
  const wxRegion update = m_window->GetUpdateRegion();
  // Under the elements, the window's own background.
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(m_window->GetBackgroundColour()));
  const wxRect box = update.GetBox();
  dc.DrawRectangle(box);
  if (m_root) {
    m_root->Paint(dc, update);
  }
}

void ElementAdapter::handle_size(wxSizeEvent& event) {
  event.Skip();
  Relayout();
}

void ElementAdapter::handle_destroy(wxWindowDestroyEvent& event) {
  event.Skip();
  if (event.GetEventObject() != m_window) {
    return;
  }
  _internal::StopAccessible(m_accessible);
  ForgetStates();
  BindWindow(false);
  forget_adapter(m_window, this);
  m_window = nullptr;
}

void ElementAdapter::OnSettingsChanged() {
  if (m_root) {
    std::function<void(UIElement*)> visit = [&visit](UIElement* element) {
      element->OnThemeChanged();
      for (const ptr_t& child : element->GetChildren()) {
        visit(child.get());
      }
    };
    visit(m_root.get());
  }
  Relayout();
  if (m_window) {
    m_window->Refresh(false);
  }
}

}  // namespace plaxi1::elements
