#pragma once

#include <QString>
#include <QStringView>

#include <string>

namespace quillon {

/// Adds a text to `out` as searches compare it: letters by their base letter, whatever their case and accents
/// ("Málaga" is "malaga", ø is o, ł is l, ß is ss, æ is ae), line breaks and other control characters as one
/// blank each. What comes out folds to itself.
void appendFolded(std::u16string &out, QStringView text);

/// The same as a text of its own.
[[nodiscard]] QString folded(QStringView text);

} // namespace quillon
