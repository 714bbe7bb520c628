#pragma once

#include "backup/backups.h"
#include "core/config.h"
#include "core/logrows.h"
#include "core/ui/entryform.h"
#include "document/logdocument.h"
#include "fmlist/autosearch.h"
#include "fmlist/search.h"
#include "live/reception.h"
#include "platform/regional.h"
#include "txdb/pisearch.h"
#include "txdb/siteleg.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <span>
#include <vector>

class QAbstractButton;
class QAction;
class QDockWidget;
class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;

namespace quillon {

namespace Ui {
class Form1;
}

class Inet1;
class FirstSteps;
class MapDock;
class Novelty;
struct CellReceptions;
class ReceiverDock;
class WindowMemory;
struct RdsSpyReception;
class ResultList;
class Results;
class ScratchPad;
class StatusText;

/// What the main window is given at start.
struct Form1Options
{
    QString applicationDir; ///< where all files of the program are, without a "/" at its end
    QString suppliedDir; ///< the files supplied with the program
    Regional regional;
    FileCalls *fileCalls = &FileCalls::real();
    /// Where the look of the windows and the receiver's settings are kept; nothing is kept without one.
    QString lookFolder = {};
    /// Where the backups of the logs are; none are made without one.
    QString backupFolder = {};
};

/// The main window: owns the settings and the document, and wires everything to them.
class Form1 : public QMainWindow
{
    Q_OBJECT

public:
    explicit Form1(const Form1Options &options);
    ~Form1() override;

    /// The start-up sequence. What cannot be read is told in a message box; start-up goes on.
    void Form_Load();

    [[nodiscard]] const Logbook &log() const { return m_document.log(); }
    [[nodiscard]] const TransmitterList &transmitters() const { return m_document.sites(); }
    [[nodiscard]] LogDocument &document() { return m_document; }
    [[nodiscard]] Config &config() { return m_config; }
    /// Number of the entry that the form shows, -1 for a new one.
    [[nodiscard]] qint32 selected() const { return m_selected; }

    /// Fills the grid anew and marks its last row; `changed` is as LogRows::refill has it.
    void populateGrid(std::span<const qint32> changed = {});
    void saveLogbook();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    class LongWork;

    // form1.cpp: construction
    void addStatusBar();
    void showTitle();

    // form1_load.cpp: start-up
    void loadLogbookFile();
    void loadTransmitterList();
    void loadCountryList();
    void tellUnreadable(const QString &path);

    // form1_collection.cpp: what is new, what the log adds up to
    void wireNovelty();
    [[nodiscard]] Novelty &novelty();
    void showNewBadge(qint32 entry);
    void rememberKnown();
    void tellNews();
    void menuStatsCollection_Click();
    void showReceptions(const CellReceptions &receptions, bool withinShown);

    // form1_wiring.cpp: which event calls which handler
    void wireEntryForm();
    void wireMenus();
    void wireDocument();
    void on(QAbstractButton *button, void (Form1::*handler)());
    void on(QAction *action, void (Form1::*handler)());

    // form1_entry.cpp: entry editing and Quick Add
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command9_Click();
    void Command14_Click();
    void Command15_Click();
    void addEntry(const QString &verb);
    void storeUpdate(const QString &verb);
    void quickAdd(const QString &freq, const QString &piCode, const QString &rdsName);
    void clickAddOrUpdate();
    void escapePressed();
    [[nodiscard]] SiteChanges siteOfForm() const;
    [[nodiscard]] bool mayChangeLoaded(const QString &verb);

    // form1_grid.cpp: the log grid
    void Grid1_RowSelect(int row);
    void Grid1_HeaderClick(int column);
    bool loadRow(qint32 entry);
    void closeEntry();
    void documentChanged(const DocumentChange &what);
    [[nodiscard]] bool mayTell();
    void tell(const QString &text);
    void tellUnstored();
    void restoreUnstored();

    // form1_filter.cpp: the filter of the log
    void wireFilter();
    void applyFilter();
    void clearFilter();
    void tellStatistics();
    void showCounts();
    void showEntries(const QList<qint32> &entries, const QString &words);
    void listsChanged();
    void refreshLists();
    void makeShown(qint32 entry);
    void tellHidden(const QString &done, qint32 entry);
    void tellHidden(const QString &done, std::span<const qint32> entries);

    // form1_results.cpp: the menu of the results
    void wireResultsMenu();
    void showResultsMenu(ResultList &list, const QPoint &position);

    // form1_many.cpp: many receptions at once
    void menuEditMany_Click();
    void menuEditCopy_Click();
    void commitMany(const Change &change);
    [[nodiscard]] bool deleteChosen();
    void showGridMenu(const QPoint &position);
    [[nodiscard]] static QString filterTextOf(GridColumn column, const QString &text);

    // form1_view.cpp: columns, docks, the look as it was left
    void wireView();
    void showColumn(int column, bool shown);
    void tickColumns();
    void columnsAsAtFirst();
    void restoreLook();
    void keepLook();
    void menuViewReset_Click();
    void wireFirstSteps();
    void tellEmpty();
    QAction *addDock(QDockWidget &dock, const QString &text, const QString &name, Qt::Key key);
    void wireMap();
    void refreshMap();
    void showPath();
    void showOnMap();
    void wireReceiver();
    void floatWithoutRoom(QDockWidget &dock);
    [[nodiscard]] bool logReception(const HeardReception &reception);
    void logNow(const HeardReception &reception);
    void logWaiting();
    void tuneTo(int row);

    // form1_edit.cpp: undo and redo
    void menuEditUndo_Click();
    void menuEditRedo_Click();
    void undoOrRedo(const QString &name, const QString &done, void (LogDocument::*work)());
    void showSteps();

    // form1_search.cpp: the searches of the log
    void Command4_Click();
    void Command6_Click();
    void Command7_Click();
    void Command8_Click();
    void Command13_Click();
    void searchPiDb(LogSearch search, const QString &text);
    void List1_DblClick(int line);
    void menuToolsFind_Click();
    void menuToolsFindAgain_Click();
    void find(const QString &text);

    // form1_fmlist.cpp: search, web pages
    void Command11_Click();
    void searchForStation(const SearchRequest &request);
    void searchFmlist(const SearchRequest &request);
    void showLegs();
    void List2_DblClick(int line);
    void takeOverResult(const SearchResult &result);
    void Command5_Click();
    void menuFMLPropMap_Click();
    void menuFMLYouProp_Click();
    void menuHelpOnlineHelp_Click();

    // form1_upload.cpp: upload
    void menuFMListUploadLogs_Click();
    void uploadToFmlist();

    // form1_autosearch.cpp: the automatic search
    struct AutoSearchTally
    {
        int updated = 0;
        int failed = 0;
        QString failure; ///< what the last failed request said
    };
    void menuFMListAutoSearch_Click();
    void menuFMLSearchPI_Click();
    void menuFMLAutoUpdateViewLog_Click();
    void runAutoSearch(SearchMode mode);
    void autoSearch(SearchMode mode);
    [[nodiscard]] std::vector<qint32> entriesToSearch(const DayWindow &window) const;
    void searchEntries(SearchMode mode, const std::vector<qint32> &entries, AutoSearchTally &tally);
    void searchEntry(SearchMode mode, qint32 entry, AutoSearchTally &tally);
    void searchForForm(SearchMode mode, AutoSearchTally &tally);
    void updateFromResult(qint32 row);
    void markEntry(qint32 row, qint32 number, Finding finding);
    void writeUpdateLogRecord(qint32 row, const QString &stage);

    // form1_export.cpp: KML, web pages, text
    void menuExportGoogleTX_Click();
    void menuExportGoogleLog_Click();
    void menuExportWebPage_Click();
    void menuExportEmail_Click();
    void tellExported(const QString &path);

    // form1_shown.cpp: what the grid shows, as a file
    void menuExportShown_Click();

    // form1_backups.cpp: the copy of yesterday
    void wireBackups();
    [[nodiscard]] qint32 receptionsNow() const;
    void menuFileBackups_Click();
    void backUpToday();
    void restoreBackup(const Backup &backup, QWidget &window);
    void backUpTo(QWidget &window);

    // form1_import.cpp: receptions recorded by other programs
    void menuImportRDSSpyLog_Click();
    [[nodiscard]] QString addReception(const RdsSpyReception &reception);
    void menuImportRDSDXLogCnv_Click();
    void importRDSDXLogCnv(const QString &selectedFile);
    [[nodiscard]] qint32 importRdsdxFile(const QByteArray &file, const QString &path);

    // form1_stations.cpp: lists of stations, and what a reception probably was
    class Probably;
    void menuImportStations_Click();
    void importStationList(const QString &path);
    void candidates_DblClick(int candidate);

    // form1_importfile.cpp: receptions from files
    void menuImportFile_Click();

    // form1_tools.cpp: distances and the other windows
    void Command10_Click();
    void menuToolsConverter_Click();
    void menuStats_Click();
    void menuViewDistances_Toggled(bool on);
    void measure(LogEntry &entry, SiteChanges &sites) const;
    [[nodiscard]] Change measured(Change change, Measured which) const;
    void menuSetup_Click();
    void settingsSaved();
    void Command12_Click();
    void menuAbout_Click();
    void MenuFileExit_Click();

    std::unique_ptr<Ui::Form1> m_ui;
    Form1Options m_options;
    Config m_config;
    Backups m_backups;
    LogDocument m_document;
    LogRows m_rows;
    EntryForm *m_form = nullptr;
    Results *m_results = nullptr;
    qint32 m_selected = -1;
    std::unique_ptr<Novelty> m_novelty; ///< none before somebody asks
    std::optional<EntryForm::Draft> m_unstored; ///< what was typed when another row was chosen
    qint32 m_unstoredEntry = -1;
    std::vector<qint32> m_lastChanged; ///< the entries of the last change of the document
    bool m_longWork = false; ///< an automatic search or an upload runs
    bool m_importing = false; ///< an import of RDS Spy runs
    std::vector<HeardReception> m_waiting; ///< of the receiver, to be logged when that work is over
    bool m_copyTold = false; ///< the status line says where a file was kept
    bool m_decimalComma = false;
    int m_matchCount = 0; ///< of the last search of FMList
    QString m_searchedFrequency; ///< of the same
    QString m_searchedMode;
    Inet1 *m_inet;
    QPointer<ScratchPad> m_scratchPad;
    QString m_found; ///< what Find looked for last
    QString m_shownFile; ///< where the last export of the shown receptions went
    QTimer m_listsLater;
    WindowMemory *m_memory = nullptr;
    FirstSteps *m_firstSteps = nullptr;
    QString m_unreadable; ///< what is said of a logbook that could not be read
    MapDock *m_map = nullptr;
    ReceiverDock *m_receiver = nullptr;
    std::unique_ptr<Probably> m_probably;

    StatusText *m_status = nullptr;
    QLabel *m_news = nullptr;
    QToolButton *m_noBackup = nullptr;
    QLabel *m_proclogs = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_autoStop = nullptr;
    QLabel *m_version = nullptr;
    QLabel *m_applicationDir = nullptr;
    QLabel *m_mapDir = nullptr;
};

} // namespace quillon
