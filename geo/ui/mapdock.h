#pragma once

#include "platform/filecalls.h"
#include "stats/mapdata.h"

#include <QDockWidget>
#include <QList>

#include <optional>

class QLabel;
class QToolButton;

namespace quillon {

class MapView;
struct MapPath;

/// The dock `mapDock`: the map with its buttons, and below it what has no place on it.
class MapDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit MapDock(QWidget *parent = nullptr, FileCalls &calls = FileCalls::real());

    /// Shows this data; costs nothing to see while the dock is hidden, where the latest is kept.
    void setData(MapData newData);
    /// Shows the path to the chosen reception, or none.
    void setPath(std::optional<MapPath> path);
    [[nodiscard]] MapView &map() { return *m_map; }

Q_SIGNALS:
    /// A dot was clicked: the latest of its receptions, by number in the log.
    void receptionChosen(qint32 entry);
    /// A dot was clicked with Ctrl: the log is to show this site.
    void siteChosen(const QString &name, const QString &country);
    /// The link to the setup was clicked.
    void setupWanted();
    /// The link below the map was clicked: the log is to show these entries, which have no place on the map.
    void unplacedWanted(const QList<qint32> &entries);
    /// A picture of the map was written to this file.
    void pictureSaved(const QString &path);

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QToolButton *addButton(const QString &name, const QString &text, const QString &tip);
    void addButtons();
    void updateNote();
    void save();
    void copy();

    FileCalls &m_calls;
    MapView *m_map;
    QWidget *m_buttons;
    QLabel *m_note;
    std::optional<MapData> m_waiting; ///< data that came while the dock was hidden
};

} // namespace quillon
