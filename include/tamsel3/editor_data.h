#pragma once
#include <korvat2/iterator.h>
#include <korvat2/pointers.h>
#include <tamsel3/export.h>
#include <tamsel3/language_info.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace korvat2 {
struct system_editor_t;
class variant_bag_t;
class variant_t;
}  // namespace korvat2
namespace quern2 {
class IPropertyStorage;
}

namespace tamsel3 {

/// The registry of the external editors that can open a source file: per supported
/// language the ordered list of editors (system ones first, then the environment editor,
/// then the user's own) and the selected, default and system default names. A plain value:
/// copies share nothing. It never starts an editor; a host runs an editor's command line.
/// GUI thread; no lock.
class TAMSEL3_API editor_data_t {
 public:
  /// One editor.
  struct editor_t {
    editor_t() = default;
    /// The four strings of `editor`, as a custom editor.
    explicit editor_t(const korvat2::system_editor_t& editor);

    /// Reads the record from `bag`; false, leaving it as it was, when a required value is
    /// missing or of the wrong kind.
    bool load(const korvat2::variant_bag_t& bag);
    /// Writes the record into `bag`; the environment editor without its program.
    bool save(korvat2::variant_bag_t& bag) const;

    std::string name;  ///< identity within its language; empty stands for no editor
    /// The name shown to the user.
    std::string display_name;
    /// The program's path.
    std::string executable;
    std::string command_line;  ///< begins with `executable` when it has arguments
    bool is_system = false;    ///< from the desktop or the environment
  };

  /// Kinds of `get_editor_type`.
  enum editor_type_t : int {
    editor_type_none = 0,
    editor_type_system = 1,
    editor_type_env_var = 2,
    editor_type_custom = 3,
  };

  /// A source language.
  using language_t = language_info::language_t;
  /// An editor's key: its language and name.
  using editor_key_t = std::pair<language_t, std::string>;
  /// One name per language.
  using names_t = std::map<language_t, std::string>;

  /// The reserved name of the editor from `VISUAL` or `EDITOR`.
  static const char* const env_var_editor_name;

  editor_data_t();

  /// The supported languages: C++, Fortran and other, in this order.
  korvat2::generic_iterator_t<language_t> get_languages() const;
  /// Whether `language` is one of `get_languages`.
  bool is_supported_language(language_t language) const;
  /// The language last selected; C++ at first.
  language_t get_selected_language() const { return m_selected_language; }
  /// Selects `language`; false, changing nothing, for an unsupported one.
  bool set_selected_language(language_t language);

  /// Adds `editor` as a custom editor, as `add_editor_ex`; false for an unsupported language, an empty
  /// name or a name the language has already.
  bool add_editor(language_t language, const korvat2::system_editor_t& editor);
  /// Adds a new name: a system editor before the first custom one, a custom one at the end.
  bool add_editor_ex(language_t language, const editor_t& editor);
  /// Replaces the record of `name`, which then counts as a custom editor.
  bool set_editor(language_t language, const std::string& name, const korvat2::system_editor_t& editor);
  /// Replaces the language's whole list by custom editors made from `editors`.
  bool set_editors(language_t language, const korvat2::generic_iterator_t<korvat2::system_editor_t>& editors);
  /// The language's editors in their order; empty for an unsupported language.
  korvat2::generic_iterator_t<korvat2::system_editor_t> get_editors(language_t language) const;
  /// The editor of `name`; an empty record when there is none.
  korvat2::system_editor_t get_editor(language_t language, const std::string& name) const;
  /// The full record of `name`; an empty record when there is none.
  editor_t get_editor_ex(language_t language, const std::string& name) const;
  /// The editor_type_t of `name`: none, system, environment or custom.
  int get_editor_type(language_t language, const std::string& name) const;
  /// Removes `name` from the language's list and its record; false when there was none.
  bool remove_editor(language_t language, const std::string& name);
  /// Removes the language's system editors (`is_system` true) or custom ones.
  bool remove_editors_ex(language_t language, bool is_system);

  /// Sets the selected editor's name; an empty name clears it. False only for an unsupported language.
  bool set_selected_editor_name(language_t language, const std::string& name);
  /// Sets the default editor's name; an empty name clears it. False only for an unsupported language.
  bool set_default_editor_name(language_t language, const std::string& name);
  /// The selected editor's name; empty when none is.
  std::string get_selected_editor_name(language_t language) const;
  /// The default editor's name; empty when none is.
  std::string get_default_editor_name(language_t language) const;
  /// The name of the editor that the desktop calls its default for the language; empty when it named
  /// none.
  std::string get_system_default_editor_name(language_t language) const;

  /// Asks the desktop again for every language's editors, stopping at the first that fails.
  bool load_system_info();
  /// Asks for the editors of `language` through a made-up file of its type, in a folder
  /// of the temporary folder made for this call alone and removed with the file; nothing
  /// that another process put in the temporary folder is read, followed or removed. Where
  /// no such file can be made, the desktop is asked by the file's name alone.
  bool load_system_info(language_t language);
  /// Renews the system and environment editors of the language of `file`; true when the
  /// desktop also named exactly one default. A missing `file` is typed by its name. When
  /// the desktop can't be asked at all, nothing changes and the result is false. A system
  /// editor that the user has edited (see `set_editor`) keeps the user's record, once, among
  /// the custom editors. The selected and default names stay while their editors exist.
  bool load_system_info(const std::string& file);

  /// Overwrites `editor` with the editor of `VISUAL`, else `EDITOR`.
  static void fill_env_var_editor(editor_t& editor);

  /// A line for the log naming `language`.
  static std::string dump(language_t language);
  /// A line for the log with the record's five values.
  static std::string dump(const editor_t& editor);
  /// Lines for the log with every record.
  static std::string dump(const std::map<editor_key_t, editor_t>& editors);
  /// Lines for the log with each language's names.
  static std::string dump(const std::map<language_t, std::vector<std::string>>& names);

  /// `storage` itself, or for null the global storage's child "external_editor" (null when
  /// there is no global storage).
  static korvat2::sptr_t<quern2::IPropertyStorage> get_storage(
      korvat2::sptr_t<quern2::IPropertyStorage> storage);
  /// Loads the bag at "." of `get_storage(storage)`; false when there is no storage.
  bool load_storage_info(korvat2::sptr_t<quern2::IPropertyStorage> storage);
  /// Saves into the bag at "." of `get_storage(storage)`; false when there is no storage.
  /// True once the bag is made, even where the file can't be written: such a failure is
  /// logged at ERROR with the file's path and the system's reason, and the old file stays.
  bool save_storage_info(korvat2::sptr_t<quern2::IPropertyStorage> storage) const;
  /// Loads a saved registry into one that has no lists yet; a corrupt item costs only itself.
  bool load(const korvat2::variant_bag_t& bag);
  /// Writes one bag per language into `bag`, with its editors in order and its chosen names; true.
  bool save(korvat2::variant_bag_t& bag) const;

 private:
  bool load(names_t& names, language_t language, const korvat2::variant_t& value);
  void load_language(const korvat2::variant_bag_t& bag);
  void add_system_editors(language_t language, korvat2::generic_iterator_t<korvat2::system_editor_t> list);
  void drop_missing_names(names_t& names, language_t language) const;
  bool has_editor(language_t language, const std::string& name) const;
  bool in_list(language_t language, const std::string& name) const;
  static std::string get_name(const names_t& names, language_t language);

  std::vector<language_t> m_languages;
  std::map<language_t, std::vector<std::string>> m_langs_to_edt_names;
  std::map<editor_key_t, editor_t> m_editors;
  language_t m_selected_language = language_info::language_cpp;
  names_t m_selected_editors;
  names_t m_default_editors;
  names_t m_system_default_editors;
};

}  // namespace tamsel3
