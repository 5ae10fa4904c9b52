// A host's preference page with a folding frame of advanced options: the engine's everyday
// choices stay in sight, while threads, intermediate files and compiler options fold away.
// The dialog follows the frame's height when it opens or closes.
#include "entries.h"

#include <plaxi1/screenshot.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/advanced_panel.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <iostream>

namespace gallery {
namespace {

// The host's page: it owns the frame and fits the dialog to it.
class engine_dialog_t : public wxDialog, public korvat2::subscriber_base_t {
 public:
  explicit engine_dialog_t(wxWindow* parent)
      : wxDialog(parent, wxID_ANY, "Preferences", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    const int gap = plaxi1::ui_settings_t::get()->get_metric(plaxi1::metric_margin);
    auto* page = new wxBoxSizer(wxVERTICAL);
    auto* title = new wxStaticText(this, wxID_ANY, "Analysis engine");
    title->SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_bold));
    page->Add(title, 0, wxBOTTOM, gap);
    page->Add(everyday_choices(), 0, wxEXPAND | wxBOTTOM, gap / 2);
    m_advanced = new tamsel3::advanced_panel_t(this, "Advanced options");
    m_advanced->add(advanced_choices(m_advanced), 0, wxEXPAND | wxTOP, gap / 3);
    m_advanced->m_open_signal.connect(this, &engine_dialog_t::on_open);
    page->Add(m_advanced, 0, wxEXPAND);

    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(page, 1, wxEXPAND | wxALL, gap);
    all->Add(CreateStdDialogButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
    SetSizerAndFit(all);
  }

  tamsel3::advanced_panel_t* advanced() const { return m_advanced; }

 private:
  wxSizer* everyday_choices() {
    auto* grid = new wxFlexGridSizer(2, wxSize(12, 8));
    grid->AddGrowableCol(1);
    grid->Add(new wxStaticText(this, wxID_ANY, "Analysis type:"), 0, wxALIGN_CENTER_VERTICAL);
    const wxString types[] = {"Hotspots", "Threading", "Memory access"};
    auto* type = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 3, types);
    type->SetSelection(0);
    grid->Add(type, 0, wxEXPAND);
    grid->AddSpacer(0);
    auto* stacks = new wxCheckBox(this, wxID_ANY, "Collect call stacks");
    stacks->SetValue(true);
    grid->Add(stacks);
    return grid;
  }

  // The controls that fold away, as children of the frame.
  static wxSizer* advanced_choices(wxWindow* frame) {
    auto* grid = new wxFlexGridSizer(2, wxSize(12, 8));
    grid->AddGrowableCol(1);
    grid->Add(new wxStaticText(frame, wxID_ANY, "Worker threads:"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(
        new wxSpinCtrl(frame, wxID_ANY, "8", wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS, 1, 64, 8));
    grid->Add(new wxStaticText(frame, wxID_ANY, "Extra compiler options:"), 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(
        new wxTextCtrl(frame, wxID_ANY, "-g -fno-omit-frame-pointer", wxDefaultPosition, wxSize(260, -1)), 0,
        wxEXPAND);
    grid->AddSpacer(0);
    grid->Add(new wxCheckBox(frame, wxID_ANY, "Keep intermediate files"));
    return grid;
  }

  // The dialog keeps its width and takes the height that its page needs now.
  void on_open(bool opened) {
    std::cout << "advanced options " << (opened ? "opened" : "closed") << std::endl;
    const wxSize fitting = GetSizer()->ComputeFittingWindowSize(this);
    SetMinSize(wxSize(GetMinSize().GetWidth(), fitting.GetHeight()));
    SetSize(wxSize(GetSize().GetWidth(), fitting.GetHeight()));
  }

  tamsel3::advanced_panel_t* m_advanced;
};

entry_t engine_entry(std::string id, std::string title, std::string description, bool opened) {
  return {std::move(id), std::move(title), std::move(description),
          [opened](wxWindow* parent) {
            engine_dialog_t dialog(parent);
            dialog.advanced()->open(opened);
            dialog.ShowModal();
          },
          [opened](wxWindow* parent) -> wxTopLevelWindow* {
            auto* dialog = new engine_dialog_t(parent);
            dialog->advanced()->open(opened);
            dialog->Show();
            plaxi1::wait_until_painted(dialog, 5000);
            return dialog;
          }};
}

}  // namespace

std::vector<entry_t> advanced_panel_entries() {
  return {
      engine_entry("advanced_panel_open", "Advanced options: open",
                   "A preference page with a folding frame of advanced options, open: worker threads, "
                   "extra compiler options and intermediate files. The arrow folds it away.",
                   true),
      engine_entry("advanced_panel_closed", "Advanced options: closed",
                   "The same page with the frame folded: only its caption shows, and the dialog is "
                   "shorter. The arrow opens it again.",
                   false),
  };
}

}  // namespace gallery
