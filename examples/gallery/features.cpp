// The experimental features page as a host shows it: in a preferences dialog over a list of
// several features, with nothing on, with one on from an earlier choice, and with one ticked
// by the user. OK asks whether to restart; the gallery then tells what the host would do.
#include "entries.h"
#include "samples.h"

#include <korvat2/bag_file.h>
#include <plaxi1/screenshot.h>
#include <tamsel3/experimental_options_panel.h>
#include <tamsel3/feature_config.h>
#include <tamsel3/message_window.h>

#include <wx/checkbox.h>
#include <boost/make_shared.hpp>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace gallery {
namespace {

using tamsel3::active_features_config_impl_t;
using tamsel3::experimental_options_panel_t;
using tamsel3::feature_list_config_impl_t;

struct sample_feature_t {
  const char* env_variable;
  const char* name;
  const char* description;
};

const std::vector<sample_feature_t>& sample_features() {
  static const std::vector<sample_feature_t> features = {
      {"TAM_EXP_INDEXED_SEARCH", "Indexed source search",
       "Finds source files through an index built in the background instead of walking the "
       "search folders on every lookup."},
      {"TAM_EXP_PARALLEL_IMPORT", "Parallel result import",
       "Reads large result directories with several threads."},
      {"TAM_EXP_FLAME_VIEW", "Flame graph view", "Adds a flame graph tab next to the call tree."},
      {"TAM_EXP_COMPACT_RESULTS", "Compact result storage",
       "Stores new results in a compressed format. Older versions can't open them."},
  };
  return features;
}

// The list file, as an installer would put it there, and the choice file as an earlier
// session left it, in a folder of the gallery's own.
korvat2::path_t prepare_folder(const std::string& turned_on) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tamsel3-gallery-features";
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  korvat2::variant_bag_t list;
  for (const sample_feature_t& sample : sample_features()) {
    korvat2::variant_bag_t feature;
    feature.put("env_variable", std::string(sample.env_variable));
    feature.put("name", std::string(sample.name));
    feature.put("description", std::string(sample.description));
    list.add_variant_bag("feature", feature);
  }
  korvat2::variant_bag_t bag;
  bag.add_variant_bag("features", list);
  korvat2::save_variant_bag(bag, (folder / "evaluation_features.cfg").string().c_str());
  const korvat2::path_t dir(folder.string());
  active_features_config_impl_t choice(dir);
  choice.turn_on(turned_on);
  choice.save();
  return dir;
}

experimental_options_panel_t* make_page(const std::string& turned_on) {
  const korvat2::path_t dir = prepare_folder(turned_on);
  return new experimental_options_panel_t(boost::make_shared<feature_list_config_impl_t>(dir),
                                          boost::make_shared<active_features_config_impl_t>(dir));
}

// What the host does after OK: here it only says so.
void report_restart(const experimental_options_panel_t& page, wxWindow* parent) {
  const bool restart = page.is_restart_requested();
  std::cout << "restart requested: " << (restart ? "yes" : "no") << std::endl;
  tamsel3::show_msg_box(restart ? "The host restarts now." : "The host goes on without a restart.",
                        "is_restart_requested() is " + std::string(restart ? "true" : "false") +
                            ". The choice was saved either way.",
                        tamsel3::message_window_t::icon_info, parent);
}

// Ticks the box of `name` as the user would.
void tick(wxWindow* dialog, const std::string& name) {
  for (wxWindow* window : dialog->GetChildren()) {
    if (auto* box = dynamic_cast<wxCheckBox*>(window); box && box->GetLabel().utf8_string() == name) {
      box->SetValue(true);
      wxCommandEvent event(wxEVT_CHECKBOX, box->GetId());
      event.SetEventObject(box);
      event.SetInt(1);
      box->GetEventHandler()->ProcessEvent(event);
    }
    tick(window, name);
  }
}

entry_t page_entry(std::string id, std::string title, std::string description, std::string turned_on,
                   std::string ticked) {
  return {std::move(id), std::move(title), std::move(description),
          [turned_on](wxWindow* parent) {
            experimental_options_panel_t* page = make_page(turned_on);
            preferences_dialog_t dialog(parent, page, 520);
            if (dialog.ShowModal() == wxID_OK) {
              report_restart(*page, parent);
            }
          },
          [turned_on, ticked](wxWindow* parent) -> wxTopLevelWindow* {
            auto* dialog = new preferences_dialog_t(parent, make_page(turned_on), 520);
            dialog->Show();
            if (!ticked.empty()) {
              tick(dialog, ticked);
              // The theme draws the tick in over a moment: let the picture show the end.
              plaxi1::wait_until([] { return false; }, 350);
            }
            plaxi1::wait_until_painted(dialog, 5000);
            return dialog;
          }};
}

}  // namespace

std::vector<entry_t> feature_entries() {
  return {
      page_entry("experimental_features_off", "Experimental features: none on",
                 "Four features from the list file and none turned on: the banner is blue. OK asks "
                 "whether to restart and saves the choice either way.",
                 "", ""),
      page_entry("experimental_features_on", "Experimental features: one on",
                 "An earlier choice turned on the flame graph view: the banner is red, while the boxes "
                 "open unticked. OK without a click keeps the feature on.",
                 "TAM_EXP_FLAME_VIEW", ""),
      page_entry("experimental_features_ticked", "Experimental features: ticked by the user",
                 "Nothing on yet, and the user ticks the indexed search: the banner turns red at once.", "",
                 "Indexed source search"),
  };
}

}  // namespace gallery
