#pragma once
// Shows a tree_t to assistive technologies through ATK, as children of a wx window.
#include <a11y/accessible.h>

#include <cstddef>
#include <memory>
#include <string>

class wxWindow;

namespace a11y {

/// The accessible objects of one window's drawn tree. The window's own accessible object
/// lists the tree's root children after its native children; objects are made when a
/// client first asks for them and dropped when the toolkit reports the element gone.
/// With no assistive technology listening, nothing is made until asked. GUI thread.
class atk_bridge_t {
 public:
  /// `tree` must outlive the bridge; the bridge must go before `window`'s widget does.
  atk_bridge_t(wxWindow* window, tree_t* tree);
  ~atk_bridge_t();
  atk_bridge_t(const atk_bridge_t&) = delete;
  atk_bridge_t& operator=(const atk_bridge_t&) = delete;

  /// `child` was appended to `parent`. Announced (children-changed::add) at idle time, when
  /// the child is whole, and only to a client that knows the parent.
  void child_added(key_t parent, key_t child);
  /// `node` and its subtree leave the tree; must be called before they die.
  void node_gone(key_t node);
  /// The name (and the text) of `node` changed.
  void name_changed(key_t node);
  void state_changed(key_t node, state_t state, bool on);
  void value_changed(key_t node);
  /// `node` took the keyboard focus.
  void focus_changed(key_t node);
  /// Whether a client was shown `node`: its object exists. A toolkit that lists nodes of its
  /// own making (lines in view) keeps them only while this holds for their parent.
  bool has_object(key_t node) const;
  /// Number of accessible objects alive (for tests).
  std::size_t object_count() const;

  struct impl_t;

 private:
  std::unique_ptr<impl_t> m_impl;
};

}  // namespace a11y
