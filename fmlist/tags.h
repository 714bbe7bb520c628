#pragma once

#include <QString>
#include <QStringView>

namespace quillon {

/// The tag of an entry's FMList field that holds its state in FMList: "sent", "multi" or "none".
inline constexpr QStringView stateTag = u"fml";

/// The "#"-terminated tags `text` with `key` set to `value`: every tag that contains key + "=" is replaced,
/// and key + "=" + value is added when there is none. What follows the last "#" is dropped, so "fml=none"
/// set to "sent" is "fml=sent#".
[[nodiscard]] QString SetTagValue(QStringView text, QStringView key, QStringView value);

} // namespace quillon
