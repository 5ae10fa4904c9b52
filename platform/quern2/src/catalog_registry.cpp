#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include <korvat2/system.h>
#include <ylvane/log.h>

#include <log4cplus/loggingmacros.h>

#include <map>
#include <mutex>

namespace quern2 {
namespace {

using catalog_ptr_t = std::shared_ptr<const ZANDOR_2_16::i18n::catalog_t>;

struct registry_t {
  std::mutex mutex;
  std::map<std::string, catalog_ptr_t> catalogs;  // null: looked for and not found
  // Catalogs handed out stay alive for the process, also across a reload.
  std::vector<catalog_ptr_t> handed_out;
};

registry_t& registry() {
  static registry_t* instance = new registry_t;  // never destroyed: pointers outlive exit
  return *instance;
}

// "de_DE.UTF-8@euro" gives "de_DE" and "de".
void add_candidates(const std::string& locale, std::vector<std::string>& out) {
  std::string base = locale.substr(0, locale.find_first_of(".@"));
  if (base.empty() || base == "C" || base == "POSIX") {
    return;
  }
  for (const std::string& candidate : {base, base.substr(0, base.find('_'))}) {
    bool known = false;
    for (const std::string& have : out) {
      known = known || have == candidate;
    }
    if (!known) {
      out.push_back(candidate);
    }
  }
}

catalog_ptr_t load_catalog(const std::string& name) {
  const std::string dir =
      std::string(IProductLocations::get()->getResourceDirectory()) + "/catalogs/" + name + "/";
  for (const std::string& language : preferredLanguages()) {
    const std::string file = dir + language + ".po";
    if (!korvat2::path_t::exists(file)) {
      continue;
    }
    std::string error;
    if (catalog_ptr_t catalog = ZANDOR_2_16::i18n::catalog_t::load_po_file(name, language, file, error)) {
      return catalog;
    }
    LOG4CPLUS_WARN(ylvane_1::log::areaLogger(ylvane_1::log::area::catalog),
                   "message catalog not loaded: " << error);
  }
  return nullptr;
}

}  // namespace

std::vector<std::string> preferredLanguages() {
  // The locale of messages: the first of these set decides, as in the C library.
  std::string locale;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    locale = korvat2::get_environ_value(variable);
    if (!locale.empty()) {
      break;
    }
  }
  std::vector<std::string> languages;
  // As gettext does, the LANGUAGE list counts only outside the C locale, which a program
  // has when no locale variable is set.
  if (!locale.empty() && locale != "C" && locale != "POSIX") {
    const std::string language = korvat2::get_environ_value("LANGUAGE");
    for (std::size_t start = 0; start < language.size();) {
      std::size_t end = language.find(':', start);
      end = end == std::string::npos ? language.size() : end;
      add_candidates(language.substr(start, end - start), languages);
      start = end + 1;
    }
  }
  add_candidates(locale, languages);
  add_candidates("en", languages);
  return languages;
}

const ZANDOR_2_16::i18n::catalog_t* getMessageCatalog(const std::string& name) {
  registry_t& reg = registry();
  std::lock_guard<std::mutex> lock(reg.mutex);
  auto found = reg.catalogs.find(name);
  if (found == reg.catalogs.end()) {
    found = reg.catalogs.emplace(name, load_catalog(name)).first;
    if (found->second) {
      reg.handed_out.push_back(found->second);
    }
  }
  return found->second.get();
}

void registerMessageCatalog(catalog_ptr_t catalog) {
  if (!catalog) {
    return;
  }
  registry_t& reg = registry();
  std::lock_guard<std::mutex> lock(reg.mutex);
  reg.handed_out.push_back(catalog);
  reg.catalogs[catalog->name()] = std::move(catalog);
}

void reloadMessageCatalogs() {
  registry_t& reg = registry();
  std::lock_guard<std::mutex> lock(reg.mutex);
  reg.catalogs.clear();
}

}  // namespace quern2
