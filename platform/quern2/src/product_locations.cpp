#include <quern2/product_locations.h>

#include <korvat2/path.h>
#include <korvat2/system.h>

#include <dlfcn.h>

#include <memory>
#include <mutex>

namespace quern2 {
namespace {

// "share/tamsel3" beside the folder that holds this library, for an installed tree as for
// the build tree, which keeps libraries in "lib" and resources in "share/tamsel3".
std::string beside_library() {
  Dl_info info;
  if (::dladdr(reinterpret_cast<void*>(&beside_library), &info) == 0 || !info.dli_fname) {
    return std::string();
  }
  korvat2::path_t dir(korvat2::path_t(info.dli_fname).get_branch());
  korvat2::path_t prefix(dir.get_branch());
  prefix.append(korvat2::path_t("share/tamsel3"));
  return prefix.as_string(false);
}

std::string find_resource_dir() {
  std::string overridden = korvat2::get_environ_value("TAMSEL3_RESOURCE_DIR");
  if (!overridden.empty()) {
    return overridden;
  }
  for (const std::string& candidate :
       {beside_library(), std::string(QUERN2_INSTALL_RESOURCE_DIR), std::string(QUERN2_BUILD_RESOURCE_DIR)}) {
    if (korvat2::path_t::is_directory(candidate)) {
      return candidate;
    }
  }
  return QUERN2_INSTALL_RESOURCE_DIR;
}

IProductLocations* g_host_locations = nullptr;
std::mutex g_default_mutex;
std::unique_ptr<DefaultProductLocations> g_default_locations;

}  // namespace

IProductLocations::~IProductLocations() = default;

IProductLocations* IProductLocations::get() {
  if (g_host_locations) {
    return g_host_locations;
  }
  std::lock_guard<std::mutex> lock(g_default_mutex);
  if (!g_default_locations) {
    g_default_locations = std::make_unique<DefaultProductLocations>();
  }
  return g_default_locations.get();
}

void IProductLocations::set(IProductLocations* locations) {
  g_host_locations = locations;
  if (!locations) {
    std::lock_guard<std::mutex> lock(g_default_mutex);
    g_default_locations.reset();
  }
}

DefaultProductLocations::DefaultProductLocations() : m_resource_dir(find_resource_dir()) {
  korvat2::path_t features = korvat2::stdpaths::get_user_config_dir();
  features.append(korvat2::path_t("tamsel3/features"));
  m_features_dir = features.as_string(false);
}

const char* DefaultProductLocations::getProductText(int kind) const {
  switch (kind) {
    case text_full_name: return "Tamsel Analysis Tools";
    case text_version: return "3.0";
    case text_vendor: return "The Tamsel Project";
    case text_copyright: return "Copyright (C) The Tamsel Project";
    case text_message_title:
    case text_short_name: return "Tamsel";
    default: return "";
  }
}

}  // namespace quern2
