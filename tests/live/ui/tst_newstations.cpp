#include "docked.h"
#include "live/ui/announced.h"
#include "support/testfiles.h"

#include <QLabel>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

/// How a station that is new to the log is told.
class TestNewStations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoStationsInTurnAreAnnouncedOnceEach()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        docked.choose(u"Sound for New Stations"_s);
        QStringList announced;
        docked.dock.setSigns({[&] {
                                  const auto &station = docked.dock.receiver().listening().station();
                                  announced += station ? piText(station->pi) : QString();
                              },
            [](const QString &, const QString &) {}});
        Told &source = *docked.listen();
        for (int i = 0; i < 4; ++i) {
            hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
            QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E201"_s);
            hear(source, 99'000'000, 0xE202, u"RNE 2   "_s);
            QTRY_COMPARE(docked.text(u"receiverPi"_s), u"E202"_s);
        }
        QCOMPARE(announced, (QStringList {u"E201"_s, u"E202"_s}));
    }

    void whatWasAwayForLongIsAnnouncedAgain()
    {
        Announced announced;
        constexpr qint64 start = 1'750'000'000'000;
        QVERIFY(announced.isNew(9850, 0xE201, start));
        QVERIFY(announced.isNew(9900, 0xE201, start));
        QVERIFY(announced.isNew(9850, 0xE202, start));
        QVERIFY(!announced.isNew(9850, 0xE201, start + Announced::awayFor));
        QVERIFY(!announced.isNew(9850, 0xE201, start + 2 * Announced::awayFor));
        QVERIFY(announced.isNew(9850, 0xE201, start + 3 * Announced::awayFor + 1));
    }

    void noMoreAreRememberedThanThereIsRoomFor()
    {
        Announced announced;
        for (int i = 0; i < 10'000; ++i) {
            QVERIFY(announced.isNew(9850, static_cast<quint16>(i), i));
        }
        QVERIFY(announced.count() <= Announced::most);
        QVERIFY(!announced.isNew(9850, 9'999, 10'000));
    }

    void whatIsNewIsWholeInANarrowDock()
    {
        const TestDirectory folder;
        Docked docked(folder.path());
        Told &source = *docked.listen();
        hear(source, 98'500'000, 0xE201, u"RNE 1   "_s);
        const auto *const label = docked.get<QLabel>(u"receiverNew"_s);
        QTRY_COMPARE(label->text(), u"new PI, perhaps new country"_s);
        docked.window.resize(10, 800);
        const auto room = [&] {
            return label->fontMetrics().boundingRect(
                QRect(0, 0, label->width(), 1'000), Qt::TextWordWrap, label->text());
        };
        QTRY_COMPARE(docked.dock.width(), docked.dock.minimumSizeHint().width());
        QTRY_VERIFY(room().height() <= label->height());
        QVERIFY(room().width() <= label->width());
    }
};

QTEST_MAIN(TestNewStations)
#include "tst_newstations.moc"
