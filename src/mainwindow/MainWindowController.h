#pragma once

#include "mainwindow/ExportFile.h"
#include "model/DailySteps.h"
#include "model/DisplayRow.h"
#include "text/DateFormatter.h"
#include "text/NumberFormatter.h"
#include "widgets/ClickableLabel.h"
#include "widgets/InPlaceField.h"
#include "widgets/TableView.h"
#include "widgets/TableViewDataSource.h"
#include "widgets/WindowController.h"

#include <QAbstractScrollArea>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPoint>
#include <QPointer>
#include <QProgressBar>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ambulet {

class Bundle;
class UserDefaults;

/// The one main window and everything that it shows: the loaded days, their rows, the remembered
/// file, the formatters through which every date and number reaches the screen.
///
/// The window is made from the interface description resources/MainWindowController.ui and owns its
/// views; the controller refers to them weakly, and does without those that are not there. Main
/// thread only: a file is read on a thread of its own, which knows nothing of the controller.
class MainWindowController final : public WindowController, public TableViewDataSource {
    Q_OBJECT

  public:
    /// Registers the default stride, reads the remembered path from the stored settings and makes
    /// the formatters. The settings and the bundle must outlive the controller.
    MainWindowController(UserDefaults& defaults, const Bundle& bundle);
    ~MainWindowController() override;

    // ---- the file: MainWindowController+Loading.cpp

    /// The file to load: the one that the bookmark leads to, else the one at the path; with it a
    /// fresh bookmark where the old one is stale. Asks the file system, which may hang, so it runs
    /// on the load's thread.
    static FoundFile resolvedFileURL(const RememberedFile& remembered);

    /// Starts finding and reading the remembered file on a thread of its own and returns at once.
    /// Each call is a load of its own, which runs to its end; the one that ends last decides what
    /// is shown.
    void loadData();

    /// Asks for an export file; remembers, shows and loads the one that is chosen.
    void chooseFileAction();

    /// The path of the remembered file.
    const std::optional<QString>& filePath() const { return _exportFile.path(); }

    // ---- days and rows: MainWindowController+Table.cpp

    /// The days of the loaded file, newest first.
    const std::vector<DailySteps>& allSteps() const { return _allSteps; }

    /// The table's rows: a month's summary above each month's days, newest first.
    const std::vector<DisplayRow>& displayRows() const { return _displayRows; }

    /// Makes the rows from the loaded days at the stride of now, and reloads the table. Neither the
    /// selection nor the statistics are touched.
    void rebuildDisplayRows();

    /// `days` grouped by runs of one month. The order is the given one: an unordered list gives a
    /// month as many rows as it has runs.
    std::vector<DisplayRow> buildDisplayRows(std::span<const DailySteps> days) const;

    /// The row of one month. `days`: the month's days, in list order; the title is the first one's
    /// date through `formatter`. `stride`: feet per step.
    static MonthSummary makeSummary(std::span<const DailySteps> days, double stride,
                                    const DateFormatter& formatter);

    int numberOfRowsInTableView() const override;
    bool isGroupRow(int row) const override;
    bool shouldSelectRow(int row) const override;
    QString objectValueForTableColumn(const QString& identifier, int row) const override;
    std::vector<int> rowsWithWidestTexts(const QString& identifier) const override;
    QString textOfEmptyTable() const override;
    void tableViewSelectionDidChange() override;

    // ---- statistics: MainWindowController+Statistics.cpp

    /// Shows the statistics of the selected days, or of all where nothing is selected.
    void recomputeStats();

    /// Shows the statistics of `steps`, newest first.
    void updateStatsForSteps(std::span<const DailySteps> steps);

    /// The instant at which the local calendar day of `date` begins; none where that day has no
    /// midnight.
    static std::optional<std::chrono::sys_seconds> startOfDay(std::chrono::sys_seconds date);

    // ---- the stride: MainWindowController+StrideEditor.cpp

    /// Opens the editor over the stride in the miles label, filled with the stored stride; fills it
    /// anew where it is open. While it is open it follows the label, and its text is left alone.
    /// Closing the window or quitting commits it.
    void strideDidClick();

    /// Stores the editor's number where it is greater than 0, closes the editor, and shows rows and
    /// statistics at the stride of then. Does nothing where the editor is closed.
    void commitStrideEdit();

    /// Closes the editor and stores nothing.
    void cancelStrideEdit();

    enum class EditorCommand { InsertNewline, CancelOperation };

    /// Return and Escape in the editor.
    void doCommandBySelector(EditorCommand command);

    /// The focus has left the editor for another control.
    void controlTextDidEndEditing();

    /// The editor of the stride; null before the window is loaded. It is visible while an edit is
    /// under way, and hidden else: nothing else holds that state.
    InPlaceField* strideEditor() const { return _strideEditor; }

    // ---- the window: MainWindowController+Window.cpp

    /// Gives the table its four columns in place of whatever it had.
    void setupTableColumns();

    // ---- the views, each null once it is gone

    TableView* tableView() const { return _tableView; }
    void setTableView(TableView* view) { _tableView = view; }
    QAbstractScrollArea* scrollView() const { return _scrollView; }
    void setScrollView(QAbstractScrollArea* view) { _scrollView = view; }
    QLabel* fromLabel() const { return _fromLabel; }
    void setFromLabel(QLabel* view) { _fromLabel = view; }
    QLabel* toLabel() const { return _toLabel; }
    void setToLabel(QLabel* view) { _toLabel = view; }
    QLabel* daysLabel() const { return _daysLabel; }
    void setDaysLabel(QLabel* view) { _daysLabel = view; }
    QLabel* totalLabel() const { return _totalLabel; }
    void setTotalLabel(QLabel* view) { _totalLabel = view; }
    QLabel* averageLabel() const { return _averageLabel; }
    void setAverageLabel(QLabel* view) { _averageLabel = view; }
    ClickableLabel* milesLabel() const { return _milesLabel; }
    void setMilesLabel(ClickableLabel* view) { _milesLabel = view; }
    QProgressBar* progressIndicator() const { return _progressIndicator; }
    void setProgressIndicator(QProgressBar* view) { _progressIndicator = view; }
    QLabel* statusLabel() const { return _statusLabel; }
    void setStatusLabel(QLabel* view) { _statusLabel = view; }
    QLineEdit* filePathField() const { return _filePathField; }
    void setFilePathField(QLineEdit* view) { _filePathField = view; }
    QFrame* separatorBox() const { return _separatorBox; }
    void setSeparatorBox(QFrame* view) { _separatorBox = view; }
    QWidget* controlsPanel() const { return _controlsPanel; }
    void setControlsPanel(QWidget* view) { _controlsPanel = view; }

  protected:
    std::unique_ptr<QWidget> loadWindow() override;
    void windowDidLoad() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// The result of a load.
    struct Load {
        FoundFile found;
        std::vector<DailySteps> days;
        DayOffsets offsets;  // at the start of each day
    };

    void makeStrideEditor();
    void setMiles(const QString& prefix, const QString& rest);
    void placeStrideEditor();
    void closeStrideEditor();
    void mouseDown(QPoint position);
    double strideFeet() const;
    void startProgress();
    void stopProgress();
    void didLoad(const RememberedFile& remembered, std::optional<Load> load);
    void showStatus(const QString& text);

    UserDefaults& _defaults;
    const Bundle& _bundle;

    std::vector<DailySteps> _allSteps;
    std::vector<DisplayRow> _displayRows;
    ExportFile _exportFile;
    DateFormatter _displayFormatter;
    NumberFormatter _stepsFormatter;
    NumberFormatter _milesFormatter;
    QPointer<InPlaceField> _strideEditor;
    QString _milesPrefix;  // the miles label's text up to the stride; empty where it shows none
    bool _strideEditorOpenedByKeyboard = false;

    QPointer<TableView> _tableView;
    QPointer<QAbstractScrollArea> _scrollView;
    QPointer<QLabel> _fromLabel;
    QPointer<QLabel> _toLabel;
    QPointer<QLabel> _daysLabel;
    QPointer<QLabel> _totalLabel;
    QPointer<QLabel> _averageLabel;
    QPointer<ClickableLabel> _milesLabel;
    QPointer<QProgressBar> _progressIndicator;
    QPointer<QLabel> _statusLabel;
    QPointer<QLineEdit> _filePathField;
    QPointer<QFrame> _separatorBox;
    QPointer<QWidget> _controlsPanel;
};

}  // namespace ambulet
