#include <korvat2/system_editor.h>

#include <gio/gio.h>

#include <fstream>
#include <memory>
#include <vector>

namespace korvat2 {
namespace {

struct g_free_t {
  void operator()(void* p) const { g_free(p); }
};
struct g_object_unref_t {
  void operator()(void* p) const { g_object_unref(p); }
};
using g_text_t = std::unique_ptr<char, g_free_t>;
using app_info_t = std::unique_ptr<GAppInfo, g_object_unref_t>;

std::string text_of(const char* text) { return text ? text : ""; }

// Reads as much of the head of the file as content sniffing looks at.
std::string head_of(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string data(4096, '\0');
  in.read(data.data(), static_cast<std::streamsize>(data.size()));
  data.resize(static_cast<std::size_t>(in.gcount()));
  return data;
}

// A file that isn't there is typed by its name alone.
std::string content_type_of(const std::string& file) {
  const bool present = path_t::exists(file);
  const std::string head = present ? head_of(file) : std::string();
  const auto* data = present ? reinterpret_cast<const guchar*>(head.data()) : nullptr;
  g_text_t type(g_content_type_guess(file.c_str(), data, head.size(), nullptr));
  return text_of(type.get());
}

// Field codes take out what the desktop would put in: files, URLs, icon, name, location.
std::string without_field_codes(const std::string& argument) {
  std::string result;
  for (std::size_t i = 0; i < argument.size(); ++i) {
    if (argument[i] != '%' || i + 1 == argument.size()) {
      result += argument[i];
    } else if (argument[++i] == '%') {
      result += '%';
    }
  }
  return result;
}

// Quotes an argument only where a shell would split or expand it, so that plain command
// lines stay readable.
std::string shell_word(const std::string& argument) {
  if (argument.find_first_of(" \t\n'\"\\$`*?[]#~&;|<>(){}") == std::string::npos) {
    return argument;
  }
  g_text_t quoted(g_shell_quote(argument.c_str()));
  return text_of(quoted.get());
}

system_editor_t editor_of(GAppInfo* info) {
  system_editor_t editor;
  editor.name = text_of(g_app_info_get_id(info));
  editor.display_name = text_of(g_app_info_get_name(info));
  editor.executable = text_of(g_app_info_get_executable(info));
  editor.command_line = command_line_from_exec(editor.executable, text_of(g_app_info_get_commandline(info)));
  return editor;
}

std::vector<system_editor_t> all_editors(const std::string& type) {
  std::vector<system_editor_t> editors;
  GList* list = g_app_info_get_all_for_type(type.c_str());
  for (GList* item = list; item; item = item->next) {
    editors.push_back(editor_of(static_cast<GAppInfo*>(item->data)));
  }
  g_list_free_full(list, g_object_unref);
  return editors;
}

std::vector<system_editor_t> default_editor(const std::string& type) {
  const app_info_t info(g_app_info_get_default_for_type(type.c_str(), FALSE));
  if (!info) {
    return {};
  }
  return {editor_of(info.get())};
}

}  // namespace

std::string command_line_from_exec(const std::string& executable, const std::string& exec) {
  gchar** argv = nullptr;
  if (!g_shell_parse_argv(exec.c_str(), nullptr, &argv, nullptr)) {
    return "";
  }
  std::string line = executable;
  for (gchar** argument = argv + 1; *argument; ++argument) {
    const std::string word = without_field_codes(*argument);
    if (!word.empty()) {
      line += ' ' + shell_word(word);
    }
  }
  g_strfreev(argv);
  return line;
}

error_code_t get_system_editors(const path_t& file, generic_iterator_t<system_editor_t>& out,
                                system_editor_type_t type) {
  out = generic_iterator_t<system_editor_t>();
  if (file.is_empty()) {
    return error::FileNotFound;
  }
  const std::string content_type = content_type_of(file.as_string(false));
  std::vector<system_editor_t> editors =
      type == system_editor_default ? default_editor(content_type) : all_editors(content_type);
  if (editors.empty()) {
    return type == system_editor_default ? error_code_t(error::Failed) : error_code_t(error::False);
  }
  out = iterutil::make_owned_iterator(std::move(editors));
  return error::Success;
}

}  // namespace korvat2
