#pragma once

#include "document/logdocument.h"
#include "platform/runtimeerror.h"
#include "support/changedlog.h"
#include "support/faultycalls.h"
#include "support/testfiles.h"

#include <QLocale>

#include <memory>
#include <utility>

namespace quillon::test {

using namespace Qt::StringLiterals;

/// File calls that do not wait for the disk, and of which one can be made to fail at any time.
class BreakableCalls : public FaultyCalls
{
public:
    BreakableCalls()
        : FaultyCalls(0)
    {
    }

    /// The `number`th call from now on (from 1) fails.
    void breakAt(int number) { failAt(count() + number); }
    /// The names of the files written since the last call.
    [[nodiscard]] QStringList takeWritten() { return std::exchange(m_written, {}); }

    int sync(int) override { return fails() ? -1 : 0; }
    int syncDirectory(const QByteArray &) override { return fails() ? -1 : 0; }
    int rename(const QByteArray &from, const QByteArray &to) override
    {
        const int result = FaultyCalls::rename(from, to);
        if (result == 0) {
            m_written += QString::fromUtf8(to.sliced(to.lastIndexOf('/') + 1));
        }
        return result;
    }

private:
    QStringList m_written;
};

/// An application directory, its configuration, and a document over it.
struct DocumentHome
{
    DocumentHome()
    {
        directory.write(u"LOGBOOK.INI"_s,
            "LOGBOOK_FILENAME=RDSLog.log\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\nAS_MILES=FALSE\r\n");
        config.readConfig();
        open();
    }

    /// A new document, as after a start of the program.
    void open() { document = std::make_unique<LogDocument>(config, regional, calls); }

    [[nodiscard]] QByteArray logFile() const { return directory.read(u"RDSLog.log"_s); }
    [[nodiscard]] QByteArray sitesFile() const { return directory.read(u"tx.lst"_s); }
    [[nodiscard]] QByteArray logBytes() const { return logbookBytes(document->log(), regional.codePage); }
    [[nodiscard]] QByteArray siteBytes() const
    {
        return transmitterBytes(document->sites(), regional.codePage);
    }

    TestDirectory directory {memoryDirectory.toString()};
    Config config {directory.path()};
    Regional regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())};
    BreakableCalls calls;
    std::unique_ptr<LogDocument> document;
};

/// The Add of a reception, with its site when one is given.
inline Change adding(const LogDocument &document, const LogEntry &entry, const Transmitter &site = {})
{
    Change change {changeName(u"Add"_s, entry), LogChange::addition(entry), {}};
    if (const auto addition = document.sites().addition(site)) {
        change.sites.push_back(*addition);
    }
    return change;
}

/// The update of one field of a reception.
inline Change updating(const LogDocument &document, qint32 number, LogField field, const FieldValue &value)
{
    const LogEntry &entry = document.log().entry(number);
    Change change {changeName(u"Update"_s, entry), {}, {}};
    change.log.setField(number, entry, field, value);
    return change;
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
