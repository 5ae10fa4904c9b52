#include "ombrelc_fixture.h"

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

class ombrelc_wrapper_setup_test : public control_fixture_t {};

// Counts how often it measures its width.
class measured_element_t : public CVisualElement {
 public:
  measured_element_t(CVisualElement* parent, int* measures)
      : CVisualElement(parent, size<int>(30, 10), ombrelc7::alNone), m_measures(measures) {}

 protected:
  int MeasureWidth() const override {
    ++*m_measures;
    return CVisualElement::MeasureWidth();
  }

 private:
  int* m_measures;
};

TEST_F(ombrelc_wrapper_setup_test, setup_applies_the_clip_flag_and_the_keyboard_mode) {
  EXPECT_FALSE(m_wrapper->m_clip_children);
  EXPECT_EQ(m_wrapper->GetKeyboardMode(), 1);
  m_wrapper->SetKeyboardMode(0);
  m_wrapper->Setup();
  EXPECT_FALSE(m_panel->HasFlag(wxWANTS_CHARS));
  EXPECT_FALSE(m_panel->HasFlag(wxCLIP_CHILDREN));
  m_wrapper->m_clip_children = true;
  m_wrapper->SetKeyboardMode(1);
  EXPECT_FALSE(m_panel->HasFlag(wxCLIP_CHILDREN));  // not before Setup
  m_wrapper->Setup();
  EXPECT_TRUE(m_panel->HasFlag(wxWANTS_CHARS));
  EXPECT_TRUE(m_panel->HasFlag(wxCLIP_CHILDREN));
  m_wrapper->SetKeyboardMode(7);
  EXPECT_EQ(m_wrapper->GetKeyboardMode(), 1);
}

TEST_F(ombrelc_wrapper_setup_test, a_layout_change_measures_the_children_again_a_content_change_does_not) {
  auto* parent = new CVisualElement(root(), size<int>(0, 0), ombrelc7::alNone);
  int measures = 0;
  new measured_element_t(parent, &measures);
  parent->GetPreferredWidth();
  ASSERT_EQ(measures, 1);
  parent->OnChange(nullptr, utContent);
  parent->GetPreferredWidth();
  EXPECT_EQ(measures, 1);
  parent->OnChange();  // only the parent and its ancestors
  parent->GetPreferredWidth();
  EXPECT_EQ(measures, 1);
  parent->OnChange(parent, utLayout);
  parent->GetPreferredWidth();
  EXPECT_EQ(measures, 2);
  EXPECT_TRUE(m_wrapper->IsLayoutPending());
}

TEST_F(ombrelc_wrapper_setup_test, a_content_change_repaints_the_element) {
  auto* element = new counting_element_t(root(), size<int>(40, 20), ombrelc7::alNone);
  layout();
  ASSERT_TRUE(gui_test::wait_until([&] { return element->m_paints > 0; }));
  const int before = element->m_paints;
  layout();
  EXPECT_FALSE(m_wrapper->IsLayoutPending());
  root()->OnChange(element, utContent);
  EXPECT_FALSE(m_wrapper->IsLayoutPending());
  EXPECT_TRUE(gui_test::wait_until([&] { return element->m_paints > before; }));
}

TEST_F(ombrelc_wrapper_setup_test, the_wrapper_of_a_window_is_found_and_none_is_made_for_another) {
  EXPECT_EQ(ombrelc7::FindWrapperForWx(m_panel), m_wrapper);
  EXPECT_EQ(ombrelc7::FindWrapperForWx(m_frame), nullptr);
  EXPECT_EQ(ombrelc7::FindWrapperForWx(m_frame), nullptr);  // looking made none
}

}  // namespace
