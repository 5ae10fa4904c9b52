// The small dialogs as a host uses them: asking where a file went, and copying the details
// of an error message to the clipboard to paste into a report.
#include "entries.h"

#include <tamsel3/ask_dlg.h>
#include <tamsel3/clipboard_dlg.h>
#include <tamsel3/message_window.h>

#include <wx/textctrl.h>

#include <iostream>
#include <utility>

namespace gallery {
namespace {

const char* const missing_file = "/home/ann/projects/render-pipeline/build/symbols/renderer.sym";

tamsel3::message_window_t failed_run() {
  tamsel3::message_window_t data;
  data.m_icon_type = tamsel3::message_window_t::icon_error;
  data.m_main_message = "The analysis of run r004hs stopped";
  data.m_supplemental_message = "The target program ended before the collector could write its results.";
  data.m_details_message =
      "Target: /home/ann/projects/render-pipeline/build/bin/renderer --scene city.json\n"
      "Exit status: 139 (segmentation fault) after 42.7 s\n"
      "Collector: 3 of 4 result files written, results.dat incomplete\n"
      "Result folder: /home/ann/projects/render-pipeline/results/r004hs";
  return data;
}

// The details of a message, ready to be pasted into a bug report.
class message_details_dlg_t : public tamsel3::clipboard_dlg_t {
 public:
  explicit message_details_dlg_t(tamsel3::message_window_t message) : m_message(std::move(message)) {}

  void fill_controls() override {
    if (m_text_field) {
      m_text_field->ChangeValue(wxString::FromUTF8(m_message.m_main_message + "\n\n" +
                                                   m_message.m_supplemental_message + "\n\n" +
                                                   m_message.m_details_message));
    }
  }

 private:
  tamsel3::message_window_t m_message;
};

}  // namespace

std::vector<entry_t> small_dialog_entries() {
  return {
      {"ask_file", "Ask for a file",
       "The product misses a file and asks where it is. The explanation wraps to the display's "
       "proportions; Browse opens the file chooser at the current name. OK takes the name unchecked.",
       [](wxWindow* parent) {
         tamsel3::ask_dlg_t dialog;
         dialog.set_filename(missing_file);
         if (dialog.show_modal(parent) == wxID_OK) {
           std::cout << "file named: '" << dialog.get_filename() << "'" << std::endl;
         }
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog = new tamsel3::ask_dlg_t;
         dialog->set_filename(missing_file);
         dialog->show_nonmodal(parent, true);
         return dialog;
       }},
      {"clipboard_details", "Copy message details",
       "A host's clipboard dialog with the details of an error message. The text can be edited; "
       "Copy puts it on the system clipboard, Cancel leaves the clipboard alone. Help is enabled.",
       [](wxWindow* parent) {
         message_details_dlg_t dialog(failed_run());
         if (dialog.show_modal(parent) == wxID_OK) {
           std::cout << "copied the details to the clipboard" << std::endl;
         }
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog = new message_details_dlg_t(failed_run());
         dialog->show_nonmodal(parent, true);
         return dialog;
       }},
  };
}

}  // namespace gallery
