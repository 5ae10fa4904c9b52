#include <tamsel3/resource.h>

#include <korvat2/path.h>
#include <quern2/product_locations.h>

#include <gtest/gtest.h>

namespace {

class fixed_locations_t : public quern2::IProductLocations {
 public:
  const char* getResourceDirectory() const override { return "/opt/tool/share"; }
  const char* getProductText(int) const override { return ""; }
  const char* getFeaturesDirectory() const override { return ""; }
  const char* getProductTag() const override { return ""; }
  int getProductGeneration() const override { return 0; }
};

TEST(resource_test, names_a_member_of_an_archive_in_the_resource_directory) {
  fixed_locations_t locations;
  quern2::IProductLocations::set(&locations);
  EXPECT_EQ(tamsel3::create_resource_filename("tamsel3.dat", "tamsel.xrc"),
            "/opt/tool/share/tamsel3.dat#zip:tamsel.xrc");
  EXPECT_EQ(tamsel3::create_resource_filename("tamsel3.dat", "tamsel_images.xrc"),
            "/opt/tool/share/tamsel3.dat#zip:tamsel_images.xrc");
  quern2::IProductLocations::set(nullptr);
}

TEST(resource_test, default_resource_directory_holds_the_catalogs) {
  const std::string name = tamsel3::create_resource_filename("tamsel3.dat", "tamsel.xrc");
  const std::string dir = name.substr(0, name.find("/tamsel3.dat#zip:"));
  EXPECT_TRUE(korvat2::path_t::exists(dir + "/catalogs/tamsel/en.po")) << dir;
}

}  // namespace
