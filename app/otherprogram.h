#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace quillon {

/// Lets a second start on the same folder ask this program to come to the front.
class FrontDoor : public QObject
{
    Q_OBJECT

public:
    /// Listens for the folder. Where that cannot be done, nobody can ask, and nothing else changes.
    explicit FrontDoor(const QString &directory, QObject *parent = nullptr);

Q_SIGNALS:
    void wanted();

private:
    QLocalServer m_server;
};

/// Asks the program that works in the folder to come to the front; false when it does not answer.
[[nodiscard]] bool bringToFront(const QString &directory);

/// Tells that another program works in the folder, and offers to bring that one to the front.
void tellFolderInUse(const QString &directory);

} // namespace quillon
