#pragma once
#include <korvat2/error.h>
#include <korvat2/path.h>

#include <string>

namespace korvat2 {

/// The variable's value; an empty string when it isn't set.
std::string get_environ_value(const std::string& name);

/// Deletes a file: `error::FileNotFound` when there is none, `error::FileWrite` when it
/// can't be removed.
error_code_t remove_file(const path_t& file);

namespace stdpaths {
/// $TMPDIR when it names a directory, else /tmp.
path_t get_temp_dir();
/// The process's current directory.
path_t get_working_dir();
/// $XDG_CONFIG_HOME when absolute, else $HOME/.config.
path_t get_user_config_dir();
/// $XDG_DATA_HOME when absolute, else $HOME/.local/share.
path_t get_user_data_dir();
}  // namespace stdpaths

}  // namespace korvat2
