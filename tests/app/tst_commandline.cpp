#include "app/commandline.h"

#include <QTest>

using namespace quillon;

namespace {

QStringList told;

void tell(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &text)
{
    told += text;
}

} // namespace

/// What stands between the toolkit and the terminal until there is a display.
class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGuardIsGoneWithTheDisplayFound()
    {
        const QtMessageHandler usual = qInstallMessageHandler(tell);
        {
            const DisplayGuard guard;
            qWarning("a word of the program");
            QMessageLogger(nullptr, 0, nullptr, "qt.qpa.plugin").warning("a way that cannot be gone");
        }
        QCOMPARE(told, QStringList {QStringLiteral("a word of the program")});
        QVERIFY(qInstallMessageHandler(usual) == &tell);
    }
};

QTEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
