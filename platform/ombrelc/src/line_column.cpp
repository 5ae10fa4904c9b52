#include <ombrelcfrw7/line_column.h>

#include <ombrelc7/control.h>
#include <ombrelcfrw7/accessible_part.h>
#include <ombrelcfrw7/caption.h>

#include <a11y/atk_bridge.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace ombrelcfrw7 {

using ombrelc7::rect;

/// The one caption that measures and draws every line of a column, outside the tree: it
/// takes its pictures from the column's control.
class CLineCaption : public CCaption {
 public:
  explicit CLineCaption(const CLineColumn* column)
      : CCaption(nullptr, ombrelc7::size<int>(0, 0), ombrelc7::alFill), m_column(column) {
    SetAutoSize(true);
    AdjustHeight(true);
    SetWordWrap(true);
    SetTextAlign(taLeft | taVCenter);
  }
  using CCaption::Rebind;

 protected:
  ombrelc7::IImageList* GetImages() const override {
    ombrelc7::COMBRELControl* control = m_column->GetControl();
    return control ? control->GetImageList() : nullptr;
  }

 private:
  const CLineColumn* m_column;
};

/// A line of a column as an accessible node; it stands for another line once reported gone.
class CLineColumn::line_part_t : public CAccessiblePart {
 public:
  line_part_t(const CLineColumn* column, std::size_t line)
      : CAccessiblePart(const_cast<CLineColumn*>(column)), m_column(column), m_line(line) {}
  void DescribeAccessible(a11y::info_t& info) const override {
    info.role = a11y::role_t::label;
    info.name = std::string(m_column->m_source->GetLineText(m_line));
    info.has_text = true;
    info.text = info.name;
    info.live = m_column->m_source->GetLineLive(m_line);
  }
  rect<int> GetWindowRect() const override { return m_column->LineWindowRect(m_line); }

  const CLineColumn* m_column;
  std::size_t m_line;
};

/// What the column keeps for assistive technologies while a client knows it.
struct CLineColumn::accessible_lines_t {
  std::vector<std::unique_ptr<line_part_t>> shown;  // by line
  std::vector<std::unique_ptr<line_part_t>> spare;
  // Characters of the text up to the end of each line counted, its "\n" included.
  std::vector<std::uint64_t> text_ends;
  bool syncing = false;  // reporting changes: the list stays as it is meanwhile
};

namespace {

// Fenwick tree over line heights, 1-based: sums[i] covers the lines (i - lowbit(i), i].
int prefix_sum(const std::vector<int>& sums, std::size_t count) {
  int sum = 0;
  for (std::size_t i = count; i > 0; i &= i - 1) {
    sum += sums[i];
  }
  return sum;
}

void append_height(std::vector<int>& sums, int height) {
  const std::size_t i = sums.size();
  const std::size_t low = i & (~i + 1);
  sums.push_back(height + prefix_sum(sums, i - 1) - prefix_sum(sums, i - low));
}

// The number of leading lines whose heights add up to no more than `y`.
std::size_t lines_within(const std::vector<int>& sums, int y) {
  const std::size_t count = sums.size() - 1;
  std::size_t step = 1;
  while (step * 2 <= count) {
    step *= 2;
  }
  std::size_t position = 0;
  for (; step > 0; step /= 2) {
    if (position + step <= count && sums[position + step] <= y) {
      position += step;
      y -= sums[position];
    }
  }
  return position;
}

}  // namespace

std::size_t CLineColumn::lines_view_t::size() const {
  return m_column->GetLineCount() + m_column->m_places.size();
}

CVisualElement* CLineColumn::lines_view_t::operator[](std::size_t index) const {
  std::size_t children = 0;
  for (const auto& [child, place] : m_column->m_places) {
    if (index == place + children) {
      return child;
    }
    if (index < place + children) {
      break;
    }
    ++children;
  }
  return &m_column->Bind(index - children);
}

CVisualElement* CLineColumn::lines_view_t::at(std::size_t index) const {
  if (index >= size()) {
    throw std::out_of_range("CLineColumn::lines_view_t::at");
  }
  return (*this)[index];
}

CLineColumn::CLineColumn(CVisualElement* parent, const ombrelc7::size<int>& size,
                         ombrelc7::Alignment alignment, std::unique_ptr<ILineSource> source)
    : CVisualElement(parent, size, alignment),
      m_source(std::move(source)),
      m_caption(std::make_unique<CLineCaption>(this)),
      m_sums(1, 0) {}

CLineColumn::~CLineColumn() {
  // The lines' nodes go with the column's before the lines do: the bridge may still hold
  // some of them to announce.
  if (a11y::atk_bridge_t* bridge = m_accessible ? GetAccessibleBridge() : nullptr) {
    m_accessible->syncing = true;
    bridge->node_gone(this);
  }
}

std::size_t CLineColumn::GetLineCount() const { return m_source ? m_source->GetLineCount() : 0; }

void CLineColumn::LinesAdded() {
  // Lines come in batches of thousands: one notice until they are measured is enough, the
  // layout that it asks for repaints the window.
  if (m_lines_waiting) {
    return;
  }
  m_lines_waiting = true;
  OnChange();
}

CLineCaption& CLineColumn::Bind(std::size_t index) const {
  m_caption->Rebind(m_source->GetLineText(index), m_source->GetLinePicture(index));
  return *m_caption;
}

void CLineColumn::MeasureLines(int width) const {
  m_lines_waiting = false;
  if (width != m_width) {
    m_width = width;
    m_sums.assign(1, 0);
    m_measured = 0;
  }
  const std::size_t count = GetLineCount();
  for (; m_measured < count; ++m_measured) {
    append_height(m_sums, Bind(m_measured).GetHeightFor(width));
  }
}

int CLineColumn::MeasureWidth() const {
  const std::size_t count = GetLineCount();
  for (; m_widest_measured < count; ++m_widest_measured) {
    m_widest = std::max(m_widest, Bind(m_widest_measured).GetPreferredWidth());
  }
  int width = std::max(GetMinSize().cx, m_widest);
  for (const auto& [child, place] : m_places) {
    if (child->IsVisible()) {
      width = std::max(width, child->GetPreferredWidth());
    }
  }
  return width;
}

int CLineColumn::MeasureHeight(int width) const {
  MeasureLines(width);
  int height = prefix_sum(m_sums, m_measured);
  for (const auto& [child, place] : m_places) {
    if (child->IsVisible()) {
      height += child->GetHeightFor(width);
    }
  }
  return std::max(GetMinSize().cy, height);
}

int CLineColumn::ChildrenAbove(std::size_t index) const {
  int height = 0;
  for (const auto& [child, place] : m_places) {
    if (place > index) {
      break;
    }
    if (child->IsVisible()) {
      height += child->GetRect().height();
    }
  }
  return height;
}

int CLineColumn::LineTop(std::size_t index) const {
  return prefix_sum(m_sums, std::min(index, m_measured)) + ChildrenAbove(index);
}

void CLineColumn::ArrangeChildren() {
  const rect<int>& area = GetRect();
  MeasureLines(area.width());
  int above = 0;
  for (const auto& [child, place] : m_places) {
    const int top = area.top + prefix_sum(m_sums, std::min(place, m_measured)) + above;
    if (!child->IsVisible()) {
      child->Arrange(rect<int>(area.left, top, area.left, top));
      continue;
    }
    const int height = child->GetHeightFor(area.width());
    child->Arrange(rect<int>::from_size(area.left, top, area.width(), height));
    above += height;
  }
  SyncAccessibleLines();
}

std::size_t CLineColumn::LineAt(int y) const {
  const int local = y - GetRect().top;
  if (local < 0) {
    return 0;
  }
  // Children among the lines push those after them down: search as if all of them were
  // above, then step to the line really there.
  std::size_t line = lines_within(m_sums, std::max(0, local - ChildrenAbove(m_measured)));
  while (line < m_measured && LineTop(line + 1) <= local) {
    ++line;
  }
  return line < m_measured ? line : GetLineCount();
}

rect<int> CLineColumn::GetLineRect(std::size_t index) const {
  const rect<int>& area = GetRect();
  if (index >= m_measured) {
    const int bottom = area.top + LineTop(m_measured);
    return rect<int>(area.left, bottom, area.right, bottom);
  }
  const int top = area.top + LineTop(index);
  const int height = prefix_sum(m_sums, index + 1) - prefix_sum(m_sums, index);
  return rect<int>::from_size(area.left, top, area.width(), height);
}

void CLineColumn::PaintContent(wxDC& dc, const rect<int>& clip) {
  MeasureLines(GetRect().width());
  SyncAccessibleLines();  // a paint follows every scroll
  for (std::size_t line = LineAt(clip.top); line < m_measured; ++line) {
    const rect<int> place = GetLineRect(line);
    if (place.top >= clip.bottom) {
      break;
    }
    CLineCaption& caption = Bind(line);
    caption.Arrange(place);
    caption.Paint(dc, clip);
  }
}

std::string CLineColumn::AsString() const {
  std::string out;
  const lines_view_t all = GetChildren();
  for (std::size_t index = 0; index < all.size(); ++index) {
    AppendShownText(out, *all[index]);
  }
  return out;
}

void CLineColumn::OnChildrenChanged() {
  const std::vector<CVisualElement*>& children = CVisualElement::GetChildren();
  m_places.erase(std::remove_if(m_places.begin(), m_places.end(),
                                [&children](const std::pair<CVisualElement*, std::size_t>& entry) {
                                  return std::find(children.begin(), children.end(), entry.first) ==
                                         children.end();
                                }),
                 m_places.end());
  for (CVisualElement* child : children) {
    const bool known = std::any_of(m_places.begin(), m_places.end(),
                                   [child](const auto& entry) { return entry.first == child; });
    if (!known) {
      m_places.emplace_back(child, GetLineCount());
    }
  }
}

void CLineColumn::OnThemeChanged() {
  m_width = -1;
  m_widest_measured = 0;
  m_widest = 0;
}

// --- what assistive technologies read ----------------------------------------------------

namespace {

// Characters of UTF-8 `text`: the bytes that don't continue a character.
std::size_t utf8_length(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

// The byte at which character `index` of `text` starts; text.size() past its end.
std::size_t utf8_offset(std::string_view text, std::size_t index) {
  std::size_t byte = 0;
  for (; byte < text.size(); ++byte) {
    if ((text[byte] & 0xC0) != 0x80 && index-- == 0) {
      return byte;
    }
  }
  return byte;
}

}  // namespace

void CLineColumn::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::panel;
  info.name = m_accessible_name;
  info.has_text = true;  // read in parts, through GetAccessibleText
}

std::pair<std::size_t, std::size_t> CLineColumn::LinesInView() const {
  const rect<int> shown = GetVisibleWindowRect();
  if (shown.empty() || m_measured == 0) {
    return {0, 0};
  }
  const int to_content = GetRect().top - GetWindowRect().top;
  const std::size_t first = std::min(LineAt(shown.top + to_content), m_measured);
  const std::size_t last = LineAt(shown.bottom - 1 + to_content);
  return {first, last < m_measured ? last + 1 : m_measured};
}

rect<int> CLineColumn::LineWindowRect(std::size_t index) const {
  const rect<int> window = GetWindowRect();
  return GetLineRect(index).offset(window.left - GetRect().left, window.top - GetRect().top);
}

void CLineColumn::ListAccessible(std::vector<a11y::key_t>& keys) const {
  if (!m_accessible) {
    // A client lists the column for the first time: it learns of the lines now, unannounced.
    m_accessible = std::make_unique<accessible_lines_t>();
    UpdateAccessibleLines(nullptr);
  }
  auto place = m_places.begin();
  for (const std::unique_ptr<line_part_t>& part : m_accessible->shown) {
    for (; place != m_places.end() && place->second <= part->m_line; ++place) {
      if (place->first->IsVisible()) {
        keys.push_back(place->first);
      }
    }
    keys.push_back(part->GetAccessibleKey());
  }
  for (; place != m_places.end(); ++place) {
    if (place->first->IsVisible()) {
      keys.push_back(place->first);
    }
  }
}

void CLineColumn::SyncAccessibleLines() const {
  a11y::atk_bridge_t* bridge = GetAccessibleBridge();
  if (!bridge || !bridge->has_object(this)) {
    m_accessible.reset();  // no client knows the column: nothing is kept per line
    return;
  }
  if (!m_accessible) {
    m_accessible = std::make_unique<accessible_lines_t>();
  }
  if (!m_accessible->syncing) {
    UpdateAccessibleLines(bridge);
  }
}

void CLineColumn::UpdateAccessibleLines(a11y::atk_bridge_t* bridge) const {
  const auto [first, last] = LinesInView();
  const std::size_t newest = m_measured - 1;  // wraps when there are none: no line matches
  const auto wanted = [first = first, last = last, newest](std::size_t line) {
    return (line >= first && line < last) || line == newest;
  };
  accessible_lines_t& lines = *m_accessible;
  lines.syncing = true;
  for (std::size_t i = lines.shown.size(); i-- > 0;) {
    if (!wanted(lines.shown[i]->m_line)) {
      if (bridge) {
        bridge->node_gone(lines.shown[i]->GetAccessibleKey());  // while it is still listed
      }
      lines.spare.push_back(std::move(lines.shown[i]));
      lines.shown.erase(lines.shown.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  std::vector<std::size_t> coming;
  for (std::size_t line = first; line < last; ++line) {
    coming.push_back(line);
  }
  if (m_measured > 0 && newest >= last) {
    coming.push_back(newest);
  }
  for (const std::size_t line : coming) {
    const auto at =
        std::lower_bound(lines.shown.begin(), lines.shown.end(), line,
                         [](const auto& part, std::size_t value) { return part->m_line < value; });
    if (at != lines.shown.end() && (*at)->m_line == line) {
      continue;
    }
    std::unique_ptr<line_part_t> part;
    if (lines.spare.empty()) {
      part = std::make_unique<line_part_t>(this, line);
    } else {
      part = std::move(lines.spare.back());
      lines.spare.pop_back();
      part->m_line = line;
    }
    const a11y::key_t key = part->GetAccessibleKey();
    lines.shown.insert(at, std::move(part));
    if (bridge) {
      bridge->child_added(this, key);
    }
  }
  lines.syncing = false;
}

void CLineColumn::CountLineText(std::size_t count) const {
  if (!m_accessible) {
    m_accessible = std::make_unique<accessible_lines_t>();
  }
  std::vector<std::uint64_t>& ends = m_accessible->text_ends;
  for (std::size_t line = ends.size(); line < count; ++line) {
    const std::uint64_t start = line == 0 ? 0 : ends[line - 1];
    ends.push_back(start + utf8_length(m_source->GetLineText(line)) + 1);
  }
}

long CLineColumn::GetAccessibleTextLength() const {
  const std::size_t count = GetLineCount();
  if (count == 0) {
    return 0;
  }
  CountLineText(count);
  return static_cast<long>(m_accessible->text_ends[count - 1] - 1);  // no "\n" after the last
}

std::string CLineColumn::GetAccessibleText(long start, long end) const {
  const std::size_t count = GetLineCount();
  CountLineText(count);
  const std::vector<std::uint64_t>& ends = m_accessible->text_ends;
  const auto from = static_cast<std::uint64_t>(std::max(start, 0L));
  const auto to = static_cast<std::uint64_t>(std::max(end, 0L));
  std::size_t line = static_cast<std::size_t>(
      std::upper_bound(ends.begin(), ends.begin() + static_cast<std::ptrdiff_t>(count), from) - ends.begin());
  std::string out;
  for (; line < count; ++line) {
    const std::uint64_t begins = line == 0 ? 0 : ends[line - 1];
    if (begins >= to) {
      break;
    }
    const std::string_view text = m_source->GetLineText(line);
    const std::size_t length = utf8_length(text);
    const std::size_t skip = from > begins ? static_cast<std::size_t>(from - begins) : 0;
    const std::size_t take_to = static_cast<std::size_t>(std::min<std::uint64_t>(to - begins, length));
    if (skip < take_to) {
      const std::size_t byte = utf8_offset(text, skip);
      out.append(text.substr(byte, utf8_offset(text, take_to) - byte));
    }
    if (line + 1 < count && to - begins > length && skip <= length) {
      out += '\n';
    }
  }
  return out;
}

}  // namespace ombrelcfrw7
