#include "core/logentry.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestLogEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheFMListState_data()
    {
        QTest::addColumn<QString>("fmlist");
        QTest::addColumn<QString>("shown");
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("sent") << u"fml=sent"_s << u"Sent"_s;
        QTest::newRow("sent with end") << u"fml=sent#"_s << u"Sent"_s;
        QTest::newRow("multi") << u"fml=multi#"_s << u"Multi"_s;
        QTest::newRow("none") << u"fml=none#"_s << u"None"_s;
        QTest::newRow("between other tags") << u"a=b#fml=none#c=d#"_s << u"None"_s;
        QTest::newRow("sent wins over multi before it") << u"fml=multi#fml=sent#"_s << u"Sent"_s;
        QTest::newRow("sent wins over none before it") << u"fml=none#fml=sent#"_s << u"Sent"_s;
        QTest::newRow("multi wins over none before it") << u"fml=none#fml=multi#"_s << u"Multi"_s;
        QTest::newRow("any place in the text") << u"xfml=sentx"_s << u"Sent"_s;
        QTest::newRow("case counts") << u"FML=SENT#fml=Multi#"_s << u""_s;
        QTest::newRow("other tags") << u"a=b#"_s << u""_s;
    }

    void showsTheFMListState()
    {
        QFETCH(QString, fmlist);
        QFETCH(QString, shown);
        QCOMPARE(fmlistDisplay(fmlist), shown);
    }

    void yesIsExactlyOne()
    {
        QCOMPARE(yesNo(u"1"), u"Yes"_s);
        for (const QString &text : {u""_s, u"0"_s, u"01"_s, u" 1"_s, u"1 "_s, u"yes"_s, u"11"_s}) {
            QCOMPARE(yesNo(text), u"No"_s);
        }
    }

    void deletedIsExactlyDelete()
    {
        LogEntry entry;
        entry.piCode = u"delete"_s;
        QVERIFY(isDeleted(entry));
        for (const QString &text : {u""_s, u"Delete"_s, u"DELETE"_s, u"delete "_s, u"deleted"_s, u"D3C3"_s}) {
            entry.piCode = text;
            QVERIFY(!isDeleted(entry));
        }
    }
};

QTEST_GUILESS_MAIN(TestLogEntry)
#include "tst_logentry.moc"
