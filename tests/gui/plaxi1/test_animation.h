#pragma once
// Animations for tests, made in memory.
#include <gtest/gtest.h>
#include <wx/anidecod.h>
#include <wx/animate.h>
#include <wx/generic/animate.h>
#include <wx/image.h>
#include <wx/imaggif.h>
#include <wx/mstream.h>
#include <wx/quantize.h>

#include <vector>

namespace plaxi1_test {

/// A GIF animation of solid frames of `size`, each shown for `delay_ms`. Generic, not
/// GTK's own kind, which doesn't give its frames.
inline wxAnimation solid_animation(const std::vector<wxColour>& colours, const wxSize& size, int delay_ms) {
  wxImageArray frames;
  for (std::size_t i = 0; i < colours.size(); ++i) {
    wxImage image(size);
    image.SetRGB(wxRect(size), colours[i].Red(), colours[i].Green(), colours[i].Blue());
    wxImage paletted;
    EXPECT_TRUE(wxQuantize::Quantize(image, paletted, 4));
    frames.Add(paletted);
  }
  wxMemoryOutputStream out;
  wxGIFHandler handler;
  EXPECT_TRUE(handler.SaveAnimation(frames, &out, false, delay_ms));
  wxMemoryInputStream in(out);
  wxAnimation animation = wxGenericAnimationCtrl::CreateCompatibleAnimation();
  EXPECT_TRUE(animation.Load(in, wxANIMATION_TYPE_GIF));
  return animation;
}

}  // namespace plaxi1_test
