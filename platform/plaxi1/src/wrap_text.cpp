#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>

#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/string.h>
#include <wx/window.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace plaxi1 {

namespace {

/// Widths of texts in the font of one device context.
class measure_t {
 public:
  explicit measure_t(wxDC& dc) : m_dc(dc) {}
  int width(const wxString& text) const {
    wxCoord width = 0;
    wxCoord height = 0;
    m_dc.GetTextExtent(text, &width, &height);
    return width;
  }
  bool fits(const wxString& text, int width) const { return this->width(text) <= width; }

 private:
  wxDC& m_dc;
};

// Only spaces and tabs break lines: a no-break space keeps its words together.
bool is_blank(wxUniChar c) { return c == ' ' || c == '\t'; }

void strip_trailing_blanks(wxString& line) {
  std::size_t end = line.length();
  while (end > 0 && is_blank(line[end - 1])) {
    --end;
  }
  line.Truncate(end);
}

bool is_only_blanks(const wxString& text) {
  return std::all_of(text.begin(), text.end(), [](wxUniChar c) { return is_blank(c); });
}

// wxString indexes whole characters, so a cut never splits a character's UTF-8 bytes.
// The number of leading characters of `word` that fit, at least one so that wrapping
// always advances.
std::size_t fitting_prefix(const wxString& word, int width, const measure_t& measure) {
  std::size_t lo = 1;  // assumed to fit
  std::size_t hi = word.length();
  while (lo < hi) {
    const std::size_t mid = (lo + hi + 1) / 2;
    if (measure.fits(word.Left(mid), width)) {
      lo = mid;
    } else {
      hi = mid - 1;
    }
  }
  return lo;
}

/// Greedy wrapping of one paragraph (text without line breaks) into `out`.
void wrap_paragraph(const wxString& paragraph, int width, const measure_t& measure,
                    std::vector<wxString>& out) {
  if (measure.fits(paragraph, width)) {
    out.push_back(paragraph);
    return;
  }
  wxString line;
  std::size_t pos = 0;
  const std::size_t size = paragraph.length();
  while (pos < size) {
    const std::size_t blanks_begin = pos;
    while (pos < size && is_blank(paragraph[pos])) {
      ++pos;
    }
    const std::size_t word_begin = pos;
    while (pos < size && !is_blank(paragraph[pos])) {
      ++pos;
    }
    const wxString blanks = paragraph.Mid(blanks_begin, word_begin - blanks_begin);
    wxString word = paragraph.Mid(word_begin, pos - word_begin);
    if (word.empty()) {
      // Blanks at the paragraph's end stay while they fit.
      if (measure.fits(line + blanks, width)) {
        line += blanks;
      }
      break;
    }
    if (measure.fits(line + blanks + word, width)) {
      line += blanks + word;
      continue;
    }
    // The break takes the blanks before the word.
    if (!is_only_blanks(line)) {
      strip_trailing_blanks(line);
      out.push_back(line);
    }
    while (!measure.fits(word, width)) {
      const std::size_t count = fitting_prefix(word, width, measure);
      out.push_back(word.Left(count));
      word.Remove(0, count);
    }
    line = word;
  }
  out.push_back(line);
}

/// Cuts `lines` to `max_lines`, the last one ending in an ellipsis that fits the width.
void limit_lines(std::vector<wxString>& lines, unsigned long max_lines, int width, const measure_t& measure) {
  if (max_lines == 0 || lines.size() <= max_lines) {
    return;
  }
  lines.resize(max_lines);
  const wxString ellipsis = wxString::FromUTF8("\xE2\x80\xA6");
  wxString& last = lines.back();
  strip_trailing_blanks(last);
  while (width > 0 && !last.empty() && !measure.fits(last + ellipsis, width)) {
    last.RemoveLast();
    strip_trailing_blanks(last);
  }
  last += ellipsis;
}

std::vector<wxString> split_lines(const wxString& text) {
  std::vector<wxString> lines;
  std::size_t begin = 0;
  for (;;) {
    const std::size_t end = text.find('\n', begin);
    if (end == wxString::npos) {
      lines.push_back(text.Mid(begin));
      return lines;
    }
    lines.push_back(text.Mid(begin, end - begin));
    begin = end + 1;
  }
}

unsigned long count_lines(const std::string& text) {
  return 1 + static_cast<unsigned long>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

std::string wrap_text(const std::string& text, int width, wxWindow* window, unsigned long& lines,
                      unsigned long max_lines, wxDC* dc) {
  const wxString wide = wxString::FromUTF8(text.data(), text.size());
  const bool unlimited = max_lines == 0 || count_lines(text) <= max_lines;
  // Invalid UTF-8 cannot be measured by character; it is given back as it came.
  if ((width <= 0 && unlimited) || (wide.empty() && !text.empty())) {
    lines = count_lines(text);
    return text;
  }

  // The measuring context: the caller's, else one with the window's or the normal font.
  std::unique_ptr<wxDC> own_dc;
  if (!dc) {
    if (window) {
      own_dc = std::make_unique<wxClientDC>(window);
      own_dc->SetFont(window->GetFont());
    } else {
      own_dc = std::make_unique<wxMemoryDC>();
      own_dc->SetFont(ui_settings_t::get()->get_font(font_normal));
    }
    dc = own_dc.get();
  }
  const measure_t measure(*dc);

  std::vector<wxString> result;
  for (const wxString& paragraph : split_lines(wide)) {
    if (width > 0) {
      wrap_paragraph(paragraph, width, measure, result);
    } else {
      result.push_back(paragraph);
    }
  }
  limit_lines(result, max_lines, width, measure);

  lines = static_cast<unsigned long>(result.size());
  wxString joined;
  for (std::size_t i = 0; i < result.size(); ++i) {
    if (i > 0) {
      joined += '\n';
    }
    joined += result[i];
  }
  return joined.ToStdString(wxConvUTF8);
}

}  // namespace plaxi1
