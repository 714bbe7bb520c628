#include "export/webpages.h"

#include "export/kmlfiles.h"
#include "export/pagefile.h"
#include "export/webrows.h"
#include "export/webtemplate.h"
#include "platform/files.h"
#include "platform/runtimeerror.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/stat.h>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// The folder of the pages, whatever the case of its name; created when there is none.
QString pageDirectory(const QString &applicationDir)
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
    if (::mkdir(QFile::encodeName(path).constData(), everybody) < 0) {
        const QString doing = u"Creating the directory "_s + path;
        throw errno == ENOENT ? RuntimeError(ErrorName::PathNotFound, doing) : systemError(errno, doing);
    }
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
        , m_pages(pageDirectory(applicationDir))
        , m_pageFiles(m_pages)
        , m_dates(site.grid, regional)
        , m_heard(site.log, site.transmitters, regional)
    {
    }

    // Of an export that was killed. Files that do not change, and months that are gone, are not written
    // again.
    void removeLeftovers() const { quillon::removeLeftovers(m_pages, u"quillon"_s); }

    QString writeIndexPage()
    {
        const QString viewer = u"quillon_mapview.htm"_s;
        writePageFile(m_pageFiles.resolve(viewer), suppliedFile(viewer), m_calls);

        const std::array placeholders {
            Placeholder {"$CALLSIGN"_ba, m_codePage.encode(m_site.callsign)},
            Placeholder {"$TOTAL"_ba, QByteArray::number(m_site.log.count())},
            Placeholder {"$VERSION"_ba, m_codePage.encode(m_site.version)},
            Placeholder {"$GENERATED"_ba, generalText(m_site.now).toLatin1()},
        };
        const QByteArray page = fillTemplate(suppliedFile(u"quillon_index.template"_s), placeholders,
            [this](QByteArray &out) { writeMonths(out); });
        QString path = m_pageFiles.resolve(u"quillon_logindex.htm"_s);
        writePageFile(path, page, m_calls);
        return path;
    }

    void writeFullKml() { writePageFile(m_pageFiles.resolve(u"quillon.kml"_s), m_heard.full(), m_calls); }

private:
    // What the files of a month hold, for its rows in the index.
    struct MonthFiles
    {
        MonthCounts counts;
        bool hasMap = false;
    };

    [[nodiscard]] QByteArray suppliedFile(const QString &name) const
    {
        return readFile(resolveFile(m_applicationDir, name));
    }

    void writeMonths(QByteArray &page)
    {
        std::optional<DateTime> current;
        for (int row = m_site.grid.rows() - 1; row >= 1; --row) {
            const DateTime moment = m_dates.at(row);
            if (!current) {
                current = moment;
            } else if (m_dates.monthKey(moment) != m_dates.monthKey(*current) || row == 1) {
                const MonthFiles &files = monthFiles(*current);
                appendTableRow(page, monthCells(*current, files.counts, files.hasMap, m_months), m_codePage);
                current = moment;
                if (m_progress) {
                    m_progress(m_site.grid.rows() - row, m_site.grid.rows() - 1);
                }
            }
        }
    }

    // The files of a month are the same each time it is met, so they are written the first time only.
    const MonthFiles &monthFiles(DateTime month)
    {
        const int key = m_dates.monthKey(month);
        const auto known = m_written.constFind(key);
        if (known != m_written.cend()) {
            return known.value();
        }
        const QString name = monthFileName(month, m_months);
        MonthFiles files;
        files.counts = writeMonthPage(m_pageFiles.resolve(name + u".htm"_s), month);
        files.hasMap = writeMonthlyKml(m_pageFiles.resolve(name + u".kml"_s), m_heard, month, m_calls);
        return m_written.insert(key, files).value();
    }

    MonthCounts writeMonthPage(const QString &path, DateTime month)
    {
        if (!m_monthTemplate) {
            m_monthTemplate = suppliedFile(u"quillon_log.template"_s);
        }
        const std::array placeholders {
            Placeholder {"$MONTHYEAR"_ba, m_codePage.encode(formatted(month, u"mmm-yyyy", m_months))}};
        MonthCounts counts;
        const QByteArray page = fillTemplate(*m_monthTemplate, placeholders, [&](QByteArray &out) {
            for (const int row : m_dates.rowsOf(month)) {
                counts.count(m_site.grid.text(row, GridColumn::Prop));
                appendTableRow(
                    out, receptionCells(m_site.grid, row, m_dates.at(row), m_months, m_codePage), m_codePage);
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
    GridDates m_dates;
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
