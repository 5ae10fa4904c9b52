// Time from the show to the first paint, for a dialog of the library and for the same
// layout shown the way a host without the library would: wxXmlResource into a plain
// wxDialog, from a layout file with the words that the library shows. Each shows a new
// dialog (loading its layout) and a dialog shown before; the same again for the largest
// preference page in a host dialog. Wall time decides; the process's CPU time over the
// same span is the counter "cpu_ms". Needs a display: run under
// `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "ratio_reporter.h"
#include "wx_session.h"

#include <tamsel3/dialog_base.h>
#include <tamsel3/editor_data.h>
#include <tamsel3/editor_pp.h>
#include <tamsel3/language_info.h>
#include <tamsel3/resource.h>

#include <quern2/catalog_registry.h>
#include <zandor/catalog.h>

#include <benchmark/benchmark.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/filesys.h>
#include <wx/fs_zip.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xml/xml.h>
#include <wx/xrc/xmlres.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using clock_type = std::chrono::steady_clock;

double process_cpu_seconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Wall and CPU seconds from a show to the first paint of a window.
struct span_t {
  double wall = 0;
  double cpu = 0;
};

// Watches `window` for its first paint after `start`, then ends the modal run of `dialog`.
class paint_watch_t {
 public:
  paint_watch_t(wxWindow* window, wxDialog* dialog) : m_dialog(dialog) {
    window->Bind(wxEVT_PAINT, &paint_watch_t::on_paint, this);
  }

  void start() {
    m_painted = false;
    m_span = span_t{};
    m_wall_start = clock_type::now();
    m_cpu_start = process_cpu_seconds();
  }
  const span_t& span() const { return m_span; }

 private:
  void on_paint(wxPaintEvent& event) {
    event.Skip();
    if (m_painted) {
      return;
    }
    m_painted = true;
    m_span.wall = std::chrono::duration<double>(clock_type::now() - m_wall_start).count();
    m_span.cpu = process_cpu_seconds() - m_cpu_start;
    wxDialog* dialog = m_dialog;
    dialog->CallAfter([dialog] { dialog->EndModal(wxID_OK); });
  }

  wxDialog* m_dialog;
  bool m_painted = false;
  span_t m_span;
  clock_type::time_point m_wall_start;
  double m_cpu_start = 0;
};

std::string layout_file() { return tamsel3::create_resource_filename("tamsel3.dat", "tamsel.xrc"); }

// Gives each text of the layout that is a key of the library's catalog the words that the
// library shows for it, so that the peer shows and measures the same dialog. A host without
// the library writes its words into its layout.
void write_words(wxXmlNode* parent, const ZANDOR_2_16::i18n::catalog_t& catalog) {
  for (wxXmlNode* node = parent->GetChildren(); node; node = node->GetNext()) {
    if (node->GetType() == wxXML_TEXT_NODE) {
      const std::string key(node->GetContent().Strip(wxString::both).utf8_str());
      if (catalog.has_message(key)) {
        wxString words =
            wxString::FromUTF8(catalog.message(key).as_ustring(ZANDOR_2_16::generic::varg_list()).str());
        words.Replace("_", "__");
        node->SetContent(words);
      }
    } else {
      write_words(node, catalog);
    }
  }
}

// The layouts with their words, as a layout file of a host's own (the two layouts measured
// show no pictures, which would be looked for beside it). Empty when it couldn't be written.
wxString host_layout_file() {
  if (!wxFileSystem::HasHandlerForPath("x.dat#zip:y")) {
    wxFileSystem::AddHandler(new wxZipFSHandler);
  }
  wxFileSystem files;
  const std::unique_ptr<wxFSFile> file(files.OpenFile(wxString::FromUTF8(layout_file())));
  wxXmlDocument document;
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel");
  if (!file || !catalog || !document.Load(*file->GetStream())) {
    return {};
  }
  write_words(document.GetRoot(), *catalog);
  const wxString path = (std::filesystem::temp_directory_path() / "bench_dialog_show.xrc").string();
  return document.Save(path) ? path : wxString();
}

// The layouts as a host would open them: once, from its file, by wx's own resource object.
wxXmlResource& plain_resource() {
  static wxXmlResource* const resource = [] {
    auto* loaded = new wxXmlResource(0);
    loaded->InitAllHandlers();
    loaded->Load(host_layout_file());
    return loaded;
  }();
  return *resource;
}

// ---- dialogs ---------------------------------------------------------------------------

class library_dialog_t : public tamsel3::dialog_base_t {
 public:
  library_dialog_t() : m_watch(this, this) { m_object_name = "dlg.frame_test"; }
  span_t show() {
    m_watch.start();
    show_modal(nullptr);
    return m_watch.span();
  }

 private:
  paint_watch_t m_watch;
};

class plain_dialog_t : public wxDialog {
 public:
  plain_dialog_t() : m_watch(this, this) {}
  span_t show() {
    m_watch.start();
    if (!m_loaded) {
      m_loaded = plain_resource().LoadDialog(this, nullptr, "dlg.frame_test");
    }
    ShowModal();
    return m_watch.span();
  }

 private:
  paint_watch_t m_watch;
  bool m_loaded = false;
};

// ---- the largest preference page in a host dialog -----------------------------------------

// A host's preferences dialog around one page, which it fits when the page is made.
class page_host_t : public wxDialog {
 public:
  page_host_t()
      : wxDialog(nullptr, wxID_ANY, "Preferences", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {}
  span_t show() {
    m_watch->start();
    if (!m_made) {
      m_made = true;
      auto* sizer = new wxBoxSizer(wxVERTICAL);
      sizer->Add(make_page(), 1, wxEXPAND);
      SetSizerAndFit(sizer);
    }
    ShowModal();
    return m_watch->span();
  }

 protected:
  void watch(wxWindow* page) { m_watch = std::make_unique<paint_watch_t>(page, this); }

 private:
  virtual wxWindow* make_page() = 0;
  std::unique_ptr<paint_watch_t> m_watch;
  bool m_made = false;
};

// As a host embeds a page of the library: created into its dialog.
class library_page_host_t : public page_host_t {
 public:
  library_page_host_t() : m_page(new tamsel3::editor_pp_t(tamsel3::editor_data_t(), page_flags)) {
    watch(m_page);
  }

 private:
  wxWindow* make_page() override {
    m_page->create(this);
    return m_page;
  }
  static constexpr int page_flags = tamsel3::editor_pp_t::show_language_list |
                                    tamsel3::editor_pp_t::show_default | tamsel3::editor_pp_t::show_info;
  tamsel3::editor_pp_t* m_page;
};

// What the library's page shows beside its layout's words, as the host's own data: the
// languages to choose from, the first chosen, and the editor list with its one entry.
struct page_content_t {
  wxArrayString languages;
  wxString browse_entry;
};

const page_content_t& page_content() {
  static const page_content_t content = [] {
    page_content_t made;
    const tamsel3::editor_data_t data;
    for (auto it = data.get_languages(); !it.at_end(); it.next()) {
      made.languages.Add(wxString::FromUTF8(tamsel3::language_info::get_localized_name(it.current())));
    }
    const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel");
    made.browse_entry = wxString::FromUTF8(
        catalog->message("pref.editor.browse").as_ustring(ZANDOR_2_16::generic::varg_list()).str());
    return made;
  }();
  return content;
}

// As a host without the library shows the same page: its layout, then its data in the
// controls and the controls that it doesn't use hidden.
class plain_page_host_t : public page_host_t {
 public:
  plain_page_host_t() : m_page(new wxPanel) { watch(m_page); }

 private:
  wxWindow* make_page() override {
    plain_resource().LoadPanel(m_page, this, "pref.editor");
    const page_content_t& content = page_content();
    auto* language = XRCCTRL(*m_page, "m_language", wxChoice);
    language->Append(content.languages);
    language->SetSelection(0);
    XRCCTRL(*m_page, "m_language_text", wxStaticText)->Hide();
    XRCCTRL(*m_page, "m_editor_list", wxListBox)->Set(wxArrayString(1, &content.browse_entry));
    XRCCTRL(*m_page, "m_static_text_cmd_line", wxStaticText)->Hide();
    XRCCTRL(*m_page, "m_command_line", wxTextCtrl)->Hide();
    XRCCTRL(*m_page, "m_info_text", wxStaticText)->SetLabel("\n");
    return m_page;
  }
  wxPanel* m_page;
};

// ---- cases --------------------------------------------------------------------------------

void record(benchmark::State& state, const span_t& span, double& cpu_total) {
  state.SetIterationTime(span.wall);
  cpu_total += span.cpu;
}

void report_cpu(benchmark::State& state, double cpu_total) {
  state.counters["cpu_ms"] = benchmark::Counter(cpu_total * 1e3, benchmark::Counter::kAvgIterations);
}

template <class Window>
span_t show_once() {
  auto* window = new Window;
  const span_t span = window->show();
  window->Destroy();
  return span;
}

// A new window for every show.
template <class Window>
void first_show(benchmark::State& state) {
  double cpu_total = 0;
  for (auto _ : state) {
    record(state, show_once<Window>(), cpu_total);
  }
  report_cpu(state, cpu_total);
}

// One window, shown once before the timed shows.
template <class Window>
void second_show(benchmark::State& state) {
  auto* window = new Window;
  window->show();
  double cpu_total = 0;
  for (auto _ : state) {
    record(state, window->show(), cpu_total);
  }
  report_cpu(state, cpu_total);
  window->Destroy();
}

// One show of each window before any is timed: what a process does once, for the first
// window of its kind (reading a layout file, the toolkit's styles), is the start-up bench's
// business, and would here be paid by whichever side runs first.
void warm_up() {
  for (const std::function<span_t()>& show :
       {std::function<span_t()>([] { return show_once<library_dialog_t>(); }),
        std::function<span_t()>([] { return show_once<plain_dialog_t>(); }),
        std::function<span_t()>([] { return show_once<library_page_host_t>(); }),
        std::function<span_t()>([] { return show_once<plain_page_host_t>(); })}) {
    show();
  }
}

// Each repetition is one show, and the shows of all cases run in a random order: a slow
// spell of the display server falls on both sides alike, and the median show is what a
// user typically waits for.
constexpr int shows_per_case = 120;

void register_pair(const char* name, const std::function<void(benchmark::State&)>& library,
                   const std::function<void(benchmark::State&)>& plain) {
  for (const auto& [side, run] : {std::pair{"tamsel3", library}, std::pair{"wx", plain}}) {
    benchmark::RegisterBenchmark((std::string(name) + "/" + side).c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(shows_per_case)
        ->DisplayAggregatesOnly(true);
  }
}

}  // namespace

int main(int argc, char** argv) {
  int wx_argc = 1;
  char* wx_argv[] = {argv[0], nullptr};
  const bench_support::wx_session_t session(wx_argc, wx_argv);
  if (!session.ok()) {
    return 1;
  }
  warm_up();
  register_pair("first_show", first_show<library_dialog_t>, first_show<plain_dialog_t>);
  register_pair("second_show", second_show<library_dialog_t>, second_show<plain_dialog_t>);
  register_pair("page_first_show", first_show<library_page_host_t>, first_show<plain_page_host_t>);
  register_pair("page_second_show", second_show<library_page_host_t>, second_show<plain_page_host_t>);
  std::vector<char*> args(argv, argv + argc);
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  args.insert(args.begin() + 1, interleave.data());
  int args_count = static_cast<int>(args.size());
  return bench_support::run_with_ratios(args_count, args.data(), "tamsel3", {"wx"},
                                        bench_support::time_basis_t::wall);
}
