#pragma once

#include <QByteArrayList>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillon::soak {

/// A fuzzer of fuzz/: what reads bytes from outside.
struct Reader
{
    const char *name;
    int (*read)(const std::uint8_t *data, std::size_t size);
};

/// All of them.
[[nodiscard]] const std::vector<Reader> &readers();

/// The samples of fuzz/corpus for that fuzzer.
[[nodiscard]] QByteArrayList samplesOf(const QString &reader);

} // namespace quillon::soak
