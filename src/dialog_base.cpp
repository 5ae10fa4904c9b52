#include <tamsel3/dialog_base.h>

#include <plaxi1/modal.h>
#include <plaxi1/resource_loader.h>

#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace tamsel3 {

// Rows with XRC ids are filled when this file is initialised, once the ids can be made.
wxBEGIN_EVENT_TABLE(dialog_base_t, generic_base_t<dummy>)
  EVT_INIT_DIALOG(generic_base_t<dummy>::handle_init_dialog_event)
  EVT_CLOSE(dialog_base_t::handle_close)
  EVT_BUTTON(XRCID("m_btn_ok"), generic_base_t<dummy>::handle_ok)
  EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<dummy>::handle_cancel)
  EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<dummy>::handle_help)
  EVT_HELP(wxID_ANY, dialog_base_t::handle_dialog_help)
  EVT_TIMER(wxID_ANY, generic_base_t<dummy>::handle_timer_event)
wxEND_EVENT_TABLE()

dialog_base_t::dialog_base_t() {
  // Runs before the event table's row, which it lets through.
  Bind(wxEVT_INIT_DIALOG, [this](wxInitDialogEvent& event) {
    event.Skip();
    CallAfter(&dialog_base_t::grow_to_fit);
  });
}

// GTK gives some controls (text entries among them) their final height only once they are
// on the screen, after the layout was fitted: grow the dialog then, so nothing is squashed.
void dialog_base_t::grow_to_fit() {
  if (!GetSizer()) {
    return;
  }
  InvalidateBestSize();
  const wxSize best = GetBestSize();
  const wxSize size = GetSize();
  if (best.GetWidth() > size.GetWidth() || best.GetHeight() > size.GetHeight()) {
    SetSize(std::max(best.GetWidth(), size.GetWidth()), std::max(best.GetHeight(), size.GetHeight()));
  }
}

int dialog_base_t::show_modal(wxWindow* parent) {
  if (!m_loaded) {
    // A dialog over a window on its way out would be taken down with it, from inside its
    // own loop: the main window takes the place of such a parent.
    parent = plaxi1::live_parent(parent);
    m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_object_name);
    if (!m_loaded) {
      return 0;
    }
  }
  if (plaxi1::is_closing(GetParent())) {
    return wxID_CANCEL;  // loaded earlier over a window that is going now
  }
  return ShowModal();
}

void dialog_base_t::help_activated() { on_help(); }

bool dialog_base_t::Show(bool show) {
  const bool changed = generic_base_t<dummy>::Show(show);
  // The toolkit paints at its next frame, which comes no sooner than a frame's time after
  // the window's last one: a dialog shown again soon after waited for it. It is laid out
  // and initialised by now, so it paints at once.
  if (show && changed) {
    Update();
  }
  return changed;
}

// The initialisation disables the Help button of a dialog without help once the dialog is
// on the screen, and a button whose state changes after it was styled has its whole row
// styled and measured anew. It is disabled as it joins the dialog instead; the
// initialisation then finds it done.
void dialog_base_t::AddChild(wxWindowBase* child) {
  generic_base_t<dummy>::AddChild(child);
  if (!m_initialized && child->GetId() == XRCID("m_btn_help")) {
    child->Enable(m_help_id != -1);
  }
}

bool dialog_base_t::show_nonmodal(wxWindow* parent, bool show) {
  if (!m_loaded) {
    m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_object_name);
    if (!m_loaded) {
      return false;
    }
  }
  return Show(show);
}

void dialog_base_t::set_title(const std::string& text) {
  const wxString title = wxString::FromUTF8(text);
  SetLabel(title);
  SetName(title);
  SetTitle(title);
}

std::string dialog_base_t::get_title() const { return GetTitle().utf8_string(); }

wxSize dialog_base_t::get_proportional_size(float width_factor, float height_factor,
                                            const wxSize& min_size) const {
  const wxWindow* parent = GetParent();
  if (!parent) {
    return min_size;
  }
  const wxSize outer = parent->GetSize();
  const int width = static_cast<int>(static_cast<float>(outer.GetWidth()) * width_factor);
  const int height = static_cast<int>(static_cast<float>(outer.GetHeight()) * height_factor);
  return wxSize(std::max(width, std::max(min_size.GetWidth(), 0)),
                std::max(height, std::max(min_size.GetHeight(), 0)));
}

bool dialog_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                           const std::string& catalog_name, const std::string& object_name) {
  plaxi1::resource_loader_t loader(resource_file, catalog_name);
  SetEscapeId(XRCID("m_btn_cancel"));  // Escape acts as the cancel button
  return loader.load_dialog(this, parent, object_name);
}

void dialog_base_t::end_dialog(int code) {
  if (IsModal()) {
    EndModal(code);
    return;
  }
  SetReturnCode(code);
  Show(false);
}

void dialog_base_t::on_help() {
  const std::string topic = m_help_topic;
  if (!topic.empty()) {
    m_help_signal(topic);
  }
}

void dialog_base_t::handle_ok(wxCommandEvent&) {
  SetReturnCode(wxID_OK);
  on_ok();  // may choose another result by setting the return code
  end_dialog(GetReturnCode());
}

void dialog_base_t::handle_close(wxCloseEvent&) {
  SetReturnCode(wxID_CANCEL);
  on_cancel();
  end_dialog(GetReturnCode());
}

void dialog_base_t::handle_dialog_help(wxHelpEvent&) { on_help(); }

// The public signature takes it by value; a host compiles against it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void dialog_base_t::set_multiline_text(wxStaticText* text, const std::string& message, wxFont font) {
  // Shared by all dialogs of the process: measured once, with the first caller's font.
  static int avg_word_width = 0;
  static wxSize d(0, 0);
  if (avg_word_width == 0) {
    wxClientDC dc(this);
    if (font != wxNullFont) {
      dc.SetFont(font);
    }
    avg_word_width = dc.GetTextExtent("is the").GetWidth();
    d = wxGetDisplaySize();
  }
  text->SetLabel("Xxx");
  Fit();
  int w = GetSize().GetWidth();
  const int h = GetSize().GetHeight();
  text->SetLabelText(wxString::FromUTF8(message));  // an ampersand is text, not a mnemonic
  if (d.GetHeight() == 0) {
    d.SetHeight(1);
  }
  const int proportional = d.GetWidth() * h / d.GetHeight() + avg_word_width;
  if (proportional > w) {
    w = proportional;
  }
  text->Wrap(w);
  Fit();
  const wxSize second = GetSize();
  const int proportional2 = d.GetWidth() * second.GetHeight() / d.GetHeight() + avg_word_width;
  if (second.GetWidth() < proportional2) {
    text->Wrap(proportional2);
    Fit();
  }
}

}  // namespace tamsel3
