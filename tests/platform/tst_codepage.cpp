#include "platform/codepage.h"

#include <QSet>
#include <QTest>

#include <iconv.h>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array pages {1250, 1251, 1252, 1253, 1254, 1257};

// What the C library makes of one byte, or nothing where it knows no character.
std::optional<char16_t> characterOfLibrary(int page, uchar byte)
{
    const QByteArray name = "CP"_ba + QByteArray::number(page);
    iconv_t converter = ::iconv_open("UTF-16LE", name.constData());
    if (converter == iconv_t(-1)) { // NOLINT(performance-no-int-to-ptr)
        qFatal("the C library does not know %s", name.constData());
    }
    char in = static_cast<char>(byte);
    char *from = &in;
    std::size_t inLeft = 1;
    char16_t out = 0;
    char *to = reinterpret_cast<char *>(&out);
    std::size_t outLeft = sizeof out;
    const bool good = ::iconv(converter, &from, &inLeft, &to, &outLeft) == 0 && outLeft == 0;
    ::iconv_close(converter);
    return good ? std::optional(out) : std::nullopt;
}

QByteArray allBytes()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

} // namespace

class TestCodePage : public QObject
{
    Q_OBJECT

    static void addPages()
    {
        QTest::addColumn<int>("page");
        for (const int page : pages) {
            QTest::addRow("%d", page) << page;
        }
    }

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"QUILLON_CODEPAGE", "LC_ALL", "LC_CTYPE", "LANG"}) {
            qunsetenv(name);
        }
    }

    void everyByteComesBack_data() { addPages(); }

    void everyByteComesBack()
    {
        QFETCH(int, page);
        const CodePage codePage(page);
        QCOMPARE(codePage.number(), page);
        const QString text = codePage.decode(allBytes());
        QCOMPARE(text.size(), 256);
        QCOMPARE(QSet<QChar>(text.cbegin(), text.cend()).size(), 256);
        QCOMPARE(codePage.encode(text), allBytes());
        for (int byte = 0; byte < 256; ++byte) {
            QCOMPARE(int(codePage.byteOf(text.at(byte))), byte);
        }
    }

    void everyByteIsTheCharacterOfThePage_data() { addPages(); }

    void everyByteIsTheCharacterOfThePage()
    {
        QFETCH(int, page);
        const QString text = CodePage(page).decode(allBytes());
        int known = 0;
        for (int byte = 0; byte < 256; ++byte) {
            if (const auto wanted = characterOfLibrary(page, static_cast<uchar>(byte))) {
                QCOMPARE(text.at(byte), QChar(*wanted));
                ++known;
            }
        }
        QVERIFY(known >= 230);
    }

    void noByteTouchesItsNeighbour_data() { addPages(); }

    // No two bytes side by side may be read or written as one.
    void noByteTouchesItsNeighbour()
    {
        QFETCH(int, page);
        const CodePage codePage(page);
        QByteArray pairs;
        for (int first = 0; first < 256; ++first) {
            for (int second = 0; second < 256; ++second) {
                pairs += static_cast<char>(first);
                pairs += static_cast<char>(second);
            }
        }
        QCOMPARE(codePage.encode(codePage.decode(pairs)), pairs);
    }

    void writesBaseLetters_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("in the page") << 1252 << u"KÖLN Ö3 é €"_s
                                     << "K\xD6LN \xD6"
                                        "3 \xE9 \x80"_ba;
        QTest::newRow("stroke") << 1252 << u"łŁđĐħĦ"_s << "lLdDhH"_ba;
        QTest::newRow("Polish") << 1252 << u"Zielona Góra, Święty Krzyż"_s
                                << "Zielona G\xF3ra, Swiety Krzyz"_ba;
        QTest::newRow("Polish in its page") << 1250 << u"Łódź"_s << "\xA3\xF3\x64\x9F"_ba;
        QTest::newRow("Czech") << 1252 << u"Praděd Čechy ř"_s << "Praded Cechy r"_ba;
        QTest::newRow("Turkish") << 1252 << u"İzmir ı ş"_s << "Izmir i s"_ba;
        QTest::newRow("Turkish in its page") << 1254 << u"İzmirış"_s << "\xDDzmir\xFD\xFE"_ba;
        QTest::newRow("German in Cyrillic") << 1251 << u"Köln"_s << "Koln"_ba;
        QTest::newRow("two marks at once") << 1252 << u"ế"_s << "e"_ba;
        QTest::newRow("Greek has no base letter") << 1252 << u"Αθήνα"_s << "?????"_ba;
        QTest::newRow("Greek in its page") << 1253 << u"Αθήνα"_s << "\xC1\xE8\xDE\xED\xE1"_ba;
        QTest::newRow("Chinese") << 1252 << u"a中b"_s << "a?b"_ba;
        QTest::newRow("surrogate pair is one character") << 1252 << u"a\U0001F4FBb"_s << "a?b"_ba;
        QTest::newRow("two pairs") << 1252 << u"\U0001F4FB\U0001F4E1"_s << "??"_ba;
        QTest::newRow("decomposed") << 1252 << u"Mu\u0308nchen e\u0301"_s << "M\xFCnchen \xE9"_ba;
        QTest::newRow("decomposed, not in the page") << 1252 << u"z\u030C c\u030C"_s << "\x9E c"_ba;
        QTest::newRow("decomposed with two marks") << 1252 << u"e\u0302\u0301x"_s << "\xEAx"_ba;
        QTest::newRow("empty") << 1252 << QString() << QByteArray();
    }

    void writesBaseLetters()
    {
        QFETCH(int, page);
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(CodePage(page).encode(text), bytes);
        QByteArray appended = "x"_ba;
        CodePage(page).appendEncoded(appended, text);
        QCOMPARE(appended, QByteArray("x"_ba + bytes));
    }

    void loneSurrogatesAreQuestionMarks()
    {
        const QChar high(0xD83D);
        const QChar low(0xDCFB);
        const CodePage page;
        QCOMPARE(page.encode(QString(high)), "?"_ba);
        QCOMPARE(page.encode(QString(low)), "?"_ba);
        QCOMPARE(page.encode(QString(QString(low) + high)), "??"_ba);
        QCOMPARE(page.encode(QString(QString(high) + u'a')), "?a"_ba);
    }

    void everyCharacterHasExactlyOneByte()
    {
        const CodePage page;
        for (int c = 1; c < 0x10000; ++c) {
            const uchar byte = page.byteOf(QChar(c));
            QVERIFY2(byte != 0, qPrintable(QString::number(c, 16)));
        }
    }

    void unknownNumberIs1252()
    {
        QCOMPARE(CodePage(850).number(), 1252);
        QCOMPARE(CodePage(-1).number(), 1252);
        QCOMPARE(CodePage().number(), 1252);
    }

    void theLanguageChoosesThePage_data()
    {
        QTest::addColumn<QByteArray>("lang");
        QTest::addColumn<int>("page");
        const auto row = [](const char *lang, int page) { QTest::newRow(lang) << QByteArray(lang) << page; };
        for (const char *lang :
            {"de_DE.UTF-8", "en_GB.UTF-8", "fr_FR", "es", "pt_PT@euro", "nb_NO.UTF-8", "sv_SE", "fi_FI",
                "da_DK", "nl_NL", "it_IT", "is_IS", "C", "C.UTF-8", "POSIX", "xx_YY", "ja_JP.UTF-8"}) {
            row(lang, 1252);
        }
        for (const char *lang : {"pl_PL.UTF-8", "cs_CZ.UTF-8", "sk_SK", "hu_HU.UTF-8", "sl_SI", "hr_HR.UTF-8",
                 "ro_RO", "sq_AL", "bs_BA", "sr_RS@latin", "pl"}) {
            row(lang, 1250);
        }
        for (const char *lang : {"ru_RU.UTF-8", "uk_UA", "bg_BG", "be_BY", "mk_MK", "sr_RS.UTF-8"}) {
            row(lang, 1251);
        }
        row("el_GR.UTF-8", 1253);
        row("tr_TR.UTF-8", 1254);
        row("az_AZ", 1254);
        row("et_EE.UTF-8", 1257);
        row("lt_LT", 1257);
        row("lv_LV.UTF-8", 1257);
    }

    void theLanguageChoosesThePage()
    {
        QFETCH(QByteArray, lang);
        QFETCH(int, page);
        qputenv("LANG", lang);
        QCOMPARE(CodePage::fromEnvironment().number(), page);
    }

    void theStrongerVariableWins()
    {
        QCOMPARE(CodePage::fromEnvironment().number(), 1252);
        qputenv("LANG", "pl_PL.UTF-8");
        QCOMPARE(CodePage::fromEnvironment().number(), 1250);
        qputenv("LC_CTYPE", "el_GR.UTF-8");
        QCOMPARE(CodePage::fromEnvironment().number(), 1253);
        qputenv("LC_ALL", "ru_RU.UTF-8");
        QCOMPARE(CodePage::fromEnvironment().number(), 1251);
        qputenv("LC_ALL", "");
        QCOMPARE(CodePage::fromEnvironment().number(), 1253);
        qputenv("QUILLON_CODEPAGE", "1257");
        QCOMPARE(CodePage::fromEnvironment().number(), 1257);
    }

    void aWrongOverrideIsNoOverride()
    {
        qputenv("LANG", "tr_TR.UTF-8");
        for (const char *wrong : {"", "850", "cp1250", "-1250", "99999999999"}) {
            qputenv("QUILLON_CODEPAGE", wrong);
            QCOMPARE(CodePage::fromEnvironment().number(), 1254);
        }
    }
};

QTEST_GUILESS_MAIN(TestCodePage)
#include "tst_codepage.moc"
