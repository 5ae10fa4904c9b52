#include <HALLIN_2_13/search_dirs.h>

namespace HALLIN_2_13 {

bool is_search_category(search_category_t category) {
  return category >= first_search_category && category <= last_search_category;
}

const char* get_search_category_name(search_category_t category) {
  switch (category) {
    case search_category_binaries: return "binaries";
    case search_category_symbols: return "symbols";
    case search_category_sources: return "sources";
    case search_category_other: return "other";
  }
  return "";
}

ISearchDirIterator::~ISearchDirIterator() = default;

IEditableSearchDirContainer::~IEditableSearchDirContainer() = default;

}  // namespace HALLIN_2_13
