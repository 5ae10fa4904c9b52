#pragma once
/// Tasks and their scheduler: work handed over from any thread to run on the GUI thread,
/// and the posting of a signal's emission to the GUI thread.
///
/// What a host can rely on for a posted emission (PostSignal):
/// - it may be posted from any thread, also before the wx application exists (it waits
///   for it) and after the application is gone; posting doesn't wait for deliveries;
/// - it is delivered on the GUI thread, at most once, after the posting thread's earlier
///   posts; posts of several threads interleave in order of arrival;
/// - its receivers are those connected to the signal at the post: one connected later
///   isn't called, one disconnected later still is, and the signal may die meanwhile;
/// - a receiver that dies (or leaves all its signals) before the delivery isn't called;
///   one dying on another thread while it is being called waits for the call to end, if
///   it leaves its signals first thing in its destructor;
/// - a receiver that throws ends that delivery, as it ends an emission; the next one runs.
/// The post takes the signal's mutex for a moment, and no receiver's lock.
#include <korvat2/block_pool.h>
#include <korvat2/intrusive_pointer.h>
#include <korvat2/signal.h>
#include <korvat2/signal_snapshot.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <tuple>
#include <utility>

class wxEvtHandler;

namespace plaxi1::tasks {

// Queue names known to the scheduler. Static, so each translation unit has its own copy
// and none depends on another's initialisation order.
static const std::string MAIN_QUEUE_NAME = "main";
static const std::string SERVICE_QUEUE_NAME = "service";
static const std::string LONG_TASKS_QUEUE_NAME = "long tasks";
static const std::string DELAY_TASKS_QUEUE_NAME = "delay tasks";

/// The operations of a task, without its count.
class ITaskInterface {
 public:
  virtual ~ITaskInterface() = default;
  /// Asks the task not to run, or to stop early; any thread.
  virtual void Cancel() = 0;
  virtual bool IsCanceled() const = 0;
  /// Called by the scheduler around DoTask, on the thread that runs it.
  virtual void TaskStarted() = 0;
  virtual void DoTask() = 0;
  virtual void TaskFinished() = 0;
  virtual bool IsLongTask() const = 0;
  virtual bool IsServiceThreadNeeded() const = 0;
  virtual std::string GetDisplayName() const = 0;
};

/// The scheduler's unit of work; counted, so that the poster and the scheduler share it.
class ITask : public ITaskInterface, public korvat2::intrusive_pointer_impl_t {
 public:
  ~ITask() override = default;

 private:
  friend class Scheduler;
  // The scheduler's link while the task waits, so that queueing allocates nothing.
  ITask* m_next_waiting = nullptr;
  std::atomic<bool> m_waiting{false};
};

/// Default bodies: nothing to do, a cancel flag and an empty name.
class DefaultTaskImpl : public ITask {
 public:
  DefaultTaskImpl();
  ~DefaultTaskImpl() override;

  void Cancel() override;
  bool IsCanceled() const override;
  void TaskStarted() override;
  void DoTask() override;
  void TaskFinished() override;
  bool IsLongTask() const override;
  bool IsServiceThreadNeeded() const override;
  std::string GetDisplayName() const override;

 private:
  // Cancel may come from any thread while the scheduler asks on another.
  std::atomic<bool> m_canceled{false};
};

/// A task whose work runs on the GUI thread, in DoGUITask.
class GUITask : public DefaultTaskImpl {
 public:
  void DoTask() override;
  bool IsLongTask() const override;
  bool IsServiceThreadNeeded() const override;
  virtual void DoGUITask() = 0;
};

/// Told by the scheduler when it starts and finishes a task, on the GUI thread.
class ISchedulerStatusCallback : public korvat2::intrusive_pointer_impl_t {
 public:
  ~ISchedulerStatusCallback() override = default;
  virtual void TaskStarted(ITask& task) = 0;
  virtual void TaskFinished(ITask& task) = 0;
};

/// The one scheduler of the process. Every task runs on the GUI thread, delivered through
/// the wx application's event queue in order of arrival over all queues (so each queue
/// keeps its own order); a task is referenced until it has run. Tasks added before the wx
/// application exists wait until it does.
class alignas(64) Scheduler : public korvat2::intrusive_pointer_impl_t {
 public:
  /// The scheduler, made on first use. A non-null callback replaces the current one.
  static korvat2::intrusive_pointer_t<Scheduler> Get(
      korvat2::intrusive_pointer_t<ISchedulerStatusCallback> callback);

  /// Appends `task` to the queue named `queue` ("" is the default queue); any thread. Never
  /// waits for the GUI thread: the task runs later, after the tasks that came before it.
  void AddTask(korvat2::intrusive_pointer_t<ITask> task, const std::string& queue);
  /// AddTask on the default queue of the process's scheduler, without counting a share of
  /// it: posters on every thread would all wait for its count's mutex.
  static void _post(korvat2::intrusive_pointer_t<ITask> task);

  /// Tasks waiting to run, over all queues.
  std::size_t GetPendingCount() const;

  /// Asks the application to deliver the waiting tasks, if it exists and no request is
  /// pending. For the scheduler's wx module, which calls it once the application exists.
  void _request_delivery();
  /// Forgets a request that a departing application won't answer.
  void _application_gone();

  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;
  ~Scheduler() override;

 private:
  Scheduler();
  static Scheduler& instance();
  void deliver();
  void post_request_locked();
  void take_waiting();
  ITask* pop_ready();
  // Read once per batch: a callback set meanwhile applies from the next batch on.
  korvat2::intrusive_pointer_t<ISchedulerStatusCallback> current_callback();
  void run(ITask& task, ISchedulerStatusCallback* callback);

  // Posters touch the scheduler's count (Get) and these together, so they share one cache
  // line with the count (the class is aligned to a line); what the GUI thread changes per
  // task lives on a line of its own.
  // Tasks that arrived since the last batch, newest first: posters push with one atomic
  // exchange and never take a lock; the GUI thread takes the whole list at once.
  std::atomic<ITask*> m_arrived{nullptr};
  // Tasks added so far; only posters change it.
  std::atomic<std::size_t> m_added{0};
  // Whether a delivery event is on its way; the poster that sets it sends the event.
  std::atomic<bool> m_delivery_requested{false};
  // Tasks run so far; only the GUI thread changes it, so a plain store does.
  alignas(64) std::atomic<std::size_t> m_done{0};
  // Serialises sending the event against the application going away.
  std::mutex m_request_mutex;
  // Taken over from m_arrived in order of arrival, each with the reference it was queued
  // with, linked through the same field; the GUI thread's only.
  ITask* m_ready_head = nullptr;
  ITask* m_ready_tail = nullptr;
  std::size_t m_ready_count = 0;
  std::mutex m_callback_mutex;
  korvat2::intrusive_pointer_t<ISchedulerStatusCallback> m_callback;
  wxEvtHandler* m_handler;  // receives the delivery requests; owned
};

namespace _internal {

/// Fills argument places that are not in use.
struct dummy_t {};

/// Calls the receivers that a signal had when it was posted, with copies of the arguments,
/// on the GUI thread.
template <class Signal, class... A>
class PostSignalTask : public GUITask {
 public:
  explicit PostSignalTask(const Signal& signal, A... args)
      : m_receivers(signal), m_args(std::move(args)...) {}

  // Made on a worker and freed on the GUI thread, many per second.
  static void* operator new(std::size_t size) { return korvat2::_internal::pool_allocate(size); }
  static void operator delete(void* block, std::size_t size) noexcept {
    korvat2::_internal::pool_free(block, size);
  }

  // The snapshot empties itself as it calls: a task run again calls nobody.
  void DoGUITask() override {
    std::apply([this](const A&... args) { m_receivers(args...); }, m_args);
  }

 private:
  typename Signal::snapshot_t m_receivers;
  std::tuple<A...> m_args;
};

}  // namespace _internal

/// Emits `signal` with `args` on the GUI thread, later, to the receivers it has now that
/// still live then; any thread (see the top of this header for the whole contract). The
/// arguments are stored as passed: give them in the signal's own types (a std::string, not
/// a char*).
template <class Signal, class... A>
void PostSignal(const Signal& signal, A... args) {
  korvat2::intrusive_pointer_t<ITask> task(
      new _internal::PostSignalTask<Signal, A...>(signal, std::move(args)...));
  Scheduler::_post(std::move(task));
}

}  // namespace plaxi1::tasks
