#include <tamsel3/editor_data.h>
#include <tamsel3/text_helpers.h>

#include <korvat2/path.h>
#include <korvat2/system.h>
#include <korvat2/system_editor.h>
#include <ylvane/log.h>
#include <zandor/debug.h>
#include <zandor/varg_list.h>

#include <log4cplus/loglevel.h>
#include <log4cplus/tracelogger.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

// Trace lines carry this file's name as the log's source position.
#define EDITOR_TRACE(text)                                                               \
  do {                                                                                   \
    const log4cplus::Logger logger = editor_logger();                                    \
    if (logger.isEnabledFor(log4cplus::TRACE_LOG_LEVEL)) {                               \
      logger.forcedLog(log4cplus::TRACE_LOG_LEVEL, (text), "src/editor_data", __LINE__); \
    }                                                                                    \
  } while (false)

namespace tamsel3 {

const char* const editor_data_t::env_var_editor_name = "orlane_env_var_editor_name";

namespace {

log4cplus::Logger editor_logger() {
  static const log4cplus::Logger logger = ylvane_1::log::areaLogger(ylvane_1::log::area::editor);
  return logger;
}

const char* const in_list_text =
    "(it_tmp = m_langs_to_edt_names.find(language)) != m_langs_to_edt_names.end() && "
    "std::find(it_tmp->second.begin(), it_tmp->second.end(), editor_name) != it_tmp->second.end()";
const char* const not_in_list_text =
    "(it_tmp = m_langs_to_edt_names.find(language)) == m_langs_to_edt_names.end() || "
    "std::find(it_tmp->second.begin(), it_tmp->second.end(), editor.name) == it_tmp->second.end()";
const char* const env_var_absent_text =
    "m_editors.find(editor_key_t(language, env_var_editor.name)) == m_editors.end()";

korvat2::system_editor_t to_system_editor(const editor_data_t::editor_t& editor) {
  return {editor.name, editor.display_name, editor.executable, editor.command_line};
}

editor_data_t::editor_t system_record(const korvat2::system_editor_t& editor) {
  editor_data_t::editor_t record(editor);
  record.is_system = true;
  return record;
}

// The file that the desktop is asked about, in a folder made for it alone (mode 0700, a
// name nobody can foresee), so that no other process can plant, race or remove it. Where
// neither can be made, `path` names a file that isn't there and the desktop goes by the
// name alone.
class query_file_t {
 public:
  explicit query_file_t(const std::string& leaf) {
    const std::string pattern = korvat2::stdpaths::get_temp_dir().as_string(false) + "/orlane.XXXXXX";
    m_path = pattern + "/" + leaf;
    std::string folder = pattern;
    if (!::mkdtemp(folder.data())) {
      return;
    }
    m_folder = folder;
    m_path = folder + "/" + leaf;
    const int fd = ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    m_created = fd >= 0;
    if (m_created) {
      ::close(fd);
    }
  }
  ~query_file_t() {
    if (m_created) {
      ::unlink(m_path.c_str());
    }
    if (!m_folder.empty()) {
      ::rmdir(m_folder.c_str());
    }
  }
  query_file_t(const query_file_t&) = delete;
  query_file_t& operator=(const query_file_t&) = delete;

  const std::string& path() const { return m_path; }

 private:
  std::string m_folder;
  std::string m_path;
  bool m_created = false;
};

}  // namespace

editor_data_t::editor_t::editor_t(const korvat2::system_editor_t& editor)
    : name(editor.name),
      display_name(editor.display_name),
      executable(editor.executable),
      command_line(editor.command_line) {}

editor_data_t::editor_data_t()
    : m_languages{language_info::language_cpp, language_info::language_fortran,
                  language_info::language_other} {}

korvat2::generic_iterator_t<editor_data_t::language_t> editor_data_t::get_languages() const {
  return korvat2::iterutil::make_owned_iterator(m_languages);
}

bool editor_data_t::is_supported_language(language_t language) const {
  return std::find(m_languages.begin(), m_languages.end(), language) != m_languages.end();
}

bool editor_data_t::set_selected_language(language_t language) {
  if (!is_supported_language(language)) {
    return false;
  }
  m_selected_language = language;
  return true;
}

bool editor_data_t::has_editor(language_t language, const std::string& name) const {
  return m_editors.find(editor_key_t(language, name)) != m_editors.end();
}

bool editor_data_t::in_list(language_t language, const std::string& name) const {
  const auto list = m_langs_to_edt_names.find(language);
  return list != m_langs_to_edt_names.end() &&
         std::find(list->second.begin(), list->second.end(), name) != list->second.end();
}

bool editor_data_t::add_editor(language_t language, const korvat2::system_editor_t& editor) {
  return add_editor_ex(language, editor_t(editor));
}

bool editor_data_t::add_editor_ex(language_t language, const editor_t& editor) {
  if (!is_supported_language(language) || editor.name.empty() || has_editor(language, editor.name)) {
    return false;
  }
  ZANDOR_ASSERT_TEXT(!in_list(language, editor.name), not_in_list_text);
  std::vector<std::string>& list = m_langs_to_edt_names[language];
  auto position = list.end();
  if (editor.is_system) {
    // System editors stay ahead of the user's own.
    position = std::find_if(list.begin(), list.end(), [&](const std::string& name) {
      const auto found = m_editors.find(editor_key_t(language, name));
      return found != m_editors.end() && !found->second.is_system;
    });
  }
  list.insert(position, editor.name);
  m_editors[editor_key_t(language, editor.name)] = editor;
  return true;
}

bool editor_data_t::set_editor(language_t language, const std::string& name,
                               const korvat2::system_editor_t& editor) {
  if (!is_supported_language(language) || name.empty() || editor.name != name ||
      !has_editor(language, name)) {
    return false;
  }
  ZANDOR_ASSERT_TEXT(in_list(language, name), in_list_text);
  m_editors[editor_key_t(language, name)] = editor_t(editor);
  return true;
}

bool editor_data_t::set_editors(language_t language,
                                const korvat2::generic_iterator_t<korvat2::system_editor_t>& editors) {
  if (!is_supported_language(language)) {
    return false;
  }
  const auto old = m_langs_to_edt_names.find(language);
  if (old != m_langs_to_edt_names.end()) {
    for (const std::string& name : old->second) {
      const bool erased = m_editors.erase(editor_key_t(language, name)) == 1;
      ZANDOR_ASSERT_TEXT(erased, "false");
    }
    m_langs_to_edt_names.erase(old);
  }
  std::vector<std::string> list;
  for (auto it = editors; !it.at_end(); it.next()) {
    const korvat2::system_editor_t editor = it.current();
    ZANDOR_ASSERT_TEXT(!editor.name.empty(), "false");
    if (!editor.name.empty()) {
      list.push_back(editor.name);
      m_editors[editor_key_t(language, editor.name)] = editor_t(editor);
    }
  }
  if (!list.empty()) {
    m_langs_to_edt_names[language] = list;
  }
  return true;
}

korvat2::generic_iterator_t<korvat2::system_editor_t> editor_data_t::get_editors(language_t language) const {
  if (!is_supported_language(language)) {
    return {};
  }
  std::vector<korvat2::system_editor_t> editors;
  const auto list = m_langs_to_edt_names.find(language);
  if (list != m_langs_to_edt_names.end()) {
    for (const std::string& name : list->second) {
      const auto found = m_editors.find(editor_key_t(language, name));
      ZANDOR_ASSERT_TEXT(found != m_editors.end(), "false");
      if (found != m_editors.end()) {
        editors.push_back(to_system_editor(found->second));
      }
    }
  }
  return korvat2::iterutil::make_owned_iterator(std::move(editors));
}

korvat2::system_editor_t editor_data_t::get_editor(language_t language, const std::string& name) const {
  return to_system_editor(get_editor_ex(language, name));
}

editor_data_t::editor_t editor_data_t::get_editor_ex(language_t language, const std::string& name) const {
  if (!is_supported_language(language) || name.empty()) {
    return {};
  }
  const auto found = m_editors.find(editor_key_t(language, name));
  if (found == m_editors.end()) {
    return {};
  }
  ZANDOR_ASSERT_TEXT(in_list(language, name), in_list_text);
  return found->second;
}

int editor_data_t::get_editor_type(language_t language, const std::string& name) const {
  const editor_t editor = get_editor_ex(language, name);
  if (editor.name.empty() && editor.display_name.empty() && editor.executable.empty() &&
      editor.command_line.empty()) {
    return editor_type_none;
  }
  if (editor.name == env_var_editor_name) {
    return editor_type_env_var;
  }
  return editor.is_system ? editor_type_system : editor_type_custom;
}

bool editor_data_t::remove_editor(language_t language, const std::string& name) {
  if (!is_supported_language(language) || name.empty()) {
    return false;
  }
  const auto list = m_langs_to_edt_names.find(language);
  if (list == m_langs_to_edt_names.end()) {
    return false;
  }
  const auto position = std::find(list->second.begin(), list->second.end(), name);
  if (position == list->second.end()) {
    return false;
  }
  list->second.erase(position);
  const bool erased = m_editors.erase(editor_key_t(language, name)) == 1;
  ZANDOR_ASSERT_TEXT(erased, "false");
  return erased;
}

bool editor_data_t::remove_editors_ex(language_t language, bool is_system) {
  std::vector<std::string> names;
  for (const auto& [key, editor] : m_editors) {
    if (key.first == language && editor.is_system == is_system) {
      names.push_back(key.second);
    }
  }
  for (const std::string& name : names) {
    if (!remove_editor(language, name)) {
      return false;
    }
  }
  return true;
}

namespace {

bool set_name(editor_data_t::names_t& names, editor_data_t::language_t language, const std::string& name) {
  if (name.empty()) {
    names.erase(language);
  } else {
    names[language] = name;
  }
  return true;
}

}  // namespace

bool editor_data_t::set_selected_editor_name(language_t language, const std::string& name) {
  return is_supported_language(language) && set_name(m_selected_editors, language, name);
}

bool editor_data_t::set_default_editor_name(language_t language, const std::string& name) {
  return is_supported_language(language) && set_name(m_default_editors, language, name);
}

std::string editor_data_t::get_name(const names_t& names, language_t language) {
  const auto found = names.find(language);
  return found == names.end() ? std::string() : found->second;
}

std::string editor_data_t::get_selected_editor_name(language_t language) const {
  return get_name(m_selected_editors, language);
}

std::string editor_data_t::get_default_editor_name(language_t language) const {
  return get_name(m_default_editors, language);
}

std::string editor_data_t::get_system_default_editor_name(language_t language) const {
  return get_name(m_system_default_editors, language);
}

bool editor_data_t::load_system_info() {
  for (const language_t language : m_languages) {
    if (!load_system_info(language)) {
      return false;
    }
  }
  return true;
}

bool editor_data_t::load_system_info(language_t language) {
  // The desktop tells a type's editors only for a real file of that type.
  std::string leaf = "orlane_test";
  const std::vector<std::string> extensions = language_info::get_extensions(language);
  if (!extensions.empty()) {
    leaf += "." + extensions.front();
  }
  const query_file_t file(leaf);
  return load_system_info(file.path());
}

void editor_data_t::add_system_editors(language_t language,
                                       korvat2::generic_iterator_t<korvat2::system_editor_t> list) {
  std::vector<std::string>& names = m_langs_to_edt_names[language];
  for (; !list.at_end(); list.next()) {
    const korvat2::system_editor_t editor = list.current();
    ZANDOR_ASSERT_TEXT(!editor.name.empty(), "false");
    // What is left of this name was edited by the user, and the user's record wins.
    if (!editor.name.empty() && !has_editor(language, editor.name)) {
      EDITOR_TRACE("load_system_info: Adding editor \"" + editor.name + "\".");
      names.push_back(editor.name);
      m_editors[editor_key_t(language, editor.name)] = system_record(editor);
    }
  }
}

void editor_data_t::drop_missing_names(names_t& names, language_t language) const {
  const auto found = names.find(language);
  if (found != names.end() && !has_editor(language, found->second)) {
    names.erase(found);
  }
}

bool editor_data_t::load_system_info(const std::string& file) {
  log4cplus::TraceLogger trace(editor_logger(), "load_system_info", "src/editor_data", __LINE__);
  const language_t language = language_info::get_language(file);
  EDITOR_TRACE("load_system_info: " + dump(language));
  if (!is_supported_language(language)) {
    return false;
  }
  korvat2::generic_iterator_t<korvat2::system_editor_t> list;
  // A desktop that couldn't be asked has said nothing: the user keeps every editor.
  if (korvat2::get_system_editors(file, list, korvat2::system_editor_all).failed()) {
    return false;
  }
  if (!remove_editors_ex(language, true)) {
    return false;
  }
  const std::vector<std::string> custom_names = m_langs_to_edt_names[language];
  m_langs_to_edt_names[language].clear();
  add_system_editors(language, list);

  editor_t env_var_editor;
  fill_env_var_editor(env_var_editor);
  EDITOR_TRACE("load_system_info: Adding editor \"" + env_var_editor.name + "\".");
  ZANDOR_ASSERT_TEXT(m_editors.find(editor_key_t(language, env_var_editor.name)) == m_editors.end(),
                     env_var_absent_text);
  add_editor_ex(language, env_var_editor);
  std::vector<std::string>& names = m_langs_to_edt_names[language];
  names.insert(names.end(), custom_names.begin(), custom_names.end());
  drop_missing_names(m_selected_editors, language);
  drop_missing_names(m_default_editors, language);

  korvat2::generic_iterator_t<korvat2::system_editor_t> defaults;
  const korvat2::error_code_t found =
      korvat2::get_system_editors(file, defaults, korvat2::system_editor_default);
  if (found.failed() || defaults.at_end()) {
    return false;
  }
  const korvat2::system_editor_t system_default = defaults.current();
  defaults.next();
  if (!defaults.at_end() || system_default.name.empty()) {
    return false;
  }
  m_system_default_editors[language] = system_default.name;
  EDITOR_TRACE("load_system_info: m_langs_to_edt_names = " + dump(m_langs_to_edt_names));
  EDITOR_TRACE("load_system_info: m_editors = " + dump(m_editors));
  return true;
}

void editor_data_t::fill_env_var_editor(editor_t& editor) {
  std::string program = korvat2::get_environ_value("VISUAL");
  if (program.empty()) {
    program = korvat2::get_environ_value("EDITOR");
  }
  editor.name = env_var_editor_name;
  editor.display_name = translate_message("pref.editor.env_var_editor", ZANDOR_2_16::generic::varg_list());
  editor.executable = program;
  editor.command_line = program;
  editor.is_system = true;
}

std::string editor_data_t::dump(language_t language) {
  return "Language = " + std::to_string(static_cast<int>(language)) + " \"" +
         language_info::get_localized_name(language) + "\".";
}

std::string editor_data_t::dump(const editor_t& editor) {
  return "{" + editor.name + ", " + editor.display_name + ", " + editor.executable + ", " +
         editor.command_line + ", " + (editor.is_system ? "true" : "false") + "}";
}

std::string editor_data_t::dump(const std::map<editor_key_t, editor_t>& editors) {
  std::string text;
  for (const auto& [key, editor] : editors) {
    text += (text.empty() ? "(" : "; (") + language_info::get_localized_name(key.first) + "," + key.second +
            "): " + dump(editor);
  }
  return text;
}

std::string editor_data_t::dump(const std::map<language_t, std::vector<std::string>>& names) {
  std::string text;
  for (const auto& [language, list] : names) {
    text += (text.empty() ? "\"" : "; \"") + language_info::get_localized_name(language) + "\": [";
    for (std::size_t i = 0; i < list.size(); ++i) {
      text += (i == 0 ? "\"" : ", \"") + list[i] + "\"";
    }
    text += "]";
  }
  return text;
}

}  // namespace tamsel3
