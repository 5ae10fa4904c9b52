#include <quern2/storage.h>

#include <korvat2/bag_file.h>
#include <ylvane/log.h>

#include <glib.h>
#include <log4cplus/loggingmacros.h>

#include <sys/stat.h>

#include <atomic>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

namespace quern2 {
namespace {

std::string escape(const std::string& text) {
  std::string out;
  for (unsigned char c : text) {
    if (std::isalnum(c) || c == '-' || c == '_') {
      out += static_cast<char>(c);
    } else {
      char hex[4];
      std::snprintf(hex, sizeof hex, "%%%02X", c);
      out += hex;
    }
  }
  return out;
}

// The name of a child's folder or, with `extension`, of a key's file: the escaped text, or
// when that doesn't fit a file name, its start and a SHA-256 of the whole text. No escaped
// text holds a '~', so a shortened name is never another text's full name, and names that
// fitted keep their files.
std::string file_name_of(const std::string& text, const char* extension) {
  const std::size_t room = NAME_MAX - std::strlen(extension);
  std::string name = escape(text);
  if (name.size() <= room) {
    return name + extension;
  }
  gchar* digest = g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(text.data()),
                                              text.size());
  const std::string hash = std::string("~") + digest;
  g_free(digest);
  std::size_t cut = room - hash.size();
  // Never cut an escape in two.
  if (name[cut - 1] == '%') {
    cut -= 1;
  } else if (name[cut - 2] == '%') {
    cut -= 2;
  }
  return name.substr(0, cut) + hash + extension;
}

// mkdir -p; true when the folder exists afterwards, else false with errno telling why.
bool make_folders(const std::string& folder) {
  if (folder.empty()) {
    errno = ENOENT;
    return false;
  }
  if (korvat2::path_t::is_directory(folder)) {
    return true;
  }
  const std::string parent = korvat2::path_t(folder).get_branch();
  if (!parent.empty() && !make_folders(parent)) {
    return false;
  }
  if (::mkdir(folder.c_str(), 0777) == 0) {
    return true;
  }
  // EEXIST may be another maker's folder, or a plain file in the way.
  const int error = errno;
  if (korvat2::path_t::is_directory(folder)) {
    return true;
  }
  errno = error == EEXIST ? ENOTDIR : error;
  return false;
}

class file_storage_t final : public IGlobalStorage {
 public:
  explicit file_storage_t(korvat2::path_t folder) : m_folder(std::move(folder)) {}

  void add_ref() override { m_count.fetch_add(1, std::memory_order_relaxed); }
  void release() override {
    if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      delete this;
    }
  }

  korvat2::sptr_t<IPropertyStorage> getChild(const std::string& name) override {
    if (name.empty()) {
      return nullptr;
    }
    korvat2::path_t child = m_folder;
    child.append(korvat2::path_t(file_name_of(name, "")));
    return korvat2::sptr_t<IPropertyStorage>(new file_storage_t(child));
  }

  korvat2::variant_bag_t readBag(const std::string& key,
                                 const korvat2::variant_bag_t& default_bag) const override {
    const std::string file = file_of(key);
    korvat2::variant_bag_t bag;
    const korvat2::error_code_t result = korvat2::load_variant_bag(bag, file.c_str(), "");
    if (result.succeeded()) {
      return bag;
    }
    if (result != korvat2::error_code_t(korvat2::error::FileNotFound)) {
      LOG4CPLUS_WARN(ylvane_1::log::areaLogger(ylvane_1::log::area::storage),
                     "storage file " << file << " not read: " << result.as_string(0));
    }
    return default_bag;
  }

  korvat2::error_code_t writeBag(const std::string& key, const korvat2::variant_bag_t& bag) override {
    const std::string folder = m_folder.as_string(false);
    if (!make_folders(folder)) {
      LOG4CPLUS_ERROR(
          ylvane_1::log::areaLogger(ylvane_1::log::area::storage),
          "cannot write " << file_of(key) << ": folder " << folder << ": " << std::strerror(errno));
      return korvat2::error::FileWrite;
    }
    return korvat2::save_variant_bag(bag, file_of(key).c_str());
  }

  // Only a regular file (or a link to one) holds a bag: a folder in its place holds none.
  bool hasBag(const std::string& key) const override {
    struct stat info;
    return ::stat(file_of(key).c_str(), &info) == 0 && S_ISREG(info.st_mode);
  }

 private:
  std::string file_of(const std::string& key) const {
    korvat2::path_t file = m_folder;
    file.append(korvat2::path_t(file_name_of(key, ".bag")));
    return file.as_string(false);
  }

  korvat2::path_t m_folder;
  std::atomic<int> m_count{0};
};

}  // namespace

korvat2::sptr_t<IGlobalStorage> makeFileStorage(const korvat2::path_t& folder) {
  return korvat2::sptr_t<IGlobalStorage>(new file_storage_t(folder));
}

}  // namespace quern2
