#include "platform/Bundle.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(Bundle, theApplicationsOwnIsThere) {
    EXPECT_EQ(Bundle::main().displayName(), u"Daily Steps"_s);
    EXPECT_EQ(Bundle::main().identifier(), u"org.ambulet.DailySteps"_s);
}

}  // namespace
