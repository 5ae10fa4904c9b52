// The ask dialog shown modally and driven from inside its loop; its file dialog is answered
// through wx's modal dialog hook, registered once the ask dialog itself runs.
#include "fixtures.h"
#include "gui_test.h"
#include "modal_answer.h"

#include <quern2/catalog_registry.h>
#include <tamsel3/ask_dlg.h>

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/settings.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <functional>
#include <string>
#include <utility>

namespace {

using gui_test::answer_t;
using gui_test::choose_file;

// Opens the dialog's parts to the tests.
class open_ask_dlg_t : public tamsel3::ask_dlg_t {
 public:
  using ask_dlg_t::m_ask_text;
  using ask_dlg_t::m_extensions;
  using ask_dlg_t::m_file_field;
};

// A dialog whose controls get a tiny font, as a small system font would give them.
class small_font_ask_dlg_t : public open_ask_dlg_t {
 public:
  void on_update_ui_settings() override {
    open_ask_dlg_t::on_update_ui_settings();
    const wxFont tiny(wxFontInfo(5).Family(wxFONTFAMILY_SWISS));
    for (wxWindow* child : GetChildren()) {
      child->SetFont(tiny);
    }
  }
};

int run_modal(tamsel3::dialog_base_t& dialog, std::function<void(wxDialog&)> action) {
  gui_test::on_next_modal(std::move(action));
  return dialog.show_modal(nullptr);
}

std::string field_text(wxWindow& dialog) {
  auto* field = dynamic_cast<wxTextCtrl*>(gui_test::find_named(&dialog, "m_textCtrl9"));
  EXPECT_NE(field, nullptr);
  return field ? field->GetValue().utf8_string() : std::string();
}

void type_into_field(wxWindow& dialog, const std::string& text) {
  if (auto* field = dynamic_cast<wxTextCtrl*>(gui_test::find_named(&dialog, "m_textCtrl9"))) {
    field->SetValue(wxString::FromUTF8(text));
  }
}

int height_of(wxWindow& dialog, const char* name) {
  wxWindow* window = gui_test::find_named(&dialog, name);
  EXPECT_NE(window, nullptr) << name;
  return window ? window->GetSize().GetHeight() : 0;
}

TEST(ask_dlg_test, filename_set_before_showing_is_only_stored_until_init) {
  open_ask_dlg_t dialog;
  dialog.set_filename("/data/symbols.cfg");
  EXPECT_EQ(dialog.m_file_field, nullptr);
  EXPECT_EQ(dialog.get_filename(), "/data/symbols.cfg");
  run_modal(dialog, [](wxDialog& shown) {
    EXPECT_EQ(field_text(shown), "/data/symbols.cfg");
    gui_test::click(&shown, "m_btn_cancel");
  });
}

TEST(ask_dlg_test, filename_set_while_shown_goes_into_the_field) {
  open_ask_dlg_t dialog;
  const int code = run_modal(dialog, [&](wxDialog& shown) {
    dialog.set_filename("/data/later.cfg");
    EXPECT_EQ(field_text(shown), "/data/later.cfg");
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(code, wxID_OK);
  EXPECT_EQ(dialog.get_filename(), "/data/later.cfg");
}

TEST(ask_dlg_test, ok_takes_the_field_without_checking_the_file) {
  open_ask_dlg_t dialog;
  dialog.set_filename("/data/old.cfg");
  const int code = run_modal(dialog, [](wxDialog& shown) {
    type_into_field(shown, "/no/such/folder/new.cfg");
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(code, 5100);
  EXPECT_EQ(dialog.get_filename(), "/no/such/folder/new.cfg");
}

TEST(ask_dlg_test, cancel_leaves_the_filename) {
  open_ask_dlg_t dialog;
  dialog.set_filename("/data/old.cfg");
  const int code = run_modal(dialog, [](wxDialog& shown) {
    type_into_field(shown, "/data/typed.cfg");
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(code, 5101);
  EXPECT_EQ(dialog.get_filename(), "/data/old.cfg");
}

TEST(ask_dlg_test, cancelled_browse_leaves_the_field) {
  test_support::temp_dir_t folder;
  const std::string start = folder.write("start.cfg", "start");
  const std::string other = folder.write("other.cfg", "other");
  open_ask_dlg_t dialog;
  dialog.set_filename(start);
  run_modal(dialog, [&](wxDialog& shown) {
    answer_t<wxFileDialog> answer([&](wxFileDialog& chooser) {
      EXPECT_EQ(chooser.GetWildcard().utf8_string(), "All files (*)|*");
      EXPECT_EQ(chooser.GetWindowStyle() & wxFD_OPEN, wxFD_OPEN);
      choose_file(chooser, other);
      return wxID_CANCEL;
    });
    gui_test::click(&shown, "m_button10");
    EXPECT_EQ(answer.m_calls, 1);
    EXPECT_EQ(field_text(shown), start);
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(dialog.get_filename(), start);
}

TEST(ask_dlg_test, confirmed_browse_puts_the_path_into_the_field) {
  test_support::temp_dir_t folder;
  const std::string chosen = folder.write("chosen.cfg", "chosen");
  open_ask_dlg_t dialog;
  dialog.set_filename(folder.file("start.cfg"));
  run_modal(dialog, [&](wxDialog& shown) {
    answer_t<wxFileDialog> answer([&](wxFileDialog& chooser) {
      EXPECT_EQ(chooser.GetFilename().utf8_string(), "start.cfg");
      choose_file(chooser, chosen);
      return wxID_OK;
    });
    gui_test::click(&shown, "m_button10");
    EXPECT_EQ(field_text(shown), chosen);
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(dialog.get_filename(), folder.file("start.cfg"));  // cancelled after all
}

TEST(ask_dlg_test, explanation_names_the_product_and_is_wrapped) {
  open_ask_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    auto* text = dynamic_cast<wxStaticText*>(gui_test::find_named(&shown, "m_staticText7"));
    ASSERT_NE(text, nullptr);
    const std::string label = text->GetLabel().utf8_string();
    EXPECT_EQ(label.rfind("Tamsel needs a file", 0), 0u) << label;
    EXPECT_NE(label.find('\n'), std::string::npos) << "not wrapped: " << label;
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(dialog.m_extensions, "All files (*)\n*");
}

// The user's locale is German for the scope; the catalogs are read again on both ends.
class german_locale_t {
 public:
  german_locale_t() {
    m_lc_all.unset();
    m_lc_messages.unset();
    m_language.unset();
    m_lang.set("de_DE.UTF-8");
    quern2::reloadMessageCatalogs();
  }
  ~german_locale_t() {
    for (test_support::scoped_env_t* variable : {&m_lc_all, &m_lc_messages, &m_language, &m_lang}) {
      variable->restore();
    }
    quern2::reloadMessageCatalogs();
  }
  german_locale_t(const german_locale_t&) = delete;
  german_locale_t& operator=(const german_locale_t&) = delete;

 private:
  test_support::scoped_env_t m_lc_all{"LC_ALL"};
  test_support::scoped_env_t m_lc_messages{"LC_MESSAGES"};
  test_support::scoped_env_t m_language{"LANGUAGE"};
  test_support::scoped_env_t m_lang{"LANG"};
};

std::string label_of(wxWindow& dialog, const char* name) {
  wxWindow* window = gui_test::find_named(&dialog, name);
  EXPECT_NE(window, nullptr) << name;
  return window ? window->GetLabel().utf8_string() : std::string();
}

TEST(ask_dlg_test, a_german_locale_gives_german_texts_that_fit) {
  german_locale_t german;
  open_ask_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    EXPECT_EQ(shown.GetTitle().utf8_string(), "Datei suchen");
    EXPECT_EQ(label_of(shown, "m_staticText6"), "Datei:");
    EXPECT_EQ(label_of(shown, "m_button10"), "Durchsuchen …");
    EXPECT_EQ(label_of(shown, "m_btn_cancel"), "Abbrechen");
    EXPECT_EQ(label_of(shown, "m_btn_ok"), "OK");
    const std::string text = label_of(shown, "m_staticText7");
    EXPECT_EQ(text.rfind("Tamsel benötigt eine Datei", 0), 0u) << text;
    for (const char* name : {"m_staticText6", "m_button10", "m_btn_cancel", "m_btn_ok"}) {
      wxWindow* window = gui_test::find_named(&shown, name);
      ASSERT_NE(window, nullptr) << name;
      EXPECT_GE(window->GetSize().GetWidth(), window->GetBestSize().GetWidth()) << name << " is cut";
    }
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(dialog.m_extensions, "Alle Dateien (*)\n*");
}

TEST(ask_dlg_test, small_font_keeps_the_height_floor_of_170) {
  small_font_ask_dlg_t dialog;
  run_modal(dialog, [&](wxDialog& shown) {
    EXPECT_TRUE(gui_test::wait_until_shown(&shown));
    const int sum = wxSystemSettings::GetMetric(wxSYS_CAPTION_Y, &shown) + height_of(shown, "m_staticText6") +
                    10 + 2 * height_of(shown, "m_button10") + 29;
    EXPECT_LT(sum, 171) << "the floor isn't what holds the height";
    EXPECT_EQ(dialog.calculate_min_size(), wxSize(400, 170));
    EXPECT_EQ(shown.GetMinSize(), wxSize(400, 170));
    EXPECT_GE(shown.GetSize().GetHeight(), 170);
    EXPECT_GE(shown.GetSize().GetWidth(), 400);
    gui_test::click(&shown, "m_btn_cancel");
  });
}

TEST(ask_dlg_test, tall_controls_raise_the_height_above_the_floor) {
  open_ask_dlg_t dialog;
  run_modal(dialog, [&](wxDialog& shown) {
    wxWindow* browse = gui_test::find_named(&shown, "m_button10");
    ASSERT_NE(browse, nullptr);
    browse->SetSize(browse->GetSize().GetWidth(), 120);
    const int sum = wxSystemSettings::GetMetric(wxSYS_CAPTION_Y, &shown) + height_of(shown, "m_staticText6") +
                    10 + 2 * 120 + 29;
    EXPECT_EQ(dialog.calculate_min_size(), wxSize(400, sum));
    gui_test::click(&shown, "m_btn_cancel");
  });
}

}  // namespace
