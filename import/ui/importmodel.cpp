#include "import/ui/importmodel.h"

#include "core/logfields.h"
#include "ui/plaintip.h"

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestShown = 300;

std::size_t rowOf(const QModelIndex &index)
{
    return static_cast<std::size_t>(index.row());
}

GridColumn fieldOf(int column)
{
    return static_cast<GridColumn>(column - ImportModel::firstField);
}

QString shortened(QString text)
{
    text.replace(u'\r', u' ').replace(u'\n', u' ');
    return text.size() > longestShown ? text.first(longestShown) + u"..." : text;
}

} // namespace

ImportModel::ImportModel(ImportSession &session, const Logbook &log, QObject *parent)
    : QAbstractTableModel(parent)
    , m_session(session)
    , m_log(log)
{
}

void ImportModel::reset()
{
    beginResetModel();
    endResetModel();
}

void ImportModel::actionsChanged()
{
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void ImportModel::setAction(const QModelIndexList &rows, ImportAction action)
{
    for (const QModelIndex &row : rows) {
        m_session.setAction(rowOf(row), action);
    }
    actionsChanged();
    Q_EMIT chosen();
}

int ImportModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_session.rows().size());
}

int ImportModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : firstField + gridColumnCount;
}

QString ImportModel::state(std::size_t row) const
{
    if (m_session.rows()[row]->isRefused()) {
        return u"Refused"_s;
    }
    const bool isThere = m_session.match(row).isThere();
    switch (m_session.action(row)) {
    case ImportAction::Add:
        return isThere ? u"Add again"_s : u"Add"_s;
    case ImportAction::Complete:
        return u"Complete"_s;
    case ImportAction::LeaveOut:
        break;
    }
    return isThere ? u"Already there"_s : u"Left out"_s;
}

QString ImportModel::reason(std::size_t row) const
{
    const ImportRow &here = *m_session.rows()[row];
    if (here.isRefused()) {
        return shortened(here.refusal + u": "_s + here.text);
    }
    const ImportMatch &match = m_session.match(row);
    if (match.entry >= 0 && match.entry < m_log.count()) {
        const LogEntry &entry = m_log.entry(match.entry);
        QStringList empty;
        for (const LogField field : match.completes) {
            empty += logField(field).caption.toString();
        }
        const QString same =
            QStringList {generalText(entry.dateTime), entry.freq, entry.piCode, entry.rdsName}
                .join(u' ')
                .simplified();
        return shortened(u"In the log: "_s + same
            + (empty.isEmpty() ? QString() : u". Empty there: "_s + empty.join(u", "_s)));
    }
    if (match.above >= 0) {
        return u"The same as line %1 above"_s.arg(
            m_session.rows()[static_cast<std::size_t>(match.above)]->line);
    }
    return {};
}

QString ImportModel::text(std::size_t row, int column) const
{
    const ImportRow &here = *m_session.rows()[row];
    switch (column) {
    case State:
        return state(row);
    case Line:
        return m_session.sources().size() == 1
            ? QString::number(here.line)
            : m_session.sources()[static_cast<std::size_t>(here.source)].name + u": "_s
                + QString::number(here.line);
    case Reason:
        return reason(row);
    default:
        return here.isRefused() ? QString() : shortened(cellText(here.entry, fieldOf(column)));
    }
}

QVariant ImportModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const std::size_t row = rowOf(index);
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return text(row, column);
    case Qt::ToolTipRole:
        return wrappedTip(text(row, column));
    case Qt::CheckStateRole:
        if (column != State || m_session.rows()[row]->isRefused()) {
            return {};
        }
        return m_session.action(row) == ImportAction::LeaveOut ? Qt::Unchecked : Qt::Checked;
    case Qt::TextAlignmentRole: {
        const bool centred = column >= firstField && logColumn(fieldOf(column)).centred;
        return static_cast<int>(centred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    }
    default:
        return {};
    }
}

bool ImportModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != State) {
        return false;
    }
    const bool ticked = value.toInt() == Qt::Checked;
    setAction({index}, ticked ? ImportAction::Add : ImportAction::LeaveOut);
    return true;
}

QVariant ImportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case State:
        return u"What Happens"_s;
    case Line:
        return u"Line"_s;
    case Reason:
        return u"Why"_s;
    default:
        return logColumn(fieldOf(section)).caption.toString();
    }
}

Qt::ItemFlags ImportModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == State && !m_session.rows()[rowOf(index)]->isRefused()) {
        flags |= Qt::ItemIsUserCheckable;
    }
    return flags;
}

} // namespace quillon
