#include "txdb/transmitters.h"

#include "platform/runtimeerror.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

bool read(TransmitterList &list, const QByteArray &file, int page = 1252, const QString &name = u"tx.lst"_s)
{
    return readTransmitters(list, file, CodePage(page), name);
}

Transmitter site(const QString &name, const QString &country = u"D"_s, const QString &latitude = u"51"_s,
    const QString &longitude = u"10"_s, const QString &distance = {})
{
    return {name, country, latitude, longitude, distance};
}

} // namespace

class TestTransmitters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileComesBackByteForByte_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("example") << "Bilbao|Spain|43.2630|-2.9350|812.4|\r\n"_ba;
        QTest::newRow("no distance") << "Brocken|D|51.8|10.6||\r\nBilbao|E|1|2|3|\r\n"_ba;
        QTest::newRow("one coordinate") << "A|D|1|||\r\nB|D||2||\r\n"_ba;
        QTest::newRow("same name, other country") << "A|D|1|2||\r\nA|F|3|4||\r\n"_ba;
        QTest::newRow("case makes another site") << "A|D|1|2||\r\na|D|3|4||\r\n"_ba;
        QTest::newRow("nothing is trimmed") << " A | D | 1,5 | 2 | x |\r\n"_ba;
        QTest::newRow("code page") << "M\xFChlacker|\xD6|1|2||\r\n"_ba;
    }

    void aFileComesBackByteForByte()
    {
        QFETCH(QByteArray, file);
        TransmitterList list;
        QVERIFY(read(list, file));
        QCOMPARE(transmitterBytes(list, CodePage()), file);
    }

    void everyByteComesBack()
    {
        for (const int page : {1250, 1251, 1252, 1253, 1254, 1257}) {
            QByteArray file;
            for (int byte = 0; byte < 256; ++byte) {
                if (byte != '|' && byte != '\n') {
                    const QByteArray one(1, static_cast<char>(byte));
                    file += one + '|' + one + '|' + one + '|' + one + '|' + one + "|\r\n"_ba;
                }
            }
            TransmitterList list;
            QVERIFY(read(list, file, page));
            QCOMPARE(list.count(), 254);
            QCOMPARE(transmitterBytes(list, CodePage(page)), file);
        }
    }

    void fieldsAreReadInTheirOrder()
    {
        TransmitterList list;
        QVERIFY(read(list, "Bilbao|Spain|43.2630|-2.9350|812.4|\r\n"));
        QCOMPARE(list.count(), 1);
        QCOMPARE(
            list.row(0), (Transmitter {u"Bilbao"_s, u"Spain"_s, u"43.2630"_s, u"-2.9350"_s, u"812.4"_s}));
    }

    void linesThatEndInLineFeedAloneAreRead()
    {
        TransmitterList list;
        QVERIFY(read(list, "A|D|1|2|3|\nB|D|1|2|3|"));
        QCOMPARE(transmitterBytes(list, CodePage()), "A|D|1|2|3|\r\nB|D|1|2|3|\r\n"_ba);
    }

    void aSiteNeedsNameCountryAndACoordinate_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("country");
        QTest::addColumn<QString>("latitude");
        QTest::addColumn<QString>("longitude");
        QTest::addColumn<bool>("added");
        QTest::newRow("all") << u"A"_s << u"D"_s << u"1"_s << u"2"_s << true;
        QTest::newRow("no name") << u""_s << u"D"_s << u"1"_s << u"2"_s << false;
        QTest::newRow("no country") << u"A"_s << u""_s << u"1"_s << u"2"_s << false;
        QTest::newRow("latitude alone") << u"A"_s << u"D"_s << u"1"_s << u""_s << true;
        QTest::newRow("longitude alone") << u"A"_s << u"D"_s << u""_s << u"2"_s << true;
        QTest::newRow("no coordinate") << u"A"_s << u"D"_s << u""_s << u""_s << false;
        QTest::newRow("a blank is a text") << u" "_s << u" "_s << u" "_s << u""_s << true;
    }

    void aSiteNeedsNameCountryAndACoordinate()
    {
        QFETCH(QString, name);
        QFETCH(QString, country);
        QFETCH(QString, latitude);
        QFETCH(QString, longitude);
        QFETCH(bool, added);
        TransmitterList list;
        QCOMPARE(list.add(site(name, country, latitude, longitude)), added);
        QCOMPARE(list.count(), added ? 1 : 0);
    }

    void aKnownSiteKeepsPlaceAndDistanceAndTakesTheCoordinates()
    {
        TransmitterList list;
        list.add(site(u"A"_s, u"D"_s, u"1"_s, u"2"_s, u"100"_s));
        list.add(site(u"B"_s));
        QVERIFY(!list.add(site(u"A"_s, u"D"_s, u"3"_s, u""_s, u"999"_s)));
        QCOMPARE(list.count(), 2);
        QCOMPARE(list.row(0), site(u"A"_s, u"D"_s, u"3"_s, u""_s, u"100"_s));
        // Nothing is changed by coordinates that are both empty.
        QVERIFY(!list.add(site(u"A"_s, u"D"_s, u""_s, u""_s, u"100"_s)));
        QCOMPARE(list.row(0).latitude, u"3"_s);
    }

    void theListEndsWithItsRow5000()
    {
        TransmitterList list;
        for (int i = 0; i < 5001; ++i) {
            QVERIFY(list.add(site(QString::number(i))));
        }
        QVERIFY(!list.add(site(u"5001"_s)));
        QCOMPARE(list.count(), 5001);
        QCOMPARE(list.row(5000).name, u"5000"_s);
        QVERIFY(!list.find(u"5001"_s, u"D"_s));
        // A known site still takes coordinates.
        QVERIFY(!list.add(site(u"5000"_s, u"D"_s, u"7"_s, u"8"_s, u"9"_s)));
        QCOMPARE(list.row(5000), site(u"5000"_s, u"D"_s, u"7"_s, u"8"_s));
    }

    void aFileOfTooManySitesIsReadAndNotWhole()
    {
        QByteArray file;
        for (int i = 0; i < 5002; ++i) {
            file += QByteArray::number(i) + "|D|1|2||\r\n"_ba;
        }
        TransmitterList list;
        QVERIFY(!read(list, file));
        QCOMPARE(list.count(), 5001);
        TransmitterList exactly;
        file.chop(QByteArray("5001|D|1|2||\r\n").size());
        QVERIFY(read(exactly, file));
    }

    void wholeIsTold_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("whole");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("without the last bar") << "A|D|1|2|3\r\n"_ba << false << "A|D|1|2|3|\r\n"_ba;
        QTest::newRow("surplus text") << "A|D|1|2|3|x\r\n"_ba << false << "A|D|1|2|3|\r\n"_ba;
        QTest::newRow("surplus piece") << "A|D|1|2|3||\r\n"_ba << false << "A|D|1|2|3|\r\n"_ba;
        QTest::newRow("no name") << "|D|1|2|3|\r\n"_ba << false << ""_ba;
        QTest::newRow("no coordinates") << "A|D|||3|\r\n"_ba << false << ""_ba;
        QTest::newRow("the same line twice")
            << "A|D|1|2|3|\r\nA|D|1|2|3|\r\n"_ba << true << "A|D|1|2|3|\r\n"_ba;
        QTest::newRow("other distance") << "A|D|1|2|3|\r\nA|D|1|2|4|\r\n"_ba << false << "A|D|1|2|3|\r\n"_ba;
        QTest::newRow("other coordinates")
            << "A|D|1|2|3|\r\nA|D|5|6|3|\r\n"_ba << false << "A|D|5|6|3|\r\n"_ba;
    }

    void wholeIsTold()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, whole);
        QFETCH(QByteArray, saved);
        TransmitterList list;
        QCOMPARE(read(list, file), whole);
        QCOMPARE(transmitterBytes(list, CodePage()), saved);
    }

    void aBrokenLineIsToldAndTheOnesBeforeItStay_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("message");
        QTest::newRow("empty") << ""_ba << u"the line has 1 pieces instead of 6: \"\""_s;
        QTest::newRow("four") << "\xD6|100%1|3|4"_ba
                              << u"the line has 4 pieces instead of 6: \"Ö|100%1|3|4\""_s;
    }

    void aBrokenLineIsToldAndTheOnesBeforeItStay()
    {
        QFETCH(QByteArray, line);
        QFETCH(QString, message);
        TransmitterList list;
        try {
            read(list, "A|D|1|2||\r\nB|D|1|2||\r\n"_ba + line + "\r\nC|D|1|2||\r\n"_ba, 1252,
                u"/50%3/tx.lst"_s);
            QFAIL("nothing was thrown");
        } catch (const RuntimeError &error) {
            QCOMPARE(error.name(), ErrorName::SubscriptOutOfRange);
            QCOMPARE(error.doing(), QString(u"Reading /50%3/tx.lst, line 3: "_s + message));
        }
        QCOMPARE(transmitterBytes(list, CodePage()), "A|D|1|2||\r\nB|D|1|2||\r\n"_ba);
    }

    void sitesAreFoundExactly()
    {
        TransmitterList list;
        list.add(site(u"A"_s, u"D"_s));
        list.add(site(u"A"_s, u"F"_s));
        QCOMPARE(list.find(u"A"_s, u"F"_s), std::optional(1));
        QVERIFY(!list.find(u"a"_s, u"D"_s));
        QVERIFY(!list.find(u"A"_s, u"d"_s));
        QVERIFY(!list.find(u"A "_s, u"D"_s));
        QVERIFY(!list.find(u""_s, u""_s));
    }

    void namesOfACountryInListOrder()
    {
        TransmitterList list;
        list.add(site(u"Z"_s, u"D"_s));
        list.add(site(u"F1"_s, u"F"_s));
        list.add(site(u"A"_s, u"D"_s));
        QCOMPARE(list.namesOfCountry(u"D"), (QStringList {u"Z"_s, u"A"_s}));
        QCOMPARE(list.namesOfCountry(u"d"), QStringList());
        QCOMPARE(list.namesOfCountry(u""), QStringList());
    }

    void distancesAreSetByRow()
    {
        TransmitterList list;
        list.add(site(u"A"_s));
        list.setDistance(0, u"55.5"_s);
        QCOMPARE(list.row(0).distance, u"55.5"_s);
        for (const int row : {-1, 1, 5001}) {
            try {
                list.setDistance(row, u"1"_s);
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::SubscriptOutOfRange);
            }
            QVERIFY_THROWS_EXCEPTION(RuntimeError, static_cast<void>(list.row(row)));
        }
    }
};

QTEST_GUILESS_MAIN(TestTransmitters)
#include "tst_transmitters.moc"
