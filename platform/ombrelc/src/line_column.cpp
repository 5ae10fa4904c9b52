#include <ombrelcfrw7/line_column.h>

#include <ombrelc7/control.h>
#include <ombrelcfrw7/caption.h>

#include <algorithm>
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

CLineColumn::~CLineColumn() = default;

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

}  // namespace ombrelcfrw7
