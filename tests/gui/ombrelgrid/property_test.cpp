#include <ombrelpropgrid2/grid_model.h>
#include <ombrelpropgrid2/property.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace ombrelpropgrid2;

// Records what it is asked to draw.
class painter_t : public IPainter {
 public:
  void DrawString(const std::string& text, const ombrelc7::rect<int>&, int format, int length) override {
    m_calls.emplace_back(text, format, length);
  }
  std::vector<std::tuple<std::string, int, int>> m_calls;
};

// Counts the virtual setters that Clear and Clone go through.
class counting_property_t : public Property<std::string> {
 public:
  counting_property_t() : Property<std::string>(etMore, csTicked) {}
  void SetValue(const std::string& value) override {
    m_order.push_back("value");
    Property<std::string>::SetValue(value);
  }
  void SetCaption(const std::string& caption) override {
    m_order.push_back("caption");
    Property<std::string>::SetCaption(caption);
  }
  std::vector<std::string> m_order;
};

TEST(property_test, clear_empties_the_caption_and_then_the_value) {
  counting_property_t item;
  item.SetCaption("c");
  item.SetValue("v");
  EXPECT_FALSE(item.IsEmpty());
  item.m_order.clear();
  item.Clear();
  EXPECT_EQ(item.m_order, (std::vector<std::string>{"caption", "value"}));
  EXPECT_TRUE(item.IsEmpty());
}

TEST(property_test, empty_only_when_caption_and_value_are) {
  Property<std::string> item(etMore, csUnset);
  EXPECT_TRUE(item.IsEmpty());
  item.SetCaption("c");
  EXPECT_FALSE(item.IsEmpty());
  item.SetCaption("");
  item.SetStringValue("v");
  EXPECT_FALSE(item.IsEmpty());
  item.deleteValue();
  EXPECT_TRUE(item.IsEmpty());
  EXPECT_FALSE(item.isGroup());
}

TEST(property_test, clone_keeps_edit_type_and_tick_and_copies_caption_and_value_enabled) {
  Property<std::string> item(etLine, csTicked);
  item.SetCaption("c");
  item.SetValue("/v");
  item.SetEnabled(false);
  std::unique_ptr<IPropItem> copy(item.Clone());
  EXPECT_EQ(copy->GetEditType(), etLine);
  EXPECT_EQ(copy->GetChecked(), csTicked);
  EXPECT_EQ(copy->GetCaption(), "c");
  EXPECT_EQ(copy->GetStringValue(), "/v");
  EXPECT_TRUE(copy->GetEnabled());
  EXPECT_EQ(copy->GetEditor(), nullptr);
}

TEST(property_test, a_combo_clone_keeps_the_order_of_the_extra_values) {
  ComboProperty<std::string> item(etFixedCombo, csClear);
  item.insAdditionalValue("a", 0);
  item.insAdditionalValue("b", 1);
  item.insAdditionalValue("c", 2);
  std::unique_ptr<IPropItem> copy(item.Clone());
  auto* combo = dynamic_cast<ComboProperty<std::string>*>(copy.get());
  ASSERT_NE(combo, nullptr);
  ASSERT_EQ(combo->getAdditionalCount(), 3);
  EXPECT_EQ(combo->getAdditionalValue(0), "a");
  EXPECT_EQ(combo->getAdditionalValue(1), "b");
  EXPECT_EQ(combo->getAdditionalValue(2), "c");
  EXPECT_EQ(combo->GetEditType(), etFixedCombo);
  combo->delAdditionalValue("b");
  combo->delAdditionalValue(0);
  EXPECT_EQ(combo->getAdditionalCount(), 1);
  EXPECT_EQ(combo->getAdditionalValue(0), "c");
  EXPECT_EQ(combo->getAdditionalValue(5), "");
}

TEST(property_test, the_value_is_drawn_with_format_33_and_the_whole_length) {
  Property<std::string> item(etMore, csUnset);
  item.SetValue("/dir");
  painter_t painter;
  ombrelc7::rect<int> area(0, 0, 100, 20);
  item.DrawValue(&painter, area, false);
  ASSERT_EQ(painter.m_calls.size(), 1u);
  EXPECT_EQ(painter.m_calls[0], std::make_tuple(std::string("/dir"), 33, -1));
}

TEST(grid_model_test, the_last_line_stays_last_and_counts_as_a_row) {
  HALLINGridModel model;
  EXPECT_EQ(model.GetRowCount(), 1);
  IPropItem* last_line = model.getPropertyByRow(0);
  ASSERT_NE(last_line, nullptr);
  EXPECT_EQ(last_line->GetEditType(), etMore);
  auto* a = new Property<std::string>(etMore, csUnset);
  auto* b = new Property<std::string>(etMore, csUnset);
  model.AddItem(a);
  model.AddItem(b);
  EXPECT_EQ(model.GetRowCount(), 3);
  EXPECT_EQ(model.getPropertyByRow(0), a);
  EXPECT_EQ(model.getPropertyByRow(2), last_line);
  EXPECT_EQ(model.getPropertyByRow(3), nullptr);
  EXPECT_EQ(model.getPropertyByRow(-1), nullptr);
  EXPECT_EQ(model.getIndexByProperty(b), 1);
  EXPECT_EQ(model.getIndexByProperty(last_line), 2);
  EXPECT_EQ(model.getIndexByProperty(nullptr), -1);
  // Moves keep away from the last line.
  EXPECT_EQ(model.MoveDown(1), 1);
  EXPECT_EQ(model.MoveUp(2), 2);
  EXPECT_EQ(model.MoveUp(0), 0);
  EXPECT_EQ(model.MoveUp(1), 0);
  EXPECT_EQ(model.getPropertyByRow(0), b);
  EXPECT_EQ(model.MoveDown(0), 1);
  EXPECT_EQ(model.MoveUp(7), -2);
  model.DeleteItem(2);
  EXPECT_EQ(model.GetRowCount(), 3);
  model.DeleteItem(0);
  EXPECT_EQ(model.GetRowCount(), 2);
  EXPECT_EQ(model.getPropertyByRow(1), last_line);
}

}  // namespace
