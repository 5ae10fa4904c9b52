#include <tamsel3/resource.h>

#include <quern2/product_locations.h>

namespace tamsel3 {

std::string create_resource_filename(const std::string& archive, const std::string& member) {
  return std::string(quern2::IProductLocations::get()->getResourceDirectory()) + "/" + archive +
         "#zip:" + member;
}

}  // namespace tamsel3
