#pragma once
// Message cards: an icon, a bold header and content under it.
#include <ombrelcfrw7/boxes.h>

#include <korvat2/signal.h>

#include <string>

namespace ombrelcfrw7 {

class CCaption;
class CImage;

/// A message card: a header row with a 24 px CImage at the left and a bold CCaption, and the
/// element's other children stacked in a content column under the header text (4 px
/// apart), padded by 8 px, 6 px between header and content, with a thin separator line
/// below. AsString emits AsStringSignal (with the card and an output string) when it has
/// connections; otherwise it gives the default text.
class CMessageBoxBase : public CVisualElement {
 public:
  CMessageBoxBase(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment,
                  bool horizontal_content = false);
  CImage* GetImage() const { return m_image; }
  CCaption* GetCaption() const { return m_caption; }
  korvat2::signal_t<CVisualElement*, std::string&>& AsStringSignal() { return m_as_string; }
  std::string AsString() const override;
  /// A panel named by the header text.
  void DescribeAccessible(a11y::info_t& info) const override;

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;

 private:
  ombrelc7::rect<int> ContentArea(const ombrelc7::rect<int>& area) const;
  int HeaderOffset() const;
  int HeaderHeight(int width) const;

  CImage* m_image = nullptr;
  CCaption* m_caption = nullptr;
  bool m_horizontal;
  mutable korvat2::signal_t<CVisualElement*, std::string&> m_as_string;
};

/// A message card whose content column stacks like `Box` (CVertBox or CHorzBox).
template <class Box>
class CMessageBoxTempl : public CMessageBoxBase {
 public:
  CMessageBoxTempl(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
      : CMessageBoxBase(parent, size, alignment, Box::horizontal) {}
};

using CCustomMessageBox = CMessageBoxTempl<CVertBox>;

}  // namespace ombrelcfrw7
