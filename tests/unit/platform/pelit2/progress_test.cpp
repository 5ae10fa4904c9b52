#include <pelit2/progress.h>

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

namespace {

using pelit2::IProgress;

// Records what reaches it; `progressed` is left to the interface.
class recording_progress_t : public IProgress {
 public:
  explicit recording_progress_t(bool* destroyed = nullptr) : m_destroyed(destroyed) {}
  ~recording_progress_t() override {
    if (m_destroyed) {
      *m_destroyed = true;
    }
  }

  void start(const char* title, double total) override {
    m_title = title;
    m_total = total;
  }
  void internalProgressed(double steps) override { m_steps.push_back(steps); }
  void message(const char* text) override { m_messages.emplace_back(text); }
  void finish() override { m_finished = true; }
  void cancel() override { m_canceled = true; }
  double getTotalSteps() override { return m_total; }
  bool isCanceled() override { return m_canceled; }

  std::vector<double> m_steps;
  std::vector<std::string> m_messages;
  std::string m_title;
  double m_total = 0;
  bool m_finished = false;
  bool m_canceled = false;

 private:
  bool* m_destroyed;
};

// Overrides `progressed` itself, which must stay virtual.
class own_progressed_t : public recording_progress_t {
 public:
  void progressed(int steps) override { m_own.push_back(steps); }
  std::vector<int> m_own;
};

// A recorder and the interface through which each test drives it.
class progress_test : public ::testing::Test {
 protected:
  recording_progress_t m_progress;
  IProgress& m_base = m_progress;
};

TEST_F(progress_test, progressed_forwards_the_steps_as_a_double) {
  m_base.progressed(3);
  EXPECT_EQ(m_progress.m_steps, std::vector<double>{3.0});
}

TEST_F(progress_test, progressed_forwards_every_call_in_order) {
  m_base.progressed(1);
  m_base.progressed(0);
  m_base.progressed(-2);
  m_base.progressed(10);
  EXPECT_EQ(m_progress.m_steps, (std::vector<double>{1.0, 0.0, -2.0, 10.0}));
}

TEST_F(progress_test, progressed_keeps_extreme_values_exact) {
  m_base.progressed(INT_MAX);
  m_base.progressed(INT_MIN);
  EXPECT_EQ(m_progress.m_steps, (std::vector<double>{2147483647.0, -2147483648.0}));
}

TEST_F(progress_test, internal_progressed_takes_fractions) {
  m_base.internalProgressed(0.25);
  EXPECT_EQ(m_progress.m_steps, std::vector<double>{0.25});
}

TEST_F(progress_test, progressed_is_virtual) {
  own_progressed_t progress;
  IProgress& base = progress;
  base.progressed(4);
  EXPECT_EQ(progress.m_own, std::vector<int>{4});
  EXPECT_TRUE(progress.m_steps.empty());
}

TEST_F(progress_test, run_through_the_interface) {
  m_base.start("Analysing", 800.0);
  EXPECT_EQ(m_progress.m_title, "Analysing");
  EXPECT_EQ(m_base.getTotalSteps(), 800.0);
  m_base.message("file 1 of 2");
  m_base.progressed(400);
  EXPECT_FALSE(m_base.isCanceled());
  m_base.cancel();
  EXPECT_TRUE(m_base.isCanceled());
  m_base.finish();
  EXPECT_TRUE(m_progress.m_finished);
  EXPECT_EQ(m_progress.m_messages, std::vector<std::string>{"file 1 of 2"});
  EXPECT_EQ(m_progress.m_steps, std::vector<double>{400.0});
}

TEST_F(progress_test, deleting_through_the_interface_destroys_the_object) {
  bool destroyed = false;
  std::unique_ptr<IProgress> progress(new recording_progress_t(&destroyed));
  progress.reset();
  EXPECT_TRUE(destroyed);
}

}  // namespace
