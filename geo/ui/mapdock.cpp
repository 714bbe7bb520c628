#include "geo/ui/mapdock.h"

#include "geo/ui/mappicturedialog.h"
#include "geo/ui/mapview.h"
#include "ui/guard.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

QString counted(qsizetype count, const QString &one, const QString &many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

} // namespace

MapDock::MapDock(QWidget *parent, FileCalls &calls)
    : QDockWidget(u"Map"_s, parent)
    , m_calls(calls)
    , m_map(new MapView)
    , m_buttons(new QWidget)
    , m_note(new QLabel)
{
    setObjectName(u"mapDock"_s);
    m_note->setObjectName(u"mapNote"_s);
    m_note->setAccessibleName(u"What is not on the map"_s);
    m_note->setWordWrap(true);
    m_note->setMargin(2);
    m_note->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    auto *content = new QWidget(this);
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(4, 4, 4, 4);
    rows->setSpacing(4);
    rows->addWidget(m_buttons);
    rows->addWidget(m_map, 1);
    rows->addWidget(m_note);
    setWidget(content);
    addButtons();
    updateNote();
    connect(m_map, &MapView::receptionChosen, this, &MapDock::receptionChosen);
    connect(m_map, &MapView::siteChosen, this, &MapDock::siteChosen);
    connect(m_map, &MapView::setupWanted, this, &MapDock::setupWanted);
    connect(m_note, &QLabel::linkActivated, this, [this] {
        const auto &unplaced = m_map->scene().data().unplaced;
        Q_EMIT unplacedWanted(QList<qint32>(unplaced.begin(), unplaced.end()));
    });
}

QToolButton *MapDock::addButton(const QString &name, const QString &text, const QString &tip)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::TabFocus);
    m_buttons->layout()->addWidget(button);
    return button;
}

void MapDock::addButtons()
{
    auto *row = new QHBoxLayout(m_buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    QToolButton *in = addButton(u"mapZoomIn"_s, u"+"_s, u"Zoom in (+)"_s);
    in->setAccessibleName(u"Zoom in"_s);
    connect(in, &QToolButton::clicked, m_map, &MapView::zoomIn);
    QToolButton *out = addButton(u"mapZoomOut"_s, u"−"_s, u"Zoom out (-)"_s);
    out->setAccessibleName(u"Zoom out"_s);
    connect(out, &QToolButton::clicked, m_map, &MapView::zoomOut);
    QToolButton *all = addButton(u"mapShowAll"_s, u"All"_s, u"All receptions, home in the middle (Home)"_s);
    all->setAccessibleName(u"Show all receptions"_s);
    connect(all, &QToolButton::clicked, m_map, &MapView::showAll);
    QToolButton *clouds = addButton(u"mapClouds"_s, u"Es Clouds"_s,
        u"Where the Es clouds stood: how densely the middles of the paths lie, and the highest MUF of each hour"_s);
    clouds->setCheckable(true);
    connect(clouds, &QToolButton::toggled, m_map, &MapView::setClouds);
    row->addStretch();
    QToolButton *keep =
        addButton(u"mapSave"_s, u"Save Picture…"_s, u"Saves the map as a PNG or SVG of any size"_s);
    connect(keep, &QToolButton::clicked, this, [this] { guarded(this, [this] { save(); }); });
    QToolButton *copyButton =
        addButton(u"mapCopy"_s, u"Copy"_s, u"Copies the map to the clipboard as a picture"_s);
    connect(copyButton, &QToolButton::clicked, this, [this] { guarded(this, [this] { copy(); }); });
}

void MapDock::setData(MapData newData)
{
    if (!isVisible()) {
        m_waiting = std::move(newData);
        return;
    }
    m_waiting.reset();
    m_map->setData(std::move(newData));
    updateNote();
}

void MapDock::setPath(std::optional<MapPath> path)
{
    m_map->setPath(std::move(path));
}

void MapDock::showEvent(QShowEvent *event)
{
    if (m_waiting) {
        m_map->setData(*std::exchange(m_waiting, std::nullopt));
        updateNote();
    }
    QDockWidget::showEvent(event);
}

void MapDock::changeEvent(QEvent *event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        updateNote();
    }
}

void MapDock::updateNote()
{
    const MapData &shown = m_map->scene().data();
    const auto entries = static_cast<qsizetype>(shown.unplaced.size());
    QString words = u"Not on the map: "_s + counted(entries, u"reception"_s, u"receptions"_s);
    if (shown.sitesWithoutPlace > 0) {
        words +=
            u", "_s + counted(shown.sitesWithoutPlace, u"site"_s, u"sites"_s) + u" without coordinates"_s;
    }
    m_note->setText(
        entries == 0 ? QString() : words + u". "_s + MapStyle::of(palette()).linked(u"Show in the log"_s));
    m_note->setVisible(entries > 0);
}

void MapDock::save()
{
    const QSize size = (QSizeF(m_map->size()) * m_map->devicePixelRatioF()).toSize();
    const QString path = saveMapPicture(this, m_map->picture(), size, m_calls);
    if (!path.isEmpty()) {
        Q_EMIT pictureSaved(path);
    }
}

void MapDock::copy()
{
    m_map->copyPicture((QSizeF(m_map->size()) * m_map->devicePixelRatioF()).toSize());
}

} // namespace quillon
