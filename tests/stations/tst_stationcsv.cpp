#include "stations/stationcsv.h"

#include "stations/csvrecords.h"
#include "stations/stationlist.h"

#include <QBuffer>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// A device of one line that is not held anywhere, and a good line behind it.
class EndlessLine : public QIODevice
{
public:
    explicit EndlessLine(qint64 length)
        : m_left(length)
    {
        open(QIODevice::ReadOnly);
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (m_left > 0) {
            const qint64 part = std::min(size, m_left);
            std::fill_n(data, part, 'x');
            m_left -= part;
            return part;
        }
        const QByteArray part = m_rest.left(size);
        m_rest = m_rest.mid(part.size());
        std::ranges::copy(part, data);
        return part.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    qint64 m_left;
    QByteArray m_rest = "\n98.5;D3C2;Berlin;D;52;13\n"_ba;
};

QList<QStringList> records(const QByteArray &file, const QString &encoding, QChar separator)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    BlockSource source(buffer, u"list.csv"_s, {});
    CsvRecords reader(source, encoding, separator);
    QList<QStringList> all;
    while (const auto record = reader.next()) {
        all += QStringList {QString::number(record->line)} + record->fields;
    }
    return all;
}

CsvLayout layoutOf(const QStringList &heading, bool hasHeading)
{
    return {
        .encoding = u"UTF-8"_s, .separator = u';', .hasHeading = hasHeading, .columns = columnsOf(heading)};
}

const QStringList plainHeading {u"MHz"_s, u"PI"_s, u"Site"_s, u"ITU"_s, u"Lat"_s, u"Lon"_s};

StationCollector collected(QIODevice &device, const CsvLayout &layout)
{
    BlockSource source(device, u"list.csv"_s, {});
    StationCollector stations;
    readStationCsv(source, layout, stations);
    return stations;
}

} // namespace

class TestStationCsv : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSiteIsItsWholeText()
    {
        QByteArray file = "98.5;D3C2;\"Leipzig, Wiederitzsch\";D;51.4;12.4\n";
        QBuffer buffer(&file);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const StationCollector stations = collected(buffer, layoutOf(plainHeading, false));
        QVERIFY(stations.file().contains("Leipzig, Wiederitzsch"));
    }

    void recordsAreSplit_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QList<QStringList>>("expected");
        const auto row = [](const char *name, const QByteArray &file, const QList<QStringList> &expected,
                             const QString &separator = u";"_s) {
            QTest::newRow(name) << file << separator << expected;
        };
        row("empty", ""_ba, {});
        row("empty lines", "\r\n\n  \n"_ba, {});
        row("plain", "a;b\r\nc;;d"_ba, {{u"1"_s, u"a"_s, u"b"_s}, {u"2"_s, u"c"_s, u""_s, u"d"_s}});
        row("last is empty", "a;\n"_ba, {{u"1"_s, u"a"_s, u""_s}});
        row("first is empty", ";a\n"_ba, {{u"1"_s, u""_s, u"a"_s}});
        row("quotes", "\"a;b\";\"c\"\"d\"\n"_ba, {{u"1"_s, u"a;b"_s, u"c\"d"_s}});
        row("empty quotes", "\"\";x\n"_ba, {{u"1"_s, u""_s, u"x"_s}});
        row("line break in quotes", "\"a\nb\";c\nd\n"_ba, {{u"1"_s, u"a\nb"_s, u"c"_s}, {u"3"_s, u"d"_s}});
        row("quote inside", "5\" dish;x\n"_ba, {{u"1"_s, u"5\" dish"_s, u"x"_s}});
        row("quote left open", "\"a;b\nc"_ba, {{u"1"_s, u"a;b\nc"_s}});
        row("line counted after empty ones", "\n\na\n"_ba, {{u"3"_s, u"a"_s}});
        row("tab", "a\tb;c\n"_ba, {{u"1"_s, u"a"_s, u"b;c"_s}}, u"\t"_s);
        row("byte order mark", "\xEF\xBB\xBF\x61;b\n"_ba, {{u"1"_s, u"a"_s, u"b"_s}});
    }

    void recordsAreSplit()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, separator);
        QFETCH(QList<QStringList>, expected);
        QCOMPARE(records(file, u"UTF-8"_s, separator.at(0)), expected);
    }

    void encodingsAreReadAndGuessed_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("encoding");
        QTest::newRow("UTF-8") << "Chr\xC3\xA9\x61\n"_ba << u"UTF-8"_s;
        QTest::newRow("western") << "Chr\xE9\x61\n"_ba << u"1252"_s;
        QTest::newRow("UTF-16 little") << "\xFF\xFE\x43\0h\0r\0\xE9\0a\0\n\0"_ba << u"UTF-16"_s;
        QTest::newRow("UTF-16 big") << "\xFE\xFF\0\x43\0h\0r\0\xE9\0a\0\n"_ba << u"UTF-16"_s;
    }

    void encodingsAreReadAndGuessed()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, encoding);
        QCOMPARE(guessedEncoding(file, CodePage(1252)), encoding);
        QCOMPARE(records(file, encoding, u';'), (QList<QStringList> {{u"1"_s, u"Chréa"_s}}));
    }

    void aCharacterCutByABlockIsWhole()
    {
        QByteArray file(65'535, 'x');
        file += "\n\xC3\xA9\n";
        QCOMPARE(records(file, u"UTF-8"_s, u';').last(), (QStringList {u"2"_s, u"é"_s}));
        QCOMPARE(guessedEncoding("abc\xC3", CodePage(1252)), u"UTF-8");
    }

    void theSeparatorIsGuessed()
    {
        QCOMPARE(guessedSeparator(u"a;b;c,d\n,,,,,,"), u';');
        QCOMPARE(guessedSeparator(u"\"a;b;c;d\",e\n"), u',');
        QCOMPARE(guessedSeparator(u"a\tb\tc;d"), u'\t');
        QCOMPARE(guessedSeparator(u"a|b|c"), u'|');
    }

    void columnsAreKnownByTheirHeadings()
    {
        const auto columns = columnsOf({u"Freq. [MHz]"_s, u"PI-Code"_s, u"RDS PS"_s, u"Location"_s, u"ITU"_s,
            u"LATITUDE"_s, u"Long"_s, u"ERP (kW)"_s, u"remarks"_s, u"freq"_s});
        QCOMPARE(columns, (std::array<int, stationColumnCount> {0, 1, 2, -1, 3, 4, 5, 6, 7, -1, -1, -1}));
        CsvLayout layout;
        layout.columns = columnsOf({u"kW"_s, u"lat"_s});
        QCOMPARE(missingColumns(layout),
            (QStringList {
                u"Frequency (MHz)"_s, u"Site"_s, u"Country"_s, u"Longitude"_s, u"PI code or RDS name"_s}));
        layout.columns = columnsOf({u"MHz"_s, u"ps"_s, u"city"_s, u"itu"_s, u"lat"_s, u"lon"_s});
        QCOMPARE(missingColumns(layout), QStringList());
    }

    void aFileIsReadByItsColumns()
    {
        QBuffer buffer;
        buffer.setData("Lon;Lat;PS;MHz;Site;ITU;PI;kW\n"
                       "11,81;50,03;BAYERN 3;99,4;\"Oberfranken, Ochsenkopf\";D;D313;100\n"
                       "1;2;x\n"
                       "11.81;50.03;B 5;107,1;Ochsenkopf;D;;\n"_ba);
        buffer.open(QIODevice::ReadOnly);
        const StationCollector stations = collected(buffer,
            layoutOf({u"Lon"_s, u"Lat"_s, u"PS"_s, u"MHz"_s, u"Site"_s, u"ITU"_s, u"PI"_s, u"kW"_s}, true));
        QCOMPARE(stations.file(),
            "Quillon stations 1\r\n"
            "99400|D313||BAYERN_3|||Oberfranken, Ochsenkopf|D|50.03|11.81|100||||\r\n"
            "107100|||B_5|||Ochsenkopf|D|50.03|11.81|0||||\r\n"_ba);
        QCOMPARE(refusedText(stations.refused(), stations.refusedCount(), 5),
            u"Line 3: \"\" is no frequency from 64 to 110 MHz");
    }

    void anEndlessLineIsRefusedAndReadingGoesOn()
    {
        EndlessLine device(50'000'000);
        const StationCollector stations = collected(device, layoutOf(plainHeading, false));
        QCOMPARE(refusedText(stations.refused(), stations.refusedCount(), 5), u"Line 1: it is too long");
        QCOMPARE(StationList(stations.file(), {}).count(), 1);
    }

    void anOpenQuoteDoesNotSwallowTheFile()
    {
        QByteArray file = "98.5;\"D3C2;Berlin;D;52;13\n"_ba;
        for (int i = 0; i < 10'000; ++i) {
            file += "98.5;D3C2;Site" + QByteArray::number(i) + ";D;52;13\n";
        }
        QBuffer buffer(&file);
        buffer.open(QIODevice::ReadOnly);
        const StationCollector stations = collected(buffer, layoutOf(plainHeading, false));
        QCOMPARE(stations.refusedCount(), 1);
        QVERIFY(StationList(stations.file(), {}).count() > 7'000);
    }

    void tooManyFieldsAreRefused()
    {
        QByteArray file = QByteArray(5'000, ';') + "\n";
        QBuffer buffer(&file);
        buffer.open(QIODevice::ReadOnly);
        QCOMPARE(collected(buffer, layoutOf(plainHeading, false)).refusedCount(), 1);
    }
};

QTEST_GUILESS_MAIN(TestStationCsv)
#include "tst_stationcsv.moc"
