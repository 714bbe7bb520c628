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

/// The results of the searches, three lists of which a tab shows one: the earlier receptions of the log, the
/// stations that FMList knows, and those that the reception in the form probably was.
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
    /// As they were set.
    [[nodiscard]] const QList<SearchResult> &stations() const { return m_stations; }
    /// The station of a line, as it is taken over. Throws "Subscript out of range".
    [[nodiscard]] SearchResult station(int line) const;

    /// Shows the list of candidates; tells whether it is shown.
    void showCandidates();
    [[nodiscard]] bool candidatesShown() const;
    /// Fills it, one line a candidate; nothing changes when these lines are there already.
    void setCandidates(const QStringList &lines, const QString &textWhenEmpty);

Q_SIGNALS:
    /// The list of candidates has come to the front.
    void candidatesWanted();
    /// The user double-clicked a candidate, or pressed Enter on it: its number among the lines as they were
    /// set.
    void candidateActivated(int candidate);
    /// The user double-clicked a line, or pressed Enter on it.
    void receptionActivated(int line);
    void stationActivated(int line);

private:
    enum Tab { Receptions, Stations, Candidates };

    void showTab(int tab);

    std::unique_ptr<Ui::Results> m_ui;
    QStringList m_candidates;
    QList<SearchResult> m_stations; ///< as FMList named them
};

} // namespace quillon
