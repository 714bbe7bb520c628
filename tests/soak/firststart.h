#pragma once

#include "toldcalls.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace quillon::soak {

/// The very first start of all, which makes the program's folder.
class FirstStart
{
public:
    /// The folder is made below `root`.
    explicit FirstStart(const QString &root);

    /// Starts, and ends; what the program had to say.
    [[nodiscard]] QString run(FileCalls &calls) const;
    /// Everything that it makes and leaves, by the path below `root`.
    [[nodiscard]] QMap<QString, QByteArray> files() const;

private:
    QString m_root;
};

} // namespace quillon::soak
