#include "fixtures.h"
#include "gui_test.h"
#include "message_test_support.h"

#include <plaxi1/image_loader.h>
#include <plaxi1/modal.h>
#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>
#include <tamsel3/resource.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/stattext.h>

#include <cstring>
#include <ostream>

namespace {

using message_test::counting_check_box_t;
using message_test::modal_counter_t;
using message_test::run_message;
using message_test::test_catalog;
using message_test::warning;
using tamsel3::message_window_t;
using ZANDOR_2_16::generic::argument;
using ZANDOR_2_16::generic::varg_list;

const varg_list no_args;

// Tests about the main window need a process without top-level windows.
class message_window_test : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gui_test::wait_until([] { return wxTopLevelWindows.IsEmpty(); }))
        << "a top-level window of an earlier test is still there";
  }
};

wxWindow* named(wxDialog& dialog, const char* name) {
  wxWindow* window = gui_test::find_named(&dialog, name);
  EXPECT_NE(window, nullptr) << "no " << name;
  return window;
}

std::string label_of(wxDialog& dialog, const char* name) {
  wxWindow* window = named(dialog, name);
  return window ? window->GetLabel().utf8_string() : std::string();
}

std::string text_of(wxDialog& dialog, const char* name) {
  auto* text = dynamic_cast<wxStaticText*>(named(dialog, name));
  return text ? text->GetLabelText().utf8_string() : std::string();
}

// ---------------------------------------------------------------------------------------
// The answer of each button of each type, pressed in a real dialog.

enum class act_t { ok, cancel, escape, frame };

struct answer_case_t {
  message_window_t::button_type_t buttons;
  act_t act;
  int answer;
};

std::ostream& operator<<(std::ostream& out, const answer_case_t& c) {
  static const char* const acts[] = {"ok", "cancel", "escape", "frame"};
  return out << "buttons " << c.buttons << ", " << acts[static_cast<int>(c.act)] << " -> " << c.answer;
}

class answer_test : public ::testing::TestWithParam<answer_case_t> {};

TEST_P(answer_test, the_answer_names_the_button) {
  const answer_case_t c = GetParam();
  const int answer = run_message(warning(c.buttons), [&](wxDialog& shown) {
    switch (c.act) {
      case act_t::ok: gui_test::click(&shown, "m_btn_ok"); break;
      case act_t::cancel: gui_test::click(&shown, "m_btn_cancel"); break;
      case act_t::escape: gui_test::press_key(&shown, WXK_ESCAPE); break;
      case act_t::frame: gui_test::close_by_frame(&shown); break;
    }
    if (shown.IsModal()) {
      ADD_FAILURE() << "the dialog didn't end";
      shown.EndModal(wxID_ABORT);
    }
  });
  EXPECT_EQ(answer, c.answer);
}

INSTANTIATE_TEST_SUITE_P(
    each_button, answer_test,
    ::testing::Values(answer_case_t{message_window_t::buttons_close, act_t::cancel, 0},
                      answer_case_t{message_window_t::buttons_close, act_t::escape, 0},
                      answer_case_t{message_window_t::buttons_close, act_t::frame, 0},
                      answer_case_t{message_window_t::buttons_yes_no, act_t::ok, 1},
                      answer_case_t{message_window_t::buttons_yes_no, act_t::cancel, 2},
                      answer_case_t{message_window_t::buttons_yes_no, act_t::escape, 2},
                      answer_case_t{message_window_t::buttons_yes_no, act_t::frame, 2},
                      answer_case_t{message_window_t::buttons_ok_cancel, act_t::ok, 3},
                      answer_case_t{message_window_t::buttons_ok_cancel, act_t::cancel, 4},
                      answer_case_t{message_window_t::buttons_ok_cancel, act_t::escape, 4},
                      answer_case_t{message_window_t::buttons_ok_cancel, act_t::frame, 4},
                      answer_case_t{message_window_t::buttons_retry_cancel, act_t::ok, 5},
                      answer_case_t{message_window_t::buttons_retry_cancel, act_t::cancel, 4},
                      answer_case_t{message_window_t::buttons_retry_cancel, act_t::escape, 4},
                      answer_case_t{message_window_t::buttons_retry_cancel, act_t::frame, 4},
                      // Shown as Close, but with no answer of their own.
                      answer_case_t{message_window_t::buttons_close_2, act_t::cancel, 7},
                      answer_case_t{message_window_t::buttons_close_2, act_t::escape, 7},
                      answer_case_t{message_window_t::buttons_close_2, act_t::frame, 7},
                      answer_case_t{message_window_t::buttons_close_4, act_t::cancel, 7},
                      answer_case_t{message_window_t::buttons_close_4, act_t::escape, 7},
                      answer_case_t{message_window_t::buttons_close_4, act_t::frame, 7},
                      // No button: only Escape and the frame end it.
                      answer_case_t{message_window_t::buttons_none, act_t::escape, 7},
                      answer_case_t{message_window_t::buttons_none, act_t::frame, 7}));

// ---------------------------------------------------------------------------------------
// Buttons on the screen.

struct buttons_case_t {
  message_window_t::button_type_t buttons;
  const char* ok_label;  // null: hidden
  const char* cancel_label;
  const char* default_button;  // null: none
};

class buttons_test : public ::testing::TestWithParam<buttons_case_t> {};

TEST_P(buttons_test, labels_visibility_and_default) {
  const buttons_case_t c = GetParam();
  run_message(warning(c.buttons), [&](wxDialog& shown) {
    wxWindow* ok = named(shown, "m_btn_ok");
    wxWindow* cancel = named(shown, "m_btn_cancel");
    ASSERT_TRUE(ok && cancel);
    EXPECT_EQ(ok->IsShown(), c.ok_label != nullptr);
    EXPECT_EQ(cancel->IsShown(), c.cancel_label != nullptr);
    if (c.ok_label) {
      EXPECT_EQ(ok->GetLabel(), c.ok_label);
    }
    if (c.cancel_label) {
      EXPECT_EQ(cancel->GetLabel(), c.cancel_label);
    }
    wxWindow* expected_default = c.default_button ? named(shown, c.default_button) : nullptr;
    EXPECT_EQ(shown.GetDefaultItem(), expected_default);
    shown.EndModal(wxID_CANCEL);
  });
}

INSTANTIATE_TEST_SUITE_P(
    each_type, buttons_test,
    ::testing::Values(
        buttons_case_t{message_window_t::buttons_close, nullptr, "Close", "m_btn_cancel"},
        buttons_case_t{message_window_t::buttons_yes_no, "Yes", "No", "m_btn_ok"},
        buttons_case_t{message_window_t::buttons_close_2, nullptr, "Close", "m_btn_cancel"},
        buttons_case_t{message_window_t::buttons_ok_cancel, "OK", "Cancel", "m_btn_ok"},
        buttons_case_t{message_window_t::buttons_close_4, nullptr, "Close", "m_btn_cancel"},
        buttons_case_t{message_window_t::buttons_retry_cancel, "Retry", "Cancel", "m_btn_cancel"},
        buttons_case_t{message_window_t::buttons_none, nullptr, nullptr, nullptr},
        buttons_case_t{static_cast<message_window_t::button_type_t>(42), nullptr, "Close", "m_btn_cancel"}));

// ---------------------------------------------------------------------------------------
// The end code table, answered by the modal callback.

TEST_F(message_window_test, end_codes_turn_into_answers_by_button_type) {
  struct row_t {
    int code;
    message_window_t::button_type_t buttons;
    int answer;
  };
  const row_t rows[] = {
      {5101, message_window_t::buttons_close, 0},        {5101, message_window_t::buttons_yes_no, 2},
      {5101, message_window_t::buttons_ok_cancel, 4},    {5101, message_window_t::buttons_retry_cancel, 4},
      {5100, message_window_t::buttons_yes_no, 1},       {5100, message_window_t::buttons_ok_cancel, 3},
      {5100, message_window_t::buttons_retry_cancel, 5}, {5100, message_window_t::buttons_close, 7},
      {5101, message_window_t::buttons_close_2, 7},      {5101, message_window_t::buttons_close_4, 7},
      {5101, message_window_t::buttons_none, 7},         {5100, message_window_t::buttons_none, 7},
      {4242, message_window_t::buttons_ok_cancel, 7},    {wxID_YES, message_window_t::buttons_yes_no, 7},
  };
  for (const row_t& row : rows) {
    modal_counter_t callback(row.code);
    EXPECT_EQ(tamsel3::show_modal(warning(row.buttons), nullptr), row.answer)
        << "code " << row.code << ", buttons " << row.buttons;
    EXPECT_EQ(callback.m_count, 1);
  }
}

TEST_F(message_window_test, a_layout_that_cant_be_loaded_gives_no_answer) {
  test_support::temp_dir_t empty_folder;
  {
    // Default locations read again, from a resource folder without the archive.
    test_support::scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", empty_folder.path());
    quern2::IProductLocations::set(nullptr);
    gui_test::wx_log_recorder_t log;  // the toolkit's own complaint about the archive
    modal_counter_t callback;
    EXPECT_EQ(tamsel3::show_modal(warning(message_window_t::buttons_ok_cancel), nullptr), 7);
    EXPECT_EQ(callback.m_count, 0);
  }
  quern2::IProductLocations::set(nullptr);
  quern2::reloadMessageCatalogs();
}

// ---------------------------------------------------------------------------------------
// The check box.

TEST_F(message_window_test, a_checked_check_box_suppresses_the_message) {
  counting_check_box_t check_box(true);
  {
    modal_counter_t callback;
    const message_window_t data = message_window_t::warning_wnd_with_check(
        test_catalog(), "test.disk_full", "test.disk_full.more", message_window_t::buttons_ok_cancel,
        &check_box, no_args, no_args);
    EXPECT_EQ(tamsel3::show_modal(data, nullptr), 7);
    EXPECT_EQ(callback.m_count, 0);
  }
  EXPECT_TRUE(wxTopLevelWindows.IsEmpty());
  EXPECT_TRUE(check_box.m_set_checked_calls.empty());
  EXPECT_EQ(check_box.m_save_calls, 0);
}

TEST_F(message_window_test, check_box_shows_the_definitions_label_and_value) {
  counting_check_box_t check_box(false, "Never ask about full disks");
  const message_window_t data = message_window_t::warning_wnd_with_check(test_catalog(), "test.disk_full", "",
                                                                         message_window_t::buttons_ok_cancel,
                                                                         &check_box, no_args, no_args);
  run_message(data, [](wxDialog& shown) {
    auto* box = dynamic_cast<wxCheckBox*>(named(shown, "m_checkBox5"));
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->IsShown());
    EXPECT_FALSE(box->GetValue());
    EXPECT_EQ(box->GetLabel(), "Never ask about full disks");
    shown.EndModal(wxID_CANCEL);
  });
}

TEST_F(message_window_test, without_a_definition_the_check_box_is_hidden) {
  run_message(warning(message_window_t::buttons_ok_cancel), [](wxDialog& shown) {
    wxWindow* box = named(shown, "m_checkBox5");
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->IsShown());
    shown.EndModal(wxID_CANCEL);
  });
}

struct check_case_t {
  message_window_t::button_type_t buttons;
  act_t act;
  bool saved;  // set_checked and save_state called
};

std::ostream& operator<<(std::ostream& out, const check_case_t& c) {
  static const char* const acts[] = {"ok", "cancel", "escape", "frame"};
  return out << "buttons " << c.buttons << ", " << acts[static_cast<int>(c.act)] << (c.saved ? " saves" : "");
}

class check_box_test : public ::testing::TestWithParam<check_case_t> {};

TEST_P(check_box_test, the_choice_is_kept_on_affirmative_answers_and_close) {
  const check_case_t c = GetParam();
  counting_check_box_t check_box;
  {
    const message_window_t data = message_window_t::warning_wnd_with_check(
        test_catalog(), "test.disk_full", "test.disk_full.more", c.buttons, &check_box, no_args, no_args);
    run_message(data, [&](wxDialog& shown) {
      auto* box = dynamic_cast<wxCheckBox*>(named(shown, "m_checkBox5"));
      ASSERT_NE(box, nullptr);
      box->SetValue(true);  // the user ticks it
      switch (c.act) {
        case act_t::ok: gui_test::click(&shown, "m_btn_ok"); break;
        case act_t::cancel: gui_test::click(&shown, "m_btn_cancel"); break;
        case act_t::escape: gui_test::press_key(&shown, WXK_ESCAPE); break;
        case act_t::frame: gui_test::close_by_frame(&shown); break;
      }
    });
  }
  if (c.saved) {
    EXPECT_EQ(check_box.m_set_checked_calls, std::vector<bool>{true});
    EXPECT_EQ(check_box.m_save_calls, 1);
  } else {
    EXPECT_TRUE(check_box.m_set_checked_calls.empty());
    EXPECT_EQ(check_box.m_save_calls, 0);
  }
  EXPECT_EQ(check_box.m_load_calls + check_box.m_reset_calls, 0);
}

INSTANTIATE_TEST_SUITE_P(
    each_answer, check_box_test,
    ::testing::Values(check_case_t{message_window_t::buttons_close, act_t::cancel, true},
                      check_case_t{message_window_t::buttons_close, act_t::escape, true},
                      check_case_t{message_window_t::buttons_close, act_t::frame, false},
                      check_case_t{message_window_t::buttons_yes_no, act_t::ok, true},
                      check_case_t{message_window_t::buttons_yes_no, act_t::cancel, false},
                      check_case_t{message_window_t::buttons_yes_no, act_t::frame, false},
                      check_case_t{message_window_t::buttons_ok_cancel, act_t::ok, true},
                      check_case_t{message_window_t::buttons_ok_cancel, act_t::cancel, false},
                      check_case_t{message_window_t::buttons_ok_cancel, act_t::escape, false},
                      check_case_t{message_window_t::buttons_ok_cancel, act_t::frame, false},
                      check_case_t{message_window_t::buttons_retry_cancel, act_t::ok, true},
                      check_case_t{message_window_t::buttons_retry_cancel, act_t::cancel, false},
                      check_case_t{message_window_t::buttons_close_2, act_t::cancel, false}));

TEST_F(message_window_test, an_unticked_box_is_passed_on_too) {
  counting_check_box_t check_box;
  {
    const message_window_t data = message_window_t::warning_wnd_with_check(
        test_catalog(), "test.disk_full", "", message_window_t::buttons_ok_cancel, &check_box, no_args,
        no_args);
    run_message(data, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); });
  }
  EXPECT_EQ(check_box.m_set_checked_calls, std::vector<bool>{false});
  EXPECT_EQ(check_box.m_save_calls, 1);
}

// ---------------------------------------------------------------------------------------
// Parents.

TEST_F(message_window_test, message_box_without_parent_and_main_window_shows_nothing) {
  modal_counter_t callback;
  EXPECT_EQ(tamsel3::show_msg_box("Main", "More", message_window_t::icon_info, nullptr), 6);
  EXPECT_EQ(callback.m_count, 0);
  EXPECT_TRUE(wxTopLevelWindows.IsEmpty());
}

TEST_F(message_window_test, message_box_on_its_parent_answers_close) {
  auto* parent = new wxFrame(nullptr, wxID_ANY, "parent");
  wxWindow* dialog_parent = nullptr;
  gui_test::on_next_modal([&](wxDialog& shown) {
    dialog_parent = shown.GetParent();
    EXPECT_FALSE(named(shown, "m_btn_ok")->IsShown());
    EXPECT_EQ(label_of(shown, "m_btn_cancel"), "Close");
    EXPECT_EQ(text_of(shown, "m_main_instructions"), "Main & text");  // as it stands, no key
    EXPECT_EQ(text_of(shown, "m_supplemental_instructions"), "test.disk_full.more");
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(tamsel3::show_msg_box("Main & text", "test.disk_full.more", message_window_t::icon_info, parent),
            0);
  EXPECT_EQ(dialog_parent, parent);
  parent->Destroy();
}

TEST_F(message_window_test, message_box_without_parent_goes_to_the_main_window) {
  auto* main_window = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(main_window);
  wxWindow* dialog_parent = nullptr;
  gui_test::on_next_modal([&](wxDialog& shown) {
    dialog_parent = shown.GetParent();
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(tamsel3::show_msg_box("Main", "More", message_window_t::icon_warning, nullptr), 0);
  EXPECT_EQ(dialog_parent, main_window);
  wxTheApp->SetTopWindow(nullptr);
  main_window->Destroy();
}

TEST_F(message_window_test, show_modal_without_parent_takes_the_main_window) {
  auto* main_window = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(main_window);
  wxWindow* dialog_parent = nullptr;
  run_message(warning(message_window_t::buttons_ok_cancel), [&](wxDialog& shown) {
    dialog_parent = shown.GetParent();
    shown.EndModal(wxID_CANCEL);
  });
  EXPECT_EQ(dialog_parent, main_window);
  wxTheApp->SetTopWindow(nullptr);
  main_window->Destroy();
}

TEST_F(message_window_test, message_box_over_a_closing_window_goes_to_the_main_window) {
  auto* main_window = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(main_window);
  auto* closing = new wxFrame(nullptr, wxID_ANY, "closing");
  auto* field = new wxPanel(closing);
  closing->Destroy();  // waits for the loop: the window still stands
  wxWindow* dialog_parent = nullptr;
  gui_test::on_next_modal([&](wxDialog& shown) {
    dialog_parent = shown.GetParent();
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(tamsel3::show_msg_box("Main", "More", message_window_t::icon_warning, field), 0);
  EXPECT_EQ(dialog_parent, main_window);
  wxTheApp->SetTopWindow(nullptr);
  main_window->Destroy();
}

TEST_F(message_window_test, message_box_over_a_closing_window_without_main_window_shows_nothing) {
  auto* closing = new wxFrame(nullptr, wxID_ANY, "closing");
  wxTheApp->SetTopWindow(closing);
  closing->Destroy();
  EXPECT_EQ(tamsel3::show_msg_box("Main", "More", message_window_t::icon_warning, closing),
            message_window_t::answer_no_window);
  wxTheApp->SetTopWindow(nullptr);
}

TEST_F(message_window_test, show_modal_over_a_closing_window_has_another_parent) {
  auto* closing = new wxFrame(nullptr, wxID_ANY, "closing");
  closing->Destroy();
  wxWindow* dialog_parent = closing;
  run_message(
      warning(message_window_t::buttons_ok_cancel),
      [&](wxDialog& shown) {
        dialog_parent = shown.GetParent();
        shown.EndModal(wxID_CANCEL);
      },
      closing);
  EXPECT_NE(dialog_parent, closing);
}

TEST_F(message_window_test, show_modal_without_any_window_still_shows) {
  bool shown_without_parent = false;
  const int answer = run_message(warning(message_window_t::buttons_yes_no), [&](wxDialog& shown) {
    shown_without_parent = shown.GetParent() == nullptr;
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(answer, 1);
  EXPECT_TRUE(shown_without_parent);
}

// ---------------------------------------------------------------------------------------
// Texts.

TEST_F(message_window_test, get_message_formats_a_key_and_gives_a_missing_key_back) {
  EXPECT_EQ(message_window_t::get_message(test_catalog(), "test.saved", varg_list(argument("run", "run 7"))),
            "The results of run 7 were saved.");
  EXPECT_EQ(message_window_t::get_message(test_catalog(), "no.such.key", no_args), "no.such.key");
  EXPECT_EQ(message_window_t::get_message(test_catalog(), "A ready text.", no_args), "A ready text.");
  // Only the given catalog counts: a key of the library's own catalog is no text here.
  EXPECT_EQ(message_window_t::get_message(test_catalog(), "btn.ok", no_args), "btn.ok");
}

TEST_F(message_window_test, factories_set_buttons_icon_and_texts) {
  const message_window_t error = message_window_t::simple_error_wnd(
      test_catalog(), "test.saved", "test.saved.more", varg_list(argument("run", "run 7")),
      varg_list(argument("folder", "/r")));
  EXPECT_EQ(error.m_button_type, message_window_t::buttons_close);
  EXPECT_EQ(error.m_icon_type, message_window_t::icon_error);
  EXPECT_EQ(error.m_main_message, "The results of run 7 were saved.");
  EXPECT_EQ(error.m_supplemental_message, "They are in /r.");
  EXPECT_FALSE(error.m_has_details);
  EXPECT_FALSE(error.m_check_box);
  EXPECT_FALSE(error.m_context_help);
  EXPECT_TRUE(error.m_context_topic.empty());

  const message_window_t warning_data =
      message_window_t::simple_warning_wnd(test_catalog(), "test.disk_full", "no.such.key",
                                           message_window_t::buttons_retry_cancel, no_args, no_args);
  EXPECT_EQ(warning_data.m_button_type, message_window_t::buttons_retry_cancel);
  EXPECT_EQ(warning_data.m_icon_type, message_window_t::icon_warning);
  EXPECT_EQ(warning_data.m_supplemental_message, "no.such.key");

  counting_check_box_t check_box;
  {
    const message_window_t with_check = message_window_t::warning_wnd_with_check(
        test_catalog(), "test.disk_full", "", message_window_t::buttons_yes_no, &check_box, no_args, no_args);
    EXPECT_EQ(with_check.m_button_type, message_window_t::buttons_yes_no);
    EXPECT_EQ(with_check.m_icon_type, message_window_t::icon_warning);
    EXPECT_EQ(with_check.m_check_box.get(), &check_box);
    EXPECT_EQ(check_box.m_refs, 1);
    const message_window_t copy = with_check;  // a copy shares the definition
    EXPECT_EQ(copy.m_check_box.get(), &check_box);
    EXPECT_EQ(check_box.m_refs, 2);
  }
  EXPECT_EQ(check_box.m_refs, 0);
}

TEST_F(message_window_test, an_unknown_key_shows_as_the_key) {
  const message_window_t data =
      message_window_t::simple_warning_wnd(test_catalog(), "warning.not.in.catalog", "test.disk_full.more",
                                           message_window_t::buttons_ok_cancel, no_args, no_args);
  run_message(data, [](wxDialog& shown) {
    EXPECT_EQ(text_of(shown, "m_main_instructions"), "warning.not.in.catalog");
    EXPECT_EQ(text_of(shown, "m_supplemental_instructions"), "Free some space and try again.");
    shown.EndModal(wxID_CANCEL);
  });
}

TEST_F(message_window_test, details_are_kept_but_not_shown) {
  message_window_t data = warning(message_window_t::buttons_ok_cancel);
  data.set_details_message(test_catalog(), "test.details", no_args);
  EXPECT_TRUE(data.m_has_details);
  EXPECT_EQ(data.m_details_message, "Write error 28 at block 4711 of /dev/sda1");
  run_message(data, [](wxDialog& shown) {
    EXPECT_TRUE(message_test::panel_of(shown)->get_window_data().m_has_details);
    std::function<void(wxWindow*)> look = [&](wxWindow* window) {
      EXPECT_EQ(window->GetLabel().Find("4711"), wxNOT_FOUND) << window->GetName();
      for (wxWindow* child : window->GetChildren()) {
        look(child);
      }
    };
    look(&shown);
    shown.EndModal(wxID_CANCEL);
  });
}

// ---------------------------------------------------------------------------------------
// Icons.

bool same_pixels(const wxImage& a, const wxImage& b) {
  return a.IsOk() && b.IsOk() && a.GetSize() == b.GetSize() &&
         std::memcmp(a.GetData(), b.GetData(), static_cast<std::size_t>(a.GetWidth() * a.GetHeight() * 3)) ==
             0;
}

TEST_F(message_window_test, icons_come_by_their_names) {
  const plaxi1::image_loader_t loader(tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  const struct {
    message_window_t::icon_types_t type;
    const char* name;
  } icons[] = {{message_window_t::icon_error, "error24"},
               {message_window_t::icon_warning, "warning24"},
               {message_window_t::icon_ok, "checkmark24"},
               {message_window_t::icon_info, "info24"},
               {message_window_t::icon_custom, "error24"},
               {static_cast<message_window_t::icon_types_t>(42), "error24"}};
  for (const auto& icon : icons) {
    const plaxi1::picture_t picture = message_window_t::get_icon_by_type(icon.type);
    ASSERT_TRUE(picture.is_image()) << icon.name;
    const wxImage expected = loader.load_static_picture(icon.name).getImage(false);
    ASSERT_TRUE(expected.IsOk()) << icon.name << " is missing from the picture index";
    EXPECT_EQ(expected.GetSize(), wxSize(24, 24)) << icon.name;
    EXPECT_TRUE(same_pixels(picture.get_image().getImage(false), expected)) << icon.name;
  }
  const plaxi1::picture_t progress = message_window_t::get_icon_by_type(message_window_t::icon_progress);
  ASSERT_TRUE(progress.is_animation());
  EXPECT_TRUE(progress.get_animation().IsOk());
  EXPECT_FALSE(same_pixels(
      message_window_t::get_icon_by_type(message_window_t::icon_error).get_image().getImage(false),
      message_window_t::get_icon_by_type(message_window_t::icon_warning).get_image().getImage(false)));
}

}  // namespace
