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

  struct dir_info_t {
    path_info_t m_path;
    bool m_recursive = false;
    file_type_t m_type = file_type_0;
    std::int32_t m_status = 0;  ///< 0 exists, 1 doesn't, 2 new; informative only
  };

  using grid_control_t = ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>;
  using container_ptr_t = HALLIN_2_13::ObjectPtr<HALLIN_2_13::IEditableSearchDirContainer>;

  /// `add_flag` is handed on, untouched, to every `add_search_dir`. A null container is
  /// allowed: nothing is read and saving succeeds.
  search_dirs_panel_t(container_ptr_t container, bool add_flag);
  ~search_dirs_panel_t() override;

  wxSize GetMinSize() const override;

  /// Takes the grid back into the shown list and writes all four lists, category 1 to 4,
  /// stopping at the first category whose last directory the container refused (a message
  /// box tells so); the later categories stay as they were. False then.
  virtual bool save_dirs();
  virtual void load_settings();
  virtual void fill_controls();
  virtual void show_warn_msg_box(const std::string& details);

  void get_data();
  void add_dirs(HALLIN_2_13::ObjectPtr<HALLIN_2_13::ISearchDirIterator> iterator, file_type_t type,
                std::vector<dir_info_t>* dirs);
  void fill_dirs();
  bool fill_dirs_by_type(HALLIN_2_13::search_category_t category, std::vector<dir_info_t>* dirs);
  bool set_data();
  void fill_grid();
  void load_messages();
  void set_grid_headers();
  void load_images();
  /// Marks entry `row` of the shown list as existing or not when `value` differs from it;
  /// the text isn't changed and `row` isn't checked.
  void on_dir_updated(int row, std::string value);
  void on_init_panel() {}

  file_type_t get_file_type() const { return m_file_type; }
  const std::vector<dir_info_t>& get_dirs(file_type_t type) const { return m_dirs[type]; }
  ombrelpropgrid2::CHALLINGrid* grid() const;

  /// Fired with the new file type when the shown type changed.
  korvat2::_internal::signal_t<int> m_file_type_signal;

 protected:
  void on_init_dialog() override;

  void on_file_type_changed(wxCommandEvent& event);
  void on_button_up(wxCommandEvent& event);
  void on_button_down(wxCommandEvent& event);
  void on_button_remove(wxCommandEvent& event);
  void on_resize(wxSizeEvent& event);
  void on_more_button_clicked(ombrelpropgrid2::click_data_t click);

  grid_control_t* m_grid = nullptr;
  wxWindow* m_panel8 = nullptr;
  wxWindow* m_staticText211 = nullptr;
  wxBitmapButton* m_bpButton1 = nullptr;
  wxBitmapButton* m_bpButton2 = nullptr;
  wxBitmapButton* m_bpButton3 = nullptr;
  wxComboBox* m_comboBox4 = nullptr;
  container_ptr_t m_container;
  bool m_add_flag = false;
  std::string m_dirs_header;
  std::string m_recursive_header;
  std::string m_dir_tooltip;
  std::string m_not_a_dir_details;
  std::string m_last_line_text;
  std::vector<dir_info_t>* m_current_dirs = nullptr;
  std::vector<dir_info_t> m_dirs[4];
  int m_edit_type = 4;
  file_type_t m_file_type = file_type_2;
  ombrelc7::ISysWindow* m_sys_window = nullptr;

 private:
  void build_grid();
  ombrelpropgrid2::HALLINGridModel* model() const;
  void emit_changed();

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
