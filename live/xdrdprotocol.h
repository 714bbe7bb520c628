#pragma once

#include "live/receiverevent.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace quillon {

/// The dialogue with xdrd, or with a tuner that speaks as it does: login, then lines with what is received.
/// A passive listener: nothing is sent but the login.
class XdrdSession
{
public:
    /// Without a password the login is that of a guest.
    explicit XdrdSession(QString password)
        : m_password(std::move(password))
    {
    }

    /// What a line leads to.
    struct Reply
    {
        QByteArray send; ///< to be written as it is, LF included
        std::vector<ReceiverEvent> events;
        QString refused; ///< why the server wants to hear no more; empty while it does
    };
    /// Takes a line of the server, without its line end.
    [[nodiscard]] Reply take(QByteArrayView line);

private:
    void takeGroup(QByteArrayView digits, std::vector<ReceiverEvent> &events) const;

    QString m_password;
    bool m_greeted = false;
    std::optional<quint16> m_pi; ///< of the last "P" line: groups of older firmware lack block A
    int m_doubt = 0;
};

/// The answer to a greeting: SHA-1 of the salt and the password (UTF-8), 40 hexadecimal digits and LF.
[[nodiscard]] QByteArray xdrdLogin(QByteArrayView salt, const QString &password);

/// "T98500": the line that tunes.
[[nodiscard]] QByteArray xdrdTune(qint64 hertz);

} // namespace quillon
