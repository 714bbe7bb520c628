#include "export/webtemplate.h"

#include <QTest>

#include <array>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

const std::array placeholders {
    Placeholder {"$CALLSIGN"_ba, "DL1ABC"_ba},
    Placeholder {"$TOTAL"_ba, "7"_ba},
};

QByteArray filled(QByteArrayView text)
{
    return fillTemplate(text, placeholders, [](QByteArray &page) { page += "rows\r\n"; });
}

} // namespace

class TestWebTemplate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreFilled_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("empty") << ""_ba
                               << ""_ba;
        QTest::newRow("line feeds become CR LF") << "a\nb\r\nc"_ba
                                                 << "a\r\nb\r\nc\r\n"_ba;
        QTest::newRow("empty lines stay") << "\n\n"_ba
                                          << "\r\n\r\n"_ba;
        QTest::newRow("every occurrence") << "$TOTAL+$TOTAL $CALLSIGN$CALLSIGN"_ba
                                          << "7+7 DL1ABCDL1ABC\r\n"_ba;
        QTest::newRow("case counts") << "$total $Rawdata"_ba
                                     << "$total $Rawdata\r\n"_ba;
        QTest::newRow("unknown ones stay") << "$MONTHYEAR $ $5"_ba
                                           << "$MONTHYEAR $ $5\r\n"_ba;
        QTest::newRow("longer word") << "$TOTALS"_ba
                                     << "7S\r\n"_ba;
        QTest::newRow("rows alone") << "<table>\r\n$RAWDATA\r\n</table>\r\n"_ba
                                    << "<table>\r\nrows\r\n\r\n</table>\r\n"_ba;
        QTest::newRow("rows before their line") << "a $RAWDATA $TOTAL"_ba
                                                << "rows\r\na  7\r\n"_ba;
        QTest::newRow("twice on a line is once") << "$RAWDATA$RAWDATA!"_ba
                                                 << "rows\r\n!\r\n"_ba;
        QTest::newRow("two lines are twice") << "$RAWDATA\n$RAWDATA"_ba
                                             << "rows\r\n\r\nrows\r\n\r\n"_ba;
        QTest::newRow("any byte") << "\x80\xFF\0\x01"_ba + "\r$"_ba
                                  << "\x80\xFF\0\x01"_ba + "\r$\r\n"_ba;
        QTest::newRow("script") << "<script>if (a && b) { $(c) }</script>"_ba
                                << "<script>if (a && b) { $(c) }</script>\r\n"_ba;
    }

    void linesAreFilled()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        QCOMPARE(filled(text), expected);
    }

    void placeholdersAreTestedInTheirOrder()
    {
        const std::array nested {
            Placeholder {"$A"_ba, "$B$A"_ba},
            Placeholder {"$B"_ba, "$RAWDATA"_ba},
        };
        const QByteArray page = fillTemplate("$A", nested, [](QByteArray &out) { out += "row\r\n"; });
        QCOMPARE(page, "row\r\n$A\r\n"_ba);
    }

    void rowsAreNotSearchedForPlaceholders()
    {
        const QByteArray page =
            fillTemplate("$RAWDATA", placeholders, [](QByteArray &out) { out += "$TOTAL $RAWDATA\r\n"; });
        QCOMPARE(page, "$TOTAL $RAWDATA\r\n\r\n"_ba);
    }
};

QTEST_GUILESS_MAIN(TestWebTemplate)
#include "tst_webtemplate.moc"
