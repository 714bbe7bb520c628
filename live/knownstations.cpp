#include "live/knownstations.h"

#include "core/distincttexts.h"
#include "core/fetchahead.h"
#include "live/frequency.h"
#include "txdb/countrynames.h"

#include <QStringList>

#include <algorithm>
#include <string_view>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

using CountryRow = std::array<std::u16string_view, 15>;

/// Extended country codes E0 to E4; in each, the countries of the first digits 1 to F.
constexpr std::array<CountryRow, 5> countryRows {{
    {u"D", u"ALG", u"AND", u"ISR", u"I", u"BEL", u"RUS", u"PSE", u"ALB", u"AUT", u"HNG", u"MLT", u"D", u"",
        u"EGY"},
    {u"GRC", u"CYP", u"SMR", u"SUI", u"JOR", u"FIN", u"LUX", u"BUL", u"DNK", u"GIB", u"IRQ", u"G", u"LBY",
        u"ROU", u"F"},
    {u"MRC", u"CZE", u"POL", u"CVA", u"SVK", u"SYR", u"TUN", u"", u"LIE", u"ISL", u"MCO", u"LTU", u"SRB",
        u"E", u"NOR"},
    {u"MNE", u"IRL", u"TUR", u"MKD", u"TJK", u"", u"", u"HOL", u"LVA", u"LBN", u"AZE", u"HRV", u"KAZ", u"S",
        u"BLR"},
    {u"MDA", u"EST", u"KGZ", u"", u"", u"UKR", u"", u"POR", u"SVN", u"ARM", u"UZB", u"GEO", u"", u"TKM",
        u"BIH"},
}};
constexpr quint8 firstRow = 0xE0;

} // namespace

KnownStations::KnownStations(const Logbook &log)
{
    addFrom(log, 0);
}

void KnownStations::follow(const Logbook &log, std::span<const qint32> changed)
{
    const bool onlyAdded = log.count() >= m_counted
        && std::ranges::all_of(changed, [this](qint32 entry) { return entry >= m_counted; });
    if (onlyAdded) {
        addFrom(log, m_counted);
    } else {
        *this = KnownStations(log);
    }
}

void KnownStations::addFrom(const Logbook &log, qint32 first)
{
    DistinctTexts countries;
    m_pairs.reserve(log.count());
    for (m_counted = first; m_counted < log.count(); ++m_counted) {
        fetchAhead(log, m_counted, &LogEntry::piCode, &LogEntry::freq, &LogEntry::country);
        const LogEntry &entry = log.entry(m_counted);
        if (!isDeleted(entry)) {
            countries.insert(entry.country);
            add(entry);
        }
    }
    for (const QString &country : countries.all()) {
        m_countries.insert(country.toCaseFolded());
    }
}

quint64 KnownStations::pair(qint64 hertz, quint16 pi)
{
    return (static_cast<quint64>(logStep(hertz)) << 16U) | pi;
}

// What is no number or no PI code is left out.
void KnownStations::add(const LogEntry &entry)
{
    if (const auto pi = piCodeOf(entry.piCode)) {
        add(hertzOf(entry.freq).value_or(0), *pi);
    }
}

void KnownStations::add(qint64 hertz, quint16 pi)
{
    m_codes[pi] = true;
    m_digits[pi >> 12U] = true;
    if (hertz > 0) {
        m_pairs.insert(pair(hertz, pi));
    }
}

NewMarks KnownStations::marks(qint64 hertz, quint16 pi, std::optional<quint8> ecc) const
{
    NewMarks marks;
    marks.pi = !knows(pi);
    marks.frequency = !marks.pi && hertz > 0 && !knows(hertz, pi);
    const QString itu = ecc ? countryOf(pi, *ecc) : QString();
    if (itu.isEmpty()) {
        marks.country = !m_digits[pi >> 12U];
    } else {
        marks.country = !m_countries.contains(countryName(itu).toCaseFolded())
            && !m_countries.contains(itu.toCaseFolded());
    }
    return marks;
}

QString marksText(const NewMarks &marks)
{
    QStringList words;
    if (marks.pi) {
        words += u"new PI"_s;
    }
    if (marks.frequency) {
        words += u"new frequency"_s;
    }
    if (marks.country) {
        words += u"perhaps new country"_s;
    }
    return words.join(u", "_s);
}

QString countryOf(quint16 pi, quint8 ecc)
{
    const unsigned row = ecc - unsigned {firstRow};
    const unsigned digit = pi >> 12U;
    if (row >= countryRows.size() || digit == 0) {
        return {};
    }
    const std::u16string_view itu = countryRows[row][digit - 1];
    return QString::fromUtf16(itu.data(), static_cast<qsizetype>(itu.size()));
}

} // namespace quillon
