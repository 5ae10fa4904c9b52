// Dialogs and panels from the layouts of the resource archive, translated at load.
#include <plaxi1/resource_loader.h>

#include <quern2/catalog_registry.h>
#include <zandor/catalog.h>

#include "fixtures.h"
#include "gui_test.h"
#include "log_capture.h"

#include <gtest/gtest.h>
#include <log4cplus/loglevel.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/log.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tooltip.h>
#include <wx/xrc/xmlres.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using plaxi1::resource_loader_t;

std::string archive_layouts() { return gui_test::resource_dir() + "/tamsel3.dat#zip:tamsel.xrc"; }

// The English text of a key of the library's catalog, read past the loader.
std::string text_of(const std::string& key) {
  static const std::shared_ptr<const ZANDOR_2_16::i18n::catalog_t> catalog = [] {
    std::string error;
    auto loaded = ZANDOR_2_16::i18n::catalog_t::load_po_file(
        "tamsel", "en", gui_test::resource_dir() + "/catalogs/tamsel/en.po", error);
    EXPECT_TRUE(loaded) << error;
    return loaded;
  }();
  return catalog && catalog->has_message(key) ? catalog->message(key).text() : "(no text for " + key + ")";
}

std::string label_of(const wxWindow* window) {
  return window ? std::string(window->GetLabel().utf8_str()) : std::string("(none)");
}

size_t shown_top_level_windows() {
  size_t count = 0;
  for (const wxWindow* window : wxTopLevelWindows) {
    count += window->IsShown();
  }
  return count;
}

size_t warnings(const test_support::log_capture_t& log) {
  size_t count = 0;
  for (const test_support::log_line_t& line : log.lines()) {
    count += line.level == log4cplus::WARN_LOG_LEVEL;
  }
  return count;
}

// Destroys a window the way wx wants, or deletes one that was never created.
struct window_destroyer_t {
  void operator()(wxWindow* window) const {
    if (window->GetHandle()) {
      window->Destroy();
    } else {
      delete window;
    }
  }
};
using dialog_ptr_t = std::unique_ptr<wxDialog, window_destroyer_t>;
using frame_ptr_t = std::unique_ptr<wxFrame, window_destroyer_t>;

class resource_loader_test : public ::testing::Test {
 protected:
  void SetUp() override { plaxi1::init_resource_handlers(); }
  void TearDown() override { gui_test::pump(); }

  // A dialog made from `object_name` of the archive's layouts, or null.
  dialog_ptr_t load_dialog(const std::string& object_name, const std::string& catalog = "tamsel") {
    dialog_ptr_t dialog(new wxDialog);
    if (!resource_loader_t(archive_layouts(), catalog).load_dialog(dialog.get(), nullptr, object_name)) {
      return nullptr;
    }
    dialog->Layout();
    return dialog;
  }
};

TEST_F(resource_loader_test, archive_layouts_can_be_read) {
  EXPECT_TRUE(resource_loader_t(archive_layouts(), "tamsel").is_ok());
}

TEST_F(resource_loader_test, loads_a_dialog_with_its_named_controls) {
  const dialog_ptr_t dialog = load_dialog("dlg.frame_test");
  ASSERT_TRUE(dialog);
  EXPECT_NE(dynamic_cast<wxButton*>(dialog->FindWindow(XRCID("m_btn_ok"))), nullptr);
  EXPECT_NE(dynamic_cast<wxButton*>(dialog->FindWindow(XRCID("m_btn_cancel"))), nullptr);
  EXPECT_NE(dynamic_cast<wxButton*>(dialog->FindWindow(XRCID("m_btn_help"))), nullptr);
  EXPECT_NE(dynamic_cast<wxTextCtrl*>(dialog->FindWindow(XRCID("m_field"))), nullptr);
  EXPECT_NE(dynamic_cast<wxStaticText*>(dialog->FindWindow(XRCID("m_text"))), nullptr);
  // Ids come from the process's one table, whoever loaded the layout.
  EXPECT_EQ(dialog->FindWindow(XRCID("m_btn_ok"))->GetId(), wxXmlResource::GetXRCID("m_btn_ok"));
  EXPECT_EQ(dialog->FindWindow(XRCID("m_btn_ok"))->GetName(), "m_btn_ok");
}

TEST_F(resource_loader_test, texts_are_translated_at_load) {
  ASSERT_EQ(text_of("frame_test.text"), "A line of text for the frame's tests.");
  const dialog_ptr_t dialog = load_dialog("dlg.frame_test");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_text"))), text_of("frame_test.text"));
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_btn_ok"))), text_of("btn.ok"));
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_btn_cancel"))), text_of("btn.cancel"));
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_btn_help"))), text_of("btn.help"));
  EXPECT_EQ(std::string(dialog->GetTitle().utf8_str()), text_of("frame_test.title"));
  EXPECT_EQ(dialog->FindWindow(XRCID("m_field"))->GetLabel(), "");
}

TEST_F(resource_loader_test, buttons_run_help_cancel_ok_from_left_to_right) {
  const dialog_ptr_t dialog = load_dialog("dlg.frame_test");
  ASSERT_TRUE(dialog);
  const wxRect help = dialog->FindWindow(XRCID("m_btn_help"))->GetRect();
  const wxRect cancel = dialog->FindWindow(XRCID("m_btn_cancel"))->GetRect();
  const wxRect ok = dialog->FindWindow(XRCID("m_btn_ok"))->GetRect();
  EXPECT_LT(help.GetRight(), cancel.GetLeft());
  EXPECT_EQ(ok.GetLeft() - cancel.GetRight() - 1, 6);
  EXPECT_EQ(help.GetTop(), ok.GetTop());
  EXPECT_EQ(cancel.GetTop(), ok.GetTop());
  // Standard margins: 12 pixels to the dialog's edges.
  const wxSize client = dialog->GetClientSize();
  EXPECT_EQ(help.GetLeft(), 12);
  EXPECT_EQ(client.GetWidth() - 1 - ok.GetRight(), 12);
  EXPECT_EQ(client.GetHeight() - 1 - ok.GetBottom(), 12);
  EXPECT_EQ(dialog->FindWindow(XRCID("m_text"))->GetPosition(), wxPoint(12, 12));
}

TEST_F(resource_loader_test, dialog_without_help_has_no_help_button) {
  const dialog_ptr_t dialog = load_dialog("dlg.no_help");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(dialog->FindWindow(XRCID("m_btn_help")), nullptr);
  const wxRect cancel = dialog->FindWindow(XRCID("m_btn_cancel"))->GetRect();
  const wxRect ok = dialog->FindWindow(XRCID("m_btn_ok"))->GetRect();
  EXPECT_EQ(ok.GetLeft() - cancel.GetRight() - 1, 6);
}

TEST_F(resource_loader_test, loads_a_panel) {
  const frame_ptr_t frame(new wxFrame(nullptr, wxID_ANY, "panel host"));
  auto* panel = new wxPanel;
  ASSERT_TRUE(
      resource_loader_t(archive_layouts(), "tamsel").load_panel(panel, frame.get(), "pref.frame_test"));
  EXPECT_EQ(panel->GetParent(), frame.get());
  EXPECT_EQ(label_of(panel->FindWindow(XRCID("m_text"))), text_of("frame_test.text"));
  EXPECT_NE(dynamic_cast<wxCheckBox*>(panel->FindWindow(XRCID("m_check"))), nullptr);
  EXPECT_EQ(label_of(panel->FindWindow(XRCID("m_check"))), text_of("frame_test.check"));
  panel->SetSize(panel->GetBestSize());
  panel->Layout();
  const wxRect help = panel->FindWindow(XRCID("m_btn_help"))->GetRect();
  const wxRect cancel = panel->FindWindow(XRCID("m_btn_cancel"))->GetRect();
  const wxRect ok = panel->FindWindow(XRCID("m_btn_ok"))->GetRect();
  EXPECT_LT(help.GetRight(), cancel.GetLeft());
  EXPECT_EQ(ok.GetLeft() - cancel.GetRight() - 1, 6);
}

TEST_F(resource_loader_test, layouts_follow_a_new_catalog_of_their_name) {
  const dialog_ptr_t english = load_dialog("dlg.frame_test");
  ASSERT_TRUE(english);
  EXPECT_EQ(label_of(english->FindWindow(XRCID("m_btn_cancel"))), text_of("btn.cancel"));
  // A host that changes the language registers or reloads the catalog; layouts loaded
  // after that speak the new language.
  quern2::registerMessageCatalog(std::make_shared<const ZANDOR_2_16::i18n::catalog_t>(
      "tamsel", "de", ZANDOR_2_16::i18n::catalog_t::messages_t{{"btn.cancel", "Abbrechen"}}));
  const dialog_ptr_t german = load_dialog("dlg.frame_test");
  ASSERT_TRUE(german);
  EXPECT_EQ(label_of(german->FindWindow(XRCID("m_btn_cancel"))), "Abbrechen");
  EXPECT_EQ(label_of(german->FindWindow(XRCID("m_btn_ok"))), "btn.ok");
  quern2::reloadMessageCatalogs();
  const dialog_ptr_t again = load_dialog("dlg.frame_test");
  ASSERT_TRUE(again);
  EXPECT_EQ(label_of(again->FindWindow(XRCID("m_btn_cancel"))), text_of("btn.cancel"));
}

TEST_F(resource_loader_test, without_a_catalog_texts_stay_keys) {
  const dialog_ptr_t dialog = load_dialog("dlg.frame_test", "nosuchcatalog");
  ASSERT_TRUE(dialog);
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_text"))), "frame_test.text");
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_btn_ok"))), "btn.ok");
  EXPECT_EQ(dialog->GetTitle(), "frame_test.title");
}

TEST_F(resource_loader_test, missing_object_fails_quietly_with_one_warning) {
  test_support::log_capture_t log;
  gui_test::wx_log_recorder_t wx_log;
  const size_t shown = shown_top_level_windows();
  const resource_loader_t loader(archive_layouts(), "tamsel");
  dialog_ptr_t dialog(new wxDialog);
  EXPECT_FALSE(loader.load_dialog(dialog.get(), nullptr, "dlg.no_such_dialog"));
  EXPECT_FALSE(loader.load_dialog(dialog.get(), nullptr, "dlg.no_such_dialog"));
  auto* panel = new wxPanel;
  EXPECT_FALSE(loader.load_panel(panel, nullptr, "pref.no_such_page"));
  delete panel;  // never created
  gui_test::pump();
  EXPECT_EQ(shown_top_level_windows(), shown);
  EXPECT_TRUE(wx_log.m_messages.empty());
  EXPECT_EQ(warnings(log), 2u);
}

TEST_F(resource_loader_test, object_of_another_kind_is_not_loaded) {
  gui_test::wx_log_recorder_t wx_log;
  dialog_ptr_t dialog(new wxDialog);
  EXPECT_FALSE(
      resource_loader_t(archive_layouts(), "tamsel").load_dialog(dialog.get(), nullptr, "pref.frame_test"));
  EXPECT_TRUE(wx_log.m_messages.empty());
}

TEST_F(resource_loader_test, missing_archive_fails_quietly_with_one_warning) {
  test_support::log_capture_t log;
  gui_test::wx_log_recorder_t wx_log;
  const size_t shown = shown_top_level_windows();
  const resource_loader_t loader("/nonexistent/tamsel3.dat#zip:tamsel.xrc", "tamsel");
  EXPECT_FALSE(loader.is_ok());
  dialog_ptr_t dialog(new wxDialog);
  EXPECT_FALSE(loader.load_dialog(dialog.get(), nullptr, "dlg.frame_test"));
  EXPECT_FALSE(loader.load_dialog(dialog.get(), nullptr, "dlg.frame_test"));
  gui_test::pump();
  EXPECT_EQ(shown_top_level_windows(), shown);
  EXPECT_TRUE(wx_log.m_messages.empty());
  EXPECT_EQ(warnings(log), 1u);
}

TEST_F(resource_loader_test, missing_member_of_the_archive_fails) {
  gui_test::wx_log_recorder_t wx_log;
  const std::string file = gui_test::resource_dir() + "/tamsel3.dat#zip:no_such.xrc";
  EXPECT_FALSE(resource_loader_t(file, "tamsel").is_ok());
  EXPECT_TRUE(wx_log.m_messages.empty());
}

TEST_F(resource_loader_test, malformed_layouts_fail) {
  gui_test::wx_log_recorder_t wx_log;
  test_support::temp_dir_t dir;
  const std::string broken = dir.write("broken.xrc", "<?xml version=\"1.0\"?>\n<resource><object class=");
  const std::string foreign = dir.write("foreign.xrc", "<?xml version=\"1.0\"?>\n<html><body/></html>\n");
  dialog_ptr_t dialog(new wxDialog);
  EXPECT_FALSE(resource_loader_t(broken, "tamsel").is_ok());
  EXPECT_FALSE(resource_loader_t(broken, "tamsel").load_dialog(dialog.get(), nullptr, "dlg.frame_test"));
  EXPECT_FALSE(resource_loader_t(foreign, "tamsel").is_ok());
  EXPECT_TRUE(wx_log.m_messages.empty());
}

TEST_F(resource_loader_test, plain_layout_files_load_too) {
  test_support::temp_dir_t dir;
  const std::string file = dir.write("plain.xrc",
                                     "<?xml version=\"1.0\"?>\n"
                                     "<resource version=\"2.5.3.0\">\n"
                                     "  <object class=\"wxDialog\" name=\"dlg.plain\">\n"
                                     "    <title>frame_test.title</title>\n"
                                     "    <object class=\"wxChoice\" name=\"m_choice\">\n"
                                     "      <content><item>btn.yes</item><item>btn.no</item>"
                                     "<item>not_a_key</item></content>\n"
                                     "    </object>\n"
                                     "  </object>\n"
                                     "</resource>\n");
  dialog_ptr_t dialog(new wxDialog);
  ASSERT_TRUE(resource_loader_t(file, "tamsel").load_dialog(dialog.get(), nullptr, "dlg.plain"));
  EXPECT_EQ(std::string(dialog->GetTitle().utf8_str()), text_of("frame_test.title"));
  const auto* choice = dynamic_cast<wxChoice*>(dialog->FindWindow(XRCID("m_choice")));
  ASSERT_NE(choice, nullptr);
  ASSERT_EQ(choice->GetCount(), 3u);
  EXPECT_EQ(std::string(choice->GetString(0).utf8_str()), text_of("btn.yes"));
  EXPECT_EQ(std::string(choice->GetString(1).utf8_str()), text_of("btn.no"));
  EXPECT_EQ(choice->GetString(2), "not_a_key");
}

TEST_F(resource_loader_test, catalog_texts_come_out_as_written) {
  // XRC reads '_' as a mnemonic mark and backslashes as escapes; catalog texts are no XRC.
  const std::string text = text_of("frame_test.marks");
  ASSERT_EQ(text, "snake_case, C:\\path, \\n, $5 and caf\xC3\xA9 as written");
  test_support::temp_dir_t dir;
  const std::string file = dir.write("marks.xrc",
                                     "<?xml version=\"1.0\"?>\n"
                                     "<resource version=\"2.5.3.0\">\n"
                                     "  <object class=\"wxDialog\" name=\"dlg.marks\">\n"
                                     "    <object class=\"wxStaticText\" name=\"m_text\">\n"
                                     "      <label>frame_test.marks</label>\n"
                                     "      <tooltip>frame_test.marks</tooltip>\n"
                                     "    </object>\n"
                                     "    <object class=\"wxChoice\" name=\"m_choice\">\n"
                                     "      <content><item>frame_test.marks</item></content>\n"
                                     "    </object>\n"
                                     "    <object class=\"wxStaticText\" name=\"m_own\">\n"
                                     "      <label>_Own text\\twith a tab</label>\n"
                                     "    </object>\n"
                                     "  </object>\n"
                                     "</resource>\n");
  dialog_ptr_t dialog(new wxDialog);
  ASSERT_TRUE(resource_loader_t(file, "tamsel").load_dialog(dialog.get(), nullptr, "dlg.marks"));
  const wxWindow* label = dialog->FindWindow(XRCID("m_text"));
  EXPECT_EQ(label_of(label), text);
  ASSERT_NE(label->GetToolTip(), nullptr);
  EXPECT_EQ(std::string(label->GetToolTipText().utf8_str()), text);
  const auto* choice = dynamic_cast<wxChoice*>(dialog->FindWindow(XRCID("m_choice")));
  ASSERT_NE(choice, nullptr);
  EXPECT_EQ(std::string(choice->GetString(0).utf8_str()), text);
  // A text that is no key keeps XRC's syntax.
  EXPECT_EQ(label_of(dialog->FindWindow(XRCID("m_own"))), "&Own text\twith a tab");
}

}  // namespace
