#pragma once

#include <QString>
#include <QStringView>

#include <span>
#include <string_view>

namespace quillon {

/// An ITU letter code and the English name of the country or area it stands for.
struct CountryName
{
    std::u16string_view code;
    std::u16string_view name;
};

/// All known codes, sorted by code in the order of their code units, without duplicates.
///
/// Source: the country and geographical area designations of the International Telecommunication Union, as FM
/// listeners use them; areas that are logged on their own (Azores, Canary Islands, Kosovo ...) are included.
[[nodiscard]] std::span<const CountryName> countryNames();

/// The English name of an ITU letter code: "D" gives "Germany", "HOL" gives "Netherlands".
///
/// The code is compared exactly, so one in lower case or with blanks around it is unknown. An unknown code,
/// the empty text and "TBD" give an empty text.
[[nodiscard]] QString countryName(QStringView ituCode);

} // namespace quillon
