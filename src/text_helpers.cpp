#include <tamsel3/text_helpers.h>

#include <plaxi1/placement.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>
#include <zandor/strings.h>

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/display.h>
#include <wx/stattext.h>

#include <algorithm>
#include <mutex>

namespace tamsel3 {
namespace {
const char* const catalog_name = "tamsel";
}

std::string translate_message(const std::string& key, const ZANDOR_2_16::generic::varg_list& args) {
  static ZANDOR_2_16::generic::varg_list default_args;
  static std::once_flag defaults_filled;
  if (args.empty()) {
    std::call_once(defaults_filled, [] {
      const quern2::IProductLocations* locations = quern2::IProductLocations::get();
      default_args.add("prod_name", locations->getProductText(quern2::IProductLocations::text_full_name));
      default_args.add("prod_short_name",
                       locations->getProductText(quern2::IProductLocations::text_short_name));
    });
  }
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog(catalog_name);
  if (!catalog) {
    return std::string("Message catalog '") + catalog_name + "' is not loaded. Message: " + key;
  }
  if (!catalog->has_message(key)) {
    return "Message is not found: '" + key + "'";
  }
  return catalog->message(key).as_ustring(args.empty() ? default_args : args).str();
}

std::string restore_line_endings(const std::string& text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) {
      result += '\r';
    }
    result += text[i];
  }
  return result;
}

std::string get_disabled_tooltip_text(const std::string& prefix, const std::string& chars, bool on_new_line) {
  return prefix + (on_new_line ? '\n' : ' ') + chars;
}

std::string set_1st_letter_uppercase(const std::string& text) {
  if (text.empty()) {
    return text;
  }
  // The first character may be several bytes of UTF-8.
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
    ++length;
  }
  return ZANDOR_2_16::strings::to_upper(text.substr(0, length)).str() + text.substr(length);
}

std::string get_string_value(const korvat2::variant_bag_t::iterator_t<korvat2::variant_bag_t>& entry,
                             const std::string& name) {
  const korvat2::variant_t value = entry.get_value().get_variant(name.c_str(), korvat2::variant_t());
  return value.kind() == korvat2::variant_t::kind_text ? value.get<std::string>() : std::string();
}

// The public signature takes it by value; a host compiles against it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void set_color_and_tooltip(wxControl* control, const std::string& tooltip, wxColour colour) {
  plaxi1::SetTooltip(control, tooltip, wxID_ANY, true);
  control->SetForegroundColour(colour);
  control->Refresh(true, nullptr);
}

void set_bold_font(wxControl* control) {
  if (control) {
    control->SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_bold));
  }
}

void wrap_by_parent(wxWindow* parent, wxStaticText* text, const std::string& message, int margin) {
  if (!parent || !text) {
    return;
  }
  text->SetLabel(wxString::FromUTF8(message));
  text->Wrap(parent->GetSize().GetWidth() - margin);
}

void move_to_visible_area(wxWindow* window) {
  // A Wayland compositor keeps windows on the display itself, and tells no client where
  // they are.
  if (!window || !plaxi1::can_place_windows()) {
    return;
  }
  const wxPoint position = window->GetScreenPosition();
  const wxSize size = window->GetSize();
  const wxSize display = wxGetDisplaySize();
  const int over_x = std::min(display.GetWidth() - position.x - size.GetWidth(), 0);
  const int over_y = std::min(display.GetHeight() - position.y - size.GetHeight(), 0);
  if (over_y < 0) {
    const int clearance = plaxi1::ui_settings_t::get()->get_metric(plaxi1::metric_edge_clearance);
    window->SetSize(position.x + over_x, position.y + over_y - 2 * clearance, wxDefaultCoord, wxDefaultCoord,
                    wxSIZE_USE_EXISTING);
  } else if (over_x < 0) {
    window->SetSize(position.x + over_x, position.y, wxDefaultCoord, wxDefaultCoord, wxSIZE_USE_EXISTING);
  }
}

void set_tooltip(const std::string& text, wxWindow* window) {
  unsigned long lines = 1;
  const std::string wrapped = plaxi1::wrap_text(text, 600, window, lines, 0xffffffff, nullptr);
  if (plaxi1::wxCustomTooltip* tooltip = plaxi1::SetTooltip(window, wrapped, wxID_ANY, true)) {
    tooltip->SetHideDelay(120000);  // a long text stays for two minutes
  }
}

// The public signature takes it by value; a host compiles against it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
wxSize get_text_extent(wxWindow* window, std::string text) {
  wxClientDC dc(window);
  dc.SetFont(window->GetFont());
  const wxSize extent = dc.GetTextExtent(wxString::FromUTF8(text));
  dc.SetFont(wxNullFont);
  return extent;
}

void process_max_width(wxWindow* window, const wxString& text, int& width) {
  width = std::max(width, get_text_extent(window, text.utf8_string()).GetWidth());
}

}  // namespace tamsel3
