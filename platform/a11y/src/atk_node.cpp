// The accessible objects of nodes: one GType per set of interfaces, all sharing the
// AtkObject and AtkComponent parts.
#include "atk_p.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace a11y {

namespace {

struct node_class_t {
  AtkObjectClass parent_class;
};

enum : unsigned { with_action = 1, with_text = 2, with_value = 4, with_table = 8, with_cell = 16 };

node_object_t* node_of(gpointer object) { return reinterpret_cast<node_object_t*>(object); }

// The node's description, or false when the node is gone.
bool describe(gpointer object, info_t& info) {
  node_object_t* node = node_of(object);
  if (!node->impl) {
    return false;
  }
  node->impl->tree->describe(node->key, info);
  return true;
}

// One part of the node's description; empty when the node is gone.
template <typename part_t>
part_t described(gpointer object, part_t info_t::*part) {
  info_t info;
  return describe(object, info) ? info.*part : part_t{};
}

AtkRole atk_role(role_t role) {
  switch (role) {
    case role_t::label: return ATK_ROLE_LABEL;
    case role_t::push_button: return ATK_ROLE_PUSH_BUTTON;
    case role_t::progress_bar: return ATK_ROLE_PROGRESS_BAR;
    case role_t::check_box: return ATK_ROLE_CHECK_BOX;
    case role_t::table: return ATK_ROLE_TABLE;
    case role_t::table_row: return ATK_ROLE_TABLE_ROW;
    case role_t::table_cell: return ATK_ROLE_TABLE_CELL;
    case role_t::column_header: return ATK_ROLE_COLUMN_HEADER;
    case role_t::image: return ATK_ROLE_IMAGE;
    case role_t::panel: break;
  }
  return ATK_ROLE_PANEL;
}

// --- AtkObject ------------------------------------------------------------------------

const gchar* node_get_name(AtkObject* object) {
  info_t info;
  return describe(object, info) ? keep_string(node_of(object), kept_name, info.name) : "";
}

const gchar* node_get_description(AtkObject* object) {
  info_t info;
  return describe(object, info) ? keep_string(node_of(object), kept_description, info.description) : "";
}

gint node_get_n_children(AtkObject* object) {
  node_object_t* node = node_of(object);
  return node->impl ? static_cast<gint>(node->impl->listed_children(node->key).size()) : 0;
}

AtkObject* node_ref_child(AtkObject* object, gint index) {
  node_object_t* node = node_of(object);
  if (!node->impl || index < 0) {
    return nullptr;
  }
  const std::vector<key_t> children = node->impl->listed_children(node->key);
  if (static_cast<std::size_t>(index) >= children.size()) {
    return nullptr;
  }
  return ATK_OBJECT(g_object_ref(node->impl->object_for(children[static_cast<std::size_t>(index)])));
}

gint node_get_index_in_parent(AtkObject* object) {
  node_object_t* node = node_of(object);
  if (!node->impl) {
    return -1;
  }
  tree_t* tree = node->impl->tree;
  const key_t parent = node->impl->listed_parent(node->key);
  const std::vector<key_t> siblings = node->impl->listed_children(parent, node->key);
  const auto found = std::find(siblings.begin(), siblings.end(), node->key);
  if (found == siblings.end()) {
    return -1;
  }
  const int before = parent == tree->root() ? node->impl->native_children() : 0;
  return before + static_cast<gint>(found - siblings.begin());
}

AtkStateSet* node_ref_state_set(AtkObject* object) {
  AtkStateSet* set = atk_state_set_new();
  info_t info;
  if (!describe(object, info)) {
    atk_state_set_add_state(set, ATK_STATE_DEFUNCT);
    return set;
  }
  for (const auto& [state, atk_state] : atk_states) {
    if (info.states & state) {
      atk_state_set_add_state(set, atk_state);
    }
  }
  if (info.states & state_enabled) {
    atk_state_set_add_state(set, ATK_STATE_SENSITIVE);
  }
  return set;
}

AtkAttributeSet* add_attribute(AtkAttributeSet* set, const char* name, const char* value) {
  auto* attribute = static_cast<AtkAttribute*>(g_malloc(sizeof(AtkAttribute)));
  attribute->name = g_strdup(name);
  attribute->value = g_strdup(value);
  return g_slist_prepend(set, attribute);
}

AtkAttributeSet* node_get_attributes(AtkObject* object) {
  info_t info;
  if (!describe(object, info) || info.live == politeness_t::off) {
    return nullptr;
  }
  const char* value = info.live == politeness_t::assertive ? "assertive" : "polite";
  AtkAttributeSet* set = add_attribute(nullptr, "container-live", value);
  return add_attribute(set, "live", value);
}

GObjectClass* atk_object_class = nullptr;  // AtkObject's own, that finalize goes on to

void node_finalize(GObject* object) {
  for (gchar* kept : node_of(object)->cache) {
    g_free(kept);
  }
  atk_object_class->finalize(object);
}

void node_class_init(gpointer klass, gpointer) {
  auto* atk_class = ATK_OBJECT_CLASS(klass);
  atk_class->get_name = node_get_name;
  atk_class->get_description = node_get_description;
  atk_class->get_n_children = node_get_n_children;
  atk_class->ref_child = node_ref_child;
  atk_class->get_index_in_parent = node_get_index_in_parent;
  atk_class->ref_state_set = node_ref_state_set;
  atk_class->get_attributes = node_get_attributes;
  atk_object_class = G_OBJECT_CLASS(g_type_class_peek_parent(klass));
  G_OBJECT_CLASS(klass)->finalize = node_finalize;
}

// --- AtkComponent ---------------------------------------------------------------------

void component_get_extents(AtkComponent* component, gint* x, gint* y, gint* width, gint* height,
                           AtkCoordType coords) {
  node_object_t* node = node_of(component);
  const rect_t area = node->impl ? node->impl->extents_in(node->key, coords) : rect_t{-1, -1, -1, -1};
  *x = area.x;
  *y = area.y;
  *width = area.width;
  *height = area.height;
}

gboolean component_grab_focus(AtkComponent* component) {
  node_object_t* node = node_of(component);
  return node->impl && node->impl->tree->grab_focus(node->key) ? TRUE : FALSE;
}

void component_init(gpointer iface, gpointer) {
  auto* component = static_cast<AtkComponentIface*>(iface);
  component->get_extents = component_get_extents;
  component->grab_focus = component_grab_focus;
}

// --- AtkAction ------------------------------------------------------------------------

struct pending_action_t {
  AtkObject* object;  // a reference
  int index;
};

// Actions run from idle time: a client's call must not wait for what the click starts.
gboolean run_action(gpointer data) {
  auto* pending = static_cast<pending_action_t*>(data);
  node_object_t* node = node_of(pending->object);
  if (node->impl) {
    node->impl->tree->do_action(node->key, pending->index);
  }
  g_object_unref(pending->object);
  delete pending;
  return G_SOURCE_REMOVE;
}

// The node's description, or false when the node is gone or has no action `index`.
bool describe_action(AtkAction* action, gint index, info_t& info) {
  return describe(action, info) && index >= 0 && static_cast<std::size_t>(index) < info.actions.size();
}

gboolean action_do_action(AtkAction* action, gint index) {
  info_t info;
  if (!describe_action(action, index, info)) {
    return FALSE;
  }
  g_idle_add(run_action, new pending_action_t{ATK_OBJECT(g_object_ref(action)), index});
  return TRUE;
}

gint action_get_n_actions(AtkAction* action) {
  info_t info;
  return describe(action, info) ? static_cast<gint>(info.actions.size()) : 0;
}

const gchar* action_get_name(AtkAction* action, gint index) {
  info_t info;
  if (!describe_action(action, index, info)) {
    return nullptr;
  }
  return keep_string(node_of(action), kept_action, info.actions[static_cast<std::size_t>(index)]);
}

void action_init(gpointer iface, gpointer) {
  auto* action = static_cast<AtkActionIface*>(iface);
  action->do_action = action_do_action;
  action->get_n_actions = action_get_n_actions;
  action->get_name = action_get_name;
  action->get_localized_name = action_get_name;
}

// --- AtkText --------------------------------------------------------------------------

// The length of the node's text in characters: asked of the tree for a long text, else
// counted in the text that the node describes.
long text_count(gpointer object) {
  node_object_t* node = node_of(object);
  if (!node->impl) {
    return 0;
  }
  const long length = node->impl->tree->text_length(node->key);
  return length >= 0 ? length : g_utf8_strlen(described(object, &info_t::text).c_str(), -1);
}

// Characters [start, end) of the node's text, clamped to it; end < 0: to its end. A long
// text is read in part, never whole.
std::string text_slice(gpointer object, long start, long end) {
  node_object_t* node = node_of(object);
  if (!node->impl) {
    return {};
  }
  tree_t* tree = node->impl->tree;
  const long length = tree->text_length(node->key);
  const std::string all = length >= 0 ? std::string() : described(object, &info_t::text);
  const long count = length >= 0 ? length : g_utf8_strlen(all.c_str(), -1);
  start = std::clamp<long>(start, 0, count);
  end = end < 0 ? count : std::clamp<long>(end, start, count);
  if (length >= 0) {
    return tree->text_range(node->key, start, end);
  }
  gchar* part = g_utf8_substring(all.c_str(), start, end);
  std::string out(part);
  g_free(part);
  return out;
}

gchar* text_get_text(AtkText* text, gint start, gint end) {
  return g_strdup(text_slice(text, start, end).c_str());
}

gint text_get_character_count(AtkText* text) { return static_cast<gint>(text_count(text)); }

gunichar text_get_character_at_offset(AtkText* text, gint offset) {
  if (offset < 0 || offset >= text_count(text)) {
    return 0;
  }
  return g_utf8_get_char(text_slice(text, offset, offset + 1).c_str());
}

gint text_get_caret_offset(AtkText*) { return -1; }  // read-only text: no caret

// Where a word starts: a non-space after a space or at the start.
bool word_starts(const std::u32string& all, std::size_t at) {
  return at < all.size() && !g_unichar_isspace(all[at]) && (at == 0 || g_unichar_isspace(all[at - 1]));
}

// The span [start, end) of the unit at `at`: a word runs from its start to the next word's
// start, a line to just after its line feed (lines are the text's own, not the drawn wraps).
std::pair<std::size_t, std::size_t> unit_at(const std::u32string& all, std::size_t at,
                                            AtkTextGranularity unit) {
  std::size_t start = at;
  std::size_t end = std::min(at + 1, all.size());
  if (unit == ATK_TEXT_GRANULARITY_WORD) {
    while (start > 0 && !word_starts(all, start)) {
      --start;
    }
    for (end = start + 1; end < all.size() && !word_starts(all, end);) {
      ++end;
    }
  } else if (unit != ATK_TEXT_GRANULARITY_CHAR) {
    while (start > 0 && all[start - 1] != U'\n') {
      --start;
    }
    end = all.find(U'\n', at);
    end = end == std::u32string::npos ? all.size() : end + 1;
  }
  return {start, std::min(end, all.size())};
}

// The unit at `offset`, looked for in a window of the text around it that grows until the
// unit lies inside: a long text (a log's) is read in parts, never whole.
gchar* text_get_string_at_offset(AtkText* text, gint offset, AtkTextGranularity unit, gint* start,
                                 gint* end) {
  *start = *end = 0;
  const long count = text_count(text);
  if (offset < 0 || offset >= count) {
    return g_strdup("");
  }
  for (long reach = 256;; reach *= 2) {
    const long low = std::max(0L, offset - reach);
    const long high = std::min(count, offset + reach);
    const std::string utf8 = text_slice(text, low, high);
    glong length = 0;
    gunichar* chars = g_utf8_to_ucs4_fast(utf8.c_str(), -1, &length);
    const std::u32string part(reinterpret_cast<const char32_t*>(chars), static_cast<std::size_t>(length));
    g_free(chars);
    const auto [from, to] = unit_at(part, static_cast<std::size_t>(offset - low), unit);
    const bool cut = (from == 0 && low > 0) || (to == part.size() && high < count);
    if (!cut || (low == 0 && high == count)) {
      *start = static_cast<gint>(low + static_cast<long>(from));
      *end = static_cast<gint>(low + static_cast<long>(to));
      return g_utf8_substring(utf8.c_str(), static_cast<glong>(from), static_cast<glong>(to));
    }
  }
}

void text_init(gpointer iface, gpointer) {
  auto* text = static_cast<AtkTextIface*>(iface);
  text->get_text = text_get_text;
  text->get_character_count = text_get_character_count;
  text->get_character_at_offset = text_get_character_at_offset;
  text->get_caret_offset = text_get_caret_offset;
  text->get_string_at_offset = text_get_string_at_offset;
}

// --- AtkValue -------------------------------------------------------------------------

void set_double(GValue* out, double value) {
  g_value_init(out, G_TYPE_DOUBLE);
  g_value_set_double(out, value);
}

void value_get_current(AtkValue* value, GValue* out) {
  set_double(out, described(value, &info_t::value).current);
}
void value_get_maximum(AtkValue* value, GValue* out) {
  set_double(out, described(value, &info_t::value).maximum);
}
void value_get_minimum(AtkValue* value, GValue* out) {
  set_double(out, described(value, &info_t::value).minimum);
}

void value_get_value_and_text(AtkValue* value, gdouble* current, gchar** text) {
  *current = described(value, &info_t::value).current;
  if (text) {
    *text = nullptr;
  }
}

AtkRange* value_get_range(AtkValue* value) {
  const value_t range = described(value, &info_t::value);
  return atk_range_new(range.minimum, range.maximum, nullptr);
}

void value_init(gpointer iface, gpointer) {
  auto* value = static_cast<AtkValueIface*>(iface);
  value->get_current_value = value_get_current;
  value->get_maximum_value = value_get_maximum;
  value->get_minimum_value = value_get_minimum;
  value->get_value_and_text = value_get_value_and_text;
  value->get_range = value_get_range;
}

// --- AtkTable -------------------------------------------------------------------------

// The object of the table's cell, made when missing; null when the table lists none.
AtkObject* cell_object(gpointer table, int row, int column) {
  node_object_t* node = node_of(table);
  const key_t cell = node->impl ? node->impl->tree->table_cell(node->key, row, column) : nullptr;
  return cell ? node->impl->object_for(cell) : nullptr;
}

AtkObject* table_ref_at(AtkTable* table, gint row, gint column) {
  AtkObject* cell = row >= 0 ? cell_object(table, row, column) : nullptr;
  return cell ? ATK_OBJECT(g_object_ref(cell)) : nullptr;
}

gint table_get_n_rows(AtkTable* table) { return described(table, &info_t::table).rows; }
gint table_get_n_columns(AtkTable* table) { return described(table, &info_t::table).columns; }

gint table_get_index_at(AtkTable* table, gint row, gint column) {
  return row * std::max(1, described(table, &info_t::table).columns) + column;
}

gint table_get_row_at_index(AtkTable* table, gint index) {
  return index / std::max(1, described(table, &info_t::table).columns);
}
gint table_get_column_at_index(AtkTable* table, gint index) {
  return index % std::max(1, described(table, &info_t::table).columns);
}

AtkObject* table_get_column_header(AtkTable* table, gint column) {
  return cell_object(table, -1, column);  // the table keeps it: no reference for the caller
}

const gchar* table_get_column_description(AtkTable* table, gint column) {
  AtkObject* header = cell_object(table, -1, column);
  return header ? atk_object_get_name(header) : nullptr;
}

void table_init(gpointer iface, gpointer) {
  auto* table = static_cast<AtkTableIface*>(iface);
  table->ref_at = table_ref_at;
  table->get_index_at = table_get_index_at;
  table->get_row_at_index = table_get_row_at_index;
  table->get_column_at_index = table_get_column_at_index;
  table->get_n_rows = table_get_n_rows;
  table->get_n_columns = table_get_n_columns;
  table->get_column_header = table_get_column_header;
  table->get_column_description = table_get_column_description;
}

// --- AtkTableCell ---------------------------------------------------------------------

// The table that holds the cell: its nearest ancestor that is one.
AtkObject* table_of(AtkTableCell* cell) {
  for (AtkObject* up = ATK_OBJECT(cell)->accessible_parent; up; up = up->accessible_parent) {
    if (ATK_IS_TABLE(up)) {
      return up;
    }
  }
  return nullptr;
}

gint cell_get_span(AtkTableCell*) { return 1; }

gboolean cell_get_position(AtkTableCell* cell, gint* row, gint* column) {
  info_t info;
  if (!describe(cell, info)) {
    return FALSE;
  }
  *row = info.table.row;
  *column = info.table.column;
  return TRUE;
}

gboolean cell_get_row_column_span(AtkTableCell* cell, gint* row, gint* column, gint* row_span,
                                  gint* column_span) {
  *row_span = 1;
  *column_span = 1;
  return cell_get_position(cell, row, column);
}

GPtrArray* cell_get_column_header_cells(AtkTableCell* cell) {
  GPtrArray* headers = g_ptr_array_new_with_free_func(g_object_unref);
  info_t info;
  AtkObject* table = table_of(cell);
  AtkObject* header = table && describe(cell, info) && info.table.row >= 0
                          ? cell_object(table, -1, info.table.column)
                          : nullptr;
  if (header) {
    g_ptr_array_add(headers, g_object_ref(header));
  }
  return headers;
}

GPtrArray* cell_get_row_header_cells(AtkTableCell*) { return g_ptr_array_new_with_free_func(g_object_unref); }

AtkObject* cell_get_table(AtkTableCell* cell) {
  AtkObject* table = table_of(cell);
  return table ? ATK_OBJECT(g_object_ref(table)) : nullptr;
}

void cell_init(gpointer iface, gpointer) {
  auto* cell = static_cast<AtkTableCellIface*>(iface);
  cell->get_column_span = cell_get_span;
  cell->get_row_span = cell_get_span;
  cell->get_position = cell_get_position;
  cell->get_row_column_span = cell_get_row_column_span;
  cell->get_column_header_cells = cell_get_column_header_cells;
  cell->get_row_header_cells = cell_get_row_header_cells;
  cell->get_table = cell_get_table;
}

// --- types ----------------------------------------------------------------------------

GType base_type() {
  static const GType type = [] {
    const GTypeInfo info = {sizeof(node_class_t),  nullptr, nullptr, node_class_init, nullptr, nullptr,
                            sizeof(node_object_t), 0,       nullptr, nullptr};
    const GType made = g_type_register_static(ATK_TYPE_OBJECT, "Tamsel3AccessibleNode", &info, GTypeFlags(0));
    const GInterfaceInfo component = {component_init, nullptr, nullptr};
    g_type_add_interface_static(made, ATK_TYPE_COMPONENT, &component);
    return made;
  }();
  return type;
}

GType register_type(unsigned kind) {
  const GTypeInfo info = {sizeof(node_class_t),  nullptr, nullptr, nullptr, nullptr, nullptr,
                          sizeof(node_object_t), 0,       nullptr, nullptr};
  const std::string name = "Tamsel3AccessibleNode" + std::to_string(kind);
  const GType type = g_type_register_static(base_type(), name.c_str(), &info, GTypeFlags(0));
  const GInterfaceInfo action = {action_init, nullptr, nullptr};
  const GInterfaceInfo text = {text_init, nullptr, nullptr};
  const GInterfaceInfo value = {value_init, nullptr, nullptr};
  const GInterfaceInfo table = {table_init, nullptr, nullptr};
  const GInterfaceInfo cell = {cell_init, nullptr, nullptr};
  if (kind & with_action) {
    g_type_add_interface_static(type, ATK_TYPE_ACTION, &action);
  }
  if (kind & with_text) {
    g_type_add_interface_static(type, ATK_TYPE_TEXT, &text);
  }
  if (kind & with_value) {
    g_type_add_interface_static(type, ATK_TYPE_VALUE, &value);
  }
  if (kind & with_table) {
    g_type_add_interface_static(type, ATK_TYPE_TABLE, &table);
  }
  if (kind & with_cell) {
    g_type_add_interface_static(type, ATK_TYPE_TABLE_CELL, &cell);
  }
  return type;
}

GType type_for(unsigned kind) {
  static std::array<GType, 32> types{};
  if (kind == 0) {
    return base_type();
  }
  if (types[kind] == 0) {
    types[kind] = register_type(kind);
  }
  return types[kind];
}

}  // namespace

const gchar* keep_string(node_object_t* node, kept_t slot, const std::string& text) {
  gchar*& kept = node->cache[slot];
  g_free(kept);
  kept = g_strdup(text.c_str());
  return kept;
}

void announce_text(AtkObject* object, const std::string& text) {
  gchar*& told = node_of(object)->cache[kept_text];
  const std::string before = told ? told : "";
  if (before == text) {
    return;
  }
  if (!before.empty()) {
    g_signal_emit_by_name(object, "text-remove", 0, static_cast<gint>(g_utf8_strlen(before.c_str(), -1)),
                          before.c_str());
  }
  keep_string(node_of(object), kept_text, text);
  if (!text.empty()) {
    g_signal_emit_by_name(object, "text-insert", 0, static_cast<gint>(g_utf8_strlen(text.c_str(), -1)),
                          text.c_str());
  }
}

AtkObject* make_node_object(atk_bridge_t::impl_t* impl, key_t key, const info_t& info, AtkObject* parent) {
  const bool table = info.has_table && info.role == role_t::table;
  const unsigned kind = (info.actions.empty() ? 0u : with_action) | (info.has_text ? with_text : 0u) |
                        (info.has_value ? with_value : 0u) | (table ? with_table : 0u) |
                        (info.has_table && !table ? with_cell : 0u);
  auto* object = ATK_OBJECT(g_object_new(type_for(kind), nullptr));
  node_object_t* node = node_of(object);
  node->impl = impl;
  node->key = key;
  std::fill(std::begin(node->cache), std::end(node->cache), nullptr);
  if (info.has_text) {
    keep_string(node, kept_text, info.text);
  }
  atk_object_set_role(object, atk_role(info.role));
  atk_object_set_parent(object, parent);
  return object;
}

}  // namespace a11y
