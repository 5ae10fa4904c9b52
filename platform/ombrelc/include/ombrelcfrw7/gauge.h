#pragma once
// Progress bars.
#include <ombrelcfrw7/visual_element.h>

#include <korvat2/signal.h>

namespace ombrelcfrw7 {

class CButton;

/// A themed progress bar; the position is clamped to [0, max].
class CGauge : public CVisualElement {
 public:
  CGauge(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  void SetMax(double max);
  double GetMax() const { return m_max; }
  void Increase(double step);
  void SetPos(double pos);
  double GetPos() const { return m_pos; }
  /// A progress bar whose value is the percentage done (0 to 100), named by the header of
  /// the message card it shows in (unnamed outside one).
  void DescribeAccessible(a11y::info_t& info) const override;

 protected:
  int MeasureHeight(int width) const override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  /// Where the bar is drawn; CGaugeBoxEx keeps room for its button.
  virtual ombrelc7::rect<int> BarRect() const;

 private:
  void ValueChanged() const;

  double m_max = 100.0;
  double m_pos = 0.0;
};

/// A gauge with a Cancel button at its right. CancelSignal fires with the button when it is
/// clicked.
class CGaugeBoxEx : public CGauge, public korvat2::subscriber_base_t {
 public:
  CGaugeBoxEx(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  CButton* GetCancelButton() const { return m_cancel; }
  korvat2::signal_t<CButton*>& CancelSignal() { return m_cancel_signal; }

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;
  ombrelc7::rect<int> BarRect() const override;

 private:
  CButton* m_cancel;
  korvat2::signal_t<CButton*> m_cancel_signal;
};

}  // namespace ombrelcfrw7
