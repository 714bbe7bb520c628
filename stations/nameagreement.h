#pragma once

#include <QString>
#include <QStringView>

namespace quillon {

/// How far a programme service name that was heard agrees with one that a station sends.
struct NameAgreement
{
    int known = 0; ///< letters that were heard, at most eight
    int equal = 0; ///< of them, equal ones at their places
    int moved = 0; ///< of them, equal ones in a pair that stands at the place of another pair

    bool operator==(const NameAgreement &) const = default;

    /// What speaks against it, in letters: one for each other letter, less for one that only moved.
    [[nodiscard]] double disagreement() const;
};

/// The best agreement with one of the station's names (blanks between them, "_" for a blank inside one). Of
/// what was heard, "_", "?", "." and blanks are letters that are not known. Names come in pairs of letters,
/// which may arrive out of order; case does not count. A name that stands indented is tried without that,
/// too.
[[nodiscard]] NameAgreement nameAgreement(QStringView heard, QStringView names);

/// The one of the station's names that agrees best with what was heard, its blanks as blanks.
[[nodiscard]] QString bestName(QStringView heard, QStringView names);

} // namespace quillon
