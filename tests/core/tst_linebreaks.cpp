#include "core/linebreaks.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

/// Texts of several lines in files where an entry is a line.
class TestLineBreaks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pairsAreFolded_data();
    void pairsAreFolded();
    void theLettersAreUnfolded_data();
    void theLettersAreUnfolded();
    void whatCannotFoldGetsBlanks();
    void linesOfEveryBoxEndAsInTheLog();
};

void TestLineBreaks::pairsAreFolded_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("lines") << u"a\r\nb\r\n\r\nc"_s << u"aCRLFbCRLFCRLFc"_s;
    QTest::newRow("a lone CR") << u"a\rb"_s << u"a\rb"_s;
    QTest::newRow("a lone LF") << u"a\nb"_s << u"a\nb"_s;
    QTest::newRow("the wrong way round") << u"a\n\rb"_s << u"a\n\rb"_s;
    QTest::newRow("CR and a pair") << u"a\r\r\nb"_s << u"a\rCRLFb"_s;
    QTest::newRow("the letters") << u"aCRLFb"_s << u"aCRLFb"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void TestLineBreaks::pairsAreFolded()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    QCOMPARE(foldedLineBreaks(text), line);
}

void TestLineBreaks::theLettersAreUnfolded_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::newRow("lines") << u"aCRLFbCRLFCRLFc"_s << u"a\r\nb\r\n\r\nc"_s;
    QTest::newRow("lower case") << u"acrlfb"_s << u"acrlfb"_s;
    QTest::newRow("inside a word") << u"XCRLFX"_s << u"X\r\nX"_s;
    QTest::newRow("a lone LF") << u"a\nb"_s << u"a\nb"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void TestLineBreaks::theLettersAreUnfolded()
{
    QFETCH(QString, line);
    QFETCH(QString, text);
    QCOMPARE(unfoldedLineBreaks(line), text);
}

void TestLineBreaks::whatCannotFoldGetsBlanks()
{
    QCOMPARE(withoutLineBreaks(u"a\r\nb\nc\rd\r\r\ne"_s), u"a b c\rd\r e"_s);
}

void TestLineBreaks::linesOfEveryBoxEndAsInTheLog()
{
    QCOMPARE(withLineEnds(u"a\u2029b\u2028c\nd\r\ne\rf"_s), u"a\r\nb\r\nc\r\nd\r\ne\rf"_s);
    QCOMPARE(withLineEnds({}), QString());
}

QTEST_GUILESS_MAIN(TestLineBreaks)

#include "tst_linebreaks.moc"
