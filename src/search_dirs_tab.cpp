#include <tamsel3/caption_panel.h>
#include <tamsel3/char_rules.h>
#include <tamsel3/common_dialogs.h>
#include <tamsel3/message_window.h>
#include <tamsel3/resource.h>
#include <tamsel3/search_dirs_tab.h>
#include <tamsel3/text_helpers.h>

#include <a11y/native.h>
#include <korvat2/path.h>
#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelpropgrid2/base_grid.h>
#include <plaxi1/image_loader.h>
#include <quern2/catalog_registry.h>

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>
#include <locale>
#include <utility>

namespace tamsel3 {
namespace {

using ombrelpropgrid2::IPropItem;
using ZANDOR_2_16::generic::varg_list;

varg_list dir_args(const std::string& dir) { return varg_list(ZANDOR_2_16::generic::argument("dir", dir)); }

std::string trim_right(std::string text) {
  const std::locale locale;
  while (!text.empty() && std::isspace(text.back(), locale)) {
    text.pop_back();
  }
  return text;
}

template <class Control>
Control* find_control(wxWindow* root, const char* name) {
  return dynamic_cast<Control*>(root->FindWindow(wxXmlResource::GetXRCID(name)));
}

bool is_merged(HALLIN_2_13::search_category_t category) {
  return category == HALLIN_2_13::search_category_binaries ||
         category == HALLIN_2_13::search_category_symbols;
}

}  // namespace

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(search_dirs_tab_t, pref_base_t)
  EVT_BUTTON(XRCID("m_bpButton1"), search_dirs_tab_t::on_button_up)
  EVT_BUTTON(XRCID("m_bpButton2"), search_dirs_tab_t::on_button_down)
  EVT_BUTTON(XRCID("m_bpButton3"), search_dirs_tab_t::on_button_remove)
  EVT_SIZE(search_dirs_tab_t::on_resize)
wxEND_EVENT_TABLE()

search_dirs_tab_t::search_dirs_tab_t(container_ptr_t container, HALLIN_2_13::search_category_t category)
    : m_container(std::move(container)), m_category(category) {
  m_object_name = "panel.search_dir_tab";
}

// The grid control and the wrapper go with their window.
search_dirs_tab_t::~search_dirs_tab_t() = default;

ombrelpropgrid2::CHALLINGrid* search_dirs_tab_t::grid() const {
  return m_grid ? m_grid->GetTypedContent() : nullptr;
}

int search_dirs_tab_t::dir_row_count() const {
  const auto* model = grid() ? grid()->GetGridModel() : nullptr;
  return model ? model->GetRowCount() - 1 : -1;
}

void search_dirs_tab_t::emit_changed() const {
  if (grid() && grid()->GetGridModel()) {
    grid()->GetGridModel()->changed();
  }
}

// ---- building ------------------------------------------------------------------------

void search_dirs_tab_t::on_init_dialog() {
  m_panel4 = FindWindow(wxXmlResource::GetXRCID("m_panel4"));
  m_panel8 = FindWindow(wxXmlResource::GetXRCID("m_panel8"));
  m_panel8->Hide();
  m_bpButton1 = find_control<wxBitmapButton>(this, "m_bpButton1");
  m_bpButton2 = find_control<wxBitmapButton>(this, "m_bpButton2");
  m_bpButton3 = find_control<wxBitmapButton>(this, "m_bpButton3");
  // The buttons show pictures only: screen readers read their tooltips.
  for (wxWindow* button : {m_bpButton1, m_bpButton2, m_bpButton3}) {
    a11y::name_from_tooltip(button);
  }
  build_grid();
  grid()->enableCheckboxColumn(false);
  grid()->row_added.connect(this, &search_dirs_tab_t::on_dir_updated);
  grid()->editing_finished.connect(this, &search_dirs_tab_t::on_editing_finished);
  grid()->more_clicked.connect(this, &search_dirs_tab_t::on_more_button_clicked);
  emit_changed();
  build_caption_panel();
  load_messages();
  set_grid_headers();
  load_settings();
  fill_controls();
  Layout();
  m_panel8->Show();
  m_caption_panel->Show();
  Refresh();
  Update();
}

void search_dirs_tab_t::build_grid() {
  m_panel8->SetWindowStyleFlag(wxBORDER_SUNKEN);
  m_sys_window = ombrelc7::CreateWrapperForWx(m_panel8);
  // The grid's edit boxes are native children of the host window.
  m_sys_window->m_clip_children = true;
  m_sys_window->SetKeyboardMode(1);
  m_sys_window->Setup();
  m_grid = new grid_control_t(m_sys_window, ombrelc7::size<int>(40, 40), ombrelc7::alClient);
  grid()->SetAccessibleName(translate_message("a11y.search_dirs.table", {}));
  m_grid->SetContent(m_grid->GetTypedContent());
  const ombrelc7::size<int> client = m_sys_window->GetClientSize();
  if (client.cx > 0 && client.cy > 0) {
    m_grid->Rearrange();
  }
}

void search_dirs_tab_t::build_caption_panel() {
  const bool sources = m_category == HALLIN_2_13::search_category_sources;
  const varg_list none;
  m_caption_panel = new caption_panel_t(
      this,
      translate_message(sources ? "caption_panel.search_dirs.src.title" : "caption_panel.search_dirs.title",
                        none),
      translate_message(sources ? "caption_panel.search_dirs.src.text" : "caption_panel.search_dirs.text",
                        none));
  m_caption_panel->Hide();
  if (wxSizer* sizer = m_panel4->GetContainingSizer()) {
    sizer->Replace(m_panel4, m_caption_panel, false);
  }
}

void search_dirs_tab_t::load_messages() {
  const varg_list none;
  m_dirs_header = translate_message("panel.search_dirs.dirs", none);
  m_last_line_text = translate_message("panel.search_dirs.last_line_tab", none);
  m_dir_tooltip = get_disabled_tooltip_text(translate_message("directory_symbols_message", none),
                                            directory_disabled_chars, false);
}

void search_dirs_tab_t::set_grid_headers() {
  auto* model = grid() ? grid()->GetGridModel() : nullptr;
  if (m_dirs_header.empty() || !model) {
    return;
  }
  model->SetColumnCaptions(m_dirs_header, std::string());
  ombrelgrid8::IResizingModel* resizing = grid()->createResizingModel();
  grid()->KeepResizingModel(resizing);
  grid()->SetResizingModel(resizing);
  grid()->UpdateHeadersWidths();
}

void search_dirs_tab_t::load_images() {
  const plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return;
  }
  // Shared by every tab of the process.
  static const wxBitmap up = loader.load_static_picture("up").getBitmap(true);
  static const wxBitmap down = loader.load_static_picture("down").getBitmap(true);
  static const wxBitmap cross = loader.load_static_picture("cross").getBitmap(true);
  m_bpButton1->SetBitmapLabel(up);
  m_bpButton2->SetBitmapLabel(down);
  m_bpButton3->SetBitmapLabel(cross);
}

void search_dirs_tab_t::fill_controls() {
  load_images();
  for (auto* editor : {&grid()->GetLinePropertyEditor(), &grid()->GetMorePropertyEditor()}) {
    editor->m_restricted_symbols = directory_disabled_chars;
    editor->m_tooltip_text = m_dir_tooltip;
  }
  fill_grid();
}

// ---- reading -------------------------------------------------------------------------

void search_dirs_tab_t::load_settings() {
  if (!m_container) {
    return;
  }
  if (is_merged(m_category)) {
    read_merged_categories();
  } else {
    add_dirs(m_container->get_iterator(m_category), m_dirs);
  }
}

void search_dirs_tab_t::read_merged_categories() {
  add_dirs(m_container->get_iterator(HALLIN_2_13::search_category_binaries), m_dirs);
  iterator_ptr_t symbols = m_container->get_iterator(HALLIN_2_13::search_category_symbols);
  if (!symbols) {
    return;
  }
  symbols->reset();
  do {
    const char* text = nullptr;
    bool known = false;
    if (symbols->get(&text, nullptr, nullptr) && text) {
      for (const dir_info_t& dir : m_dirs) {
        known = known || dir.m_dir.as_string() == text;
      }
    }
    if (!known) {
      add_dir(symbols, m_dirs);
    }
  } while (symbols->next());
}

void search_dirs_tab_t::add_dirs(const iterator_ptr_t& iterator, std::vector<dir_info_t>& dirs) {
  if (!iterator) {
    return;
  }
  iterator->reset();
  do {
    add_dir(iterator, dirs);  // the first runs on an empty walk too: get then fails
  } while (iterator->next());
}

void search_dirs_tab_t::add_dir(const iterator_ptr_t& iterator, std::vector<dir_info_t>& dirs) {
  const char* text = nullptr;
  bool recursive = false;
  bool other = false;
  if (!iterator || !iterator->get(&text, &recursive, &other) || !text) {
    return;
  }
  dir_info_t info;
  info.m_dir = path_info_t(std::string(text));
  info.m_status = info.m_dir.is_exists() ? 0 : 1;
  dirs.push_back(info);
}

// ---- showing and validating ----------------------------------------------------------

void search_dirs_tab_t::fill_grid() {
  ombrelpropgrid2::CHALLINGrid* g = grid();
  if (!g) {
    return;
  }
  // The old rows go only after the new ones exist: a rebuilt row must never get the
  // address of a gone row's item, which may still key a message.
  const int old_rows = dir_row_count();
  for (const dir_info_t& dir : m_dirs) {
    g->AppendRow(dir.m_dir.as_string(), ombrelpropgrid2::etMore);
    validate_dir(dir.m_dir, dir_row_count() - 1);
  }
  g->DropFirstRows(old_rows);
  g->FinishFill(m_last_line_text);
}

bool search_dirs_tab_t::validate_dir(const path_info_t& dir, int row) {
  const char* key = nullptr;
  if (!dir.is_ok() || !dir.is_exists()) {
    key = "panel.search_dirs.error_dir_nonexistent";
  } else if (dir.is_file()) {
    key = "panel.search_dirs.error_not_a_dir";
  }
  if (key) {
    push_message(translate_message(key, dir_args(dir.as_string())), row);
    return false;
  }
  return dir.is_exists();
}

void search_dirs_tab_t::push_message(const std::string& text, int row) {
  if (m_dir_error_mode <= 0 || !m_caption_panel) {
    return;
  }
  const auto* model = grid() ? grid()->GetGridModel() : nullptr;
  IPropItem* item = model ? model->getPropertyByRow(row) : nullptr;
  int id = 0;
  const auto found = m_messages.find(item);
  if (found != m_messages.end()) {
    id = found->second;
    m_caption_panel->edit_message(id, text);
  } else {
    id = m_caption_panel->add_message(caption_panel_t::severity_warning, text);
    m_messages[item] = id;
  }
  m_caption_panel->show_message(id, false);
}

void search_dirs_tab_t::remove_messages() {
  for (const auto& entry : m_messages) {
    if (m_caption_panel) {
      m_caption_panel->remove_message(entry.second);
    }
  }
  m_messages.clear();
}

std::string search_dirs_tab_t::get_directory_error_msg(int, const std::string& dir) {
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog(m_catalog_name);
  if (!catalog) {
    return std::string();
  }
  return catalog->message("panel.search_dirs.error_dir_nonexistent").as_ustring(dir_args(dir)).str();
}

void search_dirs_tab_t::show_warn_msg_box(const std::string& details) {
  show_msg_box(translate_message("panel.search_dirs.main_not_a_dir", varg_list()), details,
               message_window_t::icon_warning, nullptr);
}

// ---- editing -------------------------------------------------------------------------

void search_dirs_tab_t::on_editing_finished(const std::string& value, int row) {
  if (value.empty() && !m_browsing) {
    remove_row(row);  // emptying a row deletes it
  }
}

void search_dirs_tab_t::on_dir_updated(const std::string& value, int row) {
  if (row == dir_row_count()) {
    return;
  }
  if (!validate_dir(path_info_t(value), row)) {
    return;
  }
  const auto* model = grid() ? grid()->GetGridModel() : nullptr;
  const auto found = m_messages.find(model ? model->getPropertyByRow(row) : nullptr);
  if (found != m_messages.end()) {
    const int id = found->second;
    m_messages.erase(found);
    if (m_caption_panel) {
      m_caption_panel->remove_message(id);
    }
  }
}

void search_dirs_tab_t::on_more_button_clicked(ombrelpropgrid2::click_data_t click) {
  if (!click.item) {
    return;
  }
  std::string path = click.item->GetStringValue();
  const korvat2::path_t branch(korvat2::path_t(path).get_branch());
  if (!branch.is_empty() && branch.is_absolute()) {
    path = branch.as_string(false);  // the dialog opens on the parent of the row's directory
  }
  m_browsing = true;
  if (!folder_dlg(this, path, "")) {
    return;  // m_browsing stays set until a browse ends with a choice
  }
  m_browsing = false;
  if (!path.empty()) {
    auto* property = dynamic_cast<ombrelpropgrid2::Property<std::string>*>(click.item);
    if (!property) {
      return;
    }
    property->SetValue(path);
    if (ombrelpropgrid2::IPropertyEditor* editor = property->GetEditor()) {
      editor->SetEditorText(path);
    }
    property->value_changed(property);
  }
  emit_changed();
  on_dir_updated(path, click.row);
}

void search_dirs_tab_t::on_button_up(wxCommandEvent&) {
  if (grid()) {
    grid()->MoveRowUp();
  }
}

void search_dirs_tab_t::on_button_down(wxCommandEvent&) {
  if (grid()) {
    grid()->MoveRowDown();
  }
}

void search_dirs_tab_t::on_button_remove(wxCommandEvent&) {
  if (grid()) {
    remove_row(grid()->GetCurrentRow());
  }
}

void search_dirs_tab_t::remove_row(int row) {
  const auto* model = grid() ? grid()->GetGridModel() : nullptr;
  if (!model || row >= dir_row_count()) {
    return;  // the last line stays
  }
  const auto found = m_messages.find(model->getPropertyByRow(row));
  if (found != m_messages.end()) {
    if (m_caption_panel) {
      m_caption_panel->remove_message(found->second);
    }
    m_messages.erase(found);
  }
  grid()->RemoveRow(row);
}

// ---- saving --------------------------------------------------------------------------

void search_dirs_tab_t::save_settings() {
  if (grid()) {
    grid()->SaveEditorsData();
  }
  fill_dirs();
  set_data();
  fill_grid();
  emit_changed();
}

void search_dirs_tab_t::fill_dirs() {
  m_dirs.clear();
  const auto* model = grid() ? grid()->GetGridModel() : nullptr;
  bool all_valid = true;
  for (int row = 0; row < dir_row_count(); ++row) {
    IPropItem* item = model->getPropertyByRow(row);
    if (!item) {
      continue;
    }
    const path_info_t dir(trim_right(item->GetStringValue()));
    const bool valid = validate_dir(dir, row);
    all_valid = all_valid && valid;
    if (dir.is_ok()) {
      dir_info_t info;
      info.m_dir = dir;
      info.m_status = valid ? 0 : 1;
      m_dirs.push_back(info);
    }
  }
  if (all_valid) {
    remove_messages();
  }
  emit_changed();
}

bool search_dirs_tab_t::set_data() { return m_container ? fill_container(m_dirs) : false; }

bool search_dirs_tab_t::fill_container(std::vector<dir_info_t>& dirs) {
  if (!m_container) {
    return false;
  }
  std::vector<HALLIN_2_13::search_category_t> categories{m_category};
  if (is_merged(m_category)) {
    categories = {HALLIN_2_13::search_category_binaries, HALLIN_2_13::search_category_symbols};
  }
  for (const HALLIN_2_13::search_category_t category : categories) {
    m_container->clear_category(category);
    for (const dir_info_t& dir : dirs) {
      // Refusals aren't looked at: the container keeps what it takes.
      m_container->add_search_dir(category, dir.m_dir.as_string().c_str(), false, true);
    }
  }
  return true;
}

// ---- size ----------------------------------------------------------------------------

void search_dirs_tab_t::on_resize(wxSizeEvent& event) {
  event.Skip();
  if (m_caption_panel && m_bpButton1) {
    const int caption = m_caption_panel->GetMinSize().GetHeight();
    const int text = get_text_extent(this, "Any text").GetHeight();
    const int button = m_bpButton1->GetSize().GetHeight();
    const int needed = caption + button + 3 * text + 35;
    const wxSize current = GetMinSize();
    if (current.GetHeight() < needed) {
      m_fixed_width = current.GetWidth();
      m_fixed_height = needed;
    }
  }
  Layout();
  Refresh();
}

wxSize search_dirs_tab_t::GetMinSize() const {
  if (wxSizer* sizer = GetSizer()) {
    // The sizer's own width is left out: the grid takes what it is given.
    return wxSize(m_fixed_width, std::max(m_fixed_height, sizer->GetMinSize().GetHeight()));
  }
  return pref_base_t::GetMinSize();
}

}  // namespace tamsel3
