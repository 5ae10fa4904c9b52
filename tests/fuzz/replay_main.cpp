// Replays fuzz inputs through LLVMFuzzerTestOneInput: each argument is a file or a folder
// whose files (recursively) are inputs. A target reports a bug by aborting.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path root(argv[i]);
    if (std::filesystem::is_directory(root)) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.is_regular_file()) {
          replay(entry.path());
          ++count;
        }
      }
    } else {
      replay(root);
      ++count;
    }
  }
  std::cout << "replayed " << count << " inputs" << std::endl;
  return count > 0 ? 0 : 1;  // an empty corpus is a broken test, not a pass
}
