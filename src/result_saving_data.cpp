#include <tamsel3/result_saving_data.h>

#include <utility>

namespace tamsel3 {

result_saving_data_t::result_saving_data_t(temp_storing_t temp_storing, project_storing_t proj_storing,
                                           bool vs_accessibility, std::string name_template,
                                           std::string folder)
    : m_temp_storing(temp_storing),
      m_proj_storing(proj_storing),
      m_vs_accessibility(vs_accessibility),
      m_name_template(std::move(name_template)),
      m_folder(std::move(folder)) {}

}  // namespace tamsel3
