#include <tamsel3/error_warning_panel.h>
#include <tamsel3/message_window.h>
#include <tamsel3/resource.h>

#include <plaxi1/image_loader.h>
#include <plaxi1/modal.h>

namespace tamsel3 {

i_check_box_definition::~i_check_box_definition() = default;

namespace {

message_window_t make_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string main_key,
                              std::string supplemental_key, message_window_t::button_type_t buttons,
                              message_window_t::icon_types_t icon,
                              const ZANDOR_2_16::generic::varg_list& main_args,
                              const ZANDOR_2_16::generic::varg_list& supplemental_args) {
  message_window_t data;
  data.m_button_type = buttons;
  data.m_icon_type = icon;
  data.set_main_message(catalog, std::move(main_key), main_args);
  data.set_supplemental_message(catalog, std::move(supplemental_key), supplemental_args);
  return data;
}

}  // namespace

message_window_t message_window_t::simple_error_wnd(
    const ZANDOR_2_16::i18n::catalog_t& catalog, std::string main_key, std::string supplemental_key,
    const ZANDOR_2_16::generic::varg_list& main_args,
    const ZANDOR_2_16::generic::varg_list& supplemental_args) {
  return make_message(catalog, std::move(main_key), std::move(supplemental_key), buttons_close, icon_error,
                      main_args, supplemental_args);
}

message_window_t message_window_t::simple_warning_wnd(
    const ZANDOR_2_16::i18n::catalog_t& catalog, std::string main_key, std::string supplemental_key,
    button_type_t buttons, const ZANDOR_2_16::generic::varg_list& main_args,
    const ZANDOR_2_16::generic::varg_list& supplemental_args) {
  return make_message(catalog, std::move(main_key), std::move(supplemental_key), buttons, icon_warning,
                      main_args, supplemental_args);
}

message_window_t message_window_t::warning_wnd_with_check(
    const ZANDOR_2_16::i18n::catalog_t& catalog, std::string main_key, std::string supplemental_key,
    button_type_t buttons, korvat2::sptr_t<i_check_box_definition> check_box,
    const ZANDOR_2_16::generic::varg_list& main_args,
    const ZANDOR_2_16::generic::varg_list& supplemental_args) {
  message_window_t data = simple_warning_wnd(catalog, std::move(main_key), std::move(supplemental_key),
                                             buttons, main_args, supplemental_args);
  data.m_check_box = std::move(check_box);
  return data;
}

std::string message_window_t::get_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                          const ZANDOR_2_16::generic::varg_list& args) {
  // A miss gives the key itself, so that callers may pass a ready text instead of a key.
  if (!catalog.has_message(key)) {
    return key;
  }
  return catalog.message(key).as_ustring(args).str();
}

plaxi1::picture_t message_window_t::get_icon_by_type(icon_types_t type) {
  const plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return {};
  }
  switch (type) {
    case icon_warning: return loader.load_static_picture("warning24");
    case icon_ok: return loader.load_static_picture("checkmark24");
    case icon_info: return loader.load_static_picture("info24");
    case icon_progress: return loader.load_animated_picture("progress");
    case icon_error:
    case icon_custom:
    default: return loader.load_static_picture("error24");
  }
}

void message_window_t::set_main_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                        const ZANDOR_2_16::generic::varg_list& args) {
  m_main_message = get_message(catalog, std::move(key), args);
}

void message_window_t::set_supplemental_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                                const ZANDOR_2_16::generic::varg_list& args) {
  m_supplemental_message = get_message(catalog, std::move(key), args);
}

void message_window_t::set_details_message(const ZANDOR_2_16::i18n::catalog_t& catalog, std::string key,
                                           const ZANDOR_2_16::generic::varg_list& args) {
  m_details_message = get_message(catalog, std::move(key), args);
  m_has_details = true;
}

namespace {

// The answer that names the pressed button; the only button of the Close types is the
// cancel control, and the types without an affirmative button have no answer for OK.
int answer_of(int end_code, message_window_t::button_type_t buttons) {
  if (end_code == wxID_CANCEL) {
    switch (buttons) {
      case message_window_t::buttons_close: return message_window_t::answer_close;
      case message_window_t::buttons_yes_no: return message_window_t::answer_no;
      case message_window_t::buttons_ok_cancel:
      case message_window_t::buttons_retry_cancel: return message_window_t::answer_cancel;
      default: return message_window_t::answer_none;
    }
  }
  if (end_code == wxID_OK) {
    switch (buttons) {
      case message_window_t::buttons_yes_no: return message_window_t::answer_yes;
      case message_window_t::buttons_ok_cancel: return message_window_t::answer_ok;
      case message_window_t::buttons_retry_cancel: return message_window_t::answer_retry;
      default: return message_window_t::answer_none;
    }
  }
  return message_window_t::answer_none;
}

}  // namespace

int show_modal(const message_window_t& data, wxWindow* parent) {
  // The user asked not to see this message again.
  if (data.m_check_box && data.m_check_box->is_checked()) {
    return message_window_t::answer_none;
  }
  // Never over a window on its way out: it would take the box down with it, from inside
  // the box's own loop.
  parent = plaxi1::live_parent(parent);
  // Held until the dialog is gone, so that the main window's wrapper outlives it.
  korvat2::smart_pointer_t<plaxi1::auto_dummy_wrapper_t> main_window;
  if (!parent) {
    main_window = plaxi1::get_main_window();
    if (main_window && !plaxi1::is_closing(main_window->get_window())) {
      parent = main_window->get_window();
    }
  }
  error_warning_dialog_t dialog(data);
  return answer_of(dialog.show_modal(parent), data.m_button_type);
}

int show_msg_box(const std::string& main_message, const std::string& supplemental_message,
                 message_window_t::icon_types_t icon, wxWindow* parent) {
  message_window_t data;
  data.m_main_message = main_message;
  data.m_supplemental_message = supplemental_message;
  data.m_button_type = message_window_t::buttons_close;
  data.m_icon_type = icon;
  if (parent && !plaxi1::is_closing(parent)) {
    return show_modal(data, parent);
  }
  // A quick message never appears on its own, without any live window of the application.
  const korvat2::smart_pointer_t<plaxi1::auto_dummy_wrapper_t> main_window = plaxi1::get_main_window();
  if (!main_window || !main_window->get_window() || plaxi1::is_closing(main_window->get_window())) {
    return message_window_t::answer_no_window;
  }
  return show_modal(data, main_window->get_window());
}

}  // namespace tamsel3
