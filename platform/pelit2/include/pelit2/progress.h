#pragma once

namespace pelit2 {

/// Receives the progress of running work and tells it whether it was cancelled.
class IProgress {
 public:
  /// A new run of `total` steps, under a title.
  virtual void start(const char* title, double total) = 0;
  /// `steps` more steps done; the same as `internalProgressed(steps)`.
  virtual void progressed(int steps);
  virtual void internalProgressed(double steps) = 0;
  /// A status text for the run.
  virtual void message(const char* text) = 0;
  /// The run is complete.
  virtual void finish() = 0;
  /// Asks the work to stop; it sees this through `isCanceled`.
  virtual void cancel() = 0;
  virtual double getTotalSteps() = 0;
  virtual bool isCanceled() = 0;
  virtual ~IProgress();
};

}  // namespace pelit2
