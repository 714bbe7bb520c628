#pragma once

#include "core/config.h"
#include "core/logbooklines.h"
#include "fmlist/autosearch.h"
#include "fmlist/search.h"
#include "platform/keptfile.h"
#include "platform/regional.h"
#include "txdb/pisearch.h"
#include "txdb/transmitters.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>

class QAbstractButton;
class QAction;
class QLabel;
class QProgressBar;

namespace quillon {

namespace Ui {
class Form1;
}

class Inet1;
struct RdsSpyReception;
class ScratchPad;

/// What the main window is given at start.
struct Form1Options
{
    QString applicationDir; ///< where all files of the program are, without a "/" at its end
    QString suppliedDir; ///< the files supplied with the program
    Regional regional;
    FileCalls *fileCalls = &FileCalls::real();
};

/// The main window: owns the settings, the log and the transmitter list, and wires everything to them.
class Form1 : public QMainWindow
{
    Q_OBJECT

public:
    explicit Form1(const Form1Options &options);
    ~Form1() override;

    /// The start-up sequence. What cannot be read is told in a message box; start-up goes on.
    void Form_Load();

    [[nodiscard]] const Logbook &log() const { return m_log; }
    [[nodiscard]] const TransmitterList &transmitters() const { return m_transmitters; }
    [[nodiscard]] Config &config() { return m_config; }
    /// Number of the entry that the form shows, -1 for a new one.
    [[nodiscard]] qint32 selected() const { return m_selected; }

    void populateGrid();
    void saveLogbook();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    // form1.cpp: construction and start-up
    void addStatusBar();
    void loadLogbookFile();
    void loadTransmitterList();
    void loadCountryList();
    void showTitle();
    void saveUnsaved();
    [[nodiscard]] QString unsavedFailure();

    // form1_wiring.cpp: which event calls which handler
    void wireEntryForm();
    void wireMenus();
    void on(QAbstractButton *button, void (Form1::*handler)());
    [[nodiscard]] bool mayRun();
    void on(QAction *action, void (Form1::*handler)());

    // form1_entry.cpp: entry editing and Quick Add
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command9_Click();
    void Command14_Click();
    void Command15_Click();
    void quickAdd(const QString &freq, const QString &piCode, const QString &rdsName);
    void addOrUpdate();
    void enterPressed();
    bool checkFocusedField();
    void addTransmitterOfForm();
    [[nodiscard]] LogEntry entryOfForm() const;
    [[nodiscard]] QString utcNowText() const;
    void showNotes(const QString &notes);
    [[nodiscard]] QString notesOfForm() const;

    // form1_fields.cpp: states of the form, checks of its fields
    void lockEntryForm();
    void unlockEntryForm();
    void highlightEntryForm();
    void normalEntryForm();
    [[nodiscard]] QList<QWidget *> editableFields() const;
    void fieldLostFocus(QObject *field);
    void Text1_LostFocus();
    void Text2_LostFocus();
    void tellInvalidDate();
    void Text6_LostFocus();
    void Text8_LostFocus();
    void Combo3_LostFocus();
    void Combo1_Click();
    void listTransmittersForCountry(const QString &country);
    void selectTransmitter(const QString &name, const QString &country);

    // form1_grid.cpp: the log grid
    void Grid1_RowSelect(int row);
    void Grid1_HeaderClick(int column);
    void makeCurrent(int row);
    void showEntry(const LogEntry &entry);
    void rewriteRow(int row);
    [[nodiscard]] int rowOfLoadedEntry() const;
    void saveTransmitterList();
    void tellOfCopy(const std::optional<QString> &copy);

    // form1_search.cpp: the searches of the log
    void Command4_Click();
    void Command6_Click();
    void Command7_Click();
    void Command8_Click();
    void Command13_Click();
    void searchPiDb(LogSearch search, const QString &text);
    void List1_DblClick(int line);
    void menuToolsFind_Click();
    void showList1();
    void showList2();

    // form1_fmlist.cpp: search, upload, web pages
    void Command11_Click();
    void searchForStation(const SearchRequest &request);
    void searchFmlist(const SearchRequest &request);
    void List2_DblClick(int line);
    void menuFMListUploadLogs_Click();
    void uploadToFmlist();
    void Command5_Click();
    void menuFMLPropMap_Click();
    void menuFMLYouProp_Click();
    void menuHelpOnlineHelp_Click();

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
    [[nodiscard]] std::vector<qint32> entriesToSearch(const DayWindow &window);
    void searchEntries(
        SearchMode mode, const std::vector<qint32> &entries, const DayWindow &window, AutoSearchTally &tally);
    void searchEntry(SearchMode mode, qint32 entry, AutoSearchTally &tally);
    void searchForForm(SearchMode mode, AutoSearchTally &tally);
    [[nodiscard]] bool isLoaded(int row, qint32 entry);
    void updateFromResult(int row);
    void markEntry(int row, qint32 number, Finding finding);
    void writeUpdateLogRecord(int row, const QString &stage);

    // form1_export.cpp: KML, web pages, text
    void menuExportGoogleTX_Click();
    void menuExportGoogleLog_Click();
    void menuExportWebPage_Click();
    void menuExportEmail_Click();

    // form1_import.cpp: receptions recorded by other programs
    void menuImportRDSSpyLog_Click();
    void addReception(const RdsSpyReception &reception);
    void menuImportRDSDXLogCnv_Click();
    void importRDSDXLogCnv(const QString &selectedFile);

    // form1_tools.cpp: distances and the other windows
    void Command10_Click();
    void menuToolsConverter_Click();
    void menuStats_Click();
    void menuSetup_Click();
    void Command12_Click();
    void menuAbout_Click();
    void MenuFileExit_Click();

    std::unique_ptr<Ui::Form1> m_ui;
    Form1Options m_options;
    Config m_config;
    Logbook m_log;
    LogbookLines m_logbookLines;
    TransmitterList m_transmitters;
    KeptFile m_logbookFile;
    KeptFile m_transmitterFile;
    qint32 m_selected = -1;
    int m_loadedRow = 0; ///< the grid row that the form was filled from; 0 after a refill
    bool m_decimalComma = false;
    QString m_shownNotes; ///< what the notes were filled with, each blank and line end as it was
    bool m_logUnsaved = false; ///< the log holds what is not on the disk
    bool m_transmittersUnsaved = false;
    bool m_dateRefused = false; ///< from a wrong date until it is told
    bool m_pressRefused = false; ///< the last press of a button left a wrong date
    bool m_automatic = false; ///< while the automatic search runs
    int m_matchCount = 0; ///< of the last search of FMList
    Inet1 *m_inet;
    QPointer<ScratchPad> m_scratchPad;

    QLabel *m_status = nullptr;
    QLabel *m_proclogs = nullptr;
    QProgressBar *m_progress = nullptr;
    QLabel *m_version = nullptr;
    QLabel *m_applicationDir = nullptr;
    QLabel *m_mapDir = nullptr;
};

} // namespace quillon
