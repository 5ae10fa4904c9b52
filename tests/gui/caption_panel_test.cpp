#include "assert_recorder.h"
#include "caption_panel_p.h"
#include "caption_test_support.h"
#include "folder_locations.h"
#include "gui_test.h"
#include "input.h"
#include "theme_change.h"

#include <plaxi1/element_shapes.h>
#include <plaxi1/icon_button.h>
#include <plaxi1/image_loader.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <quern2/product_locations.h>
#include <tamsel3/caption_panel.h>

#include <gtest/gtest.h>
#include <wx/dcclient.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <string>
#include <vector>

namespace {

using caption_test::colour_at;
using caption_test::paint_counter_t;
using caption_test::same_pixels;
using caption_test::shot;
using tamsel3::caption_label_t;
using tamsel3::caption_panel_t;

const std::string long_text =
    "The search looks in these folders for the sources of the modules that the result names, in the "
    "order of the list, and takes the first file that matches; folders that don't exist are skipped "
    "without a word, and a folder line may hold wild-cards for the parts of a path that change from "
    "one build to the next, such as the version or the configuration.";

// A panel that lets the tests see its parts.
class probe_t : public caption_panel_t {
 public:
  using caption_panel_t::caption_panel_t;
  caption_label_t* caption() const { return m_caption; }
  caption_label_t* description() const { return m_description; }
  caption_label_t* message_label() const { return m_message_label; }
  wxStaticBitmap* icon() const { return m_message_icon; }
  wxPanel* pane() const { return m_message_pane; }
  plaxi1::wxIconButton* prev() const { return m_prev_button; }
  plaxi1::wxIconButton* next() const { return m_next_button; }
  plaxi1::elements::RectangleElement* top_rectangle() const { return m_top_rectangle.get(); }
  plaxi1::elements::RectangleElement* message_rectangle() const { return m_message_rectangle.get(); }
  int current_id() const { return m_current_id; }
  bool disabled() const { return m_disabled; }
  std::vector<int> ids() const {
    std::vector<int> ids;
    for (const message_info_t& message : m_messages) {
      ids.push_back(message.m_id);
    }
    return ids;
  }
};

std::string tooltip_of(wxWindow* window) {
  const plaxi1::wxCustomTooltip* tooltip = plaxi1::GetTooltip(window);
  return tooltip ? tooltip->GetText() : std::string();
}

plaxi1::wxStaticPicture picture_named(const std::string& name) {
  return tamsel3::caption_images_loader().load_static_picture(name);
}

// A shown frame whose page holds a caption panel at its top, over the whole width.
class caption_panel_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "caption", wxPoint(40, 40), wxSize(640, 420));
    m_page = new wxPanel(m_frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    m_panel = new probe_t(m_page, "Search folders", "Folders in which the sources are looked for.");
    sizer->Add(m_panel, 0, wxEXPAND);
    m_page->SetSizer(sizer);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
  }
  void TearDown() override {
    m_input.up();
    m_frame->Destroy();
    gui_test::pump();
  }

  // What the panel's floor should be from the heights its parts have now.
  int expected_floor() const {
    int floor = m_panel->caption()->GetSize().y + m_panel->description()->GetSize().y + 30;
    if (m_panel->pane()->IsShown()) {
      floor += std::max(m_panel->message_label()->GetSize().y, m_panel->prev()->GetSize().y);
    }
    return floor;
  }
  void resize_frame(int width) {
    m_frame->SetSize(wxSize(width, 420));
    // The page takes the frame's new width once the display agreed to it, which under
    // Wayland takes a round trip.
    gui_test::wait_until(
        [&] {
          return m_page->GetSize().x == m_frame->GetClientSize().x &&
                 m_panel->GetSize().x == m_page->GetClientSize().x;
        },
        3000);
    gui_test::pump();
  }
  // A real click of the left button on the centre of `window`.
  void click_on(wxWindow* window) {
    m_input.move_to_centre(window);
    m_input.click();
  }
  // Three messages, one of each severity but critical: the error is on show.
  void add_three() {
    m_info = m_panel->add_message(caption_panel_t::severity_information, "Information: a note.");
    m_error = m_panel->add_message(caption_panel_t::severity_error, "Error: nothing found.");
    m_warning = m_panel->add_message(caption_panel_t::severity_warning, "Warning: a folder is missing.");
    gui_test::pump();
  }

  gui_test::input_t m_input;
  wxFrame* m_frame = nullptr;
  wxPanel* m_page = nullptr;
  probe_t* m_panel = nullptr;
  int m_info = -1;
  int m_error = -1;
  int m_warning = -1;
};

// ---------------------------------------------------------------------------------------
// caption_label_t

TEST_F(caption_panel_test, a_label_without_a_reference_window_is_reported_and_copes) {
  test_support::assert_recorder_t reports;
  auto* label = new caption_label_t(m_page, "text", nullptr);
  EXPECT_EQ(reports.count("m_window_for_get_parent_size != 0"), 1u);
  label->SetSize(wxSize(40, -1));
  label->update_delta(3);
  EXPECT_EQ(label->m_delta, 0) << "3 plus no width less 40 is below the former 0";
  EXPECT_EQ(reports.count(), 1u);
}

TEST_F(caption_panel_test, a_label_starts_with_its_text_and_no_delta) {
  auto* label = new caption_label_t(m_page, "first words", m_page);
  EXPECT_EQ(label->m_text, "first words");
  EXPECT_EQ(label->m_window_for_get_parent_size, m_page);
  EXPECT_EQ(label->m_delta, 0);
  EXPECT_EQ(label->m_lines, 0);
  EXPECT_EQ(label->m_max_lines, -1);
}

TEST_F(caption_panel_test, a_label_asks_for_no_width) {
  auto* label = new caption_label_t(m_page, "A label that would like to be wide", m_page);
  auto* plain = new wxStaticText(m_page, wxID_ANY, "A label that would like to be wide");
  EXPECT_EQ(label->GetBestSize(), wxSize(0, plain->GetBestSize().y));
  label->m_text = "two\nlines";
  label->wrap_to_width(400);
  plain->SetLabel("two\nlines");
  EXPECT_EQ(label->GetBestSize(), wxSize(0, plain->GetBestSize().y));
}

TEST_F(caption_panel_test, a_label_takes_its_height_from_the_text_where_none_is_given) {
  auto* label = new caption_label_t(m_page, "one line", m_page);
  label->SetSize(5, 6, 120, 77);
  EXPECT_EQ(label->GetSize(), wxSize(120, 77));
  label->SetSize(5, 6, 90, -1, wxSIZE_USE_EXISTING);
  EXPECT_EQ(label->GetSize(), wxSize(90, label->GetBestSize().y));
}

TEST_F(caption_panel_test, the_delta_only_grows) {
  auto* label = new caption_label_t(m_page, "text", m_page);
  const int page_width = m_page->GetSize().x;
  label->SetSize(wxSize(page_width - 30, -1));
  label->update_delta(4);
  EXPECT_EQ(label->m_delta, 34);
  label->update_delta(0);
  EXPECT_EQ(label->m_delta, 34);
  label->SetSize(wxSize(page_width - 100, -1));
  label->update_delta(0);
  EXPECT_EQ(label->m_delta, 100);
}

TEST_F(caption_panel_test, a_wrap_uses_the_normal_font_less_the_delta_and_tells_a_change_of_lines) {
  auto* label = new caption_label_t(m_page, long_text, m_page);
  label->m_delta = 20;
  EXPECT_TRUE(label->wrap_to_width(320));
  wxClientDC dc(label);
  dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
  unsigned long lines = 1;
  const std::string expected = plaxi1::wrap_text(long_text, 300, label, lines, 5, &dc);
  EXPECT_EQ(label->GetLabelText().utf8_string(), expected);
  EXPECT_EQ(label->m_lines, static_cast<int>(lines));
  EXPECT_GT(label->m_lines, 1);
  EXPECT_FALSE(label->wrap_to_width(320)) << "the same number of lines";
  EXPECT_EQ(label->m_text, long_text) << "the full text stays";
}

TEST_F(caption_panel_test, a_wrap_to_a_width_below_minus_one_does_nothing) {
  auto* label = new caption_label_t(m_page, "some words", m_page);
  label->m_delta = 10;
  EXPECT_FALSE(label->wrap_to_width(8));
  EXPECT_EQ(label->m_lines, 0);
  EXPECT_EQ(label->GetLabelText(), "some words");
  EXPECT_TRUE(label->wrap_to_width(9)) << "-1 wraps nothing, in one line";
  EXPECT_EQ(label->m_lines, 1);
}

TEST_F(caption_panel_test, a_long_caption_is_cut_to_five_lines_though_it_means_one) {
  EXPECT_EQ(m_panel->caption()->m_max_lines, 1);
  EXPECT_EQ(m_panel->description()->m_max_lines, 5);
  m_panel->set_caption(long_text + " " + long_text);
  EXPECT_EQ(m_panel->caption()->m_lines, 5);
  EXPECT_TRUE(m_panel->caption()->GetLabelText().EndsWith(wxString::FromUTF8("…")));
  EXPECT_EQ(tooltip_of(m_panel->caption()).empty(), false);
}

// ---------------------------------------------------------------------------------------
// Building, looks and sizes

TEST_F(caption_panel_test, a_new_panel_shows_its_texts_and_no_message_pane) {
  EXPECT_EQ(m_panel->caption()->m_text, "Search folders");
  EXPECT_EQ(m_panel->description()->m_text, "Folders in which the sources are looked for.");
  EXPECT_EQ(m_panel->caption()->GetLabelText(), "Search folders");
  EXPECT_EQ(m_panel->message_label()->m_text, "");
  EXPECT_FALSE(m_panel->pane()->IsShown());
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_EQ(m_panel->get_message_count(), 0u);
  EXPECT_FALSE(m_panel->get_read_only());
  // The pane is indented by 50 pixels from the panel's left edge.
  m_panel->add_message(caption_panel_t::severity_error, "shown");
  gui_test::pump();
  EXPECT_EQ(m_panel->pane()->GetPosition().x, 50);
}

TEST_F(caption_panel_test, fonts_and_colours_come_from_the_settings) {
  const auto settings = plaxi1::ui_settings_t::get();
  const plaxi1::style_t style = plaxi1::style_t::create_dialog_style();
  EXPECT_EQ(m_panel->caption()->GetFont(), settings->get_font(plaxi1::font_bold));
  EXPECT_EQ(m_panel->description()->GetFont(), settings->get_font(plaxi1::font_normal));
  EXPECT_EQ(m_panel->message_label()->GetFont(), settings->get_font(plaxi1::font_normal));
  EXPECT_EQ(m_panel->caption()->GetBackgroundColour(), settings->get_color(style.m_color));
  EXPECT_EQ(m_panel->description()->GetBackgroundColour(), settings->get_color(style.m_color));
  EXPECT_EQ(m_panel->top_rectangle()->GetBkColor(), settings->get_color(style.m_color));
  EXPECT_EQ(m_panel->top_rectangle()->GetBorderColor(),
            wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION));
  // The tooltip colour, laid over the dialog colour where it is translucent.
  const wxColour info = wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK);
  const wxColour ground = settings->get_color(style.m_color);
  const auto mix = [&info](int over, int under) {
    return (over * info.Alpha() + under * (255 - info.Alpha()) + 127) / 255;
  };
  const wxColour pane(mix(info.Red(), ground.Red()), mix(info.Green(), ground.Green()),
                      mix(info.Blue(), ground.Blue()));
  EXPECT_EQ(m_panel->pane()->GetBackgroundColour(), pane);
  EXPECT_EQ(m_panel->message_rectangle()->GetBkColor(), pane);
  EXPECT_EQ(m_panel->prev()->GetBackgroundColour(), pane);
  EXPECT_EQ(m_panel->next()->GetBackgroundColour(), pane);
  EXPECT_EQ(m_panel->message_rectangle()->GetBorderColor(),
            wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION));
  // The text on the pane reads in every theme: tooltips are dark in some.
  EXPECT_EQ(m_panel->message_label()->GetForegroundColour(),
            wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
}

TEST_F(caption_panel_test, the_height_floor_is_the_texts_and_30_pixels) {
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(-1, expected_floor()));
  EXPECT_EQ(m_panel->GetSize().y, expected_floor());
  m_panel->add_message(caption_panel_t::severity_warning, "A message under the description.");
  resize_frame(600);
  EXPECT_TRUE(m_panel->pane()->IsShown());
  EXPECT_EQ(m_panel->GetMinSize(), wxSize(-1, expected_floor()));
}

TEST_F(caption_panel_test, the_height_floor_grows_and_shrinks_with_the_description) {
  // A window under the panel, which the page moves as the panel's height changes.
  auto* below = new wxPanel(m_page, wxID_ANY, wxDefaultPosition, wxSize(100, 40));
  m_page->GetSizer()->Add(below, 0, wxEXPAND | wxTOP, 10);
  auto below_is_clear = [&] { return below->GetPosition().y == m_panel->GetRect().GetBottom() + 1 + 10; };
  m_panel->set_description(long_text);
  resize_frame(600);
  EXPECT_TRUE(below_is_clear());
  const int lines_wide = m_panel->description()->m_lines;
  const int floor_wide = m_panel->GetMinSize().y;
  EXPECT_EQ(floor_wide, expected_floor());
  resize_frame(360);
  EXPECT_GT(m_panel->description()->m_lines, lines_wide);
  EXPECT_GT(m_panel->GetMinSize().y, floor_wide);
  EXPECT_EQ(m_panel->GetMinSize().y, expected_floor());
  EXPECT_EQ(m_panel->GetSize().y, expected_floor()) << "the page lays out around the new height";
  EXPECT_TRUE(below_is_clear());
  resize_frame(600);
  EXPECT_EQ(m_panel->description()->m_lines, lines_wide);
  EXPECT_EQ(m_panel->GetMinSize().y, floor_wide);
  EXPECT_EQ(m_panel->GetSize().y, floor_wide);
  EXPECT_TRUE(below_is_clear());
}

TEST_F(caption_panel_test, set_caption_and_description_show_the_text_and_its_tooltip) {
  m_panel->set_caption("Another caption");
  m_panel->set_description("Another description");
  EXPECT_EQ(m_panel->caption()->m_text, "Another caption");
  EXPECT_EQ(m_panel->caption()->GetLabelText(), "Another caption");
  EXPECT_EQ(tooltip_of(m_panel->caption()), "Another caption");
  EXPECT_EQ(m_panel->description()->GetLabelText(), "Another description");
  EXPECT_EQ(tooltip_of(m_panel->description()), "Another description");
}

TEST_F(caption_panel_test, read_only_hides_the_pane_and_shows_it_again) {
  m_panel->add_message(caption_panel_t::severity_error, "An error.");
  ASSERT_TRUE(m_panel->pane()->IsShown());
  m_panel->set_read_only(true);
  EXPECT_TRUE(m_panel->get_read_only());
  EXPECT_FALSE(m_panel->pane()->IsShown());
  m_panel->set_read_only(false);
  EXPECT_FALSE(m_panel->get_read_only());
  EXPECT_TRUE(m_panel->pane()->IsShown());
}

TEST_F(caption_panel_test, disable_keeps_the_pane_hidden_for_later_messages) {
  m_panel->disable();
  EXPECT_TRUE(m_panel->disabled());
  EXPECT_FALSE(m_panel->pane()->IsShown());
  const int id = m_panel->add_message(caption_panel_t::severity_critical, "Critical.");
  EXPECT_EQ(m_panel->current_id(), id);
  EXPECT_EQ(m_panel->message_label()->m_text, "Critical.");
  EXPECT_FALSE(m_panel->pane()->IsShown());
  m_panel->add_message(caption_panel_t::severity_critical, "Another.");
  m_panel->show_next_message();
  EXPECT_FALSE(m_panel->pane()->IsShown());
  // Read-only off shows the pane whatever else holds.
  m_panel->set_read_only(false);
  EXPECT_TRUE(m_panel->pane()->IsShown());
}

// ---------------------------------------------------------------------------------------
// The message list

TEST_F(caption_panel_test, messages_are_kept_most_severe_first_and_behind_their_own_severity) {
  const int info = m_panel->add_message(caption_panel_t::severity_information, "i1");
  const int warning = m_panel->add_message(caption_panel_t::severity_warning, "w1");
  const int error = m_panel->add_message(caption_panel_t::severity_error, "e1");
  const int critical = m_panel->add_message(caption_panel_t::severity_critical, "c1");
  const int info2 = m_panel->add_message(caption_panel_t::severity_information, "i2");
  const int error2 = m_panel->add_message(caption_panel_t::severity_error, "e2");
  const int critical2 = m_panel->add_message(caption_panel_t::severity_critical, "c2");
  const int warning2 = m_panel->add_message(caption_panel_t::severity_warning, "w2");
  EXPECT_EQ(m_panel->ids(),
            (std::vector<int>{critical, critical2, error, error2, warning, warning2, info, info2}));
  EXPECT_EQ(info, 0);
  EXPECT_EQ(warning2, 7) << "ids are handed out in order";
  EXPECT_EQ(m_panel->get_message_count(), 8u);
  for (int index = 0; index < 8; ++index) {
    EXPECT_EQ(m_panel->get_message_index(m_panel->get_message_id(index)), index);
  }
  EXPECT_EQ(m_panel->get_message_id(8), -1);
  EXPECT_EQ(m_panel->get_message_id(-1), -1);
  EXPECT_EQ(m_panel->current_id(), critical) << "the first critical came in ahead of the head";
}

TEST_F(caption_panel_test, a_message_ahead_of_the_head_is_shown_and_others_are_not) {
  add_three();
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{m_error, m_warning, m_info}));
  EXPECT_EQ(m_panel->current_id(), m_error);
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
  EXPECT_EQ(tooltip_of(m_panel->message_label()), "Error: nothing found.");
  EXPECT_TRUE(m_panel->pane()->IsShown());
  // As severe as the head, it goes behind it and isn't shown.
  m_panel->add_message(caption_panel_t::severity_error, "Error: the second.");
  EXPECT_EQ(m_panel->current_id(), m_error);
  const int critical = m_panel->add_message(caption_panel_t::severity_critical, "Critical!");
  EXPECT_EQ(m_panel->current_id(), critical);
}

TEST_F(caption_panel_test, a_second_warning_keeps_the_first_on_show) {
  const int first = m_panel->add_message(caption_panel_t::severity_warning, "first");
  const int second = m_panel->add_message(caption_panel_t::severity_warning, "second");
  EXPECT_EQ(m_panel->current_id(), first);
  EXPECT_EQ(m_panel->message_label()->m_text, "first");
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{first, second}));
}

TEST_F(caption_panel_test, places_are_looked_for_among_the_four_severities_only) {
  const int odd = m_panel->add_message(static_cast<caption_panel_t::severity_t>(7), "odd");
  EXPECT_EQ(m_panel->current_id(), odd) << "the first message comes on show";
  // Nothing of a value from 1 to 3 is there: the critical one goes to the end, unseen.
  const int critical = m_panel->add_message(caption_panel_t::severity_critical, "critical");
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{odd, critical}));
  EXPECT_EQ(m_panel->current_id(), odd);
  const int error = m_panel->add_message(caption_panel_t::severity_error, "error");
  const int info = m_panel->add_message(caption_panel_t::severity_information, "info");
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{odd, critical, error, info}));
  // Before an error, and more severe than the head of value 7: on show.
  const int second_critical = m_panel->add_message(caption_panel_t::severity_critical, "critical 2");
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{odd, critical, second_critical, error, info}));
  EXPECT_EQ(m_panel->current_id(), second_critical);
}

TEST_F(caption_panel_test, an_empty_text_is_stored_and_never_shown) {
  const int id = m_panel->add_message(caption_panel_t::severity_error, "");
  EXPECT_EQ(m_panel->get_message_count(), 1u);
  EXPECT_EQ(m_panel->get_message(id).m_severity, caption_panel_t::severity_error);
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_FALSE(m_panel->pane()->IsShown());
  m_panel->show_message(id, true);
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_FALSE(m_panel->pane()->IsShown());
}

TEST_F(caption_panel_test, get_message_of_an_unknown_id_is_id_0_severity_0_and_no_text) {
  const int id = m_panel->add_message(caption_panel_t::severity_warning, "known");
  const caption_panel_t::message_info_t known = m_panel->get_message(id);
  EXPECT_EQ(known.m_id, id);
  EXPECT_EQ(known.m_severity, caption_panel_t::severity_warning);
  EXPECT_EQ(known.m_text, "known");
  const caption_panel_t::message_info_t unknown = m_panel->get_message(42);
  EXPECT_EQ(unknown.m_id, 0);
  EXPECT_EQ(unknown.m_severity, caption_panel_t::severity_critical);
  EXPECT_EQ(unknown.m_text, "");
}

TEST_F(caption_panel_test, a_negative_id_has_no_index_and_is_reported) {
  test_support::assert_recorder_t reports;
  m_panel->add_message(caption_panel_t::severity_warning, "known");
  EXPECT_EQ(m_panel->get_message_index(-1), -1);
  EXPECT_EQ(reports.count("id >= 0"), 1u);
  EXPECT_EQ(m_panel->get_message_index(5), -1);
  EXPECT_EQ(reports.count(), 1u) << "an unknown id is no failure";
}

TEST_F(caption_panel_test, edit_and_remove_ignore_unknown_ids) {
  add_three();
  m_panel->edit_message(99, "nothing");
  m_panel->remove_message(99);
  EXPECT_EQ(m_panel->ids(), (std::vector<int>{m_error, m_warning, m_info}));
  EXPECT_EQ(m_panel->current_id(), m_error);
}

TEST_F(caption_panel_test, editing_the_shown_message_shows_the_new_text) {
  add_three();
  m_panel->edit_message(m_warning, "Warning: edited.");
  EXPECT_EQ(m_panel->get_message(m_warning).m_text, "Warning: edited.");
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
  m_panel->edit_message(m_error, "Error: edited.");
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: edited.");
  EXPECT_EQ(tooltip_of(m_panel->message_label()), "Error: edited.");
  // Emptied, it stays on show as it was.
  m_panel->edit_message(m_error, "");
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: edited.");
  EXPECT_TRUE(m_panel->pane()->IsShown());
}

TEST_F(caption_panel_test, removing_the_shown_one_of_two_shows_the_other_and_the_buttons_go) {
  const int warning = m_panel->add_message(caption_panel_t::severity_warning, "warning");
  const int error = m_panel->add_message(caption_panel_t::severity_error, "error");
  gui_test::pump();
  ASSERT_EQ(m_panel->current_id(), error);
  EXPECT_TRUE(m_panel->prev()->IsShown());
  EXPECT_TRUE(m_panel->next()->IsShown());
  m_panel->remove_message(error);
  EXPECT_EQ(m_panel->current_id(), warning);
  EXPECT_EQ(m_panel->message_label()->m_text, "warning");
  EXPECT_FALSE(m_panel->prev()->IsShown());
  EXPECT_FALSE(m_panel->next()->IsShown());
  EXPECT_TRUE(m_panel->pane()->IsShown());
}

TEST_F(caption_panel_test, removing_a_message_not_on_show_changes_nothing_else) {
  add_three();
  m_panel->remove_message(m_info);
  EXPECT_EQ(m_panel->current_id(), m_error);
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
}

TEST_F(caption_panel_test, removing_the_shown_one_behind_a_hidden_pane_keeps_its_id) {
  add_three();
  m_panel->set_read_only(true);
  m_panel->remove_message(m_error);
  EXPECT_EQ(m_panel->current_id(), m_error);
  EXPECT_FALSE(m_panel->pane()->IsShown());
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
}

TEST_F(caption_panel_test, removing_the_last_message_hides_the_pane) {
  const int id = m_panel->add_message(caption_panel_t::severity_information, "only");
  ASSERT_TRUE(m_panel->pane()->IsShown());
  m_panel->remove_message(id);
  EXPECT_FALSE(m_panel->pane()->IsShown());
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_EQ(m_panel->get_message_count(), 0u);
}

TEST_F(caption_panel_test, clear_messages_leaves_the_pane_as_it_is) {
  add_three();
  m_panel->clear_messages();
  EXPECT_EQ(m_panel->get_message_count(), 0u);
  EXPECT_TRUE(m_panel->pane()->IsShown());
  EXPECT_EQ(m_panel->current_id(), m_error);
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
  m_panel->show_next_message();
  EXPECT_EQ(m_panel->current_id(), m_error);
}

TEST_F(caption_panel_test, a_shown_message_of_id_0_counts_as_none) {
  const int first = m_panel->add_message(caption_panel_t::severity_error, "error of id 0");
  ASSERT_EQ(first, 0);
  const int info = m_panel->add_message(caption_panel_t::severity_information, "info");
  m_panel->show_message(info, false);
  EXPECT_EQ(m_panel->current_id(), info) << "the less severe message pushed aside the one of id 0";
  // A shown message of another id holds its place.
  const int error = m_panel->add_message(caption_panel_t::severity_error, "error");
  m_panel->show_message(error, true);
  m_panel->show_message(info, false);
  EXPECT_EQ(m_panel->current_id(), error);
  m_panel->show_message(info, true);
  EXPECT_EQ(m_panel->current_id(), info);
}

TEST_F(caption_panel_test, a_less_severe_message_doesnt_push_aside_the_shown_one) {
  add_three();
  m_panel->show_message(m_warning, false);
  EXPECT_EQ(m_panel->current_id(), m_error);
  m_panel->show_message(m_warning, true);
  EXPECT_EQ(m_panel->current_id(), m_warning);
  // A more severe one does.
  m_panel->show_message(m_error, false);
  EXPECT_EQ(m_panel->current_id(), m_error);
}

TEST_F(caption_panel_test, hide_message_pane_forgets_the_shown_id_and_leaves_the_pane) {
  add_three();
  ASSERT_TRUE(gui_test::wait_until_shown(m_panel->pane()));
  m_panel->hide_message_pane();
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_TRUE(m_panel->pane()->IsShown());
  gui_test::pump();
  const paint_counter_t pane_paints(m_panel->pane());
  const paint_counter_t label_paints(m_panel->message_label());
  const int rectangle_paints = m_panel->message_rectangle()->GetPaintCount();
  // Less severe than the head: not shown, and nothing on screen changes.
  m_panel->add_message(caption_panel_t::severity_warning, "Warning: another.");
  gui_test::pump();
  EXPECT_EQ(m_panel->current_id(), -1);
  EXPECT_EQ(m_panel->message_label()->m_text, "Error: nothing found.");
  EXPECT_EQ(pane_paints.count(), 0);
  EXPECT_EQ(label_paints.count(), 0);
  EXPECT_EQ(m_panel->message_rectangle()->GetPaintCount(), rectangle_paints);
  // Next and previous have no current message to start from.
  m_panel->show_next_message();
  m_panel->show_prev_message();
  EXPECT_EQ(m_panel->current_id(), -1);
}

TEST_F(caption_panel_test, the_scroll_buttons_show_while_there_are_several_messages) {
  const int first = m_panel->add_message(caption_panel_t::severity_error, "first");
  gui_test::pump();
  EXPECT_FALSE(m_panel->prev()->IsShown());
  EXPECT_FALSE(m_panel->update_buttons());
  m_panel->add_message(caption_panel_t::severity_error, "second");
  // Adding doesn't update the buttons unless the message comes on show.
  EXPECT_FALSE(m_panel->prev()->IsShown());
  EXPECT_TRUE(m_panel->update_buttons());
  EXPECT_TRUE(m_panel->prev()->IsShown());
  EXPECT_TRUE(m_panel->next()->IsShown());
  EXPECT_FALSE(m_panel->update_buttons());
  m_panel->show_message(first, true);
  EXPECT_TRUE(m_panel->prev()->IsShown());
}

// ---------------------------------------------------------------------------------------
// Scrolling by real clicks

TEST_F(caption_panel_test, clicks_on_the_scroll_buttons_go_round_the_list) {
  add_three();
  ASSERT_TRUE(gui_test::wait_until_shown(m_panel->next()));
  click_on(m_panel->next());
  EXPECT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_warning; }, 3000));
  EXPECT_EQ(m_panel->message_label()->m_text, "Warning: a folder is missing.");
  click_on(m_panel->next());
  EXPECT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_info; }, 3000));
  click_on(m_panel->next());
  EXPECT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_error; }, 3000))
      << "after the last comes the first";
  click_on(m_panel->prev());
  EXPECT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_info; }, 3000))
      << "before the first comes the last";
  click_on(m_panel->prev());
  EXPECT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_warning; }, 3000));
  EXPECT_EQ(m_panel->message_label()->m_text, "Warning: a folder is missing.");
}

TEST_F(caption_panel_test, a_click_shows_the_icon_of_the_new_message) {
  add_three();
  ASSERT_TRUE(gui_test::wait_until_shown(m_panel->next()));
  click_on(m_panel->next());
  ASSERT_TRUE(gui_test::wait_until([&] { return m_panel->current_id() == m_warning; }, 3000));
  const wxImage icon = m_panel->icon()->GetBitmap().ConvertToImage();
  EXPECT_TRUE(same_pixels(icon, picture_named("severity_warn").getImage(false)));
}

// ---------------------------------------------------------------------------------------
// Pictures

TEST_F(caption_panel_test, each_severity_shows_its_icon) {
  const struct {
    caption_panel_t::severity_t severity;
    const char* name;
  } rows[] = {{caption_panel_t::severity_information, "severity_info"},
              {caption_panel_t::severity_warning, "severity_warn"},
              {caption_panel_t::severity_error, "severity_error"},
              {caption_panel_t::severity_critical, "severity_critical"}};
  for (const auto& row : rows) {
    // Each one is more severe than the head, so it comes on show.
    m_panel->add_message(row.severity, row.name);
    const wxImage icon = m_panel->icon()->GetBitmap().ConvertToImage();
    EXPECT_TRUE(same_pixels(icon, picture_named(row.name).getImage(false))) << row.name;
  }
}

TEST_F(caption_panel_test, get_picture_loads_once_per_process_and_nothing_without_a_location) {
  tamsel3::forget_severity_pictures();
  const test_support::temp_dir_t empty;
  {
    gui_test::folder_locations_t nowhere("");
    quern2::IProductLocations::set(&nowhere);
    EXPECT_TRUE(tamsel3::caption_images_loader().get_location().empty());
    EXPECT_TRUE(caption_panel_t::get_picture(caption_panel_t::severity_error).is_empty());
    quern2::IProductLocations::set(nullptr);
  }
  const plaxi1::wxStaticPicture error = caption_panel_t::get_picture(caption_panel_t::severity_error);
  EXPECT_FALSE(error.is_empty()) << "nothing was remembered from the call without a location";
  EXPECT_TRUE(same_pixels(error.getImage(false), picture_named("severity_error").getImage(false)));
  {
    // All four were loaded at once, and stay: a folder without pictures changes nothing.
    gui_test::folder_locations_t elsewhere(empty.path());
    quern2::IProductLocations::set(&elsewhere);
    for (const auto& row : {std::make_pair(caption_panel_t::severity_critical, "severity_critical"),
                            std::make_pair(caption_panel_t::severity_information, "severity_info")}) {
      const plaxi1::wxStaticPicture kept = caption_panel_t::get_picture(row.first);
      quern2::IProductLocations::set(nullptr);
      EXPECT_TRUE(same_pixels(kept.getImage(false), picture_named(row.second).getImage(false))) << row.second;
      quern2::IProductLocations::set(&elsewhere);
    }
    quern2::IProductLocations::set(nullptr);
  }
  const plaxi1::wxStaticPicture odd =
      caption_panel_t::get_picture(static_cast<caption_panel_t::severity_t>(7));
  EXPECT_TRUE(same_pixels(odd.getImage(false), picture_named("severity_warn").getImage(false)));
}

// The scroll buttons' images, compared with buttons that show one picture in every look.
class scroll_images_test : public caption_panel_test {
 protected:
  void SetUp() override {
    caption_panel_test::SetUp();
    add_three();
    for (plaxi1::wxIconButton* button : {m_panel->prev(), m_panel->next()}) {
      ASSERT_TRUE(gui_test::wait_until_shown(button));
    }
    m_reference =
        new plaxi1::wxIconButton(m_panel->pane(), wxID_ANY, wxPoint(0, 0), wxDefaultSize, 0, wxSize(15, 15));
    m_reference->SetBackgroundColour(m_panel->prev()->GetBackgroundColour());
    m_input.move(m_frame, wxPoint(600, 380));
  }
  // Whether `button` looks like the picture `name` shown alone.
  bool looks_like(plaxi1::wxIconButton* button, const std::string& name) {
    m_reference->SetSize(button->GetSize());
    m_reference->SetImage(1 | 2 | 4 | 8, picture_named(name).getImage(true));
    return same_pixels(shot(button), shot(m_reference));
  }

  plaxi1::wxIconButton* m_reference = nullptr;
};

TEST_F(scroll_images_test, each_look_of_each_button_has_its_picture) {
  plaxi1::wxIconButton* prev = m_panel->prev();
  plaxi1::wxIconButton* next = m_panel->next();
  EXPECT_FALSE(same_pixels(picture_named("scroll_left_disabled").getImage(false),
                           picture_named("scroll_left_normal").getImage(false)))
      << "the test tells the pictures apart";
  ASSERT_EQ(prev->GetShownState(), 1);
  EXPECT_TRUE(looks_like(prev, "scroll_left_disabled"))
      << "the left button's normal look is its disabled one";
  EXPECT_FALSE(looks_like(prev, "scroll_left_normal"));
  EXPECT_TRUE(looks_like(next, "scroll_right_normal"));
  for (plaxi1::wxIconButton* button : {prev, next}) {
    const std::string side = button == prev ? "scroll_left_" : "scroll_right_";
    m_input.move_to_centre(button);
    ASSERT_TRUE(gui_test::wait_until([&] { return button->GetShownState() == 2; }, 3000));
    EXPECT_TRUE(looks_like(button, side + "hover"));
    m_input.down();
    ASSERT_TRUE(gui_test::wait_until([&] { return button->GetShownState() == 4; }, 3000));
    EXPECT_TRUE(looks_like(button, side + "pressed"));
    // Released away from it: no click.
    m_input.move(m_frame, wxPoint(600, 380));
    m_input.up();
    button->Enable(false);
    ASSERT_EQ(button->GetShownState(), 8);
    EXPECT_TRUE(looks_like(button, side + "disabled"));
  }
  EXPECT_EQ(m_panel->current_id(), m_error);
}

TEST_F(caption_panel_test, without_a_picture_location_the_buttons_get_no_images) {
  gui_test::folder_locations_t nowhere("");
  quern2::IProductLocations::set(&nowhere);
  auto* bare = new probe_t(m_page, "Bare", "No pictures");
  quern2::IProductLocations::set(nullptr);
  m_page->GetSizer()->Add(bare, 0, wxEXPAND);
  bare->add_message(caption_panel_t::severity_error, "one");
  bare->add_message(caption_panel_t::severity_error, "two");
  bare->update_buttons();
  m_page->Layout();
  ASSERT_TRUE(gui_test::wait_until_shown(bare->next()));
  auto* blank =
      new plaxi1::wxIconButton(bare->pane(), wxID_ANY, wxPoint(0, 0), wxDefaultSize, 0, wxSize(15, 15));
  blank->SetBackgroundColour(bare->next()->GetBackgroundColour());
  blank->SetSize(bare->next()->GetSize());
  EXPECT_TRUE(same_pixels(shot(bare->next()), shot(blank)));
  EXPECT_TRUE(same_pixels(shot(bare->prev()), shot(blank)));
  // The same panel with pictures would differ.
  bare->set_button_images();
  EXPECT_FALSE(same_pixels(shot(bare->next()), shot(blank)));
}

// ---------------------------------------------------------------------------------------
// Theme changes

TEST_F(caption_panel_test, a_theme_change_repaints_with_the_new_colours_and_wraps_again) {
  m_panel->set_description(long_text.substr(0, 150));
  m_panel->add_message(caption_panel_t::severity_warning, long_text.substr(0, 120));
  resize_frame(560);
  ASSERT_TRUE(gui_test::wait_until_shown(m_panel->pane()));
  const int description_lines = m_panel->description()->m_lines;
  const int message_lines = m_panel->message_label()->m_lines;
  const wxColour info_before = m_panel->message_rectangle()->GetBkColor();
  const paint_counter_t top_paints(m_panel);
  const paint_counter_t pane_paints(m_panel->pane());
  const int message_rectangle_paints = m_panel->message_rectangle()->GetPaintCount();
  const int top_rectangle_paints = m_panel->top_rectangle()->GetPaintCount();
  {
    const gui_test::theme_change_t theme("#2a7f3c", 20);
    const wxColour info = wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK);
    ASSERT_NE(info, info_before) << "the theme changed the tooltip colour";
    EXPECT_EQ(m_panel->message_rectangle()->GetBkColor(), info);
    EXPECT_EQ(m_panel->pane()->GetBackgroundColour(), info);
    EXPECT_EQ(m_panel->message_rectangle()->GetBorderColor(),
              wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION));
    const auto settings = plaxi1::ui_settings_t::get();
    EXPECT_EQ(m_panel->top_rectangle()->GetBkColor(), settings->get_color(plaxi1::color_dialog));
    EXPECT_EQ(m_panel->description()->GetFont(), settings->get_font(plaxi1::font_normal));
    EXPECT_GT(m_panel->description()->m_lines, description_lines) << "a larger font wraps to more lines";
    EXPECT_GT(m_panel->message_label()->m_lines, message_lines);
    EXPECT_TRUE(
        gui_test::wait_until([&] { return top_paints.count() > 0 && pane_paints.count() > 0; }, 3000));
    gui_test::pump();
    EXPECT_GT(m_panel->message_rectangle()->GetPaintCount(), message_rectangle_paints);
    EXPECT_GT(m_panel->top_rectangle()->GetPaintCount(), top_rectangle_paints);
    EXPECT_EQ(colour_at(shot(m_panel->pane()), 2, 2), info) << "the pane is painted in the new colour";
    EXPECT_EQ(m_panel->GetSize().y, expected_floor()) << "the page lays out around the new height";
  }
  EXPECT_EQ(m_panel->message_rectangle()->GetBkColor(), info_before) << "the old theme came back";
  EXPECT_EQ(m_panel->description()->m_lines, description_lines);
}

// ---------------------------------------------------------------------------------------
// The message pane's height and ground

// The floor holds the whole text of a message that comes on show, also where the page had
// laid the label out a line high before.
TEST_F(caption_panel_test, a_message_of_several_lines_is_shown_whole) {
  const std::string text = long_text.substr(0, 230);
  for (const bool shown_first : {true, false}) {
    SCOPED_TRACE(shown_first ? "added to a shown page" : "added before the page is shown");
    if (!shown_first) {
      m_frame->Hide();
    }
    m_panel->clear_messages();
    m_panel->add_message(caption_panel_t::severity_error, "One line.");
    m_panel->remove_message(m_panel->get_message_id(0));
    m_panel->add_message(caption_panel_t::severity_warning, text);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_panel->pane()));
    gui_test::pump();
    caption_label_t* label = m_panel->message_label();
    ASSERT_GT(label->m_lines, 1);
    EXPECT_GE(label->GetSize().y, label->GetBestSize().y) << "no line is cut";
    EXPECT_GE(m_panel->GetSize().y, m_panel->caption()->GetSize().y + m_panel->description()->GetSize().y +
                                        label->GetBestSize().y + 30);
  }
}

// No boxes of another shade around the chevrons, also where the tooltip colour is
// translucent: the buttons paint the ground that the pane shows beside them.
TEST_F(caption_panel_test, the_scroll_buttons_sit_on_the_ground_of_the_pane) {
  add_three();
  ASSERT_TRUE(gui_test::wait_until_shown(m_panel->next()));
  gui_test::pump();
  const wxImage frame = shot(m_frame);
  for (plaxi1::wxIconButton* button : {m_panel->prev(), m_panel->next()}) {
    // A corner of the button, where its picture is transparent, and the gap left of it.
    const wxPoint corner = button->GetScreenPosition() - m_frame->GetScreenPosition() + wxPoint(1, 1);
    EXPECT_EQ(colour_at(frame, corner.x, corner.y).GetAsString(),
              colour_at(frame, corner.x - 3, corner.y).GetAsString());
  }
}

}  // namespace
