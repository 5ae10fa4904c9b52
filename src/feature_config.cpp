#include <tamsel3/feature_config.h>
#include <tamsel3/text_helpers.h>

#include <korvat2/bag_file.h>
#include <quern2/product_locations.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tamsel3 {
namespace {

const char* const list_file_name = "evaluation_features.cfg";
const char* const choice_file_name = "active_evaluation_features.cfg";

std::string file_in(const korvat2::path_t& directory, const char* name) {
  korvat2::path_t path = directory;
  if (path.is_empty()) {
    path = korvat2::path_t(quern2::IProductLocations::get()->getFeaturesDirectory());
  }
  path.append(korvat2::path_t(name));
  return path.as_string(false);
}

// Calls `read` for each "feature" bag inside "features"; false when the file can't be read.
template <class Read>
bool for_each_feature(const std::string& file, Read read) {
  korvat2::variant_bag_t bag;
  if (korvat2::load_variant_bag(bag, file.c_str(), "").failed()) {
    return false;
  }
  korvat2::variant_bag_t* features = bag.get<korvat2::variant_bag_t>("features");
  if (!features) {
    return true;  // another shape: an empty list
  }
  for (auto it = features->begin_by_name<korvat2::variant_bag_t>("feature"); !it.at_end(); it.next()) {
    read(it);
  }
  return true;
}

// The bag file's save reports a failure itself, with the path and the system's reason, and
// leaves the old file as it was.
void save_choice(const korvat2::variant_bag_t& bag, const std::string& file) {
  // A first choice may come before anyone made the features folder.
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
  korvat2::save_variant_bag(bag, file.c_str());
}

}  // namespace

feature_list_config_t::~feature_list_config_t() = default;
active_features_config_t::~active_features_config_t() = default;

feature_list_config_impl_t::feature_list_config_impl_t(const korvat2::path_t& directory)
    : m_directory(directory) {}

bool feature_list_config_impl_t::load() {
  return for_each_feature(file_in(m_directory, list_file_name), [this](const auto& it) {
    m_features.push_back({get_string_value(it, "env_variable"), get_string_value(it, "name"),
                          get_string_value(it, "description")});
  });
}

int feature_list_config_impl_t::get_count() const { return static_cast<int>(m_features.size()); }

feature_list_config_t::feature_info_t feature_list_config_impl_t::get_feature(int index) const {
  if (index < 0 || index >= get_count()) {
    return feature_info_t();
  }
  return m_features[static_cast<std::size_t>(index)];
}

active_features_config_impl_t::active_features_config_impl_t(const korvat2::path_t& directory)
    : m_directory(directory) {}

void active_features_config_impl_t::clear() { m_turned_on.clear(); }

bool active_features_config_impl_t::load() {
  return for_each_feature(get_config_filename(), [this](const auto& it) {
    std::string name = get_string_value(it, "env_variable");
    if (!name.empty()) {
      m_turned_on.push_back(std::move(name));
    }
  });
}

bool active_features_config_impl_t::save() {
  korvat2::variant_bag_t features;
  for (const std::string& name : m_turned_on) {
    korvat2::variant_bag_t feature;
    feature.put("env_variable", name);
    features.add_variant_bag("feature", feature);
  }
  korvat2::variant_bag_t bag;
  bag.add_variant_bag("features", features);
  save_choice(bag, get_config_filename());
  return true;
}

void active_features_config_impl_t::turn_on(const std::string& env_variable) {
  if (!env_variable.empty() && !is_turned_on(env_variable)) {
    m_turned_on.push_back(env_variable);
  }
}

bool active_features_config_impl_t::is_turned_on(const std::string& env_variable) const {
  return std::find(m_turned_on.begin(), m_turned_on.end(), env_variable) != m_turned_on.end();
}

std::string active_features_config_impl_t::get_config_filename() const {
  return file_in(m_directory, choice_file_name);
}

}  // namespace tamsel3
