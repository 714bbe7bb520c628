#include "core/ui/editmany.h"
#include "support/accessibility.h"
#include "ui/looks.h"
#include "ui/problemlabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <numeric>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

Logbook logOf(int count)
{
    Logbook log;
    for (int i = 0; i < count; ++i) {
        log.AddEntry({u"D3C3"_s, {i}, i % 5 == 0 ? QString() : u"Es"_s, u"87.6"_s, u"Site %1"_s.arg(i),
            u"D"_s, i % 2 == 0 ? QString() : u"jingle"_s, u"NAME_%1"_s.arg(i), u"10"_s, u"100"_s, {}, {}});
    }
    return log;
}

std::vector<qint32> firstOf(int count)
{
    std::vector<qint32> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

// The window over the first entries of a log.
class Opened
{
public:
    explicit Opened(int count)
        : log(logOf(count))
        , dialog(new EditMany(log, firstOf(count), {u"D"_s, u"E"_s}, CodePage(1252), nullptr))
    {
        QObject::connect(
            dialog, &EditMany::editChosen, dialog, [this](const LogChange &change, const QString &name) {
                chosen.push_back(change);
                names += name;
            });
        dialog->show();
        if (!QTest::qWaitForWindowActive(dialog)) {
            qFatal("the window did not become active");
        }
    }
    ~Opened() { delete dialog; }
    Opened(const Opened &) = delete;
    Opened &operator=(const Opened &) = delete;

    template<typename Widget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        auto *widget = dialog->findChild<Widget *>(name);
        if (!widget) {
            qFatal("no %s", qPrintable(name));
        }
        return *widget;
    }
    void tick(const QString &field) const
    {
        auto &box = find<QCheckBox>(u"tick"_s + field);
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_Space);
    }
    void type(const QString &field, const QString &text) const
    {
        auto &value = find<QWidget>(u"value"_s + field);
        value.setFocus();
        QTest::keyClicks(&value, text);
    }
    [[nodiscard]] QString effect() const { return find<QLabel>(u"effect"_s).text(); }
    [[nodiscard]] QPushButton &ok() const { return find<QPushButton>(u"OKButton"_s); }

    Logbook log;
    QPointer<EditMany> dialog;
    std::vector<LogChange> chosen;
    QStringList names;
};

} // namespace

/// The window that gives fields of many receptions a new value.
class TestEditMany : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installLooks(); }

    void nothingChangesUnlessItIsTicked()
    {
        const Opened opened(10);
        QCOMPARE(opened.dialog->windowTitle(), u"Edit 10 receptions"_s);
        QCOMPARE(opened.effect(), u"Tick the fields that are to change."_s);
        QVERIFY(!opened.ok().isEnabled());
        for (const LogField field : fieldsForMany) {
            const QString name = field == LogField::PiCode ? u"PiCode"_s
                : field == LogField::RdsName               ? u"RdsName"_s
                : field == LogField::Uid                   ? u"Uid"_s
                                                           : logField(field).caption.toString();
            QVERIFY(!opened.find<QWidget>(u"value"_s + name).isEnabled());
            QVERIFY(!opened.find<QCheckBox>(u"tick"_s + name).isChecked());
        }
        QCOMPARE(opened.find<QComboBox>(u"valueCountry"_s).currentText(), QString());
    }

    void theEffectIsToldWhileItIsTyped()
    {
        Opened opened(10);
        opened.tick(u"Prop"_s);
        QCOMPARE(opened.effect(), u"Prop of 8 receptions: Es (8) → empty"_s);
        opened.type(u"Prop"_s, u"Tropo"_s);
        QCOMPARE(opened.effect(), u"Prop of 10 receptions: Es (8), empty (2) → Tropo"_s);
        opened.tick(u"PiCode"_s);
        opened.type(u"PiCode"_s, u"d3c3"_s);
        QCOMPARE(opened.effect(), u"Prop of 10 receptions: Es (8), empty (2) → Tropo"_s);
        opened.type(u"PiCode"_s, u"4"_s);
        QCOMPARE(opened.effect(),
            u"PI Code of 10 receptions: D3C3 (10) → D3C34\n"
            "Prop of 10 receptions: Es (8), empty (2) → Tropo"_s);
        opened.tick(u"Prop"_s);
        opened.tick(u"PiCode"_s);
        QCOMPARE(opened.effect(), u"Tick the fields that are to change."_s);
        QVERIFY(!opened.ok().isEnabled());
    }

    void whatIsSoAlreadyIsNoChange()
    {
        const Opened opened(10);
        opened.tick(u"Freq"_s);
        opened.type(u"Freq"_s, u"87.6"_s);
        QCOMPARE(opened.effect(), u"Nothing would change: it is so already."_s);
        QVERIFY(!opened.ok().isEnabled());
        QTest::keyClick(opened.dialog, Qt::Key_Return);
        QVERIFY(opened.dialog->isVisible());
        QVERIFY(opened.chosen.empty());
    }

    void okHandsOverOneChange()
    {
        Opened opened(10);
        opened.tick(u"RdsName"_s);
        opened.type(u"RdsName"_s, u"rne clas"_s);
        opened.tick(u"Country"_s);
        opened.type(u"Country"_s, u"E"_s);
        opened.tick(u"Notes"_s);
        opened.find<QComboBox>(u"notesMode"_s).setCurrentIndex(1);
        opened.type(u"Notes"_s, u"a"_s);
        QTest::keyClick(&opened.find<QPlainTextEdit>(u"valueNotes"_s), Qt::Key_Return);
        opened.type(u"Notes"_s, u"b"_s);
        QTest::mouseClick(&opened.ok(), Qt::LeftButton);
        QCOMPARE(opened.chosen.size(), std::size_t(1));
        QCOMPARE(opened.names, {u"Edit 10 receptions"_s});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!opened.dialog);
        opened.log.apply(opened.chosen.front());
        const Logbook before = logOf(10);
        for (qint32 i = 0; i < 10; ++i) {
            LogEntry wanted = before.entry(i);
            wanted.rdsName = u"rne_clas"_s;
            wanted.country = u"E"_s;
            wanted.notes = wanted.notes.isEmpty() ? u"a\r\nb"_s : u"jingle\r\na\r\nb"_s;
            QVERIFY(opened.log.entry(i) == wanted);
        }
    }

    void theNameCountsWhatChanges()
    {
        Opened opened(10);
        opened.tick(u"Prop"_s);
        opened.type(u"Prop"_s, u"Es"_s);
        QTest::keyClick(opened.dialog, Qt::Key_Return);
        QCOMPARE(opened.names, {u"Edit 2 receptions"_s});
    }

    void theLogThatHasChangedMeanwhileCounts()
    {
        Opened opened(10);
        opened.tick(u"Prop"_s);
        opened.type(u"Prop"_s, u"Es"_s);
        const NewValue value {LogField::Prop, u"Es"_s};
        const std::vector<qint32> first {0};
        opened.log.apply(editMany(opened.log, first, {&value, 1}));
        opened.dialog->logChanged();
        QCOMPARE(opened.effect(), u"Prop of 1 reception: empty (1) → Es"_s);
        const std::vector<qint32> second {5};
        opened.log.apply(editMany(opened.log, second, {&value, 1}));
        QTest::mouseClick(&opened.ok(), Qt::LeftButton);
        QVERIFY(opened.chosen.empty());
        QVERIFY(opened.dialog->isVisible());
        QVERIFY(!opened.ok().isEnabled());
    }

    void escapeAndCancelChangeNothing()
    {
        for (const bool escape : {true, false}) {
            const Opened opened(3);
            opened.tick(u"Uid"_s);
            opened.type(u"Uid"_s, u"1"_s);
            if (escape) {
                QTest::keyClick(opened.dialog, Qt::Key_Escape);
            } else {
                QTest::mouseClick(&opened.find<QPushButton>(u"CancelButton"_s), Qt::LeftButton);
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!opened.dialog);
            QVERIFY(opened.chosen.empty());
        }
    }

    void whatIsOddIsToldAndNotRefused()
    {
        const Opened opened(3);
        opened.tick(u"Freq"_s);
        opened.type(u"Freq"_s, u"1000"_s);
        QCOMPARE(opened.find<ProblemLabel>(u"problem"_s).text(), u"Frequency is outside 64 to 108 MHz"_s);
        QVERIFY(opened.ok().isEnabled());
    }

    void aPastedTextStaysOnOneLine()
    {
        Opened opened(3);
        opened.tick(u"Transmitter"_s);
        opened.find<QLineEdit>(u"valueTransmitter"_s).setText(u"a\nb"_s);
        QTest::mouseClick(&opened.ok(), Qt::LeftButton);
        QCOMPARE(std::get<QString>(opened.chosen.front().fields.front().after), u"a b"_s);
    }

    void textsOfTheLogAreNoMarkup()
    {
        const Opened opened(3);
        opened.tick(u"Notes"_s);
        opened.type(u"Notes"_s, u"<b>x</b>"_s);
        QCOMPARE(opened.find<QLabel>(u"effect"_s).textFormat(), Qt::PlainText);
    }

    void everyControlHasANameAndAKey()
    {
        const Opened opened(3);
        for (const QString &field : {u"PiCode"_s, u"Freq"_s, u"RdsName"_s, u"Country"_s, u"Transmitter"_s,
                 u"Power"_s, u"Notes"_s, u"Prop"_s, u"Uid"_s}) {
            opened.tick(field);
        }
        QCOMPARE(withoutName(*opened.dialog), QStringList());
        QCOMPARE(claimedTwice(captionsOf(*opened.dialog)), QStringList());
        QCOMPARE(notReached(*opened.dialog), QStringList());
        QCOMPARE(cutOff(*opened.dialog), QStringList());
    }

    void aWholeLogIsOneChange()
    {
        constexpr int whole = 32497;
        const Opened opened(whole);
        opened.tick(u"RdsName"_s);
        opened.type(u"RdsName"_s, u"RNE_CLAS"_s);
        QCOMPARE(opened.effect(),
            u"RDS Name of 32497 receptions: NAME_0 (1), NAME_1 (1), NAME_2 (1), NAME_3 (1), others (32493) → "
            "RNE_CLAS"_s);
        QTest::mouseClick(&opened.ok(), Qt::LeftButton);
        QCOMPARE(opened.chosen.front().fields.size(), std::size_t(whole));
    }
};

QTEST_MAIN(TestEditMany)
#include "tst_editmany.moc"
