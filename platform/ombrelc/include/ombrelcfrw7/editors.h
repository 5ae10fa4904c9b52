#pragma once
// Edit boxes over visual elements: a native wx control laid over the element's rectangle
// while it is shown, as wx's own grid does with its cell editors.
#include <ombrelc7/edit_notify.h>
#include <ombrelcfrw7/visual_element.h>

#include <korvat2/signal.h>

#include <string>
#include <vector>

class wxCommandEvent;
class wxKeyEvent;
class wxWindow;
class wxWindowDestroyEvent;

namespace ombrelc7 {
class ISysWindow;
}

namespace ombrelcfrw7 {

/// What ProcessEditorCommand does.
enum EditorCommand : int {
  ecNone = 0,
  ecAccept = 1,  ///< ends the edit and keeps its text
  ecCancel = 2,  ///< ends the edit and drops its text
};

/// The base of an edit box: its listeners, its end-of-editing signal and its commands.
/// GUI thread.
class CBaseEditor : public CVisualElement, public ombrelc7::IEventSender {
 public:
  CBaseEditor(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  ~CBaseEditor() override;

  virtual void SetText(const std::string& utf8) = 0;
  virtual std::string GetText() const = 0;
  /// ecAccept and ecCancel end the edit: EndEditSignal fires with this editor and whether
  /// the text was accepted, and the editor hides unless KeepOpen was called meanwhile.
  virtual void ProcessEditorCommand(EditorCommand command);
  /// Called during EndEditSignal by a subscriber that moved the edit on (to a new row).
  void KeepOpen() { m_keep_open = true; }
  /// Shows or hides the editor and its native control; listeners hear EditOnVisibleChange.
  virtual void ShowEditor(bool show);
  bool IsEditorShown() const { return IsVisible(); }

  /// Fires when an edit ends: the editor and true when accepted.
  korvat2::signal_t<CBaseEditor*, bool>& EndEditSignal() { return m_end_edit; }

  /// Attaches `listener` (not owned); attaching it twice keeps one.
  void Subscribe(ombrelc7::CEditNotify* listener);
  void Unsubscribe(void* listener) override;

 protected:
  std::vector<ombrelc7::CEditNotify*> m_listeners;

  template <class F>
  void Notify(F call) {
    const std::vector<ombrelc7::CEditNotify*> listeners = m_listeners;
    for (ombrelc7::CEditNotify* listener : listeners) {
      call(listener);
    }
  }

 private:
  korvat2::signal_t<CBaseEditor*, bool> m_end_edit;
  bool m_keep_open = false;
};

/// An edit box whose native control lives in a wrapped window. Made detached and hidden;
/// its owner reparents it into the tree, calls Init, and shows it over the area to edit.
class CEditor : public CBaseEditor {
 public:
  CEditor();
  ~CEditor() override;

  /// The native control (null before Init).
  wxWindow* GetNativeControl() const { return m_native; }
  /// The part of `area` (window coordinates) that the native control takes.
  virtual void GetEditorRect(ombrelc7::rect<int>& area) const {}
  /// How far right of the native control's left edge its text starts (the theme's
  /// border and padding), so that an owner can put the text where it drew its own.
  int GetTextInset() const;
  void ShowEditor(bool show) override;
  /// Moves the native control over the element's rectangle, less GetEditorRect; an empty
  /// rectangle (the row scrolled away) hides it until the element is placed again.
  void PlaceNative();

 protected:
  /// Takes ownership of the native control (a child of the wrapped window, which deletes
  /// it) and routes its keys: Enter accepts, Escape cancels.
  void AdoptNative(wxWindow* native);
  void ArrangeChildren() override;

 private:
  void OnNativeKey(wxKeyEvent& event);
  void OnNativeDestroy(wxWindowDestroyEvent& event);

  wxWindow* m_native = nullptr;
};

/// A one-line text box (wxTextCtrl).
class CLineEditor : public CEditor {
 public:
  /// Makes the native control in `window`, hidden.
  void Init(ombrelc7::ISysWindow* window);
  void SetText(const std::string& utf8) override;
  std::string GetText() const override;
  /// The caret, in characters.
  long GetInsertionPoint() const;
  void SetInsertionPoint(long position);

 private:
  void OnNativeText(wxCommandEvent& event);
  bool m_setting = false;
};

/// A combo box (wxComboBox): editable, or a fixed choice of its values.
class CComboBox : public CEditor {
 public:
  /// Makes the native control in `window`, hidden; `editable` lets the user type.
  void Init(ombrelc7::ISysWindow* window, bool editable);
  bool IsEditable() const { return m_editable; }
  void SetText(const std::string& utf8) override;
  std::string GetText() const override;
  void SetValues(const std::vector<std::string>& values);

 private:
  void OnNativeText(wxCommandEvent& event);
  void FillNative();
  bool m_editable = true;
  std::vector<std::string> m_values;
};

/// An editor `Base` with an element `Deco` (a button) beside its text. The decoration is
/// placed by its alignment: 1 left, 2 right, 3 top, 4 bottom; it takes its preferred width
/// beside the text and its least height above or below it.
template <class Deco, class Base>
class CDecoration : public Base {
 public:
  CDecoration() = default;
  /// Makes the decoration, a child of this editor, of `size` and `alignment`.
  Deco* CreateDecoration(const ombrelc7::size<int>& size, ombrelc7::Alignment alignment) {
    m_decoration = new Deco(this, size, alignment);
    return m_decoration;
  }
  Deco* GetDecoration() const { return m_decoration; }

  /// `area` less the decoration, on the side of its alignment.
  void GetEditorRect(ombrelc7::rect<int>& area) const override {
    if (!m_decoration) {
      return;
    }
    const ombrelc7::size<int> deco = DecorationSize();
    switch (static_cast<int>(m_decoration->GetAlignment())) {
      case 1: area.left += deco.cx; break;
      case 2: area.right -= deco.cx; break;
      case 3: area.top += deco.cy; break;
      case 4: area.bottom -= deco.cy; break;
      default: break;
    }
  }

 protected:
  void ArrangeChildren() override {
    if (m_decoration) {
      m_decoration->Arrange(DecorationRect());
    }
    Base::PlaceNative();
  }

 private:
  ombrelc7::rect<int> DecorationRect() const {
    const ombrelc7::rect<int>& r = this->GetRect();
    const ombrelc7::size<int> deco = DecorationSize();
    switch (static_cast<int>(m_decoration->GetAlignment())) {
      case 1: return {r.left, r.top, r.left + deco.cx, r.bottom};
      case 2: return {r.right - deco.cx, r.top, r.right, r.bottom};
      case 3: return {r.left, r.top, r.right, r.top + deco.cy};
      case 4: return {r.left, r.bottom - deco.cy, r.right, r.bottom};
      default: return r;
    }
  }

  ombrelc7::size<int> DecorationSize() const {
    return {m_decoration->GetPreferredWidth(), m_decoration->GetMinSize().cy};
  }

  Deco* m_decoration = nullptr;
};

}  // namespace ombrelcfrw7
