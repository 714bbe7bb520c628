#include "ui/resultmodel.h"

#include "core/genericorder.h"

#include <algorithm>
#include <numeric>

namespace quillon {

void ResultModel::setHeadings(const QList<ResultHeading> &headings)
{
    beginResetModel();
    m_headings = headings;
    endResetModel();
}

void ResultModel::setLines(const QStringList &lines)
{
    beginResetModel();
    m_lines = lines;
    m_order.resize(static_cast<std::size_t>(lines.size()));
    std::iota(m_order.begin(), m_order.end(), 0);
    endResetModel();
}

void ResultModel::sortLines(int column)
{
    std::vector<QString> texts;
    texts.reserve(m_order.size());
    for (const int given : m_order) {
        texts.push_back(m_lines.at(given).section(u'\t', column, column));
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
    switch (role) {
    case Qt::DisplayRole:
        return line(index.row()).section(u'\t', index.column(), index.column());
    case Qt::TextAlignmentRole:
        return alignment(index.column());
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
