#pragma once

#include "live/receiversource.h"

#include <QUrl>
#include <QWebSocket>

namespace quillon {

/// FM-DX-Webserver, its address `/text`.
class WebserverSource : public ReceiverSource
{
    Q_OBJECT

public:
    /// A "ws" or "wss" address.
    explicit WebserverSource(QUrl url, QObject *parent = nullptr);
    ~WebserverSource() override;

    [[nodiscard]] bool canTune() const override { return true; }
    void tune(qint64 hertz) override;

protected:
    void attempt() override;
    void hangUp() override;

private:
    QUrl m_url;
    QWebSocket m_socket;
    QTimer m_patience;
};

} // namespace quillon
