#pragma once
#include <zandor/ustring.h>
#include <zandor/varg_list.h>

#include <map>
#include <memory>
#include <string>

namespace ZANDOR_2_16::i18n {

/// One message of a catalog: a text with named arguments written `{name}`; `{{` and `}}`
/// stand for literal braces.
class message_t {
 public:
  message_t() = default;
  explicit message_t(std::string text) : m_text(std::move(text)) {}

  /// The text as stored, arguments unfilled.
  const std::string& text() const { return m_text; }
  /// The text with the named arguments of `args` filled in. A name that `args` doesn't
  /// hold stays as written, braces included, so that a missing argument shows.
  strings::ustring8 as_ustring(const generic::varg_list& args) const;

 private:
  std::string m_text;
};

/// A loaded message catalog: texts of one language by key. Immutable once made, so any
/// thread may read it.
class catalog_t {
 public:
  using messages_t = std::map<std::string, std::string>;

  catalog_t(std::string name, std::string language, messages_t messages)
      : m_name(std::move(name)), m_language(std::move(language)), m_messages(std::move(messages)) {}

  const std::string& name() const { return m_name; }
  /// The language of the texts, as in the catalog's file name ("en", "de_DE").
  const std::string& language() const { return m_language; }
  std::size_t size() const { return m_messages.size(); }

  bool has_message(const strings::ustring8& key) const;
  /// The message of `key`; an empty message when the catalog hasn't the key.
  message_t message(const strings::ustring8& key) const;

  /// Reads a gettext PO text: msgid is the key, msgstr the text. Fuzzy, untranslated and
  /// header entries are left out; of plural forms the first is kept. False with a message
  /// naming the line in `error` when the text is malformed; `messages` is then untouched.
  static bool parse_po(const std::string& po_text, messages_t& messages, std::string& error);
  /// Reads a PO file into a new catalog; null with `error` set when it can't be read.
  static std::shared_ptr<const catalog_t> load_po_file(const std::string& name, const std::string& language,
                                                       const std::string& path, std::string& error);

 private:
  std::string m_name;
  std::string m_language;
  messages_t m_messages;
};

}  // namespace ZANDOR_2_16::i18n
