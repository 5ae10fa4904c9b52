#pragma once
#include <HALLIN_2_13/object_ptr.h>
#include <HALLIN_2_13/search_dirs.h>

#include <korvat2/error.h>

#include <array>
#include <string>
#include <vector>

namespace HALLIN_2_13 {

/// The container a host can use as it is: four lists of entries in memory, read from and
/// written to a bag file. Made with `create()` (or `new`) and held in `ObjectPtr`s; a
/// derived class may refuse texts by overriding `add_search_dir`. One thread at a time.
class search_dir_container_t : public ref_counted_t<IEditableSearchDirContainer> {
 public:
  /// One directory line.
  struct entry_t {
    std::string text;
    bool recursive = false;
    bool flag = false;

    friend bool operator==(const entry_t& a, const entry_t& b) {
      return a.text == b.text && a.recursive == b.recursive && a.flag == b.flag;
    }
    friend bool operator!=(const entry_t& a, const entry_t& b) { return !(a == b); }
  };

  /// An empty container.
  static ObjectPtr<search_dir_container_t> create();
  search_dir_container_t();

  int get_count(search_category_t category) const override;
  bool remove_search_dir(search_category_t category, const char* text) override;
  ObjectPtr<ISearchDirIterator> get_iterator(search_category_t category) const override;
  bool add_search_dir(search_category_t category, const char* text, bool recursive, bool flag) override;
  void clear_category(search_category_t category) override;

  /// The entries of `category` in order; empty for an unknown category.
  std::vector<entry_t> get_entries(search_category_t category) const;

  /// Replaces all four lists with those of the bag file at `path`. A missing file gives
  /// `File.NotFound`, an unreadable one `File.Read`, a damaged one or one that isn't a
  /// search-directory file (or holds a bad entry) `File.Format`, a later format version
  /// `NotSupported`; on any failure the container stays as it was.
  korvat2::error_code_t load(const std::string& path);
  /// Writes all four lists to the bag file at `path`, replacing it atomically: on failure
  /// the old file stays whole, and the failure is logged at ERROR with the path and the
  /// system's reason.
  korvat2::error_code_t save(const std::string& path) const;

 protected:
  ~search_dir_container_t() override;

 private:
  std::array<std::vector<entry_t>, 4> m_lists;
};

}  // namespace HALLIN_2_13
