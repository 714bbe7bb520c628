#pragma once

#include "live/tcplinesource.h"
#include "live/xdrdprotocol.h"

namespace quillon {

/// xdrd, or a tuner over Wi-Fi that speaks as it does.
class XdrdSource : public TcpLineSource
{
    Q_OBJECT

public:
    /// Without a password as a guest, who cannot tune.
    XdrdSource(HostPort address, QString password, QObject *parent = nullptr);

    [[nodiscard]] bool canTune() const override { return !m_password.isEmpty(); }
    void tune(qint64 hertz) override;

protected:
    void connectionStands() override;
    void lineCame(QByteArrayView line) override;

private:
    QString m_password;
    XdrdSession m_session;
};

} // namespace quillon
