#include "core/ui/form1.h"

#include "core/ui/results.h"
#include "fmlist/weblinks.h"
#include "geo/position.h"
#include "geo/ui/mapdock.h"
#include "geo/ui/mapscene.h"
#include "live/frequency.h"
#include "live/ui/receiverdock.h"
#include "ui/desktop.h"
#include "ui/guard.h"
#include "ui/resultlist.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

// What a line of an earlier reception says of its station.
SearchResult stationOf(const QString &line)
{
    const auto cell = [&line](int column) { return line.section(u'\t', column, column); };
    SearchResult station;
    station.pi = cell(0);
    station.frequency = cell(3);
    station.transmitter = cell(4);
    station.ps = cell(6);
    return station;
}

} // namespace

void Form1::wireResultsMenu()
{
    for (const QString &name : {u"List1"_s, u"List2"_s}) {
        auto *list = m_results->findChild<ResultList *>(name);
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(list, &QWidget::customContextMenuRequested, this,
            [this, list](const QPoint &position) { showResultsMenu(*list, position); });
    }
}

// The menu of a line of the results.
void Form1::showResultsMenu(ResultList &list, const QPoint &position)
{
    const QModelIndex cell = list.indexAt(position);
    if (!cell.isValid()) {
        return;
    }
    const int line = cell.row();
    const bool isReception = list.objectName() == "List1"_L1;
    const SearchResult station = isReception ? stationOf(list.text(line)) : m_results->station(line);
    QMenu menu(this);
    menu.setObjectName(u"resultsMenu"_s);
    const auto add = [&](const QString &caption, const std::function<void()> &work) {
        return menu.addAction(caption, this, [this, work] { guarded(this, work); });
    };
    if (isReception) {
        add(u"Show in the &Log"_s, [this, line] { List1_DblClick(line); });
    } else {
        add(u"&Take Over"_s, [this, line] { List2_DblClick(line); });
    }
    add(u"&Copy"_s, [text = list.text(line)] { QGuiApplication::clipboard()->setText(text + u'\n'); });
    menu.addSeparator();
    add(u"Search &PI DB"_s, [this, station] {
        searchPiDb(LogSearch::PiCodeContains, station.pi);
    })->setEnabled(!station.pi.isEmpty());
    add(u"&Google"_s, [this, station] {
        HyperJump(webSearchUrl(
            m_config.settings().searchUrl, station.pi, station.frequency, station.ps, station.transmitter));
    });
    menu.addSeparator();
    const auto place = positionFrom(station.latitude, station.longitude);
    add(u"Show on the &Map"_s, [this, isReception, line, station, place] {
        if (isReception) {
            List1_DblClick(line);
        }
        showOnMap();
        if (place) {
            m_map->setPath(MapPath {station.transmitter, *place});
        }
    })->setEnabled(isReception || place.has_value());
    if (m_receiver && m_receiver->mayTune()) {
        const auto hertz = hertzOf(station.frequency);
        add(u"&Tune"_s, [this, hertz] {
            m_receiver->tune(hertz.value_or(0));
        })->setEnabled(hertz.has_value());
    }
    menu.exec(list.viewport()->mapToGlobal(position));
}

} // namespace quillon
