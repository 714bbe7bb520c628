#include "stats/ui/logstats.h"

#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "stats/charttable.h"
#include "ui/calmcombos.h"
#include "ui/chartcontrol.h"
#include "ui/guard.h"
#include "ui/messages.h"

#include "ui_logstats.h"

#include <QDir>
#include <QFontInfo>
#include <QLineEdit>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What is typed or chosen stays, and the cursor in it, whether it is among the choices or not.
void changeChoices(QComboBox &box, const QStringList &choices)
{
    QStringList before;
    for (int i = 0; i < box.count(); ++i) {
        before += box.itemText(i);
    }
    if (choices == before) {
        return;
    }
    QLineEdit &edit = *box.lineEdit();
    const QString text = edit.text();
    const int cursor = edit.cursorPosition();
    const int selected = edit.selectionStart();
    const int length = edit.selectionLength();
    box.clear();
    box.addItems(choices);
    box.setCurrentIndex(box.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    box.setEditText(text);
    edit.setCursorPosition(cursor);
    if (selected >= 0) {
        edit.setSelection(selected, length);
    }
}

template<typename... Functions>
struct Overloaded : Functions...
{
    using Functions::operator()...;
};

template<typename... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace

logStats::logStats(
    const Logbook &logbook, const QString &applicationDirectory, QWidget *parent, FileCalls &calls)
    : QDialog(parent)
    , m_logbook(logbook)
    , m_applicationDirectory(applicationDirectory)
    , m_calls(calls)
    , ui(std::make_unique<Ui::logStats>())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    const auto onClick = [this](QPushButton *button, void (logStats::*handler)()) {
        connect(button, &QPushButton::clicked, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
    };
    onClick(ui->Command1, &logStats::Command1_Click);
    onClick(ui->Command2, &logStats::Command2_Click);
    onClick(ui->Command3, &logStats::Command3_Click);
    keepCombosCalm(*this);
    m_drawLater.setSingleShot(true);
    connect(&m_drawLater, &QTimer::timeout, this, [this] { drawAgain(); });
    connect(ui->shownOnly, &QCheckBox::toggled, this, [this] { drawAgain(); });
    logStats_Form_Load();
    initGraph();
}

logStats::~logStats() = default;

void logStats::logStats_Form_Load()
{
    // What is typed stays as it is typed: the choices are compared by exact text.
    for (QComboBox *box : {ui->Combo1, ui->Combo2, ui->Combo3}) {
        box->setCompleter(nullptr);
        box->clear();
    }
    ui->Combo3->addItems(modeChoices());
    ui->Combo2->addItems(monthChoices());
    ui->Combo1->addItems(yearChoices({m_logbook.begin(), m_logbook.end()}));
}

void logStats::setRows(const LogRows &rows)
{
    m_rows = &rows;
    ui->shownOnly->setEnabled(true);
}

void logStats::shownChanged()
{
    // While one types a filter, once for several letters.
    constexpr int laterMs = 100;
    if (isShownOnly()) {
        m_drawLater.start(laterMs);
    }
}

// The chart that is there, of what is counted now.
void logStats::drawAgain()
{
    if (!m_drawn) {
        return;
    }
    try {
        draw(StatsSelection(*m_drawn));
    } catch (const RuntimeError &error) {
        // Nobody pressed a button: it is told where the chart was.
        ui->MSChart1->setTable({});
        ui->MSChart1->setEmptyText(error.text());
    }
}

bool logStats::isShownOnly() const
{
    return m_rows && ui->shownOnly->isChecked();
}

std::vector<LogEntry> logStats::shownEntries() const
{
    std::vector<LogEntry> entries;
    entries.reserve(m_rows->shown().size());
    for (const qint32 entry : m_rows->shown()) {
        entries.push_back(m_logbook.entry(entry));
    }
    return entries;
}

void logStats::logChanged()
{
    shownChanged();
    const std::span<const LogEntry> entries {m_logbook.begin(), m_logbook.end()};
    changeChoices(*ui->Combo3, modeChoices(entries));
    try {
        changeChoices(*ui->Combo1, yearChoices(entries));
    } catch (const RuntimeError &) {
        // An entry without a countable year: Draw Graph says which; a change of another one need not.
    }
}

StatsSelection logStats::selection() const
{
    return {ui->Combo1->currentText(), ui->Combo2->currentText(), ui->Combo3->currentText(),
        ui->Check1->isChecked()};
}

QString logStats::title() const
{
    return selectionText(m_drawn.value_or(selection())) + (isShownOnly() ? u", shown only"_s : QString());
}

void logStats::logStatsGetData(const QString &mode, const QString &year, const QString &month)
{
    draw({year, month, mode, ui->Check1->isChecked()});
}

void logStats::draw(const StatsSelection &chosen)
{
    const StatsBuckets buckets = isShownOnly()
        ? countReceptions(shownEntries(), chosen)
        : countReceptions({m_logbook.begin(), m_logbook.end()}, chosen);
    m_drawn = chosen;
    std::visit(Overloaded {
                   [this](const MonthCounts &counts) { renderDataMonth(counts); },
                   [this](const DayCounts &counts) { renderDataDays(counts); },
                   [this](const MonthHourCounts &counts) { renderDataMonthsTime(counts); },
                   [this](const DayHourCounts &counts) { renderDataDaysTime(counts); },
               },
        buckets);
}

void logStats::initGraph()
{
    FX_ResetMSChart(*ui->MSChart1);
    AddLegend(*ui->MSChart1, false);
    ui->MSChart1->setTable({});
    ui->MSChart1->setEmptyText(
        u"No chart yet.\nChoose a year, a month and a mode, then press \"Draw Graph\"."_s);
}

void logStats::AddLegend(ChartControl &MyChart, bool legendTgl)
{
    MyChart.setAutomaticLayout();
    MyChart.setLegend(legendTgl, QFont(u"Arial"_s, QFontInfo(font()).pointSize()));
}

void logStats::FX_ResetMSChart(ChartControl &MyChart)
{
    MyChart.setGridPenStyle(Qt::SolidLine);
    MyChart.setBackdrop(QPalette::Base, Qt::SolidPattern);
}

void logStats::renderDataTest()
{
    render(testTable(), true);
}

void logStats::renderDataMonth(const MonthCounts &Data)
{
    render(monthTable(Data, title()), false);
}

void logStats::renderDataDays(const DayCounts &Data)
{
    render(dayTable(Data, title()), false);
}

void logStats::renderDataDaysTime(const DayHourCounts &Data)
{
    render(dayHoursTable(Data, title()), true);
}

void logStats::renderDataMonthsTime(const MonthHourCounts &Data)
{
    render(monthHoursTable(Data, title()), true);
}

void logStats::renderDataDaysTime24depracated(const DayHourCounts &Data)
{
    render(dayHoursTable24(Data, title()), true);
}

void logStats::render(const ChartTable &table, bool legendTgl)
{
    FX_ResetMSChart(*ui->MSChart1);
    AddLegend(*ui->MSChart1, legendTgl);
    ui->MSChart1->setTable(table);
}

// Close.
void logStats::Command1_Click()
{
    close();
}

// Save Image: copies the chart to the clipboard and saves it as a bitmap.
void logStats::Command2_Click()
{
    const StatsSelection chosen = selection();
    const QString proposed =
        filePath(m_applicationDirectory, chosen.year + u'-' + chosen.month + u'-' + chosen.mode + u".bmp"_s);
    const QString answer = inputBox(this, u"Enter Filename"_s, u"Save as?"_s, proposed);
    if (answer.isEmpty()) {
        return;
    }
    saveBitmap(ui->MSChart1->copyPicture(), QDir(m_applicationDirectory).absoluteFilePath(answer), m_calls);
    showMessage(this, u"done"_s);
}

// Draw Graph: counts and draws.
void logStats::Command3_Click()
{
    const StatsSelection chosen = selection();
    logStatsGetData(chosen.mode, chosen.year, chosen.month);
    ui->MSChart1->show();
    ui->Command2->setEnabled(true);
}

} // namespace quillon
