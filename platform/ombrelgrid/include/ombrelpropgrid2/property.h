#pragma once
// The text rows of a property grid.
#include <ombrelpropgrid2/prop_item.h>

#include <string>
#include <vector>

namespace ombrelpropgrid2 {

template <class T>
class Property;

/// A row with a text value.
template <>
class Property<std::string> : public IPropItem, public IItemTmpl<std::string> {
 public:
  /// Enabled, with empty caption and value.
  Property(int type, check_state state) : IPropItem(type, state) {}
  void deleteValue() override { SetValue(std::string()); }
  void SetStringValue(const std::string& value) override { SetValue(std::string(value)); }
  std::string GetStringValue() const override { return GetValue(); }
  /// Empties the caption, then the value.
  void Clear() override {
    SetCaption(std::string());
    SetValue(std::string());
  }
  bool IsEmpty() override { return GetCaption().empty() && GetValue().empty(); }
  /// The same edit type and tick, enabled, caption and value copied.
  IPropItem* Clone() override;
  /// Draws GetStringValue() with DrawString(text, area, 33, -1).
  void DrawValueInt(IPainter* painter, ombrelc7::rect<int>& area) override;

 protected:
  void CopyInto(Property& copy) const;
};

/// A list of extra values offered by a combo box.
template <class T>
class ComboFlavor {
 public:
  virtual ~ComboFlavor() = default;
  /// Inserts at `index` (clamped to the list).
  void insAdditionalValue(const T& value, int index);
  void delAdditionalValue(const T& value);
  void delAdditionalValue(int index);
  /// The value at `index`, an empty one out of range.
  T getAdditionalValue(int index) const;
  int getAdditionalCount() const { return static_cast<int>(m_values.size()); }

 private:
  std::vector<T> m_values;
};

template <class T>
class ComboProperty;

/// A row whose value is chosen among extra values, or typed.
template <>
class ComboProperty<std::string> : public Property<std::string>, public ComboFlavor<std::string> {
 public:
  ComboProperty(int type, check_state state) : Property<std::string>(type, state) {}
  /// As Property's Clone, and the extra values in their order.
  IPropItem* Clone() override;
};

extern template class ComboFlavor<std::string>;

}  // namespace ombrelpropgrid2
