#pragma once
// Windows built on the frame that record what the frame does with them.
#include <tamsel3/dialog_base.h>
#include <tamsel3/pref_base.h>

#include <string>
#include <vector>

namespace frame_test {

using step_log_t = std::vector<std::string>;

/// A dialog on the "dlg.frame_test" layout that logs the frame's steps.
class recording_dialog_t : public tamsel3::dialog_base_t {
 public:
  explicit recording_dialog_t(const std::string& object_name = "dlg.frame_test") {
    m_object_name = object_name;
  }

  void set_floor(int width, int height) {
    m_min_width = width;
    m_min_height = height;
  }
  void set_help_id(int id) { m_help_id = id; }
  void set_resource_file(const std::string& file) { m_resource_file = file; }
  wxWindow* ok_button() const { return m_btn_ok; }
  wxWindow* help_button() const { return m_btn_help; }
  const std::vector<std::string>& path_messages() const { return m_path_messages; }
  const std::string& text_unknown() const { return m_text_unknown; }
  int timer_id() const { return m_timer.GetId(); }

  step_log_t m_steps;
  int m_timer_id_in_init = 0;
  wxSize m_size_in_init;
  int m_result_from_on_ok = 0;  // a result that on_ok chooses, 0 for none

  void on_update_ui_settings() override {
    m_steps.push_back("ui");
    dialog_base_t::on_update_ui_settings();
  }
  void set_max_text_limit() override {
    m_steps.push_back("limits");
    dialog_base_t::set_max_text_limit();
  }
  void load_auxiliary_strings() override {
    m_steps.push_back("strings");
    dialog_base_t::load_auxiliary_strings();
  }
  void on_init_dialog() override {
    m_steps.push_back("init");
    m_timer_id_in_init = m_timer.GetId();
    m_size_in_init = GetSize();
  }
  void save_settings() override { m_steps.push_back("save"); }
  void on_ok() override {
    dialog_base_t::on_ok();
    if (m_result_from_on_ok != 0) {
      SetReturnCode(m_result_from_on_ok);
    }
  }
  void on_cancel() override { m_steps.push_back("cancel"); }
};

/// A page on the "pref.frame_test" layout that logs the frame's steps.
class recording_page_t : public tamsel3::pref_base_t {
 public:
  explicit recording_page_t(const std::string& object_name = "pref.frame_test") {
    m_object_name = object_name;
  }

  step_log_t m_steps;

  void on_init_dialog() override { m_steps.push_back("init"); }
  void on_cancel() override { m_steps.push_back("cancel"); }
};

}  // namespace frame_test
