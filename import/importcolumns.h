#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace quillon {

/// What becomes of a column of a file.
enum class ColumnUse {
    Notes, ///< goes to Notes as "name: value"
    Nothing, ///< is left out
    DateTime, ///< day and time of day in one
    Date,
    Time,
    Epoch, ///< seconds since 1970
    UtcOffset, ///< by how much the time is ahead of UTC
    Freq, ///< MHz, kHz or Hz, told apart by their size
    PiCode,
    Name, ///< the first eight characters are the RDS name
    Country,
    Transmitter,
    Power, ///< kW
    PowerWatts,
    Dist, ///< km
    Prop,
    NotesText, ///< Notes itself
    Details, ///< goes to Notes, and a PI code in it is taken
    FMList,
    Uid,
};

/// All of them, in the order in which they are offered.
inline constexpr std::array<ColumnUse, 20> columnUses {ColumnUse::Notes, ColumnUse::Nothing,
    ColumnUse::DateTime, ColumnUse::Date, ColumnUse::Time, ColumnUse::Epoch, ColumnUse::UtcOffset,
    ColumnUse::Freq, ColumnUse::PiCode, ColumnUse::Name, ColumnUse::Country, ColumnUse::Transmitter,
    ColumnUse::Power, ColumnUse::PowerWatts, ColumnUse::Dist, ColumnUse::Prop, ColumnUse::NotesText,
    ColumnUse::Details, ColumnUse::FMList, ColumnUse::Uid};

/// What the listener reads for it: "Frequency", "To Notes, with its name" ...
[[nodiscard]] QString columnUseCaption(ColumnUse use);
/// What it is kept as: "freq", "notes" ... And back; nothing for a word that is none.
[[nodiscard]] QString columnUseKey(ColumnUse use);
[[nodiscard]] std::optional<ColumnUse> columnUseOfKey(QStringView key);

/// A column of a file.
struct ImportColumn
{
    QString name; ///< as its heading has it
    ColumnUse use = ColumnUse::Notes;

    bool operator==(const ImportColumn &) const = default;
};

/// What a column of this heading most likely is, by the words that logs use. Watts where the heading says so.
[[nodiscard]] ColumnUse guessedUse(QStringView heading);

/// The columns of a heading, each guessed. Of several that would be the same field the first is it, the
/// others go to Notes.
[[nodiscard]] std::vector<ImportColumn> guessedColumns(std::span<const QString> heading);

/// Why receptions cannot be made of such columns: no moment, no frequency, neither PI code nor name. Empty
/// when they can.
[[nodiscard]] QString missingColumns(std::span<const ImportColumn> columns);

} // namespace quillon
