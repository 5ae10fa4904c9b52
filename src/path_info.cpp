#include <tamsel3/path_info.h>

#include <boost/tokenizer.hpp>

namespace tamsel3 {
namespace {

// The byte behind the wild-card is the terminator that makes it a string for the tokenizer.
const char asterisk_text[2] = {'*', '\0'};

}  // namespace

const char& path_info_t::Asterisk = asterisk_text[0];

path_info_t::path_info_t() = default;

path_info_t::path_info_t(const korvat2::path_t& path) : m_path(path) {}

path_info_t::path_info_t(const std::string& text) { set_path(text); }

path_info_t::~path_info_t() = default;

void path_info_t::set_path(const std::string& text) {
  const korvat2::path_t parsed(text);
  // A relative line never names a search directory, so it stays raw text like one with a '*'.
  if (parsed.is_empty() || !parsed.is_absolute()) {
    m_str_path = text;
  } else {
    m_path.assign(parsed);
  }
}

void path_info_t::set_path(const korvat2::path_t& path) { m_path.assign(path); }

korvat2::path_t path_info_t::get_path() const { return m_path; }

std::string path_info_t::as_string() const {
  return m_path.is_empty() ? m_str_path : m_path.as_string(false);
}

bool path_info_t::is_str_path() const { return m_path.is_empty(); }

bool path_info_t::is_ok() const { return !extract_path().is_empty(); }

bool path_info_t::is_exists() const {
  const korvat2::path_t path = extract_path();
  return !path.is_empty() && korvat2::path_t::exists(path.as_string(false));
}

bool path_info_t::is_file() const {
  const korvat2::path_t path = extract_path();
  return !path.is_empty() && !korvat2::path_t::is_directory(path.as_string(false));
}

bool path_info_t::is_directory() const {
  const korvat2::path_t path = extract_path();
  return !path.is_empty() && korvat2::path_t::is_directory(path.as_string(false));
}

std::string path_info_t::get_extension() const {
  const korvat2::path_t path = extract_path();
  return path.is_empty() ? std::string() : path.get_ext();
}

bool path_info_t::check_extension(const std::vector<std::string>& extensions) {
  const std::string extension = get_extension();
  for (const std::string& candidate : extensions) {
    if (candidate == extension) {
      return true;
    }
  }
  return false;
}

korvat2::path_t path_info_t::extract_path() const {
  if (!m_path.is_empty()) {
    return m_path;
  }
  using separator_t = boost::char_separator<char>;
  const boost::tokenizer<separator_t> tokens(m_str_path,
                                             separator_t(&Asterisk, "", boost::drop_empty_tokens));
  for (const std::string& token : tokens) {
    korvat2::path_t piece(token);
    if (!piece.is_empty() && piece.is_absolute()) {
      return piece;
    }
  }
  return m_path;
}

}  // namespace tamsel3
