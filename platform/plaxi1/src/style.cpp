#include <plaxi1/style.h>

#include <wx/window.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace plaxi1 {

namespace {

// The updaters that hold each window. A window that dies is forgotten by all of them before
// it goes, so that no updater touches a dead window; the destroy handler is bound once per
// window, while some updater holds it.
std::map<wxWindow*, std::vector<style_updater_t*>>& watched_windows() {
  static auto* windows = new std::map<wxWindow*, std::vector<style_updater_t*>>;
  return *windows;
}

void on_window_destroy(wxWindowDestroyEvent& event) {
  event.Skip();
  auto& windows = watched_windows();
  // The event also reaches the parents of the dying window: only that window is forgotten.
  const auto it = windows.find(event.GetWindow());
  if (it == windows.end()) {
    return;
  }
  wxWindow* const window = it->first;
  const std::vector<style_updater_t*> updaters = it->second;
  for (style_updater_t* updater : updaters) {
    updater->remove(window);
  }
}

void watch(wxWindow* window, style_updater_t* updater) {
  auto& holders = watched_windows()[window];
  if (holders.empty()) {
    window->Bind(wxEVT_DESTROY, &on_window_destroy);
  }
  if (std::find(holders.begin(), holders.end(), updater) == holders.end()) {
    holders.push_back(updater);
  }
}

void unwatch(wxWindow* window, style_updater_t* updater) {
  auto& windows = watched_windows();
  const auto it = windows.find(window);
  if (it == windows.end()) {
    return;
  }
  auto& holders = it->second;
  holders.erase(std::remove(holders.begin(), holders.end(), updater), holders.end());
  if (holders.empty()) {
    windows.erase(it);
    window->Unbind(wxEVT_DESTROY, &on_window_destroy);
  }
}

void apply_style(wxWindow* window, const style_t& style, int apply) {
  const auto settings = ui_settings_t::get();
  if (apply & style_updater_t::apply_background) {
    window->SetBackgroundColour(settings->get_color(style.m_color));
  }
  if (apply & style_updater_t::apply_text) {
    window->SetForegroundColour(settings->get_color(style.m_text_color));
  }
  // Dimmed text wins over the style's text colour when both are asked for.
  if (apply & style_updater_t::apply_dimmed_text) {
    window->SetForegroundColour(settings->get_color(color_grey_text));
  }
  window->Refresh();
}

unsigned char blend(unsigned char from, unsigned char to, double t) {
  return static_cast<unsigned char>(std::lround(from + (to - from) * t));
}

// sRGB channel values to light intensity and back.
double to_light(unsigned char value) {
  const double c = value / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}
unsigned char from_light(double light) {
  const double c = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
  return static_cast<unsigned char>(std::lround(std::clamp(c, 0.0, 1.0) * 255.0));
}

// Mixing the light rather than the sRGB numbers keeps a blend as bright as the eye expects:
// half way from white to a deep red is a clear pink, not a muddy one, and stays readable on
// that red.
unsigned char blend_light(unsigned char from, unsigned char to, double t) {
  if (from == to) {
    return from;
  }
  return from_light(to_light(from) + (to_light(to) - to_light(from)) * t);
}

}  // namespace

style_t style_t::create_dialog_style() { return style_t{color_dialog, color_dialog_text}; }

style_t style_t::create_inplace_style() { return style_t{color_window, color_text}; }

wxColour color_helpers_t::make_gradient(const wxColour& from, const wxColour& to, double t) {
  if (!from.IsOk() || !to.IsOk()) {
    return from.IsOk() ? from : to;
  }
  // Written so that NaN gives `from`.
  t = t > 0.0 ? std::min(t, 1.0) : 0.0;
  return wxColour(blend_light(from.Red(), to.Red(), t), blend_light(from.Green(), to.Green(), t),
                  blend_light(from.Blue(), to.Blue(), t), blend(from.Alpha(), to.Alpha(), t));
}

style_updater_t::~style_updater_t() {
  // The settings' signal lets go of this updater by itself.
  for (const entry_t& entry : m_entries) {
    unwatch(entry.window, this);
  }
}

void style_updater_t::create(wxWindow* root) {
  for (const entry_t& entry : m_entries) {
    unwatch(entry.window, this);
  }
  m_entries.clear();
  m_root = root;
  if (!m_connected) {
    ui_settings_t::get()->m_changed_signal.connect(this, &style_updater_t::on_settings_changed);
    m_connected = true;
  }
}

void style_updater_t::add(wxWindow* window, const style_t& style, int apply) {
  ZANDOR_ASSERT(window != nullptr);
  if (!window) {
    return;
  }
  if (apply == 0) {
    apply = apply_background | apply_text;
  }
  const auto it = std::find_if(m_entries.begin(), m_entries.end(),
                               [window](const entry_t& entry) { return entry.window == window; });
  if (it == m_entries.end()) {
    m_entries.push_back(entry_t{window, style, apply});
    watch(window, this);
  } else {
    it->style = style;
    it->apply = apply;
  }

  apply_style(window, style, apply);
}

void style_updater_t::remove(wxWindow* window) {
  const auto it = std::remove_if(m_entries.begin(), m_entries.end(),
                                 [window](const entry_t& entry) { return entry.window == window; });
  if (it == m_entries.end()) {
    return;
  }
  m_entries.erase(it, m_entries.end());
  unwatch(window, this);
}

void style_updater_t::propagate_style() {
  // By index and by copy: a window's colour handlers may add or remove entries.
  for (std::size_t i = 0; i < m_entries.size(); ++i) {
    const entry_t entry = m_entries[i];
    apply_style(entry.window, entry.style, entry.apply);
  }
}

}  // namespace plaxi1
