#pragma once

#include "import/csv.h"
#include "import/importformat.h"
#include "import/importrow.h"
#include "import/localtime.h"
#include "platform/regional.h"

#include <QTimeZone>

#include <optional>

namespace quillon {

/// What an import goes by beside the files.
struct ImportSurroundings
{
    Regional regional;
    QTimeZone zone; ///< of times that are not UTC
    bool miles = false; ///< the log has its distances in miles
};

/// Makes receptions of the rows of a file with columns.
class ReceptionMaker
{
public:
    ReceptionMaker(const ImportFormat &format, const ImportSurroundings &surroundings);

    /// The reception of a row, or why there is none. Nothing for rows that are none and need not be: those of
    /// URDS that are no receptions.
    [[nodiscard]] std::optional<ImportRow> made(const CsvRow &row);

private:
    struct Parts;

    void take(const CsvRow &row, ImportRow &made, Parts &parts);
    void takeCell(const ImportColumn &column, const QString &cell, ImportRow &made, Parts &parts);
    [[nodiscard]] QString takeMoment(const Parts &parts, ImportRow &made);
    void takeFrequency(const QString &text, ImportRow &made, Parts &parts) const;
    static void addNote(const QString &name, const QString &text, Parts &parts);
    void takePi(const QString &text, ImportRow &made, Parts &parts) const;
    void takeName(const QString &column, const QString &text, ImportRow &made, Parts &parts) const;
    [[nodiscard]] QString number(const QString &cell, double factor, int places) const;

    const ImportFormat &m_format;
    const ImportSurroundings &m_surroundings;
    LocalTime m_localTime;
};

} // namespace quillon
