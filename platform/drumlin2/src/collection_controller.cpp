#include <drumlin2/collection_controller.h>

namespace drumlin2 {

ICollectionController::~ICollectionController() = default;

const char* ICollectionController::getDefaultResultDirectoryName(bool with_analysis_tag) {
  // Three digits keep a thousand results in name order, and the tag tells them apart.
  return with_analysis_tag ? "r@@@{at}" : "r@@@";
}

}  // namespace drumlin2
