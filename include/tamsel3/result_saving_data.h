#pragma once
#include <tamsel3/export.h>
#include <cstdint>
#include <string>

namespace tamsel3 {

/// How analysis results are named and where they are stored: the data of the Result saving
/// page. A plain copyable value without checks or persistence; the host fills it and takes
/// the page's copy back.
class TAMSEL3_API result_saving_data_t {
 public:
  /// Where temporary results go. The values are the host's: this library only passes them.
  enum temp_storing_t : std::int32_t {};
  /// Where results go.
  enum project_storing_t : std::int32_t {
    proj_storing_in_project = 0,  ///< with the project
    proj_storing_on_disk = 1,     ///< in the chosen folder
  };

  /// Stores the five values; the project's default folder starts empty.
  result_saving_data_t(temp_storing_t temp_storing, project_storing_t proj_storing, bool vs_accessibility,
                       std::string name_template, std::string folder);

  /// Where temporary results go.
  temp_storing_t get_temp_storing() const { return m_temp_storing; }
  /// Sets where temporary results go.
  void set_temp_storing(temp_storing_t value) { m_temp_storing = value; }
  /// Where results go.
  project_storing_t get_proj_storing() const { return m_proj_storing; }
  /// Sets where results go.
  void set_proj_storing(project_storing_t value) { m_proj_storing = value; }
  /// Whether stored results show in the project's result list.
  bool get_vs_accessibility() const { return m_vs_accessibility; }
  /// Sets whether stored results show in the project's result list.
  void set_vs_accessibility(bool value) { m_vs_accessibility = value; }
  /// Name template of a result directory: one run of "@" for the result's number.
  std::string get_name_template() const { return m_name_template; }
  /// Sets the name template; the value isn't checked.
  void set_name_template(const std::string& value) { m_name_template = value; }
  /// Folder of results that aren't kept with the project.
  std::string get_folder() const { return m_folder; }
  /// Sets the folder of results; the value isn't checked.
  void set_folder(const std::string& value) { m_folder = value; }
  /// The project's default folder, shown to the user.
  std::string get_proj_default_folder() const { return m_proj_default_folder; }
  /// Sets the project's default folder.
  void set_proj_default_folder(const std::string& value) { m_proj_default_folder = value; }

 private:
  temp_storing_t m_temp_storing;
  project_storing_t m_proj_storing;
  bool m_vs_accessibility;
  std::string m_name_template;
  std::string m_folder;
  std::string m_proj_default_folder;
};

}  // namespace tamsel3
