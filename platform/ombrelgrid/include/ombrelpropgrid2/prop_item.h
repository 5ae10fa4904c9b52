#pragma once
// A row of a property grid: the interfaces that make up an item.
#include <ombrelc7/geometry.h>

#include <korvat2/signal.h>

#include <cstdint>
#include <string>

class wxDC;

namespace ombrelpropgrid2 {

class IPropertyEditor;
class IPropItem;

/// The tick of a row.
enum check_state : std::int32_t {
  csClear = 0,
  csTicked = 1,
  csUnset = 2,  ///< as a row is made, before anybody set it
};

/// How a row is edited; see CBaseGrid::SetItemEditor.
enum edit_type : int {
  etLine = 1,           ///< a line editor
  etEditableCombo = 2,  ///< a combo box that takes typing
  etMore = 4,           ///< a line editor with a "..." button
  etFixedCombo = 6,     ///< a combo box of fixed values
  etNone = 7,           ///< no editor
};

/// A click on a row's "..." button: its item (null when the row has none) and the row.
struct click_data_t {
  IPropItem* item = nullptr;
  int row = -1;
};

/// What draws a value.
class IPainter {
 public:
  /// Draws `text` in `area`; `format` 33 is left aligned and vertically centred, `length`
  /// -1 the whole text.
  virtual void DrawString(const std::string& text, const ombrelc7::rect<int>& area, int format,
                          int length) = 0;

 protected:
  ~IPainter() = default;
};

class IValuedAsString {
 public:
  virtual ~IValuedAsString() = default;
  virtual void SetStringValue(const std::string& value) = 0;
  virtual std::string GetStringValue() const = 0;
  virtual void Clear() = 0;
  virtual bool IsEmpty() = 0;
};

template <class T>
class IItemTmpl {
 public:
  virtual ~IItemTmpl() = default;
  /// Assigns the value and nothing else.
  virtual void SetValue(const T& value) { m_value = value; }
  virtual T GetValue() const { return m_value; }

 private:
  T m_value{};
};

class ICheckable {
 public:
  explicit ICheckable(check_state state = csUnset) : m_check(state) {}
  virtual ~ICheckable() = default;
  virtual void SetChecked(check_state state) { m_check = state; }
  virtual check_state GetChecked() const { return m_check; }

 private:
  check_state m_check;
};

class IEditable {
 public:
  explicit IEditable(int type = etLine) : m_edit_type(type) {}
  virtual ~IEditable() = default;
  virtual int GetEditType() const { return m_edit_type; }
  /// Binds the row to `editor` (null: none). An editor left open on this row is closed
  /// without keeping its text, so that it never holds a dead row.
  virtual void SetEditor(IPropertyEditor* editor);
  virtual IPropertyEditor* GetEditor() const { return m_editor; }

 private:
  IPropertyEditor* m_editor = nullptr;
  int m_edit_type;
};

class IEnabling {
 public:
  virtual ~IEnabling() = default;
  virtual void SetEnabled(bool enabled) { m_enabled = enabled; }
  virtual bool GetEnabled() const { return m_enabled; }

 private:
  bool m_enabled = true;
};

class IDrawable : public IEditable, public IEnabling {
 public:
  using IEditable::IEditable;
  /// The rectangle of the value inside `area` (cell coordinates), less a margin.
  virtual void GetContentRect(ombrelc7::rect<int>& area, bool editing) const;
  virtual void DrawValue(IPainter* painter, ombrelc7::rect<int>& area, bool editing);
  virtual void DrawValueInt(IPainter* painter, ombrelc7::rect<int>& area) = 0;
};

class ICaptioned {
 public:
  virtual ~ICaptioned() = default;
  virtual void SetCaption(const std::string& caption) { m_caption = caption; }
  virtual std::string GetCaption() const { return m_caption; }

 private:
  std::string m_caption;
};

/// The base of a row. Owned by the model it was added to.
class IPropItem : public ICheckable, public IDrawable, public IValuedAsString, public ICaptioned {
 public:
  IPropItem(int type, check_state state) : ICheckable(state), IDrawable(type) {}
  ~IPropItem() override;
  virtual void deleteValue() = 0;
  virtual bool isGroup() const { return false; }
  /// Deletes the item.
  virtual void release() { delete this; }
  virtual IPropItem* Clone() = 0;

  /// Emitted with the item when its value was set from outside the grid.
  korvat2::signal_t<IPropItem*> value_changed;
};

}  // namespace ombrelpropgrid2
