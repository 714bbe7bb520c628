#pragma once

#include "live/ui/receiverdock.h"
#include "support/told.h"

#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace quillon::test {

/// A dock in a window, with a log that it logs to.
class Docked
{
public:
    explicit Docked(const QString &folder)
        : dock(
            log,
            [this](const HeardReception &reception) {
                log.AddEntry(reception.entry);
                receptions.append(reception);
                return true;
            },
            folder)
    {
        window.addDockWidget(Qt::RightDockWidgetArea, &dock);
        window.resize(1200, 800);
        window.show();
        dock.start();
    }
    Told *listen(bool knowsFrequency = true) { return &listenTold(dock.receiver(), knowsFrequency); }
    template<typename Widget>
    Widget *get(const QString &name)
    {
        Widget *const widget = dock.findChild<Widget *>(name);
        if (widget == nullptr) {
            qFatal("%s is missing", qPrintable(name));
        }
        return widget;
    }
    QString text(const QString &name) { return get<QWidget>(name)->property("text").toString(); }
    void press(const QString &name) { QTest::mouseClick(get<QPushButton>(name), Qt::LeftButton); }
    void choose(const QString &caption, const QString &menu = QStringLiteral("receiverOptions"))
    {
        const auto actions = get<QMenu>(menu)->actions();
        for (QAction *const action : actions) {
            if (action->text().remove(u'&') == caption) {
                action->trigger();
                return;
            }
        }
        qFatal("no entry %s", qPrintable(caption));
    }
    QString cell(int row, int column)
    {
        const auto *const model = get<QTableView>(QStringLiteral("heard"))->model();
        return model->index(row, column).data().toString();
    }

    Logbook log;
    QList<HeardReception> receptions;
    QMainWindow window;
    ReceiverDock dock;
};

inline void hear(
    Told &source, qint64 hertz, quint16 pi, const QString &ps, PiTrust trust = PiTrust::Told, qint64 ago = 0)
{
    source.say(Tuned {hertz}, ago + 1'000);
    source.say(PiHeard {pi, trust}, ago);
    source.say(PsHeard {ps}, ago);
}

} // namespace quillon::test
