#pragma once

#include <QByteArrayView>
#include <QString>

namespace quillon {

/// The character of a byte in the basic RDS character set (IEC 62106, annex E, table G0). Control codes and
/// unused bytes give a blank.
[[nodiscard]] QChar rdsCharacter(quint8 byte);

/// The characters of bytes that came over RDS.
[[nodiscard]] QString rdsText(QByteArrayView bytes);

} // namespace quillon
