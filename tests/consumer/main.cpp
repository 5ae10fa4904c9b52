// Uses a little of each installed library and fails when something doesn't fit together.
#include <drumlin2/drumlin2.h>
#include <fathel2/fathel2.h>
#include <korvat2/korvat2.h>
#include <quern2/quern2.h>
#include <tamsel3/tamsel3.h>

#include <iostream>
#include <string>

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
  signal(20);
  signal(22);
  const std::string ok = tamsel3::translate_message("btn.ok", ZANDOR_2_16::generic::varg_list());
  std::cout << "sum " << receiver.sum << ", btn.ok is '" << ok << "'\n";
  const bool default_ok =
      fathel2::ResultDirectoryManager::validateResultDirectoryPattern(
          drumlin2::ICollectionController::getDefaultResultDirectoryName(true)) == fathel2::error_none;
  // The library loaded is the one whose headers the host was compiled with.
  const bool same_version = std::string(tamsel3::version().text) == TAMSEL3_VERSION_STRING;
  return receiver.sum == 42 && ok == "OK" && default_ok && same_version ? 0 : 1;
}
