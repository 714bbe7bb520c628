#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace quillon {

/// The frequency in steps of 10 kHz, the finest that the log writes: 9850 for 98.5 MHz.
[[nodiscard]] qint64 logStep(qint64 hertz);

/// MHz as the log writes it: with one decimal, with two where it needs two ("98.5", "98.55"). Empty for 0 and
/// less.
[[nodiscard]] QString megahertzText(qint64 hertz);

/// The frequency that a text in MHz tells, "." or "," as the decimal sign, to 1 Hz; nothing unless it is a
/// number from 0.1 to 10,000.
[[nodiscard]] std::optional<qint64> hertzOf(QStringView megahertz);

} // namespace quillon
