#pragma once

#include "core/logbook.h"
#include "live/receiver.h"
#include "live/receiversettings.h"
#include "live/reception.h"
#include "live/ui/announced.h"
#include "live/ui/autologdialog.h"
#include "live/ui/heardmodel.h"
#include "platform/filecalls.h"

#include <QDockWidget>
#include <QPointer>

#include <functional>
#include <memory>
#include <span>

class QAction;
class QMenu;

namespace quillon {

namespace Ui {
class receiverDock;
}

/// Receiver: shows live what a radio hears, and has it logged.
class ReceiverDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Logs a reception as one change that can be undone; false when it was not logged. May throw a
    /// RuntimeError.
    using Log = std::function<bool(const HeardReception &)>;

    /// How a new station is told where that is ticked.
    struct Signs
    {
        std::function<void()> sound;
        std::function<void(const QString &title, const QString &text)> notification;
    };

    /// `folder` holds the settings; without one they are not kept. The log has to outlive the dock.
    ReceiverDock(const Logbook &log, Log logReception, QString folder, QWidget *parent = nullptr,
        FileCalls &calls = FileCalls::real());
    ~ReceiverDock() override;

    /// Connects to the last source, and shows the dock, when that is ticked. To be called once the log is
    /// loaded.
    void start();
    /// These entries of the log came, went or are others now: what is new is asked of it anew.
    void logChanged(std::span<const qint32> entries);
    /// Log It: logs the station that is heard now, after a question when it is in doubt or was logged within
    /// the hour.
    void logHeard();
    /// What is due at that moment (milliseconds since 1970, UTC): automatic logging, the end of learning. The
    /// dock does it each second.
    void doWhatIsDue(qint64 now);
    /// Tunes the receiver, where it can and the listener has ticked that it may; false when it did not.
    bool tune(qint64 hertz);
    [[nodiscard]] bool mayTune() const;

    /// Other signs than those of the desktop.
    void setSigns(Signs signs) { m_signs = std::move(signs); }

    [[nodiscard]] Receiver &receiver() { return m_receiver; }

Q_SIGNALS:
    /// A station is heard that the log does not know, in words; only when the listener wants to be notified.
    void newStation(const QString &text);

private:
    void receiverSource_Change();
    void receiverConnect_Click();
    void receiverFreq_Edited();
    [[nodiscard]] bool takeFrequency();
    [[nodiscard]] std::optional<Station> heardAt(const QModelIndex &index) const;
    void heard_Activated(const QModelIndex &index);
    void heard_Entered(const QModelIndex &index);
    void heard_Menu(const QPoint &position);

    void setLook();
    void makeMenu();
    QAction *addTick(QMenu &menu, const QString &caption, bool &setting);
    void fillKept();
    void keepSource();
    void forgetSource(const QString &name);
    void openAutoLog();
    void showSource();
    void showState();
    void showHeard();
    void showFrequencies();
    void showWhatMoves();
    void announce(const Station &station);
    void logStation(const Station &station);
    bool logNow(const Station &station, bool automatic);
    void save();
    [[nodiscard]] SourceSettings chosen() const;

    const Logbook *m_log;
    Log m_logReception;
    QString m_folder;
    FileCalls &m_calls;
    ReceiverSettings m_settings;
    Receiver m_receiver;
    HeardModel m_model;
    AutoLog m_autoLog;
    LocalsLearner m_learner;
    QPointer<AutoLogDialog> m_autoLogDialog;
    QMenu *m_kept = nullptr;
    QMenu *m_forget = nullptr;
    QAction *m_atOnce = nullptr;
    Signs m_signs;
    QTimer m_second;
    QTimer m_moves; ///< until the signal and the rows are shown anew
    Announced m_announced;
    bool m_asking = false; ///< a question of Log It is open
    std::unique_ptr<Ui::receiverDock> m_ui;
};

} // namespace quillon
