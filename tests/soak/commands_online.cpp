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
    if (!service.listen(portOfService())) {
        return;
    }
    type(nameOf(number), dateOf(number));
    click(u"Command11"_s);
    intend(number, "F201", "105.5");
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
    standin::StandIn service({});
    if (m_failed || !service.listen(portOfService())) {
        return;
    }
    // Whatever else has come from the service is sent, too.
    m_teller.changing({Field::FMList});
    m_teller.sending(name);
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
    find<QSpinBox>(*rules, u"autoLogHold"_s)->setValue(0);
    find<QDialogButtonBox>(*rules, u"autoLogButtons"_s)->button(QDialogButtonBox::Ok)->click();
}

void User::connectReceiver(quint16 port)
{
    find<QComboBox>(u"receiverSource"_s)->setCurrentText(u"xdrd"_s);
    find<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:%1"_s.arg(port));
    click(u"receiverConnect"_s);
}

// Waits for what comes from outside, or for a box.
void User::waitUntil(const std::function<bool()> &isSo)
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
    if (since.elapsed() > longest) {
        m_teller.failed("nothing comes from the receiver");
    }
}

// What a tuner hears, by its button.
void User::logHeard()
{
    const int number = m_next++;
    const QString name = nameOf(number);
    rdssignal::ReceiverStandIn tuner({{98'500'000, piOf(number), name, {}, {}, 10'000, 0}}, {}, 50, nullptr);
    if (!tuner.listen(0)) {
        return;
    }
    // The dock comes, and goes again.
    trigger(u"menuViewReceiver"_s);
    connectReceiver(tuner.port());
    waitUntil([&] {
        return find<QLineEdit>(u"receiverPs"_s)->text() == name
            && find<QLineEdit>(u"receiverPi"_s)->text().toLatin1() == codeOf(number);
    });
    const QByteArray any = Teller::anything.toByteArray();
    m_teller.adding({codeOf(number), any, any, "98.5", any, any, {}, name.toLatin1()});
    click(u"receiverLog"_s);
    finish();
    click(u"receiverConnect"_s);
    trigger(u"menuViewReceiver"_s);
}

// What a tuner hears, by itself.
void User::logByItself()
{
    const int number = m_next++;
    const QString name = nameOf(number);
    rdssignal::ReceiverStandIn tuner({{99'100'000, piOf(number), name, {}, {}, 10'000, 0}}, {}, 50, nullptr);
    if (!tuner.listen(0)) {
        return;
    }
    const QByteArray any = Teller::anything.toByteArray();
    m_teller.adding({codeOf(number), any, any, "99.1", any, any, "auto", name.toLatin1()});
    trigger(u"menuViewReceiver"_s);
    setAutomaticLog(true);
    connectReceiver(tuner.port());
    const int rows = m_grid->model()->rowCount();
    waitUntil([&] { return m_grid->model()->rowCount() > rows; });
    click(u"receiverConnect"_s);
    setAutomaticLog(false);
    trigger(u"menuViewReceiver"_s);
    finish();
}

// A source that is kept by a name, with its password.
void User::keepReceiver()
{
    constexpr int few = 3;
    const int number = m_next++;
    find<QComboBox>(u"receiverSource"_s)->setCurrentText(u"xdrd"_s);
    find<QLineEdit>(u"receiverAddress"_s)->setText(u"127.0.0.1:7373"_s);
    find<QLineEdit>(u"receiverPassword"_s)->setText(u"secret %1"_s.arg(number));
    m_answers->type(u"receiver %1"_s.arg(number % few));
    chooseOption(u"Keep This Source…"_s);
    finish();
}

} // namespace quillon::soak
