#include "ui/gridmodel.h"

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

const GridColumnFormat &format(int column)
{
    return gridColumnFormats()[static_cast<std::size_t>(column)];
}

int alignment(int column)
{
    return static_cast<int>((format(column).centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

void GridModel::setRows(std::vector<GridRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void GridModel::setText(int row, GridColumn column, const QString &text)
{
    m_rows.at(static_cast<std::size_t>(row)).text(column) = text;
    const QModelIndex cell = index(row, static_cast<int>(column));
    Q_EMIT dataChanged(cell, cell);
}

void GridModel::permute(const std::vector<int> &positions)
{
    beginResetModel();
    std::vector<GridRow> rows;
    rows.reserve(m_rows.size());
    for (const int position : positions) {
        rows.push_back(std::move(m_rows[static_cast<std::size_t>(position)]));
    }
    m_rows = std::move(rows);
    endResetModel();
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : gridColumnCount;
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const QString &text =
        m_rows[static_cast<std::size_t>(index.row())].text(static_cast<GridColumn>(index.column()));
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::ToolTipRole:
        // As markup, so that the signs of markup within read as they stand, and long notes wrap.
        return text.isEmpty() ? QVariant() : QVariant(QString("<qt>"_L1 + text.toHtmlEscaped() + "</qt>"_L1));
    case Qt::TextAlignmentRole:
        return alignment(index.column());
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= gridColumnCount) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return format(section).caption.toString();
    case Qt::TextAlignmentRole:
        return alignment(section);
    default:
        return {};
    }
}

} // namespace quillon
