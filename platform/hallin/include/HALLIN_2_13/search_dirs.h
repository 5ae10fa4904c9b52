#pragma once
#include <HALLIN_2_13/object_ptr.h>

#include <cstdint>

namespace HALLIN_2_13 {

/// The kinds of files that are looked for, each with a list of directories of its own.
enum search_category_t : std::int32_t {
  search_category_binaries = 1,  ///< programs and libraries
  search_category_symbols = 2,   ///< debug symbols, usually kept with the binaries' list
  search_category_sources = 3,   ///< source files
  search_category_other = 4,     ///< any other file a tool opens
};

/// The first and last category, for loops over all of them.
inline constexpr search_category_t first_search_category = search_category_binaries;
inline constexpr search_category_t last_search_category = search_category_other;

/// Whether `category` is one of the four.
bool is_search_category(search_category_t category);
/// The category's name ("binaries", "symbols", "sources", "other"); "" for an unknown one.
const char* get_search_category_name(search_category_t category);

/// Walks the directories of one category, each a text with two flags. The iterator holds
/// its own copy of the entries, so it stays valid when the container changes. Counted: the
/// first two operations take and give back a reference (see `ObjectPtr`).
class ISearchDirIterator {
 public:
  virtual void add_ref() const = 0;
  virtual void release() const = 0;

  /// The category walked.
  virtual search_category_t get_category() const = 0;
  /// How many entries the walk has, wherever it stands.
  virtual int get_count() const = 0;

  /// Goes to the first entry (the end, when there is none).
  virtual void reset() = 0;
  /// Goes to the next entry; false when no entry is left.
  virtual bool next() = 0;
  /// The entry at hand: its text, its recursive flag and the host's flag; any out-pointer
  /// may be null. False, with nothing written, at the end. The text stays valid until
  /// the iterator moves or ends.
  virtual bool get(const char** text, bool* recursive, bool* flag) const = 0;

 protected:
  virtual ~ISearchDirIterator();
};

/// A container of search directories in four categories that can be changed. Each entry is
/// a directory line as written (it may hold wild-cards, and isn't checked against the file
/// system), whether its subdirectories are searched too, and a flag of the host's, which
/// the container keeps and gives back. Counted like `ISearchDirIterator`.
class IEditableSearchDirContainer {
 public:
  virtual void add_ref() const = 0;
  virtual void release() const = 0;

  /// Number of entries of `category`; 0 for an unknown category.
  virtual int get_count(search_category_t category) const = 0;
  /// Removes every entry of `category` whose text is exactly `text`; true when any went.
  virtual bool remove_search_dir(search_category_t category, const char* text) = 0;

  /// A walk over the entries of `category` as they are now; null for an unknown category.
  virtual ObjectPtr<ISearchDirIterator> get_iterator(search_category_t category) const = 0;
  /// Appends an entry. False, with nothing added, for an unknown category or a null or
  /// empty text, and for a text that this container refuses.
  virtual bool add_search_dir(search_category_t category, const char* text, bool recursive, bool flag) = 0;
  /// Removes every entry of `category`.
  virtual void clear_category(search_category_t category) = 0;

 protected:
  virtual ~IEditableSearchDirContainer();
};

}  // namespace HALLIN_2_13
