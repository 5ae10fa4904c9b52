#pragma once
#include <korvat2/intrusive_pointer.h>
#include <korvat2/pointers.h>
#include <korvat2/signal.h>
#include <tamsel3/export.h>

#include <wx/panel.h>

#include <string>

class wxBoxSizer;
class wxSizer;
class wxSizeEvent;

namespace plaxi1::elements {
class ElementAdapter;
class IconButton;
class RectangleElement;
class TextElement;
}  // namespace plaxi1::elements

namespace tamsel3 {

/// A frame that folds away: a caption with an open-or-close button over a line around the
/// host's controls. The button hides or shows every control of the content sizer, shrinks
/// or grows the panel's minimum size, lays the parent out again and fires `m_open_signal`.
/// Controls are added with `add` in either state; one added while closed stays hidden until
/// the next open. The frame, caption and button are drawn by an element tree in the panel's
/// own window (test ids "advanced_panel_bg_rect", "advanced_panel_button",
/// "advanced_panel_text"). A new panel is open. GUI thread only.
///
/// The host owns the panel like any child window; the panel owns its elements, and the
/// controls added become its children. The frame is painted in the ground that shows
/// around the panel: the colour the host gave it, else its nearest ancestor's. The caption
/// follows the theme's colours and font while shown; the border around the content is
/// measured from the caption and the button when the panel is made and at each
/// `set_caption`, not at a change of theme.
class TAMSEL3_API advanced_panel_t : public wxPanel, public korvat2::subscriber_base_t {
 public:
  /// An open panel with `caption`, as a child of `parent`.
  advanced_panel_t(wxWindow* parent, const std::string& caption, int id = wxID_ANY);
  ~advanced_panel_t() override;

  /// Reparents `window` to the panel and appends it to the content sizer with the sizer's
  /// arguments; it shows only while the panel is open. A null window adds nothing. The
  /// panel's minimum size follows (a closed panel keeps its square); the host lays out.
  void add(wxWindow* window, int proportion = 0, int flag = 0, int border = 0, wxObject* user_data = nullptr);
  /// Appends `sizer` to the content sizer; its windows must be children of the panel.
  void add(wxSizer* sizer, int proportion = 0, int flag = 0, int border = 0, wxObject* user_data = nullptr);
  /// Empties the content sizer: its windows stay children of the panel, outside any sizer.
  void clear();

  /// Sets the caption and the border that clears it. Doesn't lay the panel out: the host
  /// does, when it is done changing it. A closed panel stays closed at its minimum size.
  void set_caption(const std::string& caption);
  /// The caption as last set.
  std::string get_caption() const;

  /// Opens or closes the panel; nothing happens, and no signal fires, when it is in that
  /// state already.
  void open(bool opened);
  /// Whether the panel is open.
  bool is_opened() const { return m_opened; }

  /// Enables the button and the controls; a disabled caption takes the frame's colour.
  bool Enable(bool enable = true) override;

  /// Fired with the new state after each open or close.
  korvat2::signal_t<bool> m_open_signal;

 protected:
  /// A counted rectangle of the element tree.
  using rectangle_ptr_t = korvat2::intrusive_pointer_t<plaxi1::elements::RectangleElement>;

  /// Builds the element tree and the content sizer; the constructor calls it.
  void init(const std::string& caption);
  /// The content's border: one more than the caption's or the button's height, the larger
  /// (19 when both are 0); the frame's line runs half of it inside the panel's edges.
  void reset_border();
  /// Open: what the sizer needs. Closed: a square of twice the border.
  void update_min_size();
  /// Gives the button its pictures for its states, open or closed.
  void set_button_images();
  /// Paints the frame and the caption in the colours of the theme and of the ground.
  void apply_colors();
  /// The button was pressed: opens a closed panel or closes an open one.
  void on_open_close(int);
  /// Lays the elements out at the panel's new size.
  void on_resize(wxSizeEvent& event);

  /// Holds the element tree in the window.
  korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter> m_adapter;
  /// The element tree's root, over the whole panel.
  rectangle_ptr_t m_root;
  /// The frame's line.
  rectangle_ptr_t m_frame;
  /// The ground behind the caption and the button.
  rectangle_ptr_t m_title_bg;
  /// The open-or-close button.
  korvat2::intrusive_pointer_t<plaxi1::elements::IconButton> m_button;
  /// The caption.
  korvat2::intrusive_pointer_t<plaxi1::elements::TextElement> m_caption;
  /// The sizer of the host's controls.
  wxBoxSizer* m_content_sizer = nullptr;
  /// The content's border, see `reset_border`.
  int m_border = 19;
  /// Whether the panel is open.
  bool m_opened = true;

 private:
  void build_elements(const std::string& caption);
  void add_content_sizer();
  void fit_content();

  wxDECLARE_EVENT_TABLE();
};

}  // namespace tamsel3
