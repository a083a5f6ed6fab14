#pragma once

#include "mainwindow/ControllerTest.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include <functional>

namespace ambulet {

/// A fixture for tests that choose a file in the controller's file dialog.
class DialogTest : public ControllerTest {
  protected:
    /// Opens the file dialog, calls `inspect` with the dialog, and then chooses `file`. Cancels the
    /// dialog if `file` is null.
    void choose(const QString& file, const std::function<void(QFileDialog&)>& inspect = {}) {
        bool answered = false;
        bool typed = false;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && typed) {
                ADD_FAILURE() << "the dialog is still open after the answer";
                dialog->reject();
            }
            if (dialog == nullptr || answered) {
                return;
            }
            answered = true;
            if (inspect) {
                inspect(*dialog);
            }
            if (file.isNull()) {
                dialog->reject();
                return;
            }
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(name, nullptr);
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
            typed = true;
        });
        answer.start(0);
        controller->chooseFileAction();
        EXPECT_TRUE(answered);
    }
};

}  // namespace ambulet
