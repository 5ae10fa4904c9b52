// The catalogs that ship with the library: every language has exactly the keys of the
// English one, with the same named arguments, and every text of the layouts is a key
// that each of them translates.
#include <zandor/catalog.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;
using ZANDOR_2_16::i18n::catalog_t;
using names_t = std::set<std::string>;

const fs::path resource_dir = TAMSEL3_SOURCE_RESOURCE_DIR;

catalog_t::messages_t read_catalog(const fs::path& file) {
  catalog_t::messages_t messages;
  std::string error;
  EXPECT_TRUE(catalog_t::parse_po(test_support::read_bytes(file.string()), messages, error))
      << file << ": " << error;
  return messages;
}

// The catalogs other than the English one, by language.
std::map<std::string, catalog_t::messages_t> translations() {
  std::map<std::string, catalog_t::messages_t> result;
  for (const auto& entry : fs::directory_iterator(resource_dir / "catalog")) {
    if (entry.path().extension() == ".po" && entry.path().stem() != "en") {
      result[entry.path().stem().string()] = read_catalog(entry.path());
    }
  }
  return result;
}

// The argument names of a text, read as the catalog fills them: "{{" and "}}" are braces.
names_t arguments_of(const std::string& text) {
  names_t names;
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if ((text[pos] == '{' || text[pos] == '}') && pos + 1 < text.size() && text[pos + 1] == text[pos]) {
      ++pos;
    } else if (text[pos] == '{') {
      const std::size_t close = text.find_first_of("{}", pos + 1);
      if (close != std::string::npos && text[close] == '}') {
        names.insert(text.substr(pos + 1, close - pos - 1));
        pos = close;
      }
    }
  }
  return names;
}

names_t keys_of(const catalog_t::messages_t& messages) {
  names_t keys;
  for (const auto& message : messages) {
    keys.insert(message.first);
  }
  return keys;
}

TEST(catalog_files_test, german_is_shipped) { EXPECT_EQ(translations().count("de"), 1u); }

TEST(catalog_files_test, every_language_has_exactly_the_english_keys) {
  const names_t english = keys_of(read_catalog(resource_dir / "catalog" / "en.po"));
  ASSERT_FALSE(english.empty());
  for (const auto& [language, messages] : translations()) {
    const names_t keys = keys_of(messages);
    for (const std::string& key : english) {
      EXPECT_EQ(keys.count(key), 1u) << language << ".po has no text for " << key;
    }
    for (const std::string& key : keys) {
      EXPECT_EQ(english.count(key), 1u) << language << ".po has a key that en.po hasn't: " << key;
    }
  }
}

TEST(catalog_files_test, every_translation_keeps_the_arguments_of_english) {
  const catalog_t::messages_t english = read_catalog(resource_dir / "catalog" / "en.po");
  for (const auto& [language, messages] : translations()) {
    for (const auto& [key, text] : messages) {
      const auto original = english.find(key);
      if (original != english.end()) {
        EXPECT_EQ(arguments_of(text), arguments_of(original->second)) << language << ".po, " << key;
      }
    }
  }
}

TEST(catalog_files_test, arguments_are_read_as_the_catalog_fills_them) {
  EXPECT_EQ(arguments_of("{a} and {b}, {a} again"), (names_t{"a", "b"}));
  EXPECT_EQ(arguments_of("{{at}} is no argument, {{{x}}} is"), names_t{"x"});
  EXPECT_EQ(arguments_of("open { brace, {unclosed"), names_t{});
}

TEST(catalog_files_test, every_layout_text_is_a_key_of_every_catalog) {
  const std::string layout = test_support::read_bytes((resource_dir / "tamsel.xrc").string());
  ASSERT_FALSE(layout.empty());
  const std::regex text_element("<(label|title|tooltip|hint|value|help|message|item)>([^<]+)</\\1>");
  std::map<std::string, catalog_t::messages_t> catalogs = translations();
  catalogs["en"] = read_catalog(resource_dir / "catalog" / "en.po");
  int texts = 0;
  for (auto it = std::sregex_iterator(layout.begin(), layout.end(), text_element);
       it != std::sregex_iterator(); ++it) {
    const std::string text = (*it)[2];
    ++texts;
    for (const auto& [language, messages] : catalogs) {
      EXPECT_EQ(messages.count(text), 1u)
          << "the layout text \"" << text << "\" isn't in " << language << ".po";
    }
  }
  EXPECT_GT(texts, 40);
}

}  // namespace
