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
    /// What is visible of it now and not as in a start that nothing disturbed, which makes these files; empty
    /// when there is nothing.
    [[nodiscard]] QString unlike(const QMap<QString, QByteArray> &whole) const;
    /// Everything that it makes and leaves, by the path below `root`.
    [[nodiscard]] QMap<QString, QByteArray> files() const;

private:
    QString m_root;
};

} // namespace quillon::soak
