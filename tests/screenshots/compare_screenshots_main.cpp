// tamsel3_compare_screenshots DIR_A DIR_B: every PNG of DIR_A must have a picture of the same
// name in DIR_B that is alike (see screenshot_compare.h). Prints a line per picture and exits
// with 1 when any differs or is missing, 2 on wrong use.
#include "screenshot_compare.h"

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

std::vector<std::filesystem::path> pictures_in(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> pictures;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().extension() == ".png") {
      pictures.push_back(entry.path().filename());
    }
  }
  std::sort(pictures.begin(), pictures.end());
  return pictures;
}

wxImage load(const std::filesystem::path& path) {
  wxImage image;
  if (std::filesystem::exists(path)) {
    image.LoadFile(wxString::FromUTF8(path.string()), wxBITMAP_TYPE_PNG);
  }
  return image;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || !std::filesystem::is_directory(argv[1]) || !std::filesystem::is_directory(argv[2])) {
    std::fprintf(stderr, "usage: %s DIR_A DIR_B (two folders of PNG pictures)\n", argv[0]);
    return 2;
  }
  wxInitializer initializer(argc, argv);
  // A picture that can't be read is reported in its line, not in a log box.
  wxLog::EnableLogging(false);
  wxImage::AddHandler(new wxPNGHandler);
  const std::vector<std::filesystem::path> pictures = pictures_in(argv[1]);
  int different = 0;
  for (const auto& name : pictures) {
    const wxImage first = load(std::filesystem::path(argv[1]) / name);
    const wxImage second = load(std::filesystem::path(argv[2]) / name);
    const screenshot_compare::result_t result = screenshot_compare::compare(first, second);
    std::printf("%s\n", screenshot_compare::describe(name.string(), result, first, second).c_str());
    different += result.alike() ? 0 : 1;
  }
  std::printf("%d of %zu pictures differ\n", different, pictures.size());
  return (different > 0 || pictures.empty()) ? 1 : 0;
}
