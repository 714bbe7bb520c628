#include "works.h"

#include "backup/backups.h"
#include "core/logbooklines.h"
#include "export/kmlfiles.h"
#include "export/shownfile.h"
#include "export/textlog.h"
#include "export/webpages.h"
#include "platform/files.h"
#include "put.h"
#include "session.h"
#include "support/testfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLocale>

namespace quillon::soak {

using namespace Qt::StringLiterals;

Works::Works(const QString &folder, int receptions, FileCalls &calls)
    : m_folder(folder)
    , m_calls(calls)
    , m_regional {CodePage(1252), NumberFormat(), MonthNames::of(QLocale::c())}
    , m_config(folder, m_regional.codePage, calls)
{
    QByteArray log;
    for (int i = 0; i < receptions; ++i) {
        const bool bilbao = i % 3 == 0;
        log += test::logLine("E201", dateOf(i * 1'440 % 500'000).toLatin1(), "87.6", nameOf(i).toLatin1(),
            bilbao ? "E" : "F", bilbao ? "Bilbao" : "Reims");
    }
    m_before = {{u"RDSLog.log"_s, log}, {u"tx.lst"_s, "Bilbao|E|43.26|-2.93||\r\nReims|F|49.1|3.93||\r\n"},
        {u"LOGBOOK.INI"_s, "LOG_BOOK_CALLSIGN=DL1ABC\r\nHOME_DEC_LAT=51.5\r\nHOME_DEC_LON=-0.1\r\n"},
        {u"quillon_index.template"_s, "<h1>$CALLSIGN</h1>$TOTAL\r\n$RAWDATA\r\n"},
        {u"quillon_log.template"_s, "<h1>$MONTHYEAR</h1>\r\n$RAWDATA\r\n"},
        {u"quillon_mapview.htm"_s, "<title>Map</title>\n"}};
    for (const auto &[name, bytes] : m_before.asKeyValueRange()) {
        put(m_folder + u'/' + name, bytes);
    }
    open();
}

void Works::open()
{
    m_config.readConfig();
    m_document = std::make_unique<LogDocument>(m_config, m_regional, m_calls);
    m_document->loadLogbook();
    m_document->loadSites();
    m_rows = std::make_unique<LogRows>(m_document->log(), m_regional.months);
    m_rows->refill();
}

QMap<QString, QByteArray> Works::files() const
{
    QMap<QString, QByteArray> files;
    QDirIterator walk(m_folder, QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (file.open(QIODevice::ReadOnly)) {
            files.insert(QDir(m_folder).relativeFilePath(walk.filePath()), file.readAll());
        }
    }
    return files;
}

void Works::reset()
{
    const QStringList now = files().keys();
    for (const QString &name : now) {
        if (!m_before.contains(name)) {
            QFile::remove(m_folder + u'/' + name);
        }
    }
    for (const auto &[name, bytes] : m_before.asKeyValueRange()) {
        if (!fileHolds(m_folder + u'/' + name, bytes)) {
            put(m_folder + u'/' + name, bytes);
        }
    }
    open();
}

bool Works::isLogStored() const
{
    return fileHolds(m_folder + u"/RDSLog.log"_s, logbookBytes(m_document->log(), m_regional.codePage));
}

void Works::saveLog()
{
    Change change {u"Update"_s, {}, {}};
    change.log.setField(0, m_document->log().entry(0), LogField::Notes, u"a note that was not there"_s);
    m_document->commit(std::move(change));
}

void Works::saveSites()
{
    Change change {u"Site"_s, {}, {}};
    change.sites.push_back(*m_document->sites().addition({u"New Site"_s, u"D"_s, u"50.5"_s, u"7.5"_s, {}}));
    m_document->commit(std::move(change), LogDocument::Saving::Sites);
}

void Works::saveSettings()
{
    m_config.changeConfig(u"LOG_BOOK_CALLSIGN="_s, u"DL2ABC"_s);
}

void Works::exportTransmitters()
{
    writeTransmitterKml(m_folder, m_document->sites(), m_regional.codePage, m_calls);
}

void Works::exportLog()
{
    writeLogbookKml(m_folder, m_document->log(), m_document->sites(), m_regional.codePage, m_calls);
}

void Works::exportPages()
{
    exportWebPages(m_folder, {*m_rows, m_document->sites(), u"DL1ABC"_s, u"V1"_s, *fromCivil({2020, 1, 1})},
        m_regional, m_calls);
}

void Works::exportText()
{
    writeTextLog(m_folder, *m_rows, {*fromCivil({2015, 1, 1}), *fromCivil({2016, 1, 1}), false, {}},
        m_regional, m_calls);
}

void Works::exportShown()
{
    const ShownLog shown {*m_rows, m_document->sites(), {}, u"DL1ABC"_s, *fromCivil({2020, 1, 1}),
        withoutDeleted(m_document->log(), m_rows->shown()),
        {GridColumn::DateTime, GridColumn::PiCode, GridColumn::Freq, GridColumn::RdsName}};
    for (const ShownFormat &format : shownFormats) {
        writeFile(m_folder + u"/shown."_s + format.suffix, shownBytes(shown, format.kind), m_calls);
    }
}

void Works::backUp()
{
    Backups(m_folder, m_config, m_calls).makeAs(m_folder + u"/copy.zip"_s, *fromCivil({2020, 1, 1}));
}

const std::vector<Works::Work> &Works::all()
{
    static const std::vector<Work> works {
        {"log", &Works::saveLog},
        {"tx.lst", &Works::saveSites},
        {"LOGBOOK.INI", &Works::saveSettings},
        {"transmitters as KML", &Works::exportTransmitters},
        {"log as KML", &Works::exportLog},
        {"web pages", &Works::exportPages},
        {"text", &Works::exportText},
        {"shown receptions", &Works::exportShown},
        {"backup", &Works::backUp},
    };
    return works;
}

} // namespace quillon::soak
