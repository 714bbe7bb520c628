#include "ui/resultmodel.h"

#include "core/genericorder.h"

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
    endResetModel();
}

void ResultModel::sortLines(int column)
{
    std::vector<QString> texts;
    texts.reserve(static_cast<std::size_t>(m_lines.size()));
    for (const QString &line : std::as_const(m_lines)) {
        texts.push_back(line.section(u'\t', column, column));
    }
    QStringList sorted;
    sorted.reserve(m_lines.size());
    for (const int position : genericSort(texts)) {
        sorted += m_lines.at(position);
    }
    setLines(sorted);
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
        return m_lines.at(index.row()).section(u'\t', index.column(), index.column());
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
