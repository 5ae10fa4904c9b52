#include <plaxi1/element_shapes.h>

#include <a11y/atk_bridge.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/text_metrics.h>
#include <plaxi1/ui_settings.h>

#include "element_shapes_p.h"

#include <wx/bitmap.h>
#include <wx/dc.h>

#include <cmath>

namespace plaxi1::elements {

namespace {

// The radius of a rounded border's corners.
constexpr double corner_radius = 3.0;

}  // namespace

namespace _internal {

wxString ellipsis() { return wxString::FromUTF8("\xE2\x80\xA6"); }

wxString cut_to_width(wxDC& dc, const wxString& text, int width) {
  if (dc.GetTextExtent(text).x <= width) {
    return text;
  }
  // The longest start that fits, found by halving.
  std::size_t fits = 0;
  std::size_t low = 1;
  std::size_t high = text.length();
  while (low <= high) {
    const std::size_t middle = (low + high) / 2;
    if (dc.GetTextExtent(text.Left(middle) + ellipsis()).x <= width) {
      fits = middle;
      low = middle + 1;
    } else {
      high = middle - 1;
    }
  }
  return text.Left(fits) + ellipsis();
}

}  // namespace _internal

// ---- RectangleElement --------------------------------------------------------------------

void RectangleElement::SetBkColor(const wxColour& color) {
  if (color != m_bk_color) {
    m_bk_color = color;
    Invalidate();
  }
}

void RectangleElement::SetBorderColor(const wxColour& color) {
  if (color != m_border_color) {
    m_border_color = color;
    Invalidate();
  }
}

void RectangleElement::ShowBorder(bool show) {
  if (show != m_show_border) {
    m_show_border = show;
    Invalidate();
  }
}

void RectangleElement::SetBorderStyle(border_style_t style) {
  m_border_style = style;
  m_show_border = style != border_none;
  Invalidate();
}

void RectangleElement::OnPaint(wxDC& dc) {
  PaintBackground(dc);
  PaintBorder(dc);
}

void RectangleElement::PaintBackground(wxDC& dc) const {
  const wxRect box = GetPaintRect();
  if (!m_bk_color.IsOk() || box.IsEmpty()) {
    return;
  }
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxBrush(m_bk_color));
  if (m_show_border && m_border_style == border_rounded) {
    dc.DrawRoundedRectangle(box, corner_radius);
  } else {
    dc.DrawRectangle(box);
  }
}

void RectangleElement::PaintBorder(wxDC& dc) const {
  const wxRect box = GetPaintRect();
  if (!m_show_border || m_border_style == border_none || !m_border_color.IsOk() || box.IsEmpty()) {
    return;
  }
  dc.SetPen(wxPen(m_border_color, 1));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  if (m_border_style == border_rounded) {
    dc.DrawRoundedRectangle(box, corner_radius);
  } else {
    dc.DrawRectangle(box);
  }
}

// ---- BgImageElement ----------------------------------------------------------------------

struct BgImageElement::cache_t {
  wxSize size;
  double scale = 0;
  wxBitmap bitmap;
};

BgImageElement::BgImageElement(const ptr_t& parent, int position_flags)
    : RectangleElement(parent, position_flags), m_cache(std::make_unique<cache_t>()) {}

BgImageElement::~BgImageElement() = default;

void BgImageElement::SetBgStaticPicture(const wxStaticPicture& picture) {
  m_picture = picture;
  *m_cache = cache_t();
  Invalidate();
}

void BgImageElement::OnPaint(wxDC& dc) {
  PaintBackground(dc);
  const wxRect box = GetPaintRect();
  if (!m_picture.is_empty() && !box.IsEmpty()) {
    const double scale = dc.GetContentScaleFactor();
    if (m_cache->size != box.GetSize() || m_cache->scale != scale) {
      const wxImage image = m_picture.getImage(true);
      const int width = static_cast<int>(std::lround(box.width * scale));
      const int height = static_cast<int>(std::lround(box.height * scale));
      m_cache->bitmap =
          wxBitmap(image.Scale(width, height, wxIMAGE_QUALITY_HIGH), wxBITMAP_SCREEN_DEPTH, scale);
      m_cache->size = box.GetSize();
      m_cache->scale = scale;
    }
    dc.DrawBitmap(m_cache->bitmap, box.GetTopLeft(), true);
  }
  PaintBorder(dc);
}

// ---- TextElement -------------------------------------------------------------------------

TextElement::TextElement(const ptr_t& parent, int position_flags, const wxString& text)
    : UIElement(parent, position_flags), m_text(text) {}

void TextElement::SetText(const wxString& text) {
  if (text != m_text) {
    m_text = text;
    Changed();
    ElementAdapter* adapter = GetAdapter();
    if (a11y::atk_bridge_t* bridge = adapter ? adapter->GetAccessibleBridge() : nullptr) {
      bridge->name_changed(this);
    }
  }
}

void TextElement::SetFont(const wxFont& font) {
  m_font = font;
  Changed();
}

wxFont TextElement::GetFont() const {
  return m_font.IsOk() ? m_font : ui_settings_t::get()->get_font(font_normal);
}

void TextElement::SetColor(const wxColour& color) {
  if (color != m_color) {
    m_color = color;
    Invalidate();
  }
}

wxColour TextElement::GetColor() const {
  return m_color.IsOk() ? m_color : ui_settings_t::get()->get_color(color_dialog_text);
}

void TextElement::SetTextTruncation(bool truncate) {
  if (truncate != m_truncate) {
    m_truncate = truncate;
    Invalidate();
  }
}

void TextElement::Changed() {
  m_extent = wxDefaultSize;
  Invalidate();
  RequestLayout();
}

void TextElement::OnThemeChanged() { m_extent = wxDefaultSize; }

wxSize TextElement::GetContentSize() const {
  if (m_extent == wxDefaultSize) {
    m_extent = m_text.empty() ? wxSize(0, 0) : text_extent(GetFont(), m_text);
  }
  return m_extent;
}

void TextElement::OnPaint(wxDC& dc) {
  const wxRect box = GetPaintRect();
  if (m_text.empty() || box.IsEmpty()) {
    return;
  }
  wxDCClipper clip(dc, box);
  dc.SetFont(GetFont());
  dc.SetTextForeground(GetColor());
  dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
  const wxString shown = m_truncate ? _internal::cut_to_width(dc, m_text, box.width) : m_text;
  const wxSize extent = dc.GetMultiLineTextExtent(shown);
  dc.DrawText(shown, box.x, box.y + (box.height - extent.y) / 2);
}

}  // namespace plaxi1::elements
