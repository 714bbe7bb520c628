#pragma once

#include "core/logchange.h"
#include "txdb/transmitters.h"

#include <QString>

namespace quillon {

/// A change of the document as a value: what a person calls it, and what becomes of the log and the sites.
struct Change
{
    QString name; ///< for instance "Delete 90.3 RNE_CLAS"
    LogChange log;
    SiteChanges sites;

    [[nodiscard]] bool isEmpty() const { return log.isEmpty() && sites.empty(); }
    /// What takes it back, under the same name.
    [[nodiscard]] Change inverse() const { return {name, log.inverse(), sites.inverse()}; }
};

/// What a change of this reception is called: "Update 90.3 RNE_CLAS", with the PI code where there is no
/// name.
[[nodiscard]] QString changeName(const QString &verb, const LogEntry &entry);

} // namespace quillon
