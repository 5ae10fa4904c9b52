// A preferences dialog with two pages of the host's own, each on the library's page frame:
// the pages work on copies of the settings, and OK has each page read its controls back.
#include <tamsel3/max_len_options.h>
#include <tamsel3/pref_base.h>

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <iostream>
#include <string>

// The host's settings: a plain value that the dialog copies and gives back.
struct settings_t {
  std::string project_name = "render-pipeline";
  bool keep_temporary_results = false;
};

//! [pages]
// The first page: a name field that never holds more than 32 characters.
class general_page_t : public tamsel3::pref_base_t {
 public:
  explicit general_page_t(std::string name) : m_name(std::move(name)) {}
  std::string name() const { return m_name; }

  // Laid out in code; a page of the library loads its layout from the resource archive.
  bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                              const std::string&) override {
    Create(parent, wxID_ANY);
    m_field = new wxTextCtrl(this, wxID_ANY);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(new wxStaticText(this, wxID_ANY, "Project name:"), 0, wxALL, 12);
    sizer->Add(m_field, 0, wxEXPAND | wxLEFT | wxRIGHT, 12);
    SetSizer(sizer);
    return true;
  }
  void on_init_dialog() override {
    m_field->ChangeValue(wxString::FromUTF8(m_name));
    set_max_len_options(m_field, tamsel3::max_len_options_t("project name", 32, ""));
  }
  void save_settings() override { m_name = m_field->GetValue().utf8_string(); }

 private:
  std::string m_name;
  wxTextCtrl* m_field = nullptr;
};

// The second page: one choice about results.
class results_page_t : public tamsel3::pref_base_t {
 public:
  explicit results_page_t(bool keep) : m_keep(keep) {}
  bool keep() const { return m_keep; }

  bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                              const std::string&) override {
    Create(parent, wxID_ANY);
    m_check = new wxCheckBox(this, wxID_ANY, "Keep temporary results after a run");
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_check, 0, wxALL, 12);
    SetSizer(sizer);
    return true;
  }
  void on_init_dialog() override { m_check->SetValue(m_keep); }
  void save_settings() override { m_keep = m_check->GetValue(); }

 private:
  bool m_keep;
  wxCheckBox* m_check = nullptr;
};
//! [pages]

//! [dialog]
// The host's dialog: a notebook of the two pages over OK and Cancel.
class preferences_dialog_t : public wxDialog {
 public:
  preferences_dialog_t(wxWindow* parent, const settings_t& settings)
      : wxDialog(parent, wxID_ANY, "Preferences"), m_settings(settings) {
    auto* notebook = new wxNotebook(this, wxID_ANY);
    m_general = new general_page_t(settings.project_name);
    m_general->create(notebook);  // loads and initialises the page
    notebook->AddPage(m_general, "General");
    m_results = new results_page_t(settings.keep_temporary_results);
    m_results->create(notebook);
    notebook->AddPage(m_results, "Results");

    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(notebook, 1, wxEXPAND | wxALL, 12);
    sizer->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, 12);
    SetSizerAndFit(sizer);
    Bind(wxEVT_BUTTON, &preferences_dialog_t::handle_ok, this, wxID_OK);
  }

  // The edited copy; the original after Cancel.
  settings_t settings() const { return m_settings; }

 private:
  void handle_ok(wxCommandEvent& event) {
    m_general->save_settings();
    m_results->save_settings();
    m_settings.project_name = m_general->name();
    m_settings.keep_temporary_results = m_results->keep();
    event.Skip();  // the dialog ends as usual
  }

  settings_t m_settings;
  general_page_t* m_general;
  results_page_t* m_results;
};
//! [dialog]

class example_app_t : public wxApp {
 public:
  bool OnInit() override {
    settings_t settings;
    preferences_dialog_t dialog(nullptr, settings);
    if (dialog.ShowModal() == wxID_OK) {
      settings = dialog.settings();
    }
    std::cout << "project " << settings.project_name << (settings.keep_temporary_results ? ", keeping" : "")
              << '\n';
    return false;
  }
};

wxIMPLEMENT_APP(example_app_t);
