#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QRandomGenerator>

namespace quillon::soak {

/// Bytes that look a little like one of the samples: pieces of it changed, doubled, left out, put together
/// with pieces of others. The same seed makes the same.
class Mutation
{
public:
    Mutation(QByteArrayList samples, quint32 seed);

    [[nodiscard]] const QByteArray &next();

private:
    void change();

    QByteArrayList m_samples;
    QRandomGenerator m_random;
    QByteArray m_bytes;
};

} // namespace quillon::soak
