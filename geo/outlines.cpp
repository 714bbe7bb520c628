#include "geo/outlines.h"

#include "platform/runtimeerror.h"

#include <QResource>

// A static library brings its resources along only when asked to.
static void bringOutlines()
{
    Q_INIT_RESOURCE(outlines);
}

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

class OutlineReader
{
public:
    explicit OutlineReader(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    [[nodiscard]] std::vector<GeoLine> lines()
    {
        std::vector<GeoLine> lines(count());
        for (GeoLine &line : lines) {
            line.resize(count());
            qint64 east = 0;
            qint64 north = 0;
            for (GeoPosition &point : line) {
                east += step();
                north += step();
                point = {
                    static_cast<double>(north) / stepsPerDegree, static_cast<double>(east) / stepsPerDegree};
            }
        }
        return lines;
    }

private:
    static constexpr double stepsPerDegree = 1000;

    [[noreturn]] static void throwAtEnd()
    {
        throw RuntimeError(ErrorName::InputPastEndOfFile, u"Reading the outlines of the map"_s);
    }

    [[nodiscard]] quint64 number()
    {
        quint64 value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            if (m_next == m_bytes.size()) {
                throwAtEnd();
            }
            const auto byte = static_cast<quint8>(m_bytes[m_next++]);
            value |= static_cast<quint64>(byte & 0x7fU) << shift;
            if ((byte & 0x80U) == 0) {
                break;
            }
        }
        return value;
    }

    // Every item takes a byte at least, so no count can ask for more memory than the bytes are worth.
    [[nodiscard]] std::size_t count()
    {
        const quint64 value = number();
        if (value > static_cast<quint64>(m_bytes.size() - m_next)) {
            throwAtEnd();
        }
        return static_cast<std::size_t>(value);
    }

    [[nodiscard]] qint64 step()
    {
        const quint64 value = number();
        const auto half = static_cast<qint64>(value / 2);
        return value % 2 == 0 ? half : -half - 1;
    }

    QByteArrayView m_bytes;
    qsizetype m_next = 0;
};

} // namespace

Outlines readOutlines(QByteArrayView bytes, OutlineDetail detail)
{
    OutlineReader reader(bytes);
    for (int skipped = 0; skipped < static_cast<int>(detail); ++skipped) {
        (void)reader.lines();
        (void)reader.lines();
    }
    Outlines result;
    result.land = reader.lines();
    result.borders = reader.lines();
    return result;
}

Outlines outlines(OutlineDetail detail)
{
    bringOutlines();
    return readOutlines(QResource(u":/geo/outlines.bin"_s).uncompressedData(), detail);
}

} // namespace quillon
