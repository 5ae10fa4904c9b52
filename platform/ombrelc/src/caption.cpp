#include <ombrelcfrw7/caption.h>
#include <ombrelcfrw7/gauge.h>
#include <ombrelcfrw7/message_box.h>

#include <a11y/atk_bridge.h>

#include <ombrelc7/control.h>

#include <plaxi1/ui_settings.h>

#include "text_metrics_p.h"

#include <wx/control.h>
#include <wx/dc.h>

#include <algorithm>

namespace ombrelcfrw7 {

using namespace _internal;
using ombrelc7::rect;

namespace {

constexpr int icon_gap = 4;

bool has_break(const std::vector<text_run_t>& runs) {
  return std::any_of(runs.begin(), runs.end(), [](const text_run_t& run) { return run.line_break; });
}

// One line: breaks become spaces.
std::vector<wx_run_t> single_line_runs(const std::vector<text_run_t>& runs) {
  std::vector<text_run_t> joined;
  for (const auto& run : runs) {
    text_run_t piece = run.line_break ? text_run_t{" ", style_plain, false} : run;
    if (!joined.empty() && joined.back().style == piece.style) {
      joined.back().text += piece.text;
    } else {
      joined.push_back(piece);
    }
  }
  return to_wx_runs(joined);
}

// The card and the progress bars in it are named by its header.
void card_renamed(a11y::atk_bridge_t* bridge, CVisualElement* element) {
  if (dynamic_cast<CMessageBoxBase*>(element) || dynamic_cast<CGauge*>(element)) {
    bridge->name_changed(element);
  }
  for (CVisualElement* child : element->GetChildren()) {
    card_renamed(bridge, child);
  }
}

}  // namespace

CCaption::CCaption(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment), m_font(static_cast<std::uint8_t>(plaxi1::font_normal)) {}

void CCaption::SetFlag(std::uint8_t flag, bool on) {
  const std::uint8_t flags = on ? (m_caption_flags | flag) : (m_caption_flags & ~flag);
  if (flags != m_caption_flags) {
    m_caption_flags = flags;
    OnChange();
  }
}

void CCaption::SetCaption(const std::string& utf8) {
  if (utf8 != m_text) {
    m_text = utf8;
    OnChange();
    if (a11y::atk_bridge_t* bridge = GetAccessibleBridge()) {
      bridge->name_changed(this);
      // A card's header names the card, and the progress bars in it.
      if (const auto* card = dynamic_cast<CMessageBoxBase*>(GetParent());
          card && card->GetCaption() == this) {
        card_renamed(bridge, GetParent());
      }
    }
  }
}

void CCaption::SetAutoSize(bool autosize) { SetFlag(cf_autosize, autosize); }
void CCaption::AdjustHeight(bool adjust) { SetFlag(cf_adjust_height, adjust); }
void CCaption::UseHTML(bool html) { SetFlag(cf_html, html); }
void CCaption::SetWordWrap(bool wrap) { SetFlag(cf_word_wrap, wrap); }

void CCaption::SetTextAlign(int align) {
  if (align != m_text_align) {
    m_text_align = static_cast<std::uint8_t>(align);
    Invalidate();
  }
}

void CCaption::SetImageIndex(int index) {
  if (index != m_image) {
    m_image = static_cast<std::int16_t>(index < 0 ? -1 : index);
    OnChange();
  }
}

void CCaption::SetFontKind(int font) {
  if (font != m_font) {
    m_font = static_cast<std::uint8_t>(font);
    OnChange();
  }
}

void CCaption::SetTextColor(const wxColour& colour) {
  const std::uint32_t packed = pack_colour(colour);
  if (packed != m_text_colour) {
    m_text_colour = packed;
    Invalidate();
  }
}

wxColour CCaption::GetTextColor() const { return unpack_colour(m_text_colour); }

wxColour CCaption::EffectiveTextColor() const {
  return m_text_colour != 0 ? unpack_colour(m_text_colour)
                            : plaxi1::ui_settings_t::get()->get_color(plaxi1::color_text);
}

std::string CCaption::AsString() const { return plain_text(m_text, IsHTML()); }

ombrelc7::IImageList* CCaption::GetImages() const {
  ombrelc7::COMBRELControl* control = GetControl();
  return control ? control->GetImageList() : nullptr;
}

void CCaption::Rebind(std::string_view utf8, int image) {
  m_text.assign(utf8.data(), utf8.size());
  m_image = static_cast<std::int16_t>(image < 0 ? -1 : image);
  InvalidateMeasure();
}

int CCaption::IconWidth() const {
  if (m_image < 0) {
    return 0;
  }
  ombrelc7::IImageList* images = GetImages();
  if (!images || m_image >= images->GetCount()) {
    return 0;
  }
  return images->GetImageSize().cx + icon_gap;
}

int CCaption::NaturalTextWidth() const {
  const auto runs = to_wx_runs(parse_rich_text(m_text, IsHTML()));
  int width = 0;
  for (const auto& line : layout_runs(runs, m_font, 0, false)) {
    width = std::max(width, line.width);
  }
  return width + IconWidth();
}

int CCaption::TextHeightFor(int width) const {
  int icon_height = 0;
  if (IconWidth() > 0) {
    icon_height = GetImages()->GetImageSize().cy;
  }
  const int one_line = line_height(m_font, style_plain);
  if (!IsAdjustHeight() || m_text.empty()) {
    return std::max(one_line, icon_height);
  }
  const int text_width = width - IconWidth();
  const auto runs = parse_rich_text(m_text, IsHTML());
  if (!has_break(runs)) {
    // Most log lines fit: a bound from character advances spares measuring them.
    int bound = 0;
    for (const auto& run : runs) {
      const int w = quick_width_bound(m_font, run.style, run.text);
      bound = w < 0 || bound < 0 ? -1 : bound + w;
    }
    if (bound >= 0 && bound <= text_width) {
      int height = one_line;
      for (const auto& run : runs) {
        height = std::max(height, line_height(m_font, run.style));
      }
      return std::max(height, icon_height);
    }
  }
  const auto wx_runs = to_wx_runs(runs);
  const auto lines = layout_runs(wx_runs, m_font, std::max(1, text_width), GetWordWrap());
  return std::max(lines_height(wx_runs, lines, m_font), icon_height);
}

int CCaption::MeasureWidth() const {
  const int min = GetMinSize().cx;
  // Without a width of its own, a caption asks for its text's.
  if (GetAutoSize() || min <= 0) {
    return std::max(min, NaturalTextWidth());
  }
  return min;
}

int CCaption::MeasureHeight(int width) const { return std::max(GetMinSize().cy, TextHeightFor(width)); }

void CCaption::PaintContent(wxDC& dc, const rect<int>& clip) {
  DrawText(dc, TextArea(), EffectiveTextColor());
}

void CCaption::DrawText(wxDC& dc, const rect<int>& area, const wxColour& colour) const {
  const int icon = IconWidth();
  const rect<int> text_area(area.left + icon, area.top, area.right, area.bottom);
  const auto parsed = parse_rich_text(m_text, IsHTML());
  const std::vector<wx_run_t> runs = IsAdjustHeight() ? to_wx_runs(parsed) : single_line_runs(parsed);
  const std::vector<text_line_t> lines =
      IsAdjustHeight() ? layout_runs(runs, m_font, std::max(1, text_area.width()), GetWordWrap())
                       : layout_runs(runs, m_font, 0, false);
  const int total = lines_height(runs, lines, m_font);
  const int first_line =
      lines.empty() ? line_height(m_font, style_plain) : lines_height(runs, {lines[0]}, m_font);

  int y = text_area.top;
  const int valign = m_text_align & 0xF0;
  if (valign == taVCenter) {
    y += (text_area.height() - total) / 2;
  } else if (valign == taBottom) {
    y += text_area.height() - total;
  }
  if (icon > 0) {
    ombrelc7::IImageList* images = GetImages();
    const int icon_height = images->GetImageSize().cy;
    const int icon_y = std::max(area.top, y + (first_line - icon_height) / 2);
    images->Draw(dc, m_image, area.left, icon_y);
  }
  dc.SetTextForeground(colour);
  const int halign = m_text_align & 0x0F;
  for (const auto& line : lines) {
    const int height = lines_height(runs, {line}, m_font);
    if (y + height > area.top - height && y < area.bottom + height) {
      int x = text_area.left;
      const int width = std::min(line.width, text_area.width());
      if (halign == taCenter) {
        x += (text_area.width() - width) / 2;
      } else if (halign == taRight) {
        x += text_area.width() - width;
      }
      for (const auto& piece : line.pieces) {
        const wx_run_t& run = runs[piece.run];
        dc.SetFont(theme_font(m_font, run.style));
        wxString text = run.text.Mid(piece.begin, piece.end - piece.begin);
        const int room = text_area.width() - piece.x;
        const bool cut = !IsAdjustHeight() && piece.x + piece.width > text_area.width();
        if (cut) {
          text = wxControl::Ellipsize(text, dc, wxELLIPSIZE_END, std::max(0, room));
        }
        // Runs of other fonts sit on the line's bottom, near enough to a common baseline.
        dc.DrawText(text, x + piece.x, y + height - line_height(m_font, run.style));
        if (cut) {
          break;
        }
      }
    }
    y += height;
  }
}

}  // namespace ombrelcfrw7
