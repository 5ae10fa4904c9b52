#pragma once
// Pieces shared by the tests of the message windows: a check box definition that counts
// what the library asks of it, a catalog of test messages, and access to a running
// message dialog.
#include "gui_test.h"

#include <plaxi1/modal.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/message_window.h>
#include <zandor/catalog.h>

#include <gtest/gtest.h>
#include <wx/dialog.h>

#include <functional>
#include <string>
#include <vector>

namespace message_test {

/// A check box definition that lives on the test's stack and records every call.
class counting_check_box_t : public tamsel3::i_check_box_definition {
 public:
  explicit counting_check_box_t(bool checked = false, std::string label = "Do not warn me again")
      : m_checked(checked), m_label(std::move(label)) {}
  ~counting_check_box_t() override { EXPECT_EQ(m_refs, 0) << "a reference to the check box was kept"; }

  void add_ref() override { ++m_refs; }
  void release() override { --m_refs; }
  std::string get_key() const override { return "test.check_box"; }
  void load_state() override { ++m_load_calls; }
  void reset_state() override { ++m_reset_calls; }
  bool is_checked() const override { return m_checked; }
  void set_checked(bool checked) override {
    m_set_checked_calls.push_back(checked);
    m_checked = checked;
  }
  void save_state() override { ++m_save_calls; }
  std::string get_label() const override { return m_label; }

  int m_refs = 0;
  bool m_checked;
  std::string m_label;
  std::vector<bool> m_set_checked_calls;
  int m_save_calls = 0;
  int m_load_calls = 0;
  int m_reset_calls = 0;
};

/// Counts the dialogs that the modal callback sees. An answer of 0 lets them run; any other
/// ends them with that code before they show.
class modal_counter_t {
 public:
  explicit modal_counter_t(int answer = 0)
      : m_previous(plaxi1::set_modal_callback([this, answer](wxDialog*) {
          ++m_count;
          return answer;
        })) {}
  ~modal_counter_t() { plaxi1::set_modal_callback(m_previous); }
  modal_counter_t(const modal_counter_t&) = delete;
  modal_counter_t& operator=(const modal_counter_t&) = delete;

  int m_count = 0;

 private:
  plaxi1::modal_callback_t m_previous;
};

/// Messages of a catalog of the tests' own, given to the factories directly.
inline const ZANDOR_2_16::i18n::catalog_t& test_catalog() {
  static const ZANDOR_2_16::i18n::catalog_t catalog(
      "message_test", "en",
      {{"test.saved", "The results of {run} were saved."},
       {"test.saved.more", "They are in {folder}."},
       {"test.disk_full", "The disk is full"},
       {"test.disk_full.more", "Free some space and try again."},
       {"test.details", "Write error 28 at block 4711 of /dev/sda1"}});
  return catalog;
}

/// The panel of a running message dialog.
inline tamsel3::error_warning_panel_t* panel_of(wxDialog& dialog) {
  auto* message_dialog = dynamic_cast<tamsel3::error_warning_dialog_t*>(&dialog);
  EXPECT_NE(message_dialog, nullptr) << "the modal dialog is no message dialog";
  return message_dialog ? message_dialog->get_panel() : nullptr;
}

/// Runs `data` with show_modal and lets `action` answer from inside the dialog's loop.
inline int run_message(const tamsel3::message_window_t& data, std::function<void(wxDialog&)> action,
                       wxWindow* parent = nullptr) {
  gui_test::on_next_modal(std::move(action));
  return tamsel3::show_modal(data, parent);
}

/// A warning with the given buttons and the texts as they stand.
inline tamsel3::message_window_t warning(tamsel3::message_window_t::button_type_t buttons,
                                         const std::string& main_text = "The disk is almost full",
                                         const std::string& supplemental_text = "Free some space.") {
  return tamsel3::message_window_t::simple_warning_wnd(test_catalog(), main_text, supplemental_text, buttons,
                                                       {}, {});
}

}  // namespace message_test
