// A console host on the libraries that have no windows: wx's definitions, its include
// folders and -pthread (which defines _REENTRANT) must not reach it.
#include <drumlin2/drumlin2.h>
#include <fathel2/fathel2.h>
#include <korvat2/korvat2.h>

#if defined(__WXGTK__) || defined(WXUSINGDLL)
#error "wx's definitions reached a console host"
#endif
#if defined(_REENTRANT)
#error "-pthread reached a console host"
#endif
#if __has_include(<wx/defs.h>)
#error "wx's include folders reached a console host"
#endif

namespace {
struct receiver_t : korvat2::subscriber_base_t {
  int sum = 0;
  void add(int value) { sum += value; }
};
}  // namespace

int main() {
  receiver_t receiver;
  korvat2::signal_t<int> signal;
  signal.connect(&receiver, &receiver_t::add);
  signal(40);
  signal(2);
  const bool default_ok =
      fathel2::ResultDirectoryManager::validateResultDirectoryPattern(
          drumlin2::ICollectionController::getDefaultResultDirectoryName(true)) == fathel2::error_none;
  return receiver.sum == 42 && default_ok ? 0 : 1;
}
