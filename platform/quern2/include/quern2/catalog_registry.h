#pragma once
#include <zandor/catalog.h>

#include <memory>
#include <string>
#include <vector>

namespace quern2 {

/// The catalog of that name in the user's language, loaded at first need from
/// "<resource directory>/catalogs/<name>/<language>.po"; null when no file of it can be
/// read. The first language of preferredLanguages() that has a file is taken, so English
/// is the fallback. Thread-safe; a catalog stays valid for the process.
const ZANDOR_2_16::i18n::catalog_t* getMessageCatalog(const std::string& name);

/// Makes `catalog` the one returned for its name, in place of any file.
void registerMessageCatalog(std::shared_ptr<const ZANDOR_2_16::i18n::catalog_t> catalog);

/// Forgets the loaded and registered catalogs, so that the next request reads the files
/// again (after a change of language or resource directory). Catalogs handed out before
/// stay valid.
void reloadMessageCatalogs();

/// The languages to try for the current environment, best first, ending in "en": the
/// colon-separated LANGUAGE list, then the locale of messages (the first set of LC_ALL,
/// LC_MESSAGES and LANG), each "de_DE.UTF-8" as "de_DE" and then "de". As in gettext,
/// LANGUAGE is ignored in the "C" or "POSIX" locale, which is also the locale when none
/// of the three is set.
std::vector<std::string> preferredLanguages();

}  // namespace quern2
