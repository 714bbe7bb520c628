#include "core/fieldchecks.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace quillon;

namespace {

const QString noFreq = u"Frequency is not a number: 98.5 is one"_s;
const QString strangeFreq = u"Frequency is outside 64 to 108 MHz"_s;
const QString noPi = u"PI code is not four hexadecimal digits"_s;
const QString longName = u"RDS name is longer than 8 characters"_s;
const QString separator =
    u"\"|\" separates the fields of the file: what follows would become the next field"_s;

} // namespace

class TestFieldChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatIsOdd_data()
    {
        QTest::addColumn<FieldKind>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        const auto row = [](FieldKind kind, const QString &text, const QString &problem) {
            QTest::addRow("%d: %s", int(kind), qPrintable(text)) << kind << text << problem;
        };
        for (const FieldKind kind : {FieldKind::Freq, FieldKind::PiCode, FieldKind::RdsName,
                 FieldKind::Latitude, FieldKind::Longitude, FieldKind::Notes, FieldKind::PlainText,
                 FieldKind::HomeLatitude, FieldKind::HomeLongitude, FieldKind::Setting}) {
            row(kind, u""_s, {});
        }
        for (const FieldKind kind : {FieldKind::Freq, FieldKind::PiCode, FieldKind::RdsName,
                 FieldKind::Latitude, FieldKind::Longitude, FieldKind::Notes, FieldKind::PlainText}) {
            row(kind, u"1|2"_s, separator);
        }
        for (const FieldKind kind : {FieldKind::HomeLatitude, FieldKind::HomeLongitude, FieldKind::Setting}) {
            row(kind, u"51|5"_s, u"\"|\" stands for a comma in the settings and comes back as \",\""_s);
        }
        for (const char *freq : {"64", "108", "87.5", "87,5", " 98.50 ", "1.01e2", "+65"}) {
            row(FieldKind::Freq, QString::fromLatin1(freq), {});
        }
        for (const char *freq : {"63.99", "108.01", "-98", "0", "9", "1001"}) {
            row(FieldKind::Freq, QString::fromLatin1(freq), strangeFreq);
        }
        for (const char *freq : {"FM", "98.5 MHz", "98.5.1", " ", "1e999"}) {
            row(FieldKind::Freq, QString::fromLatin1(freq), noFreq);
        }
        for (const char *pi : {"D3C3", "d3c3", "0000", "FFFF", " f201 "}) {
            row(FieldKind::PiCode, QString::fromLatin1(pi), {});
        }
        for (const char *pi : {"D3C", "D3C33", "G3C3", "-3C3", "D 3C", " ", "DELETE", "0x12", "1.23"}) {
            row(FieldKind::PiCode, QString::fromLatin1(pi), noPi);
        }
        row(FieldKind::PiCode, u"١٢٣٤"_s, noPi);
        row(FieldKind::PiCode, u"delete"_s,
            u"PI code \"delete\" marks a deleted reception, which is never written to the file"_s);
        row(FieldKind::RdsName, u"RADIO__1"_s, {});
        row(FieldKind::RdsName, u"RADIO_12"_s + u"3"_s, longName);
        // Eight letters, one of them of two code units of UTF-16 each: a letter and its dots.
        row(FieldKind::RdsName, u"RA\u0308DIO__1"_s, {});
        row(FieldKind::RdsName, u"RÄDIO__12"_s, longName);
        for (const char *degrees : {"0", "-90", "90", "51.34", "51,34", " 7 "}) {
            row(FieldKind::Latitude, QString::fromLatin1(degrees), {});
            row(FieldKind::HomeLatitude, QString::fromLatin1(degrees), {});
        }
        row(FieldKind::Latitude, u"90.1"_s, u"Latitude is outside -90 to 90"_s);
        row(FieldKind::HomeLatitude, u"-91"_s, u"Latitude is outside -90 to 90"_s);
        row(FieldKind::Latitude, u"51.30.25N"_s, u"Latitude is not a number: 51.34 is one"_s);
        row(FieldKind::HomeLatitude, u"north"_s, u"Latitude is not a number: 51.34 is one"_s);
        row(FieldKind::Longitude, u"-180"_s, {});
        row(FieldKind::Longitude, u"180.01"_s, u"Longitude is outside -180 to 180"_s);
        row(FieldKind::HomeLongitude, u"-181"_s, u"Longitude is outside -180 to 180"_s);
        row(FieldKind::HomeLongitude, u"1 W"_s, u"Longitude is not a number: 51.34 is one"_s);
        row(FieldKind::Notes, u"weak\nCR LF crlf"_s, {});
        row(FieldKind::Notes, u"oneCRLFtwo"_s, u"\"CRLF\" becomes a line break in the file"_s);
        row(FieldKind::PlainText, u"CRLF, 1000 MHz"_s, {});
        row(FieldKind::Setting, u"Ann, Bob"_s, {});
    }

    void tellsWhatIsOdd()
    {
        QFETCH(FieldKind, kind);
        QFETCH(QString, text);
        QTEST(fieldProblem(kind, text, CodePage(1252)), "problem");
    }

    void tellsWhatTheCodePageChanges_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        QTest::newRow("its own letters") << 1252 << u"Österreich 3 €"_s << QString();
        QTest::newRow("decomposed") << 1252 << u"O\u0308sterreich"_s << QString();
        QTest::newRow("a stroke") << 1252 << u"Łódź ł"_s << u"Ł is stored as L, ź as z, ł as l"_s;
        QTest::newRow("another page") << 1250 << u"Łódź"_s << QString();
        QTest::newRow("beyond the plane") << 1252 << u"😀"_s << u"😀 is stored as ?"_s;
        QTest::newRow("both") << 1252 << u"ł😀"_s << u"ł is stored as l, 😀 as ?"_s;
        QTest::newRow("each once") << 1252 << u"ł😀łł😀"_s << u"ł is stored as l, 😀 as ?"_s;
        QTest::newRow("a mark without a letter of its own")
            << 1252 << u"x\u030C"_s << u"x\u030C is stored as x"_s;
        QTest::newRow("a mark alone") << 1252 << u"\u030C"_s << u"\u030C is stored as nothing"_s;
        QTest::newRow("what is not seen") << 1252 << u"a\u200Bb"_s << u"U+200B is stored as ?"_s;
        QTest::newRow("half a pair") << 1252 << QString(QChar(0xd83d)) << u"U+D83D is stored as ?"_s;
        QTest::newRow("many") << 1252 << u"абвгдеж"_s << u"а is stored as ?, б as ?, в as ?, г as ?, ..."_s;
    }

    void tellsWhatTheCodePageChanges()
    {
        QFETCH(int, page);
        QFETCH(QString, text);
        for (const FieldKind kind : {FieldKind::PlainText, FieldKind::Notes, FieldKind::Setting}) {
            QTEST(fieldProblem(kind, text, CodePage(page)), "problem");
        }
    }

    void aTextWithoutEndIsToldShortly()
    {
        const QString letterOfMarks = u'x' + QString(1'000'000, QChar(0x030c));
        QVERIFY(fieldProblem(FieldKind::Notes, letterOfMarks, CodePage()).size() < 60);
        QString letters;
        for (int i = 0; i < 1'000'000; ++i) {
            letters += QChar(0x0400 + i % 80);
        }
        QVERIFY(fieldProblem(FieldKind::Notes, letters, CodePage()).size() < 60);
    }

    void addRefusesWhatIsMissing_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("nothing") << QStringList {{}, {}, {}, {}} << u"Frequency Empty"_s;
        QTest::newRow("no frequency") << QStringList {{}, u"D3C3"_s, u"X"_s, u"D"_s} << u"Frequency Empty"_s;
        QTest::newRow("frequency and country")
            << QStringList {u"87.5"_s, {}, {}, u"D"_s} << u"PI Code and RDS Name Empty"_s;
        QTest::newRow("no country") << QStringList {u"87.5"_s, u"D3C3"_s, {}, {}} << u"Country Empty"_s;
        QTest::newRow("a PI code") << QStringList {u"87.5"_s, u"D3C3"_s, {}, u"D"_s} << QString();
        QTest::newRow("a name") << QStringList {u"x"_s, {}, u"X"_s, u"D"_s} << QString();
    }

    void addRefusesWhatIsMissing()
    {
        QFETCH(QStringList, texts);
        QTEST(addRefusal(texts.at(0), texts.at(1), texts.at(2), texts.at(3)), "refusal");
    }
};

QTEST_GUILESS_MAIN(TestFieldChecks)
#include "tst_fieldchecks.moc"
