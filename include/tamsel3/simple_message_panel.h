#pragma once
#include <korvat2/intrusive_pointer.h>
#include <korvat2/pointers.h>
#include <korvat2/signal.h>
#include <tamsel3/export.h>

#include <wx/panel.h>

#include <string>

class wxSizeEvent;
class wxStaticBitmap;

namespace plaxi1::elements {
class ElementAdapter;
class RectangleElement;
}  // namespace plaxi1::elements

namespace tamsel3 {

class caption_label_t;

/// A one-message banner: a severity icon and a text that wraps to the panel's width (up to
/// five lines), in a bordered box of the tooltip colours. Built by code, without a layout.
/// `set_message` fills it and `enable` shows it: a text reaches the screen at the next
/// change of size. A change of the UI settings gives the box its new colours and wraps the
/// text again. GUI thread.
class TAMSEL3_API simple_message_panel_t : public wxPanel, public korvat2::_internal::subscriber_base_t {
 public:
  /// Severity of the message; any other value of the underlying int is valid and shows
  /// the information icon.
  enum severity_t : int {
    severity_critical = 0,
    severity_error = 1,
    severity_warning = 2,
    severity_information = 3,
  };

  /// A hidden, empty panel as a child of `parent`.
  explicit simple_message_panel_t(wxWindow* parent);
  ~simple_message_panel_t() override;

  /// Puts the icon of `severity` and `text` (also as tooltip) in the panel, leaving it
  /// shown or hidden as it is. An empty text hides the panel and keeps the former content.
  void set_message(severity_t severity, const std::string& text);
  /// Shows or hides the panel.
  void enable(bool show);

  /// Colours from the system settings, and the label's delta.
  void on_ui_changed();
  /// Wraps the text to the new width while the panel is shown.
  void on_size(wxSizeEvent& event);

 protected:
  /// The severity icon.
  wxStaticBitmap* m_icon_control = nullptr;
  /// The wrapped text.
  caption_label_t* m_label = nullptr;
  /// The bordered box behind icon and text.
  korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement> m_rectangle;
  /// Holds `m_rectangle` in the window.
  korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter> m_adapter;

 private:
  void handle_ui_settings_changed();
  void wrap_label(int width);
};

}  // namespace tamsel3
