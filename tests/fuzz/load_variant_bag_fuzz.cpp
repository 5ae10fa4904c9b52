// Bag files of any bytes: a load that fails leaves the bag as it was and the file as it
// was, and a bag that loads saves to a file that loads back the same and saves to the
// same bytes again.
#include <korvat2/bag_file.h>

#include "fuzz_support.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using fuzz_support::fail;
using fuzz_support::read_file;
using fuzz_support::work_dir;
using fuzz_support::write_file;
using korvat2::variant_bag_t;

// What a bag holds before a load, so that a failed load can be told from an empty file.
variant_bag_t marker_bag() {
  variant_bag_t bag;
  bag.put("marker", 42);
  bag.add_variant_bag("list", variant_bag_t());
  return bag;
}

void check_saved_again(const variant_bag_t& loaded, const std::string& input) {
  const std::string saved = work_dir().file("saved.bag");
  if (korvat2::save_variant_bag(loaded, saved.c_str()).failed()) {
    fail("a loaded bag doesn't save", input);
  }
  const std::string bytes = read_file(saved);
  variant_bag_t again;
  if (korvat2::load_variant_bag(again, saved.c_str(), "").failed() || !(again == loaded)) {
    fail("a saved bag loads differently", input);
  }
  if (korvat2::save_variant_bag(again, saved.c_str()).failed() || read_file(saved) != bytes) {
    fail("a saved bag saves to other bytes", input);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (work_dir().path.empty()) {
    fail("no temporary folder", std::string());
  }
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::string path = work_dir().file("input.bag");
  write_file(path, input);
  variant_bag_t bag = marker_bag();
  const bool loaded = korvat2::load_variant_bag(bag, path.c_str(), "").succeeded();
  if (read_file(path) != input) {
    fail("the loader changed its file", input);
  }
  if (!loaded) {
    if (!(bag == marker_bag())) {
      fail("a failed load changed the bag", input);
    }
    return 0;
  }
  check_saved_again(bag, input);
  return 0;
}
