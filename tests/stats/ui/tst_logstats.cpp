#include "stats/charttable.h"
#include "stats/ui/logstats.h"
#include "support/changedlog.h"
#include "support/combos.h"
#include "support/dialogs.h"
#include "support/pictures.h"
#include "support/testfiles.h"
#include "support/wheel.h"
#include "ui/chartcontrol.h"

#include <QChart>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLegend>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <cmath>
#include <limits>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

void add(Logbook &logbook, const CivilTime &time, const QString &prop, int times = 1)
{
    LogEntry entry;
    entry.piCode = u"D3C3"_s;
    entry.dateTime = *fromCivil(time);
    entry.prop = prop;
    entry.freq = u"87.60"_s;
    for (int i = 0; i < times; ++i) {
        logbook.AddEntry(entry);
    }
}

Logbook sampleLog()
{
    Logbook logbook;
    add(logbook, {2010, 6, 12, 14, 22, 5}, u"Es"_s, 8);
    add(logbook, {2010, 6, 12, 15, 59, 59}, u"Es"_s, 2);
    add(logbook, {2010, 6, 30, 23, 0, 0}, u"Tropo"_s, 5);
    add(logbook, {2009, 12, 31, 0, 0, 0}, u"MS"_s, 4);
    return logbook;
}

/// The window with its controls, as a person meets them.
struct Window
{
    explicit Window(const Logbook &logbook, const QString &directory = u"/nowhere"_s)
        : window(new logStats(logbook, directory))
    {
        window->show();
    }
    ~Window() { delete window; }
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    template<typename Control>
    [[nodiscard]] Control &control(const QString &name) const
    {
        auto *found = window->findChild<Control *>(name);
        Q_ASSERT(found);
        return *found;
    }
    [[nodiscard]] ChartControl &chart() const { return control<ChartControl>(u"MSChart1"_s); }
    [[nodiscard]] QPushButton &button(const QString &name) const { return control<QPushButton>(name); }
    void click(const QString &name) const { QTest::mouseClick(&button(name), Qt::LeftButton); }
    void type(const QString &box, const QString &text) const
    {
        QLineEdit *edit = control<QComboBox>(box).lineEdit();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    void choose(const QString &year, const QString &month, const QString &mode, bool hours) const
    {
        type(u"Combo1"_s, year);
        type(u"Combo2"_s, month);
        type(u"Combo3"_s, mode);
        if (control<QCheckBox>(u"Check1"_s).isChecked() != hours) {
            QTest::keyClick(&control<QCheckBox>(u"Check1"_s), Qt::Key_Space);
        }
    }
    [[nodiscard]] QStringList choices(const QString &box) const { return itemsOf(control<QComboBox>(box)); }

    QPointer<logStats> window;
};

int sumOf(const ChartTable &table)
{
    int sum = 0;
    for (int row = 2; row <= table.rows(); ++row) {
        for (int column = 2; column <= table.columns(); ++column) {
            sum += table.cell(row, column).toInt();
        }
    }
    return sum;
}

} // namespace

class TestLogStats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirCaptionsAndChoices()
    {
        const Logbook logbook = sampleLog();
        const Window stats(logbook);
        const auto caption = [](QString text) { return text.remove(u'&'); };
        QCOMPARE(stats.window->objectName(), u"logStats"_s);
        QCOMPARE(stats.window->windowTitle(), u"Stats"_s);
        QCOMPARE(stats.choices(u"Combo1"_s), QStringList({u"All"_s, u"2010"_s, u"2009"_s}));
        QCOMPARE(stats.choices(u"Combo2"_s), monthChoices());
        QCOMPARE(stats.choices(u"Combo3"_s), modeChoices());
        const QStringList labels {u"Year"_s, u"Month"_s, u"Mode"_s};
        for (int i = 1; i <= 3; ++i) {
            const auto &combo = stats.control<QComboBox>(u"Combo"_s + QString::number(i));
            QCOMPARE(combo.currentText(), u"All"_s);
            QVERIFY(!combo.accessibleName().isEmpty());
            const auto &label = stats.control<QLabel>(u"Label"_s + QString::number(i));
            QCOMPARE(caption(label.text()), labels[i - 1]);
            QCOMPARE(label.buddy(), &combo);
        }
        const auto &check = stats.control<QCheckBox>(u"Check1"_s);
        QCOMPARE(caption(check.text()), u"Time Distribution"_s);
        QVERIFY(!check.isChecked());
        QCOMPARE(caption(stats.button(u"Command1"_s).text()), u"Close"_s);
        QCOMPARE(caption(stats.button(u"Command2"_s).text()), u"Save Image"_s);
        QCOMPARE(caption(stats.button(u"Command3"_s).text()), u"Draw Graph"_s);
        QVERIFY(!stats.button(u"Command2"_s).isEnabled());
        QVERIFY(stats.chart().table().isEmpty());
    }

    void drawGraphDrawsTheChoice_data()
    {
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("hours");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("sum");
        QTest::addColumn<int>("largest");
        const QString all = u"All"_s;
        QTest::newRow("months") << all << all << all << false << 13 << 2 << 19 << 15;
        QTest::newRow("days") << u"2010"_s << u"June"_s << all << false << 32 << 2 << 15 << 10;
        QTest::newRow("months and hours") << all << all << all << true << 13 << 13 << 19 << 10;
        QTest::newRow("days and hours") << u"2010"_s << u"June"_s << u"Es"_s << true << 32 << 13 << 10 << 10;
        QTest::newRow("a month in lower case") << all << u"june"_s << all << false << 32 << 2 << 0 << 0;
        QTest::newRow("a year without entries") << u"1999"_s << all << all << true << 13 << 13 << 0 << 0;
    }

    void drawGraphDrawsTheChoice()
    {
        QFETCH(QString, year);
        QFETCH(QString, month);
        QFETCH(QString, mode);
        QFETCH(bool, hours);
        const Logbook logbook = sampleLog();
        const Window stats(logbook);
        stats.choose(year, month, mode, hours);
        QVERIFY(stats.chart().table().isEmpty());
        stats.click(u"Command3"_s);

        const ChartTable &table = stats.chart().table();
        QTEST(table.rows(), "rows");
        QTEST(table.columns(), "columns");
        QTEST(sumOf(table), "sum");
        QTEST(table.largest(), "largest");
        const QString title = year + u" / "_s + month + u" / "_s + mode;
        QCOMPARE(stats.chart().chart()->title(), title);
        QCOMPARE(table.cell(1, 1), u"Period"_s);
        QCOMPARE(table.cell(1, 2), hours ? u"00 & 01 hrs"_s : title);
        QCOMPARE(stats.chart().chart()->legend()->isVisible(), hours);
        QCOMPARE(stats.chart().chart()->legend()->font().family(), u"Arial"_s);
        QVERIFY(stats.chart().isVisible());
        QVERIFY(stats.button(u"Command2"_s).isEnabled());
    }

    void onlyDrawGraphRedraws()
    {
        Logbook logbook = sampleLog();
        const Window stats(logbook);
        stats.click(u"Command3"_s);
        stats.choose(u"2010"_s, u"June"_s, u"Es"_s, true);
        add(logbook, {2010, 6, 12, 14, 22, 5}, u"Es"_s);
        QCOMPARE(stats.chart().table().rows(), 13);
        QCOMPARE(sumOf(stats.chart().table()), 19);
        stats.click(u"Command3"_s);
        QCOMPARE(stats.chart().table().rows(), 32);
        QCOMPARE(sumOf(stats.chart().table()), 11);
    }

    void enterInABoxDrawsAndKeepsWhatIsTyped()
    {
        const Logbook logbook = sampleLog();
        const Window stats(logbook);
        stats.type(u"Combo2"_s, u"ju"_s);
        QTest::keyClick(stats.control<QComboBox>(u"Combo2"_s).lineEdit(), Qt::Key_Return);
        QCOMPARE(stats.chart().chart()->title(), u"All / ju / All"_s);
        QCOMPARE(stats.choices(u"Combo2"_s), monthChoices());
    }

    void anEmptyLogDrawsAnEmptyChart()
    {
        const Logbook logbook;
        const Window stats(logbook);
        QCOMPARE(stats.choices(u"Combo1"_s), QStringList(u"All"_s));
        stats.click(u"Command3"_s);
        QCOMPARE(stats.chart().table().rows(), 13);
        QCOMPARE(sumOf(stats.chart().table()), 0);
        QVERIFY(stats.button(u"Command2"_s).isEnabled());
    }

    void theRoutinesThatNothingCallsDraw()
    {
        const Logbook logbook;
        const Window stats(logbook);
        const QLegend *legend = stats.chart().chart()->legend();
        stats.window->renderDataMonth({});
        QVERIFY(!legend->isVisible());
        stats.window->renderDataTest();
        QCOMPARE(stats.chart().table().cell(1, 2), u"Test 1"_s);
        QVERIFY(legend->isVisible());
        stats.window->renderDataDays({});
        QVERIFY(!legend->isVisible());
        DayHourCounts counts {};
        counts[23][31] = 7;
        stats.window->renderDataDaysTime24depracated(counts);
        QCOMPARE(stats.chart().table().cell(32, 25), u"7"_s);
        QCOMPARE(stats.chart().table().cell(1, 25), u"23hr"_s);
        QVERIFY(legend->isVisible());
        stats.window->initGraph();
        QVERIFY(stats.chart().table().isEmpty());
    }

    void anErrorLeavesTheChartAndIsShown()
    {
        Logbook logbook = sampleLog();
        const Window stats(logbook);
        changeEntry(
            logbook, 3, [](LogEntry &entry) { entry.dateTime.seconds = std::numeric_limits<qint64>::max(); });
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        stats.click(u"Command3"_s);
        QCOMPARE(answers.seen().size(), 1);
        QCOMPARE(answers.seen().first().title, u"Quillon"_s);
        QCOMPARE(answers.seen().first().text,
            u"Run-time error: Type mismatch\nCounting the receptions: the date and time of entry 3 of the "
            u"log "
            "(D3C3, 87.60 MHz) is outside the years 100 to 9999"_s);
        QVERIFY(stats.chart().table().isEmpty());
        QVERIFY(!stats.button(u"Command2"_s).isEnabled());
    }

    void saveImageProposesAndSavesOverTheOldFile()
    {
        const Logbook logbook = sampleLog();
        const TestDirectory directory;
        directory.write(u"2010-June-Es.bmp"_s, "old");
        const Window stats(logbook, directory.path());
        stats.choose(u"2010"_s, u"June"_s, u"Es"_s, true);
        stats.click(u"Command3"_s);
        DialogAnswers answers;
        answers.accept();
        answers.press(QMessageBox::Ok);
        stats.click(u"Command2"_s);

        QCOMPARE(answers.seen().size(), 2);
        QCOMPARE(answers.seen()[0].title, u"Save as?"_s);
        QCOMPARE(answers.seen()[0].text, u"Enter Filename"_s);
        QCOMPARE(answers.seen()[0].input, directory.file(u"2010-June-Es.bmp"_s));
        QCOMPARE(answers.seen()[1].text, u"done"_s);
        QCOMPARE(directory.names(), QStringList(u"2010-June-Es.bmp"_s));
        const QImage saved(directory.file(u"2010-June-Es.bmp"_s), "BMP");
        QVERIFY(saved.width() >= 1600 && saved.height() >= 900);
        QCOMPARE(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
            saved.convertToFormat(QImage::Format_RGB32));

        // All receptions are of the 12th at 14 and 15 hours: one bar, and the mark of the legend.
        const auto areas = areasOf(saved, ChartStyle::of(lightPalette()).series(7, 12).rgb());
        QCOMPARE(areas.size(), std::size_t(2));
        QVERIFY(areas[0].height() > saved.height() * 7 / 10);
        const double share = static_cast<double>(areas[0].center().x()) / saved.width();
        QVERIFY(share > 0.35 && share < 0.39);
    }

    void theSavedBarsAreAsHighAsTheirCounts()
    {
        const Logbook logbook = sampleLog();
        const TestDirectory directory;
        const Window stats(logbook, directory.path());
        stats.window->resize(700, 500);
        stats.click(u"Command3"_s);
        DialogAnswers answers;
        answers.type(u"mine.bmp"_s);
        answers.press(QMessageBox::Ok);
        stats.click(u"Command2"_s);

        const QImage saved(directory.file(u"mine.bmp"_s), "BMP");
        const auto bars = areasOf(saved, ChartStyle::of(lightPalette()).series(0, 1).rgb());
        QCOMPARE(bars.size(), std::size_t(2)); // June 15, December 4
        QVERIFY(std::abs(bars[1].height() * 15.0 / 4.0 - bars[0].height()) < 6);
        const double left = saved.width() * 0.04;
        const double pitch = (bars[1].center().x() - bars[0].center().x()) / 6.0;
        QVERIFY(std::abs(bars[0].center().x() - 5.5 * pitch - left) < 40);
    }

    void anEmptyAnswerSavesNothing_data()
    {
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("cancelled") << true;
        QTest::newRow("empty") << false;
    }

    void anEmptyAnswerSavesNothing()
    {
        QFETCH(bool, cancelled);
        const Logbook logbook = sampleLog();
        const TestDirectory directory;
        const Window stats(logbook, directory.path());
        stats.click(u"Command3"_s);
        QGuiApplication::clipboard()->setText(u"kept"_s);
        DialogAnswers answers;
        cancelled ? answers.cancel() : answers.type({});
        stats.click(u"Command2"_s);
        QCOMPARE(answers.seen().size(), 1);
        QCOMPARE(answers.seen().first().input, directory.file(u"All-All-All.bmp"_s));
        QCOMPARE(directory.names(), QStringList());
        QCOMPARE(QGuiApplication::clipboard()->text(), u"kept"_s);
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        const Logbook logbook = sampleLog();
        const TestDirectory directory;
        const Window stats(logbook, directory.path());
        stats.click(u"Command3"_s);
        DialogAnswers answers;
        answers.type(u"missing/chart.bmp"_s);
        answers.press(QMessageBox::Ok);
        stats.click(u"Command2"_s);
        QCOMPARE(answers.seen().size(), 2);
        QCOMPARE(answers.seen()[1].title, u"Quillon"_s);
        QVERIFY(answers.seen()[1].text.startsWith(u"Run-time error: "_s));
        QVERIFY(answers.seen()[1].text.contains(directory.file(u"missing/chart.bmp"_s)));
        QCOMPARE(directory.names(), QStringList());
        QVERIFY(stats.button(u"Command2"_s).isEnabled());
    }

    void closeAndEscEndTheWindow()
    {
        const Logbook logbook;
        const Window closed(logbook);
        closed.click(u"Command1"_s);
        QTRY_VERIFY(closed.window.isNull());
        const Window escaped(logbook);
        QTest::keyClick(escaped.window, Qt::Key_Escape);
        QTRY_VERIFY(escaped.window.isNull());
    }

    void theOpenWindowLearnsNewYearsAndModes()
    {
        Logbook logbook = sampleLog();
        const Window stats(logbook);
        stats.choose(u"2009"_s, u"December"_s, u"MS"_s, false);
        stats.click(u"Command3"_s);
        const int drawn = sumOf(stats.chart().table());
        add(logbook, {2011, 5, 1, 12, 0, 0}, u"Sc"_s);
        const QStringList modes = stats.choices(u"Combo3"_s);
        stats.window->logChanged();
        QCOMPARE(stats.choices(u"Combo1"_s), (QStringList {u"All"_s, u"2010"_s, u"2009"_s, u"2011"_s}));
        QCOMPARE(stats.choices(u"Combo3"_s), modes + QStringList {u"Sc"_s});
        for (const auto &[box, text] :
            {std::pair {u"Combo1"_s, u"2009"_s}, {u"Combo2"_s, u"December"_s}, {u"Combo3"_s, u"MS"_s}}) {
            QCOMPARE(stats.control<QComboBox>(box).currentText(), text);
        }
        QCOMPARE(sumOf(stats.chart().table()), drawn);
        stats.choose(u"2011"_s, u"May"_s, u"Sc"_s, false);
        stats.click(u"Command3"_s);
        QCOMPARE(sumOf(stats.chart().table()), 1);
    }

    void whatIsBeingTypedStaysWhenTheLogChanges()
    {
        Logbook logbook = sampleLog();
        const Window stats(logbook);
        stats.type(u"Combo1"_s, u"2013"_s);
        QLineEdit *edit = stats.control<QComboBox>(u"Combo1"_s).lineEdit();
        edit->setCursorPosition(2);
        add(logbook, {2011, 5, 1, 12, 0, 0}, u"Es"_s);
        stats.window->logChanged();
        QCOMPARE(edit->text(), u"2013"_s);
        QCOMPARE(edit->cursorPosition(), 2);
        edit->setSelection(1, 2);
        add(logbook, {2012, 5, 1, 12, 0, 0}, u"Es"_s);
        stats.window->logChanged();
        QCOMPARE(edit->selectedText(), u"01"_s);
        QVERIFY(stats.choices(u"Combo1"_s).contains(u"2012"_s));
    }

    void anEntryWithoutACountableYearLeavesTheChoicesAsTheyAre()
    {
        Logbook logbook = sampleLog();
        const Window stats(logbook);
        const QStringList years = stats.choices(u"Combo1"_s);
        LogEntry entry;
        entry.dateTime = {std::numeric_limits<qint64>::max()};
        logbook.AddEntry(entry);
        stats.window->logChanged();
        QCOMPARE(stats.choices(u"Combo1"_s), years);
    }

    void theMouseWheelChangesNoChoiceThatHasNotTheFocus()
    {
        const Logbook logbook = sampleLog();
        const Window stats(logbook);
        QVERIFY(QTest::qWaitForWindowActive(stats.window));
        stats.button(u"Command3"_s).setFocus();
        for (const QString &name : {u"Combo1"_s, u"Combo2"_s, u"Combo3"_s}) {
            turnWheel(stats.control<QComboBox>(name), -1);
            QCOMPARE(stats.control<QComboBox>(name).currentText(), u"All"_s);
        }
        QVERIFY(stats.button(u"Command3"_s).hasFocus());
    }
};

QTEST_MAIN(TestLogStats)
#include "tst_logstats.moc"
