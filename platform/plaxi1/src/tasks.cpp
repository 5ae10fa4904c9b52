#include <plaxi1/tasks.h>

#include <ylvane/log_text.h>

#include <wx/app.h>
#include <wx/event.h>
#include <wx/module.h>

#include <atomic>
#include <cstddef>
#include <exception>
#include <utility>

namespace plaxi1::tasks {

namespace {

// Set once and never cleared: the scheduler lives as long as the process, so that a late
// poster or a pending event never finds it gone.
std::atomic<Scheduler*> g_scheduler{nullptr};
std::mutex g_creation_mutex;
// Whether an application is up to answer delivery requests. Set by the module below on the
// GUI thread and read by posters on any thread, which must not read wxTheApp: wx writes it
// without a lock.
std::atomic<bool> g_application_ready{false};

}  // namespace

DefaultTaskImpl::DefaultTaskImpl() = default;
DefaultTaskImpl::~DefaultTaskImpl() = default;

void DefaultTaskImpl::Cancel() { m_canceled.store(true); }

bool DefaultTaskImpl::IsCanceled() const { return m_canceled.load(); }

void DefaultTaskImpl::TaskStarted() {}
void DefaultTaskImpl::DoTask() {}
void DefaultTaskImpl::TaskFinished() {}
bool DefaultTaskImpl::IsLongTask() const { return false; }
bool DefaultTaskImpl::IsServiceThreadNeeded() const { return false; }
std::string DefaultTaskImpl::GetDisplayName() const { return std::string(); }

void GUITask::DoTask() { DoGUITask(); }
bool GUITask::IsLongTask() const { return false; }
bool GUITask::IsServiceThreadNeeded() const { return false; }

Scheduler& Scheduler::instance() {
  Scheduler* scheduler = g_scheduler.load(std::memory_order_acquire);
  if (!scheduler) {
    std::lock_guard<std::mutex> lock(g_creation_mutex);
    scheduler = g_scheduler.load(std::memory_order_relaxed);
    if (!scheduler) {
      scheduler = new Scheduler;
      scheduler->add_ref();  // the process's own reference, never given up
      g_scheduler.store(scheduler, std::memory_order_release);
    }
  }
  return *scheduler;
}

korvat2::intrusive_pointer_t<Scheduler> Scheduler::Get(
    korvat2::intrusive_pointer_t<ISchedulerStatusCallback> callback) {
  Scheduler* scheduler = &instance();
  if (callback) {
    std::lock_guard<std::mutex> lock(scheduler->m_callback_mutex);
    scheduler->m_callback = std::move(callback);
  }
  return scheduler;
}

Scheduler::Scheduler() : m_handler(new wxEvtHandler) {}

Scheduler::~Scheduler() { delete m_handler; }

namespace {

// Stands for a task that is added again while it still waits, since a task has one link.
class requeued_task_t : public ITask {
 public:
  explicit requeued_task_t(korvat2::intrusive_pointer_t<ITask> task) : m_task(std::move(task)) {}
  void Cancel() override { m_task->Cancel(); }
  bool IsCanceled() const override { return m_task->IsCanceled(); }
  void TaskStarted() override { m_task->TaskStarted(); }
  void DoTask() override { m_task->DoTask(); }
  void TaskFinished() override { m_task->TaskFinished(); }
  bool IsLongTask() const override { return m_task->IsLongTask(); }
  bool IsServiceThreadNeeded() const override { return m_task->IsServiceThreadNeeded(); }
  std::string GetDisplayName() const override { return m_task->GetDisplayName(); }

 private:
  korvat2::intrusive_pointer_t<ITask> m_task;
};

}  // namespace

void Scheduler::AddTask(korvat2::intrusive_pointer_t<ITask> task, const std::string& /*queue*/) {
  if (!task) {
    return;
  }
  if (task->m_waiting.exchange(true)) {
    task = new requeued_task_t(std::move(task));
    task->m_waiting.store(true);
  }
  // The argument's reference becomes the queue's, given up after the task has run.
  ITask* raw = task.detach();
  m_added.fetch_add(1, std::memory_order_relaxed);
  raw->m_next_waiting = m_arrived.load();
  while (!m_arrived.compare_exchange_weak(raw->m_next_waiting, raw)) {
  }
  // One poster per batch sends the event; the others see the flag and go. The GUI thread
  // clears the flag before it takes the list, so a task pushed while the flag was set is
  // in the batch that the flag announced.
  if (!m_delivery_requested.load() && !m_delivery_requested.exchange(true)) {
    std::lock_guard<std::mutex> lock(m_request_mutex);
    post_request_locked();
  }
}

void Scheduler::_post(korvat2::intrusive_pointer_t<ITask> task) {
  // The process's reference keeps the scheduler: no share of our own is needed.
  instance().AddTask(std::move(task), std::string());
}

std::size_t Scheduler::GetPendingCount() const {
  // Done first: a task counted as done was counted as added before.
  const std::size_t done = m_done.load();
  const std::size_t added = m_added.load();
  return added > done ? added - done : 0;
}

void Scheduler::_request_delivery() {
  if (GetPendingCount() == 0 || m_delivery_requested.exchange(true)) {
    return;
  }
  std::lock_guard<std::mutex> lock(m_request_mutex);
  post_request_locked();
}

void Scheduler::post_request_locked() {
  // Without an application wx would drop the event: the tasks wait, and the module asks
  // for them once the application exists.
  if (!g_application_ready.load()) {
    m_delivery_requested.store(false);
    return;
  }
  // Sent under the lock, so that _application_gone can't run between the check and the
  // sending. Safe: the GUI thread never holds wx's queue locks while it takes ours.
  m_handler->CallAfter([this] { deliver(); });
}

void Scheduler::_application_gone() {
  std::lock_guard<std::mutex> lock(m_request_mutex);
  m_handler->DeletePendingEvents();
  m_delivery_requested.store(false);
}

namespace {

// Tasks were written on other cores: asking for the next one's lines while this one runs
// hides most of the wait for them.
void prefetch_task(const ITask* task) {
  const char* bytes = reinterpret_cast<const char*>(task);
  for (std::ptrdiff_t line = 0; line < 4; ++line) {
    __builtin_prefetch(bytes + line * 64, 1);
  }
}

}  // namespace

void Scheduler::take_waiting() {
  ITask* newest = m_arrived.exchange(nullptr);
  // The list runs from the newest back; reversed, it is the order of arrival.
  ITask* oldest = nullptr;
  while (newest) {
    ITask* next = newest->m_next_waiting;
    newest->m_next_waiting = oldest;
    oldest = newest;
    newest = next;
  }
  if (!oldest) {
    return;
  }
  if (m_ready_tail) {
    m_ready_tail->m_next_waiting = oldest;
  } else {
    m_ready_head = oldest;
  }
  for (; oldest; oldest = oldest->m_next_waiting) {
    m_ready_tail = oldest;
    ++m_ready_count;
  }
}

ITask* Scheduler::pop_ready() {
  ITask* task = m_ready_head;
  m_ready_head = task->m_next_waiting;
  if (!m_ready_head) {
    m_ready_tail = nullptr;
  }
  --m_ready_count;
  return task;
}

void Scheduler::deliver() {
  // Cleared first, so that posts from now on send a new event (and a loop nested inside a
  // task, a modal dialog, can deliver them).
  m_delivery_requested.store(false);
  take_waiting();
  // Only what is here now: tasks posted during the batch wait for the next event, so
  // that a stream of posts can't starve the rest of the GUI. A loop nested inside a task
  // runs the rest of this batch first, from the same list, so the order holds.
  const korvat2::intrusive_pointer_t<ISchedulerStatusCallback> callback = current_callback();
  for (std::size_t budget = m_ready_count; budget > 0 && m_ready_head; --budget) {
    ITask* task = pop_ready();
    if (m_ready_head) {
      prefetch_task(m_ready_head);
    }
    // It may be added again from here on, even by its own DoTask.
    task->m_waiting.store(false);
    run(*task, callback.get());
    m_done.store(m_done.load(std::memory_order_relaxed) + 1, std::memory_order_release);
    task->release_ref();  // after DoTask returned
  }
  // What a nested loop left behind still needs an event.
  if (m_ready_head) {
    _request_delivery();
  }
}

korvat2::intrusive_pointer_t<ISchedulerStatusCallback> Scheduler::current_callback() {
  std::lock_guard<std::mutex> lock(m_callback_mutex);
  return m_callback;
}

void Scheduler::run(ITask& task, ISchedulerStatusCallback* callback) {
  // A task's exception stops that task only: the ones behind it still run.
  try {
    if (callback) {
      callback->TaskStarted(task);
    }
    if (!task.IsCanceled()) {
      task.TaskStarted();
      task.DoTask();
      task.TaskFinished();
    }
    if (callback) {
      callback->TaskFinished(task);
    }
  } catch (const std::exception& error) {
    ylvane_1::log::write(ylvane_1::log::level_t::error,
                         "GUI task \"" + task.GetDisplayName() + "\" failed: " + error.what(), __FILE__,
                         __LINE__);
  } catch (...) {
    ylvane_1::log::write(ylvane_1::log::level_t::error,
                         "GUI task \"" + task.GetDisplayName() + "\" failed with an unknown exception",
                         __FILE__, __LINE__);
  }
}

namespace {

// Brings the scheduler and the application together: tasks posted before the application
// existed are asked for once it does, and a request that the departing application would
// never answer is forgotten, so that a later application gets a new one.
class plaxi1_tasks_module_t : public wxModule {
 public:
  bool OnInit() override {
    g_application_ready.store(true);
    if (Scheduler* scheduler = g_scheduler.load(std::memory_order_acquire)) {
      scheduler->_request_delivery();
    }
    return true;
  }
  void OnExit() override {
    // Cleared first: a poster that saw it set has queued its request before
    // _application_gone takes the lock and deletes it.
    g_application_ready.store(false);
    if (Scheduler* scheduler = g_scheduler.load(std::memory_order_acquire)) {
      scheduler->_application_gone();
    }
  }

 private:
  wxDECLARE_DYNAMIC_CLASS(plaxi1_tasks_module_t);
};

wxIMPLEMENT_DYNAMIC_CLASS(plaxi1_tasks_module_t, wxModule);

}  // namespace

}  // namespace plaxi1::tasks
