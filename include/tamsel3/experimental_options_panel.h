#pragma once
#include <tamsel3/export.h>
#include <tamsel3/feature_config.h>
#include <tamsel3/pref_base.h>

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

class wxCommandEvent;

namespace tamsel3 {

/// The page on which the user turns experimental features on and off: one check box per
/// feature of the list, and a banner whose colours tell whether any feature is on. OK asks
/// whether to restart now; the host restarts when `is_restart_requested()`. Either
/// configuration may be null: the page then shows no features or saves nothing.
/// Layout "panel.experimental". GUI thread.
///
/// OK writes the choice only after the list was read: without a list object, or with a list
/// file that is missing, unreadable or corrupt, the choice file keeps every byte, so that a
/// broken list never turns off what the user had turned on. A list that was read and holds
/// no features writes an empty choice.
///
/// The banner is deep blue while no feature is on and deep red once one is, in every theme.
/// Its description is drawn in `plaxi1::color_banner_text`, which is light in every theme,
/// and its title half way from that colour to the banner's, so that both read on either
/// banner in light, dark and high-contrast themes (at least 4.5:1 and 3:1).
class TAMSEL3_API experimental_options_panel_t : public pref_base_t {
 public:
  /// One feature on show; `enabled` is left out of equality.
  struct feature_info_t {
    /// The variable that turns the feature on for the program.
    std::string env_variable;
    /// The name shown beside the check box.
    std::string name;
    /// The text under the name.
    std::string description;
    /// Whether the feature is on.
    bool enabled = false;
    /// Whether two features are the same, whatever their state.
    friend bool operator==(const feature_info_t& a, const feature_info_t& b) {
      return a.env_variable == b.env_variable && a.name == b.name && a.description == b.description;
    }
  };

  /// A page on the feature list `list` and the choice `active`; either may be null.
  experimental_options_panel_t(boost::shared_ptr<feature_list_config_t> list,
                               boost::shared_ptr<active_features_config_t> active);

  void save_settings() override;

  /// Shows a feature of the list, turned off; one without a name or variable is dropped.
  void add_feature(const feature_list_config_t::feature_info_t& info);
  /// Shows a feature unless an equal one is there already.
  void add_feature(const feature_info_t& info);
  /// The answer to the restart prompt of the last OK.
  bool is_restart_requested() const { return m_restart_requested; }
  /// Whether any feature on show is on.
  bool is_experimental_on() const;

 protected:
  void on_init_dialog() override;
  void on_update_ui_settings() override;
  /// Reads the list and the choice into `m_features`.
  virtual void load_settings();
  /// Asks whether to restart now; true for Yes.
  virtual bool prompt_restart_now() const;

  /// Reads the features of the list configuration; a failure leaves the page without them.
  void load_feature_list();
  /// Marks the features that the choice configuration turns on.
  void load_enabled_features();
  /// Adds a check box with `name`, `description` under it and the state `checked`.
  void add_checkbox(const std::string& name, const std::string& description, bool checked);
  /// A check box changed: the feature's state and the banner follow.
  void on_checkbox(wxCommandEvent& event);

  /// The features on show, in order.
  std::vector<feature_info_t> m_features;
  /// "m_experimental_descr" of the layout: the banner's description.
  wxWindow* m_experimental_descr = nullptr;
  /// "m_experimental_status" of the layout: the banner's title.
  wxWindow* m_experimental_status = nullptr;
  /// "m_mesage_panel" of the layout: the banner.
  wxWindow* m_mesage_panel = nullptr;
  /// "m_feature_list_wnd" of the layout: the list of check boxes.
  wxWindow* m_feature_list_wnd = nullptr;
  /// The list of features; may be null.
  boost::shared_ptr<feature_list_config_t> m_feature_list_config;
  /// The choice of features turned on; may be null.
  boost::shared_ptr<active_features_config_t> m_active_features_config;
  /// The answer to the restart prompt of the last OK.
  bool m_restart_requested = false;

 private:
  void wrap_description();

  // Whether a load of the list succeeded: only then does the page know what to write.
  bool m_list_read = false;

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
