#pragma once

#include "live/tcplinesource.h"

namespace quillon {

/// A stream of groups as RDS Spy takes them. It does not know the frequency.
class RdsSpySource : public TcpLineSource
{
    Q_OBJECT

public:
    explicit RdsSpySource(HostPort address, QObject *parent = nullptr)
        : TcpLineSource(std::move(address), parent)
    {
    }

    [[nodiscard]] bool tellsFrequency() const override { return false; }

protected:
    void lineCame(QByteArrayView line) override;
};

} // namespace quillon
