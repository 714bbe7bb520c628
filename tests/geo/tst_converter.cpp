#include "geo/converter.h"

#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void compactTextsAreCutIntoPiecesAndJoined_data()
    {
        QTest::addColumn<QString>("compact");
        QTest::addColumn<QStringList>("pieces");
        QTest::newRow("latitude") << u"5130.25N"_s << QStringList {u"51"_s, u"30"_s, u"25"_s, u"N"_s};
        QTest::newRow("longitude") << u"00130.25W"_s << QStringList {u"001"_s, u"30"_s, u"25"_s, u"W"_s};
        QTest::newRow("one digit") << u"530.00S"_s << QStringList {u"5"_s, u"30"_s, u"00"_s, u"S"_s};
    }

    void compactTextsAreCutIntoPiecesAndJoined()
    {
        QFETCH(QString, compact);
        QFETCH(QStringList, pieces);
        const PositionParts parts {pieces[0], pieces[1], pieces[2], pieces[3]};
        QVERIFY(splitCompact(compact) == parts);
        QCOMPARE(compactText(parts), compact);
        const PositionParts blanks {pieces[0] + u' ', u' ' + pieces[1], u' ' + pieces[2] + u' ', pieces[3]};
        QCOMPARE(compactText(blanks), compact);
    }

    void oneDigitAfterThePointIsTenths_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("full");
        QTest::addColumn<QString>("compact");
        QTest::newRow("tenths") << u"5"_s << u"50"_s << u"5130.50N"_s;
        QTest::newRow("none") << u"0"_s << u"00"_s << u"5130.00N"_s;
        QTest::newRow("blanks") << u" 5 "_s << u"50"_s << u"5130.50N"_s;
        QTest::newRow("hundredths") << u"05"_s << u"05"_s << u"5130.05N"_s;
        QTest::newRow("empty") << u""_s << u""_s << u"5130.N"_s;
        QTest::newRow("letter") << u"x"_s << u"x"_s << u"5130.xN"_s;
    }

    void oneDigitAfterThePointIsTenths()
    {
        QFETCH(QString, typed);
        QTEST(fullHundredths(typed), "full");
        QTEST(compactText({u"51"_s, u"30"_s, typed, u"N"_s}), "compact");
    }

    void saysWhatIsWrongWithDecimalDegrees_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("latitude");
        QTest::addColumn<QString>("problem");
        QTest::newRow("point") << u"50.0309"_s << true << QString();
        QTest::newRow("comma") << u"-50,0309"_s << true << QString();
        QTest::newRow("pole") << u"-90"_s << true << QString();
        QTest::newRow("date line") << u" 180 "_s << false << QString();
        QTest::newRow("tiny") << u"1e-7"_s << false << QString();
        QTest::newRow("empty") << u" "_s << true << u"Enter the latitude in decimal degrees"_s;
        QTest::newRow("empty longitude") << u""_s << false << u"Enter the longitude in decimal degrees"_s;
        QTest::newRow("word") << u"north"_s << true << u"“north” is not a number"_s;
        QTest::newRow("NaN") << u"NaN"_s << true << u"“NaN” is not a number"_s;
        QTest::newRow("two separators") << u"1,234.5"_s << false << u"“1,234.5” is not a number"_s;
        QTest::newRow("Arabic digits") << u"\u0665\u0661"_s << true << u"“\u0665\u0661” is not a number"_s;
        QTest::newRow("10,000 characters")
            << QString(10000, u'x') << true << u"“xxxxxxxxxxxxxxxx…” is not a number"_s;
        QTest::newRow("beyond the pole")
            << u"90.0001"_s << true << u"A latitude goes from -90 to 90 degrees"_s;
        QTest::newRow("beyond the date line")
            << u"-181"_s << false << u"A longitude goes from -180 to 180 degrees"_s;
        QTest::newRow("huge") << u"1e300"_s << false << u"A longitude goes from -180 to 180 degrees"_s;
    }

    void saysWhatIsWrongWithDecimalDegrees()
    {
        QFETCH(QString, text);
        QFETCH(bool, latitude);
        QTEST(decimalProblem(text, latitude), "problem");
    }

    void saysWhatIsWrongWithDegreesAndMinutes_data()
    {
        QTest::addColumn<QStringList>("pieces");
        QTest::addColumn<bool>("latitude");
        QTest::addColumn<QString>("problem");
        const QString beyond = u"A latitude goes from -90 to 90 degrees"_s;
        const QString minutes = u"Minutes: two digits, 00 to 59"_s;
        const QString hundredths = u"Hundredths of a minute: two digits, 00 to 99"_s;
        const auto row = [](const char *name, const QStringList &pieces, bool latitude,
                             const QString &problem) {
            QTest::newRow(name) << pieces << latitude << problem;
        };
        row("latitude", {u"51"_s, u"30"_s, u"25"_s}, true, {});
        row("one digit", {u"5"_s, u"30"_s, u"25"_s}, true, {});
        row("blanks", {u" 5"_s, u"30 "_s, u" 25"_s}, true, {});
        row("no hundredths", {u"51"_s, u"30"_s, u""_s}, true, {});
        row("pole", {u"90"_s, u"00"_s, u"00"_s}, true, {});
        row("date line", {u"180"_s, u"00"_s, u"00"_s}, false, {});
        row("a hundredth beyond", {u"90"_s, u"00"_s, u"01"_s}, true, beyond);
        row("a minute beyond", {u"90"_s, u"01"_s, u"00"_s}, true, beyond);
        row("10,000 digits", {QString(10000, u'9'), u"01"_s, u"00"_s}, true, beyond);
        row("no degrees", {u""_s, u"30"_s, u"25"_s}, true, u"Enter the degrees"_s);
        row("signed", {u"-5"_s, u"30"_s, u"25"_s}, true, u"Degrees: “-5” is not a whole number"_s);
        row("decimal", {u"5.5"_s, u"30"_s, u"25"_s}, true, u"Degrees: “5.5” is not a whole number"_s);
        row("one digit of minutes", {u"51"_s, u"3"_s, u"25"_s}, true, minutes);
        row("no minutes", {u"51"_s, u""_s, u"25"_s}, true, minutes);
        row("60 minutes", {u"51"_s, u"60"_s, u"25"_s}, true, minutes);
        row("Arabic minutes", {u"51"_s, u"\u0663\u0660"_s, u"25"_s}, true, minutes);
        row("one digit of decimals", {u"51"_s, u"30"_s, u" 5"_s}, true, {});
        row("one digit beyond", {u"90"_s, u"00"_s, u"1"_s}, true, beyond);
        row("one letter", {u"51"_s, u"30"_s, u"x"_s}, true, hundredths);
        row("three digits of hundredths", {u"51"_s, u"30"_s, u"255"_s}, true, hundredths);
    }

    void saysWhatIsWrongWithDegreesAndMinutes()
    {
        QFETCH(QStringList, pieces);
        QFETCH(bool, latitude);
        const PositionParts parts {pieces[0], pieces[1], pieces[2], latitude ? u"N"_s : u"E"_s};
        const PartsProblem problem = partsProblem(parts, latitude);
        QTEST(problem.text, "problem");
        using Piece = PartsProblem::Piece;
        const Piece piece = problem.text.startsWith(u"Min") ? Piece::Minutes
            : problem.text.startsWith(u"Hun")               ? Piece::Hundredths
                                                            : Piece::Degrees;
        QCOMPARE(problem.piece, piece);
    }

    void saysWhatIsWrongWithALocator_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        QTest::newRow("locator") << u"JO50VA"_s << QString();
        QTest::newRow("lower case") << u" rr99xx "_s << QString();
        QTest::newRow("eight characters") << u"JO50VA12"_s << QString();
        QTest::newRow("empty") << u""_s << u"Enter a locator, for instance JO50VA"_s;
        QTest::newRow("four characters")
            << u"JN58"_s << u"“JN58” is not two letters, two digits, two letters"_s;
        QTest::newRow("field") << u"SA00AA"_s << u"The first two letters go from A to R"_s;
        QTest::newRow("field latitude") << u"as00aa"_s << u"The first two letters go from A to R"_s;
        QTest::newRow("subsquare") << u"AA00YA"_s << u"The last two letters go from A to X"_s;
        QTest::newRow("subsquare latitude") << u"AA00AY"_s << u"The last two letters go from A to X"_s;
    }

    void saysWhatIsWrongWithALocator()
    {
        QFETCH(QString, text);
        QTEST(locatorProblem(text), "problem");
    }
};

QTEST_GUILESS_MAIN(TestConverter)
#include "tst_converter.moc"
