#pragma once

#include "mainwindow/ExportFile.h"
#include "model/DailySteps.h"
#include "model/DisplayRow.h"
#include "text/DateFormatter.h"
#include "text/NumberFormatter.h"
#include "widgets/ClickableLabel.h"
#include "widgets/InPlaceField.h"
#include "widgets/StatusLabel.h"
#include "widgets/TableView.h"
#include "widgets/TableViewDataSource.h"
#include "widgets/WindowController.h"

#include <QAbstractScrollArea>
#include <QEvent>
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

/// The controller of the main window. It holds the loaded days, their rows, the remembered file,
/// and the formatters for dates and numbers.
///
/// The window is made from the interface description resources/MainWindowController.ui and owns its
/// views. The controller has weak references to the views, and works without those that do not
/// exist.
///
/// Main thread only, except for `resolvedFileURL`. Files are read on other threads, which do not
/// use the controller.
class MainWindowController final : public WindowController, public TableViewDataSource {
    Q_OBJECT

  public:
    /// Registers the default stride, reads the remembered path from the stored settings and makes
    /// the formatters. The settings and the bundle must outlive the controller.
    MainWindowController(UserDefaults& defaults, const Bundle& bundle);
    ~MainWindowController() override;

    // ---- the file: MainWindowController+Loading.cpp

    /// The file to load, as `findFile` returns it. Accesses the file system, which may hang, so a
    /// load calls it on its own thread.
    static FoundFile resolvedFileURL(const RememberedFile& remembered);

    /// Starts a load and returns at once. After the first painting of the window, the load starts a
    /// thread, which finds and reads the remembered file. Then the result is shown. If no file is
    /// remembered, the status says so. Loads may overlap; no load is cancelled, and the window
    /// keeps the result of the load that ends last.
    void loadData();

    /// Asks the user for an export file. If one is chosen, remembers it, shows its path, removes
    /// the earlier days and starts a load.
    void chooseFileAction();

    /// The path of the remembered file. Empty if none is remembered.
    const std::optional<QString>& filePath() const { return _exportFile.path(); }

    // ---- days and rows: MainWindowController+Table.cpp

    /// The days of the loaded file, newest first.
    const std::vector<DailySteps>& allSteps() const { return _allSteps; }

    /// The table's rows: for each month, its summary and then its days. Newest first.
    const std::vector<DisplayRow>& displayRows() const { return _displayRows; }

    /// Makes the rows from the loaded days with the current stride, and reloads the table. The
    /// selected row indexes stay, as far as they exist. The statistics are not updated.
    void rebuildDisplayRows();

    /// The rows for `days`: a month row before each run of days of the same month. The order is
    /// kept, so a month may have several rows if the days are not sorted.
    std::vector<DisplayRow> buildDisplayRows(std::span<const DailySteps> days) const;

    /// The row of one month. `days`: the days of the month. `stride`: feet per step. The title is
    /// the date of the first day, formatted by `formatter`; empty without that date.
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

    /// Shows the statistics of the selected days, or of all days if nothing is selected.
    void recomputeStats();

    /// Shows the statistics of the days `steps`, which should be sorted, newest first: the first is
    /// shown as To, the last as From. Both labels are bold if rows are selected.
    void updateStatsForSteps(std::span<const DailySteps> steps);

    /// The first instant of the local calendar day of `date`: midnight, or, if the clock skips
    /// midnight, the instant after the gap.
    static std::chrono::sys_seconds startOfDay(std::chrono::sys_seconds date);

    // ---- the stride: MainWindowController+StrideEditor.cpp

    /// Opens the editor over the stride in the miles label, with the current stride as its text. If
    /// the editor is already open, its text is replaced. The open editor moves with the label.
    /// Closing the window or quitting the program commits the edit.
    void strideDidClick();

    /// Stores the editor's number if it is greater than 0, closes the editor, and updates rows and
    /// statistics. Does nothing if the editor is closed.
    void commitStrideEdit();

    /// Closes the editor and stores nothing.
    void cancelStrideEdit();

    enum class EditorCommand { InsertNewline, CancelOperation };

    /// Called for Return and Escape in the editor. Return commits the edit, Escape cancels it.
    void doCommandBySelector(EditorCommand command);

    /// Commits the edit. Called when the focus has moved from the editor to another control.
    void controlTextDidEndEditing();

    /// The editor of the stride; null before the window is loaded. An edit is under way while the
    /// editor is not hidden.
    InPlaceField* strideEditor() const { return _strideEditor; }

    // ---- the window: MainWindowController+Window.cpp

    /// Replaces the table's columns by the four columns of the day table.
    void setupTableColumns();

    // ---- the views; null before they are made and after they are destroyed

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
    StatusLabel* statusLabel() const { return _statusLabel; }
    void setStatusLabel(StatusLabel* view) { _statusLabel = view; }
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
        QString shownPath;  // the path to show for the remembered path
        std::vector<DailySteps> days;
        DayOffsets offsets;  // of local time from UTC, at the start of each day
    };

    void showPath(const QString& path);
    void makeStrideEditor();
    void setMiles(const QString& prefix, const QString& rest);
    void placeStrideEditor();
    bool changesPlaceOfEditor(QEvent::Type type, const QObject* watched) const;
    void closeStrideEditor();
    void mouseDown(QPoint position);
    double strideFeet() const;
    void startProgress();
    void stopProgress();
    void startReading(const RememberedFile& remembered);
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
    QString _milesPrefix;  // the text before the stride in the miles label; empty without a stride
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
    QPointer<StatusLabel> _statusLabel;
    QPointer<QLineEdit> _filePathField;
    QPointer<QFrame> _separatorBox;
    QPointer<QWidget> _controlsPanel;
};

}  // namespace ambulet
