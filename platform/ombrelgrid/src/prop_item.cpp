#include <ombrelpropgrid2/prop_item.h>
#include <ombrelpropgrid2/property_editor.h>

namespace ombrelpropgrid2 {

namespace {
constexpr int content_margin = 4;
}

void IEditable::SetEditor(IPropertyEditor* editor) {
  IPropertyEditor* old = m_editor;
  m_editor = editor;
  // An editor still open on this row lets it go, its text dropped.
  if (old && old != editor && old->GetItem() == dynamic_cast<IPropItem*>(this)) {
    old->SetProperty(nullptr);
  }
}

void IDrawable::GetContentRect(ombrelc7::rect<int>& area, bool) const {
  area.left += content_margin;
  area.right -= content_margin;
}

void IDrawable::DrawValue(IPainter* painter, ombrelc7::rect<int>& area, bool editing) {
  if (!painter) {
    return;
  }
  GetContentRect(area, editing);
  DrawValueInt(painter, area);
}

IPropItem::~IPropItem() {
  if (IPropertyEditor* editor = GetEditor(); editor && editor->GetItem() == this) {
    editor->SetProperty(nullptr);
  }
}

}  // namespace ombrelpropgrid2
