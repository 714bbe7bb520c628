#include "live/evening.h"
#include "live/frequency.h"
#include "live/ui/receiverdock.h"
#include "loggingwindow.h"

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

/// A source whose groups come when the test wants.
class Groups : public ReceiverSource
{
public:
    void say(const ReceiverEvent &event, qint64 when) { Q_EMIT told(event, when); }

protected:
    void attempt() override { listening(); }
    void hangUp() override { }
};

/// The line of the logbook that a station is to become.
QByteArray lineOf(const Evening::Heard &heard, qint64 first)
{
    const QString line =
        u"%1|%2||%3||TBD||%4|||||\r\n"_s.arg(piText(heard.station.pi), generalText(DateTime {first / 1000}),
            megahertzText(heard.station.hertz), QString(heard.station.ps).replace(u' ', u'_'));
    return line.toLatin1();
}

} // namespace

/// A whole opening at the receiver, logged by one key in the real window.
class TestEveningByKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thirtyFiveOfFortyAreLoggedByTheKey();
};

void TestEveningByKey::thirtyFiveOfFortyAreLoggedByTheKey()
{
    MainWindow window;
    window.start(oneEntry);
    window.key(Qt::Key_F8);
    auto *dock = window.find<ReceiverDock>("receiverDock");
    auto made = std::make_unique<Groups>();
    Groups &source = *made;
    dock->receiver().listenTo(std::move(made));
    // The listener is typing something else meanwhile.
    window.key(Qt::Key_N, Qt::ControlModifier);
    window.type("Text3", u"opening to Spain"_s);

    Evening evening(1);
    QByteArray expected = oneEntry;
    for (std::size_t i = 0; i < evening.heard().size(); ++i) {
        const Evening::Heard &heard = evening.heard()[i];
        bool wanted = i % 8 != 7;
        const auto first = evening.listenTo(i, [&](const ReceiverEvent &event, qint64 when) {
            source.say(event, when);
            const auto &now = dock->receiver().listening().station();
            if (!wanted || !now || !now->certain || now->ps.isEmpty()) {
                return;
            }
            wanted = false;
            // The key is pressed when the dock shows the station without a doubt.
            QTRY_COMPARE(window.text("receiverPi"), piText(heard.station.pi));
            QTRY_COMPARE(window.text("receiverPs").trimmed(), heard.station.ps);
            QCOMPARE(window.text("receiverFreq"), megahertzText(heard.station.hertz));
            window.key(Qt::Key_F6);
        });
        QVERIFY2(!wanted || i % 8 == 7, qPrintable(heard.station.ps));
        if (i % 8 != 7) {
            QVERIFY(first.has_value());
            expected += lineOf(heard, *first);
        }
    }
    QCOMPARE(window.answers.takeTexts(), QStringList());
    QCOMPARE(window.form().log().count(), 1 + 35);
    QCOMPARE(window.logbook(), expected);
    QCOMPARE(window.text("Text3"), u"opening to Spain"_s);
    // Each is one step back.
    window.trigger("menuEditUndo");
    QCOMPARE(window.logbook(), expected.first(expected.lastIndexOf("\r\n", -3) + 2));
}

QTEST_MAIN(TestEveningByKey)
#include "tst_receiverevening.moc"
