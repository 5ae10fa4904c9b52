#include <ombrelgrid8/grid.h>

#include "grid_accessible_p.h"

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelcfrw7/editors.h>

#include <wx/dc.h>
#include <wx/renderer.h>
#include <wx/scrolbar.h>
#include <wx/settings.h>
#include <wx/window.h>

#include <algorithm>
#include <numeric>

namespace ombrelgrid8 {

using ombrelc7::point;
using ombrelc7::rect;
using ombrelcfrw7::element_mouse_t;

namespace {
constexpr int default_column_width = 100;
constexpr int edge_slack = 4;  // pixels either side of a header edge that grab it
constexpr int text_margin = 4;

// Every way the bar scrolls: lines, pages, its ends, a drag and its end.
const wxEventTypeTag<wxScrollEvent> bar_events[] = {
    wxEVT_SCROLL_TOP,        wxEVT_SCROLL_BOTTOM,       wxEVT_SCROLL_LINEUP,
    wxEVT_SCROLL_LINEDOWN,   wxEVT_SCROLL_PAGEUP,       wxEVT_SCROLL_PAGEDOWN,
    wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_THUMBRELEASE, wxEVT_SCROLL_CHANGED};

// The keys stay with the grid: a click into the grid focuses its window, which would
// otherwise hand the focus on to its first child that takes it, this bar.
class unfocusable_scroll_bar_t : public wxScrollBar {
 public:
  explicit unfocusable_scroll_bar_t(wxWindow* parent)
      : wxScrollBar(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL) {}
  bool AcceptsFocus() const override { return false; }
};

wxWindow* wx_window_of(const ombrelcfrw7::CVisualElement* element) {
  ombrelc7::ISysWindow* window = element->GetWindow();
  return window ? window->GetWxWindow() : nullptr;
}
}  // namespace

// ---- header ----------------------------------------------------------------------------

CGridHeader::CGridHeader(ombrelcfrw7::CVisualElement* parent)
    : CVisualElement(parent, ombrelc7::size<int>(0, 0), ombrelc7::alFill) {}

int CGridHeader::GetColumnWidth(int column) const {
  return column >= 0 && column < GetColumnCount() ? m_widths[column] : 0;
}

void CGridHeader::FitWidth(int width) {
  const long long sum = std::accumulate(m_widths.begin(), m_widths.end(), 0LL);
  if (width <= 0 || m_widths.empty() || sum == width) {
    return;
  }
  const int count = GetColumnCount();
  int used = 0;
  for (int i = 0; i + 1 < count; ++i) {
    m_widths[i] =
        static_cast<int>(sum > 0 ? static_cast<long long>(m_widths[i]) * width / sum : width / count);
    used += m_widths[i];
  }
  m_widths[count - 1] = width - used;
  Invalidate();
}

void CGridHeader::SetColumnWidth(int column, int width) {
  if (column >= 0 && column < GetColumnCount() && width >= 0 && m_widths[column] != width) {
    m_widths[column] = width;
    Invalidate();
  }
}

void CGridHeader::SetColumns(const std::vector<std::string>& captions) {
  if (captions == m_captions) {
    return;
  }
  const bool count_changed = captions.size() != m_captions.size();
  m_captions = captions;
  m_widths.resize(captions.size(), default_column_width);
  if (count_changed) {
    OnChange();  // the header appears or goes
  } else {
    Invalidate();
  }
}

const std::string& CGridHeader::GetCaption(int column) const {
  static const std::string none;
  return column >= 0 && column < GetColumnCount() ? m_captions[column] : none;
}

int CGridHeader::GetColumnLeft(int column) const {
  int left = 0;
  for (int i = 0; i < column && i < GetColumnCount(); ++i) {
    left += m_widths[i];
  }
  return left;
}

int CGridHeader::EdgeAt(int x) const {
  int right = 0;
  for (int i = 0; i < GetColumnCount(); ++i) {
    right += m_widths[i];
    if (x >= right - edge_slack && x <= right + edge_slack) {
      return i;
    }
  }
  return -1;
}

int CGridHeader::MeasureHeight(int) const {
  if (m_captions.empty()) {
    return 0;
  }
  wxWindow* window = wx_window_of(this);
  return window ? wxRendererNative::Get().GetHeaderButtonHeight(window) : 24;
}

void CGridHeader::PaintContent(wxDC& dc, const rect<int>& clip) {
  wxWindow* window = wx_window_of(this);
  if (!window) {
    return;
  }
  const rect<int>& r = GetRect();
  int left = r.left;
  for (int i = 0; i < GetColumnCount(); ++i) {
    // The last column's button runs to the end, so that no bare strip is left.
    const int right = i + 1 == GetColumnCount() ? std::max(r.right, left + m_widths[i]) : left + m_widths[i];
    wxHeaderButtonParams params;
    params.m_labelText = wxString::FromUTF8(m_captions[i]);
    wxRendererNative::Get().DrawHeaderButton(window, dc, wxRect(left, r.top, right - left, r.height()), 0,
                                             wxHDR_SORT_ICON_NONE, &params);
    left = right;
  }
}

bool CGridHeader::OnMouse(const element_mouse_t& event) {
  const int x = event.pos.x - GetRect().left;
  ombrelcfrw7::CBaseControl* control = GetBaseControl();
  wxWindow* window = wx_window_of(this);
  switch (event.kind) {
    case element_mouse_t::down:
      m_drag_column = EdgeAt(x);
      if (m_drag_column >= 0 && control) {
        m_drag_offset = GetColumnLeft(m_drag_column) + m_widths[m_drag_column] - x;
        control->CaptureMouse(this);
      }
      return true;
    case element_mouse_t::move:
      if (m_drag_column >= 0) {
        const int width = x + m_drag_offset - GetColumnLeft(m_drag_column);
        if (m_resizing) {
          m_resizing->Resize(*this, m_drag_column, std::max(width, m_resizing->GetMinWidth(m_drag_column)));
        } else {
          SetColumnWidth(m_drag_column, std::max(width, 0));
        }
        if (auto* grid = dynamic_cast<CGrid*>(GetParent() ? GetParent()->GetParent() : nullptr)) {
          grid->Refresh();
        }
      }
      if (window) {
        window->SetCursor(m_drag_column >= 0 || EdgeAt(x) >= 0 ? wxCursor(wxCURSOR_SIZEWE) : wxNullCursor);
      }
      return true;
    case element_mouse_t::up:
      if (m_drag_column >= 0 && control) {
        control->ReleaseMouse();
      }
      m_drag_column = -1;
      return true;
    case element_mouse_t::leave:
      if (window && m_drag_column < 0) {
        window->SetCursor(wxNullCursor);
      }
      return true;
    default: return false;
  }
}

// ---- viewer ----------------------------------------------------------------------------

void CRowRange::SetRange(int first, int last) {
  // The last one first, so that the first one wins when both don't fit.
  m_viewer->ScrollToRow(last);
  m_viewer->ScrollToRow(first);
}

CGridViewer::CGridViewer(CGrid* grid)
    : CVisualElement(grid, ombrelc7::size<int>(0, 0), ombrelc7::alClient),
      m_grid(grid),
      m_header(new CGridHeader(this)),
      m_range(this) {
  SetBkColor(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
}

CGridViewer::~CGridViewer() {
  if (m_bar) {
    m_bar->Unbind(wxEVT_DESTROY, &CGridViewer::HandleBarDestroy, this);
    for (const auto& type : bar_events) {
      m_bar->Unbind(type, &CGridViewer::HandleScroll, this);
    }
    m_bar->Destroy();
  }
}

void CGridViewer::UpdateScrollBar() {
  wxWindow* window = wx_window_of(this);
  if (!window) {
    return;
  }
  if (!m_bar) {
    m_bar = new unfocusable_scroll_bar_t(window);
    m_bar->Hide();
    for (const auto& type : bar_events) {
      m_bar->Bind(type, &CGridViewer::HandleScroll, this);
    }
    m_bar->Bind(wxEVT_DESTROY, &CGridViewer::HandleBarDestroy, this);
  }
  const int rows = m_grid->GetModel() ? m_grid->GetModel()->GetRowCount() : 0;
  const int page = GetPageRows();
  const rect<int> area = GetWindowRect();
  const int header = m_header->GetRect().height();
  const bool show = rows > page && IsShownInTree() && area.height() > header;
  const int width = show ? m_bar->GetBestSize().x : 0;
  if (width != m_bar_width) {
    m_bar_width = width;
    Invalidate();
  }
  if (show) {
    m_bar->SetScrollbar(m_top, page, rows, std::max(1, page - 1));
    m_bar->SetSize(area.right - width, area.top + header, width, area.height() - header);
  }
  m_bar->Show(show);
}

void CGridViewer::HandleScroll(wxScrollEvent& event) { SetTopRow(event.GetPosition()); }

void CGridViewer::HandleBarDestroy(wxWindowDestroyEvent& event) {
  if (event.GetEventObject() == m_bar) {
    m_bar = nullptr;
    m_bar_width = 0;
  }
  event.Skip();
}

int CGridViewer::GetRowHeight() const {
  if (m_row_height <= 0) {
    wxWindow* window = wx_window_of(this);
    m_row_height = (window ? window->GetCharHeight() : 16) + 12;
  }
  return m_row_height;
}

void CGridViewer::OnThemeChanged() { m_row_height = 0; }

int CGridViewer::RowsTop() const { return GetRect().top + m_header->GetRect().height(); }

int CGridViewer::RowsRight() const { return std::max(GetRect().left, GetRect().right - m_bar_width); }

int CGridViewer::GetPageRows() const { return std::max(1, (GetRect().bottom - RowsTop()) / GetRowHeight()); }

void CGridViewer::SetTopRow(int row) {
  const int rows = m_grid->GetModel() ? m_grid->GetModel()->GetRowCount() : 0;
  row = std::max(0, std::min(row, rows - GetPageRows()));
  if (row != m_top) {
    m_top = row;
    Invalidate();
    m_grid->Refresh();  // the open editor follows its row
  }
}

void CGridViewer::ScrollToRow(int row) {
  if (row < 0) {
    return;
  }
  if (row < m_top) {
    SetTopRow(row);
  } else if (row >= m_top + GetPageRows()) {
    SetTopRow(row - GetPageRows() + 1);
  }
}

rect<int> CGridViewer::GetCellRect(int row, int column) const {
  const rect<int>& r = GetRect();
  const int right = RowsRight();
  const int top = RowsTop() + (row - m_top) * GetRowHeight();
  if (column < 0 || m_header->GetColumnCount() == 0) {
    return {r.left, top, right, top + GetRowHeight()};
  }
  const int left = r.left + m_header->GetColumnLeft(column);
  const bool last = column + 1 >= m_header->GetColumnCount();
  return {left, top,
          last ? std::max(right, left + m_header->GetColumnWidth(column))
               : left + m_header->GetColumnWidth(column),
          top + GetRowHeight()};
}

int CGridViewer::RowAt(const point<int>& pos) const {
  if (pos.y < RowsTop() || !m_grid->GetModel()) {
    return -1;
  }
  const int row = m_top + (pos.y - RowsTop()) / GetRowHeight();
  return row < m_grid->GetModel()->GetRowCount() ? row : -1;
}

int CGridViewer::ColumnAt(int x) const {
  for (int i = 0; i + 1 < m_header->GetColumnCount(); ++i) {
    if (x < GetRect().left + m_header->GetColumnLeft(i + 1)) {
      return i;
    }
  }
  return std::max(0, m_header->GetColumnCount() - 1);
}

void CGridViewer::ArrangeChildren() {
  const rect<int>& r = GetRect();
  // As the grid changes its width, the columns keep their shares of it.
  if (r.width() != m_fitted_width) {
    m_fitted_width = r.width();
    m_header->FitWidth(r.width());
  }
  m_header->Arrange(rect<int>(r.left, r.top, r.right, r.top + m_header->GetHeightFor(r.width())));
  // A taller viewer may fit rows above the top one: no empty space is left below the rows.
  SetTopRow(m_top);
  UpdateScrollBar();
  m_grid->SyncAccessibleRows();
}

void CGridViewer::PaintContent(wxDC& dc, const rect<int>& clip) {
  m_painted = 0;
  IGridModel* model = m_grid->GetModel();
  const rect<int> rows_area(GetRect().left, RowsTop(), RowsRight(), GetRect().bottom);
  const rect<int> area = rows_area.intersection(clip);
  if (!model || area.empty()) {
    return;
  }
  const int height = GetRowHeight();
  const int first = m_top + (area.top - RowsTop()) / height;
  const int last = std::min(model->GetRowCount() - 1, m_top + (area.bottom - 1 - RowsTop()) / height);
  wxDCClipper clipper(dc, wxRect(area.left, area.top, area.width(), area.height()));
  for (int row = first; row <= last; ++row) {
    PaintRow(dc, row, area);
    ++m_painted;
  }
}

void CGridViewer::PaintRow(wxDC& dc, int row, const rect<int>& area) {
  IGridModel* model = m_grid->GetModel();
  const rect<int> whole = GetCellRect(row, -1);
  const bool current = row == m_grid->GetCurrentRow();
  if (current) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(whole.left, whole.top, whole.width(), whole.height());
  }
  dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_3DLIGHT)));
  dc.DrawLine(whole.left, whole.bottom - 1, whole.right, whole.bottom - 1);
  wxWindow* window = wx_window_of(this);
  const int columns = std::max(1, m_header->GetColumnCount());
  for (int column = 0; column < columns; ++column) {
    const rect<int> cell = GetCellRect(row, column).intersection(area);
    if (cell.empty()) {
      continue;
    }
    if (column == m_grid->GetCheckColumn()) {
      const int state = model->GetCheck(row);
      if (state >= 0 && window) {
        const wxSize box = wxRendererNative::Get().GetCheckBoxSize(window);
        const rect<int> full = GetCellRect(row, column);
        const wxRect place((full.left + full.right - box.x) / 2, (full.top + full.bottom - box.y) / 2, box.x,
                           box.y);
        wxRendererNative::Get().DrawCheckBox(window, dc, place, state == 1 ? int(wxCONTROL_CHECKED) : 0);
      }
      continue;
    }
    bool hint = false;
    const std::string text = model->GetCellText(row, column, hint);
    if (text.empty()) {
      continue;
    }
    dc.SetTextForeground(hint      ? wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT)
                         : current ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT)
                                   : wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT));
    wxDCClipper cell_clip(dc, wxRect(cell.left, cell.top, cell.width(), cell.height()));
    const rect<int> full = GetCellRect(row, column);
    const wxString label = wxString::FromUTF8(text);
    dc.DrawText(label, full.left + text_margin, full.top + (full.height() - dc.GetCharHeight()) / 2);
  }
}

bool CGridViewer::OnMouse(const element_mouse_t& event) {
  if (event.kind == element_mouse_t::wheel) {
    const int lines = event.wheel_rotation / std::max(1, event.wheel_delta) * event.wheel_lines;
    SetTopRow(m_top - lines);
    return true;
  }
  if (event.kind != element_mouse_t::down) {
    return false;
  }
  m_grid->OnRowClicked(RowAt(event.pos), ColumnAt(event.pos.x), event.pos);
  return true;
}

// ---- grid ------------------------------------------------------------------------------

CGrid::CGrid(ombrelcfrw7::CVisualElement* parent, const ombrelc7::size<int>& size,
             ombrelc7::Alignment alignment)
    : CVisualElement(parent, size, alignment), m_viewer(new CGridViewer(this)) {}

CGrid::~CGrid() { DropAccessibleRows(); }

void CGrid::SetModel(IGridModel* model) {
  m_model = model;
  m_current = -1;
  Refresh();
}

void CGrid::SetResizingModel(IResizingModel* model) {
  m_resizing = model;
  m_viewer->GetHeader()->SetResizingModel(model);
}

void CGrid::SetCheckColumn(int column) {
  if (column != m_check_column) {
    m_check_column = column;
    m_viewer->Invalidate();
    SyncAccessibleRows();
  }
}

void CGrid::SetCurrentRow(int row) {
  if (row < -1 || (row >= 0 && (!m_model || row >= m_model->GetRowCount()))) {
    return;
  }
  if (row != m_current) {
    m_current = row;
    m_viewer->Invalidate();
  }
  m_viewer->ScrollToRow(row);
}

bool CGrid::EditCurrentRow() {
  if (m_current < 0 || !m_editing) {
    return false;
  }
  m_viewer->ScrollToRow(m_current);
  if (!m_editing->BeginEdit(m_current)) {
    return false;
  }
  Refresh();
  return true;
}

void CGrid::Refresh() {
  if (m_model) {
    std::vector<std::string> captions;
    captions.reserve(m_model->GetColumnCount());
    for (int i = 0; i < m_model->GetColumnCount(); ++i) {
      captions.push_back(m_model->GetColumnCaption(i));
    }
    m_viewer->GetHeader()->SetColumns(captions);
    if (m_current >= m_model->GetRowCount()) {
      m_current = -1;
    }
  }
  m_viewer->UpdateScrollBar();
  m_viewer->Invalidate();
  OnChange();
  ForceRearrange();
  SyncAccessibleRows();
}

void CGrid::ArrangeChildren() {
  const rect<int>& r = GetRect();
  ombrelcfrw7::CVisualElement* editor = m_editing ? m_editing->GetActiveEditor() : nullptr;
  for (CVisualElement* child : GetChildren()) {
    if (child == m_viewer) {
      m_viewer->Arrange(r);
    } else if (child == editor && child->IsVisible()) {
      const int row = m_editing->GetEditingRow();
      const int page = m_viewer->GetPageRows();
      const bool in_view = row >= m_viewer->GetTopRow() && row < m_viewer->GetTopRow() + page;
      auto* native_editor = dynamic_cast<ombrelcfrw7::CEditor*>(child);
      child->Arrange(in_view ? EditorRect(row, native_editor) : rect<int>(r.left, r.top, r.left, r.top));
      if (native_editor) {
        native_editor->PlaceNative();
      }
    } else {
      child->Arrange(rect<int>(r.left, r.top, r.left, r.top));
    }
  }
}

rect<int> CGrid::EditorRect(int row, const ombrelcfrw7::CEditor* editor) const {
  rect<int> cell = m_viewer->GetCellRect(row, 0);
  // The editor's text starts where the cell's was drawn, so that opening it moves nothing;
  // a theme that pads more than the cell's margin moves the box left, never out of the grid.
  const int inset = editor ? editor->GetTextInset() : 0;
  cell.left = std::max(GetRect().left, cell.left + text_margin - inset);
  cell.bottom -= 1;  // the row's rule stays in sight under the editor
  return cell;
}

int CGrid::MoveTarget(int keycode) const {
  const int last = m_model ? m_model->GetRowCount() - 1 : -1;
  const int page = m_viewer->GetPageRows();
  int target = m_current;
  switch (keycode) {
    case WXK_UP: target = m_current - 1; break;
    case WXK_DOWN: target = m_current + 1; break;
    case WXK_HOME: target = 0; break;
    case WXK_END: target = last; break;
    case WXK_PAGEUP: target = m_current - page; break;
    case WXK_PAGEDOWN: target = m_current + page; break;
    default: return -2;
  }
  return std::max(0, std::min(target, last));
}

bool CGrid::OnKey(const ombrelcfrw7::element_key_t& key) {
  if (!m_model || key.alt || key.control) {
    return false;
  }
  const int target = MoveTarget(key.keycode);
  if (target != -2) {
    SetCurrentRow(target);
    return true;
  }
  if (key.keycode == WXK_RETURN || key.keycode == WXK_NUMPAD_ENTER || key.keycode == WXK_F2) {
    return EditCurrentRow();
  }
  if (key.keycode == WXK_SPACE && m_check_column >= 0 && m_current >= 0) {
    ToggleRowCheck(m_current);
    return true;
  }
  return false;
}

void CGrid::OnRowClicked(int row, int column, const point<int>&) {
  SetFocus();
  if (row < 0) {
    return;
  }
  if (column == m_check_column && m_check_column >= 0 && m_model->GetCheck(row) >= 0) {
    SetCurrentRow(row);
    ToggleRowCheck(row);
    return;
  }
  if (row == m_current) {
    EditCurrentRow();
    return;
  }
  if (m_editing && m_editing->GetActiveEditor()) {
    m_editing->EndEdit(true);
    // A last line that became a row keeps its editor: the click closes it all the same.
    if (auto* still_open = dynamic_cast<ombrelcfrw7::CBaseEditor*>(m_editing->GetActiveEditor())) {
      still_open->ShowEditor(false);
    }
  }
  SetCurrentRow(row);
}

}  // namespace ombrelgrid8
