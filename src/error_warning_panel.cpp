#include "error_warning_panel_p.h"
#include "picture_names_p.h"

#include <tamsel3/error_warning_panel.h>
#include <tamsel3/text_helpers.h>

#include <a11y/native.h>
#include <ombrelc7/picture.h>
#include <plaxi1/ui_settings.h>
#include <quern2/product_locations.h>
#include <zandor/ustring.h>

#include <wx/animate.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dcclient.h>
#include <wx/generic/animate.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#if TAMSEL3_HAVE_ATK
#include <gtk/gtk.h>
#endif

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace tamsel3 {

namespace {

// What the window's picture tells: its type, or an error for a custom one without picture.
std::string icon_kind(message_window_t::icon_types_t type, bool no_picture) {
  switch (type) {
    case message_window_t::icon_warning: return "warning";
    case message_window_t::icon_ok: return "ok";
    case message_window_t::icon_info: return "info";
    case message_window_t::icon_progress: return "progress";
    case message_window_t::icon_custom: return no_picture ? "error" : "message";
    case message_window_t::icon_error: break;
  }
  return "error";
}

using ZANDOR_2_16::strings::decode_utf8;

// The generic control runs an animation at its own size, which is logical, on a square of
// a colour of its own. This draws each frame itself, over the window behind it, and on a
// scaled display from the animation's form at twice the size where it has one, so that
// it stays sharp at the same logical size.
class dense_animation_ctrl_t : public wxGenericAnimationCtrl {
 public:
  dense_animation_ctrl_t(wxWindow* parent, const plaxi1::picture_t& animation)
      : wxGenericAnimationCtrl(parent, wxID_ANY, animation.get_animation(), wxDefaultPosition, wxDefaultSize,
                               wxNO_BORDER),
        m_frames(ombrelc7::CreateAnimation(animation.get_animation(), animation.get_animation_2x())) {
    // wx's idea of the panel's colour isn't what the theme draws behind it: leave that be.
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &dense_animation_ctrl_t::handle_paint, this);
  }

 private:
  void handle_paint(wxPaintEvent&) {
    wxPaintDC dc(this);
    const wxBitmap frame = m_frames->GetFrame(static_cast<int>(m_currentFrame));
    if (frame.IsOk()) {
      dc.DrawBitmap(frame, 0, 0, true);
    }
  }

  ombrelc7::ombrelc_ptr<ombrelc7::IAnimation> m_frames;
};

// Ideographs, kana, hangul and full-width forms: scripts written without blanks, where a
// line may end before or after any character.
bool is_wide(char32_t code_point) {
  static const std::pair<char32_t, char32_t> ranges[] = {
      {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0x33FF}, {0x3400, 0x4DBF},
      {0x4E00, 0x9FFF}, {0xA000, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
      {0xFE30, 0xFE4F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x20000, 0x3FFFD},
  };
  return std::any_of(std::begin(ranges), std::end(ranges), [code_point](const auto& range) {
    return code_point >= range.first && code_point <= range.second;
  });
}

// Where a line ends (`end`, a byte offset) and where the next one begins (`next`).
struct line_break_t {
  std::size_t end;
  std::size_t next;
};

std::size_t trim_blanks_back(const std::string& text, std::size_t begin, std::size_t end) {
  while (end > begin && text[end - 1] == ' ') {
    --end;
  }
  return end;
}

// The break of the line that begins at `begin` in `paragraph`, a text without LFs: the last
// break opportunity that keeps the line within `max_chars` characters. Opportunities are a
// blank (dropped) and either side of a wide character. Without one, the line is cut after
// `max_chars` characters, on a character's boundary. `end` is the paragraph's size when
// the rest fits.
line_break_t find_break(const std::string& paragraph, std::size_t begin, unsigned max_chars) {
  line_break_t candidate{begin, begin};
  bool previous_wide = false;
  unsigned count = 0;
  for (std::size_t pos = begin; pos < paragraph.size();) {
    std::size_t after = pos;
    const char32_t code_point = decode_utf8(paragraph, after);
    const bool wide = is_wide(code_point);
    const bool breakable = count > 0 && (code_point == U' ' || wide || previous_wide);
    if (breakable) {
      candidate = {pos, code_point == U' ' ? pos + 1 : pos};
    }
    if (count == max_chars) {
      if (breakable || trim_blanks_back(paragraph, begin, candidate.end) > begin) {
        return candidate;
      }
      return {pos, pos};
    }
    ++count;
    previous_wide = wide;
    pos = after;
  }
  return {paragraph.size(), paragraph.size()};
}

// Appends the lines of `paragraph`, a text without LFs, to `lines`: at least one line, an
// empty one for an empty paragraph. Blanks at a break are dropped, all others are kept.
void break_paragraph(unsigned max_chars, const std::string& paragraph, std::vector<std::string>& lines) {
  const std::size_t first_line = lines.size();
  std::size_t begin = 0;
  while (begin < paragraph.size()) {
    const line_break_t found = find_break(paragraph, begin, max_chars);
    if (found.end == paragraph.size()) {
      lines.push_back(paragraph.substr(begin));
      break;
    }
    const std::size_t end = trim_blanks_back(paragraph, begin, found.end);
    if (end > begin) {
      lines.push_back(paragraph.substr(begin, end - begin));
    }
    begin = found.next;
    while (begin < paragraph.size() && paragraph[begin] == ' ') {
      ++begin;
    }
  }
  if (lines.size() == first_line) {
    lines.emplace_back();
  }
}

}  // namespace

unsigned get_longest_word_length(const std::string& text) {
  std::size_t longest = 0;
  std::size_t word = 0;
  for (std::size_t pos = 0; pos < text.size();) {
    const char32_t code_point = decode_utf8(text, pos);
    if (code_point == U' ' || code_point == U'\n' || code_point == U'\t') {
      word = 0;
    } else if (is_wide(code_point)) {
      word = 0;  // a line may end on either side of it
      longest = std::max<std::size_t>(longest, 1);
    } else {
      longest = std::max(longest, ++word);
    }
  }
  return static_cast<unsigned>(longest);
}

std::vector<std::string> break_into_lines(unsigned max_chars, const std::string& text) {
  // A line holds at least one character, or breaking would never end.
  max_chars = std::max(max_chars, 1u);
  std::vector<std::string> lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t line_feed = std::min(text.find('\n', begin), text.size());
    break_paragraph(max_chars, text.substr(begin, line_feed - begin), lines);
    begin = line_feed + 1;
  }
  return lines;
}

std::string join_lines(const std::vector<std::string>& lines) {
  std::string joined;
  for (std::size_t index = 0; index < lines.size(); ++index) {
    if (index > 0) {
      joined += '\n';
    }
    joined += lines[index];
  }
  return joined;
}

void set_accessible_texts(wxWindow* window, const std::string& name, const std::string& description) {
  if (!window) {
    return;
  }
#if TAMSEL3_HAVE_ATK
  if (AtkObject* accessible =
          window->GetHandle() ? gtk_widget_get_accessible(window->GetHandle()) : nullptr) {
    atk_object_set_name(accessible, name.c_str());
    atk_object_set_description(accessible, description.c_str());
    return;
  }
#endif
  // wx has no accessibility of its own on GTK: keep the texts where wx can tell them.
  window->SetName(wxString::FromUTF8(name));
  window->SetHelpText(wxString::FromUTF8(description));
}

std::pair<std::string, std::string> get_accessible_texts(wxWindow* window) {
  if (!window) {
    return {};
  }
#if TAMSEL3_HAVE_ATK
  if (AtkObject* accessible =
          window->GetHandle() ? gtk_widget_get_accessible(window->GetHandle()) : nullptr) {
    const char* name = atk_object_get_name(accessible);
    const char* description = atk_object_get_description(accessible);
    return {name ? name : "", description ? description : ""};
  }
#endif
  return {window->GetName().utf8_string(), window->GetHelpText().utf8_string()};
}

namespace {

bool is_copy_key(const wxKeyEvent& event) {
  return event.GetModifiers() == wxMOD_CONTROL && (event.GetKeyCode() == 'C' || event.GetKeyCode() == 'c');
}

enum focus_t { focus_none, focus_ok, focus_cancel };

// The catalog keys of the two buttons' labels (null: the button is hidden) and the one
// that gets the focus, by button type.
struct buttons_t {
  const char* ok_key;
  const char* cancel_key;
  focus_t focus;
};

buttons_t buttons_of(message_window_t::button_type_t type) {
  switch (type) {
    case message_window_t::buttons_yes_no: return {"btn.yes", "btn.no", focus_ok};
    case message_window_t::buttons_ok_cancel: return {"btn.ok", "btn.cancel", focus_ok};
    case message_window_t::buttons_retry_cancel: return {"btn.retry", "btn.cancel", focus_cancel};
    case message_window_t::buttons_none: return {nullptr, nullptr, focus_none};
    default: return {nullptr, "btn.close", focus_cancel};  // Close, also for 2, 4 and the unknown
  }
}

// Shows the button with the label of `key`, or hides it when `key` is null.
void set_button(wxWindow* button, const char* key) {
  if (!button) {
    return;
  }
  button->Show(key != nullptr);
  if (key) {
    button->SetLabel(wxString::FromUTF8(translate_message(key, ZANDOR_2_16::generic::varg_list())));
  }
}

// The answer that a plain Enter should give is the one that has the focus.
void focus_button(wxWindow* button) {
  if (!button) {
    return;
  }
  button->SetFocus();
  if (auto* push_button = dynamic_cast<wxButton*>(button)) {
    push_button->SetDefault();
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------
// error_warning_panel_t

error_warning_panel_t::error_warning_panel_t(const message_window_t& data) : m_data(data) {
  m_object_name = "panel.error_warning";
  Bind(wxEVT_CHAR_HOOK, &error_warning_panel_t::handle_char_hook, this);
  Bind(wxEVT_PAINT, &error_warning_panel_t::handle_first_paint, this);
}

error_warning_panel_t::~error_warning_panel_t() = default;

void error_warning_panel_t::on_init_dialog() {
  m_main_instructions = XRCCTRL(*this, "m_main_instructions", wxStaticText);
  m_supplemental_instructions = XRCCTRL(*this, "m_supplemental_instructions", wxStaticText);
  m_icon = XRCCTRL(*this, "m_icon", wxStaticBitmap);
  m_checkBox5 = XRCCTRL(*this, "m_checkBox5", wxCheckBox);
  load_images();
  on_update_ui_settings();
  set_accessible_texts(this, m_data.m_main_message, m_data.m_supplemental_message);
}

void error_warning_panel_t::on_ok() { save_check_box_state(true); }

void error_warning_panel_t::on_cancel() {
  // Close is the one button that both cancels and answers: its choice is kept.
  if (m_data.m_button_type == message_window_t::buttons_close) {
    save_check_box_state(true);
  }
}

void error_warning_panel_t::on_update_ui_settings() {
  const wxSize before = GetSize();
  pref_base_t::on_update_ui_settings();
  const korvat2::intrusive_pointer_t<plaxi1::ui_settings_t> settings = plaxi1::ui_settings_t::get();
  m_main_font = settings->get_font(plaxi1::font_large);
  m_supplemental_font = settings->get_font(plaxi1::font_normal);
  if (m_main_instructions && m_supplemental_instructions) {
    fill_controls();
  }
  if (GetSize() != before) {
    m_layout_changed_signal();
  }
}

void error_warning_panel_t::fill_controls() {
  fill_text_controls();
  // An empty text would leave a gap where it stands.
  for (wxStaticText* text : {m_main_instructions, m_supplemental_instructions}) {
    if (text) {
      text->Show(!text->GetLabel().empty());
    }
  }

  const buttons_t buttons = buttons_of(m_data.m_button_type);
  set_button(m_btn_ok, buttons.ok_key);
  set_button(m_btn_cancel, buttons.cancel_key);
  if (buttons.focus == focus_ok) {
    focus_button(m_btn_ok);
  } else if (buttons.focus == focus_cancel) {
    focus_button(m_btn_cancel);
  }

  if (m_checkBox5) {
    if (m_data.m_check_box) {
      m_checkBox5->Show();
      m_checkBox5->SetValue(m_data.m_check_box->is_checked());
      m_checkBox5->SetLabel(wxString::FromUTF8(m_data.m_check_box->get_label()));
    } else {
      m_checkBox5->Hide();
    }
  }

  // The size of the contents, not a floor left by an earlier, longer text.
  SetMinSize(wxDefaultSize);
  Fit();
  SetMinSize(GetSize());
}

void error_warning_panel_t::set_max_main_msg_width(int width) {
  set_max_msg_width(m_max_main_msg_width, width);
}

void error_warning_panel_t::set_max_supp_msg_width(int width) {
  set_max_msg_width(m_max_supp_msg_width, width);
}

void error_warning_panel_t::set_max_msg_width(int& field, int width) {
  if (width < -1) {
    return;
  }
  field = width;
  on_update_ui_settings();  // rewraps
}

void error_warning_panel_t::save_check_box_state(bool save) {
  if (!m_data.m_check_box) {
    return;
  }
  m_data.m_check_box->set_checked(m_checkBox5 && m_checkBox5->GetValue());
  if (save) {
    m_data.m_check_box->save_state();
  }
}

message_window_t error_warning_panel_t::get_window_data() const { return m_data; }

void error_warning_panel_t::set_animation(const plaxi1::picture_t& animation) {
  m_animation = new dense_animation_ctrl_t(this, animation);
  if (m_icon) {
    if (wxSizer* sizer = m_icon->GetContainingSizer()) {
      sizer->Replace(m_icon, m_animation, false);
    }
    m_icon->Hide();  // out of the layout, it would still paint at its old place
  }
  m_animation->Play();
}

void error_warning_panel_t::load_images() {
  plaxi1::picture_t picture;
  if (m_data.m_icon_type == message_window_t::icon_custom) {
    picture = m_data.m_picture.is_empty() ? message_window_t::get_icon_by_type(message_window_t::icon_error)
                                          : m_data.m_picture;
  } else {
    picture = message_window_t::get_icon_by_type(m_data.m_icon_type);
  }
  if (picture.is_image() && !picture.get_image().is_empty()) {
    // The form for this window's scale, with its scale factor, so it shows crisp and at
    // the same logical size on high-density displays.
    m_bitmap = picture.get_image().getBundle().GetBitmapFor(this);
  } else if (picture.is_animation() && picture.get_animation().IsOk()) {
    set_animation(picture);
  }
  if (m_icon) {
    m_icon->SetBitmap(m_bitmap);
    a11y::set_name(
        m_icon, wxString::FromUTF8(picture_name(icon_kind(m_data.m_icon_type, m_data.m_picture.is_empty()))));
  }
}

void error_warning_panel_t::fill_text_controls() {
  fill_static_text(m_main_instructions, true, m_data.m_main_message, m_main_font);
  fill_static_text(m_supplemental_instructions, false, m_data.m_supplemental_message, m_supplemental_font);
}

// The public signature takes the font by value; a host compiles against it.
void error_warning_panel_t::fill_static_text(wxStaticText* text, bool is_main, const std::string& message,
                                             wxFont font) {  // NOLINT(performance-unnecessary-value-param)
  if (message.empty() || !text) {
    return;
  }
  const unsigned limit = max_string_len_in_label(is_main);
  // The longest word always fits on a line, so the breaker never cuts one.
  const unsigned longest = get_longest_word_length(message);
  const std::string content = content_for_label(create_multi_line(std::max(limit, longest), message));
  text->SetFont(font);
  text->SetLabelText(wxString::FromUTF8(content));  // an ampersand is text, not a mnemonic
}

unsigned error_warning_panel_t::max_string_len_in_label(bool is_main) {
  wxClientDC dc(this);
  dc.SetFont(is_main ? m_main_font : m_supplemental_font);
  const int width = is_main ? m_max_main_msg_width : m_max_supp_msg_width;
  // -1 turns into a count that no text reaches.
  return static_cast<unsigned>(width) / static_cast<unsigned>(dc.GetCharWidth());
}

std::vector<std::string> error_warning_panel_t::create_multi_line(unsigned max_chars,
                                                                  const std::string& text) const {
  return break_into_lines(max_chars, text);
}

std::string error_warning_panel_t::content_for_label(const std::vector<std::string>& lines) const {
  return join_lines(lines);
}

bool error_warning_panel_t::copy_to_clipboard() const {
  std::string text = m_data.m_main_message;
  if (!m_data.m_supplemental_message.empty()) {
    if (!text.empty()) {
      text += "\n\n";
    }
    text += m_data.m_supplemental_message;
  }
  wxClipboard* clipboard = wxTheClipboard;
  clipboard->UsePrimarySelection(false);  // the clipboard that Ctrl+V reads
  if (!clipboard->Open()) {
    return false;
  }
  const bool copied = clipboard->SetData(new wxTextDataObject(wxString::FromUTF8(text)));
  clipboard->Close();
  return copied;
}

// GTK gives some controls (buttons among them) their final height only once they are on
// the screen, after the panel made its size its minimum: fit once more then, and tell the
// owner.
void error_warning_panel_t::handle_first_paint(wxPaintEvent& event) {
  event.Skip();
  Unbind(wxEVT_PAINT, &error_warning_panel_t::handle_first_paint, this);
  CallAfter([this] { on_update_ui_settings(); });
}

void error_warning_panel_t::handle_char_hook(wxKeyEvent& event) {
  if (is_copy_key(event)) {
    copy_to_clipboard();
    return;
  }
  event.Skip();
}

// ---------------------------------------------------------------------------------------
// error_warning_dialog_t

error_warning_dialog_t::error_warning_dialog_t(const message_window_t& data)
    : m_panel(new error_warning_panel_t(data)) {
  m_panel->m_end_dialog_signal.connect(this, &error_warning_dialog_t::on_end_panel);
  m_panel->m_layout_changed_signal.connect(this, &error_warning_dialog_t::on_update_ui_settings);
  m_object_name = "dlg.error_warning_dialog";
  if (data.m_context_help) {
    SetExtraStyle(GetExtraStyle() | wxWS_EX_CONTEXTHELP);
  }
  Bind(wxEVT_CHAR_HOOK, &error_warning_dialog_t::handle_char_hook, this);
}

error_warning_dialog_t::~error_warning_dialog_t() {
  // A panel that never became a window has no parent to destroy it.
  if (m_panel && !m_panel->GetParent()) {
    delete m_panel;
  }
}

void error_warning_dialog_t::on_init_dialog() {
  m_panel->create(this);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(m_panel, 0, wxEXPAND, 0);
  SetSizer(sizer, true);
  Fit();
  const wxSize size = GetSize();
  if (size.GetWidth() > 0 && size.GetHeight() > 0) {
    SetMinSize(size);
  }
  const char* title =
      quern2::IProductLocations::get()->getProductText(quern2::IProductLocations::text_message_title);
  set_title(title ? title : "");
  const message_window_t data = m_panel->get_window_data();
  set_accessible_texts(this, data.m_main_message, data.m_supplemental_message);
  place_centred();
}

void error_warning_dialog_t::on_update_ui_settings() {
  dialog_base_t::on_update_ui_settings();
  Fit();
}

void error_warning_dialog_t::on_end_panel(generic_base_t<wxPanel>*, int code) { end_dialog(code); }

void error_warning_dialog_t::handle_char_hook(wxKeyEvent& event) {
  if (is_copy_key(event)) {
    m_panel->copy_to_clipboard();
    return;
  }
  // Without a visible cancel button the toolkit ignores Escape; it then closes the dialog
  // as the window frame does.
  if (event.GetKeyCode() == WXK_ESCAPE) {
    wxWindow* cancel = FindWindow(GetEscapeId());
    if (!cancel || !cancel->IsShown() || !cancel->IsEnabled()) {
      Close();
      return;
    }
  }
  event.Skip();
}

}  // namespace tamsel3
