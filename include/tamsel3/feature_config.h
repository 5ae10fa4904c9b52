#pragma once
#include <korvat2/path.h>
#include <tamsel3/export.h>

#include <string>
#include <vector>

namespace tamsel3 {

/// The list of experimental features that exist, from "evaluation_features.cfg", which the
/// library only reads. Each feature is known by the name of an environment variable; the
/// library keeps the names only and never touches the variables. GUI thread.
class TAMSEL3_API feature_list_config_t {
 public:
  /// One feature of the list.
  struct feature_info_t {
    std::string env_variable;  ///< its identity
    std::string name;          ///< text of its check box
    std::string description;   ///< its tooltip
  };

  virtual ~feature_list_config_t();
  /// Reads the list file and appends its features; false when the file can't be read.
  virtual bool load() = 0;
  /// The number of features read.
  virtual int get_count() const = 0;
  /// The feature at `index`, or an empty record for an index out of range.
  virtual feature_info_t get_feature(int index) const = 0;
};

/// The list read from "evaluation_features.cfg" in a given folder, or in the features
/// folder of the product's locations when the folder is empty.
class TAMSEL3_API feature_list_config_impl_t : public feature_list_config_t {
 public:
  /// A list read from `directory`; an empty path means the product's features folder.
  explicit feature_list_config_impl_t(const korvat2::path_t& directory);

  /// Appends without clearing: a second load doubles the list. A file of another shape
  /// loads as empty and gives true.
  bool load() override;
  /// The number of features read.
  int get_count() const override;
  feature_info_t get_feature(int index) const override;

 private:
  std::vector<feature_info_t> m_features;
  korvat2::path_t m_directory;
};

/// The features that the user turned on, from and to "active_evaluation_features.cfg".
/// GUI thread.
class TAMSEL3_API active_features_config_t {
 public:
  virtual ~active_features_config_t();
  /// Empties the list, not the file.
  virtual void clear() = 0;
  /// Reads the choice file and appends its names; false when the file can't be read.
  virtual bool load() = 0;
  /// Writes the list, an empty one too.
  virtual bool save() = 0;
  /// Adds a name; an empty one or one already there is ignored.
  virtual void turn_on(const std::string& env_variable) = 0;
  /// Whether `env_variable` is among the names turned on.
  virtual bool is_turned_on(const std::string& env_variable) const = 0;
};

/// The choice kept in "active_evaluation_features.cfg" in a given folder, or in the
/// features folder of the product's locations when the folder is empty.
class TAMSEL3_API active_features_config_impl_t : public active_features_config_t {
 public:
  /// A choice kept in `directory`; an empty path means the product's features folder.
  explicit active_features_config_impl_t(const korvat2::path_t& directory);

  void clear() override;
  /// Appends without clearing and without testing for doubles; empty names are skipped.
  bool load() override;
  /// Replaces the file atomically; true whatever the write reports. A failed write leaves
  /// the old file whole and is logged at ERROR level with the path and the system's reason.
  bool save() override;
  void turn_on(const std::string& env_variable) override;
  /// Whether `env_variable` is among the names turned on.
  bool is_turned_on(const std::string& env_variable) const override;

  /// The full name of the choice file.
  std::string get_config_filename() const;

 private:
  std::vector<std::string> m_turned_on;
  korvat2::path_t m_directory;
};

}  // namespace tamsel3
