#pragma once
// Product locations whose resources are the files of one folder, so that a test can give
// the library an archive of its choice, or none.
#include <quern2/product_locations.h>

#include <string>

namespace gui_test {

class folder_locations_t : public quern2::IProductLocations {
 public:
  explicit folder_locations_t(std::string dir) : m_dir(std::move(dir)) {}
  const char* getResourceDirectory() const override { return m_dir.c_str(); }
  const char* getProductText(int) const override { return "Tamsel"; }
  const char* getFeaturesDirectory() const override { return ""; }
  const char* getProductTag() const override { return "tam"; }
  int getProductGeneration() const override { return 12; }

 private:
  std::string m_dir;
};

}  // namespace gui_test
