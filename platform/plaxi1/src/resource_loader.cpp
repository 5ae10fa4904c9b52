#include <plaxi1/resource_loader.h>
#include <ylvane/log_text.h>

#include <quern2/catalog_registry.h>
#include <zandor/catalog.h>

#include <wx/animate.h>
#include <wx/dialog.h>
#include <wx/filesys.h>
#include <wx/fs_zip.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/panel.h>
#include <wx/xml/xml.h>
#include <wx/xrc/xmlres.h>

#include <map>
#include <memory>
#include <set>
#include <tuple>

namespace plaxi1 {
namespace {

using catalog_t = ZANDOR_2_16::i18n::catalog_t;

// One layout file as translated with one catalog, kept for the process. Never destroyed:
// static destruction runs after the toolkit has shut down.
struct layout_t {
  wxXmlResource* resource = nullptr;  // null: the file couldn't be read
  std::set<std::string> missing;      // objects already reported missing
};

// By file and catalog. The registry's catalogs live for the process, so a catalog's
// address names it for good: a catalog registered or reloaded in another language gives
// layouts translated anew, while the old ones stay for windows made from them.
using layout_key_t = std::tuple<std::string, std::string, const catalog_t*>;

std::map<layout_key_t, layout_t>& layouts() {
  static auto* instance = new std::map<layout_key_t, layout_t>;
  return *instance;
}

// XRC (from format 2.5.3.0, which our layouts declare) reads '_' as the mnemonic mark and
// backslash escapes in most texts; doubling them makes a catalog text come out as written.
wxString escape_for_xrc(const wxString& text) {
  wxString out;
  for (const wxUniChar c : text) {
    if (c == '_' || c == '\\') {
      out += c;
    }
    out += c;
  }
  return out;
}

// Elements whose text a layout shows; choice items are read without escapes.
enum text_kind_t { not_text, escaped_text, plain_text };

text_kind_t text_kind(const wxXmlNode* node, const wxXmlNode* parent) {
  static const std::set<wxString> escaped = {"label", "title", "tooltip", "hint",
                                             "value", "help",  "message", "text"};
  if (node->GetName() == "item") {
    return parent->GetName() == "content" ? plain_text : not_text;
  }
  return escaped.count(node->GetName()) ? escaped_text : not_text;
}

bool is_letter(wxUniChar c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Whether a text has the form of a catalog key: dotted names of letters, digits, '_' and
// '-', such as "btn.ok".
bool looks_like_key(const wxString& text) {
  bool dotted = false;
  wxUniChar previous = '.';
  for (const wxUniChar c : text) {
    if (c == '.') {
      if (previous == '.') {
        return false;
      }
      dotted = true;
    } else if (!is_letter(c) && !(c >= '0' && c <= '9') && c != '_' && c != '-') {
      return false;
    }
    previous = c;
  }
  return dotted && previous != '.' && is_letter(text[0]);
}

// Replaces the text of `node` when it is a key of the catalog. A key without a text stays,
// written so that it shows as it is, which makes missing texts easy to spot.
void translate_text(wxXmlNode* node, const catalog_t* catalog, bool escape) {
  for (wxXmlNode* child = node->GetChildren(); child; child = child->GetNext()) {
    if (child->GetType() != wxXML_TEXT_NODE && child->GetType() != wxXML_CDATA_SECTION_NODE) {
      continue;
    }
    const wxString content = child->GetContent().Strip(wxString::both);
    const std::string key(content.utf8_str());
    wxString text;
    if (catalog && catalog->has_message(key)) {
      text = wxString::FromUTF8(catalog->message(key).as_ustring(ZANDOR_2_16::generic::varg_list()).str());
    } else if (looks_like_key(content)) {
      text = content;
    } else {
      return;  // a text of the layout's own, in XRC's syntax
    }
    child->SetContent(escape ? escape_for_xrc(text) : text);
    return;  // a text element holds one text
  }
}

void translate(wxXmlNode* parent, const catalog_t* catalog) {
  for (wxXmlNode* node = parent->GetChildren(); node; node = node->GetNext()) {
    if (node->GetType() != wxXML_ELEMENT_NODE) {
      continue;
    }
    const text_kind_t kind = text_kind(node, parent);
    if (kind == not_text) {
      translate(node, catalog);
    } else {
      translate_text(node, catalog, kind == escaped_text);
    }
  }
}

std::unique_ptr<wxXmlDocument> read_document(const std::string& file) {
  wxFileSystem fs;
  std::unique_ptr<wxFSFile> in(fs.OpenFile(wxString::FromUTF8(file)));
  if (!in || !in->GetStream()) {
    return nullptr;
  }
  auto document = std::make_unique<wxXmlDocument>();
  if (!document->Load(*in->GetStream()) || !document->IsOk() ||
      document->GetRoot()->GetName() != "resource") {
    return nullptr;
  }
  return document;
}

wxXmlResource* make_resource(const std::string& file, const catalog_t* catalog) {
  // The layouts have resource objects of their own: wx's global one is left to the host.
  init_file_handlers();
  std::unique_ptr<wxXmlDocument> document = read_document(file);
  if (!document) {
    ylvane_1::log::write(ylvane_1::log::level_t::warn, std::string("layout file not read: ") + file);
    return nullptr;
  }
  translate(document->GetRoot(), catalog);
  // Our texts are translated already; the default flags would run them through wx's own
  // translations.
  auto resource = std::make_unique<wxXmlResource>(0);
  resource->InitAllHandlers();
  // Named after the file, so that pictures in the layout are found beside it.
  if (!resource->LoadDocument(document.release(), wxString::FromUTF8(file))) {
    ylvane_1::log::write(ylvane_1::log::level_t::warn, std::string("layout file not usable: ") + file);
    return nullptr;
  }
  return resource.release();
}

layout_t& layout_for(const std::string& file, const std::string& catalog_name) {
  const catalog_t* catalog = quern2::getMessageCatalog(catalog_name);
  const layout_key_t key(file, catalog_name, catalog);
  auto found = layouts().find(key);
  if (found == layouts().end()) {
    wxLogNull quiet;  // a host's missing layout must not show wx's error boxes
    found = layouts().emplace(key, layout_t{make_resource(file, catalog), {}}).first;
  }
  return found->second;
}

void report_missing(layout_t& layout, const std::string& file, const std::string& object_name) {
  if (layout.missing.insert(object_name).second) {
    ylvane_1::log::write(ylvane_1::log::level_t::warn,
                         std::string("layout object '") + object_name + "' not loaded from " + file);
  }
}

}  // namespace

resource_loader_t::resource_loader_t(const std::string& resource_file, const std::string& catalog_name)
    : m_resource_file(resource_file), m_catalog_name(catalog_name) {}

namespace {

// Loads `window` from `object_name` with the resource's loader for its class.
template <class Window, class Load>
bool load_window(layout_t& layout, const std::string& file, Window* window, const std::string& object_name,
                 Load load) {
  if (!layout.resource || !window) {
    return false;
  }
  wxLogNull quiet;
  if (!load(*layout.resource, wxString::FromUTF8(object_name))) {
    report_missing(layout, file, object_name);
    return false;
  }
  return true;
}

}  // namespace

bool resource_loader_t::load_dialog(wxDialog* dialog, wxWindow* parent,
                                    const std::string& object_name) const {
  return load_window(layout_for(m_resource_file, m_catalog_name), m_resource_file, dialog, object_name,
                     [&](wxXmlResource& resource, const wxString& name) {
                       return resource.LoadDialog(dialog, parent, name);
                     });
}

bool resource_loader_t::load_panel(wxPanel* panel, wxWindow* parent, const std::string& object_name) const {
  return load_window(
      layout_for(m_resource_file, m_catalog_name), m_resource_file, panel, object_name,
      [&](wxXmlResource& resource, const wxString& name) { return resource.LoadPanel(panel, parent, name); });
}

bool resource_loader_t::is_ok() const {
  return layout_for(m_resource_file, m_catalog_name).resource != nullptr;
}

void init_file_handlers() {
  static bool done = false;
  if (done) {
    return;
  }
  done = true;
  if (!wxFileSystem::HasHandlerForPath("tamsel3.dat#zip:tamsel.xrc")) {
    wxFileSystem::AddHandler(new wxZipFSHandler);
  }
  if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) {
    wxImage::AddHandler(new wxPNGHandler);
  }
  if (!wxImage::FindHandler(wxBITMAP_TYPE_GIF)) {
    wxImage::AddHandler(new wxGIFHandler);
  }
  if (!wxAnimation::FindHandler(wxANIMATION_TYPE_GIF)) {
    wxAnimation::InitStandardHandlers();
  }
}

void init_resource_handlers() {
  init_file_handlers();
  wxXmlResource::Get()->InitAllHandlers();
}

}  // namespace plaxi1
