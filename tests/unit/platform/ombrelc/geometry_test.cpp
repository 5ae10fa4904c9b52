#include <ombrelc7/geometry.h>

#include <gtest/gtest.h>

namespace {

using ombrelc7::point;
using ombrelc7::rect;
using ombrelc7::size;

TEST(ombrelc_geometry_test, sizes_compare_by_both_sides) {
  EXPECT_EQ(size<int>(), size<int>(0, 0));
  EXPECT_EQ(size<int>(3, 4), size<int>(3, 4));
  EXPECT_NE(size<int>(3, 4), size<int>(4, 3));
}

TEST(ombrelc_geometry_test, a_rect_holds_its_left_top_but_not_its_right_bottom) {
  const rect<int> r(10, 20, 30, 60);
  EXPECT_EQ(r.width(), 20);
  EXPECT_EQ(r.height(), 40);
  EXPECT_TRUE(r.contains(point<int>(10, 20)));
  EXPECT_TRUE(r.contains(point<int>(29, 59)));
  EXPECT_FALSE(r.contains(point<int>(30, 20)));
  EXPECT_FALSE(r.contains(point<int>(10, 60)));
  EXPECT_FALSE(r.contains(point<int>(9, 30)));
}

TEST(ombrelc_geometry_test, rects_that_only_touch_do_not_intersect) {
  const rect<int> r(0, 0, 10, 10);
  EXPECT_TRUE(r.intersects(rect<int>(9, 9, 20, 20)));
  EXPECT_FALSE(r.intersects(rect<int>(10, 0, 20, 10)));
  EXPECT_FALSE(r.intersects(rect<int>(0, 10, 10, 20)));
  EXPECT_TRUE(r.intersects(rect<int>(2, 2, 3, 3)));
  EXPECT_EQ(r.intersection(rect<int>(5, -5, 15, 5)), rect<int>(5, 0, 10, 5));
  EXPECT_TRUE(r.intersection(rect<int>(20, 20, 30, 30)).empty());
}

TEST(ombrelc_geometry_test, union_ignores_empty_rects) {
  const rect<int> r(0, 0, 10, 10);
  EXPECT_EQ(r.united(rect<int>()), r);
  EXPECT_EQ(rect<int>().united(r), r);
  EXPECT_EQ(r.united(rect<int>(20, 5, 30, 15)), rect<int>(0, 0, 30, 15));
  EXPECT_EQ(r.offset(5, -5), rect<int>(5, -5, 15, 5));
}

}  // namespace
