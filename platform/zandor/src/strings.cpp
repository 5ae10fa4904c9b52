#include <zandor/strings.h>

#include <locale.h>
#include <clocale>
#include <cwctype>

namespace ZANDOR_2_16::strings {
namespace {

constexpr char32_t replacement_char = 0xFFFD;

}  // namespace

char32_t decode_utf8(const std::string& s, std::size_t& pos) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
  const unsigned char lead = byte(pos);
  int extra = 0;
  char32_t cp = 0;
  if (lead < 0x80) {
    ++pos;
    return lead;
  } else if ((lead & 0xE0) == 0xC0) {
    extra = 1, cp = lead & 0x1F;
  } else if ((lead & 0xF0) == 0xE0) {
    extra = 2, cp = lead & 0x0F;
  } else if ((lead & 0xF8) == 0xF0) {
    extra = 3, cp = lead & 0x07;
  } else {
    ++pos;
    return replacement_char;
  }
  if (pos + extra >= s.size()) {  // truncated sequence
    ++pos;
    return replacement_char;
  }
  for (int i = 1; i <= extra; ++i) {
    if ((byte(pos + i) & 0xC0) != 0x80) {
      ++pos;
      return replacement_char;
    }
    cp = (cp << 6) | (byte(pos + i) & 0x3F);
  }
  static const char32_t minimum[] = {0, 0x80, 0x800, 0x10000};
  if (cp < minimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++pos;
    return replacement_char;
  }
  pos += extra + 1;
  return cp;
}

namespace {

void encode_utf8(char32_t cp, std::string& out) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Case mapping must not depend on the host's global locale, so a UTF-8 locale of our own
// answers it; without one only ASCII letters change.
locale_t case_locale() {
  static const locale_t locale = [] {
    locale_t made = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(0));
    return made ? made : newlocale(LC_CTYPE_MASK, "en_US.UTF-8", static_cast<locale_t>(0));
  }();
  return locale;
}

char32_t upper(char32_t cp) {
  if (cp < 0x80) {
    return (cp >= 'a' && cp <= 'z') ? cp - 'a' + 'A' : cp;
  }
  const locale_t locale = case_locale();
  return locale ? static_cast<char32_t>(towupper_l(static_cast<wint_t>(cp), locale)) : cp;
}

}  // namespace

std::size_t ustring8::length() const {
  std::size_t count = 0;
  for (std::size_t pos = 0; pos < m_text.size(); ++count) {
    decode_utf8(m_text, pos);
  }
  return count;
}

std::u16string to_utf16(const std::string& utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t pos = 0; pos < utf8.size();) {
    const char32_t cp = decode_utf8(utf8, pos);
    if (cp >= 0x10000) {
      out += static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
      out += static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
    } else {
      out += static_cast<char16_t>(cp);
    }
  }
  return out;
}

std::string to_utf8(const std::u16string& utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t cp = utf16[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
        utf16[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (utf16[++i] - 0xDC00);
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = replacement_char;
    }
    encode_utf8(cp, out);
  }
  return out;
}

ustring8 to_upper(const ustring8& text) {
  const std::string& in = text.str();
  std::string out;
  out.reserve(in.size());
  for (std::size_t pos = 0; pos < in.size();) {
    const std::size_t start = pos;
    const char32_t cp = decode_utf8(in, pos);
    if (cp == replacement_char && pos == start + 1 && static_cast<unsigned char>(in[start]) >= 0x80) {
      out += in[start];  // keep a malformed byte as it was
    } else {
      encode_utf8(upper(cp), out);
    }
  }
  return ustring8(std::move(out));
}

std::size_t replace_all(std::string& text, const std::string& what, const std::string& with) {
  if (what.empty()) {
    return 0;
  }
  std::size_t count = 0;
  for (std::size_t pos = text.find(what); pos != std::string::npos;
       pos = text.find(what, pos + with.size())) {
    text.replace(pos, what.size(), with);
    ++count;
  }
  return count;
}

std::vector<std::string> split_string(const std::string& text, const std::string& separators, int flags) {
  std::vector<std::string> pieces;
  if (text.empty()) {
    return pieces;
  }
  std::size_t start = 0;
  while (true) {
    const std::size_t end = text.find_first_of(separators, start);
    std::string piece = text.substr(start, end == std::string::npos ? end : end - start);
    if (!piece.empty() || !(flags & split_skip_empty)) {
      pieces.push_back(std::move(piece));
    }
    if (end == std::string::npos) {
      break;
    }
    start = end + 1;
  }
  return pieces;
}

}  // namespace ZANDOR_2_16::strings
