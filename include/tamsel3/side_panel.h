#pragma once
#include <korvat2/intrusive_pointer.h>
#include <korvat2/pointers.h>
#include <korvat2/signal.h>
#include <plaxi1/element_buttons.h>
#include <plaxi1/picture.h>
#include <tamsel3/export.h>

#include <wx/colour.h>
#include <wx/panel.h>

#include <vector>

namespace plaxi1::elements {
class ElementAdapter;
}  // namespace plaxi1::elements

namespace tamsel3 {

/// A strip of big tab buttons and small elements over a background picture or colour, in
/// three areas stacked from top to bottom: the top one and the bottom one as high as their
/// content, the middle one filling the rest. Each element sits in a holder of its own, with
/// a gap of `m_holder_spacing` above it, so that hiding the element hides the gap with it.
///
/// All buttons of a sizing style (0 and 1) are equally large: the widest and the highest
/// that any of them wants, at least (100, 23) for style 0 and (160, 46) for style 1; style
/// 2 buttons keep their own sizes. Button fonts and colours come from the UI settings and
/// follow a theme change, which also measures the common sizes again. The panel's minimum
/// size is set to what its content needs at each element or button added and at each
/// theme change, so that sizers around it make room (the host lays them out again). Hiding
/// an element gives its place to the others but leaves the minimum as it was.
///
/// The panel decides nothing about what the buttons do: the host subscribes to each
/// button's `pressed` signal. Buttons can't be taken out again; hiding one makes it go.
/// Elements belong to the panel's tree once added. GUI thread only.
class TAMSEL3_API side_panel_t : public wxPanel, public korvat2::subscriber_base_t {
 public:
  /// A counted element of the panel's tree.
  using element_ptr_t = korvat2::intrusive_pointer_t<plaxi1::elements::UIElement>;
  /// A counted tab button.
  using button_ptr_t = korvat2::intrusive_pointer_t<plaxi1::elements::TabButton>;

  /// The areas, from top to bottom.
  enum area_type_t : int {
    area_top = 0,     ///< packed at the top, as high as its content
    area_middle = 1,  ///< between the others, over the rest of the height
    area_bottom = 2,  ///< packed at the bottom, as high as its content
  };

  /// How a button is sized.
  enum button_style_t : int {
    button_style_normal = 0,  ///< common size, at least (100, 23); the normal font
    button_style_large = 1,   ///< common size, at least (160, 46); the large font
    button_style_own = 2,     ///< its own size and font; colours set once when added
  };

  /// An empty panel: three empty areas and no background.
  side_panel_t(wxWindow* parent, int id);
  ~side_panel_t() override;

  /// Makes a button with `text` and `picture` (a still picture or an animation; an empty
  /// one shows none) in the middle area, and gives it back for the host to subscribe to.
  button_ptr_t add_button(const wxString& text, const plaxi1::picture_t& picture, button_style_t style);
  /// Moves `button` into `area` in a holder of its own and styles it; its test id becomes
  /// its label's text. A null button is reported and ignored.
  void add_button(const button_ptr_t& button, area_type_t area, button_style_t style);
  /// Moves `element` into `area` in a holder of its own. A null element is reported and
  /// ignored; adding the same element twice reports the second connection.
  void add_element(const element_ptr_t& element, area_type_t area);
  /// The element of an area; `area` must be one of area_type_t.
  element_ptr_t get_area(area_type_t area);

  /// Shows `image` as the background picture, over the background colour.
  void set_bg_image(const wxImage& image);
  /// The same as `set_bg_image`, under the toolkit's spelling.
  void SetBgImage(const wxImage& image) { set_bg_image(image); }
  /// Shows `picture` as the background picture.
  void set_bg_static_picture(const plaxi1::wxStaticPicture& picture);
  /// The background picture in the display's form; not ok without one.
  wxImage get_bg_image() const;
  /// The same as `get_bg_image`, under the toolkit's spelling.
  wxImage GetBgImage() const { return get_bg_image(); }
  /// The background picture as it was given.
  plaxi1::wxStaticPicture get_bg_static_picture() const { return m_bg_picture; }
  /// The colour under the picture, or alone without one; an invalid colour paints none.
  void set_bg_color(const wxColour& color);
  /// The colour under the picture; invalid when none was set.
  wxColour get_bg_color() const;

  // The steps of the panel's work, public for hosts that build on them.
  /// Makes the background and the three areas; the constructor calls it.
  void init();
  /// A holder in `area` for one element, placed by `position_flags`, with the gap above it.
  element_ptr_t create_holder_element(area_type_t area, int position_flags);
  /// Gives `button` its text, picture and style.
  void init_button(const button_ptr_t& button, const wxString& text, const plaxi1::picture_t& picture,
                   button_style_t style);
  /// Gives `button` the colours and font of `style`.
  void setup_button_style(const button_ptr_t& button, button_style_t style);
  /// Gives `button` the common size of `style` (style 2: its own).
  void set_up_button_size(const button_ptr_t& button, button_style_t style);
  /// Measures the common size of styles 0 and 1 again, from their floors.
  void calc_new_sizes();
  /// Gives every button of styles 0 and 1 the common size of its style.
  void update_button_sizes();
  /// Sets the panel's minimum size to what its content needs.
  void update_panel_min_size();
  /// Gives every button the colours of the UI settings.
  void update_button_colors();
  /// Gives `button` the font of its style and the colours of the UI settings.
  void set_button_font_and_color(const button_ptr_t& button, button_style_t style);
  /// An element was shown or hidden: its holder follows.
  void on_element_hidden(const element_ptr_t& element);

 protected:
  /// The UI settings changed: new fonts and colours, common sizes and minimum size.
  virtual void on_update_ui_settings();

  /// Holds the element tree in the window.
  korvat2::smart_pointer_t<plaxi1::elements::ElementAdapter> m_adapter;
  /// The background: picture and colour.
  korvat2::intrusive_pointer_t<plaxi1::elements::BgImageElement> m_bg;
  /// The three areas, by area_type_t.
  std::vector<element_ptr_t> m_areas;
  /// The buttons of each style, by button_style_t.
  std::vector<std::vector<button_ptr_t>> m_buttons;
  /// The common size of each style.
  std::vector<wxSize> m_sizes;
  /// The gap above each element's holder.
  wxSize m_holder_spacing;
  /// The room around a button's label.
  wxSize m_button_border;
  /// The background picture as given.
  plaxi1::wxStaticPicture m_bg_picture;

 private:
  friend struct side_panel_test_access_t;
};

}  // namespace tamsel3
