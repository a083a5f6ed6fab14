// Bringing the window up, and the click that clears the selection.

#include "mainwindow/MainWindowController.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"
#include "ui_MainWindowController.h"
#include "widgets/RememberedFrame.h"

#include <QApplication>
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
    // The interface description names the settings' key.
    const QString frameKey = window()->property("frameAutosaveName").toString();
    RememberedFrame::attach(*window(), _defaults.data(frameKey),
                            [&defaults = _defaults, frameKey](const QByteArray& frame) {
                                defaults.setData(frameKey, frame);
                            });
    qApp->installEventFilter(this);
    loadData();
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
