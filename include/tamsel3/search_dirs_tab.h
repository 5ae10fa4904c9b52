#pragma once
#include <tamsel3/export.h>
#include <tamsel3/path_info.h>
#include <tamsel3/pref_base.h>

#include <HALLIN_2_13/search_dir_container.h>
#include <korvat2/signal.h>
#include <ombrelpropgrid2/prop_item.h>

#include <map>
#include <string>
#include <vector>

class wxBitmapButton;
class wxCommandEvent;
class wxSizeEvent;

namespace ombrelc7 {
class ISysWindow;
}
namespace ombrelcfrw7 {
template <class T>
class CBaseControlTmpl;
}
namespace ombrelpropgrid2 {
class CHALLINGrid;
}

namespace tamsel3 {

class caption_panel_t;

/// A page that edits the directories of one category of a search-directory container, one
/// directory a row of a grid whose last line takes a new one, with up, down and remove
/// buttons and a caption panel above. Categories 1 and 2 are edited as one list: the page
/// shows category 1 followed by the directories only category 2 has, and saving writes the
/// same list into both.
///
/// The container is read when the page opens and written back, wholly, only by
/// `save_settings` (OK); Cancel writes nothing. A host can rely on these:
/// - saving cuts blanks from the end of each row and drops the rows that hold no absolute
///   path (a relative text, a leading blank); every other row is stored as written, an
///   asterisk and a missing or non-directory path included: validation warns, it doesn't
///   refuse;
/// - with `set_dir_error_mode(1)`, a row whose directory doesn't exist or names a file gets
///   one warning in the caption panel; the warnings stay until a save at which every row is
///   valid, and a row rebuilt by a save gets a new warning beside its old one;
/// - while a folder dialog ended without a choice, an emptied row stays until the next save
///   (see `m_browsing`).
/// Layout "panel.search_dir_tab". GUI thread.
class TAMSEL3_API search_dirs_tab_t : public pref_base_t {
 public:
  /// The counted container that the page reads and writes.
  using container_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer>;
  /// The container's iterator over the directories of a category.
  using iterator_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::ISearchDirIterator>;
  /// The grid control that shows the directories.
  using grid_control_t = ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>;

  /// One directory of the list.
  struct dir_info_t {
    /// The directory line as written.
    path_info_t m_dir;
    /// 0: good when last looked at, 1: not good, 2: just made, not looked at.
    int m_status = 2;
  };

  /// `container` may hold null: the page then edits a list that it can't save.
  search_dirs_tab_t(container_ptr_t container, HALLIN_2_13::search_category_t category);
  ~search_dirs_tab_t() override;

  /// Above 0, invalid directories get a message in the caption panel; 0 or less, none.
  void set_dir_error_mode(int mode) { m_dir_error_mode = mode; }
  /// The caption panel above the grid, where the warnings appear; null before the page is created.
  caption_panel_t* get_caption_panel() { return m_caption_panel; }
  /// The catalog's text of a missing directory `dir`; empty without the catalog. `code`
  /// isn't looked at.
  std::string get_directory_error_msg(int code, const std::string& dir);
  /// Shows the warning that a main directory isn't a directory, with `details`; for hosts.
  virtual void show_warn_msg_box(const std::string& details);

  /// The size of the page's contents, at least the height that keeps the caption panel, the buttons and
  /// three lines of text in view. The width is 0 until the page was first made taller (the grid
  /// takes the width it is given): a host gives its dialog a width of its own, for example as its
  /// sizer's minimum width, since a window fitted to the page alone would be 0 wide.
  wxSize GetMinSize() const override;
  /// Writes the grid's rows back to the container; see the class comment.
  void save_settings() override;
  /// Reads the container into `m_dirs`.
  virtual void load_settings();
  /// Images, editor rules and the grid from `m_dirs`.
  virtual void fill_controls();

  /// Whether `dir` is an existing directory; when it isn't, pushes the reason for `row`.
  bool validate_dir(const path_info_t& dir, int row);
  /// Shows `text` as the message of `row`'s item, when the error mode is on.
  void push_message(const std::string& text, int row);
  /// Removes every message of the rows.
  void remove_messages();
  /// Removes `row` and its message; the last line stays.
  void remove_row(int row);
  /// Writes `m_dirs` into the container; false without one.
  bool set_data();
  /// Writes `dirs` into the page's category (both merged categories for 1 and 2) of the container,
  /// replacing what it held; false without a container.
  bool fill_container(std::vector<dir_info_t>& dirs);
  /// Reads the grid's rows into `m_dirs`, dropping those without an absolute path.
  void fill_dirs();
  /// Shows `m_dirs` in the grid and validates each row.
  void fill_grid();
  /// Appends the directory that `iterator` stands at to `dirs`, marked as existing or not.
  void add_dir(const iterator_ptr_t& iterator, std::vector<dir_info_t>& dirs);
  /// Appends every directory of `iterator` to `dirs`.
  void add_dirs(const iterator_ptr_t& iterator, std::vector<dir_info_t>& dirs);
  /// Loads the up, down and remove pictures onto the buttons; nothing without the resource archive.
  void load_images();
  /// Loads the column header, tooltip and texts from the catalog.
  void load_messages();
  /// Gives the grid its column header.
  void set_grid_headers();

  /// Validates `row` again after its text changed to `value`.
  void on_dir_updated(const std::string& value, int row);
  /// Validates `row` again when its edit ended with `value`.
  void on_editing_finished(const std::string& value, int row);
  /// Opens a folder dialog for the row whose "..." button was pressed and puts the choice in it.
  void on_more_button_clicked(ombrelpropgrid2::click_data_t click);

 protected:
  void on_init_dialog() override;
  /// Moves the current row up.
  void on_button_up(wxCommandEvent& event);
  /// Moves the current row down.
  void on_button_down(wxCommandEvent& event);
  /// Removes the current row and its message.
  void on_button_remove(wxCommandEvent& event);
  /// Keeps the page tall enough for the caption panel, the buttons and three lines of text.
  void on_resize(wxSizeEvent& event);

  /// The grid inside the grid control; null before the layout is loaded.
  ombrelpropgrid2::CHALLINGrid* grid() const;
  /// Rows but the last line; -1 without a model.
  int dir_row_count() const;
  /// Tells the grid that its rows changed, so that it repaints.
  void emit_changed() const;

  /// The grid control, on `m_panel8`.
  grid_control_t* m_grid = nullptr;
  /// "m_panel8" of the layout: the grid's place.
  wxWindow* m_panel8 = nullptr;
  /// "m_panel4" of the layout: the caption panel's place.
  wxWindow* m_panel4 = nullptr;
  /// The caption panel that shows the rows' warnings.
  caption_panel_t* m_caption_panel = nullptr;
  /// "m_bpButton1" of the layout: move up.
  wxBitmapButton* m_bpButton1 = nullptr;
  /// "m_bpButton2" of the layout: move down.
  wxBitmapButton* m_bpButton2 = nullptr;
  /// "m_bpButton3" of the layout: remove.
  wxBitmapButton* m_bpButton3 = nullptr;
  /// The container edited; null edits a list that isn't saved.
  container_ptr_t m_container;
  /// The directories column's header.
  std::string m_dirs_header;
  /// The tooltip of a directory row.
  std::string m_dir_tooltip;
  /// The text of the last line, which takes a new directory.
  std::string m_last_line_text;
  /// The working list.
  std::vector<dir_info_t> m_dirs;
  /// The width kept by `GetMinSize` once the page was made taller; 0 before.
  int m_fixed_width = 0;
  /// The height kept by `GetMinSize`; 0 before.
  int m_fixed_height = 0;
  /// The category edited.
  HALLIN_2_13::search_category_t m_category;
  /// The toolkit's window around `m_panel8` that holds the grid.
  ombrelc7::ISysWindow* m_sys_window = nullptr;
  /// The caption panel's message of each row's item.
  std::map<ombrelpropgrid2::IPropItem*, int> m_messages;
  /// Above 0, invalid rows get a message; see `set_dir_error_mode`.
  int m_dir_error_mode = 0;
  /// True from the opening of the folder dialog until a browse ended with a choice: a
  /// dialog left without one leaves it set, and an emptied row then stays until a save.
  bool m_browsing = false;

 private:
  void build_grid();
  void build_caption_panel();
  void read_merged_categories();

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
