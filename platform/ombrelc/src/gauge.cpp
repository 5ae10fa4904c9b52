#include <ombrelcfrw7/gauge.h>

#include <a11y/atk_bridge.h>

#include <ombrelcfrw7/button.h>

#include "theme_p.h"

#include <plaxi1/style.h>

#include <wx/dc.h>
#include <wx/stockitem.h>

#include <algorithm>
#include <cmath>

namespace ombrelcfrw7 {

using namespace _internal;
using ombrelc7::rect;

namespace {
constexpr int bar_height = 6;  // GTK's progress bars are this thin
constexpr int button_gap = 8;
}  // namespace

CGauge::CGauge(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment) {}

void CGauge::SetMax(double max) {
  max = std::max(0.0, max);
  if (max != m_max) {
    m_max = max;
    m_pos = std::clamp(m_pos, 0.0, m_max);
    Invalidate();
    ValueChanged();
  }
}

void CGauge::Increase(double step) { SetPos(m_pos + step); }

void CGauge::SetPos(double pos) {
  pos = std::clamp(pos, 0.0, m_max);
  if (pos != m_pos) {
    m_pos = pos;
    Invalidate();
    ValueChanged();
  }
}

int CGauge::MeasureHeight(int) const { return std::max(GetMinSize().cy, bar_height + 4); }

rect<int> CGauge::BarRect() const { return GetRect(); }

void CGauge::ValueChanged() const {
  if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
    bridge->value_changed(this);
  }
}

void CGauge::PaintContent(wxDC& dc, const rect<int>& clip) {
  const rect<int> area = BarRect();
  if (area.width() <= 2) {
    return;
  }
  const int top = area.top + (area.height() - bar_height) / 2;
  const wxColour window = theme_colour(plaxi1::color_window);
  const wxColour border = theme_colour(plaxi1::color_border);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(plaxi1::color_helpers_t::make_gradient(window, border, 0.74)));
  dc.DrawRoundedRectangle(area.left, top, area.width(), bar_height, bar_height / 2.0);
  const double fraction = m_max > 0 ? m_pos / m_max : 0.0;
  const int filled = static_cast<int>(std::lround(area.width() * fraction));
  if (filled > 0) {
    dc.SetBrush(wxBrush(theme_colour(plaxi1::color_highlight)));
    dc.DrawRoundedRectangle(area.left, top, std::max(filled, bar_height), bar_height, bar_height / 2.0);
  }
}

CGaugeBoxEx::CGaugeBoxEx(CVisualElement* parent, const ombrelc7::size<int>& size,
                         ombrelc7::Alignment alignment)
    : CGauge(parent, size, alignment),
      m_cancel(new CButton(this, ombrelc7::size<int>(0, 0), ombrelc7::alNone)) {
  m_cancel->SetCaption(wxGetStockLabel(wxID_CANCEL, wxSTOCK_NOFLAGS).utf8_string());
  m_cancel->SetId(wxID_CANCEL);
  m_cancel->ClickSignal().connect(&m_cancel_signal);
}

int CGaugeBoxEx::MeasureWidth() const {
  return std::max(GetMinSize().cx, 2 * m_cancel->GetPreferredWidth() + button_gap);
}

int CGaugeBoxEx::MeasureHeight(int width) const {
  const int button = m_cancel->IsVisible() ? m_cancel->GetHeightFor(m_cancel->GetPreferredWidth()) : 0;
  return std::max(CGauge::MeasureHeight(width), button);
}

void CGaugeBoxEx::ArrangeChildren() {
  const rect<int>& r = GetRect();
  const int w = m_cancel->GetPreferredWidth();
  const int h = std::min(r.height(), m_cancel->GetHeightFor(w));
  m_cancel->Arrange(rect<int>::from_size(r.right - w, r.top + (r.height() - h) / 2, w, h));
}

rect<int> CGaugeBoxEx::BarRect() const {
  const rect<int>& r = GetRect();
  if (!m_cancel->IsVisible()) {
    return r;
  }
  return rect<int>(r.left, r.top, std::max(r.left, m_cancel->GetRect().left - button_gap), r.bottom);
}

}  // namespace ombrelcfrw7
