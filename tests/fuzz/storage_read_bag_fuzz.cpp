// A storage's bag file of any bytes: readBag takes it without crashing and without touching
// the file, answers the default exactly when the file doesn't load, and a bag it read
// writes back to a file that reads the same.
#include <korvat2/bag_file.h>
#include <quern2/storage.h>

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

// The default handed to readBag, told apart from what the file loads as.
variant_bag_t marker_bag() {
  variant_bag_t bag;
  bag.put("fuzz default", 1);
  bag.add_variant_bag("marker", variant_bag_t());
  return bag;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (work_dir().path.empty()) {
    fail("no temporary folder", std::string());
  }
  static const korvat2::sptr_t<quern2::IGlobalStorage> storage =
      quern2::makeFileStorage(korvat2::path_t(work_dir().path));
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::string path = work_dir().file("key.bag");
  write_file(path, input);

  const variant_bag_t fallback = marker_bag();
  const variant_bag_t bag = storage->readBag("key", fallback);
  if (read_file(path) != input || !storage->hasBag("key")) {
    fail("reading changed the file", input);
  }
  variant_bag_t loaded = fallback;
  const bool loads = korvat2::load_variant_bag(loaded, path.c_str(), "").succeeded();
  if (loads ? bag != loaded : bag != fallback) {
    fail("readBag differs from the file's load", input);
  }
  if (loads) {
    if (storage->writeBag("key", bag).failed()) {
      fail("a bag that was read can't be written", input);
    }
    if (storage->readBag("key", fallback) != bag) {
      fail("a written bag reads back differently", input);
    }
  }
  return 0;
}
