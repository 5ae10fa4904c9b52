// The compact store of an entry's kept lines: order, texts of every length, severities and
// picture indices come back as they went in.
#include <tamsel3/kept_lines.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using tamsel3::kept_lines_t;
using tamsel3::messenger_entry_t;

TEST(kept_lines_test, an_empty_store_has_no_lines) {
  const kept_lines_t lines;
  EXPECT_TRUE(lines.empty());
  EXPECT_EQ(lines.size(), 0u);
  EXPECT_TRUE(lines.begin() == lines.end());
}

TEST(kept_lines_test, lines_come_back_in_order_with_severity_and_picture) {
  kept_lines_t lines;
  lines.add(pelit2::severity_warning, "first", 3);
  lines.add(pelit2::severity_error, "", 7);
  lines.push_back(messenger_entry_t{pelit2::severity_info, "third"});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines.text(0), "first");
  EXPECT_EQ(lines.severity(0), pelit2::severity_warning);
  EXPECT_EQ(lines.picture(0), 3);
  EXPECT_EQ(lines.text(1), "");
  EXPECT_EQ(lines[1].m_severity, pelit2::severity_error);
  EXPECT_EQ(lines.picture(1), 7);
  EXPECT_EQ(lines[2].m_text, "third");
  EXPECT_EQ(lines.picture(2), -1) << "a line pushed as an entry has no picture";
}

TEST(kept_lines_test, a_severity_outside_the_known_bits_is_kept_whole) {
  kept_lines_t lines;
  lines.add(static_cast<pelit2::ESeverity>(0x12345), "odd");
  EXPECT_EQ(static_cast<int>(lines.severity(0)), 0x12345);
}

TEST(kept_lines_test, iteration_gives_every_line_as_an_entry) {
  kept_lines_t lines;
  for (int line = 0; line < 5; ++line) {
    lines.add(pelit2::severity_info, "line " + std::to_string(line));
  }
  std::vector<std::string> texts;
  for (const messenger_entry_t& line : lines) {
    texts.push_back(line.m_text);
  }
  EXPECT_EQ(texts, (std::vector<std::string>{"line 0", "line 1", "line 2", "line 3", "line 4"}));
}

TEST(kept_lines_test, texts_of_any_length_between_short_ones_stay_whole) {
  kept_lines_t lines;
  const std::string long_text(200000, 'x');
  const std::string medium_text(20000, 'm');
  std::vector<std::string> said;
  for (int line = 0; line < 3000; ++line) {
    said.push_back(line % 1000 == 7  ? long_text
                   : line % 500 == 3 ? medium_text
                                     : "short " + std::to_string(line));
    lines.add(pelit2::severity_info, said.back());
  }
  ASSERT_EQ(lines.size(), said.size());
  for (std::size_t line = 0; line < said.size(); ++line) {
    ASSERT_EQ(lines.text(line), said[line]) << "line " << line;
  }
}

TEST(kept_lines_test, clear_forgets_the_lines_and_the_store_takes_new_ones) {
  kept_lines_t lines;
  lines.add(pelit2::severity_info, "old");
  lines.clear();
  EXPECT_TRUE(lines.empty());
  lines.add(pelit2::severity_warning, "new");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines.text(0), "new");
}

TEST(kept_lines_test, a_moved_store_keeps_its_texts) {
  kept_lines_t lines;
  lines.add(pelit2::severity_info, "kept across the move");
  const kept_lines_t moved(std::move(lines));
  EXPECT_EQ(moved.text(0), "kept across the move");
}

}  // namespace
