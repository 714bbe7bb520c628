#include "ui/desktop.h"

#include "support/opened.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

class TestDesktop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsignLookupOpensThePageOfTheCallsign_data()
    {
        QTest::addColumn<QString>("callsign");
        QTest::addColumn<QString>("page");
        QTest::newRow("plain") << u"G4ABC"_s << u"http://127.0.0.1:9/detail/G4ABC"_s;
        QTest::newRow("portable") << u"G4ABC/P"_s << u"http://127.0.0.1:9/detail/G4ABC"_s;
        QTest::newRow("mobile") << u"F/G4ABC/M"_s << u"http://127.0.0.1:9/detail/F/G4ABC"_s;
    }

    void callsignLookupOpensThePageOfTheCallsign()
    {
        QFETCH(QString, callsign);
        QFETCH(QString, page);
        Opened opened;
        callsignLookup(u"http://127.0.0.1:9/detail/$CALLSIGN"_s, callsign);
        QCOMPARE(opened.take(), QStringList {page});
    }
};

QTEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
