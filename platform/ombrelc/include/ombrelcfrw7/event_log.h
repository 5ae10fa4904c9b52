#pragma once
// The vertical box of a log of messages.
#include <ombrelcfrw7/boxes.h>

#include <korvat2/signal.h>

namespace ombrelcfrw7 {

/// A vertical box of log entries (captions, message cards) with a context menu signal.
class CEventLog : public CVertBox {
 public:
  CEventLog(CVisualElement* parent, const ombrelc7::size<int>& size, ombrelc7::Alignment alignment);
  /// The width the log asks for as its best width; with `rearrange`, lays out now.
  void SetInitialWidth(int width, bool rearrange);
  int GetInitialWidth() const { return m_initial_width; }
  /// Emitted on a right click or the context-menu key with the element hit (the log
  /// itself when none) and the point in window coordinates.
  korvat2::signal_t<CVisualElement*, int, int>& ContextMenuSignal() { return m_context_menu; }

 protected:
  int MeasureWidth() const override;
  bool OnMouse(const element_mouse_t& event) override;
  bool OnKey(const element_key_t& key) override;

 private:
  int m_initial_width = 0;
  korvat2::signal_t<CVisualElement*, int, int> m_context_menu;
};

}  // namespace ombrelcfrw7
