#include "net/answertext.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestAnswerText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readByTheCharsetNamed_data()
    {
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QString>("text");
        const QString page1250 = u"\u0102\u0142"_s;
        QTest::newRow("UTF-8") << "text/plain; charset=utf-8"_ba << u"\u00f3"_s;
        QTest::newRow("quoted, upper case") << "text/plain;Charset=\"UTF-8\"; x=y"_ba << u"\u00f3"_s;
        QTest::newRow("Latin 1") << "text/plain; charset=ISO-8859-1"_ba << u"\u00c3\u00b3"_s;
        QTest::newRow("Windows 1252") << "text/plain; charset=windows-1252"_ba << u"\u00c3\u00b3"_s;
        QTest::newRow("Windows 1251") << "text/plain; charset=cp1251"_ba << u"\u0413\u0456"_s;
        QTest::newRow("none named") << "text/plain"_ba << page1250;
        QTest::newRow("no type") << ""_ba << page1250;
        QTest::newRow("KOI8-R") << "text/plain; charset=koi8-r"_ba << u"\u0446\u0401"_s;
        QTest::newRow("ISO 8859-2, blanks and quotes")
            << "text/plain; x=y ; CharSet = \" ISO-8859-2 \" "_ba << u"\u0102\u0142"_s;
        QTest::newRow("ISO 8859-15") << "text/plain;charset=iso-8859-15"_ba << u"\u00c3\u00b3"_s;
        QTest::newRow("Windows 1256, which is no page of the program")
            << "text/plain; charset=windows-1256"_ba << u"\u0623\u00b3"_s;
        QTest::newRow("Shift_JIS") << "text/plain; charset=Shift_JIS"_ba << u"\uff83\uff73"_s;
        QTest::newRow("UTF-16") << "text/plain; charset=utf-16be"_ba << u"\uc3b3"_s;
        QTest::newRow("unknown") << "text/plain; charset=klingon-8"_ba << page1250;
        QTest::newRow("empty") << "text/plain; charset="_ba << page1250;
        QTest::newRow("only quotes") << "text/plain; charset=\"\""_ba << page1250;
        QTest::newRow("another parameter") << "text/plain; xcharset=utf-8"_ba << page1250;
        QTest::newRow("unknown Windows page") << "text/plain; charset=windows-9999"_ba << page1250;
    }

    void readByTheCharsetNamed()
    {
        QFETCH(QByteArray, contentType);
        QTEST(answerText("\xC3\xB3", contentType, CodePage(1250)), "text");
    }

    void aByteThatIsNoLetterOfTheCharsetIsMarkedAndTheRestIsRead()
    {
        QCOMPARE(answerText("A\xFF;\nB", "text/plain; charset=iso-8859-7", CodePage(1252)), u"A\ufffd;\nB"_s);
        QCOMPARE(answerText("A\xFF;\nB", "text/plain; charset=utf-8", CodePage(1252)), u"A\ufffd;\nB"_s);
        QCOMPARE(
            answerText("A\x81;\nB", "text/plain; charset=windows-1252", CodePage(1250)), u"A\u0081;\nB"_s);
    }

    void latin1IsReadAsWindows1252_data()
    {
        QTest::addColumn<QByteArray>("charset");
        for (const char *name : {"iso-8859-1", "ISO-8859-1", "iso8859-1", "iso_8859-1", "iso_8859-1:1987",
                 "latin1", "l1", "us-ascii", "ascii", "x-cp1252", "windows-1252", "cp1252"}) {
            QTest::newRow(name) << QByteArray(name);
        }
    }

    void latin1IsReadAsWindows1252()
    {
        QFETCH(QByteArray, charset);
        const QByteArray contentType = "text/plain; charset=" + charset;
        QCOMPARE(answerText("\x80 \x9A"
                            "ibenik \xE9 \x81",
                     contentType, CodePage(1250)),
            u"\u20ac \u0161ibenik \u00e9 \u0081"_s);
    }
};

QTEST_GUILESS_MAIN(TestAnswerText)
#include "tst_answertext.moc"
