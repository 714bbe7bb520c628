#include "live/ui/heardmodel.h"

#include "live/frequency.h"
#include "live/knownstations.h"
#include "platform/datetime.h"

#include <QLocale>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString timeText(qint64 milliseconds)
{
    return generalText(DateTime {milliseconds / 1000}).right(8);
}

QString signalText(const Station &station)
{
    return station.best ? QString(u"%1 %2"_s.arg(*station.best, 0, 'f', 1).arg(station.unit)).trimmed()
                        : QString();
}

QString cellText(const HeardRow &row, int column)
{
    const Station &station = row.station;
    switch (column) {
    case HeardModel::First:
        return timeText(station.first);
    case HeardModel::Last:
        return timeText(station.last);
    case HeardModel::Freq:
        return megahertzText(station.hertz);
    case HeardModel::Pi:
        return shownPi(station);
    case HeardModel::Ps:
        return station.ps;
    case HeardModel::Signal:
        return signalText(station);
    case HeardModel::Groups:
        return station.groups > 0 ? QString::number(station.groups) : QString();
    case HeardModel::New:
        return marksText(station.marks);
    case HeardModel::Logged:
        return row.logged ? u"yes"_s : QString();
    default:
        return {};
    }
}

struct Heading
{
    const char16_t *caption;
    const char16_t *usualText;
};

constexpr Heading headings[] = {
    {u"First", u"00:00:00"},
    {u"Last", u"00:00:00"},
    {u"MHz", u"108.00"},
    {u"PI", u"D3C2?"},
    {u"PS", u"ONDACERO"},
    {u"Best", u"-100.0 dBFS"},
    {u"Groups", u"10000"},
    {u"New", u"new frequency"},
    {u"Logged", u"yes"},
};
static_assert(std::size(headings) == HeardModel::Columns);

} // namespace

HeardModel::HeardModel(const HeardTable &table, QObject *parent)
    : QAbstractTableModel(parent)
    , m_table(&table)
    , m_generation(table.generation())
    , m_revision(table.revision())
{
    m_rows = static_cast<int>(table.rows().size());
}

void HeardModel::refresh()
{
    const int rows = static_cast<int>(m_table->rows().size());
    if (m_generation != m_table->generation()) {
        beginResetModel();
        m_generation = m_table->generation();
        m_revision = m_table->revision();
        m_rows = rows;
        endResetModel();
        return;
    }
    // Cell by cell: for more than one a view paints all that it shows.
    for (int row = 0; row < m_rows; ++row) {
        if (m_table->rows()[static_cast<std::size_t>(row)].revision > m_revision) {
            for (int column = 0; column < Columns; ++column) {
                Q_EMIT dataChanged(index(row, column), index(row, column));
            }
        }
    }
    m_revision = m_table->revision();
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    }
}

int HeardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int HeardModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int {Columns};
}

QVariant HeardModel::data(const QModelIndex &index, int role) const
{
    // The table can have lost rows that the view does not know of yet.
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= m_table->rows().size()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return cellText(m_table->rows()[row], index.column());
    }
    if (role == Qt::TextAlignmentRole) {
        const bool number = index.column() == Freq || index.column() == Signal || index.column() == Groups;
        return QVariant::fromValue(Qt::Alignment(number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

QVariant HeardModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section >= Columns) {
        return {};
    }
    return QString::fromUtf16(headings[section].caption);
}

QString HeardModel::usualText(Column column)
{
    return QString::fromUtf16(headings[column].usualText);
}

} // namespace quillon
