#include "import/csv.h"

#include "import/importlimits.h"
#include "platform/runtimeerror.h"

#include <QList>

#include <algorithm>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostUnclosed = 100;
constexpr qsizetype notFound = -1;

} // namespace

CsvReader::CsvReader(QStringView text, CsvLayout layout)
    : m_text(text)
    , m_layout(layout)
    , m_end(text.contains(u'\n') ? u'\n' : u'\r')
{
}

// Where the line ends that holds `from`: at its end of line, or at the end of the text.
qsizetype CsvReader::lineEnd(qsizetype from) const
{
    const qsizetype end = m_text.indexOf(m_end, from);
    return end < 0 ? m_text.size() : end;
}

void CsvReader::checkLength(qsizetype begin, qsizetype end) const
{
    if (end - begin > longestImportLine) {
        throw RuntimeError(ErrorName::Overflow,
            u"line %1 is longer than %2 characters"_s.arg(m_line).arg(longestImportLine));
    }
}

void CsvReader::addCell(CsvRow &row, QString cell) const
{
    if (row.cells.size() >= static_cast<std::size_t>(mostImportColumns)) {
        throw RuntimeError(
            ErrorName::Overflow, u"line %1 has more than %2 columns"_s.arg(m_line).arg(mostImportColumns));
    }
    row.cells.push_back(std::move(cell));
}

bool CsvReader::next(CsvRow &row)
{
    if (m_layout.notes) {
        while (m_text.sliced(m_at).startsWith(remarkMark)) {
            m_at = std::min(lineEnd(m_at) + 1, m_text.size());
            ++m_line;
        }
    }
    if (m_at >= m_text.size()) {
        return false;
    }
    row.cells.clear();
    row.problem.clear();
    row.line = m_line;
    const qsizetype begin = m_at;
    const qsizetype end = lineEnd(begin);
    checkLength(begin, end);
    qsizetype behind = begin;
    if (!readCells(row, behind)) {
        if (++m_unclosed > mostUnclosed) {
            throw RuntimeError(ErrorName::Overflow,
                u"line %1: more than %2 quotes are never closed"_s.arg(m_line).arg(mostUnclosed));
        }
        row.problem = u"A quote (\") is opened and not closed"_s;
        row.cells.clear();
        behind = end;
        readUnquoted(row, m_text.sliced(begin, end - begin));
    }
    row.text = m_text.sliced(begin, behind - begin);
    row.endsInCrLf = m_end == u'\n' && row.text.endsWith(u'\r');
    if (row.endsInCrLf) {
        row.text.chop(1);
    }
    m_line += std::ranges::count(row.text, m_end) + 1;
    m_at = std::min(behind + 1, m_text.size());
    return true;
}

// Reads the cells of a record and moves `at` to its line end. False for a quote that is not closed.
bool CsvReader::readCells(CsvRow &row, qsizetype &at)
{
    const qsizetype begin = at;
    qsizetype end = lineEnd(at);
    while (true) {
        QString cell;
        if (m_layout.quotes && at < end && m_text[at] == u'"') {
            at = readQuoted(cell, at + 1);
            if (at == notFound || at - begin > longestImportLine) {
                return false;
            }
            if (at > end) {
                end = lineEnd(at);
            }
        }
        const QStringView rest = m_text.sliced(at, end - at);
        const qsizetype separator = rest.indexOf(m_layout.separator);
        QStringView plain = rest.first(separator < 0 ? rest.size() : separator);
        at += plain.size();
        if (separator < 0 && m_end == u'\n' && plain.endsWith(u'\r')) {
            plain.chop(1);
        }
        cell += plain;
        addCell(row, std::move(cell));
        if (separator < 0) {
            checkLength(begin, at);
            return true;
        }
        ++at;
    }
}

// Reads behind an opening quote; the place behind the closing one, or notFound.
qsizetype CsvReader::readQuoted(QString &cell, qsizetype at) const
{
    const qsizetype limit = std::min(m_text.size(), at + longestImportLine);
    while (at < limit) {
        const qsizetype quote = m_text.first(limit).indexOf(u'"', at);
        if (quote < 0) {
            return notFound;
        }
        cell += m_text.sliced(at, quote - at);
        at = quote + 1;
        if (at >= m_text.size() || m_text[at] != u'"') {
            return at;
        }
        cell += u'"';
        ++at;
    }
    return notFound;
}

void CsvReader::readUnquoted(CsvRow &row, QStringView line) const
{
    if (m_end == u'\n' && line.endsWith(u'\r')) {
        line.chop(1);
    }
    for (const QStringView cell : line.split(m_layout.separator)) {
        addCell(row, cell.toString());
    }
}

} // namespace quillon
