#pragma once
#include <tamsel3/export.h>
#include <tamsel3/path_info.h>
#include <tamsel3/pref_base.h>

#include <HALLIN_2_13/object_ptr.h>
#include <HALLIN_2_13/search_dirs.h>
#include <korvat2/signal.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelgrid/ombrelgrid.h>

#include <cstdint>
#include <string>
#include <vector>

class wxBitmapButton;
class wxComboBox;
class wxCommandEvent;
class wxSizeEvent;

namespace ombrelc7 {
class ISysWindow;
}

namespace tamsel3 {

/// Edits the four categories of a search-directory container at once: a combo box picks
/// the file type, the grid shows its directories with the recursive flag as the tick.
/// Edits of every type are kept in four working lists; only `save_dirs` writes them to the
/// container. GUI thread.
class TAMSEL3_API search_dirs_panel_t : public pref_base_t {
 public:
  /// The combo box's index; the value plus one is the container's category.
  enum file_type_t : std::int32_t { file_type_0 = 0, file_type_1, file_type_2, file_type_3 };

  /// One directory of a working list.
  struct dir_info_t {
    /// The directory line as written.
    path_info_t m_path;
    /// Whether its subfolders are searched too (the tick).
    bool m_recursive = false;
    /// The file type whose list holds it.
    file_type_t m_type = file_type_0;
    std::int32_t m_status = 0;  ///< 0 exists, 1 doesn't, 2 new; informative only
  };

  /// The grid control that shows the directories.
  using grid_control_t = ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>;
  /// The counted container that the panel reads and writes.
  using container_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer>;

  /// `add_flag` is handed on, untouched, to every `add_search_dir`. A null container is
  /// allowed: nothing is read and saving succeeds.
  search_dirs_panel_t(container_ptr_t container, bool add_flag);
  ~search_dirs_panel_t() override;

  /// The size of the panel's contents, so that an owner's sizer gives it room for them.
  wxSize GetMinSize() const override;

  /// Takes the grid back into the shown list and writes all four lists, category 1 to 4,
  /// stopping at the first category whose last directory the container refused (a message
  /// box tells so); the later categories stay as they were. False then.
  virtual bool save_dirs();
  /// Reads the container into the four working lists.
  virtual void load_settings();
  /// Sets the images, the file type's choice and the grid from the working lists.
  virtual void fill_controls();
  /// Shows the warning that a main directory isn't a directory, with `details`; for hosts.
  virtual void show_warn_msg_box(const std::string& details);

  /// Reads the four categories of the container into the working lists; nothing without a container.
  void get_data();
  /// Appends the directories of `iterator` to `dirs` as entries of `type`, each marked as existing or
  /// not.
  void add_dirs(const HALLIN_2_13::ObjectPtr<HALLIN_2_13::ISearchDirIterator>& iterator, file_type_t type,
                std::vector<dir_info_t>* dirs);
  /// Reads the grid's rows into the shown list, warning once about a row that isn't a directory.
  void fill_dirs();
  /// Writes `dirs` into `category` of the container; false when the container refused the last one.
  bool fill_dirs_by_type(HALLIN_2_13::search_category_t category, std::vector<dir_info_t>* dirs);
  /// Writes the four lists into the container, as `save_dirs` tells; true without a container.
  bool set_data();
  /// Shows the shown list in the grid, with the last line that takes a new directory.
  void fill_grid();
  /// Loads the column headers, tooltip and texts from the catalog.
  void load_messages();
  /// Gives the grid its column headers, once the catalog texts and the grid are there.
  void set_grid_headers();
  /// Loads the up, down and remove pictures onto the buttons; nothing without the resource archive.
  void load_images();
  /// Marks entry `row` of the shown list as existing or not when `value` differs from it;
  /// the text isn't changed and `row` isn't checked.
  void on_dir_updated(int row, const std::string& value);
  /// A step left to derived panels; the panel's own does nothing.
  void on_init_panel() {}

  /// The file type shown now.
  file_type_t get_file_type() const { return m_file_type; }
  /// The working list of `type`.
  const std::vector<dir_info_t>& get_dirs(file_type_t type) const { return m_dirs[type]; }
  /// The grid inside the grid control; null before the layout is loaded.
  ombrelpropgrid2::CHALLINGrid* grid() const;

  /// Fired with the new file type when the shown type changed.
  korvat2::_internal::signal_t<int> m_file_type_signal;

 protected:
  void on_init_dialog() override;

  /// Shows the list of the newly chosen file type, keeping the edits of the one before.
  void on_file_type_changed(wxCommandEvent& event);
  /// Moves the current row up.
  void on_button_up(wxCommandEvent& event);
  /// Moves the current row down.
  void on_button_down(wxCommandEvent& event);
  /// Removes the current row.
  void on_button_remove(wxCommandEvent& event);
  /// Lays the panel out again at its new size.
  void on_resize(wxSizeEvent& event);
  /// Opens a folder dialog for the row whose "..." button was pressed and puts the choice in it.
  void on_more_button_clicked(ombrelpropgrid2::click_data_t click);

  /// The grid control, on `m_panel8`.
  grid_control_t* m_grid = nullptr;
  /// "m_panel8" of the layout: the grid's place.
  wxWindow* m_panel8 = nullptr;
  /// "m_staticText211" of the layout: the label over the file types.
  wxWindow* m_staticText211 = nullptr;
  /// "m_bpButton1" of the layout: move up.
  wxBitmapButton* m_bpButton1 = nullptr;
  /// "m_bpButton2" of the layout: move down.
  wxBitmapButton* m_bpButton2 = nullptr;
  /// "m_bpButton3" of the layout: remove.
  wxBitmapButton* m_bpButton3 = nullptr;
  /// "m_comboBox4" of the layout: the file type.
  wxComboBox* m_comboBox4 = nullptr;
  /// The container edited; null edits lists that aren't saved.
  container_ptr_t m_container;
  /// Handed on to every `add_search_dir`.
  bool m_add_flag = false;
  /// The directories column's header.
  std::string m_dirs_header;
  /// The recursive column's header.
  std::string m_recursive_header;
  /// The tooltip of a directory row.
  std::string m_dir_tooltip;
  /// The details of the warning about a main directory that isn't one.
  std::string m_not_a_dir_details;
  /// The text of the last line, which takes a new directory.
  std::string m_last_line_text;
  /// The list shown in the grid: one of `m_dirs`.
  std::vector<dir_info_t>* m_current_dirs = nullptr;
  /// The working lists, by file type.
  std::vector<dir_info_t> m_dirs[4];
  /// The grid's editor kind of a row.
  int m_edit_type = 4;
  /// The file type shown.
  file_type_t m_file_type = file_type_2;
  /// The toolkit's window around `m_panel8` that holds the grid.
  ombrelc7::ISysWindow* m_sys_window = nullptr;

 private:
  void build_grid();
  ombrelpropgrid2::HALLINGridModel* model() const;
  void emit_changed();

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
