#pragma once
// The GObject side of the bridge: accessible objects of nodes and the window's own object.
#include <a11y/atk_bridge.h>

#include <atk/atk.h>

#include <array>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

class wxWindow;
typedef struct _GtkWidget GtkWidget;

namespace a11y {

/// Our states and the ATK states they stand for.
inline constexpr std::array<std::pair<state_t, AtkStateType>, 9> atk_states = {{
    {state_visible, ATK_STATE_VISIBLE},
    {state_showing, ATK_STATE_SHOWING},
    {state_enabled, ATK_STATE_ENABLED},
    {state_focusable, ATK_STATE_FOCUSABLE},
    {state_focused, ATK_STATE_FOCUSED},
    {state_checked, ATK_STATE_CHECKED},
    {state_pressed, ATK_STATE_PRESSED},
    {state_expandable, ATK_STATE_EXPANDABLE},
    {state_expanded, ATK_STATE_EXPANDED},
}};

/// An accessible object of one node. `impl` is null once the node is gone (defunct).
struct node_object_t {
  AtkObject parent;
  atk_bridge_t::impl_t* impl;
  key_t key;
  gchar* cache[4];  // the last string of each kept_t, owned here
};

/// The strings an object keeps: those handed out, until the next one of the same kind, and
/// the text a client was last told about.
enum kept_t { kept_name, kept_description, kept_action, kept_text };

/// Makes the object of `key` with the interfaces `info` needs, under `parent`.
AtkObject* make_node_object(atk_bridge_t::impl_t* impl, key_t key, const info_t& info, AtkObject* parent);
/// Keeps `text` in the object until its next string of that kind, and returns it.
const gchar* keep_string(node_object_t* node, kept_t slot, const std::string& text);
/// Tells a client that the text of `object` (a node with text) is now `text`: the old text
/// removed and the new one inserted, when they differ.
void announce_text(AtkObject* object, const std::string& text);
/// The number of the host's own (native) children.
int host_native_children(AtkObject* host);

/// Turns `host` (the window's accessible object) into one that lists the tree's nodes after
/// its own children, while `impl` is set on it (null: back to its own children only).
void hook_host(AtkObject* host, atk_bridge_t::impl_t* impl);

struct atk_bridge_t::impl_t {
  wxWindow* window = nullptr;
  GtkWidget* widget = nullptr;
  tree_t* tree = nullptr;
  AtkObject* host = nullptr;
  std::unordered_map<key_t, AtkObject*> objects;  // a reference each
  std::vector<std::pair<key_t, key_t>> added;     // parent and child, announced at idle time
  guint flush_source = 0;
  bool host_listed = false;  // a client asked for the tree's top nodes

  /// Whether `key` only lays its children out: an unnamed panel, not live. Such nodes are
  /// left out of the accessible tree, their children listed in their place.
  bool layout_only(key_t key) const;
  /// The children of `key` as clients see them: layout-only ones replaced by theirs.
  /// `known` is listed whatever it says now (a client has its object; while it dies, it
  /// describes itself as a bare element).
  std::vector<key_t> listed_children(key_t key, key_t known = nullptr) const;
  /// The nearest ancestor of `key` that is listed (or the root).
  key_t listed_parent(key_t key) const;
  /// The object of `key`, made (with its ancestors) when missing; the host for the root.
  AtkObject* object_for(key_t key);
  /// The object of `key` when one was made, else null.
  AtkObject* existing(key_t key) const;
  /// How many children the host has before the tree's.
  int native_children() const;
  /// The node's rectangle in `coords` (ATK_XY_SCREEN, _WINDOW or _PARENT).
  rect_t extents_in(key_t key, AtkCoordType coords) const;
  /// Makes `key`'s object and its descendants' defunct and forgets them.
  void drop(key_t key);
  /// Announces the children added since the last time.
  void flush_added();
};

}  // namespace a11y
