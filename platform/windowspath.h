#pragma once

#include <QString>

namespace quillon {

/// Where the programs of Windows live on this machine.
struct WindowsPlaces
{
    QString prefix; ///< the Wine prefix: the folder that holds `dosdevices`
    QString home; ///< what a "~" stands for

    /// WINEPREFIX, else ~/.wine, and the home folder of the user.
    [[nodiscard]] static WindowsPlaces ofProcess();
};

/// The directory that a setting means. A setting that starts with "/" or "~" is a path as it stands. Any
/// other is a Windows path ("C:\RDSSpy", "\\server\share"), looked up below `dosdevices` of the Wine prefix
/// without regard to case in each of its parts; without a drive letter it lies on drive C. What is not found
/// stays as it is spelled, so that the result can always be shown. No "/" at its end; empty for an empty
/// setting.
[[nodiscard]] QString resolveDirectory(const QString &setting, const WindowsPlaces &places);

} // namespace quillon
