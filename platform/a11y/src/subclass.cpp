#include "subclass_p.h"

#include <string>

namespace a11y {

namespace {

GType subclass_for(GType native, const char* prefix, GClassInitFunc class_init, void (*made)(GType)) {
  const std::string name = prefix + std::string(g_type_name(native));
  if (const GType known = g_type_from_name(name.c_str())) {
    return known;
  }
  GTypeQuery query;
  g_type_query(native, &query);
  const GTypeInfo info = {
      static_cast<guint16>(query.class_size),    nullptr, nullptr, class_init, nullptr, nullptr,
      static_cast<guint16>(query.instance_size), 0,       nullptr, nullptr};
  const GType type = g_type_register_static(native, name.c_str(), &info, GTypeFlags(0));
  if (made) {
    made(type);
  }
  return type;
}

}  // namespace

void become_subclass(GObject* object, const char* prefix, GClassInitFunc class_init,
                     void (*made)(GType type)) {
  const GType type = G_OBJECT_TYPE(object);
  if (std::string(g_type_name(type)).rfind(prefix, 0) == 0) {
    return;
  }
  // The class stays referenced for the life of the program, as static types' classes do.
  auto* klass = static_cast<GTypeClass*>(g_type_class_ref(subclass_for(type, prefix, class_init, made)));
  reinterpret_cast<GTypeInstance*>(object)->g_class = klass;
}

}  // namespace a11y
