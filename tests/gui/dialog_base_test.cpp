#include "fixtures.h"
#include "folder_locations.h"
#include "frame_test_windows.h"
#include "gui_test.h"

#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>
#include <tamsel3/resource.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/frame.h>
#include <wx/stattext.h>
#include <wx/xrc/xmlres.h>

#include <memory>

namespace {

using frame_test::recording_dialog_t;
using frame_test::step_log_t;

// Runs `dialog` modally and lets `action` answer it from inside its loop.
int run_modal(tamsel3::dialog_base_t& dialog, std::function<void(wxDialog&)> action,
              wxWindow* parent = nullptr) {
  gui_test::on_next_modal(std::move(action));
  return dialog.show_modal(parent);
}

TEST(dialog_base_test, init_runs_the_steps_in_their_fixed_order) {
  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  EXPECT_EQ(dialog.m_steps, (step_log_t{"ui", "limits", "strings", "init", "cancel"}));
  EXPECT_TRUE(dialog.is_initialized());
}

TEST(dialog_base_test, timer_gets_its_id_only_after_on_init_dialog) {
  recording_dialog_t dialog;
  const int id_before = dialog.timer_id();
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  EXPECT_EQ(dialog.m_timer_id_in_init, id_before);
  EXPECT_NE(dialog.timer_id(), id_before);
}

TEST(dialog_base_test, second_init_event_reapplies_fonts_only) {
  recording_dialog_t dialog;
  run_modal(dialog, [&](wxDialog& shown) {
    shown.InitDialog();  // a second wxEVT_INIT_DIALOG
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(dialog.m_steps, (step_log_t{"ui", "limits", "strings", "init", "ui", "cancel"}));
}

TEST(dialog_base_test, ok_ends_with_5100_and_saves) {
  recording_dialog_t dialog;
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); }), 5100);
  EXPECT_EQ(dialog.m_steps.back(), "save");
}

TEST(dialog_base_test, on_ok_may_choose_another_result) {
  recording_dialog_t dialog;
  dialog.m_result_from_on_ok = 4242;
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); }), 4242);
}

TEST(dialog_base_test, cancel_ends_with_5101) {
  recording_dialog_t dialog;
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); }), 5101);
}

TEST(dialog_base_test, escape_acts_as_cancel) {
  recording_dialog_t dialog;
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::press_key(&shown, WXK_ESCAPE); }), 5101);
  EXPECT_EQ(dialog.m_steps.back(), "cancel");
}

TEST(dialog_base_test, window_frame_close_ends_with_5101) {
  recording_dialog_t dialog;
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::close_by_frame(&shown); }), 5101);
  EXPECT_EQ(dialog.m_steps.back(), "cancel");
}

TEST(dialog_base_test, second_show_neither_loads_nor_initialises_again) {
  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  wxWindow* first_ok = dialog.ok_button();
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); }), 5100);
  EXPECT_EQ(dialog.ok_button(), first_ok);
  EXPECT_EQ(std::count(dialog.m_steps.begin(), dialog.m_steps.end(), "init"), 1);
  EXPECT_EQ(std::count(dialog.m_steps.begin(), dialog.m_steps.end(), "strings"), 1);
}

TEST(dialog_base_test, missing_archive_gives_0_and_the_host_goes_on) {
  recording_dialog_t dialog;
  dialog.set_resource_file("/nonexistent/tamsel3.dat#zip:tamsel.xrc");
  EXPECT_EQ(dialog.show_modal(nullptr), 0);
  EXPECT_FALSE(dialog.is_loaded());
  EXPECT_TRUE(dialog.m_steps.empty());
  EXPECT_FALSE(dialog.show_nonmodal(nullptr, true));
}

TEST(dialog_base_test, missing_layout_object_gives_0) {
  recording_dialog_t dialog("dlg.no_such_layout");
  EXPECT_EQ(dialog.show_modal(nullptr), 0);
  EXPECT_TRUE(dialog.m_steps.empty());
}

TEST(dialog_base_test, standard_buttons_are_found) {
  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  ASSERT_NE(dialog.ok_button(), nullptr);
  EXPECT_EQ(dialog.ok_button()->GetId(), XRCID("m_btn_ok"));
}

TEST(dialog_base_test, help_button_is_disabled_without_help_id) {
  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  ASSERT_NE(dialog.help_button(), nullptr);
  EXPECT_FALSE(dialog.help_button()->IsEnabled());
}

TEST(dialog_base_test, help_button_is_enabled_with_a_help_id) {
  recording_dialog_t dialog;
  dialog.set_help_id(1000);
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  ASSERT_NE(dialog.help_button(), nullptr);
  EXPECT_TRUE(dialog.help_button()->IsEnabled());
}

bool help_button_sensitive(wxDialog& shown) {
  wxWindow* help = shown.FindWindow(XRCID("m_btn_help"));
  return help && gtk_widget_is_sensitive(static_cast<GtkWidget*>(help->GetHandle()));
}

// The toolkit's button has the state too, not only wx's record of it.
TEST(dialog_base_test, help_button_without_help_id_is_insensitive_on_the_screen) {
  recording_dialog_t dialog;
  bool sensitive = true;
  run_modal(dialog, [&sensitive](wxDialog& shown) {
    sensitive = help_button_sensitive(shown);
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_FALSE(sensitive);
}

TEST(dialog_base_test, help_id_given_after_the_load_enables_the_help_button) {
  recording_dialog_t dialog;
  dialog.show_nonmodal(nullptr, false);  // loaded, not shown
  ASSERT_TRUE(dialog.is_loaded());
  dialog.set_help_id(1000);
  bool sensitive = false;
  run_modal(dialog, [&sensitive](wxDialog& shown) {
    sensitive = help_button_sensitive(shown);
    gui_test::click(&shown, "m_btn_cancel");
  });
  ASSERT_NE(dialog.help_button(), nullptr);
  EXPECT_TRUE(dialog.help_button()->IsEnabled());
  EXPECT_TRUE(sensitive);
}

TEST(dialog_base_test, layout_without_help_button_works) {
  recording_dialog_t dialog("dlg.no_help");
  EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); }), 5100);
  EXPECT_EQ(dialog.help_button(), nullptr);
}

struct help_listener_t : korvat2::subscriber_base_t {
  std::vector<std::string> topics;
  void on_help(const std::string& topic) { topics.push_back(topic); }
};

TEST(dialog_base_test, help_fires_the_topic_and_an_empty_topic_fires_nothing) {
  recording_dialog_t dialog;
  dialog.set_help_id(7);
  help_listener_t listener;
  dialog.m_help_signal.connect(&listener, &help_listener_t::on_help);
  run_modal(dialog, [&](wxDialog& shown) {
    gui_test::click(&shown, "m_btn_help");  // no topic yet
    dialog.set_help_topic("settings.general");
    gui_test::click(&shown, "m_btn_help");
    dialog.help_activated();  // the help key's road
    dialog.set_help_topic("");
    gui_test::click(&shown, "m_btn_help");
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_EQ(listener.topics, (std::vector<std::string>{"settings.general", "settings.general"}));
}

// Sizes as the frame's initialisation left them, before the dialog was on the screen.
TEST(dialog_base_test, size_floor_of_zero_leaves_the_size) {
  recording_dialog_t fitted;
  fitted.show_nonmodal(nullptr, false);
  ASSERT_TRUE(fitted.is_loaded());

  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  EXPECT_EQ(dialog.m_size_in_init, fitted.GetSize());
  EXPECT_EQ(dialog.GetMinSize(), wxDefaultSize);
}

TEST(dialog_base_test, size_floor_grows_only_the_smaller_direction) {
  recording_dialog_t probe;
  probe.show_nonmodal(nullptr, false);
  ASSERT_TRUE(probe.is_loaded());
  const wxSize natural = probe.GetSize();

  recording_dialog_t dialog;
  dialog.set_floor(natural.GetWidth() - 20, natural.GetHeight() + 150);
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  EXPECT_EQ(dialog.m_size_in_init, wxSize(natural.GetWidth(), natural.GetHeight() + 150));
  EXPECT_EQ(dialog.GetMinSize(), wxSize(natural.GetWidth() - 20, natural.GetHeight() + 150));
}

TEST(dialog_base_test, shown_dialog_is_never_smaller_than_its_contents) {
  recording_dialog_t dialog;
  wxSize shown_size, best;
  run_modal(dialog, [&](wxDialog& shown) {
    gui_test::wait_until([&] { return shown.GetSize().GetHeight() >= shown.GetBestSize().GetHeight(); });
    shown_size = shown.GetSize();
    best = shown.GetBestSize();
    gui_test::click(&shown, "m_btn_cancel");
  });
  EXPECT_GE(shown_size.GetWidth(), best.GetWidth());
  EXPECT_GE(shown_size.GetHeight(), best.GetHeight());
}

TEST(dialog_base_test, path_messages_come_from_the_catalog) {
  recording_dialog_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  ASSERT_EQ(dialog.path_messages().size(), 6u);
  for (const std::string& message : dialog.path_messages()) {
    EXPECT_FALSE(message.empty());
  }
  EXPECT_FALSE(dialog.text_unknown().empty());
}

TEST(dialog_base_test, without_a_catalog_the_dialog_opens_with_empty_path_messages) {
  test_support::temp_dir_t folder;
  const std::string archive =
      std::string(quern2::IProductLocations::get()->getResourceDirectory()) + "/tamsel3.dat";
  test_support::write_bytes(folder.file("tamsel3.dat"), test_support::read_bytes(archive));
  // Resources without any catalog: the archive alone, in a folder of its own.
  gui_test::folder_locations_t locations(folder.path());
  quern2::IProductLocations::set(&locations);
  quern2::reloadMessageCatalogs();
  {
    recording_dialog_t dialog;
    EXPECT_EQ(run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); }), 5100);
    EXPECT_EQ(dialog.path_messages(), std::vector<std::string>(6));
    EXPECT_TRUE(dialog.text_unknown().empty());
  }
  quern2::IProductLocations::set(nullptr);
  quern2::reloadMessageCatalogs();
}

TEST(dialog_base_test, proportional_size_with_and_without_parent) {
  auto* parent = new wxFrame(nullptr, wxID_ANY, "parent", wxDefaultPosition, wxSize(800, 400));
  auto* with_parent = new recording_dialog_t;  // destroyed with its parent
  with_parent->show_nonmodal(parent, false);
  ASSERT_TRUE(with_parent->is_loaded());
  EXPECT_EQ(with_parent->get_proportional_size(0.5f, 0.5f, wxSize(-1, 300)), wxSize(400, 300));
  EXPECT_EQ(with_parent->get_proportional_size(0.25f, 1.0f, wxSize(500, -1)), wxSize(500, 400));

  recording_dialog_t alone;
  alone.show_nonmodal(nullptr, false);
  ASSERT_TRUE(alone.is_loaded());
  EXPECT_EQ(alone.get_proportional_size(0.5f, 0.5f, wxSize(-1, 300)), wxSize(-1, 300));
  parent->Destroy();
  gui_test::pump();
}

TEST(dialog_base_test, modeless_show_hide_and_close) {
  recording_dialog_t dialog;
  ASSERT_TRUE(dialog.show_nonmodal(nullptr, true));
  ASSERT_TRUE(gui_test::wait_until([&] { return dialog.IsShown() && dialog.is_initialized(); }));
  EXPECT_EQ(std::count(dialog.m_steps.begin(), dialog.m_steps.end(), "init"), 1);
  dialog.show_nonmodal(nullptr, false);
  EXPECT_FALSE(dialog.IsShown());
  dialog.show_nonmodal(nullptr, true);
  ASSERT_TRUE(gui_test::wait_until([&] { return dialog.IsShown(); }));
  EXPECT_EQ(std::count(dialog.m_steps.begin(), dialog.m_steps.end(), "init"), 1);
  gui_test::close_by_frame(&dialog);
  EXPECT_FALSE(dialog.IsShown());
  EXPECT_EQ(dialog.GetReturnCode(), 5101);
  EXPECT_EQ(dialog.m_steps.back(), "cancel");
}

TEST(dialog_base_test, title_goes_to_label_name_and_title) {
  recording_dialog_t dialog;
  dialog.show_nonmodal(nullptr, false);
  ASSERT_TRUE(dialog.is_loaded());
  dialog.set_title("Project \xC3\xBC settings");
  EXPECT_EQ(dialog.get_title(), "Project \xC3\xBC settings");
  EXPECT_EQ(dialog.GetName(), wxString::FromUTF8("Project \xC3\xBC settings"));
  EXPECT_EQ(dialog.GetLabel(), wxString::FromUTF8("Project \xC3\xBC settings"));
}

TEST(dialog_base_test, layout_texts_are_translated_at_load) {
  recording_dialog_t dialog;
  dialog.show_nonmodal(nullptr, false);
  ASSERT_TRUE(dialog.is_loaded());
  auto* ok = XRCCTRL(dialog, "m_btn_ok", wxButton);
  ASSERT_NE(ok, nullptr);
  EXPECT_EQ(ok->GetLabelText(), "OK");
}

TEST(dialog_base_test, modal_callback_answers_without_running) {
  recording_dialog_t dialog;
  const plaxi1::modal_callback_t previous = plaxi1::set_modal_callback([](wxDialog*) { return 777; });
  EXPECT_EQ(dialog.show_modal(nullptr), 777);
  plaxi1::set_modal_callback(previous);
  EXPECT_FALSE(dialog.is_initialized());
}

TEST(dialog_base_test, a_closing_parent_gives_way_to_the_main_window) {
  auto* main_window = new wxFrame(nullptr, wxID_ANY, "main window");
  wxTheApp->SetTopWindow(main_window);
  auto* closing = new wxFrame(nullptr, wxID_ANY, "closing");
  closing->Destroy();
  recording_dialog_t dialog;
  wxWindow* dialog_parent = closing;
  run_modal(
      dialog,
      [&](wxDialog& shown) {
        dialog_parent = shown.GetParent();
        gui_test::click(&shown, "m_btn_cancel");
      },
      closing);
  EXPECT_EQ(dialog_parent, main_window);
  wxTheApp->SetTopWindow(nullptr);
  main_window->Destroy();
}

TEST(dialog_base_test, a_dialog_whose_parent_is_going_is_not_run) {
  auto* parent = new wxFrame(nullptr, wxID_ANY, "parent");
  auto* dialog = new recording_dialog_t;
  dialog->show_nonmodal(parent, false);  // loads it over the parent, hidden
  EXPECT_TRUE(dialog->is_loaded());
  parent->Destroy();  // takes the dialog, its child, with it
  // Were it run, the callback would answer 777.
  const plaxi1::modal_callback_t previous = plaxi1::set_modal_callback([](wxDialog*) { return 777; });
  const int answer = dialog->show_modal(parent);
  plaxi1::set_modal_callback(previous);
  EXPECT_EQ(answer, wxID_CANCEL);
  gui_test::pump();
}

// Multi-line text: measured once per process, with the first caller's font.
class multiline_dialog_t : public recording_dialog_t {
 public:
  wxStaticText* text() { return XRCCTRL(*this, "m_text", wxStaticText); }
};

TEST(dialog_base_test, multiline_text_wraps_no_narrower_than_one_line) {
  multiline_dialog_t one_line;
  one_line.show_nonmodal(nullptr, false);
  ASSERT_TRUE(one_line.is_loaded());
  ASSERT_NE(one_line.text(), nullptr);
  one_line.text()->SetLabel("Xxx");
  one_line.Fit();
  const int one_line_width = one_line.GetSize().GetWidth();

  multiline_dialog_t dialog;
  dialog.show_nonmodal(nullptr, false);
  ASSERT_TRUE(dialog.is_loaded());
  dialog.set_multiline_text(dialog.text(), "Word", wxNullFont);
  EXPECT_GE(dialog.GetSize().GetWidth(), one_line_width);
  EXPECT_EQ(dialog.text()->GetLabel(), "Word");
}

TEST(dialog_base_test, multiline_text_gives_display_proportions_and_measures_once) {
  const std::string long_text =
      "The analysis could not write its results because the result directory is on a read-only file "
      "system. Choose another directory in the project's settings, or ask the administrator to make the "
      "current one writable, and run the analysis again. Nothing of the collected data was lost.";
  multiline_dialog_t first, second;
  first.show_nonmodal(nullptr, false);
  ASSERT_TRUE(first.is_loaded());
  second.show_nonmodal(nullptr, false);
  ASSERT_TRUE(second.is_loaded());
  first.set_multiline_text(first.text(), long_text, first.GetFont());
  wxFont huge = first.GetFont();
  huge.SetPointSize(huge.GetPointSize() * 4);
  second.set_multiline_text(second.text(), long_text, huge);  // the font of the first call stays
  EXPECT_EQ(first.GetSize(), second.GetSize());
  EXPECT_GT(first.text()->GetLabel().Freq('\n'), 0);  // wrapped
  const wxSize display = wxGetDisplaySize();
  const double aspect = static_cast<double>(first.GetSize().GetWidth()) / first.GetSize().GetHeight();
  EXPECT_GT(aspect, 0.5 * display.GetWidth() / display.GetHeight());
}

}  // namespace
