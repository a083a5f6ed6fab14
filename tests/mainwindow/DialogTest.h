#pragma once

#include "mainwindow/ControllerTest.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

#include <functional>

namespace ambulet {

/// A controller whose open dialog is answered.
class DialogTest : public ControllerTest {
  protected:
    /// Answers the open dialog with `file`, or cancels it where that is null, and calls `inspect`
    /// with the dialog first. The dialog is the real one.
    void choose(const QString& file, const std::function<void(QFileDialog&)>& inspect = {}) {
        bool answered = false;
        bool typed = false;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && typed) {
                ADD_FAILURE() << "the dialog is open after the answer";
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
