#include "caption_panel_p.h"
#include "caption_test_support.h"
#include "gui_test.h"
#include "theme_change.h"

#include <plaxi1/element_shapes.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/caption_panel.h>
#include <tamsel3/simple_message_panel.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/arrstr.h>
#include <wx/dcclient.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <string>

namespace {

using caption_test::colour_at;
using caption_test::paint_counter_t;
using caption_test::same_pixels;
using tamsel3::simple_message_panel_t;

const std::string long_text =
    "The result was made by an older version of the tool; some of its findings may be shown without "
    "their source lines, and the ones that name files outside the project are left out of the summary "
    "until the result is made again with the version that is installed now, which also adds the call "
    "stacks that the older version didn't keep, and the time each step took.";

// A panel that lets the tests see its parts.
class probe_t : public simple_message_panel_t {
 public:
  using simple_message_panel_t::simple_message_panel_t;
  wxStaticBitmap* icon() const { return m_icon_control; }
  tamsel3::caption_label_t* label() const { return m_label; }
  plaxi1::elements::RectangleElement* rectangle() const { return m_rectangle.get(); }
};

bool shows_picture(probe_t* panel, const std::string& name) {
  const wxImage expected = tamsel3::caption_images_loader().load_static_picture(name).getImage(false);
  return same_pixels(panel->icon()->GetBitmap().ConvertToImage(), expected);
}

// A shown frame whose page holds a simple message panel at its top, over the whole width.
class simple_message_panel_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "simple", wxPoint(40, 40), wxSize(560, 360));
    m_page = new wxPanel(m_frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    m_panel = new probe_t(m_page);
    sizer->Add(m_panel, 0, wxEXPAND);
    m_page->SetSizer(sizer);
    m_frame->Show();
    ASSERT_TRUE(gui_test::wait_until_shown(m_frame));
  }
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }
  // A change of the frame's width, which reaches the panel as a size event.
  // A second resize soon after a first can be undone by the display's late answer to the
  // first: the frame is asked again until it keeps the width over a round trip.
  void resize_frame(int width) {
    for (int attempt = 0; attempt < 5; ++attempt) {
      if (m_frame->GetSize().x != width) {
        m_frame->SetSize(wxSize(width, 360));
      }
      gui_test::wait_until(
          [&] {
            const int page = m_page->GetClientSize().x;
            return m_frame->GetSize().x == width && page == m_frame->GetClientSize().x &&
                   m_panel->GetSize().x == page;
          },
          3000);
      gdk_display_sync(gdk_display_get_default());
      gui_test::pump();
      if (m_frame->GetSize().x == width && m_panel->GetSize().x == m_page->GetClientSize().x) {
        return;
      }
    }
  }

  wxFrame* m_frame = nullptr;
  wxPanel* m_page = nullptr;
  probe_t* m_panel = nullptr;
};

TEST_F(simple_message_panel_test, a_new_panel_is_an_empty_box_in_the_tooltip_colours) {
  EXPECT_EQ(m_panel->label()->m_text, "");
  EXPECT_EQ(m_panel->label()->m_max_lines, 2);
  EXPECT_EQ(m_panel->label()->m_window_for_get_parent_size, m_panel);
  EXPECT_FALSE(m_panel->icon()->GetBitmap().IsOk());
  const wxColour info = tamsel3::opaque_info_background(m_page->GetBackgroundColour());
  EXPECT_EQ(m_panel->GetBackgroundColour(), info);
  EXPECT_EQ(m_panel->rectangle()->GetBkColor(), info);
  EXPECT_EQ(m_panel->rectangle()->GetBorderColor(),
            wxSystemSettings::GetColour(wxSYS_COLOUR_INACTIVECAPTION));
  // The text reads in every theme: tooltips are dark in some.
  EXPECT_EQ(m_panel->label()->GetForegroundColour(), wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
  EXPECT_EQ(m_panel->GetWindowStyleFlag() & wxBORDER_MASK, static_cast<long>(wxNO_BORDER));
}

TEST_F(simple_message_panel_test, set_message_fills_the_panel_and_the_next_size_shows_the_text) {
  m_panel->set_message(simple_message_panel_t::severity_warning, "Two words");
  EXPECT_TRUE(shows_picture(m_panel, "severity_warn"));
  EXPECT_EQ(m_panel->label()->m_text, "Two words");
  const plaxi1::wxCustomTooltip* tooltip = plaxi1::GetTooltip(m_panel->label());
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(tooltip->GetText(), "Two words");
  EXPECT_NE(m_panel->label()->GetLabelText(), "Two words") << "not before a size event";
  resize_frame(520);
  EXPECT_EQ(m_panel->label()->GetLabelText(), "Two words");
  EXPECT_EQ(m_panel->label()->m_lines, 1);
}

TEST_F(simple_message_panel_test, each_severity_loads_its_picture_and_others_the_information_one) {
  const struct {
    int severity;
    const char* name;
  } rows[] = {{0, "severity_critical"}, {1, "severity_error"}, {2, "severity_warn"},
              {3, "severity_info"},     {7, "severity_info"},  {-1, "severity_info"}};
  for (const auto& row : rows) {
    m_panel->set_message(static_cast<simple_message_panel_t::severity_t>(row.severity), "text");
    EXPECT_TRUE(shows_picture(m_panel, row.name)) << row.severity;
  }
}

TEST_F(simple_message_panel_test, an_empty_text_hides_the_panel_and_enable_shows_the_old_one) {
  m_panel->set_message(simple_message_panel_t::severity_error, "The old text");
  resize_frame(520);
  ASSERT_TRUE(m_panel->IsShown());
  m_panel->set_message(simple_message_panel_t::severity_information, "");
  EXPECT_FALSE(m_panel->IsShown());
  EXPECT_EQ(m_panel->label()->m_text, "The old text");
  EXPECT_TRUE(shows_picture(m_panel, "severity_error")) << "the former content stays";
  m_panel->enable(true);
  EXPECT_TRUE(m_panel->IsShown());
  EXPECT_EQ(m_panel->label()->GetLabelText(), "The old text");
}

TEST_F(simple_message_panel_test, set_message_on_a_hidden_panel_leaves_it_hidden) {
  m_panel->enable(false);
  EXPECT_FALSE(m_panel->IsShown());
  m_panel->set_message(simple_message_panel_t::severity_warning, "Not yet");
  EXPECT_FALSE(m_panel->IsShown());
  EXPECT_EQ(m_panel->label()->m_text, "Not yet");
  m_panel->enable(true);
  EXPECT_TRUE(m_panel->IsShown());
}

TEST_F(simple_message_panel_test, a_long_text_wraps_at_the_next_size_event_up_to_five_lines) {
  m_panel->set_message(simple_message_panel_t::severity_warning, long_text);
  resize_frame(520);
  const int wide = m_panel->label()->m_lines;
  EXPECT_GT(wide, 1);
  EXPECT_LE(wide, 5);
  resize_frame(300);
  EXPECT_EQ(m_panel->label()->m_lines, 5) << "five lines though the label means two";
  EXPECT_TRUE(m_panel->label()->GetLabelText().EndsWith(wxString::FromUTF8("…")));
  EXPECT_EQ(m_panel->label()->m_text, long_text);
}

TEST_F(simple_message_panel_test, a_hidden_panel_doesnt_wrap) {
  m_panel->set_message(simple_message_panel_t::severity_warning, long_text);
  m_panel->enable(false);
  const int lines = m_panel->label()->m_lines;
  resize_frame(400);
  EXPECT_EQ(m_panel->label()->m_lines, lines);
  EXPECT_EQ(m_panel->label()->GetLabelText(), "");
}

TEST_F(simple_message_panel_test, a_theme_change_repaints_with_the_new_colours_and_wraps_again) {
  m_panel->set_message(simple_message_panel_t::severity_warning, long_text.substr(0, 160));
  resize_frame(520);
  const int lines = m_panel->label()->m_lines;
  const wxColour before = m_panel->rectangle()->GetBkColor();
  gui_test::pump();
  const paint_counter_t paints(m_panel);
  const int rectangle_paints = m_panel->rectangle()->GetPaintCount();
  {
    const gui_test::theme_change_t theme("#7f2a5c", 20);
    const wxColour info = tamsel3::opaque_info_background(m_page->GetBackgroundColour());
    ASSERT_NE(info, before) << "the theme changed the tooltip colour";
    EXPECT_EQ(m_panel->rectangle()->GetBkColor(), info);
    EXPECT_EQ(m_panel->GetBackgroundColour(), info);
    EXPECT_GT(m_panel->label()->m_lines, lines) << "a larger font wraps to more lines";
    EXPECT_TRUE(gui_test::wait_until([&] { return paints.count() > 0; }, 3000));
    EXPECT_GT(m_panel->rectangle()->GetPaintCount(), rectangle_paints);
    EXPECT_EQ(colour_at(caption_test::shot(m_panel), 2, 2), info) << "the box is painted in the new colour";
  }
  EXPECT_EQ(m_panel->rectangle()->GetBkColor(), before);
  EXPECT_EQ(m_panel->label()->m_lines, lines);
}

// A line wider than the label is wrapped again by the label itself, which then cuts what
// doesn't fit its height: the panel's wrap keeps within the label's width.
TEST_F(simple_message_panel_test, every_wrapped_line_fits_the_label) {
  m_panel->set_message(simple_message_panel_t::severity_warning, long_text.substr(0, 200));
  for (const int width : {520, 430, 360}) {
    resize_frame(width);
    tamsel3::caption_label_t* label = m_panel->label();
    EXPECT_GE(label->m_delta, m_panel->GetSize().x - label->GetSize().x) << width;
    wxClientDC dc(label);
    dc.SetFont(plaxi1::ui_settings_t::get()->get_font(plaxi1::font_normal));
    for (const wxString& line : wxSplit(label->GetLabelText(), '\n', 0)) {
      EXPECT_LE(dc.GetTextExtent(line).x, label->GetSize().x) << width << ": " << line;
    }
  }
}

}  // namespace
