#pragma once
// Property editors: they bind a row to an edit box and carry the text between them.
#include <ombrelc7/edit_notify.h>
#include <ombrelpropgrid2/prop_item.h>

#include <korvat2/signal.h>

#include <string>

namespace ombrelcfrw7 {
class CBaseEditor;
class CEditor;
}  // namespace ombrelcfrw7

namespace ombrelpropgrid2 {

/// Binds the edit box to the row under edit. GUI thread.
class IPropertyEditor {
 public:
  virtual ~IPropertyEditor() = default;
  /// Makes `item` the row under edit; while the edit box is open it shows the item's text
  /// and stays open (null: no row, the box closes without keeping its text).
  virtual void SetProperty(IPropItem* item) = 0;
  virtual IPropItem* GetItem() const = 0;
  /// Shows `text` in the open edit box.
  virtual void SetEditorText(const std::string& text) = 0;
};

/// The common part: the edit box, the row, and the end of an edit.
class PropertyEditor : public IPropertyEditor,
                       public ombrelc7::CEditNotify,
                       public korvat2::subscriber_base_t {
 public:
  void SetEditor(ombrelcfrw7::CEditor* editor) { m_editor = editor; }
  ombrelcfrw7::CEditor* GetEditor() const { return m_editor; }
  void SetProperty(IPropItem* item) override;
  IPropItem* GetItem() const override { return m_item; }
  void SetEditorText(const std::string& text) override;
  /// Opens the edit box on `item` with its text; false without an edit box.
  bool BeginEdit(IPropItem* item);
  /// Connected to the edit box's end of editing: an accepted text goes to the row.
  void OnEndEdit(ombrelcfrw7::CBaseEditor* editor, bool accepted);
  /// A closed box edits no row.
  void EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) override;

 private:
  ombrelcfrw7::CEditor* m_editor = nullptr;
  IPropItem* m_item = nullptr;
};

template <class T>
class LinePropertyEditor;

/// A line editor's binding. The owner of the grid sets the characters that a text may not
/// hold and the tooltip that says so: a typed or pasted one is taken out again at once,
/// the caret stays where it was, and the tooltip shows on the edit box.
template <>
class LinePropertyEditor<std::string> : public PropertyEditor {
 public:
  std::string m_restricted_symbols;
  std::string m_tooltip_text;
  /// The tooltip was shown since the last edit began (for tests).
  bool TooltipShown() const { return m_tooltip_shown; }

  void EditOnChangeText(ombrelcfrw7::CBaseEditor* editor) override;
  void EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) override;

 private:
  bool m_tooltip_shown = false;
};

template <class T>
class ComboPropertyEditor;

/// A combo box's binding: opening it lists the row's extra values.
template <>
class ComboPropertyEditor<std::string> : public PropertyEditor {
 public:
  void EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) override;
};

}  // namespace ombrelpropgrid2
