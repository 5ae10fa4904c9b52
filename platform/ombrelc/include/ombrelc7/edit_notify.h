#pragma once
// Listeners to an edit box: the interface, the do-nothing base and the list of senders a
// listener is attached to.
#include <algorithm>
#include <memory>
#include <vector>

namespace ombrelcfrw7 {
class CBaseEditor;
}

namespace ombrelc7 {

class IEventSender;

/// What a listener hears from an edit box. GUI thread.
class IEditNotify {
 public:
  virtual ~IEditNotify() = default;
  /// The text changed, typed, pasted or set.
  virtual void EditOnChangeText(ombrelcfrw7::CBaseEditor* editor) = 0;
  virtual void EditOnChar(ombrelcfrw7::CBaseEditor* editor, int keycode) = 0;
  virtual void EditOnKeyDown(ombrelcfrw7::CBaseEditor* editor, int keycode) = 0;
  virtual void EditOnReturnPress(ombrelcfrw7::CBaseEditor* editor) = 0;
  virtual void EditOnVisibleChange(ombrelcfrw7::CBaseEditor* editor, bool visible) = 0;
  virtual void EditOnMouseWheel(ombrelcfrw7::CBaseEditor* editor, int rotation) = 0;
};

/// Something that listeners attach to; it tells each one when it starts and stops hearing.
class IEventSender {
 public:
  virtual void Unsubscribe(void* listener) = 0;

 protected:
  ~IEventSender() = default;
};

/// The senders that one listener is attached to.
using sender_list_t = std::vector<IEventSender*>;
/// The sender list of a new CSubscriber: empty.
std::unique_ptr<sender_list_t> CreateDefSenderList();

/// A listener of interface `I` that remembers its senders and leaves them when it dies.
template <class I>
class CSubscriber : public I {
 public:
  CSubscriber() : m_senders(CreateDefSenderList()) {}
  CSubscriber(const CSubscriber&) = delete;
  CSubscriber& operator=(const CSubscriber&) = delete;
  ~CSubscriber() override {
    const sender_list_t senders = *m_senders;  // each Unsubscribe calls NoticeStopped
    for (IEventSender* sender : senders) {
      sender->Unsubscribe(static_cast<I*>(this));
    }
  }
  /// `sender` took this listener; entered once however often it is told.
  void NoticeStarted(IEventSender* sender) {
    if (std::find(m_senders->begin(), m_senders->end(), sender) == m_senders->end()) {
      m_senders->push_back(sender);
    }
  }
  void NoticeStopped(IEventSender* sender) {
    m_senders->erase(std::remove(m_senders->begin(), m_senders->end(), sender), m_senders->end());
  }
  const sender_list_t& GetSenders() const { return *m_senders; }

 private:
  std::unique_ptr<sender_list_t> m_senders;
};

/// The do-nothing listener to an edit box: a listener overrides what it needs.
class CEditNotify : public CSubscriber<IEditNotify> {
 public:
  void EditOnChangeText(ombrelcfrw7::CBaseEditor*) override {}
  void EditOnChar(ombrelcfrw7::CBaseEditor*, int) override {}
  void EditOnKeyDown(ombrelcfrw7::CBaseEditor*, int) override {}
  void EditOnReturnPress(ombrelcfrw7::CBaseEditor*) override {}
  void EditOnVisibleChange(ombrelcfrw7::CBaseEditor*, bool) override {}
  void EditOnMouseWheel(ombrelcfrw7::CBaseEditor*, int) override {}
};

}  // namespace ombrelc7
