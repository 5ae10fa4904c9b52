#pragma once
/// Elements that draw: a rectangle with a background and a border, the same under a
/// picture, and a line of text.
#include <plaxi1/element.h>
#include <plaxi1/picture.h>

#include <wx/colour.h>
#include <wx/font.h>
#include <wx/string.h>

#include <memory>

namespace plaxi1::elements {

/// A painted box: a background colour (an invalid colour paints none) and a border of one
/// device-independent pixel, drawn inside the margin. The border is solid and hidden until
/// shown.
class RectangleElement : public UIElement {
 public:
  /// A root element, without parent.
  RectangleElement() : RectangleElement(nullptr, pos_none) {}
  RectangleElement(const ptr_t& parent, int position_flags) : UIElement(parent, position_flags) {}

  void SetBkColor(const wxColour& color);
  wxColour GetBkColor() const { return m_bk_color; }
  void SetBorderColor(const wxColour& color);
  wxColour GetBorderColor() const { return m_border_color; }
  void ShowBorder(bool show);
  bool IsBorderShown() const { return m_show_border; }
  /// Sets the style of the border and shows it, unless the style is border_none.
  void SetBorderStyle(border_style_t style);
  border_style_t GetBorderStyle() const { return m_border_style; }

 protected:
  void OnPaint(wxDC& dc) override;
  void PaintBackground(wxDC& dc) const;
  void PaintBorder(wxDC& dc) const;

 private:
  wxColour m_bk_color;
  wxColour m_border_color;
  border_style_t m_border_style = border_solid;
  bool m_show_border = false;
};

/// A rectangle covered by a picture, stretched over its painted box in the display's
/// scale form; the background colour shows where the picture is transparent.
class BgImageElement : public RectangleElement {
 public:
  BgImageElement() : BgImageElement(nullptr, pos_none) {}
  BgImageElement(const ptr_t& parent, int position_flags);
  ~BgImageElement() override;

  void SetBgStaticPicture(const wxStaticPicture& picture);
  const wxStaticPicture& GetBgStaticPicture() const { return m_picture; }

 protected:
  void OnPaint(wxDC& dc) override;

 private:
  struct cache_t;
  wxStaticPicture m_picture;
  std::unique_ptr<cache_t> m_cache;  // the picture at the size last painted
};

/// One line of text, in the UI settings' normal font and dialog text colour unless set.
/// Its content size is the text's extent. Narrower than its text, it cuts the text and
/// ends it with "…", unless truncation is turned off; the text is centred vertically.
class TextElement : public UIElement {
 public:
  TextElement(const ptr_t& parent, int position_flags, const wxString& text = wxString());

  virtual void SetText(const wxString& text);
  /// A label whose name and text are the text.
  void DescribeAccessible(a11y::info_t& info) const override;
  const wxString& GetText() const { return m_text; }
  /// An invalid font goes back to the UI settings' normal font.
  void SetFont(const wxFont& font);
  wxFont GetFont() const;
  /// An invalid colour goes back to the UI settings' dialog text colour.
  void SetColor(const wxColour& color);
  wxColour GetColor() const;
  void SetTextTruncation(bool truncate);
  bool GetTextTruncation() const { return m_truncate; }

 protected:
  wxSize GetContentSize() const override;
  void OnPaint(wxDC& dc) override;
  void OnThemeChanged() override;

 private:
  void Changed();

  wxString m_text;
  wxFont m_font;
  wxColour m_color;
  mutable wxSize m_extent = wxDefaultSize;  // measured at first need
  bool m_truncate = true;
};

}  // namespace plaxi1::elements
