// Feature list and choice files of any bytes: both loaders take them without crashing and
// without touching the file, a choice never holds an empty name, and what a choice saves
// loads back the same.
#include <korvat2/path.h>
#include <tamsel3/feature_config.h>

#include "fuzz_support.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

using fuzz_support::fail;
using fuzz_support::read_file;
using fuzz_support::work_dir;
using fuzz_support::write_file;

using tamsel3::active_features_config_impl_t;
using tamsel3::feature_list_config_impl_t;

void check_list(const std::string& input) {
  const std::string path = work_dir().file("evaluation_features.cfg");
  write_file(path, input);
  feature_list_config_impl_t list{korvat2::path_t(work_dir().path)};
  const bool loaded = list.load();
  if ((!loaded && list.get_count() != 0) || read_file(path) != input) {
    fail("the list loader", input);
  }
  for (int i = -1; i <= list.get_count(); ++i) {
    list.get_feature(i);
  }
}

void check_choice(const std::string& input) {
  const korvat2::path_t dir(work_dir().path);
  const std::string path = work_dir().file("active_evaluation_features.cfg");
  write_file(path, input);
  active_features_config_impl_t active(dir);
  active.load();
  if (read_file(path) != input || active.is_turned_on("")) {
    fail("the choice loader", input);
  }
  active.save();
  const std::string saved = read_file(path);
  active_features_config_impl_t again(dir);
  if (!again.load()) {
    fail("a saved choice doesn't load", input);
  }
  again.save();
  if (read_file(path) != saved) {
    fail("a saved choice loads differently", input);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (work_dir().path.empty()) {
    fail("no temporary folder", std::string());
  }
  const std::string input(reinterpret_cast<const char*>(data), size);
  check_list(input);
  check_choice(input);
  return 0;
}
