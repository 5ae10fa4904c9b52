#pragma once
// Pictures, image lists and animations of the visual elements, and the factory of the
// system that makes them. GUI thread.
#include <ombrelc7/geometry.h>
#include <ombrelc7/object.h>

#include <wx/bitmap.h>
#include <wx/colour.h>

class wxAnimation;

class wxDC;

namespace ombrelc7 {

/// A bitmap with a reference count. Sizes are logical: a bitmap with a scale factor of 2
/// has twice as many pixels and is drawn at the same size, sharper.
class IRasterPicture : public IObject {
 public:
  virtual wxBitmap GetBitmap() const = 0;
  virtual void SetBitmap(const wxBitmap& bitmap) = 0;
  virtual size<int> GetSize() const = 0;
};

/// An ordered list of pictures of one size, drawn by index.
class IImageList : public IObject {
 public:
  /// Adds a copy of `picture`'s bitmap; pixels of colour `mask` (when valid) become
  /// transparent. Returns the new index, or -1 when the picture is null or empty.
  virtual int Add(IRasterPicture* picture, const wxColour& mask = wxColour()) = 0;
  virtual int GetCount() const = 0;
  /// The size of the first picture added (0, 0 while empty).
  virtual size<int> GetImageSize() const = 0;
  /// Draws picture `index` with its top-left corner at (x, y); a bad index draws nothing.
  virtual void Draw(wxDC& dc, int index, int x, int y) const = 0;
};

/// The frames of an animation, composed to full-size bitmaps. Its size is logical.
class IAnimation : public IObject {
 public:
  virtual int GetFrameCount() const = 0;
  /// Frame `index`, or a bad bitmap for an index out of range.
  virtual wxBitmap GetFrame(int index) const = 0;
  /// How long frame `index` stays, in milliseconds (at least 10).
  virtual int GetDelay(int index) const = 0;
  virtual size<int> GetSize() const = 0;
};

/// Makes the pictures of the process.
class ISystem {
 public:
  /// A transparent picture of `size`.
  virtual ombrelc_ptr<IRasterPicture> CreateRasterPicture(const size<int>& size) = 0;
  virtual ombrelc_ptr<IImageList> CreateImageList() = 0;

 protected:
  ~ISystem() = default;
};

/// The process-wide system object; never null.
ISystem* GetCurrentSystem();

/// Puts a copy of `bitmap` into `picture`. False (and the picture unchanged) when the
/// bitmap is bad or the picture null.
bool Bitmap2RasterPicture(const wxBitmap& bitmap, IRasterPicture* picture);

/// The frames of `animation`; an animation without frames gives an object with none.
ombrelc_ptr<IAnimation> CreateAnimation(const wxAnimation& animation);
/// The same, but when the display is scaled and `animation_2x`, the form at twice the size,
/// is ok, the frames are that form's, as bitmaps of scale factor 2 of the same logical size.
ombrelc_ptr<IAnimation> CreateAnimation(const wxAnimation& animation, const wxAnimation& animation_2x);

}  // namespace ombrelc7
