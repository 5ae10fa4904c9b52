// Pictures and animations by name from a picture index, in the resource archive or in a
// plain folder.
#include <plaxi1/image_loader.h>

#include <plaxi1/resource_loader.h>
#include "gui_test.h"

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>
#include <log4cplus/loglevel.h>
#include <wx/filesys.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using plaxi1::image_loader_t;
using plaxi1::wxStaticPicture;

std::string archive(const std::string& member) {
  return gui_test::resource_dir() + "/tamsel3.dat#zip:" + member;
}

std::string archive_index() { return archive("tamsel_images.xrc"); }

// A file of the resource archive, read past the loader.
wxImage archive_image(const std::string& member) {
  wxFileSystem fs;
  std::unique_ptr<wxFSFile> file(fs.OpenFile(wxString::FromUTF8(archive(member))));
  if (!file) {
    return wxImage();
  }
  wxMemoryOutputStream buffer;
  buffer.Write(*file->GetStream());
  wxMemoryInputStream in(buffer);
  return wxImage(in, wxBITMAP_TYPE_PNG);
}

bool same_pixels(const wxImage& a, const wxImage& b) {
  if (!a.IsOk() || !b.IsOk() || a.GetSize() != b.GetSize() || a.HasAlpha() != b.HasAlpha()) {
    return false;
  }
  const size_t pixels = static_cast<size_t>(a.GetWidth()) * a.GetHeight();
  return std::equal(a.GetData(), a.GetData() + 3 * pixels, b.GetData()) &&
         (!a.HasAlpha() || std::equal(a.GetAlpha(), a.GetAlpha() + pixels, b.GetAlpha()));
}

wxColour colour_at(const wxImage& image, int x, int y) {
  return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

// Warnings of the library's logger that name `name`.
size_t warnings_about(const test_support::log_capture_t& log, const std::string& name) {
  size_t count = 0;
  for (const test_support::log_line_t& line : log.lines()) {
    count += line.level == log4cplus::WARN_LOG_LEVEL && line.text.find(name) != std::string::npos;
  }
  return count;
}

// A picture of the archive: `side` pixels square on a transparent ground, with its form twice
// as large beside it.
void expect_square_with_dense_form(const image_loader_t& loader, const std::string& name, int side) {
  SCOPED_TRACE(name);
  const wxStaticPicture picture = loader.load_static_picture(name);
  ASSERT_FALSE(picture.is_empty());
  const wxImage image = picture.getImage(false);
  EXPECT_EQ(image.GetSize(), wxSize(side, side));
  ASSERT_TRUE(image.HasAlpha());
  EXPECT_EQ(image.GetAlpha(0, 0), 0);
  const wxBitmap dense = picture.getBundle().GetBitmap(wxSize(2 * side, 2 * side));
  EXPECT_EQ(dense.GetSize(), wxSize(2 * side, 2 * side));
  EXPECT_TRUE(same_pixels(dense.ConvertToImage(), archive_image("images/" + name + "@2x.png")));
}

class image_loader_test : public ::testing::Test {
 protected:
  void SetUp() override { plaxi1::init_resource_handlers(); }
};

TEST_F(image_loader_test, keeps_its_location) {
  EXPECT_EQ(image_loader_t(archive_index()).get_location(), archive_index());
  EXPECT_EQ(image_loader_t("").get_location(), "");
}

TEST_F(image_loader_test, loads_a_picture_from_the_archive) {
  const wxStaticPicture picture = image_loader_t(archive_index()).load_static_picture("frame_test16");
  ASSERT_FALSE(picture.is_empty());
  EXPECT_EQ(picture.getImage(false).GetSize(), wxSize(16, 16));
  EXPECT_TRUE(same_pixels(picture.getImage(false), archive_image("images/frame_test16.png")));
}

TEST_F(image_loader_test, finds_the_dense_form_beside_the_picture) {
  const wxStaticPicture picture = image_loader_t(archive_index()).load_static_picture("frame_test16");
  const wxBitmap dense = picture.getBundle().GetBitmap(wxSize(32, 32));
  EXPECT_EQ(dense.GetSize(), wxSize(32, 32));
  EXPECT_TRUE(same_pixels(dense.ConvertToImage(), archive_image("images/frame_test16@2x.png")));
}

TEST_F(image_loader_test, keeps_loaded_pictures) {
  const image_loader_t loader(archive_index());
  const wxImage first = loader.load_static_picture("frame_test16").getImage(false);
  EXPECT_TRUE(
      image_loader_t(archive_index()).load_static_picture("frame_test16").getImage(false).IsSameAs(first));
}

TEST_F(image_loader_test, missing_name_gives_an_empty_picture_and_one_warning) {
  test_support::log_capture_t log;
  gui_test::wx_log_recorder_t wx_log;
  const image_loader_t loader(archive_index());
  EXPECT_TRUE(loader.load_static_picture("no_such_picture_1").is_empty());
  EXPECT_TRUE(loader.load_static_picture("no_such_picture_1").is_empty());
  EXPECT_EQ(warnings_about(log, "no_such_picture_1"), 1u);
  EXPECT_TRUE(wx_log.m_messages.empty());
}

TEST_F(image_loader_test, animation_is_not_a_picture) {
  test_support::log_capture_t log;
  EXPECT_TRUE(image_loader_t(archive_index()).load_static_picture("frame_test_anim").is_empty());
  EXPECT_EQ(warnings_about(log, "frame_test_anim"), 1u);
}

TEST_F(image_loader_test, missing_index_gives_empty_pictures_and_one_warning_per_name) {
  test_support::log_capture_t log;
  gui_test::wx_log_recorder_t wx_log;
  const image_loader_t loader("/nonexistent/tamsel3.dat#zip:tamsel_images.xrc");
  EXPECT_TRUE(loader.load_static_picture("frame_test16").is_empty());
  EXPECT_TRUE(loader.load_static_picture("frame_test16").is_empty());
  EXPECT_FALSE(loader.load_animation("frame_test_anim").IsOk());
  EXPECT_EQ(warnings_about(log, "frame_test16"), 1u);
  EXPECT_EQ(warnings_about(log, "frame_test_anim"), 1u);
  EXPECT_TRUE(wx_log.m_messages.empty());
}

TEST_F(image_loader_test, loader_without_location_is_quietly_empty) {
  test_support::log_capture_t log;
  const image_loader_t loader("");
  EXPECT_TRUE(loader.load_static_picture("frame_test16").is_empty());
  EXPECT_FALSE(loader.load_animation("frame_test_anim").IsOk());
  EXPECT_TRUE(log.lines().empty());
}

TEST_F(image_loader_test, loads_an_animation_with_its_frames) {
  const wxAnimation animation = image_loader_t(archive_index()).load_animation("frame_test_anim");
  ASSERT_TRUE(animation.IsOk());
  EXPECT_EQ(animation.GetFrameCount(), 2u);
  EXPECT_EQ(animation.GetSize(), wxSize(16, 16));
  EXPECT_EQ(animation.GetDelay(0), 250);
  // The square moves from the left half to the right half.
  const wxImage first = animation.GetFrame(0);
  const wxImage second = animation.GetFrame(1);
  ASSERT_TRUE(first.IsOk() && second.IsOk());
  EXPECT_EQ(colour_at(first, 4, 8), wxColour(0x33, 0x66, 0xCC));
  EXPECT_EQ(colour_at(second, 11, 8), wxColour(0x99, 0x99, 0x99));
  EXPECT_NE(colour_at(first, 11, 8), wxColour(0x99, 0x99, 0x99));
}

TEST_F(image_loader_test, keeps_loaded_animations) {
  const wxAnimation first = image_loader_t(archive_index()).load_animation("frame_test_anim");
  EXPECT_TRUE(image_loader_t(archive_index()).load_animation("frame_test_anim").IsSameAs(first));
}

TEST_F(image_loader_test, missing_animation_is_not_ok_with_one_warning) {
  test_support::log_capture_t log;
  const image_loader_t loader(archive_index());
  EXPECT_FALSE(loader.load_animation("no_such_animation_1").IsOk());
  EXPECT_FALSE(loader.load_animation("no_such_animation_1").IsOk());
  EXPECT_FALSE(loader.load_animation("frame_test16").IsOk());  // a picture is no animation
  EXPECT_EQ(warnings_about(log, "no_such_animation_1"), 1u);
}

// The library's own pictures: each at its size with a form twice as large beside it.
TEST_F(image_loader_test, loads_the_message_pictures_with_their_dense_forms) {
  const image_loader_t loader(archive_index());
  const std::vector<std::pair<std::string, int>> pictures = {
      {"error24", 24}, {"warning24", 24}, {"checkmark24", 24}, {"info24", 24},
      {"error12", 12}, {"warning12", 12}, {"info12", 12},      {"empty12", 12},
  };
  for (const auto& [name, side] : pictures) {
    expect_square_with_dense_form(loader, name, side);
  }
  // A white cross on red, a dark mark on yellow, white on green and on blue.
  const wxImage error = loader.load_static_picture("error24").getImage(false);
  EXPECT_EQ(colour_at(error, 12, 12), *wxWHITE);
  EXPECT_EQ(colour_at(error, 12, 4), wxColour(0xE0, 0x1B, 0x24));
  const wxImage warning = loader.load_static_picture("warning24").getImage(false);
  EXPECT_EQ(colour_at(warning, 12, 10), wxColour(0x3D, 0x38, 0x46));
  EXPECT_EQ(colour_at(warning, 7, 19), wxColour(0xF5, 0xC2, 0x11));
  EXPECT_EQ(colour_at(loader.load_static_picture("checkmark24").getImage(false), 12, 4),
            wxColour(0x2E, 0xC2, 0x7E));
  const wxImage info = loader.load_static_picture("info24").getImage(false);
  EXPECT_EQ(colour_at(info, 12, 15), *wxWHITE);
  EXPECT_EQ(colour_at(info, 5, 12), wxColour(0x35, 0x84, 0xE4));
  const wxImage empty = loader.load_static_picture("empty12").getImage(false);
  for (int y = 0; y < 12; ++y) {
    for (int x = 0; x < 12; ++x) {
      EXPECT_EQ(empty.GetAlpha(x, y), 0);
    }
  }
}

// The message icons of the caption and message panels: critical is a darker stop sign with a
// "!", so that it doesn't pass for an error's round cross.
TEST_F(image_loader_test, loads_the_severity_pictures_with_their_dense_forms) {
  const image_loader_t loader(archive_index());
  for (const char* name : {"severity_critical", "severity_error", "severity_warn", "severity_info"}) {
    expect_square_with_dense_form(loader, name, 16);
  }
  const wxImage critical = loader.load_static_picture("severity_critical").getImage(false);
  EXPECT_EQ(colour_at(critical, 4, 8), wxColour(0xA5, 0x1D, 0x2D));
  EXPECT_EQ(colour_at(critical, 7, 5), *wxWHITE);  // the bar of "!"
  // A flat side on a pixel edge, where the disc's curve covers part of a pixel.
  EXPECT_EQ(critical.GetAlpha(0, 7), 0);
  EXPECT_EQ(critical.GetAlpha(1, 7), 255);
  const wxImage error = loader.load_static_picture("severity_error").getImage(false);
  EXPECT_EQ(colour_at(error, 8, 2), wxColour(0xE0, 0x1B, 0x24));
  EXPECT_EQ(colour_at(error, 7, 7), *wxWHITE);  // the middle of the cross
  EXPECT_GT(error.GetAlpha(0, 7), 0);
  EXPECT_LT(error.GetAlpha(0, 7), 255);
  const wxImage warning = loader.load_static_picture("severity_warn").getImage(false);
  EXPECT_EQ(colour_at(warning, 7, 6), wxColour(0x3D, 0x38, 0x46));
  EXPECT_EQ(colour_at(warning, 4, 13), wxColour(0xF5, 0xC2, 0x11));
  const wxImage info = loader.load_static_picture("severity_info").getImage(false);
  EXPECT_EQ(colour_at(info, 7, 9), *wxWHITE);
  EXPECT_EQ(colour_at(info, 3, 8), wxColour(0x35, 0x84, 0xE4));
}

// The scroll buttons' looks: a grey chevron, a dark one on a light disc when hovered, on a
// darker disc when pressed, and a faint one when disabled. Left mirrors right.
TEST_F(image_loader_test, loads_the_scroll_button_pictures_in_every_look) {
  const image_loader_t loader(archive_index());
  for (const char* look : {"normal", "hover", "pressed", "disabled"}) {
    const std::string left = std::string("scroll_left_") + look;
    const std::string right = std::string("scroll_right_") + look;
    expect_square_with_dense_form(loader, left, 15);
    expect_square_with_dense_form(loader, right, 15);
    EXPECT_TRUE(same_pixels(loader.load_static_picture(left).getImage(false),
                            loader.load_static_picture(right).getImage(false).Mirror()))
        << look;
  }
  const wxPoint tip(9, 7);  // of the right chevron
  const wxImage normal = loader.load_static_picture("scroll_right_normal").getImage(false);
  EXPECT_EQ(colour_at(normal, tip.x, tip.y), wxColour(0x86, 0x85, 0x8A));
  EXPECT_EQ(normal.GetAlpha(tip.x, tip.y), 255);
  EXPECT_EQ(normal.GetAlpha(7, 2), 0) << "no ground";
  const wxImage hover = loader.load_static_picture("scroll_right_hover").getImage(false);
  EXPECT_EQ(colour_at(hover, tip.x, tip.y), wxColour(0x3D, 0x38, 0x46));
  EXPECT_EQ(colour_at(hover, 7, 2), wxColour(0xDE, 0xDD, 0xDA));
  const wxImage pressed = loader.load_static_picture("scroll_right_pressed").getImage(false);
  EXPECT_EQ(colour_at(pressed, tip.x, tip.y), wxColour(0x3D, 0x38, 0x46));
  EXPECT_EQ(colour_at(pressed, 7, 2), wxColour(0xC0, 0xBF, 0xBC));
  const wxImage disabled = loader.load_static_picture("scroll_right_disabled").getImage(false);
  EXPECT_EQ(colour_at(disabled, tip.x, tip.y), wxColour(0x86, 0x85, 0x8A));
  EXPECT_LT(disabled.GetAlpha(tip.x, tip.y), 128) << "faint on any ground";
}

// The buttons beside a list of folders: grey strokes on a transparent ground, down the mirror
// image of up, and a cross whose middle is drawn and whose corners between the arms are not.
TEST_F(image_loader_test, loads_the_folder_list_buttons_with_their_dense_forms) {
  const image_loader_t loader(archive_index());
  for (const char* name : {"up", "down", "cross"}) {
    expect_square_with_dense_form(loader, name, 16);
  }
  const wxImage up = loader.load_static_picture("up").getImage(false);
  const wxImage down = loader.load_static_picture("down").getImage(false);
  EXPECT_TRUE(same_pixels(down, up.Mirror(false)));
  EXPECT_FALSE(same_pixels(up, down));
  const wxColour grey(0x8B, 0x8A, 0x8F);
  EXPECT_EQ(colour_at(up, 7, 6), grey);  // beside the tip
  EXPECT_EQ(up.GetAlpha(7, 6), 255);
  EXPECT_EQ(up.GetAlpha(7, 11), 0) << "open below the tip";
  EXPECT_EQ(up.GetAlpha(3, 10), 255);  // a leg
  const wxImage cross = loader.load_static_picture("cross").getImage(false);
  EXPECT_EQ(colour_at(cross, 7, 7), grey);
  EXPECT_EQ(cross.GetAlpha(7, 7), 255);
  EXPECT_EQ(cross.GetAlpha(8, 3), 0);
  EXPECT_EQ(cross.GetAlpha(4, 4), 255);
  EXPECT_EQ(cross.GetAlpha(11, 4), 255);
}

TEST_F(image_loader_test, loads_the_progress_spinner) {
  const wxAnimation animation = image_loader_t(archive_index()).load_animation("progress");
  ASSERT_TRUE(animation.IsOk());
  ASSERT_EQ(animation.GetFrameCount(), 12u);
  EXPECT_EQ(animation.GetSize(), wxSize(24, 24));
  for (unsigned frame = 0; frame < animation.GetFrameCount(); ++frame) {
    EXPECT_EQ(animation.GetDelay(frame), 80);
    EXPECT_EQ(animation.GetFrame(frame).GetSize(), wxSize(24, 24));
  }
  // The dots are grey, and the largest one moves on from frame to frame.
  const wxImage first = animation.GetFrame(0);
  const wxImage later = animation.GetFrame(3);
  ASSERT_TRUE(first.IsOk() && later.IsOk());
  EXPECT_EQ(colour_at(first, 15, 3), wxColour(0x77, 0x76, 0x7B));
  EXPECT_FALSE(same_pixels(first, later));
}

// An index in a plain folder, with pictures of one colour each.
class folder_index_test : public image_loader_test {
 protected:
  void SetUp() override {
    image_loader_test::SetUp();
    std::filesystem::create_directories(m_dir.file("pictures"));
    save(square(16, *wxRED), "pictures/both.png");
    save(square(32, *wxGREEN), "pictures/both@2x.png");
    save(square(16, *wxBLUE), "pictures/single.png");
    test_support::write_bytes(m_dir.file("pictures/broken.png"), "not a picture");
    test_support::write_bytes(m_dir.file("pictures/empty.png"), "");
    m_index = m_dir.write("index.xrc",
                          "<?xml version=\"1.0\"?>\n"
                          "<resource version=\"2.5.3.0\">\n"
                          "  <object class=\"wxBitmap\" name=\"both\">pictures/both.png</object>\n"
                          "  <object class=\"wxBitmap\" name=\"single\"> pictures/single.png </object>\n"
                          "  <object class=\"wxBitmap\" name=\"broken\">pictures/broken.png</object>\n"
                          "  <object class=\"wxBitmap\" name=\"gone\">pictures/gone.png</object>\n"
                          "  <object class=\"wxBitmap\" name=\"empty\">pictures/empty.png</object>\n"
                          "  <object class=\"wxAnimation\" name=\"still\">pictures/single.png</object>\n"
                          "</resource>\n");
  }

  static wxImage square(int side, const wxColour& colour) {
    wxImage image(side, side);
    image.SetRGB(wxRect(0, 0, side, side), colour.Red(), colour.Green(), colour.Blue());
    return image;
  }
  void save(const wxImage& image, const std::string& name) {
    ASSERT_TRUE(image.SaveFile(wxString::FromUTF8(m_dir.file(name)), wxBITMAP_TYPE_PNG));
  }

  test_support::temp_dir_t m_dir;
  std::string m_index;
};

TEST_F(folder_index_test, picture_with_a_dense_form) {
  const wxStaticPicture picture = image_loader_t(m_index).load_static_picture("both");
  ASSERT_FALSE(picture.is_empty());
  EXPECT_EQ(colour_at(picture.getImage(false), 0, 0), *wxRED);
  const wxBitmap dense = picture.getBundle().GetBitmap(wxSize(32, 32));
  EXPECT_EQ(colour_at(dense.ConvertToImage(), 0, 0), *wxGREEN);
}

TEST_F(folder_index_test, picture_without_a_dense_form) {
  const wxStaticPicture picture = image_loader_t(m_index).load_static_picture("single");
  ASSERT_FALSE(picture.is_empty());
  EXPECT_EQ(picture.getImage(true).GetSize(), wxSize(16, 16));
  const wxBitmap scaled = picture.getBundle().GetBitmap(wxSize(32, 32));
  EXPECT_EQ(colour_at(scaled.ConvertToImage(), 0, 0), *wxBLUE);
}

TEST_F(folder_index_test, unreadable_files_give_empty_pictures) {
  test_support::log_capture_t log;
  gui_test::wx_log_recorder_t wx_log;
  EXPECT_TRUE(image_loader_t(m_index).load_static_picture("broken").is_empty());
  EXPECT_TRUE(image_loader_t(m_index).load_static_picture("gone").is_empty());
  EXPECT_TRUE(image_loader_t(m_index).load_static_picture("empty").is_empty());
  EXPECT_FALSE(image_loader_t(m_index).load_animation("still").IsOk());  // a PNG is no animation
  EXPECT_EQ(warnings_about(log, "'broken'"), 1u);
  EXPECT_EQ(warnings_about(log, "'gone'"), 1u);
  EXPECT_EQ(warnings_about(log, "'empty'"), 1u);
  EXPECT_EQ(warnings_about(log, "'still'"), 1u);
  EXPECT_TRUE(wx_log.m_messages.empty());
}

// The index is read whole, but a picture is read and decoded only when it is asked for: one
// whose file appears after the index was read still loads.
TEST_F(folder_index_test, a_picture_is_read_at_its_first_use_only) {
  const std::string index =
      m_dir.write("late_index.xrc",
                  "<?xml version=\"1.0\"?>\n"
                  "<resource version=\"2.5.3.0\">\n"
                  "  <object class=\"wxBitmap\" name=\"single\">pictures/single.png</object>\n"
                  "  <object class=\"wxBitmap\" name=\"late\">pictures/late.png</object>\n"
                  "</resource>\n");
  test_support::log_capture_t log;
  EXPECT_FALSE(image_loader_t(index).load_static_picture("single").is_empty());
  EXPECT_EQ(warnings_about(log, "'late'"), 0u);
  save(square(16, *wxGREEN), "pictures/late.png");
  const wxStaticPicture late = image_loader_t(index).load_static_picture("late");
  ASSERT_FALSE(late.is_empty());
  EXPECT_EQ(colour_at(late.getImage(false), 0, 0), *wxGREEN);
}

}  // namespace
