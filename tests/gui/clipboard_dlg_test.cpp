// The clipboard dialog shown modally and driven from inside its loop; what it copied is
// read back from the system clipboard, which this process owns under Xvfb.
#include "gui_test.h"

#include <tamsel3/clipboard_dlg.h>

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/clipbrd.h>
#include <wx/textctrl.h>

#include <functional>
#include <string>
#include <utility>

namespace {

int run_modal(tamsel3::dialog_base_t& dialog, std::function<void(wxDialog&)> action) {
  gui_test::on_next_modal(std::move(action));
  return dialog.show_modal(nullptr);
}

wxTextCtrl* text_field(wxWindow& dialog) {
  return dynamic_cast<wxTextCtrl*>(gui_test::find_named(&dialog, "m_textCtrl13"));
}

void put_on_clipboard(const std::string& text) {
  ASSERT_TRUE(wxTheClipboard->Open());
  wxTheClipboard->SetData(new wxTextDataObject(wxString::FromUTF8(text)));
  wxTheClipboard->Close();
}

// The clipboard's text, or "<no text>" when it holds none.
std::string clipboard_text() {
  if (!wxTheClipboard->Open()) {
    ADD_FAILURE() << "the clipboard can't be opened";
    return std::string();
  }
  std::string text = "<no text>";
  if (wxTheClipboard->IsSupported(wxDF_UNICODETEXT)) {
    wxTextDataObject data;
    if (wxTheClipboard->GetData(data)) {
      text = data.GetText().utf8_string();
    }
  }
  wxTheClipboard->Close();
  return text;
}

// A host's dialog that shows a text of its own and counts the calls.
class details_dlg_t : public tamsel3::clipboard_dlg_t {
 public:
  int m_fills = 0;
  void fill_controls() override {
    ++m_fills;
    if (m_text_field) {
      m_text_field->ChangeValue("Error 12 in parser.cpp:40");
    }
  }
};

TEST(clipboard_dlg_test, shows_the_sample_text_and_its_controls) {
  tamsel3::clipboard_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    wxTextCtrl* field = text_field(shown);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->GetValue(), "Sample text");
    EXPECT_FALSE(field->IsModified());  // put there without a text event
    EXPECT_NE(dynamic_cast<wxCheckBox*>(gui_test::find_named(&shown, "m_checkBox14")), nullptr);
    gui_test::click(&shown, "m_btn_cancel");
  });
}

TEST(clipboard_dlg_test, ok_puts_the_edited_text_on_the_clipboard) {
  put_on_clipboard("before");
  tamsel3::clipboard_dlg_t dialog;
  const int code = run_modal(dialog, [](wxDialog& shown) {
    ASSERT_NE(text_field(shown), nullptr);
    text_field(shown)->SetValue(wxString::FromUTF8("Edited line\nsecond line ü"));
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(code, wxID_OK);
  EXPECT_EQ(clipboard_text(), "Edited line\nsecond line ü");
}

TEST(clipboard_dlg_test, cancel_leaves_the_clipboard_alone) {
  put_on_clipboard("before");
  tamsel3::clipboard_dlg_t dialog;
  const int code = run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_cancel"); });
  EXPECT_EQ(code, wxID_CANCEL);
  EXPECT_EQ(clipboard_text(), "before");
}

TEST(clipboard_dlg_test, empty_field_stores_an_empty_text) {
  put_on_clipboard("before");
  tamsel3::clipboard_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    ASSERT_NE(text_field(shown), nullptr);
    text_field(shown)->Clear();
    gui_test::click(&shown, "m_btn_ok");
  });
  EXPECT_EQ(clipboard_text(), "");
}

// wxGTK's clipboard is busy only while opened in this process, and then reports the second
// Open as a wx assertion: counted here, where it stands for another program's hold.
int busy_reports = 0;
void count_busy_report(const wxString&, int, const wxString&, const wxString&, const wxString&) {
  ++busy_reports;
}

TEST(clipboard_dlg_test, busy_clipboard_ends_the_dialog_silently) {
  put_on_clipboard("before");
  tamsel3::clipboard_dlg_t dialog;
  busy_reports = 0;
  const int code = run_modal(dialog, [](wxDialog& shown) {
    ASSERT_TRUE(wxTheClipboard->Open());
    const wxAssertHandler_t previous = wxSetAssertHandler(&count_busy_report);
    gui_test::click(&shown, "m_btn_ok");
    wxSetAssertHandler(previous);
    wxTheClipboard->Close();
  });
  EXPECT_EQ(code, wxID_OK);
  EXPECT_EQ(busy_reports, 1);
  EXPECT_EQ(clipboard_text(), "before");
}

TEST(clipboard_dlg_test, derived_dialog_fills_its_own_text_once) {
  details_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) { gui_test::click(&shown, "m_btn_ok"); });
  EXPECT_EQ(dialog.m_fills, 1);
  EXPECT_EQ(clipboard_text(), "Error 12 in parser.cpp:40");
}

TEST(clipboard_dlg_test, help_button_is_enabled) {
  tamsel3::clipboard_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    wxWindow* help = gui_test::find_named(&shown, "m_btn_help");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->IsEnabled());
    gui_test::click(&shown, "m_btn_cancel");
  });
}

TEST(clipboard_dlg_test, resizing_lays_the_text_out_again) {
  tamsel3::clipboard_dlg_t dialog;
  run_modal(dialog, [](wxDialog& shown) {
    EXPECT_TRUE(gui_test::wait_until_shown(&shown));
    wxTextCtrl* field = text_field(shown);
    ASSERT_NE(field, nullptr);
    const int before = field->GetSize().GetWidth();
    shown.SetSize(shown.GetSize().GetWidth() + 100, shown.GetSize().GetHeight());
    EXPECT_TRUE(gui_test::wait_until([&] { return field->GetSize().GetWidth() == before + 100; }));
    gui_test::click(&shown, "m_btn_cancel");
  });
}

}  // namespace
