#include "element_report.h"

#include <ombrelc/ombrelc.h>
#include <ombrelgrid/ombrelgrid.h>
#include <plaxi1/element_adapter.h>
#include <plaxi1/element_buttons.h>
#include <plaxi1/element_shapes.h>
#include <plaxi1/icon_button.h>

#include <wx/window.h>

#include <algorithm>
#include <string>

namespace gallery {
namespace {

using ombrelc7::rect;

struct line_writer_t {
  wxWindow* window;
  std::ostream& out;

  // `area` in `window`'s client coordinates.
  void write(const char* kind, const rect<int>& area, bool checked, std::string name, bool enabled = true,
             const std::string& opened = "") const {
    std::replace(name.begin(), name.end(), '\n', ' ');
    const wxPoint origin = window->ClientToScreen(wxPoint(area.left, area.top));
    const std::string flags = checked ? "checked" : !enabled ? "disabled" : !opened.empty() ? opened : "-";
    out << "element " << kind << ' ' << origin.x << ' ' << origin.y << ' ' << area.width() << ' '
        << area.height() << ' ' << flags << ' ' << name << '\n';
  }
};

// `area` of the viewer's content coordinates in the window's, cut to the viewer.
rect<int> viewer_to_window(const ombrelgrid8::CGridViewer* viewer, const rect<int>& area) {
  const rect<int> shown = viewer->GetWindowRect();
  const int dx = shown.left - viewer->GetRect().left;
  const int dy = shown.top - viewer->GetRect().top;
  return rect<int>(area.left + dx, area.top + dy, area.right + dx, area.bottom + dy).intersection(shown);
}

// The header's cells, and the cells of the rows that fit whole in the viewer.
void report_grid(const ombrelgrid8::CGrid* grid, const line_writer_t& writer) {
  const ombrelgrid8::CGridViewer* viewer = grid->GetViewer();
  const ombrelgrid8::CGridHeader* header = viewer->GetHeader();
  const rect<int>& strip = header->GetRect();
  for (int column = 0; column < header->GetColumnCount(); ++column) {
    const int left = strip.left + header->GetColumnLeft(column);
    const bool last = column + 1 == header->GetColumnCount();
    const int right = last ? std::max(strip.right, left + header->GetColumnWidth(column))
                           : left + header->GetColumnWidth(column);
    writer.write("header", viewer_to_window(viewer, {left, strip.top, right, strip.bottom}), false,
                 header->GetCaption(column));
  }
  const ombrelgrid8::IGridModel* model = grid->GetModel();
  const int end = std::min(model->GetRowCount(), viewer->GetTopRow() + viewer->GetPageRows());
  for (int row = viewer->GetTopRow(); row < end; ++row) {
    for (int column = 0; column < header->GetColumnCount(); ++column) {
      const rect<int> cell = viewer_to_window(viewer, viewer->GetCellRect(row, column));
      if (column == grid->GetCheckColumn() && model->GetCheck(row) >= 0) {
        writer.write("check", cell, model->GetCheck(row) == 1, header->GetCaption(column));
      } else {
        bool hint = false;
        writer.write("cell", cell, false, model->GetCellText(row, column, hint));
      }
    }
  }
}

void report_ombrelc(const ombrelcfrw7::CVisualElement* element, const line_writer_t& writer) {
  if (!element->IsVisible() || element->GetVisibleWindowRect().empty()) {
    return;
  }
  const rect<int> area = element->GetWindowRect();
  if (const auto* grid = dynamic_cast<const ombrelgrid8::CGrid*>(element)) {
    writer.write("table", area, false, grid->GetAccessibleName());
    report_grid(grid, writer);
  } else if (const auto* button = dynamic_cast<const ombrelcfrw7::CButton*>(element)) {
    writer.write("button", area, false, element->AsString(), button->IsEnabled());
  } else if (dynamic_cast<const ombrelcfrw7::CCaption*>(element)) {
    writer.write("label", area, false, element->AsString());
  } else if (dynamic_cast<const ombrelcfrw7::CGauge*>(element)) {
    writer.write("gauge", area, false, "Progress");
  } else if (const auto* image = dynamic_cast<const ombrelcfrw7::CImage*>(element)) {
    writer.write("image", area, false, image->GetAccessibleName());
  }
  for (const ombrelcfrw7::CVisualElement* child : element->GetChildren()) {
    report_ombrelc(child, writer);
  }
}

void report_plaxi1(const plaxi1::elements::UIElement* element, const line_writer_t& writer) {
  const wxRect& r = element->GetRect();
  if (!element->IsVisible() || r.IsEmpty()) {
    return;
  }
  const rect<int> area = rect<int>::from_size(r.x, r.y, r.width, r.height);
  if (auto* tab =
          dynamic_cast<plaxi1::elements::TabButton*>(const_cast<plaxi1::elements::UIElement*>(element))) {
    writer.write("button", area, false, tab->GetText() ? tab->GetText()->GetText().utf8_string() : "");
    return;  // its label is its name
  }
  if (const auto* button = dynamic_cast<const plaxi1::elements::FlatButton*>(element)) {
    const int expanded = button->GetAccessibleExpanded();
    writer.write("button", area, false, button->GetAccessibleName(), button->IsEnabled(),
                 expanded < 0 ? ""
                 : expanded   ? "expanded"
                              : "collapsed");
  } else if (const auto* text = dynamic_cast<const plaxi1::elements::TextElement*>(element)) {
    writer.write("label", area, false, text->GetText().utf8_string());
  }
  for (const auto& child : element->GetChildren()) {
    report_plaxi1(child.get(), writer);
  }
}

void report_window(wxWindow* window, std::ostream& out) {
  if (!window->IsShownOnScreen()) {
    return;
  }
  const line_writer_t writer{window, out};
  // A control that draws a button itself, named by its label.
  if (dynamic_cast<plaxi1::wxIconButton*>(window)) {
    const wxSize size = window->GetClientSize();
    writer.write("button", rect<int>::from_size(0, 0, size.x, size.y), false,
                 window->GetLabel().utf8_string(), window->IsEnabled());
  }
  if (ombrelc7::ISysWindow* wrapper = ombrelc7::FindWrapperForWx(window)) {
    if (auto* control = dynamic_cast<ombrelcfrw7::CBaseControl*>(wrapper->GetControl())) {
      report_ombrelc(control->GetContent(), writer);
    }
  }
  if (plaxi1::elements::ElementAdapter* adapter = plaxi1::elements::ElementAdapter::Find(window)) {
    if (adapter->GetRootElement()) {
      report_plaxi1(adapter->GetRootElement().get(), writer);
    }
  }
  for (wxWindow* child : window->GetChildren()) {
    report_window(child, out);
  }
}

bool pending_in(wxWindow* window) {
  ombrelc7::ISysWindow* wrapper = ombrelc7::FindWrapperForWx(window);
  if (wrapper && wrapper->IsLayoutPending()) {
    return true;
  }
  const wxWindowList& children = window->GetChildren();
  return std::any_of(children.begin(), children.end(), [](wxWindow* child) { return pending_in(child); });
}

}  // namespace

void report_elements(wxWindow* window, std::ostream& out) {
  report_window(window, out);
  const wxRect frame = window->GetScreenRect();
  out << "window " << frame.x << ' ' << frame.y << ' ' << frame.width << ' ' << frame.height << '\n';
  out << "ready" << std::endl;
}

bool layout_pending(wxWindow* window) { return pending_in(window); }

}  // namespace gallery
