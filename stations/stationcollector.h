#pragma once

#include "stations/station.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace quillon {

/// A line of a file that holds no station that can be kept.
struct RefusedLine
{
    qint64 line = 0; ///< from 1
    QString reason;

    bool operator==(const RefusedLine &) const = default;
};

/// A station as a file tells it: all texts.
struct StationTexts
{
    QString frequency; ///< MHz
    QString pi;
    QString regionalPi;
    QString names;
    QString programme;
    QString region;
    QString site;
    QString country;
    QString latitude;
    QString longitude;
    QString kilowatts;
    QString polarisation;
    QString inactive;
    QString id;
};

/// Gathers the stations of a file and becomes a `stations.lst`. What it holds is bounded, whatever comes.
class StationCollector
{
public:
    /// The most refused lines that are kept with their reasons, and bytes of stations.
    static constexpr std::size_t mostRefused = 1'000;
    static constexpr qsizetype mostBytes = 256LL * 1'024 * 1'024;

    /// Keeps the station, its texts cleaned of what cannot be shown and cut; or refuses the line with what is
    /// wrong with it. `line` is where it stands.
    void add(const StationTexts &texts, qint64 line);
    void refuse(qint64 line, const QString &reason);
    /// True when no more stations fit.
    [[nodiscard]] bool isFull() const;

    [[nodiscard]] const std::vector<RefusedLine> &refused() const { return m_refused; }
    [[nodiscard]] qint64 refusedCount() const { return m_refusedCount; }

    /// The file: by frequency, of one frequency in the order of the lines' bytes, equal lines once.
    [[nodiscard]] QByteArray file() const;

private:
    struct Line
    {
        int kilohertz = 0;
        qint64 begin = 0;
        qint64 size = 0;
    };

    QByteArray m_bytes;
    std::vector<Line> m_lines;
    std::vector<RefusedLine> m_refused;
    qint64 m_refusedCount = 0;
};

/// "line 12: no place, ..." of the first refused lines, one a line, at most `most` of them, and how many
/// more.
[[nodiscard]] QString refusedText(const std::vector<RefusedLine> &refused, qint64 count, std::size_t most);

} // namespace quillon
