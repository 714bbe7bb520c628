#pragma once

#include <QStringView>

#include <array>

namespace quillon {

/// The ways in which a signal arrives, as the log names them, in the order of every list of them.
inline constexpr std::array<QStringView, 7> propagationModes {
    u"Es", u"Tropo", u"MS", u"TEP", u"Aur", u"F2", u"FAI"};

} // namespace quillon
