// A column of many lines without an element per line: where lines sit, what a search by
// position finds, where children go, and that a paint reads only the lines it shows.
#include "ombrelc_fixture.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

// Lines held by the test, counting how often their texts are read.
class counted_source_t : public ILineSource {
 public:
  explicit counted_source_t(std::vector<std::string>& lines, int& reads) : m_lines(lines), m_reads(reads) {}
  std::size_t GetLineCount() const override { return m_lines.size(); }
  std::string_view GetLineText(std::size_t index) const override {
    ++m_reads;
    return m_lines[index];
  }
  int GetLinePicture(std::size_t) const override { return -1; }

 private:
  std::vector<std::string>& m_lines;
  int& m_reads;
};

// A box that counts the notices of its children's changes.
class noticing_box_t : public CVertBox {
 public:
  using CVertBox::CVertBox;
  int m_notices = 0;

 protected:
  void OnChildInvalidated(CVisualElement* child) override {
    ++m_notices;
    CVertBox::OnChildInvalidated(child);
  }
};

class ombrelc_line_column_test : public line_column_fixture_t {
 protected:
  std::unique_ptr<ILineSource> make_source() override {
    return std::make_unique<counted_source_t>(m_lines, m_reads);
  }

  int m_reads = 0;
};

TEST_F(ombrelc_line_column_test, lines_follow_each_other_and_the_search_by_position_finds_them) {
  add_lines(100000);
  const int height = m_column->GetLineRect(0).height();
  ASSERT_GT(height, 0);
  EXPECT_EQ(m_scroller->GetContentHeight(), 100000 * height);
  for (const std::size_t line : {std::size_t{0}, std::size_t{1}, std::size_t{50000}, std::size_t{99999}}) {
    const rect<int> place = m_column->GetLineRect(line);
    EXPECT_EQ(place.top, m_column->GetRect().top + static_cast<int>(line) * height) << line;
    EXPECT_EQ(m_column->LineAt(place.top), line);
    EXPECT_EQ(m_column->LineAt(place.bottom - 1), line);
  }
  EXPECT_EQ(m_column->LineAt(m_column->GetRect().top + 100000 * height), 100000u) << "past the last line";
}

TEST_F(ombrelc_line_column_test, a_long_line_wraps_and_pushes_the_next_one_down) {
  std::string words;
  for (int i = 0; i < 200; ++i) {
    words += "word ";
  }
  m_lines = {"short", words, "after"};
  m_column->LinesAdded();
  layout();
  EXPECT_GT(m_column->GetLineRect(1).height(), 2 * m_column->GetLineRect(0).height());
  EXPECT_EQ(m_column->GetLineRect(2).top, m_column->GetLineRect(1).bottom);
  EXPECT_EQ(m_column->LineAt(m_column->GetLineRect(1).bottom - 1), 1u);
}

TEST_F(ombrelc_line_column_test, a_child_sits_after_the_lines_that_were_there_when_it_joined) {
  add_lines(3);
  auto* status = new CCaption(m_column, size<int>(0, 0), ombrelc7::alFill);
  status->SetCaption("status");
  add_lines(2);
  const CLineColumn::lines_view_t all = m_column->GetChildren();
  ASSERT_EQ(all.size(), 6u);
  EXPECT_EQ(all[3], status);
  EXPECT_EQ(all[2]->AsString(), "line 2");
  EXPECT_EQ(all.at(4)->AsString(), "line 3");
  EXPECT_THROW(all.at(6), std::out_of_range);
  EXPECT_EQ(status->GetRect().top, m_column->GetLineRect(2).bottom);
  EXPECT_EQ(m_column->GetLineRect(3).top, status->GetRect().bottom);
  EXPECT_EQ(m_column->AsString(), "line 0\nline 1\nline 2\nstatus\nline 3\nline 4");
}

TEST_F(ombrelc_line_column_test, a_paint_reads_only_the_lines_that_it_shows) {
  add_lines(100000);
  m_scroller->SetScrollPos(m_column->GetLineRect(50000).top - m_column->GetRect().top);
  const wxSize client = m_panel->GetClientSize();
  wxBitmap bitmap(client);
  wxMemoryDC dc(bitmap);
  m_reads = 0;
  m_control->HandlePaint(dc, rect<int>(0, 0, client.GetWidth(), client.GetHeight()));
  const int shown = client.GetHeight() / m_column->GetLineRect(0).height() + 1;
  EXPECT_GT(m_reads, 0);
  EXPECT_LE(m_reads, shown + 1);
}

TEST_F(ombrelc_line_column_test, lines_added_one_by_one_send_one_notice_until_they_are_measured) {
  auto* box = new noticing_box_t(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* column = new CLineColumn(box, size<int>(0, 0), ombrelc7::alFill,
                                 std::make_unique<counted_source_t>(m_lines, m_reads));
  layout();
  box->m_notices = 0;
  for (int i = 0; i < 1000; ++i) {
    m_lines.push_back("line");
    column->LinesAdded();
  }
  EXPECT_EQ(box->m_notices, 1);
  layout();
  EXPECT_EQ(column->GetLineRect(999).bottom, column->GetRect().bottom);
  m_lines.push_back("one more");
  column->LinesAdded();
  EXPECT_EQ(box->m_notices, 2) << "measured lines: the next one tells again";
}

TEST_F(ombrelc_line_column_test, added_lines_keep_a_view_left_above_the_end_and_move_one_at_the_end) {
  add_lines(1000);
  m_scroller->SetScrollPos(500);
  add_lines(10);
  EXPECT_EQ(m_scroller->GetScrollPos(), 500);
  m_scroller->ScrollToEnd();
  add_lines(10);
  EXPECT_TRUE(m_scroller->IsAtEnd());
  EXPECT_EQ(m_scroller->GetScrollPos(), m_scroller->GetMaxScrollPos());
}

}  // namespace
