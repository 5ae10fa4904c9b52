#include <zandor/catalog.h>

#include <sys/stat.h>

#include <fstream>
#include <sstream>

namespace ZANDOR_2_16::i18n {

strings::ustring8 message_t::as_ustring(const generic::varg_list& args) const {
  std::string out;
  out.reserve(m_text.size());
  for (std::size_t pos = 0; pos < m_text.size(); ++pos) {
    const char c = m_text[pos];
    const bool doubled = pos + 1 < m_text.size() && m_text[pos + 1] == c;
    if ((c == '{' || c == '}') && doubled) {
      out += c;
      ++pos;
      continue;
    }
    const std::size_t close = c == '{' ? m_text.find_first_of("{}", pos + 1) : std::string::npos;
    if (close == std::string::npos || m_text[close] != '}') {
      out += c;
      continue;
    }
    const std::string name = m_text.substr(pos + 1, close - pos - 1);
    const types::variant* value = args.find(name);
    out += value ? value->as_string() : m_text.substr(pos, close - pos + 1);
    pos = close;
  }
  return strings::ustring8(std::move(out));
}

bool catalog_t::has_message(const strings::ustring8& key) const { return m_messages.count(key.str()) != 0; }

message_t catalog_t::message(const strings::ustring8& key) const {
  const auto found = m_messages.find(key.str());
  return found == m_messages.end() ? message_t() : message_t(found->second);
}

std::shared_ptr<const catalog_t> catalog_t::load_po_file(const std::string& name, const std::string& language,
                                                         const std::string& path, std::string& error) {
  // A folder opens like a file but reads as nothing; it is no catalog.
  struct stat info {};
  if (::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
    error = "cannot read " + path + ": it is a folder";
    return nullptr;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot open " + path;
    return nullptr;
  }
  std::ostringstream text;
  text << in.rdbuf();
  messages_t messages;
  if (!parse_po(text.str(), messages, error)) {
    error = path + ": " + error;
    return nullptr;
  }
  return std::make_shared<const catalog_t>(name, language, std::move(messages));
}

}  // namespace ZANDOR_2_16::i18n
