#include "stats/ui/collectionwindow.h"

#include "core/manyentries.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "stats/ui/calendarchart.h"
#include "stats/ui/collectionpage.h"
#include "stats/ui/rosechart.h"
#include "ui/chartcontrol.h"
#include "ui/guard.h"
#include "ui/messages.h"

#include "ui_collectionwindow.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScrollArea>

#include <numeric>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

ChartControl *barChart(const QString &name, const QString &caption, const QString &category)
{
    constexpr int least = 150;
    constexpr int mostSteps = 4;
    auto *chart = new ChartControl;
    chart->setObjectName(name);
    chart->setAccessibleName(caption);
    chart->setMinimumHeight(least);
    chart->setWords(category, caption);
    chart->setMostSteps(mostSteps);
    chart->setEmptyText(u"Nothing to count yet."_s);
    return chart;
}

QByteArray pngOf(const QImage &image, const QString &path)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        throw RuntimeError(ErrorName::InvalidProcedureCall, u"The picture cannot be made for "_s + path);
    }
    return bytes;
}

} // namespace

CollectionWindow::CollectionWindow(Reads reads, QWidget *parent, FileCalls &calls)
    : QDialog(parent)
    , m_reads(std::move(reads))
    , m_calls(calls)
    , m_ui(std::make_unique<Ui::CollectionWindow>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    addTabs();
    wire();
}

CollectionWindow::~CollectionWindow() = default;

void CollectionWindow::addTabs()
{
    m_countriesChart = barChart(u"countriesChart"_s, u"Receptions"_s, u"Country"_s);
    m_stationsChart = barChart(u"stationsChart"_s, u"New stations"_s, u"Year"_s);
    m_recordsChart = barChart(u"recordsChart"_s, u"km"_s, u"Mode"_s);
    m_openingsChart = barChart(u"openingsChart"_s, u"Openings"_s, u"Month"_s);
    m_calendar = new CalendarChart;
    m_calendar->setObjectName(u"calendarChart"_s);
    m_calendar->setAccessibleName(u"Receptions of each day"_s);
    m_rose = new RoseChart;
    m_rose->setObjectName(u"directionsChart"_s);
    m_rose->setAccessibleName(u"Receptions by direction"_s);
    m_tabs = {
        {m_ui->countries, u"countries"_s, m_countriesChart, &CollectionWindow::countCountries},
        {m_ui->stations, u"stations"_s, m_stationsChart, &CollectionWindow::countStations},
        {m_ui->records, u"records"_s, m_recordsChart, &CollectionWindow::countRecords},
        {m_ui->calendar, u"calendar"_s, m_calendar, &CollectionWindow::countCalendar},
        {m_ui->directions, u"directions"_s, m_rose, &CollectionWindow::countDirections},
        {m_ui->openings, u"openings"_s, m_openingsChart, &CollectionWindow::countOpenings},
    };
    constexpr int low = 220;
    constexpr int high = 420;
    for (const Tab &tab : m_tabs) {
        tab.page->prepare(tab.name, m_ui->tabs->tabText(m_ui->tabs->indexOf(tab.page)).remove(u'&'));
        const bool isPainted = tab.chart == m_calendar || tab.chart == m_rose;
        QWidget *chart = tab.chart;
        if (chart == m_calendar) {
            auto *area = new QScrollArea;
            area->setObjectName(u"calendarArea"_s);
            area->setAccessibleName(u"Calendar"_s);
            area->setWidgetResizable(true);
            area->setWidget(chart);
            chart = area;
        }
        tab.page->addChart(chart, isPainted ? high : low);
        connect(tab.page, &CollectionPage::receptionsWanted, this, &CollectionWindow::receptionsWanted);
    }
    m_ui->countries->addGroups(countryGroups());
}

void CollectionWindow::wire()
{
    constexpr int laterMs = 150;
    m_later.setSingleShot(true);
    m_later.setInterval(laterMs);
    connect(&m_later, &QTimer::timeout, this, [this] { guarded(this, [this] { countCurrent(); }); });
    connect(
        m_ui->tabs, &QTabWidget::currentChanged, this, [this] { guarded(this, [this] { countCurrent(); }); });
    connect(m_ui->shownOnly, &QCheckBox::toggled, this, [this] {
        logChanged();
        guarded(this, [this] { countCurrent(); });
    });
    const auto onClick = [this](QPushButton *button, void (CollectionWindow::*work)()) {
        connect(button, &QPushButton::clicked, this,
            [this, work] { guarded(this, [this, work] { (this->*work)(); }); });
    };
    onClick(m_ui->saveCsv, &CollectionWindow::saveCsv);
    onClick(m_ui->savePicture, &CollectionWindow::savePicture);
    onClick(m_ui->copyText, &CollectionWindow::copyText);
    connect(m_ui->closeWindow, &QPushButton::clicked, this, &QWidget::close);
    connect(m_calendar, &CalendarChart::dayChosen, this, [this](DateTime day) {
        Q_EMIT receptionsWanted({dayFilter(day), {}, {}});
    });
    connect(m_rose, &RoseChart::directionChosen, this, [this](std::size_t direction) {
        if (m_source) {
            Q_EMIT receptionsWanted(directionReceptions(*m_source, direction, allModes));
        }
    });
}

bool CollectionWindow::isShownOnly() const
{
    return m_ui->shownOnly->isChecked();
}

void CollectionWindow::logChanged()
{
    const bool isShorter = m_reads.log.count() < m_mostNumbers;
    for (Tab &tab : m_tabs) {
        tab.isCounted = false;
        // What it was counted from may be painted before it is counted again, and is not there any more.
        if (isShorter) {
            tab.page->showTable({});
        }
    }
    if (isShorter) {
        m_mostNumbers = 0;
        m_openings.reset();
    }
    m_source.reset();
    m_later.start();
}

void CollectionWindow::shownChanged()
{
    if (isShownOnly()) {
        logChanged();
    }
}

void CollectionWindow::showEvent(QShowEvent *event)
{
    guarded(this, [this] { countCurrent(); });
    QDialog::showEvent(event);
}

CollectionWindow::Tab &CollectionWindow::current()
{
    return m_tabs[static_cast<std::size_t>(std::max(m_ui->tabs->currentIndex(), 0))];
}

// Only what is seen is counted, and what it has in common with the others once for all of them.
void CollectionWindow::countCurrent()
{
    m_later.stop();
    if (!m_source) {
        std::vector<qint32> entries;
        if (isShownOnly()) {
            entries = m_reads.shown();
        } else {
            entries.resize(static_cast<std::size_t>(m_reads.log.count()));
            std::iota(entries.begin(), entries.end(), 0);
        }
        m_source = std::make_unique<CollectionSource>(CollectionSource {m_reads.log, m_reads.sites,
            m_reads.config.settings(), m_reads.novelty, countedEntries(m_reads.log, entries)});
        m_ui->counted->setText(receptionCount(static_cast<qsizetype>(m_source->entries.size())));
    }
    Tab &tab = current();
    m_ui->copyText->setVisible(tab.page == m_ui->openings);
    if (!tab.isCounted) {
        m_mostNumbers = std::max(m_mostNumbers, m_reads.log.count());
        (this->*tab.count)();
        tab.isCounted = true;
    }
}

void CollectionWindow::showView(CollectionPage *page, CollectionView view)
{
    if (auto *chart = qobject_cast<ChartControl *>(current().chart)) {
        chart->setTable(view.chart);
    }
    page->showTable(std::move(view.table));
}

void CollectionWindow::countCountries()
{
    showView(m_ui->countries, countriesView(*m_source));
}

void CollectionWindow::countStations()
{
    showView(m_ui->stations, stationsView(*m_source));
}

void CollectionWindow::countRecords()
{
    showView(m_ui->records, recordsView(*m_source));
}

void CollectionWindow::countCalendar()
{
    const auto years =
        std::make_shared<const std::vector<YearFigures>>(yearFigures(m_source->log, m_source->entries));
    m_calendar->setYears(years);
    showView(m_ui->calendar, calendarView(*m_source, years));
}

void CollectionWindow::countDirections()
{
    SiteLegs legs(m_source->sites, m_source->settings);
    const auto figures =
        std::make_shared<const DirectionFigures>(directionFigures(m_source->log, m_source->entries, legs));
    m_rose->setFigures(figures);
    showView(m_ui->directions, directionsView(*m_source, figures));
}

void CollectionWindow::countOpenings()
{
    SiteLegs legs(m_source->sites, m_source->settings);
    m_openings = std::make_shared<const std::vector<Opening>>(
        openings(m_source->log, m_source->entries, m_source->settings.inMiles(), legs, m_source->novelty));
    showView(m_ui->openings, openingsView(*m_source, m_openings));
}

QImage CollectionWindow::currentPicture()
{
    if (const auto *chart = qobject_cast<ChartControl *>(current().chart)) {
        return chart->picture();
    }
    return qobject_cast<PaintedChart *>(current().chart)->picture();
}

// Save CSV: the table, as it is sorted.
void CollectionWindow::saveCsv()
{
    countCurrent();
    const CollectionPage &page = *current().page;
    save(u"collection-%1.csv"_s.arg(current().name),
        [&page] { return figureCsv(page.table(), page.rowsInOrder()); });
}

// Save Picture: the chart.
void CollectionWindow::savePicture()
{
    countCurrent();
    const QString name = u"collection-%1.png"_s.arg(current().name);
    save(name, [this, &name] { return pngOf(currentPicture(), name); });
}

void CollectionWindow::save(const QString &proposed, const std::function<QByteArray()> &bytes)
{
    const QString directory = m_reads.config.applicationDir();
    const QString answer = inputBox(this, u"Enter Filename"_s, u"Save as?"_s, filePath(directory, proposed));
    if (answer.isEmpty()) {
        return;
    }
    const QString path = QDir(directory).absoluteFilePath(answer);
    if (QFileInfo::exists(path) && !askYesNo(this, path + u" is there already. Replace it?"_s, u"Save"_s)) {
        return;
    }
    writeFile(path, bytes(), m_calls);
    m_ui->counted->setText(u"Saved as "_s + path);
}

// Copy as Text: a report of the chosen opening, or of the latest one.
void CollectionWindow::copyText()
{
    countCurrent();
    if (!m_openings || m_openings->empty()) {
        m_ui->counted->setText(u"No opening to copy"_s);
        return;
    }
    const int row = m_ui->openings->currentRow();
    const Opening &opening = row < 0 ? m_openings->back() : (*m_openings)[static_cast<std::size_t>(row)];
    QGuiApplication::clipboard()->setText(openingReport(*m_source, opening));
    m_ui->counted->setText(
        u"Copied a report of "_s + receptionCount(static_cast<qsizetype>(opening.entries.size())));
}

} // namespace quillon
