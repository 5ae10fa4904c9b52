#include "rich_text_p.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace ombrelcfrw7::_internal {

namespace {

void append(std::vector<text_run_t>& runs, const std::string& text, std::uint8_t style) {
  if (text.empty()) {
    return;
  }
  if (!runs.empty() && !runs.back().line_break && runs.back().style == style) {
    runs.back().text += text;
  } else {
    runs.push_back({text, style, false});
  }
}

void append_break(std::vector<text_run_t>& runs) { runs.push_back({std::string(), style_plain, true}); }

// Plain text: newlines break lines, nothing else is special.
void split_lines(std::vector<text_run_t>& runs, const std::string& text, std::uint8_t style) {
  std::size_t start = 0;
  for (;;) {
    const std::size_t nl = text.find('\n', start);
    std::string piece = text.substr(start, nl == std::string::npos ? std::string::npos : nl - start);
    if (!piece.empty() && piece.back() == '\r') {
      piece.pop_back();
    }
    append(runs, piece, style);
    if (nl == std::string::npos) {
      return;
    }
    append_break(runs);
    start = nl + 1;
  }
}

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

std::vector<text_run_t> parse_rich_text(const std::string& text, bool html) {
  std::vector<text_run_t> runs;
  if (!html) {
    split_lines(runs, text, style_plain);
    return runs;
  }
  static const struct {
    const char* name;
    const char* text;
  } entities[] = {{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}, {"&quot;", "\""}, {"&nbsp;", "\xC2\xA0"}};

  int bold = 0;
  int italic = 0;
  std::string pending;
  auto style = [&] {
    return static_cast<std::uint8_t>((bold > 0 ? style_bold : 0) | (italic > 0 ? style_italic : 0));
  };
  auto flush = [&] {
    split_lines(runs, pending, style());
    pending.clear();
  };
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == '<') {
      const std::size_t close = text.find('>', i + 1);
      if (close == std::string::npos) {
        pending += text.substr(i);  // not a tag: an unfinished one is text
        break;
      }
      std::string tag = lower(text.substr(i + 1, close - i - 1));
      tag.erase(std::remove_if(tag.begin(), tag.end(), [](unsigned char t) { return std::isspace(t); }),
                tag.end());
      const bool closing = !tag.empty() && tag[0] == '/';
      std::string name = closing ? tag.substr(1) : tag;
      if (!name.empty() && name.back() == '/') {
        name.pop_back();
      }
      if (name == "b" || name == "i") {
        flush();
        int& depth = name == "b" ? bold : italic;
        depth = closing ? std::max(0, depth - 1) : depth + 1;
      } else if (name == "br" && !closing) {
        flush();
        append_break(runs);
      }
      i = close + 1;
      continue;
    }
    if (c == '&') {
      bool decoded = false;
      for (const auto& entity : entities) {
        const std::size_t length = std::strlen(entity.name);
        if (text.compare(i, length, entity.name) == 0) {
          pending += entity.text;
          i += length;
          decoded = true;
          break;
        }
      }
      if (decoded) {
        continue;
      }
    }
    pending += c;
    ++i;
  }
  flush();
  return runs;
}

std::string plain_text(const std::string& text, bool html) {
  if (!html) {
    return text;
  }
  std::string out;
  for (const auto& run : parse_rich_text(text, true)) {
    out += run.line_break ? std::string("\n") : run.text;
  }
  return out;
}

std::vector<text_line_t> break_lines(std::size_t run_count, const std::function<bool(std::size_t)>& is_break,
                                     const std::function<const std::vector<int>&(std::size_t)>& extents,
                                     const std::function<bool(std::size_t, std::size_t)>& is_space, int width,
                                     bool word_wrap) {
  std::vector<text_line_t> lines(1);
  int x = 0;
  auto new_line = [&] {
    lines.back().width = x;
    lines.emplace_back();
    x = 0;
  };
  for (std::size_t r = 0; r < run_count; ++r) {
    if (is_break(r)) {
      new_line();
      continue;
    }
    const std::vector<int>& ext = extents(r);
    const std::size_t n = ext.size();
    std::size_t p = 0;
    while (p < n) {
      const int base = p > 0 ? ext[p - 1] : 0;
      // The longest piece [p, q) that still fits on the line.
      std::size_t q = n;
      if (width > 0) {
        q = static_cast<std::size_t>(
            std::upper_bound(ext.begin() + static_cast<std::ptrdiff_t>(p), ext.end(), base + (width - x)) -
            ext.begin());
      }
      if (q == n) {
        lines.back().pieces.push_back({r, p, n, x, ext[n - 1] - base});
        x += ext[n - 1] - base;
        break;
      }
      std::size_t cut = q;
      std::size_t next = q;
      if (word_wrap) {
        // The last space up to q (a space at q may end the line, being dropped).
        std::size_t s = q + 1;
        while (s > p && !is_space(r, s - 1)) {
          --s;
        }
        if (s > p) {
          cut = s - 1;
          next = s;
        } else if (x > 0) {
          new_line();  // the word may fit on a line of its own
          continue;
        }
      }
      if (cut == p && next == p) {
        if (x > 0) {
          new_line();
          continue;
        }
        cut = next = p + 1;  // not even one character fits: take it anyway
      }
      if (cut > p) {
        const int w = ext[cut - 1] - base;
        lines.back().pieces.push_back({r, p, cut, x, w});
        x += w;
      }
      if (next >= n) {
        break;  // the run is used up: what follows decides whether the line breaks
      }
      new_line();
      p = next;
    }
  }
  lines.back().width = x;
  return lines;
}

}  // namespace ombrelcfrw7::_internal
