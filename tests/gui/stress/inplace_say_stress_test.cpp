// Four workers say lines into four entries of a shown in-place control while the GUI
// thread shows them: every line arrives once, in each worker's order.
#include "inplace_ctrl_test_access_p.h"

#include <tamsel3/inplace_ctrl.h>
#include <tamsel3/message.h>
#include <tamsel3/message_entry.h>

#include <ombrelc/ombrelc.h>

#include "gui_test.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int worker_count = 4;
// Lines of each worker; TAMSEL3_INPLACE_STRESS_LINES overrides it.
constexpr int default_lines_per_worker = 100000;
constexpr int bound_ms = 240000;

int lines_per_worker() {
  if (const char* text = std::getenv("TAMSEL3_INPLACE_STRESS_LINES")) {
    if (const int value = std::atoi(text); value > 0) {
      return value;
    }
  }
  return default_lines_per_worker;
}

TEST(inplace_say_stress, every_line_arrives_once_in_each_workers_order) {
  const int lines = lines_per_worker();
  auto* frame = new wxFrame(nullptr, wxID_ANY, "stress", wxDefaultPosition, wxSize(640, 480));
  auto* ctrl = new tamsel3::inplace_ctrl_t(frame, false);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(ctrl, 1, wxEXPAND);
  frame->SetSizer(sizer);
  frame->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(ctrl));

  korvat2::signal_t<int> no_callback;
  std::vector<tamsel3::message_entry_t*> entries;
  for (int worker = 0; worker < worker_count; ++worker) {
    const unsigned int tag = ctrl->add_message(
        new tamsel3::message_t("Worker " + std::to_string(worker), "lines", plaxi1::picture_t()),
        no_callback);
    entries.push_back(dynamic_cast<tamsel3::message_entry_t*>(
        tamsel3::inplace_ctrl_test_access_t::impl(*ctrl)->get_entry(tag)));
  }
  std::vector<std::thread> workers;
  for (int worker = 0; worker < worker_count; ++worker) {
    // The entry itself is the worker's messenger: the control's proxy aims at one entry.
    pelit2::IMessenger* messenger = entries[static_cast<std::size_t>(worker)];
    workers.emplace_back([messenger, lines] {
      for (int line = 0; line < lines; ++line) {
        messenger->say(pelit2::severity_info, std::to_string(line).c_str());
      }
    });
  }
  const auto all_shown = [&] {
    for (tamsel3::message_entry_t* entry : entries) {
      if (entry->m_messages.size() < static_cast<std::size_t>(lines)) {
        return false;
      }
    }
    return true;
  };
  EXPECT_TRUE(gui_test::wait_until(all_shown, bound_ms));
  for (std::thread& worker : workers) {
    worker.join();
  }
  gui_test::pump();
  for (tamsel3::message_entry_t* entry : entries) {
    ASSERT_EQ(entry->m_messages.size(), static_cast<std::size_t>(lines));
    int expected = 0;
    for (const tamsel3::messenger_entry_t& line : entry->m_messages) {
      ASSERT_EQ(line.m_text, std::to_string(expected)) << "out of order, lost or twice";
      ++expected;
    }
    EXPECT_EQ(entry->m_lines_box->GetChildren().size(), static_cast<std::size_t>(lines));
  }
  frame->Destroy();
  gui_test::pump();
}

}  // namespace
