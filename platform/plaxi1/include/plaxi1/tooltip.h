#pragma once
#include <string>

class wxDC;
class wxWindow;

namespace plaxi1 {

/// A tooltip of the toolkit's own, attached to one window: after the mouse rested on the
/// window for the show delay, a themed popup with the text appears, and it goes when the
/// mouse leaves, on a click or key, or after the hide delay. Made by SetTooltip and owned
/// by its window.
class wxCustomTooltip {
 public:
  void SetText(const std::string& text);
  const std::string& GetText() const;
  /// How long the popup stays, in milliseconds; 0 or less keeps it until the mouse leaves.
  void SetHideDelay(int milliseconds);
  int GetHideDelay() const;
  void SetShowDelay(int milliseconds);
  int GetShowDelay() const;
  /// Shows the popup now: below the pointer where the window's own mouse events last saw
  /// it over the window, else under the window's bottom-left corner; on the display.
  void ShowNow();
  /// Hides the popup.
  void Hide();
  bool IsPopupShown() const;
  /// The popup window while it is shown, else null.
  wxWindow* GetPopup() const;

  ~wxCustomTooltip();
  wxCustomTooltip(const wxCustomTooltip&) = delete;
  wxCustomTooltip& operator=(const wxCustomTooltip&) = delete;

 private:
  friend wxCustomTooltip* SetTooltip(wxWindow*, const std::string&, int, bool);
  explicit wxCustomTooltip(wxWindow* owner);
  struct impl_t;
  impl_t* m_impl;
};

/// Gives `window` (or its child of id `id`, -1 for the window itself) a tooltip of the
/// toolkit's own: a themed popup that appears when the mouse rests on the window and wraps
/// long texts. With `enable` false, or an empty text, the tooltip is removed. Returns the
/// tooltip, null when none was made. The tooltip belongs to the window. GUI thread.
wxCustomTooltip* SetTooltip(wxWindow* window, const std::string& text, int id, bool enable);

/// The tooltip that `window` has, or null.
wxCustomTooltip* GetTooltip(wxWindow* window);

/// `text` with line breaks inserted so that no line is wider than `width` pixels in the
/// font of `dc` (or of `window` when `dc` is null, or the normal font when both are null).
/// Existing line breaks stay; a word wider than the line is broken; `width` 0 or less
/// wraps nothing. At most `max_lines` lines are kept (0: no limit), the last ending in
/// "…" when text was cut. `lines` gets the number of lines of the result (1 for an empty
/// text).
std::string wrap_text(const std::string& text, int width, wxWindow* window, unsigned long& lines,
                      unsigned long max_lines, wxDC* dc);

}  // namespace plaxi1
