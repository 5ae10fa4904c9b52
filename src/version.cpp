#include <tamsel3/version.h>

namespace tamsel3 {

// Compiled from the library's own header, so that the answer is the library's version
// whatever header the caller saw.
version_t version() {
  return {TAMSEL3_VERSION_MAJOR, TAMSEL3_VERSION_MINOR, TAMSEL3_VERSION_PATCH, TAMSEL3_VERSION_STRING};
}

}  // namespace tamsel3
