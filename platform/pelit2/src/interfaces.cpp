#include <pelit2/messenger.h>
#include <pelit2/progress.h>

namespace pelit2 {

IMessenger::~IMessenger() = default;

void IProgress::progressed(int steps) { internalProgressed(static_cast<double>(steps)); }

IProgress::~IProgress() = default;

}  // namespace pelit2
