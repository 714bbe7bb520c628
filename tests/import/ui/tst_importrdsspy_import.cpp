#include "rdsspywindow.h"

#include <QAbstractButton>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QWindow>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

void pressStop(QWidget *dialog)
{
    const QList<QAbstractButton *> buttons = qobject_cast<QMessageBox *>(dialog)->buttons();
    for (QAbstractButton *button : buttons) {
        if (button->text().remove(u'&') == u"Stop Importing"_s) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
}

} // namespace

class TestImportRDSSpyImport : public QObject, private RdsSpyWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void selectedRowsAreImportedInOrder()
    {
        listedDay({u"2010-06-12 00-30-00 D3C3 RADIO 1.txt"_s, u"2010-06-12 12-00-00 F201 Caf\u00E9.txt"_s});
        edit(u"Text1"_s)->setText(u"88.10"_s);
        const QSignalSpy progress(m_window, &importRDSSpy::progress);
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts().last(), u"Imported"_s);
        QCOMPARE(m_added.size(), std::size_t(2));
        QCOMPARE(m_added[0].dateTime, u"11/06/2010 23:30:00"_s);
        QCOMPARE(m_added[0].freq, u"88.10"_s);
        QCOMPARE(m_added[0].piCode, u"D3C3"_s);
        QCOMPARE(m_added[0].rdsName, u"RADIO 1"_s);
        QCOMPARE(m_added[0].country, u"TBD"_s);
        QCOMPARE(m_added[1].dateTime, u"12/06/2010 11:00:00"_s);
        QCOMPARE(m_added[1].rdsName, u"Caf\u00E9"_s);
        QCOMPARE(progress.size(), 2);
        QCOMPARE(progress.last(), QVariantList({2, 2}));
        QTRY_VERIFY(m_window.isNull());
    }

    void markedRowsAreLeftOut()
    {
        listedDay(threeFiles());
        list()->setListIndex(1);
        click(u"Command6"_s);
        importAndAnswer();
        QCOMPARE(m_added.size(), std::size_t(2));
        QCOMPARE(m_added[0].rdsName, u"R1"_s);
        QCOMPARE(m_added[1].rdsName, u"R3"_s);
    }

    void addAllThenImportTakesEveryRow()
    {
        listedDay(threeFiles());
        click(u"Command2"_s);
        click(u"Command1"_s);
        importAndAnswer();
        QCOMPARE(m_added.size(), std::size_t(3));
    }

    void theSameDayTwiceIsAddedTwice()
    {
        for (int i = 0; i < 2; ++i) {
            listedDay(threeFiles());
            importAndAnswer();
        }
        QCOMPARE(m_added.size(), std::size_t(6));
    }

    void theOffsetIsKeptForTheNextImport()
    {
        listedDay(threeFiles());
        edit(u"Text2"_s)->setText(u"2"_s);
        importAndAnswer();
        QCOMPARE(m_directory->read(u"LOGBOOK.INI"_s),
            QByteArray("TIME_OFFSET=2\r\nRDSSPY_LOGS=" + QFile::encodeName(logs()) + "\r\nOMID=4711\r\n"));
        open();
        QCOMPARE(edit(u"Text2"_s)->text(), u"2"_s);
    }

    void anEmptyDayStoresTheOffsetAndSaysImported()
    {
        listedDay({});
        edit(u"Text2"_s)->setText(u"3"_s);
        QVERIFY(button(u"Command3"_s)->isEnabled());
        QVERIFY(!button(u"Command5"_s)->isEnabled());
        QVERIFY(!button(u"Command6"_s)->isEnabled());
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts().last(), u"Imported"_s);
        QCOMPARE(m_config->settings().timeOffset, u"3"_s);
        QTRY_VERIFY(m_window.isNull());
    }

    void anOffsetThatIsNoNumberFailsAfterItIsStored()
    {
        listedDay(threeFiles());
        edit(u"Text2"_s)->setText(u"one"_s);
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts().last(),
            u"Run-time error: Type mismatch\nImporting reception 1 of 3, \"2010/06/12 10:00:00 D3C3 R1\": "
            "Time (Hour) Offset: \"one\" is not a number"_s);
        QCOMPARE(m_config->settings().timeOffset, u"one"_s);
        QCOMPARE(m_added.size(), std::size_t(0));
        QVERIFY(m_window->isVisible());
        QVERIFY(list()->isVisible());
        QVERIFY(button(u"Command3"_s)->isEnabled());
    }

    void anOffsetThatIsNoNumberHurtsNobodyWhenNothingIsSelected()
    {
        listedDay(threeFiles());
        click(u"Command2"_s);
        edit(u"Text2"_s)->setText(u"one"_s);
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts().last(), u"Imported"_s);
    }

    void aRowThatFailsStopsAndTheRestCanBeImportedLater()
    {
        listedDay(threeFiles());
        m_failing = 1;
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts().last(),
            u"Run-time error: Disk full\nImporting reception 2 of 3, \"2010/06/12 11:00:00 D3C3 R2\": "
            u"Writing "
            "the log\nThe 1 before it are in the log, and not selected any more."_s);
        QVERIFY(list()->isVisible());
        QVERIFY(button(u"Command3"_s)->isEnabled());
        QVERIFY(!m_window->findChild<QProgressBar *>()->isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 10:00:00\tD3C3\tR1"_s, u"2010/06/12 11:00:00\tD3C3\tR2"_s,
                u"2010/06/12 12:00:00\tD3C3\tR3"_s}));
        QCOMPARE(list()->listIndex(), 1);
        m_failing = -1;
        importAndAnswer();
        QCOMPARE(m_added.size(), std::size_t(3));
        QCOMPARE(m_added[1].rdsName, u"R2"_s);
    }

    void whatCannotBeSavedAtTheEndIsNotImported()
    {
        listedDay(threeFiles());
        m_failingRest = true;
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts(),
            QStringList {
                u"Run-time error: Disk full\nWriting the log\nAll receptions are in the log, but not "
                "all on the disk. Import tries again to save them."_s});
        QVERIFY(m_window->isVisible());
        QVERIFY(list()->isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 10:00:00\tD3C3\tR1"_s, u"*2010/06/12 11:00:00\tD3C3\tR2"_s,
                u"*2010/06/12 12:00:00\tD3C3\tR3"_s}));
        m_failingRest = false;
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts(), QStringList {u"Imported"_s});
        QCOMPARE(m_added.size(), std::size_t(3));
        QCOMPARE(m_savedRest, 1);
    }

    void aConfigurationThatCannotBeWrittenStopsBeforeAnyRow()
    {
        listedDay(threeFiles());
        QVERIFY(QFile::remove(m_directory->file(u"LOGBOOK.INI"_s)));
        importAndAnswer();
        QVERIFY(m_answers->takeTexts().last().startsWith(u"Run-time error: File not found"_s));
        QCOMPARE(m_added.size(), std::size_t(0));
        QVERIFY(m_window->isVisible());
        QVERIFY(button(u"Command3"_s)->isEnabled());
    }

    void whileItImportsTheWindowIsBusy()
    {
        listedDay(threeFiles());
        bool checked = false;
        m_atRow = [&] {
            const auto *bar = m_window->findChild<QProgressBar *>(u"progressBar"_s);
            QCOMPARE(bar->maximum(), 3);
            QCOMPARE(bar->value(), static_cast<int>(m_added.size()));
            QVERIFY(m_window->isVisible());
            QVERIFY(!list()->isVisible());
            QVERIFY(!button(u"Command3"_s)->isEnabled());
            QVERIFY(!edit(u"Text1"_s)->isEnabled());
            QVERIFY(QGuiApplication::overrideCursor());
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            checked = true;
        };
        importAndAnswer();
        QVERIFY(checked);
        QCOMPARE(m_added.size(), std::size_t(3));
        QTRY_VERIFY(m_window.isNull());
    }

    void cancelStopsAfterTheReception_data()
    {
        QTest::addColumn<QString>("way");
        for (const char *way : {"Cancel", "Esc", "close"}) {
            QTest::newRow(way) << QString::fromLatin1(way);
        }
    }

    void cancelStopsAfterTheReception()
    {
        QFETCH(QString, way);
        listedDay(threeFiles());
        const QSignalSpy summary(m_window, &importRDSSpy::summary);
        m_atRow = [&] {
            if (m_added.size() == 1) {
                if (way == u"Cancel"_s) {
                    click(u"Command4"_s);
                } else if (way == u"Esc"_s) {
                    QTest::keyClick(m_window, Qt::Key_Escape);
                } else {
                    m_window->close();
                }
            }
        };
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts(), QStringList());
        QCOMPARE(m_added.size(), std::size_t(2));
        QCOMPARE(summary.size(), 1);
        QCOMPARE(summary.first().first(), u"RDS Spy import stopped: 2 imported, 0 refused, 1 left"_s);
        QCOMPARE(m_savedRest, 1);
        QVERIFY(m_window->isVisible());
        QVERIFY(list()->isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 10:00:00\tD3C3\tR1"_s, u"*2010/06/12 11:00:00\tD3C3\tR2"_s,
                u"2010/06/12 12:00:00\tD3C3\tR3"_s}));
        // Import goes on with the rest, and Cancel closes again.
        m_atRow = {};
        importAndAnswer();
        QCOMPARE(m_added.size(), std::size_t(3));
        QCOMPARE(m_added[2].rdsName, u"R3"_s);
        QTRY_VERIFY(m_window.isNull());
    }

    // A click that the system reports is seen too, not only one that the test delivers.
    void aClickWhileItImportsIsSeen()
    {
        listedDay(threeFiles());
        m_atRow = [this] {
            QTest::qSleep(60);
            QPushButton *cancel = button(u"Command4"_s);
            for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                const bool pressed = type == QEvent::MouseButtonPress;
                qt_handleMouseEvent(m_window->windowHandle(),
                    cancel->mapTo(m_window.data(), cancel->rect().center()),
                    cancel->mapToGlobal(cancel->rect().center()), pressed ? Qt::LeftButton : Qt::NoButton,
                    Qt::LeftButton, type, {}, 0);
            }
        };
        click(u"Command3"_s);
        QCOMPARE(m_added.size(), std::size_t(1));
        QVERIFY(m_window->isVisible());
    }

    void aRefusedRowIsNamedAndTheRestGoesOn()
    {
        listedDay(threeFiles());
        m_refusing = {u"R2"_s};
        const QSignalSpy summary(m_window, &importRDSSpy::summary);
        const QSignalSpy progress(m_window, &importRDSSpy::progress);
        m_answers->doing([](QWidget *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->defaultButton(), box->button(QMessageBox::Ok));
            QCOMPARE(box->buttons().size(), 2);
            box->button(QMessageBox::Ok)->click();
        });
        importAndAnswer();
        QCOMPARE(m_answers->takeTexts(),
            QStringList({u"PI Code and RDS Name Empty\n2010/06/12 11:00:00 D3C3 R2"_s, u"Imported"_s}));
        QCOMPARE(m_added.size(), std::size_t(2));
        QCOMPARE(m_added[1].rdsName, u"R3"_s);
        QCOMPARE(progress.last(), QVariantList({3, 3}));
        QCOMPARE(summary.first().first(), u"RDS Spy import: 2 imported, 1 refused"_s);
        QTRY_VERIFY(m_window.isNull());
    }

    void stopImportingEndsTheBoxes()
    {
        listedDay(threeFiles());
        m_refusing = {u"R2"_s, u"R3"_s};
        const QSignalSpy summary(m_window, &importRDSSpy::summary);
        m_answers->doing(pressStop);
        click(u"Command3"_s);
        QCOMPARE(m_answers->takeTexts().size(), 1);
        QCOMPARE(m_added.size(), std::size_t(1));
        QCOMPARE(summary.first().first(), u"RDS Spy import stopped: 1 imported, 1 refused, 1 left"_s);
        QVERIFY(m_window->isVisible());
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 10:00:00\tD3C3\tR1"_s, u"2010/06/12 11:00:00\tD3C3\tR2"_s,
                u"2010/06/12 12:00:00\tD3C3\tR3"_s}));
    }

    void stopImportingAtTheLastRowKeepsTheRefusedOnes()
    {
        listedDay(threeFiles());
        m_refusing = {u"R1"_s, u"R3"_s};
        const QSignalSpy summary(m_window, &importRDSSpy::summary);
        m_answers->press(QMessageBox::Ok);
        m_answers->doing(pressStop);
        click(u"Command3"_s);
        QCOMPARE(summary.first().first(), u"RDS Spy import: 1 imported, 2 refused"_s);
        QVERIFY(m_window->isVisible());
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 11:00:00\tD3C3\tR2"_s, u"2010/06/12 10:00:00\tD3C3\tR1"_s,
                u"2010/06/12 12:00:00\tD3C3\tR3"_s}));
    }

    void aFailureLeavesTheRefusedRowsSelected()
    {
        listedDay(threeFiles());
        m_refusing = {u"R1"_s};
        m_atRow = [this] { m_failing = m_added.empty() ? -1 : 1; };
        m_answers->press(QMessageBox::Ok);
        const QSignalSpy summary(m_window, &importRDSSpy::summary);
        importAndAnswer();
        QVERIFY(m_answers->takeTexts().last().endsWith(
            u"\nThe 1 before it are in the log, and not selected any more."_s));
        QCOMPARE(summary.first().first(), u"RDS Spy import stopped: 1 imported, 1 refused, 1 left"_s);
        QCOMPARE(lines(),
            QStringList({u"*2010/06/12 11:00:00\tD3C3\tR2"_s, u"2010/06/12 10:00:00\tD3C3\tR1"_s,
                u"2010/06/12 12:00:00\tD3C3\tR3"_s}));
    }

    void anOddDefaultFrequencyIsToldAndTaken()
    {
        listedDay(threeFiles());
        const auto *problem = m_window->findChild<QLabel *>(u"problem"_s);
        const QRect place = list()->geometry();
        edit(u"Text1"_s)->selectAll();
        QTest::keyClicks(edit(u"Text1"_s), u"88.1|x"_s);
        QCOMPARE(problem->text(),
            u"\"|\" separates the fields of the file: what follows would become the next field"_s);
        QVERIFY(edit(u"Text1"_s)->findChild<QWidget *>(u"problemFrame"_s)->isVisible());
        QCOMPARE(list()->geometry(), place);
        importAndAnswer();
        QCOMPARE(m_added.front().freq, u"88.1|x"_s);
    }

    void enterImports()
    {
        listedDay(threeFiles());
        m_answers->press(QMessageBox::Ok);
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(m_added.size(), std::size_t(3));
    }

    void enterInAFieldImports()
    {
        listedDay(threeFiles());
        m_answers->press(QMessageBox::Ok);
        QTest::keyClick(edit(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(m_added.size(), std::size_t(3));
    }

    void cancelAndEscapeImportNothing_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("Cancel") << false;
        QTest::newRow("Esc") << true;
    }

    void cancelAndEscapeImportNothing()
    {
        QFETCH(bool, escape);
        listedDay(threeFiles());
        edit(u"Text2"_s)->setText(u"5"_s);
        if (escape) {
            QTest::keyClick(list(), Qt::Key_Escape);
        } else {
            click(u"Command4"_s);
        }
        QTRY_VERIFY(m_window.isNull());
        QCOMPARE(m_added.size(), std::size_t(0));
        QCOMPARE(m_config->settings().timeOffset, u"-1"_s);
    }

    void aDayOfTwoThousandReceptionsIsMarkedAndImportedWhole()
    {
        constexpr int rows = 2'000;
        QStringList names;
        for (int i = 0; i < rows; ++i) {
            names += u"2010-06-12 %1-%2-00 D3C3 R%3.txt"_s.arg(i / 60 % 24, 2, 10, QChar(u'0'))
                         .arg(i % 60, 2, 10, QChar(u'0'))
                         .arg(i, 5, 10, QChar(u'0'));
        }
        listedDay(names);
        for (int i = 0; i < 10; ++i) {
            click(u"Command2"_s);
            click(u"Command1"_s);
            QTest::keyClick(list(), Qt::Key_Space);
        }
        importAndAnswer();
        QCOMPARE(m_added.size(), std::size_t(rows - 1));
    }
};

QTEST_MAIN(TestImportRDSSpyImport)
#include "tst_importrdsspy_import.moc"
