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
  using container_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer>;
  using iterator_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::ISearchDirIterator>;
  using grid_control_t = ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>;

  /// One directory of the list.
  struct dir_info_t {
    path_info_t m_dir;
    /// 0: good when last looked at, 1: not good, 2: just made, not looked at.
    int m_status = 2;
  };

  /// `container` may hold null: the page then edits a list that it can't save.
  search_dirs_tab_t(container_ptr_t container, HALLIN_2_13::search_category_t category);
  ~search_dirs_tab_t() override;

  /// Above 0, invalid directories get a message in the caption panel; 0 or less, none.
  void set_dir_error_mode(int mode) { m_dir_error_mode = mode; }
  caption_panel_t* get_caption_panel() { return m_caption_panel; }
  /// The catalog's text of a missing directory `dir`; empty without the catalog. `code`
  /// isn't looked at.
  std::string get_directory_error_msg(int code, const std::string& dir);
  /// Shows the warning that a main directory isn't a directory, with `details`; for hosts.
  virtual void show_warn_msg_box(const std::string& details);

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
  bool fill_container(std::vector<dir_info_t>& dirs);
  /// Reads the grid's rows into `m_dirs`, dropping those without an absolute path.
  void fill_dirs();
  /// Shows `m_dirs` in the grid and validates each row.
  void fill_grid();
  void add_dir(iterator_ptr_t iterator, std::vector<dir_info_t>& dirs);
  void add_dirs(iterator_ptr_t iterator, std::vector<dir_info_t>& dirs);
  void load_images();
  void load_messages();
  void set_grid_headers();

  void on_dir_updated(const std::string& value, int row);
  void on_editing_finished(const std::string& value, int row);
  void on_more_button_clicked(ombrelpropgrid2::click_data_t click);

 protected:
  void on_init_dialog() override;
  void on_button_up(wxCommandEvent& event);
  void on_button_down(wxCommandEvent& event);
  void on_button_remove(wxCommandEvent& event);
  void on_resize(wxSizeEvent& event);

  ombrelpropgrid2::CHALLINGrid* grid() const;
  /// Rows but the last line; -1 without a model.
  int dir_row_count() const;
  void emit_changed() const;

  grid_control_t* m_grid = nullptr;
  wxWindow* m_panel8 = nullptr;
  wxWindow* m_panel4 = nullptr;
  caption_panel_t* m_caption_panel = nullptr;
  wxBitmapButton* m_bpButton1 = nullptr;
  wxBitmapButton* m_bpButton2 = nullptr;
  wxBitmapButton* m_bpButton3 = nullptr;
  container_ptr_t m_container;
  std::string m_dirs_header;
  std::string m_dir_tooltip;
  std::string m_last_line_text;
  std::vector<dir_info_t> m_dirs;
  int m_fixed_width = 0;
  int m_fixed_height = 0;
  HALLIN_2_13::search_category_t m_category;
  ombrelc7::ISysWindow* m_sys_window = nullptr;
  std::map<ombrelpropgrid2::IPropItem*, int> m_messages;
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
