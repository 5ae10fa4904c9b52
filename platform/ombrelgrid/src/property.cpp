#include <ombrelpropgrid2/property.h>

#include <algorithm>

namespace ombrelpropgrid2 {

void Property<std::string>::CopyInto(Property& copy) const {
  copy.SetEnabled(true);
  copy.SetCaption(GetCaption());
  copy.SetValue(GetValue());
}

IPropItem* Property<std::string>::Clone() {
  auto* copy = new Property<std::string>(GetEditType(), GetChecked());
  CopyInto(*copy);
  return copy;
}

void Property<std::string>::DrawValueInt(IPainter* painter, ombrelc7::rect<int>& area) {
  if (painter) {
    painter->DrawString(GetStringValue(), area, 33, -1);
  }
}

template <class T>
void ComboFlavor<T>::insAdditionalValue(const T& value, int index) {
  index = std::max(0, std::min(index, getAdditionalCount()));
  m_values.insert(m_values.begin() + index, value);
}

template <class T>
void ComboFlavor<T>::delAdditionalValue(const T& value) {
  m_values.erase(std::remove(m_values.begin(), m_values.end(), value), m_values.end());
}

template <class T>
void ComboFlavor<T>::delAdditionalValue(int index) {
  if (index >= 0 && index < getAdditionalCount()) {
    m_values.erase(m_values.begin() + index);
  }
}

template <class T>
T ComboFlavor<T>::getAdditionalValue(int index) const {
  return index >= 0 && index < getAdditionalCount() ? m_values[index] : T();
}

template class ComboFlavor<std::string>;

IPropItem* ComboProperty<std::string>::Clone() {
  auto* copy = new ComboProperty<std::string>(GetEditType(), GetChecked());
  CopyInto(*copy);
  // From the last to the first, each in front: the order stays.
  for (int i = getAdditionalCount() - 1; i >= 0; --i) {
    copy->insAdditionalValue(getAdditionalValue(i), 0);
  }
  return copy;
}

}  // namespace ombrelpropgrid2
