#include "rdsspywindow.h"

#include <QApplication>
#include <QLabel>
#include <QRandomGenerator>

#include <algorithm>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// The list as the walk over its rows is told: it sorts itself after every change.
struct WalkedList
{
    QStringList lines;
    int listIndex = -1;

    void replace(int row, const QString &line)
    {
        listIndex = row;
        lines.removeAt(row);
        lines.append(line);
        std::ranges::sort(lines);
    }
    void mark(int row)
    {
        lines.at(row).startsWith(u'*') ? highlight(row) : replace(row, u'*' + lines.at(row));
    }
    void unmark(int row)
    {
        lines.at(row).startsWith(u'*') ? replace(row, lines.at(row).mid(1)) : highlight(row);
    }
    void highlight(int row) { listIndex = row; }
};

} // namespace

class TestImportRDSSpyList : public QObject, private RdsSpyWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void theControlsAreThere()
    {
        open();
        QCOMPARE(m_window->objectName(), u"importRDSSpy"_s);
        QCOMPARE(m_window->windowTitle(), u"Import RDS Spy Logs"_s);
        QVERIFY(!m_window->isModal());
        QCOMPARE(edit(u"Text1"_s)->text(), u"87.5"_s);
        QCOMPARE(edit(u"Text2"_s)->text(), u"-1"_s);
        QCOMPARE(caption(u"Command1"_s), u"Add All"_s);
        QCOMPARE(caption(u"Command2"_s), u"Remove All"_s);
        QCOMPARE(caption(u"Command5"_s), u"Add Selected"_s);
        QCOMPARE(caption(u"Command6"_s), u"Remove Selected"_s);
        QCOMPARE(caption(u"Command3"_s), u"Import"_s);
        QCOMPARE(caption(u"Command4"_s), u"Cancel"_s);
        QCOMPARE(m_window->findChild<QLabel *>(u"Label1"_s)->text().remove(u'&'), u"Default Frequency"_s);
        QCOMPARE(m_window->findChild<QLabel *>(u"Label2"_s)->text().remove(u'&'), u"Time (Hour) Offset"_s);
        QCOMPARE(m_window->findChild<QLabel *>(u"Label3"_s)->text(), u"* indicates not selected"_s);
    }

    void everyMnemonicIsUsedOnce()
    {
        open();
        QString letters;
        const QList<QPushButton *> buttons = m_window->findChildren<QPushButton *>();
        for (const QPushButton *found : buttons) {
            letters += found->text().at(found->text().indexOf(u'&') + 1).toLower();
        }
        const QList<QLabel *> labels = m_window->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (label->buddy()) {
                letters += label->text().at(label->text().indexOf(u'&') + 1).toLower();
            }
        }
        QCOMPARE(letters.size(), 9);
        std::ranges::sort(letters);
        QVERIFY(std::ranges::adjacent_find(letters) == letters.end());
    }

    void theTabOrderFollowsTheEye()
    {
        listedDay({u"2010-06-12 10-00-00 D3C3 R1.txt"_s});
        edit(u"Text1"_s)->setFocus();
        QStringList names;
        for (int i = 0; i < 9; ++i) {
            names += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(names,
            QStringList({u"Text1"_s, u"Text2"_s, u"List1"_s, u"Command1"_s, u"Command2"_s, u"Command5"_s,
                u"Command6"_s, u"Command3"_s, u"Command4"_s}));
    }

    void theDateIsAskedForWithTodayAsItsDefault()
    {
        const QString before = dateText(localNow());
        open();
        const SeenDialog asked = m_answers->seen().value(0);
        QCOMPARE(asked.text, u"Enter date of logs to import?"_s);
        QCOMPARE(asked.title, u"Select Import date"_s);
        QVERIFY(asked.input);
        QVERIFY(*asked.input == before || *asked.input == dateText(localNow()));
    }

    void oneDayIsListedSortedWithItsLastRowHighlighted()
    {
        listedDay({u"2010-06-12 23-59-59 D3C3 last.txt"_s, u"2010-06-12 00-00-00 D3C3 first.txt"_s,
            u"2010-06-11 23-59-59 D3C3 before.txt"_s, u"2010-06-13 00-00-00 D3C3 after.txt"_s,
            u"2010-06-12 12-00-00 F201 Caf\u00E9.txt"_s});
        QCOMPARE(lines(),
            QStringList({u"2010/06/12 00:00:00\tD3C3\tfirst"_s, u"2010/06/12 12:00:00\tF201\tCaf\u00E9"_s,
                u"2010/06/12 23:59:59\tD3C3\tlast"_s}));
        QCOMPARE(list()->listIndex(), 2);
        for (const QString &name : {u"Command3"_s, u"Command5"_s, u"Command6"_s}) {
            QVERIFY(button(name)->isEnabled());
        }
        QCOMPARE(m_window->findChild<QLabel *>(u"Label4"_s)->text().remove(u'&'),
            u"Receptions of 12/06/2010: 3, selected 3"_s);
    }

    void anEmptyAnswerStopsAndLeavesTheList_data()
    {
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("cancelled") << true;
        QTest::newRow("empty") << false;
    }

    void anEmptyAnswerStopsAndLeavesTheList()
    {
        QFETCH(bool, cancelled);
        listedDay({u"2010-06-12 10-00-00 D3C3 R1.txt"_s});
        cancelled ? m_answers->cancel() : m_answers->type(QString());
        m_window->populateList1(logs());
        QCOMPARE(m_answers->takeTexts(), QStringList({u"Enter date of logs to import?"_s}));
        QCOMPARE(list()->count(), 1);
    }

    void nothingCanBeImportedBeforeADayIsChosen()
    {
        open();
        for (const QString &name : {u"Command3"_s, u"Command5"_s, u"Command6"_s}) {
            QVERIFY(!button(name)->isEnabled());
        }
        QTest::keyClick(list(), Qt::Key_Return);
        QTest::keyClick(list(), Qt::Key_Space);
        click(u"Command1"_s);
        click(u"Command2"_s);
        QCOMPARE(list()->count(), 0);
        QVERIFY(m_window->isVisible());
    }

    void whatIsNoDateIsToldAndLeavesTheList()
    {
        listedDay({u"2010-06-12 10-00-00 D3C3 R1.txt"_s});
        m_answers->type(u"31/06/2010"_s);
        m_answers->press(QMessageBox::Ok);
        m_window->populateList1(logs());
        QCOMPARE(m_answers->takeTexts(),
            QStringList({u"Enter date of logs to import?"_s, u"Invalid date format"_s}));
        QCOMPARE(list()->count(), 1);
    }

    void anotherDayReplacesTheList()
    {
        listedDay({u"2010-06-12 10-00-00 D3C3 R1.txt"_s, u"2010-06-13 10-00-00 D3C3 R2.txt"_s});
        m_answers->type(u"13/06/2010"_s);
        m_window->populateList1(logs());
        QCOMPARE(lines(), QStringList({u"2010/06/13 10:00:00\tD3C3\tR2"_s}));
    }

    void aStrayFileIsToldAfterTheOthersAreListed()
    {
        touch({u"README.txt"_s, u"2010-06-12 10-00-00 D3C3 R1.txt"_s});
        m_answers->type(u"12/06/2010"_s);
        create();
        try {
            m_window->start();
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::SubscriptOutOfRange);
            QVERIFY(error.doing().contains(u"\"README.txt\""_s));
            QVERIFY(error.doing().contains(logs()));
        }
        QCOMPARE(list()->count(), 1);
        QVERIFY(button(u"Command3"_s)->isEnabled());
    }

    void aMissingFolderIsAnEmptyListThatSaysWhere()
    {
        m_directory->write(u"LOGBOOK.INI"_s, "RDSSPY_LOGS=/nonexistent/RDSSpy\r\n");
        m_config->readConfig();
        m_answers->type(u"12/06/2010"_s);
        create();
        m_window->start();
        QCOMPARE(m_answers->takeTexts(), QStringList({u"Enter date of logs to import?"_s}));
        QCOMPARE(list()->count(), 0);
        QCOMPARE(m_window->findChild<QLabel *>(u"folder"_s)->text(),
            u"There is no folder /nonexistent/RDSSpy. Set the RDS Spy directory in the menu Setup, under "
            "Directories."_s);
    }

    void aWindowsFolderIsFoundInTheWinePrefix()
    {
        QDir root(m_directory->path());
        QVERIFY(root.mkpath(u"prefix/dosdevices"_s));
        QVERIFY(root.mkpath(u"prefix/drive_c/RDSSpy"_s));
        QVERIFY(QFile::link(u"../drive_c"_s, root.filePath(u"prefix/dosdevices/c:"_s)));
        m_directory->write(u"prefix/drive_c/RDSSpy/2010-06-12 10-00-00 D3C3 R1.txt"_s, "");
        qputenv("WINEPREFIX", QFile::encodeName(root.filePath(u"prefix"_s)));
        m_directory->write(u"LOGBOOK.INI"_s, "RDSSPY_LOGS=c:\\rdsspy\r\n");
        m_config->readConfig();
        m_answers->type(u"12/06/2010"_s);
        create();
        m_window->start();
        qunsetenv("WINEPREFIX");
        QCOMPARE(lines(), QStringList({u"2010/06/12 10:00:00\tD3C3\tR1"_s}));
        QCOMPARE(m_window->findChild<QLabel *>(u"folder"_s)->text(),
            QString(u"Folder: "_s + root.filePath(u"prefix/drive_c/RDSSpy"_s)));
    }

    void rowsAreMarkedAndUnmarkedByTheButtons()
    {
        listedDay(threeFiles());
        click(u"Command6"_s); // the last
        QCOMPARE(lines().first(), u"*2010/06/12 12:00:00\tD3C3\tR3"_s);
        QCOMPARE(list()->listIndex(), 2);
        click(u"Command6"_s);
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 11:00:00\tD3C3\tR2"_s, u"*2010/06/12 12:00:00\tD3C3\tR3"_s,
                u"2010/06/12 10:00:00\tD3C3\tR1"_s}));
        list()->setListIndex(0);
        click(u"Command6"_s); // is marked already
        QCOMPARE(list()->listIndex(), 0);
        click(u"Command5"_s);
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 12:00:00\tD3C3\tR3"_s, u"2010/06/12 10:00:00\tD3C3\tR1"_s,
                u"2010/06/12 11:00:00\tD3C3\tR2"_s}));
        QCOMPARE(list()->listIndex(), 0);
        QCOMPARE(m_window->findChild<QLabel *>(u"Label4"_s)->text().remove(u'&'),
            u"Receptions of 12/06/2010: 3, selected 2"_s);
    }

    void allRowsAreMarkedAndUnmarkedAsByWalkingThem()
    {
        QStringList names;
        for (int i = 0; i < 40; ++i) {
            names += u"2010-06-12 10-%1-00 D3C3 R%1.txt"_s.arg(i, 2, 10, QChar(u'0'));
        }
        listedDay(names);
        QRandomGenerator random(1);
        for (int round = 0; round < 20; ++round) {
            for (int i = 0; i < 15; ++i) {
                list()->setListIndex(static_cast<int>(random.bounded(40)));
                click(random.bounded(2) ? u"Command5"_s : u"Command6"_s);
            }
            WalkedList walked {lines(), list()->listIndex()};
            const bool add = round % 2 == 0;
            for (int i = 0; i < 40; ++i) {
                add ? walked.unmark(39 - i) : walked.mark(i);
            }
            click(add ? u"Command1"_s : u"Command2"_s);
            QCOMPARE(lines(), walked.lines);
            QCOMPARE(list()->listIndex(), walked.listIndex);
        }
    }

    void spaceAndDoubleClickToggleAMark()
    {
        listedDay(threeFiles());
        list()->setListIndex(0);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(lines().first(), u"*2010/06/12 10:00:00\tD3C3\tR1"_s);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(lines().first(), u"2010/06/12 10:00:00\tD3C3\tR1"_s);
        const QPoint secondRow = list()->visualRect(list()->model()->index(1, 1)).center();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, secondRow);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, secondRow);
        QCOMPARE(lines().first(), u"*2010/06/12 11:00:00\tD3C3\tR2"_s);
        QCOMPARE(m_added.size(), std::size_t(0));
    }

    void markingKeepsTheListWhereItIs()
    {
        QStringList names;
        for (int i = 0; i < 200; ++i) {
            names += u"2010-06-12 10-%1-%2 D3C3 R.txt"_s.arg(i / 60, 2, 10, QChar(u'0'))
                         .arg(i % 60, 2, 10, QChar(u'0'));
        }
        listedDay(names);
        list()->setListIndex(100);
        const int top = list()->rowAt(1);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(list()->rowAt(1), top);
        QCOMPARE(list()->listIndex(), 100);
    }
};

QTEST_MAIN(TestImportRDSSpyList)
#include "tst_importrdsspy_list.moc"
