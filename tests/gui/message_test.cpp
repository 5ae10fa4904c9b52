#include "assert_recorder.h"
#include "gui_test.h"

#include <plaxi1/image_loader.h>
#include <tamsel3/message.h>
#include <tamsel3/resource.h>
#include <tamsel3/tamsel3.h>
#include <tamsel3/text_helpers.h>

#include <gtest/gtest.h>
#include <wx/image.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using korvat2::intrusive_pointer_t;
using korvat2::variant_bag_t;
using korvat2::variant_t;
using tamsel3::header_t;
using tamsel3::interactive_message_t;
using tamsel3::message_button_t;
using tamsel3::message_t;
using tamsel3::progress_message_t;
using tamsel3::standard_message_t;
using test_support::assert_recorder_t;
using texts_t = std::vector<std::string>;

// A small picture with six colours and one transparent pixel (as a mask).
wxImage sample_image() {
  wxImage image(3, 2);
  const unsigned char colours[6][3] = {{255, 0, 0},  {0, 255, 0},     {0, 0, 255},
                                       {18, 52, 86}, {250, 251, 252}, {1, 2, 3}};
  for (int i = 0; i < 6; ++i) {
    image.SetRGB(i % 3, i / 3, colours[i][0], colours[i][1], colours[i][2]);
  }
  // The last pixel is transparent: its colour is the mask colour.
  image.SetMaskColour(1, 2, 3);
  return image;
}

plaxi1::picture_t sample_picture() { return plaxi1::wxStaticPicture(sample_image()); }

bool is_transparent(const wxImage& image, int x, int y) {
  if (image.HasMask() && image.GetRed(x, y) == image.GetMaskRed() &&
      image.GetGreen(x, y) == image.GetMaskGreen() && image.GetBlue(x, y) == image.GetMaskBlue()) {
    return true;
  }
  return image.HasAlpha() && image.GetAlpha(x, y) == wxIMAGE_ALPHA_TRANSPARENT;
}

// Same size, same transparent pixels, and the same colour in every other pixel.
void expect_same_picture(const wxImage& expected, const wxImage& actual) {
  ASSERT_TRUE(actual.IsOk());
  ASSERT_EQ(actual.GetSize(), expected.GetSize());
  for (int y = 0; y < expected.GetHeight(); ++y) {
    for (int x = 0; x < expected.GetWidth(); ++x) {
      const bool transparent = is_transparent(expected, x, y);
      EXPECT_EQ(is_transparent(actual, x, y), transparent) << x << "," << y;
      if (!transparent) {
        EXPECT_EQ(actual.GetRed(x, y), expected.GetRed(x, y)) << x << "," << y;
        EXPECT_EQ(actual.GetGreen(x, y), expected.GetGreen(x, y)) << x << "," << y;
        EXPECT_EQ(actual.GetBlue(x, y), expected.GetBlue(x, y)) << x << "," << y;
      }
    }
  }
}

bool same_pixels(const wxImage& a, const wxImage& b) {
  return a.IsOk() && b.IsOk() && a.GetSize() == b.GetSize() &&
         std::memcmp(a.GetData(), b.GetData(), static_cast<std::size_t>(a.GetWidth() * a.GetHeight() * 3)) ==
             0;
}

std::string text_at(const variant_bag_t& bag, const char* key) {
  const variant_t* value = bag.get<variant_t>(key);
  return value && value->can_get<std::string>() ? value->get<std::string>() : std::string("<none>");
}

std::vector<int> ids_of(const message_t& message) {
  std::vector<int> ids;
  for (const message_button_t& button : message.m_buttons) {
    ids.push_back(button.m_id);
  }
  return ids;
}

// ---------------------------------------------------------------------------------------
// Buttons of an interactive message.

TEST(message_test, first_added_button_is_the_default_until_cleared) {
  interactive_message_t message("caption", "text");
  EXPECT_EQ(message.m_default_index, interactive_message_t::no_default);
  EXPECT_EQ(message.m_default_index, 0xFFFFFFFFu);
  EXPECT_EQ(message.get_default_button(), -1);

  message.add_button(10, "Ten");
  EXPECT_EQ(message.get_default_button(), 10);
  EXPECT_EQ(message.m_default_index, 0u);
  EXPECT_TRUE(message.m_buttons[0].m_default);

  message.add_button(20, "Twenty");
  EXPECT_EQ(message.get_default_button(), 10);
  EXPECT_EQ(message.m_default_index, 0u);
  ASSERT_EQ(message.m_buttons.size(), 2u);
  EXPECT_FALSE(message.m_buttons[1].m_default);
  EXPECT_EQ(message.m_buttons[1].m_name, "Twenty");

  message.clear_buttons();
  EXPECT_TRUE(message.m_buttons.empty());
  EXPECT_EQ(message.m_default_index, interactive_message_t::no_default);
  EXPECT_EQ(message.get_default_button(), -1);

  message.add_button(30, "Thirty");
  EXPECT_EQ(message.get_default_button(), 30);
  EXPECT_TRUE(message.m_buttons[0].m_default);
}

TEST(message_test, set_default_button_moves_the_flag_and_refuses_unknown_ids) {
  interactive_message_t message("caption", "text");
  EXPECT_FALSE(message.set_default_button(1)) << "no buttons yet";
  EXPECT_EQ(message.get_default_button(), -1);

  message.add_button(1, "One");
  message.add_button(2, "Two");
  message.add_button(2, "Two again");
  EXPECT_FALSE(message.set_default_button(99));
  EXPECT_EQ(message.get_default_button(), 1);
  EXPECT_TRUE(message.m_buttons[0].m_default);

  EXPECT_TRUE(message.set_default_button(2));
  EXPECT_EQ(message.get_default_button(), 2);
  EXPECT_EQ(message.m_default_index, 1u) << "the first button with the id";
  EXPECT_FALSE(message.m_buttons[0].m_default);
  EXPECT_TRUE(message.m_buttons[1].m_default);
  EXPECT_FALSE(message.m_buttons[2].m_default);
}

TEST(message_test, set_button_name_renames_every_button_with_the_id) {
  interactive_message_t message("caption", "text");
  message.add_button(1, "One");
  message.add_button(2, "Two");
  message.add_button(1, "Uno");
  message.set_button_name(1, "Eins");
  message.set_button_name(5, "Nobody");
  EXPECT_EQ(message.m_buttons[0].m_name, "Eins");
  EXPECT_EQ(message.m_buttons[1].m_name, "Two");
  EXPECT_EQ(message.m_buttons[2].m_name, "Eins");
  EXPECT_EQ(ids_of(message), (std::vector<int>{1, 2, 1}));
}

TEST(message_test, get_button_beyond_the_end_gives_the_empty_button) {
  interactive_message_t message("caption", "text");
  message.add_button(4, "Four");
  EXPECT_EQ(message.get_button(0).m_id, 4);
  EXPECT_EQ(message.get_button(0).m_name, "Four");

  const message_button_t& past = message.get_button(1);
  EXPECT_EQ(past.m_id, 0);
  EXPECT_EQ(past.m_name, "");
  EXPECT_FALSE(past.m_default);
  EXPECT_EQ(&message.get_button(1000), &past) << "one shared empty button";
  EXPECT_EQ(&interactive_message_t().get_button(0), &past);
}

// ---------------------------------------------------------------------------------------
// Standard buttons and icons.

TEST(message_test, standard_button_sets_in_display_order) {
  using std_t = standard_message_t;
  const struct {
    int kind;
    std::vector<int> ids;
  } cases[] = {
      {std_t::buttons_close, {1}},
      {std_t::buttons_yes_no, {2, 3}},
      {std_t::buttons_yes_no_retry, {2, 3, 7}},
      {std_t::buttons_ok_cancel, {4, 5}},
      {std_t::buttons_ok_cancel_retry, {4, 5, 7}},
      {std_t::buttons_close_retry, {1, 7}},
      {6, {1}},
      {-1, {1}},
  };
  const std::pair<int, const char*> keys[] = {
      {std_t::button_close, "btn.close"},   {std_t::button_yes, "btn.yes"},
      {std_t::button_no, "btn.no"},         {std_t::button_ok, "btn.ok"},
      {std_t::button_cancel, "btn.cancel"}, {std_t::button_retry, "btn.retry"}};
  auto key_of = [&keys](int id) -> std::string {
    for (const auto& key : keys) {
      if (key.first == id) {
        return key.second;
      }
    }
    return "";
  };
  for (const auto& c : cases) {
    standard_message_t message("caption", "text");
    message.m_buttons.push_back(message_button_t{42, "stale", true});
    const auto kind = static_cast<std_t::standard_buttons_t>(c.kind);
    message.set_buttons(kind);
    EXPECT_EQ(message.m_buttons_kind, kind);
    EXPECT_EQ(ids_of(message), c.ids) << "kind " << c.kind;
    for (const message_button_t& button : message.m_buttons) {
      EXPECT_EQ(button.m_name, tamsel3::translate_message(key_of(button.m_id), {})) << button.m_id;
      EXPECT_FALSE(button.m_name.empty());
      EXPECT_FALSE(button.m_default) << "a standard message has no default button";
    }
  }
}

TEST(message_test, standard_message_is_built_with_its_buttons) {
  const standard_message_t closing("caption", "text");
  EXPECT_EQ(closing.m_caption, "caption");
  EXPECT_EQ(closing.m_text, "text");
  EXPECT_TRUE(closing.m_picture.is_empty());
  EXPECT_EQ(closing.m_buttons_kind, standard_message_t::buttons_close);
  EXPECT_EQ(ids_of(closing), (std::vector<int>{1}));

  const standard_message_t asking("caption", "text", sample_picture(), standard_message_t::buttons_yes_no);
  EXPECT_TRUE(asking.m_picture.is_static_picture());
  EXPECT_EQ(ids_of(asking), (std::vector<int>{2, 3}));
  EXPECT_EQ(asking.get_button(2).m_id, 0);
}

TEST(message_test, icons_by_type_are_the_named_pictures) {
  const plaxi1::image_loader_t loader(tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  const std::pair<standard_message_t::icon_types_t, const char*> icons[] = {
      {standard_message_t::icon_error, "error24"},
      {standard_message_t::icon_warning, "warning24"},
      {standard_message_t::icon_ok, "checkmark24"},
      {standard_message_t::icon_info, "info24"}};
  for (const auto& icon : icons) {
    const plaxi1::picture_t picture = standard_message_t::get_icon_by_type(icon.first);
    ASSERT_TRUE(picture.is_static_picture()) << icon.second;
    const wxImage expected = loader.load_static_picture(icon.second).getImage(false);
    ASSERT_TRUE(expected.IsOk()) << icon.second;
    EXPECT_TRUE(same_pixels(picture.get_static_picture().getImage(false), expected)) << icon.second;
  }
  EXPECT_FALSE(same_pixels(standard_message_t::get_icon_by_type(standard_message_t::icon_error)
                               .get_static_picture()
                               .getImage(false),
                           standard_message_t::get_icon_by_type(standard_message_t::icon_info)
                               .get_static_picture()
                               .getImage(false)));

  const plaxi1::picture_t progress = standard_message_t::get_icon_by_type(standard_message_t::icon_progress);
  ASSERT_TRUE(progress.is_animation());
  EXPECT_TRUE(progress.get_animation().IsOk());
  EXPECT_EQ(progress.get_animation().GetFrameCount(), loader.load_animation("progress").GetFrameCount());
}

TEST(message_test, unsupported_icon_type_is_reported_and_gives_the_error_picture) {
  assert_recorder_t asserts;
  const plaxi1::picture_t picture =
      standard_message_t::get_icon_by_type(static_cast<standard_message_t::icon_types_t>(5));
  EXPECT_EQ(asserts.texts(), texts_t{"(\"unsupported picture type\", false)"});
  ASSERT_TRUE(picture.is_static_picture());
  EXPECT_TRUE(same_pixels(picture.get_static_picture().getImage(false),
                          standard_message_t::get_icon_by_type(standard_message_t::icon_error)
                              .get_static_picture()
                              .getImage(false)));
  EXPECT_EQ(asserts.count(), 1u);
}

// ---------------------------------------------------------------------------------------
// Saving and loading.

TEST(message_test, save_writes_text_and_caption_in_order) {
  const interactive_message_t message("The caption", "The text");
  variant_bag_t bag;
  EXPECT_EQ(message.save(bag), korvat2::error::Success);
  ASSERT_EQ(bag.size(), 2u) << "no picture, no \"img\"";
  EXPECT_EQ(bag.entry_name(0), "msg");
  EXPECT_EQ(bag.entry_name(1), "cap");
  EXPECT_EQ(text_at(bag, "msg"), "The text");
  EXPECT_EQ(text_at(bag, "cap"), "The caption");
  EXPECT_TRUE(bag.get<variant_t>("msg")->can_get<const char*>());
  EXPECT_FALSE(bag.has<variant_t>("img"));
}

TEST(message_test, save_and_load_keep_text_caption_and_picture) {
  interactive_message_t message("Caption \xc3\xa4", "Text\nsecond line", sample_picture());
  message.add_button(1, "One");
  variant_bag_t bag;
  EXPECT_EQ(message.save(bag), korvat2::error::Success);
  ASSERT_EQ(bag.size(), 3u);
  EXPECT_EQ(bag.entry_name(2), "img");
  const std::string xpm = text_at(bag, "img");
  EXPECT_NE(xpm.find("XPM"), std::string::npos) << xpm;
  EXPECT_NE(xpm.find("None"), std::string::npos) << "the transparent pixel is kept as XPM's None colour";

  assert_recorder_t asserts;
  interactive_message_t loaded;
  EXPECT_EQ(loaded.load(bag), korvat2::error::Success);
  EXPECT_EQ(asserts.count(), 0u);
  EXPECT_EQ(loaded.m_text, "Text\nsecond line");
  EXPECT_EQ(loaded.m_caption, "Caption \xc3\xa4");
  EXPECT_TRUE(loaded.m_buttons.empty()) << "buttons aren't saved";
  EXPECT_EQ(loaded.get_default_button(), -1);
  ASSERT_TRUE(loaded.m_picture.is_static_picture());
  // XPM keeps every colour exactly and transparency as a 1-bit mask.
  const wxImage restored = loaded.m_picture.get_static_picture().getImage(false);
  expect_same_picture(sample_image(), restored);
  EXPECT_TRUE(restored.HasMask());

  // Transparency survives further rounds too, though the loaded mask colour is black.
  variant_bag_t again;
  loaded.save(again);
  interactive_message_t reloaded;
  reloaded.load(again);
  ASSERT_TRUE(reloaded.m_picture.is_static_picture());
  expect_same_picture(sample_image(), reloaded.m_picture.get_static_picture().getImage(false));
}

TEST(message_test, alpha_comes_back_as_a_mask) {
  // XPM knows only opaque and fully transparent pixels: alpha below half becomes transparent.
  wxImage image(4, 1);
  const unsigned char alpha[4] = {wxIMAGE_ALPHA_OPAQUE, wxIMAGE_ALPHA_TRANSPARENT, 200, 50};
  image.SetAlpha();
  for (int x = 0; x < 4; ++x) {
    image.SetRGB(x, 0, static_cast<unsigned char>(10 + x), 20, 30);
    image.SetAlpha(x, 0, alpha[x]);
  }
  const interactive_message_t message("c", "t", plaxi1::wxStaticPicture(image));
  variant_bag_t bag;
  message.save(bag);
  EXPECT_TRUE(message.m_picture.get_static_picture().getImage(false).HasAlpha())
      << "the picture is untouched";
  interactive_message_t loaded;
  loaded.load(bag);
  ASSERT_TRUE(loaded.m_picture.is_static_picture());
  const wxImage restored = loaded.m_picture.get_static_picture().getImage(false);
  ASSERT_EQ(restored.GetSize(), wxSize(4, 1));
  EXPECT_FALSE(restored.HasAlpha());
  const bool transparent[4] = {false, true, false, true};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(is_transparent(restored, x, 0), transparent[x]) << x;
    if (!transparent[x]) {
      EXPECT_EQ(restored.GetRed(x, 0), 10 + x);
      EXPECT_EQ(restored.GetGreen(x, 0), 20);
      EXPECT_EQ(restored.GetBlue(x, 0), 30);
    }
  }
}

TEST(message_test, black_pixels_stay_black_beside_a_black_mask) {
  // Under a black mask colour every black pixel is transparent; XPM gets it as "None",
  // not as the colour black.
  wxImage image(2, 1);
  image.SetRGB(0, 0, 0, 0, 0);
  image.SetRGB(1, 0, 9, 8, 7);
  image.SetMaskColour(0, 0, 0);
  const interactive_message_t message("c", "t", plaxi1::wxStaticPicture(image));
  variant_bag_t bag;
  message.save(bag);
  EXPECT_EQ(text_at(bag, "img").find("Black"), std::string::npos);
  interactive_message_t loaded;
  loaded.load(bag);
  ASSERT_TRUE(loaded.m_picture.is_static_picture());
  expect_same_picture(image, loaded.m_picture.get_static_picture().getImage(false));
}

TEST(message_test, animation_and_empty_pictures_are_not_saved) {
  const plaxi1::picture_t animation = standard_message_t::get_icon_by_type(standard_message_t::icon_progress);
  ASSERT_TRUE(animation.is_animation());
  const interactive_message_t animated("caption", "text", animation);
  variant_bag_t bag;
  EXPECT_EQ(animated.save(bag), korvat2::error::Success);
  EXPECT_EQ(bag.size(), 2u);
  EXPECT_FALSE(bag.has<variant_t>("img"));

  interactive_message_t loaded;
  loaded.load(bag);
  EXPECT_TRUE(loaded.m_picture.is_empty()) << "a progress picture comes back empty";
  EXPECT_EQ(loaded.m_caption, "caption");
}

TEST(message_test, a_bag_with_only_msg_keeps_caption_and_picture) {
  interactive_message_t message("old caption", "old text", sample_picture());
  message.add_button(3, "Three");
  variant_bag_t bag;
  bag.put("msg", std::string("new text"));
  EXPECT_EQ(message.load(bag), korvat2::error::Success);
  EXPECT_EQ(message.m_text, "new text");
  EXPECT_EQ(message.m_caption, "old caption");
  ASSERT_TRUE(message.m_picture.is_static_picture());
  expect_same_picture(sample_image(), message.m_picture.get_static_picture().getImage(false));
  EXPECT_EQ(ids_of(message), (std::vector<int>{3}));
  EXPECT_EQ(message.get_default_button(), 3);
}

TEST(message_test, an_empty_bag_changes_nothing) {
  interactive_message_t message("caption", "text");
  EXPECT_EQ(message.load(variant_bag_t()), korvat2::error::Success);
  EXPECT_EQ(message.m_text, "text");
  EXPECT_EQ(message.m_caption, "caption");
  EXPECT_TRUE(message.m_picture.is_empty());
}

TEST(message_test, non_text_msg_is_reported_and_the_rest_loads) {
  const interactive_message_t source("saved caption", "saved text", sample_picture());
  variant_bag_t bag;
  source.save(bag);
  bag.put("msg", 5);

  assert_recorder_t asserts;
  interactive_message_t message("old caption", "old text");
  EXPECT_EQ(message.load(bag), korvat2::error::Success);
  EXPECT_EQ(asserts.texts(), texts_t{"can_get<const char*>()"});
  EXPECT_EQ(message.m_text, "") << "read as empty text";
  EXPECT_EQ(message.m_caption, "saved caption");
  ASSERT_TRUE(message.m_picture.is_static_picture());
  expect_same_picture(sample_image(), message.m_picture.get_static_picture().getImage(false));
}

TEST(message_test, non_text_cap_is_reported_too) {
  variant_bag_t bag;
  bag.put("msg", std::string("text"));
  bag.put("cap", true);
  assert_recorder_t asserts;
  interactive_message_t message("old caption", "old text");
  EXPECT_EQ(message.load(bag), korvat2::error::Success);
  EXPECT_EQ(asserts.texts(), texts_t{"can_get<const char*>()"});
  EXPECT_EQ(message.m_text, "text");
}

TEST(message_test, standard_and_progress_messages_save_like_any_header) {
  const standard_message_t standard("caption", "text", sample_picture(),
                                    standard_message_t::buttons_ok_cancel);
  variant_bag_t bag;
  EXPECT_EQ(standard.save(bag), korvat2::error::Success);
  EXPECT_EQ(bag.size(), 3u);

  standard_message_t loaded;
  loaded.load(bag);
  EXPECT_EQ(loaded.m_text, "text");
  EXPECT_TRUE(loaded.m_buttons.empty());
}

// ---------------------------------------------------------------------------------------
// Progress messages, severity and lifetime.

TEST(message_test, progress_message_has_header_and_cancel_flag) {
  const progress_message_t plain;
  EXPECT_FALSE(plain.m_can_cancel);
  EXPECT_TRUE(plain.m_picture.is_empty());
  EXPECT_EQ(plain.m_caption, "");

  const progress_message_t running(
      "Counting", standard_message_t::get_icon_by_type(standard_message_t::icon_progress), true);
  EXPECT_EQ(running.m_caption, "Counting");
  EXPECT_TRUE(running.m_picture.is_animation());
  EXPECT_TRUE(running.m_can_cancel);

  const intrusive_pointer_t<header_t> header(new progress_message_t("x", plaxi1::picture_t(), false));
  EXPECT_NE(dynamic_cast<progress_message_t*>(header.get()), nullptr);
  const intrusive_pointer_t<tamsel3::custom_message_t> custom(new tamsel3::custom_message_t);
  EXPECT_EQ(custom->ref_count(), 1u);
}

TEST(message_test, severity_is_a_bit_mask) {
  EXPECT_EQ(pelit2::severity_transient, 1u);
  EXPECT_EQ(pelit2::severity_warning, 2u);
  EXPECT_EQ(pelit2::severity_error, 4u);
  EXPECT_EQ(pelit2::severity_critical, 8u);
  EXPECT_EQ(pelit2::severity_debug, 16u);
  const pelit2::ESeverity mask = pelit2::severity_warning | pelit2::severity_transient;
  EXPECT_TRUE(mask & pelit2::severity_transient);
  EXPECT_FALSE(mask & pelit2::severity_error);
}

class counted_message_t : public interactive_message_t {
 public:
  counted_message_t(int& destroyed) : interactive_message_t("caption", "text"), m_destroyed(destroyed) {}
  ~counted_message_t() override { ++m_destroyed; }

 private:
  int& m_destroyed;
};

TEST(message_test, message_dies_with_its_last_reference) {
  int destroyed = 0;
  intrusive_pointer_t<interactive_message_t> first(new counted_message_t(destroyed));
  intrusive_pointer_t<message_t> second(first);
  intrusive_pointer_t<header_t> third = second;
  EXPECT_EQ(first->ref_count(), 3u);
  first.reset();
  second.reset();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(third->ref_count(), 1u);
  third.reset();
  EXPECT_EQ(destroyed, 1);
}

}  // namespace
