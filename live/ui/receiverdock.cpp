#include "live/ui/receiverdock.h"

#include "live/frequency.h"
#include "live/ui/notification.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/onelinefields.h"

#include "ui_receiverdock.h"

#include <QApplication>
#include <QMenu>
#include <QScopedValueRollback>
#include <QShortcut>

namespace quillon {

using namespace Qt::StringLiterals;

ReceiverDock::ReceiverDock(
    const Logbook &log, Log logReception, QString folder, QWidget *parent, FileCalls &calls)
    : QDockWidget(parent)
    , m_log(&log)
    , m_logReception(std::move(logReception))
    , m_folder(std::move(folder))
    , m_calls(calls)
    , m_model(m_receiver.heard())
    , m_signs {&QApplication::beep, &notifyDesktop}
    , m_ui(std::make_unique<Ui::receiverDock>())
{
    m_ui->setupUi(this);
    keepFieldsOnOneLine(*this);
    for (int kind = 0; kind < sourceKinds; ++kind) {
        m_ui->receiverSource->addItem(kindName(static_cast<SourceKind>(kind)));
    }
    setLook();

    guarded(this, [this] {
        if (!m_folder.isEmpty()) {
            m_settings = readReceiverSettings(m_folder);
        }
    });
    m_autoLog.setRules(m_settings.autoLog);
    makeMenu();
    showSource();
    showState();
    showHeard();

    connect(m_ui->receiverSource, &QComboBox::currentIndexChanged, this, [this] { receiverSource_Change(); });
    connect(m_ui->receiverConnect, &QPushButton::clicked, this,
        [this] { guarded(this, [this] { receiverConnect_Click(); }); });
    connect(m_ui->receiverFreq, &QLineEdit::editingFinished, this, [this] { receiverFreq_Edited(); });
    connect(m_ui->receiverLog, &QPushButton::clicked, this, [this] { logHeard(); });
    // Not activated(): in some styles a single click would do it.
    connect(m_ui->heard, &QTableView::doubleClicked, this,
        [this](const QModelIndex &index) { heard_Activated(index); });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *const shortcut = new QShortcut(key, m_ui->heard, nullptr, nullptr, Qt::WidgetShortcut);
        connect(
            shortcut, &QShortcut::activated, this, [this] { heard_Entered(m_ui->heard->currentIndex()); });
    }
    connect(m_ui->heard, &QTableView::customContextMenuRequested, this,
        [this](const QPoint &position) { heard_Menu(position); });
    // Below the log there is width for the table, beside it height.
    connect(this, &QDockWidget::dockLocationChanged, this, [this](Qt::DockWidgetArea area) {
        m_ui->receiverLayout->setDirection(
            area == Qt::BottomDockWidgetArea ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    });
    connect(&m_receiver, &Receiver::stateChanged, this, [this] { showState(); });
    connect(&m_receiver, &Receiver::changed, this, [this] { showHeard(); });
    m_moves.setSingleShot(true);
    m_moves.setInterval(200);
    connect(&m_moves, &QTimer::timeout, this, [this] { showWhatMoves(); });
    m_second.setInterval(1'000);
    connect(&m_second, &QTimer::timeout, this, [this] { doWhatIsDue(nowMilliseconds()); });
    m_second.start();
}

ReceiverDock::~ReceiverDock() = default;

void ReceiverDock::start()
{
    if (m_settings.connectAtStart) {
        show();
        guarded(this, [this] { receiverConnect_Click(); });
    }
}

// Only a receiver that listens needs to know what the log has.
void ReceiverDock::logChanged(std::span<const qint32> entries)
{
    m_receiver.findLogged(*m_log);
    if (m_receiver.state() != ReceiverState::NotConnected) {
        m_receiver.known().follow(*m_log, entries);
    }
}

// Connect, Disconnect.
void ReceiverDock::receiverConnect_Click()
{
    if (m_receiver.state() != ReceiverState::NotConnected) {
        m_receiver.disconnectFrom();
        return;
    }
    const SourceSettings source = chosen();
    m_receiver.setKnown(KnownStations(*m_log));
    if (const QString wrong = m_receiver.connectTo(source); !wrong.isEmpty()) {
        showMessage(this, wrong);
        return;
    }
    m_settings.last = source;
    save();
}

// MHz, where the source does not tell it.
void ReceiverDock::receiverFreq_Edited()
{
    if (!m_ui->receiverFreq->isReadOnly()) {
        (void)takeFrequency();
    }
}

bool ReceiverDock::takeFrequency()
{
    const auto hertz = hertzOf(m_ui->receiverFreq->text());
    if (hertz) {
        m_ui->receiverFreq->setModified(false);
        m_receiver.setFrequency(*hertz);
    }
    return hertz.has_value();
}

std::optional<Station> ReceiverDock::heardAt(const QModelIndex &index) const
{
    const auto &rows = m_receiver.heard().rows();
    const auto row = static_cast<std::size_t>(index.row());
    return index.isValid() && row < rows.size() ? std::optional(rows[row].station) : std::nullopt;
}

// A double-click on what was heard: tunes by its frequency where that is ticked, otherwise logs it.
void ReceiverDock::heard_Activated(const QModelIndex &index)
{
    const auto station = heardAt(index);
    if (station && (index.column() != HeardModel::Freq || !tune(station->hertz))) {
        logStation(*station);
    }
}

// Enter has no column that a person aims at: it logs.
void ReceiverDock::heard_Entered(const QModelIndex &index)
{
    if (const auto station = heardAt(index)) {
        logStation(*station);
    }
}

void ReceiverDock::heard_Menu(const QPoint &position)
{
    const auto heard = heardAt(m_ui->heard->indexAt(position));
    if (!heard) {
        return;
    }
    const Station &station = *heard;
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"&Log It"_s, this, [this, station] { logStation(station); });
    menu->addAction(u"&Tune"_s, this, [this, station] { tune(station.hertz); })->setEnabled(mayTune());
    menu->popup(m_ui->heard->viewport()->mapToGlobal(position));
}

void ReceiverDock::logHeard()
{
    // The key works while its own question is open.
    if (m_asking) {
        return;
    }
    const QScopedValueRollback asking(m_asking, true);
    // Typed, but not yet left.
    const QLineEdit &typed = *m_ui->receiverFreq;
    if (typed.isModified() && !typed.isReadOnly() && !takeFrequency()) {
        showMessage(this,
            typed.text().trimmed().isEmpty()
                ? u"Type the frequency in MHz first: what is heard does not tell it."_s
                : u"\"%1\" is no frequency in MHz."_s.arg(typed.text()));
        return;
    }
    const auto station = m_receiver.listening().station();
    if (!station) {
        showMessage(this, u"Nothing to log: no PI code has been received on this frequency."_s);
        return;
    }
    if (m_receiver.isFrequencyInDoubt()) {
        if (!askYesNo(this,
                u"The receiver was tuned after %1 MHz was typed. Is it on %1 MHz?"_s.arg(
                    megahertzText(station->hertz)),
                u"Log It"_s)) {
            return;
        }
        // It may have been tuned elsewhere while that was asked.
        if (m_receiver.listening().hertz() == station->hertz) {
            m_receiver.setFrequency(station->hertz);
        }
    }
    logStation(*station);
}

void ReceiverDock::logStation(const Station &station)
{
    const QScopedValueRollback asking(m_asking, true);
    if (station.hertz <= 0) {
        showMessage(this, u"The frequency is not known. Type it into the field MHz of the receiver."_s);
        return;
    }
    const QString code = piText(station.pi);
    const QString title = u"Log It"_s;
    if (!station.certain
        && !askYesNo(this, u"The PI code %1 is not certain yet. Log it all the same?"_s.arg(code), title)) {
        return;
    }
    const DateTime moment {station.first / 1000};
    if (loggedWithin(*m_log, station.hertz, station.pi, moment)
        && !askYesNo(this,
            u"%1 on %2 MHz was logged within %3 minutes of this. Log it again?"_s.arg(
                code, megahertzText(station.hertz), QString::number(minutesBetweenDoubles)),
            title)) {
        return;
    }
    logNow(station, false);
}

bool ReceiverDock::logNow(const Station &station, bool automatic)
{
    bool logged = false;
    guarded(this, [&] { logged = m_logReception(receptionOf(station, m_settings.textAsNotes, automatic)); });
    if (logged) {
        m_autoLog.logged(station, nowMilliseconds());
        // It may wait for a long work to end before the log has it.
        m_receiver.known().add(station.hertz, station.pi);
        m_receiver.setLogged(station);
    }
    return logged;
}

void ReceiverDock::doWhatIsDue(qint64 now)
{
    if (const auto locals = m_learner.finished(now)) {
        for (const Local &local : *locals) {
            if (!m_settings.autoLog.locals.contains(local)) {
                m_settings.autoLog.locals.append(local);
            }
        }
        m_autoLog.setRules(m_settings.autoLog);
        if (m_autoLogDialog) {
            m_autoLogDialog->addLocals(*locals);
        }
        guarded(this, [this] { save(); });
    }
    if (m_receiver.state() != ReceiverState::Listening || m_receiver.isFrequencyInDoubt()
        || !m_autoLog.wants(m_receiver.listening(), now)) {
        return;
    }
    const Station station = *m_receiver.listening().station();
    const DateTime moment {station.first / 1000};
    if (loggedWithin(*m_log, station.hertz, station.pi, moment, m_settings.autoLog.again)) {
        m_autoLog.logged(station, now);
    } else if (!logNow(station, true)) {
        // What failed once would fail each second.
        m_autoLog.logged(station, now);
    }
}

bool ReceiverDock::mayTune() const
{
    return m_settings.mayTune && m_receiver.canTune();
}

bool ReceiverDock::tune(qint64 hertz)
{
    if (!mayTune() || hertz <= 0) {
        return false;
    }
    m_receiver.tune(hertz);
    return true;
}

void ReceiverDock::save()
{
    if (!m_folder.isEmpty()) {
        writeReceiverSettings(m_folder, m_settings, m_calls);
    }
}

} // namespace quillon
