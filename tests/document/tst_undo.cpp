#include "core/logrows.h"
#include "documenthome.h"
#include "txdb/distances.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <numeric>
#include <optional>

using namespace quillon;
using namespace quillon::test;

namespace {

// What the log, the sites and their files were at one time.
struct Snapshot
{
    std::vector<LogEntry> entries;
    std::vector<Transmitter> sites;
    std::optional<QByteArray> logFile; ///< once it was asked for
    QByteArray sitesFile;
};

// One step of the plain model: nothing but what was before it and what was behind it.
struct PlainStep
{
    QString name;
    Snapshot before;
    Snapshot after;
};

// Commands at random on a document with a view of its log, and the same on a list of snapshots.
class Evening
{
public:
    explicit Evening(quint32 seed)
        : m_random(seed)
    {
        QObject::connect(m_document, &LogDocument::changed, m_document,
            [this](const DocumentChange &change) { show(change); });
        m_rows.refill();
    }

    // Does one command; says what differs from the model after it.
    QString step()
    {
        const bool breaks = m_random.bounded(12) == 0;
        readFiles();
        if (breaks) {
            m_home.calls.breakAt(1 + m_random.bounded(16));
        }
        m_failed = false;
        m_logMust = false;
        m_sitesMust = false;
        command();
        m_home.calls.heal();
        return difference();
    }

    // What differs after the last command.
    QString end()
    {
        m_failed = false;
        attempt([this] { m_document->saveUnsaved(); });
        if (m_failed || m_document->isUnsaved() || m_home.logFile() != m_home.logBytes()) {
            return u"not saved in the end"_s;
        }
        const QStringList names {u"LOGBOOK.INI"_s, u"RDSLog.log"_s, u"tx.lst"_s};
        for (const QString &name : m_home.directory.names()) {
            if (!names.contains(name)) {
                return u"left behind: "_s + name;
            }
        }
        if (m_random.bounded(8) != 0) {
            return {};
        }
        // All the way back and forth again.
        while (!m_done.empty()) {
            readFiles();
            undo();
            if (const QString text = difference(); !text.isEmpty()) {
                return u"on the way back: "_s + text;
            }
        }
        while (!m_undone.empty()) {
            redo();
            if (const QString text = difference(); !text.isEmpty()) {
                return u"on the way forth: "_s + text;
            }
        }
        return {};
    }

private:
    void command()
    {
        const int most = m_document->log().count() > 80 ? 17 : 23;
        const int choice = m_random.bounded(most);
        switch (choice) {
        case 0:
        case 1:
        case 2:
        case 3:
            undo();
            break;
        case 4:
        case 5:
            redo();
            break;
        case 6:
        case 7:
        case 8:
            commit([this] { return update(); }, LogDocument::Saving::Changed);
            break;
        case 9:
            commit([this] { return remove(); }, LogDocument::Saving::Changed);
            break;
        case 10:
            commit([this] { return recalculate(); }, LogDocument::Saving::Changed);
            break;
        case 11:
            commit([this] { return update(); }, LogDocument::Saving::Later);
            break;
        case 12:
            settle();
            break;
        case 13:
            group();
            break;
        case 14:
            m_rows.refill();
            m_order = inTime();
            break;
        case 15:
            attempt([this] { m_document->saveUnsaved(); });
            m_logMust = true;
            m_sitesMust = true;
            break;
        case 16:
            commit([this] { return Change {u"Nothing"_s, {}, {}}; }, LogDocument::Saving::Changed);
            break;
        case 17:
            commit([this] { return import(); }, LogDocument::Saving::Changed);
            break;
        default:
            commit([this] { return add(); }, LogDocument::Saving::WithSites);
        }
    }

    // Changes

    LogEntry randomEntry()
    {
        const auto text = [this](int count) { return QString::number(m_random.bounded(count)); };
        LogEntry entry;
        entry.piCode = text(9);
        entry.dateTime = {m_random.bounded(40) * 3600LL};
        entry.freq = text(20);
        entry.transmitter = u"Site "_s + text(6);
        entry.country = m_random.bounded(2) == 0 ? u"D"_s : u"F"_s;
        entry.rdsName = m_random.bounded(3) == 0 ? QString() : u"KÖLN "_s + text(9);
        entry.notes = m_random.bounded(3) == 0 ? u"a\r\nb"_s : QString();
        entry.dist = m_random.bounded(2) == 0 ? QString() : text(900);
        return entry;
    }

    Change add()
    {
        const LogEntry entry = randomEntry();
        return adding(*m_document, entry,
            {entry.transmitter, entry.country, QString::number(40 + m_random.bounded(3)), u"10"_s, {}});
    }

    Change update()
    {
        const qint32 count = m_document->log().count();
        if (count == 0) {
            return {u"Update"_s, {}, {}};
        }
        const qint32 number = m_random.bounded(count);
        const LogEntry before = m_document->log().entry(number);
        LogEntry after = randomEntry();
        after.dateTime = m_random.bounded(3) == 0 ? after.dateTime : before.dateTime;
        after.fmlist = m_random.bounded(2) == 0 ? before.fmlist : u"fml=multi#"_s;
        return {changeName(u"Update"_s, before), LogChange::between(number, before, after), {}};
    }

    Change remove()
    {
        const qint32 count = m_document->log().count();
        return count == 0
            ? Change {u"Delete"_s, {}, {}}
            : updating(*m_document, m_random.bounded(count), LogField::PiCode, deletedPiCode.toString());
    }

    Change import()
    {
        Change change {u"Import"_s, {}, {}};
        for (int i = m_random.bounded(30); i > 0; --i) {
            change.log.added.push_back(randomEntry());
        }
        return change;
    }

    Change recalculate()
    {
        Settings settings = m_home.config.settings();
        settings.homeLatitude = QString::number(50 + m_random.bounded(3));
        TransmitterList list = m_document->sites();
        Change change {u"Re-Calculate Distances"_s, {}, measuredTransmitters(list, settings, false)};
        list.apply(change.sites);
        change.log = givenDistances(list, m_document->log());
        return change;
    }

    // Commands

    void readFiles()
    {
        m_log = m_home.logFile();
        m_sites = m_home.sitesFile();
    }

    template<typename Work>
    void attempt(const Work &work)
    {
        try {
            work();
        } catch (const RuntimeError &) {
            m_failed = true;
            m_late = true;
        }
    }

    template<typename Make>
    void commit(const Make &make, LogDocument::Saving saving)
    {
        const Change change = make();
        PlainStep step {change.name, m_now, {}};
        attempt([&] { m_document->commit(change, saving); });
        const bool later = saving == LogDocument::Saving::Later;
        m_late = m_late || later;
        m_logMust = !later && (!change.log.isEmpty() || change.sites.empty());
        m_sitesMust = !later && !change.sites.empty();
        takeOver(change);
        if (!change.isEmpty()) {
            step.after = m_now;
            push(std::move(step));
        }
    }

    void group()
    {
        PlainStep step {u"Group"_s, m_now, {}};
        bool empty = true;
        {
            const LogDocument::Group group(*m_document, step.name);
            for (int i = m_random.bounded(5); i > 0; --i) {
                const Change change = m_random.bounded(3) == 0 ? add() : update();
                readFiles();
                attempt([&] { m_document->commit(change, LogDocument::Saving::WithSites); });
                takeOver(change);
                empty = empty && change.isEmpty();
            }
        }
        if (!empty) {
            step.after = m_now;
            push(std::move(step));
        }
    }

    void push(PlainStep step)
    {
        m_done.push_back(std::move(step));
        m_undone.clear();
    }

    void undo()
    {
        attempt([this] { m_document->undo(); });
        if (!m_done.empty()) {
            m_now = m_done.back().before;
            mustWrite(m_done.back());
            m_undone.push_back(std::move(m_done.back()));
            m_done.pop_back();
            m_order = inTime();
        }
    }

    void redo()
    {
        attempt([this] { m_document->redo(); });
        if (!m_undone.empty()) {
            m_now = m_undone.back().after;
            mustWrite(m_undone.back());
            m_done.push_back(std::move(m_undone.back()));
            m_undone.pop_back();
            m_order = inTime();
        }
    }

    void settle()
    {
        const qint32 count = m_document->log().count();
        if (count == 0) {
            return;
        }
        const auto number = static_cast<std::size_t>(m_random.bounded(count));
        const QString mark = u"fml=sent#"_s;
        LogChange change;
        change.setField(static_cast<qint32>(number), m_now.entries[number], LogField::FMList, mark);
        m_document->settle(change);
        m_late = true;
        if (change.isEmpty()) {
            return;
        }
        // It was so in all times.
        std::vector<Snapshot *> times {&m_now};
        for (std::vector<PlainStep> *steps : {&m_done, &m_undone}) {
            for (PlainStep &step : *steps) {
                times.push_back(&step.before);
                times.push_back(&step.after);
            }
        }
        for (Snapshot *time : times) {
            if (number < time->entries.size()) {
                time->entries[number].fmlist = mark;
                time->logFile.reset();
            }
        }
    }

    // The model

    static QByteArray bytesOf(const std::vector<LogEntry> &entries)
    {
        Logbook log;
        for (const LogEntry &entry : entries) {
            log.AddEntry(entry);
        }
        return logbookBytes(log, CodePage(1252));
    }

    // The change once more, as plainly as it can be told.
    void takeOver(const Change &change)
    {
        for (const FieldChange &field : change.log.fields) {
            setFieldValue(m_now.entries[static_cast<std::size_t>(field.entry)], field.field, field.after);
        }
        m_now.entries.insert(m_now.entries.end(), change.log.added.begin(), change.log.added.end());
        for (const SiteChange &site : change.sites) {
            const auto row = static_cast<std::size_t>(site.row);
            m_now.sites.resize(std::max(m_now.sites.size(), row + 1));
            m_now.sites[row] = *site.after;
        }
        if (!change.log.isEmpty()) {
            m_now.logFile.reset();
        }
        if (!change.log.added.empty()) {
            m_order = inTime();
        }
        TransmitterList sites;
        for (const Transmitter &site : m_now.sites) {
            sites.add(site);
        }
        m_now.sitesFile = transmitterBytes(sites, CodePage(1252));
    }

    [[nodiscard]] std::vector<qint32> inTime() const
    {
        std::vector<qint32> rows(m_now.entries.size());
        std::iota(rows.begin(), rows.end(), 0);
        std::ranges::stable_sort(rows, {},
            [this](qint32 entry) { return m_now.entries[static_cast<std::size_t>(entry)].dateTime.seconds; });
        return rows;
    }

    // What a window does with what it is told.
    void show(const DocumentChange &change)
    {
        if (change.kind == DocumentChange::Kind::Restored) {
            m_rows.restore(change.entries);
        } else if (change.added) {
            m_rows.refill();
        } else {
            m_rows.entriesChanged(change.entries);
        }
    }

    QString difference()
    {
        const Logbook &log = m_document->log();
        if (!std::ranges::equal(log, m_now.entries)) {
            return u"log"_s;
        }
        if (!std::ranges::equal(m_document->sites(), m_now.sites)) {
            return u"sites"_s;
        }
        if (!std::ranges::equal(m_rows.all(), m_order) || !std::ranges::equal(m_rows.shown(), m_order)) {
            return u"rows"_s;
        }
        if (m_document->undoName() != (m_done.empty() ? QString() : m_done.back().name)
            || m_document->redoName() != (m_undone.empty() ? QString() : m_undone.back().name)) {
            return u"names of the steps"_s;
        }
        return fileDifference();
    }

    // A file is that of the log as it is now; where it was not written yet, that of before.
    QString fileDifference()
    {
        const bool unsaved = m_document->isUnsaved();
        if (unsaved && !m_late) {
            return u"unsaved for no reason"_s;
        }
        m_late = unsaved;
        if (!m_now.logFile) {
            m_now.logFile = bytesOf(m_now.entries);
        }
        const QByteArray log = m_home.logFile();
        const QByteArray sites = m_home.sitesFile();
        if (log != *m_now.logFile && (!unsaved || (m_logMust && !m_failed) || log != m_log)) {
            return u"logbook file"_s;
        }
        if (sites != m_now.sitesFile && (!unsaved || (m_sitesMust && !m_failed) || sites != m_sites)) {
            return u"tx.lst"_s;
        }
        return {};
    }

    // The files in which the two sides of a step differ.
    void mustWrite(const PlainStep &step)
    {
        m_logMust = m_logMust || step.before.entries != step.after.entries;
        m_sitesMust = m_sitesMust || step.before.sitesFile != step.after.sitesFile;
    }

    DocumentHome m_home;
    QRandomGenerator m_random;
    LogDocument *m_document = m_home.document.get();
    LogRows m_rows {m_document->log(), m_home.regional.months};
    Snapshot m_now;
    std::vector<qint32> m_order;
    std::vector<PlainStep> m_done;
    std::vector<PlainStep> m_undone;
    QByteArray m_log; ///< the files before the command
    QByteArray m_sites;
    bool m_failed = false; ///< the command has told a failure
    bool m_late = false; ///< something was left to a later save
    bool m_logMust = false; ///< the command writes this file, unless it fails
    bool m_sitesMust = false;
};

} // namespace

class TestUndo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomSequencesEqualTheListOfSnapshots_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 200; ++seed) {
            QTest::addRow("%u", seed) << seed;
        }
    }

    void randomSequencesEqualTheListOfSnapshots()
    {
        QFETCH(quint32, seed);
        Evening evening(seed);
        for (int step = 0; step < 300; ++step) {
            const QString difference = evening.step();
            QVERIFY2(difference.isEmpty(), qPrintable(u"step %1: %2"_s.arg(step).arg(difference)));
        }
        const QString difference = evening.end();
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
};

QTEST_GUILESS_MAIN(TestUndo)
#include "tst_undo.moc"
