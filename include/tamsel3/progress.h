#pragma once
#include <tamsel3/export.h>
/// How a worker thread reports to the in-place message control: a gauge fed with
/// fractional steps that reaches the GUI thread as few integer increments, and the proxies
/// through which the control hands out one stable pointer with a changeable target.
#include <korvat2/signal.h>
#include <pelit2/messenger.h>
#include <pelit2/progress.h>
#include <pelit2/severity.h>

#include <atomic>
#include <string>

namespace tamsel3 {

/// Turns a run of fractional steps into increments on a scale of 800 (the gauge's maximum)
/// and posts them, with the title and status texts, to the GUI thread. Meant for one worker
/// at a time; any thread may call.
class TAMSEL3_API progress_impl_t : public pelit2::IProgress {
 public:
  /// The gauge's range: every run ends at this position.
  static constexpr int scale = 800;

  progress_impl_t() = default;
  progress_impl_t(const progress_impl_t&) = delete;
  progress_impl_t& operator=(const progress_impl_t&) = delete;
  ~progress_impl_t() override;

  /// Keeps `total` and posts the title. Current and position stay: an object runs once.
  /// `total` must be positive.
  void start(const char* title, double total) override;
  /// Adds `steps` (clamped to total, may be negative) and posts the increment of the
  /// position when it grew by at least one. Cheap when it doesn't: no lock, no allocation.
  void internalProgressed(double steps) override;
  /// Posts `text` as a status line.
  void message(const char* text) override;
  /// Brings current to total and the position to 800.
  void finish() override;
  /// Only sets the flag that `isCanceled` reads; nothing is sent.
  void cancel() override;
  /// The total given to `start`; 0 before.
  double getTotalSteps() override;
  /// Whether `cancel` was called. Any thread; no lock.
  bool isCanceled() override;

  /// Receives the title of `start`.
  korvat2::signal_t<std::string> m_start_signal;
  /// Receives the increment of the position, not the position.
  korvat2::signal_t<int> m_progress_signal;
  /// Receives the status text of `message`.
  korvat2::signal_t<std::string> m_message_signal;
  /// Never emitted here; the control connects its Cancel button to it.
  korvat2::signal_t<> m_cancel_signal;

 private:
  double m_total = 0.0;
  double m_current = 0.0;
  int m_position = 0;
  // Set by the GUI thread, polled by the worker: one byte, no lock.
  std::atomic<bool> m_canceled{false};
  static_assert(std::atomic<bool>::is_always_lock_free, "the cancel flag must not lock");
};

/// Forwards every operation to a target that may change or be null. Without a target the
/// run counts one step and is never cancelled.
class TAMSEL3_API progress_proxy_t : public pelit2::IProgress {
 public:
  /// A proxy aimed at `target`, which may be null.
  explicit progress_proxy_t(pelit2::IProgress* target = nullptr) : m_target(target) {}
  ~progress_proxy_t() override;

  /// Forwards to the target; nothing without one.
  void start(const char* title, double total) override;
  /// Forwards to the target; nothing without one.
  void progressed(int steps) override;
  /// Forwards to the target; nothing without one.
  void internalProgressed(double steps) override;
  /// Forwards to the target; nothing without one.
  void message(const char* text) override;
  /// Forwards to the target; nothing without one.
  void finish() override;
  /// Forwards to the target; nothing without one.
  void cancel() override;
  /// The target's total; 1 without a target.
  double getTotalSteps() override;
  /// Whether the target was canceled; false without a target.
  bool isCanceled() override;

  /// The object that receives the calls; null for none.
  pelit2::IProgress* m_target = nullptr;
};

/// Forwards `say` to a target that may change or be null.
class TAMSEL3_API messenger_proxy_t : public pelit2::IMessenger {
 public:
  /// A proxy aimed at `target`, which may be null.
  explicit messenger_proxy_t(pelit2::IMessenger* target = nullptr) : m_target(target) {}
  ~messenger_proxy_t() override;

  /// Forwards to the target; nothing without one.
  void say(pelit2::ESeverity severity, const char* text) override;

  /// The object that receives the lines; null for none.
  pelit2::IMessenger* m_target = nullptr;
};

}  // namespace tamsel3
