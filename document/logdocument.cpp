#include "document/logdocument.h"

#include "platform/backwards.h"
#include "platform/runtimeerror.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

LogDocument::LogDocument(const Config &config, const Regional &regional, FileCalls &calls, QObject *parent)
    : QObject(parent)
    , m_config(config)
    , m_regional(regional)
    , m_calls(calls)
    , m_lines(regional.codePage)
    , m_logFile(calls)
    , m_sitesFile(calls)
{
}

LogbookLoading LogDocument::loadLogbook()
{
    const QString path = m_config.path(m_config.settings().logbookFileName);
    removeCopyLeftovers(m_config.applicationDir(), m_calls);
    const LogbookLoading loading = quillon::loadLogbook(m_log, path, m_regional, m_logFile);
    // The first save is then as quick as all the others.
    m_lines.prepare(m_log);
    return loading;
}

bool LogDocument::loadSites()
{
    const QString path = m_config.path(u"tx.lst"_s);
    removeLeftover(path, m_calls);
    const auto state = fileState(path);
    if (!state) {
        return false;
    }
    if (readTransmitters(m_sites, readFile(path), m_regional.codePage, path)) {
        m_sitesFile.readWhole(path, *state);
    }
    return true;
}

void LogDocument::commit(Change change, Saving saving)
{
    DocumentChange told;
    std::exception_ptr failure;
    const qint32 before = m_log.count();
    const auto kept = before - static_cast<qint32>(change.log.removed.size());
    told.kind = change.log.removed.empty() ? DocumentChange::Kind::Made : DocumentChange::Kind::Restored;
    try {
        make(change, told);
    } catch (const RuntimeError &) {
        if (m_log.count() == before && change.log.removed.empty()) {
            throw;
        }
        // The log could not grow behind the last entry, which is in it.
        failure = std::current_exception();
        change.log.added.resize(static_cast<std::size_t>(m_log.count() - kept));
    }
    const bool log = saving != Saving::Sites && (!change.log.isEmpty() || change.sites.empty());
    const bool sites = saving == Saving::Sites || !change.sites.empty()
        || (saving == Saving::WithSites
            && (m_sitesUnsaved || !m_sitesFile.isKnown(m_config.path(u"tx.lst"_s))));
    if (m_group) {
        m_group->changes.push_back(std::move(change));
    } else {
        m_history.push({change.name, {change}});
    }
    try {
        if (saving == Saving::Later) {
            m_logUnsaved = m_logUnsaved || log;
            m_sitesUnsaved = m_sitesUnsaved || sites;
        } else {
            save(log, sites);
        }
    } catch (const RuntimeError &) {
        failure = std::current_exception();
    }
    Q_EMIT changed(told);
    Q_EMIT stepsChanged();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void LogDocument::settle(const LogChange &change)
{
    DocumentChange told;
    make({{}, change, {}}, told);
    for (const FieldChange &made : change.fields) {
        m_history.settle(made.entry, made.field, made.after);
        if (m_group) {
            m_group->settle(made.entry, made.field, made.after);
        }
    }
    m_logUnsaved = true;
    Q_EMIT changed(told);
}

// Makes the change in memory and adds to what is told what it concerns.
void LogDocument::make(const Change &change, DocumentChange &told)
{
    const qint32 before = m_log.count();
    const auto note = [&] {
        for (const FieldChange &field : change.log.fields) {
            m_lines.changed(field.entry);
            if (told.entries.empty() || told.entries.back() != field.entry) {
                told.entries.push_back(field.entry);
            }
        }
        const qint32 after = m_log.count();
        const qint32 fewer = std::min(after, before - static_cast<qint32>(change.log.removed.size()));
        const qint32 more = std::max(before, after);
        if (fewer != more) {
            m_lines.changedFrom(fewer);
            told.added = told.added || after > fewer;
            const auto first = static_cast<std::ptrdiff_t>(told.entries.size());
            told.entries.resize(told.entries.size() + static_cast<std::size_t>(more - fewer));
            std::iota(told.entries.begin() + first, told.entries.end(), fewer);
        }
        told.sites = told.sites || !change.sites.empty();
    };
    try {
        m_log.apply(change.log);
    } catch (const RuntimeError &) {
        if (m_log.count() != before || !change.log.removed.empty()) {
            m_sites.apply(change.sites);
        }
        note();
        throw;
    }
    m_sites.apply(change.sites);
    note();
}

void LogDocument::saveLog()
{
    m_logUnsaved = true;
    m_beforeWriting();
    const auto copy = m_logFile.save(
        m_config.path(m_config.settings().logbookFileName), m_config.applicationDir(), m_lines.bytes(m_log));
    m_logUnsaved = false;
    if (copy) {
        Q_EMIT copyKept(*copy);
    }
}

void LogDocument::saveSites()
{
    m_sitesUnsaved = true;
    m_beforeWriting();
    const auto copy = m_sitesFile.save(m_config.path(u"tx.lst"_s), m_config.applicationDir(),
        transmitterBytes(m_sites, m_regional.codePage));
    m_sitesUnsaved = false;
    if (copy) {
        Q_EMIT copyKept(*copy);
    }
}

void LogDocument::save(bool log, bool sites)
{
    m_logUnsaved = m_logUnsaved || log;
    m_sitesUnsaved = m_sitesUnsaved || sites;
    if (log) {
        saveLog();
    }
    if (sites) {
        saveSites();
    }
}

void LogDocument::saveUnsaved()
{
    save(m_logUnsaved, m_sitesUnsaved);
}

QString LogDocument::unsavedFailure()
{
    QStringList failures;
    const auto retry = [&](bool unsaved, void (LogDocument::*write)()) {
        if (unsaved) {
            try {
                (this->*write)();
            } catch (const RuntimeError &error) {
                failures += error.text();
            }
        }
    };
    retry(m_logUnsaved, &LogDocument::saveLog);
    retry(m_sitesUnsaved, &LogDocument::saveSites);
    return failures.join(u'\n');
}

QString LogDocument::undoName() const
{
    return m_history.undoable() && !m_group ? m_history.undoable()->name : QString();
}

QString LogDocument::redoName() const
{
    return m_history.redoable() && !m_group ? m_history.redoable()->name : QString();
}

void LogDocument::undo()
{
    if (!m_history.undoable() || m_group) {
        return;
    }
    m_history.moveToUndone(m_log);
    std::vector<Change> inverses;
    for (const Change &change : backwards(m_history.redoable()->changes)) {
        inverses.push_back(change.inverse());
    }
    restore(inverses);
}

void LogDocument::redo()
{
    if (m_history.redoable() && !m_group) {
        m_history.moveToDone();
        restore(m_history.undoable()->changes);
    }
}

void LogDocument::restore(const std::vector<Change> &changes)
{
    DocumentChange told;
    told.kind = DocumentChange::Kind::Restored;
    bool log = false;
    std::exception_ptr failure;
    for (const Change &change : changes) {
        try {
            make(change, told);
        } catch (const RuntimeError &) {
            // As when it was committed: the log could not grow behind the last entry, which is in it.
            failure = std::current_exception();
        }
        log = log || !change.log.isEmpty();
    }
    std::ranges::sort(told.entries);
    told.entries.erase(std::unique(told.entries.begin(), told.entries.end()), told.entries.end());
    try {
        save(log, told.sites);
    } catch (const RuntimeError &) {
        failure = std::current_exception();
    }
    Q_EMIT changed(told);
    Q_EMIT stepsChanged();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

LogDocument::Group::Group(LogDocument &document, const QString &name)
    : m_document(document)
    , m_outermost(!document.m_group)
{
    if (m_outermost) {
        document.m_group = Step {name, {}};
        Q_EMIT document.stepsChanged();
    }
}

LogDocument::Group::~Group()
{
    if (m_outermost) {
        Step step = std::move(*m_document.m_group);
        m_document.m_group.reset();
        m_document.m_history.push(std::move(step));
        Q_EMIT m_document.stepsChanged();
    }
}

} // namespace quillon
