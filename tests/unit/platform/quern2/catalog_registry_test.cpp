#include <quern2/catalog_registry.h>
#include <quern2/product_locations.h>

#include "fixtures.h"
#include "log_capture.h"

#include <gtest/gtest.h>

#include <log4cplus/loglevel.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using quern2::getMessageCatalog;
using quern2::IProductLocations;
using quern2::preferredLanguages;
using quern2::registerMessageCatalog;
using quern2::reloadMessageCatalogs;
using test_support::scoped_env_t;
using test_support::temp_dir_t;
using test_support::write_bytes;
using ZANDOR_2_16::i18n::catalog_t;
using languages_t = std::vector<std::string>;

std::string po_entry(const std::string& key, const std::string& text) {
  return "msgid \"" + key + "\"\nmsgstr \"" + text + "\"\n\n";
}

// A private resource folder and a clean language environment for each test.
class catalog_registry_test : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(m_root.empty());
    m_resource_dir.set(m_root);
    m_language.unset();
    m_lc_all.unset();
    m_lc_messages.unset();
    m_lang.unset();
    IProductLocations::set(nullptr);
    reloadMessageCatalogs();
  }

  void TearDown() override {
    for (scoped_env_t* variable : {&m_resource_dir, &m_language, &m_lc_all, &m_lc_messages, &m_lang}) {
      variable->restore();
    }
    IProductLocations::set(nullptr);
    reloadMessageCatalogs();
  }

  std::string write_catalog(const std::string& name, const std::string& language,
                            const std::string& content) {
    const fs::path folder = fs::path(m_root) / "catalogs" / name;
    fs::create_directories(folder);
    const std::string file = (folder / (language + ".po")).string();
    write_bytes(file, content);
    return file;
  }

  temp_dir_t m_dir;
  const std::string m_root = m_dir.path();
  scoped_env_t m_resource_dir{"TAMSEL3_RESOURCE_DIR"};
  scoped_env_t m_language{"LANGUAGE"};
  scoped_env_t m_lc_all{"LC_ALL"};
  scoped_env_t m_lc_messages{"LC_MESSAGES"};
  scoped_env_t m_lang{"LANG"};
};

std::string text_of(const catalog_t* catalog, const std::string& key) {
  return catalog ? catalog->message(key).text() : std::string("<no catalog>");
}

// ---- preferredLanguages ---------------------------------------------------------------

TEST_F(catalog_registry_test, english_without_any_language_variable) {
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
}

TEST_F(catalog_registry_test, locale_gives_territory_form_then_language_then_english) {
  m_lang.set("de_DE.UTF-8@euro");
  EXPECT_EQ(preferredLanguages(), (languages_t{"de_DE", "de", "en"}));
  m_lang.set("pt_BR");
  EXPECT_EQ(preferredLanguages(), (languages_t{"pt_BR", "pt", "en"}));
  m_lang.set("sr@latin");
  EXPECT_EQ(preferredLanguages(), (languages_t{"sr", "en"}));
  m_lang.set("fr");
  EXPECT_EQ(preferredLanguages(), (languages_t{"fr", "en"}));
}

TEST_F(catalog_registry_test, english_locale_gives_english_once) {
  m_lang.set("en_US.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"en_US", "en"}));
  m_lang.set("en");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
}

TEST_F(catalog_registry_test, lc_all_before_lc_messages_before_lang) {
  m_lang.set("de_DE.UTF-8");
  m_lc_messages.set("fr_FR.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"fr_FR", "fr", "en"}));
  m_lc_all.set("it_IT.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"it_IT", "it", "en"}));
}

TEST_F(catalog_registry_test, empty_variables_count_as_unset) {
  m_lc_all.set("");
  m_lc_messages.set("");
  m_lang.set("es_ES.UTF-8");
  m_language.set("");
  EXPECT_EQ(preferredLanguages(), (languages_t{"es_ES", "es", "en"}));
}

TEST_F(catalog_registry_test, language_list_comes_before_the_locale) {
  m_language.set("fr_FR:it");
  m_lang.set("de_DE.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"fr_FR", "fr", "it", "de_DE", "de", "en"}));
}

TEST_F(catalog_registry_test, languages_are_listed_once) {
  m_language.set("de::de_AT:de");
  m_lang.set("de_AT.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"de", "de_AT", "en"}));
}

TEST_F(catalog_registry_test, c_and_posix_locales_are_ignored) {
  m_lang.set("C");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_lang.set("POSIX");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_lang.set("C.UTF-8");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_language.set("C:POSIX:nl");
  EXPECT_EQ(preferredLanguages(), (languages_t{"nl", "en"}));
}

TEST_F(catalog_registry_test, language_list_is_ignored_in_the_c_locale) {
  m_language.set("de:fr");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});  // no locale variable: the C locale
  m_lang.set("C");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_lang.set("de_DE.UTF-8");
  m_lc_all.set("POSIX");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_lc_all.unset();
  m_lc_messages.set("C");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
  m_lc_messages.set("it_IT.UTF-8");
  EXPECT_EQ(preferredLanguages(), (languages_t{"de", "fr", "it_IT", "it", "en"}));
}

TEST_F(catalog_registry_test, first_available_language_of_the_list_wins) {
  write_catalog("t_list", "fr", po_entry("key", "français"));
  write_catalog("t_list", "de", po_entry("key", "deutsch"));
  write_catalog("t_list", "en", po_entry("key", "english"));
  m_lang.set("en_US.UTF-8");
  m_language.set("ja:fr:de");
  EXPECT_EQ(text_of(getMessageCatalog("t_list"), "key"), "français");
  m_language.set("de");
  m_lang.set("C");
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_list"), "key"), "english");
}

TEST_F(catalog_registry_test, first_locale_variable_set_decides_even_when_it_is_c) {
  m_lc_all.set("C");
  m_lang.set("de_DE.UTF-8");
  EXPECT_EQ(preferredLanguages(), languages_t{"en"});
}

// ---- getMessageCatalog ----------------------------------------------------------------

TEST_F(catalog_registry_test, catalog_of_the_users_language_is_loaded) {
  write_catalog("t_lang", "de_DE", po_entry("key", "Schlüssel (DE)"));
  write_catalog("t_lang", "de", po_entry("key", "Schlüssel"));
  write_catalog("t_lang", "en", po_entry("key", "key"));
  m_lang.set("de_DE.UTF-8@euro");
  const catalog_t* catalog = getMessageCatalog("t_lang");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->name(), "t_lang");
  EXPECT_EQ(catalog->language(), "de_DE");
  EXPECT_EQ(text_of(catalog, "key"), "Schlüssel (DE)");
}

TEST_F(catalog_registry_test, language_without_territory_is_the_next_choice) {
  write_catalog("t_short", "de", po_entry("key", "Schlüssel"));
  write_catalog("t_short", "en", po_entry("key", "key"));
  m_lang.set("de_AT.UTF-8");
  const catalog_t* catalog = getMessageCatalog("t_short");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "de");
  EXPECT_EQ(text_of(catalog, "key"), "Schlüssel");
}

TEST_F(catalog_registry_test, english_is_the_fallback) {
  write_catalog("t_en", "en", po_entry("key", "English"));
  m_lang.set("ja_JP.UTF-8");
  const catalog_t* catalog = getMessageCatalog("t_en");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "en");
  EXPECT_EQ(text_of(catalog, "key"), "English");
}

TEST_F(catalog_registry_test, missing_catalog_gives_null) {
  EXPECT_EQ(getMessageCatalog("t_missing"), nullptr);
  write_catalog("t_other", "en", po_entry("key", "x"));
  EXPECT_EQ(getMessageCatalog("t_missing"), nullptr);
}

TEST_F(catalog_registry_test, catalog_in_a_language_not_wanted_is_not_taken) {
  write_catalog("t_unwanted", "fr", po_entry("key", "clé"));
  m_lang.set("de_DE.UTF-8");
  EXPECT_EQ(getMessageCatalog("t_unwanted"), nullptr);
}

TEST_F(catalog_registry_test, missing_catalog_is_remembered_until_a_reload) {
  EXPECT_EQ(getMessageCatalog("t_late"), nullptr);
  write_catalog("t_late", "en", po_entry("key", "late"));
  EXPECT_EQ(getMessageCatalog("t_late"), nullptr);
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_late"), "key"), "late");
}

TEST_F(catalog_registry_test, repeated_requests_give_the_same_catalog) {
  write_catalog("t_same", "en", po_entry("key", "v"));
  const catalog_t* first = getMessageCatalog("t_same");
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(getMessageCatalog("t_same"), first);
}

TEST_F(catalog_registry_test, concurrent_first_requests_give_one_catalog) {
  write_catalog("t_threads", "en", po_entry("key", "v"));
  std::vector<const catalog_t*> seen(4, nullptr);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < seen.size(); ++i) {
    threads.emplace_back([&seen, i] { seen[i] = getMessageCatalog("t_threads"); });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  ASSERT_NE(seen[0], nullptr);
  for (const catalog_t* catalog : seen) {
    EXPECT_EQ(catalog, seen[0]);
  }
}

TEST_F(catalog_registry_test, malformed_catalog_falls_back_to_the_next_language_with_a_warning) {
  const std::string bad = write_catalog("t_bad", "de", "msgid \"key\nmsgstr \"kaputt\"\n");
  write_catalog("t_bad", "en", po_entry("key", "English"));
  m_lang.set("de_DE.UTF-8");
  test_support::log_capture_t capture;
  const catalog_t* catalog = getMessageCatalog("t_bad");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "en");
  EXPECT_EQ(text_of(catalog, "key"), "English");
  bool warned = false;
  for (const auto& line : capture.lines()) {
    warned = warned || (line.level == log4cplus::WARN_LOG_LEVEL && line.text.find(bad) != std::string::npos);
  }
  EXPECT_TRUE(warned);
}

TEST_F(catalog_registry_test, malformed_catalog_without_fallback_gives_null) {
  write_catalog("t_only_bad", "en", "msgfoo \"x\"\n");
  test_support::log_capture_t capture;
  EXPECT_EQ(getMessageCatalog("t_only_bad"), nullptr);
}

TEST_F(catalog_registry_test, folder_in_place_of_a_catalog_file_falls_back) {
  fs::create_directories(fs::path(m_root) / "catalogs" / "t_folder" / "de.po");
  write_catalog("t_folder", "en", po_entry("key", "English"));
  m_lang.set("de");
  test_support::log_capture_t capture;
  const catalog_t* catalog = getMessageCatalog("t_folder");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "en");
}

TEST_F(catalog_registry_test, registered_catalog_overrides_the_file) {
  write_catalog("t_reg", "en", po_entry("key", "from file"));
  registerMessageCatalog(
      std::make_shared<const catalog_t>("t_reg", "xx", catalog_t::messages_t{{"key", "registered"}}));
  const catalog_t* catalog = getMessageCatalog("t_reg");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "xx");
  EXPECT_EQ(text_of(catalog, "key"), "registered");
}

TEST_F(catalog_registry_test, registered_catalog_replaces_one_already_loaded) {
  write_catalog("t_rereg", "en", po_entry("key", "from file"));
  const catalog_t* loaded = getMessageCatalog("t_rereg");
  ASSERT_NE(loaded, nullptr);
  auto replacement =
      std::make_shared<const catalog_t>("t_rereg", "en", catalog_t::messages_t{{"key", "replacement"}});
  registerMessageCatalog(replacement);
  EXPECT_EQ(getMessageCatalog("t_rereg"), replacement.get());
  EXPECT_EQ(text_of(loaded, "key"), "from file");  // the first one still lives
}

TEST_F(catalog_registry_test, registered_catalog_needs_no_file) {
  registerMessageCatalog(
      std::make_shared<const catalog_t>("t_nofile", "en", catalog_t::messages_t{{"k", "v"}}));
  EXPECT_EQ(text_of(getMessageCatalog("t_nofile"), "k"), "v");
}

TEST_F(catalog_registry_test, registering_null_changes_nothing) {
  write_catalog("t_null", "en", po_entry("key", "file"));
  registerMessageCatalog(nullptr);
  EXPECT_EQ(text_of(getMessageCatalog("t_null"), "key"), "file");
}

TEST_F(catalog_registry_test, reload_forgets_registered_catalogs) {
  write_catalog("t_forget", "en", po_entry("key", "file"));
  registerMessageCatalog(
      std::make_shared<const catalog_t>("t_forget", "en", catalog_t::messages_t{{"key", "registered"}}));
  EXPECT_EQ(text_of(getMessageCatalog("t_forget"), "key"), "registered");
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_forget"), "key"), "file");
}

TEST_F(catalog_registry_test, catalog_stays_valid_after_a_reload) {
  write_catalog("t_valid", "en", po_entry("key", "old"));
  const catalog_t* old_catalog = getMessageCatalog("t_valid");
  ASSERT_NE(old_catalog, nullptr);
  write_catalog("t_valid", "en", po_entry("key", "new"));
  reloadMessageCatalogs();
  const catalog_t* new_catalog = getMessageCatalog("t_valid");
  ASSERT_NE(new_catalog, nullptr);
  EXPECT_EQ(text_of(new_catalog, "key"), "new");
  EXPECT_EQ(old_catalog->name(), "t_valid");
  EXPECT_EQ(text_of(old_catalog, "key"), "old");
}

TEST_F(catalog_registry_test, registered_catalog_stays_valid_after_its_owner_and_a_reload_let_go) {
  const catalog_t* registered = nullptr;
  {
    auto catalog = std::make_shared<const catalog_t>("t_owner", "en", catalog_t::messages_t{{"k", "kept"}});
    registered = catalog.get();
    registerMessageCatalog(std::move(catalog));
  }
  reloadMessageCatalogs();
  EXPECT_EQ(getMessageCatalog("t_owner"), nullptr);
  EXPECT_EQ(text_of(registered, "k"), "kept");
}

TEST_F(catalog_registry_test, change_of_language_takes_effect_at_a_reload) {
  write_catalog("t_switch", "de", po_entry("key", "deutsch"));
  write_catalog("t_switch", "en", po_entry("key", "english"));
  m_lang.set("de_DE.UTF-8");
  EXPECT_EQ(text_of(getMessageCatalog("t_switch"), "key"), "deutsch");
  m_lang.set("en_GB.UTF-8");
  EXPECT_EQ(text_of(getMessageCatalog("t_switch"), "key"), "deutsch");
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_switch"), "key"), "english");
}

// A catalog of another language is read only once that language is asked for: here a
// broken German file is never looked at while English is in use, and is read, mended, at
// the switch.
TEST_F(catalog_registry_test, catalog_of_another_language_is_read_only_at_the_switch_to_it) {
  const std::string german = write_catalog("t_lazy", "de", "msgid \"key\nmsgstr \"kaputt\"\n");
  write_catalog("t_lazy", "en", po_entry("key", "english"));
  m_lang.set("en_GB.UTF-8");
  {
    test_support::log_capture_t capture;
    EXPECT_EQ(text_of(getMessageCatalog("t_lazy"), "key"), "english");
    for (const auto& line : capture.lines()) {
      EXPECT_EQ(line.text.find(german), std::string::npos) << line.text;
    }
  }
  write_bytes(german, po_entry("key", "deutsch"));
  m_lang.set("de_DE.UTF-8");
  reloadMessageCatalogs();
  const catalog_t* catalog = getMessageCatalog("t_lazy");
  ASSERT_NE(catalog, nullptr);
  EXPECT_EQ(catalog->language(), "de");
  EXPECT_EQ(text_of(catalog, "key"), "deutsch");
}

TEST_F(catalog_registry_test, catalogs_come_from_the_resource_folder_of_the_host) {
  class host_locations_t : public IProductLocations {
   public:
    explicit host_locations_t(std::string dir) : m_dir(std::move(dir)) {}
    const char* getResourceDirectory() const override { return m_dir.c_str(); }
    const char* getProductText(int) const override { return ""; }
    const char* getFeaturesDirectory() const override { return ""; }
    const char* getProductTag() const override { return "host"; }
    int getProductGeneration() const override { return 1; }

   private:
    std::string m_dir;
  };
  write_catalog("t_host", "en", po_entry("key", "default folder"));
  const fs::path host_root = fs::path(m_root) / "host";
  fs::create_directories(host_root / "catalogs" / "t_host");
  write_bytes((host_root / "catalogs" / "t_host" / "en.po").string(), po_entry("key", "host folder"));

  host_locations_t host(host_root.string());
  IProductLocations::set(&host);
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_host"), "key"), "host folder");
  IProductLocations::set(nullptr);
  reloadMessageCatalogs();
  EXPECT_EQ(text_of(getMessageCatalog("t_host"), "key"), "default folder");
}

}  // namespace
