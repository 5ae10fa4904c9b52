#pragma once
#include <string>

namespace quern2 {

/// Product-wide answers: where the resources are, and the product's names.
/// A host replaces the default with its own through `set`.
class IProductLocations {
 public:
  /// Kinds of `getProductText`.
  enum product_text_t {
    text_full_name = 0,
    text_version = 1,
    text_vendor = 2,
    text_copyright = 3,
    text_message_title = 4,  ///< title of message windows
    text_short_name = 5,
  };

  virtual ~IProductLocations();

  /// The directory that holds the resource archives and catalogs.
  virtual const char* getResourceDirectory() const = 0;
  /// A product text by kind; empty for an unknown kind.
  virtual const char* getProductText(int kind) const = 0;
  /// The directory of the feature configuration files.
  virtual const char* getFeaturesDirectory() const = 0;
  /// The product's short tag, which ends some catalog keys.
  virtual const char* getProductTag() const = 0;
  /// The product's generation number.
  virtual int getProductGeneration() const = 0;

  /// The process's product locations: the host's, or the default ones.
  static IProductLocations* get();
  /// Installs the host's object, which it keeps alive while installed; null brings back
  /// a new query of the default locations. Not for use while other threads call `get`.
  static void set(IProductLocations* locations);
};

/// The default answers. The resource directory is $TAMSEL3_RESOURCE_DIR when set; else
/// "share/tamsel3" beside the folder of the installed library (the build tree is laid out
/// the same way); else the configured install and build folders, the first that exists.
/// The features directory is "<user configuration>/tamsel3/features".
class DefaultProductLocations : public IProductLocations {
 public:
  DefaultProductLocations();
  const char* getResourceDirectory() const override { return m_resource_dir.c_str(); }
  const char* getProductText(int kind) const override;
  const char* getFeaturesDirectory() const override { return m_features_dir.c_str(); }
  const char* getProductTag() const override { return "tam"; }
  int getProductGeneration() const override { return 12; }

 private:
  std::string m_resource_dir;
  std::string m_features_dir;
};

}  // namespace quern2
