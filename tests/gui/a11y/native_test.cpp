// Names that native controls get for screen readers, read in-process through ATK.
#include "gui_test.h"

#include <a11y/native.h>

#include <atk/atk.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/spinctrl.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>

namespace {

std::string name_of(wxWindow* window) {
  const gchar* name = atk_object_get_name(gtk_widget_get_accessible(window->GetConnectWidget()));
  return name ? name : "";
}

class native_names_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "names");
    m_panel = new wxPanel(m_frame, wxID_ANY);
  }
  void TearDown() override { m_frame->Destroy(); }

  wxFrame* m_frame = nullptr;
  wxPanel* m_panel = nullptr;
};

TEST_F(native_names_test, fields_are_named_by_the_labels_beside_them) {
  new wxStaticText(m_panel, wxID_ANY, "&Worker threads:");
  auto* threads = new wxSpinCtrl(m_panel, wxID_ANY);
  new wxRadioButton(m_panel, wxID_ANY, "In this folder:");
  auto* folder = new wxTextCtrl(m_panel, wxID_ANY);
  auto* tag = new wxTextCtrl(m_panel, wxID_ANY);
  new wxStaticText(m_panel, wxID_ANY, "Result tag (at most 24 characters)");
  auto* box = new wxStaticBox(m_panel, wxID_ANY, "Command");
  auto* command = new wxTextCtrl(box, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_MULTILINE);
  auto* picture = new wxStaticBitmap(m_panel, wxID_ANY, wxNullBitmap);
  picture->SetToolTip("Warning");
  auto* named = new wxTextCtrl(m_panel, wxID_ANY);
  a11y::set_name(named, "Pattern");
  a11y::name_from_labels(m_frame);
  EXPECT_EQ(name_of(threads), "Worker threads");
  EXPECT_EQ(name_of(folder), "In this folder");
  EXPECT_EQ(name_of(tag), "Result tag (at most 24 characters)");
  EXPECT_EQ(name_of(command), "Command");
  EXPECT_EQ(name_of(picture), "Warning");
  EXPECT_EQ(name_of(named), "Pattern");
}

TEST_F(native_names_test, a_field_without_a_label_stays_unnamed) {
  auto* alone = new wxTextCtrl(m_frame, wxID_ANY);  // after a panel, before a check box
  auto* keep = new wxCheckBox(m_frame, wxID_ANY, "Keep files");
  a11y::name_from_labels(m_frame);
  EXPECT_EQ(name_of(alone), "");
  EXPECT_EQ(name_of(keep), "Keep files");  // GTK's own name, left alone
}

}  // namespace
