#include "tour/stops.h"

#include "ui/resultlist.h"

#include <QTest>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

void showSearch(Walk &walk)
{
    walk.clickRow(u"12/07/2025 15:47:07"_s);
    walk.click(u"Command11"_s);
    if (walk.control<ResultList>(u"List2"_s).count() == 0) {
        Walk::fail(u"FMList answered with no station"_s);
    }
    walk.picture(u"fmlist-search"_s);
    walk.pictureOfBox(u"fmlist-update"_s, Qt::Key_Escape);
    auto &list = walk.control<ResultList>(u"List2"_s);
    const QPoint first = list.visualRect(list.model()->index(0, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, first);
}

void showAutomaticSearch(Walk &walk)
{
    walk.answers().doing([&walk](QWidget *box) {
        QTest::keyClick(box->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box->focusWidget(), u"12/07/2025"_s);
        walk.picture(u"auto-search-day"_s, *box);
        QTest::keyClick(box, Qt::Key_Return);
    });
    walk.pictureOfBox(u"auto-search-question"_s, Qt::Key_Escape);
    walk.answers().press(QMessageBox::Ok);
    walk.menu(u"menuFMListAutoSearch"_s);
}

} // namespace

QList<Stop> fmlistStops()
{
    return {{u"a search of FMList"_s, showSearch},
        {u"the questions of the automatic search"_s, showAutomaticSearch}};
}

} // namespace quillon::tour
