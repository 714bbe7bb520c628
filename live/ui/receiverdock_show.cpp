#include "live/frequency.h"
#include "live/ui/receiverdock.h"
#include "ui/guard.h"
#include "ui/messages.h"
#include "ui/tablelook.h"

#include "ui_receiverdock.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>

#include <algorithm>

namespace quillon {

using namespace Qt::StringLiterals;

namespace {

/// A field that is set is painted, even with the same text; most groups change none.
void showText(QLineEdit &field, const QString &text)
{
    if (field.text() != text) {
        field.setText(text);
        field.setCursorPosition(0);
    }
}

void showText(QLabel &label, const QString &text)
{
    if (label.text() != text) {
        label.setText(text);
    }
}

} // namespace

// What is only shown looks like text, not like a field to be filled.
void ReceiverDock::setLook()
{
    for (QLineEdit *const field : {m_ui->receiverPi, m_ui->receiverPs, m_ui->receiverSignal}) {
        QPalette palette = field->palette();
        palette.setColor(QPalette::Base, Qt::transparent);
        field->setPalette(palette);
    }
    for (QLineEdit *const field : {m_ui->receiverPi, m_ui->receiverPs}) {
        QFont font = field->font();
        font.setBold(true);
        field->setFont(font);
    }
    QTableView &heard = *m_ui->heard;
    heard.setModel(&m_model);
    setTableLook(heard);
    heard.setContextMenuPolicy(Qt::CustomContextMenu);
    heard.horizontalHeader()->setSectionsMovable(true);
    const QFontMetrics metrics = heard.fontMetrics();
    constexpr int margins = 14;
    for (int column = 0; column < HeardModel::Columns; ++column) {
        const QString heading = m_model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const QString usual = HeardModel::usualText(static_cast<HeardModel::Column>(column));
        heard.setColumnWidth(
            column, std::max(metrics.horizontalAdvance(heading), metrics.horizontalAdvance(usual)) + margins);
    }
    // What tells a station stands first, where a narrow dock shows it.
    QHeaderView &header = *heard.horizontalHeader();
    header.moveSection(header.visualIndex(HeardModel::Last), HeardModel::Columns - 1);
    header.moveSection(header.visualIndex(HeardModel::Logged), header.visualIndex(HeardModel::Ps) + 1);
    header.moveSection(header.visualIndex(HeardModel::New), header.visualIndex(HeardModel::Logged) + 1);
}

void ReceiverDock::makeMenu()
{
    auto *const menu = new QMenu(m_ui->receiverMenu);
    menu->setObjectName(u"receiverOptions"_s);
    addTick(*menu, u"&Radiotext as Notes"_s, m_settings.textAsNotes);
    addTick(*menu, u"&Tuning From the Log"_s, m_settings.mayTune);
    addTick(*menu, u"Connect at &Start"_s, m_settings.connectAtStart);
    addTick(*menu, u"S&ound for New Stations"_s, m_settings.sound);
    addTick(*menu, u"&Notification for New Stations"_s, m_settings.notification);
    m_atOnce = addTick(*menu, u"Play Recorded &Files at Once"_s, m_settings.last.atOnce);
    menu->addSeparator();
    menu->addAction(u"&Automatic Logging…"_s, this, [this] { openAutoLog(); });
    menu->addAction(u"&Keep This Source…"_s, this, [this] { guarded(this, [this] { keepSource(); }); });
    m_kept = menu->addMenu(u"Kept So&urces"_s);
    m_kept->setObjectName(u"receiverKept"_s);
    m_forget = menu->addMenu(u"For&get a Source"_s);
    m_forget->setObjectName(u"receiverForget"_s);
    fillKept();
    m_ui->receiverMenu->setMenu(menu);
}

QAction *ReceiverDock::addTick(QMenu &menu, const QString &caption, bool &setting)
{
    QAction *const action = menu.addAction(caption);
    action->setCheckable(true);
    action->setChecked(setting);
    connect(action, &QAction::toggled, this, [this, &setting](bool on) {
        setting = on;
        guarded(this, [this] { save(); });
    });
    return action;
}

void ReceiverDock::openAutoLog()
{
    if (m_autoLogDialog) {
        m_autoLogDialog->raise();
        m_autoLogDialog->activateWindow();
        return;
    }
    m_autoLogDialog = new AutoLogDialog(m_settings.autoLog, m_learner.isLearning(), this);
    connect(m_autoLogDialog, &AutoLogDialog::rulesChosen, this, [this](const AutoLogRules &rules) {
        m_settings.autoLog = rules;
        m_autoLog.setRules(rules);
        guarded(this, [this] { save(); });
    });
    connect(
        m_autoLogDialog, &AutoLogDialog::learnLocals, this, [this] { m_learner.start(nowMilliseconds()); });
    m_autoLogDialog->show();
}

void ReceiverDock::showState()
{
    const ReceiverState state = m_receiver.state();
    const QString why = m_receiver.why();
    m_ui->receiverState->setText(why.isEmpty() ? stateText(state) : stateText(state) + u": "_s + why);
    const bool connected = state != ReceiverState::NotConnected;
    m_ui->receiverConnect->setText(connected ? u"Disconnect"_s : u"Connect"_s);
    for (QWidget *const field : std::initializer_list<QWidget *> {
             m_ui->receiverSource, m_ui->receiverAddress, m_ui->receiverPassword}) {
        field->setEnabled(!connected);
    }
    m_ui->receiverFreq->setReadOnly(!m_receiver.wantsFrequency());
    m_ui->receiverFreq->setPlaceholderText(m_receiver.wantsFrequency() ? u"type it here"_s : QString());
}

void ReceiverDock::showHeard()
{
    const Listening &listening = m_receiver.listening();
    const auto &station = listening.station();
    // What is being typed is not overwritten.
    if (m_ui->receiverFreq->isReadOnly() || !m_ui->receiverFreq->isModified()) {
        showText(*m_ui->receiverFreq, megahertzText(listening.hertz()));
    }
    showFrequencies();
    showText(*m_ui->receiverPi, station ? shownPi(*station) : QString());
    showText(*m_ui->receiverPs, listening.psSoFar());
    QString text = station ? station->text : QString();
    if (const auto off = listening.clockOff()) {
        text += u" [clock %1%2 s]"_s.arg(*off > 0 ? u"+"_s : QString()).arg(*off);
    }
    showText(*m_ui->receiverRt, text.trimmed());
    showText(*m_ui->receiverNew, station ? marksText(station->marks) : QString());
    if (m_model.rowCount() != static_cast<int>(m_receiver.heard().rows().size())) {
        m_model.refresh();
    }
    if (!m_moves.isActive()) {
        m_moves.start();
    }
    if (station) {
        m_learner.note(*station);
        announce(*station);
    }
}

// Where else the station can be heard, as it says itself.
void ReceiverDock::showFrequencies()
{
    QStringList others;
    const QList<int> frequencies = m_receiver.listening().frequencies();
    for (const int kilohertz : frequencies) {
        const qint64 hertz = qint64 {kilohertz} * 1000;
        if (logStep(hertz) != logStep(m_receiver.listening().hertz())) {
            others += megahertzText(hertz);
        }
    }
    const QString text = others.isEmpty() ? QString() : u"Also on %1 MHz"_s.arg(others.join(u", "_s));
    if (m_ui->receiverFreq->toolTip() != text) {
        m_ui->receiverFreq->setToolTip(text);
        m_ui->receiverFreq->setAccessibleDescription(text);
    }
}

// What moves with every group need not be painted with every group.
void ReceiverDock::showWhatMoves()
{
    const auto signal = m_receiver.listening().signal();
    showText(*m_ui->receiverSignal,
        signal ? u"%1 %2"_s.arg(signal->value, 0, 'f', 1).arg(signal->unit).trimmed() : QString());
    m_model.refresh();
}

void ReceiverDock::announce(const Station &station)
{
    if (!station.certain || marksText(station.marks).isEmpty()
        || !m_announced.isNew(logStep(station.hertz), station.pi, nowMilliseconds())) {
        return;
    }
    if (m_settings.sound) {
        m_signs.sound();
    }
    if (m_settings.notification) {
        const QString title =
            u"%1 MHz %2 %3"_s.arg(megahertzText(station.hertz), piText(station.pi), station.ps.trimmed());
        const QString text = marksText(station.marks);
        m_signs.notification(title.trimmed(), text);
        Q_EMIT newStation(title.trimmed() + u": "_s + text);
    }
}

} // namespace quillon
