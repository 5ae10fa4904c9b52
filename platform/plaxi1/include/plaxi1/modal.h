#pragma once
#include <korvat2/pointers.h>

#include <wx/dialog.h>
#include <wx/weakref.h>

#include <functional>

namespace plaxi1 {

/// Receives a request for help from a window.
class help_callback_t {
 public:
  virtual void help_activated() = 0;
  virtual ~help_callback_t();
};

/// The process's modal callback: given a dialog about to run modally, it answers with the
/// dialog's result, or 0 to let the dialog run. Hosts' automation and tests install one.
using modal_callback_t = std::function<int(wxDialog*)>;
/// The installed callback; empty when there is none. GUI thread.
const modal_callback_t& get_modal_callback();
/// Installs `callback` (empty removes it) and returns the one it replaces.
modal_callback_t set_modal_callback(modal_callback_t callback);

template <class Dialog>
class modal_flavor;

/// A dialog that answers the help key through help_callback_t and whose modal run the
/// modal callback may answer instead.
template <>
class modal_flavor<wxDialog> : public wxDialog, public help_callback_t {
 public:
  modal_flavor();
  int ShowModal() override;
  /// Centres the dialog on its parent where the application places its windows (X11);
  /// elsewhere the compositor centres a dialog on the window it is transient for.
  void place_centred();

 private:
  void on_help(wxHelpEvent& event);
};

/// Keeps track of the application's main window while it lives.
class auto_dummy_wrapper_t {
 public:
  explicit auto_dummy_wrapper_t(wxWindow* window) : m_window(window) {}
  /// The window, or null once it was destroyed.
  wxWindow* get_window() const { return m_window.get(); }

 private:
  wxWeakRef<wxWindow> m_window;
};

/// The application's main window (its top window), or a null pointer when there is none.
korvat2::smart_pointer_t<auto_dummy_wrapper_t> get_main_window();

/// Whether `window`, or the top-level window it sits in, is being destroyed or waits for
/// its deferred destruction. A dialog parented to such a window would be deleted with it,
/// perhaps from inside the dialog's own modal loop. GUI thread.
bool is_closing(const wxWindow* window);

/// The parent to give a modal dialog that `window` asks for: `window` itself (null too)
/// unless it is closing; for a closing one the main window when that isn't closing, else
/// null. GUI thread.
wxWindow* live_parent(wxWindow* window);

}  // namespace plaxi1
