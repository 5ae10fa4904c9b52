#include <plaxi1/tasks.h>

#include <ylvane/log_text.h>

#include <wx/app.h>
#include <wx/event.h>
#include <wx/module.h>

#include <atomic>
#include <exception>

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

korvat2::intrusive_pointer_t<Scheduler> Scheduler::Get(
    korvat2::intrusive_pointer_t<ISchedulerStatusCallback> callback) {
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
  if (callback) {
    std::lock_guard<std::mutex> lock(scheduler->m_callback_mutex);
    scheduler->m_callback = callback;
  }
  return scheduler;
}

Scheduler::Scheduler() : m_handler(new wxEvtHandler) {}

Scheduler::~Scheduler() { delete m_handler; }

void Scheduler::AddTask(korvat2::intrusive_pointer_t<ITask> task, const std::string& queue) {
  if (!task) {
    return;
  }
  std::lock_guard<std::mutex> lock(m_mutex);
  m_queues[queue].push_back(entry_t{m_next_arrival++, std::move(task)});
  ++m_pending_count;
  // Also covers tasks that waited for the application: the first post after it appeared
  // asks for them too.
  request_delivery_locked();
}

std::size_t Scheduler::GetPendingCount() const { return m_pending_count.load(); }

void Scheduler::_request_delivery() {
  std::lock_guard<std::mutex> lock(m_mutex);
  request_delivery_locked();
}

void Scheduler::request_delivery_locked() {
  // Without an application wx would drop the request: the tasks wait in the queues.
  if (m_pending_count.load() == 0 || m_delivery_requested || !g_application_ready.load()) {
    return;
  }
  m_delivery_requested = true;
  // Queued under the lock, so that _application_gone can't run between the check and the
  // queueing. Safe: the GUI thread never holds wx's queue locks while it takes ours.
  m_handler->CallAfter([this] { deliver(); });
}

void Scheduler::_application_gone() {
  std::lock_guard<std::mutex> lock(m_mutex);
  m_handler->DeletePendingEvents();
  m_delivery_requested = false;
}

void Scheduler::take_all_locked() {
  // Merges the queues by arrival: each queue is in arrival order, so the next task is the
  // earliest of their fronts. The last queue left goes over whole.
  for (;;) {
    std::deque<entry_t>* earliest = nullptr;
    std::size_t non_empty = 0;
    for (auto& [name, queue] : m_queues) {
      if (!queue.empty()) {
        ++non_empty;
        if (!earliest || queue.front().arrival < earliest->front().arrival) {
          earliest = &queue;
        }
      }
    }
    if (!earliest) {
      return;
    }
    if (non_empty == 1) {
      for (entry_t& entry : *earliest) {
        m_ready.push_back(std::move(entry.task));
      }
      earliest->clear();
      return;
    }
    m_ready.push_back(std::move(earliest->front().task));
    earliest->pop_front();
  }
}

void Scheduler::deliver() {
  {
    std::lock_guard<std::mutex> lock(m_mutex);
    // Cleared first, so that a loop nested inside a task (a modal dialog) can deliver
    // what is posted meanwhile.
    m_delivery_requested = false;
    // One lock for the whole batch: posters rarely wait for the GUI thread.
    take_all_locked();
  }
  // Only what is here now: tasks posted during the batch wait for the next event, so
  // that a stream of posts can't starve the rest of the GUI. A loop nested inside a task
  // runs the rest of this batch first, from the same list, so the order holds.
  for (std::size_t budget = m_ready.size(); budget > 0 && !m_ready.empty(); --budget) {
    korvat2::intrusive_pointer_t<ITask> task = std::move(m_ready.front());
    m_ready.pop_front();
    --m_pending_count;
    run(*task);
    // `task` is released here, after DoTask returned.
  }
  _request_delivery();
}

void Scheduler::run(ITask& task) {
  korvat2::intrusive_pointer_t<ISchedulerStatusCallback> callback;
  {
    std::lock_guard<std::mutex> lock(m_callback_mutex);
    callback = m_callback;
  }
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
