#include <plaxi1/screenshot.h>

#include <wx/app.h>
#include <wx/display.h>
#include <wx/eventfilter.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/popupwin.h>
#include <wx/toplevel.h>
#include <wx/utils.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

namespace plaxi1 {
namespace {

using steady = std::chrono::steady_clock;

// The longest a single wait for the next event blocks, so that a condition is checked
// again soon even when no event comes.
constexpr int max_block_ms = 10;

int remaining_ms(steady::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - steady::now());
  return std::max(0, static_cast<int>(left.count()));
}

// Counts the paint events of the windows of one top-level window, which GTK draws whole in
// one pass: a paint seen after a Refresh() means the whole window was drawn anew.
class paint_counter_t : public wxEventFilter {
 public:
  explicit paint_counter_t(wxWindow* top) : m_top(top) { wxEvtHandler::AddFilter(this); }
  ~paint_counter_t() override { wxEvtHandler::RemoveFilter(this); }
  paint_counter_t(const paint_counter_t&) = delete;
  paint_counter_t& operator=(const paint_counter_t&) = delete;

  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() == wxEVT_PAINT) {
      auto* window = wxDynamicCast(event.GetEventObject(), wxWindow);
      if (window && wxGetTopLevelParent(window) == m_top) {
        ++m_count;
      }
    }
    return Event_Skip;
  }
  int count() const { return m_count; }
  void reset() { m_count = 0; }

 private:
  wxWindow* m_top;
  int m_count = 0;
};

// A loop to pump: the running or active one, else one of our own while we pump.
class loop_t {
 public:
  loop_t() : m_loop(wxEventLoopBase::GetActive()) {
    if (!m_loop) {
      m_own = std::make_unique<wxGUIEventLoop>();
      m_activator = std::make_unique<wxEventLoopActivator>(m_own.get());
      m_loop = m_own.get();
    }
  }
  wxEventLoopBase* operator->() const { return m_loop; }

 private:
  std::unique_ptr<wxGUIEventLoop> m_own;
  std::unique_ptr<wxEventLoopActivator> m_activator;
  wxEventLoopBase* m_loop;
};

// Where a channel's bits sit in a pixel of the screen's visual.
struct channel_t {
  unsigned long mask;
  int shift = 0;
  int max = 0;

  explicit channel_t(unsigned long m) : mask(m) {
    while (mask && !((mask >> shift) & 1)) {
      ++shift;
    }
    max = static_cast<int>(mask >> shift);
  }
  unsigned char of(unsigned long pixel) const {
    return max ? static_cast<unsigned char>(((pixel & mask) >> shift) * 255 / max) : 0;
  }
};

// Reads `rect` (device pixels) of the X11 root window, which shows every mapped window as
// drawn, covered parts as what covers them: the last resort for a window without a GTK
// widget. It goes through the toolkit's own X connection, after the drawing it sent, so it
// sees that.
bool grab_screen(const wxRect& rect, wxImage& image) {
  if (wxGetDisplayInfo().type != wxDisplayX11 || rect.IsEmpty()) {
    return false;
  }
  Display* display = wxGetX11Display();
  // A rectangle off the screen would be an X error, which GDK turns into an abort.
  const wxRect screen(0, 0, DisplayWidth(display, DefaultScreen(display)),
                      DisplayHeight(display, DefaultScreen(display)));
  if (!screen.Contains(rect)) {
    return false;
  }
  XImage* pixels =
      XGetImage(display, DefaultRootWindow(display), rect.x, rect.y, static_cast<unsigned>(rect.width),
                static_cast<unsigned>(rect.height), AllPlanes, ZPixmap);
  if (!pixels) {
    return false;
  }
  const channel_t red(pixels->red_mask), green(pixels->green_mask), blue(pixels->blue_mask);
  image.Create(rect.GetSize(), false);
  for (int y = 0; y < rect.height; ++y) {
    for (int x = 0; x < rect.width; ++x) {
      const unsigned long pixel = XGetPixel(pixels, x, y);
      image.SetRGB(x, y, red.of(pixel), green.of(pixel), blue.of(pixel));
    }
  }
  XDestroyImage(pixels);
  return true;
}

// `rect` in device pixels: under a scale factor, logical coordinates are that many device
// pixels each.
wxRect device_rect(const wxRect& rect, double scale) {
  const auto device = [scale](int logical) { return static_cast<int>(std::lround(logical * scale)); };
  return {device(rect.x), device(rect.y), device(rect.width), device(rect.height)};
}

// The widget that a picture of `window` shows: a top-level window's content, without the
// title bar and shadow that GTK draws around it on a Wayland display (under X11 the frame
// is the window manager's, no widget's).
GtkWidget* pictured_widget(wxWindow* window) {
  GtkWidget* widget = window->GetHandle();
  if (widget && window->IsTopLevel() && GTK_IS_BIN(widget)) {
    GtkWidget* content = gtk_bin_get_child(GTK_BIN(widget));
    return content ? content : widget;
  }
  return widget;
}

// Where `widget` lies in the coordinates that wx places windows in, in logical pixels. On
// a Wayland display they start at the corner of the top-level window, not of the screen:
// only the difference of two such points within one window tree means anything.
wxPoint widget_origin(GtkWidget* widget) {
  wxPoint origin;
  if (GdkWindow* gdk_window = gtk_widget_get_window(widget)) {
    gdk_window_get_origin(gdk_window, &origin.x, &origin.y);
  }
  if (!gtk_widget_get_has_window(widget)) {
    // It lies at its allocation within the GDK window of a parent.
    GtkAllocation allocation;
    gtk_widget_get_allocation(widget, &allocation);
    origin += wxPoint(allocation.x, allocation.y);
  }
  return origin;
}

struct surface_deleter_t {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using surface_t = std::unique_ptr<cairo_surface_t, surface_deleter_t>;

wxImage to_image(cairo_surface_t* surface) {
  cairo_surface_flush(surface);
  const int width = cairo_image_surface_get_width(surface);
  const int height = cairo_image_surface_get_height(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  const unsigned char* const data = cairo_image_surface_get_data(surface);
  wxImage image(width, height, false);
  unsigned char* out = image.GetData();
  for (std::ptrdiff_t y = 0; y < height; ++y) {
    const unsigned char* row = data + y * stride;
    for (int x = 0; x < width; ++x, row += sizeof(std::uint32_t)) {
      // An RGB24 pixel is a native 32-bit word, 0x00RRGGBB.
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row, sizeof pixel);
      *out++ = static_cast<unsigned char>(pixel >> 16);
      *out++ = static_cast<unsigned char>(pixel >> 8);
      *out++ = static_cast<unsigned char>(pixel);
    }
  }
  return image;
}

// Lets GTK draw `widget`, its own controls and wx's painted ones alike, into a picture of
// device pixels: its size times its scale factor, over the background that its top-level
// window draws. It needs neither an X11 screen nor an uncovered window.
bool draw_widget(GtkWidget* widget, wxImage& image) {
  // A resize that GTK queued and hasn't laid out yet would make it refuse to draw: lay it
  // out now, as its next frame would.
  GtkWidget* toplevel = gtk_widget_get_toplevel(widget);
  if (GTK_IS_CONTAINER(toplevel)) {
    gtk_container_check_resize(GTK_CONTAINER(toplevel));
  }
  const int width = gtk_widget_get_allocated_width(widget);
  const int height = gtk_widget_get_allocated_height(widget);
  const int scale = gtk_widget_get_scale_factor(widget);
  if (width <= 0 || height <= 0) {
    return false;
  }
  const surface_t surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width * scale, height * scale));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
    return false;
  }
  cairo_surface_set_device_scale(surface.get(), scale, scale);
  cairo_t* const context = cairo_create(surface.get());
  gtk_render_background(gtk_widget_get_style_context(toplevel), context, 0, 0, width, height);
  gtk_widget_draw(widget, context);
  cairo_destroy(context);
  image = to_image(surface.get());
  return image.IsOk();
}

// Popups of `parent`'s controls, tooltips among them, are windows of their own that GTK
// doesn't draw with the widget tree: draws each that shows over `image` where it lies
// from `origin`, the pictured widget's corner.
void draw_popups(wxWindow* parent, const wxPoint& origin, double scale, wxImage& image) {
  for (wxWindow* child : parent->GetChildren()) {
    wxImage popup;
    // IsKindOf, not wxDynamicCast: the macro's static_cast of a plain window is undefined.
    if (child->IsKindOf(wxCLASSINFO(wxPopupWindow)) && child->IsShownOnScreen()) {
      GtkWidget* widget = pictured_widget(child);
      if (widget && draw_widget(widget, popup)) {
        const wxRect at = device_rect(wxRect(widget_origin(widget) - origin, wxSize()), scale);
        image.Paste(popup, at.x, at.y);
      }
    }
    draw_popups(child, origin, scale, image);
  }
}

}  // namespace

void pump_events() {
  loop_t loop;
  for (int round = 0; round < 100; ++round) {
    bool busy = false;
    for (int events = 0; events < 1000 && loop->Pending(); ++events) {
      loop->Dispatch();
      busy = true;
    }
    if (wxTheApp && wxTheApp->HasPendingEvents()) {
      wxTheApp->ProcessPendingEvents();
      busy = true;
    }
    busy = loop->ProcessIdle() || busy;
    if (!busy) {
      return;
    }
  }
}

bool wait_until(const std::function<bool()>& condition, int bound_ms) {
  const auto deadline = steady::now() + std::chrono::milliseconds(bound_ms);
  for (;;) {
    if (condition()) {
      return true;
    }
    pump_events();
    if (condition()) {
      return true;
    }
    const int left = remaining_ms(deadline);
    if (left == 0) {
      return false;
    }
    // Timers and GTK's frame clock become ready later: block until the next event, briefly.
    loop_t loop;
    loop->DispatchTimeout(static_cast<unsigned long>(std::min(left, max_block_ms)));
  }
}

bool wait_until_painted(wxWindow* window, int bound_ms) {
  wxWindow* top = window ? wxGetTopLevelParent(window) : nullptr;
  if (!top) {
    return false;
  }
  const auto deadline = steady::now() + std::chrono::milliseconds(bound_ms);
  if (!wait_until([&] { return window->IsShownOnScreen(); }, remaining_ms(deadline))) {
    return false;
  }
  paint_counter_t paints(top);
  // The size is final once a repaint no longer changes it.
  for (;;) {
    const wxRect window_rect = window->GetScreenRect();
    const wxRect top_rect = top->GetScreenRect();
    paints.reset();
    top->Refresh();
    if (!wait_until([&] { return paints.count() > 0; }, remaining_ms(deadline))) {
      return false;
    }
    pump_events();
    if (window->GetScreenRect() == window_rect && top->GetScreenRect() == top_rect) {
      return true;
    }
  }
}

bool save_screenshot(wxWindow* window, const std::string& png_path) {
  if (!wait_until_painted(window, 5000)) {
    return false;
  }
  wxImage image;
  if (GtkWidget* widget = pictured_widget(window)) {
    if (!draw_widget(widget, image)) {
      return false;
    }
    draw_popups(window, widget_origin(widget), gtk_widget_get_scale_factor(widget), image);
  } else if (!grab_screen(device_rect(window->GetScreenRect(), window->GetContentScaleFactor()), image)) {
    return false;
  }
  if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) {
    wxImage::AddHandler(new wxPNGHandler);
  }
  return image.SaveFile(wxString::FromUTF8(png_path), wxBITMAP_TYPE_PNG);
}

}  // namespace plaxi1
