#include "ui/logmodel.h"

#include "ui/plaintip.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

int alignment(int column)
{
    const bool centred = logColumn(static_cast<GridColumn>(column)).centred;
    return static_cast<int>((centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

LogModel::LogModel(LogRows &rows, QObject *parent)
    : QAbstractTableModel(parent)
    , m_rows(rows)
{
    m_rows.setWatcher(this);
}

LogModel::~LogModel()
{
    m_rows.setWatcher(nullptr);
}

void LogModel::rowsChanging(std::span<const qint32> before, std::span<const qint32> after)
{
    const auto first = std::ranges::mismatch(before, after);
    const auto common = first.in1 - before.begin();
    const auto rest = before.subspan(static_cast<std::size_t>(common));
    const auto restAfter = after.subspan(static_cast<std::size_t>(common));
    const auto last = std::ranges::mismatch(rest.rbegin(), rest.rend(), restAfter.rbegin(), restAfter.rend());
    const int gone = static_cast<int>(rest.rend() - last.in1);
    const int come = static_cast<int>(restAfter.rend() - last.in2);
    const int row = static_cast<int>(common);
    if (gone == 0 && come == 0) {
        m_telling = Telling::Nothing;
    } else if (gone == 0) {
        m_telling = Telling::Insertion;
        beginInsertRows({}, row, row + come - 1);
    } else if (come == 0) {
        m_telling = Telling::Removal;
        beginRemoveRows({}, row, row + gone - 1);
    } else if (before.size() == after.size()) {
        m_telling = Telling::NewOrder;
        Q_EMIT layoutAboutToBeChanged();
        m_kept.clear();
        const QModelIndexList kept = persistentIndexList();
        for (const QModelIndex &index : kept) {
            m_kept.emplace_back(index, before[static_cast<std::size_t>(index.row())]);
        }
    } else {
        m_telling = Telling::Reset;
        beginResetModel();
    }
}

void LogModel::rowsChanged()
{
    switch (m_telling) {
    case Telling::Nothing:
        break;
    case Telling::Insertion:
        endInsertRows();
        break;
    case Telling::Removal:
        endRemoveRows();
        break;
    case Telling::NewOrder:
        moveIndexes();
        Q_EMIT layoutChanged();
        break;
    case Telling::Reset:
        endResetModel();
        break;
    }
    m_telling = Telling::Nothing;
}

void LogModel::moveIndexes()
{
    // One walk over the rows for all indexes: a whole selection can be kept.
    std::vector<int> rowOf(static_cast<std::size_t>(m_rows.log().count()), -1);
    int row = 0;
    for (const qint32 entry : m_rows.shown()) {
        rowOf[static_cast<std::size_t>(entry)] = row++;
    }
    for (const auto &[index, entry] : m_kept) {
        const int now = entry < m_rows.log().count() ? rowOf[static_cast<std::size_t>(entry)] : -1;
        changePersistentIndex(index, now < 0 ? QModelIndex() : createIndex(now, index.column()));
    }
    m_kept.clear();
}

void LogModel::cellsChanged(int firstRow, int lastRow)
{
    Q_EMIT dataChanged(index(firstRow, 0), index(lastRow, columnCount() - 1));
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.shown().size());
}

int LogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : allColumnCount;
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const qint32 entry = m_rows.shown()[static_cast<std::size_t>(index.row())];
    if (entry >= m_rows.log().count()) {
        // It is just being taken away.
        return {};
    }
    const auto text = [&] { return m_rows.text(entry, static_cast<GridColumn>(index.column())); };
    switch (role) {
    case Qt::DisplayRole:
        return text();
    case Qt::ToolTipRole:
        return wrappedTip(m_rows.tip(entry, static_cast<GridColumn>(index.column())));
    case Qt::TextAlignmentRole:
        return alignment(index.column());
    case EntryRole:
        return entry;
    default:
        return {};
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return logColumn(static_cast<GridColumn>(section)).caption.toString();
    case Qt::TextAlignmentRole:
        return alignment(section);
    default:
        return {};
    }
}

} // namespace quillon
