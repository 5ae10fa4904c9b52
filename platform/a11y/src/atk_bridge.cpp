#include <a11y/atk_bridge.h>

#include "atk_p.h"

#include <gtk/gtk.h>
#include <wx/window.h>

#include <algorithm>
#include <array>

namespace a11y {

namespace {

AtkStateType atk_state(state_t state) {
  for (const auto& [ours, theirs] : atk_states) {
    if (ours == state) {
      return theirs;
    }
  }
  return ATK_STATE_INVALID;
}

bool within(AtkObject* object, AtkObject* ancestor) {
  for (; object; object = object->accessible_parent) {
    if (object == ancestor) {
      return true;
    }
  }
  return false;
}

gboolean flush_added_at_idle(gpointer data) {
  auto* impl = static_cast<atk_bridge_t::impl_t*>(data);
  impl->flush_source = 0;
  impl->flush_added();
  return G_SOURCE_REMOVE;
}

}  // namespace

AtkObject* atk_bridge_t::impl_t::existing(key_t key) const {
  if (key == tree->root()) {
    return host;
  }
  const auto found = objects.find(key);
  return found == objects.end() ? nullptr : found->second;
}

bool atk_bridge_t::impl_t::layout_only(key_t key) const {
  if (key == tree->root()) {
    return false;
  }
  info_t info;
  tree->describe(key, info);
  return info.role == role_t::panel && info.name.empty() && info.live == politeness_t::off &&
         !info.has_text && !info.has_value && info.actions.empty();
}

std::vector<key_t> atk_bridge_t::impl_t::listed_children(key_t key, key_t known) const {
  std::vector<key_t> listed;
  for (key_t child : tree->children(key)) {
    if (child != known && layout_only(child)) {
      const std::vector<key_t> inner = listed_children(child, known);
      listed.insert(listed.end(), inner.begin(), inner.end());
    } else {
      listed.push_back(child);
    }
  }
  return listed;
}

key_t atk_bridge_t::impl_t::listed_parent(key_t key) const {
  key_t parent = tree->parent(key);
  while (parent && layout_only(parent)) {
    parent = tree->parent(parent);
  }
  return parent;
}

AtkObject* atk_bridge_t::impl_t::object_for(key_t key) {
  if (AtkObject* known = existing(key)) {
    return known;
  }
  AtkObject* parent = object_for(listed_parent(key));
  info_t info;
  tree->describe(key, info);
  AtkObject* object = make_node_object(this, key, info, parent);
  objects.emplace(key, object);
  return object;
}

int atk_bridge_t::impl_t::native_children() const { return host_native_children(host); }

rect_t atk_bridge_t::impl_t::extents_in(key_t key, AtkCoordType coords) const {
  rect_t area = tree->extents(key);
  const wxPoint screen = window->ClientToScreen(wxPoint(area.x, area.y));
  area.x = screen.x;
  area.y = screen.y;
  if (coords == ATK_XY_WINDOW) {
    GdkWindow* own = gtk_widget_get_window(widget);
    int left = 0;
    int top = 0;
    if (own) {
      gdk_window_get_origin(gdk_window_get_toplevel(own), &left, &top);
    }
    area.x -= left;
    area.y -= top;
  } else if (coords == ATK_XY_PARENT && listed_parent(key) != tree->root()) {
    const rect_t parent = extents_in(listed_parent(key), ATK_XY_SCREEN);
    area.x -= parent.x;
    area.y -= parent.y;
  } else if (coords == ATK_XY_PARENT) {
    const wxPoint origin = window->ClientToScreen(wxPoint(0, 0));
    area.x -= origin.x;
    area.y -= origin.y;
  }
  return area;
}

void atk_bridge_t::impl_t::drop(key_t key) {
  AtkObject* top = existing(key);
  if (!top || top == host) {
    return;
  }
  std::vector<key_t> gone;
  for (const auto& [node, object] : objects) {
    if (within(object, top)) {
      gone.push_back(node);
    }
  }
  for (key_t node : gone) {
    AtkObject* object = objects[node];
    objects.erase(node);
    reinterpret_cast<node_object_t*>(object)->impl = nullptr;
    atk_object_notify_state_change(object, ATK_STATE_DEFUNCT, TRUE);
    g_object_unref(object);
  }
}

void atk_bridge_t::impl_t::flush_added() {
  const std::vector<std::pair<key_t, key_t>> pending = std::move(added);
  added.clear();
  for (auto [parent, child] : pending) {
    while (parent && layout_only(parent)) {
      parent = tree->parent(parent);
    }
    const bool known = parent == tree->root() ? host_listed : existing(parent) != nullptr;
    if (!parent || !known) {
      continue;  // no client knows the parent: it finds the child when it lists the parent
    }
    // A layout-only child is not listed: its own children are, in its place.
    const std::vector<key_t> shown = layout_only(child) ? listed_children(child) : std::vector<key_t>{child};
    for (key_t node : shown) {
      if (!existing(node)) {
        AtkObject* object = object_for(node);
        g_signal_emit_by_name(existing(parent), "children-changed::add",
                              atk_object_get_index_in_parent(object), object);
      }
    }
  }
}

// ---------------------------------------------------------------------------------------

atk_bridge_t::atk_bridge_t(wxWindow* window, tree_t* tree) : m_impl(std::make_unique<impl_t>()) {
  m_impl->window = window;
  m_impl->widget = window->m_wxwindow ? window->m_wxwindow : window->GetHandle();
  m_impl->tree = tree;
  m_impl->host = ATK_OBJECT(g_object_ref(gtk_widget_get_accessible(m_impl->widget)));
  hook_host(m_impl->host, m_impl.get());
}

atk_bridge_t::~atk_bridge_t() {
  if (m_impl->flush_source) {
    g_source_remove(m_impl->flush_source);
  }
  for (key_t child : m_impl->listed_children(m_impl->tree->root())) {
    node_gone(child);
  }
  hook_host(m_impl->host, nullptr);
  g_object_unref(m_impl->host);
}

void atk_bridge_t::child_added(key_t parent, key_t child) {
  if (!m_impl->host_listed && m_impl->objects.empty()) {
    return;  // no client listed anything: it finds the child when it lists the window
  }
  // Whether a client knows the parent is asked at idle time: a parent still being made
  // (one that adds children in its constructor) can't describe itself yet.
  m_impl->added.emplace_back(parent, child);
  if (!m_impl->flush_source) {
    m_impl->flush_source = g_idle_add(flush_added_at_idle, m_impl.get());
  }
}

void atk_bridge_t::node_gone(key_t node) {
  // Children waiting to be announced die with the node: forget those inside it, while
  // they are still alive to be asked for their parents.
  auto& added = m_impl->added;
  tree_t* tree = m_impl->tree;
  const auto inside = [tree, node](const std::pair<key_t, key_t>& pair) {
    for (key_t key = pair.second; key; key = tree->parent(key)) {
      if (key == node) {
        return true;
      }
    }
    return false;
  };
  added.erase(std::remove_if(added.begin(), added.end(), inside), added.end());
  AtkObject* object = m_impl->existing(node);
  if (!object && m_impl->layout_only(node)) {
    for (key_t child : m_impl->listed_children(node)) {
      node_gone(child);  // listed in the node's place, they go with it
    }
    return;
  }
  if (!object || object == m_impl->host) {
    return;
  }
  const gint index = atk_object_get_index_in_parent(object);
  AtkObject* parent = object->accessible_parent;
  if (parent && index >= 0) {
    g_signal_emit_by_name(parent, "children-changed::remove", index, object);
  }
  m_impl->drop(node);
}

void atk_bridge_t::name_changed(key_t node) {
  AtkObject* object = m_impl->existing(node);
  if (!object) {
    return;
  }
  if (object != m_impl->host && ATK_IS_TEXT(object)) {
    info_t info;
    m_impl->tree->describe(node, info);
    announce_text(object, info.text);
  }
  g_object_notify(G_OBJECT(object), "accessible-name");
}

void atk_bridge_t::state_changed(key_t node, state_t state, bool on) {
  if (AtkObject* object = m_impl->existing(node)) {
    atk_object_notify_state_change(object, atk_state(state), on ? TRUE : FALSE);
  }
}

void atk_bridge_t::value_changed(key_t node) {
  if (AtkObject* object = m_impl->existing(node)) {
    g_object_notify(G_OBJECT(object), "accessible-value");
  }
}

void atk_bridge_t::focus_changed(key_t node) { state_changed(node, state_focused, true); }

bool atk_bridge_t::has_object(key_t node) const { return m_impl->existing(node) != nullptr; }

std::size_t atk_bridge_t::object_count() const { return m_impl->objects.size(); }

}  // namespace a11y
