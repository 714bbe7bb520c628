#include "net/textencoding.h"

#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// The removals one after another, as the words say them.
QString strippedStepByStep(const QString &text)
{
    QString result = text;
    for (qsizetype i = 0; i + 6 < text.size(); ++i) {
        const QString six = text.mid(i, 6);
        const auto digit = [&six](qsizetype at) { return six[at] >= u'0' && six[at] <= u'9'; };
        if (six.startsWith(u"&#"_s) && digit(2) && digit(3) && digit(4) && six[5] == u';') {
            result.replace(six, QString());
        }
    }
    return result;
}

bool isKept(int code)
{
    return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

} // namespace

class TestTextEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allCodesOfThePage_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("code");
        for (const int page : {1250, 1251, 1252}) {
            for (int code = 0; code < 256; ++code) {
                QTest::addRow("%d code %d", page, code) << page << code;
            }
        }
    }

    void allCodesOfThePage()
    {
        QFETCH(int, page);
        QFETCH(int, code);
        const CodePage codePage(page);
        const QString text = codePage.decode(QByteArray(1, static_cast<char>(code)));
        QString url = u'%' + QString::number(code, 16).toUpper();
        QString html = u"&#"_s + QString::number(code) + u';';
        if (isKept(code)) {
            url = text;
            html = text;
        } else if (code == 32) {
            url = u"+"_s;
            html = u" "_s;
        }
        QCOMPARE(URLEncode(text, codePage), url);
        QCOMPARE(W3CEncode(text, codePage), html);
    }

    void urlEncode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("blank") << u"A B"_s << u"A+B"_s;
        QTest::newRow("ampersand") << u"a&b"_s << u"a%26b"_s;
        QTest::newRow("tab has one digit") << u"\t"_s << u"%9"_s;
        QTest::newRow("accent") << u"\u00e9"_s << u"%E9"_s;
        QTest::newRow("euro is code 128") << u"\u20ac"_s << u"%80"_s;
        QTest::newRow("underscore, hyphen, full stop, tilde") << u"_-.~"_s << u"%5F%2D%2E%7E"_s;
        QTest::newRow("plus and percent") << u"+%"_s << u"%2B%25"_s;
        QTest::newRow("outside the page, base letter") << u"\u0142"_s << u"%6C"_s;
        QTest::newRow("outside the page") << u"\u4e2d"_s << u"%3F"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void urlEncode()
    {
        QFETCH(QString, text);
        QTEST(URLEncode(text, CodePage(1252)), "encoded");
    }

    void w3cEncode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("umlaut") << u"K\u00f6ln 1"_s << u"K&#246;ln 1"_s;
        QTest::newRow("letter alone") << u"\u00e4"_s << u"&#228;"_s;
        QTest::newRow("ampersand") << u"&"_s << u"&#38;"_s;
        QTest::newRow("tab is not padded") << u"\t"_s << u"&#9;"_s;
        QTest::newRow("markup") << u"<b>"_s << u"&#60;b&#62;"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void w3cEncode()
    {
        QFETCH(QString, text);
        QTEST(W3CEncode(text, CodePage(1252)), "encoded");
    }

    void theCodeIsThatOfTheCodePage()
    {
        QCOMPARE(URLEncode(u"\u0142", CodePage(1250)), u"%B3"_s);
        QCOMPARE(W3CEncode(u"\u0416", CodePage(1251)), u"&#198;"_s);
    }

    void stripCharRefs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stripped");
        QTest::newRow("inside") << u"x&#233;y"_s << u"xy"_s;
        QTest::newRow("at the end stays") << u"ab&#233;"_s << u"ab&#233;"_s;
        QTest::newRow("alone stays") << u"&#233;"_s << u"&#233;"_s;
        QTest::newRow("one character after it is enough") << u"&#233;\n"_s << u"\n"_s;
        QTest::newRow("at the end goes when it stands earlier") << u"&#233;a&#233;"_s << u"a"_s;
        QTest::newRow("at the end stays beside another") << u"&#234;a&#233;"_s << u"a&#233;"_s;
        QTest::newRow("two digits") << u"x&#65;y"_s << u"x&#65;y"_s;
        QTest::newRow("four digits") << u"x&#1234;y"_s << u"x&#1234;y"_s;
        QTest::newRow("letters") << u"x&#xE9;y"_s << u"x&#xE9;y"_s;
        QTest::newRow("Arabic digits") << u"x&#\u0661\u0662\u0663;y"_s << u"x&#\u0661\u0662\u0663;y"_s;
        QTest::newRow("no semicolon") << u"x&#233 y"_s << u"x&#233 y"_s;
        QTest::newRow("two in a row") << u"&#228;&#246;x"_s << u"x"_s;
        QTest::newRow("put together, no later match") << u"&#1&#222;11;x"_s << u"&#111;x"_s;
        QTest::newRow("put together, only an earlier match") << u"&#111;&#1&#222;11;x"_s << u"&#111;x"_s;
        QTest::newRow("put together, a later match") << u"&#1&#222;11;&#111;x"_s << u"x"_s;
        QTest::newRow("put together by its own kind") << u"&#1&#111;11;x"_s << u"&#111;x"_s;
        QTest::newRow("put together by its own kind twice") << u"&#1&#111;11;&#111;x"_s << u"x"_s;
        QTest::newRow("by two of its own kind") << u"&#1&#111;&#111;11;x"_s << u"x"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void stripCharRefs()
    {
        QFETCH(QString, text);
        QTEST(StripCharRefs(text), "stripped");
        QCOMPARE(StripCharRefs(text), strippedStepByStep(text));
    }

    void stripsAsTheRemovalsOneAfterAnother()
    {
        QRandomGenerator random(20100612);
        const QStringList pieces {u"&"_s, u"#"_s, u"1"_s, u"2"_s, u";"_s, u"&#"_s, u"11;"_s, u"&#111;"_s,
            u"&#112;"_s, u"&#1"_s, u"x"_s};
        for (int run = 0; run < 20'000; ++run) {
            QString text;
            const int count = random.bounded(24);
            for (int i = 0; i < count; ++i) {
                text += pieces[random.bounded(static_cast<int>(pieces.size()))];
            }
            QCOMPARE(StripCharRefs(text), strippedStepByStep(text));
        }
    }

    void aMegabyteOfReferencesIsStripped()
    {
        QString junk;
        for (int i = 0; i < 90'000; ++i) {
            junk += u"&#1&#"_s + QString::number(100 + i % 900) + u";11;"_s;
        }
        const QString stripped = StripCharRefs(junk);
        QVERIFY(stripped.size() <= 540'000);
    }
};

QTEST_GUILESS_MAIN(TestTextEncoding)
#include "tst_textencoding.moc"
