#pragma once

#include "core/config.h"
#include "stats/charttable.h"
#include "stats/collection.h"
#include "stats/figuretable.h"

#include <memory>

namespace quillon {

/// What the tables of a collection are made of. All but the entries must outlive the tables.
struct CollectionSource
{
    const Logbook &log;
    const TransmitterList &sites;
    const Settings &settings;
    const Novelty &novelty;
    std::vector<qint32> entries; ///< as countedEntries gives them
};

/// A tab of the collection: its table, and its bar chart where it has one.
struct CollectionView
{
    FigureTable table;
    ChartTable chart;
};

/// What the columns of the countries that are in a group tell, in the order of the groups.
[[nodiscard]] QStringList countryGroups();

[[nodiscard]] CollectionView countriesView(const CollectionSource &source);
[[nodiscard]] CollectionView stationsView(const CollectionSource &source);
[[nodiscard]] CollectionView recordsView(const CollectionSource &source);
[[nodiscard]] CollectionView calendarView(
    const CollectionSource &source, const std::shared_ptr<const std::vector<YearFigures>> &years);
[[nodiscard]] CollectionView directionsView(
    const CollectionSource &source, const std::shared_ptr<const DirectionFigures> &figures);
[[nodiscard]] CollectionView openingsView(
    const CollectionSource &source, const std::shared_ptr<const std::vector<Opening>> &openings);

/// An opening as a text that can be posted: what it was, and its receptions line by line.
[[nodiscard]] QString openingReport(const CollectionSource &source, const Opening &opening);

// What the receptions of a place in a chart are.

/// A day of a year, from 0.
[[nodiscard]] DateTime dayOfYear(int year, int day);
[[nodiscard]] QString dayFilter(DateTime day);
/// The receptions of a direction, in one mode or in all of them.
[[nodiscard]] CellReceptions directionReceptions(
    const CollectionSource &source, std::size_t direction, std::size_t mode);

} // namespace quillon
