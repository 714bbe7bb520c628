#pragma once

#include "import/ui/importrdsspy.h"
#include "import/ui/rdsdxlist.h"
#include "support/mainwindow.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

namespace quillon::test {

inline const QByteArray oldEntry =
    "D3C3|12/06/2010 18:22:05|Tropo|100.5|Bilbao|E||RNE_1|10|812.4|fml=sent#|4711|\r\n";

/// A main window that knows both folders of the outside programs.
class ImportingWindow : public MainWindow
{
public:
    explicit ImportingWindow(const QByteArray &settings = {})
    {
        directory.write(QStringLiteral("LOGBOOK.INI"),
            "RDSSPY_LOGS=" + directory.file(QStringLiteral("spy")).toLocal8Bit()
                + "\r\nRDSDX_LOG=" + directory.file(QStringLiteral("dx")).toLocal8Bit() + "\r\n" + settings);
    }
    void spy(const QString &name) { directory.write(QStringLiteral("spy/") + name, {}); }
    /// Opens the RDS Spy import on that day.
    importRDSSpy *openSpy(const QString &day)
    {
        settle();
        answers.type(day);
        trigger("menuImportRDSSpyLog");
        return find<importRDSSpy>("importRDSSpy");
    }
    rdsdxlist *openDx()
    {
        settle();
        trigger("menuImportRDSDXLogCnv");
        return find<rdsdxlist>("rdsdxlist");
    }
    /// Drops files on a window, as a file manager does.
    static void drop(QWidget &window, const QStringList &paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : paths) {
            urls += QUrl::fromLocalFile(path);
        }
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &drop);
    }
    /// Imports all receptions of a file by the window for files.
    void importFileAt(const QString &path)
    {
        settle();
        trigger("menuImportFile");
        auto *dialog = find<QWidget>("importFile");
        drop(*dialog, {path});
        press(dialog, QStringLiteral("importGo"));
    }
    /// Chooses the newest file of RDSDX, and no search afterwards.
    void importDx()
    {
        answers.press(QMessageBox::Yes);
        answers.press(QMessageBox::Ok);
        answers.press(QMessageBox::No);
        press(openDx(), QStringLiteral("OKButton"));
    }
    /// What was closed is gone.
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    static void press(const QWidget *dialog, const QString &button)
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
    }
};

} // namespace quillon::test
