#include <drumlin2/collection_controller.h>
#include <fathel2/result_directory_manager.h>

#include <gtest/gtest.h>

namespace {

TEST(collection_controller_test, default_templates_pass_the_validator) {
  for (bool with_tag : {true, false}) {
    const char* templ = drumlin2::ICollectionController::getDefaultResultDirectoryName(with_tag);
    EXPECT_EQ(fathel2::ResultDirectoryManager::validateResultDirectoryPattern(templ), fathel2::error_none);
  }
}

TEST(collection_controller_test, tag_is_in_the_default_with_it_only) {
  EXPECT_STREQ(drumlin2::ICollectionController::getDefaultResultDirectoryName(true), "r@@@{at}");
  EXPECT_STREQ(drumlin2::ICollectionController::getDefaultResultDirectoryName(false), "r@@@");
}

}  // namespace
