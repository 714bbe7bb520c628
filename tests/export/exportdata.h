#pragma once

#include "core/logrows.h"
#include "platform/filecalls.h"
#include "platform/regional.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"
#include "txdb/transmitters.h"

#include <QFile>
#include <QList>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cerrno>

namespace quillon::test {

using namespace Qt::StringLiterals;

/// The rows of a log of its own.
class TableGrid
{
public:
    /// Rows of these texts, the first ten columns, whatever the log below them holds.
    TableGrid(const Logbook &log, const QList<QStringList> &texts)
    {
        const auto count = static_cast<qint32>(texts.size());
        for (qint32 i = 0; i < std::max(count, log.count()); ++i) {
            // Filled while the order of time was that of the texts.
            if (i == count) {
                m_rows.refill();
            }
            LogEntry entry;
            entry.dateTime = {i};
            m_log.AddEntry(entry);
        }
        if (count >= log.count()) {
            m_rows.refill();
        }
        for (qint32 i = 0; i < log.count(); ++i) {
            changeEntry(m_log, i, [&](LogEntry &entry) { entry = log.entry(i); });
        }
        for (qint32 i = 0; i < count; ++i) {
            for (int column = 0; column < 10; ++column) {
                m_rows.setTyped(i, static_cast<GridColumn>(column), texts.at(i).at(column));
            }
        }
    }
    explicit TableGrid(const QList<QStringList> &texts = {})
        : TableGrid(Logbook(), texts)
    {
    }
    /// The rows that the grid shows of a log.
    explicit TableGrid(Logbook log)
        : m_log(std::move(log))
    {
        m_rows.refill();
    }
    TableGrid(const TableGrid &) = delete;
    TableGrid &operator=(const TableGrid &) = delete;
    ~TableGrid() = default;

    [[nodiscard]] const LogRows &rows() const { return m_rows; }
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.all().size()); }
    /// The text of a row, the first being 1.
    [[nodiscard]] QString text(int row, GridColumn column) const
    {
        return m_rows.text(m_rows.all()[static_cast<std::size_t>(row - 1)], column);
    }

private:
    Logbook m_log;
    LogRows m_rows {m_log, MonthNames::of(QLocale::c())};
};

/// The texts that the log grid shows, the first ten columns.
inline QList<QStringList> shownRows(const Logbook &log)
{
    const TableGrid grid(log);
    QList<QStringList> rows;
    for (int row = 1; row <= grid.count(); ++row) {
        QStringList &cells = rows.emplaceBack();
        for (int column = 0; column < 10; ++column) {
            cells += grid.text(row, static_cast<GridColumn>(column));
        }
    }
    return rows;
}

inline Regional regionalOf(const QString &locale, int codePage = 1252)
{
    return {CodePage(codePage), NumberFormat(), MonthNames::of(QLocale(locale))};
}

inline Regional english()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
}

inline DateTime at(const QString &text)
{
    return toDateTime(text, MonthNames::of(QLocale::c()), u"test"_s);
}

inline LogEntry reception(const QString &time, const QString &pi, const QString &freq, const QString &name,
    const QString &site, const QString &country, const QString &prop = u"Es"_s)
{
    LogEntry entry;
    entry.dateTime = at(time);
    entry.piCode = pi;
    entry.freq = freq;
    entry.rdsName = name;
    entry.transmitter = site;
    entry.country = country;
    entry.prop = prop;
    return entry;
}

/// Three months of a log with a double, a site name under two countries, a name to encode, and sites unknown.
inline Logbook sampleLog()
{
    Logbook log;
    log.AddEntry(reception(
        u"03/07/2010 08:15:00"_s, u"D382"_s, u"89"_s, u"WDR 2"_s, u"Langenberg"_s, u"D"_s, u"Tropo"_s));
    log.AddEntry(
        reception(u"05/07/2010 21:34:09"_s, u"5213"_s, u"90.1"_s, u"RAI  R1"_s, u"Köln & Bonn"_s, u"D"_s));
    log.AddEntry(reception(
        u"05/07/2010 21:40:00"_s, u"D382"_s, u"89"_s, u"WDR 2"_s, u"Langenberg"_s, u"D"_s, u"MS"_s));
    log.AddEntry(
        reception(u"01/08/2010 00:00:00"_s, u"E201"_s, u"100.25"_s, u""_s, u"Nowhere"_s, u"E"_s, u"F2"_s));
    log.AddEntry(reception(u"02/08/2010 12:00:00"_s, u""_s, u"87.6"_s, u"NINECHARS"_s, u""_s, u""_s, u""_s));
    log.AddEntry(
        reception(u"09/07/2011 06:30:00"_s, u"F201"_s, u"105.5"_s, u"FR INTER"_s, u"Langenberg"_s, u"F"_s));
    log.AddEntry(
        reception(u"10/07/2011 06:31:00"_s, u"delete"_s, u"105.5"_s, u"<script>"_s, u"Langenberg"_s, u"D"_s));
    changeEntry(log, 0, [](LogEntry &entry) { entry.dist = u"123.5"_s; });
    changeEntry(log, 0, [](LogEntry &entry) { entry.power = u"100"_s; });
    changeEntry(log, 1, [](LogEntry &entry) { entry.notes = u"first\r\nsecond"_s; });
    changeEntry(log, 3, [](LogEntry &entry) { entry.dist = u"n/a"_s; });
    return log;
}

inline TransmitterList sampleTransmitters()
{
    TransmitterList list;
    list.add({u"Langenberg"_s, u"D"_s, u"51.3561"_s, u"7.1342"_s, u"123.5"_s});
    list.add({u"Langenberg"_s, u"F"_s, u"45"_s, u"-3.25"_s, u""_s});
    list.add({u"Never heard"_s, u"D"_s, u""_s, u"8"_s, u""_s});
    list.add({u"Köln & Bonn"_s, u"D"_s, u"50.9"_s, u"7.0"_s, u""_s});
    return list;
}

/// File calls of which the one with the number `failing`, counted from 1, fails with `code`. What only cleans
/// up works always.
class FailingCalls : public FileCalls
{
public:
    explicit FailingCalls(int failing, int code = ENOSPC)
        : m_failing(failing)
        , m_code(code)
    {
    }

    [[nodiscard]] bool hasFailed() const { return m_count >= m_failing; }
    [[nodiscard]] bool wasCalled() const { return m_count > 0; }

    int openNameless(const QByteArray &directory, mode_t mode) override
    {
        return fails() ? -1 : FileCalls::openNameless(directory, mode);
    }
    ssize_t write(int file, QByteArrayView bytes) override
    {
        if (fails()) {
            return -1;
        }
        // A disk that fills up takes a part first.
        return FileCalls::write(file, bytes.first((bytes.size() + 1) / 2));
    }
    int setMode(int file, mode_t mode) override { return fails() ? -1 : FileCalls::setMode(file, mode); }
    int sync(int file) override { return fails() ? -1 : FileCalls::sync(file); }
    int giveName(int file, const QByteArray &path) override
    {
        return fails() ? -1 : FileCalls::giveName(file, path);
    }
    int rename(const QByteArray &from, const QByteArray &to) override
    {
        return fails() ? -1 : FileCalls::rename(from, to);
    }
    int remove(const QByteArray &path) override
    {
        return !path.endsWith(".new") && fails() ? -1 : FileCalls::remove(path);
    }
    int syncDirectory(const QByteArray &directory) override
    {
        return fails() ? -1 : FileCalls::syncDirectory(directory);
    }

private:
    bool fails()
    {
        errno = m_code;
        return ++m_count == m_failing;
    }

    int m_failing;
    int m_code;
    int m_count = 0;
};

/// File calls that do not wait for the disk.
class UnsyncedCalls : public FileCalls
{
public:
    int sync(int) override { return 0; }
    int syncDirectory(const QByteArray &) override { return 0; }
};

/// A golden file.
inline QByteArray golden(const QString &name)
{
    QFile file(QStringLiteral(QUILLON_TEST_DATA "/export/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no golden file " + name.toUtf8());
}

/// The text of the run-time error that `work` ends with; empty when there is none.
template<typename Work>
QString errorOf(const Work &work)
{
    try {
        work();
    } catch (const RuntimeError &error) {
        return error.text();
    }
    return {};
}

} // namespace quillon::test
