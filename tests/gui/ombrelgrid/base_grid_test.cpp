#include "grid_fixture.h"

#include <plaxi1/tooltip.h>

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dcclient.h>

namespace {

using namespace ombrelgrid_test;
using namespace ombrelpropgrid2;

class base_grid_test : public grid_fixture_t {};

TEST_F(base_grid_test, typing_into_the_last_line_and_accepting_adds_row_n_and_the_editor_stays_on_it) {
  fill(3);
  ASSERT_TRUE(open_editor(3));
  type("/new");
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->GetValue() == "/new"; }));
  press(WXK_RETURN);

  ASSERT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(m_record.m_added[0], std::make_pair(std::string("/new"), 3));
  ASSERT_EQ(model()->GetRowCount(), 5);
  IPropItem* added = model()->getPropertyByRow(3);
  EXPECT_EQ(added->GetStringValue(), "/new");
  EXPECT_EQ(added->GetEditType(), etMore);
  EXPECT_EQ(added->GetChecked(), csUnset);
  // The last line is empty again and shows its hint.
  IPropItem* last_line = model()->getPropertyByRow(4);
  EXPECT_TRUE(last_line->IsEmpty());
  bool hint = false;
  EXPECT_EQ(model()->GetCellText(4, 0, hint), "Add a directory");
  EXPECT_TRUE(hint);
  // The editor stays open, now on the new row.
  EXPECT_TRUE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_TRUE(more_text()->IsShown());
  EXPECT_EQ(m_grid->GetMorePropertyEditor().GetItem(), added);
  EXPECT_EQ(m_grid->GetEditingModel()->GetEditingRow(), 3);
  EXPECT_EQ(more_text()->GetValue(), "/new");
  EXPECT_TRUE(m_record.m_finished.empty());
}

TEST_F(base_grid_test, an_empty_last_line_adds_nothing) {
  fill(2);
  ASSERT_TRUE(open_editor(2));
  press(WXK_RETURN);
  EXPECT_TRUE(m_record.m_added.empty());
  EXPECT_TRUE(m_record.m_finished.empty());
  EXPECT_EQ(model()->GetRowCount(), 3);
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_FALSE(more_text()->IsShown());
}

TEST_F(base_grid_test, accepting_an_edit_of_a_row_reports_its_value_and_index) {
  fill(3);
  ASSERT_TRUE(open_editor(1));
  EXPECT_EQ(more_text()->GetValue(), "/d1");
  more_text()->SetInsertionPointEnd();
  type("x");
  press(WXK_RETURN);
  ASSERT_EQ(m_record.m_finished.size(), 1u);
  EXPECT_EQ(m_record.m_finished[0], std::make_pair(std::string("/d1x"), 1));
  EXPECT_EQ(model()->getPropertyByRow(1)->GetStringValue(), "/d1x");
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_EQ(model()->GetRowCount(), 4);
}

TEST_F(base_grid_test, escape_drops_the_edit) {
  fill(2);
  ASSERT_TRUE(open_editor(0));
  type("zz");
  press(WXK_ESCAPE);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetStringValue(), "/d0");
  EXPECT_TRUE(m_record.m_finished.empty());
  EXPECT_FALSE(more_text()->IsShown());
}

TEST_F(base_grid_test, save_editors_data_without_an_open_editor_only_clears_the_current_row) {
  fill(3);
  m_grid->SetCurrentRow(1);
  m_grid->SaveEditorsData();
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
  EXPECT_EQ(model()->GetRowCount(), 4);
  EXPECT_EQ(model()->getPropertyByRow(1)->GetStringValue(), "/d1");
  EXPECT_TRUE(m_record.m_finished.empty());
  EXPECT_TRUE(m_record.m_added.empty());
  EXPECT_EQ(m_record.m_changed, 0);
}

TEST_F(base_grid_test, save_editors_data_commits_the_open_edit_and_closes_it) {
  fill(3);
  ASSERT_TRUE(open_editor(2));
  more_text()->SetInsertionPointEnd();
  type("/sub");
  m_grid->SaveEditorsData();
  EXPECT_EQ(model()->getPropertyByRow(2)->GetStringValue(), "/d2/sub");
  ASSERT_EQ(m_record.m_finished.size(), 1u);
  EXPECT_EQ(m_record.m_finished[0].second, 2);
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
}

TEST_F(base_grid_test, save_editors_data_turns_a_typed_last_line_into_a_row) {
  fill(1);
  ASSERT_TRUE(open_editor(1));
  type("/typed");
  m_grid->SaveEditorsData();
  ASSERT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(m_record.m_added[0], std::make_pair(std::string("/typed"), 1));
  EXPECT_EQ(model()->GetRowCount(), 3);
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
}

TEST_F(base_grid_test, up_on_the_first_row_and_up_or_down_on_the_last_line_move_nothing) {
  fill(4);
  m_grid->SetCurrentRow(0);
  m_grid->MoveRowUp();
  EXPECT_EQ(m_record.m_changed, 1);
  m_grid->SetCurrentRow(4);
  m_grid->MoveRowUp();
  EXPECT_EQ(m_record.m_changed, 2);
  m_grid->MoveRowDown();
  EXPECT_EQ(m_record.m_changed, 3);
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(model()->getPropertyByRow(row)->GetStringValue(), "/d" + std::to_string(row));
  }
  EXPECT_EQ(m_grid->GetCurrentRow(), 4);
}

TEST_F(base_grid_test, down_on_the_next_to_last_row_moves_nothing) {
  fill(4);
  m_grid->SetCurrentRow(3);
  m_grid->MoveRowDown();
  EXPECT_EQ(m_record.m_changed, 1);
  EXPECT_EQ(model()->getPropertyByRow(3)->GetStringValue(), "/d3");
  EXPECT_TRUE(model()->getPropertyByRow(4)->IsEmpty());
}

TEST_F(base_grid_test, a_moved_row_takes_the_current_row_along_and_changed_fires_twice) {
  fill(4);
  m_grid->SetCurrentRow(2);
  m_grid->MoveRowUp();
  EXPECT_EQ(m_grid->GetCurrentRow(), 1);
  EXPECT_EQ(model()->getPropertyByRow(1)->GetStringValue(), "/d2");
  EXPECT_EQ(m_record.m_changed, 2);
  m_grid->MoveRowDown();
  m_grid->MoveRowDown();
  EXPECT_EQ(m_grid->GetCurrentRow(), 3);
  EXPECT_EQ(model()->getPropertyByRow(3)->GetStringValue(), "/d2");
  EXPECT_EQ(m_record.m_changed, 6);
}

TEST_F(base_grid_test, remove_on_row_0_leaves_no_current_row) {
  fill(5);
  m_grid->SetCurrentRow(0);
  m_grid->RemoveRow(0);
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
  EXPECT_EQ(model()->GetRowCount(), 5);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetStringValue(), "/d1");
  EXPECT_EQ(m_record.m_changed, 1);
}

TEST_F(base_grid_test, remove_on_row_3_leaves_row_2_current) {
  fill(5);
  m_grid->SetCurrentRow(3);
  m_grid->RemoveRow(3);
  EXPECT_EQ(m_grid->GetCurrentRow(), 2);
  EXPECT_EQ(model()->GetRowCount(), 5);
  EXPECT_EQ(model()->getPropertyByRow(3)->GetStringValue(), "/d4");
}

TEST_F(base_grid_test, the_last_line_is_never_removed) {
  fill(2);
  IPropItem* last_line = model()->getPropertyByRow(2);
  m_grid->SetCurrentRow(2);
  m_grid->RemoveRow(2);
  EXPECT_EQ(model()->GetRowCount(), 3);
  EXPECT_EQ(model()->getPropertyByRow(2), last_line);
  EXPECT_EQ(m_grid->GetCurrentRow(), 2);
  EXPECT_EQ(m_record.m_changed, 0);
}

TEST_F(base_grid_test, removing_the_row_under_edit_closes_its_editor) {
  fill(4);
  ASSERT_TRUE(open_editor(3));
  m_grid->RemoveRow(3);
  EXPECT_FALSE(m_grid->GetMoreEditor()->IsVisible());
  EXPECT_EQ(m_grid->GetMorePropertyEditor().GetItem(), nullptr);
  EXPECT_EQ(m_grid->GetCurrentRow(), 2);
}

TEST_F(base_grid_test, two_columns_of_399_split_as_299_and_100) {
  model()->SetColumnCaptions("Directories", "Recursive");
  ombrelgrid8::CGridHeader* header = m_grid->GetViewer()->GetHeader();
  ASSERT_EQ(header->GetColumnCount(), 2);
  header->SetColumnWidth(0, 199);
  header->SetColumnWidth(1, 200);
  m_grid->UpdateHeadersWidths();
  EXPECT_EQ(header->GetColumnWidth(0), 299);
  EXPECT_EQ(header->GetColumnWidth(1), 100);
}

TEST_F(base_grid_test, one_column_keeps_its_width) {
  model()->SetColumnCaptions("Directories", "");
  ombrelgrid8::CGridHeader* header = m_grid->GetViewer()->GetHeader();
  ASSERT_EQ(header->GetColumnCount(), 1);
  header->SetColumnWidth(0, 399);
  m_grid->UpdateHeadersWidths();
  EXPECT_EQ(header->GetColumnWidth(0), 399);
}

TEST_F(base_grid_test, a_value_set_on_the_last_line_from_outside_adds_a_row) {
  fill(2);
  auto* last_line = dynamic_cast<Property<std::string>*>(model()->getPropertyByRow(2));
  ASSERT_NE(last_line, nullptr);
  last_line->SetValue("/chosen");
  last_line->value_changed(last_line);
  ASSERT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(m_record.m_added[0], std::make_pair(std::string("/chosen"), 2));
  EXPECT_EQ(model()->GetRowCount(), 4);
  EXPECT_TRUE(model()->getPropertyByRow(3)->IsEmpty());

  // On an ordinary row it needs nothing here.
  IPropItem* row = model()->getPropertyByRow(0);
  row->SetStringValue("/other");
  row->value_changed(row);
  EXPECT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(model()->GetRowCount(), 4);
}

TEST_F(base_grid_test, the_more_button_reports_the_row_under_edit_the_last_line_too) {
  fill(2);
  ASSERT_TRUE(open_editor(2));
  ombrelcfrw7::CButton* button = m_grid->GetMoreEditor()->GetDecoration();
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(button->GetCaption(), "...");
  const rect<int> r = button->GetWindowRect();
  // The text box leaves the button free.
  EXPECT_LE(more_text()->GetRect().GetRight(), r.left);
  click_at(centre(r));
  ASSERT_EQ(m_record.m_clicks.size(), 1u);
  EXPECT_EQ(m_record.m_clicks[0].row, 2);
  EXPECT_EQ(m_record.m_clicks[0].item, model()->getPropertyByRow(2));
}

TEST_F(base_grid_test, the_more_button_lies_within_its_row_and_fits_its_caption) {
  fill(3);
  ASSERT_TRUE(open_editor(1));
  const rect<int> r = m_grid->GetMoreEditor()->GetDecoration()->GetWindowRect();
  const rect<int> row = m_grid->GetViewer()->GetCellRect(1, -1);
  EXPECT_EQ(r.top, row.top);
  // The row's bottom pixel is its rule, which stays in sight.
  EXPECT_EQ(r.bottom, row.bottom - 1);
  EXPECT_EQ(more_text()->GetRect().GetBottom() + 1, row.bottom - 1);
  wxClientDC dc(m_panel);
  dc.SetFont(m_panel->GetFont());
  const int text = dc.GetTextExtent("...").x;
  EXPECT_GE(r.width(), text + 14);
  EXPECT_LE(r.width(), text + 24);
}

TEST_F(base_grid_test, a_typed_restricted_symbol_is_refused_and_the_tooltip_explains) {
  LinePropertyEditor<std::string>& editor = m_grid->GetMorePropertyEditor();
  editor.m_restricted_symbols = "\"<>|";
  editor.m_tooltip_text = "A directory can't hold \" < > |";
  fill(1);
  ASSERT_TRUE(open_editor(1));
  type("/a|b<");
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->GetValue().length() == 3; }))
      << more_text()->GetValue();
  EXPECT_EQ(more_text()->GetValue(), "/ab");
  EXPECT_EQ(more_text()->GetInsertionPoint(), 3);
  EXPECT_TRUE(editor.TooltipShown());
  plaxi1::wxCustomTooltip* tooltip = plaxi1::GetTooltip(more_text());
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(tooltip->GetText(), "A directory can't hold \" < > |");
}

TEST_F(base_grid_test, a_pasted_restricted_symbol_is_refused) {
  LinePropertyEditor<std::string>& editor = m_grid->GetMorePropertyEditor();
  editor.m_restricted_symbols = "\"<>|";
  editor.m_tooltip_text = "forbidden";
  fill(1);
  ASSERT_TRUE(open_editor(0));
  more_text()->SetInsertionPointEnd();
  ASSERT_TRUE(wxTheClipboard->Open());
  wxTheClipboard->SetData(new wxTextDataObject("/x<y>"));
  wxTheClipboard->Close();
  more_text()->Paste();
  ASSERT_TRUE(gui_test::wait_until([this] { return more_text()->GetValue() == "/d0/xy"; }));
  EXPECT_TRUE(editor.TooltipShown());
  press(WXK_RETURN);
  EXPECT_EQ(model()->getPropertyByRow(0)->GetStringValue(), "/d0/xy");
}

TEST_F(base_grid_test, set_item_editor_binds_by_edit_type) {
  Property<std::string> line(etLine, csUnset), more(etMore, csUnset), none(etNone, csUnset);
  ComboProperty<std::string> combo(etEditableCombo, csUnset), fixed(etFixedCombo, csUnset);
  m_grid->SetItemEditor(&line);
  m_grid->SetItemEditor(&more);
  m_grid->SetItemEditor(&combo);
  m_grid->SetItemEditor(&fixed);
  m_grid->SetItemEditor(&none);
  EXPECT_EQ(line.GetEditor(), &m_grid->GetLinePropertyEditor());
  EXPECT_EQ(more.GetEditor(), &m_grid->GetMorePropertyEditor());
  EXPECT_EQ(combo.GetEditor(), &m_grid->GetComboPropertyEditor(true));
  EXPECT_EQ(fixed.GetEditor(), &m_grid->GetComboPropertyEditor(false));
  EXPECT_EQ(none.GetEditor(), nullptr);
  EXPECT_TRUE(m_grid->GetComboEditor(true)->IsEditable());
  EXPECT_FALSE(m_grid->GetComboEditor(false)->IsEditable());
}

TEST_F(base_grid_test, the_editors_are_made_once) {
  ombrelcfrw7::CLineEditor* line = m_grid->GetLineEditor();
  CMoreEditor* more = m_grid->GetMoreEditor();
  m_grid->CreateDefaultEditors(m_wrapper);
  EXPECT_EQ(m_grid->GetLineEditor(), line);
  EXPECT_EQ(m_grid->GetMoreEditor(), more);
  EXPECT_FALSE(line->IsVisible());
  EXPECT_EQ(m_grid->GetPropertyFromEditor(nullptr), nullptr);
}

TEST_F(base_grid_test, an_accepted_editable_combo_starts_no_row) {
  fill(1);
  m_grid->SetNewRowEditType(etEditableCombo);
  IPropItem* last_line = model()->getPropertyByRow(1);
  // Rebinding the last line to the editable combo box, whose end isn't followed.
  auto* combo_item = new ComboProperty<std::string>(etEditableCombo, csUnset);
  m_grid->SetItemEditor(combo_item);
  model()->AddItem(combo_item);
  focus_grid();
  m_grid->SetCurrentRow(1);
  ASSERT_TRUE(m_grid->EditCurrentRow());
  auto* text = m_grid->GetComboEditor(true);
  text->SetText("/combo");
  text->ProcessEditorCommand(ombrelcfrw7::ecAccept);
  EXPECT_EQ(combo_item->GetStringValue(), "/combo");
  EXPECT_TRUE(m_record.m_finished.empty());
  EXPECT_TRUE(m_record.m_added.empty());
  EXPECT_TRUE(last_line->IsEmpty());
}

TEST_F(base_grid_test, new_rows_of_combo_types_are_combo_properties_and_a_prototype_is_cloned) {
  fill(0);
  for (int type : {etEditableCombo, etFixedCombo, etNone}) {
    m_grid->SetNewRowEditType(type);
    IPropItem* last_line = model()->getPropertyByRow(model()->GetRowCount() - 1);
    last_line->SetStringValue("/t" + std::to_string(type));
    m_grid->RowAdding(last_line);
    IPropItem* added = model()->getPropertyByRow(model()->GetRowCount() - 2);
    EXPECT_NE(dynamic_cast<ComboProperty<std::string>*>(added), nullptr) << type;
    EXPECT_EQ(added->GetEditType(), type);
    EXPECT_EQ(added->GetChecked(), csUnset);
  }
  auto* prototype = new Property<std::string>(etLine, csTicked);
  m_grid->SetPrototype(prototype);
  IPropItem* last_line = model()->getPropertyByRow(model()->GetRowCount() - 1);
  last_line->SetCaption("caption");
  last_line->SetStringValue("/p");
  m_grid->RowAdding(last_line);
  IPropItem* added = model()->getPropertyByRow(model()->GetRowCount() - 2);
  EXPECT_EQ(added->GetEditType(), etLine);
  EXPECT_EQ(added->GetChecked(), csTicked);
  EXPECT_EQ(added->GetCaption(), "caption");
  EXPECT_EQ(added->GetStringValue(), "/p");
  EXPECT_TRUE(last_line->IsEmpty());
}

TEST_F(base_grid_test, new_rows_appended_before_the_old_ones_are_dropped_have_items_of_their_own) {
  fill(2);
  std::vector<IPropItem*> old_items{model()->getPropertyByRow(0), model()->getPropertyByRow(1)};
  std::vector<IPropItem*> new_items{m_grid->AppendRow("/n0", etMore), m_grid->AppendRow("/n1", etMore)};
  m_grid->DropFirstRows(2);
  ASSERT_EQ(model()->GetRowCount(), 3);
  for (int row = 0; row < 2; ++row) {
    EXPECT_EQ(model()->getPropertyByRow(row), new_items[row]);
    EXPECT_EQ(model()->getPropertyByRow(row)->GetStringValue(), "/n" + std::to_string(row));
    EXPECT_NE(new_items[row], old_items[0]);
    EXPECT_NE(new_items[row], old_items[1]);
  }
  // More than there are: the rows go, the last line stays.
  m_grid->DropFirstRows(5);
  EXPECT_EQ(model()->GetRowCount(), 1);
  EXPECT_TRUE(model()->getPropertyByRow(0)->IsEmpty());
}

TEST_F(base_grid_test, without_a_model_the_commands_do_nothing_and_a_new_row_counts_as_minus_2) {
  m_grid->SetGridModel(nullptr);
  m_grid->SetCurrentRow(0);
  EXPECT_EQ(m_grid->GetCurrentRow(), -1);
  m_grid->SaveEditorsData();
  m_grid->MoveRowUp();
  m_grid->MoveRowDown();
  m_grid->RemoveRow(0);
  m_grid->ClearRows();
  EXPECT_EQ(m_grid->AppendRow("/x", etMore), nullptr);
  m_grid->FinishFill("hint");
  Property<std::string> free_line(etMore, csUnset);
  free_line.SetStringValue("/free");
  m_grid->OnExternalSetValue(&free_line);
  EXPECT_TRUE(m_record.m_added.empty());
  m_grid->RowAdding(&free_line);
  ASSERT_EQ(m_record.m_added.size(), 1u);
  EXPECT_EQ(m_record.m_added[0], std::make_pair(std::string("/free"), -2));
  EXPECT_TRUE(free_line.IsEmpty());
}

}  // namespace
