#include "frame_test_windows.h"
#include "gui_test.h"

#include <plaxi1/ui_settings.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

namespace {

using frame_test::recording_page_t;
using frame_test::step_log_t;

struct end_listener_t : korvat2::subscriber_base_t {
  std::vector<int> codes;
  void on_end(tamsel3::generic_base_t<wxPanel>*, int code) { codes.push_back(code); }
};

class pref_base_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_host = new wxFrame(nullptr, wxID_ANY, "host", wxDefaultPosition, wxSize(500, 400));
    m_host->Show();
  }
  void TearDown() override {
    m_host->Destroy();
    gui_test::pump();
  }
  wxFrame* m_host = nullptr;
};

TEST_F(pref_base_test, create_loads_shows_and_initialises) {
  auto* page = new recording_page_t;
  page->create(m_host);
  EXPECT_TRUE(page->is_loaded());
  EXPECT_TRUE(page->IsShown());
  EXPECT_EQ(page->m_steps, step_log_t{"init"});
  EXPECT_NE(page->FindWindow(XRCID("m_check")), nullptr);
}

TEST_F(pref_base_test, create_with_a_missing_layout_still_shows_an_initialised_empty_page) {
  auto* page = new recording_page_t("pref.no_such_layout");
  page->create(m_host);
  EXPECT_FALSE(page->is_loaded());
  EXPECT_TRUE(page->IsShown());
  EXPECT_EQ(page->m_steps, step_log_t{"init"});
  EXPECT_TRUE(page->GetChildren().empty());
}

TEST_F(pref_base_test, ok_without_save_settings_fires_5100_and_hides) {
  auto* page = new recording_page_t;
  page->create(m_host);
  end_listener_t listener;
  page->m_end_dialog_signal.connect(&listener, &end_listener_t::on_end);
  gui_test::click(page, "m_btn_ok");
  EXPECT_EQ(listener.codes, std::vector<int>{5100});
  EXPECT_FALSE(page->IsShown());
}

TEST_F(pref_base_test, cancel_and_close_fire_5101) {
  auto* page = new recording_page_t;
  page->create(m_host);
  end_listener_t listener;
  page->m_end_dialog_signal.connect(&listener, &end_listener_t::on_end);
  gui_test::click(page, "m_btn_cancel");
  page->Show(true);
  wxCloseEvent close(wxEVT_CLOSE_WINDOW, page->GetId());
  close.SetEventObject(page);
  page->ProcessWindowEvent(close);
  EXPECT_EQ(listener.codes, (std::vector<int>{5101, 5101}));
  EXPECT_EQ(page->m_steps, (step_log_t{"init", "cancel", "cancel"}));
}

TEST_F(pref_base_test, second_create_initialises_once) {
  auto* page = new recording_page_t;
  page->create(m_host);
  page->Show(false);
  page->create(m_host);
  EXPECT_TRUE(page->IsShown());
  EXPECT_EQ(page->m_steps, step_log_t{"init"});
}

TEST_F(pref_base_test, children_get_the_interface_font) {
  auto* page = new recording_page_t;
  page->create(m_host);
  const wxFont normal = plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal);
  for (wxWindow* child : page->GetChildren()) {
    EXPECT_EQ(child->GetFont(), normal) << child->GetName();
  }
}

TEST_F(pref_base_test, settings_change_reaches_the_page_once) {
  struct counting_page_t : recording_page_t {
    int updates = 0;
    void on_update_ui_settings() override {
      ++updates;
      recording_page_t::on_update_ui_settings();
    }
  };
  auto* page = new counting_page_t;
  page->create(m_host);
  const int after_create = page->updates;
  plaxi1::ui_settings_t::get()->refresh();
  EXPECT_EQ(page->updates, after_create + 1);
}

// A host dialog around a page, sized to it, as a host makes its preferences dialog.
wxDialog* make_page_host(tamsel3::pref_base_t* page) {
  auto* host = new wxDialog(nullptr, wxID_ANY, "Preferences");
  page->create(host);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(page, 1, wxEXPAND);
  host->SetSizerAndFit(sizer);
  return host;
}

// A host dialog around `page` that was on the screen once and is hidden again.
wxDialog* make_host_shown_once(tamsel3::pref_base_t* page) {
  wxDialog* host = make_page_host(page);
  host->Show();
  EXPECT_TRUE(gui_test::wait_until_shown(page));
  host->Hide();
  return host;
}

// What the page had painted when its host's window came on the screen.
struct paints_at_map_t {
  int paints = 0;
  int paints_at_map = -1;
  static gboolean on_map(GtkWidget*, GdkEvent*, gpointer data) {
    auto* self = static_cast<paints_at_map_t*>(data);
    self->paints_at_map = self->paints;
    return FALSE;
  }
};

TEST_F(pref_base_test, a_host_shown_again_has_the_page_painted_as_it_comes_on_the_screen) {
  auto* page = new recording_page_t;
  wxDialog* host = make_host_shown_once(page);
  gui_test::pump();
  paints_at_map_t record;
  page->Bind(wxEVT_PAINT, [&record](wxPaintEvent& event) {
    ++record.paints;
    event.Skip();
  });
  const gulong handler =
      g_signal_connect_after(host->GetHandle(), "map-event", G_CALLBACK(&paints_at_map_t::on_map), &record);
  host->Show();
  EXPECT_TRUE(gui_test::wait_until([&record] { return record.paints_at_map >= 0; }, 3000));
  EXPECT_GT(record.paints_at_map, 0) << "painted as it was mapped, not at the toolkit's next frame";
  g_signal_handler_disconnect(host->GetHandle(), handler);
  host->Destroy();
  gui_test::pump();
}

TEST_F(pref_base_test, a_host_shown_again_after_its_page_went_shows_without_it) {
  auto* page = new recording_page_t;
  wxDialog* host = make_host_shown_once(page);
  page->Destroy();
  gui_test::pump();
  host->Show();
  EXPECT_TRUE(host->GetChildren().empty());
  EXPECT_TRUE(gui_test::wait_until_shown(host));
  host->Destroy();
  gui_test::pump();
}

}  // namespace
