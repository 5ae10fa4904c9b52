#include "ombrelc_fixture.h"

#include <wx/textctrl.h>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

using more_editor_t = CDecoration<CButton, CLineEditor>;

// Records what a listener hears.
class listener_t : public ombrelc7::CEditNotify {
 public:
  void EditOnChangeText(CBaseEditor*) override { ++m_changes; }
  void EditOnVisibleChange(CBaseEditor*, bool visible) override { m_visible.push_back(visible); }
  int m_changes = 0;
  std::vector<bool> m_visible;
};

// Ends of edits, and one that moves the edit on.
class end_receiver_t : public korvat2::subscriber_base_t {
 public:
  void on_end(CBaseEditor* editor, bool accepted) {
    m_ends.push_back(accepted);
    if (m_keep_open) {
      editor->KeepOpen();
    }
  }
  std::vector<bool> m_ends;
  bool m_keep_open = false;
};

class editors_test : public control_fixture_t {
 protected:
  // An editor in the tree, shown over `area` (content coordinates).
  template <class E>
  E* place(E* editor, const rect<int>& area) {
    editor->ReParent(root(), false);
    editor->ShowEditor(true);
    editor->Arrange(area);
    editor->PlaceNative();
    return editor;
  }
};

TEST_F(editors_test, the_decoration_shrinks_the_editor_rect_by_its_alignment) {
  const rect<int> area(10, 20, 210, 50);
  const struct {
    int alignment;
    rect<int> expected;
  } cases[] = {
      {1, rect<int>(30, 20, 210, 50)},
      {2, rect<int>(10, 20, 190, 50)},
      {3, rect<int>(10, 40, 210, 50)},
      {4, rect<int>(10, 20, 210, 30)},
      {5, area},
      {0, area},
  };
  for (const auto& c : cases) {
    more_editor_t editor;
    // A compact button without a caption is as wide as its least size.
    editor.CreateDecoration(size<int>(20, 20), static_cast<ombrelc7::Alignment>(c.alignment))
        ->SetCompact(true);
    rect<int> r = area;
    editor.GetEditorRect(r);
    EXPECT_EQ(r, c.expected) << "alignment " << c.alignment;
  }
  more_editor_t bare;
  rect<int> r = area;
  bare.GetEditorRect(r);
  EXPECT_EQ(r, area);
}

TEST_F(editors_test, the_native_box_lies_over_the_cell_beside_the_button) {
  auto* editor = new more_editor_t;
  editor->Init(m_wrapper);
  CButton* button = editor->CreateDecoration(size<int>(20, 20), ombrelc7::alEnd);
  button->SetCompact(true);
  place(editor, rect<int>(10, 20, 210, 50));
  wxWindow* native = editor->GetNativeControl();
  ASSERT_NE(native, nullptr);
  EXPECT_TRUE(native->IsShown());
  EXPECT_EQ(native->GetRect(), wxRect(10, 20, 180, 30));
  EXPECT_EQ(button->GetRect(), rect<int>(190, 20, 210, 50));
  editor->ShowEditor(false);
  EXPECT_FALSE(native->IsShown());
}

TEST_F(editors_test, accept_and_cancel_end_the_edit_and_hide_unless_kept_open) {
  auto* editor = new CLineEditor;
  editor->Init(m_wrapper);
  place(editor, rect<int>(0, 0, 100, 30));
  end_receiver_t ends;
  editor->EndEditSignal().connect(&ends, &end_receiver_t::on_end);
  editor->ProcessEditorCommand(ecNone);
  EXPECT_TRUE(ends.m_ends.empty());
  EXPECT_TRUE(editor->IsVisible());
  ends.m_keep_open = true;
  editor->ProcessEditorCommand(ecAccept);
  EXPECT_TRUE(editor->IsVisible());
  ends.m_keep_open = false;
  editor->ProcessEditorCommand(ecCancel);
  EXPECT_FALSE(editor->IsVisible());
  EXPECT_FALSE(editor->GetNativeControl()->IsShown());
  EXPECT_EQ(ends.m_ends, (std::vector<bool>{true, false}));
}

TEST_F(editors_test, listeners_hear_text_and_visibility_once_each) {
  auto* editor = new CLineEditor;
  editor->Init(m_wrapper);
  listener_t listener;
  editor->Subscribe(&listener);
  editor->Subscribe(&listener);
  EXPECT_EQ(listener.GetSenders().size(), 1u);
  place(editor, rect<int>(0, 0, 100, 30));
  static_cast<wxTextCtrl*>(editor->GetNativeControl())->WriteText("abc");
  EXPECT_EQ(listener.m_changes, 1);
  editor->SetText("set by code");  // no notice: only the user's changes are heard
  EXPECT_EQ(listener.m_changes, 1);
  EXPECT_EQ(editor->GetText(), "set by code");
  editor->ShowEditor(false);
  EXPECT_EQ(listener.m_visible, (std::vector<bool>{true, false}));
}

TEST_F(editors_test, a_dying_listener_leaves_its_editors_and_a_dying_editor_its_listeners) {
  auto* editor = new CLineEditor;
  {
    listener_t listener;
    editor->Subscribe(&listener);
  }
  editor->ShowEditor(true);  // would reach the dead listener
  listener_t survivor;
  editor->Subscribe(&survivor);
  delete editor;
  EXPECT_TRUE(survivor.GetSenders().empty());
}

TEST_F(editors_test, a_fixed_combo_box_shows_only_its_values) {
  auto* combo = new CComboBox;
  combo->Init(m_wrapper, false);
  place(combo, rect<int>(0, 0, 150, 30));
  combo->SetValues({"one", "two"});
  combo->SetText("two");
  EXPECT_EQ(combo->GetText(), "two");
  combo->SetText("three");
  EXPECT_EQ(combo->GetText(), "");
  auto* editable = new CComboBox;
  editable->ReParent(root(), false);  // the tree owns it
  editable->Init(m_wrapper, true);
  editable->SetText("typed");
  EXPECT_EQ(editable->GetText(), "typed");
}

}  // namespace
