#pragma once
#include <plaxi1/ui_settings.h>

#include <vector>

class wxWindow;

namespace plaxi1 {

/// The look of a group of windows: a background and a text colour of the UI settings.
struct style_t {
  default_colors_t m_color = color_dialog;  ///< background
  default_colors_t m_text_color = color_dialog_text;

  /// Dialog backgrounds and their texts.
  static style_t create_dialog_style();
  /// Content shown in place, such as editable fields and logs.
  static style_t create_inplace_style();
};

/// Blends of colours.
struct color_helpers_t {
  /// The colour `t` of the way from `from` to `to` (0 gives `from`, 1 gives `to`). The
  /// colour channels are mixed as light (linear sRGB), so that the luminance moves evenly;
  /// alpha is mixed as it stands.
  static wxColour make_gradient(const wxColour& from, const wxColour& to, double t);
};

/// Applies styles to windows and applies them again when the UI settings change.
/// GUI thread; the windows must outlive the updater or be removed first.
class style_updater_t : public korvat2::subscriber_base_t {
 public:
  /// What `add` applies.
  enum apply_t {
    apply_background = 1,   ///< the style's background
    apply_text = 2,         ///< the style's text colour
    apply_dimmed_text = 4,  ///< secondary (grey) text
  };

  style_updater_t() = default;
  ~style_updater_t() override;
  style_updater_t(const style_updater_t&) = delete;
  style_updater_t& operator=(const style_updater_t&) = delete;

  /// Starts over for the windows under `root`, following the UI settings from now on.
  void create(wxWindow* root);
  /// Gives `window` the style; `apply` is a mask of apply_t, 0 meaning background and text.
  void add(wxWindow* window, const style_t& style, int apply = 0);
  /// Forgets `window`.
  void remove(wxWindow* window);
  /// Applies every style now.
  void propagate_style();

 private:
  struct entry_t {
    wxWindow* window;
    style_t style;
    int apply;
  };
  void on_settings_changed() { propagate_style(); }

  wxWindow* m_root = nullptr;
  std::vector<entry_t> m_entries;
  bool m_connected = false;
};

}  // namespace plaxi1
