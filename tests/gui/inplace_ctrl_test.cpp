// The in-place control as a client drives it: tags, changes, proxies, saving and loading,
// the buttons of older items and the context menu's copy, with the real event loop.
#include "inplace_test_support.h"

#include "assert_recorder.h"
#include "error_handling.h"

#include <ombrelc/ombrelc.h>

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/datetime.h>

#include <algorithm>
#include <optional>
#include <regex>

namespace {

using inplace_test::any_contains;
using inplace_test::button_receiver_t;
using inplace_test::drain;
using inplace_test::error_texts;
using korvat2::variant_bag_t;
using tamsel3::message_entry_t;
using tamsel3::standard_message_t;

class inplace_ctrl_test : public inplace_test::control_fixture_t {
 protected:
  message_entry_t* entry(unsigned int tag) const {
    return dynamic_cast<message_entry_t*>(tamsel3::inplace_ctrl_test_access_t::impl(*m_ctrl)->get_entry(tag));
  }
};

std::string now_as_caption_date() { return std::string(wxDateTime::Now().Format("%c").utf8_str()); }

bool holds(const ombrelcfrw7::CVisualElement* parent, const ombrelcfrw7::CVisualElement* child) {
  const auto& children = parent->GetChildren();
  return std::find(children.begin(), children.end(), child) != children.end();
}

variant_bag_t saved_line(const std::string& text, const std::optional<int>& severity) {
  variant_bag_t line;
  line.put("msg", text);
  if (severity) {
    line.put("severity", *severity);
  }
  return line;
}

variant_bag_t saved_entry(const std::string& caption, const std::vector<variant_bag_t>& lines) {
  variant_bag_t entry;
  entry.put("msg", std::string("text of ") + caption);
  entry.put("cap", caption);
  for (const variant_bag_t& line : lines) {
    entry.add_variant_bag("message", line);
  }
  return entry;
}

std::vector<std::string> kept_texts(const message_entry_t* item) {
  std::vector<std::string> texts;
  for (const tamsel3::messenger_entry_t& line : item->m_messages) {
    texts.push_back(line.m_text);
  }
  return texts;
}

std::string clipboard_text() {
  wxTextDataObject data;
  if (!wxTheClipboard->Open()) {
    return "<clipboard not open>";
  }
  const bool got = wxTheClipboard->GetData(data);
  wxTheClipboard->Close();
  return got ? std::string(data.GetText().utf8_str()) : std::string("<no text>");
}

TEST_F(inplace_ctrl_test, tags_start_at_zero_and_go_on_counting_after_clear) {
  EXPECT_EQ(m_ctrl->add_message(message("first", "a"), m_no_callback), 0u);
  EXPECT_EQ(m_ctrl->add_progress(progress("second"), m_no_callback), 1u);
  EXPECT_TRUE(m_ctrl->clear().succeeded());
  EXPECT_EQ(m_ctrl->add_message(message("third", "c"), m_no_callback), 2u);
  EXPECT_EQ(m_ctrl->get_messenger(0), nullptr);
  EXPECT_NE(m_ctrl->get_messenger(2), nullptr);
}

TEST_F(inplace_ctrl_test, add_custom_returns_zero_and_marks_the_control_changed) {
  test_support::assert_recorder_t reports;
  variant_bag_t bag;
  m_ctrl->save(bag);
  EXPECT_FALSE(m_ctrl->has_changes());
  EXPECT_EQ(m_ctrl->add_custom(new tamsel3::custom_message_t), 0u);
  EXPECT_TRUE(m_ctrl->has_changes());
  EXPECT_EQ(reports.count("add_custom not impl"), 1u);
}

TEST_F(inplace_ctrl_test, unknown_tag_is_logged_and_still_counts_as_succeeded) {
  test_support::log_capture_t log;
  const korvat2::error_code_t updated = m_ctrl->update_message(7, message("x", "y"), m_no_callback);
  EXPECT_TRUE(updated.succeeded());
  EXPECT_EQ(updated.value(), 1u);
  EXPECT_TRUE(any_contains(error_texts(log), "m_entries.find(tag) != m_entries.end()"));
}

TEST_F(inplace_ctrl_test, erase_twice_logs_the_second_and_gives_the_code_one) {
  const unsigned int tag = m_ctrl->add_message(message("x", "y"), m_no_callback);
  EXPECT_EQ(m_ctrl->erase(tag).value(), 0u);
  test_support::log_capture_t log;
  const korvat2::error_code_t second = m_ctrl->erase(tag);
  EXPECT_EQ(second.value(), 1u);
  EXPECT_TRUE(second.succeeded());
  EXPECT_TRUE(any_contains(error_texts(log), "m_entries.find(tag) != m_entries.end()"));
}

TEST_F(inplace_ctrl_test, clear_on_an_empty_control_leaves_has_changes) {
  EXPECT_FALSE(m_ctrl->has_changes());
  EXPECT_TRUE(m_ctrl->clear().succeeded());
  EXPECT_FALSE(m_ctrl->has_changes());
  m_ctrl->add_message(message("x", "y"), m_no_callback);
  variant_bag_t bag;
  m_ctrl->save(bag);
  m_ctrl->clear();
  EXPECT_TRUE(m_ctrl->has_changes());
}

TEST_F(inplace_ctrl_test, one_messenger_is_re_aimed_at_the_latest_tag) {
  const unsigned int a = m_ctrl->add_message(message("a", "a"), m_no_callback);
  const unsigned int b = m_ctrl->add_message(message("b", "b"), m_no_callback);
  pelit2::IMessenger* first = m_ctrl->get_messenger(a);
  pelit2::IMessenger* second = m_ctrl->get_messenger(b);
  EXPECT_EQ(first, second);
  first->say(pelit2::severity_warning, "to b");
  ASSERT_TRUE(drain());
  EXPECT_TRUE(entry(a)->m_messages.empty());
  ASSERT_EQ(entry(b)->m_messages.size(), 1u);
  EXPECT_EQ(entry(b)->m_messages[0].m_text, "to b");
  EXPECT_TRUE(m_ctrl->has_severity(b, pelit2::severity_warning));
  EXPECT_FALSE(m_ctrl->has_severity(b, pelit2::severity_error));
  EXPECT_FALSE(m_ctrl->has_severity(a, pelit2::severity_warning));
  EXPECT_FALSE(m_ctrl->has_severity(99, pelit2::severity_warning));
}

TEST_F(inplace_ctrl_test, save_clears_has_changes_and_a_shown_line_sets_it_again) {
  const unsigned int tag = m_ctrl->add_message(message("x", "y"), m_no_callback);
  variant_bag_t bag;
  m_ctrl->save(bag);
  EXPECT_FALSE(m_ctrl->has_changes());
  m_ctrl->get_messenger(tag)->say(pelit2::severity_info, "line");
  EXPECT_FALSE(m_ctrl->has_changes()) << "not shown yet";
  ASSERT_TRUE(drain());
  EXPECT_TRUE(m_ctrl->has_changes());
}

TEST_F(inplace_ctrl_test, save_writes_the_exact_bag_structure_and_load_brings_it_back) {
  const unsigned int message_tag = m_ctrl->add_message(message("Caption", "Text"), m_no_callback);
  m_ctrl->get_messenger(message_tag)->say(pelit2::severity_warning, "first");
  m_ctrl->get_messenger(message_tag)->say(pelit2::severity_transient, "passing");
  m_ctrl->get_messenger(message_tag)->say(pelit2::severity_error, "second");
  const unsigned int progress_tag = m_ctrl->add_progress(progress("Running"), m_no_callback);
  m_ctrl->get_progress(progress_tag);
  m_ctrl->get_messenger(progress_tag)->say(pelit2::severity_info, "progress line");
  ASSERT_TRUE(drain());

  variant_bag_t bag;
  ASSERT_TRUE(m_ctrl->save(bag).succeeded());
  ASSERT_EQ(bag.size(), 2u);
  EXPECT_EQ(bag.entry_name(0), "message_entry_t");
  EXPECT_EQ(bag.entry_name(1), "message_entry_t");
  const variant_bag_t& saved_message = *bag.entry_bag(0);
  EXPECT_EQ(saved_message.get<korvat2::variant_t>("msg")->get<std::string>(), "Text");
  EXPECT_EQ(saved_message.get<korvat2::variant_t>("cap")->get<std::string>(), "Caption");
  EXPECT_FALSE(saved_message.has<korvat2::variant_t>("img"));
  std::vector<std::pair<std::string, int>> lines;
  for (auto line = saved_message.begin_by_name<variant_bag_t>("message"); !line.at_end(); line.next()) {
    lines.emplace_back(line.get_value().get<korvat2::variant_t>("msg")->get<std::string>(),
                       line.get_value().get<korvat2::variant_t>("severity")->get<int>());
  }
  EXPECT_EQ(lines, (std::vector<std::pair<std::string, int>>{{"first", 2}, {"second", 4}}));
  const variant_bag_t& saved_progress = *bag.entry_bag(1);
  EXPECT_FALSE(saved_progress.has<korvat2::variant_t>("msg"));
  EXPECT_FALSE(saved_progress.has<korvat2::variant_t>("cap"));
  EXPECT_EQ(saved_progress.size(), 1u);

  m_ctrl->clear();
  ASSERT_TRUE(m_ctrl->load(bag).succeeded());
  EXPECT_FALSE(m_ctrl->has_changes()) << "the lines arrive after load returns";
  ASSERT_TRUE(drain());
  EXPECT_TRUE(m_ctrl->has_changes());
  message_entry_t* loaded = entry(progress_tag + 1);
  ASSERT_NE(loaded, nullptr);
  ASSERT_EQ(loaded->m_messages.size(), 2u);
  EXPECT_EQ(loaded->m_messages[1].m_text, "second");
  ASSERT_NE(loaded->m_message.get(), nullptr);
  EXPECT_EQ(loaded->m_message->m_caption, "Caption");
  message_entry_t* from_progress = entry(progress_tag + 2);
  ASSERT_NE(from_progress, nullptr);
  EXPECT_EQ(from_progress->m_message->m_text, "") << "a progress entry comes back as an empty message";

  variant_bag_t again;
  m_ctrl->save(again);
  ASSERT_EQ(again.size(), 2u);
  EXPECT_EQ(*again.entry_bag(0), saved_message) << "a message saves again as it was loaded";
  EXPECT_EQ(again.entry_bag(1)->get<korvat2::variant_t>("msg")->get<std::string>(), "")
      << "the progress entry is a message now";
}

TEST_F(inplace_ctrl_test, load_of_an_empty_bag_adds_nothing_and_clears_has_changes) {
  m_ctrl->add_message(message("x", "y"), m_no_callback);
  ASSERT_TRUE(m_ctrl->has_changes());
  ASSERT_TRUE(m_ctrl->load(variant_bag_t()).succeeded());
  EXPECT_FALSE(m_ctrl->has_changes());
  EXPECT_EQ(m_ctrl->add_message(message("z", "z"), m_no_callback), 1u);
}

TEST_F(inplace_ctrl_test, buttons_of_an_older_message_are_hidden_by_a_new_one) {
  button_receiver_t receiver;
  korvat2::signal_t<int> callback;
  callback.connect(&receiver, &button_receiver_t::on_button);
  const unsigned int older = m_ctrl->add_message(message("older", "a"), callback);
  ombrelcfrw7::CButtonSet* older_set = entry(older)->m_buttons->GetButtonSet();
  EXPECT_TRUE(older_set->IsVisible());
  ASSERT_EQ(older_set->GetButtonCount(), 2u);
  const unsigned int newer = m_ctrl->add_message(message("newer", "b"), callback);
  EXPECT_FALSE(older_set->IsVisible());
  ombrelcfrw7::CButtonSet* newer_set = entry(newer)->m_buttons->GetButtonSet();
  EXPECT_TRUE(newer_set->IsVisible());
  newer_set->GetButton(1)->Click();
  EXPECT_EQ(receiver.ids, (std::vector<int>{tamsel3::standard_message_t::button_cancel}));
  EXPECT_FALSE(newer_set->IsVisible()) << "a pressed button ends the interaction";
}

TEST_F(inplace_ctrl_test, the_gauge_shows_at_get_progress) {
  const unsigned int tag = m_ctrl->add_progress(progress("Copying"), m_no_callback);
  message_entry_t* item = entry(tag);
  EXPECT_FALSE(item->m_gauge->IsVisible());
  pelit2::IProgress* progress = m_ctrl->get_progress(tag);
  ASSERT_NE(progress, nullptr);
  EXPECT_TRUE(item->m_gauge->IsVisible());
  EXPECT_EQ(m_ctrl->get_progress(99), nullptr);
}

TEST_F(inplace_ctrl_test, cancel_sets_the_flag_that_the_worker_sees) {
  const unsigned int tag = m_ctrl->add_progress(progress("Long run", true), m_no_callback);
  pelit2::IProgress* progress = m_ctrl->get_progress(tag);
  ombrelcfrw7::CButton* cancel = entry(tag)->m_gauge->GetCancelButton();
  ASSERT_TRUE(cancel->IsVisible());
  EXPECT_FALSE(progress->isCanceled());
  cancel->Click();
  EXPECT_TRUE(progress->isCanceled());
  EXPECT_FALSE(cancel->IsEnabled());
  bool seen_by_worker = false;
  std::thread([&] { seen_by_worker = progress->isCanceled(); }).join();
  EXPECT_TRUE(seen_by_worker);
}

TEST_F(inplace_ctrl_test, copy_puts_every_entry_on_the_clipboard_with_the_gauge_in_percent) {
  const unsigned int tag = m_ctrl->add_message(message("Done", "All files were read."), m_no_callback);
  m_ctrl->get_messenger(tag)->say(pelit2::severity_warning, "one file was empty");
  const unsigned int running = m_ctrl->add_progress(progress("Reading"), m_no_callback);
  pelit2::IProgress* progress = m_ctrl->get_progress(running);
  progress->start("Reading files", 100.0);
  progress->internalProgressed(25.0);
  ASSERT_TRUE(drain());
  wxCommandEvent copy(wxEVT_COMMAND_MENU_SELECTED, tamsel3::inplace_ctrl_t::copy_command_id);
  m_ctrl->GetEventHandler()->ProcessEvent(copy);
  const std::string text = clipboard_text();
  EXPECT_EQ(text.rfind("Done\n    ", 0), 0u) << text;
  EXPECT_EQ(text.find("<i>"), std::string::npos) << "markup stays off the clipboard: " << text;
  EXPECT_NE(text.find("All files were read.\n    one file was empty"), std::string::npos) << text;
  EXPECT_NE(text.find("Reading files\n    25%"), std::string::npos) << text;
}

TEST_F(inplace_ctrl_test, the_menu_has_its_one_copy_entry) {
  ASSERT_EQ(tamsel3::inplace_ctrl_test_access_t::menu(*m_ctrl).GetMenuItemCount(), 1u);
  const wxMenuItem* item = tamsel3::inplace_ctrl_test_access_t::menu(*m_ctrl).FindItemByPosition(0);
  EXPECT_EQ(item->GetId(), tamsel3::inplace_ctrl_t::copy_command_id);
  EXPECT_EQ(item->GetItemLabelText(), "Copy to clipboard");
}

TEST_F(inplace_ctrl_test, update_message_shows_the_new_buttons_and_adds_only_new_connections) {
  button_receiver_t asker;
  button_receiver_t newcomer;
  korvat2::signal_t<int> callback;
  callback.connect(&asker, &button_receiver_t::on_button);
  const unsigned int tag = m_ctrl->add_message(message("Copying", "Copying files..."), callback);
  callback.connect(&newcomer, &button_receiver_t::on_button);
  auto* failed = new tamsel3::interactive_message_t("Copy failed", "The disk is full.");
  const korvat2::intrusive_pointer_t<tamsel3::message_t> replacement(failed);
  failed->add_button(standard_message_t::button_retry, "Try again");
  failed->add_button(standard_message_t::button_close, "Give up");

  test_support::assert_recorder_t reports;
  const std::string before = now_as_caption_date();
  EXPECT_EQ(m_ctrl->update_message(tag, replacement, callback).value(), 0u);
  const std::string after = now_as_caption_date();
  EXPECT_EQ(reports.count(), 0u) << "the connection that was there already is skipped quietly";

  message_entry_t* item = entry(tag);
  EXPECT_EQ(item->m_tag.m_callback.connection_count(), 2u);
  const std::string caption = item->m_message_caption->GetCaption();
  EXPECT_TRUE(caption == "<i>" + before + " </i> The disk is full." ||
              caption == "<i>" + after + " </i> The disk is full.")
      << caption;
  EXPECT_TRUE(item->m_message_caption->IsHTML());
  EXPECT_EQ(item->m_box->GetCaption()->GetCaption(), "Copy failed");

  ombrelcfrw7::CButtonSet* set = item->m_buttons->GetButtonSet();
  ASSERT_EQ(set->GetButtonCount(), 2u);
  EXPECT_EQ(set->GetButton(0)->GetCaption(), "Try again");
  EXPECT_EQ(set->GetButton(1)->GetCaption(), "Give up");
  inplace_test::flush_layout(m_ctrl);
  const ombrelc7::rect<int> retry = set->GetButton(0)->GetVisibleWindowRect();
  ASSERT_FALSE(retry.empty()) << "the buttons are on the screen";
  inplace_test::click_at(m_ctrl, retry);
  EXPECT_EQ(asker.ids, (std::vector<int>{standard_message_t::button_retry})) << "once, not twice";
  EXPECT_EQ(newcomer.ids, (std::vector<int>{standard_message_t::button_retry}));
  EXPECT_FALSE(set->IsVisible()) << "a pressed button ends the interaction";
}

TEST_F(inplace_ctrl_test, a_finished_gauge_becomes_a_message_whose_buttons_fire) {
  button_receiver_t receiver;
  korvat2::signal_t<int> callback;
  callback.connect(&receiver, &button_receiver_t::on_button);
  const unsigned int tag = m_ctrl->add_progress(progress("Checking"), m_no_callback);
  m_ctrl->get_progress(tag)->internalProgressed(0.5);
  ASSERT_TRUE(drain());
  test_support::assert_recorder_t reports;
  EXPECT_EQ(m_ctrl->update_message(tag, message("Checked", "No problems found."), callback).value(), 0u);
  EXPECT_EQ(reports.count(), 0u) << "the gauge's four connections were there to undo";
  message_entry_t* item = entry(tag);
  EXPECT_FALSE(item->m_gauge->IsVisible());
  ombrelcfrw7::CButtonSet* set = item->m_buttons->GetButtonSet();
  inplace_test::flush_layout(m_ctrl);
  ASSERT_EQ(set->GetButtonCount(), 2u);
  ASSERT_FALSE(set->GetButton(0)->GetVisibleWindowRect().empty());
  inplace_test::click_at(m_ctrl, set->GetButton(0)->GetVisibleWindowRect());
  EXPECT_EQ(receiver.ids, (std::vector<int>{standard_message_t::button_ok}));
}

TEST_F(inplace_ctrl_test, a_callback_may_update_its_own_message_from_the_pressed_button) {
  // The usual answer to Retry: the entry is replaced while its button is being pressed.
  struct retrying_t : korvat2::subscriber_base_t {
    void on_button(int id) {
      ids.push_back(id);
      if (id == standard_message_t::button_retry) {
        ctrl->update_message(tag,
                             new standard_message_t("Again", "Trying again.", plaxi1::picture_t(),
                                                    standard_message_t::buttons_close),
                             *callback);
      }
    }
    tamsel3::inplace_ctrl_t* ctrl = nullptr;
    unsigned int tag = 0;
    const korvat2::signal_t<int>* callback = nullptr;
    std::vector<int> ids;
  } client;
  korvat2::signal_t<int> callback;
  callback.connect(&client, &retrying_t::on_button);
  client.ctrl = m_ctrl;
  client.callback = &callback;
  client.tag = m_ctrl->add_message(new standard_message_t("Failed", "It failed.", plaxi1::picture_t(),
                                                          standard_message_t::buttons_close_retry),
                                   callback);
  ombrelcfrw7::CButtonSet* set = entry(client.tag)->m_buttons->GetButtonSet();
  inplace_test::flush_layout(m_ctrl);
  inplace_test::click_at(m_ctrl, set->GetButton(1)->GetVisibleWindowRect());
  ASSERT_EQ(set->GetButtonCount(), 1u);
  EXPECT_TRUE(set->IsVisible()) << "the new message's buttons show";
  inplace_test::flush_layout(m_ctrl);
  inplace_test::click_at(m_ctrl, set->GetButton(0)->GetVisibleWindowRect());
  EXPECT_EQ(client.ids,
            (std::vector<int>{standard_message_t::button_retry, standard_message_t::button_close}));
}

TEST_F(inplace_ctrl_test, erase_takes_the_entry_off_the_screen) {
  const wxImage empty = inplace_test::paint(m_ctrl);
  const unsigned int tag = m_ctrl->add_message(message("Erased", "This entry goes."), m_no_callback);
  m_ctrl->get_messenger(tag)->say(pelit2::severity_warning, "and its line");
  ASSERT_TRUE(drain());
  const ombrelcfrw7::CVisualElement* box = entry(tag)->m_box;
  ASSERT_TRUE(holds(log(), box));
  ASSERT_FALSE(inplace_test::same_pixels(inplace_test::paint(m_ctrl), empty)) << "the entry is painted";

  EXPECT_EQ(m_ctrl->erase(tag).value(), 0u);
  EXPECT_FALSE(holds(log(), box));
  EXPECT_TRUE(log()->GetChildren().empty());
  EXPECT_EQ(entry(tag), nullptr);
  EXPECT_TRUE(inplace_test::same_pixels(inplace_test::paint(m_ctrl), empty)) << "nothing of it is painted";
}

TEST_F(inplace_ctrl_test, the_entry_below_an_erased_one_moves_up_into_its_place) {
  const unsigned int first = m_ctrl->add_message(message("First", "Goes away."), m_no_callback);
  const unsigned int second = m_ctrl->add_message(message("Second", "Stays."), m_no_callback);
  inplace_test::flush_layout(m_ctrl);
  const ombrelcfrw7::CVisualElement* gone = entry(first)->m_box;
  const ombrelc7::rect<int> place = gone->GetVisibleWindowRect();
  ASSERT_FALSE(place.empty());
  ombrelcfrw7::CVisualElement* staying = entry(second)->m_box;

  m_ctrl->erase(first);
  inplace_test::flush_layout(m_ctrl);
  EXPECT_EQ(log()->GetChildren(), std::vector<ombrelcfrw7::CVisualElement*>{staying});
  EXPECT_EQ(staying->GetVisibleWindowRect().top, place.top);
  ombrelcfrw7::CVisualElement* hit = log()->HitTest(log()->FromWindow({place.left + 4, place.top + 4}));
  for (; hit && hit != staying; hit = hit->GetParent()) {
  }
  EXPECT_EQ(hit, staying) << "what is where the erased entry was belongs to the one that stays";
}

// The position part of a checked failure's text: the file, the line and the signature.
struct position_t {
  std::string file;
  std::string line;
  std::string function;
};

// Splits "<condition>[ '<error>']\n<file>(<line>): <function>\n" after its first line.
std::optional<position_t> position_of(const std::string& report, const std::string& first_line) {
  if (report.compare(0, first_line.size() + 1, first_line + "\n") != 0) {
    return std::nullopt;
  }
  static const std::regex position(R"(([^\n]*)\(([0-9]+)\): ([^\n]*)\n)");
  std::smatch found;
  const std::string rest = report.substr(first_line.size() + 1);
  if (!std::regex_match(rest, found, position)) {
    return std::nullopt;
  }
  return position_t{found[1], found[2], found[3]};
}

// A function's signature as one compiler-neutral text: GCC and Clang place blanks
// differently, and Clang names a type by the namespace alias that the source used.
std::string signature_of(const std::string& function) {
  std::string text = std::regex_replace(function, std::regex(R"(\bkv2::)"), "korvat2::");
  text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
  return text;
}

TEST_F(inplace_ctrl_test, a_corrupt_line_in_load_is_a_checked_failure_and_loading_goes_on) {
  variant_bag_t bag;
  bag.add_variant_bag(
      "message_entry_t",
      saved_entry("One", {saved_line("before", 2), saved_line("no severity", {}), saved_line("after", 2)}));
  bag.add_variant_bag("message_entry_t", saved_entry("Two", {saved_line("fine", 4)}));
  test_support::scoped_error_handling_t handling(std::string("assert"));
  test_support::assert_recorder_t reports;
  test_support::log_capture_t log;

  EXPECT_EQ(m_ctrl->load(bag).value(), 0u);
  const std::vector<std::string> texts = reports.texts();
  ASSERT_EQ(texts.size(), 2u);
  const auto line_check =
      position_of(texts[0], "entry.has<kv2::variant_t>(SEVERITY_NAME) 'kv2::error::IsNot.Valid.Value'");
  ASSERT_TRUE(line_check) << texts[0];
  EXPECT_NE(line_check->file.find("event_entry.cpp"), std::string::npos) << texts[0];
  EXPECT_EQ(signature_of(line_check->function),
            "statickorvat2::error_code_ttamsel3::event_entry_t::load(constkorvat2::variant_bag_t&,pelit2::"
            "IMessenger*)")
      << "the reader that failed is named: " << texts[0];
  const auto load_check = position_of(texts[1], "event_entry_t::load(value, pelit).succeeded()");
  ASSERT_TRUE(load_check) << texts[1];
  EXPECT_NE(load_check->file.find("inplace_ctrl.cpp"), std::string::npos) << texts[1];
  EXPECT_EQ(signature_of(load_check->function),
            "korvat2::error_code_ttamsel3::inplace_ctrl_impl_t::load(constkorvat2::variant_bag_t&)")
      << "the control's load is named: " << texts[1];
  // The assertion report logs its own line too; these are the checked failures' own.
  std::vector<std::string> logged = error_texts(log);
  logged.erase(
      std::remove_if(logged.begin(), logged.end(),
                     [](const std::string& text) { return text.rfind("assertion failed: ", 0) == 0; }),
      logged.end());
  EXPECT_EQ(logged,
            (std::vector<std::string>{texts[0] + ", at file: " + line_check->file + ":" + line_check->line,
                                      texts[1] + ", at file: " + load_check->file + ":" + load_check->line}));

  ASSERT_TRUE(drain());
  ASSERT_NE(entry(0), nullptr);
  ASSERT_NE(entry(1), nullptr);
  EXPECT_EQ(entry(0)->m_message->m_caption, "One");
  EXPECT_EQ(kept_texts(entry(0)), std::vector<std::string>{"before"}) << "the lines before the bad one stay";
  EXPECT_EQ(entry(1)->m_message->m_caption, "Two");
  EXPECT_EQ(kept_texts(entry(1)), std::vector<std::string>{"fine"}) << "the next entry still loads";
}

TEST_F(inplace_ctrl_test, a_corrupt_line_in_load_only_logs_unless_failures_assert) {
  variant_bag_t bag;
  bag.add_variant_bag("message_entry_t", saved_entry("One", {saved_line("no severity", {})}));
  test_support::scoped_error_handling_t handling(std::nullopt);
  test_support::assert_recorder_t reports;
  test_support::log_capture_t log;
  EXPECT_TRUE(m_ctrl->load(bag).succeeded());
  EXPECT_EQ(reports.count(), 0u);
  const std::vector<std::string> logged = error_texts(log);
  ASSERT_EQ(logged.size(), 2u);
  EXPECT_EQ(logged[1].rfind("event_entry_t::load(value, pelit).succeeded()\n", 0), 0u) << logged[1];
}

// Every way a host may end the panel: each must take the entries down once.
class inplace_ctrl_end_test : public ::testing::Test {
 protected:
  void SetUp() override {
    m_frame = new wxFrame(nullptr, wxID_ANY, "in-place", wxDefaultPosition, wxSize(400, 300));
    m_frame->Show();
    gui_test::wait_until_shown(m_frame);
  }
  void TearDown() override {
    m_frame->Destroy();
    gui_test::pump();
  }
  static void fill(tamsel3::inplace_ctrl_t& ctrl) {
    const korvat2::signal_t<int> no_callback;
    ctrl.add_message(new standard_message_t("Index is stale", "Rebuild it from the project menu."),
                     no_callback);
    ctrl.add_progress(new tamsel3::progress_message_t("Indexing"), no_callback);
    pelit2::IProgress* progress = ctrl.get_progress(1);
    progress->start("Indexing", 10);
    progress->progressed(4);
    gui_test::pump();
  }
  wxFrame* m_frame = nullptr;
};

TEST_F(inplace_ctrl_end_test, deleting_the_panel_directly_takes_it_out_of_its_parent) {
  auto* ctrl = new tamsel3::inplace_ctrl_t(m_frame, false);
  fill(*ctrl);
  delete ctrl;
  EXPECT_TRUE(m_frame->GetChildren().empty());
  gui_test::pump();
}

TEST_F(inplace_ctrl_end_test, a_panel_on_the_stack_ends_with_its_scope) {
  {
    tamsel3::inplace_ctrl_t ctrl(m_frame, false);
    fill(ctrl);
    EXPECT_EQ(m_frame->GetChildren().size(), 1u);
  }
  EXPECT_TRUE(m_frame->GetChildren().empty());
  gui_test::pump();
}

TEST_F(inplace_ctrl_end_test, destroy_and_the_parents_teardown_still_work) {
  auto* first = new tamsel3::inplace_ctrl_t(m_frame, false);
  fill(*first);
  first->Destroy();
  EXPECT_TRUE(m_frame->GetChildren().empty());
  fill(*new tamsel3::inplace_ctrl_t(m_frame, false));  // goes with the frame in TearDown
}

}  // namespace
