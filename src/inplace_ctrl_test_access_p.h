#pragma once
// What the tests look at inside an inplace_ctrl_t; hosts go through its public members.
#include "inplace_ctrl_p.h"

#include <wx/menu.h>

namespace tamsel3 {

struct inplace_ctrl_test_access_t {
  static inplace_ctrl_impl_t* impl(const inplace_ctrl_t& ctrl) { return ctrl.m_impl; }
  /// The context menu, with its one copy entry.
  static wxMenu& menu(inplace_ctrl_t& ctrl) { return ctrl.m_menu; }
};

}  // namespace tamsel3
