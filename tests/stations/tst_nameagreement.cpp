#include "stations/nameagreement.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestNameAgreement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lettersAreCompared_data()
    {
        QTest::addColumn<QString>("heard");
        QTest::addColumn<QString>("names");
        QTest::addColumn<int>("known");
        QTest::addColumn<int>("equal");
        QTest::addColumn<int>("moved");
        QTest::newRow("equal") << u"BAYERN 3"_s << u"BAYERN_3"_s << 7 << 7 << 0;
        QTest::newRow("case") << u"bayern 3"_s << u"BAYERN_3"_s << 7 << 7 << 0;
        QTest::newRow("gaps") << u"B_Y?.N 3"_s << u"BAYERN_3"_s << 4 << 4 << 0;
        QTest::newRow("second name") << u"NEWS"_s << u"R1_MUSIC R1_NEWS NEWS"_s << 4 << 4 << 0;
        QTest::newRow("one wrong") << u"BAYERN 1"_s << u"BAYERN_3"_s << 7 << 6 << 0;
        QTest::newRow("pairs moved") << u"RNBAYE 3"_s << u"BAYERN_3"_s << 7 << 1 << 6;
        QTest::newRow("half a pair is no pair") << u"?R_N"_s << u"BAYERN_3"_s << 2 << 0 << 0;
        QTest::newRow("indent lost") << u"NDR 2"_s << u"__NDR_2_"_s << 4 << 4 << 0;
        QTest::newRow("indent won") << u"  NDR 2"_s << u"NDR_2"_s << 4 << 4 << 0;
        QTest::newRow("other") << u"ANTENNE"_s << u"BAYERN_3"_s << 7 << 2 << 0;
        QTest::newRow("nothing heard") << u"  _?"_s << u"BAYERN_3"_s << 0 << 0 << 0;
        QTest::newRow("no name") << u"BAYERN"_s << QString() << 6 << 0 << 0;
        QTest::newRow("longer than a name") << u"BAYERN 3 XYZ"_s << u"BAYERN_3"_s << 7 << 7 << 0;
    }

    void lettersAreCompared()
    {
        QFETCH(QString, heard);
        QFETCH(QString, names);
        QFETCH(int, known);
        QFETCH(int, equal);
        QFETCH(int, moved);
        const NameAgreement agreement = nameAgreement(heard, names);
        QCOMPARE(agreement.known, known);
        QCOMPARE(agreement.equal, equal);
        QCOMPARE(agreement.moved, moved);
    }

    void movedLettersSpeakLessAgainst()
    {
        QCOMPARE(nameAgreement(u"BAYERN 3", u"BAYERN_3").disagreement(), 0.0);
        QCOMPARE(nameAgreement(u"BAYERN 1", u"BAYERN_3").disagreement(), 1.0);
        QCOMPARE(nameAgreement(u"YEBARN 3", u"BAYERN_3").disagreement(), 4 * 0.3);
        QVERIFY(nameAgreement(u"RNBAYE 3", u"BAYERN_3").disagreement()
            < nameAgreement(u"ANTENNE", u"BAYERN_3").disagreement());
    }
};

QTEST_GUILESS_MAIN(TestNameAgreement)
#include "tst_nameagreement.moc"
