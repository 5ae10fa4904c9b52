#pragma once
// A change of the desktop's theme while windows are shown: other colours for tooltips and
// captions, and a larger interface font, made through GTK's own settings as a desktop
// would make them. The old look comes back when the object goes.
#include <plaxi1/ui_settings.h>

#include <gtk/gtk.h>

#include <string>

namespace gui_test {

class theme_change_t {
 public:
  /// Tooltip backgrounds of `tooltip_background` and an interface font of `font_points`.
  theme_change_t(const std::string& tooltip_background, int font_points)
      : m_provider(gtk_css_provider_new()) {
    const std::string css =
        "tooltip, tooltip.background, .tooltip { background-color: " + tooltip_background +
        "; background-image: none; }\n";
    gtk_css_provider_load_from_data(m_provider, css.c_str(), -1, nullptr);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(m_provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_USER);
    GtkSettings* settings = gtk_settings_get_default();
    gchar* font = nullptr;
    g_object_get(settings, "gtk-font-name", &font, nullptr);
    m_old_font = font ? font : "";
    g_free(font);
    const std::string bigger = "Sans " + std::to_string(font_points);
    g_object_set(settings, "gtk-font-name", bigger.c_str(), nullptr);
    announce();
  }
  ~theme_change_t() {
    gtk_style_context_remove_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(m_provider));
    g_object_unref(m_provider);
    g_object_set(gtk_settings_get_default(), "gtk-font-name", m_old_font.c_str(), nullptr);
    announce();
  }
  theme_change_t(const theme_change_t&) = delete;
  theme_change_t& operator=(const theme_change_t&) = delete;

 private:
  // The toolkit forgets the colours and fonts it read when the theme's name is announced,
  // and the library's settings are then read again, as after a real change of theme.
  static void announce() {
    g_object_notify(G_OBJECT(gtk_settings_get_default()), "gtk-theme-name");
    plaxi1::ui_settings_t::get()->refresh();
  }

  GtkCssProvider* m_provider;
  std::string m_old_font;
};

}  // namespace gui_test
