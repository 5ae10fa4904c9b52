#pragma once
#include <tamsel3/export.h>
#include <tamsel3/message_window.h>

#include <korvat2/pointers.h>
#include <quern2/storage.h>

#include <atomic>
#include <optional>
#include <string>

namespace tamsel3 {

/// A ready "don't ask again" check box: it keeps the user's answer under a name in a
/// configuration storage, so that a message suppressed once stays suppressed in later runs.
///
/// All answers of one storage live in one bag at the key `answers_key`, a boolean value per
/// name. The stored answer is the truth: `is_checked` reads it each time, so a
/// `reset_all` or another definition of the same name takes effect at once. An answer that
/// can't be read (no file, a damaged file) counts as not checked; the next save replaces
/// such a file whole. A failed write is logged at ERROR with the file's path and reason;
/// the definition then keeps the answer for the rest of its life.
///
/// Create it with `new` and hand it to a `korvat2::sptr_t`; the count deletes it. GUI thread.
class TAMSEL3_API stored_check_box_t final : public i_check_box_definition {
 public:
  /// The key of the bag that holds every answer of a storage.
  static const char* const answers_key;
  /// The child of the global storage used when no storage is given.
  static const char* const default_child;

  /// An answer kept under `name` in `storage`. A null `storage` means the child
  /// `default_child` of the process's global storage (`quern2::IGlobalStorage::get`); without
  /// a global storage the answer lives in memory only. An empty `label` gives the library's
  /// text "Do not show this message again" in the user's language, looked up at each
  /// `get_label`.
  stored_check_box_t(korvat2::sptr_t<quern2::IPropertyStorage> storage, std::string name,
                     std::string label = std::string());
  stored_check_box_t(const stored_check_box_t&) = delete;
  stored_check_box_t& operator=(const stored_check_box_t&) = delete;

  /// Forgets every answer kept in `storage` (null: the same default as the constructor),
  /// so that every suppressed message shows again. Returns false when the storage can't be
  /// reached or written.
  static bool reset_all(korvat2::sptr_t<quern2::IPropertyStorage> storage);

  /// Takes a reference; any thread.
  void add_ref() override;
  /// Drops a reference; the last one deletes the definition. Any thread.
  void release() override;
  /// The name under which the answer is kept.
  std::string get_key() const override;
  /// Drops an answer set but not saved, so that `is_checked` reports the stored one again.
  void load_state() override;
  /// Forgets the stored answer of this name; the other names keep theirs.
  void reset_state() override;
  /// The answer set by `set_checked` and not yet saved, else the stored answer.
  bool is_checked() const override;
  /// Sets the answer that `save_state` keeps; nothing is written yet.
  void set_checked(bool checked) override;
  /// Writes the answer set by `set_checked` to the storage; without one set, nothing.
  void save_state() override;
  /// The text beside the check box.
  std::string get_label() const override;

 private:
  ~stored_check_box_t() override;
  bool stored_answer() const;
  void store(bool checked);

  korvat2::sptr_t<quern2::IPropertyStorage> m_storage;
  std::string m_name;
  std::string m_label;
  std::optional<bool> m_pending;  // set but not yet saved
  std::atomic<int> m_count{0};
};

}  // namespace tamsel3
