#include <ombrelc7/object.h>

#include <gtest/gtest.h>

namespace {

struct ITest : ombrelc7::IObject {};

class counted_t : public ombrelc7::ref_counted<ITest> {
 public:
  explicit counted_t(bool* deleted) : m_deleted(deleted) {}
  ~counted_t() override { *m_deleted = true; }

 private:
  bool* m_deleted;
};

TEST(ombrelc_object_test, pointer_from_raw_takes_a_reference_and_the_last_release_deletes) {
  bool deleted = false;
  auto* raw = new counted_t(&deleted);
  {
    ombrelc7::ombrelc_ptr<counted_t> first(raw);
    EXPECT_EQ(raw->ref_count(), 1);
    {
      ombrelc7::ombrelc_ptr<counted_t> copy = first;
      EXPECT_EQ(raw->ref_count(), 2);
      ombrelc7::ombrelc_ptr<counted_t> moved = std::move(copy);
      EXPECT_EQ(raw->ref_count(), 2);
      EXPECT_FALSE(copy);
      EXPECT_EQ(moved.get(), raw);
    }
    EXPECT_EQ(raw->ref_count(), 1);
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(ombrelc_object_test, reset_and_assignment_release_the_old_object) {
  bool a_deleted = false;
  bool b_deleted = false;
  ombrelc7::ombrelc_ptr<counted_t> p(new counted_t(&a_deleted));
  ombrelc7::ombrelc_ptr<counted_t> q(new counted_t(&b_deleted));
  p = q;
  EXPECT_TRUE(a_deleted);
  EXPECT_EQ(q->ref_count(), 2);
  p.reset();
  EXPECT_FALSE(p);
  EXPECT_EQ(q->ref_count(), 1);
  const ombrelc7::ombrelc_ptr<counted_t>& same = q;
  q = same;  // self-assignment keeps the object
  EXPECT_FALSE(b_deleted);
  EXPECT_EQ(q->ref_count(), 1);
  ombrelc7::ombrelc_ptr<ITest> base = q;  // upcast shares the object
  EXPECT_EQ(q->ref_count(), 2);
  q.reset();
  base.reset();
  EXPECT_TRUE(b_deleted);
}

}  // namespace
