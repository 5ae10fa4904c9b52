// A host's dialog of source search directories on the directory grid: a tick per row for
// "search the subfolders too", the up, down and remove buttons beside it, and one row open
// in its editor with the "..." button that browses for a folder.
#include "entries.h"

#include <a11y/native.h>
#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelgrid/ombrelgrid.h>
#include <plaxi1/screenshot.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/char_rules.h>

#include <wx/artprov.h>
#include <wx/bmpbuttn.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <string>
#include <utility>
#include <vector>

namespace gallery {
namespace {

using directory_grid_t = ombrelpropgrid2::CHALLINGrid;
using grid_control_t = ombrelcfrw7::CBaseControlTmpl<directory_grid_t>;

struct directory_t {
  const char* text;
  bool recursive;
};

const directory_t source_directories[] = {
    {"/home/ana/projects/render/src", true},
    {"/home/ana/projects/render/third_party/zlib", false},
    {"/usr/include/*", false},
    {"/opt/qt6/include", true},
    {"/home/ana/projects/scene/src", true},
};

// The row that the picture shows under edit.
constexpr int edited_row = 3;
constexpr int dialog_width = 620;

class search_directories_dialog_t : public wxDialog {
 public:
  explicit search_directories_dialog_t(wxWindow* parent)
      : wxDialog(parent, wxID_ANY, "Search Directories", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    const int gap = plaxi1::ui_settings_t::get()->get_metric(plaxi1::metric_margin);
    auto* page = new wxBoxSizer(wxVERTICAL);
    page->Add(file_type_row(), 0, wxEXPAND | wxBOTTOM, gap);
    auto* description = new wxStaticText(this, wxID_ANY,
                                         "Folders searched for the source files of a result, in this "
                                         "order. Tick a folder to search its subfolders too.");
    description->Wrap(FromDIP(dialog_width) - 2 * gap);
    page->Add(description, 0, wxBOTTOM, gap / 2);
    auto* list = new wxBoxSizer(wxHORIZONTAL);
    list->Add(make_grid(), 1, wxEXPAND | wxRIGHT, gap / 2);
    list->Add(command_buttons(), 0);
    page->Add(list, 1, wxEXPAND);

    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(page, 1, wxEXPAND | wxALL, gap);
    all->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
    SetSizer(all);
    SetClientSize(FromDIP(wxSize(dialog_width, 400)));
    SetMinSize(FromDIP(wxSize(460, 300)));
  }

  directory_grid_t* grid() const { return m_control->GetTypedContent(); }

  // Opens the editor of `row`, as a click on the current row does.
  void edit_row(int row) {
    grid()->SetCurrentRow(row);
    grid()->EditCurrentRow();
  }

 private:
  wxSizer* file_type_row() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, "File type:"), 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 8);
    const wxString types[] = {"Binary and symbol files", "Source files", "Include files", "Libraries"};
    auto* choice = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 4, types);
    choice->SetSelection(1);
    row->Add(choice, 0);
    return row;
  }

  // The grid in a sunken host window, its columns split three quarters to one.
  wxWindow* make_grid() {
    m_host = new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_SUNKEN);
    m_control = new grid_control_t(ombrelc7::CreateWrapperForWx(m_host), ombrelc7::size<int>(40, 40),
                                   ombrelc7::alClient);
    directory_grid_t* const grid = this->grid();
    grid->SetAccessibleName("Folders searched");
    for (ombrelpropgrid2::LinePropertyEditor<std::string>* editor :
         {&grid->GetLinePropertyEditor(), &grid->GetMorePropertyEditor()}) {
      editor->m_restricted_symbols = tamsel3::directory_disabled_chars;
      editor->m_tooltip_text = "A folder name can't hold these characters: \" < > |";
    }
    ombrelpropgrid2::HALLINGridModel* const model = grid->GetGridModel();
    model->SetColumnCaptions("Folder", "Include subfolders");
    grid->KeepResizingModel(grid->createResizingModel());
    grid->UpdateHeadersWidths();
    fill(grid);
    m_host->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
      event.Skip();
      split_columns();
    });
    return m_host;
  }

  // The grid splits the columns' summed width three to one: make that sum the width of the
  // grid, so that paths get the room and no column is left blank at the right.
  void split_columns() {
    ombrelgrid8::CGridHeader* const header = grid()->GetViewer()->GetHeader();
    const int width = m_host->GetClientSize().GetWidth();
    if (header->GetColumnCount() == 2 && width > header->GetColumnWidth(1)) {
      header->SetColumnWidth(0, width - header->GetColumnWidth(1));
      grid()->UpdateHeadersWidths();
    }
  }

  static void fill(directory_grid_t* grid) {
    grid->ClearRows();
    for (const directory_t& directory : source_directories) {
      grid->AppendRow(directory.text, ombrelpropgrid2::etMore,
                      directory.recursive ? ombrelpropgrid2::csTicked : ombrelpropgrid2::csClear);
    }
    grid->FinishFill("Type a folder or click \"...\"");
  }

  wxSizer* command_buttons() {
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    const std::pair<const char*, const char*> kinds[] = {
        {wxART_GO_UP, "Move up"}, {wxART_GO_DOWN, "Move down"}, {wxART_DELETE, "Remove"}};
    for (const auto& [art, tip] : kinds) {
      auto* button = new wxBitmapButton(this, wxID_ANY, wxArtProvider::GetBitmapBundle(art, wxART_BUTTON));
      // Pictures only, as the library's own panel: screen readers read the tooltips.
      button->SetToolTip(tip);
      a11y::name_from_tooltip(button);
      buttons->Add(button, 0, wxBOTTOM, 4);
    }
    return buttons;
  }

  wxWindow* m_host = nullptr;
  grid_control_t* m_control = nullptr;
};

}  // namespace

std::vector<entry_t> directory_grid_entries() {
  return {{"directory_grid_editing", "Directory grid: a row under edit",
           "Source search directories on the directory grid: a tick per folder for its subfolders, "
           "the empty last line that takes a new folder, and the row of /opt/qt6/include open in "
           "its editor with the \"...\" button that browses for a folder.",
           [](wxWindow* parent) {
             search_directories_dialog_t dialog(parent);
             dialog.CallAfter([&dialog] { dialog.edit_row(edited_row); });
             dialog.ShowModal();
           },
           [](wxWindow* parent) -> wxTopLevelWindow* {
             auto* dialog = new search_directories_dialog_t(parent);
             dialog->Show();
             plaxi1::wait_until_painted(dialog, 5000);
             dialog->edit_row(edited_row);
             plaxi1::wait_until_painted(dialog, 5000);
             return dialog;
           }}};
}

}  // namespace gallery
