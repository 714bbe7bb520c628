#include "net/charset.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestCharset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodes_data()
    {
        QTest::addColumn<QByteArray>("charset");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *charset, const QByteArray &bytes, const QString &text) {
            QTest::addRow("%s %s", charset, bytes.toHex().constData())
                << QByteArray(charset) << bytes << text;
        };
        row("ISO-8859-2", "\xA3\xF3\x64\xBC", u"\u0141\u00f3d\u017a"_s);
        row("iso-8859-5", "\xBC\xD0\xEF\xDA", u"\u041c\u0430\u044f\u043a"_s);
        row("Latin2", "\xB3", u"\u0142"_s);
        row("ISO-8859-7", "\xC1\xE8\xDE\xED\xE1", u"\u0391\u03b8\u03ae\u03bd\u03b1"_s);
        row("ISO-8859-15", "\xA4 \xBD", u"\u20ac \u0153"_s);
        row("iso_8859-15", "\xA4", u"\u20ac"_s);
        row("KOI8-R", "\xED\xC1\xD1\xCB", u"\u041c\u0430\u044f\u043a"_s);
        row("koi8-u", "\xA4", u"\u0454"_s);
        row("Shift_JIS", "\x93\x8C\x8B\x9E\x46\x4D", u"\u6771\u4eacFM"_s);
        row("EUC-JP", "\xC5\xEC\xB5\xFE", u"\u6771\u4eac"_s);
        row("GBK", "\xB1\xB1\xBE\xA9", u"\u5317\u4eac"_s);
        row("gb18030", QByteArray::fromHex("9439DA33"), u"\U0001F4A9"_s);
        row("windows-1256", "\xC7", u"\u0627"_s);
        row("IBM850", "\x84", u"\u00e4"_s);
        row("macintosh", "\x8A", u"\u00e4"_s);
        row("windows-1258", "\x61\xEC", u"\u00e1"_s);
        row("windows-1258", "\x41", u"A"_s);
        row("utf-8", "\xC3\xB3", u"\u00f3"_s);
        row("UTF-16", QByteArray::fromHex("FEFF00410142"), u"A\u0142"_s);
        row("UTF-16", QByteArray::fromHex("FFFE41004201"), u"A\u0142"_s);
        row("utf-16le", QByteArray::fromHex("41004201"), u"A\u0142"_s);
        row("utf-16be", QByteArray::fromHex("00410142"), u"A\u0142"_s);
        row("utf-32le", QByteArray::fromHex("A9F40100"), u"\U0001F4A9"_s);
        row("ISO-8859-2", "", u""_s);
    }

    void decodes()
    {
        QFETCH(QByteArray, charset);
        QFETCH(QByteArray, bytes);
        QTEST(decodedFrom(charset, bytes).value_or(u"unknown"_s), "text");
    }

    void theMarkAtTheBeginningIsNoCharacter_data()
    {
        QTest::addColumn<QByteArray>("charset");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("UTF-8") << "utf-8"_ba << QByteArray::fromHex("EFBBBF41");
        QTest::newRow("UTF-16LE") << "utf-16le"_ba << QByteArray::fromHex("FFFE4100");
        QTest::newRow("UTF-16BE") << "utf-16be"_ba << QByteArray::fromHex("FEFF0041");
        QTest::newRow("GB18030") << "gb18030"_ba << QByteArray::fromHex("8431953341");
    }

    void theMarkAtTheBeginningIsNoCharacter()
    {
        QFETCH(QByteArray, charset);
        QFETCH(QByteArray, bytes);
        QCOMPARE(decodedFrom(charset, bytes).value_or(u"unknown"_s), u"A"_s);
    }

    void nothingIsLostAfterWhatCannotBeDecoded_data()
    {
        QTest::addColumn<QByteArray>("charset");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const QChar lost(QChar::ReplacementCharacter);
        QTest::newRow("byte without a letter")
            << "ISO-8859-7"_ba
            << "A\xFF\nB\xFF"_ba << QString(u"A"_s + lost + u"\nB"_s + lost);
        QTest::newRow("only the first of two bytes, then a line end")
            << "Shift_JIS"_ba
            << "A\x93\nB"_ba << QString(u"A"_s + lost + u"\nB"_s);
        QTest::newRow("the end in the middle of a character") << "Shift_JIS"_ba
                                                              << "A\x93"_ba << QString(u"A"_s + lost);
        QTest::newRow("the end in the middle of four bytes")
            << "gb18030"_ba
            << "A\x94\x39"_ba << QString(u"A"_s + lost + u'9');
        QTest::newRow("lone surrogate")
            << "utf-16le"_ba << QByteArray::fromHex("00D84100") << QString(lost + u"A"_s);
        QTest::newRow("half a character at the end")
            << "utf-16le"_ba << QByteArray::fromHex("410042") << QString(u"A"_s + lost);
        QTest::newRow("UTF-8") << "utf-8"_ba
                               << "A\xC3\nB\xC3"_ba << QString(u"A"_s + lost + u"\nB"_s + lost);
    }

    void nothingIsLostAfterWhatCannotBeDecoded()
    {
        QFETCH(QByteArray, charset);
        QFETCH(QByteArray, bytes);
        QTEST(decodedFrom(charset, bytes).value_or(u"unknown"_s), "text");
    }

    void aLongTextComesWhole()
    {
        // More than one piece, and characters that lie across its end.
        QByteArray bytes("A");
        QString text(u"A"_s);
        for (int i = 0; i < 5000; ++i) {
            bytes += QByteArray::fromHex("9439DA33") + "x\xFF";
            text += u"\U0001F4A9x\ufffd"_s;
        }
        QCOMPARE(decodedFrom("gb18030", bytes).value_or(u"unknown"_s), text);
    }

    void aNameThatIsUnknownGivesNothing_data()
    {
        QTest::addColumn<QByteArray>("charset");
        QTest::newRow("no name") << ""_ba;
        QTest::newRow("nonsense") << "klingon-8"_ba;
        QTest::newRow("Qt's name of the locale's") << "system"_ba;
        QTest::newRow("locale") << "locale"_ba;
        QTest::newRow("an option of iconv") << "ISO-8859-2//IGNORE"_ba;
        QTest::newRow("a path") << "../../x"_ba;
        QTest::newRow("a blank inside") << "ISO 8859-2"_ba;
        QTest::newRow("a NUL inside") << QByteArray("KOI8-R\0x", 8);
        QTest::newRow("a letter of no name") << "KOI8-\xC3\xA4"_ba;
        QTest::newRow("a long one") << QByteArray(41, 'x');
    }

    void aNameThatIsUnknownGivesNothing()
    {
        QFETCH(QByteArray, charset);
        QVERIFY(!decodedFrom(charset, "A"));
    }
};

QTEST_GUILESS_MAIN(TestCharset)
#include "tst_charset.moc"
