#include "ombrelc_fixture.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

class ombrelc_widgets_test : public control_fixture_t {
 protected:
  void SetUp() override {
    control_fixture_t::SetUp();
    m_box = new CVertBox(root(), size<int>(0, 0), ombrelc7::alClient);
  }
  void mouse(wxEventType type, const rect<int>& r) {
    wxMouseEvent event(type);
    event.SetPosition(wxPoint(r.left + r.width() / 2, r.top + r.height() / 2));
    event.SetEventObject(m_panel);
    m_panel->GetEventHandler()->ProcessEvent(event);
  }
  void click(CVisualElement* element) {
    layout();
    const rect<int> r = element->GetWindowRect();
    mouse(wxEVT_LEFT_DOWN, r);
    mouse(wxEVT_LEFT_UP, r);
  }
  CVertBox* m_box = nullptr;
};

TEST_F(ombrelc_widgets_test, a_button_clicks_by_mouse_and_not_when_disabled) {
  auto* button = new CButton(m_box, size<int>(0, 0), ombrelc7::alNone);
  button->SetCaption("Press");
  receiver_t<CButton*> clicks;
  button->ClickSignal().connect(&clicks, &receiver_t<CButton*>::on);
  click(button);
  EXPECT_EQ(clicks.m_count, 1);
  EXPECT_EQ(clicks.m_last, button);
  EXPECT_GE(button->GetRect().width(), 80);
  button->Enable(false);
  EXPECT_FALSE(button->IsEnabled());
  click(button);
  button->Click();
  EXPECT_EQ(clicks.m_count, 1);
  button->Enable(true);
  button->Click();
  EXPECT_EQ(clicks.m_count, 2);
}

TEST_F(ombrelc_widgets_test, a_press_released_outside_the_button_does_not_click) {
  auto* button = new CButton(m_box, size<int>(0, 0), ombrelc7::alNone);
  button->SetCaption("Press");
  receiver_t<CButton*> clicks;
  button->ClickSignal().connect(&clicks, &receiver_t<CButton*>::on);
  layout();
  mouse(wxEVT_LEFT_DOWN, button->GetWindowRect());
  EXPECT_TRUE(button->IsPressed());
  mouse(wxEVT_LEFT_UP, rect<int>(300, 250, 302, 252));
  EXPECT_EQ(clicks.m_count, 0);
  EXPECT_FALSE(button->IsPressed());
}

TEST_F(ombrelc_widgets_test, tab_moves_the_focus_among_buttons_and_space_or_enter_click) {
  auto* set = new CButtonSet(m_box, size<int>(0, 0), ombrelc7::alFill);
  CButton* first = set->AddButton("First", 11);
  CButton* second = set->AddButton("Second", 12);
  receiver_t<int> ids;
  set->ButtonSignal().connect(&ids, &receiver_t<int>::on);
  layout();
  gui_test::press_key(m_panel, WXK_TAB);
  EXPECT_TRUE(first->HasFocus());
  gui_test::press_key(m_panel, WXK_SPACE);
  EXPECT_EQ(ids.m_last, 11);
  gui_test::press_key(m_panel, WXK_TAB);
  EXPECT_TRUE(second->HasFocus());
  gui_test::press_key(m_panel, WXK_RETURN);
  EXPECT_EQ(ids.m_last, 12);
  EXPECT_EQ(ids.m_count, 2);
  second->Enable(false);
  EXPECT_FALSE(second->HasFocus());
  gui_test::press_key(m_panel, WXK_TAB);
  EXPECT_TRUE(first->HasFocus());  // the disabled one is skipped
}

TEST_F(ombrelc_widgets_test, a_button_set_puts_its_buttons_at_the_right_and_reports_ids) {
  auto* set = new CButtonSet(m_box, size<int>(0, 0), ombrelc7::alFill);
  CButton* ok = set->AddButton("OK", 5);
  CButton* cancel = set->AddButton("Cancel", 6);
  EXPECT_EQ(set->GetButtonCount(), 2u);
  EXPECT_EQ(set->GetButton(0), ok);
  EXPECT_EQ(set->GetButton(1), cancel);
  EXPECT_EQ(set->GetButton(2), nullptr);
  receiver_t<int> ids;
  set->ButtonSignal().connect(&ids, &receiver_t<int>::on);
  layout();
  EXPECT_EQ(cancel->GetRect().right, set->GetRect().right);
  EXPECT_LT(ok->GetRect().right, cancel->GetRect().left);
  click(cancel);
  EXPECT_EQ(ids.m_last, 6);
  click(ok);
  EXPECT_EQ(ids.m_last, 5);
  set->ClearButtons();
  EXPECT_EQ(set->GetButtonCount(), 0u);
}

TEST_F(ombrelc_widgets_test, buttons_flavor_chains_the_set_signal_into_its_own) {
  auto* flavor = new CButtonsFlavor<CVertBox>(m_box, size<int>(0, 0), ombrelc7::alFill);
  ASSERT_NE(flavor->GetButtonSet(), nullptr);
  EXPECT_EQ(flavor->GetButtonSet()->GetParent(), flavor);
  EXPECT_EQ(flavor->GetButtonSet()->GetAlignment(), ombrelc7::alStretch);
  CButton* retry = flavor->GetButtonSet()->AddButton("Retry", 42);
  receiver_t<int> ids;
  flavor->ButtonSignal().connect(&ids, &receiver_t<int>::on);
  retry->Click();
  EXPECT_EQ(ids.m_count, 1);
  EXPECT_EQ(ids.m_last, 42);
}

TEST_F(ombrelc_widgets_test, a_gauge_clamps_and_the_box_cancel_button_signals) {
  auto* gauge = new CGaugeBoxEx(m_box, size<int>(0, 0), ombrelc7::alFill);
  gauge->SetMax(10);
  gauge->SetPos(4);
  gauge->Increase(3);
  EXPECT_DOUBLE_EQ(gauge->GetPos(), 7);
  gauge->Increase(100);
  EXPECT_DOUBLE_EQ(gauge->GetPos(), 10);
  gauge->SetPos(-1);
  EXPECT_DOUBLE_EQ(gauge->GetPos(), 0);
  gauge->SetPos(8);
  gauge->SetMax(5);
  EXPECT_DOUBLE_EQ(gauge->GetPos(), 5);
  receiver_t<CButton*> cancels;
  gauge->CancelSignal().connect(&cancels, &receiver_t<CButton*>::on);
  layout();
  EXPECT_EQ(gauge->GetCancelButton()->GetRect().right, gauge->GetRect().right);
  click(gauge->GetCancelButton());
  EXPECT_EQ(cancels.m_count, 1);
  EXPECT_EQ(cancels.m_last, gauge->GetCancelButton());
}

TEST_F(ombrelc_widgets_test, a_message_box_stacks_content_under_its_header) {
  auto* card = new CCustomMessageBox(m_box, size<int>(0, 0), ombrelc7::alFill);
  card->GetCaption()->SetCaption("Header");
  auto* line1 = new CCaption(card, size<int>(0, 0), ombrelc7::alFill);
  line1->SetCaption("first");
  auto* line2 = new CCaption(card, size<int>(0, 0), ombrelc7::alFill);
  line2->SetCaption("second");
  layout();
  const auto r = card->GetRect();
  EXPECT_EQ(card->GetImage()->GetRect().left, r.left + 8);
  EXPECT_EQ(card->GetImage()->GetRect().width(), 24);
  EXPECT_EQ(card->GetImage()->GetRect().top, r.top + 8);
  EXPECT_GE(card->GetCaption()->GetRect().top, r.top + 8);
  EXPECT_EQ(line1->GetRect().left, card->GetCaption()->GetRect().left);
  EXPECT_EQ(line1->GetRect().top, card->GetCaption()->GetRect().bottom + 6);
  EXPECT_EQ(line2->GetRect().top, line1->GetRect().bottom + 4);
  EXPECT_EQ(r.bottom, line2->GetRect().bottom + 8 + 1);
  EXPECT_EQ(card->AsString(), "Header\nfirst\nsecond");

  struct as_string_t : korvat2::subscriber_base_t {
    void on(CVisualElement* element, std::string& out) {
      m_element = element;
      out = "custom";
    }
    CVisualElement* m_element = nullptr;
  } receiver;
  card->AsStringSignal().connect(&receiver, &as_string_t::on);
  EXPECT_EQ(card->AsString(), "custom");
  EXPECT_EQ(receiver.m_element, card);
}

// Closes a card from its own button, as a log's "Dismiss" does.
class dismisser_t : public korvat2::subscriber_base_t {
 public:
  explicit dismisser_t(CVisualElement* card) : m_card(card) {}
  void on(int) {
    delete m_card;
    m_card = nullptr;
  }
  CVisualElement* m_card;
};

TEST_F(ombrelc_widgets_test, a_button_may_delete_its_own_card_when_clicked) {
  auto* card = new CCustomMessageBox(m_box, size<int>(0, 0), ombrelc7::alFill);
  card->GetCaption()->SetCaption("Dismiss me");
  auto* set = new CButtonSet(card, size<int>(0, 0), ombrelc7::alFill);
  CButton* dismiss = set->AddButton("Dismiss", 1);
  dismisser_t dismisser(card);
  set->ButtonSignal().connect(&dismisser, &dismisser_t::on);
  click(dismiss);
  EXPECT_EQ(dismisser.m_card, nullptr);
  EXPECT_TRUE(m_box->GetChildren().empty());
  EXPECT_EQ(m_control->GetHotElement(), m_box);
  layout();
  mouse(wxEVT_MOTION, rect<int>(10, 10, 12, 12));
}

TEST_F(ombrelc_widgets_test, copy_to_clipboard_puts_the_text_on_the_clipboard) {
  auto* caption = new CCaption(m_box, size<int>(0, 0), ombrelc7::alFill);
  caption->UseHTML(true);
  caption->SetCaption("copied &amp; <b>pasted</b>");
  ASSERT_TRUE(CopyToClipboard(caption));
  EXPECT_FALSE(CopyToClipboard(nullptr));
  ASSERT_TRUE(wxTheClipboard->Open());
  wxTextDataObject data;
  EXPECT_TRUE(wxTheClipboard->GetData(data));
  wxTheClipboard->Close();
  EXPECT_EQ(data.GetText().utf8_string(), "copied & pasted");
}

}  // namespace
