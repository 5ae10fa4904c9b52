#include <ombrelc7/sys_window.h>

#include <ombrelc7/control.h>

#include <wx/app.h>
#include <wx/dcclient.h>
#include <wx/event.h>
#include <wx/window.h>

#include <map>

namespace ombrelc7 {

namespace {

class sys_window_t;

std::map<wxWindow*, sys_window_t*>& registry() {
  static std::map<wxWindow*, sys_window_t*> windows;
  return windows;
}

wxRect to_wx(const rect<int>& r) { return wxRect(r.left, r.top, r.width(), r.height()); }

class sys_window_t : public wxEvtHandler, public ISysWindow {
 public:
  explicit sys_window_t(wxWindow* window) : m_window(window) {
    registry()[window] = this;
    // The control paints every pixel: no erasing first, which would flicker.
    window->SetBackgroundStyle(wxBG_STYLE_PAINT);
    window->SetWindowStyleFlag(window->GetWindowStyleFlag() | wxWANTS_CHARS);
    window->Bind(wxEVT_PAINT, &sys_window_t::handle_paint, this);
    window->Bind(wxEVT_SIZE, &sys_window_t::handle_size, this);
    for (const auto type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_LEFT_DCLICK, wxEVT_MOTION,
                            wxEVT_LEAVE_WINDOW, wxEVT_MOUSEWHEEL, wxEVT_RIGHT_DOWN}) {
      window->Bind(type, &sys_window_t::handle_mouse, this);
    }
    window->Bind(wxEVT_CONTEXT_MENU, &sys_window_t::handle_context_menu, this);
    window->Bind(wxEVT_MOUSE_CAPTURE_LOST, &sys_window_t::handle_capture_lost, this);
    window->Bind(wxEVT_KEY_DOWN, &sys_window_t::handle_key, this);
    window->Bind(wxEVT_SET_FOCUS, &sys_window_t::handle_focus, this);
    window->Bind(wxEVT_KILL_FOCUS, &sys_window_t::handle_focus, this);
    window->Bind(wxEVT_SYS_COLOUR_CHANGED, &sys_window_t::handle_theme, this);
    window->Bind(wxEVT_DPI_CHANGED, &sys_window_t::handle_dpi, this);
    window->Bind(wxEVT_DESTROY, &sys_window_t::handle_destroy, this);
  }

  ~sys_window_t() override { delete_control(); }

  // ISysWindow
  void SetKeyboardMode(int mode) override { m_keyboard_mode = mode == 0 ? 0 : 1; }
  int GetKeyboardMode() const override { return m_keyboard_mode; }
  void Setup() override {
    if (!m_window) {
      return;
    }
    long style = m_window->GetWindowStyleFlag();
    style = m_clip_children ? (style | wxCLIP_CHILDREN) : (style & ~static_cast<long>(wxCLIP_CHILDREN));
    style = m_keyboard_mode == 1 ? (style | wxWANTS_CHARS) : (style & ~static_cast<long>(wxWANTS_CHARS));
    m_window->SetWindowStyleFlag(style);
  }
  wxWindow* GetWxWindow() const override { return m_window; }
  size<int> GetClientSize() const override {
    if (!m_window) {
      return {};
    }
    const wxSize client = m_window->GetClientSize();
    return {client.x, client.y};
  }
  void Invalidate(const rect<int>& area) override {
    if (!m_window || area.empty()) {
      return;
    }
    if (m_lock > 0) {
      m_dirty = m_dirty.united(area);
    } else {
      m_window->RefreshRect(to_wx(area), false);
    }
  }
  void InvalidateAll() override {
    const size<int> client = GetClientSize();
    Invalidate(rect<int>(0, 0, client.cx, client.cy));
  }
  void LockUpdate(bool lock) override {
    if (lock) {
      ++m_lock;
      return;
    }
    if (m_lock > 0 && --m_lock == 0 && !m_dirty.empty()) {
      const rect<int> dirty = m_dirty;
      m_dirty = rect<int>();
      Invalidate(dirty);
    }
  }
  void SuspendLayout(bool suspend) override {
    if (suspend) {
      ++m_suspend;
      return;
    }
    if (m_suspend > 0 && --m_suspend == 0) {
      FlushLayout();
    }
  }
  bool IsUpdateLocked() const override { return m_lock > 0; }
  bool IsLayoutSuspended() const override { return m_suspend > 0; }

  void RequestLayout() override {
    m_layout_pending = true;
    if (m_suspend == 0 && !m_layout_posted && m_window) {
      m_layout_posted = true;
      CallAfter([this] {
        m_layout_posted = false;
        FlushLayout();
      });
    }
  }
  void FlushLayout() override {
    if (m_suspend > 0 || !m_layout_pending) {
      return;
    }
    m_layout_pending = false;
    if (m_control) {
      m_control->HandleLayout();
    }
  }
  bool IsLayoutPending() const override { return m_layout_pending; }

  void AttachControl(COMBRELControl* control) override {
    if (control == m_control) {
      return;
    }
    delete_control();
    m_control = control;
    if (m_control) {
      RequestLayout();
      InvalidateAll();
    }
  }
  void DetachControl(COMBRELControl* control) override {
    if (control == m_control) {
      m_control = nullptr;
    }
  }
  COMBRELControl* GetControl() const override { return m_control; }

 private:
  void delete_control() {
    COMBRELControl* control = m_control;
    m_control = nullptr;
    delete control;
  }

  void handle_paint(wxPaintEvent&) {
    wxPaintDC dc(m_window);
    FlushLayout();
    const wxRect box = m_window->GetUpdateRegion().GetBox();
    rect<int> area(box.x, box.y, box.x + box.width, box.y + box.height);
    if (area.empty()) {
      const size<int> client = GetClientSize();
      area = rect<int>(0, 0, client.cx, client.cy);
    }
    if (m_control) {
      m_control->HandlePaint(dc, area);
    } else {
      dc.SetBackground(wxBrush(m_window->GetBackgroundColour()));
      dc.Clear();
    }
  }
  void handle_size(wxSizeEvent& event) {
    event.Skip();
    if (m_control) {
      m_control->HandleSize(GetClientSize());
    }
  }
  void handle_mouse(wxMouseEvent& event) {
    if (m_control) {
      m_control->HandleMouse(event);
    } else {
      event.Skip();
    }
  }
  void handle_context_menu(wxContextMenuEvent& event) {
    if (!m_control) {
      event.Skip();
      return;
    }
    const wxPoint screen = event.GetPosition();
    if (screen == wxDefaultPosition) {
      m_control->HandleContextMenuKey();
      return;
    }
    // A menu asked for with the mouse: a right click where the pointer is.
    const wxPoint client = m_window->ScreenToClient(screen);
    wxMouseEvent right(wxEVT_RIGHT_DOWN);
    right.SetPosition(client);
    right.SetEventObject(m_window);
    m_control->HandleMouse(right);
  }
  void handle_capture_lost(wxMouseCaptureLostEvent&) {
    if (m_control) {
      m_control->HandleCaptureLost();
    }
  }
  void handle_key(wxKeyEvent& event) {
    if (!m_control || !m_control->HandleKey(event)) {
      event.Skip();
    }
  }
  void handle_focus(wxFocusEvent& event) {
    event.Skip();
    if (m_control) {
      m_control->HandleFocus(event.GetEventType() == wxEVT_SET_FOCUS);
    }
  }
  void handle_theme(wxSysColourChangedEvent& event) {
    event.Skip();
    if (m_control) {
      m_control->HandleThemeChanged();
    }
  }
  void handle_dpi(wxDPIChangedEvent& event) {
    event.Skip();
    if (m_control) {
      m_control->HandleThemeChanged();
    }
  }
  void handle_destroy(wxWindowDestroyEvent& event) {
    event.Skip();
    if (event.GetEventObject() != m_window) {
      return;  // a child window's
    }
    registry().erase(m_window);
    delete_control();
    m_window = nullptr;
    // Not deleted inside its own handler: wx is still iterating the window's handlers. The
    // application deletes what is scheduled at idle time, and at its exit too, where a
    // posted call would never run.
    if (wxTheApp) {
      wxTheApp->ScheduleForDestruction(this);
    } else {
      delete this;
    }
  }

  wxWindow* m_window;
  COMBRELControl* m_control = nullptr;
  int m_lock = 0;
  int m_suspend = 0;
  int m_keyboard_mode = 1;
  bool m_layout_pending = false;
  bool m_layout_posted = false;
  rect<int> m_dirty;
};

}  // namespace

ISysWindow* FindWrapperForWx(const wxWindow* window) {
  const auto found = registry().find(const_cast<wxWindow*>(window));
  return found == registry().end() ? nullptr : found->second;
}

ISysWindow* CreateWrapperForWx(wxWindow* window) {
  if (!window) {
    return nullptr;
  }
  auto found = registry().find(window);
  if (found != registry().end()) {
    return found->second;
  }
  return new sys_window_t(window);
}

}  // namespace ombrelc7
