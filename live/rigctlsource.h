#pragma once

#include "live/rigctlsession.h"
#include "live/tcplinesource.h"

namespace quillon {

/// gqrx, rigctld, and whatever else speaks as rigctld does.
class RigctlSource : public TcpLineSource
{
    Q_OBJECT

public:
    explicit RigctlSource(HostPort address, QObject *parent = nullptr);

    [[nodiscard]] bool canTune() const override { return true; }
    void tune(qint64 hertz) override;

protected:
    void connectionStands() override;
    void lineCame(QByteArrayView line) override;
    void linesRead() override;
    void hangUp() override;

private:
    void ask();

    RigctlSession m_session;
    QTimer m_round;
    QTimer m_answer;
    bool m_asked = false;
    bool m_askNext = false;
};

} // namespace quillon
