#include "widgets/StatusLabel.h"

#include <QAccessible>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

TEST(StatusLabel, assistiveProgramsSeeANotificationNamedByTheText) {
    StatusLabel label;
    label.announce(QStringLiteral("Loaded 3 days."));
    EXPECT_EQ(label.text(), QStringLiteral("Loaded 3 days."));
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(accessible->role(), QAccessible::Notification);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Loaded 3 days."));
}

}  // namespace

}  // namespace ambulet
