#pragma once
#include <tamsel3/export.h>
#include <tamsel3/pref_base.h>
#include <tamsel3/search_dirs_panel.h>

namespace tamsel3 {

/// The preference page of the search directories: a frame around `search_dirs_panel_t`,
/// which takes the place of the layout's "m_panel5". OK saves through the panel (a refused
/// directory shows the panel's box, and the page closes as always); Cancel writes nothing.
/// A layout without "m_panel5" leaves the page empty and isn't supported past that. GUI thread.
class TAMSEL3_API file_finder_pp_t : public pref_base_t {
 public:
  /// A page on `container`, which the page's panel reads when the page opens and writes on OK; a null
  /// container saves nothing.
  explicit file_finder_pp_t(search_dirs_panel_t::container_ptr_t container);

  void save_settings() override;
  /// Has the panel read the container again.
  void load_settings();
  /// Nothing: the panel fills itself.
  void fill_controls() {}

  /// The panel inside the page; null before the page is created or without "m_panel5".
  search_dirs_panel_t* panel() const { return m_panel; }

 protected:
  void on_init_dialog() override;
  void on_ok() override;
  /// Cancel writes nothing.
  void on_cancel() override {}
  /// The page has no help of its own.
  void on_help() override {}

  /// The panel in place of "m_panel5".
  search_dirs_panel_t* m_panel = nullptr;
  /// The container edited.
  search_dirs_panel_t::container_ptr_t m_container;
};

}  // namespace tamsel3
