#include "error_warning_panel_p.h"
#include "fixtures.h"
#include "gui_test.h"
#include "message_test_support.h"

#include <plaxi1/image_loader.h>
#include <plaxi1/placement.h>
#include <plaxi1/ui_settings.h>
#include <quern2/product_locations.h>
#include <tamsel3/error_warning_panel.h>
#include <tamsel3/resource.h>

#include <gtest/gtest.h>
#include <wx/animate.h>
#include <wx/checkbox.h>
#include <wx/clipbrd.h>
#include <wx/cshelp.h>
#include <wx/dataobj.h>
#include <wx/dcclient.h>
#include <wx/frame.h>
#include <wx/generic/animate.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

using message_test::counting_check_box_t;
using message_test::panel_of;
using message_test::run_message;
using message_test::test_catalog;
using message_test::warning;
using tamsel3::message_window_t;

using lines_t = std::vector<std::string>;

// A panel that lets the tests see its parts.
class probe_panel_t : public tamsel3::error_warning_panel_t {
 public:
  using error_warning_panel_t::error_warning_panel_t;

  wxStaticText* main_text() const { return m_main_instructions; }
  wxStaticText* supplemental_text() const { return m_supplemental_instructions; }
  wxStaticBitmap* icon() const { return m_icon; }
  wxCheckBox* check_box() const { return m_checkBox5; }
  const wxFont& main_font() const { return m_main_font; }
  const wxFont& supplemental_font() const { return m_supplemental_font; }
  int main_width() const { return m_max_main_msg_width; }
  int supplemental_width() const { return m_max_supp_msg_width; }
  const wxBitmap& bitmap() const { return m_bitmap; }
};

// A frame that hosts one probe panel, as a page would be hosted.
struct host_t {
  explicit host_t(const message_window_t& data)
      : frame(new wxFrame(nullptr, wxID_ANY, "host")), panel(new probe_panel_t(data)) {
    panel->create(frame);
  }
  ~host_t() { frame->Destroy(); }
  host_t(const host_t&) = delete;
  host_t& operator=(const host_t&) = delete;

  wxFrame* frame;
  probe_panel_t* panel;
};

message_window_t texts(const std::string& main_text, const std::string& supplemental_text = "") {
  message_window_t data = warning(message_window_t::buttons_ok_cancel, main_text, supplemental_text);
  return data;
}

int char_width(wxWindow* window, const wxFont& font) {
  wxClientDC dc(window);
  dc.SetFont(font);
  return dc.GetCharWidth();
}

lines_t lines_of(const wxStaticText* text) {
  lines_t lines;
  const std::string label = text->GetLabelText().utf8_string();
  std::size_t start = 0;
  for (std::size_t end; (end = label.find('\n', start)) != std::string::npos; start = end + 1) {
    lines.push_back(label.substr(start, end - start));
  }
  lines.push_back(label.substr(start));
  return lines;
}

bool same_pixels(const wxImage& a, const wxImage& b) {
  return a.IsOk() && b.IsOk() && a.GetSize() == b.GetSize() &&
         std::memcmp(a.GetData(), b.GetData(), static_cast<std::size_t>(a.GetWidth() * a.GetHeight() * 3)) ==
             0;
}

std::string clipboard_text() {
  wxTheClipboard->UsePrimarySelection(false);
  if (!wxTheClipboard->Open()) {
    return "<clipboard not open>";
  }
  wxTextDataObject data;
  const bool read = wxTheClipboard->IsSupported(wxDF_UNICODETEXT) && wxTheClipboard->GetData(data);
  wxTheClipboard->Close();
  return read ? data.GetText().utf8_string() : "<no text>";
}

void put_on_clipboard(const std::string& text) {
  wxTheClipboard->UsePrimarySelection(false);
  ASSERT_TRUE(wxTheClipboard->Open());
  wxTheClipboard->SetData(new wxTextDataObject(wxString::FromUTF8(text)));
  wxTheClipboard->Close();
}

void press_ctrl_c(wxWindow* window) {
  wxKeyEvent key(wxEVT_CHAR_HOOK);
  key.m_keyCode = 'C';
  key.SetControlDown(true);
  key.SetEventObject(window);
  key.SetId(window->GetId());
  window->ProcessWindowEvent(key);
}

// ---------------------------------------------------------------------------------------
// Wrapping.

const std::string ten_words = "The analysis could not write results into the chosen folder";

TEST(error_warning_panel_test, main_text_breaks_at_the_last_blank_before_the_width) {
  host_t host(texts(ten_words));
  const int width = char_width(host.panel, host.panel->main_font());
  host.panel->set_max_main_msg_width(42 * width);
  EXPECT_EQ(host.panel->max_string_len_in_label(true), 42u);
  EXPECT_EQ(lines_of(host.panel->main_text()),
            (lines_t{"The analysis could not write results into", "the chosen folder"}));
}

TEST(error_warning_panel_test, the_count_is_the_width_by_the_average_character) {
  host_t host(texts(ten_words));
  const unsigned main_width = static_cast<unsigned>(char_width(host.panel, host.panel->main_font()));
  const unsigned supplemental_width =
      static_cast<unsigned>(char_width(host.panel, host.panel->supplemental_font()));
  EXPECT_EQ(host.panel->max_string_len_in_label(true), 420u / main_width);
  EXPECT_EQ(host.panel->max_string_len_in_label(false), 448u / supplemental_width);
}

TEST(error_warning_panel_test, a_word_longer_than_the_line_stays_whole) {
  const std::string word(60, 'x');
  host_t host(texts("ab cd " + word + " ef"));
  host.panel->set_max_main_msg_width(42 * char_width(host.panel, host.panel->main_font()));
  EXPECT_EQ(lines_of(host.panel->main_text()), (lines_t{"ab cd", word, "ef"}));
}

TEST(error_warning_panel_test, line_feeds_keep_their_breaks_and_restart_the_count) {
  host_t host(texts("aaaa bbbb\ncccc dddd eeee"));
  host.panel->set_max_main_msg_width(10 * char_width(host.panel, host.panel->main_font()));
  EXPECT_EQ(lines_of(host.panel->main_text()), (lines_t{"aaaa bbbb", "cccc dddd", "eeee"}));
}

TEST(error_warning_panel_test, supplemental_text_wraps_at_its_own_width_and_font) {
  const std::string text =
      "Free some space on the disk that holds the result folder, or choose a folder on "
      "another disk in the project's settings, and run the analysis again.";
  host_t host(texts("Main", text));
  const int width = char_width(host.panel, host.panel->supplemental_font());
  host.panel->set_max_supp_msg_width(30 * width);
  EXPECT_EQ(lines_of(host.panel->supplemental_text()),
            tamsel3::break_into_lines(30, text));  // the width counts, not the main one
  EXPECT_EQ(host.panel->supplemental_text()->GetFont(), host.panel->supplemental_font());
  EXPECT_EQ(host.panel->main_text()->GetFont(), host.panel->main_font());
}

TEST(error_warning_panel_test, widths_below_minus_one_are_ignored_and_minus_one_is_no_limit) {
  const std::string text =
      std::string(30, 'a') + " " + std::string(30, 'b') + " " + std::string(30, 'c') + "\nsecond paragraph";
  host_t host(texts(text));
  const int width = char_width(host.panel, host.panel->main_font());
  host.panel->set_max_main_msg_width(40 * width);
  const lines_t wrapped = lines_of(host.panel->main_text());
  EXPECT_EQ(wrapped.size(), 4u);

  host.panel->set_max_main_msg_width(-2);
  EXPECT_EQ(host.panel->main_width(), 40 * width);
  EXPECT_EQ(lines_of(host.panel->main_text()), wrapped);
  host.panel->set_max_supp_msg_width(-7);
  EXPECT_EQ(host.panel->supplemental_width(), 448);

  host.panel->set_max_main_msg_width(-1);
  EXPECT_EQ(host.panel->main_width(), -1);
  EXPECT_EQ(lines_of(host.panel->main_text()),
            (lines_t{std::string(30, 'a') + " " + std::string(30, 'b') + " " + std::string(30, 'c'),
                     "second paragraph"}));
}

TEST(error_warning_panel_test, an_ampersand_is_shown_as_text) {
  host_t host(texts("Copy & paste failed"));
  EXPECT_EQ(host.panel->main_text()->GetLabelText(), "Copy & paste failed");
}

TEST(error_warning_panel_test, an_empty_text_leaves_the_control_as_it_is) {
  host_t host(texts("Main", ""));
  wxStaticText* supplemental = host.panel->supplemental_text();
  ASSERT_NE(supplemental, nullptr);
  EXPECT_EQ(supplemental->GetLabel(), "");  // what the layout has
  EXPECT_FALSE(supplemental->IsShown());    // and it leaves no gap

  supplemental->SetLabel("From the layout");
  host.panel->fill_static_text(supplemental, false, "", host.panel->supplemental_font());
  EXPECT_EQ(supplemental->GetLabel(), "From the layout");
  host.panel->fill_static_text(nullptr, false, "Ignored", host.panel->supplemental_font());
  host.panel->fill_static_text(supplemental, false, "Now a text", host.panel->supplemental_font());
  EXPECT_EQ(supplemental->GetLabel(), "Now a text");
}

TEST(error_warning_panel_test, create_multi_line_and_content_for_label_are_the_panels_breaker) {
  host_t host(texts("Main"));
  EXPECT_EQ(host.panel->create_multi_line(42, ten_words),
            (lines_t{"The analysis could not write results into", "the chosen folder"}));
  EXPECT_EQ(host.panel->create_multi_line(5, "abcdefgh"), (lines_t{"abcde", "fgh"}));
  EXPECT_EQ(host.panel->content_for_label({"a", "b"}), "a\nb");
  EXPECT_EQ(host.panel->content_for_label({}), "");
}

// ---------------------------------------------------------------------------------------
// Fonts, size and the layout signal.

struct layout_listener_t : korvat2::subscriber_base_t {
  int count = 0;
  void on_changed() { ++count; }
};

TEST(error_warning_panel_test, fonts_come_from_the_ui_settings) {
  host_t host(texts("Main", "More"));
  const korvat2::intrusive_pointer_t<plaxi1::ui_settings_t> settings = plaxi1::ui_settings_t::get();
  EXPECT_EQ(host.panel->main_font(), settings->get_font(plaxi1::font_large));
  EXPECT_EQ(host.panel->supplemental_font(), settings->get_font(plaxi1::font_normal));
}

TEST(error_warning_panel_test, the_layout_signal_fires_only_when_the_size_changed) {
  host_t host(texts(ten_words, "Free some space."));
  layout_listener_t listener;
  host.panel->m_layout_changed_signal.connect(&listener, &layout_listener_t::on_changed);
  const wxSize size = host.panel->GetSize();
  EXPECT_EQ(host.panel->GetMinSize(), size);

  plaxi1::ui_settings_t::get()->refresh();  // the same settings once more
  host.panel->on_update_ui_settings();
  EXPECT_EQ(listener.count, 0);
  EXPECT_EQ(host.panel->GetSize(), size);

  host.panel->set_max_main_msg_width(20 * char_width(host.panel, host.panel->main_font()));
  EXPECT_EQ(listener.count, 1);
  EXPECT_GT(host.panel->GetSize().GetHeight(), size.GetHeight());
  host.panel->set_max_main_msg_width(20 * char_width(host.panel, host.panel->main_font()));
  EXPECT_EQ(listener.count, 1);

  host.panel->set_max_main_msg_width(-1);  // one line: narrower is allowed again
  EXPECT_EQ(listener.count, 2);
  EXPECT_LT(host.panel->GetSize().GetHeight(), size.GetHeight() + 1);
}

TEST(error_warning_panel_test, the_dialog_follows_the_panels_size) {
  run_message(texts(ten_words, "Free some space."), [](wxDialog& shown) {
    tamsel3::error_warning_panel_t* panel = panel_of(shown);
    ASSERT_NE(panel, nullptr);
    const wxSize before = shown.GetClientSize();
    EXPECT_TRUE(shown.GetMinSize().IsFullySpecified());
    panel->set_max_main_msg_width(100);
    EXPECT_GT(shown.GetClientSize().GetHeight(), before.GetHeight());
    EXPECT_GE(shown.GetClientSize().GetHeight(), panel->GetSize().GetHeight());
    shown.EndModal(wxID_CANCEL);
  });
}

// ---------------------------------------------------------------------------------------
// The dialog.

TEST(error_warning_panel_test, dialog_is_titled_named_and_holds_the_panel) {
  run_message(texts("Main", "More"), [](wxDialog& shown) {
    auto* dialog = dynamic_cast<tamsel3::error_warning_dialog_t*>(&shown);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->get_title(), quern2::IProductLocations::get()->getProductText(4));
    tamsel3::error_warning_panel_t* panel = dialog->get_panel();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->GetParent(), dialog);
    EXPECT_TRUE(panel->IsShown());
    ASSERT_NE(dialog->GetSizer(), nullptr);
    EXPECT_EQ(dialog->GetSizer()->GetItem(panel)->GetProportion(), 0);
    EXPECT_FALSE(dialog->GetExtraStyle() & wxWS_EX_CONTEXTHELP);
    // Centred on the screen, as it has no parent; a Wayland compositor places it itself and
    // doesn't say where.
    if (plaxi1::can_place_windows()) {
      const wxRect screen(wxPoint(0, 0), wxGetDisplaySize());
      const wxRect rect = dialog->GetScreenRect();
      EXPECT_LE(std::abs(rect.GetLeft() - (screen.GetWidth() - rect.GetWidth()) / 2), 2);
    }
    shown.EndModal(wxID_CANCEL);
  });
}

// Every character of the message, in order, whatever the blanks and breaks between them.
std::string without_separators(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n'; }),
             text.end());
  return text;
}

TEST(error_warning_panel_test, dialog_shows_the_whole_of_a_message_that_is_not_ascii) {
  const std::string main_text = "Cannot open /home/jürgen/üüü/src/main.cpp";
  const std::string supplemental_text = "Не удалось открыть файл результатов: диск переполнен";
  run_message(texts(main_text, supplemental_text), [&](wxDialog& shown) {
    tamsel3::error_warning_panel_t* panel = dynamic_cast<tamsel3::error_warning_dialog_t&>(shown).get_panel();
    auto* main_label = XRCCTRL(*panel, "m_main_instructions", wxStaticText);
    auto* supplemental_label = XRCCTRL(*panel, "m_supplemental_instructions", wxStaticText);
    ASSERT_TRUE(main_label && supplemental_label);
    EXPECT_EQ(without_separators(main_label->GetLabelText().utf8_string()), without_separators(main_text));
    EXPECT_EQ(without_separators(supplemental_label->GetLabelText().utf8_string()),
              without_separators(supplemental_text));

    panel->set_max_main_msg_width(29 * char_width(panel, main_label->GetFont()));
    EXPECT_EQ(lines_of(main_label), (lines_t{"Cannot open", "/home/jürgen/üüü/src/main.cpp"}));
    panel->set_max_supp_msg_width(20 * char_width(panel, supplemental_label->GetFont()));
    EXPECT_EQ(lines_of(supplemental_label),
              (lines_t{"Не удалось открыть", "файл результатов:", "диск переполнен"}));
    shown.EndModal(wxID_CANCEL);
  });
}

TEST(error_warning_panel_test, context_help_gives_the_dialog_the_extra_style) {
  message_window_t data = texts("Main");
  data.m_context_help = true;
  data.m_context_topic = "disk.full";
  tamsel3::error_warning_dialog_t dialog(data);
  EXPECT_EQ(dialog.GetExtraStyle() & 128, 128);
  gui_test::on_next_modal([](wxDialog& shown) {
    EXPECT_EQ(shown.GetExtraStyle() & 128, 128);
    shown.EndModal(wxID_CANCEL);
  });
  dialog.show_modal(nullptr);
  EXPECT_EQ(dialog.get_panel()->get_window_data().m_context_topic, "disk.full");
}

TEST(error_warning_panel_test, a_panel_ends_through_its_signal_and_the_dialog_takes_the_code) {
  struct end_listener_t : korvat2::subscriber_base_t {
    std::vector<int> codes;
    void on_end(tamsel3::generic_base_t<wxPanel>*, int code) { codes.push_back(code); }
  } listener;
  tamsel3::error_warning_dialog_t dialog(texts("Main"));
  dialog.get_panel()->m_end_dialog_signal.connect(&listener, &end_listener_t::on_end);
  gui_test::on_next_modal([](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); });
  EXPECT_EQ(dialog.show_modal(nullptr), wxID_OK);
  EXPECT_EQ(listener.codes, std::vector<int>{wxID_OK});
  EXPECT_FALSE(dialog.get_panel()->IsShown());  // the page hid itself
}

TEST(error_warning_panel_test, a_dialog_that_never_ran_frees_its_panel) {
  // Checked by the leak checker of the sanitizer builds; here it must not crash.
  tamsel3::error_warning_dialog_t dialog(texts("Main"));
  EXPECT_EQ(dialog.get_panel()->GetParent(), nullptr);
}

TEST(error_warning_panel_test, without_buttons_only_escape_or_the_frame_ends_the_dialog) {
  const int answer = run_message(warning(message_window_t::buttons_none), [](wxDialog& shown) {
    EXPECT_FALSE(gui_test::find_named(&shown, "m_btn_ok")->IsShown());
    EXPECT_FALSE(gui_test::find_named(&shown, "m_btn_cancel")->IsShown());
    gui_test::press_key(&shown, WXK_RETURN);  // nothing to press
    EXPECT_TRUE(shown.IsModal());
    gui_test::press_key(&shown, WXK_ESCAPE);
    EXPECT_FALSE(shown.IsModal());
  });
  EXPECT_EQ(answer, 7);
}

// ---------------------------------------------------------------------------------------
// Icons.

// A message with a picture of the caller's own.
message_window_t with_own_picture(const plaxi1::picture_t& picture) {
  message_window_t data = texts("Main");
  data.m_icon_type = message_window_t::icon_custom;
  data.m_picture = picture;
  return data;
}

const plaxi1::image_loader_t& test_pictures() {
  static const plaxi1::image_loader_t loader(
      tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  return loader;
}

wxImage shown_icon(wxDialog& shown) {
  auto* icon = dynamic_cast<wxStaticBitmap*>(gui_test::find_named(&shown, "m_icon"));
  return icon ? icon->GetBitmap().ConvertToImage() : wxImage();
}

TEST(error_warning_panel_test, each_icon_type_shows_its_picture) {
  for (const auto type : {message_window_t::icon_error, message_window_t::icon_warning,
                          message_window_t::icon_ok, message_window_t::icon_info}) {
    message_window_t data = texts("Main");
    data.m_icon_type = type;
    run_message(data, [type](wxDialog& shown) {
      const wxImage expected = message_window_t::get_icon_by_type(type).get_image().getImage(false);
      ASSERT_TRUE(expected.IsOk());
      EXPECT_TRUE(same_pixels(shown_icon(shown), expected)) << "icon type " << type;
      EXPECT_EQ(panel_of(shown)->get_animation_ctrl(), nullptr);
      shown.EndModal(wxID_CANCEL);
    });
  }
}

TEST(error_warning_panel_test, own_icon_without_picture_shows_the_error_icon) {
  run_message(with_own_picture(plaxi1::picture_t()), [](wxDialog& shown) {
    const wxImage error =
        message_window_t::get_icon_by_type(message_window_t::icon_error).get_image().getImage(false);
    ASSERT_TRUE(error.IsOk());
    EXPECT_TRUE(same_pixels(shown_icon(shown), error));
    shown.EndModal(wxID_CANCEL);
  });
}

TEST(error_warning_panel_test, own_icon_shows_the_callers_picture) {
  const message_window_t data = with_own_picture(test_pictures().load_static_picture("frame_test16"));
  ASSERT_FALSE(data.m_picture.is_empty());
  run_message(data, [&](wxDialog& shown) {
    EXPECT_TRUE(same_pixels(shown_icon(shown), data.m_picture.get_image().getImage(false)));
    shown.EndModal(wxID_CANCEL);
  });
}

void expect_animation_in_place_of_the_icon(wxDialog& shown) {
  tamsel3::error_warning_panel_t* panel = panel_of(shown);
  ASSERT_NE(panel, nullptr);
  wxGenericAnimationCtrl* animation = panel->get_animation_ctrl();
  ASSERT_NE(animation, nullptr);
  EXPECT_TRUE(animation->IsPlaying());
  EXPECT_TRUE(animation->IsShown());
  EXPECT_EQ(animation->GetParent(), panel);
  auto* icon = gui_test::find_named(&shown, "m_icon");
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(icon->GetContainingSizer(), nullptr);
  EXPECT_FALSE(icon->IsShown());
  ASSERT_NE(animation->GetContainingSizer(), nullptr);
  EXPECT_EQ(animation->GetContainingSizer()->GetItem(animation, false)->GetWindow(), animation);
}

TEST(error_warning_panel_test, progress_icon_plays_its_animation_in_place_of_the_icon) {
  message_window_t data = texts("Main");
  data.m_icon_type = message_window_t::icon_progress;
  run_message(data, [](wxDialog& shown) {
    expect_animation_in_place_of_the_icon(shown);
    shown.EndModal(wxID_CANCEL);
  });
}

TEST(error_warning_panel_test, own_animation_plays_in_place_of_the_icon) {
  const message_window_t data = with_own_picture(test_pictures().load_animation("frame_test_anim"));
  ASSERT_TRUE(data.m_picture.is_animation());
  run_message(data, [](wxDialog& shown) {
    expect_animation_in_place_of_the_icon(shown);
    shown.EndModal(wxID_CANCEL);
  });
}

// ---------------------------------------------------------------------------------------
// The check box state on the panel itself.

TEST(error_warning_panel_test, save_check_box_state_passes_the_value_and_keeps_it_on_request) {
  counting_check_box_t check_box;
  {
    message_window_t data = texts("Main");
    data.m_check_box = &check_box;
    host_t host(data);
    ASSERT_NE(host.panel->check_box(), nullptr);
    host.panel->check_box()->SetValue(true);
    host.panel->save_check_box_state(false);
    EXPECT_EQ(check_box.m_set_checked_calls, std::vector<bool>{true});
    EXPECT_EQ(check_box.m_save_calls, 0);
    host.panel->check_box()->SetValue(false);
    host.panel->save_check_box_state(true);
    EXPECT_EQ(check_box.m_set_checked_calls, (std::vector<bool>{true, false}));
    EXPECT_EQ(check_box.m_save_calls, 1);
  }
  gui_test::pump();  // the frame goes, and with it the panel's copy of the definition
}

TEST(error_warning_panel_test, save_check_box_state_without_definition_does_nothing) {
  host_t host(texts("Main"));
  host.panel->save_check_box_state(true);
  EXPECT_FALSE(host.panel->get_window_data().m_check_box);
}

// ---------------------------------------------------------------------------------------
// Copying and accessibility.

TEST(error_warning_panel_test, ctrl_c_copies_both_texts) {
  put_on_clipboard("before");
  run_message(texts("The disk is full", "Free some space."), [](wxDialog& shown) {
    press_ctrl_c(gui_test::find_named(&shown, "m_btn_cancel"));  // from a control of the panel
    EXPECT_EQ(clipboard_text(), "The disk is full\n\nFree some space.");
    put_on_clipboard("between");
    press_ctrl_c(&shown);  // the dialog itself has the focus
    EXPECT_EQ(clipboard_text(), "The disk is full\n\nFree some space.");
    EXPECT_TRUE(shown.IsModal());
    shown.EndModal(wxID_CANCEL);
  });
}

TEST(error_warning_panel_test, copying_without_supplemental_text_takes_the_main_text) {
  put_on_clipboard("before");
  host_t host(texts("Only the main text"));
  EXPECT_TRUE(host.panel->copy_to_clipboard());
  EXPECT_EQ(clipboard_text(), "Only the main text");
}

// The help texts of wx need a help provider, as a host with context help has.
class help_provider_scope_t {
 public:
  help_provider_scope_t() : m_previous(wxHelpProvider::Set(new wxSimpleHelpProvider)) {}
  ~help_provider_scope_t() { delete wxHelpProvider::Set(m_previous); }
  help_provider_scope_t(const help_provider_scope_t&) = delete;
  help_provider_scope_t& operator=(const help_provider_scope_t&) = delete;

 private:
  wxHelpProvider* m_previous;
};

TEST(error_warning_panel_test, dialog_and_panel_tell_their_texts_to_assistive_technologies) {
  help_provider_scope_t help;
  run_message(texts("The disk is full", "Free some space."), [](wxDialog& shown) {
    using texts_t = std::pair<std::string, std::string>;
    const texts_t expected{"The disk is full", "Free some space."};
    EXPECT_EQ(tamsel3::get_accessible_texts(&shown), expected);
    EXPECT_EQ(tamsel3::get_accessible_texts(panel_of(shown)), expected);
    shown.EndModal(wxID_CANCEL);
  });
}

// ---------------------------------------------------------------------------------------
// Pictures of two typical messages, into $TAMSEL3_SCREENSHOT_DIR when it is set.

class screenshot_test : public ::testing::Test {
 protected:
  // Shows `data` and takes its picture.
  void capture(const message_window_t& data, const std::string& name) const {
    const char* dir = std::getenv("TAMSEL3_SCREENSHOT_DIR");
    const std::string path = (dir && *dir ? std::string(dir) : m_folder.path()) + "/" + name;
    run_message(data, [&](wxDialog& shown) {
      EXPECT_TRUE(gui_test::capture_png(&shown, path));
      shown.EndModal(wxID_CANCEL);
    });
    EXPECT_TRUE(wxImage(path, wxBITMAP_TYPE_PNG).IsOk());
  }

 private:
  test_support::temp_dir_t m_folder;
};

TEST_F(screenshot_test, warning_with_yes_no_and_check_box) {
  counting_check_box_t check_box(false, "Do not ask again before overwriting results");
  capture(message_window_t::warning_wnd_with_check(
              test_catalog(), "Overwrite the results of the last run?",
              "The folder already holds the results of run 41. They will be replaced by those of this run "
              "and can't be brought back.",
              message_window_t::buttons_yes_no, &check_box, {}, {}),
          "message_warning_yes_no.png");
}

TEST_F(screenshot_test, error_with_a_long_text) {
  capture(
      message_window_t::simple_error_wnd(
          test_catalog(), "The analysis could not write its results to the result folder",
          "The result folder /home/user/projects/solver/results/run-2024-06-01 is on a file system that is "
          "mounted read-only. Choose another folder in the project's settings, or ask the administrator "
          "to make this one writable, and run the analysis again.\nNothing of the collected data was lost.",
          {}, {}),
      "message_error_long.png");
}

}  // namespace
