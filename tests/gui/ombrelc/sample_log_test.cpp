// A sample log as the product shows it, captured for a look, and the speed of a long log.
#include "ombrelc_fixture.h"

#include <plaxi1/ui_settings.h>

#include <wx/artprov.h>
#include <wx/dcmemory.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace ombrelc_test;
using namespace ombrelcfrw7;

#if defined(__SANITIZE_ADDRESS__)
constexpr double slowdown = 10.0;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr double slowdown = 10.0;
#else
constexpr double slowdown = 1.0;
#endif
#else
constexpr double slowdown = 1.0;
#endif

ombrelc7::ombrelc_ptr<ombrelc7::IRasterPicture> art(const wxArtID& id) {
  auto picture = ombrelc7::GetCurrentSystem()->CreateRasterPicture(size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(wxArtProvider::GetBitmap(id, wxART_MESSAGE_BOX, wxSize(24, 24)),
                                 picture.get());
  return picture;
}

CCaption* line(CVisualElement* parent, const std::string& text, bool html = false) {
  auto* caption = new CCaption(parent, size<int>(0, 0), ombrelc7::alFill);
  caption->AdjustHeight(true);
  caption->UseHTML(html);
  caption->SetCaption(text);
  return caption;
}

class ombrelc_sample_log_test : public control_fixture_t {
 protected:
  void SetUp() override { make(wxSize(560, 520)); }
};

TEST_F(ombrelc_sample_log_test, three_message_cards_in_a_log) {
  auto* scroller = new CScrollContainer(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* log = new CEventLog(nullptr, size<int>(0, 0), ombrelc7::alFill);
  scroller->SetScrolled(log);
  log->SetPadding(4);

  auto* done = new CCustomMessageBox(log, size<int>(0, 0), ombrelc7::alFill);
  done->GetImage()->SetRasterPicture(art(wxART_INFORMATION).get());
  done->GetCaption()->SetCaption("Analysis finished");
  line(done, "Checked <b>1,284</b> files in 12 modules in 3.2&nbsp;s.", true);
  line(done,
       "No new problems were found since the last run; 4 known warnings are still open and listed in the "
       "report, which wraps onto a second line when the window is narrow.");
  CCaption* when = line(done, "Today at 14:02");
  when->SetFontKind(plaxi1::font_small);
  when->SetTextColor(plaxi1::ui_settings_t::get()->get_color(plaxi1::color_grey_text));

  auto* progress = new CCustomMessageBox(log, size<int>(0, 0), ombrelc7::alFill);
  progress->GetImage()->SetRasterPicture(art(wxART_HARDDISK).get());
  progress->GetCaption()->SetCaption("Indexing sources");
  line(progress, "Reading module 34 of 120: <i>src/parser/expressions.cpp</i>", true);
  auto* gauge = new CGaugeBoxEx(progress, size<int>(0, 0), ombrelc7::alFill);
  gauge->SetMax(120);
  gauge->SetPos(34);

  auto* warning = new CMessageBoxTempl<CVertBox>(log, size<int>(0, 0), ombrelc7::alFill);
  warning->GetImage()->SetRasterPicture(art(wxART_WARNING).get());
  warning->GetCaption()->SetCaption("3 files could not be read");
  line(warning, "The files are locked by another program or you lack the permission to read them.");
  line(warning, "/home/user/project/data/input.csv");
  auto* buttons = new CButtonSet(warning, size<int>(0, 0), ombrelc7::alFill);
  buttons->AddButton("Show Details", 1);
  buttons->AddButton("Retry", 2);

  layout();
  EXPECT_GT(warning->GetRect().bottom, progress->GetRect().bottom);
  EXPECT_EQ(gauge->GetRect().left, progress->GetCaption()->GetRect().left);
  const char* dir = std::getenv("TMPDIR");
  const std::string path = std::string(dir ? dir : "/tmp") + "/ombrelc_sample_log.png";
  ASSERT_TRUE(gui_test::capture_png(m_frame, path));
  std::printf("sample log captured to %s\n", path.c_str());
}

TEST_F(ombrelc_sample_log_test, a_log_of_100000_lines_lays_out_incrementally_and_paints_a_screen_fast) {
  using clock = std::chrono::steady_clock;
  auto* scroller = new CScrollContainer(root(), size<int>(0, 0), ombrelc7::alClient);
  auto* log = new CEventLog(nullptr, size<int>(0, 0), ombrelc7::alFill);
  scroller->SetScrolled(log);
  layout();

  const auto fill_start = clock::now();
  m_wrapper->SuspendLayout(true);
  for (int i = 0; i < 100000; ++i) {
    line(log, "14:02:" + std::to_string(i % 60) + " Checked file src/module" + std::to_string(i) +
                  ".cpp: no problems");
  }
  m_wrapper->SuspendLayout(false);
  const double fill_ms = std::chrono::duration<double, std::milli>(clock::now() - fill_start).count();
  EXPECT_EQ(scroller->GetContentHeight(), log->GetChildren().back()->GetRect().bottom);
  EXPECT_TRUE(scroller->IsAtEnd());

  // One more line: no sibling is measured again, so this stays cheap.
  const auto append_start = clock::now();
  line(log, "one more line");
  m_control->Rearrange();
  const double append_ms = std::chrono::duration<double, std::milli>(clock::now() - append_start).count();

  const wxSize client = m_panel->GetClientSize();
  wxBitmap bitmap(client.x, client.y, 24);
  double paint_ms = 1e9;
  for (int round = 0; round < 5; ++round) {
    scroller->SetScrollPos(round * 200000);
    wxMemoryDC dc(bitmap);
    const auto paint_start = clock::now();
    m_control->HandlePaint(dc, rect<int>(0, 0, client.x, client.y));
    paint_ms =
        std::min(paint_ms, std::chrono::duration<double, std::milli>(clock::now() - paint_start).count());
  }
  std::printf(
      "100000 lines: filled and laid out in %.0f ms, one appended line laid out in %.2f ms, "
      "a screen painted in %.2f ms; %zu bytes per caption\n",
      fill_ms, append_ms, paint_ms, sizeof(CCaption));
  EXPECT_LT(paint_ms, 16.0 * slowdown);
  scroller->SetScrollPos(scroller->GetMaxScrollPos() / 2);
  const char* dir = std::getenv("TMPDIR");
  ASSERT_TRUE(gui_test::capture_png(m_frame, std::string(dir ? dir : "/tmp") + "/ombrelc_long_log.png"));
  EXPECT_LT(append_ms, 50.0 * slowdown);
}

}  // namespace
