#pragma once

#include "export/webpages.h"
#include "exportdata.h"
#include "support/testfiles.h"

#include <QDir>
#include <QMap>

namespace quillon::test {

inline const QByteArray indexTemplate = "<h1>$CALLSIGN</h1><p>$TOTAL $VERSION $GENERATED</p>\r\n<table>\r\n"
                                        "$RAWDATA\r\n</table>\r\n";
inline const QByteArray monthTemplate = "<h1>$MONTHYEAR</h1>\r\n<table>\r\n$RAWDATA\r\n</table>\r\n";
inline const QByteArray viewerPage = "<script>map\x80</script>\n";

/// An application directory with templates, and all that a site is made from.
struct Site
{
    Site(const Logbook &siteLog, TransmitterList siteTransmitters, const QList<QStringList> &rows)
        : log(siteLog)
        , transmitters(std::move(siteTransmitters))
        , grid(siteLog, rows)
    {
        writeTemplates();
    }

    explicit Site(const Logbook &siteLog, TransmitterList siteTransmitters = sampleTransmitters())
        : log(siteLog)
        , transmitters(std::move(siteTransmitters))
        , grid(siteLog)
    {
        writeTemplates();
    }

    void writeTemplates() const
    {
        directory.write(u"quillon_index.template"_s, indexTemplate);
        directory.write(u"quillon_log.template"_s, monthTemplate);
        directory.write(u"quillon_mapview.htm"_s, viewerPage);
    }

    QString write(FileCalls &calls = FileCalls::real()) const
    {
        const WebSite site {
            grid.rows(), transmitters, u"DL1ABC"_s, u"V1.0.12"_s, at(u"01/02/2012 03:04:05"_s)};
        return exportWebPages(directory.path(), site, regional, calls);
    }

    [[nodiscard]] QByteArray page(const QString &name) const { return directory.read(u"html/"_s + name); }

    /// The files of the "html" folder, hidden ones too, and their bytes.
    [[nodiscard]] QMap<QString, QByteArray> pages() const
    {
        QMap<QString, QByteArray> all;
        const QStringList names =
            QDir(directory.file(u"html"_s)).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
        for (const QString &name : names) {
            all.insert(name, page(name));
        }
        return all;
    }

    [[nodiscard]] QStringList pageNames() const { return pages().keys(); }

    TestDirectory directory;
    Logbook log;
    TransmitterList transmitters;
    TableGrid grid;
    Regional regional = english();
};

} // namespace quillon::test
