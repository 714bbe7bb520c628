#pragma once

#include "core/config.h"
#include "core/logbook.h"
#include "core/logbookfile.h"
#include "core/logbooklines.h"
#include "document/history.h"
#include "platform/keptfile.h"
#include "platform/regional.h"
#include "txdb/transmitters.h"

#include <QObject>

#include <exception>
#include <functional>
#include <utility>
#include <vector>

namespace quillon {

/// What the views of a document are told.
struct DocumentChange
{
    enum class Kind {
        Made, ///< by a command that added receptions or changed them
        Restored, ///< by an undo, a redo, or whatever else took receptions away
    };
    Kind kind = Kind::Made;
    std::vector<qint32> entries; ///< their numbers; one that is gone is not below count() any more
    bool added = false; ///< some of them are new
    bool sites = false; ///< the transmitter list has changed
};

/// The log as a document: the receptions, the sites, the files of both, and all that was done to them.
/// Nothing changes either but a change that is committed here.
class LogDocument : public QObject
{
    Q_OBJECT

public:
    /// `config` says where the files are, and must outlive the document.
    LogDocument(const Config &config, const Regional &regional, FileCalls &calls, QObject *parent = nullptr);

    [[nodiscard]] const Logbook &log() const { return m_log; }
    [[nodiscard]] const TransmitterList &sites() const { return m_sites; }

    /// Reads the logbook file. Throws what loadLogbook throws; what was read until then is in the log.
    LogbookLoading loadLogbook();
    /// Reads tx.lst, if there is one; false when there is none. Throws what readTransmitters throws.
    bool loadSites();

    /// Does this before a file is written, each time. It must not throw.
    void beforeWriting(std::function<void()> work) { m_beforeWriting = std::move(work); }

    enum class Saving {
        Changed, ///< the files of what has changed; the logbook when nothing has
        WithSites, ///< the same, and tx.lst unless it is just what this run read or wrote
        Sites, ///< tx.lst alone
        Later, ///< the logbook, by the next save
    };
    /// Makes the change, saves, tells, and remembers the change as a step that can be undone. Throws what
    /// Logbook::apply throws: when nothing was made nothing else happens; what was made is kept. Throws the
    /// run-time error of a failing save; the change is kept then, too, and is written by the next save.
    void commit(Change change, Saving saving = Saving::Changed);
    /// A change that is no step: no undo takes it back, whatever else is undone. It is written by the next
    /// save.
    void settle(const LogChange &change);
    /// Writes the logbook file. Throws the run-time error of a failing write.
    void saveLog();
    /// Writes what is not on the disk. Throws the run-time error of the first file that fails.
    void saveUnsaved();
    /// As saveUnsaved, but tries both files and returns why they failed; empty when all is on the disk.
    [[nodiscard]] QString unsavedFailure();
    [[nodiscard]] bool isUnsaved() const { return m_logUnsaved || m_sitesUnsaved; }

    /// As long as it lives, all that is committed is one step of that name.
    class Group
    {
    public:
        Group(LogDocument &document, const QString &name);
        ~Group();
        Group(const Group &) = delete;
        Group &operator=(const Group &) = delete;

    private:
        LogDocument &m_document;
        bool m_outermost;
    };

    /// What undo would undo, and redo redo; empty when there is nothing.
    [[nodiscard]] QString undoName() const;
    [[nodiscard]] QString redoName() const;
    /// Takes the last step back, or makes it again, saves and tells. Does nothing when there is none. Throws
    /// the run-time error of a failing save, and "Overflow" for the entry that fills the log once more; the
    /// step is undone or made all the same.
    void undo();
    void redo();

Q_SIGNALS:
    void changed(const quillon::DocumentChange &what);
    /// What undo and redo would do is something else.
    void stepsChanged();
    /// A file that this run did not know was kept under this path before it was written over.
    void copyKept(const QString &path);

private:
    void make(const Change &change, DocumentChange &told);
    void restore(const std::vector<Change> &changes);
    void save(bool log, bool sites);
    void saveSites();

    const Config &m_config;
    Regional m_regional;
    FileCalls &m_calls;
    Logbook m_log;
    TransmitterList m_sites;
    LogbookLines m_lines;
    KeptFile m_logFile;
    KeptFile m_sitesFile;
    History m_history;
    std::function<void()> m_beforeWriting = [] {};
    std::optional<Step> m_group;
    bool m_logUnsaved = false;
    bool m_sitesUnsaved = false;
};

} // namespace quillon
