#include "widgets/PathField.h"

#include <QTest>
#include <QTextDocument>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

QImage picture(PathField& field) {
    return field.grab().toImage();
}

TEST(PathField, theUserCannotEditThePath) {
    PathField field;
    field.setText(QStringLiteral("/tmp/export.xml"));
    field.show();
    field.setFocus();
    QTest::keyClicks(&field, QStringLiteral("abc"));
    EXPECT_EQ(field.text(), QStringLiteral("/tmp/export.xml"));
}

TEST(PathField, theTooltipHasTheWholePath) {
    PathField field;
    const QString path = QStringLiteral("/home/someone/") + QString(300, u'x');
    field.setText(path);
    EXPECT_EQ(field.toolTip(), path);
}

// Qt renders a tooltip that looks like HTML as HTML.
TEST(PathField, theTooltipShowsAPathThatLooksLikeHTMLUnchanged) {
    PathField field;
    const QString path = QStringLiteral("/home/a <b>bold</b>  &lt; name/<br>/export.xml");
    ASSERT_TRUE(Qt::mightBeRichText(path));
    field.setText(path);
    QTextDocument shown;
    ASSERT_TRUE(Qt::mightBeRichText(field.toolTip()));
    shown.setHtml(field.toolTip());
    EXPECT_EQ(shown.toPlainText(), path);
}

// The field is far too short for the paths. If paths look different although they differ only in
// their last letters, the end is shown. The same holds for the start. If paths look equal although
// they differ only in the middle, the middle is not shown.
TEST(PathField, aLongPathIsShownWithoutItsMiddle) {
    PathField field;
    field.resize(200, 30);
    const QString middle(300, u'-');
    field.setText(u'a' + middle + u'a');
    const QImage first = picture(field);
    field.setText(u'a' + middle + u'b');
    EXPECT_NE(picture(field), first);
    field.setText(u'b' + middle + u'a');
    EXPECT_NE(picture(field), first);
    field.setText(u'a' + middle + u'.' + middle + u'a');
    EXPECT_EQ(picture(field), first);
}

}  // namespace

}  // namespace ambulet
