#include "txdb/transmitters.h"

#include "platform/runtimeerror.h"

#include <QRandomGenerator>
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
        const Transmitter before = list.row(0);
        Transmitter after = before;
        after.distance = u"55.5"_s;
        SiteChanges changes;
        changes.push_back({0, before, after});
        list.apply(changes);
        QCOMPARE(list.row(0).distance, u"55.5"_s);
        for (const int row : {-1, 1, 5001}) {
            changes.front().row = row;
            try {
                list.apply(changes);
                QFAIL("nothing was thrown");
            } catch (const RuntimeError &error) {
                QCOMPARE(error.name(), ErrorName::SubscriptOutOfRange);
            }
            QVERIFY_THROWS_EXCEPTION(RuntimeError, static_cast<void>(list.row(row)));
        }
    }

    void anAdditionIsToldAndNotMade()
    {
        TransmitterList list;
        list.add(site(u"A"_s, u"D"_s, u"1"_s, u"2"_s, u"100"_s));
        const Transmitter other = site(u"B"_s);
        QVERIFY(list.addition(other) == (SiteChange {1, std::nullopt, other}));
        const Transmitter moved = site(u"A"_s, u"D"_s, u"3"_s, u""_s, u"999"_s);
        QVERIFY(list.addition(moved)
            == (SiteChange {0, list.row(0), site(u"A"_s, u"D"_s, u"3"_s, u""_s, u"100"_s)}));
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.row(0).latitude, u"1"_s);
        // What is as it stands, and what is no site, changes nothing.
        QVERIFY(!list.addition(site(u"A"_s, u"D"_s, u"1"_s, u"2"_s, u"999"_s)));
        QVERIFY(!list.addition(site(u"A"_s, u"D"_s, u""_s, u""_s)));
        QVERIFY(!list.addition(site(u""_s)));
        QVERIFY(!list.addition(site(u"C"_s, u""_s)));
    }

    void aFullListTellsNoAddition()
    {
        TransmitterList list;
        for (int i = 0; i < TransmitterList::capacity; ++i) {
            list.add(site(QString::number(i)));
        }
        QVERIFY(!list.addition(site(u"5001"_s)));
        QVERIFY(list.addition(site(u"5000"_s, u"D"_s, u"7"_s)));
    }

    void theInverseTakesBackInTheOtherOrder()
    {
        TransmitterList list;
        list.add(site(u"A"_s));
        const QByteArray before = transmitterBytes(list, CodePage());
        SiteChanges changes;
        changes.push_back({1, std::nullopt, site(u"B"_s)});
        changes.push_back({2, std::nullopt, site(u"C"_s, u"F"_s)});
        changes.push_back({1, site(u"B"_s), site(u"B"_s, u"D"_s, u"7"_s)});
        list.apply(changes);
        QCOMPARE(transmitterBytes(list, CodePage()), before + "B|D|7|10||\r\nC|F|51|10||\r\n"_ba);
        QCOMPARE(list.namesOfCountry(u"D"), (QStringList {u"A"_s, u"B"_s}));
        QCOMPARE(list.find(u"C", u"F"), std::optional(2));
        list.apply(changes.inverse());
        QCOMPARE(transmitterBytes(list, CodePage()), before);
        QCOMPARE(list.namesOfCountry(u"D"), QStringList(u"A"_s));
        QCOMPARE(list.namesOfCountry(u"F"), QStringList());
        QVERIFY(!list.find(u"B", u"D"));
        QVERIFY(!list.find(u"C", u"F"));
        QVERIFY(changes.inverse().inverse() == changes);
        // What was taken back can be added again, in its old place.
        QVERIFY(list.add(site(u"C"_s, u"F"_s)));
        QCOMPARE(list.find(u"C", u"F"), std::optional(1));
    }

    void aThousandChangesComeBackAndSitesAreFoundAfterEach()
    {
        QRandomGenerator random(5001);
        TransmitterList list;
        std::vector<SiteChanges> made;
        QByteArrayList states {transmitterBytes(list, CodePage())};
        const auto isFoundAsByScan = [&list] {
            for (const QString &country : {u"D"_s, u"F"_s}) {
                QStringList names;
                for (int i = 0; i < 12; ++i) {
                    const QString name = QString::number(i);
                    std::optional<int> expected;
                    for (int row = 0; row < list.count(); ++row) {
                        if (list.row(row).name == name && list.row(row).country == country) {
                            expected = row;
                        }
                    }
                    if (list.find(name, country) != expected) {
                        return false;
                    }
                }
                for (const Transmitter &row : list) {
                    names += row.country == country ? QStringList(row.name) : QStringList();
                }
                if (list.namesOfCountry(country) != names) {
                    return false;
                }
            }
            return true;
        };
        for (int i = 0; i < 1000; ++i) {
            if (!made.empty() && random.bounded(2) == 0) {
                list.apply(made.back().inverse());
                made.pop_back();
                states.removeLast();
                QCOMPARE(transmitterBytes(list, CodePage()), states.last());
            } else {
                const auto change = list.addition(site(QString::number(random.bounded(12)),
                    random.bounded(2) == 0 ? u"D"_s : u"F"_s, QString::number(random.bounded(3))));
                SiteChanges changes;
                if (change) {
                    changes.push_back(*change);
                }
                if (list.count() > 0) {
                    const int row = random.bounded(list.count());
                    if (!change || row != change->row) {
                        Transmitter measured = list.row(row);
                        measured.distance = QString::number(i);
                        changes.push_back({row, list.row(row), measured});
                    }
                }
                list.apply(changes);
                made.push_back(changes);
                states += transmitterBytes(list, CodePage());
            }
            QVERIFY(isFoundAsByScan());
        }
    }
};

QTEST_GUILESS_MAIN(TestTransmitters)
#include "tst_transmitters.moc"
