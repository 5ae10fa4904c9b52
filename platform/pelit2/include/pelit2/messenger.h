#pragma once
#include <pelit2/severity.h>

namespace pelit2 {

/// Receives the message lines of running work. Implementations say which threads may call.
class IMessenger {
 public:
  virtual void say(ESeverity severity, const char* text) = 0;
  virtual ~IMessenger();
};

}  // namespace pelit2
