#pragma once
#include <korvat2/error.h>
#include <korvat2/path.h>
#include <korvat2/pointers.h>
#include <korvat2/variant_bag.h>

#include <string>

namespace quern2 {

/// A configuration storage: bags by key and child storages by name. Counted through
/// `add_ref`/`release` (held by korvat2::sptr_t). GUI thread.
class IPropertyStorage {
 public:
  virtual void add_ref() = 0;
  virtual void release() = 0;

  /// The child storage of that name, made when first written; null for a name that
  /// can't name a storage (empty).
  virtual korvat2::sptr_t<IPropertyStorage> getChild(const std::string& name) = 0;
  /// The bag at `key`, or `default_bag` when there is none or it can't be read.
  virtual korvat2::variant_bag_t readBag(const std::string& key,
                                         const korvat2::variant_bag_t& default_bag) const = 0;
  /// Stores `bag` at `key`, replacing what was there whole or not at all. A failure is
  /// logged at ERROR with the file's path and the system's reason.
  virtual korvat2::error_code_t writeBag(const std::string& key, const korvat2::variant_bag_t& bag) = 0;
  /// Whether a bag is stored at `key`.
  virtual bool hasBag(const std::string& key) const = 0;

 protected:
  virtual ~IPropertyStorage();
};

/// The process's root storage.
class IGlobalStorage : public IPropertyStorage {
 public:
  /// The global storage: the host's, or by default a file storage under
  /// "<user configuration folder>/tamsel3" (see `setGlobalStorageRoot`). Null only when a
  /// host has installed none.
  static korvat2::sptr_t<IGlobalStorage> get();
  /// Installs the host's global storage; null leaves the process without one.
  static void set(korvat2::sptr_t<IGlobalStorage> storage);
  /// Brings back the default file storage at `root` (the default root when empty).
  static void setGlobalStorageRoot(const korvat2::path_t& root);
};

/// A storage in a folder: one subfolder per child and one bag file per key. Names and keys
/// are written into file names with every character but letters, digits, '-' and '_'
/// escaped as "%XX", so any text can be a key. A name whose escaped form would pass the
/// longest file name (255 bytes, ".bag" included) keeps its start and ends in '~' and the
/// SHA-256 of the whole text instead. Only a regular file holds a bag: `hasBag` is false for
/// a folder in its place.
korvat2::sptr_t<IGlobalStorage> makeFileStorage(const korvat2::path_t& folder);

}  // namespace quern2
