#pragma once

#include "export/shownlog.h"
#include "exportdata.h"

namespace quillon::test {

/// A log with every trap of the formats, the sites to it, and what an export of all of it is made of.
class ShownFixture
{
public:
    /// Rows of the sample log and of `more`.
    explicit ShownFixture(const QList<LogEntry> &more = {})
    {
        m_log = sampleLog();
        for (const LogEntry &entry : more) {
            m_log.AddEntry(entry);
        }
        m_rows.refill();
        m_sites = sampleTransmitters();
    }
    ShownFixture(const ShownFixture &) = delete;
    ShownFixture &operator=(const ShownFixture &) = delete;
    ~ShownFixture() = default;

    [[nodiscard]] Logbook &log() { return m_log; }
    [[nodiscard]] TransmitterList &sites() { return m_sites; }
    [[nodiscard]] LogRows &rows() { return m_rows; }

    /// The shown receptions in the first `columns` columns.
    [[nodiscard]] ShownLog shown(int columns = gridColumnCount) const
    {
        ShownLog result {m_rows, m_sites, {}, u"DL1ABC"_s, at(u"22/11/2026 05:00:00"_s), {}, {}};
        result.entries = withoutDeleted(m_log, m_rows.shown());
        for (int column = 0; column < columns; ++column) {
            result.columns.push_back(static_cast<GridColumn>(column));
        }
        return result;
    }

private:
    Logbook m_log;
    TransmitterList m_sites;
    LogRows m_rows {m_log, MonthNames::of(QLocale::c())};
};

/// A reception whose fields are what a file of columns can stumble over.
inline LogEntry trickyReception()
{
    LogEntry entry = reception(
        u"24/12/2012 18:00:01"_s, u"1A2B"_s, u"98,7"_s, u"=1+1, \"x\""_s, u"Köln & Bonn"_s, u"D"_s, u"-Es"_s);
    entry.notes = u"first \"line\"\r\nsecond, <b>line</b> & €\r\n"_s;
    entry.power = u"-12.5"_s;
    entry.dist = u"1234,5"_s;
    entry.fmlist = u"fml=sent#"_s;
    entry.uid = u"'@42"_s;
    return entry;
}

} // namespace quillon::test
