#include <ombrelcfrw7/message_box.h>

#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/image.h>

#include "text_metrics_p.h"
#include "theme_p.h"

#include <plaxi1/style.h>

#include <plaxi1/ui_settings.h>

#include <wx/dc.h>

#include <algorithm>

namespace ombrelcfrw7 {

using namespace _internal;
using ombrelc7::rect;

namespace {
constexpr int padding = 8;
constexpr int icon_size = 24;
constexpr int icon_gap = 8;
constexpr int header_gap = 6;
constexpr int line_gap = 4;
constexpr int separator = 1;
constexpr std::size_t builtin_children = 2;  // the icon and the header come first
}  // namespace

CMessageBoxBase::CMessageBoxBase(CVisualElement* parent, const ombrelc7::size<int>& size,
                                 ombrelc7::Alignment alignment, bool horizontal_content)
    : CVisualElement(parent, size, alignment), m_horizontal(horizontal_content) {
  // Made in the body: a child's arrival may ask the card to describe itself.
  m_image = new CImage(this, ombrelc7::size<int>(icon_size, icon_size), ombrelc7::alNone);
  m_caption = new CCaption(this, ombrelc7::size<int>(0, 0), ombrelc7::alFill);
  m_caption->SetFontKind(plaxi1::font_bold);
  m_caption->AdjustHeight(true);
  m_caption->SetTextAlign(CCaption::taLeft | CCaption::taTop);
}

std::string CMessageBoxBase::AsString() const {
  if (!m_as_string.empty()) {
    std::string out;
    m_as_string(const_cast<CMessageBoxBase*>(this), out);
    return out;
  }
  return CVisualElement::AsString();
}

rect<int> CMessageBoxBase::ContentArea(const rect<int>& area) const {
  const int left = area.left + padding + icon_size + icon_gap;
  return rect<int>(left, area.top + padding, std::max(left, area.right - padding),
                   std::max(area.top + padding, area.bottom - padding - separator));
}

int CMessageBoxBase::HeaderOffset() const {
  // The header's first line is centred on the icon.
  const int icon = m_image->IsVisible() ? m_image->GetHeightFor(icon_size) : 0;
  return std::max(0, (icon - line_height(m_caption->GetFontKind(), style_plain)) / 2);
}

int CMessageBoxBase::HeaderHeight(int width) const {
  return m_caption->IsVisible() ? HeaderOffset() + m_caption->GetHeightFor(width) : 0;
}

int CMessageBoxBase::MeasureWidth() const {
  const int header = m_caption->IsVisible() ? m_caption->GetPreferredWidth() : 0;
  const int content = CBoxBase::MeasureStackWidth(GetChildren(), builtin_children, m_horizontal, line_gap);
  return std::max(GetMinSize().cx, 2 * padding + icon_size + icon_gap + std::max(header, content));
}

int CMessageBoxBase::MeasureHeight(int width) const {
  const int inner = std::max(0, width - 2 * padding - icon_size - icon_gap);
  const int content =
      CBoxBase::MeasureStackHeight(GetChildren(), builtin_children, m_horizontal, line_gap, inner);
  const int text = HeaderHeight(inner) + (content > 0 ? header_gap + content : 0);
  const int icon = m_image->IsVisible() ? m_image->GetHeightFor(icon_size) : 0;
  return std::max(GetMinSize().cy, 2 * padding + separator + std::max(text, icon));
}

void CMessageBoxBase::ArrangeChildren() {
  const rect<int>& r = GetRect();
  const rect<int> content = ContentArea(r);
  const int header = HeaderHeight(content.width());
  const int icon_height = m_image->GetHeightFor(icon_size);
  m_image->Arrange(rect<int>::from_size(r.left + padding, content.top, icon_size, icon_height));
  m_caption->Arrange(rect<int>::from_size(content.left, content.top + HeaderOffset(), content.width(),
                                          m_caption->GetHeightFor(content.width())));
  const int top = content.top + header + header_gap;
  CBoxBase::ArrangeStack(GetChildren(), builtin_children, m_horizontal, line_gap,
                         rect<int>(content.left, top, content.right, std::max(top, content.bottom)));
}

void CMessageBoxBase::PaintContent(wxDC& dc, const rect<int>& clip) {
  const rect<int>& r = GetRect();
  const wxColour line = plaxi1::color_helpers_t::make_gradient(theme_colour(plaxi1::color_window),
                                                               theme_colour(plaxi1::color_border), 0.87);
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(line));
  // A rectangle rather than a line: exactly one pixel at any pen scaling.
  dc.DrawRectangle(r.left + padding, r.bottom - separator, r.width() - 2 * padding, separator);
}

}  // namespace ombrelcfrw7
