#include "fmlist/weblinks.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestWebLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void webSearch_data()
    {
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("url");
        QTest::newRow("a station") << QStringList {u"D3C1"_s, u"87.6"_s, u"RADIO_1"_s, u"Berlin"_s}
                                   << u"http://s/?q=D3C1+87.6+RADIO+1+Berlin"_s;
        QTest::newRow("nothing") << QStringList {u""_s, u""_s, u""_s, u""_s} << u"http://s/?q=+++"_s;
        QTest::newRow("trimmed") << QStringList {u" D3C1 "_s, u" 87.6"_s, u" A "_s, u"Bad Ems "_s}
                                 << u"http://s/?q=D3C1+87.6+A+Bad+Ems"_s;
        QTest::newRow("_ at the end of the name is a blank")
            << QStringList {u"D3C1"_s, u"87.6"_s, u"A_"_s, u""_s} << u"http://s/?q=D3C1+87.6+A++"_s;
        QTest::newRow("nothing else is encoded")
            << QStringList {u""_s, u""_s, u"B&B"_s, u"K\u00f6ln_1"_s} << u"http://s/?q=++B&B+K\u00f6ln_1"_s;
    }

    void webSearch()
    {
        QFETCH(QStringList, fields);
        QTEST(webSearchUrl(u"http://s/?q="_s, fields[0], fields[1], fields[2], fields[3]), "url");
    }

    void maps()
    {
        const DateTime today = *fromCivil({.year = 2010, .month = 6, .day = 2, .hour = 23});
        QCOMPARE(
            propagationMapUrl(u"http://fm"_s, today), u"http://fm/fm_logmap.php?datum=2010-06-02&band=ALL"_s);
        QCOMPARE(ownPropagationMapUrl(u"http://fm"_s, today, u"a b"_s).value_or(u"none"_s),
            u"http://fm/fm_logmap.php?datum=2010-06-02&band=ALL&hours=0&omid=a b"_s);
        QVERIFY(!ownPropagationMapUrl(u"http://fm"_s, today, QString()));
        QCOMPARE(noOmidText.toString(), u"No OMID Set"_s);
    }

    void callsign_data()
    {
        QTest::addColumn<QString>("callsign");
        QTest::addColumn<QString>("url");
        QTest::newRow("plain") << u"G4ABC"_s << u"http://c/detail/G4ABC?again=G4ABC"_s;
        QTest::newRow("portable") << u"G4ABC/P"_s << u"http://c/detail/G4ABC?again=G4ABC"_s;
        QTest::newRow("mobile") << u"G4ABC/M"_s << u"http://c/detail/G4ABC?again=G4ABC"_s;
        QTest::newRow("anywhere") << u"F/PG4/MABC"_s << u"http://c/detail/FG4ABC?again=FG4ABC"_s;
        QTest::newRow("case counts") << u"G4ABC/p"_s << u"http://c/detail/G4ABC/p?again=G4ABC/p"_s;
    }

    void callsign()
    {
        QFETCH(QString, callsign);
        QTEST(callsignUrl(u"http://c/detail/$CALLSIGN?again=$CALLSIGN"_s, callsign), "url");
    }
};

QTEST_GUILESS_MAIN(TestWebLinks)
#include "tst_weblinks.moc"
