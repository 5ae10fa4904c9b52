#include <plaxi1/image_loader.h>
#include <plaxi1/resource_loader.h>
#include <ylvane/log_text.h>

#include <wx/filesys.h>
#include <wx/generic/animate.h>
#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/xml/xml.h>

#include <map>
#include <memory>
#include <set>

namespace plaxi1 {
namespace {

// One picture index: the file names it lists and what was loaded from them, kept for the
// process. Never destroyed: static destruction runs after the toolkit has shut down.
struct index_t {
  bool read = false;
  std::map<std::string, wxString> bitmap_files;
  std::map<std::string, wxString> animation_files;
  std::map<std::string, wxStaticPicture> pictures;  // empty ones too, to look only once
  std::map<std::string, picture_t> animations;      // empty ones too
};

std::map<std::string, index_t>& indexes() {
  static auto* instance = new std::map<std::string, index_t>;
  return *instance;
}

// The whole content of a file named relative to the index. Buffered, as archive streams
// can't seek and the picture readers must, to recognise the format.
std::unique_ptr<wxMemoryInputStream> open_beside(const std::string& location, const wxString& name) {
  wxFileSystem fs;
  fs.ChangePathTo(wxString::FromUTF8(location), false);
  std::unique_ptr<wxFSFile> file(fs.OpenFile(name));
  if (!file || !file->GetStream()) {
    return nullptr;
  }
  wxMemoryOutputStream buffer;
  buffer.Write(*file->GetStream());
  if (buffer.GetLength() == 0) {
    return nullptr;  // nothing to read, and wx won't stream an empty buffer
  }
  return std::make_unique<wxMemoryInputStream>(buffer);
}

index_t read_index(const std::string& location) {
  index_t index;
  wxFileSystem fs;
  std::unique_ptr<wxFSFile> file(fs.OpenFile(wxString::FromUTF8(location)));
  wxXmlDocument document;
  if (!file || !file->GetStream() || !document.Load(*file->GetStream()) || !document.IsOk()) {
    return index;
  }
  index.read = true;
  for (const wxXmlNode* node = document.GetRoot()->GetChildren(); node; node = node->GetNext()) {
    if (node->GetType() != wxXML_ELEMENT_NODE || node->GetName() != "object") {
      continue;
    }
    const std::string name(node->GetAttribute("name").utf8_str());
    const wxString kind = node->GetAttribute("class");
    const wxString file_name = node->GetNodeContent().Strip(wxString::both);
    if (kind == "wxBitmap") {
      index.bitmap_files[name] = file_name;
    } else if (kind == "wxAnimation") {
      index.animation_files[name] = file_name;
    }
  }
  return index;
}

index_t& index_at(const std::string& location) {
  auto found = indexes().find(location);
  if (found == indexes().end()) {
    init_file_handlers();
    found = indexes().emplace(location, read_index(location)).first;
  }
  return found->second;
}

// "images/error24.png" gives "images/error24@2x.png".
wxString name_2x(const wxString& name) {
  const size_t slash = name.find_last_of('/');
  const size_t dot = name.find_last_of('.');
  if (dot == wxString::npos || (slash != wxString::npos && dot < slash)) {
    return name + "@2x";
  }
  return name.substr(0, dot) + "@2x" + name.substr(dot);
}

wxImage read_image(const std::string& location, const wxString& name) {
  wxImage image;
  if (std::unique_ptr<wxMemoryInputStream> in = open_beside(location, name)) {
    image.LoadFile(*in, wxBITMAP_TYPE_ANY);
  }
  return image;
}

wxStaticPicture read_picture(const std::string& location, const wxString& name) {
  const wxImage image = read_image(location, name);
  if (!image.IsOk()) {
    return wxStaticPicture();
  }
  return wxStaticPicture(image, read_image(location, name_2x(name)));
}

// The generic kind, not GTK's own: it knows its frames, and wxGenericAnimationCtrl shows it
// on every platform.
wxAnimation read_animation(const std::string& location, const wxString& name) {
  wxAnimation animation = wxGenericAnimationCtrl::CreateCompatibleAnimation();
  if (std::unique_ptr<wxMemoryInputStream> in = open_beside(location, name)) {
    animation.Load(*in, wxANIMATION_TYPE_ANY);
  }
  return animation;
}

void report_missing(const index_t& index, const std::string& location, const char* what,
                    const std::string& name) {
  if (index.read) {
    ylvane_1::log::write(ylvane_1::log::level_t::warn,
                         std::string(what) + " '" + name + "' not loaded from " + location);
  } else {
    ylvane_1::log::write(
        ylvane_1::log::level_t::warn,
        std::string(what) + " '" + name + "' not loaded: picture index not read: " + location);
  }
}

}  // namespace

image_loader_t::image_loader_t(const std::string& location) : m_location(location) {}

wxStaticPicture image_loader_t::load_static_picture(const std::string& name) const {
  if (m_location.empty()) {
    return wxStaticPicture();
  }
  wxLogNull quiet;  // missing pictures are reported once, below, not in wx's error boxes
  index_t& index = index_at(m_location);
  auto cached = index.pictures.find(name);
  if (cached == index.pictures.end()) {
    const auto file = index.bitmap_files.find(name);
    wxStaticPicture picture;
    if (file != index.bitmap_files.end()) {
      picture = read_picture(m_location, file->second);
    }
    if (picture.is_empty()) {
      report_missing(index, m_location, "picture", name);
    }
    cached = index.pictures.emplace(name, picture).first;
  }
  return cached->second;
}

wxAnimation image_loader_t::load_animation(const std::string& name) const {
  return load_animated_picture(name).get_animation();
}

picture_t image_loader_t::load_animated_picture(const std::string& name) const {
  if (m_location.empty()) {
    return picture_t();
  }
  wxLogNull quiet;
  index_t& index = index_at(m_location);
  auto cached = index.animations.find(name);
  if (cached == index.animations.end()) {
    const auto file = index.animation_files.find(name);
    picture_t animation;
    if (file != index.animation_files.end()) {
      animation = picture_t(read_animation(m_location, file->second),
                            read_animation(m_location, name_2x(file->second)));
    }
    if (!animation.is_animation()) {
      report_missing(index, m_location, "animation", name);
    }
    cached = index.animations.emplace(name, animation).first;
  }
  return cached->second;
}

}  // namespace plaxi1
