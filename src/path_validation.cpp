#include <tamsel3/char_rules.h>
#include <tamsel3/generic_base.h>
#include <tamsel3/path_validation.h>
#include <tamsel3/text_helpers.h>

#include <fathel2/result_directory_manager.h>
#include <korvat2/path.h>
#include <korvat2/system.h>
#include <plaxi1/ui_settings.h>
#include <quern2/catalog_registry.h>

#include <wx/gdicmn.h>
#include <wx/textctrl.h>

#include <cctype>
#include <vector>

namespace tamsel3 {
namespace {

wxColour error_colour() { return *wxStockGDI::GetColour(wxStockGDI::COLOUR_RED); }
wxColour normal_colour() { return plaxi1::ui_settings_t::get()->get_color(plaxi1::color_text); }

std::vector<std::string> split_search_path(const std::string& text) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', start)) {
    pieces.push_back(text.substr(start, colon - start));
    start = colon + 1;
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

// The first absolute piece under which `path` exists, or the empty path.
korvat2::path_t find_under(const std::vector<std::string>& pieces, const korvat2::path_t& path) {
  for (const std::string& piece : pieces) {
    korvat2::path_t candidate(piece);
    if (path.is_absolute()) {
      candidate.assign(path);
    } else if (!candidate.is_absolute()) {
      continue;
    } else {
      candidate.append(path);
    }
    if (korvat2::path_t::exists(candidate.as_string(false))) {
      return candidate;
    }
  }
  return korvat2::path_t();
}

std::string upper_case(std::string text) {
  for (char& c : text) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return text;
}

// A path that doesn't exist yet is fine when an ancestor does and nothing on the way up
// to it is a folder that a result directory keeps for itself.
bool reaches_existing_ancestor(const korvat2::path_t& path) {
  for (std::string level = path.as_string(false); !level.empty();
       level = korvat2::path_t(level).get_branch()) {
    const std::string leaf = upper_case(korvat2::path_t(level).get_leaf());
    if (fathel2::ResultDirectoryManager::isReservedDirectoryName(leaf.c_str())) {
      return false;
    }
    if (korvat2::path_t::exists(level)) {
      return true;
    }
  }
  return false;
}

// The texts that have something to say, joined by `separator`: without a catalog the texts
// are empty, and no lone separator is left as a tooltip.
std::string join(const std::string& first, const char* separator, const std::string& second) {
  if (first.empty() || second.empty()) {
    return first + second;
  }
  return first + separator + second;
}

std::string cleaning_tooltip(bool removed, bool valid, const std::string& list,
                             const std::string& undefined) {
  if (removed && valid) {
    return list;
  }
  if (!removed && !valid) {
    return undefined;
  }
  return join(list, "\n\n", undefined);
}

struct path_texts_t {
  std::string m_restricted_sym_descr;
  std::string m_undefined_tooltip_text;
};

// Kept for the process once read: two lookups less per keystroke, at the price of a
// language change. Empty while there is no catalog.
const path_texts_t& path_texts() {
  static path_texts_t kept;
  static const path_texts_t none;
  const ZANDOR_2_16::i18n::catalog_t* catalog = quern2::getMessageCatalog("tamsel");
  if (!catalog) {
    return none;
  }
  const ZANDOR_2_16::generic::varg_list no_args;
  if (kept.m_restricted_sym_descr.empty()) {
    kept.m_restricted_sym_descr = catalog->message("restricted_symbols_message").as_ustring(no_args).str();
  }
  if (kept.m_undefined_tooltip_text.empty()) {
    kept.m_undefined_tooltip_text =
        catalog->message("pref.result_saving.undefined_tooltip_text").as_ustring(no_args).str();
  }
  return kept;
}

}  // namespace

template <class Control>
bool validate_path(Control* control, bool check_path, const std::string& disabled_chars) {
  // A missing catalog leaves the texts empty; the field is cleaned and judged all the same.
  const path_texts_t& texts = path_texts();
  if (!control) {
    return true;
  }
  const long caret = control->GetInsertionPoint();
  const std::string value = control->GetValue().utf8_string();
  if (value.empty()) {
    set_color_and_tooltip(control, texts.m_undefined_tooltip_text, error_colour());
    return true;
  }
  std::string copy = value;
  const bool removed = replace_disabled_chars(copy, disabled_chars);
  bool valid = true;
  if (check_path) {
    int error = -1;
    valid = korvat2::path_t::validate(copy, true, error);
  }
  if (control->GetValue().utf8_string() != copy) {
    control->ChangeValue(wxString::FromUTF8(copy));  // no event: the check doesn't run again
  } else if (valid) {
    set_color_and_tooltip(control, "", normal_colour());
    return true;
  }
  const std::string list =
      texts.m_restricted_sym_descr.empty()
          ? folder_disabled_chars
          : get_disabled_tooltip_text(texts.m_restricted_sym_descr, folder_disabled_chars, true);
  set_color_and_tooltip(control, cleaning_tooltip(removed, valid, list, texts.m_undefined_tooltip_text),
                        error_colour());
  if (removed) {
    control->SetInsertionPoint(caret > 0 ? caret - 1 : 0);  // back over the one character just typed
  }
  return valid;
}

template <class T>
template <class Control>
bool generic_base_t<T>::check_file_or_folder(Control* control, bool must_exist, bool notify,
                                             bool search_path) {
  if (!control) {
    return false;
  }
  const bool form_ok = validate_path(control, true, folder_disabled_chars);
  korvat2::path_t path(control->GetValue().utf8_string());
  if (search_path && !path.is_absolute()) {
    korvat2::path_t found = find_under(split_search_path(korvat2::get_environ_value("PATH")), path);
    if (found.is_empty()) {
      found = find_under(m_path_candidates, path);
    }
    if (!found.is_empty()) {
      path.assign(found);
    }
  }
  bool ok = form_ok && path.normalize() && !path.is_empty() && path.is_absolute();
  std::string message;
  if (!ok) {
    message = m_path_messages[path_empty_relative];
  } else if (must_exist) {
    ok = korvat2::path_t::exists(path.as_string(false));
    message = ok ? std::string() : m_path_messages[path_nonexisting];
  } else {
    ok = reaches_existing_ancestor(path);
    message = ok ? std::string() : m_path_messages[path_nonexisting_parent_dir];
  }
  if (!ok) {
    message = join(message, " ", m_path_messages[path_enter_valid_path]);
  }
  // An empty field isn't acceptable, but it doesn't shout either.
  set_color_and_tooltip(control, message, ok || path.is_empty() ? normal_colour() : error_colour());
  if (notify) {
    m_path_checked_signal(ok);
  }
  return ok;
}

template bool validate_path<wxTextCtrl>(wxTextCtrl*, bool, const std::string&);
template bool generic_base_t<wxPanel>::check_file_or_folder<wxTextCtrl>(wxTextCtrl*, bool, bool, bool);
template bool generic_base_t<dummy>::check_file_or_folder<wxTextCtrl>(wxTextCtrl*, bool, bool, bool);

}  // namespace tamsel3
