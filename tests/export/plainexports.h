#pragma once

#include "exportdata.h"
#include "net/textencoding.h"

#include <QMap>

#include <cmath>

namespace quillon::test {

/// The exports once more, as plainly as they can be told: every search is a scan, every file is a list of
/// lines, nothing is remembered. What the program writes is compared with what this gives.
class PlainExports
{
public:
    PlainExports(const Logbook &log, const TransmitterList &transmitters, const TableGrid &grid,
        const Regional &regional)
        : m_log(log)
        , m_list(transmitters)
        , m_grid(grid)
        , m_regional(regional)
    {
    }

    using Files = QMap<QString, QByteArray>;

    [[nodiscard]] QByteArray transmitterKml() const
    {
        QStringList out = head(u"Quillon - Export TX"_s);
        for (const Transmitter &t : m_list) {
            out += u"<Placemark><name>"_s + t.name + u" ("_s + t.country + u")"_s + u"</name>"_s;
            out += point(t, u"ff0000ff"_s);
        }
        return bytes(out + foot());
    }

    [[nodiscard]] QByteArray logbookKml() const
    {
        QStringList out = head(u"Quillon - Export LogBook"_s);
        for (const Transmitter &t : m_list) {
            out += u"<Placemark><name>"_s + t.name + u" ("_s + t.country + u")"_s + u"</name>"_s;
            out += u"<description><![CDATA[ <ol>"_s;
            for (const LogEntry &e : m_log) {
                if (e.transmitter == t.name && e.country == t.country) {
                    out += listed(e);
                }
            }
            out += u"</ol>]]> </description>"_s;
            out += point(t, u"ff00aaff"_s);
        }
        return bytes(out + foot());
    }

    /// The full export without a month, else the monthly one; `written` tells whether a placemark was.
    [[nodiscard]] QByteArray heardKml(const std::optional<DateTime> &month, bool &written) const
    {
        written = false;
        QStringList out = head(month ? u"Quillon "_s + text(*month, u"yyyy-mmm") : u"Quillon Full"_s);
        for (const Transmitter &t : m_list) {
            bool open = false;
            for (const LogEntry &e : m_log) {
                if (e.transmitter != t.name || e.country != t.country
                    || (month
                        && (text(e.dateTime, u"yyyy") != text(*month, u"yyyy")
                            || text(e.dateTime, u"mmm") != text(*month, u"mmm")))) {
                    continue;
                }
                if (!open) {
                    open = written = true;
                    out += u"<Placemark><name>"_s + W3CEncode(t.name, m_regional.codePage) + u" ("_s
                        + t.country + u")</name>"_s;
                    out += u"<description><![CDATA[ <ol>"_s;
                }
                out += listed(e);
            }
            if (open) {
                out += u"</ol>]]> </description>"_s;
                out += point(t, u"ff00aaff"_s);
            }
        }
        return bytes(out + foot());
    }

    /// The generated files of the web site by name, without the map viewer.
    [[nodiscard]] Files webSite(const QByteArray &indexText, const QByteArray &monthText,
        const QString &callsign, const QString &version, DateTime now) const
    {
        Files files;
        QStringList out;
        for (QString line : lines(indexText)) {
            line.replace(u"$CALLSIGN"_s, callsign);
            line.replace(u"$TOTAL"_s, QString::number(m_log.count()));
            line.replace(u"$VERSION"_s, version);
            line.replace(u"$GENERATED"_s, generalText(now));
            if (line.contains(u"$RAWDATA"_s)) {
                indexRows(out, files, monthText);
                line.replace(u"$RAWDATA"_s, u""_s);
            }
            out += line;
        }
        files.insert(u"quillon_logindex.htm"_s, bytes(out));
        bool written = false;
        files.insert(u"quillon.kml"_s, heardKml(std::nullopt, written));
        return files;
    }

    [[nodiscard]] QByteArray textLog(DateTime from, DateTime to, bool miles, const QString &link) const
    {
        QStringList out;
        if (!link.isEmpty()) {
            out += link + u"\r\n"_s;
        }
        out += u"Time  Freq   ITU PS       PI   TX           Distance"_s;
        out += QString(52, u'-');
        QString lastDay;
        QString lastProp;
        int count = 0;
        for (int row = m_grid.count(); row >= 1; --row) {
            QStringList c = cells(row);
            const QStringList unknown {{}, u"????"_s, {}, u"????????"_s, u"???"_s, u"???"_s, {}, {}, {}, {}};
            for (int i = 0; i < 10; ++i) {
                c[i] = c[i].isEmpty() ? unknown[i] : c[i];
            }
            const DateTime date = at(c[0]);
            if (!(from <= date && date <= to)) {
                continue;
            }
            if (text(date, u"dd-mmm-yyyy") != lastDay || c[9] != lastProp) {
                lastDay = text(date, u"dd-mmm-yyyy");
                lastProp = c[9];
                out += u"\r\n"_s + lastDay + u" "_s + lastProp + u"\r\n"_s;
            }
            if (const auto number = numeric(c[6])) {
                const double km = static_cast<float>(*number) * (miles ? 1.6093 : 1.0);
                c[6] = QString::number(static_cast<qint64>(std::nearbyint(km))) + u" Km"_s;
            }
            if (!c[2].contains(u"."_s)) {
                c[2] += u".0"_s;
            }
            ++count;
            out += text(date, u"hh:nn") + u"z"_s + u" "_s + padded(c[2], 5) + u" "_s + padded(c[4], 3)
                + u" "_s + padded(c[3], 8).left(8) + u" "_s + padded(c[1], 4) + u" "_s + c[5] + u" "_s + c[6];
        }
        out += u"\r\n*Quillon Export:\r\n "_s + text(from, u"dd-mmm-yyyy hh:nn") + u" to \r\n "_s
            + text(to, u"dd-mmm-yyyy hh:nn") + u"\r\n "_s + QString::number(count) + u" Entries"_s;
        return bytes(out);
    }

private:
    [[nodiscard]] QString text(DateTime moment, QStringView pattern) const
    {
        return formatted(moment, pattern, m_regional.months);
    }

    [[nodiscard]] QByteArray bytes(const QStringList &all) const
    {
        QByteArray result;
        for (const QString &line : all) {
            result += m_regional.codePage.encode(line) + "\r\n";
        }
        return result;
    }

    [[nodiscard]] QStringList lines(const QByteArray &file) const
    {
        QStringList all = m_regional.codePage.decode(file).split(u'\n');
        if (all.last().isEmpty()) {
            all.removeLast();
        }
        for (QString &line : all) {
            if (line.endsWith(u'\r')) {
                line.chop(1);
            }
        }
        return all;
    }

    static QStringList head(const QString &folder)
    {
        return {u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"_s,
            u"<kml xmlns=\"http://earth.google.com/kml/2.1\">"_s, u"<Folder>"_s,
            u"<name>"_s + folder + u"</name>"_s};
    }

    static QStringList foot() { return {u"</Folder>"_s, u"</kml> "_s}; }

    static QStringList point(const Transmitter &t, const QString &color)
    {
        return {u"<Style><IconStyle><color>"_s + color + u"</color></IconStyle></Style>"_s,
            u"<Point><extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode>"_s,
            u"<coordinates>"_s + t.longitude + u","_s + t.latitude + u",200</coordinates>"_s,
            u"</Point></Placemark>"_s};
    }

    static QString listed(const LogEntry &e)
    {
        return u"<li>["_s + generalText(e.dateTime) + u"] ["_s + e.piCode + u"] ["_s + e.rdsName + u"] ["_s
            + e.freq + u"]</li>"_s;
    }

    [[nodiscard]] QStringList cells(int row) const
    {
        QStringList all;
        for (int column = 0; column < 10; ++column) {
            all += m_grid.text(row, static_cast<GridColumn>(column));
        }
        return all;
    }

    static QString blank(const QString &cell) { return cell.isEmpty() ? u"&nbsp;"_s : cell; }

    static QString tableRow(const QStringList &all)
    {
        return u"<tr><td>"_s + all.join(u"</td><td>"_s) + u"</td></tr>"_s;
    }

    static QString padded(QString cell, int width)
    {
        while (cell.startsWith(u' ')) {
            cell.remove(0, 1);
        }
        while (cell.endsWith(u' ')) {
            cell.chop(1);
        }
        while (cell.size() < width) {
            cell += u' ';
        }
        return cell.left(width);
    }

    void indexRows(QStringList &out, Files &files, const QByteArray &monthText) const
    {
        bool none = true;
        DateTime current;
        for (int row = m_grid.count(); row >= 1; --row) {
            const DateTime date = at(m_grid.text(row, GridColumn::DateTime).trimmed());
            if (none) {
                none = false;
                current = date;
            } else if (text(date, u"mmm") != text(current, u"mmm")
                || text(date, u"yyyy") != text(current, u"yyyy") || row == 1) {
                out += indexRow(current, files, monthText);
                current = date;
            }
        }
    }

    QString indexRow(DateTime month, Files &files, const QByteArray &monthText) const
    {
        const QString file = u"quillon_log_"_s + text(month, u"yyyy-mmm");
        const QStringList counts = monthPage(month, files, file + u".htm"_s, monthText).split(u'|');
        bool written = false;
        const QByteArray kml = heardKml(month, written);
        if (written) {
            files.insert(file + u".kml"_s, kml);
        }
        const auto count = [&](int i) { return counts[i] > u"0"_s ? counts[i] : u"&nbsp;"_s; };
        return tableRow({blank(text(month, u"mmm") + u"-"_s + text(month, u"yyyy")),
            u"<a href=\""_s + file + u".htm\">View Log</a>"_s, count(3), count(2), count(1), count(4),
            blank(counts[0]),
            blank(written ? u"<a href=\"quillon_mapview.htm?kml="_s + file + u".kml\">View Map</a>"_s
                          : u""_s)});
    }

    QString monthPage(DateTime month, Files &files, const QString &name, const QByteArray &monthText) const
    {
        int total = 0;
        QMap<QString, int> modes;
        QStringList out;
        for (QString line : lines(monthText)) {
            line.replace(u"$MONTHYEAR"_s, text(month, u"mmm-yyyy"));
            if (line.contains(u"$RAWDATA"_s)) {
                for (int row = m_grid.count(); row >= 1; --row) {
                    QStringList c = cells(row);
                    const DateTime date = at(c[0]);
                    if (text(date, u"yyyy") != text(month, u"yyyy")
                        || text(date, u"mmm") != text(month, u"mmm")) {
                        continue;
                    }
                    ++total;
                    ++modes[c[9]];
                    c[0] = text(date, u"dd-mmm-yyyy hh:nn");
                    c[5] = W3CEncode(c[5], m_regional.codePage);
                    c[8].replace(u"\r\n"_s, u"<br>"_s);
                    for (QString &cell : c) {
                        cell = blank(cell);
                    }
                    out += tableRow(c);
                }
                line.replace(u"$RAWDATA"_s, u""_s);
            }
            out += line;
        }
        files.insert(name, bytes(out));
        const int known = modes[u"Tropo"_s] + modes[u"Es"_s] + modes[u"MS"_s];
        return u"%1|%2|%3|%4|%5|"_s.arg(total)
            .arg(modes[u"Tropo"_s])
            .arg(modes[u"Es"_s])
            .arg(modes[u"MS"_s])
            .arg(total - known);
    }

    const Logbook &m_log;
    const TransmitterList &m_list;
    const TableGrid &m_grid;
    const Regional &m_regional;
};

} // namespace quillon::test
