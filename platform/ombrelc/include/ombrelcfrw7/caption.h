#pragma once
// A text element: one line or wrapped, plain or a small HTML subset, with an optional icon.
#include <ombrelcfrw7/visual_element.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace ombrelc7 {
class IImageList;
}

namespace ombrelcfrw7 {

/// A caption: UTF-8 text drawn in a font of plaxi1's settings, optionally with a picture of
/// the control's image list at its left (vertically centred on the first line). With
/// AdjustHeight the height grows to the wrapped text; without, the text is one line,
/// ellipsized. With UseHTML the text may hold `<b>`, `<i>`, `<br>` and the entities
/// `&lt; &gt; &amp; &quot; &nbsp;`; other tags are dropped.
class CCaption : public CVisualElement {
 public:
  enum TextAlign {
    taLeft = 0x01,
    taCenter = 0x02,
    taRight = 0x03,
    taTop = 0x10,
    taVCenter = 0x20,
    taBottom = 0x30
  };

  CCaption(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);

  void SetCaption(const std::string& utf8);
  const std::string& GetCaption() const { return m_text; }
  /// The size follows the text.
  void SetAutoSize(bool autosize);
  bool GetAutoSize() const { return Has(cf_autosize); }
  /// True: the height grows to the wrapped text; false: one line, ellipsized.
  void AdjustHeight(bool adjust);
  bool IsAdjustHeight() const { return Has(cf_adjust_height); }
  /// A horizontal and a vertical TextAlign or-ed (default taLeft | taVCenter).
  void SetTextAlign(int align);
  int GetTextAlign() const { return m_text_align; }
  /// A picture of the control's image list; -1 for none.
  void SetImageIndex(int index);
  int GetImageIndex() const { return m_image; }
  void UseHTML(bool html);
  bool IsHTML() const { return Has(cf_html); }
  /// With AdjustHeight, wrap at word boundaries (default) rather than anywhere.
  void SetWordWrap(bool wrap);
  bool GetWordWrap() const { return Has(cf_word_wrap); }
  /// A plaxi1 font index (plaxi1::font_normal by default).
  void SetFontKind(int font);
  int GetFontKind() const { return m_font; }
  /// An invalid colour: the theme's text colour.
  void SetTextColor(const wxColour& colour);
  wxColour GetTextColor() const;

  /// The caption's plain text: tags removed, entities decoded.
  std::string AsString() const override;
  /// A label whose name and text are AsString.
  void DescribeAccessible(a11y::info_t& info) const override;

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;

  /// The rectangle the text and icon are drawn in; buttons narrow it by their frame.
  virtual ombrelc7::rect<int> TextArea() const { return GetRect(); }
  /// The text colour in use: the one set, else the theme's.
  wxColour EffectiveTextColor() const;
  /// Draws the icon and the text in `area` with `colour`.
  void DrawText(wxDC& dc, const ombrelc7::rect<int>& area, const wxColour& colour) const;
  /// The image list that the picture index refers to: the control's.
  virtual ombrelc7::IImageList* GetImages() const;
  /// Shows another text and picture without telling the tree: for a caption that stands
  /// outside it and is only measured and drawn on behalf of its owner.
  void Rebind(std::string_view utf8, int image);
  /// The width of the text on one line with the icon, and the height at `width`.
  int NaturalTextWidth() const;
  int TextHeightFor(int width) const;

 private:
  enum : std::uint8_t { cf_autosize = 1, cf_adjust_height = 2, cf_html = 4, cf_word_wrap = 8 };
  bool Has(std::uint8_t flag) const { return (m_caption_flags & flag) != 0; }
  void SetFlag(std::uint8_t flag, bool on);
  int IconWidth() const;

  std::string m_text;
  std::uint32_t m_text_colour = 0;  // packed, 0: the theme's
  std::int16_t m_image = -1;
  std::uint8_t m_text_align = taLeft | taVCenter;
  std::uint8_t m_font;
  std::uint8_t m_caption_flags = cf_word_wrap;
};

}  // namespace ombrelcfrw7
