#include <tamsel3/editor_pp.h>
#include <tamsel3/text_helpers.h>

#include <korvat2/path.h>
#include <korvat2/system.h>
#include <korvat2/system_editor.h>
#include <plaxi1/placement.h>
#include <zandor/debug.h>
#include <zandor/varg_list.h>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

namespace tamsel3 {

std::string editor_pp_t::browse_editor_display_name;
std::string editor_pp_t::system_default_suffix;

namespace {

// Custom editors of one program are numbered up to this, per language.
const int max_same_leaf = 100;
// An empty info line keeps its height: the page doesn't jump when a message comes.
const char* const no_info = "\n";

std::string translate(const char* key) { return translate_message(key, ZANDOR_2_16::generic::varg_list()); }

template <class Control>
Control* find_control(wxWindow* page, const char* name) {
  auto* control = dynamic_cast<Control*>(page->FindWindow(wxXmlResource::GetXRCID(name)));
  if (!control) {
    ZANDOR_REPORT(name);
  }
  return control;
}

bool ends_with(const std::string& text, const std::string& tail) {
  return !tail.empty() && text.size() >= tail.size() &&
         text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

std::string name_for_number(const std::string& leaf, int number) {
  return number == 1 ? leaf : leaf + " (" + std::to_string(number) + ")";
}

}  // namespace

wxBEGIN_EVENT_TABLE(editor_pp_t, pref_base_t)
  EVT_CHOICE(XRCID("m_language"), editor_pp_t::on_language_changed)
  EVT_LISTBOX(XRCID("m_editor_list"), editor_pp_t::on_editor_list_clicked)
  EVT_TEXT(XRCID("m_command_line"), editor_pp_t::on_cmd_line_edit)
  EVT_CHECKBOX(XRCID("m_default"), editor_pp_t::on_set_as_default)
wxEND_EVENT_TABLE()

editor_pp_t::editor_pp_t(const editor_data_t& data, int flags) : m_committed_data(data), m_show_flags(flags) {
  m_object_name = "pref.editor";
  if (browse_editor_display_name.empty()) {
    browse_editor_display_name = translate("pref.editor.browse");
  }
  if (system_default_suffix.empty()) {
    system_default_suffix = " " + translate("pref.editor.system_default_suffix");
  }
}

void editor_pp_t::save_settings() { m_committed_data = m_work_data; }

void editor_pp_t::on_init_dialog() {
  m_language_gap = find_control<wxWindow>(this, "m_language_gap");
  m_language = find_control<wxChoice>(this, "m_language");
  m_language_text = find_control<wxStaticText>(this, "m_language_text");
  m_editor_list = find_control<wxListBox>(this, "m_editor_list");
  m_static_text_cmd_line = find_control<wxStaticText>(this, "m_static_text_cmd_line");
  m_command_line = find_control<wxTextCtrl>(this, "m_command_line");
  m_default = find_control<wxCheckBox>(this, "m_default");
  m_info_text = find_control<wxStaticText>(this, "m_info_text");
  load_settings();
  update_shown_controls();
  if (wxWindow* parent = GetParent()) {
    SetSize(parent->GetClientSize());
    plaxi1::place_centred(this);
    Layout();
  }
}

void editor_pp_t::load_settings() {
  m_work_data = m_committed_data;
  for (auto it = m_work_data.get_languages(); !it.at_end(); it.next()) {
    if (m_language) {
      m_language->Append(wxString::FromUTF8(language_info::get_localized_name(it.current())));
    }
  }
  const language_info::language_t language = m_work_data.get_selected_language();
  // The language's value is the list's index; past the end nothing is selected.
  const auto index = static_cast<int>(language);
  if (m_language && index < static_cast<int>(m_language->GetCount())) {
    m_language->SetSelection(index);
  }
  if (m_language_text) {
    m_language_text->SetLabel(wxString::FromUTF8(language_info::get_localized_name(language)));
  }
  update_state_for_language(language);
}

void editor_pp_t::update_shown_controls() {
  const bool choose_language = (m_show_flags & show_language_list) && !(m_show_flags & show_language_text);
  const auto show = [](wxWindow* window, bool shown) {
    if (window) {
      window->Show(shown);
    }
  };
  show(m_language_gap, choose_language);
  show(m_language, choose_language);
  show(m_language_text, !choose_language);
  show(m_default, (m_show_flags & show_default) != 0);
  show(m_info_text, (m_show_flags & show_info) != 0);
  show(m_static_text_cmd_line, false);
  show(m_command_line, false);
  Layout();
}

// A control that the layout lacks is skipped; without the list there is nothing to show.
void editor_pp_t::update_state_for_language(language_info::language_t language) {
  if (!m_editor_list) {
    return;
  }
  m_updating_list = true;
  m_editor_list->Clear();
  set_default_tick(false);
  if (m_command_line) {
    m_command_line->ChangeValue("");
    m_command_line->Enable(false);
  }
  if (m_info_text) {
    m_info_text->SetLabel(no_info);
  }
  const std::string selected = m_work_data.get_selected_editor_name(language);
  const std::string default_name = m_work_data.get_default_editor_name(language);
  const std::string system_default = m_work_data.get_system_default_editor_name(language);
  int selected_position = -1;
  int default_position = -1;
  wxArrayString texts;
  for (auto it = m_work_data.get_editors(language); !it.at_end(); it.next()) {
    const korvat2::system_editor_t editor = it.current();
    const int position = static_cast<int>(texts.size());
    texts.Add(wxString::FromUTF8(editor.display_name +
                                 (editor.name == system_default ? system_default_suffix : "")));
    selected_position = editor.name == selected ? position : selected_position;
    default_position = editor.name == default_name ? position : default_position;
  }
  const bool has_editors = !texts.empty();
  texts.Add(wxString::FromUTF8(browse_editor_display_name));
  m_editor_list->Set(texts);
  if (has_editors) {
    const int position = selected_position >= 0 ? selected_position : 0;
    m_editor_list->SetSelection(position);
    set_default_tick(position == default_position);
    show_selected_editor(language, get_selected_editor_name());
  }
  m_updating_list = false;
}

// Writes the selection back and shows the editor's arguments and info line.
void editor_pp_t::show_selected_editor(language_info::language_t language, const std::string& name) {
  m_work_data.set_selected_editor_name(language, name);
  const korvat2::system_editor_t editor = m_work_data.get_editor(language, name);
  if (m_command_line) {
    m_command_line->ChangeValue(wxString::FromUTF8(get_cmd_line_args(editor)));
    m_command_line->Enable(!editor.executable.empty());
  }
  fill_info_message(language, editor);
}

void editor_pp_t::set_default_tick(bool ticked) {
  if (m_default) {
    m_default->SetValue(ticked);
  }
}

std::string editor_pp_t::get_selected_editor_name() const {
  if (!m_editor_list || m_editor_list->IsEmpty()) {
    return "";
  }
  std::string text = m_editor_list->GetStringSelection().utf8_string();
  if (text == browse_editor_display_name) {
    return "";
  }
  if (ends_with(text, system_default_suffix)) {
    text.erase(text.size() - system_default_suffix.size());
  }
  for (auto it = m_work_data.get_editors(m_work_data.get_selected_language()); !it.at_end(); it.next()) {
    if (it.current().display_name == text) {
      return it.current().name;
    }
  }
  return "";
}

std::string editor_pp_t::get_cmd_line_args(const korvat2::system_editor_t& editor) const {
  if (editor.executable.empty() && editor.command_line.empty()) {
    return "";
  }
  if (editor.command_line.compare(0, editor.executable.size(), editor.executable) != 0) {
    ZANDOR_ASSERT(false);
    return "";
  }
  const std::string args = editor.command_line.substr(editor.executable.size());
  const std::size_t start = args.find_first_not_of(" \n\r\t");
  return start == std::string::npos ? "" : args.substr(start);
}

void editor_pp_t::on_language_changed(wxCommandEvent&) {
  if (!m_language) {
    return;
  }
  const language_info::language_t language =
      language_info::get_language_by_name(m_language->GetStringSelection().utf8_string());
  m_work_data.set_selected_language(language);
  update_state_for_language(language);
}

void editor_pp_t::on_editor_list_clicked(wxCommandEvent&) {
  if (m_updating_list || !m_editor_list) {
    return;
  }
  const language_info::language_t language = m_work_data.get_selected_language();
  if (m_editor_list->GetStringSelection().utf8_string() == browse_editor_display_name) {
    browse_for_editor(language);
  }
  const std::string sel_edt_name = get_selected_editor_name();
  ZANDOR_ASSERT(!sel_edt_name.empty());
  show_selected_editor(language, sel_edt_name);
  set_default_tick(sel_edt_name == m_work_data.get_default_editor_name(language));
}

// Adds the program that the user picks as a custom editor, numbering its name when the
// language has it already; true when one was added.
bool editor_pp_t::browse_for_editor(language_info::language_t language) {
  const int browse_position = static_cast<int>(m_editor_list->GetCount()) - 1;
  wxFileDialog dialog(this, wxString::FromUTF8(translate("pref.editor.open_editor_dlg")),
                      wxString::FromUTF8(korvat2::stdpaths::get_working_dir().as_string(false)), "", "*",
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  bool added = false;
  if (dialog.ShowModal() == wxID_OK) {
    const std::string path = dialog.GetPath().utf8_string();
    const std::string leaf = korvat2::path_t(path).get_leaf();
    for (int number = 1; number <= max_same_leaf && !added; ++number) {
      const std::string candidate = name_for_number(leaf, number);
      added = m_work_data.add_editor(language, korvat2::system_editor_t{candidate, candidate, path, path});
      if (added) {
        m_editor_list->Insert(wxString::FromUTF8(candidate), static_cast<unsigned>(browse_position));
        m_editor_list->SetSelection(browse_position);
      }
    }
    if (!added) {
      wxMessageBox(wxString::FromUTF8(translate("pref.editor.custom_editors_limit_exceeded")),
                   wxString::FromUTF8(translate("pref.editor.warning")), wxOK | wxCENTRE | wxICON_INFORMATION,
                   this);
    }
  }
  if (!added && browse_position > 0) {
    m_editor_list->SetSelection(browse_position - 1);
  }
  return added;
}

void editor_pp_t::on_set_as_default(wxCommandEvent&) {
  // Unticking sets the default just as ticking does: the page can't clear a default.
  m_work_data.set_default_editor_name(m_work_data.get_selected_language(), get_selected_editor_name());
}

void editor_pp_t::on_cmd_line_edit(wxCommandEvent&) {
  if (!m_command_line) {
    return;
  }
  const language_info::language_t language = m_work_data.get_selected_language();
  const std::string name = get_selected_editor_name();
  korvat2::system_editor_t editor = m_work_data.get_editor(language, name);
  editor.command_line = editor.executable + " " + m_command_line->GetValue().utf8_string();
  m_work_data.set_editor(language, name, editor);
  fill_info_message(language, editor);
}

void editor_pp_t::fill_info_message(language_info::language_t language,
                                    const korvat2::system_editor_t& editor) {
  if (!m_info_text) {
    return;
  }
  // A found editor needs no words: the line stays empty.
  if (!editor.command_line.empty()) {
    m_info_text->SetLabel(no_info);
    return;
  }
  const char* key = nullptr;
  switch (m_work_data.get_editor_type(language, editor.name)) {
    case editor_data_t::editor_type_system: key = "pref.editor.editor_not_found_system"; break;
    case editor_data_t::editor_type_env_var: key = "pref.editor.editor_not_found_env_var"; break;
    case editor_data_t::editor_type_custom: key = "pref.editor.editor_not_found_custom"; break;
    default:
      ZANDOR_ASSERT(false);
      m_info_text->SetLabel(no_info);
      return;
  }
  m_info_text->SetLabel(wxString::FromUTF8(translate(key)));
  m_info_text->Wrap(GetClientSize().GetWidth() - 10);
  Layout();
}

}  // namespace tamsel3
