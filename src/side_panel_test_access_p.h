#pragma once
// What the tests look at inside a side_panel_t; hosts go through its public members.
#include <tamsel3/side_panel.h>

namespace tamsel3 {

struct side_panel_test_access_t {
  /// The common size of a style; (-1, -1) for style 2.
  static const wxSize& size(const side_panel_t& panel, side_panel_t::button_style_t style) {
    return panel.m_sizes[style];
  }
  static const std::vector<side_panel_t::button_ptr_t>& buttons(const side_panel_t& panel,
                                                                side_panel_t::button_style_t style) {
    return panel.m_buttons[style];
  }
  static plaxi1::elements::ElementAdapter& adapter(const side_panel_t& panel) { return *panel.m_adapter; }
  static korvat2::intrusive_pointer_t<plaxi1::elements::BgImageElement> root(const side_panel_t& panel) {
    return panel.m_bg;
  }
};

}  // namespace tamsel3
