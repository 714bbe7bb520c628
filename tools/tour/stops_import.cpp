#include "tour/stops.h"

#include "import/ui/importfile.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

// What a web server of a club has logged of the evening; some of it is in the log.
const QByteArray serverLog =
    "\"FM-DX server of the club\"\r\n\"Log of 12 July 2025\"\r\nTower\r\n\r\n"
    "date;time(utc);freq;pi;ps;name;city;itu;pol;erp;dist;az;id\r\n"
    "2025-07-12;16:41:10;103.500;E211;RNE_1;Radio Nacional;Sollube;E;h;40;1311;235;8115\r\n"
    "2025-07-12;16:50:40;103.200;E22A;LOS40;Los 40;Aitana;E;v;20;1402;221;8290\r\n"
    "2025-07-12;16:52:10;103.200;E22A;LOS40;Los 40;Aitana;E;v;20;1402;221;8290\r\n"
    "2025-07-12;16:58:32;98.000;E241;ONDACERO;Onda Cero;Tibidabo;E;v;10;1288;225;8044\r\n"
    "2025-07-12;17:01:00;;F201;FIP;FIP;Paris;F;h;10;;;\r\n"
    "2025-07-12;17:03:30;94.300;E213?;RNE_CLAS;Radio Cl\xC3\xA1sica;Montejunto;E;v;20;1502;231;8290\r\n"
    "2025-07-12;17:04:12;88.600;8215;COMERC;R\xC3\xA1"
    "dio Comercial;Lous\xC3\xA3;POR;h;40;1744;241;9021\r\n";

void showFileImport(Walk &walk)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"server/tower.csv"_s));
    if (!folder.isValid() || !QDir(folder.path()).mkpath(u"server"_s) || !file.open(QIODevice::WriteOnly)
        || file.write(serverLog) != serverLog.size()) {
        Walk::fail(u"the log of the web server cannot be written"_s);
    }
    file.close();
    walk.menu(u"menuImportFile"_s);
    auto &window = static_cast<importFile &>(walk.window(u"importFile"_s));
    window.show(QStringList {file.fileName()});
    QTest::qWait(0);
    walk.picture(u"import-file"_s, window, QSize(1000, 520));
    walk.click(u"importGo"_s, &window);
    walk.picture(u"import-file-report"_s, window, QSize(1000, 520));
    walk.click(u"importClose"_s, &window);
    walk.menu(u"menuEditUndo"_s);
}

void showRdsSpy(Walk &walk)
{
    walk.answers().doing([&walk](QWidget *box) {
        QTest::keyClick(box->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box->focusWidget(), u"13/07/2025"_s);
        walk.picture(u"rds-spy-day"_s, *box);
        QTest::keyClick(box, Qt::Key_Return);
    });
    walk.key(Qt::Key_I, Qt::ControlModifier);
    QWidget &window = walk.window(u"importRDSSpy"_s);
    auto &list = walk.control<QAbstractItemView>(u"List1"_s, &window);
    const QModelIndex third = list.model()->index(2, 0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(third).center());
    walk.click(u"Command6"_s, &window);
    walk.picture(u"rds-spy"_s, window);
    walk.click(u"Command4"_s, &window);
}

void showRdsdx(Walk &walk)
{
    walk.menu(u"menuImportRDSDXLogCnv"_s);
    QWidget &window = walk.window(u"rdsdxlist"_s);
    walk.picture(u"rdsdx"_s, window);
    walk.answers().press(QMessageBox::Yes);
    walk.pictureOfBox(u"rdsdx-imported"_s, Qt::Key_Return);
    walk.answers().press(QMessageBox::No);
    walk.click(u"OKButton"_s, &window);
    QTest::qWait(0);
    walk.picture(u"imported"_s);
}

} // namespace

QList<Stop> importStops()
{
    return {{u"receptions from a file"_s, showFileImport}, {u"the RDS Spy import"_s, showRdsSpy},
        {u"the RDSDX import"_s, showRdsdx}};
}

} // namespace quillon::tour
