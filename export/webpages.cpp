#include "export/webpages.h"

#include "export/kmlfiles.h"
#include "export/pagefile.h"
#include "export/webrows.h"
#include "export/webtemplate.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The folder of the pages, whatever the case of its name; created when there is none.
QString pageDirectory(const QString &applicationDir, FileCalls &calls)
{
    const QString name = u"html"_s;
    QString path = filePath(applicationDir, name);
    if (QFileInfo(path).isDir()) {
        return path;
    }
    const QStringList folders = QDir(applicationDir).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    const auto other = std::ranges::find_if(
        folders, [&](const QString &folder) { return folder.compare(name, Qt::CaseInsensitive) == 0; });
    if (other != folders.end()) {
        return filePath(applicationDir, *other);
    }
    constexpr mode_t everybody = 0777;
    if (calls.makeDirectory(QFile::encodeName(path), everybody) < 0) {
        const QString doing = u"Creating the directory "_s + path;
        throw errno == ENOENT ? RuntimeError(ErrorName::PathNotFound, doing) : systemError(errno, doing);
    }
    syncFolder(QFile::encodeName(applicationDir), calls, u"Creating the directory "_s + path);
    return path;
}

// One run of the export.
class SiteWriter
{
public:
    SiteWriter(const QString &applicationDir, const WebSite &site, const Regional &regional, FileCalls &calls,
        const WebPagesProgress &progress)
        : m_applicationDir(applicationDir)
        , m_site(site)
        , m_codePage(regional.codePage)
        , m_months(exportMonths(regional))
        , m_calls(calls)
        , m_progress(progress)
        , m_pages(pageDirectory(applicationDir, calls))
        , m_pageFiles(m_pages)
        , m_rows(site.rows, regional)
        , m_heard(site.rows.log(), site.transmitters, regional)
    {
    }

    // Of an export that was killed. Files that do not change, and months that are gone, are not written
    // again.
    void removeLeftovers() const { quillon::removeLeftovers(m_pages, u"quillon"_s, m_calls); }

    QString writeIndexPage()
    {
        const QString viewer = u"quillon_mapview.htm"_s;
        writePageFile(m_pageFiles.resolve(viewer), suppliedFile(viewer), m_calls);

        const std::array placeholders {
            Placeholder {"$CALLSIGN"_ba, m_codePage.encode(m_site.callsign)},
            Placeholder {"$TOTAL"_ba, QByteArray::number(m_site.rows.log().count())},
            Placeholder {"$VERSION"_ba, m_codePage.encode(m_site.version)},
            Placeholder {"$GENERATED"_ba, generalText(m_site.now).toLatin1()},
        };
        const QByteArray page = fillTemplate(suppliedFile(u"quillon_index.template"_s), placeholders,
            [this](QByteArray &out) { writeMonths(out); });
        QString path = m_pageFiles.resolve(u"quillon_logindex.htm"_s);
        writePageFile(path, page, m_calls);
        return path;
    }

    void writeFullKml() { writeMapFiles(mapFiles(u"quillon"_s), m_heard.full(), m_calls); }

private:
    // What the files of a month hold, for its rows in the index.
    struct MonthFiles
    {
        ModeCounts counts;
        bool hasMap = false;
    };

    [[nodiscard]] QByteArray suppliedFile(const QString &name) const
    {
        return readFile(resolveFile(m_applicationDir, name));
    }

    [[nodiscard]] MapFiles mapFiles(const QString &name) const
    {
        return {m_pageFiles.resolve(name + u".kml"_s), m_pageFiles.resolve(name + u".kml.js"_s)};
    }

    void writeMonths(QByteArray &page)
    {
        std::optional<DateTime> current;
        for (int row = m_rows.count(); row >= 1; --row) {
            const DateTime moment = m_rows.at(row);
            if (!current) {
                current = moment;
            } else if (m_rows.monthKey(moment) != m_rows.monthKey(*current) || row == 1) {
                const MonthFiles &files = monthFiles(*current);
                appendTableRow(page, monthCells(*current, files.counts, files.hasMap, m_months), m_codePage);
                current = moment;
                if (m_progress) {
                    m_progress(m_rows.count() + 1 - row, m_rows.count());
                }
            }
        }
    }

    // The files of a month are the same each time it is met, so they are written the first time only.
    const MonthFiles &monthFiles(DateTime month)
    {
        const int key = m_rows.monthKey(month);
        const auto known = m_written.constFind(key);
        if (known != m_written.cend()) {
            return known.value();
        }
        const QString name = monthFileName(month, m_months);
        MonthFiles files;
        files.counts = writeMonthPage(m_pageFiles.resolve(name + u".htm"_s), month);
        files.hasMap = writeMonthlyKml(mapFiles(name), m_heard, month, m_calls);
        return m_written.insert(key, files).value();
    }

    ModeCounts writeMonthPage(const QString &path, DateTime month)
    {
        if (!m_monthTemplate) {
            m_monthTemplate = suppliedFile(u"quillon_log.template"_s);
        }
        const std::array placeholders {
            Placeholder {"$MONTHYEAR"_ba, m_codePage.encode(formatted(month, u"mmm-yyyy", m_months))}};
        ModeCounts counts;
        const QByteArray page = fillTemplate(*m_monthTemplate, placeholders, [&](QByteArray &out) {
            for (const int row : m_rows.rowsOf(month)) {
                counts.count(m_rows.text(row, GridColumn::Prop));
                appendTableRow(
                    out, receptionCells(m_rows, row, m_rows.at(row), m_months, m_codePage), m_codePage);
            }
        });
        writePageFile(path, page, m_calls);
        return counts;
    }

    QString m_applicationDir;
    const WebSite &m_site;
    CodePage m_codePage;
    MonthNames m_months;
    FileCalls &m_calls;
    const WebPagesProgress &m_progress;
    QString m_pages;
    FileIndex m_pageFiles;
    ExportRows m_rows;
    HeardKml m_heard;
    std::optional<QByteArray> m_monthTemplate;
    QHash<int, MonthFiles> m_written;
};

} // namespace

QString exportWebPages(const QString &applicationDir, const WebSite &site, const Regional &regional,
    FileCalls &calls, const WebPagesProgress &progress)
{
    SiteWriter writer(applicationDir, site, regional, calls, progress);
    writer.removeLeftovers();
    QString index = writer.writeIndexPage();
    writer.writeFullKml();
    return index;
}

} // namespace quillon
