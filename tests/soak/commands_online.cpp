#include "fmlist-standin/standin.h"
#include "receiver-standin/receiverstandin.h"
#include "user.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

namespace quillon::soak {

using namespace Qt::StringLiterals;

// A result of the service, by a double-click.
void User::takeOver()
{
    const int number = m_next++;
    standin::StandIn service("105.5;F201;" + nameOf(number).toLatin1() + ";F;Champagne, Reims;64;49.09;3.93;"
        + QByteArray::number(1000 + number) + '\n');
    if (!serves(service)) {
        return;
    }
    type(nameOf(number), dateOf(number));
    click(u"Command11"_s);
    QByteArrayList fields = fieldsOf(number, "F201", "105.5");
    fields[Field::Transmitter] = "Reims";
    fields[Field::Country] = "F";
    fields[Field::Power] = "64";
    fields[Field::Uid] = QByteArray::number(1000 + number);
    m_teller.adding(fields);
    m_answers->press(QMessageBox::Yes);
    auto *results = find<QAbstractItemView>(u"List2"_s);
    const QPoint first = results->visualRect(results->model()->index(0, 0)).center();
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(results->viewport(), Qt::LeftButton, {}, first);
    finish();
}

void User::upload()
{
    const QByteArray name = nameOf(m_next).toLatin1();
    takeOver();
    if (m_failed) {
        return;
    }
    standin::StandIn service({});
    if (!serves(service)) {
        return;
    }
    // Whatever else has come from the service is sent, too.
    m_teller.changing({Field::FMList});
    m_teller.setting(name, Field::FMList, sentMark.toByteArray());
    m_answers->press(QMessageBox::Ok);
    trigger(u"menuFMListUploadLogs"_s);
    finish();
}

// Chooses from the menu of the receiver.
void User::chooseOption(const QString &caption)
{
    const auto actions = find<QMenu>(u"receiverOptions"_s)->actions();
    for (QAction *const action : actions) {
        if (action->text().remove(u'&') == caption) {
            action->trigger();
            return;
        }
    }
    qFatal("the receiver has no %s", qPrintable(caption));
}

void User::setAutomaticLog(bool on)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    chooseOption(u"Automatic Logging…"_s);
    auto *rules = find<QWidget>(u"autoLog"_s);
    find<QCheckBox>(*rules, u"autoLogOn"_s)->setChecked(on);
    find<QSpinBox>(*rules, u"autoLogEarliest"_s)->setValue(0);
    find<QSpinBox>(*rules, u"autoLogHold"_s)->setValue(1);
    find<QDialogButtonBox>(*rules, u"autoLogButtons"_s)->button(QDialogButtonBox::Ok)->click();
}

void User::connectReceiver(quint16 port)
{
    find<QComboBox>(u"receiverSource"_s)->setCurrentText(u"xdrd"_s);
    find<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:%1"_s.arg(port));
    click(u"receiverConnect"_s);
}

// Waits for what comes from outside, or for a box; false when it does not come.
bool User::waitUntil(const std::function<bool()> &isSo)
{
    constexpr int longest = 30'000; // milliseconds
    QElapsedTimer since;
    since.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isSo() || !m_answers->seen().isEmpty() || since.elapsed() > longest) {
            loop.quit();
        }
    });
    look.start(2);
    loop.exec();
    const bool hasCome = isSo();
    if (!hasCome && m_answers->seen().isEmpty()) {
        giveUp("nothing comes from the receiver");
    }
    return hasCome;
}

// Whether it is logged by its button or by itself, a tuner is heard for it.
void User::listenTo(
    const rdssignal::SignalStation &station, bool byItself, const std::function<bool()> &isHeard)
{
    rdssignal::ReceiverStandIn tuner({station}, {}, 50, nullptr);
    if (!tuner.listen(0)) {
        giveUp("the receiver has no port");
        return;
    }
    // The dock comes, and goes again.
    trigger(u"menuViewReceiver"_s);
    setAutomaticLog(byItself);
    connectReceiver(tuner.port());
    if (waitUntil(isHeard) && !byItself) {
        click(u"receiverLog"_s);
    }
    click(u"receiverConnect"_s);
    if (byItself) {
        setAutomaticLog(false);
    }
    trigger(u"menuViewReceiver"_s);
    finish();
}

// A reception that is to be logged as a receiver gives it.
QByteArrayList User::fieldsHeard(int number, const QByteArray &freq)
{
    QByteArrayList fields = fieldsOf(number, codeOf(number), freq);
    // It is heard now, whenever that is.
    fields[Field::DateTime] = Teller::anything.toByteArray();
    return fields;
}

void User::logHeard()
{
    const int number = m_next++;
    const QString name = nameOf(number);
    m_teller.adding(fieldsHeard(number, "98.5"));
    listenTo({98'500'000, piOf(number), name, {}, {}, 10'000, 0}, false, [&] {
        return find<QLineEdit>(u"receiverPs"_s)->text() == name
            && find<QLineEdit>(u"receiverPi"_s)->text().toLatin1() == codeOf(number);
    });
}

void User::logByItself()
{
    const int number = m_next++;
    const int rows = m_grid->model()->rowCount();
    QByteArrayList fields = fieldsHeard(number, "99.1");
    fields[Field::Notes] = "auto";
    m_teller.adding(fields);
    listenTo({99'100'000, piOf(number), nameOf(number), {}, {}, 10'000, 0}, true,
        [&] { return m_grid->model()->rowCount() > rows; });
}

// A source that is kept by a name, with its password.
void User::keepReceiver()
{
    find<QComboBox>(u"receiverSource"_s)->setCurrentText(u"xdrd"_s);
    find<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:7373"_s);
    find<QLineEdit>(u"receiverPassword"_s)->setText(u"secret %1"_s.arg(m_next++));
    m_answers->type(u"receiver"_s);
    chooseOption(u"Keep This Source…"_s);
    finish();
}

} // namespace quillon::soak
