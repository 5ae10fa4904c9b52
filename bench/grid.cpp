// Grids of directory lines side by side in one run: wxWidgets' wxDataViewListCtrl and wxGrid
// and the directory grid of the library, each in a shown 800 by 600 frame, doing the same
// work: fill 1,000, 10,000 and 100,000 text rows; paint a screenful; scroll by a page and
// paint that page; the last two over 1,000 and over 100,000 rows. A paint is GTK drawing
// the control's widget tree into a bitmap, the road of a real expose, for the native and the
// wx-drawn controls alike. Times are wall times: a frame has 16 ms, whoever spends them.
// Needs a display: run under `xvfb-run -a -s '-screen 0 1600x1200x24'` where there is none.
#include "ratio_reporter.h"
#include "wx_session.h"

#include <ombrelc7/sys_window.h>
#include <ombrelcfrw7/base_control.h>
#include <ombrelgrid/ombrelgrid.h>
#include <plaxi1/screenshot.h>

#include <benchmark/benchmark.h>
#include <gtk/gtk.h>
#include <wx/dataview.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/grid.h>
#include <wx/image.h>
#include <wx/sizer.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

// Directory lines as a search list holds them, no two alike.
std::vector<std::string> directory_lines(int count) {
  static const char* const roots[] = {"/home/ana/projects/render/src/", "/usr/include/", "/opt/qt6/include/",
                                      "/srv/build/netio/third_party/"};
  std::vector<std::string> lines;
  lines.reserve(static_cast<std::size_t>(count));
  for (int line = 0; line < count; ++line) {
    lines.push_back(roots[line % 4] + std::string("module_") + std::to_string(line) + "/*");
  }
  return lines;
}

// A shown frame that a grid fills; the grid lives and dies with it.
class frame_t {
 public:
  frame_t() : m_frame(new wxFrame(nullptr, wxID_ANY, "bench", wxDefaultPosition, wxSize(800, 600))) {}
  ~frame_t() {
    m_frame->Destroy();
    plaxi1::pump_events();
  }
  frame_t(const frame_t&) = delete;
  frame_t& operator=(const frame_t&) = delete;

  wxFrame* get() const { return m_frame; }
  // Lays `control` over the whole client area and shows it.
  void show(wxWindow* control) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(control, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    plaxi1::wait_until_painted(control, 5000);
  }

 private:
  wxFrame* m_frame;
};

// wxWidgets' list view of a data model: on GTK a native tree view.
class dataview_peer_t {
 public:
  static constexpr const char* name = "wxDataViewListCtrl";

  explicit dataview_peer_t(frame_t& frame) : m_list(new wxDataViewListCtrl(frame.get(), wxID_ANY)) {
    m_list->AppendTextColumn("Directory", wxDATAVIEW_CELL_EDITABLE, 600);
    frame.show(m_list);
  }
  wxWindow* window() const { return m_list; }

  void fill(const std::vector<std::string>& lines) {
    wxVector<wxVariant> row(1);
    for (const std::string& line : lines) {
      row[0] = wxString::FromUTF8(line);
      m_list->AppendItem(row);
    }
  }

  // False at the end of the list, where a page down moves nothing.
  bool scroll_page() {
    GtkAdjustment* adjustment = vertical_adjustment();
    const double value = gtk_adjustment_get_value(adjustment);
    const double last = gtk_adjustment_get_upper(adjustment) - gtk_adjustment_get_page_size(adjustment);
    if (value >= last) {
      return false;
    }
    gtk_adjustment_set_value(adjustment, std::min(last, value + gtk_adjustment_get_page_size(adjustment)));
    return true;
  }
  void scroll_to_top() { gtk_adjustment_set_value(vertical_adjustment(), 0); }

 private:
  GtkAdjustment* vertical_adjustment() const {
    return gtk_scrollable_get_vadjustment(GTK_SCROLLABLE(m_list->GtkGetTreeView()));
  }

  wxDataViewListCtrl* m_list;
};

// wxWidgets' own grid, drawn by wx, over its table of strings.
class wxgrid_peer_t {
 public:
  static constexpr const char* name = "wxGrid";

  explicit wxgrid_peer_t(frame_t& frame) : m_grid(new wxGrid(frame.get(), wxID_ANY)) {
    m_grid->CreateGrid(0, 1);
    m_grid->SetColLabelValue(0, "Directory");
    m_grid->SetColSize(0, 600);
    frame.show(m_grid);
  }
  wxWindow* window() const { return m_grid; }

  // The batch is the grid's documented way of adding many cells.
  void fill(const std::vector<std::string>& lines) {
    m_grid->BeginBatch();
    const int first = m_grid->GetNumberRows();
    m_grid->AppendRows(static_cast<int>(lines.size()));
    for (std::size_t line = 0; line < lines.size(); ++line) {
      m_grid->SetCellValue(first + static_cast<int>(line), 0, wxString::FromUTF8(lines[line]));
    }
    m_grid->EndBatch();
  }

  bool scroll_page() {
    int x = 0;
    int y = 0;
    m_grid->GetViewStart(&x, &y);
    m_grid->Scroll(x, y + m_grid->GetScrollPageSize(wxVERTICAL));
    int moved_y = 0;
    m_grid->GetViewStart(&x, &moved_y);
    return moved_y != y;
  }
  void scroll_to_top() { m_grid->Scroll(0, 0); }

 private:
  wxGrid* m_grid;
};

// The library's directory grid in its sunken host window, filled as the directory tab
// and panel fill it.
class ombrelgrid_t {
 public:
  static constexpr const char* name = "ombrelgrid";

  explicit ombrelgrid_t(frame_t& frame)
      : m_host(new wxWindow(frame.get(), wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_SUNKEN)),
        m_control(new ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>(
            ombrelc7::CreateWrapperForWx(m_host), ombrelc7::size<int>(40, 40), ombrelc7::alClient)) {
    grid()->enableCheckboxColumn(false);
    grid()->GetGridModel()->SetColumnCaptions("Directory", "");
    grid()->GetGridModel()->changed();
    frame.show(m_host);
  }
  wxWindow* window() const { return m_host; }

  void fill(const std::vector<std::string>& lines) {
    ombrelpropgrid2::CHALLINGrid* const grid = this->grid();
    grid->ClearRows();
    for (const std::string& line : lines) {
      grid->AppendRow(line, ombrelpropgrid2::etMore);
    }
    grid->FinishFill("Type a directory or click \"...\"");
  }

  bool scroll_page() {
    ombrelgrid8::CGridViewer* const viewer = grid()->GetViewer();
    const int top = viewer->GetTopRow();
    viewer->SetTopRow(top + viewer->GetPageRows());
    return viewer->GetTopRow() != top;
  }
  void scroll_to_top() { grid()->GetViewer()->SetTopRow(0); }
  int painted_rows() const { return grid()->GetViewer()->GetLastPaintedRows(); }

 private:
  ombrelpropgrid2::CHALLINGrid* grid() const { return m_control->GetTypedContent(); }

  wxWindow* m_host;
  ombrelcfrw7::CBaseControlTmpl<ombrelpropgrid2::CHALLINGrid>* m_control;
};

// Lets GTK draw `window`'s widget tree into `bitmap` as its next frame would: the layout
// that it queued first, then an expose of the whole window.
void draw_into(wxWindow* window, wxBitmap& bitmap) {
  GtkWidget* widget = window->GetHandle();
  gtk_container_check_resize(GTK_CONTAINER(gtk_widget_get_toplevel(widget)));
  wxMemoryDC dc(bitmap);
  gtk_widget_draw(widget, static_cast<cairo_t*>(dc.GetHandle()));
}

wxBitmap bitmap_for(wxWindow* window) {
  GtkWidget* widget = window->GetHandle();
  return wxBitmap(gtk_widget_get_allocated_width(widget), gtk_widget_get_allocated_height(widget), 24);
}

// The share of dark pixels in `bitmap`: text was drawn where it isn't near zero.
double ink(const wxBitmap& bitmap) {
  const wxImage image = bitmap.ConvertToImage();
  const unsigned char* pixel = image.GetData();
  const long pixels = static_cast<long>(image.GetWidth()) * image.GetHeight();
  long dark = 0;
  for (long at = 0; at < pixels; ++at, pixel += 3) {
    dark += pixel[0] + pixel[1] + pixel[2] < 3 * 128 ? 1 : 0;
  }
  return pixels > 0 ? static_cast<double>(dark) / static_cast<double>(pixels) : 0;
}

// The rows that the last paint drew, where the grid tells them.
template <class grid_t>
void count_painted_rows(benchmark::State&, const grid_t&) {}
void count_painted_rows(benchmark::State& state, const ombrelgrid_t& grid) {
  state.counters["painted_rows"] = grid.painted_rows();
}

template <class grid_t>
void fill(benchmark::State& state) {
  const std::vector<std::string> lines = directory_lines(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    auto frame = std::make_unique<frame_t>();
    grid_t grid(*frame);
    plaxi1::pump_events();
    state.ResumeTiming();
    grid.fill(lines);
    plaxi1::pump_events();  // what the control left for the loop: layout, sizes, the first paint
    state.PauseTiming();
    frame.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <class grid_t>
void paint_screenful(benchmark::State& state) {
  frame_t frame;
  grid_t grid(frame);
  grid.fill(directory_lines(static_cast<int>(state.range(0))));
  plaxi1::pump_events();
  wxBitmap bitmap = bitmap_for(grid.window());
  for (auto _ : state) {
    draw_into(grid.window(), bitmap);
  }
  state.counters["ink"] = ink(bitmap);
  count_painted_rows(state, grid);
}

template <class grid_t>
void scroll_page(benchmark::State& state) {
  frame_t frame;
  grid_t grid(frame);
  grid.fill(directory_lines(static_cast<int>(state.range(0))));
  plaxi1::pump_events();
  wxBitmap bitmap = bitmap_for(grid.window());
  for (auto _ : state) {
    if (!grid.scroll_page()) {
      state.PauseTiming();
      grid.scroll_to_top();
      plaxi1::pump_events();
      state.ResumeTiming();
      grid.scroll_page();
    }
    plaxi1::pump_events();  // the scroll's own events, as the loop would handle them
    draw_into(grid.window(), bitmap);
  }
  state.counters["ink"] = ink(bitmap);
  count_painted_rows(state, grid);
}

template <class grid_t>
void register_grid() {
  const std::string name = grid_t::name;
  benchmark::RegisterBenchmark(("fill/" + name).c_str(), fill<grid_t>)
      ->Arg(1000)
      ->Arg(10000)
      ->Arg(100000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark(("paint_screenful/" + name).c_str(), paint_screenful<grid_t>)
      ->Arg(1000)
      ->Arg(100000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark(("scroll_page/" + name).c_str(), scroll_page<grid_t>)
      ->Arg(1000)
      ->Arg(100000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
  int wx_argc = 1;
  char* wx_argv[] = {argv[0], nullptr};
  const bench_support::wx_session_t session(wx_argc, wx_argv);
  if (!session.ok()) {
    return 1;
  }
  register_grid<ombrelgrid_t>();
  register_grid<dataview_peer_t>();
  register_grid<wxgrid_peer_t>();
  return bench_support::run_with_ratios(argc, argv, ombrelgrid_t::name,
                                        {dataview_peer_t::name, wxgrid_peer_t::name},
                                        bench_support::time_basis_t::wall);
}
