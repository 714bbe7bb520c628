#pragma once

#include "platform/codepage.h"

#include <QByteArrayView>
#include <QStringList>

namespace quillon {

/// The countries of a country.lst: its non-empty lines, unchanged, in their order.
[[nodiscard]] QStringList readCountries(QByteArrayView file, const CodePage &codePage);

} // namespace quillon
