#include "core/ui/exportingwindow.h"

#include <QProgressBar>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// What the window shows while a file of the export is put in its place.
struct Shown
{
    QString file;
    bool isBusy = false;
    bool hasGrid = true;
    QString bar;

    bool operator==(const Shown &) const = default;
};

QList<Shown> watchedExport(ExportingWindow &window)
{
    QList<Shown> all;
    const auto *bar = window.find<QProgressBar>("progress");
    window.calls.beforeRename = [&](const QByteArray &to) {
        const QCursor *pointer = QGuiApplication::overrideCursor();
        all.append({QString::fromUtf8(to.sliced(to.lastIndexOf('/') + 1)),
            pointer && pointer->shape() == Qt::WaitCursor, window.grid().isVisible(),
            bar->isVisible() ? bar->text() : u"hidden"_s});
    };
    window.trigger("menuExportWebPage");
    window.calls.beforeRename = nullptr;
    return all;
}

} // namespace

class TestExportProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePointerTheGridAndTheBarShowThatPagesAreWritten()
    {
        ExportingWindow window;
        window.writeTemplates();
        const QList<Shown> shown = watchedExport(window);
        QStringList files;
        for (const Shown &one : shown) {
            files += one.file + u": "_s + one.bar;
            QVERIFY(one.isBusy);
            QVERIFY(!one.hasGrid);
        }
        QCOMPARE(files,
            (QStringList {u"quillon_mapview.htm: "_s, u"quillon_log_2010-Jul.htm: "_s,
                u"quillon_log_2010-Jul.kml: "_s, u"quillon_log_2010-Jul.kml.js: "_s,
                u"quillon_log_2010-Jun.htm: Exporting 3 of 4"_s, u"quillon_logindex.htm: Exporting 4 of 4"_s,
                u"quillon.kml: Exporting 4 of 4"_s, u"quillon.kml.js: Exporting 4 of 4"_s}));
        QVERIFY(window.isCalm());
        QVERIFY(!window.find<QProgressBar>("progress")->isVisible());
    }

    void theProgressBarIsHiddenAfterAFailure()
    {
        ExportingWindow window;
        window.writeTemplates();
        window.calls.failRename = ENOSPC;
        QCOMPARE(watchedExport(window).size(), 1);
        QVERIFY(window.failure().startsWith(u"Run-time error: Disk full\n"_s));
        QVERIFY(window.isCalm());
        QVERIFY(!window.find<QProgressBar>("progress")->isVisible());
    }

    void theProgressBarOfAnotherRunStays()
    {
        ExportingWindow window;
        window.writeTemplates();
        auto *bar = window.find<QProgressBar>("progress");
        bar->setFormat(u"Uploading %v of %m"_s);
        bar->setRange(0, 7);
        bar->setValue(4);
        bar->show();
        const QList<Shown> shown = watchedExport(window);
        QCOMPARE(shown.size(), 8);
        for (const Shown &one : shown) {
            QCOMPARE(one.bar, u"Uploading 4 of 7"_s);
        }
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->text(), u"Uploading 4 of 7"_s);
        QCOMPARE(window.opened.take(), QStringList {in(window, u"html/quillon_logindex.htm"_s)});
    }
};

QTEST_MAIN(TestExportProgress)
#include "tst_exportprogress.moc"
