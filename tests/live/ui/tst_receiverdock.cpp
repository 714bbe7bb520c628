#include "docked.h"
#include "live/grouplines.h"
#include "live/ui/heardmodel.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"
#include "rds-signal/groupmaker.h"
#include "support/accessibility.h"
#include "support/dialogs.h"
#include "support/testfiles.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableView>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace quillon;
using namespace quillon::rdssignal;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

/// Whether a window was brought before the others.
class Fronted : public QObject
{
public:
    explicit Fronted(QWidget &window) { window.installEventFilter(this); }
    bool seen = false;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        seen = seen || event->type() == QEvent::ZOrderChange;
        return false;
    }
};

} // namespace

class TestReceiverDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsHeardStandsReady()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        QCOMPARE(docked.text(u"receiverState"_s), u"not connected"_s);
        Told &source = *docked.listen();
        QCOMPARE(docked.text(u"receiverState"_s), u"listening"_s);
        hear(source, 98'500'000, 0xD3C2, u"MDR JUMP"_s);
        source.say(RadiotextHeard {u"<b>Now</b>: Sade"_s});
        source.say(SignalHeard {35.11, u"dBf"});
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"D3C2"_s);
        QCOMPARE(docked.get<QLineEdit>(u"receiverFreq"_s)->text(), u"98.5"_s);
        QCOMPARE(docked.text(u"receiverPs"_s), u"MDR JUMP"_s);
        QCOMPARE(docked.text(u"receiverRt"_s), u"<b>Now</b>: Sade"_s);
        QCOMPARE(docked.get<QLabel>(u"receiverRt"_s)->textFormat(), Qt::PlainText);
        QTRY_COMPARE(docked.text(u"receiverSignal"_s), u"35.1 dBf"_s);
        QCOMPARE(docked.text(u"receiverNew"_s), u"new PI, perhaps new country"_s);
        QCOMPARE(docked.cell(0, HeardModel::Freq), u"98.5"_s);
        QCOMPARE(docked.cell(0, HeardModel::Pi), u"D3C2"_s);
        QCOMPARE(docked.cell(0, HeardModel::Ps), u"MDR JUMP"_s);
        QCOMPARE(docked.cell(0, HeardModel::New), u"new PI, perhaps new country"_s);
        QCOMPARE(docked.cell(0, HeardModel::Logged), u""_s);
        source.say(Tuned {99'000'000});
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u""_s);
        QCOMPARE(docked.text(u"receiverPs"_s), u""_s);
        QCOMPARE(docked.text(u"receiverRt"_s), u""_s);
    }

    void logItLogsWhenItWasFirstHeard()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        const qint64 before = nowMilliseconds() / 1000;
        Told &source = *docked.listen();
        hear(source, 98'550'000, 0xE201, u"RNE 1   "_s, PiTrust::Told, 90'000);
        docked.press(u"receiverLog"_s);
        QCOMPARE(docked.receptions.size(), 1);
        const LogEntry &entry = docked.receptions[0].entry;
        QCOMPARE(entry.freq, u"98.55"_s);
        QCOMPARE(entry.piCode, u"E201"_s);
        QCOMPARE(entry.rdsName, u"RNE_1"_s);
        QCOMPARE(entry.country, u"TBD"_s);
        QCOMPARE(entry.notes, u""_s);
        QVERIFY(std::abs(entry.dateTime.seconds - (before - 90)) <= 2);
        QTRY_COMPARE(docked.cell(0, HeardModel::Logged), u"yes"_s);
        QCOMPARE(docked.cell(0, HeardModel::New), u"new PI, perhaps new country"_s);
    }

    void theSameWithinAnHourIsAskedFor()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        docked.dock.logHeard();
        DialogAnswers answers;
        answers.press(QMessageBox::No);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"E201 on 98.5 MHz was logged within 60 minutes of this. Log it again?"_s}));
        QCOMPARE(docked.receptions.size(), 1);
        answers.press(QMessageBox::Yes);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 2);
    }

    void whatIsInDoubtIsAskedFor()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u""_s, PiTrust::Asked);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201?"_s);
        DialogAnswers answers;
        answers.press(QMessageBox::No);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 0);
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"The PI code E201 is not certain yet. Log it all the same?"_s}));
        answers.press(QMessageBox::Yes);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions[0].entry.piCode, u"E201"_s);
    }

    void withoutAStationThereIsNothingToLog()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"Nothing to log: no PI code has been received on this frequency."_s}));
        QCOMPARE(docked.receptions.size(), 0);
    }

    void aFrequencyThatIsNotToldCanBeTyped()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen(false);
        auto *const field = docked.get<QLineEdit>(u"receiverFreq"_s);
        QVERIFY(!field->isReadOnly());
        source.say(PiHeard {0xE201, PiTrust::Told});
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"The frequency is not known. Type it into the field MHz of the receiver."_s}));
        QTest::keyClicks(field, u"98,5"_s);
        QTest::keyClick(field, Qt::Key_Return);
        source.say(PiHeard {0xE201, PiTrust::Told}, -1'000);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions[0].entry.freq, u"98.5"_s);
    }

    void aFrequencyThatIsBeingTypedIsTaken()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen(false);
        source.say(PiHeard {0xE201, PiTrust::Told}, 1'000);
        auto *const field = docked.get<QLineEdit>(u"receiverFreq"_s);
        field->setFocus();
        QTest::keyClicks(field, u"98,5"_s);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 1);
        QCOMPARE(docked.receptions[0].entry.freq, u"98.5"_s);
        QCOMPARE(docked.receptions[0].entry.piCode, u"E201"_s);
    }

    void aFrequencyThatIsNoneIsSaid()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen(false);
        auto *const field = docked.get<QLineEdit>(u"receiverFreq"_s);
        QTest::keyClicks(field, u"98.5\r"_s);
        source.say(PiHeard {0xE201, PiTrust::Told}, -1'000);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, u"99..0"_s);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(), (QStringList {u"\"99..0\" is no frequency in MHz."_s}));
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Delete);
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"Type the frequency in MHz first: what is heard does not tell it."_s}));
        QCOMPARE(docked.receptions.size(), 0);
    }

    void aTypedFrequencyEndsWithItsStation()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen(false);
        auto *const field = docked.get<QLineEdit>(u"receiverFreq"_s);
        field->setFocus();
        QTest::keyClicks(field, u"98.5"_s);
        QTest::keyClick(field, Qt::Key_Return);
        source.say(PiHeard {0xE201, PiTrust::Told}, -1'000);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        source.say(Tuned {}, -2'000);
        source.say(PiHeard {0xE202, PiTrust::Told}, -3'000);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E202"_s);
        QCOMPARE(field->text(), QString());
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"The frequency is not known. Type it into the field MHz of the receiver."_s}));
        // What is being typed meanwhile stays.
        QTest::keyClicks(field, u"99"_s);
        source.say(SignalHeard {10, u"dBf"});
        source.say(PsHeard {u"RNE 2   "_s}, -3'000);
        QTRY_COMPARE(docked.text(u"receiverPs"_s), u"RNE 2   "_s);
        QCOMPARE(field->text(), u"99"_s);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 1);
        QCOMPARE(docked.receptions[0].entry.freq, u"99.0"_s);
        QCOMPARE(docked.receptions[0].entry.piCode, u"E202"_s);
        QCOMPARE(docked.get<QTableView>(u"heard"_s)->model()->rowCount(), 2);
    }

    void aFrequencyThatMayBeThatOfBeforeIsAskedFor()
    {
        const TestDirectory folder;
        ReceiverSettings settings;
        settings.autoLog = {true, 0, 0, 60, {}};
        writeReceiverSettings(folder.path(), settings);
        Docked docked(folder.path());
        Told &source = *docked.listen(false);
        auto *const field = docked.get<QLineEdit>(u"receiverFreq"_s);
        QTest::keyClicks(field, u"98.5"_s);
        QTest::keyClick(field, Qt::Key_Return);
        // Nothing was heard there for a while.
        source.say(Tuned {}, -60'000);
        source.say(PiHeard {0xE201, PiTrust::Told}, -61'000);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        docked.dock.doWhatIsDue(nowMilliseconds() + 62'000);
        QCOMPARE(docked.receptions.size(), 0);
        DialogAnswers answers;
        answers.press(QMessageBox::No);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"The receiver was tuned after 98.5 MHz was typed. Is it on 98.5 MHz?"_s}));
        QCOMPARE(docked.receptions.size(), 0);
        answers.press(QMessageBox::Yes);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 1);
        QCOMPARE(docked.receptions[0].entry.freq, u"98.5"_s);
        // Typed for where it is tuned to next, it is in no doubt.
        field->selectAll();
        QTest::keyClicks(field, u"99.0"_s);
        QTest::keyClick(field, Qt::Key_Return);
        source.say(Tuned {}, -1'000);
        source.say(PiHeard {0xE202, PiTrust::Told}, -2'000);
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 2);
        QCOMPARE(docked.receptions[1].entry.freq, u"99.0"_s);
    }

    void afterADisconnectNothingIsHeard()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        docked.press(u"receiverConnect"_s);
        QCOMPARE(docked.text(u"receiverPi"_s), u""_s);
        QCOMPARE(docked.text(u"receiverPs"_s), u""_s);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.dock.logHeard();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"Nothing to log: no PI code has been received on this frequency."_s}));
        QCOMPARE(docked.receptions.size(), 0);
    }

    void enterLogsWhereADoubleClickTunes()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.choose(u"Tuning From the Log"_s);
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        auto *const heard = docked.get<QTableView>(u"heard"_s);
        QTRY_COMPARE(heard->model()->rowCount(), 1);
        heard->setCurrentIndex(heard->model()->index(0, HeardModel::Freq));
        heard->setFocus();
        QTest::keyClick(heard, Qt::Key_Return);
        QCOMPARE(docked.receptions.size(), 1);
        QCOMPARE(source.tunedTo, QList<qint64>());
    }

    void aRowLogsByEnterAndByDoubleClick()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s, PiTrust::Told, 9'000);
        hear(source, 99'000'000, 0xE202, u"RNE 2   "_s, PiTrust::Told, 5'000);
        auto *const heard = docked.get<QTableView>(u"heard"_s);
        QTRY_COMPARE(heard->model()->rowCount(), 2);
        heard->setCurrentIndex(heard->model()->index(0, HeardModel::Pi));
        heard->setFocus();
        QTest::keyClick(heard, Qt::Key_Return);
        QCOMPARE(docked.receptions.size(), 1);
        QCOMPARE(docked.receptions[0].entry.piCode, u"E201"_s);
        const QModelIndex second = heard->model()->index(1, HeardModel::Ps);
        const QPoint at = heard->visualRect(second).center();
        QTest::mouseClick(heard->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(heard->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(docked.receptions.size(), 2);
        QCOMPARE(docked.receptions[1].entry.piCode, u"E202"_s);
    }

    void tuningIsOffUntilTicked()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        docked.dock.tune(99'000'000);
        QCOMPARE(source.tunedTo, QList<qint64>());
        docked.choose(u"Tuning From the Log"_s);
        docked.dock.tune(99'000'000);
        QCOMPARE(source.tunedTo, QList<qint64> {99'000'000});
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        auto *const heard = docked.get<QTableView>(u"heard"_s);
        QTRY_COMPARE(heard->model()->rowCount(), 1);
        const QModelIndex frequency = heard->model()->index(0, HeardModel::Freq);
        const QPoint at = heard->visualRect(frequency).center();
        QTest::mouseClick(heard->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(heard->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(source.tunedTo, (QList<qint64> {99'000'000, 98'500'000}));
        QCOMPARE(docked.receptions.size(), 0);
    }

    void radiotextBecomesNotesWhenTicked()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.choose(u"Radiotext as Notes"_s);
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        source.say(RadiotextHeard {u"Now: Sade"_s});
        docked.dock.logHeard();
        QCOMPARE(docked.receptions[0].entry.notes, u"Now: Sade"_s);
    }

    void aStationIsLoggedByItself()
    {
        const TestDirectory folder;
        ReceiverSettings settings;
        settings.autoLog = {true, 1, 0, 60, {{98'000'000, {}}}};
        writeReceiverSettings(folder.path(), settings);
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'000'000, 0xE200, u"LOCAL   "_s, PiTrust::Told, 5'000);
        QTest::qWait(1'200);
        QCOMPARE(docked.receptions.size(), 0);
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s, PiTrust::Told, 1'000);
        QTRY_COMPARE(docked.receptions.size(), 1);
        QCOMPARE(docked.receptions[0].entry.notes, u"auto"_s);
        source.say(PiHeard {0xE201, PiTrust::Told});
        QTest::qWait(1'200);
        QCOMPARE(docked.receptions.size(), 1);
    }

    void theRulesAreSetInTheirDialog()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.choose(u"Automatic Logging…"_s);
        auto *const dialog = docked.dock.findChild<QDialog *>(u"autoLog"_s);
        QVERIFY(dialog != nullptr);
        QCOMPARE(withoutName(*dialog), QStringList());
        QCOMPARE(claimedTwice(captionsOf(*dialog)), QStringList());
        QVERIFY(!dialog->findChild<QCheckBox *>(u"autoLogOn"_s)->isChecked());
        dialog->findChild<QCheckBox *>(u"autoLogOn"_s)->click();
        dialog->findChild<QSpinBox *>(u"autoLogEarliest"_s)->setValue(7);
        dialog->findChild<QSpinBox *>(u"autoLogHold"_s)->setValue(8);
        dialog->findChild<QSpinBox *>(u"autoLogAgain"_s)->setValue(90);
        auto *const locals = dialog->findChild<QPlainTextEdit *>(u"autoLogLocals"_s);
        auto *const ok =
            dialog->findChild<QDialogButtonBox *>(u"autoLogButtons"_s)->button(QDialogButtonBox::Ok);
        locals->setPlainText(u"98.5 D3C2\nmy local\n"_s);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        ok->click();
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"Line 2 of the locals is neither a frequency nor a PI code: my local"_s}));
        locals->setPlainText(u"98.5 D3C2\n\n87.6\n"_s);
        ok->click();
        QTRY_VERIFY(docked.dock.findChild<QDialog *>(u"autoLog"_s) == nullptr);
        const AutoLogRules rules = readReceiverSettings(folder.path()).autoLog;
        QCOMPARE(rules, (AutoLogRules {true, 7, 8, 90, {{98'500'000, 0xD3C2}, {87'600'000, {}}}}));
    }

    void theDialogOfTheRulesComesToTheFrontWhenItIsChosenAgain()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.choose(u"Automatic Logging…"_s);
        auto *const dialog = docked.dock.findChild<QDialog *>(u"autoLog"_s);
        docked.window.activateWindow();
        QTRY_VERIFY(docked.window.isActiveWindow());
        const Fronted fronted(*dialog);
        docked.choose(u"Automatic Logging…"_s);
        QCOMPARE(docked.dock.findChildren<QDialog *>(u"autoLog"_s).size(), 1);
        QTRY_VERIFY(dialog->isActiveWindow());
        QVERIFY(fronted.seen);
    }

    void theSourceIsKeptAndThePasswordIsNobodysBusiness()
    {
        const TestDirectory folder;
        const QString path = folder.path() + u"/settings"_s;
        {
            Docked docked(path);
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            auto *const source = docked.get<QComboBox>(u"receiverSource"_s);
            QCOMPARE(source->currentText(), u"gqrx"_s);
            auto *const password = docked.get<QLineEdit>(u"receiverPassword"_s);
            QVERIFY(!password->isVisible());
            auto *const address = docked.get<QLineEdit>(u"receiverAddress"_s);
            QCOMPARE(address->placeholderText(), u"127.0.0.1:7356"_s);
            source->setCurrentText(u"xdrd"_s);
            QCOMPARE(address->placeholderText(), u"127.0.0.1:7373"_s);
            QVERIFY(password->isVisible());
            QCOMPARE(password->echoMode(), QLineEdit::Password);
            address->setText(u"127.0.0.1:%1"_s.arg(server.serverPort()));
            password->setText(u"geheim ü"_s);
            docked.press(u"receiverConnect"_s);
            QTRY_COMPARE(docked.text(u"receiverState"_s), u"listening"_s);
            QCOMPARE(docked.get<QPushButton>(u"receiverConnect"_s)->text().remove(u'&'), u"Disconnect"_s);
            DialogAnswers answers;
            answers.type(u"At home"_s);
            docked.choose(u"Keep This Source…"_s);
            docked.press(u"receiverConnect"_s);
            QTRY_COMPARE(docked.text(u"receiverState"_s), u"not connected"_s);
            QCOMPARE(docked.get<QMenu>(u"receiverKept"_s)->actions().first()->text(), u"At home"_s);
        }
        const QFileInfo file(path + u"/receiver.passwords"_s);
        QCOMPARE(
            file.permissions() & ~(QFile::ReadUser | QFile::WriteUser), QFile::ReadOwner | QFile::WriteOwner);
        QVERIFY(!readFile(path + u"/receiver.ini"_s).contains("geheim"));
        const ReceiverSettings settings = readReceiverSettings(path);
        QCOMPARE(settings.last.kind, SourceKind::Xdrd);
        QCOMPARE(settings.last.password, u"geheim ü"_s);
        QCOMPARE(settings.kept.size(), 1);
        QCOMPARE(settings.kept[0].name, u"At home"_s);
        QCOMPARE(settings.kept[0].settings.password, u"geheim ü"_s);
    }

    void whoConnectsKnowsTheLogAsItIsThen()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        LogEntry entry;
        entry.piCode = u"D3C2"_s;
        entry.freq = u"98.5"_s;
        docked.log.AddEntry(entry);
        QVERIFY(!docked.dock.receiver().known().knows(0xD3C2));
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        docked.get<QComboBox>(u"receiverSource"_s)->setCurrentText(u"xdrd"_s);
        docked.get<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:%1"_s.arg(server.serverPort()));
        docked.press(u"receiverConnect"_s);
        QVERIFY(docked.dock.receiver().known().knows(98'500'000, 0xD3C2));
        docked.press(u"receiverConnect"_s);
    }

    void whatIsLoggedIsKnownBeforeTheLogSaysSo()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xD3C2, u"MDR JUMP"_s);
        QVERIFY(!docked.dock.receiver().known().knows(98'500'000, 0xD3C2));
        docked.dock.logHeard();
        QCOMPARE(docked.receptions.size(), 1);
        QVERIFY(docked.dock.receiver().known().knows(98'500'000, 0xD3C2));
    }

    void whatTellsAStationStandsFirst()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        const QHeaderView &header = *docked.get<QTableView>(u"heard"_s)->horizontalHeader();
        QList<int> shown;
        for (int place = 0; place < header.count(); ++place) {
            shown += header.logicalIndex(place);
        }
        QCOMPARE(shown,
            (QList<int> {HeardModel::First, HeardModel::Freq, HeardModel::Pi, HeardModel::Ps,
                HeardModel::Logged, HeardModel::New, HeardModel::Signal, HeardModel::Groups,
                HeardModel::Last}));
    }

    void aWrongAddressIsSaid()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.get<QLineEdit>(u"receiverAddress"_s)->setText(u"no host"_s);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        docked.press(u"receiverConnect"_s);
        QCOMPARE(answers.takeTexts(), (QStringList {u"\"no host\" is no host and port"_s}));
        QCOMPARE(docked.text(u"receiverState"_s), u"not connected"_s);
    }

    void aLostSourceSaysWhy()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        docked.get<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:%1"_s.arg(server.serverPort()));
        docked.press(u"receiverConnect"_s);
        QTRY_COMPARE(docked.text(u"receiverState"_s), u"listening"_s);
        server.nextPendingConnection()->abort();
        QTRY_VERIFY(docked.text(u"receiverState"_s).startsWith(u"lost: "_s));
    }

    void newStationsAreAnnouncedWhenTicked()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        const QSignalSpy told(&docked.dock, &ReceiverDock::newStation);
        docked.dock.setSigns({[] {}, [](const QString &, const QString &) {}});
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        QCOMPARE(told.size(), 0);
        docked.choose(u"Notification for New Stations"_s);
        hear(source, 99'000'000, 0xE202, u"RNE 2   "_s);
        QTRY_COMPARE(told.size(), 1);
        QCOMPARE(told.at(0).at(0).toString(), u"99.0 MHz E202 RNE 2: new PI, perhaps new country"_s);
    }

    void aNewStationIsHeardAndSeenWhenTicked()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        int sounds = 0;
        QStringList notifications;
        docked.dock.setSigns({[&] { ++sounds; },
            [&](const QString &title, const QString &text) { notifications += title + u'|' + text; }});
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
        QCOMPARE(sounds, 0);
        QCOMPARE(notifications, QStringList());
        docked.choose(u"Sound for New Stations"_s);
        hear(source, 99'000'000, 0xE202, u"RNE 2   "_s);
        QTRY_COMPARE(sounds, 1);
        QCOMPARE(notifications, QStringList());
        docked.choose(u"Notification for New Stations"_s);
        hear(source, 99'500'000, 0xE203, u"RNE 3   "_s);
        QTRY_COMPARE(notifications, QStringList {u"99.5 MHz E203 RNE 3|new PI, perhaps new country"_s});
        // Once for each, and not for what the log knows.
        docked.dock.logHeard();
        docked.dock.logChanged(std::vector<qint32> {docked.log.count() - 1});
        source.say(Tuned {90'000'000});
        hear(source, 99'500'000, 0xE203, u"RNE 3   "_s);
        QTRY_COMPARE(docked.text(u"receiverNew"_s), u""_s);
        QTRY_COMPARE(docked.text(u"receiverPs"_s).trimmed(), u"RNE 3"_s);
        QCOMPARE(sounds, 2);
        QCOMPARE(notifications.size(), 1);
    }

    void aRecordedFileIsPlayedAtOnceWhenTicked()
    {
        const TestDirectory folder;
        QByteArray lines = "<recorder=\"\" date=\"\">\r\n";
        for (int i = 0; i < 60; ++i) {
            lines += groupText(nameGroup(0xE201, "RNE 1   ", i % 4), " ")
                + " @2025/06/12 16:" + QByteArray::number(i).rightJustified(2, '0') + ":00.00\r\n";
        }
        folder.write(u"evening.spy"_s, lines);
        Docked docked(folder.path());
        docked.get<QComboBox>(u"receiverSource"_s)->setCurrentText(u"RDS Spy"_s);
        docked.get<QLineEdit>(u"receiverAddress"_s)->setText(folder.path() + u"/evening.spy"_s);
        docked.choose(u"Play Recorded Files at Once"_s);
        docked.press(u"receiverConnect"_s);
        // An hour in a moment.
        QTRY_COMPARE(docked.text(u"receiverState"_s), u"not connected: the file has ended"_s);
        QTRY_COMPARE(docked.cell(0, HeardModel::Groups), u"60"_s);
        QCOMPARE(docked.cell(0, HeardModel::Last), u"16:59:00"_s);
        QVERIFY(readReceiverSettings(folder.path()).last.atOnce);
    }

    void otherFrequenciesAreTold()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        source.say(Tuned {98'500'000}, 1'000);
        for (int i = 0; i < 8; ++i) {
            // 89.1 and 98.5 MHz.
            source.say(GroupHeard {nameGroup(0xE201, "RNE 1   ", i % 4, 0x106E)});
        }
        auto *const frequency = docked.get<QLineEdit>(u"receiverFreq"_s);
        QTRY_COMPARE(frequency->toolTip(), u"Also on 89.1 MHz"_s);
        source.say(Tuned {99'000'000});
        QTRY_COMPARE(frequency->toolTip(), QString());
    }

    void aFailureWhileLoggingIsShownAndNothingIsMarked()
    {
        const TestDirectory folder;
        const Logbook log;
        ReceiverDock dock(
            log, [](const HeardReception &) -> bool { throw RuntimeError(ErrorName::DiskFull, u"Saving"_s); },
            folder.path());
        auto source = std::make_unique<Told>();
        Told &told = *source;
        dock.receiver().listenTo(std::move(source));
        hear(told, 98'500'000, 0xE201, u"RNE 1   "_s);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        dock.logHeard();
        QCOMPARE(answers.takeTexts().size(), 1);
        QVERIFY(!dock.receiver().heard().rows()[0].logged);
    }

    void theControlsCanBeReachedAndHaveNames()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        QCOMPARE(withoutName(docked.dock), QStringList());
        QCOMPARE(claimedTwice(captionsOf(docked.dock)), QStringList());
        QCOMPARE(cutOff(docked.dock), QStringList());
        for (const QString &name : {u"receiverSource"_s, u"receiverAddress"_s, u"receiverConnect"_s,
                 u"receiverState"_s, u"receiverFreq"_s, u"receiverPi"_s, u"receiverPs"_s, u"receiverRt"_s,
                 u"receiverSignal"_s, u"receiverPassword"_s, u"heard"_s, u"receiverLog"_s}) {
            QVERIFY2(docked.dock.findChild<QWidget *>(name) != nullptr, qPrintable(name));
        }
        QCOMPARE(docked.dock.objectName(), u"receiverDock"_s);
    }
};

QTEST_MAIN(TestReceiverDock)
#include "tst_receiverdock.moc"
