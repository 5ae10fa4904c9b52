// Bag files are XML: one element per bag and one per value, each with its name and (for
// values) its kind as attributes, in order, repeated names kept.
#include <korvat2/bag_file.h>

#include "atomic_file_p.h"

#include <ylvane/log.h>

#include <log4cplus/loggingmacros.h>
#include <pugixml.hpp>

#include <charconv>
#include <cstring>
#include <sstream>

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
