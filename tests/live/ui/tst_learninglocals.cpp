#include "docked.h"
#include "support/testfiles.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

/// "Learn the locals now", through its dialog.
class TestLearningLocals : public QObject
{
    Q_OBJECT

    static QDialog *openDialog(Docked &docked)
    {
        docked.choose(u"Automatic Logging…"_s);
        return docked.get<QDialog>(u"autoLog"_s);
    }
    static void hearThree(Docked &docked)
    {
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        hear(source, 99'000'000, 0xE202, u"RNE 2   "_s);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E202"_s);
        hear(source, 99'500'000, 0xE203, u""_s, PiTrust::Asked);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E203?"_s);
    }

private Q_SLOTS:
    void tenMinutesFillTheList()
    {
        const TestDirectory folder;
        ReceiverSettings settings;
        settings.autoLog = {true, 0, 0, 60, {{87'600'000, {}}}};
        writeReceiverSettings(folder.path(), settings);
        Docked docked(folder.path());
        auto *const dialog = openDialog(docked);
        auto *const learn = dialog->findChild<QPushButton *>(u"autoLogLearn"_s);
        auto *const locals = dialog->findChild<QPlainTextEdit *>(u"autoLogLocals"_s);
        QCOMPARE(locals->toPlainText(), u"87.6"_s);
        const qint64 start = nowMilliseconds();
        QTest::mouseClick(learn, Qt::LeftButton);
        QVERIFY(!learn->isEnabled());
        hearThree(docked);
        docked.dock.doWhatIsDue(start + LocalsLearner::lasts - 1);
        QCOMPARE(locals->toPlainText(), u"87.6"_s);
        docked.dock.doWhatIsDue(nowMilliseconds() + LocalsLearner::lasts);
        QCOMPARE(locals->toPlainText(), u"87.6\n98.5 E201\n99.0 E202"_s);
        QVERIFY(learn->isEnabled());
        const QList<Local> learnt {{87'600'000, {}}, {98'500'000, 0xE201}, {99'000'000, 0xE202}};
        QCOMPARE(readReceiverSettings(folder.path()).autoLog.locals, learnt);
        dialog->findChild<QDialogButtonBox *>(u"autoLogButtons"_s)->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(readReceiverSettings(folder.path()).autoLog, (AutoLogRules {true, 0, 0, 60, learnt}));
        // From now on they are not logged; another one is.
        const auto before = docked.receptions.size();
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        docked.dock.doWhatIsDue(nowMilliseconds());
        QCOMPARE(docked.receptions.size(), before);
        hear(source, 100'000'000, 0xE204, u"RNE 4   "_s);
        docked.dock.doWhatIsDue(nowMilliseconds());
        QCOMPARE(docked.receptions.size(), before + 1);
    }

    void aDialogThatIsClosedMeanwhileLosesNothing()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        auto *dialog = openDialog(docked);
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"autoLogLearn"_s), Qt::LeftButton);
        dialog->close();
        QTRY_VERIFY(docked.dock.findChild<QDialog *>(u"autoLog"_s) == nullptr);
        // Opened again, it knows that it is learning.
        dialog = openDialog(docked);
        QVERIFY(!dialog->findChild<QPushButton *>(u"autoLogLearn"_s)->isEnabled());
        dialog->close();
        QTRY_VERIFY(docked.dock.findChild<QDialog *>(u"autoLog"_s) == nullptr);
        hearThree(docked);
        docked.dock.doWhatIsDue(nowMilliseconds() + LocalsLearner::lasts);
        dialog = openDialog(docked);
        QCOMPARE(dialog->findChild<QPlainTextEdit *>(u"autoLogLocals"_s)->toPlainText(),
            u"98.5 E201\n99.0 E202"_s);
        QVERIFY(dialog->findChild<QPushButton *>(u"autoLogLearn"_s)->isEnabled());
    }
};

QTEST_MAIN(TestLearningLocals)
#include "tst_learninglocals.moc"
