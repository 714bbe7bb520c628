#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <vector>

namespace quillon {

/// How the lines of a file are cut into cells.
struct CsvLayout
{
    QChar separator = u',';
    bool quotes = true; ///< a cell may stand in double quotes (RFC 4180)
    bool notes = false; ///< lines that begin with "#! " are remarks of this program
};

/// One record of a file with columns.
struct CsvRow
{
    qsizetype line = 0; ///< the number of its first line, from 1
    QStringView text; ///< as it stands in the file, without its line end
    std::vector<QString> cells;
    bool endsInCrLf = false;
    QString problem; ///< what is wrong with the record as such; `cells` hold what can be read of it

    /// The cell; empty for one that is not there.
    [[nodiscard]] QString cell(std::size_t column) const
    {
        return column < cells.size() ? cells[column] : QString();
    }
    /// True for a line without anything in it.
    [[nodiscard]] bool isBlank() const { return text.trimmed().isEmpty(); }
    /// True for a record all of whose cells are empty.
    [[nodiscard]] bool isEmpty() const
    {
        return std::ranges::all_of(cells, [](const QString &cell) { return cell.trimmed().isEmpty(); });
    }
};

/// How a remark begins, where there are some.
inline constexpr QStringView remarkMark = u"#! ";

/// Reads a text record by record. Lines end with CR LF or LF, or with CR where there is no LF; quotes inside
/// a quoted cell are doubled. A quote that is never closed makes a record of that one line, with a problem.
class CsvReader
{
public:
    /// `text` has to outlive the reader and its rows.
    CsvReader(QStringView text, CsvLayout layout);

    /// Reads the next record into `row`; false at the end. Throws "Overflow" for a line that does not end
    /// within longestImportLine characters, for more than mostImportColumns cells, and when too many quotes
    /// are never closed.
    bool next(CsvRow &row);

private:
    [[nodiscard]] qsizetype lineEnd(qsizetype from) const;
    [[nodiscard]] bool readCells(CsvRow &row, qsizetype &at);
    [[nodiscard]] qsizetype readQuoted(QString &cell, qsizetype at) const;
    void readUnquoted(CsvRow &row, QStringView line) const;
    void addCell(CsvRow &row, QString cell) const;
    void checkLength(qsizetype begin, qsizetype end) const;

    QStringView m_text;
    CsvLayout m_layout;
    QChar m_end = u'\n';
    qsizetype m_at = 0;
    qsizetype m_line = 1;
    int m_unclosed = 0;
};

} // namespace quillon
