#include "core/ui/results.h"

#include "ui/resultlist.h"
#include "ui_results.h"

#include <QHeaderView>
#include <QTabBar>

#include <cmath>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView stationsHint =
    u"Search FMList lists matching stations here.\nDouble-click one to take it over.";

} // namespace

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
    m_ui->candidates->setHeadings(
        {{u"%"_s, u"100"_s, true}, {u"Transmitter"_s, u"Hohenpeissenberg"_s}, {u"Country"_s, u"TBD"_s, true},
            {u"Dist"_s, u"1234.5"_s, true}, {u"Why"_s, u"PI and name, Es distance"_s},
            {u"Azimuth"_s, u"231"_s, true}, {u"Power"_s, u"100"_s, true}, {u"RDS Name"_s, u"RADIO_88"_s}});
    for (const QString &caption : {u"Log"_s, u"FMList"_s, u"Probably"_s}) {
        m_ui->resultTabs->addTab(caption);
    }
    connect(m_ui->resultTabs, &QTabBar::currentChanged, this, &Results::showTab);
    connect(m_ui->candidates, &ResultList::lineActivated, this,
        [this](int line) { Q_EMIT candidateActivated(m_ui->candidates->given(line)); });
    connect(m_ui->List1, &ResultList::lineActivated, this, &Results::receptionActivated);
    connect(m_ui->List2, &ResultList::lineActivated, this, &Results::stationActivated);
    m_ui->List2->setEmptyText(stationsHint.toString());
    showReceptions();
}

Results::~Results() = default;

QList<QWidget *> Results::tabStops() const
{
    return {m_ui->resultTabs, m_ui->List1, m_ui->List2, m_ui->candidates};
}

void Results::showReceptions()
{
    m_ui->List1->setEmptyText(
        u"Search PI DB lists earlier receptions here.\nDouble-click one to show it in the log."_s);
    m_ui->resultTabs->setCurrentIndex(Receptions);
    showTab(Receptions);
}

void Results::showTab(int tab)
{
    m_ui->List1->setVisible(tab == Receptions);
    m_ui->List2->setVisible(tab == Stations);
    m_ui->candidates->setVisible(tab == Candidates);
    if (tab == Candidates) {
        Q_EMIT candidatesWanted();
    }
}

void Results::showCandidates()
{
    m_ui->resultTabs->setCurrentIndex(Candidates);
}

bool Results::candidatesShown() const
{
    return m_ui->resultTabs->currentIndex() == Candidates;
}

void Results::setCandidates(const QStringList &lines, const QString &textWhenEmpty)
{
    m_ui->candidates->setEmptyText(textWhenEmpty);
    if (lines != m_candidates) {
        m_candidates = lines;
        m_ui->candidates->setLines(lines);
    }
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
    m_ui->List2->setEmptyText(stationsHint.toString());
    m_ui->resultTabs->setCurrentIndex(Stations);
    showTab(Stations);
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
