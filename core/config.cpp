#include "core/config.h"

#include "core/linebreaks.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

struct Key
{
    QStringView name;
    QString Settings::*member;
};

// In the order in which a line is tested; a line can match several.
constexpr std::array keys {
    Key {u"LOG_BOOK_CALLSIGN=", &Settings::callsign},
    Key {u"SCRATCH_PAD=", &Settings::scratchPad},
    Key {u"HOME_DEC_LAT=", &Settings::homeLatitude},
    Key {u"HOME_DEC_LON=", &Settings::homeLongitude},
    Key {u"RDSDX_LOG=", &Settings::rdsdxDirectory},
    Key {u"RDSSPY_LOGS=", &Settings::rdsSpyDirectory},
    Key {u"OMID=", &Settings::omid},
    Key {u"EMAIL=", &Settings::email},
    Key {u"LOGBOOK_FILENAME=", &Settings::logbookFileName},
    Key {u"AS_MILES=", &Settings::asMiles},
    Key {u"TIME_OFFSET=", &Settings::timeOffset},
};

constexpr std::array addresses {
    Key {u"FMLIST_URL=", &Settings::fmlistUrl},
    Key {u"SEARCH_URL=", &Settings::searchUrl},
    Key {u"CALLSIGN_URL=", &Settings::callsignUrl},
    Key {u"HELP_URL=", &Settings::helpUrl},
    Key {u"PROPAGATION_URL=", &Settings::propagationUrl},
};

QString withoutSlash(QString url)
{
    if (url.endsWith(u'/')) {
        url.chop(1);
    }
    return url;
}

void readLine(const QString &line, Settings &settings)
{
    for (const Key &key : keys) {
        if (!line.contains(key.name)) {
            continue;
        }
        QString value = line.last(line.size() - key.name.size());
        if (key.member == &Settings::scratchPad) {
            value = unfoldedLineBreaks(value);
        }
        if (key.member == &Settings::callsign) {
            settings.titleCallsign = value;
        }
        settings.*key.member = value;
    }
    for (const Key &key : addresses) {
        if (line.startsWith(key.name)) {
            settings.*key.member = line.sliced(key.name.size());
        }
    }
}

// The length of an item in quotes at the start of `text`, quotes and blanks after them included; -1 when no
// such item ends at a comma or at the end.
qsizetype quotedLength(QStringView text)
{
    if (!text.startsWith(u'"')) {
        return -1;
    }
    qsizetype end = text.indexOf(u'"', 1);
    if (end < 0) {
        return -1;
    }
    ++end;
    while (end < text.size() && text[end] == u' ') {
        ++end;
    }
    return end == text.size() || text[end] == u',' ? end : -1;
}

void appendItems(QStringList &items, QStringView line)
{
    for (;;) {
        while (line.startsWith(u' ')) {
            line = line.sliced(1);
        }
        const qsizetype quoted = quotedLength(line);
        const qsizetype comma = quoted >= 0 ? (quoted < line.size() ? quoted : -1) : line.indexOf(u',');
        items += quoted >= 0 ? line.sliced(1, line.indexOf(u'"', 1) - 1).toString()
                             : (comma < 0 ? line : line.first(comma)).toString();
        if (comma < 0) {
            return;
        }
        line = line.sliced(comma + 1);
    }
}

} // namespace

bool Settings::inMiles() const
{
    return asMiles == u"TRUE";
}

void setDefaults(Settings &settings)
{
    settings.callsign = u"NOCALL"_s;
    settings.titleCallsign.reset();
    settings.lastRouteMap = u"<NONE>"_s;
    settings.mapDirectory = u"C:\\Program Files\\Peak Systems\\UI-View32\\MAPS"_s;
    settings.homeLatitude = u"0"_s;
    settings.homeLongitude = u"0"_s;
    settings.asMiles = u"TRUE"_s;
    settings.logbookFileName = u"RDSLog.log"_s;
    settings.rdsdxDirectory = u"C:\\RDSDX\\Loggings"_s;
    settings.rdsSpyDirectory = u"C:\\RDSSpy"_s;
    settings.timeOffset = u"0"_s;
    settings.fmlistUrl = u"https://www.fmlist.org"_s;
    settings.searchUrl = u"https://www.google.com/search?q="_s;
    settings.callsignUrl = u"https://www.qrz.com/detail/$CALLSIGN"_s;
    settings.helpUrl.clear();
    settings.propagationUrl = u"https://www.swpc.noaa.gov"_s;
}

void readSettings(QStringView text, Settings &settings)
{
    const QList<QStringView> lines = splitLines(text);
    for (const QStringView line : lines) {
        readLine(line.toString().replace(u'|', u','), settings);
    }
    settings.fmlistUrl = withoutSlash(settings.fmlistUrl);
}

QStringList configItems(QStringView text)
{
    QStringList items;
    const QList<QStringView> lines = splitLines(text);
    for (const QStringView line : lines) {
        appendItems(items, line);
    }
    return items;
}

QStringList changedItems(QStringList items, const QString &key, QString value, bool upCase)
{
    value.replace(u',', u'|');
    const QString line = key + (upCase ? value.toUpper() : value);
    bool found = false;
    for (QString &item : items) {
        if (item.contains(key)) {
            item = line;
            found = true;
        }
    }
    if (!found) {
        items += line;
    }
    return items;
}

Config::Config(QString applicationDir, CodePage codePage, FileCalls &calls)
    : m_applicationDir(std::move(applicationDir))
    , m_codePage(codePage)
    , m_calls(calls)
{
    setDefaults(m_settings);
}

QString Config::path(const QString &name) const
{
    return resolveFile(m_applicationDir, name);
}

QString Config::iniPath() const
{
    return path(u"LOGBOOK.INI"_s);
}

bool Config::exists() const
{
    return findFile(m_applicationDir, u"LOGBOOK.INI"_s).has_value();
}

void Config::createDefaultConfig()
{
    writeFile(iniPath(), "LOG_BOOK_CALLSIGN=NOCALL\r\n", m_calls);
}

void Config::readConfig()
{
    const QString ini = iniPath();
    setDefaults(m_settings);
    readSettings(m_codePage.decode(readFile(ini)), m_settings);
    removeLeftover(ini, m_calls);
    if (m_whenRead) {
        m_whenRead();
    }
}

void Config::changeConfig(const QString &key, const QString &value, bool upCase)
{
    const QString ini = iniPath();
    const QStringList items = changedItems(configItems(m_codePage.decode(readFile(ini))), key, value, upCase);
    QByteArray bytes;
    for (const QString &item : items) {
        m_codePage.appendEncoded(bytes, item);
        bytes += "\r\n";
    }
    try {
        m_beforeWriting();
        writeFile(ini, bytes, m_calls);
    } catch (const RuntimeError &) {
        // The last step can fail when the new file already stands in its place.
        if (fileHolds(ini, bytes)) {
            readConfig();
        }
        throw;
    }
    // An older version of the program may have left its temporary copy.
    if (const auto temporary = findFile(m_applicationDir, u"logbook.tmp"_s)) {
        m_calls.remove(QFile::encodeName(*temporary));
    }
    readConfig();
}

void Config::setMAP_DIR(const QString & /*newMapDir*/)
{
    // Deliberately nothing: the map directory is not a setting any more.
}

void Config::setLAST_ROUTE_MAP(const QString &newMap)
{
    m_settings.lastRouteMap = newMap;
}

} // namespace quillon
