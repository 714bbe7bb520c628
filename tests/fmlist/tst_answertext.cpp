#include "fmlist/answertext.h"

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
        QTest::newRow("unknown") << "text/plain; charset=koi8-r"_ba << page1250;
        QTest::newRow("unknown Windows page") << "text/plain; charset=windows-9999"_ba << page1250;
    }

    void readByTheCharsetNamed()
    {
        QFETCH(QByteArray, contentType);
        QTEST(answerText("\xC3\xB3", contentType, CodePage(1250)), "text");
    }

    void iso88591HasControlsWhereWindowsHasLetters()
    {
        QCOMPARE(answerText("\x80", "text/plain; charset=iso-8859-1", CodePage(1252)), u"\u0080"_s);
        QCOMPARE(answerText("\x80", "text/plain; charset=windows-1252", CodePage(1250)), u"\u20ac"_s);
    }
};

QTEST_GUILESS_MAIN(TestAnswerText)
#include "tst_answertext.moc"
