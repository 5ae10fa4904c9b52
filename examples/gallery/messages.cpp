// Message windows of every button and icon type, a suppressible warning, a long text, a
// German text, a field with a length limit and the toolkit's standard dialogs behind the
// library's calls.
#include "entries.h"

#include <tamsel3/common_dialogs.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/message_window.h>
#include <tamsel3/pref_base.h>
#include <tamsel3/stored_check_box.h>

#include <wx/colordlg.h>
#include <wx/dcmemory.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace gallery {
namespace {

using tamsel3::message_window_t;

message_window_t message(message_window_t::icon_types_t icon, message_window_t::button_type_t buttons,
                         const std::string& main_text, const std::string& supplemental) {
  message_window_t data;
  data.m_icon_type = icon;
  data.m_button_type = buttons;
  data.m_main_message = main_text;
  data.m_supplemental_message = supplemental;
  return data;
}

// A picture of the host's own: a round badge drawn in code.
plaxi1::picture_t host_badge() {
  wxBitmap bitmap(24, 24, 32);
  bitmap.UseAlpha();
  {
    wxMemoryDC dc(bitmap);
    dc.SetBackground(*wxTRANSPARENT_BRUSH);
    dc.Clear();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxColour(145, 65, 172)));
    dc.DrawRoundedRectangle(1, 1, 22, 22, 6);
    dc.SetTextForeground(*wxWHITE);
    dc.SetFont(wxFontInfo(10).Bold());
    dc.DrawLabel("A", wxRect(0, 0, 24, 24), wxALIGN_CENTER);
  }
  return plaxi1::picture_t(plaxi1::wxStaticPicture(bitmap.ConvertToImage()));
}

entry_t message_entry(std::string id, std::string title, std::string description, message_window_t data) {
  return {std::move(id), std::move(title), std::move(description),
          [data](wxWindow* parent) { tamsel3::show_modal(data, parent); },
          [data](wxWindow* parent) -> wxTopLevelWindow* {
            auto* dialog = new tamsel3::error_warning_dialog_t(data);
            dialog->show_nonmodal(parent, true);
            return dialog;
          }};
}

std::vector<entry_t> button_and_icon_entries() {
  message_window_t suppressible = message(
      message_window_t::icon_warning, message_window_t::buttons_yes_no, "Delete the results of this run?",
      "The 3 result folders of run r004hs (1.2 GB) will be removed from the disk. This can't be undone.");
  // Kept in the user's configuration, as a host keeps it; the gallery's "Ask again" button
  // forgets it.
  suppressible.m_check_box = new tamsel3::stored_check_box_t(nullptr, "confirm_delete_results");
  return {
      message_entry(
          "message_error_close", "Error with Close", "An error: the red icon and a single Close button.",
          message(message_window_t::icon_error, message_window_t::buttons_close,
                  "The result could not be opened",
                  "The file r002ti/data.0/render.trace is damaged. Run the analysis again to make a new "
                  "result.")),
      message_entry("message_warning_yes_no_check", "Warning with Yes, No and a check box",
                    "A question the user may stop being asked: Yes and No, and a check box that keeps the "
                    "answer in the user's settings. \"Ask again\" brings the question back.",
                    suppressible),
      message_entry(
          "message_success_ok_cancel", "Success with OK and Cancel",
          "A confirmation after a successful step.",
          message(message_window_t::icon_ok, message_window_t::buttons_ok_cancel, "The analysis finished",
                  "Found 14 hotspots in 2,318 functions. Open the summary now?")),
      message_entry(
          "message_info_close", "Information with Close", "A plain note.",
          message(message_window_t::icon_info, message_window_t::buttons_close, "The project was converted",
                  "Projects of the previous version are converted when opened. A copy of the old "
                  "project file was kept as render.proj.bak.")),
      message_entry("message_retry_cancel", "Error with Retry and Cancel", "A failure worth another try.",
                    message(message_window_t::icon_error, message_window_t::buttons_retry_cancel,
                            "The license server did not answer",
                            "licenses.example.org:27000 could not be reached within 30 seconds.")),
      message_entry("message_progress_no_buttons", "Progress without buttons",
                    "The animated progress icon; no button, only Escape or the window frame end it.",
                    message(message_window_t::icon_progress, message_window_t::buttons_none,
                            "Preparing the result", "Resolving symbols of 412 modules...")),
      message_entry("message_custom_picture", "A picture of the host's own",
                    "Icon type 5 with a picture that the host drew.",
                    [] {
                      message_window_t data =
                          message(message_window_t::icon_custom, message_window_t::buttons_close,
                                  "Welcome to Orbit", "Your workspace is ready.");
                      data.m_picture = host_badge();
                      return data;
                    }()),
  };
}

entry_t long_text_entry() {
  return message_entry(
      "message_error_long_text", "Error with a long text",
      "A long text that the panel wraps itself, keeping its line breaks.",
      message(
          message_window_t::icon_error, message_window_t::buttons_close,
          "The collector stopped before the target program ended, and the result is incomplete",
          "The collector lost its connection to the target after 4 minutes 12 seconds. The data gathered "
          "until then was saved, but call stacks of the last 30 seconds are missing, so the timeline ends "
          "early and some hotspots may be smaller than they are.\n\nCheck that the target doesn't close "
          "inherited file descriptors, then run the analysis again."));
}

// A host whose texts are German, with a path in the user's home folder: umlauts in the
// words and in the path, and a path longer than a line.
entry_t german_text_entry() {
  return message_entry(
      "message_error_german", "Error in German",
      "A message that isn't English: umlauts in the text and in a long path, which stays whole on "
      "a line of its own.",
      message(message_window_t::icon_error, message_window_t::buttons_close,
              "Die Ergebnisdatei konnte nicht geöffnet werden",
              "Die Datei /home/jürgen/Projekte/Bildverarbeitung/Ergebnisse/r003hs/Übersicht.trace ist "
              "beschädigt oder wurde von einer neueren Version geschrieben. Führen Sie die Analyse "
              "erneut aus, um ein neues Ergebnis zu erzeugen."));
}

// A page with a field limited to 24 characters, shown in a dialog of the host.
class limited_field_page_t : public tamsel3::pref_base_t {
 public:
  bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                              const std::string&) override {
    Create(parent, wxID_ANY);
    m_field = new wxTextCtrl(this, wxID_ANY, "render-pipeline");
    auto* label = new wxStaticText(this, wxID_ANY, "Result tag (at most 24 characters):");
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(label, 0, wxALL, 12);
    sizer->Add(m_field, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, 12);
    SetSizer(sizer);
    return true;
  }
  void on_init_dialog() override {
    set_max_len_options(m_field, tamsel3::max_len_options_t("result tag", 24, ""));
  }

 private:
  wxTextCtrl* m_field = nullptr;
};

wxDialog* make_limited_field_dialog(wxWindow* parent) {
  auto* dialog = new wxDialog(parent, wxID_ANY, "Result Tag");
  auto* page = new limited_field_page_t;
  page->create(dialog);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(page, 1, wxEXPAND);
  sizer->Add(dialog->CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, 12);
  dialog->SetSizerAndFit(sizer);
  dialog->SetClientSize(wxSize(420, dialog->GetClientSize().GetHeight()));
  return dialog;
}

std::vector<entry_t> limit_and_wrapper_entries() {
  return {
      {"text_limit", "Text field with a limit",
       "Type or paste more than 24 characters: the field keeps 24 and a warning names the field and its "
       "limit.",
       [](wxWindow* parent) {
         wxDialog* dialog = make_limited_field_dialog(parent);
         dialog->ShowModal();
         dialog->Destroy();
       },
       [](wxWindow* parent) -> wxTopLevelWindow* {
         wxDialog* dialog = make_limited_field_dialog(parent);
         dialog->Show();
         return dialog;
       }},
      {"file_dialog", "Choose a file", "file_dlg: start folder and name from a path, filters one per line.",
       [](wxWindow* parent) {
         std::string path = "/usr/share/doc/README";
         tamsel3::file_dlg(parent, true, path, "txt", "Text files\n*.txt\nAll files\n*\n", "", "");
       },
       nullptr},
      {"folder_dialog", "Choose a folder",
       "folder_dlg: the toolkit's folder chooser with the library's title.",
       [](wxWindow* parent) {
         std::string path = "/usr/share";
         tamsel3::folder_dlg(parent, path, "");
       },
       nullptr},
      {"font_dialog", "Choose a font", "font_dlg: the toolkit's font chooser; confirmed data is copied back.",
       [](wxWindow* parent) {
         wxFontData data;
         tamsel3::font_dlg(parent, data);
       },
       nullptr},
      {"color_dialog", "Choose a colour", "color_dlg: the toolkit's colour chooser.",
       [](wxWindow* parent) {
         wxColourData data;
         tamsel3::color_dlg(parent, data);
       },
       nullptr},
  };
}

}  // namespace

std::vector<entry_t> message_entries() {
  std::vector<entry_t> entries = button_and_icon_entries();
  entries.push_back(long_text_entry());
  entries.push_back(german_text_entry());
  for (entry_t& entry : limit_and_wrapper_entries()) {
    entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace gallery
