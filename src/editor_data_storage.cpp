// The saved form of the editor registry: a nested bag at the key "." of a storage.
#include <tamsel3/editor_data.h>

#include <korvat2/variant_bag.h>
#include <quern2/storage.h>
#include <zandor/debug.h>

namespace tamsel3 {
namespace {

const char* const storage_key = ".";

// The text at `name`, if the bag holds text there.
bool read_text(const korvat2::variant_bag_t& bag, const char* name, std::string& text) {
  const korvat2::variant_t value = bag.get_variant(name, korvat2::variant_t());
  if (!value.can_get<const char*>()) {
    return false;
  }
  text = value.get<std::string>();
  return true;
}

void put_name(korvat2::variant_bag_t& bag, const char* key, const std::string& name) {
  if (!name.empty()) {
    bag.put(key, name);
  }
}

}  // namespace

bool editor_data_t::editor_t::load(const korvat2::variant_bag_t& bag) {
  editor_t loaded;
  if (!read_text(bag, "name", loaded.name) || !read_text(bag, "display_name", loaded.display_name)) {
    return false;
  }
  // The environment editor's program comes from the environment, never from the file.
  const bool program_optional = loaded.name == env_var_editor_name;
  if (!read_text(bag, "executable", loaded.executable) && !program_optional) {
    return false;
  }
  if (!read_text(bag, "command_line", loaded.command_line) && !program_optional) {
    return false;
  }
  const korvat2::variant_t is_system = bag.get_variant("is_system", korvat2::variant_t());
  if (!is_system.can_get<bool>()) {
    return false;
  }
  loaded.is_system = is_system.get<bool>();
  *this = loaded;
  return true;
}

bool editor_data_t::editor_t::save(korvat2::variant_bag_t& bag) const {
  bag.put("name", name);
  bag.put("display_name", display_name);
  if (name != env_var_editor_name) {
    bag.put("executable", executable);
    bag.put("command_line", command_line);
  }
  bag.put("is_system", is_system);
  return true;
}

korvat2::sptr_t<quern2::IPropertyStorage> editor_data_t::get_storage(
    korvat2::sptr_t<quern2::IPropertyStorage> storage) {
  if (storage) {
    return storage;
  }
  const korvat2::sptr_t<quern2::IGlobalStorage> global = quern2::IGlobalStorage::get();
  return global ? global->getChild("external_editor") : nullptr;
}

bool editor_data_t::load_storage_info(korvat2::sptr_t<quern2::IPropertyStorage> storage) {
  const korvat2::sptr_t<quern2::IPropertyStorage> target = get_storage(std::move(storage));
  return target && load(target->readBag(storage_key, korvat2::variant_bag_t()));
}

bool editor_data_t::save_storage_info(korvat2::sptr_t<quern2::IPropertyStorage> storage) const {
  const korvat2::sptr_t<quern2::IPropertyStorage> target = get_storage(std::move(storage));
  if (!target) {
    return false;
  }
  korvat2::variant_bag_t bag;
  const bool saved = save(bag);
  if (saved) {
    target->writeBag(storage_key, bag);
  }
  return saved;
}

bool editor_data_t::save(korvat2::variant_bag_t& bag) const {
  for (const auto& [language, names] : m_langs_to_edt_names) {
    korvat2::variant_bag_t language_bag;
    language_bag.put("language_name", language_info::get_localized_name(language));
    for (const std::string& name : names) {
      const auto found = m_editors.find(editor_key_t(language, name));
      ZANDOR_ASSERT(found != m_editors.end());
      korvat2::variant_bag_t editor_bag;
      if (found != m_editors.end() && found->second.save(editor_bag)) {
        language_bag.add_variant_bag("editor", editor_bag);
      }
    }
    put_name(language_bag, "selected_editor", get_name(m_selected_editors, language));
    put_name(language_bag, "default_editor", get_name(m_default_editors, language));
    put_name(language_bag, "system_default_editor", get_name(m_system_default_editors, language));
    bag.add_variant_bag("language", language_bag);
  }
  bag.put("selected_language", language_info::get_localized_name(m_selected_language));
  return true;
}

bool editor_data_t::load(const korvat2::variant_bag_t& bag) {
  for (auto it = bag.begin_by_name<korvat2::variant_bag_t>("language"); !it.at_end(); it.next()) {
    load_language(it.get_value());
  }
  std::string selected;
  if (read_text(bag, "selected_language", selected)) {
    set_selected_language(language_info::get_language_by_name(selected));
  }
  return true;
}

void editor_data_t::load_language(const korvat2::variant_bag_t& bag) {
  std::string language_name;
  if (!read_text(bag, "language_name", language_name)) {
    ZANDOR_ASSERT(false);
    return;
  }
  const language_t language = language_info::get_language_by_name(language_name);
  if (!is_supported_language(language)) {
    return;
  }
  ZANDOR_ASSERT(m_langs_to_edt_names.find(language) == m_langs_to_edt_names.end());
  for (auto it = bag.begin_by_name<korvat2::variant_bag_t>("editor"); !it.at_end(); it.next()) {
    editor_t editor;
    if (!editor.load(it.get_value()) || has_editor(language, editor.name)) {
      continue;
    }
    if (editor.name == env_var_editor_name) {
      fill_env_var_editor(editor);
    }
    add_editor_ex(language, editor);
  }
  load(m_selected_editors, language, bag.get_variant("selected_editor", korvat2::variant_t()));
  load(m_default_editors, language, bag.get_variant("default_editor", korvat2::variant_t()));
  load(m_system_default_editors, language, bag.get_variant("system_default_editor", korvat2::variant_t()));
}

bool editor_data_t::load(names_t& names, language_t language, const korvat2::variant_t& value) {
  if (names.find(language) != names.end() || !value.can_get<const char*>()) {
    return false;
  }
  const std::string name = value.get<std::string>();
  if (name.empty()) {
    return false;
  }
  names[language] = name;
  return true;
}

}  // namespace tamsel3
