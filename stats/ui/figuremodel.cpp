#include "stats/ui/figuremodel.h"

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QVariant order(const Figure &figure)
{
    if (const auto *text = std::get_if<QString>(&figure)) {
        return *text;
    }
    if (const auto *number = std::get_if<double>(&figure)) {
        return *number;
    }
    const auto *moment = std::get_if<DateTime>(&figure);
    return moment ? QVariant(moment->seconds) : QVariant();
}

} // namespace

void FigureModel::setTable(FigureTable table)
{
    beginResetModel();
    m_table = std::move(table);
    endResetModel();
}

int FigureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_table.rows;
}

int FigureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_table.columns.size());
}

QVariant FigureModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto text = [&] {
        return figureText(m_table.columns[static_cast<std::size_t>(index.column())],
            m_table.figure(index.row(), index.column()));
    };
    switch (role) {
    case Qt::DisplayRole:
        return text();
    case Qt::ToolTipRole: {
        // As markup, so that the signs of markup within read as they stand.
        const QString tip = text();
        return tip.isEmpty() ? QVariant()
                             : QVariant(QString("<qt>"_L1 + tip.toHtmlEscaped()
                                 + "<br>Double-click, or Enter: these receptions in the log</qt>"_L1));
    }
    case Qt::TextAlignmentRole:
        return alignment(index.column());
    case OrderRole:
        return order(m_table.figure(index.row(), index.column()));
    default:
        return {};
    }
}

QVariant FigureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return m_table.columns[static_cast<std::size_t>(section)].caption;
    case Qt::TextAlignmentRole:
        return alignment(section);
    default:
        return {};
    }
}

QVariant FigureModel::alignment(int column) const
{
    const bool isText = m_table.columns[static_cast<std::size_t>(column)].kind == FigureColumn::Kind::Text;
    return static_cast<int>((isText ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
}

} // namespace quillon
