#include "tour/stops.h"

#include <QAbstractItemView>
#include <QTest>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

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
    return {{u"the RDS Spy import"_s, showRdsSpy}, {u"the RDSDX import"_s, showRdsdx}};
}

} // namespace quillon::tour
