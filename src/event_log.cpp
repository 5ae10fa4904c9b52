#include <tamsel3/event_log.h>
#include <tamsel3/resource.h>

#include <a11y/accessible.h>
#include <ombrelc/ombrelc.h>
#include <plaxi1/image_loader.h>

namespace tamsel3 {

event_log_t::event_log_t() : CEventLog(nullptr, ombrelc7::size<int>(20, 20), ombrelc7::alClient) {
  SetLive(a11y::politeness_t::polite);
}

void event_log_t::DescribeAccessible(a11y::info_t& info) const {
  info.role = a11y::role_t::panel;
  info.name = "Messages";
}

event_log_t::~event_log_t() = default;

void event_log_t::prepare_image_list(ombrelc7::IImageList* list) {
  plaxi1::image_loader_t loader(create_resource_filename("tamsel3.dat", "tamsel_images.xrc"));
  if (loader.get_location().empty()) {
    return;
  }
  m_error_image = add_image(list, "error12", loader);
  m_warning_image = add_image(list, "warning12", loader);
  m_info_image = add_image(list, "info12", loader);
  m_empty_image = add_image(list, "empty12", loader);
}

int event_log_t::add_image(ombrelc7::IImageList* list, const std::string& name,
                           plaxi1::image_loader_t& loader) {
  const plaxi1::wxStaticPicture picture = loader.load_static_picture(name);
  if (picture.is_empty() || !list) {
    return -1;
  }
  ombrelc7::ombrelc_ptr<ombrelc7::IRasterPicture> raster =
      ombrelc7::GetCurrentSystem()->CreateRasterPicture(ombrelc7::size<int>(1, 1));
  ombrelc7::Bitmap2RasterPicture(picture.getBitmap(true), raster.get());
  return list->Add(raster.get(), wxColour());
}

int event_log_t::get_image_for(pelit2::ESeverity severity) const {
  const int bits = static_cast<int>(severity);
  if (bits & (pelit2::severity_error | pelit2::severity_critical)) {
    return m_error_image;
  }
  if (bits & pelit2::severity_warning) {
    return m_warning_image;
  }
  return m_empty_image;
}

}  // namespace tamsel3
