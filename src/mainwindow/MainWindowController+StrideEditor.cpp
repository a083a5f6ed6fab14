// The editor that opens over the stride in the miles label.

#include "mainwindow/MainWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/UserDefaults.h"
#include "text/Numbers.h"
#include "text/TwoDecimals.h"

#include <QApplication>
#include <QStyleOptionFrame>

#include <algorithm>
#include <cmath>

namespace ambulet {

namespace {

constexpr int leastEditorWidth = 60;
constexpr int editorRise = 3;  // how far the editor's top is above the label's

// The width of an editor in which a stride below 10 with four decimals fits.
int widthOfEditor(const QLineEdit& editor) {
    constexpr int textMargin = 2;  // of QLineEdit, on each side of the text
    constexpr int cursor = 1;
    const QFontMetrics metrics(editor.font());
    const int text = metrics.horizontalAdvance(QStringLiteral("0.0000")) + cursor;
    QStyleOptionFrame option;
    option.initFrom(&editor);
    option.lineWidth = editor.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &editor);
    const QSize size = editor.style()->sizeFromContents(
        QStyle::CT_LineEdit, &option, QSize(text + 2 * textMargin, metrics.height()), &editor);
    return std::max(leastEditorWidth, size.width());
}

}  // namespace

void MainWindowController::makeStrideEditor() {
    if (_controlsPanel) {
        _strideEditor = new InPlaceField(_controlsPanel);
        _strideEditor->setAccessibleName(QStringLiteral("Stride length in feet"));
        _strideEditor->hide();
        connect(_strideEditor, &InPlaceField::insertNewline, this,
                [this] { doCommandBySelector(EditorCommand::InsertNewline); });
        connect(_strideEditor, &InPlaceField::cancelOperation, this,
                [this] { doCommandBySelector(EditorCommand::CancelOperation); });
        connect(_strideEditor, &InPlaceField::didEndEditing, this,
                &MainWindowController::controlTextDidEndEditing);
        connect(qApp, &QCoreApplication::aboutToQuit, this,
                &MainWindowController::commitStrideEdit);
    }
    if (_milesLabel) {
        _milesLabel->setToolTip(QStringLiteral("Click to edit stride length"));
        connect(_milesLabel, &ClickableLabel::clicked, this, &MainWindowController::strideDidClick);
        if (_strideEditor) {
            QWidget::setTabOrder(_milesLabel, _strideEditor);
        }
    }
}

void MainWindowController::strideDidClick() {
    if (!_strideEditor) {
        return;
    }
    if (_strideEditor->isHidden()) {
        _strideEditorOpenedByKeyboard = _milesLabel && _milesLabel->hasFocus();
    }
    _strideEditor->setText(QString::fromStdString(twoDecimals(strideFeet())));
    _strideEditor->show();
    placeStrideEditor();
    _strideEditor->setFocus();
    _strideEditor->selectAll();
}

// Moves the open editor over the stride. The label draws only the text before the stride meanwhile,
// because the editor may not cover all of the rest.
void MainWindowController::placeStrideEditor() {
    if (!_strideEditor || _strideEditor->isHidden()) {
        return;
    }
    // For an editor without a label: the panel's lower left corner.
    QRect frame(0, _strideEditor->parentWidget()->height(), 0, 0);
    if (_milesLabel) {
        const double prefix = QFontMetricsF(_milesLabel->font()).horizontalAdvance(_milesPrefix);
        frame = _milesLabel->geometry();
        frame.moveLeft(frame.left() + static_cast<int>(std::ceil(prefix)));
        _milesLabel->setDrawnLength(_milesPrefix.size());
    }
    frame.moveTop(frame.top() - editorRise);
    frame.setWidth(widthOfEditor(*_strideEditor));
    _strideEditor->setGeometry(frame);
}

void MainWindowController::commitStrideEdit() {
    if (!_strideEditor || _strideEditor->isHidden()) {
        return;
    }
    const double stride = doubleValue(_strideEditor->text().toStdString());
    if (stride > 0) {
        _defaults.setDouble(SettingsKeys::strideFootLength, stride);
    }
    closeStrideEditor();
    rebuildDisplayRows();
    recomputeStats();
}

void MainWindowController::cancelStrideEdit() {
    closeStrideEditor();
}

// Hiding the field ends the edit without a signal, so that closing alone stores nothing.
void MainWindowController::closeStrideEditor() {
    if (!_strideEditor) {
        return;
    }
    const bool hadFocus = _strideEditor->hasFocus();
    _strideEditor->hide();
    if (_milesLabel) {
        _milesLabel->setDrawnLength(std::nullopt);
    }
    if (!hadFocus) {
        return;  // the focus is elsewhere already
    }
    if (_strideEditorOpenedByKeyboard && _milesLabel) {
        _milesLabel->setFocus(Qt::ShortcutFocusReason);
    } else if (_tableView) {
        _tableView->setFocus(Qt::ShortcutFocusReason);
    }
}

void MainWindowController::doCommandBySelector(EditorCommand command) {
    switch (command) {
    case EditorCommand::InsertNewline:
        commitStrideEdit();
        break;
    case EditorCommand::CancelOperation:
        cancelStrideEdit();
        break;
    }
}

void MainWindowController::controlTextDidEndEditing() {
    commitStrideEdit();
}

}  // namespace ambulet
