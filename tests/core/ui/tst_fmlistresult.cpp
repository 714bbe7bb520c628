#include "fmlistwindow.h"

#include "import/ui/importrdsspy.h"
#include "ui/resultlist.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

const QString question = u"Update record with search results?"_s;

} // namespace

/// What becomes of a result that the user chooses.
class TestFmlistResult : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_window = std::make_unique<FmlistWindow>(); }
    void cleanup() { m_window.reset(); }

    void theQuestionHasNoAsDefault();
    void noLeavesEverythingAsItIs();
    void yesUpdatesTheChosenEntry();
    void yesAddsTheEntryThatIsBeingTyped();
    void enterOnAResultTakesItToo();
    void aSortedListGivesTheStationThatItShows();
    void theWayToEachIsToldBesideIt();
    void theWayFollowsHomeAndTheUnit();
    void withNothingSelectedOnlyTheFormIsFilled();
    void afterAnImportOnlyTheFormIsFilled();
    void aDeletedRowCanStillBeWrittenOver();

private:
    // Searches for the only or last entry.
    void search()
    {
        m_window->clickRow(m_window->grid().rows() - 1);
        m_window->click("Command11");
    }

    std::unique_ptr<FmlistWindow> m_window;
};

void TestFmlistResult::theQuestionHasNoAsDefault()
{
    m_window->open(oneEntry);
    search();
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.seen().size(), 1);
    const SeenDialog &box = m_window->answers.seen().first();
    QCOMPARE(box.text, question);
    QCOMPARE(box.title, u"Update Record"_s);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.defaultButton, QMessageBox::No);
}

void TestFmlistResult::noLeavesEverythingAsItIs()
{
    m_window->open(oneEntry);
    search();
    const QStringList fields = m_window->fields();
    m_window->answers.press(QMessageBox::No);
    m_window->doubleClickResult(0);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList({question, question}));
    QCOMPARE(m_window->fields(), fields);
    QCOMPARE(m_window->logbook(), oneEntry);
    QVERIFY(m_window->transmitterFile().isNull());
}

void TestFmlistResult::yesUpdatesTheChosenEntry()
{
    m_window->open("D3C1|12/06/2010 18:22:05|Es|87.6||TBD|goodCRLFday|R 1|5|7.5|fml=multi#||\r\n"
        + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", ""));
    m_window->clickRow(1);
    m_window->type("Text8", {});
    m_window->click("Command11");
    QCOMPARE(m_window->resultRows(), QStringList {berlin});
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->fields(),
        QStringList({u"Text9=87.6"_s, u"Text1=D3C1"_s, u"Text8=RADIO_1"_s, u"Text2=12/06/2010 18:22:05"_s,
            u"Combo2=Es"_s, u"Text3=good\nday"_s, u"uid=4711"_s, u"Combo3=D"_s, u"Text5=Berlin (Alex)"_s,
            u"Text6=100"_s, u"Text7=52.5208"_s, u"Text10=13.4094"_s}));
    QCOMPARE(m_window->logbook(),
        "D3C1|12/06/2010 18:22:05|Es|87.6|Berlin (Alex)|D|goodCRLFday|RADIO_1|100|7.5|fml=multi#|4711|\r\n"
            + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", ""));
    QCOMPARE(m_window->transmitterFile(), "Berlin (Alex)|D|52.5208|13.4094||\r\n"_ba);
    QCOMPARE(m_window->row(1).section(u'|', 9), u"Es|Multi|4711"_s);
}

void TestFmlistResult::yesAddsTheEntryThatIsBeingTyped()
{
    m_window->open(oneEntry);
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, u"90"_s, u"Text1"_s, u"f201"_s, u"Text2"_s, u"13/06/2010 08:00:00"_s});
    m_window->click("Command11");
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(1);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->logbook(), oneEntry + "F201|13/06/2010 08:00:00||90|Paris|F||FIP|5.2|||502|\r\n");
    QCOMPARE(m_window->grid().rows(), 3);
    QCOMPARE(m_window->caption("Command2"), u"New"_s);
}

void TestFmlistResult::aSortedListGivesTheStationThatItShows()
{
    m_window->open(oneEntry);
    m_window->answerWith("87.6;D3C1;X;D;D, Zwickau;1;2;3;1\n87.6;FFFF;X;D;D, Aachen;4;5;6;2\n"
                         "87.6;FFFF;X;D;D, Hof;7;8;9;3\n");
    search();
    ResultList &list = m_window->results();
    QCOMPARE(list.listIndex(), 0);
    QHeaderView &heading = *list.horizontalHeader();
    QTest::mouseClick(heading.viewport(), Qt::LeftButton, {},
        {heading.sectionViewportPosition(4) + 5, heading.height() / 2});
    QCOMPARE(list.text(0).section(u'\t', 4, 4), u"Aachen"_s);
    QCOMPARE(list.text(2).section(u'\t', 4, 4), u"Zwickau"_s);
    QCOMPARE(list.listIndex(), 2);
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->text("Text5"), u"Aachen"_s);
    QCOMPARE(m_window->text("uid"), u"2"_s);
}

void TestFmlistResult::theWayToEachIsToldBesideIt()
{
    // Es: what is near is not plausible, nor is another frequency.
    m_window->open("D3C1|12/06/2010 18:22:05|Es|87.6||TBD||NAME|||||\r\n");
    const auto setHome = [this](const QString &latitude, const QString &longitude) {
        m_window->form().config().changeConfig(u"HOME_DEC_LAT="_s, latitude);
        m_window->form().config().changeConfig(u"HOME_DEC_LON="_s, longitude);
    };
    setHome(u"51.5"_s, u"-0.1"_s);
    m_window->form().config().changeConfig(u"AS_MILES="_s, u"FALSE"_s);
    m_window->answerWith("87.6;D3C1;X;G;G, Near;1;51.6;-0.2;1\n87.6;D3C2;X;E;E, Madrid;2;40.4;-3.7;2\n"
                         "87.9;D3C3;X;D;D, Munich;3;48.3;11.5;3\n87.6;D3C4;X;D;D, Lost;4;;;4\n");
    search();
    ResultList &list = m_window->results();
    const auto cell = [&list](int line, int column) {
        return list.model()->index(line, column).data().toString();
    };
    QCOMPARE(list.text(1), u"87.6\tD3C2\tX\tE\tMadrid\t2\t40.4\t-3.7\t2"_s);
    QCOMPARE(cell(1, 9), u"★ 1264.5"_s);
    QCOMPARE(cell(1, 10), u"194"_s);
    QCOMPARE(cell(2, 9), u"905.2"_s);
    QVERIFY(!cell(0, 9).isEmpty() && !cell(0, 9).contains(u'★'));
    QCOMPARE(cell(3, 9) + cell(3, 10), QString());
    const QModelIndex marked = list.model()->index(1, 9);
    QCOMPARE(marked.data(Qt::AccessibleTextRole).toString(), u"1264.5, the nearest that is plausible"_s);
    QCOMPARE(marked.data(Qt::ToolTipRole).toString(), u"the nearest that is plausible"_s);
    // It chooses nothing: the first station with the PI code is, as ever.
    QCOMPARE(list.listIndex(), 0);
    // They are seen without scrolling, and sorted as numbers.
    m_window->form().resize(1180, 760);
    QCoreApplication::processEvents();
    QHeaderView &heading = *list.horizontalHeader();
    QVERIFY(heading.sectionViewportPosition(10) + heading.sectionSize(10) <= list.viewport()->width());
    QTest::mouseClick(heading.viewport(), Qt::LeftButton, {},
        {heading.sectionViewportPosition(9) + 5, heading.height() / 2});
    QStringList names;
    for (int line = 0; line < list.count(); ++line) {
        names += cell(line, 4) + cell(line, 9).first(qMin(1, cell(line, 9).size()));
    }
    QCOMPARE(names.indexOf(u"Madrid★"_s), names.indexOf(u"Munich9"_s) + 1);
    // Without a home there is nothing to tell.
    setHome(u"0"_s, u"0"_s);
    m_window->answerWith("87.6;D3C2;X;E;E, Madrid;2;40.4;-3.7;2\n");
    search();
    QCOMPARE(cell(0, 9) + cell(0, 10), QString());
}

void TestFmlistResult::theWayFollowsHomeAndTheUnit()
{
    m_window->open("D3C1|12/06/2010 18:22:05|Es|87.6||TBD||NAME|||||\r\n", "AS_MILES=FALSE\r\n");
    m_window->answerWith("87.6;D3C2;X;E;E, Madrid;2;40.4;-3.7;2\n87.6;D3C3;X;D;D, Munich;3;48.3;11.5;3\n");
    search();
    const auto cells = [&](int line) -> QString {
        const QAbstractItemModel &model = *m_window->results().model();
        return model.index(line, 9).data().toString() + u' ' + model.index(line, 10).data().toString();
    };
    QCOMPARE(cells(0), u" "_s);
    const auto set = [&](const QString &latitude, const QString &longitude, const QString &unit) {
        m_window->trigger("menuSetup");
        auto *setup = m_window->find<QWidget>("Form2");
        setup->findChild<QLineEdit *>(u"latitude"_s)->setText(latitude);
        setup->findChild<QLineEdit *>(u"longitude"_s)->setText(longitude);
        setup->findChild<QAbstractButton *>(unit)->click();
        setup->findChild<QAbstractButton *>(u"Command1"_s)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    set(u"51.5"_s, u"-0.1"_s, u"Option1"_s);
    QCOMPARE(cells(0), u"1264.5 194"_s);
    QCOMPARE(cells(1), u"★ 905.2 109"_s);
    set(u"51.5"_s, u"-0.1"_s, u"Option2"_s);
    QCOMPARE(cells(0), u"785.8 194"_s);
    // From there Munich is too near for Es.
    set(u"48.2"_s, u"16.4"_s, u"Option1"_s);
    QVERIFY2(cells(0).startsWith(u"★ 18"_s), qPrintable(cells(0)));
    QVERIFY2(cells(1).startsWith(u"36"_s), qPrintable(cells(1)));
}

void TestFmlistResult::enterOnAResultTakesItToo()
{
    m_window->open(oneEntry);
    search();
    m_window->results().setFocus();
    m_window->answers.press(QMessageBox::Yes);
    m_window->key(Qt::Key_Return);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->text("uid"), u"4711"_s);
    QVERIFY(m_window->logbook().endsWith("|4711|\r\n"));
}

void TestFmlistResult::withNothingSelectedOnlyTheFormIsFilled()
{
    m_window->open(oneEntry);
    m_window->click("Command2");
    m_window->fill({u"Text9"_s, u"87.6"_s, u"Text1"_s, u"D3C1"_s});
    m_window->click("Command11");
    m_window->click("Command2");
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->text("uid"), u"4711"_s);
    QCOMPARE(m_window->text("Text5"), u"Berlin (Alex)"_s);
    QCOMPARE(m_window->logbook(), oneEntry);
    QCOMPARE(m_window->grid().rows(), 2);
}

void TestFmlistResult::afterAnImportOnlyTheFormIsFilled()
{
    m_window->directory.write(u"spy/2010-06-13 08-00-00 1111 A.txt"_s, {});
    m_window->open(oneEntry, "RDSSPY_LOGS=" + m_window->directory.file(u"spy"_s).toLocal8Bit() + "\r\n");
    search();
    m_window->answers.type(u"13/06/2010"_s);
    m_window->trigger("menuImportRDSSpyLog");
    QTest::mouseClick(m_window->find<importRDSSpy>("importRDSSpy")->findChild<QPushButton *>(u"Command3"_s),
        Qt::LeftButton);
    const QByteArray imported = m_window->logbook();
    QVERIFY2(imported.startsWith(QByteArray(oneEntry + "1111|13/06/2010 08:00:00|")), imported.constData());
    QCOMPARE(m_window->form().selected(), -1);
    (void)m_window->answers.takeTexts();
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QCOMPARE(m_window->text("uid"), u"4711"_s);
    QCOMPARE(m_window->logbook(), imported);
}

void TestFmlistResult::aDeletedRowCanStillBeWrittenOver()
{
    m_window->open(twoEntries);
    m_window->clickRow(1);
    m_window->click("Command11");
    m_window->click("Command15");
    m_window->form().populateGrid();
    m_window->answers.press(QMessageBox::Yes);
    m_window->doubleClickResult(0);
    QCOMPARE(m_window->answers.takeTexts(), QStringList {question});
    QVERIFY(m_window->logbook().startsWith("D3C1|12/06/2010 18:22:05|Es|87.6|Berlin (Alex)|D|"));
    QCOMPARE(m_window->piCodes(), QStringList({u"D3C1"_s, u"F201"_s}));
}

QTEST_MAIN(TestFmlistResult)
#include "tst_fmlistresult.moc"
