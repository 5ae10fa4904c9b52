#pragma once
// A GUI application for benchmarks that show windows or use the event loop: started on
// construction, ended on destruction. They need a display (xvfb-run where there is none).
#include <wx/app.h>
#include <wx/init.h>

namespace bench_support {

class wx_session_t {
 public:
  /// `app` (owned by wx from here on) defaults to a plain GUI application; without one wx
  /// makes a console one.
  wx_session_t(int& argc, char** argv, wxApp* app = nullptr) {
    wxApp::SetInstance(app ? app : new wxApp);
    m_ok = wxEntryStart(argc, argv) && wxTheApp && wxTheApp->CallOnInit();
  }
  ~wx_session_t() {
    if (m_ok) {
      wxTheApp->OnExit();
    }
    wxEntryCleanup();
  }
  wx_session_t(const wx_session_t&) = delete;
  wx_session_t& operator=(const wx_session_t&) = delete;

  bool ok() const { return m_ok; }

 private:
  bool m_ok = false;
};

}  // namespace bench_support
