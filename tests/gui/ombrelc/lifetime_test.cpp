#include "ombrelc_fixture.h"

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

// Tells when it dies.
class watched_element_t : public CVisualElement {
 public:
  watched_element_t(CVisualElement* parent, bool* gone)
      : CVisualElement(parent, size<int>(10, 10), ombrelc7::alNone), m_gone(gone) {}
  ~watched_element_t() override { *m_gone = true; }

 private:
  bool* m_gone;
};

class watched_control_t : public CBaseControl {
 public:
  watched_control_t(ombrelc7::ISysWindow* window, bool* gone) : CBaseControl(window), m_gone(gone) {}
  ~watched_control_t() override { *m_gone = true; }

 private:
  bool* m_gone;
};

TEST(ombrelc_lifetime_test, the_control_and_its_elements_die_with_the_window) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "lifetime");
  auto* panel = new wxPanel(frame);
  ombrelc7::ISysWindow* wrapper = ombrelc7::CreateWrapperForWx(panel);
  EXPECT_EQ(ombrelc7::CreateWrapperForWx(panel), wrapper);
  EXPECT_EQ(ombrelc7::CreateWrapperForWx(nullptr), nullptr);
  bool control_gone = false;
  bool element_gone = false;
  auto* control = new watched_control_t(wrapper, &control_gone);
  auto* typed = new CBaseControlTmpl<CVertBox>(ombrelc7::CreateWrapperForWx(frame), size<int>(0, 0),
                                               ombrelc7::alClient);
  EXPECT_EQ(typed->GetTypedContent()->GetParent(), typed->GetContent());
  new watched_element_t(control->GetContent(), &element_gone);
  frame->Show();
  ASSERT_TRUE(gui_test::wait_until_shown(frame));
  frame->Destroy();
  ASSERT_TRUE(gui_test::wait_until([&] { return control_gone; }));
  EXPECT_TRUE(element_gone);
  gui_test::pump();
}

TEST(ombrelc_lifetime_test, a_new_control_replaces_the_old_one_and_a_deleted_control_detaches) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "lifetime");
  auto* panel = new wxPanel(frame);
  ombrelc7::ISysWindow* wrapper = ombrelc7::CreateWrapperForWx(panel);
  bool first_gone = false;
  bool second_gone = false;
  new watched_control_t(wrapper, &first_gone);
  auto* second = new watched_control_t(wrapper, &second_gone);
  EXPECT_TRUE(first_gone);
  EXPECT_EQ(wrapper->GetControl(), second);
  delete second;
  EXPECT_EQ(wrapper->GetControl(), nullptr);
  frame->Destroy();
  gui_test::pump();
}

TEST(ombrelc_lifetime_test, deleting_elements_clears_the_focus_and_hover) {
  auto* frame = new wxFrame(nullptr, wxID_ANY, "lifetime");
  auto* panel = new wxPanel(frame);
  auto* control = new CBaseControl(ombrelc7::CreateWrapperForWx(panel));
  auto* box = new CVertBox(control->GetContent(), size<int>(0, 0), ombrelc7::alClient);
  auto* button = new CButton(box, size<int>(0, 0), ombrelc7::alNone);
  button->SetFocus();
  EXPECT_EQ(control->GetFocusElement(), button);
  delete box;
  EXPECT_EQ(control->GetFocusElement(), nullptr);
  EXPECT_TRUE(control->GetContent()->GetChildren().empty());
  // A detached element belongs to its caller and has no window.
  auto* loose = new CCaption(nullptr, size<int>(0, 0), ombrelc7::alNone);
  EXPECT_EQ(loose->GetWindow(), nullptr);
  control->SetContent(loose);
  EXPECT_EQ(loose->GetParent(), control->GetContent());
  frame->Destroy();
  gui_test::pump();
}

}  // namespace
