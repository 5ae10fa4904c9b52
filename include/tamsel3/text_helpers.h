#pragma once
#include <korvat2/variant_bag.h>
#include <zandor/varg_list.h>

#include <string>

namespace tamsel3 {

/// The text of `key` in the catalog "tamsel", formatted with `args`. With no arguments,
/// "prod_name" and "prod_short_name" (the product's full and short names) are filled in.
/// Never empty: a missing catalog or key gives a diagnostic text that names the key.
/// Any thread.
std::string translate_message(const std::string& key, const ZANDOR_2_16::generic::varg_list& args);

/// A copy in which every LF not already after a CR becomes CR LF.
std::string restore_line_endings(const std::string& text);

/// A tooltip that lists forbidden characters: `prefix`, an LF (`on_new_line`) or a blank,
/// then the characters of `chars` in their order.
std::string get_disabled_tooltip_text(const std::string& prefix, const std::string& chars, bool on_new_line);

/// A copy with the first character in upper case; the rest keeps its case.
std::string set_1st_letter_uppercase(const std::string& text);

/// The narrow text at `name` in the iterator's current bag; empty when there is none or
/// it isn't narrow text.
std::string get_string_value(const korvat2::variant_bag_t::iterator_t<korvat2::variant_bag_t>& entry,
                             const std::string& name);

}  // namespace tamsel3
