#pragma once

#include <QByteArray>
#include <QString>

namespace quillon::soak {

/// The name of a reception, which it has in common with no other of its case, and when it was heard.
[[nodiscard]] QString nameOf(int number);
[[nodiscard]] QString dateOf(int number);
/// Its PI code, and as it is written: another one for each of thousands, since what is heard again within
/// minutes may not be logged again.
[[nodiscard]] quint16 piOf(int number);
[[nodiscard]] QByteArray codeOf(int number);

} // namespace quillon::soak
