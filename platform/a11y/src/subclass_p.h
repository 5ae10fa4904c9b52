#pragma once
// Accessible objects made by GTK, given a subclass of their own type that adds what the
// library needs.
#include <glib-object.h>

namespace a11y {

/// Makes the object's class a subclass of its type named `prefix` + the type's name, with
/// the type's layout and no data of its own, so that the object stays what it was for GTK.
/// The subclass is registered once, with `class_init` and then `made` (to add interfaces;
/// may be null); an object whose type is such a subclass already is left as it is.
void become_subclass(GObject* object, const char* prefix, GClassInitFunc class_init,
                     void (*made)(GType type));

}  // namespace a11y
