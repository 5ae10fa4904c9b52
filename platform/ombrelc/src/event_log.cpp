#include <ombrelcfrw7/event_log.h>

#include <wx/defs.h>

namespace ombrelcfrw7 {

CEventLog::CEventLog(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CVertBox(parent, size, alignment) {}

void CEventLog::SetInitialWidth(int width, bool rearrange) {
  if (width != m_initial_width) {
    m_initial_width = width;
    InvalidateMeasure();
  }
  if (rearrange) {
    ForceRearrange();
  }
}

int CEventLog::MeasureWidth() const {
  return m_initial_width > 0 ? m_initial_width : CVertBox::MeasureWidth();
}

bool CEventLog::OnMouse(const element_mouse_t& event) {
  if (event.kind != element_mouse_t::right_click) {
    return false;
  }
  m_context_menu(event.target ? event.target : this, event.window_pos.x, event.window_pos.y);
  return true;
}

bool CEventLog::OnKey(const element_key_t& key) { return false; }

}  // namespace ombrelcfrw7
