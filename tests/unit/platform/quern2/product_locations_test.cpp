#include <quern2/product_locations.h>

#include "fixtures.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using quern2::DefaultProductLocations;
using quern2::IProductLocations;
using test_support::scoped_env_t;
using test_support::temp_dir_t;

// Every test starts and ends with a fresh default object made from the environment.
class product_locations_test : public ::testing::Test {
 protected:
  void SetUp() override { IProductLocations::set(nullptr); }
  void TearDown() override { IProductLocations::set(nullptr); }
};

class host_locations_t : public IProductLocations {
 public:
  const char* getResourceDirectory() const override { return "/host/resources"; }
  const char* getProductText(int kind) const override { return kind == 0 ? "Host Product" : ""; }
  const char* getFeaturesDirectory() const override { return "/host/features"; }
  const char* getProductTag() const override { return "hst"; }
  int getProductGeneration() const override { return 7; }
};

TEST_F(product_locations_test, default_locations_are_there_without_a_host) {
  IProductLocations* locations = IProductLocations::get();
  ASSERT_NE(locations, nullptr);
  EXPECT_NE(dynamic_cast<DefaultProductLocations*>(locations), nullptr);
  EXPECT_EQ(IProductLocations::get(), locations);  // one object while nothing changes
}

TEST_F(product_locations_test, environment_overrides_the_resource_folder) {
  const temp_dir_t dir;
  ASSERT_FALSE(dir.path().empty());
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", dir.path());
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), dir.path().c_str());
}

TEST_F(product_locations_test, overridden_resource_folder_is_taken_as_given) {
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", std::string("/no/such/folder/anywhere"));
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), "/no/such/folder/anywhere");
}

TEST_F(product_locations_test, resource_folder_without_override_is_not_empty) {
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR");
  resource_dir.unset();
  IProductLocations::set(nullptr);
  const std::string dir = IProductLocations::get()->getResourceDirectory();
  EXPECT_FALSE(dir.empty());
  resource_dir.set("");  // an empty value is no override
  IProductLocations::set(nullptr);
  EXPECT_EQ(IProductLocations::get()->getResourceDirectory(), dir);
}

TEST_F(product_locations_test, default_object_reads_the_environment_when_made) {
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", std::string("/first/folder"));
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), "/first/folder");
  resource_dir.set("/second/folder");
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), "/first/folder");
  IProductLocations::set(nullptr);  // a new default object reads it again
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), "/second/folder");
}

TEST_F(product_locations_test, host_replaces_the_default_and_null_restores_it) {
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", std::string("/default/folder"));
  host_locations_t host;
  IProductLocations::set(&host);
  EXPECT_EQ(IProductLocations::get(), &host);
  EXPECT_STREQ(IProductLocations::get()->getResourceDirectory(), "/host/resources");
  EXPECT_STREQ(IProductLocations::get()->getProductTag(), "hst");
  IProductLocations::set(nullptr);
  IProductLocations* restored = IProductLocations::get();
  EXPECT_NE(restored, &host);
  EXPECT_NE(dynamic_cast<DefaultProductLocations*>(restored), nullptr);
  EXPECT_STREQ(restored->getResourceDirectory(), "/default/folder");
}

TEST_F(product_locations_test, later_host_replaces_an_earlier_one) {
  host_locations_t first, second;
  IProductLocations::set(&first);
  IProductLocations::set(&second);
  EXPECT_EQ(IProductLocations::get(), &second);
}

TEST_F(product_locations_test, product_texts_of_known_kinds_are_not_empty) {
  const IProductLocations* locations = IProductLocations::get();
  for (int kind : {IProductLocations::text_full_name, IProductLocations::text_version,
                   IProductLocations::text_vendor, IProductLocations::text_copyright,
                   IProductLocations::text_message_title, IProductLocations::text_short_name}) {
    const char* text = locations->getProductText(kind);
    ASSERT_NE(text, nullptr) << kind;
    EXPECT_STRNE(text, "") << kind;
  }
  EXPECT_EQ(IProductLocations::text_full_name, 0);
  EXPECT_EQ(IProductLocations::text_message_title, 4);
  EXPECT_EQ(IProductLocations::text_short_name, 5);
}

TEST_F(product_locations_test, product_text_of_an_unknown_kind_is_empty) {
  const IProductLocations* locations = IProductLocations::get();
  for (int kind : {-1, 6, 42, 1000}) {
    const char* text = locations->getProductText(kind);
    ASSERT_NE(text, nullptr) << kind;
    EXPECT_STREQ(text, "") << kind;
  }
}

TEST_F(product_locations_test, product_tag_and_generation) {
  EXPECT_STREQ(IProductLocations::get()->getProductTag(), "tam");
  EXPECT_EQ(IProductLocations::get()->getProductGeneration(), 12);
}

TEST_F(product_locations_test, features_folder_lies_in_the_user_configuration) {
  scoped_env_t config_home("XDG_CONFIG_HOME", std::string("/tmp/some_config_home"));
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getFeaturesDirectory(), "/tmp/some_config_home/tamsel3/features");
}

TEST_F(product_locations_test, features_folder_without_absolute_config_home_is_under_home) {
  scoped_env_t config_home("XDG_CONFIG_HOME");
  scoped_env_t home("HOME", std::string("/tmp/some_home"));
  config_home.unset();
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getFeaturesDirectory(), "/tmp/some_home/.config/tamsel3/features");
  config_home.set("relative/config");
  IProductLocations::set(nullptr);
  EXPECT_STREQ(IProductLocations::get()->getFeaturesDirectory(), "/tmp/some_home/.config/tamsel3/features");
}

TEST_F(product_locations_test, default_object_made_directly_answers_like_the_process_one) {
  scoped_env_t resource_dir("TAMSEL3_RESOURCE_DIR", std::string("/direct/folder"));
  const DefaultProductLocations direct;
  EXPECT_STREQ(direct.getResourceDirectory(), "/direct/folder");
  EXPECT_STREQ(direct.getProductText(IProductLocations::text_message_title),
               IProductLocations::get()->getProductText(IProductLocations::text_message_title));
}

}  // namespace
