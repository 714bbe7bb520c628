#pragma once

#include "backup/backupfiles.h"
#include "backup/backups.h"
#include "backup/ziparchive.h"
#include "platform/runtimeerror.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QDir>
#include <QLocale>
#include <QTest>

namespace quillon::test {

using namespace Qt::StringLiterals;

inline const QByteArray twoReceptions =
    logLine("D382", "05/07/2010 21:40:00", "89.0", "WDR 2", "D", "K\xF6ln")
    + logLine("F201", "06/07/2010 06:30:00", "105.5", "FR INTER", "F", "Paris");

/// The files of a log, and where its backups go.
struct BackupHome
{
    BackupHome()
    {
        directory.write(u"LOGBOOK.INI"_s, "LOGBOOK_FILENAME=RDSLog.log\r\n");
        directory.write(u"RDSLog.log"_s, twoReceptions);
        directory.write(u"tx.lst"_s, "K\xF6ln|D|50.9|7.0|10|\r\n");
        directory.write(u"country.lst"_s, "D|Germany\r\n");
        config.readConfig();
    }

    [[nodiscard]] Backups backups(FileCalls &calls = FileCalls::real()) const
    {
        return {state.file(u"quillon/backups"_s), config, calls};
    }
    /// The names of the backups.
    [[nodiscard]] QStringList names() const
    {
        return QDir(backups().folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// The files of the log, names and bytes.
    [[nodiscard]] QStringList files() const
    {
        QStringList all;
        for (const QString &name : directory.names()) {
            all += name + u'=' + QString::fromLatin1(directory.read(name));
        }
        return all;
    }
    /// Puts a file among the backups.
    void put(const QString &name, const QByteArray &bytes = {}) const
    {
        state.write(backups().folder().sliced(state.path().size() + 1) + u'/' + name, bytes);
    }

    TestDirectory directory;
    TestDirectory state;
    Config config {directory.path()};
};

inline DateTime at(const QString &text)
{
    return toDateTime(text, MonthNames::of(QLocale::c()), u"test"_s);
}

inline Regional english()
{
    return {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
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
