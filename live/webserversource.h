#pragma once

#include "geo/position.h"
#include "live/receiversource.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QUrl>
#include <QWebSocket>

#include <optional>

namespace quillon {

/// FM-DX-Webserver: its address `/text`, and once `/static_data`, for where its receiver is.
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
    void askHome();

    QUrl m_url;
    QWebSocket m_socket;
    QNetworkAccessManager m_requests;
    QPointer<QNetworkReply> m_answer; ///< of `/static_data`
    std::optional<GeoPosition> m_home;
    QTimer m_patience;
};

} // namespace quillon
