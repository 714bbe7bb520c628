#include "core/foldedtext.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestFoldedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lettersBecomeTheirBaseLetters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << u"radio_88"_s << u"radio_88"_s;
        QTest::newRow("case") << u"RADIO"_s << u"radio"_s;
        QTest::newRow("accent") << u"Málaga"_s << u"malaga"_s;
        QTest::newRow("umlauts") << u"ÄÖÜ"_s << u"aou"_s;
        QTest::newRow("decomposed") << u"Ma\u0301laga"_s << u"malaga"_s;
        QTest::newRow("strokes") << u"Tromsø Łódź Đ"_s << u"tromso lodz d"_s;
        QTest::newRow("sharp s") << u"Groß ẞ"_s << u"gross ss"_s;
        QTest::newRow("ligatures") << u"Næstved Œ"_s << u"naestved oe"_s;
        QTest::newRow("Turkish") << u"İstanbul ığdır"_s << u"istanbul igdir"_s;
        QTest::newRow("Icelandic") << u"Þingvellir Að"_s << u"thingvellir ad"_s;
        QTest::newRow("Greek") << u"Αθήνα ΆΣ ας"_s << u"αθηνα ασ ασ"_s;
        QTest::newRow("Cyrillic") << u"Йод"_s << u"иод"_s;
        QTest::newRow("line break") << u"a\r\nb\nc\rd\te"_s << u"a b c d e"_s;
        QTest::newRow("beyond the table") << u"\u1EBF\uFF21"_s << u"ea"_s;
        QTest::newRow("two halves") << u"\U0001D400"_s << u"a"_s;
        QTest::newRow("half of one") << QString(QChar(0xD835)) << QString(QChar(0xD835));
        QTest::newRow("byte order marks") << u"\uFEFF\uFEFFa"_s << u"\uFEFF\uFEFFa"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void lettersBecomeTheirBaseLetters()
    {
        QFETCH(QString, text);
        QTEST(folded(text), "expected");
    }

    void whatIsFoldedStaysAsItIs()
    {
        for (int c = 0; c < 0x10000; ++c) {
            const QString once = folded(QString(QChar(c)));
            QVERIFY2(folded(once) == once, qPrintable(u"U+%1"_s.arg(c, 4, 16)));
        }
    }

    void isAddedToWhatIsThere()
    {
        std::u16string out = u"X";
        appendFolded(out, u"É");
        QCOMPARE(QString::fromStdU16String(out), u"Xe"_s);
    }
};

QTEST_GUILESS_MAIN(TestFoldedText)
#include "tst_foldedtext.moc"
