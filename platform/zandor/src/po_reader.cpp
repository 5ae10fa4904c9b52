// A reader of gettext PO text, enough for catalogs that msgfmt accepts.
#include <zandor/catalog.h>

#include <cctype>
#include <sstream>

namespace ZANDOR_2_16::i18n {
namespace {

struct po_entry_t {
  std::string context;
  bool has_context = false;  // msgctxt "" is a context of its own, as gettext reads it
  std::string id;
  std::string text;  // msgstr, or msgstr[0] of a plural entry
  bool fuzzy = false;
  bool has_id = false;
};

class po_parser_t {
 public:
  po_parser_t(const std::string& text, catalog_t::messages_t& out) : m_in(text), m_out(out) {}

  bool run(std::string& error) {
    std::string line;
    while (std::getline(m_in, line)) {
      ++m_line;
      if (!line.empty() && line.back() == '\r') {
        line.pop_back();
      }
      if (!parse_line(trim(line))) {
        error = "line " + std::to_string(m_line) + ": " + m_error;
        return false;
      }
    }
    flush();
    return true;
  }

 private:
  static std::string trim(const std::string& s) {
    const auto first = s.find_first_not_of(" \t");
    return first == std::string::npos ? std::string()
                                      : s.substr(first, s.find_last_not_of(" \t") - first + 1);
  }

  bool fail(const std::string& what) {
    m_error = what;
    return false;
  }

  bool parse_line(const std::string& line) {
    if (line.empty()) {
      return true;
    }
    if (line[0] == '#') {
      if (line.rfind("#,", 0) == 0 && line.find("fuzzy") != std::string::npos) {
        flush_pending();
        m_entry.fuzzy = true;
      }
      return true;
    }
    if (line[0] == '"') {
      if (!m_target) {
        return fail("string without a keyword");
      }
      return append_string(line, *m_target);
    }
    const auto space = line.find_first_of(" \t");
    const std::string keyword = line.substr(0, space);
    const std::string rest = space == std::string::npos ? std::string() : trim(line.substr(space));
    return start_field(keyword, rest);
  }

  bool start_field(const std::string& keyword, const std::string& rest) {
    if (keyword == "msgctxt" || (keyword == "msgid" && !m_in_context)) {
      flush_pending();
    }
    if (keyword == "msgctxt") {
      m_in_context = true;
      m_entry.has_context = true;
      m_target = &m_entry.context;
    } else if (keyword == "msgid") {
      m_in_context = false;
      m_entry.has_id = true;
      m_target = &m_entry.id;
    } else if (keyword == "msgstr" || keyword == "msgstr[0]") {
      m_target = &m_entry.text;
    } else if (keyword == "msgid_plural" || keyword.rfind("msgstr[", 0) == 0) {
      m_target = &m_scratch;
    } else {
      return fail("unknown keyword '" + keyword + "'");
    }
    if (!m_entry.has_id && m_target != &m_entry.context) {
      return fail("'" + keyword + "' before msgid");
    }
    m_target->clear();
    return append_string(rest, *m_target);
  }

  bool append_string(const std::string& quoted, std::string& target) {
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') {
      return fail("expected a quoted string");
    }
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
      char c = quoted[i];
      if (c == '"') {
        return fail("unescaped quote inside a string");
      }
      if (c == '\\') {
        if (i + 2 >= quoted.size()) {
          return fail("escape at the end of a string");
        }
        if (!unescape(quoted, i, c)) {
          return fail(std::string("unknown escape \\") + quoted[i]);
        }
      }
      target += c;
    }
    return true;
  }

  // On entry `i` is at the backslash; on exit at the last character of the escape.
  static bool unescape(const std::string& s, std::size_t& i, char& out) {
    const char e = s[++i];
    switch (e) {
      case 'n': out = '\n'; return true;
      case 't': out = '\t'; return true;
      case 'r': out = '\r'; return true;
      case 'a': out = '\a'; return true;
      case 'b': out = '\b'; return true;
      case 'f': out = '\f'; return true;
      case 'v': out = '\v'; return true;
      case '\\':
      case '"':
      case '\'':
      case '?': out = e; return true;
      default: break;
    }
    if (e >= '0' && e <= '7') {
      int value = 0;
      for (int n = 0; n < 3 && i + 1 < s.size() && s[i] >= '0' && s[i] <= '7'; ++n, ++i) {
        value = value * 8 + (s[i] - '0');
      }
      --i;
      out = static_cast<char>(value);
      return true;
    }
    return false;
  }

  // An entry ends where the next one begins: at its flags, msgctxt or msgid.
  void flush_pending() {
    if (m_entry.has_id) {
      flush();
    }
  }

  void flush() {
    if (m_entry.has_id && !m_entry.fuzzy && !m_entry.id.empty() && !m_entry.text.empty()) {
      const std::string key = !m_entry.has_context ? m_entry.id : m_entry.context + '\x04' + m_entry.id;
      m_out[key] = m_entry.text;
    }
    m_entry = po_entry_t();
    m_target = nullptr;
    m_in_context = false;
  }

  std::istringstream m_in;
  catalog_t::messages_t& m_out;
  po_entry_t m_entry;
  std::string m_scratch;
  std::string* m_target = nullptr;
  bool m_in_context = false;
  unsigned m_line = 0;
  std::string m_error;
};

}  // namespace

bool catalog_t::parse_po(const std::string& po_text, messages_t& messages, std::string& error) {
  messages_t parsed;
  if (!po_parser_t(po_text, parsed).run(error)) {
    return false;
  }
  messages.swap(parsed);
  return true;
}

}  // namespace ZANDOR_2_16::i18n
