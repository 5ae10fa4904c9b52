// PO text of any bytes: the reader takes it without crashing; a failure names a line and
// leaves the map as it was; a success holds only translated entries, and what it read,
// written back as PO, reads the same.
#include <zandor/catalog.h>

#include "fuzz_support.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

using fuzz_support::fail;
using messages_t = ZANDOR_2_16::i18n::catalog_t::messages_t;

// Every byte as an octal escape, which the reader takes for any byte.
std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    char escape[5];
    std::snprintf(escape, sizeof escape, "\\%03o", c);
    out += escape;
  }
  return out + "\"";
}

// A key with a context is the context, byte 4 and the id; an id may hold byte 4 too, so a
// key is split only where the id part keeps something.
std::string as_po(const messages_t& messages) {
  std::string text;
  for (const auto& [key, value] : messages) {
    std::size_t separator = key.find('\x04');
    separator = separator + 1 < key.size() ? separator : std::string::npos;
    if (separator != std::string::npos) {
      text += "msgctxt " + quoted(key.substr(0, separator)) + "\n";
    }
    text += "msgid " + quoted(separator == std::string::npos ? key : key.substr(separator + 1)) + "\n";
    text += "msgstr " + quoted(value) + "\n\n";
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const messages_t before{{"kept", "as it was"}};
  messages_t messages = before;
  std::string error = "untouched";
  if (!ZANDOR_2_16::i18n::catalog_t::parse_po(input, messages, error)) {
    if (messages != before || error.rfind("line ", 0) != 0) {
      fail("a failed read changed the map or named no line", input);
    }
    return 0;
  }
  if (error != "untouched") {
    fail("a good read changed the error text", input);
  }
  for (const auto& [key, value] : messages) {
    if (key.empty() || value.empty()) {
      fail("an empty key or text was kept", input);
    }
  }
  messages_t again;
  if (!ZANDOR_2_16::i18n::catalog_t::parse_po(as_po(messages), again, error) || again != messages) {
    fail("what was read reads differently when written back", input);
  }
  return 0;
}
