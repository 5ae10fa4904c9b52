#include <tamsel3/global_show_help.h>

#include <wx/thread.h>

namespace tamsel3 {
namespace {

wxMutex& slot_mutex() {
  static wxMutex mutex;
  return mutex;
}

global_show_help_flavor*& slot() {
  static global_show_help_flavor* m_self = nullptr;
  return m_self;
}

}  // namespace

global_show_help_flavor::~global_show_help_flavor() {
  wxMutexLocker lock(slot_mutex());
  slot() = nullptr;
}

void global_show_help_flavor::initialize(global_show_help_flavor* provider) {
  wxMutexLocker lock(slot_mutex());
  slot() = provider;
}

korvat2::intrusive_pointer_t<global_show_help_flavor> global_show_help_flavor::get() {
  wxMutexLocker lock(slot_mutex());
  global_show_help_flavor* provider = slot();
  // A provider without owners is being deleted: its destructor waits for our lock to
  // empty the slot, so a share taken now would outlive it.
  if (provider == nullptr || !provider->try_add_ref()) {
    return nullptr;
  }
  return korvat2::intrusive_pointer_t<global_show_help_flavor>::adopt(provider);
}

}  // namespace tamsel3
