#pragma once

#include "fmlist/search.h"
#include "geo/leg.h"

#include <QGroupBox>

#include <memory>
#include <optional>

namespace quillon {

namespace Ui {
class Results;
}

class ResultList;

/// The results of the searches, two lists of which one is shown: the earlier receptions of the log, and the
/// stations that FMList knows.
class Results : public QGroupBox
{
    Q_OBJECT

public:
    explicit Results(QWidget *parent = nullptr);
    ~Results() override;

    [[nodiscard]] QList<QWidget *> tabStops() const;

    /// Shows the list of receptions and what it says while it is empty; and fills it.
    void showReceptions();
    void setReceptions(const QStringList &lines, const QString &textWhenEmpty);
    /// The date and time of a line, as the line shows it.
    [[nodiscard]] QString dateTimeOf(int line) const;

    /// Shows the list of stations; empties it; fills it.
    void showStations();
    void clearStations();
    void setStations(const QList<SearchResult> &stations, const QString &textWhenEmpty, qsizetype chosen);
    /// Tells the way to each of the present stations beside it, and marks one. Chooses none.
    void setLegs(
        const QList<std::optional<Leg>> &legs, DistanceUnit unit, std::optional<qsizetype> nearestPlausible);
    void chooseStation(int line);
    /// The station of a line, as it is taken over. Throws "Subscript out of range".
    [[nodiscard]] SearchResult station(int line) const;

Q_SIGNALS:
    /// The user double-clicked a line, or pressed Enter on it.
    void receptionActivated(int line);
    void stationActivated(int line);

private:
    std::unique_ptr<Ui::Results> m_ui;
    QList<SearchResult> m_stations; ///< as FMList named them
};

} // namespace quillon
