#include "import/xdrlog.h"

#include "import/csv.h"
#include "import/importlimits.h"
#include "import/importvalues.h"
#include "import/storable.h"
#include "platform/numbers.h"
#include "platform/runtimeerror.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 8> keys {u"PI", u"PS", u"RT1", u"RT2", u"AF", u"PTY", u"ECC", u"CT"};
constexpr int linesLookedAt = 20;
constexpr std::size_t mostReceptions = 10'000;

CsvLayout layoutOf(bool notes)
{
    return {u'\t', false, notes};
}

bool isLogLine(const CsvRow &row)
{
    return row.cells.size() >= 3 && std::ranges::find(keys, QStringView(row.cells[1])) != keys.end();
}

// The frequency in MHz that the name of the file begins with in kHz; empty when it does not.
QString frequencyOf(const QString &path)
{
    const QString name = path.section(u'/', -1);
    const QStringView digits = QStringView(name).first(std::max(name.indexOf(u'-'), qsizetype(0)));
    const auto khz = numeric(digits);
    return khz && *khz >= 1000 && std::ranges::all_of(digits, isDigit) ? plainText(*khz / 1000) : QString();
}

// What came of a PI code.
struct Heard
{
    ImportRow row;
    bool sure = false;
    bool sureName = false;
    QHash<QString, QString> values; // what the keys had last
    QStringList frequencies;
};

void takeValue(Heard &heard, const QString &key, const QString &value, bool doubtful)
{
    const QString text = QString(value).replace(u'_', u' ').trimmed();
    if (key == "PS"_L1) {
        // A name that is sure stays until another that is sure comes.
        if (!doubtful || !heard.sureName) {
            heard.row.entry.rdsName = importedRdsName(text);
            heard.sureName = heard.sureName || !doubtful;
        }
    } else if (key == "AF"_L1) {
        constexpr qsizetype mostFrequencies = 50;
        if (!heard.frequencies.contains(text) && heard.frequencies.size() < mostFrequencies) {
            heard.frequencies += text;
        }
    } else if (!doubtful || !heard.values.contains(key)) {
        heard.values.insert(key, text);
    }
}

QString notesOf(const Heard &heard)
{
    QStringList notes;
    if (!heard.sure) {
        notes += u"PI?"_s;
    }
    for (const QStringView key : keys) {
        const QString name = key.toString();
        const QString value = name == "AF"_L1 ? heard.frequencies.join(u' ') : heard.values.value(name);
        if (!value.isEmpty()) {
            notes += name + u": "_s + value;
        }
    }
    return notes.join(u"; "_s);
}

// Reads the lines one after the other.
class XdrReader
{
public:
    XdrReader(const QString &path, bool localTime, const ImportSurroundings &surroundings)
        : m_freq(frequencyOf(path))
        , m_local(localTime)
        , m_surroundings(surroundings)
        , m_localTime(surroundings.zone)
    {
    }

    void take(const CsvRow &row)
    {
        if (row.cells.size() < 3) {
            refuse(row, u"The line has no moment, kind and value with tabs between"_s);
            return;
        }
        const bool doubtful = row.cells.size() > 3 && row.cells[3].contains(u'?');
        if (row.cells[1] == "PI"_L1) {
            m_refusedPi = -1;
            takePi(row, doubtful);
        } else if (m_current >= 0) {
            Heard &heard = m_heard[static_cast<std::size_t>(m_current)];
            takeValue(heard, row.cells[1], row.cells[2], doubtful);
            keepLine(heard.row, row);
        } else if (m_refusedPi >= 0) {
            keepLine(m_refused[static_cast<std::size_t>(m_refusedPi)], row);
        }
    }

    [[nodiscard]] std::vector<ImportRow> rows()
    {
        for (Heard &heard : m_heard) {
            heard.row.entry.notes = notesOf(heard);
            heard.row.refusal = makeStorable(heard.row, m_surroundings.regional.codePage, false);
            if (!heard.row.isRefused()) {
                heard.row.text.clear();
            }
            m_refused.push_back(std::move(heard.row));
        }
        std::ranges::stable_sort(m_refused, {}, &ImportRow::line);
        return std::move(m_refused);
    }

private:
    // What stands behind a PI code is of it: a mended one shall find it again.
    static void keepLine(ImportRow &pi, const CsvRow &row)
    {
        if (pi.text.size() + row.text.size() < longestImportCell) {
            pi.text += "\r\n"_L1 + row.text;
        }
    }

    void refuse(const CsvRow &row, const QString &why)
    {
        ImportRow refused;
        refused.line = row.line;
        refused.refusal = why;
        refused.text = row.text.toString();
        m_refused.push_back(std::move(refused));
    }

    void takePi(const CsvRow &row, bool doubtful)
    {
        const auto pi = importedPi(row.cells[2]);
        const auto moment = importedMoment(row.cells[0], DateOrder::DayFirst, m_surroundings.regional.months);
        if (!pi || !moment || pi->code.isEmpty()) {
            m_current = -1;
            m_refusedPi = static_cast<int>(m_refused.size());
            refuse(row,
                !moment ? u"The date and time are none"_s : u"The PI code is not four hexadecimal digits"_s);
            return;
        }
        if (m_freq.isEmpty()) {
            m_current = -1;
            m_refusedPi = static_cast<int>(m_refused.size());
            refuse(row, u"The file's name does not begin with the frequency in kHz"_s);
            return;
        }
        doubtful = doubtful || pi->doubtful;
        const auto known = m_numbers.constFind(pi->code);
        m_current = known == m_numbers.constEnd() ? begin(pi->code, row) : *known;
        Heard &heard = m_heard[static_cast<std::size_t>(m_current)];
        // The first sure one gives the time.
        if (!heard.sure && (!doubtful || known == m_numbers.constEnd())) {
            heard.sure = !doubtful;
            heard.row.line = row.line;
            heard.row.text = row.text.toString();
            heard.row.entry.dateTime =
                m_local && !moment->isUtc ? m_localTime.utcOf(moment->moment) : moment->moment;
        }
    }

    int begin(const QString &code, const CsvRow &row)
    {
        if (m_heard.size() >= mostReceptions) {
            throw RuntimeError(ErrorName::Overflow,
                u"line %1: the file has more than %2 PI codes"_s.arg(row.line).arg(mostReceptions));
        }
        Heard heard;
        heard.row.entry.piCode = code;
        heard.row.entry.freq = m_freq;
        heard.row.entry.country = u"TBD"_s;
        m_heard.push_back(std::move(heard));
        const int number = static_cast<int>(m_heard.size()) - 1;
        m_numbers.insert(code, number);
        return number;
    }

    QString m_freq;
    bool m_local;
    const ImportSurroundings &m_surroundings;
    LocalTime m_localTime;
    std::vector<Heard> m_heard;
    QHash<QString, int> m_numbers;
    int m_current = -1;
    int m_refusedPi = -1; // the lines behind it are of it
    std::vector<ImportRow> m_refused;
};

} // namespace

bool isXdrLog(QStringView text, bool notes)
{
    CsvReader reader(text, layoutOf(notes));
    CsvRow row;
    while (reader.next(row)) {
        if (!row.isBlank()) {
            return isLogLine(row);
        }
    }
    return false;
}

bool isLocalXdrLog(QStringView text, bool notes)
{
    CsvReader reader(text, layoutOf(notes));
    CsvRow row;
    for (int i = 0; i < linesLookedAt && reader.next(row); ++i) {
        const auto moment = importedMoment(row.cell(0), DateOrder::DayFirst, MonthNames());
        if (moment && !moment->isUtc) {
            return true;
        }
    }
    return false;
}

std::vector<ImportRow> readXdrLog(
    QStringView text, const QString &path, bool notes, bool localTime, const ImportSurroundings &surroundings)
{
    CsvReader reader(text, layoutOf(notes));
    XdrReader receptions(path, localTime, surroundings);
    CsvRow row;
    while (reader.next(row)) {
        if (!row.isBlank()) {
            receptions.take(row);
        }
    }
    return receptions.rows();
}

} // namespace quillon
