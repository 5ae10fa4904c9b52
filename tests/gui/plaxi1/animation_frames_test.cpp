#include "test_animation.h"

#include <plaxi1/animation_frames.h>

#include <gtest/gtest.h>
#include <wx/image.h>

namespace {

using plaxi1::animation_frames_t;
using plaxi1_test::solid_animation;

TEST(animation_frames_test, frames_and_delays_are_kept_in_order) {
  const animation_frames_t frames(solid_animation({*wxRED, *wxBLUE}, wxSize(8, 8), 120));
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames.logical_size(), wxSize(8, 8));
  EXPECT_GE(frames.delay(0), 100);
  EXPECT_EQ(frames.delay(2), 0);
  EXPECT_FALSE(frames.frame(2).IsOk());
  const wxImage first = frames.frame(0).ConvertToImage();
  const wxImage second = frames.frame(1).ConvertToImage();
  EXPECT_GT(first.GetRed(4, 4), 200);
  EXPECT_GT(second.GetBlue(4, 4), 200);
  EXPECT_LT(second.GetRed(4, 4), 50);
}

TEST(animation_frames_test, short_delays_are_lengthened_and_nothing_gives_no_frames) {
  const animation_frames_t fast(solid_animation({*wxRED, *wxBLUE}, wxSize(8, 8), 0));
  ASSERT_EQ(fast.size(), 2u);
  EXPECT_EQ(fast.delay(0), 10);
  const animation_frames_t none{wxAnimation()};
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(none.logical_size(), wxSize(0, 0));
}

}  // namespace
