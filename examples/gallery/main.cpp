// The gallery: every window of the library, fed with realistic data. With
// "--screenshots DIR" it writes a PNG of each window, and window_sizes.txt with each
// window's logical client size ("id width height" a line), and exits. "--language de" shows the
// library's texts in that language, whatever the locale. With "--open ID" it
// shows the window of that entry beside the list, for a look at it or at its accessible tree;
// "--report" then prints what the window draws (element_report.h) once it is laid out, and
// again for each line "report" on the standard input. "--list" prints the ids of the
// entries, one a line, and exits; the entries that run the toolkit's own dialog say
// "toolkit" after the id.
#include "element_report.h"
#include "entries.h"

#include <a11y/native.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>
#include <tamsel3/stored_check_box.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/cmdline.h>
#include <wx/filename.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace gallery {
namespace {

std::vector<entry_t> make_entries() {
  std::vector<entry_t> entries = frame_entries();
  for (auto* group : {&message_entries, &caption_entries, &inplace_entries, &result_saving_entries,
                      &editor_entries, &small_dialog_entries, &feature_entries, &side_panel_entries,
                      &advanced_panel_entries, &directory_grid_entries, &search_dirs_entries}) {
    for (entry_t& entry : (*group)()) {
      entries.push_back(std::move(entry));
    }
  }
  return entries;
}

class main_frame_t : public wxFrame {
 public:
  explicit main_frame_t(const std::vector<entry_t>& entries)
      : wxFrame(nullptr, wxID_ANY, "tamsel3 gallery"), m_entries(entries) {
    // Sizes are of the client area, which both X11 and Wayland give as asked: a Wayland
    // window's own size also holds the decorations that GTK draws around it.
    SetClientSize(wxSize(760, 420));
    auto* panel = new wxPanel(this);
    m_list = new wxListBox(panel, wxID_ANY);
    for (const entry_t& entry : m_entries) {
      m_list->Append(wxString::FromUTF8(entry.title));
    }
    m_description = new wxStaticText(panel, wxID_ANY, "");
    auto* open = new wxButton(panel, wxID_OPEN, "&Open");
    // Brings back every message that the user asked not to see again.
    auto* ask_again = new wxButton(panel, wxID_ANY, "&Ask again");
    ask_again->SetToolTip("Forget every \"Do not show this message again\" answer");
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(ask_again, 0, wxRIGHT, 8);
    buttons->Add(open);
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(m_description, 1, wxEXPAND | wxBOTTOM, 12);
    right->Add(buttons, 0, wxALIGN_RIGHT);
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(m_list, 0, wxEXPAND | wxALL, 12);
    sizer->Add(right, 1, wxEXPAND | wxTOP | wxRIGHT | wxBOTTOM, 12);
    panel->SetSizer(sizer);
    m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { describe(); });
    m_list->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { open_selected(); });
    open->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open_selected(); });
    ask_again->Bind(wxEVT_BUTTON, [](wxCommandEvent&) { tamsel3::stored_check_box_t::reset_all(nullptr); });
    m_list->SetSelection(0);
    describe();
  }

 private:
  void describe() {
    const int index = m_list->GetSelection();
    if (index != wxNOT_FOUND) {
      m_description->SetLabel(wxString::FromUTF8(m_entries[static_cast<std::size_t>(index)].description));
      m_description->Wrap(m_description->GetParent()->GetClientSize().GetWidth() -
                          m_list->GetSize().GetWidth() - 48);
    }
  }
  void open_selected() {
    const int index = m_list->GetSelection();
    if (index != wxNOT_FOUND) {
      m_entries[static_cast<std::size_t>(index)].run(this);
    }
  }

  const std::vector<entry_t>& m_entries;
  wxListBox* m_list;
  wxStaticText* m_description;
};

// Whether `control` shows a text of its own.
bool shows_text(const wxWindow* control) {
  // IsKindOf, not wxDynamicCast: that macro casts down before it checks, which UBSan reports.
  return !control->GetLabel().empty() &&
         (control->IsKindOf(wxCLASSINFO(wxStaticText)) || control->IsKindOf(wxCLASSINFO(wxButton)) ||
          control->IsKindOf(wxCLASSINFO(wxCheckBox)) || control->IsKindOf(wxCLASSINFO(wxRadioButton)));
}

// Whether the text of `control` is cut: by its parent's edge, or, for a control that doesn't
// wrap its text (GTK wraps a static text to the width it gets), by a size below its best one.
bool is_cut(wxWindow* control) {
  const wxRect rect = control->GetRect();
  const wxSize room = control->GetParent()->GetClientSize();
  if (rect.GetRight() >= room.x || rect.GetBottom() >= room.y) {
    return true;
  }
  if (control->IsKindOf(wxCLASSINFO(wxStaticText))) {
    return false;
  }
  control->InvalidateBestSize();
  const wxSize best = control->GetBestSize();
  return rect.width < best.x || rect.height < best.y;
}

// Lists the shown texts of `window` that are cut, and gives their number.
int report_cut_texts(const wxWindow* window, const std::string& id) {
  int cut = 0;
  for (wxWindow* child : window->GetChildren()) {
    if (!child->IsShown() || child->IsTopLevel()) {
      continue;
    }
    if (shows_text(child) && is_cut(child)) {
      const wxRect rect = child->GetRect();
      std::cout << "CUT in " << id << ": " << child->GetName() << " \"" << child->GetLabel().utf8_string()
                << "\" at " << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height
                << std::endl;
      ++cut;
    }
    cut += report_cut_texts(child, id);
  }
  return cut;
}

// Shows each entry in turn, writes its picture and closes it; then exits.
class screenshot_run_t {
 public:
  screenshot_run_t(wxFrame* frame, const std::vector<entry_t>& entries, std::string folder)
      : m_frame(frame), m_entries(entries), m_folder(std::move(folder)) {}

  int run() {
    int failures = 0;
    failures += capture(m_frame, "gallery") ? 0 : 1;
    for (const entry_t& entry : m_entries) {
      if (!entry.show) {
        std::cout << "no picture of " << entry.id << ": the toolkit's own dialog runs only modally"
                  << std::endl;
        continue;
      }
      wxTopLevelWindow* window = entry.show(m_frame);
      failures += capture(window, entry.id) ? 0 : 1;
      window->Destroy();
    }
    return failures;
  }

 private:
  bool capture(wxWindow* window, const std::string& id) {
    const std::string path = m_folder + "/" + id + ".png";
    const bool saved = plaxi1::save_screenshot(window, path) && report_cut_texts(window, id) == 0;
    std::cout << (saved ? "wrote " : "FAILED ") << path << std::endl;
    if (saved) {
      // The size of what the picture shows, the window's client area, in logical pixels, so
      // that a check can compare the picture's. On Wayland the window's own size also holds
      // the title bar and shadow that GTK draws around it.
      const wxSize size = window->GetClientSize();
      m_sizes << id << ' ' << size.x << ' ' << size.y << '\n';
    }
    return saved;
  }

  wxFrame* m_frame;
  const std::vector<entry_t>& m_entries;
  std::string m_folder;
  std::ofstream m_sizes{m_folder + "/window_sizes.txt"};
};

}  // namespace

class gallery_app_t : public wxApp {
 public:
  bool OnInit() override {
    if (!wxApp::OnInit()) {
      return false;
    }
    m_entries = make_entries();
    if (m_list) {
      for (const entry_t& entry : m_entries) {
        std::cout << entry.id << (entry.show ? "" : " toolkit") << '\n';
      }
      std::cout.flush();
      CallAfter([this] { ExitMainLoop(); });
      return true;
    }
    auto* frame = new main_frame_t(m_entries);
    frame->Show();
    SetTopWindow(frame);
    if (!m_screenshot_folder.empty()) {
      CallAfter([this, frame] {
        const int failures = screenshot_run_t(frame, m_entries, m_screenshot_folder).run();
        m_exit_code = failures == 0 ? 0 : 1;
        frame->Destroy();
      });
    } else if (!m_open_id.empty()) {
      CallAfter([this, frame] { open(frame); });
    }
    return true;
  }

  // The program's exit code is what OnRun gives; OnExit's is ignored.
  int OnRun() override {
    const int code = wxApp::OnRun();
    return code != 0 ? code : m_exit_code;
  }

  void OnInitCmdLine(wxCmdLineParser& parser) override {
    wxApp::OnInitCmdLine(parser);
    parser.AddOption("", "screenshots", "write a PNG of every window into this folder and exit");
    parser.AddOption("", "language", "show the texts in this language (\"de\", \"en\")");
    parser.AddOption("", "open", "show the window of the entry with this id");
    parser.AddSwitch("", "report", "with --open: print the window's drawn elements when it is laid out");
    parser.AddSwitch("", "list", "print the ids of the entries, and exit");
  }

  bool OnCmdLineParsed(wxCmdLineParser& parser) override {
    m_list = parser.Found("list");
    wxString folder;
    if (parser.Found("screenshots", &folder)) {
      m_screenshot_folder = folder.utf8_string();
      wxFileName::Mkdir(folder, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    }
    wxString language;
    if (parser.Found("language", &language)) {
      use_language(language);
    }
    wxString id;
    if (parser.Found("open", &id)) {
      m_open_id = id.utf8_string();
    }
    m_report = parser.Found("report");
    return wxApp::OnCmdLineParsed(parser);
  }

 private:
  // The catalog registry reads the locale variables; LC_ALL outranks the others, and a
  // LANGUAGE list of the user's would outrank it, so it goes. The process's own locale,
  // set by the toolkit already, stays as it was.
  static void use_language(const wxString& language) {
    wxUnsetEnv("LANGUAGE");
    wxSetEnv("LC_ALL", language);
    quern2::reloadMessageCatalogs();
  }

  // Shows the entry of m_open_id without a loop of its own; an unknown id ends the run.
  void open(wxFrame* frame) {
    for (const entry_t& entry : m_entries) {
      if (entry.id == m_open_id && entry.show) {
        wxTopLevelWindow* window = entry.show(frame);
        // The host's own fields, by the labels beside them; before a client can see them.
        a11y::name_from_labels(window);
        window->Show();
        if (m_report) {
          start_report(window);
        }
        return;
      }
      if (entry.id == m_open_id && entry.run) {
        entry.run(frame);  // the toolkit's own dialog, modal: it ends the program when closed
        frame->Destroy();
        return;
      }
    }
    std::cerr << "no entry " << m_open_id << " to show" << std::endl;
    m_exit_code = 1;
    frame->Destroy();
  }

  // Reports `window` once it shows laid out, then at each "report" on the standard input.
  void start_report(wxWindow* window) {
    m_report_timer.Bind(wxEVT_TIMER, [this, window](wxTimerEvent&) {
      if (window->IsShownOnScreen() && !layout_pending(window)) {
        m_report_timer.Stop();
        report_elements(window, std::cout);
      }
    });
    m_report_timer.Start(50);
    std::thread([this, window] {
      std::string line;
      while (std::getline(std::cin, line)) {
        if (line == "report") {
          CallAfter([window] { report_elements(window, std::cout); });
        }
      }
    }).detach();
  }

  std::vector<entry_t> m_entries;
  std::string m_screenshot_folder;
  std::string m_open_id;
  bool m_report = false;
  wxTimer m_report_timer;
  int m_exit_code = 0;
  bool m_list = false;
};

}  // namespace gallery

wxIMPLEMENT_APP(gallery::gallery_app_t);
