#pragma once
// Push buttons drawn by the native renderer, a row of them, and boxes with such a row.
#include <ombrelcfrw7/caption.h>

#include <korvat2/signal.h>
#include <plaxi1/press_tracker.h>

#include <cstddef>
#include <string>

namespace ombrelcfrw7 {

/// A push button drawn by wxRendererNative: normal, under the mouse, pressed, disabled,
/// focused. Clicked by the mouse, and by Space or Enter while it has the keyboard focus
/// (Tab moves the focus among buttons). ClickSignal fires on the GUI thread.
class CButton : public CCaption {
 public:
  CButton(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  virtual void Enable(bool enable);
  bool IsEnabled() const { return m_press.is_enabled(); }
  int GetId() const { return m_id; }
  void SetId(int id) { m_id = id; }
  korvat2::signal_t<CButton*>& ClickSignal() { return m_click; }
  /// What a click does: emits ClickSignal when the button is enabled.
  void Click();
  bool IsFocusable() const override { return IsEnabled() && IsShownInTree(); }
  bool IsPressed() const { return m_press.is_pressed(); }
  bool IsHot() const { return m_press.is_hot(); }
  /// A push button named by its caption, with the action "click".
  void DescribeAccessible(a11y::info_t& info) const override;
  bool DoAccessibleAction(int index) override;
  /// A compact button is as wide as its caption and the padding around it, with no
  /// least width of a dialog button: for a small button inside a row.
  void SetCompact(bool compact);

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void PaintContent(wxDC& dc, const ombrelc7::rect<int>& clip) override;
  ombrelc7::rect<int> TextArea() const override;
  bool OnMouse(const element_mouse_t& event) override;
  bool OnKey(const element_key_t& key) override;
  void OnFocusChanged(bool focused) override { Invalidate(); }

 private:
  korvat2::signal_t<CButton*> m_click;
  int m_id = 0;
  bool m_compact = false;
  plaxi1::press_tracker_t m_press;
};

/// A row of buttons at the trailing (right) side. ButtonSignal fires with the id of the
/// clicked button.
class CButtonSet : public CVisualElement, public korvat2::subscriber_base_t {
 public:
  CButtonSet(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  void ClearButtons();
  /// Appends a button; the set owns it.
  CButton* AddButton(const std::string& caption, int id);
  std::size_t GetButtonCount() const { return GetChildren().size(); }
  CButton* GetButton(std::size_t index) const;
  korvat2::signal_t<int>& ButtonSignal() { return m_button; }

 protected:
  int MeasureWidth() const override;
  int MeasureHeight(int width) const override;
  void ArrangeChildren() override;

 private:
  void OnButtonClick(CButton* button);
  korvat2::signal_t<int> m_button;
};

/// A box of kind `Box` (CVertBox or CHorzBox) ending with a CButtonSet, whose ButtonSignal
/// is chained into the box's own.
template <class Box>
class CButtonsFlavor : public Box {
 public:
  CButtonsFlavor(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment)
      : Box(parent, size, alignment),
        m_buttons(new CButtonSet(this, ombrelc7::size<int>(0, 0), ombrelc7::alStretch)) {
    m_buttons->ButtonSignal().connect(&m_signal);
  }
  CButtonSet* GetButtonSet() const { return m_buttons; }
  korvat2::signal_t<int>& ButtonSignal() { return m_signal; }

 private:
  CButtonSet* m_buttons;
  korvat2::signal_t<int> m_signal;
};

}  // namespace ombrelcfrw7
