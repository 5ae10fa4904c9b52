// Result directory name templates: the validator, the "@" repair and the mending on OK
// take any bytes without crashing, and the mending always leaves a template that the
// validator accepts.
#include <fathel2/result_directory_manager.h>
#include <tamsel3/result_saving_pp.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

using tamsel3::result_saving_pp_t;

void fail(const char* what, const std::string& input) {
  std::cerr << what << " for input of " << input.size() << " bytes: '" << input << "'" << std::endl;
  std::abort();
}

// One run of "@" at most, no longer than 8.
bool one_short_run(const std::string& text) {
  const std::size_t first = text.find('@');
  if (first == std::string::npos) {
    return true;
  }
  const std::size_t end = std::min(text.find_first_not_of('@', first), text.size());
  return end - first <= 8 && text.find('@', end) == std::string::npos;
}

void check_ats(const std::string& input) {
  std::string text = input;
  const bool changed = result_saving_pp_t::replace_wrong_ats(text);
  if (changed != (text != input) || !one_short_run(text)) {
    fail("replace_wrong_ats", input);
  }
  std::string again = text;
  if (result_saving_pp_t::replace_wrong_ats(again) || again != text) {
    fail("replace_wrong_ats twice", input);
  }
}

void check_filter(const std::string& input) {
  std::string text = input;
  result_saving_pp_t::filter_result_template(text);
  if (text.find('\0') != std::string::npos ||
      fathel2::ResultDirectoryManager::validateResultDirectoryPattern(text.c_str()) != fathel2::error_none) {
    fail("filter_result_template left a refused template", input);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  fathel2::ResultDirectoryManager::validateResultDirectoryPattern(input.c_str());
  check_ats(input);
  check_filter(input);
  return 0;
}
