#pragma once
#include <tamsel3/export.h>
/// The scrolling column of the in-place control, with what its entries share: the indices
/// of the severity pictures, the changed flag and the debug flag.
#include <ombrelcfrw7/event_log.h>
#include <pelit2/severity.h>

#include <string>

namespace ombrelc7 {
class IImageList;
}
namespace plaxi1 {
class image_loader_t;
}

namespace tamsel3 {

/// The log: a toolkit event log whose children are the entries' message boxes. GUI thread.
class TAMSEL3_API event_log_t : public ombrelcfrw7::CEventLog {
 public:
  /// Detached (no parent), minimum size 20 x 20, covering its parent once placed.
  event_log_t();
  ~event_log_t() override;

  /// Loads "error12", "warning12", "info12" and "empty12" from the resource archive into
  /// `list`, in that order, and keeps their indices. Without the archive nothing changes.
  void prepare_image_list(ombrelc7::IImageList* list);
  /// Adds the still picture `name` of `loader` to `list`; its index, or -1 when the
  /// picture is empty.
  int add_image(ombrelc7::IImageList* list, const std::string& name, plaxi1::image_loader_t& loader);

  /// The picture of a line: errors and critical lines the error picture, warnings the
  /// warning picture, everything else (information too) the empty one.
  int get_image_for(pelit2::ESeverity severity) const;

  /// A panel named "Messages", a polite live region; its error lines are assertive ones.
  void DescribeAccessible(a11y::info_t& info) const override;

  /// The index of "error12" in the image list; -1 before it is loaded.
  int m_error_image = -1;
  /// The index of "warning12"; -1 before it is loaded.
  int m_warning_image = -1;
  // Loaded with the others, but information lines show the empty picture.
  /// The index of "info12"; -1 before it is loaded.
  int m_info_image = -1;
  /// The index of "empty12"; -1 before it is loaded.
  int m_empty_image = -1;
  /// Set by every change of the content, cleared by a save and at the end of a load.
  bool m_has_changes = false;
  /// Whether debug lines are shown; entries copy it when they are built.
  bool m_show_debug = false;
};

}  // namespace tamsel3
