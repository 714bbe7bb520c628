#include "live/ui/heardmodel.h"
#include "tour/stops.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>

namespace quillon::tour {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize wide(1280, 720);
constexpr int patience = 30'000;

// A station that is certain and has its name.
bool isHeard(const Walk &walk)
{
    const QString code = walk.control<QLineEdit>(u"receiverPi"_s).text();
    const QString name = walk.control<QLineEdit>(u"receiverPs"_s).text();
    return code.size() == 4 && !name.isEmpty() && !name.contains(u'?');
}

void waitForRows(const Walk &walk, int rows)
{
    const auto &heard = walk.control<QAbstractItemView>(u"heard"_s);
    const auto hasName = [&heard] {
        const QAbstractItemModel &model = *heard.model();
        return !model.index(model.rowCount() - 1, HeardModel::Ps).data().toString().isEmpty();
    };
    const bool came = QTest::qWaitFor(
        [&] { return heard.model()->rowCount() >= rows && hasName() && isHeard(walk); }, patience);
    if (!came) {
        Walk::fail(u"the receiver hears nothing"_s);
    }
}

void showReceiver(Walk &walk)
{
    const QSize usual = walk.mainWindow().size();
    walk.key(Qt::Key_F8);
    // The screen of the tour is smaller than its windows.
    QTest::qWait(0);
    walk.control<QDockWidget>(u"receiverDock"_s).setFloating(false);
    walk.control<QComboBox>(u"receiverSource"_s).setCurrentText(u"xdrd"_s);
    walk.type(u"receiverAddress"_s, walk.receiver());
    walk.click(u"receiverConnect"_s);
    for (const int rows : {1, 3}) {
        waitForRows(walk, rows);
        walk.key(Qt::Key_F6);
    }
    waitForRows(walk, 6);
    walk.mainWindow().resize(wide);
    static_cast<QMainWindow &>(walk.mainWindow())
        .resizeDocks({&walk.control<QDockWidget>(u"receiverDock"_s)}, {400}, Qt::Horizontal);
    walk.picture(u"receiver"_s, walk.mainWindow(), wide);
    walk.click(u"receiverConnect"_s);
    walk.key(Qt::Key_F8);
    walk.mainWindow().resize(usual);
}

} // namespace

QList<Stop> receiverStops()
{
    return {{u"the receiver while an opening is heard"_s, showReceiver}};
}

} // namespace quillon::tour
