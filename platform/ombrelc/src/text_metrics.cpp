#include "text_metrics_p.h"

#include <plaxi1/picture.h>
#include <plaxi1/ui_settings.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include <array>
#include <memory>
#include <unordered_map>

namespace ombrelcfrw7::_internal {

namespace {

constexpr std::size_t font_kinds = plaxi1::font_count;
// Every combination of the style bits has a slot.
constexpr std::uint8_t style_bits = style_bold | style_italic;
constexpr std::size_t styles = style_bits + 1;
// Enough for the lines on a few screens; cleared as a whole when full, which keeps the
// lookups cheap and the memory bounded for logs of any length.
constexpr std::size_t max_cached_extents = 8192;

struct font_entry_t {
  wxFont font;
  int height = 0;
  std::array<int, 128> advances{};  // 0: not measured yet
  bool has_advances = false;
};

struct metrics_t {
  std::array<std::unique_ptr<font_entry_t>, font_kinds * styles> fonts;
  std::unordered_map<std::string, std::vector<int>> extents;
  std::unique_ptr<wxBitmap> bitmap;
  std::unique_ptr<wxMemoryDC> dc;
  double scale = 1.0;
};

metrics_t& metrics() {
  static metrics_t* instance = new metrics_t;  // never destroyed: wx may be gone at exit
  return *instance;
}

void drop_measures(metrics_t& m) {
  for (auto& slot : m.fonts) {
    slot.reset();
  }
  m.extents.clear();
}

// Measures at the scale that windows draw at: hinting places glyphs on whole device
// pixels, so a text measured at one scale is wider or narrower drawn at another, and runs
// placed side by side would overlap or drift apart.
wxDC& measure_dc() {
  metrics_t& m = metrics();
  const double scale = plaxi1::display_scale();
  if (!m.dc || scale != m.scale) {
    drop_measures(m);
    m.dc.reset();
    m.bitmap = std::make_unique<wxBitmap>();
    m.bitmap->CreateWithDIPSize(wxSize(1, 1), scale);
    m.dc = std::make_unique<wxMemoryDC>(*m.bitmap);
    m.scale = scale;
  }
  return *m.dc;
}

font_entry_t& entry(int kind, std::uint8_t style) {
  wxDC& dc = measure_dc();  // first: a new scale drops the fonts measured at the old one
  if (kind < 0 || static_cast<std::size_t>(kind) >= font_kinds) {
    kind = plaxi1::font_normal;
  }
  style &= style_bits;
  auto& slot = metrics().fonts[static_cast<std::size_t>(kind) * styles + style];
  if (!slot) {
    slot = std::make_unique<font_entry_t>();
    wxFont font = plaxi1::ui_settings_t::get()->get_font(kind);
    if (style & style_bold) {
      font.MakeBold();
    }
    if (style & style_italic) {
      font.MakeItalic();
    }
    slot->font = font;
    dc.SetFont(font);
    slot->height = dc.GetCharHeight();
  }
  return *slot;
}

}  // namespace

const wxFont& font_for(int kind, std::uint8_t style) { return entry(kind, style).font; }

int line_height(int kind, std::uint8_t style) { return entry(kind, style).height; }

const std::vector<int>& text_extents(int kind, std::uint8_t style, const wxString& text) {
  wxDC& dc = measure_dc();
  metrics_t& m = metrics();
  std::string key(1, static_cast<char>(static_cast<std::size_t>(kind) * styles + (style & style_bits)));
  key += text.utf8_string();
  auto found = m.extents.find(key);
  if (found != m.extents.end()) {
    return found->second;
  }
  if (m.extents.size() >= max_cached_extents) {
    m.extents.clear();
  }
  std::vector<int> widths;
  if (!text.empty()) {
    dc.SetFont(entry(kind, style).font);
    wxArrayInt partial;
    dc.GetPartialTextExtents(text, partial);
    widths.assign(partial.begin(), partial.end());
  }
  return m.extents.emplace(std::move(key), std::move(widths)).first->second;
}

int text_width(int kind, std::uint8_t style, const wxString& text) {
  const auto& widths = text_extents(kind, style, text);
  return widths.empty() ? 0 : widths.back();
}

int quick_width_bound(int kind, std::uint8_t style, const std::string& utf8) {
  font_entry_t& e = entry(kind, style);
  if (!e.has_advances) {
    wxDC& dc = measure_dc();
    dc.SetFont(e.font);
    for (int c = 32; c < 127; ++c) {
      e.advances[static_cast<std::size_t>(c)] = dc.GetTextExtent(wxString(static_cast<wxChar>(c))).x;
    }
    e.has_advances = true;
  }
  int sum = 0;
  for (const char ch : utf8) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 32 || c >= 127) {
      return -1;
    }
    sum += e.advances[c];
  }
  // Shaping (kerning, ligatures) narrows or widens a little: keep a margin.
  return sum + sum / 16 + 2;
}

void reset_text_metrics() { drop_measures(metrics()); }

std::vector<wx_run_t> to_wx_runs(const std::vector<text_run_t>& runs) {
  std::vector<wx_run_t> out;
  out.reserve(runs.size());
  for (const auto& run : runs) {
    out.push_back({wxString::FromUTF8(run.text), run.style, run.line_break});
  }
  return out;
}

std::vector<text_line_t> layout_runs(const std::vector<wx_run_t>& runs, int kind, int width, bool word_wrap) {
  static const std::vector<int> none;
  return break_lines(
      runs.size(), [&](std::size_t r) { return runs[r].line_break; },
      [&](std::size_t r) -> const std::vector<int>& {
        return runs[r].text.empty() ? none : text_extents(kind, runs[r].style, runs[r].text);
      },
      [&](std::size_t r, std::size_t i) {
        const wxUniChar c = runs[r].text[i];
        return c == ' ' || c == '\t';
      },
      width, word_wrap);
}

int lines_height(const std::vector<wx_run_t>& runs, const std::vector<text_line_t>& lines, int kind) {
  const int normal = line_height(kind, style_plain);
  int height = 0;
  for (const auto& line : lines) {
    int h = normal;
    for (const auto& piece : line.pieces) {
      h = std::max(h, line_height(kind, runs[piece.run].style));
    }
    height += h;
  }
  return height;
}

std::uint32_t pack_colour(const wxColour& colour) {
  if (!colour.IsOk() || colour.Alpha() == 0) {
    return 0;
  }
  return static_cast<std::uint32_t>(colour.GetRGBA());
}

wxColour unpack_colour(std::uint32_t packed) {
  wxColour colour;
  if (packed != 0) {
    colour.SetRGBA(packed);
  }
  return colour;
}

}  // namespace ombrelcfrw7::_internal
