#include <tamsel3/progress.h>

#include <plaxi1/tasks.h>

#include <algorithm>
#include <string>

namespace tamsel3 {

progress_impl_t::~progress_impl_t() = default;

void progress_impl_t::start(const char* title, double total) {
  m_total = total;
  plaxi1::tasks::PostSignal(m_start_signal, std::string(title ? title : ""));
}

void progress_impl_t::internalProgressed(double steps) {
  // Hot path when nothing steps: arithmetic and a comparison only. Fields are unlocked,
  // since one worker at a time drives the object.
  m_current = std::min(m_current + steps, m_total);
  if (!(m_total > 0)) {
    return;  // not started, or no length: no position to convert
  }
  // Adding a half and truncating rounds without a call; a position below 0 moves nothing.
  // NOLINTNEXTLINE(bugprone-incorrect-roundings)
  const int position = static_cast<int>(scale * m_current / m_total + 0.5);
  const int step = position - m_position;
  if (step < 1) {
    return;  // also when current fell: the gauge never moves back
  }
  m_position = position;
  plaxi1::tasks::PostSignal(m_progress_signal, step);
}

void progress_impl_t::message(const char* text) {
  plaxi1::tasks::PostSignal(m_message_signal, std::string(text ? text : ""));
}

void progress_impl_t::finish() { internalProgressed(m_total); }

void progress_impl_t::cancel() { m_canceled.store(true, std::memory_order_relaxed); }

double progress_impl_t::getTotalSteps() { return m_total; }

bool progress_impl_t::isCanceled() { return m_canceled.load(std::memory_order_relaxed); }

progress_proxy_t::~progress_proxy_t() = default;

void progress_proxy_t::start(const char* title, double total) {
  if (m_target) {
    m_target->start(title, total);
  }
}

void progress_proxy_t::progressed(int steps) {
  if (m_target) {
    m_target->progressed(steps);
  }
}

void progress_proxy_t::internalProgressed(double steps) {
  if (m_target) {
    m_target->internalProgressed(steps);
  }
}

void progress_proxy_t::message(const char* text) {
  if (m_target) {
    m_target->message(text);
  }
}

void progress_proxy_t::finish() {
  if (m_target) {
    m_target->finish();
  }
}

void progress_proxy_t::cancel() {
  if (m_target) {
    m_target->cancel();
  }
}

double progress_proxy_t::getTotalSteps() { return m_target ? m_target->getTotalSteps() : 1.0; }

bool progress_proxy_t::isCanceled() { return m_target ? m_target->isCanceled() : false; }

messenger_proxy_t::~messenger_proxy_t() = default;

void messenger_proxy_t::say(pelit2::ESeverity severity, const char* text) {
  if (m_target) {
    m_target->say(severity, text);
  }
}

}  // namespace tamsel3
