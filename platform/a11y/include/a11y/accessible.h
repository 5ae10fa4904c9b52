#pragma once
// What an assistive technology is told about a drawn element, and how it walks a tree of them.
#include <cstdint>
#include <string>
#include <vector>

namespace a11y {

/// The roles that drawn elements take.
enum class role_t : std::uint8_t {
  panel,
  label,
  push_button,
  progress_bar,
  check_box,
  table,
  table_row,
  table_cell,
  column_header,
  image
};

/// States of a node, or-ed.
enum state_t : std::uint32_t {
  state_visible = 1,
  state_showing = 2,
  state_enabled = 4,
  state_focusable = 8,
  state_focused = 16,
  state_checked = 32,
  state_pressed = 64,
  state_expandable = 128,  ///< opens and closes something (a disclosure button)
  state_expanded = 256,
};

/// How urgently a change of a live region is spoken.
enum class politeness_t : std::uint8_t { off, polite, assertive };

/// A rectangle in the client coordinates of the hosting window.
struct rect_t {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// A range and a current value (gauges: percentages).
struct value_t {
  double minimum = 0.0;
  double maximum = 100.0;
  double current = 0.0;
};

/// A table's size, or a cell's place in its table (header cells: row -1).
struct table_info_t {
  int rows = 0;  ///< a table's rows, its header row not counted
  int columns = 0;
  int row = -1;  ///< a cell's row
  int column = -1;
};

/// What one element says about itself; each element type fills in its part. The kind of
/// a node (whether it has actions, text, a value or a table part) must not change over its
/// life.
struct info_t {
  role_t role = role_t::panel;
  std::string name;
  std::string description;
  std::uint32_t states = state_visible;
  /// Names of the actions ("click", "toggle"), in the order do_action counts them.
  std::vector<std::string> actions;
  bool has_text = false;
  std::string text;  ///< UTF-8, when has_text
  bool has_value = false;
  value_t value;  ///< when has_value
  /// A table (role table: AtkTable) or one of its cells (AtkTableCell).
  bool has_table = false;
  table_info_t table;  ///< when has_table
  /// A live region: changes inside are spoken with this urgency.
  politeness_t live = politeness_t::off;
};

/// A handle of one node: the toolkit's own element pointer. Stable while the node lives.
using key_t = const void*;

/// A toolkit's tree as the bridge walks it. Every call comes on the GUI thread, and every
/// key given to it is alive (the toolkit reports deaths before they happen).
class tree_t {
 public:
  virtual ~tree_t() = default;
  /// The node that covers the hosting window; its children are the window's children.
  virtual key_t root() const = 0;
  /// The node's parent; null for the root.
  virtual key_t parent(key_t node) const = 0;
  virtual std::vector<key_t> children(key_t node) const = 0;
  virtual void describe(key_t node, info_t& info) const = 0;
  /// The node's rectangle in the window's client coordinates.
  virtual rect_t extents(key_t node) const = 0;
  /// Runs action `index`; called from the loop's idle time, never inside a client's call.
  virtual bool do_action(key_t node, int index) = 0;
  /// Gives the node the keyboard focus; false when it can't take it.
  virtual bool grab_focus(key_t node) { return false; }
  /// The cell of a table node at `row` and `column` (row -1: the column's header); null
  /// when the table lists no such cell (a row out of view).
  virtual key_t table_cell(key_t table, int row, int column) const { return nullptr; }
  /// For a node whose text is too long to copy whole into info_t::text on every call (a log
  /// of a million lines): its length in characters. -1 (the default): info_t::text holds it.
  virtual long text_length(key_t node) const { return -1; }
  /// Characters [start, end) of such a text, as UTF-8; 0 <= start <= end <= text_length.
  virtual std::string text_range(key_t node, long start, long end) const { return {}; }
};

}  // namespace a11y
