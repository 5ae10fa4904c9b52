#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>

#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/popupwin.h>
#include <wx/stattext.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

namespace plaxi1 {

namespace {

constexpr int default_show_delay = 500;
constexpr int default_hide_delay = 5000;
constexpr int max_text_width = 600;  // wider texts are wrapped
constexpr int text_padding = 6;
constexpr int border_width = 1;
constexpr int pointer_clearance = 20;  // keeps the popup off the mouse pointer's image
constexpr int window_gap = 2;          // between the window and a popup placed under it

class tooltip_state_t;

// The tooltip of each window that has one.
std::map<wxWindow*, tooltip_state_t*>& tooltips() {
  static auto* map = new std::map<wxWindow*, tooltip_state_t*>;
  return *map;
}

/// A one-shot timer that calls a function.
class callback_timer_t : public wxTimer {
 public:
  explicit callback_timer_t(std::function<void()> on_fire) : m_on_fire(std::move(on_fire)) {}
  void Notify() override { m_on_fire(); }

 private:
  std::function<void()> m_on_fire;
};

// Where a popup of `size` goes: below the pointer at `pointer` (the owner's coordinates)
// when it is known to be over the owner, else under the owner's bottom-left corner; above
// instead when there is no room below, and always on the owner's display. Only the owner's
// own mouse events tell where the pointer is: a Wayland client can't ask, and there may be
// no pointer at all.
wxPoint popup_position(wxWindow* owner, const wxPoint* pointer, const wxSize& size) {
  const wxRect owner_rect = owner->GetScreenRect();
  wxPoint position;
  int anchor_top = 0;
  if (pointer) {
    const wxPoint mouse = owner->ClientToScreen(*pointer);
    position = wxPoint(mouse.x, mouse.y + owner->FromDIP(pointer_clearance));
    anchor_top = mouse.y;
  } else {
    position = wxPoint(owner_rect.x, owner_rect.GetBottom() + 1 + owner->FromDIP(window_gap));
    anchor_top = owner_rect.y;
  }

  // The display of the window: the position itself may lie off every display.
  int index = wxDisplay::GetFromWindow(owner);
  if (index == wxNOT_FOUND) {
    index = wxDisplay::GetFromPoint(owner_rect.GetTopLeft());
  }
  const wxRect area = wxDisplay(index == wxNOT_FOUND ? 0u : static_cast<unsigned>(index)).GetGeometry();
  if (position.y + size.y > area.GetBottom() + 1) {
    position.y = anchor_top - owner->FromDIP(window_gap) - size.y;
  }
  position.x = std::max(area.x, std::min(position.x, area.GetRight() + 1 - size.x));
  position.y = std::max(area.y, std::min(position.y, area.GetBottom() + 1 - size.y));
  return position;
}

void on_owner_mouse(wxMouseEvent& event);
void on_owner_key(wxKeyEvent& event);
void on_owner_show(wxShowEvent& event);
void on_owner_destroy(wxWindowDestroyEvent& event);

const wxEventTypeTag<wxMouseEvent>* const mouse_events[] = {
    &wxEVT_ENTER_WINDOW, &wxEVT_LEAVE_WINDOW, &wxEVT_MOTION,     &wxEVT_LEFT_DOWN,
    &wxEVT_RIGHT_DOWN,   &wxEVT_MIDDLE_DOWN,  &wxEVT_MOUSEWHEEL,
};

/// The state and behaviour of one tooltip, kept apart from the public class so that the
/// event handlers of its window can reach it.
class tooltip_state_t {
 public:
  tooltip_state_t(wxCustomTooltip* self, wxWindow* owner)
      : m_self(self),
        m_owner(owner),
        m_show_timer([this] { on_show_timer(); }),
        m_hide_timer([this] { hide(); }) {
    tooltips()[owner] = this;
    bind();
  }

  ~tooltip_state_t() {
    m_show_timer.Stop();
    hide();
    tooltips().erase(m_owner);
    if (!m_owner_dying) {
      unbind();
    }
  }

  tooltip_state_t(const tooltip_state_t&) = delete;
  tooltip_state_t& operator=(const tooltip_state_t&) = delete;

  wxCustomTooltip* self() const { return m_self; }

  void set_text(const std::string& text) {
    m_text = text;
    if (m_text.empty()) {
      hide();
    } else if (is_shown()) {
      show();  // laid out again for the new text
    }
  }
  const std::string& text() const { return m_text; }

  void set_hide_delay(int milliseconds) {
    m_hide_delay = milliseconds;
    if (is_shown()) {
      start_hide_timer();
    }
  }
  int hide_delay() const { return m_hide_delay; }
  void set_show_delay(int milliseconds) { m_show_delay = milliseconds; }
  int show_delay() const { return m_show_delay; }

  void show();
  void hide() {
    m_hide_timer.Stop();
    wxPopupWindow* const popup = m_popup.get();
    m_popup.Release();
    if (popup) {
      popup->Hide();
      popup->Destroy();
    }
  }
  bool is_shown() const { return m_popup && m_popup->IsShown(); }
  wxWindow* popup() const { return is_shown() ? m_popup.get() : nullptr; }

  void on_enter(const wxPoint& pointer) {
    m_suppressed = false;
    point_at(pointer);
    start_show_timer();
  }
  void on_motion(const wxPoint& pointer) {
    point_at(pointer);
    // The tip comes once the mouse rests.
    if (!m_suppressed && !is_shown()) {
      start_show_timer();
    }
  }
  void on_leave() {
    m_suppressed = false;
    m_pointer_inside = false;
    m_show_timer.Stop();
    hide();
  }
  void on_dismiss() {
    m_suppressed = true;
    m_show_timer.Stop();
    hide();
  }
  void on_owner_dying() { m_owner_dying = true; }

 private:
  void bind() {
    for (const auto* type : mouse_events) {
      m_owner->Bind(*type, &on_owner_mouse);
    }
    m_owner->Bind(wxEVT_KEY_DOWN, &on_owner_key);
    m_owner->Bind(wxEVT_SHOW, &on_owner_show);
    m_owner->Bind(wxEVT_DESTROY, &on_owner_destroy);
  }

  void unbind() {
    for (const auto* type : mouse_events) {
      m_owner->Unbind(*type, &on_owner_mouse);
    }
    m_owner->Unbind(wxEVT_KEY_DOWN, &on_owner_key);
    m_owner->Unbind(wxEVT_SHOW, &on_owner_show);
    m_owner->Unbind(wxEVT_DESTROY, &on_owner_destroy);
  }

  void start_show_timer() {
    if (!m_text.empty()) {
      m_show_timer.StartOnce(std::max(1, m_show_delay));
    }
  }

  void start_hide_timer() {
    m_hide_timer.Stop();
    if (m_hide_delay > 0) {
      m_hide_timer.StartOnce(m_hide_delay);
    }
  }

  void point_at(const wxPoint& pointer) {
    m_pointer = pointer;
    m_pointer_inside = true;
  }

  void on_show_timer() {
    // Only while the mouse still rests on a visible window.
    if (m_owner->IsShownOnScreen() && m_pointer_inside) {
      show();
    }
  }

  wxCustomTooltip* m_self;
  wxWindow* m_owner;
  std::string m_text;
  int m_show_delay = default_show_delay;
  int m_hide_delay = default_hide_delay;
  callback_timer_t m_show_timer;
  callback_timer_t m_hide_timer;
  // Weak: the popup's parent may take it down first.
  wxWeakRef<wxPopupWindow> m_popup;
  // After a click or a key the tip stays away until the mouse leaves.
  bool m_suppressed = false;
  // Where the pointer was last seen over the owner, in the owner's coordinates; known
  // from the owner's enter and motion events until it leaves.
  wxPoint m_pointer;
  bool m_pointer_inside = false;
  // A dying owner takes its event bindings with it.
  bool m_owner_dying = false;
};

void tooltip_state_t::show() {
  if (m_text.empty()) {
    return;
  }
  hide();
  const auto settings = ui_settings_t::get();
  wxWindow* const parent = wxGetTopLevelParent(m_owner);
  auto* const popup = new wxPopupWindow(parent ? parent : m_owner, wxBORDER_NONE);
  popup->SetBackgroundColour(settings->get_color(color_info));

  auto* const label = new wxStaticText(popup, wxID_ANY, wxString());
  label->SetFont(settings->get_font(font_normal));
  label->SetForegroundColour(settings->get_color(color_info_text));
  unsigned long lines = 0;
  const std::string wrapped = wrap_text(m_text, popup->FromDIP(max_text_width), label, lines, 0, nullptr);
  label->SetLabelText(wxString::FromUTF8(wrapped));

  const int inset = popup->FromDIP(text_padding) + border_width;
  const wxSize text_size = label->GetBestSize();
  label->SetSize(inset, inset, text_size.x, text_size.y);
  const wxSize size(text_size.x + 2 * inset, text_size.y + 2 * inset);
  popup->SetSize(size);

  const wxColour border = settings->get_color(color_border);
  popup->Bind(wxEVT_PAINT, [popup, border](wxPaintEvent&) {
    wxPaintDC dc(popup);
    dc.SetPen(wxPen(border, border_width));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(wxPoint(0, 0), popup->GetClientSize());
  });

  popup->Move(popup_position(m_owner, m_pointer_inside ? &m_pointer : nullptr, size));
  m_popup = popup;
  popup->Show();
  start_hide_timer();
}

tooltip_state_t* find_state(wxObject* object) {
  const auto& map = tooltips();
  const auto it = map.find(static_cast<wxWindow*>(object));
  return it == map.end() ? nullptr : it->second;
}

void on_owner_mouse(wxMouseEvent& event) {
  event.Skip();
  tooltip_state_t* const state = find_state(event.GetEventObject());
  if (!state) {
    return;
  }
  const wxEventType type = event.GetEventType();
  if (type == wxEVT_ENTER_WINDOW) {
    state->on_enter(event.GetPosition());
  } else if (type == wxEVT_MOTION) {
    state->on_motion(event.GetPosition());
  } else if (type == wxEVT_LEAVE_WINDOW) {
    state->on_leave();
  } else {
    state->on_dismiss();
  }
}

void on_owner_key(wxKeyEvent& event) {
  event.Skip();
  if (tooltip_state_t* const state = find_state(event.GetEventObject())) {
    state->on_dismiss();
  }
}

void on_owner_show(wxShowEvent& event) {
  event.Skip();
  tooltip_state_t* const state = find_state(event.GetEventObject());
  if (state && !event.IsShown()) {
    state->on_leave();
  }
}

void on_owner_destroy(wxWindowDestroyEvent& event) {
  event.Skip();
  // The event also reaches the parents of the dying window: only its own tip goes.
  if (tooltip_state_t* const state = find_state(event.GetWindow())) {
    state->on_owner_dying();
    delete state->self();
  }
}

}  // namespace

struct wxCustomTooltip::impl_t : tooltip_state_t {
  using tooltip_state_t::tooltip_state_t;
};

wxCustomTooltip::wxCustomTooltip(wxWindow* owner) : m_impl(new impl_t(this, owner)) {}

wxCustomTooltip::~wxCustomTooltip() { delete m_impl; }

void wxCustomTooltip::SetText(const std::string& text) { m_impl->set_text(text); }
const std::string& wxCustomTooltip::GetText() const { return m_impl->text(); }
void wxCustomTooltip::SetHideDelay(int milliseconds) { m_impl->set_hide_delay(milliseconds); }
int wxCustomTooltip::GetHideDelay() const { return m_impl->hide_delay(); }
void wxCustomTooltip::SetShowDelay(int milliseconds) { m_impl->set_show_delay(milliseconds); }
int wxCustomTooltip::GetShowDelay() const { return m_impl->show_delay(); }
void wxCustomTooltip::ShowNow() { m_impl->show(); }
void wxCustomTooltip::Hide() { m_impl->hide(); }
bool wxCustomTooltip::IsPopupShown() const { return m_impl->is_shown(); }
wxWindow* wxCustomTooltip::GetPopup() const { return m_impl->popup(); }

wxCustomTooltip* SetTooltip(wxWindow* window, const std::string& text, int id, bool enable) {
  ZANDOR_ASSERT(window != nullptr);
  if (!window) {
    return nullptr;
  }
  wxWindow* const target = id == wxID_ANY ? window : window->FindWindow(id);
  if (!target) {
    ZANDOR_ASSERT_MSG("no child window of that id", false);
    return nullptr;
  }
  // Two tips at once would cover each other.
  target->UnsetToolTip();
  wxCustomTooltip* const existing = GetTooltip(target);
  if (!enable || text.empty()) {
    delete existing;
    return nullptr;
  }
  if (existing) {
    existing->SetText(text);
    return existing;
  }
  auto* const tooltip = new wxCustomTooltip(target);
  tooltip->SetText(text);
  return tooltip;
}

wxCustomTooltip* GetTooltip(wxWindow* window) {
  const tooltip_state_t* const state = find_state(window);
  return state ? state->self() : nullptr;
}

}  // namespace plaxi1
