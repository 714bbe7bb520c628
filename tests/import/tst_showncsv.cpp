#include "core/logfields.h"
#include "export/showncsv.h"
#include "import/importfile.h"
#include "import/importlimits.h"
#include "platform/numbers.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 secondsOfYears = 400LL * 365 * 86'400;

QString told(const LogEntry &entry)
{
    QStringList fields {generalText(entry.dateTime)};
    for (const LogColumn &column : logFields()) {
        if (column.text) {
            fields += QString::fromLatin1((entry.*column.text).toUtf8().toPercentEncoding(" ,;'\"=+@#"));
        }
    }
    return fields.join(u'|');
}

// What every program makes of a field that is a number.
QString written(const QString &number)
{
    return numeric(number) ? QString(number).replace(u',', u'.') : number;
}

LogEntry written(LogEntry entry)
{
    entry.freq = written(entry.freq);
    entry.power = written(entry.power);
    entry.dist = written(entry.dist);
    return entry;
}

// Fields of all that a code page has, with the marks of formulas, quotes and separators more often.
class Fields
{
public:
    Fields(int page, quint32 seed)
        : m_page(page)
        , m_random(seed)
    {
    }

    LogEntry entry()
    {
        LogEntry entry;
        for (const LogColumn &column : logFields()) {
            if (column.text) {
                entry.*column.text = field(column.field == LogField::Notes);
            }
        }
        entry.dateTime = {static_cast<qint64>(m_random.generate64() % secondsOfYears)};
        if (m_random.bounded(2) == 0) {
            entry.fmlist = tag();
        }
        if (m_random.bounded(2) == 0) {
            entry.dist = QString::number(m_random.bounded(-100, 9999)) + u",5"_s;
        }
        return entry;
    }

private:
    QString field(bool lines)
    {
        constexpr QByteArrayView marks = "=+-@',;\"\t #!\r\n";
        QByteArray bytes;
        const int length = m_random.bounded(12);
        while (bytes.size() < length) {
            const char byte = m_random.bounded(2) == 0 ? marks[m_random.bounded(marks.size())]
                                                       : static_cast<char>(m_random.bounded(1, 256));
            if (byte != '|' && (lines || (byte != '\r' && byte != '\n'))) {
                bytes += byte;
            }
        }
        return m_page.decode(bytes);
    }

    QString tag()
    {
        const QStringList tags {u"fml=sent#"_s, u"fml=multi#x=1#"_s, u"fml=none#"_s, u"Sent"_s, u"Multi"_s,
            u"None"_s, u"'None"_s};
        return tags[m_random.bounded(tags.size())];
    }

    CodePage m_page;
    QRandomGenerator m_random;
};

QByteArray csvOf(const std::vector<LogEntry> &entries)
{
    Logbook log;
    for (const LogEntry &entry : entries) {
        log.AddEntry(entry);
    }
    LogRows rows(log, MonthNames::of(QLocale::c()));
    rows.refill();
    const TransmitterList sites;
    ShownLog shown {rows, sites, {}, {}, {}, {}, {}};
    for (qint32 i = 0; i < log.count(); ++i) {
        shown.entries.push_back(i);
    }
    for (int column = 0; column < gridColumnCount; ++column) {
        shown.columns.push_back(static_cast<GridColumn>(column));
    }
    return shownCsv(shown);
}

ImportReading readBack(const QByteArray &csv, int page = 1252)
{
    const ImportSurroundings surroundings {
        Regional {CodePage(page), NumberFormat(), MonthNames::of(QLocale::c())}, QTimeZone::utc(), false};
    return readImportFile(sourcesOf(u"shown.csv"_s, csv).front(), {}, {}, surroundings, mostImportRows);
}

} // namespace

/// What the program writes of shown receptions comes in as it was.
class TestShownCsvImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whateverTheFieldsHoldComesBack_data()
    {
        QTest::addColumn<int>("page");
        for (const int page : {1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258}) {
            QTest::newRow(QByteArray::number(page).constData()) << page;
        }
    }

    void whateverTheFieldsHoldComesBack()
    {
        QFETCH(int, page);
        Fields fields(page, static_cast<quint32>(page));
        std::vector<LogEntry> entries;
        constexpr int count = 300;
        for (int i = 0; i < count; ++i) {
            entries.push_back(fields.entry());
        }
        entries.front().fmlist = u"fml=sent#"_s;
        const ImportReading reading = readBack(csvOf(entries), page);
        QCOMPARE(reading.refusal, QString());
        QCOMPARE(reading.format.kind, ImportKind::Shown);
        QCOMPARE(reading.rows.size(), entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            QCOMPARE(reading.rows[i].refusal, QString());
            QCOMPARE(told(reading.rows[i].entry), told(written(entries[i])));
        }
    }

    void aWordOfTheGridIsATagOnlyWhereThereAreNoTags()
    {
        LogEntry entry;
        entry.fmlist = u"Sent"_s;
        QCOMPARE(readBack(csvOf({entry})).rows.front().entry.fmlist, u"fml=sent#"_s);
        LogEntry tagged;
        tagged.fmlist = u"fml=none#"_s;
        const ImportReading both = readBack(csvOf({entry, tagged}));
        QCOMPARE(both.rows[0].entry.fmlist, u"Sent"_s);
        QCOMPARE(both.rows[1].entry.fmlist, u"fml=none#"_s);
    }

    void signsOfOtherSeparatorsDoNotCount()
    {
        LogEntry entry;
        entry.notes = u";\t"_s.repeated(300);
        const ImportReading reading = readBack(csvOf({entry}));
        QCOMPARE(reading.refusal, QString());
        QCOMPARE(reading.rows.front().entry.notes, entry.notes);
    }
};

QTEST_GUILESS_MAIN(TestShownCsvImport)
#include "tst_showncsv.moc"
