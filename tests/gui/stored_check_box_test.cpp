// The stored check box under a real message window: the answer that the user leaves in
// the dialog is what keeps the message away later, until every answer is forgotten.
#include "fixtures.h"
#include "gui_test.h"
#include "message_test_support.h"

#include <quern2/storage.h>
#include <tamsel3/stored_check_box.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>

namespace {

using message_test::modal_counter_t;
using message_test::run_message;
using message_test::warning;
using tamsel3::message_window_t;
using tamsel3::stored_check_box_t;

// A Yes/No question whose check box keeps its answer in `folder`, as a new run makes it.
message_window_t question(const std::string& folder) {
  message_window_t data = warning(message_window_t::buttons_yes_no);
  data.m_check_box = new stored_check_box_t(quern2::makeFileStorage(korvat2::path_t(folder)), "confirm");
  return data;
}

// Shows the question once more and tells whether a dialog appeared; one that does is
// answered No by the callback.
bool shows_again(const std::string& folder) {
  const modal_counter_t counter(wxID_CANCEL);
  const int answer = tamsel3::show_modal(question(folder), nullptr);
  EXPECT_EQ(answer, counter.m_count == 0 ? message_window_t::answer_none : message_window_t::answer_no);
  return counter.m_count != 0;
}

void answer(const std::string& folder, bool tick, const char* button) {
  run_message(question(folder), [&](wxDialog& shown) {
    auto* box = dynamic_cast<wxCheckBox*>(gui_test::find_named(&shown, "m_checkBox5"));
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->GetValue());
    box->SetValue(tick);
    gui_test::click(&shown, button);
  });
}

TEST(stored_check_box_gui_test, a_ticked_yes_keeps_the_question_away_until_reset_all) {
  const test_support::temp_dir_t folder;
  answer(folder.path(), true, "m_btn_ok");
  EXPECT_FALSE(shows_again(folder.path()));
  ASSERT_TRUE(stored_check_box_t::reset_all(quern2::makeFileStorage(korvat2::path_t(folder.path()))));
  EXPECT_TRUE(shows_again(folder.path()));
}

TEST(stored_check_box_gui_test, a_ticked_no_is_not_kept) {
  const test_support::temp_dir_t folder;
  answer(folder.path(), true, "m_btn_cancel");
  EXPECT_TRUE(shows_again(folder.path()));
}

TEST(stored_check_box_gui_test, an_unticked_yes_is_not_kept) {
  const test_support::temp_dir_t folder;
  answer(folder.path(), false, "m_btn_ok");
  EXPECT_TRUE(shows_again(folder.path()));
}

}  // namespace
