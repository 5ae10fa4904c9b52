#include <ombrelc7/picture.h>

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
  animation_t(const wxAnimation& animation, const wxAnimation& animation_2x) {
    if (!animation.IsOk()) {
      return;
    }
    const wxSize normal = animation.GetSize();
    m_size = size<int>(normal.x, normal.y);
    if (animation_2x.IsOk() && plaxi1::display_scale() > 1.0) {
      add_frames(animation_2x, 2.0);
    } else {
      add_frames(animation, 1.0);
    }
    if (m_size.cx <= 0 && !m_frames.empty()) {
      m_size = logical_size(m_frames[0]);
    }
  }
  int GetFrameCount() const override { return static_cast<int>(m_frames.size()); }
  wxBitmap GetFrame(int index) const override {
    return index >= 0 && index < GetFrameCount() ? m_frames[static_cast<std::size_t>(index)] : wxBitmap();
  }
  int GetDelay(int index) const override {
    return index >= 0 && index < GetFrameCount() ? m_delays[static_cast<std::size_t>(index)] : 0;
  }
  size<int> GetSize() const override { return m_size; }

 private:
  // Frames of `scale` device pixels a logical one.
  void add_frames(const wxAnimation& animation, double scale) {
    const wxSize full = animation.GetSize();
    // Frames may cover a part of the picture: each is drawn over the one before.
    wxImage canvas;
    for (unsigned int i = 0; i < animation.GetFrameCount(); ++i) {
      wxImage frame = animation.GetFrame(i);
      if (!frame.IsOk()) {
        continue;
      }
      if (!canvas.IsOk() || frame.GetSize() == full || full.x <= 0) {
        canvas = frame;
      } else {
        canvas.Paste(frame, 0, 0, wxIMAGE_ALPHA_BLEND_COMPOSE);
      }
      if (!canvas.HasAlpha()) {
        canvas.InitAlpha();
      }
      m_frames.emplace_back(canvas, wxBITMAP_SCREEN_DEPTH, scale);
      m_delays.push_back(std::max(10, animation.GetDelay(i)));
    }
  }

  std::vector<wxBitmap> m_frames;
  std::vector<int> m_delays;
  size<int> m_size;
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
