#include "app/otherprogram.h"

#include "platform/files.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 2000; // milliseconds

// Of one user and one folder, however the folder was named.
QString doorOf(const QString &directory)
{
    const QString folder = QFileInfo(directory).canonicalFilePath();
    const QByteArray hash = QCryptographicHash::hash(QFile::encodeName(folder), QCryptographicHash::Sha1);
    return filePath(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
        u"quillon-"_s + QString::fromLatin1(hash.toHex().first(16)));
}

} // namespace

FrontDoor::FrontDoor(const QString &directory, QObject *parent)
    : QObject(parent)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    const QString door = doorOf(directory);
    // Who holds the folder's lock owns the door, too: one that is there was left by a program that was
    // killed.
    QLocalServer::removeServer(door);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            socket->write("here");
            socket->disconnectFromServer();
            Q_EMIT wanted();
        }
    });
    m_server.listen(door);
}

bool bringToFront(const QString &directory)
{
    QLocalSocket socket;
    socket.connectToServer(doorOf(directory));
    return socket.waitForConnected(patience) && socket.waitForReadyRead(patience);
}

void tellFolderInUse(const QString &directory)
{
    // The first box is the only window there is; the second must not end with it.
    QApplication::setQuitOnLastWindowClosed(false);
    QMessageBox box(QMessageBox::Information, u"Quillon"_s,
        u"Another Quillon has the log in %1 open. Two at once would write over each other's receptions."_s
            .arg(QDir::toNativeSeparators(directory)));
    box.setTextFormat(Qt::PlainText);
    auto *show = box.addButton(u"&Show the Other"_s, QMessageBox::AcceptRole);
    // Enter is for it even before the box has been given the focus.
    box.setDefaultButton(show);
    box.addButton(QMessageBox::Close);
    box.exec();
    // The box is gone before the other one is waited for.
    QApplication::sync();
    if (box.clickedButton() == show && !bringToFront(directory)) {
        QMessageBox sorry(QMessageBox::Warning, u"No Answer"_s, u"The other Quillon does not answer."_s);
        sorry.exec();
    }
}

} // namespace quillon
