#pragma once
// A private desktop for the lookup of editors: XDG data and configuration folders with two
// editors of C source, "alpha-edit" and "beta-edit" (the default), one of Fortran source
// with no chosen default (the desktop falls back to it), and a hand-written MIME database; the programs are
// scripts in the tree's own bin folder, which goes first on PATH, since GIO drops entries whose program it
// can't find. The same answers on every machine, whatever the machine's own desktop.
#include "fixtures.h"
#include "own_process.h"

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace test_support {

class desktop_tree_t {
 public:
  /// With `for_gtk` the machine's MIME database, icons and settings schemas are lent to the
  /// tree where the machine has them: GTK's own windows, the file chooser among them, need
  /// them to start. None of them bears on which applications the desktop offers.
  explicit desktop_tree_t(bool for_gtk = false) : m_for_gtk(for_gtk) {
    for (const char* dir : {"data/applications", "config", "bin", "tmp"}) {
      std::filesystem::create_directories(m_dir.file(dir));
    }
    program("alpha-edit");
    program("beta-edit");
    program("fortune-edit");
    entry("alpha-edit", "Alpha Edit", "alpha-edit --wait %F", "text/x-csrc");
    entry("beta-edit", "Beta Edit", "beta-edit -n %u", "text/x-csrc");
    entry("fortune-edit", "Fortune Edit", "fortune-edit %f", "text/x-fortran");
    m_dir.write("data/applications/mimeinfo.cache",
                "[MIME Cache]\ntext/x-csrc=alpha-edit.desktop;beta-edit.desktop;\n"
                "text/x-fortran=fortune-edit.desktop;\n");
    m_dir.write("config/mimeapps.list", "[Default Applications]\ntext/x-csrc=beta-edit.desktop\n");
    if (for_gtk && std::filesystem::exists("/usr/share/mime/mime.cache")) {
      std::filesystem::create_directory_symlink("/usr/share/mime", m_dir.file("data/mime"));
      if (std::filesystem::exists("/usr/share/icons")) {
        std::filesystem::create_directory_symlink("/usr/share/icons", m_dir.file("data/icons"));
      }
    } else {
      std::filesystem::create_directories(m_dir.file("data/mime"));
      m_dir.write("data/mime/globs2", "50:text/x-csrc:*.c\n50:text/x-fortran:*.f\n");
    }
  }

  const std::string& path() const { return m_dir.path(); }
  /// The folder that the child's temporary files go to (TMPDIR).
  std::string temp_dir() const { return m_dir.file("tmp"); }

  /// The variables that point a child process at this desktop, with `VISUAL` and `EDITOR`.
  environment_t environment(const std::optional<std::string>& visual = std::nullopt,
                            const std::optional<std::string>& editor = std::nullopt) const {
    const char* old_path = std::getenv("PATH");
    environment_t environment = {{"XDG_DATA_HOME", m_dir.file("data")},
                                 {"XDG_DATA_DIRS", m_dir.file("data")},
                                 {"XDG_CONFIG_HOME", m_dir.file("config")},
                                 {"XDG_CONFIG_DIRS", m_dir.file("config")},
                                 {"XDG_CURRENT_DESKTOP", std::nullopt},
                                 {"TMPDIR", temp_dir()},
                                 {"PATH", m_dir.file("bin") + ":" + (old_path ? old_path : "/usr/bin:/bin")},
                                 {"VISUAL", visual},
                                 {"EDITOR", editor}};
    if (m_for_gtk && std::filesystem::exists("/usr/share/glib-2.0/schemas")) {
      environment.emplace_back("GSETTINGS_SCHEMA_DIR", "/usr/share/glib-2.0/schemas");
    }
    return environment;
  }

 private:
  void program(const std::string& name) {
    const std::string path = m_dir.write("bin/" + name, "#!/bin/sh\nexit 0\n");
    ::chmod(path.c_str(), 0755);
  }
  void entry(const std::string& id, const std::string& name, const std::string& exec,
             const std::string& type) {
    m_dir.write("data/applications/" + id + ".desktop", "[Desktop Entry]\nType=Application\nName=" + name +
                                                            "\nExec=" + exec + "\nMimeType=" + type + ";\n");
  }

  temp_dir_t m_dir;
  bool m_for_gtk;
};

}  // namespace test_support
