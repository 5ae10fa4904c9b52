#include <tamsel3/message.h>
#include <tamsel3/resource.h>
#include <tamsel3/text_helpers.h>

#include <plaxi1/image_loader.h>
#include <zandor/debug.h>

#include <wx/image.h>
#include <wx/imagxpm.h>
#include <wx/sstream.h>

namespace tamsel3 {

namespace {

// The toolkit's bitmap type value of XPM, which the saved form is tied to.
constexpr wxBitmapType xpm_type = wxBITMAP_TYPE_XPM;
static_assert(xpm_type == 9, "the saved pictures are XPM, type 9");

void ensure_xpm_handler() {
  if (!wxImage::FindHandler(xpm_type)) {
    wxImage::AddHandler(new wxXPMHandler);
  }
}

// XPM has only fully transparent pixels, and the toolkit's writer calls a black mask
// colour "Black": alpha becomes a mask, and a black mask colour is moved to an unused one,
// so that transparency survives any number of rounds.
wxImage xpm_ready(wxImage image) {
  if (image.HasAlpha()) {
    image.ConvertAlphaToMask();
  }
  if (image.HasMask() && image.GetMaskRed() == 0 && image.GetMaskGreen() == 0 && image.GetMaskBlue() == 0) {
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    if (image.FindFirstUnusedColour(&r, &g, &b)) {
      image.Replace(0, 0, 0, r, g, b);
      image.SetMaskColour(r, g, b);
    }
  }
  return image;
}

// Reads a saved text; the checks' wording is that of the variant's own, so that a wrong
// kind is reported as "can_get<const char*>()".
class text_reader_t {
 public:
  explicit text_reader_t(const korvat2::variant_t& value) : m_value(value) {}
  template <class T>
  bool can_get() const {
    return m_value.can_get<T>();
  }
  std::string read() const {
    ZANDOR_ASSERT(can_get<const char*>());
    return can_get<const char*>() ? std::string(m_value.get<const char*>()) : std::string();
  }

 private:
  const korvat2::variant_t& m_value;
};

void read_text(const korvat2::variant_bag_t& bag, const char* key, std::string& field) {
  if (const korvat2::variant_t* value = bag.get<korvat2::variant_t>(key)) {
    field = text_reader_t(*value).read();
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------

header_t::header_t(const std::string& caption, const plaxi1::picture_t& picture)
    : m_picture(picture), m_caption(caption) {}

header_t::~header_t() = default;

// ---------------------------------------------------------------------------------------

message_t::message_t(const std::string& caption, const std::string& text, const plaxi1::picture_t& picture)
    : header_t(caption, picture), m_text(text) {}

message_t::~message_t() = default;

const message_button_t& message_t::get_button(unsigned int index) const {
  if (index < m_buttons.size()) {
    return m_buttons[index];
  }
  static const message_button_t empty;
  return empty;
}

korvat2::error_code_t message_t::save(korvat2::variant_bag_t& bag) const {
  bag.put("msg", m_text);
  bag.put("cap", m_caption);
  // Animations have no saved form: a progress picture comes back empty.
  if (!m_picture.is_empty() && m_picture.is_static_picture()) {
    ensure_xpm_handler();
    wxString xpm;
    wxStringOutputStream stream(&xpm, wxConvUTF8);
    if (xpm_ready(m_picture.get_static_picture().getImage(false)).SaveFile(stream, xpm_type)) {
      bag.put("img", std::string(xpm.utf8_str()));
    }
  }
  return korvat2::error::Success;
}

korvat2::error_code_t message_t::load(const korvat2::variant_bag_t& bag) {
  read_text(bag, "msg", m_text);
  read_text(bag, "cap", m_caption);
  if (const korvat2::variant_t* value = bag.get<korvat2::variant_t>("img")) {
    const std::string xpm = text_reader_t(*value).read();
    if (!xpm.empty()) {
      ensure_xpm_handler();
      wxStringInputStream stream(wxString::FromUTF8(xpm));
      wxImage image;
      // A picture that doesn't decode is left out rather than failing the whole message.
      if (image.LoadFile(stream, xpm_type, -1)) {
        m_picture = plaxi1::wxStaticPicture(image);
      }
    }
  }
  return korvat2::error::Success;
}

// ---------------------------------------------------------------------------------------

interactive_message_t::interactive_message_t(const std::string& caption, const std::string& text,
                                             const plaxi1::picture_t& picture)
    : message_t(caption, text, picture) {}

void interactive_message_t::add_button(int id, const std::string& name) {
  m_buttons.push_back(message_button_t{id, name, false});
  if (m_default_index == no_default) {
    m_default_index = 0;
    m_buttons.front().m_default = true;
  }
}

void interactive_message_t::set_button_name(int id, const std::string& name) {
  for (message_button_t& button : m_buttons) {
    if (button.m_id == id) {
      button.m_name = name;
    }
  }
}

void interactive_message_t::clear_buttons() {
  m_buttons.clear();
  m_default_index = no_default;
}

int interactive_message_t::get_default_button() const {
  if (m_default_index == no_default) {
    return -1;
  }
  return get_button(m_default_index).m_id;
}

bool interactive_message_t::set_default_button(int id) {
  for (std::size_t i = 0; i < m_buttons.size(); ++i) {
    if (m_buttons[i].m_id == id) {
      if (m_default_index < m_buttons.size()) {
        m_buttons[m_default_index].m_default = false;
      }
      m_default_index = static_cast<std::uint32_t>(i);
      m_buttons[i].m_default = true;
      return true;
    }
  }
  return false;
}

// ---------------------------------------------------------------------------------------

standard_message_t::standard_message_t(const std::string& caption, const std::string& text,
                                       const plaxi1::picture_t& picture, standard_buttons_t buttons)
    : message_t(caption, text, picture) {
  set_buttons(buttons);
}

namespace {

struct button_key_t {
  int id;
  const char* key;
};

// The buttons of a standard set, in the order in which they show.
std::vector<button_key_t> buttons_of(standard_message_t::standard_buttons_t buttons) {
  const button_key_t close{standard_message_t::button_close, "btn.close"};
  const button_key_t yes{standard_message_t::button_yes, "btn.yes"};
  const button_key_t no{standard_message_t::button_no, "btn.no"};
  const button_key_t ok{standard_message_t::button_ok, "btn.ok"};
  const button_key_t cancel{standard_message_t::button_cancel, "btn.cancel"};
  const button_key_t retry{standard_message_t::button_retry, "btn.retry"};
  switch (buttons) {
    case standard_message_t::buttons_yes_no: return {yes, no};
    case standard_message_t::buttons_yes_no_retry: return {yes, no, retry};
    case standard_message_t::buttons_ok_cancel: return {ok, cancel};
    case standard_message_t::buttons_ok_cancel_retry: return {ok, cancel, retry};
    case standard_message_t::buttons_close_retry: return {close, retry};
    default: return {close};
  }
}

}  // namespace

void standard_message_t::set_buttons(standard_buttons_t buttons) {
  m_buttons_kind = buttons;
  m_buttons.clear();
  for (const button_key_t& key : buttons_of(buttons)) {
    m_buttons.push_back(message_button_t{key.id, translate_message(key.key, {}), false});
  }
}

plaxi1::picture_t standard_message_t::get_icon_by_type(icon_types_t type) {
  const char* name = "error24";
  bool animation = false;
  switch (type) {
    case icon_error: break;
    case icon_warning: name = "warning24"; break;
    case icon_ok: name = "checkmark24"; break;
    case icon_info: name = "info24"; break;
    case icon_progress:
      name = "progress";
      animation = true;
      break;
    default: ZANDOR_ASSERT_MSG("unsupported picture type", false); break;
  }
  const plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return {};
  }
  if (animation) {
    return loader.load_animated_picture(name);
  }
  return loader.load_static_picture(name);
}

// ---------------------------------------------------------------------------------------

progress_message_t::progress_message_t(const std::string& caption, const plaxi1::picture_t& picture,
                                       bool can_cancel)
    : header_t(caption, picture), m_can_cancel(can_cancel) {}

progress_message_t::~progress_message_t() = default;

}  // namespace tamsel3
