#include <plaxi1/picture.h>
#include <plaxi1/text_metrics.h>
#include <plaxi1/ui_settings.h>

#include "text_metrics_test_access.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/tokenzr.h>

#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>

namespace plaxi1 {

namespace {

constexpr std::size_t font_kinds = font_count;
// Every combination of the style bits has a slot.
constexpr std::uint8_t style_bits = text_bold | text_italic;
constexpr std::size_t styles = style_bits + 1;
// Enough for the lines on a few screens; cleared as a whole when full, which keeps the
// lookups cheap and the memory bounded for logs of any length.
constexpr std::size_t max_cached_extents = 8192;

struct font_entry_t {
  wxFont font;
  int height = 0;
  std::array<int, 128> advances{};
  bool has_advances = false;
};

struct metrics_t {
  std::array<std::unique_ptr<font_entry_t>, font_kinds * styles> fonts;
  std::unordered_map<std::string, std::vector<int>> extents;
  std::unordered_map<std::string, int> heights;  // of other fonts
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
  m.heights.clear();
}

// Measures at the scale that windows draw at: hinting places glyphs on whole device
// pixels, so a text measured at one scale is wider or narrower drawn at another, and runs
// placed side by side would overlap or drift apart.
wxDC& measure_dc() {
  metrics_t& m = metrics();
  const double scale = display_scale();
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
    kind = font_normal;
  }
  style &= style_bits;
  auto& slot = metrics().fonts[static_cast<std::size_t>(kind) * styles + style];
  if (!slot) {
    slot = std::make_unique<font_entry_t>();
    wxFont font = ui_settings_t::get()->get_font(kind);
    if (style & text_bold) {
      font.MakeBold();
    }
    if (style & text_italic) {
      font.MakeItalic();
    }
    slot->font = font;
    dc.SetFont(font);
    slot->height = dc.GetCharHeight();
  }
  return *slot;
}

// The cached extents under `key`, measured in `font` when missing.
const std::vector<int>& cached_extents(std::string key, const wxFont& font, const wxString& text) {
  wxDC& dc = measure_dc();
  metrics_t& m = metrics();
  auto found = m.extents.find(key);
  if (found != m.extents.end()) {
    return found->second;
  }
  if (m.extents.size() >= max_cached_extents) {
    m.extents.clear();
  }
  std::vector<int> widths;
  if (!text.empty()) {
    dc.SetFont(font);
    wxArrayInt partial;
    dc.GetPartialTextExtents(text, partial);
    widths.assign(partial.begin(), partial.end());
  }
  return m.extents.emplace(std::move(key), std::move(widths)).first->second;
}

// Theme fonts are keyed by their slot, other fonts by their description; the two can't
// meet, as a description never starts with a control character.
std::string font_key(const wxFont& font) { return font.GetNativeFontInfoDesc().utf8_string() + '\n'; }

}  // namespace

const wxFont& theme_font(int kind, std::uint8_t style) { return entry(kind, style).font; }

int line_height(int kind, std::uint8_t style) { return entry(kind, style).height; }

const std::vector<int>& text_extents(int kind, std::uint8_t style, const wxString& text) {
  const wxFont& font = entry(kind, style).font;
  std::string key(1, static_cast<char>(static_cast<std::size_t>(kind) * styles + (style & style_bits)));
  key += text.utf8_string();
  return cached_extents(std::move(key), font, text);
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

const std::vector<int>& text_extents(const wxFont& font, const wxString& text) {
  return cached_extents(font_key(font) + text.utf8_string(), font, text);
}

int text_width(const wxFont& font, const wxString& text) {
  const auto& widths = text_extents(font, text);
  return widths.empty() ? 0 : widths.back();
}

int line_height(const wxFont& font) {
  wxDC& dc = measure_dc();
  auto& heights = metrics().heights;
  const std::string key = font_key(font);
  auto found = heights.find(key);
  if (found == heights.end()) {
    dc.SetFont(font);
    found = heights.emplace(key, dc.GetCharHeight()).first;
  }
  return found->second;
}

wxSize text_extent(const wxFont& font, const wxString& text) {
  wxSize size(0, 0);
  const int height = line_height(font);
  wxStringTokenizer lines(text, "\n", wxTOKEN_RET_EMPTY_ALL);
  while (lines.HasMoreTokens()) {
    size.x = std::max(size.x, text_width(font, lines.GetNextToken()));
    size.y += height;
  }
  return size;
}

void reset_text_metrics() { drop_measures(metrics()); }

std::size_t test_access::cached_text_count() { return metrics().extents.size(); }

}  // namespace plaxi1
