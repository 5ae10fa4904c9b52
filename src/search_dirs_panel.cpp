#include <tamsel3/char_rules.h>
#include <tamsel3/common_dialogs.h>
#include <tamsel3/message_window.h>
#include <tamsel3/resource.h>
#include <tamsel3/search_dirs_panel.h>
#include <tamsel3/text_helpers.h>

#include <a11y/native.h>
#include <ombrelc/ombrelc.h>
#include <plaxi1/image_loader.h>
#include <plaxi1/placement.h>

#include <wx/bmpbuttn.h>
#include <wx/combobox.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>
#include <boost/algorithm/string/trim.hpp>

#include <utility>

namespace tamsel3 {
namespace {

using ombrelpropgrid2::IPropItem;
using property_t = ombrelpropgrid2::Property<std::string>;

template <class Control>
Control* find_control(wxWindow* root, const char* name) {
  return dynamic_cast<Control*>(root->FindWindow(wxXmlResource::GetXRCID(name)));
}

std::string translate(const char* key) { return translate_message(key, {}); }

std::int32_t status_of(const path_info_t& path) { return path.is_exists() ? 0 : 1; }

// The three button pictures are read once and shared by every panel of the process.
void set_button_bitmap(wxBitmapButton* button, const plaxi1::image_loader_t& loader, const char* name,
                       wxBitmap& kept) {
  if (!kept.IsOk()) {
    kept = loader.load_static_picture(name).getBitmap(true);
  }
  if (button && kept.IsOk()) {
    button->SetBitmapLabel(kept);
  }
}

}  // namespace

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(search_dirs_panel_t, pref_base_t)
  EVT_COMBOBOX(XRCID("m_comboBox4"), search_dirs_panel_t::on_file_type_changed)
  EVT_BUTTON(XRCID("m_bpButton1"), search_dirs_panel_t::on_button_up)
  EVT_BUTTON(XRCID("m_bpButton2"), search_dirs_panel_t::on_button_down)
  EVT_BUTTON(XRCID("m_bpButton3"), search_dirs_panel_t::on_button_remove)
  EVT_SIZE(search_dirs_panel_t::on_resize)
wxEND_EVENT_TABLE()

search_dirs_panel_t::search_dirs_panel_t(container_ptr_t container, bool add_flag)
    : m_container(std::move(container)), m_add_flag(add_flag) {
  m_current_dirs = &m_dirs[file_type_2];
  m_object_name = "panel.search_dir";
}

search_dirs_panel_t::~search_dirs_panel_t() = default;

ombrelpropgrid2::CHALLINGrid* search_dirs_panel_t::grid() const {
  return m_grid ? m_grid->GetTypedContent() : nullptr;
}

ombrelpropgrid2::HALLINGridModel* search_dirs_panel_t::model() const {
  return grid() ? grid()->GetGridModel() : nullptr;
}

void search_dirs_panel_t::emit_changed() {
  if (model()) {
    model()->changed();
  }
}

wxSize search_dirs_panel_t::GetMinSize() const {
  return GetSizer() ? GetSizer()->GetMinSize() : wxPanel::GetMinSize();
}

void search_dirs_panel_t::on_init_dialog() {
  m_panel8 = FindWindow(wxXmlResource::GetXRCID("m_panel8"));
  m_staticText211 = FindWindow(wxXmlResource::GetXRCID("m_staticText211"));
  m_bpButton1 = find_control<wxBitmapButton>(this, "m_bpButton1");
  m_bpButton2 = find_control<wxBitmapButton>(this, "m_bpButton2");
  m_bpButton3 = find_control<wxBitmapButton>(this, "m_bpButton3");
  // The buttons show pictures only: screen readers read their tooltips.
  for (wxWindow* button : {m_bpButton1, m_bpButton2, m_bpButton3}) {
    a11y::name_from_tooltip(button);
  }
  m_comboBox4 = find_control<wxComboBox>(this, "m_comboBox4");
  build_grid();
  load_messages();
  set_grid_headers();
  plaxi1::place_centred(this);
  load_settings();
  fill_controls();
}

void search_dirs_panel_t::build_grid() {
  if (!m_panel8) {
    return;
  }
  m_panel8->SetWindowStyleFlag(wxBORDER_SUNKEN);
  m_sys_window = ombrelc7::CreateWrapperForWx(m_panel8);
  // The grid's editors are native children over the control, and it takes every key.
  m_sys_window->m_clip_children = true;
  m_sys_window->SetKeyboardMode(1);
  m_sys_window->Setup();
  m_grid = new grid_control_t(m_sys_window, ombrelc7::size<int>(40, 40), ombrelc7::alClient);
  grid()->SetAccessibleName(translate_message("a11y.search_dirs.table", {}));
  const ombrelc7::size<int> area = m_sys_window->GetClientSize();
  if (area.cx > 0 && area.cy > 0) {
    m_grid->Rearrange();
  }
  // The tick column stays on: it is the recursive flag.
  grid()->more_clicked.connect(this, &search_dirs_panel_t::on_more_button_clicked);
  emit_changed();
}

void search_dirs_panel_t::load_messages() {
  m_dirs_header = translate("panel.search_dirs.dirs");
  m_recursive_header = translate("panel.search_dirs.resursive");
  m_last_line_text = translate("panel.search_dirs.last_line");
  m_dir_tooltip =
      get_disabled_tooltip_text(translate("directory_symbols_message"), directory_disabled_chars, false);
  m_not_a_dir_details = translate("panel.search_dirs.details_not_a_dir");
}

void search_dirs_panel_t::set_grid_headers() {
  if (m_dirs_header.empty() || m_recursive_header.empty() || !model()) {
    return;
  }
  model()->SetColumnCaptions(m_dirs_header, m_recursive_header);
  ombrelgrid8::IResizingModel* resizing = grid()->createResizingModel();
  grid()->KeepResizingModel(resizing);
  grid()->SetResizingModel(resizing);
  grid()->UpdateHeadersWidths();
}

void search_dirs_panel_t::load_images() {
  const plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return;
  }
  static auto* const up = new wxBitmap;
  static auto* const down = new wxBitmap;
  static auto* const cross = new wxBitmap;
  set_button_bitmap(m_bpButton1, loader, "up", *up);
  set_button_bitmap(m_bpButton2, loader, "down", *down);
  set_button_bitmap(m_bpButton3, loader, "cross", *cross);
}

void search_dirs_panel_t::fill_controls() {
  load_images();
  if (m_comboBox4) {
    m_comboBox4->SetSelection(m_file_type);
  }
  if (grid()) {
    for (auto* editor : {&grid()->GetLinePropertyEditor(), &grid()->GetMorePropertyEditor()}) {
      editor->m_restricted_symbols = directory_disabled_chars;
      editor->m_tooltip_text = m_dir_tooltip;
    }
  }
  fill_grid();
}

void search_dirs_panel_t::load_settings() { get_data(); }

void search_dirs_panel_t::get_data() {
  if (!m_container.get()) {
    return;
  }
  for (int category = HALLIN_2_13::first_search_category; category <= HALLIN_2_13::last_search_category;
       ++category) {
    const auto type = static_cast<file_type_t>(category - 1);
    add_dirs(m_container->get_iterator(static_cast<HALLIN_2_13::search_category_t>(category)), type,
             &m_dirs[type]);
  }
}

void search_dirs_panel_t::add_dirs(const HALLIN_2_13::ObjectPtr<HALLIN_2_13::ISearchDirIterator>& iterator,
                                   file_type_t type, std::vector<dir_info_t>* dirs) {
  if (!iterator.get()) {
    return;
  }
  iterator->reset();
  do {
    const char* text = nullptr;
    bool recursive = false;
    if (iterator->get(&text, &recursive, nullptr)) {
      dir_info_t dir;
      dir.m_path = path_info_t(std::string(text ? text : ""));
      dir.m_recursive = recursive;
      dir.m_type = type;
      dir.m_status = status_of(dir.m_path);
      dirs->push_back(dir);
    }
  } while (iterator->next());
}

void search_dirs_panel_t::fill_grid() {
  if (!grid()) {
    return;
  }
  grid()->ClearRows();
  for (const dir_info_t& dir : *m_current_dirs) {
    grid()->AppendRow(dir.m_path.as_string(), m_edit_type,
                      dir.m_recursive ? ombrelpropgrid2::csTicked : ombrelpropgrid2::csClear);
  }
  grid()->FinishFill(m_last_line_text);
}

void search_dirs_panel_t::fill_dirs() {
  m_current_dirs->clear();
  const int rows = model() ? model()->GetRowCount() - 1 : -1;
  bool warned = false;
  for (int row = 0; row < rows; ++row) {
    IPropItem* item = model()->getPropertyByRow(row);
    if (!item) {
      continue;
    }
    const int checked = item->GetChecked();
    const std::string text = boost::algorithm::trim_right_copy(item->GetStringValue());
    const path_info_t path(text);
    if (!path.is_ok()) {
      // One box a pass: later rows without an absolute path go without a word.
      if (!warned) {
        warned = true;
        show_warn_msg_box(m_not_a_dir_details + "\n\n" + text);
      }
      continue;
    }
    dir_info_t dir;
    dir.m_path = path;
    dir.m_recursive = checked == ombrelpropgrid2::csTicked;
    dir.m_type = m_file_type;
    dir.m_status = status_of(path);
    m_current_dirs->push_back(dir);
  }
  emit_changed();
}

void search_dirs_panel_t::show_warn_msg_box(const std::string& details) {
  show_msg_box(translate("panel.search_dirs.main_not_a_dir"), details, message_window_t::icon_warning,
               nullptr);
}

void search_dirs_panel_t::on_file_type_changed(wxCommandEvent&) {
  if (grid()) {
    grid()->SaveEditorsData();
  }
  const int selection = m_comboBox4 ? m_comboBox4->GetSelection() : m_file_type;
  if (selection == m_file_type) {
    return;
  }
  fill_dirs();
  if (grid()) {
    grid()->ClearRows();
  }
  if (selection >= file_type_0 && selection <= file_type_3) {
    m_file_type = static_cast<file_type_t>(selection);
    m_current_dirs = &m_dirs[m_file_type];
  }
  fill_grid();
  m_file_type_signal(m_file_type);
}

bool search_dirs_panel_t::save_dirs() {
  if (grid()) {
    grid()->SaveEditorsData();
  }
  fill_dirs();
  const bool result = set_data();
  fill_grid();
  emit_changed();
  return result;
}

bool search_dirs_panel_t::set_data() {
  if (!m_container.get()) {
    return true;
  }
  for (int category = HALLIN_2_13::first_search_category; category <= HALLIN_2_13::last_search_category;
       ++category) {
    if (!fill_dirs_by_type(static_cast<HALLIN_2_13::search_category_t>(category), &m_dirs[category - 1])) {
      return false;
    }
  }
  return true;
}

bool search_dirs_panel_t::fill_dirs_by_type(HALLIN_2_13::search_category_t category,
                                            std::vector<dir_info_t>* dirs) {
  m_container->clear_category(category);
  // Only the answer for the last directory counts.
  bool result = true;
  for (const dir_info_t& dir : *dirs) {
    result =
        m_container->add_search_dir(category, dir.m_path.as_string().c_str(), dir.m_recursive, m_add_flag);
  }
  if (!result) {
    show_msg_box(translate("panel.search_dirs.cannot_save"),
                 translate("panel.search_dirs.cannot_save_details"), message_window_t::icon_error, this);
  }
  return result;
}

void search_dirs_panel_t::on_more_button_clicked(ombrelpropgrid2::click_data_t click) {
  auto* item = dynamic_cast<property_t*>(click.item);
  if (!item) {
    return;
  }
  std::string path = item->GetValue();
  if (!folder_dlg(this, path, "")) {
    return;
  }
  if (!path.empty()) {
    item->SetValue(path);
    if (item->GetEditor()) {
      item->GetEditor()->SetEditorText(path);
    }
    item->value_changed(item);
  }
  emit_changed();
}

void search_dirs_panel_t::on_button_up(wxCommandEvent&) {
  if (grid()) {
    grid()->MoveRowUp();
  }
}

void search_dirs_panel_t::on_button_down(wxCommandEvent&) {
  if (grid()) {
    grid()->MoveRowDown();
  }
}

void search_dirs_panel_t::on_button_remove(wxCommandEvent&) {
  if (grid()) {
    grid()->RemoveRow(grid()->GetCurrentRow());
  }
}

void search_dirs_panel_t::on_dir_updated(int row, const std::string& value) {
  const path_info_t path(value);
  dir_info_t& dir = (*m_current_dirs)[row];
  if (path.as_string() != dir.m_path.as_string()) {
    dir.m_status = status_of(path);
  }
}

void search_dirs_panel_t::on_resize(wxSizeEvent&) {
  Layout();
  Refresh();
}

}  // namespace tamsel3
