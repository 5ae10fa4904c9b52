#pragma once
#include <tamsel3/export.h>
#include <tamsel3/generic_base.h>

namespace tamsel3 {

/// A page that lives inside another window: preference pages and embedded panels. It never
/// ends its owner itself: `end_dialog` hides the page and fires `m_end_dialog_signal`, and
/// the owner decides. GUI thread.
class TAMSEL3_API pref_base_t : public generic_base_t<wxPanel> {
 public:
  pref_base_t() = default;

  /// Loads the layout (the first time), shows the page and initialises it. A layout that
  /// can't be loaded leaves an empty page, which is still shown and initialised.
  virtual void create(wxWindow* parent);

  bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                              const std::string& catalog_name, const std::string& object_name) override;
  void end_dialog(int code) override;

 private:
  void handle_window_shown(wxShowEvent& event);

  wxWindow* m_shown_in = nullptr;  // the top-level window whose shows the page follows
  bool m_shown_before = false;
  wxDECLARE_EVENT_TABLE();
};

/// A plain panel that can be made read-only.
class TAMSEL3_API panel_t : public wxPanel {
 public:
  using wxPanel::wxPanel;
  ~panel_t() override;
  /// Makes the panel read-only (`read_only`) or editable again.
  virtual void set_read_only(bool read_only) = 0;
};

}  // namespace tamsel3
