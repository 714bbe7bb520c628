#include "tour/stops.h"

#include "ui/resultlist.h"

#include <QProgressBar>
#include <QTabBar>
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

void showProbably(Walk &walk)
{
    walk.clickRow(u"12/07/2025 16:36:00"_s);
    walk.control<QTabBar>(u"resultTabs"_s).setCurrentIndex(2);
    if (walk.control<ResultList>(u"candidates"_s).count() == 0) {
        Walk::fail(u"no station fits"_s);
    }
    walk.picture(u"probably"_s);
}

constexpr QLatin1StringView openingDay("12/07/2025");

void showAutomaticSearch(Walk &walk)
{
    walk.answers().doing([&walk](QWidget *box) {
        QTest::keyClick(box->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box->focusWidget(), openingDay);
        walk.picture(u"auto-search-day"_s, *box);
        QTest::keyClick(box, Qt::Key_Return);
    });
    walk.pictureOfBox(u"auto-search-question"_s, Qt::Key_Escape);
    walk.answers().press(QMessageBox::Ok);
    walk.menu(u"menuFMListAutoSearch"_s);
}

// Each station that is found costs a pause of two seconds, so the picture is of one of the first requests.
void showRunningSearch(Walk &walk)
{
    constexpr int pictured = 5;
    constexpr int delay = 200;
    walk.delayService(delay);
    walk.answers().type(openingDay);
    walk.answers().press(QMessageBox::Yes);
    bool isSeen = false;
    const auto &progress = walk.control<QProgressBar>(u"progress"_s);
    walk.when([&progress] { return progress.isVisible() && progress.value() == pictured; },
        [&walk, &isSeen] {
            walk.picture(u"auto-search"_s);
            isSeen = true;
            walk.mainWindow().close();
        });
    walk.menu(u"menuFMListAutoSearch"_s);
    if (!isSeen || walk.mainWindow().isVisible()) {
        Walk::fail(u"the automatic search was over too early"_s);
    }
}

} // namespace

QList<Stop> lastStops()
{
    return {{u"the automatic search while it runs"_s, showRunningSearch}};
}

QList<Stop> fmlistStops()
{
    return {{u"what a reception probably was"_s, showProbably}, {u"a search of FMList"_s, showSearch},
        {u"the questions of the automatic search"_s, showAutomaticSearch}};
}

} // namespace quillon::tour
