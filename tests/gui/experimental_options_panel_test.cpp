#include "fixtures.h"
#include "gui_test.h"
#include "own_process.h"

#include <korvat2/bag_file.h>
#include <plaxi1/style.h>
#include <plaxi1/tooltip.h>
#include <plaxi1/ui_settings.h>
#include <tamsel3/experimental_options_panel.h>
#include <tamsel3/feature_config.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <boost/make_shared.hpp>

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

using korvat2::variant_bag_t;
using tamsel3::active_features_config_impl_t;
using tamsel3::experimental_options_panel_t;
using tamsel3::feature_list_config_impl_t;
using test_support::temp_dir_t;

const wxColour off_background(0, 57, 87);
const wxColour on_background(162, 27, 0);

struct feature_t {
  std::string env_variable;
  std::string name;
  std::string description;
};

variant_bag_t features_bag(const std::vector<feature_t>& features) {
  variant_bag_t list;
  for (const feature_t& f : features) {
    variant_bag_t feature;
    feature.put("env_variable", f.env_variable);
    feature.put("name", f.name);
    feature.put("description", f.description);
    list.add_variant_bag("feature", feature);
  }
  variant_bag_t bag;
  bag.add_variant_bag("features", list);
  return bag;
}

// The panel with its insides in reach.
class panel_t : public experimental_options_panel_t {
 public:
  using experimental_options_panel_t::experimental_options_panel_t;
  using experimental_options_panel_t::load_settings;
  using experimental_options_panel_t::m_experimental_descr;
  using experimental_options_panel_t::m_experimental_status;
  using experimental_options_panel_t::m_feature_list_wnd;
  using experimental_options_panel_t::m_features;
  using experimental_options_panel_t::m_mesage_panel;
};

class experimental_options_panel_test : public ::testing::Test {
 protected:
  void TearDown() override {
    if (m_frame) {
      m_frame->Destroy();
    }
    gui_test::pump();
  }

  void write_list(const std::vector<feature_t>& features) {
    ASSERT_TRUE(
        korvat2::save_variant_bag(features_bag(features), m_dir.file("evaluation_features.cfg").c_str())
            .succeeded());
  }
  void write_choice(const std::vector<std::string>& names) {
    std::vector<feature_t> features;
    for (const std::string& name : names) {
      features.push_back({name, "", ""});
    }
    ASSERT_TRUE(korvat2::save_variant_bag(features_bag(features), choice_file().c_str()).succeeded());
  }
  std::string choice_file() const { return m_dir.file("active_evaluation_features.cfg"); }
  std::string list_file() const { return m_dir.file("evaluation_features.cfg"); }

  // Opens the panel over a choice that turns TAM_DARK on, presses OK and checks that the
  // choice file kept every byte.
  void expect_ok_keeps_the_choice(bool with_list = true) {
    write_choice({"TAM_DARK"});
    const std::string before = test_support::read_bytes(choice_file());
    open_with(with_list, true);
    press_ok(true);
    EXPECT_EQ(m_prompts, 1) << "OK still asks";
    EXPECT_TRUE(m_panel->is_restart_requested());
    EXPECT_EQ(test_support::read_bytes(choice_file()), before);
  }

  // The names that the choice file turns on, as a fresh reader sees them.
  bool turned_on(const std::string& name) const {
    active_features_config_impl_t active{korvat2::path_t(m_dir.path())};
    active.load();
    return active.is_turned_on(name);
  }

  void open(bool with_configs = true) { open_with(with_configs, with_configs); }
  void open_with(bool with_list, bool with_choice) {
    const korvat2::path_t dir(m_dir.path());
    m_frame = new wxFrame(nullptr, wxID_ANY, "experimental", wxDefaultPosition, wxSize(560, 420));
    boost::shared_ptr<feature_list_config_impl_t> list;
    boost::shared_ptr<active_features_config_impl_t> active;
    if (with_list) {
      list = boost::make_shared<feature_list_config_impl_t>(dir);
    }
    if (with_choice) {
      active = boost::make_shared<active_features_config_impl_t>(dir);
    }
    m_panel = new panel_t(list, active);
    m_panel->create(m_frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_panel, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
    ASSERT_NE(m_panel->m_feature_list_wnd, nullptr);
    ASSERT_NE(m_panel->m_mesage_panel, nullptr);
    ASSERT_NE(m_panel->m_experimental_status, nullptr);
    ASSERT_NE(m_panel->m_experimental_descr, nullptr);
  }

  std::vector<wxCheckBox*> boxes() const {
    std::vector<wxCheckBox*> result;
    for (wxWindow* child : m_panel->m_feature_list_wnd->GetChildren()) {
      if (auto* box = dynamic_cast<wxCheckBox*>(child)) {
        result.push_back(box);
      }
    }
    return result;
  }
  std::vector<std::string> labels() const {
    std::vector<std::string> result;
    for (wxCheckBox* box : boxes()) {
      result.push_back(box->GetLabel().utf8_string());
    }
    return result;
  }

  // Ticks or unticks a box as a click does: the value changes, then the event comes.
  void click_box(wxCheckBox* box) {
    box->SetValue(!box->GetValue());
    wxCommandEvent event(wxEVT_CHECKBOX, box->GetId());
    event.SetEventObject(box);
    event.SetInt(box->GetValue() ? 1 : 0);
    box->GetEventHandler()->ProcessEvent(event);
    gui_test::pump();
  }

  // Presses OK and answers the restart prompt with Yes (its OK button) or No.
  void press_ok(bool yes) {
    m_prompts = 0;
    gui_test::on_next_modal([this, yes](wxDialog& shown) {
      ++m_prompts;
      m_prompt_title = text_in(shown, "m_main_instructions");
      m_prompt_text = text_in(shown, "m_supplemental_instructions");
      gui_test::click(&shown, yes ? "m_btn_ok" : "m_btn_cancel");
    });
    gui_test::click(m_panel, "m_btn_ok");
    gui_test::pump();
  }
  static std::string text_in(wxWindow& root, const char* name) {
    auto* text = dynamic_cast<wxStaticText*>(gui_test::find_named(&root, name));
    std::string shown = text ? text->GetLabelText().utf8_string() : std::string();
    std::replace(shown.begin(), shown.end(), '\n', ' ');  // undo the window's wrapping
    return shown;
  }

  bool shows_off() const { return m_panel->m_mesage_panel->GetBackgroundColour() == off_background; }
  bool shows_on() const { return m_panel->m_mesage_panel->GetBackgroundColour() == on_background; }

  temp_dir_t m_dir;
  wxFrame* m_frame = nullptr;
  panel_t* m_panel = nullptr;
  int m_prompts = 0;
  std::string m_prompt_title;
  std::string m_prompt_text;
};

wxColour half_way(const wxColour& to) {
  return plaxi1::color_helpers_t::make_gradient(
      plaxi1::ui_settings_t::get()->get_color(plaxi1::color_banner_text), to, 0.5);
}

TEST_F(experimental_options_panel_test, the_list_gives_one_box_per_feature_with_its_tooltip) {
  write_list(
      {{"TAM_FAST", "Faster search", "Uses the new index."}, {"TAM_DARK", "Dark charts", "Night mode."}});
  open();
  EXPECT_EQ(labels(), (std::vector<std::string>{"Faster search", "Dark charts"}));
  const plaxi1::wxCustomTooltip* tip = plaxi1::GetTooltip(boxes().at(0));
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(tip->GetText(), "Uses the new index.");
  for (wxCheckBox* box : boxes()) {
    EXPECT_FALSE(box->GetValue());
  }
  EXPECT_TRUE(shows_off());
}

TEST_F(experimental_options_panel_test, empty_list_shows_off_colours_and_ok_still_prompts) {
  write_list({});
  open();
  EXPECT_TRUE(boxes().empty());
  EXPECT_TRUE(shows_off());
  EXPECT_EQ(m_panel->m_experimental_status->GetForegroundColour(), half_way(off_background));
  EXPECT_EQ(m_panel->m_experimental_descr->GetForegroundColour(),
            plaxi1::ui_settings_t::get()->get_color(plaxi1::color_banner_text));
  EXPECT_EQ(m_panel->m_feature_list_wnd->GetBackgroundColour(),
            plaxi1::ui_settings_t::get()->get_color(plaxi1::color_list));
  press_ok(true);
  EXPECT_EQ(m_prompts, 1);
  EXPECT_TRUE(m_panel->is_restart_requested());
  EXPECT_TRUE(std::ifstream(choice_file()).good()) << "the choice is written even when empty";
}

TEST_F(experimental_options_panel_test, no_list_file_gives_an_empty_panel) {
  open();
  EXPECT_TRUE(boxes().empty());
  EXPECT_TRUE(shows_off());
}

TEST_F(experimental_options_panel_test, the_prompt_asks_in_the_catalog_texts) {
  write_list({{"TAM_FAST", "Faster search", ""}});
  open();
  press_ok(false);
  EXPECT_EQ(m_prompt_title, tamsel3::translate_message("panel.experimental.restart_prompt_title",
                                                       ZANDOR_2_16::generic::varg_list()));
  EXPECT_EQ(m_prompt_text, tamsel3::translate_message("panel.experimental.restart_prompt_description",
                                                      ZANDOR_2_16::generic::varg_list()));
  EXPECT_EQ(m_prompt_title.find("panel."), std::string::npos) << "the key is missing from the catalog";
}

TEST_F(experimental_options_panel_test, features_without_name_or_variable_are_dropped) {
  write_list({{"TAM_BARE", "", "no name"}, {"", "No variable", ""}, {"TAM_FAST", "Faster search", ""}});
  open();
  EXPECT_EQ(labels(), std::vector<std::string>{"Faster search"});
  EXPECT_EQ(m_panel->m_features.size(), 1u);
}

TEST_F(experimental_options_panel_test, equal_features_give_one_box_and_a_shared_name_two) {
  write_list({{"TAM_FAST", "Faster search", "d"},
              {"TAM_FAST", "Faster search", "d"},
              {"TAM_FAST2", "Faster search", "d"}});
  open();
  ASSERT_EQ(boxes().size(), 2u);
  click_box(boxes().at(1));  // the second box of that name sets the first record
  EXPECT_TRUE(m_panel->m_features.at(0).enabled);
  EXPECT_FALSE(m_panel->m_features.at(1).enabled);
  press_ok(false);
  EXPECT_TRUE(turned_on("TAM_FAST"));
  EXPECT_FALSE(turned_on("TAM_FAST2"));
}

TEST_F(experimental_options_panel_test, ticking_turns_the_status_on_and_unticking_the_last_off) {
  write_list({{"TAM_FAST", "Faster search", ""}, {"TAM_DARK", "Dark charts", ""}});
  open();
  ASSERT_EQ(boxes().size(), 2u);
  click_box(boxes()[0]);
  EXPECT_TRUE(shows_on());
  EXPECT_EQ(m_panel->m_experimental_status->GetForegroundColour(), half_way(on_background));
  click_box(boxes()[1]);
  click_box(boxes()[0]);
  EXPECT_TRUE(shows_on()) << "one is still on";
  click_box(boxes()[1]);
  EXPECT_TRUE(shows_off());
  EXPECT_EQ(m_panel->m_experimental_status->GetForegroundColour(), half_way(off_background));
  EXPECT_FALSE(m_panel->is_experimental_on());
}

TEST_F(experimental_options_panel_test, a_feature_on_opens_unticked_with_on_colours_and_ok_keeps_it) {
  write_list({{"TAM_FAST", "Faster search", ""}, {"TAM_DARK", "Dark charts", ""}});
  write_choice({"TAM_DARK"});
  open();
  ASSERT_EQ(boxes().size(), 2u);
  EXPECT_FALSE(boxes()[1]->GetValue()) << "the records are set, not the boxes";
  EXPECT_TRUE(shows_on());
  press_ok(false);
  EXPECT_TRUE(turned_on("TAM_DARK"));
  EXPECT_FALSE(turned_on("TAM_FAST"));
}

TEST_F(experimental_options_panel_test, no_at_the_prompt_still_writes_the_choice) {
  write_list({{"TAM_FAST", "Faster search", ""}});
  open();
  click_box(boxes().at(0));
  press_ok(false);
  EXPECT_EQ(m_prompts, 1);
  EXPECT_FALSE(m_panel->is_restart_requested());
  EXPECT_TRUE(turned_on("TAM_FAST"));
}

TEST_F(experimental_options_panel_test, unticking_and_ok_turns_a_feature_off_in_the_file) {
  write_list({{"TAM_FAST", "Faster search", ""}});
  write_choice({"TAM_FAST"});
  open();
  click_box(boxes().at(0));  // ticks the unticked box: on, as it was
  click_box(boxes().at(0));
  press_ok(true);
  EXPECT_TRUE(m_panel->is_restart_requested());
  EXPECT_FALSE(turned_on("TAM_FAST"));
}

TEST_F(experimental_options_panel_test, a_record_added_enabled_shows_ticked) {
  open();
  m_panel->add_feature(experimental_options_panel_t::feature_info_t{"TAM_NEW", "New layout", "Try it", true});
  ASSERT_EQ(boxes().size(), 1u);
  EXPECT_TRUE(boxes()[0]->GetValue());
  EXPECT_TRUE(shows_on());
  m_panel->add_feature(
      experimental_options_panel_t::feature_info_t{"TAM_NEW", "New layout", "Try it", false});
  EXPECT_EQ(boxes().size(), 1u) << "equal whatever `enabled` says";
}

TEST_F(experimental_options_panel_test, without_configs_the_panel_works_and_saves_nothing) {
  open(false);
  m_panel->add_feature(tamsel3::feature_list_config_t::feature_info_t{"TAM_FAST", "Faster search", ""});
  ASSERT_EQ(boxes().size(), 1u);
  click_box(boxes()[0]);
  EXPECT_TRUE(shows_on());
  press_ok(true);
  EXPECT_EQ(m_prompts, 1);
  EXPECT_TRUE(m_panel->is_restart_requested());
  EXPECT_TRUE(m_dir.names().empty());
}

TEST_F(experimental_options_panel_test, without_a_list_object_ok_keeps_the_choice_file) {
  expect_ok_keeps_the_choice(false);
}

TEST_F(experimental_options_panel_test, a_missing_list_file_keeps_the_choice_file) {
  expect_ok_keeps_the_choice();
}

// A folder in the file's place can't be read, for root either.
TEST_F(experimental_options_panel_test, an_unreadable_list_file_keeps_the_choice_file) {
  ASSERT_EQ(::mkdir(list_file().c_str(), 0700), 0);
  expect_ok_keeps_the_choice();
}

TEST_F(experimental_options_panel_test, a_corrupt_list_file_keeps_the_choice_file) {
  m_dir.write("evaluation_features.cfg", "<?xml version=\"1.0\"?>\n<bag><bag name=\"features\"><bag na");
  expect_ok_keeps_the_choice();
}

TEST_F(experimental_options_panel_test, a_list_read_without_features_still_writes_the_choice) {
  write_list({});
  write_choice({"TAM_DARK"});
  open();
  press_ok(false);
  EXPECT_FALSE(turned_on("TAM_DARK"));
  active_features_config_impl_t active{korvat2::path_t(m_dir.path())};
  EXPECT_TRUE(active.load()) << "an empty choice was written";
}

// Relative luminance and contrast ratio by the WCAG 2 formulas.
double relative_luminance(const wxColour& colour) {
  auto channel = [](unsigned char value) {
    const double c = value / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(colour.Red()) + 0.7152 * channel(colour.Green()) + 0.0722 * channel(colour.Blue());
}
double contrast(const wxColour& a, const wxColour& b) {
  const double la = relative_luminance(a);
  const double lb = relative_luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// Run by the theme tests below in a process started with GTK_THEME set, as GTK reads it once.
// The title is large text (3:1), the description normal text (4.5:1), in both states.
TEST_F(experimental_options_panel_test, DISABLED_banner_reads_well_in_this_theme) {
  const char* theme = std::getenv("GTK_THEME");
  const wxColour window = plaxi1::ui_settings_t::get()->get_color(plaxi1::color_window);
  if (theme && std::string(theme).find(":dark") != std::string::npos) {
    ASSERT_LT(relative_luminance(window), 0.2) << "the dark theme wasn't applied";
  } else {
    ASSERT_GT(relative_luminance(window), 0.8) << "a light theme wasn't applied";
  }
  write_list({{"TAM_FAST", "Faster search", ""}});
  open();
  for (bool on : {false, true}) {
    if (on) {
      click_box(boxes().at(0));
    }
    ASSERT_EQ(m_panel->is_experimental_on(), on);
    const wxColour banner = m_panel->m_mesage_panel->GetBackgroundColour();
    const wxColour title = m_panel->m_experimental_status->GetForegroundColour();
    const wxColour text = m_panel->m_experimental_descr->GetForegroundColour();
    EXPECT_GE(contrast(title, banner), 3.0) << "title " << title.GetAsString(wxC2S_HTML_SYNTAX) << " on "
                                            << banner.GetAsString(wxC2S_HTML_SYNTAX);
    EXPECT_GE(contrast(text, banner), 4.5)
        << "text " << text.GetAsString(wxC2S_HTML_SYNTAX) << " on " << banner.GetAsString(wxC2S_HTML_SYNTAX);
  }
}

class experimental_options_panel_theme_test : public ::testing::TestWithParam<const char*> {};

TEST_P(experimental_options_panel_theme_test, the_banner_reads_well) {
  EXPECT_EQ(test_support::run_test_in_own_process(
                "experimental_options_panel_test.DISABLED_banner_reads_well_in_this_theme",
                {{"GTK_THEME", std::string(GetParam())}}),
            0);
}

INSTANTIATE_TEST_SUITE_P(themes, experimental_options_panel_theme_test,
                         ::testing::Values("Adwaita", "Adwaita:dark", "HighContrast"));

TEST_F(experimental_options_panel_test, a_second_load_adds_no_boxes) {
  write_list({{"TAM_FAST", "Faster search", ""}});
  open();
  m_panel->load_settings();
  EXPECT_EQ(boxes().size(), 1u);
}

}  // namespace
