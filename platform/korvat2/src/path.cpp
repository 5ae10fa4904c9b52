#include <korvat2/path.h>

#include <sys/stat.h>

#include <vector>

namespace korvat2 {
namespace {

constexpr std::size_t max_name = 255;
constexpr std::size_t max_path = 4095;

bool acceptable(const std::string& text) {
  return !text.empty() && text.find('\0') == std::string::npos && text.find('*') == std::string::npos;
}

// The text without trailing separators, keeping a lone root.
std::string strip_trailing(const std::string& text) {
  std::size_t end = text.find_last_not_of('/');
  return end == std::string::npos ? text.substr(0, text.empty() ? 0 : 1) : text.substr(0, end + 1);
}

}  // namespace

path_t::path_t(const char* text) : path_t(std::string(text ? text : "")) {}

path_t::path_t(const std::string& text) {
  if (acceptable(text)) {
    m_text = text;
  }
}

void path_t::append(const path_t& other) {
  if (other.is_empty()) {
    return;
  }
  if (is_empty()) {
    m_text = other.m_text;
    return;
  }
  const std::size_t first = other.m_text.find_first_not_of('/');
  if (m_text.back() != '/') {
    m_text += '/';
  }
  if (first != std::string::npos) {
    m_text += other.m_text.substr(first);
  }
}

std::string path_t::as_string(bool trailing_separator) const {
  if (trailing_separator && !m_text.empty() && m_text.back() != '/') {
    return m_text + '/';
  }
  return m_text;
}

std::string path_t::get_branch() const {
  const std::string text = strip_trailing(m_text);
  const std::size_t slash = text.rfind('/');
  if (text == "/" || slash == std::string::npos) {
    return std::string();
  }
  const std::size_t end = text.find_last_not_of('/', slash);
  return end == std::string::npos ? std::string("/") : text.substr(0, end + 1);
}

std::string path_t::get_leaf() const {
  const std::string text = strip_trailing(m_text);
  if (text == "/") {
    return std::string();
  }
  const std::size_t slash = text.rfind('/');
  return slash == std::string::npos ? text : text.substr(slash + 1);
}

std::string path_t::get_ext() const {
  const std::string leaf = get_leaf();
  const std::size_t dot = leaf.rfind('.');
  if (dot == std::string::npos || dot == 0 || leaf == "..") {
    return std::string();
  }
  return leaf.substr(dot + 1);
}

bool path_t::normalize() {
  if (is_empty()) {
    return false;
  }
  std::vector<std::string> parts;
  std::size_t pos = 0;
  while (pos <= m_text.size()) {
    std::size_t slash = m_text.find('/', pos);
    if (slash == std::string::npos) {
      slash = m_text.size();
    }
    const std::string part = m_text.substr(pos, slash - pos);
    if (part == "..") {
      if (!parts.empty() && parts.back() != "..") {
        parts.pop_back();
      } else if (is_absolute()) {
        return false;
      } else {
        parts.push_back(part);
      }
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
    pos = slash + 1;
  }
  std::string result = is_absolute() ? "/" : "";
  for (std::size_t i = 0; i < parts.size(); ++i) {
    result += (i ? "/" : "") + parts[i];
  }
  m_text = result.empty() ? "." : result;
  return true;
}

bool path_t::exists(const std::string& path) {
  struct stat info;
  return !path.empty() && ::stat(path.c_str(), &info) == 0;
}

bool path_t::is_directory(const std::string& path) {
  struct stat info;
  return !path.empty() && ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool path_t::validate(const std::string& path, bool must_be_absolute, int& error) {
  int found = -1;
  if (path.find_first_not_of(" \t") == std::string::npos) {
    found = error_empty;
  } else if (path.find('\0') != std::string::npos) {
    found = error_nul;
  } else if (path.find('*') != std::string::npos) {
    found = error_wildcard;
  } else if (must_be_absolute && path[0] != '/') {
    found = error_relative;
  } else if (path.size() > max_path) {
    found = error_path_too_long;
  } else {
    for (std::size_t start = 0, end; start < path.size(); start = end + 1) {
      end = path.find('/', start);
      end = end == std::string::npos ? path.size() : end;
      if (end - start > max_name) {
        found = error_name_too_long;
        break;
      }
    }
  }
  if (found >= 0) {
    error = found;
  }
  return found < 0;
}

}  // namespace korvat2
