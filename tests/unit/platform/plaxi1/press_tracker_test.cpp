#include <plaxi1/press_tracker.h>

#include <gtest/gtest.h>

namespace {

using plaxi1::press_tracker_t;

TEST(press_tracker_test, hover_follows_the_pointer_and_reports_each_change_once) {
  press_tracker_t tracker;
  EXPECT_FALSE(tracker.is_hot());
  EXPECT_TRUE(tracker.on_move(true));
  EXPECT_TRUE(tracker.is_hot());
  EXPECT_FALSE(tracker.on_move(true));
  EXPECT_TRUE(tracker.on_move(false));
  EXPECT_FALSE(tracker.is_hot());
  EXPECT_FALSE(tracker.on_leave());
}

TEST(press_tracker_test, a_press_released_inside_is_one_click) {
  press_tracker_t tracker;
  tracker.on_move(true);
  EXPECT_TRUE(tracker.on_down(true));
  EXPECT_TRUE(tracker.is_pressed());
  bool changed = false;
  EXPECT_TRUE(tracker.on_up(true, &changed));
  EXPECT_TRUE(changed);
  EXPECT_FALSE(tracker.is_pressed());
  EXPECT_TRUE(tracker.is_hot());
  // An up without a down is no click.
  EXPECT_FALSE(tracker.on_up(true));
}

TEST(press_tracker_test, a_press_dragged_out_shows_released_and_comes_back_pressed) {
  press_tracker_t tracker;
  tracker.on_down(true);
  EXPECT_TRUE(tracker.on_move(false));
  EXPECT_FALSE(tracker.is_pressed());
  EXPECT_FALSE(tracker.is_hot());
  EXPECT_TRUE(tracker.is_press_running());
  EXPECT_TRUE(tracker.on_move(true));
  EXPECT_TRUE(tracker.is_pressed());
  EXPECT_TRUE(tracker.on_up(true));
}

TEST(press_tracker_test, a_press_released_outside_is_no_click) {
  press_tracker_t tracker;
  tracker.on_down(true);
  EXPECT_FALSE(tracker.on_up(false));
  EXPECT_FALSE(tracker.is_press_running());
  EXPECT_FALSE(tracker.is_hot());
}

TEST(press_tracker_test, a_press_that_starts_outside_is_not_this_buttons) {
  press_tracker_t tracker;
  EXPECT_FALSE(tracker.on_down(false));
  EXPECT_FALSE(tracker.is_press_running());
  tracker.on_move(true);
  EXPECT_FALSE(tracker.is_pressed());
  EXPECT_FALSE(tracker.on_up(true));
}

TEST(press_tracker_test, leaving_or_losing_the_capture_drops_the_press) {
  press_tracker_t tracker;
  tracker.on_down(true);
  EXPECT_TRUE(tracker.on_leave());
  EXPECT_FALSE(tracker.is_press_running());
  EXPECT_FALSE(tracker.on_up(true));

  tracker.on_down(true);
  EXPECT_TRUE(tracker.on_capture_lost());
  EXPECT_FALSE(tracker.is_pressed());
  EXPECT_TRUE(tracker.is_hot());
  EXPECT_FALSE(tracker.on_up(true));
}

TEST(press_tracker_test, a_disabled_button_is_neither_hot_nor_pressed_nor_clicked) {
  press_tracker_t tracker;
  tracker.on_down(true);
  EXPECT_TRUE(tracker.set_enabled(false));
  EXPECT_FALSE(tracker.is_enabled());
  EXPECT_FALSE(tracker.is_hot());
  EXPECT_TRUE(tracker.is_inside());  // the pointer is still there, for a disabled look under it
  EXPECT_FALSE(tracker.is_pressed());
  EXPECT_FALSE(tracker.on_up(true));
  EXPECT_FALSE(tracker.on_down(true));
  EXPECT_FALSE(tracker.on_up(true));
  EXPECT_FALSE(tracker.set_enabled(false));
  // Enabled again under the pointer, it is hot at once, and no press survived.
  EXPECT_TRUE(tracker.set_enabled(true));
  EXPECT_TRUE(tracker.is_hot());
  EXPECT_FALSE(tracker.is_press_running());
}

}  // namespace
