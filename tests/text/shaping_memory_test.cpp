#include <gtest/gtest.h>

#include <new>

#include "platform/minikin/sample_text.h"
#include "support/failing_alloc.h"

namespace {

using QxFontEffect::test::FailingAlloc;

std::unique_ptr<android::Typeface> freshTypeface() {
    const std::vector<char>& bytes = testsupport::fontBytes("Roboto-Regular.ttf");
    return sample::typefaceOf(
        {sample::familyOf(sample::fontOf(sample::openBytes(bytes), bytes, "Roboto-Regular.ttf"))});
}

float widthOf(const android::Typeface& typeface) {
    const uint16_t text[] = {'A', 'g', '!'};
    android::Paint paint;
    paint.getSkFont().setSize(32);
    return android::MinikinUtils::doLayout(&paint, minikin::Bidi::DEFAULT_LTR, &typeface, text, 3, 0, 3, 0, 3, nullptr)
        .getAdvance();
}

// Each font is gone after its round, so that a leak checker sees what the shaper still holds of it.
TEST(ShapingMemory, ALayoutThatRunsOutOfMemoryThrowsAndLeavesNothingBehind) {
    const float whole = widthOf(*freshTypeface());
    ASSERT_GT(whole, 0.0f);
    for (int n = 0;; ++n) {
        const auto typeface = freshTypeface();
        bool refused = false, thrown = false;
        float width = 0.0f;
        {
            FailingAlloc failing(n);
            try {
                width = widthOf(*typeface);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            refused = failing.refused();
        }
        if (!refused) {
            EXPECT_GT(n, 10);
            break;
        }
        EXPECT_TRUE(thrown || width == whole) << "request " << n;
        EXPECT_EQ(whole, widthOf(*typeface)) << "after request " << n;
    }
}

}  // namespace
