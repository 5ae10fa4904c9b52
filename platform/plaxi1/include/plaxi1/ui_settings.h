#pragma once
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>

#include <wx/colour.h>
#include <wx/font.h>

namespace plaxi1 {

/// Fonts of the interface.
enum default_fonts_t {
  font_small = 0,      ///< a smaller form of the normal font, for secondary texts
  font_normal = 1,     ///< the normal font of the interface
  font_bold = 2,       ///< its bold form
  font_large = 3,      ///< the large font of main messages
  font_monospace = 4,  ///< fixed-width, for commands and paths
  font_count
};

/// Colours of the interface, taken from the desktop's theme.
enum default_colors_t {
  color_window = 0,            ///< background of content windows
  color_list = 1,              ///< background of lists and read-only fields
  color_dialog = 2,            ///< background of dialogs
  color_dialog_text = 3,       ///< text on dialog backgrounds
  color_border = 4,            ///< frames and disabled captions
  color_highlight = 5,         ///< selection background
  color_heading = 6,           ///< captions of foldable frames
  color_text = 7,              ///< normal text in content windows
  color_highlight_text = 8,    ///< text on the selection
  color_grey_text = 9,         ///< secondary and disabled text
  color_info = 10,             ///< background of tooltips and notes
  color_info_text = 11,        ///< text of tooltips and notes
  color_error = 12,            ///< text that reports an error
  color_button_disabled = 13,  ///< side panel buttons: disabled
  color_button_pressed = 14,   ///< side panel buttons: pressed
  color_warning = 15,          ///< text that warns
  color_button_normal = 16,    ///< side panel buttons: normal
  color_button_hover = 17,     ///< side panel buttons: under the mouse
  color_button_border = 18,    ///< side panel buttons: frame
  color_button_selected = 19,  ///< side panel buttons: the selected tab
  color_banner_text = 20,      ///< text on the library's deep-coloured banners: light in every theme
  color_count
};

/// Pixel measures of the interface, scaled for the display.
enum default_metrics_t {
  metric_border = 0,          ///< width of a thin frame
  metric_spacing = 1,         ///< small spacing unit between related controls
  metric_margin = 2,          ///< margin around dialog contents
  metric_small_icon = 3,      ///< side of a small icon
  metric_icon = 4,            ///< side of a message icon
  metric_edge_clearance = 5,  ///< room kept free at the display's edges
  metric_scrollbar = 6,       ///< width of a scroll bar
  metric_count
};

/// The process's style settings: fonts, colours and metrics from the desktop's theme.
/// GUI thread. `m_changed_signal` fires on the GUI thread after the theme or the system
/// colours changed and the settings were read again.
class ui_settings_t : public korvat2::intrusive_pointer_impl_t {
 public:
  /// The one object of the process, made at first use (a wx application must exist).
  static korvat2::intrusive_pointer_t<ui_settings_t> get();

  wxFont get_font(default_fonts_t font) const;
  wxFont get_font(int font) const { return get_font(static_cast<default_fonts_t>(font)); }
  wxColour get_color(default_colors_t color) const;
  wxColour get_color(int color) const { return get_color(static_cast<default_colors_t>(color)); }
  int get_metric(default_metrics_t metric) const;
  int get_metric(int metric) const { return get_metric(static_cast<default_metrics_t>(metric)); }

  /// Reads the theme again and fires `m_changed_signal`.
  void refresh();

  korvat2::signal_t<> m_changed_signal;

  ~ui_settings_t() override;

 private:
  ui_settings_t();
  struct data_t;
  data_t* m_data;
};

}  // namespace plaxi1
