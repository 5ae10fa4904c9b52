#include "screenshot_compare.h"

#include <gtest/gtest.h>
#include <wx/image.h>

namespace {

// A grey picture of 10x10 pixels.
wxImage grey(unsigned char level = 128) {
  wxImage image(10, 10);
  image.SetRGB(wxRect(0, 0, 10, 10), level, level, level);
  return image;
}

}  // namespace

TEST(screenshot_compare, equal_pictures_are_alike) {
  const auto result = screenshot_compare::compare(grey(), grey());
  EXPECT_TRUE(result.m_same_size);
  EXPECT_EQ(result.m_differing_fraction, 0.0);
  EXPECT_TRUE(result.alike());
}

TEST(screenshot_compare, pictures_of_different_sizes_differ) {
  const auto result = screenshot_compare::compare(grey(), wxImage(10, 11));
  EXPECT_FALSE(result.m_same_size);
  EXPECT_FALSE(result.alike());
}

TEST(screenshot_compare, a_channel_off_by_the_tolerance_is_the_same_pixel) {
  wxImage off = grey();
  off.SetRGB(wxRect(0, 0, 10, 10), 128 + 64, 128 - 64, 128);
  EXPECT_EQ(screenshot_compare::compare(grey(), off).m_differing_fraction, 0.0);
}

TEST(screenshot_compare, one_channel_off_by_more_makes_a_differing_pixel) {
  wxImage off = grey();
  off.SetRGB(3, 4, 128, 128, 128 + 65);
  EXPECT_DOUBLE_EQ(screenshot_compare::compare(grey(), off).m_differing_fraction, 0.01);
}

TEST(screenshot_compare, four_in_a_hundred_pixels_may_differ_but_not_five) {
  wxImage off = grey();
  off.SetRGB(wxRect(0, 0, 4, 1), 255, 0, 0);
  EXPECT_TRUE(screenshot_compare::compare(grey(), off).alike());
  off.SetRGB(4, 0, 255, 0, 0);
  const auto result = screenshot_compare::compare(grey(), off);
  EXPECT_DOUBLE_EQ(result.m_differing_fraction, 0.05);
  EXPECT_FALSE(result.alike());
}

TEST(screenshot_compare, a_picture_that_could_not_be_read_differs) {
  EXPECT_FALSE(screenshot_compare::compare(wxImage(), grey()).alike());
  EXPECT_FALSE(screenshot_compare::compare(grey(), wxImage()).alike());
}

TEST(screenshot_compare, the_report_line_says_what_differs) {
  const std::string line = screenshot_compare::describe(
      "x.png", screenshot_compare::compare(grey(), wxImage(3, 4)), grey(), wxImage(3, 4));
  EXPECT_EQ(line, "DIFFERENT x.png: 10x10 against 3x4");
}
