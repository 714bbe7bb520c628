#pragma once

#include "fmlist-standin/standin.h"
#include "support/mainwindow.h"

#include <QTimer>

#include <functional>

namespace quillon::test {

/// What the stand-in service knows: one station on 87.6, three of one PI on 90, two PIs on 95.
inline QByteArray knownStations()
{
    return "87.6;D3C1;RADIO_1;D;Brandenburg, Berlin (Alex);100;52.52081;13.40942;4711\n"
           "90.0;F201;FIP;F;Bretagne, Brest;10;48.38;-4.49;501\n"
           "90.0;F201;FIP;F;Ile-de-France, Paris;5.25;48.8583;2.2945;502\n"
           "90.0;F201;FIP;F;Auvergne, Moulins;1;46.5;3.3;503\n"
           "95.0;5201;RAI_1;I;Lazio, Roma;60;41.9;12.5;601\n"
           "95.0;E201;RAI_1;E;Madrid, Torrespana;20;40.4;-3.7;602\n"
           "95.0;5202;RAI_1;I;Lombardia, Milano;30;45.5;9.2;603\n";
}

/// The main window with its FMList service on loopback. The service answers within this thread.
class FmlistWindow : public MainWindow
{
public:
    standin::StandIn service {knownStations()};

    /// Starts the window on a logbook; `settings` are further lines of LOGBOOK.INI.
    void open(const QByteArray &logbook = {}, const QByteArray &settings = {})
    {
        if (service.port() == 0 && !service.listen()) {
            qFatal("the service cannot listen");
        }
        openAt(service.url(), logbook, settings);
    }

    void openAt(const QString &url, const QByteArray &logbook = {}, const QByteArray &settings = {})
    {
        directory.write(QStringLiteral("LOGBOOK.INI"), "FMLIST_URL=" + url.toLatin1() + "\r\n" + settings);
        start(logbook);
    }

    /// Lets the service answer with these bytes as the body.
    void answerWith(const QByteArray &body)
    {
        service.behave({.fault = standin::Fault::Raw, .raw = standin::wireBytes({.body = body})});
    }
    /// Makes every answer take so long that something can be done meanwhile.
    void answerSlowly() { service.behave({.delay = 300}); }

    /// The request lines since the start.
    [[nodiscard]] QByteArrayList asked() const
    {
        QByteArrayList lines;
        for (const standin::Request &request : service.requests()) {
            lines += request.line;
        }
        return lines;
    }

    /// Does something as soon as the service has got that many requests, while the last is unanswered.
    void duringRequest(qsizetype number, const std::function<void()> &work)
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [this, timer, number, work] {
            if (service.requests().size() >= number) {
                timer->stop();
                timer->deleteLater();
                work();
            }
        });
        timer->start(1);
    }

    [[nodiscard]] ResultList &results() { return *find<ResultList>("List2"); }
    [[nodiscard]] QStringList resultRows()
    {
        QStringList rows;
        for (int line = 0; line < results().count(); ++line) {
            rows += results().text(line);
        }
        return rows;
    }
    void doubleClickResult(int line)
    {
        const QPoint place = results().visualRect(results().model()->index(line, 0)).center();
        QTest::mouseClick(results().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(results().viewport(), Qt::LeftButton, {}, place);
    }

    [[nodiscard]] QString status() { return text("status"); }

private:
    QObject m_context;
};

} // namespace quillon::test
