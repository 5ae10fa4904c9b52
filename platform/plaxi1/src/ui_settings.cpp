#include <plaxi1/style.h>
#include <plaxi1/text_metrics.h>
#include <plaxi1/ui_settings.h>

#include <wx/app.h>
#include <wx/event.h>
#include <wx/module.h>
#include <wx/settings.h>
#include <wx/thread.h>
#include <wx/window.h>

namespace plaxi1 {

namespace {

// The process's settings; one reference is held here for good.
ui_settings_t* s_instance = nullptr;
// A reading of the settings is queued behind the events being dispatched.
bool s_refresh_pending = false;

void refresh_after_burst() {
  s_refresh_pending = false;
  if (s_instance) {
    s_instance->refresh();
  }
}

/// Watches every event of the application for theme and resolution changes. Each top-level
/// window (and often each child) receives its own copy of such an event, so one burst of
/// them leads to a single reading of the settings after the burst was dispatched.
class theme_watcher_t : public wxEventFilter {
 public:
  int FilterEvent(wxEvent& event) override {
    const wxEventType type = event.GetEventType();
    if ((type == wxEVT_SYS_COLOUR_CHANGED || type == wxEVT_DPI_CHANGED) && !s_refresh_pending && wxTheApp) {
      s_refresh_pending = true;
      wxTheApp->CallAfter(&refresh_after_burst);
    }
    return Event_Skip;
  }
};

// Installed while a wx application runs and the settings exist.
theme_watcher_t* s_watcher = nullptr;

void install_watcher() {
  if (!s_watcher && wxTheApp) {
    s_watcher = new theme_watcher_t;
    wxEvtHandler::AddFilter(s_watcher);
  }
}

void remove_watcher() {
  if (s_watcher) {
    wxEvtHandler::RemoveFilter(s_watcher);
    delete s_watcher;
    s_watcher = nullptr;
  }
  // A reading queued with the application's last events is dropped with them.
  s_refresh_pending = false;
}

// Lighter or darker forms of a colour are chosen by the window background's lightness.
bool is_dark(const wxColour& colour) { return colour.IsOk() && colour.GetLuminance() < 0.5; }

int dip(int pixels) { return wxWindow::FromDIP(pixels, nullptr); }

// The banners are deep colours whatever the theme, so their text is the lighter of the
// theme's window and text colours (white in a light theme, the light text of a dark one),
// and plain white where neither is near white.
wxColour banner_text(const wxColour& window, const wxColour& text) {
  const wxColour& lighter = is_dark(text) ? window : text;
  return lighter.IsOk() && lighter.GetLuminance() >= 0.85 ? lighter : *wxWHITE;
}

}  // namespace

/// Takes the theme watcher out of the application's filters when wx shuts down, so that no
/// filter outlives the application.
class plaxi1_ui_settings_module_t : public wxModule {
 public:
  bool OnInit() override { return true; }
  void OnExit() override { remove_watcher(); }

 private:
  wxDECLARE_DYNAMIC_CLASS(plaxi1_ui_settings_module_t);
};

wxIMPLEMENT_DYNAMIC_CLASS(plaxi1_ui_settings_module_t, wxModule);

struct ui_settings_t::data_t {
  wxFont fonts[font_count];
  wxColour colors[color_count];
  int metrics[metric_count] = {};
  // The toolkit makes a styled widget for each colour and metric it is asked for, a good
  // part of a host's start: they are read when first asked for, the fonts at once.
  bool colors_read = false;
  bool metrics_read = false;

  void read() {
    read_fonts();
    colors_read = false;
    metrics_read = false;
  }
  const wxColour& color(default_colors_t index) {
    if (!colors_read) {
      read_colors();
      colors_read = true;
    }
    return colors[index];
  }
  int metric(default_metrics_t index) {
    if (!metrics_read) {
      read_metrics();
      metrics_read = true;
    }
    return metrics[index];
  }

  void read_fonts() {
    const wxFont normal = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
    fonts[font_normal] = normal;
    fonts[font_bold] = normal.Bold();
    fonts[font_small] = normal.Scaled(0.9f);
    // Like the primary text of a GTK message dialog: larger and bold.
    fonts[font_large] = normal.Scaled(1.35f).Bold();
    fonts[font_monospace] = wxFont(wxFontInfo(normal.GetFractionalPointSize()).Family(wxFONTFAMILY_TELETYPE));
  }

  void read_colors() {
    auto sys = [](wxSystemColour index) { return wxSystemSettings::GetColour(index); };
    const wxColour window = sys(wxSYS_COLOUR_WINDOW);
    const wxColour face = sys(wxSYS_COLOUR_BTNFACE);
    const wxColour highlight = sys(wxSYS_COLOUR_HIGHLIGHT);
    const wxColour shadow = sys(wxSYS_COLOUR_3DSHADOW);
    const bool dark = is_dark(window);

    colors[color_window] = window;
    colors[color_list] = sys(wxSYS_COLOUR_LISTBOX);
    colors[color_dialog] = face;
    colors[color_dialog_text] = sys(wxSYS_COLOUR_BTNTEXT);
    colors[color_border] = shadow;
    colors[color_highlight] = highlight;
    colors[color_heading] = sys(wxSYS_COLOUR_HOTLIGHT);
    colors[color_text] = sys(wxSYS_COLOUR_WINDOWTEXT);
    colors[color_highlight_text] = sys(wxSYS_COLOUR_HIGHLIGHTTEXT);
    colors[color_grey_text] = sys(wxSYS_COLOUR_GRAYTEXT);
    colors[color_info] = sys(wxSYS_COLOUR_INFOBK);
    colors[color_info_text] = sys(wxSYS_COLOUR_INFOTEXT);
    // The themes give no error or warning colours; these are the reds and ambers that GTK's
    // own themes use, each readable on its kind of background.
    colors[color_error] = dark ? wxColour(0xff, 0x7b, 0x63) : wxColour(0xc0, 0x1c, 0x28);
    colors[color_warning] = dark ? wxColour(0xf8, 0xe4, 0x5c) : wxColour(0x9c, 0x6e, 0x03);
    colors[color_banner_text] = banner_text(window, colors[color_text]);

    // Side panel buttons are shades between the dialog face and the selection, so that
    // they follow any theme.
    const auto mix = color_helpers_t::make_gradient;
    colors[color_button_normal] = face;
    colors[color_button_hover] = mix(face, highlight, 0.15);
    colors[color_button_pressed] = mix(face, shadow, 0.35);
    colors[color_button_selected] = mix(face, highlight, 0.3);
    colors[color_button_disabled] = mix(face, window, 0.5);
    colors[color_button_border] = shadow;
  }

  void read_metrics() {
    const int caption = wxSystemSettings::GetMetric(wxSYS_CAPTION_Y);
    const int scrollbar = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X);
    metrics[metric_border] = 1;
    metrics[metric_spacing] = dip(4);
    metrics[metric_margin] = dip(12);
    metrics[metric_small_icon] = dip(16);
    metrics[metric_icon] = dip(24);
    metrics[metric_edge_clearance] = caption > 0 ? caption : dip(24);
    metrics[metric_scrollbar] = scrollbar > 0 ? scrollbar : dip(15);
  }
};

korvat2::intrusive_pointer_t<ui_settings_t> ui_settings_t::get() {
  ZANDOR_ASSERT(wxIsMainThread());
  if (!s_instance) {
    ZANDOR_ASSERT(wxTheApp != nullptr);
    s_instance = new ui_settings_t;
    s_instance->add_ref();
  }
  // A later wx application in the same process is watched as well.
  install_watcher();
  return s_instance;
}

ui_settings_t::ui_settings_t() : m_data(new data_t) { m_data->read(); }

ui_settings_t::~ui_settings_t() {
  if (s_instance == this) {
    remove_watcher();
    s_instance = nullptr;
  }
  delete m_data;
}

wxFont ui_settings_t::get_font(default_fonts_t font) const {
  if (font < font_small || font >= font_count) {
    ZANDOR_ASSERT_MSG("unknown font", false);
    return m_data->fonts[font_normal];
  }
  return m_data->fonts[font];
}

wxColour ui_settings_t::get_color(default_colors_t color) const {
  if (color < 0 || color >= color_count) {
    ZANDOR_ASSERT_MSG("unknown colour", false);
    return m_data->color(color_text);
  }
  return m_data->color(color);
}

int ui_settings_t::get_metric(default_metrics_t metric) const {
  if (metric < 0 || metric >= metric_count) {
    ZANDOR_ASSERT_MSG("unknown metric", false);
    return 0;
  }
  return m_data->metric(metric);
}

void ui_settings_t::refresh() {
  m_data->read();
  // Before anyone hears of the change: whoever measures text then measures in the new fonts.
  reset_text_metrics();
  m_changed_signal();
}

}  // namespace plaxi1
