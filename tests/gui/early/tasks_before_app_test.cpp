// Tasks posted before the wx application exists wait for it and are delivered, in order
// and on the GUI thread, once its loop runs. A program of its own: every other GUI test
// program has its application before the first test.
#include <plaxi1/screenshot.h>
#include <plaxi1/tasks.h>

#include <korvat2/signal.h>

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <thread>
#include <vector>

namespace {

class recorder_t : public korvat2::subscriber_base_t {
 public:
  void on_value(int value) {
    m_values.push_back(value);
    m_on_main_thread = m_on_main_thread && wxThread::IsMain();
  }
  std::vector<int> m_values;
  bool m_on_main_thread = true;
};

class counted_task_t : public plaxi1::tasks::GUITask {
 public:
  explicit counted_task_t(int& runs) : m_runs(runs) {}
  void DoGUITask() override { ++m_runs; }

 private:
  int& m_runs;
};

TEST(tasks_before_app, wait_for_the_application_and_then_run_in_order) {
  ASSERT_EQ(wxTheApp, nullptr);
  korvat2::signal_t<int> signal;
  recorder_t recorder;
  signal.connect(&recorder, &recorder_t::on_value);
  int runs = 0;
  plaxi1::tasks::PostSignal(signal, 1);
  // From another thread too, as a worker started early would.
  std::thread([&signal] { plaxi1::tasks::PostSignal(signal, 2); }).join();
  korvat2::intrusive_pointer_t<plaxi1::tasks::Scheduler> scheduler = plaxi1::tasks::Scheduler::Get(nullptr);
  scheduler->AddTask(new counted_task_t(runs), std::string());
  plaxi1::tasks::PostSignal(signal, 3);
  EXPECT_EQ(scheduler->GetPendingCount(), 4u);
  EXPECT_TRUE(recorder.m_values.empty());

  int argc = 1;
  char name[] = "tasks_before_app";
  char* argv[] = {name, nullptr};
  wxApp::SetInstance(new wxApp);
  ASSERT_TRUE(wxEntryStart(argc, argv));
  ASSERT_TRUE(wxTheApp->CallOnInit());
  {
    wxGUIEventLoop loop;
    wxEventLoopActivator activate(&loop);
    EXPECT_TRUE(plaxi1::wait_until([&] { return recorder.m_values.size() == 3 && runs == 1; }, 5000));
  }
  EXPECT_EQ(recorder.m_values, (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(recorder.m_on_main_thread);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(scheduler->GetPendingCount(), 0u);
  wxTheApp->OnExit();
  wxEntryCleanup();
}

}  // namespace
