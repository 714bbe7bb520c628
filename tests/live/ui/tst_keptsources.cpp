#include "docked.h"
#include "live/loopback.h"
#include "live/xdrdprotocol.h"
#include "platform/files.h"
#include "support/dialogs.h"
#include "support/testfiles.h"

#include <QComboBox>
#include <QLineEdit>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

constexpr auto salt = "0123456789abcdef\n";

QStringList captions(const QMenu *menu)
{
    QStringList captions;
    for (const QAction *const action : menu->actions()) {
        captions += action->text();
    }
    return captions;
}

/// Two sources, each with a password.
ReceiverSettings twoSources(quint16 port)
{
    ReceiverSettings settings;
    settings.last = {SourceKind::Gqrx, u"127.0.0.1:1"_s, {}, false};
    settings.kept = {{u"At home"_s, {SourceKind::Xdrd, u"127.0.0.1:%1"_s.arg(port), u"roof"_s, false}},
        {u"Tom & Co"_s, {SourceKind::Xdrd, u"127.0.0.1:2"_s, u"cellar"_s, false}}};
    return settings;
}

} // namespace

/// Sources that are kept by a name.
class TestKeptSources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosingOneConnectsToIt()
    {
        const TestDirectory folder;
        LoopbackServer server(salt);
        writeReceiverSettings(folder.path(), twoSources(server.port()));
        Docked docked(folder.path());
        QCOMPARE(docked.text(u"receiverState"_s), u"not connected"_s);
        docked.choose(u"At home"_s, u"receiverKept"_s);
        QTRY_COMPARE(server.lines(), (QByteArrayList {xdrdLogin("0123456789abcdef", u"roof"_s)}));
        QTRY_COMPARE(docked.text(u"receiverState"_s), u"listening"_s);
        QCOMPARE(docked.get<QComboBox>(u"receiverSource"_s)->currentText(), u"xdrd"_s);
        QCOMPARE(docked.get<QLineEdit>(u"receiverAddress"_s)->text(), u"127.0.0.1:%1"_s.arg(server.port()));
        // Choosing another ends it.
        docked.choose(u"Tom && Co"_s.remove(u'&'), u"receiverKept"_s);
        QTRY_VERIFY(!server.isConnected());
        QCOMPARE(docked.get<QLineEdit>(u"receiverAddress"_s)->text(), u"127.0.0.1:2"_s);
        QCOMPARE(readReceiverSettings(folder.path()).last.password, u"cellar"_s);
    }

    void oneThatIsForgottenIsGoneWithItsPassword()
    {
        const TestDirectory folder;
        writeReceiverSettings(folder.path(), twoSources(1));
        Docked docked(folder.path());
        auto *const kept = docked.get<QMenu>(u"receiverKept"_s);
        auto *const forget = docked.get<QMenu>(u"receiverForget"_s);
        QCOMPARE(captions(forget), (QStringList {u"At home"_s, u"Tom && Co"_s}));
        const auto chooseToForget = [&](const QString &name) {
            docked.choose(name, u"receiverForget"_s);
            QCoreApplication::processEvents();
        };
        DialogAnswers answers;
        answers.press(QMessageBox::No);
        chooseToForget(u"At home"_s);
        QTRY_COMPARE(answers.seen().size(), 1);
        QCOMPARE(answers.takeTexts(),
            (QStringList {u"Forget the source \"At home\", with its address and its password?"_s}));
        QCOMPARE(captions(kept), (QStringList {u"At home"_s, u"Tom && Co"_s}));
        answers.press(QMessageBox::Yes);
        chooseToForget(u"At home"_s);
        QTRY_COMPARE(captions(kept), (QStringList {u"Tom && Co"_s}));
        QCOMPARE(captions(forget), (QStringList {u"Tom && Co"_s}));
        QVERIFY(!readFile(folder.path() + u"/receiver.passwords"_s).contains("roof"));
        QVERIFY(!readFile(folder.path() + u"/receiver.ini"_s).contains("home"));
        const ReceiverSettings settings = readReceiverSettings(folder.path());
        QCOMPARE(settings.kept.size(), 1);
        QCOMPARE(settings.kept[0].settings.password, u"cellar"_s);
        answers.press(QMessageBox::Yes);
        chooseToForget(u"Tom  Co"_s);
        QTRY_VERIFY(!kept->isEnabled());
        QVERIFY(!forget->isEnabled());
        QVERIFY(readReceiverSettings(folder.path()).kept.isEmpty());
    }
};

QTEST_MAIN(TestKeptSources)
#include "tst_keptsources.moc"
