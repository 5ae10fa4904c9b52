// The window's own accessible object, made by GTK for its widget, turned into one that
// also lists the drawn tree: its class is swapped for a subclass that adds the tree's
// nodes after the native children. The subclass has the same instance layout and adds no
// data of its own, so the object stays what it was for GTK; the bridge rides on qdata.
#include "atk_p.h"
#include "subclass_p.h"

namespace a11y {

namespace {

GQuark bridge_quark() {
  static const GQuark quark = g_quark_from_static_string("tamsel3-accessible-bridge");
  return quark;
}

atk_bridge_t::impl_t* bridge_of(AtkObject* host) {
  return static_cast<atk_bridge_t::impl_t*>(g_object_get_qdata(G_OBJECT(host), bridge_quark()));
}

// The class the host had before: its own children come from there.
AtkObjectClass* native_class(AtkObject* host) {
  return ATK_OBJECT_CLASS(g_type_class_peek_parent(G_OBJECT_GET_CLASS(host)));
}

std::vector<key_t> tree_children(atk_bridge_t::impl_t* impl) {
  if (!impl) {
    return {};
  }
  impl->host_listed = true;
  return impl->listed_children(impl->tree->root());
}

gint host_get_n_children(AtkObject* host) {
  return host_native_children(host) + static_cast<gint>(tree_children(bridge_of(host)).size());
}

AtkObject* host_ref_child(AtkObject* host, gint index) {
  const int native = host_native_children(host);
  if (index < native) {
    return native_class(host)->ref_child(host, index);
  }
  atk_bridge_t::impl_t* impl = bridge_of(host);
  const std::vector<key_t> children = tree_children(impl);
  const auto position = static_cast<std::size_t>(index - native);
  if (position >= children.size()) {
    return nullptr;
  }
  return ATK_OBJECT(g_object_ref(impl->object_for(children[position])));
}

void host_class_init(gpointer klass, gpointer) {
  ATK_OBJECT_CLASS(klass)->get_n_children = host_get_n_children;
  ATK_OBJECT_CLASS(klass)->ref_child = host_ref_child;
}

}  // namespace

int host_native_children(AtkObject* host) {
  AtkObjectClass* native = native_class(host);
  return native->get_n_children ? native->get_n_children(host) : 0;
}

void hook_host(AtkObject* host, atk_bridge_t::impl_t* impl) {
  become_subclass(G_OBJECT(host), "Tamsel3AccessibleHost_", host_class_init, nullptr);
  g_object_set_qdata(G_OBJECT(host), bridge_quark(), impl);
}

}  // namespace a11y
