#pragma once
#include <plaxi1/picture.h>

#include <string>

namespace plaxi1 {

/// Loads pictures and animations by name from a picture index: an XRC file, usually inside
/// a resource archive ("<dir>/tamsel3.dat#zip:tamsel_images.xrc"), whose wxBitmap objects
/// name image files (with an optional "@2x" form beside each) and whose wxAnimation
/// objects name animation files. Loaded pictures are kept for the process. GUI thread.
class image_loader_t {
 public:
  explicit image_loader_t(const std::string& location);

  /// The index's location; empty when the loader has none.
  const std::string& get_location() const { return m_location; }
  /// The still picture of that name; empty when the index or the name is missing.
  wxStaticPicture load_static_picture(const std::string& name) const;
  /// The animation of that name; not ok when the index or the name is missing.
  wxAnimation load_animation(const std::string& name) const;
  /// The animation of that name with its "@2x" form when one lies beside it; empty when
  /// the index or the name is missing.
  picture_t load_animated_picture(const std::string& name) const;

 private:
  std::string m_location;
};

}  // namespace plaxi1
