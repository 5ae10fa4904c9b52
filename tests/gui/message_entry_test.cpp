// The entries of the in-place control: how lines are shown and kept, the say batching,
// the change from gauge to message, saving and the strict loader of lines.
#include "inplace_test_support.h"

#include "assert_recorder.h"
#include "fixtures.h"
#include "folder_locations.h"
#include "heap_use.h"

#include <a11y/accessible.h>
#include <ombrelc/ombrelc.h>
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <thread>

namespace {

using inplace_test::any_contains;
using inplace_test::drain;
using inplace_test::error_texts;
using korvat2::variant_bag_t;
using tamsel3::message_entry_t;

std::size_t pending_tasks() { return plaxi1::tasks::Scheduler::Get(nullptr)->GetPendingCount(); }

class message_entry_test : public inplace_test::control_fixture_t {
 protected:
  message_entry_t* add(const std::string& caption = "Entry") {
    const unsigned int tag = m_ctrl->add_message(message(caption, "text"), m_no_callback);
    return dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  }
  static std::size_t shown_lines(message_entry_t* entry) { return entry->m_lines_box->GetChildren().size(); }
  static std::string line_text(message_entry_t* entry, std::size_t index) {
    return entry->m_lines_box->GetChildren().at(index)->AsString();
  }
};

TEST_F(message_entry_test, a_debug_line_without_show_debug_changes_nothing) {
  message_entry_t* entry = add();
  variant_bag_t bag;
  m_ctrl->save(bag);
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_debug, "hidden");
  EXPECT_FALSE(m_ctrl->has_changes());
  EXPECT_EQ(shown_lines(entry), 0u);
  EXPECT_TRUE(entry->m_messages.empty());
}

TEST_F(message_entry_test, a_debug_line_shows_where_debug_lines_were_asked_for) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "debug");
  auto* ctrl = new tamsel3::inplace_ctrl_t(frame, true);
  const unsigned int tag = ctrl->add_message(message("x", "y"), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*ctrl)->get_entry(tag));
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_debug, "shown");
  EXPECT_EQ(shown_lines(entry), 1u);
  EXPECT_EQ(entry->m_messages.size(), 1u);
  frame->Destroy();
}

TEST_F(message_entry_test, transient_lines_rewrite_one_caption) {
  message_entry_t* entry = add();
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_transient, "step 1");
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_transient, "step 2");
  ASSERT_EQ(shown_lines(entry), 1u);
  EXPECT_EQ(line_text(entry, 0), "step 2");
  EXPECT_TRUE(entry->m_messages.empty()) << "transient lines aren't kept";
}

TEST_F(message_entry_test, a_kept_line_takes_the_transient_caption_over) {
  message_entry_t* entry = add();
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_transient, "working");
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_warning, "kept");
  ASSERT_EQ(shown_lines(entry), 1u);
  EXPECT_EQ(line_text(entry, 0), "kept");
  ASSERT_EQ(entry->m_messages.size(), 1u);
  EXPECT_EQ(entry->m_transient_caption, nullptr);
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_transient, "again");
  ASSERT_EQ(shown_lines(entry), 2u);
  EXPECT_EQ(line_text(entry, 1), "again");
}

TEST_F(message_entry_test, lines_take_the_picture_of_their_severity) {
  message_entry_t* entry = add();
  tamsel3::event_log_t* log = this->log();
  ASSERT_GE(log->m_error_image, 0) << "the build's archive holds the pictures";
  EXPECT_EQ(log->m_error_image, 0);
  EXPECT_EQ(log->m_warning_image, 1);
  EXPECT_EQ(log->m_info_image, 2);
  EXPECT_EQ(log->m_empty_image, 3);
  EXPECT_EQ(log->get_image_for(pelit2::severity_error), log->m_error_image);
  EXPECT_EQ(log->get_image_for(pelit2::severity_critical), log->m_error_image);
  EXPECT_EQ(log->get_image_for(pelit2::severity_warning), log->m_warning_image);
  EXPECT_EQ(log->get_image_for(pelit2::severity_info), log->m_empty_image) << "never info12";
  EXPECT_NE(log->get_image_for(pelit2::severity_info), log->m_info_image);
  EXPECT_EQ(log->get_image_for(pelit2::severity_transient), log->m_empty_image);
  (void)entry;
}

TEST_F(message_entry_test, screen_readers_hear_the_kept_lines_as_details) {
  message_entry_t* entry = add();
  a11y::info_t info;
  entry->m_lines_box->DescribeAccessible(info);
  EXPECT_EQ(info.role, a11y::role_t::panel);
  EXPECT_EQ(info.name, "Details");
}

TEST_F(message_entry_test, ten_says_post_one_task_and_show_ten_lines_in_order) {
  message_entry_t* entry = add();
  ASSERT_TRUE(drain());
  const std::size_t before = pending_tasks();
  std::thread worker([entry] {
    for (int i = 0; i < 10; ++i) {
      entry->say(pelit2::severity_info, ("line " + std::to_string(i)).c_str());
    }
  });
  worker.join();
  EXPECT_EQ(pending_tasks(), before + 1);
  ASSERT_TRUE(drain());
  ASSERT_EQ(shown_lines(entry), 10u);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(line_text(entry, i), "line " + std::to_string(i));
  }
}

TEST_F(message_entry_test, a_kept_line_in_a_long_log_costs_under_a_hundred_heap_bytes) {
  message_entry_t* entry = add();
  ASSERT_TRUE(drain());
  constexpr int count = 100000;
  std::string text(60, 'x');
  const std::size_t before = test_support::heap_in_use();
  for (int line = 0; line < count; ++line) {
    text.replace(0, 8, std::to_string(10000000 + line));
    entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_info, text.c_str());
  }
  ASSERT_TRUE(drain());
  entry->m_lines_box->ForceRearrange();  // the layout, with what it keeps
  const std::size_t after = test_support::heap_in_use();
  if (after == before) {
    GTEST_SKIP() << "the allocator in use doesn't report its use (a sanitizer's)";
  }
  EXPECT_LT(static_cast<double>(after - before) / count, 100.0);
  ASSERT_EQ(shown_lines(entry), static_cast<std::size_t>(count));
  EXPECT_EQ(line_text(entry, count - 1), std::to_string(10000000 + count - 1) + std::string(52, 'x'));
}

// Says one more line while the first batch is being shown.
class saying_entry_t : public message_entry_t {
 public:
  using message_entry_t::message_entry_t;
  void say_impl(ombrelcfrw7::CVisualElement* parent, ombrelcfrw7::CCaption** slot, pelit2::ESeverity severity,
                const char* text) override {
    if (std::string(text) == "first") {
      say(pelit2::severity_info, "during");
      posted_during_handler = m_pending_posted;
    }
    message_entry_t::say_impl(parent, slot, severity, text);
  }
  bool posted_during_handler = false;
};

TEST_F(message_entry_test, a_line_said_while_showing_goes_to_a_new_task) {
  korvat2::intrusive_pointer_t<saying_entry_t> entry(new saying_entry_t(log(), 100, message("x", "y")));
  ASSERT_TRUE(drain());
  entry->say(pelit2::severity_info, "first");
  ASSERT_TRUE(drain());
  EXPECT_TRUE(entry->posted_during_handler) << "a new task was posted from inside the handler";
  ASSERT_TRUE(drain());
  ASSERT_EQ(shown_lines(entry.get()), 2u);
  EXPECT_EQ(line_text(entry.get(), 0), "first");
  EXPECT_EQ(line_text(entry.get(), 1), "during");
}

TEST_F(message_entry_test, a_status_message_after_update_message_shows_nothing) {
  const unsigned int tag = m_ctrl->add_progress(progress("run"), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  m_ctrl->get_progress(tag);
  entry->message("working");
  EXPECT_EQ(shown_lines(entry), 1u);
  m_ctrl->update_message(tag, message("done", "finished"), m_no_callback);
  EXPECT_FALSE(entry->m_lines_box->GetChildren()[0]->IsVisible()) << "the status line goes";
  entry->message("late");
  EXPECT_EQ(shown_lines(entry), 1u);
}

TEST_F(message_entry_test, save_of_a_progress_entry_writes_only_its_lines) {
  const unsigned int tag = m_ctrl->add_progress(progress("run"), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  m_ctrl->get_progress(tag);
  entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_info, "line");
  variant_bag_t bag;
  ASSERT_TRUE(entry->save(bag).succeeded());
  EXPECT_FALSE(bag.has<korvat2::variant_t>("msg"));
  EXPECT_FALSE(bag.has<korvat2::variant_t>("cap"));
  ASSERT_EQ(bag.size(), 1u);
  EXPECT_EQ(bag.entry_name(0), "message");
}

TEST_F(message_entry_test, a_prepared_progress_entry_becomes_a_message_with_four_reports) {
  const unsigned int tag = m_ctrl->add_progress(progress("prepared"), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  test_support::assert_recorder_t reports;
  EXPECT_TRUE(m_ctrl->update_message(tag, message("now", "a message"), m_no_callback).succeeded());
  EXPECT_EQ(
      reports.count("(\"signal_t::disconnect: attempt to disconnect unknown connection\", subscriber_found)"),
      4u);
  EXPECT_EQ(reports.count(), 4u);
  ASSERT_NE(entry->m_message.get(), nullptr);
  EXPECT_TRUE(entry->m_message_caption->IsVisible());
  EXPECT_FALSE(entry->m_gauge->IsVisible());
}

TEST_F(message_entry_test, a_second_get_progress_reports_four_duplicate_connections) {
  const unsigned int tag = m_ctrl->add_progress(progress("twice"), m_no_callback);
  pelit2::IProgress* first = m_ctrl->get_progress(tag);
  test_support::assert_recorder_t reports;
  EXPECT_EQ(m_ctrl->get_progress(tag), first);
  EXPECT_EQ(reports.count("(\"signal_t::_insert: this connection is already exists.\", false)"), 4u);
}

TEST_F(message_entry_test, load_of_an_empty_bag_succeeds_and_says_nothing) {
  message_entry_t* entry = add();
  EXPECT_TRUE(tamsel3::event_entry_t::load(variant_bag_t(), entry).succeeded());
  ASSERT_TRUE(drain());
  EXPECT_EQ(shown_lines(entry), 0u);
}

TEST_F(message_entry_test, load_stops_at_a_line_without_severity_and_names_it) {
  message_entry_t* entry = add();
  variant_bag_t bag;
  variant_bag_t good;
  good.put("msg", std::string("good"));
  good.put("severity", 2);
  bag.add_variant_bag("message", good);
  variant_bag_t bad;
  bad.put("msg", std::string("bad"));
  bag.add_variant_bag("message", bad);
  bag.add_variant_bag("message", good);
  test_support::log_capture_t log;
  const korvat2::error_code_t loaded = tamsel3::event_entry_t::load(bag, entry);
  EXPECT_TRUE(loaded.failed());
  EXPECT_STREQ(loaded.as_string(korvat2::error_code_t::name_only).c_str(), "kv2::error::IsNot.Valid.Value");
  EXPECT_TRUE(any_contains(error_texts(log), "entry.has<kv2::variant_t>(SEVERITY_NAME)"));
  ASSERT_TRUE(drain());
  ASSERT_EQ(shown_lines(entry), 1u) << "the line before the bad one stays said";
  EXPECT_EQ(line_text(entry, 0), "good");
}

TEST_F(message_entry_test, load_checks_the_kinds_and_the_messenger) {
  variant_bag_t bag;
  variant_bag_t number_text;
  number_text.put("msg", 5);
  number_text.put("severity", 0);
  bag.add_variant_bag("message", number_text);
  test_support::log_capture_t log;
  message_entry_t* entry = add();
  EXPECT_TRUE(tamsel3::event_entry_t::load(bag, entry).failed());
  EXPECT_TRUE(any_contains(error_texts(log), "value.can_get<const zandor2::uchar_t*>()"));
  const korvat2::error_code_t no_messenger = tamsel3::event_entry_t::load(bag, nullptr);
  EXPECT_STREQ(no_messenger.as_string(korvat2::error_code_t::name_only).c_str(),
               "kv2::error::IsNot.Valid.Parameter");
  const std::vector<std::string> logged = error_texts(log);
  ASSERT_EQ(logged.size(), 2u);
  EXPECT_EQ(logged[1].rfind("pelit 'kv2::error::IsNot.Valid.Parameter'\n", 0), 0u) << logged[1];
  EXPECT_NE(logged[1].find("tamsel3::event_entry_t::load("), std::string::npos)
      << "the report names the reader: " << logged[1];
}

TEST_F(message_entry_test, a_progress_entry_that_cannot_cancel_shows_no_cancel_button) {
  const unsigned int tag = m_ctrl->add_progress(progress("Indexing", false), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  pelit2::IProgress* worker_side = m_ctrl->get_progress(tag);
  inplace_test::flush_layout(m_ctrl);
  ASSERT_FALSE(entry->m_gauge->GetVisibleWindowRect().empty()) << "the gauge shows";
  ombrelcfrw7::CButton* cancel = entry->m_gauge->GetCancelButton();
  EXPECT_FALSE(cancel->IsShownInTree());
  EXPECT_TRUE(cancel->GetVisibleWindowRect().empty());
  const ombrelc7::rect<int> gauge = entry->m_gauge->GetVisibleWindowRect();
  inplace_test::click_at(m_ctrl, ombrelc7::rect<int>(gauge.right - 20, gauge.top, gauge.right, gauge.bottom));
  EXPECT_FALSE(worker_side->isCanceled()) << "where Cancel would be, there is nothing to press";
  ombrelcfrw7::CBaseControl* control = inplace_test::base_control(m_ctrl);
  ASSERT_NE(control, nullptr);
  EXPECT_FALSE(control->MoveFocus(true)) << "nor anything for Tab to reach";
  m_ctrl->update_message(tag, message("Paused", "Waiting for the disk."), m_no_callback);
  m_ctrl->get_progress(tag);
  inplace_test::flush_layout(m_ctrl);
  EXPECT_TRUE(entry->m_gauge->IsShownInTree());
  EXPECT_FALSE(cancel->IsShownInTree()) << "nor when the entry becomes a gauge again";
}

TEST_F(message_entry_test, a_progress_entry_that_can_cancel_shows_cancel_at_the_gauge) {
  const unsigned int tag = m_ctrl->add_progress(progress("Indexing", true), m_no_callback);
  auto* entry =
      dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  pelit2::IProgress* worker_side = m_ctrl->get_progress(tag);
  inplace_test::flush_layout(m_ctrl);
  ombrelcfrw7::CButton* cancel = entry->m_gauge->GetCancelButton();
  ASSERT_FALSE(cancel->GetVisibleWindowRect().empty());
  ombrelcfrw7::CBaseControl* control = inplace_test::base_control(m_ctrl);
  ASSERT_NE(control, nullptr);
  EXPECT_TRUE(control->MoveFocus(true));
  EXPECT_EQ(control->GetFocusElement(), cancel);
  inplace_test::click_at(m_ctrl, cancel->GetVisibleWindowRect());
  EXPECT_TRUE(worker_side->isCanceled());
}

TEST(event_log_test, without_the_archive_no_picture_index_is_set_and_lines_still_show) {
  test_support::temp_dir_t folder;
  // A folder without the archive.
  gui_test::folder_locations_t locations(folder.path());
  quern2::IProductLocations::set(&locations);
  {
    auto* frame = new wxFrame(nullptr, wxID_ANY, "no archive");
    auto* ctrl = new tamsel3::inplace_ctrl_t(frame, false);
    tamsel3::event_log_t* log = tamsel3::inplace_ctrl_test_access_t::impl(*ctrl)->get_log();
    EXPECT_EQ(log->m_error_image, -1);
    EXPECT_EQ(log->m_warning_image, -1);
    EXPECT_EQ(log->m_info_image, -1);
    EXPECT_EQ(log->m_empty_image, -1);
    korvat2::signal_t<int> none;
    const unsigned int tag =
        ctrl->add_message(new tamsel3::message_t("cap", "text", plaxi1::picture_t()), none);
    auto* entry =
        dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*ctrl)->get_entry(tag));
    entry->say_impl(entry->m_lines_box, &entry->m_transient_caption, pelit2::severity_error, "no picture");
    EXPECT_EQ(entry->m_lines_box->GetChildren().size(), 1u);
    frame->Destroy();
  }
  quern2::IProductLocations::set(nullptr);
  gui_test::pump();
}

}  // namespace
