// A question that the user may stop being asked: the "Do not show this message again" box
// keeps its answer in the user's configuration folder, across runs.
#include <tamsel3/message_window.h>
#include <tamsel3/stored_check_box.h>

#include <wx/app.h>

#include <iostream>

//! [ask]
// Asks before deleting. True when the user said Yes, now or in an earlier run that also
// ticked the box: the box is kept by Yes only, so a suppressed question means Yes.
bool confirm_delete(wxWindow* parent) {
  using tamsel3::message_window_t;
  message_window_t message;
  message.m_icon_type = message_window_t::icon_warning;
  message.m_button_type = message_window_t::buttons_yes_no;
  message.m_main_message = "Delete the results of this run?";
  message.m_supplemental_message = "The result folders are removed from the disk. This can't be undone.";
  // A null storage: the answer goes to the user's configuration folder.
  message.m_check_box = new tamsel3::stored_check_box_t(nullptr, "confirm_delete_results");
  const int answer = tamsel3::show_modal(message, parent);
  return answer == message_window_t::answer_yes || answer == message_window_t::answer_none;
}
//! [ask]

//! [reset]
// Behind a "Show all messages again" command of the host's preferences.
void ask_everything_again() { tamsel3::stored_check_box_t::reset_all(nullptr); }
//! [reset]

class example_app_t : public wxApp {
 public:
  bool OnInit() override {
    if (argc > 1 && argv[1] == "--ask-again") {
      ask_everything_again();
    }
    std::cout << (confirm_delete(nullptr) ? "deleting" : "keeping") << " the results\n";
    return false;  // nothing more to show: leave without a main loop
  }
};

wxIMPLEMENT_APP(example_app_t);
