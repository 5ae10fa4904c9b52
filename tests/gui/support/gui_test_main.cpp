// Runner of the GUI test programs: a wxApp without a main window, one event loop active for
// the whole run, and failures instead of dialogs for wx assertions and unexpected reports.
#include "assert_recorder.h"
#include "fixtures.h"
#include "gui_test.h"

#include <zandor/debug.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/toplevel.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class gui_test_app_t : public wxApp {
 public:
  // The base class would parse the command line, which holds the test runner's options.
  bool OnInit() override { return true; }
};

void destroy_top_level_windows() {
  const std::vector<wxWindow*> windows(wxTopLevelWindows.begin(), wxTopLevelWindows.end());
  for (wxWindow* window : windows) {
    if (!window->IsBeingDeleted()) {
      window->Destroy();
    }
  }
  gui_test::wait_until([] { return wxTopLevelWindows.empty(); });
  gui_test::pump();
}

// Each test starts without the windows an earlier one left behind.
class leftover_windows_t : public ::testing::EmptyTestEventListener {
  void OnTestEnd(const ::testing::TestInfo&) override { destroy_top_level_windows(); }
};

void fail_on_wx_assert(const wxString& file, int line, const wxString& function, const wxString& condition,
                       const wxString& message) {
  ADD_FAILURE_AT(file.utf8_str(), line) << "wx assertion failed in " << function.utf8_str() << ": "
                                        << condition.utf8_str() << " " << message.utf8_str();
}

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  // Test discovery lists the tests at build time, where there may be no display.
  if (GTEST_FLAG_GET(list_tests)) {
    return RUN_ALL_TESTS();
  }
  test_support::fail_on_unexpected_reports();
  wxSetAssertHandler(fail_on_wx_assert);

  // The accessibility bridge would wait for a session bus that test runs don't have.
  ::setenv("NO_AT_BRIDGE", "1", 0);
  ::setenv("GDK_BACKEND", "x11", 0);
  // Without a display GTK can't start: say so rather than fail obscurely.
  const bool wayland = std::string(std::getenv("GDK_BACKEND")) == "wayland";
  const char* display = std::getenv(wayland ? "WAYLAND_DISPLAY" : "DISPLAY");
  if (!display || !*display) {
    std::fprintf(stderr, "GUI tests need a display: run them under xvfb-run or tools/wayland-run.sh\n");
    return 1;
  }
  test_support::use_english_texts();

  wxApp::SetInstance(new gui_test_app_t);
  if (!wxEntryStart(argc, argv)) {
    std::fprintf(stderr, "GUI tests can't open the display %s\n", display);
    return 1;
  }
  // Log messages go to the test's output: a log dialog would wait for a click forever.
  delete wxLog::SetActiveTarget(new wxLogStderr);
  int result = 1;
  if (wxTheApp->CallOnInit()) {
    // Pending events and CallAfter calls need an active loop, also outside modal dialogs.
    wxGUIEventLoop loop;
    wxEventLoopActivator activate(&loop);
    ::testing::UnitTest::GetInstance()->listeners().Append(new leftover_windows_t);
    result = RUN_ALL_TESTS();
    destroy_top_level_windows();
  } else {
    std::fprintf(stderr, "GUI tests: the application failed to initialise\n");
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return result;
}
