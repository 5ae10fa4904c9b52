// The caption panel at the top of a host's page of project properties, with messages of
// three severities about the page's settings, before and after the user scrolled to the
// second; and the simple message panel as the status line of a small dialog.
#include "entries.h"

#include <plaxi1/screenshot.h>
#include <tamsel3/caption_panel.h>
#include <tamsel3/simple_message_panel.h>

#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/dialog.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/statline.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

namespace gallery {
namespace {

using tamsel3::caption_panel_t;

constexpr int scope_dialog_width = 640;
constexpr int status_dialog_width = 440;

const char* const scope_description =
    "Choose which parts of the project the analysis reads. Files outside the scope are neither "
    "parsed nor reported, which makes a run faster, but a defect that crosses into excluded code, "
    "such as a null pointer handed to an excluded module, can go unnoticed. The scope is stored "
    "with the project and applies to every run, from the desktop and from the command line.";

// Gives `dialog` its width first and then the height of its contents and `room` pixels more:
// the labels that wrap to the width know their height only once they have it.
void fit_to_width(wxDialog* dialog, int width, int room) {
  dialog->SetClientSize(wxSize(width, dialog->GetClientSize().GetHeight()));
  dialog->Layout();
  dialog->SetClientSize(dialog->GetClientSize().GetWidth(),
                        dialog->GetSizer()->GetMinSize().GetHeight() + room);
  dialog->Layout();
}

// Fits `dialog` now and again once it is on the screen, where some controls take more room.
void fit_when_shown(wxDialog* dialog, int width, int room) {
  fit_to_width(dialog, width, room);
  dialog->CallAfter([dialog, width, room] { fit_to_width(dialog, width, room); });
}

// The settings under the caption: what a code-analysis tool's scope page holds.
wxSizer* scope_controls(wxWindow* parent) {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(new wxStaticText(parent, wxID_ANY, "Analyze:"), 0, wxBOTTOM, 6);
  sizer->Add(new wxRadioButton(parent, wxID_ANY, "All modules of the project", wxDefaultPosition,
                               wxDefaultSize, wxRB_GROUP),
             0, wxLEFT | wxBOTTOM, 12);
  auto* selected = new wxRadioButton(parent, wxID_ANY, "Selected modules:");
  selected->SetValue(true);
  sizer->Add(selected, 0, wxLEFT | wxBOTTOM, 12);
  const wxString modules[] = {"render", "scene", "netio", "ui", "third_party/zlib"};
  auto* list = new wxCheckListBox(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 5, modules);
  for (unsigned index : {0u, 1u, 2u}) {
    list->Check(index);
  }
  sizer->Add(list, 0, wxEXPAND | wxLEFT | wxBOTTOM, 12);
  sizer->Add(new wxRadioButton(parent, wxID_ANY, "Files changed since the last run"), 0, wxLEFT | wxBOTTOM,
             12);

  auto* grid = new wxFlexGridSizer(2, 2, 6, 12);
  grid->AddGrowableCol(1);
  grid->Add(new wxStaticText(parent, wxID_ANY, "Exclude files matching:"), 0, wxALIGN_CENTER_VERTICAL);
  grid->Add(new wxTextCtrl(parent, wxID_ANY, "generated/*; *_test.cpp"), 0, wxEXPAND);
  grid->Add(new wxStaticText(parent, wxID_ANY, "Stop after findings:"), 0, wxALIGN_CENTER_VERTICAL);
  auto* spin = new wxSpinCtrl(parent, wxID_ANY, "5000", wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS,
                              100, 100000, 5000);
  grid->Add(spin);
  sizer->Add(grid, 0, wxEXPAND | wxTOP, 6);
  auto* headers = new wxCheckBox(parent, wxID_ANY, "Follow included headers outside the project folders");
  headers->SetValue(true);
  sizer->Add(headers, 0, wxTOP, 12);
  return sizer;
}

// Project properties with the Analysis scope page: the caption panel over the settings, with
// three findings about them, the error on show.
class scope_dialog_t : public wxDialog {
 public:
  explicit scope_dialog_t(wxWindow* parent)
      : wxDialog(parent, wxID_ANY, "Project Properties", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    m_caption = new caption_panel_t(this, "Analysis scope", scope_description);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_caption, 0, wxEXPAND);
    sizer->Add(new wxStaticLine(this), 0, wxEXPAND);
    sizer->Add(scope_controls(this), 1, wxEXPAND | wxALL, 12);
    sizer->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, 12);
    SetSizer(sizer);
    fit_to_width(this, scope_dialog_width, 0);
    // As a page reports what it finds in the settings once it has its size.
    m_caption->add_message(caption_panel_t::severity_information,
                           "The scope changed since the last run, so the next analysis reads all 2,318 files "
                           "of the selected modules again.");
    m_caption->add_message(
        caption_panel_t::severity_error,
        "The module \"netio\" has no source folder: /home/ana/projects/render/netio/src "
        "doesn't exist. Fix its path under Search Directories or take it out of the scope.");
    m_caption->add_message(
        caption_panel_t::severity_warning,
        "Files matching \"generated/*\" are excluded, but 41 of them are compiled into the "
        "selected modules. Defects in them won't be reported.");
    // Room for a message of more lines than the first, as the user scrolls.
    fit_when_shown(this, scope_dialog_width, 2 * GetCharHeight());
  }

  caption_panel_t* caption() const { return m_caption; }

 private:
  caption_panel_t* m_caption;
};

wxTopLevelWindow* show_scope_dialog(wxWindow* parent, int scrolled) {
  auto* dialog = new scope_dialog_t(parent);
  dialog->Show();
  for (int step = 0; step < scrolled; ++step) {
    plaxi1::pump_events();
    dialog->caption()->show_next_message();
  }
  return dialog;
}

// A small dialog of the host that reports the state of what it opens in one status line.
class open_result_dialog_t : public wxDialog {
 public:
  explicit open_result_dialog_t(wxWindow* parent) : wxDialog(parent, wxID_ANY, "Open Result") {
    auto* status = new tamsel3::simple_message_panel_t(this);
    status->set_message(tamsel3::simple_message_panel_t::severity_warning,
                        "This result comes from an older collector. Call stacks through inlined "
                        "functions may be incomplete.");
    status->enable(true);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(new wxStaticText(this, wxID_ANY, "Result folder:"), 0, wxLEFT | wxRIGHT | wxTOP, 12);
    sizer->Add(new wxTextCtrl(this, wxID_ANY, "/home/ana/projects/render/results/r007mc"), 0,
               wxEXPAND | wxALL, 12);
    sizer->Add(status, 0, wxEXPAND | wxLEFT | wxRIGHT, 12);
    sizer->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, 12);
    SetSizer(sizer);
    fit_when_shown(this, status_dialog_width, 0);
  }
};

template <typename dialog_t>
void run_modal(wxWindow* parent) {
  dialog_t dialog(parent);
  dialog.ShowModal();
}

}  // namespace

std::vector<entry_t> caption_entries() {
  return {
      {"caption_panel_messages", "Caption panel with messages",
       "The caption over a page of project properties: a bold caption, a long description wrapped "
       "to the width, and three messages about the settings, most severe first, with scroll buttons.",
       run_modal<scope_dialog_t>, [](wxWindow* parent) { return show_scope_dialog(parent, 0); }},
      {"caption_panel_second_message", "Caption panel scrolled to the second message",
       "The same page after the user pressed the right scroll button once: the warning is on show.",
       [](wxWindow* parent) {
         scope_dialog_t dialog(parent);
         dialog.caption()->show_next_message();
         dialog.ShowModal();
       },
       [](wxWindow* parent) { return show_scope_dialog(parent, 1); }},
      {"simple_message_panel_warning", "Simple message panel with a warning",
       "A small dialog whose status line is a simple message panel with a warning of two lines.",
       run_modal<open_result_dialog_t>,
       [](wxWindow* parent) -> wxTopLevelWindow* {
         auto* dialog = new open_result_dialog_t(parent);
         dialog->Show();
         return dialog;
       }},
  };
}

}  // namespace gallery
