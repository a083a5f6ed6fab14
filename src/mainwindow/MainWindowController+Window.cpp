// Creating the window, and the event filter.

#include "mainwindow/MainWindowController.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"
#include "ui_MainWindowController.h"
#include "widgets/RememberedFrame.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

namespace ambulet {

namespace {

bool isControl(const QWidget* view) {
    return qobject_cast<const QLabel*>(view) != nullptr ||
           qobject_cast<const QAbstractButton*>(view) != nullptr ||
           qobject_cast<const QLineEdit*>(view) != nullptr;
}

// Whether `key` is a repetition of a held key that triggers actions. The first press may have moved
// the focus to a view that would act on the same key again.
bool isHeldActionKey(const QKeyEvent& key) {
    return key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter ||
                                  key.key() == Qt::Key_Escape || key.key() == Qt::Key_Space);
}

}  // namespace

std::unique_ptr<QWidget> MainWindowController::loadWindow() {
    auto loaded = std::make_unique<QMainWindow>();
    Ui::MainWindowController views;
    views.setupUi(loaded.get());

    setTableView(views.tableView);
    setScrollView(views.tableView);
    setFromLabel(views.fromLabel);
    setToLabel(views.toLabel);
    setDaysLabel(views.daysLabel);
    setTotalLabel(views.totalLabel);
    setAverageLabel(views.averageLabel);
    setMilesLabel(views.milesLabel);
    setProgressIndicator(views.progressIndicator);
    setStatusLabel(views.statusLabel);
    setFilePathField(views.filePathField);
    setSeparatorBox(views.separatorBox);
    setControlsPanel(views.controlsPanel);
    views.tableView->setDataSource(this);
    connect(views.chooseButton, &QPushButton::clicked, this,
            &MainWindowController::chooseFileAction);
    return loaded;
}

void MainWindowController::windowDidLoad() {
    window()->setWindowTitle(_bundle.displayName() + QStringLiteral(" — Ambulet"));
    if (_filePathField) {
        _filePathField->setText(filePath().value_or(QString()));
    }
    setupTableColumns();
    makeStrideEditor();
    const QString frameKey = window()->property("frameAutosaveName").toString();
    RememberedFrame::attach(*window(), _defaults.data(frameKey),
                            [&defaults = _defaults, frameKey](const QByteArray& frame) {
                                defaults.setData(frameKey, frame);
                            });
    if (_tableView) {
        _tableView->setFocus();  // draws no outline: the window is not active yet
    }
    qApp->installEventFilter(this);
    loadData();
}

// Called for every event of the main thread's objects, before the object gets the event. Mouse and
// key presses are observed at the QWindow, which gets each press once, whereas a widget that
// ignores a press passes it to its parent. The QWindow also gets mouse presses while a menu is
// open; they do not clear the selection.
bool MainWindowController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == nullptr) {
        return false;
    }
    const QEvent::Type type = event->type();
    if (watched->isWindowType()) {
        if (watched == window()->windowHandle()) {
            if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
                const auto* const press = static_cast<QMouseEvent*>(event);
                if (press->button() == Qt::LeftButton &&
                    QApplication::activePopupWidget() == nullptr) {
                    mouseDown(press->position().toPoint());
                }
            } else if (type == QEvent::KeyPress) {
                return isHeldActionKey(*static_cast<QKeyEvent*>(event));
            }
        }
    } else if (watched == window() && type == QEvent::Close) {
        commitStrideEdit();
    } else if (changesPlaceOfEditor(type, watched)) {
        placeStrideEditor();
    }
    return WindowController::eventFilter(watched, event);
}

// Compares the type first, because comparing a QPointer casts the label, and while the label is
// destroyed, the cast is undefined.
bool MainWindowController::changesPlaceOfEditor(QEvent::Type type, const QObject* watched) const {
    switch (type) {
    case QEvent::Move:
    case QEvent::Resize:
        return watched == _milesLabel;
    case QEvent::FontChange:
        return watched == _milesLabel || watched == _strideEditor;
    case QEvent::StyleChange:
        return watched == _strideEditor;
    default:
        return false;
    }
}

// `position`: in the window's coordinates.
void MainWindowController::mouseDown(QPoint position) {
    const auto* const content = qobject_cast<QMainWindow*>(window())->centralWidget();
    const QPoint point = content->mapFrom(window(), position);
    if (!_tableView || !content->rect().contains(point) ||
        (_scrollView && _scrollView->geometry().contains(point))) {
        return;
    }
    for (const QWidget* hit = content->childAt(point); hit != nullptr && hit != content;
         hit = hit->parentWidget()) {
        if (isControl(hit)) {
            return;
        }
    }
    _tableView->deselectAll();
}

void MainWindowController::setupTableColumns() {
    if (!_tableView) {
        return;
    }
    _tableView->setColumns({
        {QStringLiteral("date"), QStringLiteral("Date"), 170, 80, Qt::AlignLeading},
        {QStringLiteral("steps"), QStringLiteral("Steps"), 110, 60, Qt::AlignRight},
        {QStringLiteral("avgSteps"), QStringLiteral("Daily Steps"), 160, 80, Qt::AlignRight},
        {QStringLiteral("avgMiles"), QStringLiteral("Daily Miles"), 160, 80, Qt::AlignRight},
    });
}

}  // namespace ambulet
