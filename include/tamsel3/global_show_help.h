#pragma once
#include <korvat2/intrusive_pointer.h>
#include <tamsel3/export.h>

#include <string>

namespace tamsel3 {

/// The process-wide slot of a help provider. A host derives, implements the two operations
/// and installs an instance with `initialize`; anyone may then reach it through `get`.
/// Safe from any thread.
class TAMSEL3_API global_show_help_flavor : public korvat2::intrusive_pointer_impl_t {
 public:
  global_show_help_flavor() = default;
  /// Empties the slot, whichever instance it holds.
  ~global_show_help_flavor() override;

  /// Shows the help page of a topic.
  virtual void show_topic(const std::string& topic) = 0;
  /// Shows the help's contents.
  virtual void show_contents() = 0;

  /// Stores `provider` in the slot without taking a reference; an earlier one is forgotten.
  static void initialize(global_show_help_flavor* provider);
  /// The provider in the slot, or a null pointer. A provider whose count is zero (its last
  /// owner is letting it go, maybe on another thread) is never handed out: null then.
  static korvat2::intrusive_pointer_t<global_show_help_flavor> get();
};

}  // namespace tamsel3
