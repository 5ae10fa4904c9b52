#include "text_metrics_p.h"

#include <algorithm>

namespace ombrelcfrw7::_internal {

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
