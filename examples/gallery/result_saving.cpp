// The Result saving page as a host shows it: in a preferences dialog with every group, with
// a template in error and after its correction, and with only the name group.
#include "entries.h"
#include "samples.h"

#include <plaxi1/screenshot.h>
#include <plaxi1/tooltip.h>
#include <tamsel3/result_saving_pp.h>

#include <wx/textctrl.h>
#include <wx/xrc/xmlres.h>

#include <iostream>

namespace gallery {
namespace {

using tamsel3::result_saving_data_t;
using tamsel3::result_saving_pp_t;

constexpr int all_groups = 31;

result_saving_data_t sample_data() {
  result_saving_data_t data(static_cast<result_saving_data_t::temp_storing_t>(0),
                            result_saving_data_t::proj_storing_on_disk, true, "r@@@{at}",
                            "/tmp/tamsel-results");
  data.set_proj_default_folder("/home/ann/projects/render-pipeline/results");
  return data;
}

// The page reports what OK stored, as a host would take it.
class reporting_page_t : public result_saving_pp_t {
 public:
  using result_saving_pp_t::result_saving_pp_t;
  void save_settings() override {
    result_saving_pp_t::save_settings();
    const result_saving_data_t data = get_data();
    std::cout << "stored template '" << data.get_name_template() << "', folder '" << data.get_folder()
              << "', with project " << (data.get_proj_storing() == 0 ? "yes" : "no") << std::endl;
  }
};

wxTextCtrl* template_field(wxWindow* dialog) { return XRCCTRL(*dialog, "m_textCtrl14", wxTextCtrl); }

// Types into the template field as a user would and lets the page judge it.
void type_into_template(wxWindow* dialog, const std::string& text) {
  if (wxTextCtrl* field = template_field(dialog)) {
    field->SetInsertionPointEnd();
    field->WriteText(wxString::FromUTF8(text));
    plaxi1::pump_events();
    // The theme fades a field's new text colour in over 200 ms: let the picture show the end.
    plaxi1::wait_until([] { return false; }, 350);
  }
}

// A template without a number, typed into an emptied field.
void type_bad_template(wxWindow* dialog) {
  if (wxTextCtrl* field = template_field(dialog)) {
    field->Clear();
    type_into_template(dialog, "render results");
  }
}

wxTopLevelWindow* show_page(wxWindow* parent, int flags) {
  auto* dialog = new preferences_dialog_t(parent, new reporting_page_t(sample_data(), flags), 560);
  dialog->Show();
  plaxi1::wait_until_painted(dialog, 5000);
  return dialog;
}

entry_t page_entry(std::string id, std::string title, std::string description, int flags,
                   std::function<void(wxWindow*)> act) {
  return {std::move(id), std::move(title), std::move(description),
          [flags](wxWindow* parent) {
            preferences_dialog_t dialog(parent, new reporting_page_t(sample_data(), flags), 560);
            dialog.ShowModal();
          },
          [flags, act](wxWindow* parent) -> wxTopLevelWindow* {
            wxTopLevelWindow* dialog = show_page(parent, flags);
            if (act) {
              act(dialog);
            }
            return dialog;
          }};
}

}  // namespace

std::vector<entry_t> result_saving_entries() {
  return {
      page_entry("result_saving_page", "Result saving (page in a dialog)",
                 "Name template of result folders and where results go. Forbidden characters and stray "
                 "\"@\" vanish as they are typed; OK mends what is left and warns. Browse picks the folder.",
                 all_groups, nullptr),
      page_entry(
          "result_saving_template_error", "Result saving: template in error",
          "A template without a run of \"@\": the field turns red and its tooltip says what to change.",
          all_groups,
          [](wxWindow* dialog) {
            type_bad_template(dialog);
            if (plaxi1::wxCustomTooltip* tip = plaxi1::GetTooltip(template_field(dialog))) {
              tip->ShowNow();
            }
          }),
      page_entry("result_saving_corrected", "Result saving: template corrected",
                 "The same template once a run of \"@\" was added: plain again, without a tooltip.",
                 all_groups,
                 [](wxWindow* dialog) {
                   type_bad_template(dialog);
                   type_into_template(dialog, " @@@");
                 }),
      page_entry("result_saving_name_only", "Result saving: name only",
                 "The page with only the name group, as a host shows it where the storage is fixed.",
                 result_saving_pp_t::show_name, nullptr),
  };
}

}  // namespace gallery
