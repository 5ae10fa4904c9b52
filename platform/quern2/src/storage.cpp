#include <quern2/storage.h>

#include <korvat2/system.h>

#include <mutex>

namespace quern2 {
namespace {

std::mutex g_mutex;
bool g_installed = false;  // whether a host or a root was set
korvat2::sptr_t<IGlobalStorage> g_global;

korvat2::path_t default_root() {
  korvat2::path_t root = korvat2::stdpaths::get_user_config_dir();
  root.append(korvat2::path_t("tamsel3"));
  return root;
}

}  // namespace

IPropertyStorage::~IPropertyStorage() = default;

korvat2::sptr_t<IGlobalStorage> IGlobalStorage::get() {
  std::lock_guard<std::mutex> lock(g_mutex);
  if (!g_installed) {
    g_global = makeFileStorage(default_root());
    g_installed = true;
  }
  return g_global;
}

void IGlobalStorage::set(korvat2::sptr_t<IGlobalStorage> storage) {
  std::lock_guard<std::mutex> lock(g_mutex);
  g_global = std::move(storage);
  g_installed = true;
}

void IGlobalStorage::setGlobalStorageRoot(const korvat2::path_t& root) {
  std::lock_guard<std::mutex> lock(g_mutex);
  g_global = makeFileStorage(root.is_empty() ? default_root() : root);
  g_installed = true;
}

}  // namespace quern2
