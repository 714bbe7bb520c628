#include "txdb/countrynames.h"

#include <QFile>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class CountryNamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLineOfTheCountryListHasAName();
    void nameOfACode_data();
    void nameOfACode();
};

void CountryNamesTest::everyLineOfTheCountryListHasAName()
{
    QFile file(QStringLiteral(QUILLON_SUPPLIED "/country.lst"));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.endsWith("\r\n"));
    const auto lines = bytes.chopped(2).split('\n');
    QCOMPARE(lines.size(), 250);
    QByteArray previous;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QByteArray code = lines[i];
        if (i + 1 < lines.size()) {
            QVERIFY2(code.endsWith('\r'), code.constData());
            code.chop(1);
        }
        QVERIFY2(previous < code, code.constData());
        QVERIFY2(!countryName(QString::fromLatin1(code)).isEmpty(), code.constData());
        previous = code;
    }
}

void CountryNamesTest::nameOfACode_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *tag, const QString &code, const QString &name) {
        QTest::newRow(tag) << code << name;
    };
    row("one letter", u"D"_s, u"Germany"_s);
    row("one letter before longer codes", u"E"_s, u"Spain"_s);
    row("three letters", u"HOL"_s, u"Netherlands"_s);
    row("first of the table", u"ABW"_s, u"Aruba"_s);
    row("last of the table", u"ZWE"_s, u"Zimbabwe"_s);
    row("name with a letter beyond ASCII", u"CUW"_s, u"Curaçao"_s);
    row("name of several words", u"BIH"_s, u"Bosnia and Herzegovina"_s);
    row("area with a code of its own", u"CNR"_s, u"Canary Islands"_s);
    row("Sweden", u"S"_s, u"Sweden"_s);
    row("Italy", u"I"_s, u"Italy"_s);
    row("Morocco", u"MRC"_s, u"Morocco"_s);
    row("lower case", u"d"_s, QString());
    row("mixed case", u"Hol"_s, QString());
    row("blank after the code", u"D "_s, QString());
    row("beginning of a code", u"HO"_s, QString());
    row("to be determined", u"TBD"_s, QString());
    row("before the first code", u"AAA"_s, QString());
    row("after the last code", u"ZZZ"_s, QString());
    row("a full name", u"Germany"_s, QString());
    row("empty", u""_s, QString());
    row("null", QString(), QString());
}

void CountryNamesTest::nameOfACode()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QCOMPARE(countryName(code), name);
}

QTEST_GUILESS_MAIN(CountryNamesTest)
#include "tst_countrynames.moc"
