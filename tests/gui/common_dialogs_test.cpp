// The common dialog wrappers with the toolkit's real dialogs, answered through a modal
// dialog hook: wx asks the hook before it runs a dialog, and an answer other than
// wxID_NONE becomes ShowModal's result without the dialog being shown. What wxGTK takes
// from such an answer, found by these tests:
// - wxFileDialog: SetPath goes to the native chooser, which takes it in only once the
//   event loop ran; from then on GetPath gives it back, so the hook waits for that.
// - wxDirDialog: its SetPath only moves the native chooser, and GetPath answers what the
//   native dialog would store on accept. The hook stores the answer there itself. The
//   starting folder goes to the native chooser alone and can't be read back.
// - wxColourDialog: after OK the colour is read back from the native chooser, which holds
//   the starting colour; what the chooser doesn't hold (the full-chooser flag) comes back
//   as the hook left it.
// - wxFontDialog: the font data comes back as the hook left it.
#include "fixtures.h"
#include "gui_test.h"
#include "modal_answer.h"

#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>
#include <tamsel3/common_dialogs.h>

#include <gtest/gtest.h>
#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>
#include <wx/frame.h>
#include <wx/modalhook.h>
#include <wx/textctrl.h>

#include <string>
#include <vector>

#include <functional>
#include <string>
#include <typeinfo>
#include <utility>

namespace {

using gui_test::answer_t;
using gui_test::choose_file;

std::string utf8(const wxString& text) { return text.utf8_string(); }

// Makes `path` the folder dialog's answer: wxGTK keeps it in the base class on accept.
void choose_folder(wxDirDialog& dialog, const std::string& path) {
  dialog.wxDirDialogBase::SetPath(wxString::FromUTF8(path));
}

// Resources without a catalog for the life of the object; the default locations and
// catalogs come back afterwards.
class catalogless_t : public quern2::IProductLocations {
 public:
  catalogless_t() {
    quern2::IProductLocations::set(this);
    quern2::reloadMessageCatalogs();
  }
  ~catalogless_t() override {
    quern2::IProductLocations::set(nullptr);
    quern2::reloadMessageCatalogs();
  }
  const char* getResourceDirectory() const override { return m_folder.path().c_str(); }
  const char* getProductText(int) const override { return ""; }
  const char* getFeaturesDirectory() const override { return ""; }
  const char* getProductTag() const override { return "tam"; }
  int getProductGeneration() const override { return 12; }

 private:
  test_support::temp_dir_t m_folder;
};

// The default titles are kept for the process once read while the catalog is loaded: this
// test has to be their first need. CTest runs every test in a process of its own, and in a
// run of the whole program no earlier test opens these dialogs.
TEST(common_dialogs_test, missing_catalog_leaves_the_default_titles_empty) {
  catalogless_t no_catalog;
  ASSERT_EQ(quern2::getMessageCatalog("tamsel"), nullptr);
  std::string path = "/a/b.txt";
  answer_t<wxFileDialog> file_answer([](wxFileDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetMessage()), "");
    return wxID_CANCEL;
  });
  EXPECT_FALSE(tamsel3::file_dlg(nullptr, true, path, "", "", "", ""));
  EXPECT_EQ(file_answer.m_calls, 1);

  answer_t<wxDirDialog> folder_answer([](wxDirDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetMessage()), "");
    return wxID_CANCEL;
  });
  EXPECT_FALSE(tamsel3::folder_dlg(nullptr, path, ""));
  EXPECT_EQ(folder_answer.m_calls, 1);
}

TEST(common_dialogs_test, dialogs_over_a_closing_window_have_another_parent) {
  auto* closing = new wxFrame(nullptr, wxID_ANY, "closing");
  closing->Destroy();
  std::vector<wxWindow*> parents;
  auto note_parent = [&parents](wxDialog& dialog) {
    parents.push_back(dialog.GetParent());
    return wxID_CANCEL;
  };
  std::string path = "/tmp/report.txt";
  {
    answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) { return note_parent(dialog); });
    EXPECT_FALSE(tamsel3::file_dlg(closing, true, path, "", "", "", ""));
  }
  {
    answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) { return note_parent(dialog); });
    EXPECT_FALSE(tamsel3::folder_dlg(closing, path, ""));
  }
  ASSERT_EQ(parents.size(), 2u);
  EXPECT_NE(parents[0], closing);
  EXPECT_NE(parents[1], closing);
  gui_test::pump();
}

TEST(common_dialogs_test, file_dialog_starts_from_path_filter_and_extension) {
  std::string path = "/a/b.txt";
  answer_t<wxFileDialog> answer([](wxFileDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetDirectory()), "/a/");
    EXPECT_EQ(utf8(dialog.GetFilename()), "b.txt");
    EXPECT_EQ(utf8(dialog.GetWildcard()), "Text|*.txt|Log|*.log");
    EXPECT_EQ(dialog.GetFilterIndex(), 1);
    EXPECT_EQ(utf8(dialog.GetMessage()), "Pick a log");
    EXPECT_EQ(dialog.GetWindowStyleFlag() & (wxFD_OPEN | wxFD_SAVE), wxFD_OPEN);
    return wxID_CANCEL;
  });
  tamsel3::file_dlg(nullptr, true, path, "log", "Text\n*.txt\nLog\n*.log\n", "Pick a log", "");
  EXPECT_EQ(answer.m_calls, 1);
}

TEST(common_dialogs_test, file_dialog_for_saving_with_given_folder_and_default_title) {
  std::string path = "/a/b.txt";
  answer_t<wxFileDialog> answer([](wxFileDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetDirectory()), "/elsewhere");
    EXPECT_EQ(utf8(dialog.GetFilename()), "b.txt");
    EXPECT_EQ(utf8(dialog.GetWildcard()), "");
    EXPECT_EQ(utf8(dialog.GetMessage()), "Choose a File");
    EXPECT_EQ(dialog.GetWindowStyleFlag() & (wxFD_OPEN | wxFD_SAVE), wxFD_SAVE);
    return wxID_CANCEL;
  });
  tamsel3::file_dlg(nullptr, false, path, "txt", "", "", "/elsewhere");
  EXPECT_EQ(answer.m_calls, 1);
}

TEST(common_dialogs_test, confirmed_open_dialog_gives_the_chosen_path) {
  test_support::temp_dir_t folder;
  const std::string chosen = folder.write("chosen.log", "log");
  std::string path = folder.file("start.txt");
  answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) {
    choose_file(dialog, chosen);
    return wxID_OK;
  });
  EXPECT_TRUE(tamsel3::file_dlg(nullptr, true, path, "txt", "Text\n*.txt\nAll\n*\n", "", ""));
  EXPECT_EQ(path, chosen);
}

TEST(common_dialogs_test, confirmed_save_dialog_gives_the_new_name) {
  test_support::temp_dir_t folder;
  const std::string chosen = folder.file("new.txt");
  std::string path = folder.file("old.txt");
  answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) {
    choose_file(dialog, chosen);
    return wxID_OK;
  });
  EXPECT_TRUE(tamsel3::file_dlg(nullptr, false, path, "", "", "Save as", ""));
  EXPECT_EQ(path, chosen);
}

TEST(common_dialogs_test, file_dialog_not_ended_by_ok_leaves_the_path) {
  test_support::temp_dir_t folder;
  const std::string other = folder.write("other.txt", "text");
  for (const int result : {wxID_CANCEL, wxID_YES}) {
    std::string path = folder.file("start.txt");
    answer_t<wxFileDialog> answer([&](wxFileDialog& dialog) {
      choose_file(dialog, other);
      return result;
    });
    EXPECT_FALSE(tamsel3::file_dlg(nullptr, true, path, "", "", "", "")) << "result " << result;
    EXPECT_EQ(path, folder.file("start.txt")) << "result " << result;
  }
}

TEST(common_dialogs_test, folder_dialog_has_the_default_title_and_plain_style) {
  std::string path = "/tmp";
  answer_t<wxDirDialog> answer([](wxDirDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetMessage()), "Choose a Folder");
    EXPECT_EQ(dialog.GetWindowStyleFlag(), 0);
    return wxID_CANCEL;
  });
  tamsel3::folder_dlg(nullptr, path, "");
  EXPECT_EQ(answer.m_calls, 1);
}

TEST(common_dialogs_test, confirmed_folder_dialog_gives_the_chosen_folder) {
  test_support::temp_dir_t folder;
  std::string path = "/tmp";
  answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
    EXPECT_EQ(utf8(dialog.GetMessage()), "Where to");
    choose_folder(dialog, folder.path());
    return wxID_OK;
  });
  EXPECT_TRUE(tamsel3::folder_dlg(nullptr, path, "Where to"));
  EXPECT_EQ(path, folder.path());
}

TEST(common_dialogs_test, cancelled_folder_dialog_leaves_the_path) {
  test_support::temp_dir_t folder;
  std::string path = "/tmp";
  answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
    choose_folder(dialog, folder.path());
    return wxID_CANCEL;
  });
  EXPECT_FALSE(tamsel3::folder_dlg(nullptr, path, ""));
  EXPECT_EQ(path, "/tmp");
}

// A frame with a text field that counts its text events.
struct field_window_t {
  field_window_t() {
    m_frame = new wxFrame(nullptr, wxID_ANY, "browse");  // destroyed after each test
    m_field = new wxTextCtrl(m_frame, wxID_ANY, "/tmp");
    m_field->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { ++m_text_events; });
    // wx makes a dialog the child only of a parent on screen.
    m_frame->Show();
    EXPECT_TRUE(gui_test::wait_until_shown(m_frame));
  }
  wxFrame* m_frame;
  wxTextCtrl* m_field;
  int m_text_events = 0;
};

TEST(common_dialogs_test, browse_folder_confirmed_sets_the_field_and_sends_its_event) {
  test_support::temp_dir_t folder;
  field_window_t window;
  answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
    EXPECT_EQ(dialog.GetParent(), window.m_frame);
    EXPECT_EQ(utf8(dialog.GetMessage()), "Choose a Folder");
    choose_folder(dialog, folder.path());
    return wxID_OK;
  });
  tamsel3::process_browse_folder(window.m_frame, window.m_field);
  EXPECT_EQ(answer.m_calls, 1);
  EXPECT_EQ(utf8(window.m_field->GetValue()), folder.path());
  EXPECT_EQ(window.m_text_events, 1);
}

TEST(common_dialogs_test, browse_folder_cancelled_leaves_the_field) {
  test_support::temp_dir_t folder;
  field_window_t window;
  answer_t<wxDirDialog> answer([&](wxDirDialog& dialog) {
    choose_folder(dialog, folder.path());
    return wxID_CANCEL;
  });
  tamsel3::process_browse_folder(window.m_frame, window.m_field);
  EXPECT_EQ(answer.m_calls, 1);
  EXPECT_EQ(utf8(window.m_field->GetValue()), "/tmp");
  EXPECT_EQ(window.m_text_events, 0);
}

TEST(common_dialogs_test, browse_folder_ignores_a_null_field) {
  answer_t<wxDirDialog> answer([](wxDirDialog&) { return wxID_OK; });
  tamsel3::process_browse_folder(nullptr, nullptr);
  EXPECT_EQ(answer.m_calls, 0);
}

wxFontData start_font_data() {
  wxFontData data;
  data.SetInitialFont(wxFont(wxFontInfo(10).FaceName("Sans")));
  data.SetColour(*wxBLACK);
  return data;
}

// Puts a choice into the font dialog's data, as the user would.
void choose_font(wxFontDialog& dialog) {
  EXPECT_EQ(dialog.GetFontData().GetInitialFont().GetPointSize(), 10);
  dialog.GetFontData().SetChosenFont(wxFont(wxFontInfo(23).FaceName("Serif").Bold()));
  dialog.GetFontData().SetColour(*wxRED);
}

TEST(common_dialogs_test, confirmed_font_dialog_copies_its_data_back) {
  wxFontData data = start_font_data();
  answer_t<wxFontDialog> answer([](wxFontDialog& dialog) {
    choose_font(dialog);
    return wxID_OK;
  });
  EXPECT_TRUE(tamsel3::font_dlg(nullptr, data));
  ASSERT_TRUE(data.GetChosenFont().IsOk());
  EXPECT_EQ(data.GetChosenFont().GetPointSize(), 23);
  EXPECT_EQ(data.GetChosenFont().GetWeight(), wxFONTWEIGHT_BOLD);
  EXPECT_EQ(data.GetColour(), *wxRED);
}

TEST(common_dialogs_test, cancelled_font_dialog_leaves_the_data) {
  wxFontData data = start_font_data();
  answer_t<wxFontDialog> answer([](wxFontDialog& dialog) {
    choose_font(dialog);
    return wxID_CANCEL;
  });
  EXPECT_FALSE(tamsel3::font_dlg(nullptr, data));
  EXPECT_FALSE(data.GetChosenFont().IsOk());
  EXPECT_EQ(data.GetInitialFont().GetPointSize(), 10);
  EXPECT_EQ(data.GetColour(), *wxBLACK);
}

wxColourData start_colour_data() {
  wxColourData data;
  data.SetColour(wxColour(10, 20, 30));
  data.SetCustomColour(3, *wxBLUE);
  return data;
}

// Puts a choice into the colour dialog's data; only the full-chooser flag survives wxGTK's
// read-back of the native chooser.
void choose_colour(wxColourDialog& dialog) {
  EXPECT_EQ(dialog.GetColourData().GetColour(), wxColour(10, 20, 30));
  dialog.GetColourData().SetColour(wxColour(12, 34, 56));
  dialog.GetColourData().SetChooseFull(true);
}

TEST(common_dialogs_test, confirmed_colour_dialog_copies_its_data_back) {
  wxColourData data = start_colour_data();
  answer_t<wxColourDialog> answer([](wxColourDialog& dialog) {
    choose_colour(dialog);
    return wxID_OK;
  });
  EXPECT_TRUE(tamsel3::color_dlg(nullptr, data));
  EXPECT_TRUE(data.GetChooseFull());
  EXPECT_EQ(data.GetColour(), wxColour(10, 20, 30));  // what the native chooser held
}

TEST(common_dialogs_test, cancelled_colour_dialog_leaves_the_data) {
  wxColourData data = start_colour_data();
  answer_t<wxColourDialog> answer([](wxColourDialog& dialog) {
    choose_colour(dialog);
    return wxID_CANCEL;
  });
  EXPECT_FALSE(tamsel3::color_dlg(nullptr, data));
  EXPECT_FALSE(data.GetChooseFull());
  EXPECT_EQ(data.GetColour(), wxColour(10, 20, 30));
  EXPECT_EQ(data.GetCustomColour(3), *wxBLUE);
  EXPECT_FALSE(data.GetCustomColour(0).IsOk());
}

}  // namespace
