#pragma once

#include "platform/codepage.h"
#include "platform/filecalls.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

namespace quillon {

/// What the user has set. Every value is text, as it stands in LOGBOOK.INI.
struct Settings
{
    QString callsign; ///< LOG_BOOK_CALLSIGN=
    QString scratchPad; ///< SCRATCH_PAD=, with its line breaks as CR LF
    QString homeLatitude; ///< HOME_DEC_LAT=, decimal degrees, north positive
    QString homeLongitude; ///< HOME_DEC_LON=, decimal degrees, east positive
    QString rdsdxDirectory; ///< RDSDX_LOG=
    QString rdsSpyDirectory; ///< RDSSPY_LOGS=
    QString omid; ///< OMID=, the user's FMList identifier
    QString email; ///< EMAIL=
    QString logbookFileName; ///< LOGBOOK_FILENAME=, relative to the application directory
    QString asMiles; ///< AS_MILES=, "TRUE" for miles, anything else for kilometres
    QString timeOffset; ///< TIME_OFFSET=, whole hours

    QString mapDirectory; ///< never read from the file
    QString lastRouteMap; ///< never read from the file

    QString fmlistUrl; ///< FMLIST_URL=, without a "/" at its end
    QString searchUrl; ///< SEARCH_URL=, ends just before the words to search for
    QString callsignUrl; ///< CALLSIGN_URL=, with the placeholder $CALLSIGN
    QString helpUrl; ///< HELP_URL=, empty for the manual supplied with the program
    QString propagationUrl; ///< PROPAGATION_URL=

    /// The callsign that the last reading found in the file; nothing when the file holds none.
    std::optional<QString> titleCallsign;

    /// True when distances are kept in miles.
    [[nodiscard]] bool inMiles() const;
};

/// Sets the defaults that every reading begins with. OMID, e-mail and scratch pad keep what they hold.
void setDefaults(Settings &settings);

/// Reads the lines of a configuration file over `settings`. A key counts wherever it stands in a line, and
/// its value is the line's last (length of line - length of key) characters; "|" stands for ",". The web
/// addresses are read only at the start of a line.
void readSettings(QStringView text, Settings &settings);

/// The items of a configuration file as `changeConfig` reads them: an item ends at a line end or a comma, its
/// leading blanks are dropped, an item in double quotes loses its quotes.
[[nodiscard]] QStringList configItems(QStringView text);

/// The items with every one that contains `key` replaced by key + value, or that line added at the end. Each
/// "," of the value becomes "|"; `upCase` upper-cases it.
[[nodiscard]] QStringList changedItems(QStringList items, const QString &key, QString value, bool upCase);

/// LOGBOOK.INI and the settings it holds. The file is found whatever the case of its name, and keeps it.
class Config
{
public:
    /// `applicationDir` has no "/" at its end. Nothing is read yet.
    explicit Config(
        QString applicationDir, CodePage codePage = CodePage(), FileCalls &calls = FileCalls::real());

    [[nodiscard]] const QString &applicationDir() const { return m_applicationDir; }
    [[nodiscard]] const CodePage &codePage() const { return m_codePage; }
    [[nodiscard]] const Settings &settings() const { return m_settings; }
    /// The path of a file of the program, whatever the case of its name on the disk.
    [[nodiscard]] QString path(const QString &name) const;

    /// True when there is a LOGBOOK.INI, in any case.
    [[nodiscard]] bool exists() const;
    /// Writes the default file of one line. Throws the run-time error of a failing write.
    void createDefaultConfig();
    /// Sets the defaults, then reads the file, and removes what a writing that was killed left beside it.
    /// Throws when it cannot be read.
    void readConfig();
    /// Does this after every reading of the file.
    void whenRead(std::function<void()> work) { m_whenRead = std::move(work); }
    /// Does this before the file is written over, each time. It must not throw.
    void beforeWriting(std::function<void()> work) { m_beforeWriting = std::move(work); }
    /// Rewrites one key, which includes its "=", and reads all settings again. Throws when the file cannot be
    /// read or written; file and settings then stand as they were, unless only the sync of the directory
    /// failed: both then hold the change.
    void changeConfig(const QString &key, const QString &value, bool upCase = false);

    // Interfaces that nothing in the program calls.

    /// Stores nothing: the map directory stays at its default.
    void setMAP_DIR(const QString &newMapDir);
    /// Remembers the map until the next reading; it is not written to the file.
    void setLAST_ROUTE_MAP(const QString &newMap);

private:
    [[nodiscard]] QString iniPath() const;

    QString m_applicationDir;
    CodePage m_codePage;
    FileCalls &m_calls;
    Settings m_settings;
    std::function<void()> m_whenRead;
    std::function<void()> m_beforeWriting = [] {};
};

} // namespace quillon
