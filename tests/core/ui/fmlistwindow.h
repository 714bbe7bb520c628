#pragma once

#include "fmlist-standin/standin.h"
#include "support/mainwindow.h"

#include <QApplication>
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

/// Entries to search for, the first with one match and the second with three.
inline const QByteArray oneEntry = logLine("D3C1", "12/06/2010 18:22:05", "87.6", "RADIO_1", "TBD", "");
inline const QByteArray twoEntries =
    oneEntry + logLine("F201", "12/06/2010 18:30:00", "90.0", "FIP", "F", "");
/// The result for the first.
inline const QString berlin =
    QStringLiteral("87.6\tD3C1\tRADIO_1\tD\tBerlin (Alex)\t100\t52.5208\t13.4094\t4711");

/// Entries of one day for whom the service knows one station, none, three, and one with a UID; then what
/// the automatic search makes of them.
inline const QByteArray exact = "D3C1|12/06/2010 10:00:00|Es|87.6||TBD|oneCRLFtwo|R1|5|7.5|old=1#||\r\n";
inline const QByteArray unknown = "AAAA|12/06/2010 11:00:00|Es|99.9||TBD||NAME|||||\r\n";
inline const QByteArray several = "F201|12/06/2010 12:00:00|Es|90.0||TBD||FIP|||||\r\n";
inline const QByteArray identified = "F201|12/06/2010 13:00:00|Es|90.0|Brest|F||FIP||||501|\r\n";

inline const QByteArray exactAfter =
    "D3C1|12/06/2010 10:00:00|Es|87.6|Berlin (Alex)|D|oneCRLFtwo|RADIO_1|100|7.5|old=1#|4711|\r\n";
inline const QByteArray unknownAfter = "AAAA|12/06/2010 11:00:00|Es|99.9||TBD||NAME|||fml=none#||\r\n";
inline const QByteArray severalAfter = "F201|12/06/2010 12:00:00|Es|90.0||TBD||FIP|||fml=multi#||\r\n";

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

    /// True when everything is as a search leaves it, whether it went well or not.
    [[nodiscard]] bool isAfterASearch()
    {
        return !QApplication::overrideCursor() && enabled("Command11") && results().isVisible()
            && results().updatesEnabled() && !list().isVisible();
    }

    /// Runs the automatic search for the 12th of June 2010 and answers its two questions.
    void searchAutomatically(const char *action = "menuFMListAutoSearch")
    {
        answers.type(QStringLiteral("12/06/2010"));
        answers.press(QMessageBox::Yes);
        trigger(action);
    }
    /// The texts of the boxes that came after those two.
    [[nodiscard]] QStringList boxesAfterTheQuestions() { return answers.takeTexts().mid(2); }

    [[nodiscard]] QString status() { return text("status"); }

private:
    QObject m_context;
};

} // namespace quillon::test
