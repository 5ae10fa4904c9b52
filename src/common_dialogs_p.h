#pragma once
// The parts of the common dialogs that need no window, apart so that they can be tested
// without showing a native dialog.
#include <string>
#include <utility>

namespace tamsel3 {

/// What a file dialog starts with.
struct file_dlg_setup_t {
  std::string start_folder;
  std::string start_name;
  std::string filter;  ///< in the toolkit's form: descriptions and patterns separated by "|"
  int filter_index = 0;
  std::string title;
};

/// The start of a file dialog from the arguments of file_dlg; `default_title` stands in
/// for an empty `title`.
file_dlg_setup_t make_file_dlg_setup(const std::string& path, const std::string& extension,
                                     const std::string& filter, const std::string& title,
                                     const std::string& folder, const std::string& default_title);

/// A default title from the catalog "tamsel": read at the first need at which the catalog
/// is loaded, and kept from then on for the life of the object. Empty while the catalog
/// isn't loaded, and for good when it hasn't the key. GUI thread.
class default_title_t {
 public:
  explicit default_title_t(std::string key) : m_key(std::move(key)) {}
  const std::string& get();

 private:
  std::string m_key;
  std::string m_text;
  bool m_filled = false;
};

}  // namespace tamsel3
