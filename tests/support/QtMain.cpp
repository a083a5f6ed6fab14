// The main function of test programs that need an application object. Windows are drawn in memory.
// Settings are in a temporary folder, so that no test reads or writes those of the user. The font
// is the same on every desktop.

#include <QApplication>
#include <QFont>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    qputenv("XDG_CONFIG_DIRS", settings.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", settings.path().toUtf8());
    const QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    return RUN_ALL_TESTS();
}
