// The bag file of a container: the values "format" ("search_dirs") and "version" (1), then
// one nested bag "dir" per entry, in order, with "category", "text", "recursive", "flag".
#include <HALLIN_2_13/search_dir_container.h>

#include <korvat2/bag_file.h>
#include <korvat2/variant_bag.h>

#include <algorithm>
#include <utility>

namespace HALLIN_2_13 {
namespace {

using entry_t = search_dir_container_t::entry_t;

constexpr const char* format_name = "search_dirs";
constexpr int format_version = 1;

// Walks a copy of one list, so that it never sees the container change under it.
class search_dir_iterator_t : public ref_counted_t<ISearchDirIterator> {
 public:
  search_dir_iterator_t(search_category_t category, std::vector<entry_t> entries)
      : m_category(category), m_entries(std::move(entries)) {}

  search_category_t get_category() const override { return m_category; }
  int get_count() const override { return static_cast<int>(m_entries.size()); }
  void reset() override { m_index = 0; }
  bool next() override {
    if (m_index < m_entries.size()) {
      ++m_index;
    }
    return m_index < m_entries.size();
  }
  bool get(const char** text, bool* recursive, bool* flag) const override {
    if (m_index >= m_entries.size()) {
      return false;
    }
    const entry_t& entry = m_entries[m_index];
    if (text) {
      *text = entry.text.c_str();
    }
    if (recursive) {
      *recursive = entry.recursive;
    }
    if (flag) {
      *flag = entry.flag;
    }
    return true;
  }

 private:
  search_category_t m_category;
  std::vector<entry_t> m_entries;
  std::size_t m_index = 0;
};

const korvat2::variant_t* value_of_kind(const korvat2::variant_bag_t& bag, const char* name,
                                        korvat2::variant_t::kind_t kind) {
  const korvat2::variant_t* value = bag.get<korvat2::variant_t>(name);
  return value && value->kind() == kind ? value : nullptr;
}

// One "dir" bag; false for an entry that no container could have written.
bool read_entry(const korvat2::variant_bag_t& bag, int& category, entry_t& entry) {
  using korvat2::variant_t;
  const variant_t* number = value_of_kind(bag, "category", variant_t::kind_int);
  const variant_t* text = value_of_kind(bag, "text", variant_t::kind_text);
  const variant_t* recursive = value_of_kind(bag, "recursive", variant_t::kind_bool);
  const variant_t* flag = value_of_kind(bag, "flag", variant_t::kind_bool);
  if (!number || !text || !recursive || !flag) {
    return false;
  }
  category = number->get<int>();
  entry.text = text->get<std::string>();
  entry.recursive = recursive->get<bool>();
  entry.flag = flag->get<bool>();
  return is_search_category(static_cast<search_category_t>(category)) && !entry.text.empty();
}

korvat2::error_code_t check_format(const korvat2::variant_bag_t& bag) {
  using korvat2::variant_t;
  const variant_t* format = value_of_kind(bag, "format", variant_t::kind_text);
  const variant_t* version = value_of_kind(bag, "version", variant_t::kind_int);
  if (!format || format->get<std::string>() != format_name || !version) {
    return korvat2::error::FileFormat;  // some other bag file, or none at all
  }
  return version->get<int>() == format_version ? korvat2::error::Success : korvat2::error::NotSupported;
}

using lists_t = std::array<std::vector<entry_t>, 4>;

// The list of `category` in `lists`; null for an unknown category.
template <class Lists>
auto* list_of(Lists& lists, search_category_t category) {
  return is_search_category(category) ? &lists[static_cast<std::size_t>(category - first_search_category)]
                                      : nullptr;
}

}  // namespace

ObjectPtr<search_dir_container_t> search_dir_container_t::create() {
  return ObjectPtr<search_dir_container_t>(new search_dir_container_t());
}

search_dir_container_t::search_dir_container_t() = default;

search_dir_container_t::~search_dir_container_t() = default;

int search_dir_container_t::get_count(search_category_t category) const {
  const std::vector<entry_t>* list = list_of(m_lists, category);
  return list ? static_cast<int>(list->size()) : 0;
}

bool search_dir_container_t::remove_search_dir(search_category_t category, const char* text) {
  std::vector<entry_t>* list = list_of(m_lists, category);
  if (!list || !text) {
    return false;
  }
  const auto first_gone =
      std::remove_if(list->begin(), list->end(), [text](const entry_t& entry) { return entry.text == text; });
  const bool removed = first_gone != list->end();
  list->erase(first_gone, list->end());
  return removed;
}

ObjectPtr<ISearchDirIterator> search_dir_container_t::get_iterator(search_category_t category) const {
  if (!is_search_category(category)) {
    return ObjectPtr<ISearchDirIterator>();
  }
  return ObjectPtr<ISearchDirIterator>(new search_dir_iterator_t(category, get_entries(category)));
}

bool search_dir_container_t::add_search_dir(search_category_t category, const char* text, bool recursive,
                                            bool flag) {
  std::vector<entry_t>* list = list_of(m_lists, category);
  if (!list || !text || !*text) {
    return false;
  }
  list->push_back(entry_t{text, recursive, flag});
  return true;
}

void search_dir_container_t::clear_category(search_category_t category) {
  if (std::vector<entry_t>* list = list_of(m_lists, category)) {
    list->clear();
  }
}

std::vector<entry_t> search_dir_container_t::get_entries(search_category_t category) const {
  const std::vector<entry_t>* list = list_of(m_lists, category);
  return list ? *list : std::vector<entry_t>();
}

korvat2::error_code_t search_dir_container_t::load(const std::string& path) {
  korvat2::variant_bag_t bag;
  const korvat2::error_code_t loaded = korvat2::load_variant_bag(bag, path.c_str(), "");
  if (loaded.failed()) {
    return loaded;
  }
  const korvat2::error_code_t format = check_format(bag);
  if (format.failed()) {
    return format;
  }
  // Read into fresh lists, so that a bad entry anywhere leaves the container untouched.
  lists_t lists;
  for (auto dir = bag.begin_by_name<korvat2::variant_bag_t>("dir"); !dir.at_end(); dir.next()) {
    int category = 0;
    entry_t entry;
    if (!read_entry(dir.get_value(), category, entry)) {
      return korvat2::error::FileFormat;
    }
    list_of(lists, static_cast<search_category_t>(category))->push_back(std::move(entry));
  }
  m_lists = std::move(lists);
  return korvat2::error::Success;
}

korvat2::error_code_t search_dir_container_t::save(const std::string& path) const {
  korvat2::variant_bag_t bag;
  bag.put("format", format_name);
  bag.put("version", format_version);
  for (int category = first_search_category; category <= last_search_category; ++category) {
    for (const entry_t& entry : *list_of(m_lists, static_cast<search_category_t>(category))) {
      korvat2::variant_bag_t dir;
      dir.put("category", category);
      dir.put("text", entry.text);
      dir.put("recursive", entry.recursive);
      dir.put("flag", entry.flag);
      bag.add_variant_bag("dir", dir);
    }
  }
  return korvat2::save_variant_bag(bag, path.c_str());
}

}  // namespace HALLIN_2_13
