#pragma once

#include <QString>
#include <QStringView>

namespace quillon {

/// The English name of an ITU letter code: "D" gives "Germany", "HOL" gives "Netherlands".
///
/// The code is compared exactly, so one in lower case or with blanks around it is unknown. An unknown code,
/// the empty text and "TBD" give an empty text.
///
/// Source: the country and geographical area designations of the International Telecommunication Union, as FM
/// listeners use them; areas that are logged on their own (Azores, Canary Islands, Kosovo ...) are included.
[[nodiscard]] QString countryName(QStringView ituCode);

} // namespace quillon
