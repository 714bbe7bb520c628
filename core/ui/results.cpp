#include "core/ui/results.h"

#include "ui/resultlist.h"
#include "ui_results.h"

#include <QHeaderView>

#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

Results::Results(QWidget *parent)
    : QGroupBox(parent)
    , m_ui(std::make_unique<Ui::Results>())
{
    m_ui->setupUi(this);
    m_ui->List1->setHeadings({{u"PI Code"_s, u"D3C3"_s, true},
        {u"Date/Time"_s, u"30/08/2008 20:08:00"_s, true}, {u"Prop"_s, u"Tropo"_s, true},
        {u"Freq"_s, u"107.90"_s, true}, {u"Transmitter"_s, u"Hohenpeissenberg"_s},
        {u"Country"_s, u"TBD"_s, true}, {u"RDS Name"_s, u"RADIO_88"_s, true}, {u"Power"_s, u"100"_s, true}});
    m_ui->List2->setHeadings({{u"Freq"_s, u"107.90"_s, true}, {u"PI Code"_s, u"D3C3"_s, true},
        {u"RDS Name"_s, u"RADIO_88"_s, true}, {u"Country"_s, u"TBD"_s, true},
        {u"Transmitter"_s, u"Hohenpeissenberg"_s}, {u"Power"_s, u"100"_s, true},
        {u"Latitude"_s, u"-12.3456"_s, true}, {u"Longitude"_s, u"-123.4567"_s, true},
        {u"UID"_s, u"1234567"_s, true}, {u"Dist"_s, u"★ 1234.5"_s, true, true},
        {u"Azimuth"_s, u"359"_s, true, true}});
    // Where it is seen without scrolling.
    m_ui->List2->horizontalHeader()->moveSection(9, 2);
    m_ui->List2->horizontalHeader()->moveSection(10, 3);
    connect(m_ui->List1, &ResultList::lineActivated, this, &Results::receptionActivated);
    connect(m_ui->List2, &ResultList::lineActivated, this, &Results::stationActivated);
    showReceptions();
}

Results::~Results() = default;

QList<QWidget *> Results::tabStops() const
{
    return {m_ui->List1, m_ui->List2};
}

void Results::showReceptions()
{
    m_ui->List1->setEmptyText(
        u"Search PI DB lists earlier receptions here.\nDouble-click one to show it in the log."_s);
    m_ui->List2->hide();
    m_ui->List1->show();
}

void Results::setReceptions(const QStringList &lines, const QString &textWhenEmpty)
{
    m_ui->List1->clear();
    m_ui->List1->setLines(lines);
    m_ui->List1->setEmptyText(textWhenEmpty);
}

QString Results::dateTimeOf(int line) const
{
    return m_ui->List1->text(line).section(u'\t', 1, 1);
}

void Results::showStations()
{
    m_ui->List2->setEmptyText(
        u"Search FMList lists matching stations here.\nDouble-click one to take it over."_s);
    m_ui->List1->hide();
    m_ui->List2->show();
}

void Results::clearStations()
{
    m_ui->List2->clear();
    m_stations.clear();
}

void Results::setStations(const QList<SearchResult> &stations, const QString &textWhenEmpty, qsizetype chosen)
{
    QStringList rows;
    rows.reserve(stations.size());
    for (const SearchResult &station : stations) {
        rows += resultRow(station);
    }
    m_stations = stations;
    m_ui->List2->setLines(rows);
    m_ui->List2->setEmptyText(textWhenEmpty);
    m_ui->List2->setListIndex(static_cast<int>(chosen));
}

void Results::setLegs(
    const QList<std::optional<Leg>> &legs, DistanceUnit unit, std::optional<qsizetype> nearestPlausible)
{
    ResultsBeside beside {{}, nearestPlausible, u"the nearest that is plausible"_s};
    for (const std::optional<Leg> &leg : legs) {
        beside.cells += leg ? QStringList {distanceFigure(leg->kilometres, unit),
                            QString::number(std::lround(leg->azimuth) % 360)}
                            : QStringList();
    }
    m_ui->List2->setBeside(beside);
}

void Results::chooseStation(int line)
{
    m_ui->List2->setListIndex(line);
}

SearchResult Results::station(int line) const
{
    return chosenResult(m_stations.at(m_ui->List2->given(line)));
}

} // namespace quillon
