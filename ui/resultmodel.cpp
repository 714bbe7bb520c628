#include "ui/resultmodel.h"

#include "core/genericorder.h"
#include "ui/plaintip.h"

#include <QFont>

#include <algorithm>
#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

void ResultModel::setHeadings(const QList<ResultHeading> &headings)
{
    beginResetModel();
    m_headings = headings;
    const auto beside = std::ranges::find(headings, true, &ResultHeading::beside);
    m_firstBeside = static_cast<int>(beside - headings.begin());
    endResetModel();
}

void ResultModel::setLines(const QStringList &lines)
{
    beginResetModel();
    m_lines = lines;
    m_beside = {};
    m_order.resize(static_cast<std::size_t>(lines.size()));
    std::iota(m_order.begin(), m_order.end(), 0);
    endResetModel();
}

void ResultModel::setBeside(const ResultsBeside &beside)
{
    m_beside = beside;
    if (!m_lines.isEmpty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

QString ResultModel::cell(int given, int column) const
{
    return column < m_firstBeside ? m_lines.at(given).section(u'\t', column, column)
                                  : m_beside.cells.value(given).value(column - m_firstBeside);
}

void ResultModel::sortLines(int column)
{
    std::vector<QString> texts;
    texts.reserve(m_order.size());
    for (const int given : m_order) {
        texts.push_back(cell(given, column));
    }
    std::vector<int> sorted;
    sorted.reserve(m_order.size());
    for (const int row : genericSort(texts)) {
        sorted.push_back(given(row));
    }
    beginResetModel();
    m_order = std::move(sorted);
    endResetModel();
}

int ResultModel::lineOf(int given) const
{
    const auto found = std::ranges::find(m_order, given);
    return found == m_order.end() ? -1 : static_cast<int>(found - m_order.begin());
}

int ResultModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int ResultModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant ResultModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const QString text = cell(given(index.row()), index.column());
    if (index.column() == m_firstBeside && m_beside.marked == given(index.row())) {
        if (QVariant marked = markedData(text, role); marked.isValid()) {
            return marked;
        }
    }
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::TextAlignmentRole:
        return alignment(index.column());
    default:
        return {};
    }
}

// Of the cell beside the marked line.
QVariant ResultModel::markedData(const QString &text, int role) const
{
    QFont bold;
    switch (role) {
    case Qt::DisplayRole:
        return QString(u"★ "_s + text);
    case Qt::AccessibleTextRole:
        return QString(text + u", "_s + m_beside.reason);
    case Qt::ToolTipRole:
        return plainTip(m_beside.reason);
    case Qt::FontRole:
        bold.setBold(true);
        return bold;
    default:
        return {};
    }
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_headings.size()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return m_headings.at(section).caption;
    case Qt::TextAlignmentRole:
        return alignment(section);
    default:
        return {};
    }
}

QVariant ResultModel::alignment(int column) const
{
    return static_cast<int>(
        (m_headings.at(column).centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace quillon
