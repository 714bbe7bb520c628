#include "import/importsession.h"

#include "import/importlimits.h"
#include "import/refusedlines.h"

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

ImportSession::ImportSession(
    const Logbook &log, ImportSurroundings surroundings, KnownHeadings known, int minutes)
    : m_log(log)
    , m_surroundings(std::move(surroundings))
    , m_known(std::move(known))
    , m_minutes(minutes)
{
}

void ImportSession::setSources(std::vector<ImportSource> sources)
{
    m_sources = std::move(sources);
    m_choices.clear();
    for (const ImportSource &source : m_sources) {
        m_choices.push_back(source.choice);
        m_surroundings.zone = source.choice.zone.value_or(m_surroundings.zone);
    }
    read();
}

void ImportSession::setZone(const QTimeZone &zone)
{
    m_surroundings.zone = zone;
    for (FormatChoice &choice : m_choices) {
        choice.zone.reset();
    }
}

QString ImportSession::name() const
{
    return m_sources.size() == 1 ? m_sources.front().name.section(u'/', -1)
                                 : u"%1 files"_s.arg(m_sources.size());
}

void ImportSession::read()
{
    m_rows.clear();
    m_readings.clear();
    m_readings.reserve(m_sources.size());
    qsizetype room = mostImportRows;
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
        ImportReading reading = readImportFile(m_sources[i], m_choices[i], m_known, m_surroundings, room);
        room -= static_cast<qsizetype>(reading.rows.size());
        for (ImportRow &row : reading.rows) {
            row.source = static_cast<int>(i);
        }
        m_readings.push_back(std::move(reading));
    }
    for (const ImportReading &reading : m_readings) {
        for (const ImportRow &row : reading.rows) {
            m_rows.push_back(&row);
        }
    }
    compare();
}

void ImportSession::setMinutes(int minutes)
{
    m_minutes = minutes;
    compare();
}

void ImportSession::compare()
{
    m_matches = matchedRows(m_log, m_rows, m_minutes);
    m_actions.resize(m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_actions[i] =
            m_rows[i]->isRefused() || m_matches[i].isThere() ? ImportAction::LeaveOut : ImportAction::Add;
    }
}

void ImportSession::logChanged()
{
    const std::vector<ImportMatch> before = std::exchange(m_matches, {});
    const std::vector<ImportAction> chosen = m_actions;
    compare();
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].isThere() == m_matches[i].isThere()) {
            setAction(i, chosen[i]);
        }
    }
}

bool ImportSession::isPossible(std::size_t row, ImportAction action) const
{
    if (m_rows[row]->isRefused()) {
        return action == ImportAction::LeaveOut;
    }
    return action != ImportAction::Complete || !m_matches[row].completes.empty();
}

void ImportSession::setAction(std::size_t row, ImportAction action)
{
    if (isPossible(row, action)) {
        m_actions[row] = action;
    }
}

LogChange ImportSession::change(ImportTally &tally) const
{
    return importChange(m_log, m_rows, m_matches, m_actions, tally);
}

QString ImportSession::obstacle() const
{
    for (std::size_t i = 0; i < m_readings.size(); ++i) {
        const ImportReading &reading = m_readings[i];
        if (reading.format.guessed && reading.refusal.isEmpty()) {
            return u"Say first which column of %1 is what, with the button Columns"_s.arg(m_sources[i].name);
        }
    }
    return {};
}

bool ImportSession::hasRefused() const
{
    return std::ranges::any_of(m_readings, [](const ImportReading &reading) {
        return !reading.refusal.isEmpty() || std::ranges::any_of(reading.rows, &ImportRow::isRefused);
    });
}

QByteArray ImportSession::refused() const
{
    return refusedLines(m_sources, m_readings);
}

} // namespace quillon
