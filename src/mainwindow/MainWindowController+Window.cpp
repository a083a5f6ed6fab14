// Bringing the window up.

#include "mainwindow/MainWindowController.h"
#include "platform/Bundle.h"
#include "ui_MainWindowController.h"

#include <QMainWindow>
#include <QPushButton>

std::unique_ptr<QWidget> MainWindowController::loadWindow() {
    auto window = std::make_unique<QMainWindow>();
    Ui::MainWindowController views;
    views.setupUi(window.get());

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
    return window;
}

void MainWindowController::windowDidLoad() {
    window()->setWindowTitle(_bundle.displayName() + QStringLiteral(" — Ambulet"));
    if (_filePathField) {
        _filePathField->setText(_filePath.value_or(QString()));
    }
    setupTableColumns();
    loadData();
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
