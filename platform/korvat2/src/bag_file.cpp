// Bag files are XML: one element per bag and one per value, each with its name and (for
// values) its kind as attributes, in order, repeated names kept.
#include <korvat2/bag_file.h>

#include <ylvane/log.h>

#include <log4cplus/loggingmacros.h>
#include <pugixml.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <sstream>

namespace korvat2 {
namespace {

constexpr const char* bag_tag = "bag";
constexpr const char* value_tag = "value";

_internal::save_step_hook_t g_save_step_hook = nullptr;

// A refused step stands for a failing disk.
bool step_ok(_internal::save_step_t step) {
  if (g_save_step_hook && !g_save_step_hook(step)) {
    errno = EIO;
    return false;
  }
  return true;
}

const char* kind_name(variant_t::kind_t kind) {
  switch (kind) {
    case variant_t::kind_text: return "text";
    case variant_t::kind_wide_text: return "wtext";
    case variant_t::kind_int: return "int";
    case variant_t::kind_bool: return "bool";
    default: return "empty";
  }
}

void write_value(pugi::xml_node node, const variant_t& value) {
  node.append_attribute("kind") = kind_name(value.kind());
  switch (value.kind()) {
    case variant_t::kind_text:
    case variant_t::kind_wide_text: node.text() = value.get<const char*>(); break;
    case variant_t::kind_int: node.text() = value.get<int>(); break;
    case variant_t::kind_bool: node.text() = value.get<bool>() ? "true" : "false"; break;
    default: break;
  }
}

void write_bag(pugi::xml_node node, const variant_bag_t& bag) {
  for (std::size_t i = 0; i < bag.size(); ++i) {
    const variant_bag_t* nested = bag.entry_bag(i);
    pugi::xml_node child = node.append_child(nested ? bag_tag : value_tag);
    child.append_attribute("name") = bag.entry_name(i).c_str();
    if (nested) {
      write_bag(child, *nested);
    } else {
      write_value(child, *bag.entry_value(i));
    }
  }
}

// False for a value whose text doesn't fit its kind: such an entry is skipped.
bool read_value(const pugi::xml_node& node, variant_t& value) {
  const std::string kind = node.attribute("kind").value();
  const char* text = node.child_value();
  if (kind == "text") {
    value = variant_t(text);
  } else if (kind == "wtext") {
    value = variant_t(zandor2::strings::to_utf16(text));
  } else if (kind == "int") {
    int number = 0;
    const char* end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, number);
    if (result.ec != std::errc() || result.ptr != end || text == end) {
      return false;
    }
    value = variant_t(number);
  } else if (kind == "bool") {
    if (std::strcmp(text, "true") != 0 && std::strcmp(text, "false") != 0) {
      return false;
    }
    value = variant_t(std::strcmp(text, "true") == 0);
  } else if (kind == "empty") {
    value = variant_t();
  } else {
    return false;
  }
  return true;
}

void read_bag(const pugi::xml_node& node, variant_bag_t& bag) {
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (child.type() != pugi::node_element || !child.attribute("name")) {
      continue;
    }
    const char* name = child.attribute("name").value();
    if (std::strcmp(child.name(), bag_tag) == 0) {
      variant_bag_t nested;
      read_bag(child, nested);
      bag.add_variant_bag(name, nested);
    } else if (std::strcmp(child.name(), value_tag) == 0) {
      variant_t value;
      if (read_value(child, value)) {
        bag.put<variant_t>(name, value);
      }
    }
  }
}

bool read_file(const char* path, std::string& content, error_code_t& result) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    result = errno == ENOENT ? error::FileNotFound : error::FileRead;
    return false;
  }
  std::ostringstream buffer;
  buffer << in.rdbuf();
  if (in.bad()) {
    result = error::FileRead;
    return false;
  }
  content = buffer.str();
  return true;
}

mode_t new_file_mode() {
  // The umask can't be read without changing it, except through /proc.
  mode_t mask = 022;
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("Umask:", 0) == 0) {
      mask = static_cast<mode_t>(std::strtoul(line.c_str() + 6, nullptr, 8));
    }
  }
  return 0666 & ~mask;
}

bool write_all(int fd, const std::string& data) {
  for (std::size_t done = 0; done < data.size();) {
    const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0 && errno == EINTR) {
      continue;
    }
    if (n <= 0) {
      return false;
    }
    done += static_cast<std::size_t>(n);
  }
  return true;
}

void sync_directory(const std::string& dir) {
  const int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    ::fsync(fd);
    ::close(fd);
  }
}

// Writes `data` next to `target` and renames it over `target`; 0, or the errno of the step
// that failed.
int replace_file(const std::string& target, const std::string& data) {
  // Split as plain text: path_t turns names with a '*' into the empty path, and the
  // temporary file must still lie beside the target for the rename to be atomic.
  const std::size_t slash = target.rfind('/');
  const std::string dir = slash == std::string::npos ? "." : slash == 0 ? "/" : target.substr(0, slash);
  const std::string leaf = slash == std::string::npos ? target : target.substr(slash + 1);
  std::string temp = dir + "/." + leaf + ".XXXXXX";
  const int fd = ::mkostemp(temp.data(), O_CLOEXEC);
  if (fd < 0) {
    return errno;
  }
  struct stat old_info;
  ::fchmod(fd, ::stat(target.c_str(), &old_info) == 0 ? (old_info.st_mode & 07777) : new_file_mode());
  bool ok = write_all(fd, data) && step_ok(_internal::save_temp_written) && ::fsync(fd) == 0 &&
            step_ok(_internal::save_temp_synced);
  int error = ok ? 0 : errno;
  if (::close(fd) != 0 && ok) {
    ok = false;
    error = errno;
  }
  if (ok && ::rename(temp.c_str(), target.c_str()) != 0) {
    ok = false;
    error = errno;
  }
  if (!ok) {
    ::unlink(temp.c_str());
    return error;
  }
  sync_directory(dir);
  return step_ok(_internal::save_renamed) ? 0 : errno;
}

}  // namespace

error_code_t load_variant_bag(variant_bag_t& bag, const char* path, const char* extra) {
  if (!path || !*path) {
    return error::IsNotValidParameter;
  }
  std::string content;
  error_code_t result;
  if (!read_file(path, content, result)) {
    return result;
  }
  pugi::xml_document document;
  const unsigned options = (pugi::parse_default | pugi::parse_ws_pcdata_single) & ~pugi::parse_eol;
  if (!document.load_buffer(content.data(), content.size(), options, pugi::encoding_utf8)) {
    return error::FileFormat;
  }
  pugi::xml_node root = document.document_element();
  if (std::strcmp(root.name(), bag_tag) != 0) {
    return error::FileFormat;
  }
  if (extra && *extra) {
    root = root.find_child_by_attribute(bag_tag, "name", extra);
    if (!root) {
      return error::IsNotValidValue;
    }
  }
  variant_bag_t loaded;
  read_bag(root, loaded);
  bag = std::move(loaded);
  return error::Success;
}

error_code_t save_variant_bag(const variant_bag_t& bag, const char* path) {
  if (!path || !*path) {
    return error::IsNotValidParameter;
  }
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child(bag_tag);
  root.append_attribute("version") = 1;
  write_bag(root, bag);
  std::ostringstream out;
  document.save(out, "  ", pugi::format_indent, pugi::encoding_utf8);
  const int failure = replace_file(path, out.str());
  if (failure != 0) {
    // Every save of the library ends here, so this is the one report of a failed write.
    LOG4CPLUS_ERROR(ylvane_1::log::areaLogger(ylvane_1::log::area::bags),
                    "cannot write " << path << ": " << std::strerror(failure));
    return error::FileWrite;
  }
  return error::Success;
}

namespace _internal {
save_step_hook_t set_save_step_hook(save_step_hook_t hook) {
  save_step_hook_t previous = g_save_step_hook;
  g_save_step_hook = hook;
  return previous;
}
}  // namespace _internal

}  // namespace korvat2
