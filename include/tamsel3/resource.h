#pragma once
#include <tamsel3/export.h>
#include <string>

namespace tamsel3 {

/// The location of `member` inside the resource archive `archive`, in the form of the
/// toolkit's zip file system: "<resource directory>/<archive>#zip:<member>".
TAMSEL3_API std::string create_resource_filename(const std::string& archive, const std::string& member);

}  // namespace tamsel3
