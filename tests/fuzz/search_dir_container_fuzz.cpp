// Search-directory files of any bytes: the loader takes them without crashing and without
// touching the file; a failed load leaves the container as it was; a good one holds only
// entries that a container could hold, and saves to a file that loads back the same.
#include <HALLIN_2_13/search_dir_container.h>

#include "fuzz_support.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using fuzz_support::fail;
using fuzz_support::read_file;
using fuzz_support::work_dir;
using fuzz_support::write_file;

using HALLIN_2_13::search_category_t;
using HALLIN_2_13::search_dir_container_t;
using entries_t = std::vector<search_dir_container_t::entry_t>;

std::vector<entries_t> contents(const search_dir_container_t& container) {
  std::vector<entries_t> lists;
  for (int category = HALLIN_2_13::first_search_category; category <= HALLIN_2_13::last_search_category;
       ++category) {
    lists.push_back(container.get_entries(static_cast<search_category_t>(category)));
  }
  return lists;
}

bool entries_are_sound(const std::vector<entries_t>& lists) {
  for (const entries_t& list : lists) {
    for (const auto& entry : list) {
      if (entry.text.empty()) {
        return false;
      }
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (work_dir().path.empty()) {
    fail("no temporary folder", std::string());
  }
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::string path = work_dir().path + "/search_dirs.xml";
  write_file(path, input);
  const auto container = search_dir_container_t::create();
  container->add_search_dir(HALLIN_2_13::search_category_sources, "/kept", true, false);
  const auto before = contents(*container);
  const bool loaded = container->load(path).succeeded();
  if (read_file(path) != input) {
    fail("the loader changed the file", input);
  }
  if (!loaded) {
    if (contents(*container) != before) {
      fail("a failed load changed the container", input);
    }
    return 0;
  }
  const auto found = contents(*container);
  if (!entries_are_sound(found)) {
    fail("a loaded entry has no text", input);
  }
  const std::string saved_path = work_dir().path + "/saved.xml";
  if (container->save(saved_path).failed()) {
    fail("a loaded container doesn't save", input);
  }
  const auto again = search_dir_container_t::create();
  if (again->load(saved_path).failed() || contents(*again) != found) {
    fail("a saved container loads differently", input);
  }
  return 0;
}
