#pragma once
// A search-directory container that refuses one chosen directory text, as a container with
// rules of its own would; everything else it keeps like the plain container.
#include <HALLIN_2_13/search_dir_container.h>

#include <string>
#include <utility>

namespace test_support {

class refusing_search_dir_container_t : public HALLIN_2_13::search_dir_container_t {
 public:
  static HALLIN_2_13::ObjectPtr<refusing_search_dir_container_t> create(std::string refused) {
    return HALLIN_2_13::ObjectPtr<refusing_search_dir_container_t>(
        new refusing_search_dir_container_t(std::move(refused)));
  }

  bool add_search_dir(HALLIN_2_13::search_category_t category, const char* text, bool recursive,
                      bool flag) override {
    if (text && m_refused == text) {
      ++m_refusals;
      return false;
    }
    return search_dir_container_t::add_search_dir(category, text, recursive, flag);
  }

  /// How many times the chosen text was refused.
  int refusals() const { return m_refusals; }

 private:
  explicit refusing_search_dir_container_t(std::string refused) : m_refused(std::move(refused)) {}

  std::string m_refused;
  int m_refusals = 0;
};

}  // namespace test_support
