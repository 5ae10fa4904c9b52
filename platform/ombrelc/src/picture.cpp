#include <ombrelc7/picture.h>

#include <plaxi1/animation_frames.h>
#include <plaxi1/picture.h>

#include <wx/animate.h>
#include <wx/dc.h>
#include <wx/image.h>

#include <algorithm>
#include <vector>

namespace ombrelc7 {

namespace {

size<int> logical_size(const wxBitmap& bitmap) {
  const wxSize logical = bitmap.GetLogicalSize();
  return size<int>(logical.x, logical.y);
}

class raster_picture_t : public ref_counted<IRasterPicture> {
 public:
  explicit raster_picture_t(const wxBitmap& bitmap) : m_bitmap(bitmap) {}
  wxBitmap GetBitmap() const override { return m_bitmap; }
  void SetBitmap(const wxBitmap& bitmap) override { m_bitmap = bitmap; }
  size<int> GetSize() const override { return m_bitmap.IsOk() ? logical_size(m_bitmap) : size<int>(); }

 private:
  wxBitmap m_bitmap;
};

class image_list_t : public ref_counted<IImageList> {
 public:
  int Add(IRasterPicture* picture, const wxColour& mask) override {
    if (!picture) {
      return -1;
    }
    wxBitmap bitmap = picture->GetBitmap();
    if (!bitmap.IsOk()) {
      return -1;
    }
    if (mask.IsOk()) {
      // A copy: the mask must not change the picture, which others may show.
      wxImage image = bitmap.ConvertToImage();
      image.SetMaskColour(mask.Red(), mask.Green(), mask.Blue());
      bitmap = wxBitmap(image, wxBITMAP_SCREEN_DEPTH, bitmap.GetScaleFactor());
    }
    m_bitmaps.push_back(bitmap);
    return static_cast<int>(m_bitmaps.size()) - 1;
  }
  int GetCount() const override { return static_cast<int>(m_bitmaps.size()); }
  size<int> GetImageSize() const override {
    return m_bitmaps.empty() ? size<int>() : logical_size(m_bitmaps[0]);
  }
  void Draw(wxDC& dc, int index, int x, int y) const override {
    if (index >= 0 && index < GetCount()) {
      dc.DrawBitmap(m_bitmaps[static_cast<std::size_t>(index)], x, y, true);
    }
  }

 private:
  std::vector<wxBitmap> m_bitmaps;
};

class animation_t : public ref_counted<IAnimation> {
 public:
  animation_t(const wxAnimation& animation, const wxAnimation& animation_2x)
      : m_frames(animation, animation_2x) {}
  int GetFrameCount() const override { return static_cast<int>(m_frames.size()); }
  wxBitmap GetFrame(int index) const override {
    return index >= 0 ? m_frames.frame(static_cast<std::size_t>(index)) : wxBitmap();
  }
  int GetDelay(int index) const override {
    return index >= 0 ? m_frames.delay(static_cast<std::size_t>(index)) : 0;
  }
  size<int> GetSize() const override {
    const wxSize logical = m_frames.logical_size();
    return size<int>(logical.x, logical.y);
  }

 private:
  plaxi1::animation_frames_t m_frames;
};

class system_t : public ISystem {
 public:
  ombrelc_ptr<IRasterPicture> CreateRasterPicture(const size<int>& size) override {
    wxBitmap bitmap;
    if (size.cx > 0 && size.cy > 0) {
      wxImage image(size.cx, size.cy);
      image.InitAlpha();
      std::fill_n(image.GetAlpha(), size.cx * size.cy, static_cast<unsigned char>(0));
      bitmap = wxBitmap(image);
    }
    return ombrelc_ptr<IRasterPicture>(new raster_picture_t(bitmap));
  }
  ombrelc_ptr<IImageList> CreateImageList() override { return ombrelc_ptr<IImageList>(new image_list_t); }
};

}  // namespace

ISystem* GetCurrentSystem() {
  static system_t system;
  return &system;
}

bool Bitmap2RasterPicture(const wxBitmap& bitmap, IRasterPicture* picture) {
  if (!picture || !bitmap.IsOk()) {
    return false;
  }
  picture->SetBitmap(bitmap);
  return true;
}

ombrelc_ptr<IAnimation> CreateAnimation(const wxAnimation& animation) {
  return CreateAnimation(animation, wxAnimation());
}

ombrelc_ptr<IAnimation> CreateAnimation(const wxAnimation& animation, const wxAnimation& animation_2x) {
  return ombrelc_ptr<IAnimation>(new animation_t(animation, animation_2x));
}

}  // namespace ombrelc7
