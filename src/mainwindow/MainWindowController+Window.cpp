// Bringing the window up, the click that clears the selection, the window's place and size.

#include "mainwindow/MainWindowController.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"
#include "ui_MainWindowContent.h"
#include "ui_MainWindowController.h"
#include "widgets/ScreenFit.h"

#include <QApplication>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

#include <chrono>

namespace ambulet {

namespace {

// How long the window must have stayed where it is before that is remembered: a drag moves it many
// times a second, and each time would be written to the disk.
constexpr std::chrono::milliseconds frameRest(500);

bool isControl(const QWidget* view) {
    return qobject_cast<const QLabel*>(view) != nullptr ||
           qobject_cast<const QAbstractButton*>(view) != nullptr ||
           qobject_cast<const QLineEdit*>(view) != nullptr;
}

// The interface description names the settings' key.
QString frameKey(const QWidget* window) {
    return window->property("frameAutosaveName").toString();
}

}  // namespace

QWidget* MainWindowController::emptyWindow() {
    if (isWindowLoaded()) {
        return window();
    }
    if (!_emptyWindow) {
        _emptyWindow = std::make_unique<QMainWindow>();
        Ui::MainWindowController().setupUi(_emptyWindow.get());
        _emptyWindow->setWindowTitle(_bundle.displayName() + QStringLiteral(" — Ambulet"));
        restoreFrame(*_emptyWindow);
    }
    return _emptyWindow.get();
}

std::unique_ptr<QWidget> MainWindowController::loadWindow() {
    emptyWindow();
    auto* const content = new QWidget;
    Ui::MainWindowContent views;
    views.setupUi(content);
    _emptyWindow->setCentralWidget(content);

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
    return std::move(_emptyWindow);
}

void MainWindowController::windowDidLoad() {
    if (_filePathField) {
        _filePathField->setText(_filePath.value_or(QString()));
    }
    setupTableColumns();
    makeStrideEditor();
    _frameTimer.setSingleShot(true);
    _frameTimer.setInterval(frameRest);
    connect(&_frameTimer, &QTimer::timeout, this, &MainWindowController::saveFrame);
    qApp->installEventFilter(this);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &MainWindowController::saveFrame);
    if (window()->isVisible()) {
        catchUpWithShowing();
    }
    loadData();
}

// The window was shown before it had anything in it: what comes with its showing is done now. Of
// the focus the toolkit thinks only when a window becomes active.
void MainWindowController::catchUpWithShowing() {
    qobject_cast<QMainWindow*>(window())->centralWidget()->show();
    if (window()->windowHandle()->isExposed()) {
        _fittedOnScreen = true;
        fitOnScreen(*window());
    }
    QWidget* first = window();
    do {
        first = first->nextInFocusChain();
    } while (first != window() && (first->focusPolicy() & Qt::TabFocus) == 0);
    first->setFocus(Qt::ActiveWindowFocusReason);
    _frameTimer.start();
}

// Every press of the primary button in the application passes here before any view sees it; none is
// swallowed. It is the window that is watched and not its views: a press that a view does not want
// comes again for the view around it, and one while a menu is open comes for the window, too.
bool MainWindowController::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == window()->windowHandle() && watched != nullptr &&
        (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)) {
        const auto* const press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::LeftButton && QApplication::activePopupWidget() == nullptr) {
            mouseDown(press->position().toPoint());
        }
    } else if (watched == window()->windowHandle() && type == QEvent::Expose && !_fittedOnScreen) {
        _fittedOnScreen = true;
        fitOnScreen(*window());
    } else if (watched == window() && type == QEvent::Close) {
        saveFrame();
    } else if (watched == window() && (type == QEvent::Move || type == QEvent::Resize)) {
        _frameTimer.start();
    }
    return WindowController::eventFilter(watched, event);
}

// `position`: in the window's content.
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

void MainWindowController::restoreFrame(QWidget& window) const {
    if (const auto frame = _defaults.data(frameKey(&window))) {
        window.restoreGeometry(*frame);  // brings it back onto a screen that is there
    }
}

void MainWindowController::saveFrame() {
    const QByteArray frame = window()->saveGeometry();
    if (_defaults.data(frameKey(window())) != frame) {
        _defaults.setData(frameKey(window()), frame);
    }
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
