#pragma once
// A receiver for the tests of signals: logs each call as "<name>:<value>" and then runs an
// optional action.
#include <korvat2/signal.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

using call_log_t = std::vector<std::string>;

class logging_receiver_t : public korvat2::subscriber_base_t {
 public:
  logging_receiver_t(call_log_t& log, std::string name) : m_log(log), m_name(std::move(name)) {}
  virtual ~logging_receiver_t() = default;

  void on_value(int value) {
    m_log.push_back(m_name + ":" + std::to_string(value));
    if (m_action) {
      m_action(value);
    }
  }
  void on_other(int value) { m_log.push_back(m_name + "/other:" + std::to_string(value)); }
  virtual void on_virtual(int value) { m_log.push_back(m_name + "/virtual:" + std::to_string(value)); }
  void on_text(std::string text) {
    m_log.push_back(m_name + ":" + text);
    text = "changed by " + m_name;  // a by-value argument is this call's own copy
  }

  // Leaves every signal it is connected to, as a subscriber may before it dies.
  void leave() { disconnect_all_signals(); }

  std::function<void(int)> m_action;

 private:
  call_log_t& m_log;
  std::string m_name;
};

}  // namespace test_support
