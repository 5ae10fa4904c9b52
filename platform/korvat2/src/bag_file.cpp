// Bag files are XML: one element per bag and one per value, each with its name and (for
// values) its kind as attributes, in order, repeated names kept.
#include <korvat2/bag_file.h>

#include "atomic_file_p.h"

#include <ylvane/log.h>

#include <log4cplus/loggingmacros.h>
#include <pugixml.hpp>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <sstream>
#include <vector>

namespace korvat2 {
namespace {

constexpr const char* bag_tag = "bag";
constexpr const char* value_tag = "value";

const char* kind_name(variant_t::kind_t kind) {
  switch (kind) {
    case variant_t::kind_text: return "text";
    case variant_t::kind_wide_text: return "wtext";
    case variant_t::kind_int: return "int";
    case variant_t::kind_bool: return "bool";
    default: return "empty";
  }
}

constexpr const char* encoding_attribute = "encoding";
constexpr const char* base64_encoding = "base64";
constexpr char base64_digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
// Deeper levels are written at this one's indentation, so that the size of a file grows
// with its content only.
constexpr std::size_t max_indented_level = 8;

std::string to_base64(const std::string& bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = (group << 8) | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= count ? base64_digits[(group >> (18 - 6 * k)) & 63] : '=';
    }
  }
  return text;
}

// False for a text that isn't whole groups of four base64 digits with their padding.
bool from_base64(const char* text, std::string& bytes) {
  const std::size_t size = std::strlen(text);
  if (size % 4 != 0) {
    return false;
  }
  bytes.clear();
  for (std::size_t i = 0; i < size; i += 4) {
    unsigned group = 0;
    std::size_t padding = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const char* digit = text[i + k] ? std::strchr(base64_digits, text[i + k]) : nullptr;
      const bool pad = text[i + k] == '=' && i + 4 == size && k >= 2;
      if ((!digit && !pad) || (padding > 0 && !pad)) {
        return false;
      }
      padding += pad ? 1 : 0;
      group = (group << 6) | (digit ? static_cast<unsigned>(digit - base64_digits) : 0u);
    }
    for (std::size_t k = 0; k < 3 - padding; ++k) {
      bytes += static_cast<char>((group >> (16 - 8 * k)) & 0xFF);
    }
  }
  return true;
}

// The UTF-16 units of a wide text as bytes, low byte first, and back.
std::string units_to_bytes(const std::u16string& units) {
  std::string bytes;
  bytes.reserve(units.size() * 2);
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

bool bytes_to_units(const std::string& bytes, std::u16string& units) {
  if (bytes.size() % 2 != 0) {
    return false;
  }
  units.clear();
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                   (static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return true;
}

// A text goes into the file as it is when XML holds it and the reader gives it back
// exactly; otherwise (NUL, bytes that aren't UTF-8, lone surrogates) in base64.
void write_text(pugi::xml_node node, const variant_t& value) {
  const bool wide = value.kind() == variant_t::kind_wide_text;
  const std::string narrow = value.get<std::string>();
  const bool exact = narrow.find('\0') == std::string::npos &&
                     (wide ? zandor2::strings::to_utf16(narrow) == value.get<std::u16string>()
                           : zandor2::strings::to_utf8(zandor2::strings::to_utf16(narrow)) == narrow);
  if (exact) {
    node.text() = narrow.c_str();
    return;
  }
  node.append_attribute(encoding_attribute) = base64_encoding;
  node.text() = to_base64(wide ? units_to_bytes(value.get<std::u16string>()) : narrow).c_str();
}

void write_value(pugi::xml_node node, const variant_t& value) {
  node.append_attribute("kind") = kind_name(value.kind());
  switch (value.kind()) {
    case variant_t::kind_text:
    case variant_t::kind_wide_text: write_text(node, value); break;
    case variant_t::kind_int: node.text() = value.get<int>(); break;
    case variant_t::kind_bool: node.text() = value.get<bool>() ? "true" : "false"; break;
    default: break;
  }
}

// A line break and the indentation of `level`, before a child or a closing tag.
void indent(pugi::xml_node node, std::size_t level) {
  static const std::string blanks = "\n" + std::string(2 * max_indented_level, ' ');
  node.append_child(pugi::node_pcdata)
      .set_value(blanks.substr(0, 1 + 2 * std::min(level, max_indented_level)).c_str());
}

// Appends the entries of `bag` to `node`, a level at a time from a list of its own; false
// for a bag nested deeper than max_bag_depth.
bool write_bag(pugi::xml_node node, const variant_bag_t& bag) {
  struct level_t {
    pugi::xml_node node;
    const variant_bag_t* bag;
    std::size_t next;
  };
  std::vector<level_t> levels{{node, &bag, 0}};
  while (!levels.empty()) {
    level_t& level = levels.back();
    if (level.next == level.bag->size()) {
      if (!level.bag->empty()) {
        indent(level.node, levels.size() - 1);
      }
      levels.pop_back();
      continue;
    }
    const std::size_t index = level.next++;
    indent(level.node, levels.size());
    const variant_bag_t* nested = level.bag->entry_bag(index);
    pugi::xml_node child = level.node.append_child(nested ? bag_tag : value_tag);
    child.append_attribute("name") = level.bag->entry_name(index).c_str();
    if (!nested) {
      write_value(child, *level.bag->entry_value(index));
    } else if (levels.size() >= static_cast<std::size_t>(max_bag_depth)) {
      return false;
    } else {
      levels.push_back({child, nested, 0});
    }
  }
  return true;
}

// The text of a text value: as written, or decoded; false for an encoding that doesn't decode.
bool read_text(const pugi::xml_node& node, bool wide, variant_t& value) {
  const pugi::xml_attribute encoding = node.attribute(encoding_attribute);
  if (!encoding) {
    value = wide ? variant_t(zandor2::strings::to_utf16(node.child_value())) : variant_t(node.child_value());
    return true;
  }
  std::string bytes;
  std::u16string units;
  if (std::strcmp(encoding.value(), base64_encoding) != 0 || !from_base64(node.child_value(), bytes) ||
      (wide && !bytes_to_units(bytes, units))) {
    return false;
  }
  value = wide ? variant_t(units) : variant_t(bytes);
  return true;
}

// False for a value whose text doesn't fit its kind: such an entry is skipped.
bool read_value(const pugi::xml_node& node, variant_t& value) {
  const std::string kind = node.attribute("kind").value();
  const char* text = node.child_value();
  if (kind == "text" || kind == "wtext") {
    return read_text(node, kind == "wtext", value);
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

// Reads the entries below `node` into `bag`, a level at a time from a list of its own;
// false for a bag nested deeper than max_bag_depth.
bool read_bag(const pugi::xml_node& node, variant_bag_t& bag) {
  struct level_t {
    pugi::xml_node next;
    variant_bag_t* bag;
  };
  std::vector<level_t> levels{{node.first_child(), &bag}};
  while (!levels.empty()) {
    const pugi::xml_node child = levels.back().next;
    variant_bag_t* const parent = levels.back().bag;
    if (!child) {
      levels.pop_back();
      continue;
    }
    levels.back().next = child.next_sibling();
    if (child.type() != pugi::node_element || !child.attribute("name")) {
      continue;
    }
    const char* name = child.attribute("name").value();
    variant_t value;
    if (std::strcmp(child.name(), bag_tag) == 0) {
      if (levels.size() >= static_cast<std::size_t>(max_bag_depth)) {
        return false;
      }
      levels.push_back({child.first_child(), &parent->add_variant_bag(name, variant_bag_t())});
    } else if (std::strcmp(child.name(), value_tag) == 0 && read_value(child, value)) {
      parent->put<variant_t>(name, value);
    }
  }
  return true;
}

// A bag file holds one root element, and around it no text, only blanks, comments and
// processing instructions: whatever else follows a root would be lost on the next save.
bool has_one_root(const pugi::xml_document& document) {
  int elements = 0;
  for (const pugi::xml_node& child : document.children()) {
    if (child.type() == pugi::node_element) {
      ++elements;
    } else if (child.type() != pugi::node_declaration && child.type() != pugi::node_doctype) {
      return false;
    }
  }
  return elements == 1;
}

}  // namespace

error_code_t load_variant_bag(variant_bag_t& bag, const char* path, const char* extra) {
  if (!path || !*path) {
    return error::IsNotValidParameter;
  }
  std::string content;
  error_code_t result;
  if (!_internal::read_file(path, content, result)) {
    return result;
  }
  // XML holds no NUL, and pugixml would stop at the first one as if the file ended there.
  if (content.find('\0') != std::string::npos) {
    return error::FileFormat;
  }
  // As a fragment, pugixml keeps the text and elements around the root for us to refuse.
  // Parsing in place keeps one copy of the file's bytes in memory, not two.
  pugi::xml_document document;
  const unsigned options =
      (pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_fragment) & ~pugi::parse_eol;
  if (!document.load_buffer_inplace(content.data(), content.size(), options, pugi::encoding_utf8) ||
      !has_one_root(document)) {
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
  if (!read_bag(root, loaded)) {
    return error::FileFormat;
  }
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
  document.append_child(pugi::node_pcdata).set_value("\n");
  pugi::xml_node root = document.append_child(bag_tag);
  root.append_attribute("version") = 1;
  if (!write_bag(root, bag)) {
    LOG4CPLUS_ERROR(
        ylvane_1::log::areaLogger(ylvane_1::log::area::bags),
        "cannot write " << path << ": the bag is nested deeper than " << max_bag_depth << " levels");
    return error::BagTooDeep;
  }
  std::ostringstream out;
  document.save(out, "", pugi::format_raw, pugi::encoding_utf8);
  out << '\n';
  const int failure = _internal::replace_file(path, out.str());
  if (failure != 0) {
    // Every save of the library ends here, so this is the one report of a failed write.
    LOG4CPLUS_ERROR(ylvane_1::log::areaLogger(ylvane_1::log::area::bags),
                    "cannot write " << path << ": " << std::strerror(failure));
    return error::FileWrite;
  }
  return error::Success;
}

}  // namespace korvat2
