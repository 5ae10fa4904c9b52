#include <tamsel3/pref_base.h>

#include <plaxi1/resource_loader.h>

#include <wx/xrc/xmlres.h>

#if TAMSEL3_HAVE_GTK
#include <gdk/gdkx.h>
#include <gtk/gtk.h>
#endif

namespace tamsel3 {
namespace {

#if TAMSEL3_HAVE_GTK
// Paints a top-level window at once when the server has mapped it, once. Until then the
// toolkit holds back its painting, and after it waits for its next frame.
gboolean paint_on_map(GtkWidget* widget, GdkEvent* /*event*/, gpointer /*data*/) {
  g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(&paint_on_map), nullptr);
  if (GdkWindow* window = gtk_widget_get_window(widget)) {
    gtk_widget_queue_draw(widget);
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    gdk_window_process_updates(window, TRUE);
    G_GNUC_END_IGNORE_DEPRECATIONS
  }
  return FALSE;
}
#endif

// On Wayland the compositor's next frame decides when a window shows, and the toolkit
// paints for that frame.
void paint_when_mapped(wxWindow* top) {
#if TAMSEL3_HAVE_GTK
  GtkWidget* widget = top->GetHandle();
  if (!widget || !GDK_IS_X11_DISPLAY(gtk_widget_get_display(widget))) {
    return;
  }
  g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(&paint_on_map), nullptr);
  g_signal_connect(widget, "map-event", G_CALLBACK(paint_on_map), nullptr);
#else
  top->Update();
#endif
}

}  // namespace

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(pref_base_t, generic_base_t<wxPanel>)
  EVT_INIT_DIALOG(generic_base_t<wxPanel>::handle_init_dialog_event)
  EVT_CLOSE(generic_base_t<wxPanel>::handle_close)
  EVT_BUTTON(XRCID("m_btn_ok"), generic_base_t<wxPanel>::handle_ok)
  EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<wxPanel>::handle_cancel)
  EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<wxPanel>::handle_help)
  EVT_TIMER(wxID_ANY, generic_base_t<wxPanel>::handle_timer_event)
wxEND_EVENT_TABLE()

void pref_base_t::create(wxWindow* parent) {
  if (!m_loaded) {
    m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_object_name);
    if (!m_loaded && !GetHandle()) {
      Create(parent, wxID_ANY);  // an empty page stands in for the missing layout
    }
  }
  Show(true);
  // Nobody sends a panel the init event: run the sequence here.
  wxInitDialogEvent event(GetId());
  handle_init_dialog_event(event);
  wxWindow* top = wxGetTopLevelParent(this);
  if (top && top != this && top != m_shown_in) {
    m_shown_in = top;
    m_shown_before = top->IsShown();
    top->Bind(wxEVT_SHOW, &pref_base_t::handle_window_shown, this);
  }
}

// The toolkit paints a window shown again at its next frame, which comes no sooner than a
// frame's time after the window's last one. The page and its host are laid out by then,
// and the window paints as soon as it is on the screen. Its first show waits for the
// toolkit's own layout.
void pref_base_t::handle_window_shown(wxShowEvent& event) {
  event.Skip();
  if (event.GetEventObject() != m_shown_in || !event.IsShown() || m_shown_in->IsBeingDeleted()) {
    return;
  }
  if (m_shown_before && IsShown()) {
    paint_when_mapped(m_shown_in);
  }
  m_shown_before = true;
}

bool pref_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                         const std::string& catalog_name, const std::string& object_name) {
  plaxi1::resource_loader_t loader(resource_file, catalog_name);
  return loader.load_panel(this, parent, object_name);
}

void pref_base_t::end_dialog(int code) {
  Show(false);
  m_end_dialog_signal(this, code);
}

panel_t::~panel_t() = default;

}  // namespace tamsel3
