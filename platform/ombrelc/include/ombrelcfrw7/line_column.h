#pragma once
// A column of many text lines that keeps no element per line.
#include <ombrelcfrw7/visual_element.h>

#include <a11y/accessible.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrelcfrw7 {

class CLineCaption;

/// Where a CLineColumn reads its lines; lines are only ever appended. GUI thread.
class ILineSource {
 public:
  virtual ~ILineSource() = default;
  virtual std::size_t GetLineCount() const = 0;
  /// The plain UTF-8 text of line `index`.
  virtual std::string_view GetLineText(std::size_t index) const = 0;
  /// The picture of line `index` in the control's image list; -1 for none.
  virtual int GetLinePicture(std::size_t index) const = 0;
  /// How urgently a screen reader speaks line `index` when it is new; off by default.
  virtual a11y::politeness_t GetLineLive(std::size_t index) const { return a11y::politeness_t::off; }
};

/// Lines of a source shown top to bottom as word-wrapped captions with their pictures, as a
/// column of captions would show them, at a cost that doesn't grow with the lines: no
/// element per line, heights kept as prefix sums so that the line at a position is found in
/// O(log n), and only the lines in the clip drawn, through one reused caption.
///
/// Elements added as children (a running status line) sit among the lines, after those
/// that the source held when they joined.
///
/// To assistive technologies the column is a panel whose text is every line, joined with
/// "\n", read in parts. Its accessible children are the lines in view and the newest line
/// (so that a new line is announced wherever the view is), as labels, in order with the
/// visible children. They are kept only while a client knows the column, and follow the
/// view as it is laid out and painted: a line that leaves is reported gone, one that comes
/// is reported added.
class CLineColumn : public CVisualElement {
 public:
  /// The lines and the children in order, each as an element. A line's element is shared:
  /// it shows the line asked for last, until the column or its source changes.
  class lines_view_t {
   public:
    std::size_t size() const;
    bool empty() const { return size() == 0; }
    CVisualElement* operator[](std::size_t index) const;
    /// Throws std::out_of_range past the end.
    CVisualElement* at(std::size_t index) const;

   private:
    friend class CLineColumn;
    explicit lines_view_t(const CLineColumn* column) : m_column(column) {}
    const CLineColumn* m_column;
  };

  CLineColumn(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment,
              std::unique_ptr<ILineSource> source);
  ~CLineColumn() override;

  /// The source has new lines at its end: they are measured at the next layout.
  void LinesAdded();
  /// Every line and child in order (the element tree proper, CVisualElement::GetChildren,
  /// holds only the children).
  lines_view_t GetChildren() const { return lines_view_t(this); }
  std::size_t GetLineCount() const;
  /// The line under `y` (content coordinates) in the last layout; GetLineCount() below the
  /// last one.
  std::size_t LineAt(int y) const;
  /// The rectangle of line `index` in the last layout (content coordinates).
  ombrelc7::rect<int> GetLineRect(std::size_t index) const;
  /// Plain text of the shown lines and children, joined with "\n".
  std::string AsString() const override;

  /// What screen readers call the column (a panel with the lines' text).
  void SetAccessibleName(const std::string& name) { m_accessible_name = name; }
  void DescribeAccessible(a11y::info_t& info) const override;
  void ListAccessible(std::vector<a11y::key_t>& keys) const override;
  long GetAccessibleTextLength() const override;
  std::string GetAccessibleText(long start, long end) const override;

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  void OnChildrenChanged() override;
  void OnThemeChanged() override;

 private:
  // Measures the lines not yet measured at `width`; all of them when the width changed.
  void MeasureLines(int width) const;
  int LineTop(std::size_t index) const;  // from the column's top, children above included
  int ChildrenAbove(std::size_t index) const;
  CLineCaption& Bind(std::size_t index) const;
  // The measured lines that meet the shown part of the column: [first, last).
  std::pair<std::size_t, std::size_t> LinesInView() const;
  ombrelc7::rect<int> LineWindowRect(std::size_t index) const;
  // Brings the accessible lines in line with the view, when a client knows the column.
  void SyncAccessibleLines() const;
  void UpdateAccessibleLines(a11y::atk_bridge_t* bridge) const;
  // Counts the characters of the lines up to `count` not counted yet.
  void CountLineText(std::size_t count) const;

  class line_part_t;
  struct accessible_lines_t;

  std::unique_ptr<ILineSource> m_source;
  std::unique_ptr<CLineCaption> m_caption;
  // Each child with the number of lines before it.
  std::vector<std::pair<CVisualElement*, std::size_t>> m_places;
  // Prefix sums of the measured lines' heights as a Fenwick tree (1-based).
  mutable std::vector<int> m_sums;
  mutable std::size_t m_measured = 0;
  mutable int m_width = -1;
  mutable std::size_t m_widest_measured = 0;  // lines whose natural width is in m_widest
  mutable int m_widest = 0;
  mutable bool m_lines_waiting = false;  // lines added since the last measure
  // The lines that a client may know; null while no client knows the column.
  mutable std::unique_ptr<accessible_lines_t> m_accessible;
  std::string m_accessible_name;
};

}  // namespace ombrelcfrw7
